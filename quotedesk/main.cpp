#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "desk/ErrorDialog.h"
#include "desk/HeadlessRun.h"
#include "desk/ImportDialogs.h"
#include "desk/MainWindow.h"
#include "desk/OpenQuotes.h"
#include "desk/Options.h"
#include "desk/PasswordDialog.h"
#include "desk/Preferences.h"
#include "desk/StartPage.h"
#include "look/Appearance.h"
#include "look/ProgramIcon.h"
#include "store/QuoteStore.h"

#include "package/ZelCommonFrames.h"
#include "toolkit/Look.h"
#include "toolkit/TApplication.h"
#include "toolkit/TFonts.h"

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

enum ExitCode { AllAllocated = 0, NotAllocated = 1, CannotDo = 2 };

/// Whether there is a display for a window.
bool hasDisplay()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    // An explicitly requested platform is the caller's choice.
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

/// Whether the current platform has no visible windows.
bool isOffScreen()
{
    const QString platform = QGuiApplication::platformName();
    return platform == u"offscreen"_s || platform == u"minimal"_s;
}

void print(FILE *stream, const QString &text)
{
    QTextStream(stream) << text;
}

/// Prints Qt's messages, except those about features that the offscreen platform or a missing session lacks:
/// a headless job should print one line when something is wrong, and nothing otherwise.
void passOnMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message.startsWith(u"QStandardPaths: XDG_RUNTIME_DIR"_s) ||
        message.startsWith(u"This plugin does not support propagateSizeHints"_s))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    if (type == QtFatalMsg)
        std::abort();
}

void checkProduct(const CatalogueDatabase &catalogue, const Options &options)
{
    const QList<Product> products = catalogue.products();
    if (!options.productID ||
        std::any_of(products.cbegin(), products.cend(),
                    [&options](const Product &product) { return product.productID == *options.productID; }))
        return;
    QStringList known;
    for (const Product &product : products)
        known.append(u"%1 (%2)"_s.arg(product.productID).arg(product.name));
    throw UsageError(
        QCoreApplication::translate("main", "--product: the product %1 does not exist; the products are %2")
            .arg(*options.productID)
            .arg(known.join(u", "_s)));
}

/// Opens the catalogue for the options. @p consent is asked before an import removes or renames funds.
CatalogueDatabase openCatalogue(StoreWorker &store, const Options &options, const ImportConsent &consent = {})
{
    if (!options.catalogue.isEmpty()) {
        // The store may work on its own thread, but a question belongs to the thread of the windows. So a
        // first import only finds out what would be lost, and a second one runs after the consent.
        const auto import = [&store, &options](bool asks) {
            return store.wait(
                [path = options.catalogue, asks](QuoteStore &quotes) {
                    std::optional<ImportLoss> loss;
                    const ImportConsent remember = [&loss](const ImportLoss &found) {
                        loss = found;
                        return false;
                    };
                    CatalogueDatabase(quotes.database()).importWhole(path, asks ? remember : ImportConsent());
                    return loss;
                },
                StoreWorker::ImportLimit);
        };
        const std::optional<ImportLoss> loss = import(consent && !options.yes);
        if (loss && consent(*loss))
            import(false);
    }
    return store.catalogue();
}

/// Throws UsageError when the catalogue lacks the product.
void prepareCatalogue(CatalogueDatabase &catalogue, const Options &options)
{
    catalogue.setAfrikaans(currentLanguage() == Language::Afrikaans);
    checkProduct(catalogue, options);
}

/// The location of the user's quotes.
StoreLocation placeOf(const Options &options)
{
    const bool ownPlace = options.database.file.isEmpty() && !options.database.isServer();
    return ownPlace ? StoreLocation::inUserData() : options.database;
}

/// Imports a catalogue without a user: an import that removes many funds is refused without --yes.
int runImport(const Options &options)
{
    // There is no question for a password here; it has to be in a password file.
    const auto store = QuoteStore::open(placeOf(options));
    CatalogueDatabase catalogue(store->database());
    catalogue.importWhole(options.import, [&options](const ImportLoss &loss) {
        const QString text = importLossText(options.import, loss);
        if (!options.yes && loss.isLarge())
            throw UsageError(QCoreApplication::translate(
                                 "main", "--import: %1 Nothing was imported; --yes imports it all the same.")
                                 .arg(text));
        print(stdout, text + u'\n');
        return true;
    });
    print(stdout, QCoreApplication::translate("main", "The catalogue was imported from %1\n")
                      .arg(QDir::toNativeSeparators(options.import)));
    return AllAllocated;
}

/// The quote that the options describe.
Quote askedFor(const CatalogueDatabase &catalogue, const Options &options)
{
    Quote quote;
    quote.productID = options.productID ? *options.productID : catalogue.products().constFirst().productID;
    quote.amount = options.amount;
    quote.byAmount = options.byAmount;
    return quote;
}

/// The headless job, on a temporary database: the user's data is neither read nor written.
int runHeadless(const Options &options)
{
    const QTemporaryDir folder;
    if (!folder.isValid())
        throw HeadlessError(
            QCoreApplication::translate("main", "The folder for the job's database cannot be created: %1")
                .arg(folder.errorString()));
    const auto store = QuoteStore::open(StoreLocation::fromText(folder.filePath(u"quotes.db"_s)));
    StoreWorker worker(*store);
    CatalogueDatabase catalogue = openCatalogue(worker, options);
    prepareCatalogue(catalogue, options);
    CatalogueProviders providers(catalogue);
    MainWindow window(worker, catalogue, providers, options);
    HeadlessRun job(window, catalogue, options, askedFor(catalogue, options));
    const AllocationResult result = job.run();
    print(stdout, options.json ? QString::fromUtf8(result.toJson()) + u'\n' : result.toTable());
    // With --json the standard output has nothing but the JSON object.
    print(
        options.json ? stderr : stdout,
        QCoreApplication::translate("main", "Screenshots: %1\n").arg(QDir::toNativeSeparators(job.folder())));
    return result.isComplete() ? AllAllocated : NotAllocated;
}

