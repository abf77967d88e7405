#include "toolkit/TOvcNumericField.h"

#include "data/Exceptions.h"
#include "data/Format.h"
#include "data/NumberEntry.h"

#include <QFocusEvent>

#include <cmath>

namespace
{
/// From here on a number is written with a power of ten: its digits would not be worth reading.
constexpr double hugeNumber = 1e15;
/// More than the digits of the largest double. What is longer is a text that got here by mistake.
constexpr qsizetype longestEntry = 400;
} // namespace

TOvcNumericField::TOvcNumericField(QWidget *parent) : TOvcBaseField(parent)
{
    connect(this, &QLineEdit::textChanged, this, [this] { takeOver(); });
    // That comes first: whoever hears of an edit is to find its value, not the one before it.
    connect(this, &QLineEdit::textEdited, this, [this] { takeOver(); });
    connect(this, &QLineEdit::editingFinished, this, [this] { m_settled = m_value; });
    display();
}

TOvcNumericField::~TOvcNumericField() = default;

void TOvcNumericField::setDataType(DataType type)
{
    m_type = type;
    display();
}

void TOvcNumericField::setRangeLo(double value)
{
    m_low = value;
    Recheck();
}

void TOvcNumericField::setRangeHi(double value)
{
    m_high = value;
    Recheck();
}

void TOvcNumericField::MaskChanged()
{
    const QString mask = pictureMask();
    const qsizetype point = mask.indexOf(QLatin1Char('.'));
    m_decimals = point < 0 ? 0 : static_cast<int>(mask.size() - point - 1);
    m_separated = mask.contains(QLatin1Char(','));
    display();
}

void TOvcNumericField::Set_Value(double value)
{
    if (!(value >= m_low && value <= m_high))
        throw EConvertError(outOfRange());
    if (m_type == nftInteger && value != std::trunc(value))
        throw EConvertError(tr("Enter a whole number."));
    const bool changed = value != m_value;
    m_value = value;
    m_settled = value;
    display();
    if (changed)
        Q_EMIT valueChanged(value);
}

QString TOvcNumericField::shown(double value, bool separated) const
{
    if (!(std::abs(value) < hugeNumber))
        return QString::number(value, 'g', 15);
    return FormatDecimals(value, m_decimals, separated);
}

QString TOvcNumericField::outOfRange() const
{
    return tr("Enter a number from %1 to %2.").arg(shown(m_low, true), shown(m_high, true));
}

void TOvcNumericField::display()
{
    setText(shown(m_value, m_separated && !hasFocus()));
    Recheck();
}

bool TOvcNumericField::isShownValue(const QString &entered) const
{
    return entered == shown(m_value, false) || entered == shown(m_value, true);
}

NumberEntry TOvcNumericField::read(const QString &entered) const
{
    NumberRules rules;
    rules.decimals = m_type == nftInteger ? 0 : m_decimals;
    rules.exponent = m_type == nftDouble;
    return NumberEntry(entered, rules);
}

void TOvcNumericField::takeOver()
{
    const QString entered = text().trimmed();
    // A wrong entry counts as not made: what its first digits said is not to be taken for it.
    const bool right = Judge(entered).state == QValidator::Acceptable;
    // A number told with more decimals than are shown keeps them until another one is typed.
    if (right && isShownValue(entered))
        return;
    const double value = right ? read(entered).toDouble() : m_settled;
    if (value == m_value)
        return;
    m_value = value;
    Q_EMIT valueChanged(value);
}

TOvcBaseField::Verdict TOvcNumericField::Judge(const QString &text) const
{
    using Problem = NumberEntry::Problem;
    if (text.size() > longestEntry)
        return {QValidator::Invalid, TOvcBaseField::tr("At most %1 characters.").arg(longestEntry)};
    const QString entered = text.trimmed();
    // What the field shows of its own is the value, however many decimals its mask has.
    const bool own = isShownValue(entered);
    const NumberEntry entry = read(entered);
    const bool beyond = entry.problem() == Problem::TooLarge || entry.problem() == Problem::TooSmall;
    if (!own && entry.problem() == Problem::SeveralLines)
        return {QValidator::Invalid, sentence(entry)};
    if (!own && !entry.isNumber() && !beyond && entry.problem() != Problem::Blank)
        return {QValidator::Intermediate, sentence(entry), entry.isUnfinished()};
    const double value = own ? m_value : entry.toDouble(); // nothing is 0
    if ((beyond && !own) || !(value >= m_low && value <= m_high))
        return {QValidator::Intermediate, outOfRange()};
    return {};
}

QString TOvcNumericField::sentence(const NumberEntry &entry)
{
    return entry.reason() + u'.';
}

void TOvcNumericField::focusInEvent(QFocusEvent *event)
{
    if (!HasError() && event->reason() != Qt::PopupFocusReason)
        display();
    TOvcBaseField::focusInEvent(event);
}

void TOvcNumericField::focusOutEvent(QFocusEvent *event)
{
    TOvcBaseField::focusOutEvent(event);
    if (!HasError() && event->reason() != Qt::PopupFocusReason)
        display();
}
