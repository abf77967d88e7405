// labels: linux
// The manual, the list of keys and the window About. The pictures of the manual are taken from the real
// screens. To renew them, run from the top of the source tree:
//     QUOTEDESK_MANUAL=docs/manual/images QT_QPA_PLATFORM=offscreen build/release/bin/tst_manual pictures
#include "DeskWindow.h"

#include "desk/AboutDialog.h"
#include "desk/ClientsPage.h"
#include "desk/Commands.h"
#include "desk/HelpWindow.h"
#include "desk/Manual.h"
#include "desk/NewQuoteDialog.h"
#include "desk/SettingsDialog.h"
#include "desk/ShortcutList.h"
#include "quote/FundsPage.h"
#include "quote/QuoteEditor.h"
#include "quote/QuoteForm.h"

#include "funds/frm_FundSelector.h"
#include "toolkit/TFonts.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

QString manualFolder()
{
    return ZelTest::sourceFile(u"docs/manual"_s);
}

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString pageFile(const QString &page, Language language)
{
    return u"%1/%2/%3.md"_s.arg(manualFolder(), languageCode(language), page);
}

/// The kind of each line that makes the structure of a page: headings with their level, rows of tables, items
/// of lists, pictures.
QStringList structureOf(const QString &text)
{
    static const QRegularExpression heading(u"^(#+) \\S"_s);
    static const QRegularExpression item(u"^([0-9]+\\.|-) \\S"_s);
    QStringList structure;
    for (const QString &line : text.split(u'\n')) {
        if (const auto match = heading.match(line); match.hasMatch())
            structure.append(match.captured(1));
        else if (line.startsWith(u'|'))
            structure.append(u"row"_s);
        else if (line.startsWith(u"!["_s))
            structure.append(line.section(u"]("_s, 1).section(u'/', -1));
        else if (item.match(line).hasMatch())
            structure.append(u"item"_s);
    }
    return structure;
}

/// The targets of the links and pictures of a page.
QStringList targetsOf(const QString &text)
{
    static const QRegularExpression link(u"\\]\\(([^)]*)\\)"_s);
    QStringList targets;
    for (auto match = link.globalMatch(text); match.hasNext();)
        targets.append(match.next().captured(1));
    return targets;
}

/// The keys in the first column of the tables of a page.
QSet<QString> keysOf(const QString &text)
{
    static const QRegularExpression row(u"^\\| (\\S[^|]*?) \\|"_s, QRegularExpression::MultilineOption);
    QSet<QString> keys;
    for (auto match = row.globalMatch(text); match.hasNext();) {
        const QString cell = match.next().captured(1);
        if (cell != u"Keys"_s && cell != u"Sleutels"_s && !cell.startsWith(u"---"_s))
            keys.insert(cell);
    }
    return keys;
}

QStringList shownPages(const HelpWindow &help)
{
    QStringList pages;
    for (int i = 0; i < help.lstPages->count(); ++i) {
        if (!help.lstPages->item(i)->isHidden())
            pages.append(help.lstPages->item(i)->data(Qt::UserRole).toString());
    }
    return pages;
}

} // namespace

class tst_manual : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void everyPageIsInBothLanguages();
    void thePagesHaveTheSameStructure_data();
    void thePagesHaveTheSameStructure();
    void everyLinkLeadsSomewhere_data();
    void everyLinkLeadsSomewhere();
    void everyPictureIsUsed();
    void theKeysAreThoseOfTheProgram_data();
    void theKeysAreThoseOfTheProgram();
    void everyTopicHasAPage();

    void thePageOfThePlaceOpens();
    void linksAndSteps();
    void theSearchFindsPages();
    void theLanguageChangesThePage();
    void theKeyListIsComplete();
    void theKeyListIsPrinted();
    void aboutSaysWhatIsUsed();
    void everyLibraryHasItsLicence();

    void pictures_data();
    void pictures();
};

void tst_manual::initTestCase()
{
    SubstituteDesignFonts();
}

void tst_manual::cleanup()
{
    setCurrentLanguage(Language::English);
}

