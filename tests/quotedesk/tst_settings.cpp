// The settings: the dialog, what it puts into force, and the file that remembers it.
#include "DeskWindow.h"

#include "database/StoreError.h"
#include "desk/AboutDialog.h"
#include "desk/HelpWindow.h"
#include "desk/Preferences.h"
#include "desk/SettingsDialog.h"
#include "desk/ShortcutList.h"
#include "quote/FundsPage.h"
#include "quote/QuoteEditor.h"
#include "quote/QuoteForm.h"
#include "quote/QuoteReport.h"
#include "quote/ShownNumbers.h"
#include "store/Backup.h"

#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QRadioButton>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// A settings folder of the test's own.
class OwnFolder
{
public:
    OwnFolder() : m_former(qgetenv("XDG_CONFIG_HOME"))
    {
        qputenv("XDG_CONFIG_HOME", m_home.path().toLocal8Bit());
    }
    ~OwnFolder() { qputenv("XDG_CONFIG_HOME", m_former); }
    QString file() const
    {
        return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + u"/quotedesk.ini"_s;
    }

private:
    QTemporaryDir m_home;
    QByteArray m_former;
};

/// Opens the settings with their key, runs @p work in the dialog, and returns whether the dialog appeared.
template <typename Work> bool inSettings(const DeskWindow &desk, Work work)
{
    return inDialog<SettingsDialog>([&] { desk.key(Qt::Key_Comma, Qt::ControlModifier); }, work);
}

void press(SettingsDialog &dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(dialog.buttons->button(button), Qt::LeftButton);
}

template <typename Widget> Widget *part(SettingsDialog &dialog, const char *name)
{
    return dialog.findChild<Widget *>(QString::fromLatin1(name));
}

QRadioButton *radio(QWidget &group, const QString &text)
{
    for (QRadioButton *const button : group.findChildren<QRadioButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

/// Chooses a command in the list of keys by its text.
bool chooseCommand(SettingsDialog &dialog, const QString &text)
{
    dialog.goTo(SettingsDialog::Section::Shortcuts);
    auto *const list = part<QTreeWidget>(dialog, "lstShortcuts");
    const QList<QTreeWidgetItem *> found = list->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty())
        return false;
    list->setCurrentItem(found.constFirst());
    return true;
}

void typeFile(QFileDialog &dialog, const QString &path)
{
    auto *const name = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
}

/// Types keys into the field for new keys.
void typeKeys(SettingsDialog &dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    auto *const field = part<KeyField>(dialog, "edKeys");
    field->setFocus();
    QTest::keyClick(field, key, modifiers);
}

void pick(QComboBox &box, int index)
{
    box.setFocus();
    while (box.currentIndex() != index)
        QTest::keyClick(&box, box.currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
}

} // namespace

class tst_settings : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void whatIsSeenAppliesAtOnce();
    void cancelTurnsItBack();
    void okAppliesAndTells();
    void theFileRemembersEverything();
    void aDamagedFileHasDefaults_data();
    void aDamagedFileHasDefaults();
    void aFileOfAnOlderVersion();
    void aFileThatCannotBeWritten();
    void theSearchFindsRows();
    void aWrongCurrencyIsRefused();
    void theLogoIsChosenAndRemoved();
    void aBackupIsComplete();
    void aBackupNeverDamages();
    void theCatalogueHasADate();
    void keysAreChanged();
    void keysInUseAreRefused();
    void keysForTypingAreRefused();
    void keysAreReset();
    void pictures();
};

void tst_settings::cleanup()
{
    setCurrentLanguage(Language::English);
    setNumberNotation({});
    Letterhead::setCurrent({});
    setChosenShortcuts({});
}

