// The frames in another language: opened in it, and switched to it while in use.
#include "AllocationWindow.h"
#include "SelectorCatalogue.h"
#include "SelectorDriver.h"

#include "funds/frm_FundSelector.h"

#include <QAccessible>
#include <QLabel>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace
{
/// A translator that marks every text, so that untranslated texts can be found.
class MarkedTable : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *source, const char *, int) const override
    {
        return u"«%1»"_s.arg(QString::fromUtf8(source));
    }
};

/// Installs the translator during its lifetime and lets the windows handle the change.
class InAnotherLanguage
{
public:
    InAnotherLanguage()
    {
        QCoreApplication::installTranslator(&m_table);
        QCoreApplication::processEvents();
    }
    ~InAnotherLanguage()
    {
        QCoreApplication::removeTranslator(&m_table);
        QCoreApplication::processEvents();
    }
    InAnotherLanguage(const InAnotherLanguage &) = delete;
    InAnotherLanguage &operator=(const InAnotherLanguage &) = delete;

private:
    MarkedTable m_table;
};

/// The translatable texts of a window by object and property.
QMap<QString, QString> textsOf(const QWidget &window)
{
    QMap<QString, QString> texts;
    const auto note = [&](const QObject *object, const char *property) {
        const QString text = object->property(property).toString();
        if (!text.isEmpty())
            texts.insert(object->objectName() + QLatin1Char('.') + QLatin1String(property), text);
    };
    note(&window, "windowTitle");
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->objectName().isEmpty() || widget->objectName().startsWith("qt_"_L1))
            continue;
        note(widget, "caption");
        note(widget, "toolTip");
        note(widget, "accessibleName");
        if (qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLabel *>(widget))
            note(widget, "text");
        if (const auto *list = qobject_cast<const TListView *>(widget)) {
            for (int column = 0; column < list->ColumnCount(); ++column)
                texts.insert(u"%1.column%2"_s.arg(list->objectName()).arg(column),
                             list->ColumnCaption(column));
        }
        if (const auto *grid = qobject_cast<const TtsGrid *>(widget)) {
            for (int column = 1; column <= grid->ColCount(); ++column) {
                texts.insert(
                    u"%1.column%2"_s.arg(grid->objectName()).arg(column),
                    grid->model()->headerData(column - 1, Qt::Horizontal, Qt::AccessibleTextRole).toString());
            }
        }
    }
    return texts;
}

/// The texts that are not translated.
QStringList notTranslated(const QMap<QString, QString> &texts)
{
    QStringList places;
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        if (!text.value().startsWith(QChar(u'«')))
            places.append(text.key() + QLatin1Char('=') + text.value());
    }
    return places;
}
} // namespace

