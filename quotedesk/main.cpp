#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "desk/Appearance.h"
#include "desk/ErrorDialog.h"
#include "desk/HeadlessRun.h"
#include "desk/ImportDialogs.h"
#include "desk/MainWindow.h"
#include "desk/OpenQuotes.h"
#include "desk/Options.h"
#include "desk/PasswordDialog.h"
#include "desk/Preferences.h"
#include "store/QuoteStore.h"

#include "package/ZelCommonFrames.h"
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

/// Whether there is a screen to open a window on.
bool hasDisplay()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    // A platform that was asked for by name is the caller's own choice.
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

/// Whether the platform in use shows nothing to anybody.
bool isOffScreen()
{
    const QString platform = QGuiApplication::platformName();
    return platform == u"offscreen"_s || platform == u"minimal"_s;
}

void print(FILE *stream, const QString &text)
{
    QTextStream(stream) << text;
}

/// Qt's messages, less those in which a platform without a screen or a session speaks of what it lacks:
/// whoever runs a job off screen is to find one line there when something is wrong, and none when nothing is.
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
    throw UsageError(QCoreApplication::translate("main", "--product: there is no product %1, only %2")
                         .arg(*options.productID)
                         .arg(known.join(u", "_s)));
}

/// The catalogue as the command line asks for it. @p consent is asked before funds of the catalogue go.
CatalogueDatabase openCatalogue(StoreWorker &store, const Options &options, const ImportConsent &consent = {})
{
    if (!options.catalogue.isEmpty()) {
        // The store may have a thread of its own, and a question belongs to the windows: what goes is found
        // out first, and the import is done when it was agreed to.
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

/// Raises UsageError for a product that the catalogue has not.
void prepareCatalogue(CatalogueDatabase &catalogue, const Options &options)
{
    catalogue.setAfrikaans(currentLanguage() == Language::Afrikaans);
    checkProduct(catalogue, options);
}

/// Where the user's quotes are.
StoreLocation placeOf(const Options &options)
{
    const bool ownPlace = options.database.file.isEmpty() && !options.database.isServer();
    return ownPlace ? StoreLocation::inUserData() : options.database;
}

/// The import of a catalogue without a person: what takes much away is refused until it is said to be meant.
int runImport(const Options &options)
{
    // Nobody is asked for a password here: it has to stand in a file.
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

/// The quote that the command line describes.
Quote askedFor(const CatalogueDatabase &catalogue, const Options &options)
{
    Quote quote;
    quote.productID = options.productID ? *options.productID : catalogue.products().constFirst().productID;
    quote.amount = options.amount;
    quote.byAmount = options.byAmount;
    return quote;
}

/// The job off screen, on a database that goes with it: nothing of the user's is read or written.
int runHeadless(const Options &options)
{
    const QTemporaryDir folder;
    if (!folder.isValid())
        throw HeadlessError(QCoreApplication::translate("main", "No folder for the job's database: %1")
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
    // Whoever reads the JSON object reads all of the standard output.
    print(
        options.json ? stderr : stdout,
        QCoreApplication::translate("main", "Screenshots: %1\n").arg(QDir::toNativeSeparators(job.folder())));
    return result.isComplete() ? AllAllocated : NotAllocated;
}

/// The window, for a person.
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
    window.takePlace(preferences.geometry());
    window.show();
    QTimer::singleShot(0, &window, [&] {
        attempt(&window, [&] { window.offerDrafts(); });
        if (options.beginsQuote)
            attempt(&window, [&] { window.quotes().begin(askedFor(catalogue, options)); });
    });
    const int result = QApplication::exec();
    preferences.remember(window.saveGeometry(), currentLanguage(), window.actDark->isChecked());
    return result;
}

int runProgram(Options options)
{
    const bool headless = options.headless || isOffScreen();
    if (!headless) {
        const Preferences preferences;
        options.dark = options.dark || preferences.dark();
        if (!options.language)
            options.language = preferences.language();
    }
    setCurrentLanguage(options.language.value_or(Language::English));
    if (!options.import.isEmpty())
        return runImport(options);
    Initialize();
    const auto finalize = qScopeGuard([] { Finalize(); }); // every frame is gone by then
    if (headless)
        return runHeadless(options);
    try {
        return runWindow(options);
    } catch (const std::exception &) {
        // There is a person to read it in full; the caller gets its line all the same.
        showCurrentException(nullptr);
        throw;
    }
}

} // namespace

int main(int argc, char **argv)
{
    // The command line is read twice: what it asks for decides where the window goes, and that must be known
    // before there is an application that could say so in its own language.
    QStringList arguments;
    std::transform(argv, argv + argc, std::back_inserter(arguments),
                   [](const char *argument) { return QString::fromLocal8Bit(argument); });
    bool needsDisplay = true;
    try {
        const Options options = readOptions(arguments);
        needsDisplay =
            !options.headless && options.import.isEmpty() && options.question == Options::Question::None;
    } catch (const UsageError &) {
        // Said below.
    }
    if (!needsDisplay || !hasDisplay()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
        // There that platform looks for fonts in a folder of its own only.
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
    QApplication::setStyle(u"Fusion"_s);
    SubstituteDesignFonts();

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