void tst_settings::whatIsSeenAppliesAtOnce()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const QColor light = QApplication::palette().color(QPalette::Window);
    const qreal points = QApplication::font().pointSizeF();
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        QTest::mouseClick(radio(*part<QWidget>(dialog, "grpColours"), u"Dark"_s), Qt::LeftButton);
        QVERIFY(QApplication::palette().color(QPalette::Window).lightness() < 64);
        QTest::mouseClick(radio(*part<QWidget>(dialog, "grpTextSize"), u"Larger"_s), Qt::LeftButton);
        QCOMPARE(QApplication::font().pointSizeF(), points + 3);
        pick(*part<QComboBox>(dialog, "cbLanguage"), 1);
        QTRY_COMPARE(dialog.windowTitle(), u"Instellings"_s);
        QCOMPARE(currentLanguage(), Language::Afrikaans);
        QVERIFY(radio(*part<QWidget>(dialog, "grpTextSize"), u"Normaal"_s));
        // Keys go from part to part.
        radio(*part<QWidget>(dialog, "grpTextSize"), u"Grootste"_s)->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
        QCOMPARE(QApplication::font().pointSizeF(), points + 1.5);
        press(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(desk.window->settings().current().textSize, TextSize::Large);
    QCOMPARE(desk.window->settings().current().colours, ColourScheme::Dark);
    QCOMPARE(desk.window->settings().current().language, Language::Afrikaans);
    desk.window->settings().apply({});
    QCOMPARE(QApplication::font().pointSizeF(), points);
    QCOMPARE(QApplication::palette().color(QPalette::Window), light);
}

void tst_settings::cancelTurnsItBack()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const Settings before = desk.window->settings().current();
    const QColor light = QApplication::palette().color(QPalette::Window);
    const QFont font = QApplication::font();
    const QSignalSpy chosen(&desk.window->settings(), &SettingsKeeper::chosen);
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        QTest::mouseClick(radio(*part<QWidget>(dialog, "grpColours"), u"Dark"_s), Qt::LeftButton);
        QTest::mouseClick(radio(*part<QWidget>(dialog, "grpTextSize"), u"Large"_s), Qt::LeftButton);
        pick(*part<QComboBox>(dialog, "cbLanguage"), 1);
        dialog.goTo(SettingsDialog::Section::Letterhead);
        part<QLineEdit>(dialog, "edFirm")->setFocus();
        desk.type(u"Ironwood"_s);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }));
    QCOMPARE(chosen.count(), 0);
    QVERIFY(desk.window->settings().current() == before);
    QCOMPARE(QApplication::palette().color(QPalette::Window), light);
    QCOMPARE(QApplication::font(), font);
    QCOMPARE(currentLanguage(), Language::English);
    QVERIFY(Letterhead::current().isEmpty());
}

void tst_settings::okAppliesAndTells()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), 3, "Mine", 1250000, 12);
    QVERIFY(desk.show());
    QSignalSpy chosen(&desk.window->settings(), &SettingsKeeper::chosen);
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        dialog.goTo(SettingsDialog::Section::Numbers);
        auto *const sign = part<QComboBox>(dialog, "cbCurrency");
        sign->lineEdit()->setFocus();
        sign->lineEdit()->selectAll();
        desk.type(u"N$"_s);
        pick(*part<QComboBox>(dialog, "cbNumberFormat"), 2);
        QCOMPARE(part<QLabel>(dialog, "lblExample")->text(),
                 QString(u"N$ 1 250 000,50    12,50%"_s).replace(u"1 250 000"_s, u"1\u00A0250\u00A0000"_s));
        // Nothing changes before OK.
        QCOMPARE(shownMoney(1250000), u"1,250,000.00"_s);
        dialog.goTo(SettingsDialog::Section::Letterhead);
        part<QLineEdit>(dialog, "edFirm")->setFocus();
        desk.type(u"Ironwood Advice"_s);
        press(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(shownMoney(1250000), u"1\u00A0250\u00A0000,00"_s);
    QCOMPARE(shownAmount(5), u"N$ 5,00"_s);
    QCOMPARE(withCurrency(u"Amount (R)"_s), u"Amount (N$)"_s);
    QCOMPARE(Letterhead::current().firm, u"Ironwood Advice"_s);
    const QuoteReport report = desk.window->quotes().open(number)->report();
    QCOMPARE(report.letterhead.firm, u"Ironwood Advice"_s);
    // Fields and frames keep their notation, because they read it.
    QCOMPARE(desk.window->quotes().current()->fundsPage()->edAmount->text(), u"1,250,000.00"_s);
}

