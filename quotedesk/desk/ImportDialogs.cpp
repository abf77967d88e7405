#include "desk/ImportDialogs.h"

#include "catalogue/CatalogueDatabase.h"
#include "database/Database.h"
#include "desk/DialogFoot.h"
#include "quote/PlainText.h"
#include "quote/ServerWait.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

ImportReportDialog::ImportReportDialog(const QString &fileName, const ImportReport &report, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Catalogue import"));
    const auto refused = static_cast<int>(report.refused.size());
    m_summary = tr("%1: %n fund(s) imported.", nullptr, report.imported).arg(fileName);
    m_summary += u' ';
    m_summary += refused == 0 ? tr("Every line was imported.") : tr("%n line(s) left out:", nullptr, refused);
    QStringList lines;
    lines.reserve(refused);
    for (const ImportReport::Refused &line : report.refused)
        lines.append(tr("Line %1: %2").arg(line.line).arg(line.reason));
    m_lines = lines.join(u'\n');

    auto *const summary = new QLabel(wrappedText(m_summary), this);
    summary->setObjectName(u"lblSummary"_s);
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    auto *const text = new QPlainTextEdit(m_lines, this);
    text->setObjectName(u"edLines"_s);
    text->setAccessibleName(tr("Lines left out"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setVisible(refused > 0);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *const copy = buttons->addButton(tr("C&opy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"btnCopy"_s);
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    buttons->button(QDialogButtonBox::Close)->setFocus();

    QVBoxLayout *const layout = layOutDialog(*this, *buttons);
    layout->addWidget(summary);
    layout->addWidget(text, 1);
    resize(520, refused > 0 ? 340 : 100);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(this->text()); });
}

ImportReportDialog::~ImportReportDialog() = default;

QString ImportReportDialog::text() const
{
    return m_lines.isEmpty() ? m_summary : m_summary + u'\n' + m_lines;
}

QString importLossText(const QString &path, const ImportLoss &loss)
{
    QStringList sentences{
        ImportReportDialog::tr("%1 has %n fund(s).", nullptr, loss.incoming).arg(QFileInfo(path).fileName())};
    if (loss.gone > 0)
        sentences.append(
            ImportReportDialog::tr("%n of the %1 fund(s) offered now would be removed.", nullptr, loss.gone)
                .arg(loss.offered));
    if (loss.renamed > 0)
        sentences.append(
            ImportReportDialog::tr("%n fund(s) offered now would get another name.", nullptr, loss.renamed));
    if (loss.quotes == 0)
        sentences.append(ImportReportDialog::tr("No quote has one of them."));
    else
        sentences.append(ImportReportDialog::tr(
            "%n quote(s) have such funds; the quotes keep them as they are, marked.", nullptr, loss.quotes));
    return sentences.join(u' ');
}

bool askForImport(const QString &path, const ImportLoss &loss, QWidget *parent)
{
    QMessageBox box(parent);
    box.setWindowTitle(ImportReportDialog::tr("Catalogue import"));
    box.setIcon(QMessageBox::Warning);
    box.setTextFormat(Qt::PlainText);
    box.setText(importLossText(path, loss));
    box.setInformativeText(ImportReportDialog::tr("Do you want to import it?"));
    QPushButton *const import = box.addButton(ImportReportDialog::tr("&Import"), QMessageBox::AcceptRole);
    import->setObjectName(u"btnImport"_s);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    box.setEscapeButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == import;
}

namespace
{

/// Calls @p function on the windows' thread from the import's thread and returns its result.
template <class Function> bool inWindows(const QWidget &window, const Function &function)
{
    bool result = false;
    const bool isThere = QThread::currentThread() == window.thread();
    QMetaObject::invokeMethod(
        const_cast<QWidget *>(&window), [&] { result = function(); },
        isThere ? Qt::DirectConnection : Qt::BlockingQueuedConnection);
    return result;
}

} // namespace

bool importWithProgress(StoreWorker &store, const QString &path, QWidget *parent)
{
    const QString fileName = QFileInfo(path).fileName();
    QProgressDialog progress(QString(), ImportReportDialog::tr("Cancel"), 0, 1000, parent);
    auto *const label = new QLabel(ImportReportDialog::tr("Importing %1 ...").arg(shortText(fileName, 80)));
    label->setTextFormat(Qt::PlainText);
    progress.setLabel(label);
    progress.setWindowTitle(ImportReportDialog::tr("Catalogue import"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(300);
    progress.setValue(0);
    const auto showProgress = [&](int permille) {
        store.goesOn();
        return inWindows(progress, [&] {
            // setValue() also processes the click on Cancel.
            progress.setValue(std::min(permille, progress.maximum() - 1));
            return !progress.wasCanceled();
        });
    };
    const auto askWhatGoes = [&](const ImportLoss &loss) {
        return inWindows(progress, [&] {
            progress.reset();
            // The user may think longer than the server's time limit.
            QTimer thinking;
            QObject::connect(&thinking, &QTimer::timeout, &thinking, [&store] { store.goesOn(); });
            thinking.start(1000);
            return askForImport(path, loss, parent);
        });
    };
    const ImportReport report = fetch(
        store, parent,
        [&](QuoteStore &quotes) {
            return CatalogueDatabase(quotes.database()).importFile(path, showProgress, askWhatGoes);
        },
        WaitsWith::BoxOfItsOwn);
    progress.reset();
    if (report.cancelled)
        return false;
    ImportReportDialog(fileName, report, parent).exec();
    return true;
}

} // namespace QuoteDesk
