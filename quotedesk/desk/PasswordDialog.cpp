#include "desk/PasswordDialog.h"

#include "desk/DialogFoot.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

PasswordDialog::PasswordDialog(const QString &reason, QWidget *parent) : QDialog(parent)
{
    constexpr int Width = 420;
    setObjectName(u"dlgPassword"_s);
    setWindowTitle(tr("Password"));
    auto *const said = new QLabel(reason, this);
    said->setTextFormat(Qt::PlainText);
    said->setWordWrap(true);
    said->setMinimumWidth(Width);
    auto *const label = new QLabel(tr("&Password"), this);
    m_password = new QLineEdit(this);
    m_password->setObjectName(u"edPassword"_s);
    m_password->setEchoMode(QLineEdit::Password);
    label->setBuddy(m_password);
    auto *const hint = new QLabel(tr("The password is kept until the program is closed. To avoid this "
                                     "question, put the password into the file .pgpass in your home folder."),
                                  this);
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(true);
    auto *const buttons = new QDialogButtonBox(this);
    auto *const connects = buttons->addButton(tr("&Connect"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    connects->setDefault(true);
    connects->setEnabled(false);
    connect(m_password, &QLineEdit::textChanged, connects,
            [connects](const QString &text) { connects->setEnabled(!text.isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    QVBoxLayout *const layout = layOutDialog(*this, *buttons);
    layout->addWidget(said);
    layout->addWidget(label);
    layout->addWidget(m_password);
    layout->addWidget(hint);
    m_password->setFocus();
}

QString PasswordDialog::password() const
{
    return m_password->text();
}

} // namespace QuoteDesk