void tst_settings::theFileRemembersEverything()
{
    const OwnFolder folder;
    Settings settings;
    settings.language = Language::Afrikaans;
    settings.colours = ColourScheme::Light;
    settings.textSize = TextSize::Largest;
    settings.notation = NumberNotation::choices().at(3);
    settings.notation.currency = u"\u20AC"_s;
    settings.letterhead.firm = u"Ironwood; \"Advice\" = 100%"_s;
    settings.letterhead.adviser = QString::fromUtf8("Anné, van der Merwe");
    settings.letterhead.licence = u"FSP 12345"_s;
    settings.letterhead.address = u"1 Long Street\nCape Town"_s;
    settings.letterhead.telephone = u"+27 21 555 0100"_s;
    settings.letterhead.email = u"anne@ironwood.example"_s;
    settings.letterhead.logo = QImage(30, 10, QImage::Format_ARGB32);
    settings.letterhead.logo.fill(Qt::darkGreen);
    settings.shortcuts = {{u"actSave"_s, QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_S)},
                          {u"actClients"_s, QKeySequence()}};
    Preferences().remember(settings);
    Settings read = Preferences().settings();
    QCOMPARE(read.letterhead.logo.convertToFormat(QImage::Format_ARGB32), settings.letterhead.logo);
    read.letterhead.logo = settings.letterhead.logo;
    QVERIFY(read == settings);
    // What was taken away is away.
    settings.shortcuts.clear();
    settings.letterhead = {};
    Preferences().remember(settings);
    QVERIFY(Preferences().settings() == settings);
}

void tst_settings::aDamagedFileHasDefaults_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("other words") << QByteArray(
        "[General]\nlanguage=klingon\ncolours=9\ntextsize=-4\n[numbers]\ncurrency=12 34\nformat=x\n"
        "[shortcuts]\nactSave=A\nactOpen=Nonsense\nactNew=Tab\n");
    QTest::newRow("lists and other types")
        << QByteArray("[General]\nlanguage=en, af\ncolours=@Invalid()\ntextsize=@ByteArray(9)\n[numbers]\n"
                      "currency=@Variant(\\0\\0\\0)\nformat=a, b\n[letterhead]\nfirm=@Size(1 "
                      "2)\n[shortcuts]\nactSave=a, b\n");
    QTest::newRow("cut off") << QByteArray("[General\nlanguage=\"a");
    QTest::newRow("not text") << QByteArray("\x00\x01\xff\xfe[\x00]=\x80\x81\n=\n[]\n\xf0", 17);
    QTest::newRow("blank") << QByteArray();
}

void tst_settings::aDamagedFileHasDefaults()
{
    QFETCH(QByteArray, content);
    const OwnFolder folder;
    QVERIFY(QDir().mkpath(QFileInfo(folder.file()).path()));
    QFile file(folder.file());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    QFile logo(QFileInfo(folder.file()).path() + u"/logo.png"_s);
    QVERIFY(logo.open(QIODevice::WriteOnly));
    logo.write("no picture");
    logo.close();
    const Settings read = Preferences().settings();
    QCOMPARE(read.colours, ColourScheme::System);
    QCOMPARE(read.textSize, TextSize::Normal);
    QCOMPARE(read.language, Language::English);
    QVERIFY(read.notation == NumberNotation());
    QVERIFY(read.shortcuts.isEmpty());
    QVERIFY(read.letterhead.logo.isNull());
    // The file can be written over.
    Settings settings;
    settings.textSize = TextSize::Large;
    Preferences().remember(settings);
    QCOMPARE(Preferences().settings().textSize, TextSize::Large);
}

void tst_settings::aFileOfAnOlderVersion()
{
    const OwnFolder folder;
    QVERIFY(QDir().mkpath(QFileInfo(folder.file()).path()));
    QFile file(folder.file());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\nlanguage=af\ndark=true\n");
    file.close();
    QCOMPARE(Preferences().settings().language, Language::Afrikaans);
    QCOMPARE(Preferences().settings().colours, ColourScheme::Dark);
}

void tst_settings::aFileThatCannotBeWritten()
{
    const OwnFolder folder;
    // A folder where the file should be: nobody can write it.
    QVERIFY(QDir().mkpath(folder.file()));
    QString message;
    try {
        Preferences().remember({});
    } catch (const Exception &error) {
        message = error.message();
    }
    QVERIFY2(message.contains(u"quotedesk.ini"_s), qPrintable(message));
}

