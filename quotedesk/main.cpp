#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "desk/Appearance.h"
#include "desk/HeadlessRun.h"
#include "desk/MainWindow.h"
#include "desk/Options.h"

#include "toolkit/TApplication.h"
#include "toolkit/TFonts.h"

#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

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
    return platform == QStringLiteral("offscreen") || platform == QStringLiteral("minimal");
}

void print(FILE *stream, const QString &text)
{
    QTextStream(stream) << text;
}

/// Qt's messages, less those in which a platform without a screen or a session speaks of what it lacks:
/// whoever runs a job off screen is to find one line there when something is wrong, and none when nothing is.
void passOnMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR")) ||
        message.startsWith(QStringLiteral("This plugin does not support propagateSizeHints")))
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
        known.append(QStringLiteral("%1 (%2)").arg(product.productID).arg(product.name));
    throw UsageError(QCoreApplication::translate("main", "--product: there is no product %1, only %2")
                         .arg(*options.productID)
                         .arg(known.join(QStringLiteral(", "))));
}

int doHeadless(MainWindow &window, const CatalogueDatabase &catalogue, const Options &options)
{
    HeadlessRun job(window, catalogue, options);
    const AllocationResult result = job.run();
    print(stdout, options.json ? QString::fromUtf8(result.toJson()) + u'\n' : result.toTable());
    // Whoever reads the JSON object reads all of the standard output.
    print(
        options.json ? stderr : stdout,
        QCoreApplication::translate("main", "Screenshots: %1\n").arg(QDir::toNativeSeparators(job.folder())));
    return result.isComplete() ? AllAllocated : NotAllocated;
}

int runProgram(const Options &options)
{
    CatalogueDatabase catalogue;
    if (!options.catalogue.isEmpty())
        catalogue.importFile(options.catalogue);
    checkProduct(catalogue, options);
    CatalogueProviders providers(catalogue);
    MainWindow window(catalogue, providers, options);
    if (options.headless || isOffScreen())
        return doHeadless(window, catalogue, options);
    window.show();
    return QApplication::exec();
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
        needsDisplay = !options.headless && options.question == Options::Question::None;
    } catch (const UsageError &) {
        // Said below.
    }
    if (!needsDisplay || !hasDisplay())
        qputenv("QT_QPA_PLATFORM", "offscreen");

    qInstallMessageHandler(passOnMessage);
    const TApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quotedesk"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quote Desk"));
    QApplication::setApplicationVersion(QStringLiteral(QUOTEDESK_VERSION));
    QApplication::setStyle(QStringLiteral("Fusion"));
    SubstituteDesignFonts();

    try {
        const Options options = readOptions(QApplication::arguments());
        switch (options.question) {
        case Options::Question::Help:
            print(stdout, helpText());
            return AllAllocated;
        case Options::Question::Version:
            print(stdout, QStringLiteral("Quote Desk %1\n").arg(QApplication::applicationVersion()));
            return AllAllocated;
        case Options::Question::None:
            return runProgram(options);
        }
    } catch (const std::exception &error) {
        const auto *const known = dynamic_cast<const Exception *>(&error);
        const QString message = known ? known->message() : QString::fromLocal8Bit(error.what());
        print(stderr, QStringLiteral("quotedesk: %1\n").arg(message.simplified()));
    }
    return CannotDo;
}
