#include "quote/Adviser.h"

#include "quote/PlainText.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Adviser)
};

// The size of a window for details, in characters and lines.
constexpr int detailsColumns = 100;
constexpr int detailsLines = 20;

} // namespace

Adviser::~Adviser() = default;

AdviserAtScreen::~AdviserAtScreen() = default;

bool AdviserAtScreen::askYesNo(QWidget *parent, const QString &question)
{
    PlainBox box(QMessageBox::Question, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
                 parent);
    return box.ask() == QMessageBox::Yes;
}

void AdviserAtScreen::tell(QWidget *parent, const QString &message, const QString &details)
{
    if (details.isEmpty()) {
        PlainBox(QMessageBox::Information, message, QMessageBox::Ok, QMessageBox::Ok, parent).ask();
        return;
    }
    // Many long lines, each with its reason: a resizable window shows them all at once.
    QDialog dialog(parent);
    dialog.setWindowTitle(u"Quote Desk"_s);
    auto *const label = new QLabel(wrappedText(message));
    label->setObjectName(u"lblMessage"_s);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    auto *const lines = new QPlainTextEdit(details);
    lines->setObjectName(u"edDetails"_s);
    lines->setAccessibleName(Text::tr("Details"));
    lines->setReadOnly(true);
    lines->setTabChangesFocus(true);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton *const copy = buttons->addButton(Text::tr("C&opy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"btnCopy"_s);
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    auto *const layout = new QVBoxLayout(&dialog);
    layout->addWidget(label);
    layout->addWidget(lines, 1);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(copy, &QPushButton::clicked, lines, [message, details] {
        QGuiApplication::clipboard()->setText(message + u'\n' + details);
    });
    dialog.resize(QSize(detailsColumns * dialog.fontMetrics().averageCharWidth(),
                        detailsLines * dialog.fontMetrics().lineSpacing())
                      .boundedTo(dialog.screen()->availableSize() * 9 / 10));
    buttons->button(QDialogButtonBox::Close)->setFocus();
    dialog.exec();
}

bool AdviserAtScreen::choosePrinter(QPrinter &printer, QWidget *parent)
{
    QPrintDialog dialog(&printer, parent);
    return dialog.exec() == QDialog::Accepted;
}

QString AdviserAtScreen::chooseFile(QWidget *parent, const QString &suggestion)
{
    QFileDialog dialog(parent, Text::tr("Save as PDF"), {}, Text::tr("PDF files (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // Without the suffix no program would open the file.
    dialog.setDefaultSuffix(u"pdf"_s);
    dialog.selectFile(suggestion);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

bool AdviserAtScreen::openUrl(const QUrl &url)
{
    return QDesktopServices::openUrl(url);
}

} // namespace QuoteDesk