void tst_settings::theSearchFindsRows()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        const auto sections = [&dialog] {
            QStringList shown;
            for (int i = 0; i < dialog.lstSections->count(); ++i) {
                if (!dialog.lstSections->item(i)->isHidden())
                    shown.append(dialog.lstSections->item(i)->text());
            }
            return shown;
        };
        QCOMPARE(sections().size(), 6);
        dialog.edFind->setFocus();
        desk.type(u"telephone"_s);
        QCOMPARE(sections(), QStringList{u"Letterhead"_s});
        QVERIFY(part<QLineEdit>(dialog, "edTelephone")->isVisible());
        QVERIFY(!part<QLineEdit>(dialog, "edFirm")->isVisible());
        dialog.edFind->selectAll();
        desk.type(u"dupl"_s);
        QCOMPARE(sections(), QStringList{u"Shortcuts"_s});
        dialog.edFind->selectAll();
        desk.type(u"xyzzy"_s);
        QCOMPARE(sections(), QStringList());
        QVERIFY(part<QLabel>(dialog, "lblNothing")->isVisible());
        dialog.edFind->clear();
        QCOMPARE(sections().size(), 6);
        QVERIFY(!part<QLabel>(dialog, "lblNothing")->isVisible());
        dialog.reject();
    }));
}

void tst_settings::aWrongCurrencyIsRefused()
{
    for (const char *const wrong : {"", "12", "R 1", "-", "R,"})
        QVERIFY2(!NumberNotation::isCurrency(QString::fromLatin1(wrong)), wrong);
    for (const QString &right : {u"R"_s, u"ZAR"_s, u"N$"_s, u"\u20AC"_s, u"Fr."_s})
        QVERIFY2(NumberNotation::isCurrency(right), qPrintable(right));
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        dialog.goTo(SettingsDialog::Section::Numbers);
        part<QComboBox>(dialog, "cbCurrency")->lineEdit()->setFocus();
        part<QComboBox>(dialog, "cbCurrency")->lineEdit()->selectAll();
        desk.type(u"1,5"_s);
        dialog.goTo(SettingsDialog::Section::Storage);
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(dialog.isVisible());
        QVERIFY(dialog.lblProblem->isVisible() && dialog.lblProblem->text().contains(u"currency sign"_s));
        QCOMPARE(dialog.lstSections->currentRow(), int{1});
        dialog.reject();
    }));
    QVERIFY(numberNotation() == NumberNotation());
}

void tst_settings::theLogoIsChosenAndRemoved()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const QString file = desk.folder.filePath(u"logo.png"_s);
    QImage picture(2000, 400, QImage::Format_RGB32);
    picture.fill(Qt::darkBlue);
    QVERIFY(picture.save(file));
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        dialog.goTo(SettingsDialog::Section::Letterhead);
        QVERIFY(inDialog<QFileDialog>(
            [&] { QTest::mouseClick(part<QPushButton>(dialog, "btnChooseLogo"), Qt::LeftButton); },
            [&](QFileDialog &files) { typeFile(files, file); }));
        QVERIFY(part<QPushButton>(dialog, "btnRemoveLogo")->isEnabled());
        press(dialog, QDialogButtonBox::Ok);
    }));
    // Reduced to what print needs, with its proportions.
    QCOMPARE(Letterhead::current().logo.size(), QSize(900, 180));
    QFile broken(desk.folder.filePath(u"broken.png"_s));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no picture");
    broken.close();
    QVERIFY_THROWS_EXCEPTION(Exception, Letterhead::readLogo(broken.fileName()));
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        dialog.goTo(SettingsDialog::Section::Letterhead);
        QTest::mouseClick(part<QPushButton>(dialog, "btnRemoveLogo"), Qt::LeftButton);
        press(dialog, QDialogButtonBox::Ok);
    }));
    QVERIFY(Letterhead::current().logo.isNull());
}

void tst_settings::aBackupIsComplete()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), 3, "Mine", 1000, 12);
    QVERIFY(desk.show());
    const QString target = desk.folder.filePath(u"copy.db"_s);
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        dialog.goTo(SettingsDialog::Section::Storage);
        QVERIFY(inDialog<QFileDialog>(
            [&] { QTest::mouseClick(part<QPushButton>(dialog, "btnBackUp"), Qt::LeftButton); },
            [&](QFileDialog &files) { typeFile(files, target); }));
        QVERIFY(part<QLabel>(dialog, "lblSaid")->text().contains(u"copy.db"_s));
        dialog.reject();
    }));
    // The copy opens like the file itself, and later changes do not reach it.
    desk.quote(0, 1, "Later", 5);
    const auto copy = QuoteStore::open(StoreLocation::fromText(target));
    QCOMPARE(copy->quotes().size(), 1);
    QVERIFY(copy->quote(number) == desk.store->quote(number));
#ifndef Q_OS_WIN
    QCOMPARE(QFile::permissions(target) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
#endif
}

