#include "toolkit/TApplication.h"

#include "toolkit/TFonts.h"

#include <QLoggingCategory>
#include <QMessageBox>

namespace
{
Q_LOGGING_CATEGORY(lcReport, "zel.report")

void standardReport(const QString &message)
{
    qCCritical(lcReport).noquote() << message;
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    auto *box = new QMessageBox(QMessageBox::Critical, QApplication::applicationDisplayName(), message,
                                QMessageBox::Ok, QApplication::activeWindow());
    // Messages contain names, which must not be interpreted as markup.
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->open();
}

TExceptionReport &currentReport()
{
    static TExceptionReport report;
    return report;
}

QString messageOfCurrentException()
{
    try {
        throw;
    } catch (const Exception &error) {
        return error.message();
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QCoreApplication::translate("TApplication", "An unknown error occurred.");
    }
}
} // namespace

TExceptionReport SetExceptionReport(TExceptionReport report)
{
    return std::exchange(currentReport(), std::move(report));
}

void ReportException() noexcept
{
    try {
        const QString message = messageOfCurrentException();
        if (currentReport())
            currentReport()(message);
        else
            standardReport(message);
    } catch (...) {
        // An exception of the report itself can only be written to stderr.
        std::fputs("The exception report itself failed.\n", stderr);
    }
}

TApplication::TApplication(int &argc, char **argv) : QApplication(argc, argv)
{
    SubstituteDesignFonts();
}

TApplication::~TApplication() = default;

bool TApplication::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        ReportException();
        return false;
    }
}