void tst_manual::everyPageIsInBothLanguages()
{
    for (const Language language : allLanguages()) {
        const QDir folder(manualFolder() + u'/' + languageCode(language));
        QStringList names;
        for (const QString &file : folder.entryList({u"*.md"_s}))
            names.append(file.chopped(3));
        QStringList pages = Manual::pages();
        pages.sort();
        QCOMPARE(names, pages);
        for (const QString &page : pages) {
            // What the program shows is the file.
            QCOMPARE(Manual::text(page, language), contentOf(pageFile(page, language)));
            QVERIFY2(Manual::text(page, language).startsWith(u"# "_s), qPrintable(page));
            QVERIFY2(!Manual::title(page, language).isEmpty(), qPrintable(page));
            QCOMPARE(Manual::pageAt(Manual::address(page, language)), page);
        }
    }
    QVERIFY(Manual::text(u"no-such-page"_s, Language::English).isEmpty());
    QVERIFY(Manual::pageAt(QUrl(u"qrc:/manual/en/no-such-page.md"_s)).isEmpty());
}

void tst_manual::thePagesHaveTheSameStructure_data()
{
    QTest::addColumn<QString>("page");
    for (const QString &page : Manual::pages())
        QTest::newRow(qPrintable(page)) << page;
}

void tst_manual::thePagesHaveTheSameStructure()
{
    QFETCH(QString, page);
    const QStringList english = structureOf(contentOf(pageFile(page, Language::English)));
    QVERIFY(english.size() > 2);
    QCOMPARE(structureOf(contentOf(pageFile(page, Language::Afrikaans))), english);
    // Translated, not copied.
    QVERIFY(contentOf(pageFile(page, Language::Afrikaans)) != contentOf(pageFile(page, Language::English)));
}

void tst_manual::everyLinkLeadsSomewhere_data()
{
    thePagesHaveTheSameStructure_data();
}

void tst_manual::everyLinkLeadsSomewhere()
{
    QFETCH(QString, page);
    for (const Language language : allLanguages()) {
        const QString file = pageFile(page, language);
        for (const QString &target : targetsOf(contentOf(file))) {
            const QString path = QDir::cleanPath(QFileInfo(file).path() + u'/' + target);
            QVERIFY2(QFile::exists(path), qPrintable(file + u": "_s + target));
            if (target.endsWith(u".md"_s)) {
                QVERIFY2(Manual::pages().contains(QFileInfo(target).completeBaseName()), qPrintable(target));
            } else {
                // A picture shows its page's language, and the program has it, too.
                QVERIFY2(target.startsWith(u"../images/%1/"_s.arg(languageCode(language))),
                         qPrintable(target));
                QVERIFY(QImageReader(path).canRead());
                QVERIFY2(QFile::exists(u":/manual/images/%1/%2"_s.arg(languageCode(language),
                                                                      QFileInfo(target).fileName())),
                         qPrintable(target));
            }
        }
    }
}

