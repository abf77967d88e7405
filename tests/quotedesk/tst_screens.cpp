// labels: slow
// left out on Windows: whether every text fits, which the fonts of the system decide
// Every screen at every size, in both languages, in light and dark colours: nothing is cut off, lies outside
// of its parent or over a sibling, and every text has contrast. To look at the screens:
//     QUOTEDESK_PICTURES=<folder> QT_QPA_PLATFORM=offscreen build/release/bin/tst_screens
#include "DeskWindow.h"
#include "PictureDifference.h"
#include "ScreenFaults.h"

#include "desk/CataloguePlace.h"
#include "desk/ClientsPage.h"
#include "desk/Commands.h"
#include "desk/ConflictDialog.h"
#include "desk/DeletedQuotes.h"
#include "desk/ErrorDialog.h"
#include "desk/HelpWindow.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/RecoveryDialog.h"
#include "desk/SettingsDialog.h"
#include "desk/SettingsKeeper.h"
#include "desk/ShortcutList.h"

#include "funds/frm_FundSelector.h"

#include <QDir>
#include <QProcess>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

/// The process that visits the screens has the name of its row here.
constexpr auto AtWork = "ZEL_SCREENS";
/// The folder for pictures at full size; without it none are made.
constexpr auto Pictures = "QUOTEDESK_PICTURES";
/// Set to 1, it keeps the screens as they look now.
constexpr auto Keep = "QUOTEDESK_KEEP";
/// The rows whose screens are compared with kept pictures: together they have both languages, both kinds of
/// colours and both scales.
const QStringList KeptRows{u"1366"_s, u"1024-af-dark"_s, u"1366-dark"_s, u"1366-af"_s};
/// The pictures are kept at a third of the size, which forgives the edges of letters.
constexpr int KeptPart = 3;
/// The largest part of a screen that may differ from its picture: a changed word is more.
constexpr double MayDiffer = 0.0005;

bool isSet(const char *name)
{
    return qEnvironmentVariableIntValue(name) != 0;
}

Quote quoteOf(int productID, qint64 clientID, Currency amount, std::initializer_list<int> percents)
{
    constexpr std::array funds{1, 2, 12, 15, 40, 21, 22, 23, 30};
    Quote quote;
    quote.productID = productID;
    quote.clientID = clientID;
    quote.description = u"Growth for Anneke"_s;
    quote.amount = amount;
    std::size_t place = 0;
    for (const int percent : percents)
        quote.funds.append(
            {funds.at(place++), {}, amount * Currency(percent) / Currency(100), Currency(percent)});
    return quote;
}

/// Stores a quote, as if it was changed on a certain day.
qint64 save(const DeskWindow &desk, Quote quote)
{
    const qint64 number = desk.store->save(quote);
    desk.store->database().run(u"UPDATE quotes SET Changed = '2024-03-05T08:%1:00Z', ChangedBy = 'Thandi'"
                               " WHERE QuoteID = %2"_s.arg(10 + number)
                                   .arg(number));
    return number;
}

} // namespace

/// The visit, in a process with such a screen.
class Visit : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() override;
    void cleanup();
    void firstStart();
    void quotes();
    void quote_data();
    void quote();
    void selector();
    void dialogs();

private:
    enum class Compare { No, Yes };
    void look(QWidget &window, const QString &screen, Compare comparison = Compare::Yes);
    void compare(const QImage &picture, const QString &screen);
    void show(DeskWindow &desk);

    QString m_row; ///< the name of the screen's row
    QDir m_folder;
    QStringList m_faults;
};

void Visit::initTestCase()
{
    setCurrentLanguage(isSet("ZEL_AFRIKAANS") ? Language::Afrikaans : Language::English);
    if (isSet("ZEL_RIGHT_TO_LEFT"))
        QApplication::setLayoutDirection(Qt::RightToLeft);
    m_row = qEnvironmentVariable(AtWork);
    m_folder.setPath(qEnvironmentVariable(Pictures));
    QApplication::setCursorFlashTime(0);
}