void tst_settings::aBackupNeverDamages()
{
    DeskWindow desk;
    desk.quote(0, 1, "Mine", 5);
    const auto messageOf = [&desk](const QString &path) {
        try {
            backUp(*desk.store, path);
        } catch (const StoreError &error) {
            return error.message();
        }
        return QString();
    };
    QVERIFY(messageOf(desk.store->location().file).contains(u"itself"_s));
    QVERIFY(messageOf(desk.folder.filePath(u"missing/copy.db"_s)).contains(u"copy.db"_s));
    QCOMPARE(desk.store->quotes().size(), 1);
    // An older copy is replaced by a complete one, and nothing else is left in the folder.
    const QString target = desk.folder.filePath(u"copy.db"_s);
    QCOMPARE(messageOf(target), QString());
    desk.quote(0, 1, "Second", 6);
    QCOMPARE(messageOf(target), QString());
    QCOMPARE(QuoteStore::open(StoreLocation::fromText(target))->quotes().size(), 2);
    QVERIFY(
        QDir(desk.folder.path()).entryList({u".quotedesk*"_s}, QDir::AllEntries | QDir::Hidden).isEmpty());
}

void tst_settings::theCatalogueHasADate()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    const auto shown = [&desk] {
        QString text;
        const bool opened = inSettings(desk, [&](SettingsDialog &dialog) {
            dialog.goTo(SettingsDialog::Section::Catalogue);
            text = part<QLabel>(dialog, "lblCatalogueDate")->text() + u'|' +
                   part<QLabel>(dialog, "lblCatalogueCount")->text();
            dialog.reject();
        });
        return opened ? text : QString();
    };
    QVERIFY(!desk.catalogue.imported().isValid());
    QVERIFY2(shown().startsWith(u"The catalogue that came with the program|"_s), qPrintable(shown()));
    QFile file(desk.folder.filePath(u"catalogue.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("GroupTypeID,GroupTypeDesc,FundGroupID,FundGroupName,FundID,FundName\n1,T,1,G,1,One\n");
    file.close();
    desk.catalogue.importFile(file.fileName());
    QCOMPARE(desk.catalogue.imported().date(), QDateTime::currentDateTimeUtc().date());
    QVERIFY2(shown().endsWith(u"|1 fund, 3 products"_s), qPrintable(shown()));
}

void tst_settings::keysAreChanged()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 3, "Mine", 1000, 12);
    QVERIFY(desk.show());
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        QVERIFY(chooseCommand(dialog, u"Save"_s));
        typeKeys(dialog, Qt::Key_F12);
        QCOMPARE(part<QLabel>(dialog, "lblKeysSaid")->text(), QString());
        QVERIFY(chooseCommand(dialog, u"Import Catalogue"_s));
        QTest::mouseClick(part<QPushButton>(dialog, "btnNoKeys"), Qt::LeftButton);
        press(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(form.actSave->shortcut(), QKeySequence(Qt::Key_F12));
    QVERIFY(desk.window->actImport->shortcuts().isEmpty());
    QVERIFY2(!desk.window->actImport->toolTip().contains(u"Ctrl"_s),
             qPrintable(desk.window->actImport->toolTip()));
    // The new keys work, and a form that is opened later has them.
    form.edtDescription->setFocus();
    QSignalSpy triggered(form.actSave, &QAction::triggered);
    desk.key(Qt::Key_F12);
    QCOMPARE(triggered.count(), 1);
    const qint64 other = desk.quote(0, 1, "Other", 1000, 12);
    QCOMPARE(desk.window->quotes().open(other)->form()->actSave->shortcut(), QKeySequence(Qt::Key_F12));
}

void tst_settings::keysInUseAreRefused()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        QVERIFY(chooseCommand(dialog, u"Save"_s));
        typeKeys(dialog, Qt::Key_N, Qt::ControlModifier);
        QVERIFY2(part<QLabel>(dialog, "lblKeysSaid")->text().contains(u"\"New Quote\""_s),
                 qPrintable(part<QLabel>(dialog, "lblKeysSaid")->text()));
        QCOMPARE(part<KeyField>(dialog, "edKeys")->text(), u"Ctrl+S"_s);
        // The keys of the frames, too.
        typeKeys(dialog, Qt::Key_L, Qt::ControlModifier);
        QVERIFY(part<QLabel>(dialog, "lblKeysSaid")->text().contains(u"Allocate"_s));
        press(dialog, QDialogButtonBox::Ok);
    }));
    QVERIFY(desk.window->settings().current().shortcuts.isEmpty());
}

