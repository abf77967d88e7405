#include "toolkit/TOvcNumericField.h"

#include "data/Exceptions.h"
#include "data/Format.h"
#include "data/NumberEntry.h"

#include <QFocusEvent>

#include <cmath>

namespace
{
/// Larger numbers are shown with an exponent.
constexpr double hugeNumber = 1e15;
/// More than the digits of the largest double; limits accidentally pasted texts.
constexpr qsizetype longestEntry = 400;
} // namespace

TOvcNumericField::TOvcNumericField(QWidget *parent) : TOvcBaseField(parent)
{
    connect(this, &QLineEdit::textChanged, this, [this] { takeOver(); });
    // textEdited is emitted before textChanged, and its receivers must find the new value.
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
    // An invalid entry restores the value before the edit, so that its first digits do not count as the
    // value.
    const bool right = Judge(entered).state == QValidator::Acceptable;
    // A value with more decimals than shown keeps them until the user types another number.
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
    // The text that the field itself shows is valid, whatever the number of decimals in its mask.
    const bool own = isShownValue(entered);
    const NumberEntry entry = read(entered);
    const bool beyond = entry.problem() == Problem::TooLarge || entry.problem() == Problem::TooSmall;
    if (!own && entry.problem() == Problem::SeveralLines)
        return {QValidator::Invalid, sentence(entry)};
    if (!own && !entry.isNumber() && !beyond && entry.problem() != Problem::Blank)
        return {QValidator::Intermediate, sentence(entry), entry.isUnfinished()};
    const double value = own ? m_value : entry.toDouble(); // an empty entry is 0
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
