// left out on Windows: the comparison of the translations with the sources
#include "DeskWindow.h"

#include "desk/CataloguePlace.h"

#include "desk/Language.h"

#include <QAbstractButton>
#include <QDomDocument>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLibraryInfo>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QTabBar>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// The texts of a window and its menus by object and property.
QMap<QString, QString> textsOf(QWidget &window)
{
    QMap<QString, QString> texts;
    const auto add = [&texts](const QObject *object, const char *what, const QString &text) {
        const bool hasLetters =
            std::any_of(text.cbegin(), text.cend(), [](QChar character) { return character.isLetter(); });
        if (hasLetters)
            texts.insert(u"%1.%2"_s.arg(object->objectName(), QLatin1StringView(what)), text);
    };
    for (const QWidget *const widget : window.findChildren<QWidget *>()) {
        if (const auto *const label = qobject_cast<const QLabel *>(widget))
            add(widget, "text", label->text());
        if (const auto *const button = qobject_cast<const QAbstractButton *>(widget))
            add(widget, "text", button->text());
        if (const auto *const menu = qobject_cast<const QMenu *>(widget))
            add(widget, "title", menu->title());
        if (const auto *const edit = qobject_cast<const QLineEdit *>(widget))
            add(widget, "placeholder", edit->placeholderText());
        if (const auto *const panel = qobject_cast<const TPanel *>(widget))
            add(widget, "caption", panel->caption());
        if (const auto *const bar = qobject_cast<const QTabBar *>(widget)) {
            for (int i = 0; i < bar->count(); ++i)
                add(bar->parentWidget(), qPrintable(u"tab%1"_s.arg(i)), bar->tabText(i));
        }
        if (const auto *const list = qobject_cast<const TListView *>(widget)) {
            for (int i = 0; i < list->ColumnCount(); ++i)
                add(list, qPrintable(u"column%1"_s.arg(i)), list->ColumnCaption(i));
        }
        add(widget, "tip", widget->toolTip());
        add(widget, "name", widget->accessibleName());
    }
    for (const QAction *const action : window.findChildren<QAction *>()) {
        if (action->objectName().startsWith(u"act"_s))
            add(action, "text", action->text());
    }
    return texts;
}

/// Texts that are equal in both languages, and texts from the tests.
bool isTheSame(const QString &text)
{
    static const QStringList same{u"Quote Desk"_s,  u"English"_s, u"Afrikaans"_s,
                                  u"Botha, Piet"_s, u"Mine"_s,    u"R 100,000.00"_s};
    return same.contains(text);
}

/// The texts that were not translated.
QStringList alike(const QMap<QString, QString> &english, const QMap<QString, QString> &afrikaans)
{
    QStringList untouched;
    for (auto text = english.cbegin(); text != english.cend(); ++text) {
        if (afrikaans.value(text.key()) == text.value() && !isTheSame(text.value()))
            untouched.append(text.key() + u'=' + text.value());
    }
    return untouched;
}

} // namespace

class tst_desklanguage : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setCurrentLanguage(Language::English); }

    void codes();
    void everyTextOfTheMainWindowChanges();
    void everyTextOfAQuoteChanges_data();
    void everyTextOfAQuoteChanges();
    void nothingTypedIsLost();
    void fundsHaveTheirAfrikaansNames();
    void numbersOfThings();
#ifndef Q_OS_WIN // Qt's lupdate does not exist there.
    void everyTextIsTranslated_data();
    void everyTextIsTranslated();
#endif
};

void tst_desklanguage::codes()
{
    QCOMPARE(languageByCode(u"AF"_s).value(), Language::Afrikaans);
    QCOMPARE(languageByCode(u"en"_s).value(), Language::English);
    QVERIFY(!languageByCode(u"nl"_s));
    QCOMPARE(languageCode(Language::Afrikaans), u"af"_s);
    QCOMPARE(languageName(Language::Afrikaans), u"Afrikaans"_s);
}

void tst_desklanguage::everyTextOfTheMainWindowChanges()
{
    DeskWindow desk;
    desk.quote(desk.client("Botha", "Piet"), 1, "", 100000, 12);
    QVERIFY(desk.show());
    const QMap<QString, QString> english = textsOf(*desk.window);
    QVERIFY(english.size() > 50);
    desk.window->setLanguage(Language::Afrikaans);
    QCoreApplication::processEvents();
    const QStringList untouched = alike(english, textsOf(*desk.window));
    QVERIFY2(untouched.isEmpty(), qPrintable(untouched.join(u'\n')));
    QCOMPARE(desk.column(QuoteColumn::State), QStringList{u"Toegedeel"_s});
    QCOMPARE(desk.column(QuoteColumn::Product), QStringList{u"Horison Uittreeannuïteit"_s});
    desk.window->setLanguage(Language::English);
    QCoreApplication::processEvents();
    QCOMPARE(textsOf(*desk.window), english);
}

void tst_desklanguage::everyTextOfAQuoteChanges_data()
{
    QTest::addColumn<int>("productID");
    QTest::newRow("retirement annuity") << 1;
    QTest::newRow("living annuity") << 2;
    QTest::newRow("investment plan") << 3;
}

void tst_desklanguage::everyTextOfAQuoteChanges()
{
    QFETCH(int, productID);
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), productID, "Mine", 100000, 12);
    QVERIFY(desk.show());
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    form.goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(form.fundsPage->isReady());
    form.goTo(QuoteForm::Page::Summary);
    const QMap<QString, QString> english = textsOf(form);
    QVERIFY(english.size() > 50);
    desk.window->setLanguage(Language::Afrikaans);
    QCoreApplication::processEvents();
    const QStringList untouched = alike(english, textsOf(form));
    QVERIFY2(untouched.isEmpty(), qPrintable(untouched.join(u'\n')));
    desk.window->setLanguage(Language::English);
    QCoreApplication::processEvents();
    QCOMPARE(textsOf(form), english);
}