void tst_manual::everyPictureIsUsed()
{
    for (const Language language : allLanguages()) {
        QSet<QString> used;
        for (const QString &page : Manual::pages()) {
            for (const QString &target : targetsOf(contentOf(pageFile(page, language))))
                used.insert(QFileInfo(target).fileName());
        }
        const QDir folder(manualFolder() + u"/images/"_s + languageCode(language));
        QVERIFY(!folder.entryList({u"*.png"_s}).isEmpty());
        for (const QString &picture : folder.entryList(QDir::Files)) {
            QVERIFY2(used.contains(picture), qPrintable(picture));
            QVERIFY2(QFileInfo(folder.filePath(picture)).size() < 120'000, qPrintable(picture));
        }
    }
}

void tst_manual::theKeysAreThoseOfTheProgram_data()
{
    QTest::addColumn<Language>("language");
    for (const Language language : allLanguages())
        QTest::newRow(qPrintable(languageCode(language))) << language;
}

void tst_manual::theKeysAreThoseOfTheProgram()
{
    QFETCH(Language, language);
    DeskWindow desk;
    QVERIFY(desk.show());
    QSet<QString> ofProgram;
    for (const Command &command : allCommands(*desk.window)) {
        for (const QKeySequence &keys : command.own)
            ofProgram.insert(keys.toString(QKeySequence::PortableText));
    }
    QVERIFY(ofProgram.size() > 20);
    const QSet<QString> ofManual = keysOf(Manual::text(u"keys"_s, language));
    const auto list = [](QSet<QString> keys) { return QStringList(keys.values()).join(u", "_s); };
    QVERIFY2((ofManual - ofProgram).isEmpty(),
             qPrintable(u"No command has these keys of the manual: "_s + list(ofManual - ofProgram)));
    QVERIFY2((ofProgram - ofManual).isEmpty(),
             qPrintable(u"The manual does not have these keys: "_s + list(ofProgram - ofManual)));
}

void tst_manual::everyTopicHasAPage()
{
    for (int topic = 0; topic <= static_cast<int>(HelpWindow::Topic::Dialog); ++topic)
        QVERIFY(Manual::pages().contains(HelpWindow::pageOf(static_cast<HelpWindow::Topic>(topic))));
}

void tst_manual::thePageOfThePlaceOpens()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 2, "Mine", 100, 12);
    QVERIFY(desk.show());
    const auto pageOf = [&desk](QWidget *owner) {
        auto *const help = owner->findChild<HelpWindow *>();
        const QString page = help && help->isVisible() ? help->page() : QString();
        if (help)
            help->close();
        return page;
    };
    desk.key(Qt::Key_F1);
    QCOMPARE(pageOf(desk.window.get()), u"quotes"_s);
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    const QPair<QuoteForm::Page, QString> pages[] = {{QuoteForm::Page::Details, u"details"_s},
                                                     {QuoteForm::Page::Income, u"details"_s},
                                                     {QuoteForm::Page::Funds, u"allocation"_s},
                                                     {QuoteForm::Page::Summary, u"summary"_s}};
    for (const auto &[page, expected] : pages) {
        form.goTo(page);
        QVERIFY(showActive(*desk.window));
        desk.window->actHelp->trigger();
        QCOMPARE(pageOf(desk.window.get()), expected);
    }
    // A dialog has a window of its own, which works while the dialog is modal.
    QString page;
    bool usable = false;
    desk.window->actStartPage->trigger();
    QVERIFY(inDialog<SettingsDialog>([&] { desk.window->actSettings->trigger(); },
                                     [&](SettingsDialog &dialog) {
                                         QTest::keyClick(dialog.edFind, Qt::Key_F1);
                                         auto *const help = dialog.findChild<HelpWindow *>();
                                         usable = help && help->isVisible() && !help->isModal();
                                         page = pageOf(&dialog);
                                         dialog.reject();
                                     }));
    QVERIFY(usable);
    QCOMPARE(page, u"settings"_s);
    // One window is used again.
    desk.window->actHelp->trigger();
    desk.window->actHelp->trigger();
    QCOMPARE(desk.window->findChildren<HelpWindow *>().size(), 1);
}

void tst_manual::linksAndSteps()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    HelpWindow help(desk.window.get());
    help.goTo(u"allocation"_s);
    QVERIFY(showActive(help));
    QVERIFY(!help.btnBack->isEnabled());
    QCOMPARE(help.windowTitle(), u"Help: Split the investment"_s);
    QCOMPARE(help.lstPages->currentItem()->text(), u"Split the investment"_s);
    // The link in the page, with keys.
    help.browser->setFocus();
    QTest::keyClick(help.browser, Qt::Key_Tab);
    QTest::keyClick(help.browser, Qt::Key_Return);
    QCOMPARE(help.page(), u"funds"_s);
    QCOMPARE(help.lstPages->currentItem()->text(), u"Choose funds"_s);
    QVERIFY(help.btnBack->isEnabled());
    QTest::keyClick(&help, Qt::Key_Left, Qt::AltModifier);
    QTRY_COMPARE(help.page(), u"allocation"_s);
    QTest::keyClick(&help, Qt::Key_Right, Qt::AltModifier);
    QTRY_COMPARE(help.page(), u"funds"_s);
    // The contents, with keys.
    help.lstPages->setFocus();
    QTest::keyClick(help.lstPages, Qt::Key_Home);
    QCOMPARE(help.page(), u"first-steps"_s);
    // Pictures are in the page, and headings have the sizes of the look.
    QVERIFY(!help.browser->document()
                 ->resource(QTextDocument::ImageResource, QUrl(u"../images/en/quotes.png"_s))
                 .isNull());
    QTextBlock block = help.browser->document()->begin();
    QCOMPARE(block.blockFormat().headingLevel(), 1);
    QCOMPARE(block.begin().fragment().charFormat().fontPointSize(),
             FontOf(LookFont::Title, help.browser->font()).pointSizeF());
    QTest::keyClick(&help, Qt::Key_Escape);
    QVERIFY(!help.isVisible());
}