void Visit::init()
{
    ZelTest::init();
    m_faults.clear();
}

/// The faults of all screens of a test, so that one does not hide the others.
void Visit::cleanup()
{
    for (const QString &fault : std::as_const(m_faults))
        qInfo("%s", qPrintable(fault));
    QCOMPARE(m_faults.size(), 0);
}

void Visit::show(DeskWindow &desk)
{
    Options options;
    options.dark = isSet("ZEL_DARK");
    QVERIFY(desk.show(options));
    if (isSet("ZEL_DARK"))
        desk.window->setDark(true);
    // At the first size, a small window turns its side bar into a rail and closes the preview; only then is
    // there room for less.
    for (int round = 0; round < 5; ++round) {
        desk.window->resize(desk.window->screen()->availableSize());
        QCoreApplication::processEvents();
    }
}

/// Checks a window.
void Visit::look(QWidget &window, const QString &screen, Compare comparison)
{
    for (int round = 0; round < 3; ++round)
        QCoreApplication::processEvents();
    const QImage picture = window.grab().toImage();
    if (qEnvironmentVariableIsSet(Pictures))
        QVERIFY(picture.save(m_folder.filePath(u"%1-%2.png"_s.arg(m_row, screen))));
    QStringList faults = LayoutFaults(window);
    const QSize room = window.screen()->availableSize();
    if (window.width() > room.width() || window.height() > room.height())
        faults.append(u"larger than the screen: %1 x %2"_s.arg(window.width()).arg(window.height()));
    // At scale 1 the strokes of small letters are paler than their colour.
    if (window.devicePixelRatio() >= 2)
        faults += ContrastFaults(window);
    for (const QString &fault : faults)
        m_faults.append(screen + u": "_s + fault);
#ifndef Q_OS_WIN
    if (comparison == Compare::Yes && KeptRows.contains(m_row))
        compare(picture.scaled(window.size() / KeptPart, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
                screen);
#endif
}

void Visit::compare(const QImage &picture, const QString &screen)
{
    const QString file = sourceFile(u"tests/quotedesk/screens/%1-%2.png"_s.arg(m_row, screen));
    if (isSet(Keep)) {
        QVERIFY(picture.convertToFormat(QImage::Format_Indexed8).save(file));
        return;
    }
    const QImage kept(file);
    if (kept.isNull())
        m_faults.append(screen + u": there is no picture "_s + file);
    else if (const double part = PictureDifference(kept, picture.convertToFormat(QImage::Format_Indexed8));
             part > MayDiffer)
        m_faults.append(
            u"%1: %2 % look different from %3"_s.arg(screen).arg(100 * part, 0, 'f', 2).arg(file));
}

void Visit::firstStart()
{
    DeskWindow desk;
    show(desk);
    look(*desk.window, u"first"_s);
}

void Visit::quotes()
{
    DeskWindow desk;
    const qint64 client = desk.client("van der Merwe", "Johannes Petrus");
    save(desk, quoteOf(1, client, 1250000, {25, 20, 15, 15, 15}));
    save(desk, quoteOf(2, desk.client("Dlamini", "Nomvula"), 840000, {40, 40, 20}));
    save(desk, quoteOf(3, desk.client("Fourie", "Elsabe"), 1975500, {60, 50}));
    save(desk, quoteOf(3, 0, 999999999, {}));
    show(desk);
    desk.start().chooseQuote(1);
    look(*desk.window, u"quotes"_s);
    desk.start().edFind->setText(u"visser"_s);
    look(*desk.window, u"none"_s);
    desk.window->pages->setCurrentWidget(desk.window->clientsPage());
    look(*desk.window, u"clients"_s);
    desk.window->pages->setCurrentWidget(desk.window->cataloguePage());
    look(*desk.window, u"catalogue"_s);
}

void Visit::quote_data()
{
    QTest::addColumn<int>("productID");
    QTest::addColumn<int>("parts");
    QTest::newRow("empty") << 1 << 0;
    QTest::newRow("leftover") << 1 << 1;
    QTest::newRow("done") << 2 << 2;
    QTest::newRow("toomuch") << 3 << 3;
}

void Visit::quote()
{
    QFETCH(const int, productID);
    QFETCH(const int, parts);
    DeskWindow desk;
    const qint64 client = desk.client("van der Merwe", "Johannes Petrus");
    const std::array quotes{quoteOf(productID, 0, 0, {}),
                            quoteOf(productID, client, 1250000, {25, 20, 15, 15, 15, 0}),
                            quoteOf(productID, client, 1250000, {25, 20, 15, 15, 10, 5, 5, 3, 2}),
                            quoteOf(productID, client, 1250000, {60, 40, 21})};
    const qint64 number = save(desk, quotes.at(static_cast<std::size_t>(parts)));
    show(desk);
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    const std::array pages{
        std::pair{QuoteForm::Page::Details, "details"}, std::pair{QuoteForm::Page::Income, "income"},
        std::pair{QuoteForm::Page::Funds, "funds"}, std::pair{QuoteForm::Page::Summary, "summary"}};
    for (const auto &[page, name] : pages) {
        if (!form.pcPages->Get_TabVisible(static_cast<int>(page)))
            continue;
        form.goTo(page);
        if (page == QuoteForm::Page::Funds)
            QTRY_VERIFY(form.fundsPage->isReady());
        look(*desk.window, u"%1-%2"_s.arg(QLatin1String(name), QLatin1String(QTest::currentDataTag())));
    }
}

void Visit::selector()
{
    DeskWindow desk;
    const qint64 number = save(desk, quoteOf(1, 0, 1250000, {25, 20, 15}));
    show(desk);
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    form.goTo(QuoteForm::Page::Funds);
    QTRY_VERIFY(form.fundsPage->isReady());
    QVERIFY(inDialog<TfrmFundSelector>(
        [&] {
            QTest::mouseClick(form.fundsPage->fraFundAllocation->fraFundToolBar->sbtFunds, Qt::LeftButton);
        },
        [this](TfrmFundSelector &dialog) {
            look(dialog, u"selector"_s);
            dialog.reject();
        }));
}

void Visit::dialogs()
{
    DeskWindow desk;
    desk.client("van der Merwe", "Johannes Petrus");
    desk.client("Dlamini", "Nomvula");
    show(desk);
    const auto check = [this](QDialog &&dialog, const char *name) {
        QVERIFY(showActive(dialog));
        look(dialog, QLatin1String(name));
    };
    QWidget *const window = desk.window.get();
    QuoteSession &session = desk.window->session();
    check(NewQuoteDialog(session, 1, window), "new");
    desk.store->remove(save(desk, quoteOf(1, 0, 100, {})));
    desk.store->database().run(
        u"UPDATE quotes SET DeletedAt = '2124-03-05T08:00:00Z', DeletedBy = 'Thandi'"_s);
    check(DeletedQuotesDialog(session, window), "deleted");
    check(ErrorDialog(u"The quote could not be saved, because the disk is full."_s, u"Details"_s, window),
          "error");
    ImportReport report;
    report.refused.append({3, u"FundID: \"x\" is not a number"_s});
    check(ImportReportDialog(u"a.csv"_s, report, window), "import");
    const Quote mine = quoteOf(1, 1, 1000, {60, 40});
    Quote theirs = mine;
    theirs.description = u"Theirs"_s;
    check(ConflictDialog(mine, QuoteChangedElsewhere(u"x"_s, theirs, false), session, window), "conflict");
    check(ShortcutList(allCommands(*desk.window), session.adviser(), window), "shortcuts");
    HelpWindow *const help = HelpWindow::open(window);
    QVERIFY(showActive(*help));
    look(*help, u"help"_s);
    help->close();
    SettingsDialog settings(desk.window->settings().current(), session, *desk.window);
    QVERIFY(showActive(settings));
    for (const auto section : {SettingsDialog::Section::Appearance, SettingsDialog::Section::Numbers,
                               SettingsDialog::Section::Letterhead, SettingsDialog::Section::Catalogue,
                               SettingsDialog::Section::Storage, SettingsDialog::Section::Shortcuts}) {
        settings.goTo(section);
        // The place of the database is another one in each run.
        look(settings, u"settings-%1"_s.arg(static_cast<int>(section) + 1),
             section == SettingsDialog::Section::Storage ? Compare::No : Compare::Yes);
    }
    settings.reject();
    check(RecoveryDialog({Draft{u"k"_s, mine, QDateTime(QDate(2024, 3, 5), QTime(8, 0), Qt::UTC)}}, session,
                         window),
          "recovery");
}

/// Visits the screens at each size, scale, language and colours.
class tst_screens : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsWrong_data();
    void nothingIsWrong();
};