/// The kept settings, with what the command line asks for in this run.
Settings startSettings(const Settings &kept, const Options &options)
{
    Settings settings = kept;
    if (options.dark)
        settings.colours = ColourScheme::Dark;
    if (options.language)
        settings.language = *options.language;
    return settings;
}

/// Runs the program with its window.
int runWindow(const Options &options)
{
    std::unique_ptr<QuoteStore> file;
    std::unique_ptr<StoreWorker> store;
    if (options.database.isServer()) {
        store = openWithPassword(options.database, [](const StoreLocation &place) {
            return std::make_unique<StoreWorker>(place);
        });
    } else {
        file = QuoteStore::open(placeOf(options));
        store = std::make_unique<StoreWorker>(*file);
    }
    CatalogueDatabase catalogue = openCatalogue(*store, options, [&options](const ImportLoss &loss) {
        return askForImport(options.catalogue, loss, nullptr);
    });
    prepareCatalogue(catalogue, options);
    CatalogueProviders providers(catalogue);
    MainWindow window(*store, catalogue, providers, options);
    const TExceptionReport former =
        SetExceptionReport([&window](const QString &message) { ErrorDialog(message, {}, &window).exec(); });
    const auto restore = qScopeGuard([&former] { SetExceptionReport(former); });
    Preferences preferences;
    const Settings kept = preferences.settings();
    const Settings start = startSettings(kept, options);
    window.settings().apply(start);
    QObject::connect(&window.settings(), &SettingsKeeper::chosen, &window, [&](const Settings &chosen) {
        attempt(&window, [&] { preferences.remember(chosen); });
    });
    window.takePlace(preferences.geometry());
    window.startPage()->takeColumns(preferences.columns());
    window.show();
    QTimer::singleShot(0, &window, [&] {
        attempt(&window, [&] { window.offerDrafts(); });
        if (options.beginsQuote)
            attempt(&window, [&] { window.quotes().begin(askedFor(catalogue, options)); });
    });
    const int result = QApplication::exec();
    preferences.rememberPlace(window.saveGeometry());
    preferences.rememberColumns(window.startPage()->columns());
    return result;
}

int runProgram(Options options)
{
    const bool headless = options.headless || isOffScreen();
    if (!headless) {
        // Before anything can be said. The window puts the rest into force.
        setCurrentLanguage(options.language ? *options.language : Preferences().settings().language);
    } else {
        setCurrentLanguage(options.language.value_or(Language::English));
    }
    if (!options.import.isEmpty())
        return runImport(options);
    Initialize();
    const auto finalize = qScopeGuard([] { Finalize(); }); // every frame is destroyed by then
    if (headless)
        return runHeadless(options);
    try {
        return runWindow(options);
    } catch (const std::exception &) {
        // The dialog shows the complete error; the caller prints its line, too.
        showCurrentException(nullptr);
        throw;
    }
}

} // namespace

int main(int argc, char **argv)
{
    // The command line is read twice: its options decide which platform is used, which must be set before
    // there is an application that could report an error in the right language.
    QStringList arguments;
    std::transform(argv, argv + argc, std::back_inserter(arguments),
                   [](const char *argument) { return QString::fromLocal8Bit(argument); });
    bool needsDisplay = true;
    try {
        const Options options = readOptions(arguments);
        needsDisplay =
            !options.headless && options.import.isEmpty() && options.question == Options::Question::None;
    } catch (const UsageError &) {
        // Reported below.
    }
    if (!needsDisplay || !hasDisplay()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
        // On Windows the offscreen platform has no fonts of its own.
        if (qEnvironmentVariableIsEmpty("QT_QPA_FONTDIR"))
            qputenv("QT_QPA_FONTDIR",
                    QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::FontsLocation)));
#endif
    }

    qInstallMessageHandler(passOnMessage);
    const TApplication application(argc, argv);
    QApplication::setApplicationName(u"quotedesk"_s);
    QApplication::setApplicationDisplayName(u"Quote Desk"_s);
    QApplication::setApplicationVersion(QStringLiteral(QUOTEDESK_VERSION));
    QApplication::setDesktopFileName(u"quotedesk"_s);
    QApplication::setWindowIcon(programIcon());
    Appearance::apply(ColourScheme::Light, TextSize::Normal);
    SubstituteDesignFonts();
    SetLook(Look::Application);

    try {
        const Options options = readOptions(QApplication::arguments());
        if (options.language)
            setCurrentLanguage(*options.language);
        switch (options.question) {
        case Options::Question::Help:
            print(stdout, helpText());
            return AllAllocated;
        case Options::Question::Version:
            print(stdout, u"Quote Desk %1\n"_s.arg(QApplication::applicationVersion()));
            return AllAllocated;
        case Options::Question::None:
            return runProgram(options);
        }
    } catch (const std::exception &error) {
        const auto *const known = dynamic_cast<const Exception *>(&error);
        const QString message = known ? known->message() : QString::fromLocal8Bit(error.what());
        print(stderr, u"quotedesk: %1\n"_s.arg(message.simplified()));
    }
    return CannotDo;
}