void tst_manual::theSearchFindsPages()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    HelpWindow help(desk.window.get());
    help.goTo(u"first-steps"_s);
    QVERIFY(showActive(help));
    QCOMPARE(shownPages(help), Manual::pages());
    help.edFind->setFocus();
    QTest::keyClicks(help.edFind, u"spreadsheet paste"_s);
    QCOMPARE(shownPages(help), QStringList{u"allocation"_s});
    QCOMPARE(help.page(), u"allocation"_s);
    QVERIFY(help.browser->extraSelections().size() >= 2);
    help.edFind->setText(u"xyzzy"_s);
    QVERIFY(shownPages(help).isEmpty());
    help.edFind->clear();
    QCOMPARE(shownPages(help), Manual::pages());
    QVERIFY(help.browser->extraSelections().isEmpty());
}

void tst_manual::theLanguageChangesThePage()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    HelpWindow help(desk.window.get());
    help.goTo(u"settings"_s);
    QVERIFY(showActive(help));
    desk.window->setLanguage(Language::Afrikaans);
    QTRY_COMPARE(help.windowTitle(), u"Hulp: Instellings"_s);
    QCOMPARE(help.page(), u"settings"_s);
    QVERIFY(help.browser->toPlainText().contains(u"Voorkoms"_s));
    QCOMPARE(help.lstPages->item(1)->text(), u"Kwotasies"_s);
}

void tst_manual::theKeyListIsComplete()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const QList<Command> commands = allCommands(*desk.window);
    QVERIFY(inDialog<ShortcutList>(
        [&] { desk.window->actShortcuts->trigger(); },
        [&](ShortcutList &list) {
            for (const Command &command : commands) {
                const auto found =
                    list.lstCommands->findItems(command.text, Qt::MatchExactly | Qt::MatchRecursive);
                QVERIFY2(command.keys.isEmpty() || !found.isEmpty(), qPrintable(command.text));
            }
            const auto visible = [&list] {
                QStringList texts;
                for (QTreeWidgetItemIterator it(list.lstCommands, QTreeWidgetItemIterator::NotHidden |
                                                                      QTreeWidgetItemIterator::NoChildren);
                     *it; ++it)
                    texts.append((*it)->text(0));
                return texts;
            };
            QTest::keyClicks(list.edFind, u"ctrl+shift+p"_s);
            QCOMPARE(visible(), QStringList{u"Save as PDF"_s});
            list.edFind->clear();
            QVERIFY(visible().size() > 20);
            list.reject();
        }));
    // Every command of the program has keys of its own, or a place in a menu.
    for (const Command &command : commands)
        QVERIFY2(!command.text.isEmpty() && !command.group.isEmpty(), qPrintable(command.name));
}

void tst_manual::theKeyListIsPrinted()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const ShortcutList list(allCommands(*desk.window), desk.window->session().adviser(), desk.window.get());
    const QString file = desk.folder.filePath(u"keys.pdf"_s);
    QPdfWriter writer(file);
    list.print(writer);
    QVERIFY(QFileInfo(file).size() > 1000);
}

void tst_manual::aboutSaysWhatIsUsed()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(inDialog<AboutDialog>([&] { desk.window->actAbout->trigger(); },
                                  [&](AboutDialog &about) {
                                      const QString text = about.text();
                                      for (const QString &part :
                                           {QString::fromLatin1(qVersion()), u"SQLite: 3."_s,
                                            QDir::toNativeSeparators(desk.folder.filePath(u"quotes.db"_s)),
                                            u"came with the program"_s, u"LGPL"_s, u"zlib"_s})
                                          QVERIFY2(text.contains(part), qPrintable(part + u'\n' + text));
                                      QTest::mouseClick(about.btnCopy, Qt::LeftButton);
                                      QCOMPARE(QApplication::clipboard()->text(), text);
                                      about.reject();
                                  }));
}