void tst_screens::nothingIsWrong_data()
{
    QTest::addColumn<QSize>("size"); // in device-independent pixels
    QTest::addColumn<int>("scale");
    QTest::addColumn<QStringList>("switches");
    const QString dark = u"ZEL_DARK"_s;
    const QString afrikaans = u"ZEL_AFRIKAANS"_s;
    QTest::newRow("1024") << QSize(1024, 600) << 1 << QStringList{};
    QTest::newRow("1024-af-dark") << QSize(1024, 600) << 1 << QStringList{dark, afrikaans};
    QTest::newRow("1366") << QSize(1366, 768) << 1 << QStringList{};
    QTest::newRow("1366-dark") << QSize(1366, 768) << 2 << QStringList{dark};
    QTest::newRow("1366-af") << QSize(1366, 768) << 2 << QStringList{afrikaans};
    QTest::newRow("1366-rtl") << QSize(1366, 768) << 1 << QStringList{u"ZEL_RIGHT_TO_LEFT"_s};
    QTest::newRow("1920") << QSize(1920, 1080) << 2 << QStringList{};
}

void tst_screens::nothingIsWrong()
{
    QFETCH(const QSize, size);
    QFETCH(const int, scale);
    QFETCH(const QStringList, switches);
    const QTemporaryDir folder;
    QFile screen(folder.filePath(u"screen.json"_s));
    QVERIFY(screen.open(QIODevice::WriteOnly));
    screen.write(qUtf8Printable(
        u"{\"screens\": [{\"name\": \"screen\", \"x\": 0, \"y\": 0, \"width\": %1, \"height\": %2,"
        " \"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}"_s.arg(size.width() * scale)
            .arg(size.height() * scale)));
    screen.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TZ"_s, u"UTC"_s);
    environment.insert(QLatin1String(AtWork), QLatin1String(QTest::currentDataTag()));
    environment.insert(u"QT_SCALE_FACTOR"_s, QString::number(scale));
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen:configfile="_s + screen.fileName());
    for (const QString &name : switches)
        environment.insert(name, u"1"_s);
    QProcess work;
    work.setProcessEnvironment(environment);
    work.setProcessChannelMode(QProcess::ForwardedChannels);
    work.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY2(work.waitForFinished(300'000), qPrintable(work.errorString()));
    QCOMPARE(work.exitStatus(), QProcess::NormalExit);
    QCOMPARE(work.exitCode(), 0);
}

int main(int argc, char **argv)
{
    return ZelTesting::run(argc, argv, []() -> std::unique_ptr<QObject> {
        if (qEnvironmentVariableIsSet(AtWork))
            return std::make_unique<Visit>();
        return std::make_unique<tst_screens>();
    });
}
#include "tst_screens.moc"
