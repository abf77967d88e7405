#include "desk/ImportDialogs.h"

#include "catalogue/CatalogueDatabase.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>

namespace QuoteDesk
{

ImportReportDialog::ImportReportDialog(const QString &fileName, const ImportReport &report, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Catalogue import"));
    const auto refused = static_cast<int>(report.refused.size());
    m_summary = tr("%1: %n fund(s) imported.", nullptr, report.imported).arg(fileName);
    m_summary += u' ';
    m_summary += refused == 0 ? tr("Every line was good.") : tr("%n line(s) left out:", nullptr, refused);
    QStringList lines;
    lines.reserve(refused);
    for (const ImportReport::Refused &line : report.refused)
        lines.append(tr("Line %1: %2").arg(line.line).arg(line.reason));
    m_lines = lines.join(u'\n');

    auto *const summary = new QLabel(m_summary, this);
    summary->setObjectName(QStringLiteral("lblSummary"));
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    auto *const text = new QPlainTextEdit(m_lines, this);
    text->setObjectName(QStringLiteral("edLines"));
    text->setAccessibleName(tr("Lines left out"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setVisible(refused > 0);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *const copy = buttons->addButton(tr("C&opy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("btnCopy"));
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    buttons->button(QDialogButtonBox::Close)->setFocus();

    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(summary);
    layout->addWidget(text, 1);
    layout->addWidget(buttons);
    resize(520, refused > 0 ? 340 : 100);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(this->text()); });
}

ImportReportDialog::~ImportReportDialog() = default;

QString ImportReportDialog::text() const
{
    return m_lines.isEmpty() ? m_summary : m_summary + u'\n' + m_lines;
}

bool importWithProgress(CatalogueDatabase &catalogue, const QString &path, QWidget *parent)
{
    const QString fileName = QFileInfo(path).fileName();
    QProgressDialog progress(ImportReportDialog::tr("Importing %1 ...").arg(fileName),
                             ImportReportDialog::tr("Cancel"), 0, 1000, parent);
    progress.setWindowTitle(ImportReportDialog::tr("Catalogue import"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(300);
    progress.setValue(0);
    const ImportReport report = catalogue.importFile(path, [&progress](int permille) {
        // Showing the value lets the dialog hear its Cancel button.
        progress.setValue(std::min(permille, progress.maximum() - 1));
        return !progress.wasCanceled();
    });
    progress.reset();
    if (report.cancelled)
        return false;
    ImportReportDialog(fileName, report, parent).exec();
    return true;
}

} // namespace QuoteDesk