void tst_desklanguage::nothingTypedIsLost()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), 1, "Mine", 100000, 12);
    QVERIFY(desk.show());
    desk.start().edFind->setFocus();
    desk.type(u"both"_s);
    QuoteEditor *const editor = desk.window->quotes().open(number);
    QuoteForm &form = *editor->form();
    form.goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(form.fundsPage->isReady());
    form.edtDescription->setFocus();
    form.edtDescription->selectAll();
    desk.type(u"Half typ"_s);
    form.fundsPage->edAmount->setFocus();
    form.fundsPage->edAmount->selectAll();
    desk.type(u"123456"_s);
    for (const Language language : {Language::Afrikaans, Language::English, Language::Afrikaans}) {
        desk.window->setLanguage(language);
        QCoreApplication::processEvents();
        QCOMPARE(desk.start().edFind->text(), u"both"_s);
        QCOMPARE(desk.list().Items().Count(), 1);
        QCOMPARE(desk.start().chosenQuote(), number);
        QCOMPARE(form.edtDescription->text(), u"Half typ"_s);
        QString amount = form.fundsPage->edAmount->text();
        QCOMPARE(amount.remove(u',').left(6), u"123456"_s);
        QCOMPARE(editor->quote().description, u"Half typ"_s);
        QCOMPARE(editor->quote().funds.size(), 1);
        QCOMPARE(form.pcPages->currentWidget(), form.fundsPage);
        QVERIFY(editor->isModified());
    }
    QCOMPARE(form.edtDescription->text(), u"Half typ"_s);
}

void tst_desklanguage::fundsHaveTheirAfrikaansNames()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    desk.window->setLanguage(Language::Afrikaans);
    QCoreApplication::processEvents();
    QStringList texts;
    const TTreeView &funds = *desk.window->cataloguePage()->fraCatalogue->TreeView;
    for (const TTreeNode *node = funds.Items().GetFirstNode(); node; node = node->GetNext())
        texts.append(node->Text());
    QVERIFY(texts.contains(u"Kremetart Aandelefonds"_s));
    QVERIFY(texts.contains(u"Karoofondse"_s));
    QVERIFY(texts.contains(u"Effektetrustfondse"_s));
    QVERIFY(!texts.contains(u"Baobab Equity Fund"_s));
    QCOMPARE(desk.window->cataloguePage()->fraProducts->TreeView->Items()[0]->Text(),
             u"Horison Uittreeannuïteit"_s);
    QCOMPARE(desk.catalogue.products().constFirst().name, u"Horison Uittreeannuïteit"_s);
}

void tst_desklanguage::numbersOfThings()
{
    DeskWindow desk;
    desk.quote(0, 1, "One", 1);
    QVERIFY(desk.show());
    QCOMPARE(desk.start().countText(), u"1 quote"_s);
    desk.quote(0, 1, "Two", 1);
    desk.window->refresh();
    QCOMPARE(desk.start().countText(), u"2 quotes"_s);
    desk.window->setLanguage(Language::Afrikaans);
    QCoreApplication::processEvents();
    QCOMPARE(desk.start().countText(), u"2 kwotasies"_s);
}

#ifndef Q_OS_WIN
void tst_desklanguage::everyTextIsTranslated_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("folders");
    QTest::newRow("libraries") << u"zelcommonframes_af.ts"_s
                               << QStringList{u"data"_s,      u"toolkit"_s, u"host"_s,   u"frames"_s,
                                              u"dataviews"_s, u"funds"_s,   u"editor"_s, u"package"_s};
    QTest::newRow("program") << u"quotedesk_af.ts"_s << QStringList{u"quotedesk"_s};
}

void tst_desklanguage::everyTextIsTranslated()
{
    QFETCH(QString, file);
    QFETCH(QStringList, folders);
    QTemporaryDir folder;
    const QDir sources(sourceFile(u"."_s));
    const QString copy = folder.filePath(file);
    QVERIFY(QFile::copy(sources.filePath(u"translations/"_s + file), copy));

    // lupdate adds texts of the sources that the translation lacks to the copy.
    QProcess update;
    update.setWorkingDirectory(sources.path());
    const QString tool = QLibraryInfo::path(QLibraryInfo::BinariesPath) + u"/lupdate"_s;
    update.start(tool,
                 QStringList{u"-no-obsolete"_s, u"-locations"_s, u"none"_s} << folders << u"-ts"_s << copy);
    QVERIFY2(update.waitForFinished(120'000) && update.exitCode() == 0, qPrintable(update.errorString()));

    QFile result(copy);
    QVERIFY(result.open(QIODevice::ReadOnly));
    QDomDocument document;
    QVERIFY(document.setContent(&result));
    const QDomNodeList messages = document.elementsByTagName(u"message"_s);
    QVERIFY(messages.size() > 100);
    QStringList missing;
    for (int i = 0; i < messages.size(); ++i) {
        const QDomElement message = messages.at(i).toElement();
        const QDomElement translation = message.firstChildElement(u"translation"_s);
        if (translation.hasAttribute(u"type"_s) || translation.text().trimmed().isEmpty())
            missing.append(message.firstChildElement(u"source"_s).text());
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u'\n')));
}
#endif

ZEL_TEST_MAIN(tst_desklanguage)
#include "tst_desklanguage.moc"
