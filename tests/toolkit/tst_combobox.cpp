// labels: x11
#include "Frames.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "toolkit/TComboBox.h"
#include "toolkit/TcxComboBox.h"

#include <QAbstractItemModelTester>
#include <QHelpEvent>
#include <QListView>
#include <QScopeGuard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyleOptionComboBox>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

void openPopup(TComboBox &combo)
{
    if (QGuiApplication::platformName() == "offscreen"_L1) {
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
    }
    combo.showPopup();
}

} // namespace

class tst_ComboBox : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void linesAndObjects();
    void choosesOnlyWhatItIsTold();
    void bulkTellsOnce();
    void textsAreToldWithTheirLines();
    void keepsTheChosenLine();
    void deletes();
    void typingSearches();
    void longListsOpenAsScrollingLists();
    void namesThatAreTooLong_data();
    void namesThatAreTooLong();
    void outOfRange();
};

void tst_ComboBox::linesAndObjects()
{
    TComboBox combo;
    const QAbstractItemModelTester tester(combo.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    int a = 0;
    QCOMPARE(combo.Items().AddObject(u"a"_s, &a), 0);
    QCOMPARE(combo.Items().Add(u"b"_s), 1);
    QCOMPARE(combo.Items().Count(), 2);
    QCOMPARE(combo.Items().Object(0), static_cast<void *>(&a));
    QVERIFY(!combo.Items().Object(1));
    combo.Items().SetObject(1, &combo);
    QCOMPARE(combo.Items().IndexOfObject(&combo), 1);
    QCOMPARE(combo.Items().IndexOfObject(this), -1);
    QCOMPARE(combo.Items().IndexOf(u"b"_s), 1);
    QCOMPARE(combo.Items().IndexOf(u"c"_s), -1);
    QCOMPARE(combo.Items()[1], u"b"_s);
    QCOMPARE(combo.count(), 2);
    QCOMPARE(combo.itemData(0).value<void *>(), static_cast<void *>(&a));
}

void tst_ComboBox::choosesOnlyWhatItIsTold()
{
    TComboBox combo;
    QSignalSpy changes(&combo, &QComboBox::currentIndexChanged);
    combo.Items().Add(u"a"_s);
    combo.Items().Add(u"b"_s);
    QCOMPARE(combo.ItemIndex(), -1);
    QCOMPARE(changes.count(), 0);
    combo.SetItemIndex(1);
    QCOMPARE(combo.currentText(), u"b"_s);
    QCOMPARE(changes.count(), 1);
    combo.SetItemIndex(7);
    QCOMPARE(combo.ItemIndex(), -1);
    QCOMPARE(changes.count(), 2);
    combo.SetItemIndex(0);
    combo.Items().Clear();
    QCOMPARE(combo.ItemIndex(), -1);
    QCOMPARE(changes.count(), 4);
    QCOMPARE(changes.last().first().toInt(), -1);
    combo.Items().Clear();
    QCOMPARE(changes.count(), 4);
}

void tst_ComboBox::bulkTellsOnce()
{
    TComboBox combo;
    const QAbstractItemModelTester tester(combo.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy changes(&combo, &QComboBox::currentIndexChanged);
    QSignalSpy inserts(combo.model(), &QAbstractItemModel::rowsInserted);
    combo.Items().EndUpdate(); // an EndUpdate without a BeginUpdate is ignored
    combo.Items().BeginUpdate();
    combo.Items().BeginUpdate();
    combo.Items().Clear();
    for (int i = 0; i < 100; ++i)
        combo.Items().Add(QString::number(i));
    combo.SetItemIndex(3);
    QCOMPARE(combo.ItemIndex(), 3);
    QCOMPARE(combo.count(), 0);
    combo.Items().EndUpdate();
    QVERIFY(combo.Items().Updating());
    combo.Items().EndUpdate();
    QCOMPARE(combo.count(), 100);
    QCOMPARE(combo.currentText(), u"3"_s);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(inserts.count(), 0);
    // The same index on another line is a change.
    combo.Items().BeginUpdate();
    combo.Items().Clear();
    for (int i = 0; i < 5; ++i)
        combo.Items().Add(u"new %1"_s.arg(i));
    combo.SetItemIndex(3);
    combo.Items().EndUpdate();
    QCOMPARE(changes.count(), 2);
    QCOMPARE(combo.currentText(), u"new 3"_s);
    // The same index is also a change when earlier lines were deleted in between.
    combo.Items().BeginUpdate();
    combo.Items().Delete(0);
    combo.SetItemIndex(3);
    combo.Items().EndUpdate();
    QCOMPARE(changes.count(), 3);
    QCOMPARE(combo.currentText(), u"new 4"_s);
    // No new line is chosen automatically, not even one with the text of the old one.
    combo.Items().BeginUpdate();
    combo.Items().Clear();
    for (int i = 0; i < 5; ++i)
        combo.Items().Add(u"new %1"_s.arg(i));
    QCOMPARE(combo.ItemIndex(), -1);
    combo.Items().EndUpdate();
    QCOMPARE(combo.ItemIndex(), -1);
    QCOMPARE(changes.count(), 4);
}

void tst_ComboBox::textsAreToldWithTheirLines()
{
    TComboBox combo;
    QSignalSpy texts(&combo, &QComboBox::currentTextChanged);
    for (const char *text : {"a", "b", "c"})
        combo.Items().Add(QString::fromLatin1(text));
    combo.SetItemIndex(1);
    QCOMPARE(texts.takeLast().first().toString(), u"b"_s);
    combo.Items().Delete(1);
    QCOMPARE(texts.takeLast().first().toString(), QString());
    combo.Items().BeginUpdate();
    combo.Items().Add(u"d"_s);
    combo.SetItemIndex(2);
    QCOMPARE(texts.count(), 0);
    combo.Items().EndUpdate();
    QCOMPARE(texts.count(), 1);
    QCOMPARE(texts.takeLast().first().toString(), u"d"_s);
}

void tst_ComboBox::keepsTheChosenLine()
{
    TComboBox combo;
    combo.Items().Add(u"a"_s);
    combo.Items().Add(u"b"_s);
    combo.SetItemIndex(1);
    QSignalSpy changes(&combo, &QComboBox::currentIndexChanged);
    combo.Items().BeginUpdate();
    combo.Items().Add(u"c"_s);
    combo.Items().EndUpdate();
    QCOMPARE(combo.currentText(), u"b"_s);
    QCOMPARE(changes.count(), 0);
    combo.Items().Add(u"d"_s);
    QCOMPARE(combo.currentText(), u"b"_s);
    QCOMPARE(changes.count(), 0);
}

void tst_ComboBox::deletes()
{
    TComboBox combo;
    const QAbstractItemModelTester tester(combo.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (const char *text : {"a", "b", "c", "d"})
        combo.Items().Add(QString::fromLatin1(text));
    combo.SetItemIndex(2);
    combo.Items().Delete(0);
    QCOMPARE(combo.currentText(), u"c"_s);
    QCOMPARE(combo.ItemIndex(), 1);
    combo.Items().Delete(1);
    QCOMPARE(combo.ItemIndex(), -1);
    QCOMPARE(combo.currentText(), QString());
    combo.SetItemIndex(1);
    combo.Items().BeginUpdate();
    combo.Items().Delete(0);
    combo.Items().EndUpdate();
    QCOMPARE(combo.currentText(), u"d"_s);
}

void tst_ComboBox::typingSearches()
{
    TComboBox combo;
    combo.Items().BeginUpdate();
    for (int i = 0; i < 1000; ++i)
        combo.Items().Add(u"line %1"_s.arg(i));
    combo.Items().Add(u"zebra"_s);
    combo.Items().EndUpdate();
    QVERIFY(showActive(combo));
    combo.setFocus();
    // The keyboard interval must not depend on how busy the machine is.
    const auto restore = qScopeGuard([interval = QApplication::keyboardInputInterval()] {
        QApplication::setKeyboardInputInterval(interval);
    });
    constexpr int goesOn = 60000;
    QApplication::setKeyboardInputInterval(goesOn);
    QTest::keyClicks(&combo, u"ze"_s);
    QCOMPARE(combo.currentText(), u"zebra"_s);
    openPopup(combo);
    QTRY_VERIFY(combo.view()->isVisible());
    QApplication::setKeyboardInputInterval(0); // the next key starts a new search
    QTest::qWait(10);
    QTest::keyClick(combo.view(), 'l');
    QApplication::setKeyboardInputInterval(goesOn);
    QTest::keyClicks(combo.view(), u"ine 7"_s);
    QCOMPARE(combo.view()->currentIndex().data().toString(), u"line 7"_s);
    QTest::keyClick(combo.view(), Qt::Key_Return);
    QCOMPARE(combo.currentText(), u"line 7"_s);
}

void tst_ComboBox::longListsOpenAsScrollingLists()
{
    TComboBox combo;
    combo.Items().BeginUpdate();
    for (int i = 0; i < 10000; ++i)
        combo.Items().Add(u"a line with a text of some length %1"_s.arg(i));
    combo.Items().EndUpdate();
    combo.SetItemIndex(9000);
    QVERIFY(showActive(combo));
    openPopup(combo);
    QTRY_VERIFY(combo.view()->isVisible());
    const auto *list = qobject_cast<QListView *>(combo.view());
    QVERIFY(list && list->uniformItemSizes());
    const int row = list->visualRect(combo.model()->index(1, 0)).top() -
                    list->visualRect(combo.model()->index(0, 0)).top();
    QVERIFY(row > 0);
    QVERIFY(list->verticalScrollBar()->isVisible()); // the scroll bar shows that there are more lines
    QVERIFY(list->viewport()->height() <= row * (combo.maxVisibleItems() + 1));
    QVERIFY(list->viewport()->rect().intersects(list->visualRect(combo.model()->index(9000, 0))));
    QVERIFY(list->width() > combo.fontMetrics().horizontalAdvance(combo.Items()[9999]));
    combo.hidePopup();
}

void tst_ComboBox::namesThatAreTooLong_data()
{
    QTest::addColumn<bool>("clients");
    QTest::newRow("TComboBox") << false;
    QTest::newRow("TcxComboBox") << true;
}

// A name that is too long is elided after a whole letter, and its tooltip shows the complete name.
void tst_ComboBox::namesThatAreTooLong()
{
    QFETCH(bool, clients);
    std::unique_ptr<QComboBox> combo;
    const QString name = u"Wwwwwwwwwwwwwwwwwwwwwwwwwwwww, <i>Wilhelmina</i> Wwwwwwwwwww"_s;
    const auto add = [&](const QString &text) {
        if (auto *list = qobject_cast<TComboBox *>(combo.get()))
            list->Items().Add(text);
        else
            static_cast<TcxComboBox *>(combo.get())->AddItemObject(text, nullptr);
    };
    if (clients)
        combo = std::make_unique<TcxComboBox>();
    else
        combo = std::make_unique<TComboBox>();
    combo->resize(140, 21);
    QVERIFY(showActive(*combo));
    QStyleOptionComboBox option;
    option.initFrom(combo.get());
    const QRect field = combo->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                       QStyle::SC_ComboBoxEditField, combo.get());
    QString fitting = name;
    while (combo->fontMetrics().horizontalAdvance(fitting + QChar(0x2026)) > field.width() - 2)
        fitting.chop(1);
    add(u"Adams"_s);
    add(name);
    add(fitting + QChar(0x2026));
    const auto face = [&combo](int index) {
        combo->setCurrentIndex(index);
        return combo->grab().toImage();
    };
    QCOMPARE(face(1), face(2));
    QVERIFY(face(0) != face(1));
    const auto tip = [&combo](int index) {
        combo->setCurrentIndex(index);
        QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), combo->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(combo.get(), &asked);
        if (!asked.isAccepted())
            return QString();
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    };
    QCOMPARE(tip(1), name);
    QCOMPARE(tip(0), QString());
    QCOMPARE(combo->currentText(), u"Adams"_s);
    combo->setToolTip(u"The page's own"_s);
    QCOMPARE(tip(1), u"The page's own"_s);
    QToolTip::hideText();
    QCOMPARE(combo->currentText(), name);
    combo->resize(600, 21);
    combo->setToolTip(QString());
    QCOMPARE(tip(1), QString());
}

void tst_ComboBox::outOfRange()
{
    TComboBox combo;
    QVERIFY_THROWS_EXCEPTION(EListError, combo.Items().Text(0));
    QVERIFY_THROWS_EXCEPTION(EListError, combo.Items().Object(-1));
    QVERIFY_THROWS_EXCEPTION(EListError, combo.Items().SetObject(0, nullptr));
    QVERIFY_THROWS_EXCEPTION(EListError, combo.Items().Delete(0));
}

ZEL_TEST_MAIN(tst_ComboBox)
#include "tst_combobox.moc"