class TestLanguage : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void allocationAsDesigned()
    {
        AllocationWindow window;
        window.open();
        const QMap<QString, QString> before = textsOf(window);
        for (const char *place :
             {"pnlHeaderCaption.caption", "pnlAmount.caption", "pnlRemainAmount.caption", "FundGrid.column1",
              "FundGrid.column2", "FundGrid.column3", "FundGrid.column4", "FundGrid.accessibleName",
              "sbtFunds.text", "sbtFunds.toolTip", "sbtInvested.toolTip"})
            QVERIFY2(before.contains(QLatin1String(place)), place);
        {
            const InAnotherLanguage language;
            const QMap<QString, QString> now = textsOf(window);
            QCOMPARE(now.keys(), before.keys());
            QCOMPARE(notTranslated(now), QStringList());
            QVERIFY(now.value(u"sbtFunds.toolTip"_s).startsWith(u"««fund selector» ("_s));
            QCOMPARE(window.remaining(), u"«Remaining: 9,999,000,000.00 (100.00%) »"_s);
            QCOMPARE(window.frame->Get_ColumnCaption_Percent(), u"«Initial (%)»"_s);
        }
        QCOMPARE(textsOf(window), before); // the original texts again
    }

    void allocationAtWork()
    {
        AllocationWindow window;
        TfraFundAllocation &frame = *window.frame;
        frame.Set_InvestmentAmount(1000);
        window.setup({fundRecord(1, 100), fundRecord(2, 50)});
        window.open();
        frame.pnlHeaderCaption->setCaption(u"  Initial investment"_s);
        frame.Set_ColumnCaption_Amount(u"Lump sum"_s);
        window.stand(4, 1);
        window.keys(u"2.5"_s); // an edit stays open
        const QMap<QString, QString> before = textsOf(window);
        {
            const InAnotherLanguage language;
            QVERIFY(window.grid().IsEditing());
            QCOMPARE(window.editor()->text(), u"2.5"_s);
            QCOMPARE(window.remaining(), u"«Remaining: 947.50 (94.75%)»"_s);
            QCOMPARE(window.investment(), u"«Investment Amount: 1,000.00»"_s);
            QCOMPARE(window.grid().Col(3).Heading(), u"«Initial (%)»"_s);
            // Texts that the host has set are not translated.
            QStringList kept = notTranslated(textsOf(window));
            kept.removeIf([](const QString &place) { return place.startsWith("edCell."_L1); });
            QCOMPARE(kept.join(u'|'), u"FundGrid.column4=Lump sum|"
                                      "pnlHeaderCaption.accessibleName=Initial investment|"
                                      "pnlHeaderCaption.caption=  Initial investment"_s);
            QCOMPARE(window.cell(2, 1), u"Fund 1"_s);

            window.keys(u"5"_s);
            window.key(Qt::Key_Return);
            QCOMPARE(window.cell(4, 1), u"2.55"_s);
            QCOMPARE(window.remaining(), u"«Remaining: 947.45 (94.75%)»"_s);
            frame.Set_AllocByAmount(false);
            QCOMPARE(window.remaining(), u"«Remaining: 94.74%»"_s);
            QCOMPARE(window.investment(), u"«Investment: 100.00%»"_s);
            window.type(2, "20");
            QCOMPARE(window.cell(4, 2), u"200.00"_s);
            QCOMPARE(window.disagreement(), QString());
            frame.Set_AllocByAmount(true);
        }
        QCOMPARE(window.remaining(), u"Remaining: 797.45 (79.75%)"_s);
        QCOMPARE(window.cell(4, 1), u"2.55"_s);
        QCOMPARE(textsOf(window).value(u"sbtClear.toolTip"_s), before.value(u"sbtClear.toolTip"_s));
        // Setting the designed heading makes it translatable again.
        frame.Set_ColumnCaption_Amount(u"Initial (R)"_s);
        const InAnotherLanguage language;
        QCOMPARE(window.grid().Col(4).Heading(), u"«Initial (R)»"_s);
    }

    // Working with keys in a frame that was opened in the other language.
    void allocationOpenedInAnotherLanguage()
    {
        const InAnotherLanguage language;
        AllocationWindow window;
        window.frame->Set_AllocByAmount(false);
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1, 2, 3});
        window.open();
        QCOMPARE(notTranslated(textsOf(window)), QStringList());
        window.type(1, "33.33");
        QCOMPARE(window.cell(4, 1), u"333.30"_s);
        QCOMPARE(window.remaining(), u"«Remaining: 66.67%»"_s);
        window.type(2, "150");
        QCOMPARE(window.cell(3, 2), u"100.00"_s);
        window.frame->FundGrid->setFocus();
        window.key(Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(window.remaining(), u"«Remaining: 100.00%»"_s);
        window.key(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(window.cell(4, 3), u"333.34"_s);
        QCOMPARE(window.disagreement(), QString());
        QVERIFY(window.grid().AsTabSeparatedText().startsWith(u"«Fund»\t«Initial (%)»\t«Initial (R)»\n"_s));
        // Screen readers get translated texts, too.
        QAccessibleInterface *grid = QAccessible::queryAccessibleInterface(&window.grid());
        QVERIFY(grid->tableInterface());
        const QAccessibleInterface *cell = grid->tableInterface()->cellAt(0, 3);
        QCOMPARE(cell->text(QAccessible::Name), u"««Initial (R)»: 333.33»"_s);
    }

    void selectorAndDialog()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        catalogue.addChildlessGroups();
        TfrmFundSelector form;
        TfraFundSelector &frame = *form.fraFundSelector;
        const SelectorDriver driver(frame);
        const QMap<QString, QString> designed = textsOf(form);
        {
            const InAnotherLanguage language;
            QCOMPARE(notTranslated(textsOf(form)), QStringList()); // including the labels' placeholder texts
        }
        QCOMPARE(textsOf(form), designed);

        frame.BuildFundSelector(SelectorCatalogue::productGroup, {103, 111}, catalogue.connection(),
                                catalogue.fundData(), {}, u"Ask first."_s, u"Choose."_s);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        const QMap<QString, QString> before = textsOf(form);
        const QStringList nodes = driver.nodes();
        const QString note = LoadResString(TMessageText::resFixedBondAvailabilityNote);
        QCOMPARE(frame.lblWarningMessage->text(), note + u" Ask first."_s);
        {
            const InAnotherLanguage language;
            const QMap<QString, QString> now = textsOf(form);
            QCOMPARE(now.keys(), before.keys());
            QCOMPARE(notTranslated(now), QStringList{u"lblInfoMessage.text=Choose."_s});
            QCOMPARE(form.windowTitle(), u"«Fund Selector»"_s);
            QCOMPARE(frame.lblWarningMessage->text(), u"«%1» Ask first."_s.arg(note));
            QVERIFY(frame.lblWarningMessage->isVisible());
            QCOMPARE(driver.nodes(), nodes);
            QCOMPARE(driver.captions(), (QStringList{u"Gamma Fund"_s, u"Cash Fund"_s}));
            QCOMPARE(driver.tree->Selected()->Text(), u"Cash Fund"_s);
            // The buttons are wide enough for the longer captions.
            for (const QPushButton *button :
                 {static_cast<QPushButton *>(frame.btnSelect), static_cast<QPushButton *>(frame.btnCancel)})
                QVERIFY(button->width() >= button->fontMetrics().horizontalAdvance(button->text()));
            QVERIFY(!frame.btnSelect->geometry().intersects(frame.btnCancel->geometry()));
            QVERIFY(frame.pnlMenu->rect().contains(frame.btnCancel->geometry()));
        }
        QCOMPARE(textsOf(form), before);
    }
};

ZEL_TEST_MAIN(TestLanguage)
#include "tst_language.moc"
