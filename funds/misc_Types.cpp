#include "funds/misc_Types.h"

#include "data/Exceptions.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

TFunds::TFunds() : m_records(std::make_shared<std::vector<TFundRec>>()) {}

TFunds::TFunds(std::initializer_list<TFundRec> records)
    : m_records(std::make_shared<std::vector<TFundRec>>(records))
{
}

TFunds::TFunds(std::vector<TFundRec> records)
    : m_records(std::make_shared<std::vector<TFundRec>>(std::move(records)))
{
}

TFundRec &TFunds::operator[](int index) const
{
    if (index < 0 || index >= Length())
        throw EListError(u"List index out of bounds (%1)"_s.arg(index));
    return (*m_records)[static_cast<std::size_t>(index)];
}

void TFunds::SetLength(int length)
{
    if (length < 0)
        throw EListError(u"Invalid list length (%1)"_s.arg(length));
    if (m_records.use_count() > 1)
        m_records = std::make_shared<std::vector<TFundRec>>(*m_records);
    m_records->resize(static_cast<std::size_t>(length));
}

void TFunds::Append(const TFundRec &record)
{
    const TFundRec copy = record; // the argument may be an element of this list
    if (m_records.use_count() > 1)
        m_records = std::make_shared<std::vector<TFundRec>>(*m_records);
    m_records->push_back(copy);
}

TFunds TFunds::Copy() const
{
    return TFunds(*m_records);
}

TShowedMessageStatus::TShowedMessageStatus(QObject *parent) : TPersistent(parent) {}

TShowedMessageStatus::~TShowedMessageStatus() = default;

void TShowedMessageStatus::Assign(const QObject *source)
{
    const auto *other = qobject_cast<const TShowedMessageStatus *>(source);
    if (!other) {
        TPersistent::Assign(source);
        return;
    }
    AlreadyShowedWorldOGSQuestionMsg = other->AlreadyShowedWorldOGSQuestionMsg;
    AlreadyShowedOGSQuestionMsg = other->AlreadyShowedOGSQuestionMsg;
    AlreadyShowedBulWorldQuestionMsg = other->AlreadyShowedBulWorldQuestionMsg;
    AlreadyShowedWorldOGS_INTQuestionMsg = other->AlreadyShowedWorldOGS_INTQuestionMsg;
}

namespace
{
// In the order of their numbers, from 65520 on.
constexpr int firstNumber = 65520;
constexpr std::array texts{
    QT_TRANSLATE_NOOP("misc_Types", "The investment receipt date is invalid."),
    QT_TRANSLATE_NOOP("misc_Types", "Additional Investment"),
    QT_TRANSLATE_NOOP("misc_Types", "Additional Investment Amount"),
    QT_TRANSLATE_NOOP("misc_Types",
                      "Has the policyholder previously invested at least R50000 in a World Opal "
                      "Growth Strategy Fund within this policy?"),
    QT_TRANSLATE_NOOP("misc_Types",
                      "Has the policyholder previously invested at least R50000 in an Opal Growth "
                      "Strategy Fund within this policy?"),
    QT_TRANSLATE_NOOP("misc_Types",
                      "Has the policyholder previously invested at least R50000 in a Bulwark World "
                      "Fund within this policy?"),
    QT_TRANSLATE_NOOP("misc_Types",
                      "Has the policyholder previously invested at least US$7500 in an World Opal "
                      "Growth Strategy Fund within this policy?"),
    QT_TRANSLATE_NOOP(
        "misc_Types",
        "The guaranteed rates, guaranteed values and projected values for Fixed Bonds apply only to "
        "investments received in the current working week (Monday to Friday). Since the investment "
        "receipt date selected is not in the current working week, Fixed Bonds are not available."),
    QT_TRANSLATE_NOOP(
        "misc_Types",
        "The guaranteed rates and guaranteed values for the Guaranteed Annuity apply only to "
        "investments received in the current working week (Monday to Friday). Since the investment "
        "receipt date selected is not in the current working week, the Guaranteed Annuity is not "
        "available."),
    QT_TRANSLATE_NOOP("misc_Types", "Invalid Bond Code, please update your code before continuing."),
    QT_TRANSLATE_NOOP("misc_Types", "Invalid Annuity Code, please update your code before continuing."),
    QT_TRANSLATE_NOOP("misc_Types", "NOTE: This quote is for illustration purposes only."),
    QT_TRANSLATE_NOOP("misc_Types", "Retirement Fund Name is required."),
    QT_TRANSLATE_NOOP("misc_Types",
                      "To keep the Fixed Bond selection please enter an investment receipt date in "
                      "the current week (Monday-Friday)."),
    QT_TRANSLATE_NOOP("misc_Types",
                      "Since the Initial Investment amount is below R100000, only Fixed Bonds may be "
                      "selected."),
    QT_TRANSLATE_NOOP(
        "misc_Types",
        "* Fixed Bonds are available if the Bond Code is valid and the Investment Receipt Date is in "
        "the current working week (Monday-Friday).  Multi-manager funds are available if the investor "
        "is not a company."),
};
static_assert(texts.size() == 16);
} // namespace

QString LoadResString(int number)
{
    const int index = number - firstNumber;
    if (index < 0 || index >= static_cast<int>(texts.size()))
        throw EListError(u"There is no message text with the number %1"_s.arg(number));
    return QCoreApplication::translate("misc_Types", texts[static_cast<std::size_t>(index)]);
}

QString LoadResString(TMessageText message)
{
    return LoadResString(static_cast<int>(message));
}
