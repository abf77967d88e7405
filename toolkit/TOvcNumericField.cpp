#include "toolkit/TOvcNumericField.h"

#include "data/Exceptions.h"

#include <QFocusEvent>
#include <QRegularExpression>

#include <cmath>

namespace
{
/// A number as it may be typed: digits, perhaps in threes, decimals, and a power of ten.
struct Entry {
    bool isNumber = false;
    double value = 0;
};

Entry entryOf(const QString &text)
{
    static const QRegularExpression number(
        QStringLiteral("^[+-]?([0-9]+|[0-9]{1,3}(,[0-9]{3})+)?(\\.[0-9]*)?([eE][+-]?[0-9]+)?$"));
    static const QRegularExpression digit(QStringLiteral("^[+-]?\\.?[0-9]"));
    Entry entry;
    entry.isNumber = number.match(text).hasMatch() && digit.match(text).hasMatch();
    if (entry.isNumber)
        entry.value = QString(text).remove(QLatin1Char(',')).toDouble(); // infinite beyond a double's range
    return entry;
}

bool isUnfinished(const QString &text)
{
    static const QRegularExpression start(
        QStringLiteral("^[+-]?(\\.?|[0-9]{1,3}(,[0-9]{3})*,[0-9]{0,2}|[0-9,]*\\.?[0-9]*[eE][+-]?)$"));
    return start.match(text).hasMatch();
}

QString separateThousands(const QString &digits)
{
    const qsizetype point = digits.indexOf(QLatin1Char('.'));
    const qsizetype start = digits.startsWith(QLatin1Char('-')) ? 1 : 0;
    QString result = digits;
    for (qsizetype at = (point < 0 ? digits.size() : point) - 3; at > start; at -= 3)
        result.insert(at, QLatin1Char(','));
    return result;
}

/// From here on a number is written with a power of ten: its digits would not be worth reading.
constexpr double hugeNumber = 1e15;
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
    if (std::abs(value) >= hugeNumber)
        return QString::number(value, 'g', 15);
    // Adding zero turns a negative zero, which would show its sign, into zero.
    QString text = QString::number(value + 0.0, 'f', m_decimals);
    if (text.startsWith(QLatin1Char('-')) && text.toDouble() == 0)
        text.remove(0, 1);
    return separated ? separateThousands(text) : text;
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

void TOvcNumericField::takeOver()
{
    const QString entered = text().trimmed();
    // A wrong entry counts as not made: what its first digits said is not to be taken for it.
    const bool right = Judge(entered).state == QValidator::Acceptable;
    // A number told with more decimals than are shown keeps them until another one is typed.
    if (right && (entered == shown(m_value, false) || entered == shown(m_value, true)))
        return;
    const double value = right ? entryOf(entered).value : m_settled;
    if (value == m_value)
        return;
    m_value = value;
    Q_EMIT valueChanged(value);
}

TOvcBaseField::Verdict TOvcNumericField::Judge(const QString &text) const
{
    static const QRegularExpression wholeSigns(QStringLiteral("^[0-9+,-]*$"));
    static const QRegularExpression realSigns(QStringLiteral("^[0-9+,.eE-]*$"));
    const QString entered = text.trimmed();
    const bool whole = m_type == nftInteger;
    if (!(whole ? wholeSigns : realSigns).match(entered).hasMatch())
        return {QValidator::Invalid,
                whole ? tr("Enter a whole number, digits only.") : tr("Enter a number, digits only.")};
    const Entry entry = entered.isEmpty() ? Entry{true, 0} : entryOf(entered);
    if (!entry.isNumber) {
        const QString problem = entered.contains(QLatin1Char(','))
                                    ? tr("A comma separates thousands; decimals follow a point.")
                                    : tr("This is not a number.");
        return {QValidator::Intermediate, problem, isUnfinished(entered)};
    }
    if (!(entry.value >= m_low && entry.value <= m_high))
        return {QValidator::Intermediate, outOfRange()};
    if (std::abs(entry.value) < hugeNumber && shown(entry.value, false).toDouble() != entry.value)
        return {QValidator::Intermediate, tr("At most %n decimal(s).", nullptr, m_decimals)};
    return {};
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