void tst_manual::everyLibraryHasItsLicence()
{
    const QList<UsedLibrary> libraries = usedLibraries();
    QVERIFY(libraries.size() > 5);
    QSet<QString> covered;
    for (const QString &line :
         contentOf(sourceFile(u"tools/libraries.txt"_s)).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u'#'))
            continue;
        const QStringList parts = line.split(u'|');
        QCOMPARE(parts.size(), 4);
        for (const QString &package : parts.at(3).simplified().split(u' '))
            covered.insert(package);
    }
    for (const UsedLibrary &library : libraries)
        QVERIFY2(!library.name.isEmpty() && !library.licence.isEmpty() &&
                     library.address.startsWith(u"https://"_s),
                 qPrintable(library.name));
    // Each package that the program is built with is covered, but the tools.
    static const QRegularExpression isLibrary(u"^(lib.*|.*-dev|fonts-.*)$"_s);
    static const QSet<QString> tools{u"qt6-tools-dev"_s};
    for (const QString &line :
         contentOf(sourceFile(u"tools/packages.txt"_s)).split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList words = line.simplified().split(u' ');
        if (line.startsWith(u'#') || !words.mid(1).contains(u"build"_s) || tools.contains(words.first()) ||
            !isLibrary.match(words.first()).hasMatch())
            continue;
        QVERIFY2(covered.contains(words.first()), qPrintable(words.first()));
    }
}

void tst_manual::pictures_data()
{
    theKeysAreThoseOfTheProgram_data();
}

/// Shows each screen of the manual; saves its picture when a folder is named.
void tst_manual::pictures()
{
    QFETCH(Language, language);
    const QString folder = qEnvironmentVariable("QUOTEDESK_MANUAL");
    const auto take = [&](QWidget &widget, const QString &name) {
        QCoreApplication::processEvents();
        const QImage picture = widget.grab().toImage();
        QVERIFY(!picture.isNull());
        const QString path = u"images/%1/%2.png"_s.arg(languageCode(language), name);
        if (!folder.isEmpty()) {
            QVERIFY(QDir().mkpath(folder + u'/' + languageCode(language)));
            // Quality 0 is the smallest PNG file.
            QVERIFY(picture.convertToFormat(QImage::Format_RGB32)
                        .save(u"%1/%2/%3.png"_s.arg(folder, languageCode(language), name), "PNG", 0));
        }
        QVERIFY2(QFile::exists(manualFolder() + u'/' + path), qPrintable(path));
    };

    DeskWindow desk;
    setCurrentLanguage(language);
    desk.catalogue.setAfrikaans(language == Language::Afrikaans);
    const qint64 nel = desk.client("Nel", "Anna");
    desk.quote(desk.client("Dlamini", "Nomvula"), 2, "", 840000, 12);
    desk.quote(desk.client("Naidoo", "Priya"), 3, "", 360000, 15);
    desk.quote(desk.client("Botha", "Hendrik"), 1, "", 2400000);
    Quote quote;
    quote.productID = 3;
    quote.clientID = nel;
    quote.amount = 75000;
    for (const auto &[fund, percent] :
         {std::pair{2, 40}, std::pair{12, 25}, std::pair{15, 20}, std::pair{40, 15}})
        quote.funds.append({fund, {}, 750 * percent, percent});
    const qint64 number = desk.store->save(quote);
    QVERIFY(desk.show());
    desk.window->resize(1000, 620);
    desk.start().chooseQuote(number);
    take(*desk.window, u"quotes"_s);
    {
        NewQuoteDialog dialog(desk.window->session(), 3, desk.window.get());
        QVERIFY(showActive(dialog));
        take(dialog, u"new-quote"_s);
    }
    desk.window->pages->setCurrentWidget(desk.window->clientsPage());
    take(*desk.window, u"clients"_s);
    desk.window->pages->setCurrentIndex(0);
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    form.goTo(QuoteForm::Page::Details);
    take(*desk.window, u"details"_s);
    form.goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(form.fundsPage->isReady());
    take(*desk.window, u"funds"_s);
    QVERIFY(inDialog<TfrmFundSelector>([&] { form.fundActions.constFirst()->trigger(); },
                                       [&](TfrmFundSelector &selector) {
                                           take(selector, u"selector"_s);
                                           selector.reject();
                                       }));
    form.goTo(QuoteForm::Page::Summary);
    take(*desk.window, u"summary"_s);
    {
        SettingsDialog dialog(desk.window->settings().current(), desk.window->session(), *desk.window);
        dialog.resize(900, 560);
        QVERIFY(showActive(dialog));
        take(dialog, u"settings"_s);
    }
}

ZEL_TEST_MAIN(tst_manual)
#include "tst_manual.moc"
