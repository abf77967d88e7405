#include "desk/ErrorDialog.h"

#include "database/StoreError.h"
#include "desk/DialogFoot.h"
#include "quote/PlainText.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QSysInfo>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

ErrorDialog::ErrorDialog(const QString &message, const QString &details, QWidget *parent)
    : QDialog(parent), m_message(message),
      m_details(u"%1 %2, %3, Qt %4"_s.arg(QApplication::applicationDisplayName(),
                                          QApplication::applicationVersion(), QSysInfo::prettyProductName(),
                                          QLatin1StringView(qVersion())))
{
    if (!details.isEmpty())
        m_details.prepend(details.trimmed() + u'\n');
    setWindowTitle(QApplication::applicationDisplayName());

    auto *const picture = new QLabel(this);
    picture->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(32, 32));
    picture->setAccessibleName(tr("Warning"));
    auto *const label = new QLabel(wrappedText(message), this);
    label->setObjectName(u"lblMessage"_s);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(360);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *const top = new QHBoxLayout;
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addWidget(label, 1);

    auto *const text = new QPlainTextEdit(m_details, this);
    text->setObjectName(u"edDetails"_s);
    text->setReadOnly(true);
    text->setAccessibleName(tr("Details of the error"));
    text->setTabChangesFocus(true);
    text->hide();

    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *const fold = buttons->addButton(tr("&Details"), QDialogButtonBox::ActionRole);
    fold->setObjectName(u"btnDetails"_s);
    fold->setCheckable(true);
    fold->setAutoDefault(false);
    QPushButton *const copy = buttons->addButton(tr("C&opy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"btnCopy"_s);
    copy->setToolTip(tr("Copy the message with its details"));
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    buttons->button(QDialogButtonBox::Close)->setFocus();

    QVBoxLayout *const layout = layOutDialog(*this, *buttons);
    layout->addLayout(top);
    layout->addWidget(text, 1);
    this->layout()->setSizeConstraint(QLayout::SetMinimumSize);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(fold, &QPushButton::toggled, this, [this, text](bool shown) {
        text->setVisible(shown);
        adjustSize();
    });
    connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(this->text()); });
}

ErrorDialog::~ErrorDialog() = default;

QString ErrorDialog::text() const
{
    return m_message + u"\n\n"_s + m_details;
}

void showCurrentException(QWidget *parent)
{
    QString message;
    QString details;
    try {
        throw;
    } catch (const StoreError &error) {
        message = error.message();
        details = error.details();
    } catch (const Exception &error) {
        message = error.message();
    } catch (const std::exception &error) {
        message = ErrorDialog::tr("Something unexpected went wrong.");
        details = QString::fromLocal8Bit(error.what());
    }
    ErrorDialog(message, details, parent).exec();
}

bool attempt(QWidget *parent, const std::function<void()> &work)
{
    try {
        work();
        return true;
    } catch (const std::exception &) {
        showCurrentException(parent);
        return false;
    }
}

} // namespace QuoteDesk
