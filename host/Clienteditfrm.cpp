#include "host/Clienteditfrm.h"

#include "toolkit/DesignTexts.h"
#include "toolkit/TApplication.h"

#include <QEvent>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{
QDate dateOf(const QString &text)
{
    return QDate::fromString(text, Qt::ISODate);
}

/// Whether @p text has thirteen digits with a valid check digit (Luhn): every second digit from the right is
/// doubled, and the sum of all resulting digits is a multiple of ten.
bool isIDNumber(const QString &text)
{
    static const QRegularExpression digits(u"^[0-9]{13}$"_s);
    if (!digits.match(text).hasMatch())
        return false;
    int sum = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int digit = text.at(i).digitValue() * (i % 2 == 0 ? 1 : 2);
        sum += digit / 10 + digit % 10;
    }
    return sum % 10 == 0;
}

/// Shows @p text completely. The field would cut a text longer than its maximum length, and accepting the
/// dialog would write the cut text to the client.
void showAll(QLineEdit &field, const QString &text)
{
    field.setMaxLength(qMax(field.maxLength(), static_cast<int>(text.size())));
    field.setText(text);
}
} // namespace

TfrmEditClient::TfrmEditClient(TBaseClient *client, QWidget *parent) : QDialog(parent), m_client(client)
{
    setupUi(this);
    lblProblem->hide();
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    showAll(*edSurname, client->Get_Surname());
    showAll(*edFirstNames, client->Get_FirstNames());
    showAll(*edIDNumber, client->Get_IDNumber());
    showAll(*edDateOfBirth, client->Get_DateOfBirth().toString(Qt::ISODate));
    showAll(*edEMail, client->Get_EMail());
    showAll(*edTelephone, client->Get_Telephone());
    connect(client, &QObject::destroyed, this, &QDialog::reject);
}

TfrmEditClient::~TfrmEditClient() = default;

bool TfrmEditClient::EditClient(TBaseClient *client, QWidget *parent)
{
    if (!client)
        return false;
    // The parent window may be destroyed while the dialog runs, and destroys the dialog.
    const QPointer<TfrmEditClient> dialog = new TfrmEditClient(client, parent);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    delete dialog.data();
    return accepted;
}

TfrmEditClient::Problem TfrmEditClient::findProblem() const
{
    static const QRegularExpression mail(u"^[^@\\s]+@[^@\\s]+\\.[^@\\s]+$"_s);
    static const QRegularExpression telephone(u"^\\+?[ ()-]*([0-9][ ()-]*){7,}$"_s);
    const auto entered = [](const QLineEdit *field) { return field->text().trimmed(); };

    if (entered(edSurname).isEmpty())
        return {edSurname, tr("Enter the client's surname.")};
    const QString id = entered(edIDNumber);
    if (!id.isEmpty() && !isIDNumber(id))
        return {edIDNumber,
                tr("The ID number has 13 digits, and its last digit must agree with the others.")};
    const QString born = entered(edDateOfBirth);
    if (!born.isEmpty() && !dateOf(born).isValid())
        return {edDateOfBirth, tr("Enter the date of birth as year-month-day, for example 1968-03-27.")};
    if (!born.isEmpty() && dateOf(born) > QDate::currentDate())
        return {edDateOfBirth, tr("The date of birth lies in the future.")};
    if (!entered(edEMail).isEmpty() && !mail.match(entered(edEMail)).hasMatch())
        return {edEMail, tr("An e-mail address looks like name@example.com.")};
    if (!entered(edTelephone).isEmpty() && !telephone.match(entered(edTelephone)).hasMatch())
        return {edTelephone,
                tr("A telephone number has at least seven digits, and blanks, brackets and dashes.")};
    return {};
}

void TfrmEditClient::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !lblProblem->isHidden())
        lblProblem->setText(findProblem().text);
}

void TfrmEditClient::accept()
{
    const Problem problem = findProblem();
    lblProblem->setText(problem.text);
    lblProblem->setVisible(problem.field != nullptr);
    if (problem.field) {
        problem.field->setFocus();
        problem.field->selectAll();
        return;
    }
    GuardedCall([this] {
        if (!m_client)
            return;
        m_client->Set_Surname(edSurname->text().trimmed());
        m_client->Set_FirstNames(edFirstNames->text().trimmed());
        m_client->Set_IDNumber(edIDNumber->text().trimmed());
        m_client->Set_DateOfBirth(dateOf(edDateOfBirth->text().trimmed()));
        m_client->Set_EMail(edEMail->text().trimmed());
        m_client->Set_Telephone(edTelephone->text().trimmed());
    });
    QDialog::accept();
}