void tst_settings::keysForTypingAreRefused()
{
    QVERIFY(isUsableShortcut(QKeySequence(Qt::Key_F12)));
    QVERIFY(isUsableShortcut(QKeySequence(Qt::CTRL | Qt::Key_K)));
    QVERIFY(!isUsableShortcut(QKeySequence(Qt::Key_K)));
    QVERIFY(!isUsableShortcut(QKeySequence(Qt::SHIFT | Qt::Key_K)));
    QVERIFY(!isUsableShortcut(QKeySequence(Qt::Key_Return)));
    QVERIFY(!isUsableShortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab)));
    QVERIFY(!isUsableShortcut(QKeySequence(Qt::CTRL | Qt::Key_K, Qt::CTRL | Qt::Key_S)));
    QVERIFY(!isUsableShortcut({}));
    DeskWindow desk;
    QVERIFY(desk.show());
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        QVERIFY(chooseCommand(dialog, u"Duplicate"_s));
        typeKeys(dialog, Qt::Key_K);
        QVERIFY(part<QLabel>(dialog, "lblKeysSaid")->text().startsWith(u"K "_s));
        dialog.reject();
    }));
}

void tst_settings::keysAreReset()
{
    DeskWindow desk;
    QVERIFY(desk.show());
    Settings settings = desk.window->settings().current();
    settings.shortcuts = {{u"actDuplicate"_s, QKeySequence(Qt::CTRL | Qt::Key_K)},
                          {u"actClients"_s, QKeySequence(Qt::CTRL | Qt::Key_D)}};
    desk.window->settings().apply(settings);
    QCOMPARE(desk.window->actDuplicate->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_K));
    QVERIFY(inSettings(desk, [&](SettingsDialog &dialog) {
        // Its own keys belong to another command now.
        QVERIFY(chooseCommand(dialog, u"Duplicate"_s));
        QTest::mouseClick(part<QPushButton>(dialog, "btnResetKeys"), Qt::LeftButton);
        QVERIFY(part<QLabel>(dialog, "lblKeysSaid")->text().contains(u"Clients"_s));
        QVERIFY(chooseCommand(dialog, u"Clients"_s));
        QTest::mouseClick(part<QPushButton>(dialog, "btnResetKeys"), Qt::LeftButton);
        QTest::mouseClick(part<QPushButton>(dialog, "btnResetAllKeys"), Qt::LeftButton);
        press(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(desk.window->actDuplicate->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_D));
    QCOMPARE(desk.window->actClients->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L));
    QTRY_VERIFY(desk.window->actDuplicate->toolTip().contains(u"(Ctrl+D)"_s));
}

void tst_settings::pictures()
{
    const QString folder = qEnvironmentVariable("QUOTEDESK_SETTINGS_PICTURES");
    if (folder.isEmpty())
        return;
    DeskWindow desk;
    QVERIFY(desk.show());
    const auto take = [&folder](QDialog &dialog, const QString &name) {
        QVERIFY(showActive(dialog));
        QCoreApplication::processEvents();
        QVERIFY(dialog.grab().save(u"%1/%2.png"_s.arg(folder, name)));
    };
    for (const bool other : {false, true}) {
        Settings settings = desk.window->settings().current();
        settings.language = other ? Language::Afrikaans : Language::English;
        settings.colours = other ? ColourScheme::Dark : ColourScheme::Light;
        settings.textSize = other ? TextSize::Largest : TextSize::Normal;
        desk.window->settings().apply(settings);
        QCoreApplication::processEvents();
        const QString end = other ? u"-af-dark"_s : u"-en"_s;
        SettingsDialog dialog(settings, desk.window->session(), *desk.window);
        dialog.resize(920, 540);
        for (int i = 0; i < dialog.lstSections->count(); ++i) {
            dialog.goTo(static_cast<SettingsDialog::Section>(i));
            take(dialog, u"settings-%1"_s.arg(i) + end);
        }
        HelpWindow help(desk.window.get());
        help.resize(900, 600);
        for (const QString &page : {u"quotes"_s, u"keys"_s}) {
            help.goTo(page);
            take(help, u"help-"_s + page + end);
        }
        AboutDialog about(desk.window->session(), desk.window.get());
        take(about, u"about"_s + end);
        ShortcutList keys(allCommands(*desk.window), desk.window->session().adviser(), desk.window.get());
        take(keys, u"shortcuts"_s + end);
    }
    desk.window->settings().apply({});
}

ZEL_TEST_MAIN(tst_settings)
#include "tst_settings.moc"
