#include "data/NumberEntry.h"

#include "data/Exceptions.h"
#include "data/Format.h"

#include <QCoreApplication>
#include <QVarLengthArray>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

using Problem = NumberEntry::Problem;

struct Text {
    Q_DECLARE_TR_FUNCTIONS(NumberEntry)
};

/// The marks that may stand between digits.
enum class Mark { Blank, Apostrophe, Comma, Point };

constexpr qsizetype groupSize = 3;
constexpr qsizetype longestShown = 40; ///< Of a text in a reason; pasted texts can be long.

bool isDigit(QChar c) noexcept
{
    return c >= u'0' && c <= u'9';
}

bool isMinus(QChar c) noexcept
{
    return c == u'-' || c == QChar(0x2010) || c == QChar(0x2011) || c == QChar(0x2012) ||
           c == QChar(0x2013) || c == QChar(0x2212) || c == QChar(0xfe63) || c == QChar(0xff0d);
}

/// Whether @p c ends a line or a cell, and so cannot be inside a number.
bool endsCell(QChar c) noexcept
{
    return (c >= u'\t' && c <= u'\r') || c == QChar(0x85) || c == QChar(0x2028) || c == QChar(0x2029);
}

std::optional<Mark> markOf(QChar c) noexcept
{
    if (c == u',')
        return Mark::Comma;
    if (c == u'.')
        return Mark::Point;
    if (c == u'\'' || c == QChar(0x2019) || c == QChar(0x02bc))
        return Mark::Apostrophe;
    if (c.isSpace() && !endsCell(c))
        return Mark::Blank;
    return std::nullopt;
}

/// Removes @p word, in any case, and the adjacent blanks from the front or the end. False without @p word.
bool takeFront(QStringView &rest, QStringView word)
{
    if (!rest.startsWith(word, Qt::CaseInsensitive))
        return false;
    rest = rest.sliced(word.size()).trimmed();
    return true;
}

bool takeEnd(QStringView &rest, QStringView word)
{
    if (!rest.endsWith(word, Qt::CaseInsensitive))
        return false;
    rest = rest.chopped(word.size()).trimmed();
    return true;
}

bool takeFrontMinus(QStringView &rest)
{
    if (rest.isEmpty() || !isMinus(rest.front()))
        return false;
    rest = rest.sliced(1).trimmed();
    return true;
}

/// The digits of a number and the marks between them, in order.
struct Digits {
    QString all;
    QVarLengthArray<Mark, 8> marks;
    QVarLengthArray<qsizetype, 8> places; ///< The number of digits before each mark.

    qsizetype count(Mark mark) const { return std::count(marks.cbegin(), marks.cend(), mark); }
    qsizetype behind(qsizetype mark) const { return all.size() - places[mark]; }
};

std::optional<Digits> digitsOf(QStringView body)
{
    Digits digits;
    bool afterBlank = false;
    for (const QChar c : body) {
        if (isDigit(c)) {
            digits.all.append(c);
            afterBlank = false;
            continue;
        }
        const std::optional<Mark> mark = markOf(c);
        if (!mark)
            return std::nullopt;
        if (*mark == Mark::Blank && std::exchange(afterBlank, true))
            continue; // several blanks count as one
        afterBlank = *mark == Mark::Blank;
        digits.marks.append(*mark);
        digits.places.append(digits.all.size());
    }
    return digits;
}

/// Whether the first @p count marks separate the first @p whole digits into groups of three.
bool areGroups(const Digits &digits, qsizetype count, qsizetype whole)
{
    if (count == 0)
        return true;
    if (digits.places[0] < 1 || digits.places[0] > groupSize)
        return false;
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype next = i + 1 < count ? digits.places[i + 1] : whole;
        if (digits.marks[i] != digits.marks[0] || next - digits.places[i] != groupSize)
            return false;
    }
    return true;
}

/// The power of ten after an "e"; 0 for an empty text, nothing for an invalid one. A power beyond the range
/// of double is limited to a value that is still beyond the range.
std::optional<int> powerOf(QStringView exponent)
{
    constexpr int beyond = 100'000;
    if (exponent.isEmpty())
        return 0;
    QStringView rest = exponent.sliced(1);
    const bool negative = !rest.isEmpty() && isMinus(rest.front());
    if (negative || rest.startsWith(u'+'))
        rest = rest.sliced(1);
    if (rest.isEmpty() || !std::all_of(rest.begin(), rest.end(), isDigit))
        return std::nullopt;
    int power = 0;
    for (const QChar digit : rest)
        power = std::min(power * 10 + (digit.unicode() - u'0'), beyond);
    return negative ? -power : power;
}

/// Whether the only mark of a number could separate thousands.
bool couldGroup(const Digits &digits)
{
    return digits.marks.size() == 1 && digits.behind(0) == groupSize && digits.places[0] >= 1 &&
           digits.places[0] <= groupSize && !digits.all.startsWith(u'0');
}

/// The number of decimals without the zeros at the end.
qsizetype decimalsOf(const Digits &digits, qsizetype whole, int power)
{
    qsizetype zeros = 0;
    while (zeros < digits.all.size() && digits.all.at(digits.all.size() - 1 - zeros) == u'0')
        ++zeros;
    return zeros == digits.all.size() ? 0 : digits.all.size() - whole - zeros - power;
}

enum class Range { Kept, BeyondCurrency, BeyondDouble };

/// Converts the number @p plain.
Range readValue(const QString &plain, bool hasExponent, Currency &value, double &number)
{
    try {
        number = StrToFloat(plain);
        if (hasExponent)
            value = Currency::fromDouble(number);
        else if (!TryStrToCurr(plain, value))
            return Range::BeyondCurrency;
        return Range::Kept;
    } catch (const EConvertError &) {
        return Range::BeyondDouble;
    } catch (const EOverflow &) {
        return Range::BeyondCurrency;
    }
}

QString withPoint(const QString &digits, qsizetype whole)
{
    const QString front = whole == 0 ? u"0"_s : digits.left(whole);
    return whole == digits.size() ? front : front + u'.' + digits.sliced(whole);
}

} // namespace

NumberEntry::NumberEntry(QStringView text, const NumberRules &rules) : m_rules(rules)
{
    // Texts pasted from other programs may contain invisible characters, such as text direction marks.
    m_text.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(m_text),
                 [](QChar c) { return c.category() != QChar::Other_Format; });
    m_text = m_text.trimmed();
    read(m_text);
    if (m_problem == Problem::None)
        return;
    m_value = {};
    m_double = 0;
    if (m_problem != Problem::TwoReadings)
        m_plain.clear();
}

void NumberEntry::read(QStringView rest)
{
    if (rest.isEmpty()) {
        m_problem = Problem::Blank;
        return;
    }
    if (std::any_of(rest.begin(), rest.end(), endsCell)) {
        m_problem = Problem::SeveralLines;
        return;
    }
    bool minus = false;
    bool plus = false;
    bool bracket = false;
    bool rand = false;
    bool percent = false;
    for (bool took = true; took;) {
        took = (!minus && !plus && !bracket && (minus = takeFrontMinus(rest))) ||
               (!minus && !plus && !bracket && (plus = takeFront(rest, u"+"))) ||
               (!minus && !plus && !bracket && (bracket = takeFront(rest, u"("))) ||
               (!rand && (rand = takeFront(rest, u"ZAR") || takeFront(rest, u"R")));
    }
    bool closed = false;
    for (bool took = true; took;) {
        took = (bracket && !closed && (closed = takeEnd(rest, u")"))) ||
               (!percent && (percent = takeEnd(rest, u"%"))) || (!rand && (rand = takeEnd(rest, u"ZAR")));
    }
    if ((rand && percent) || bracket != closed) {
        m_problem = Problem::NotANumber;
        return;
    }
    m_unit = percent ? NumberUnit::Percent : rand ? NumberUnit::Rand : NumberUnit::None;
    QStringView exponent;
    if (m_rules.exponent) {
        const qsizetype at = rest.indexOf(u'e', 0, Qt::CaseInsensitive);
        if (at >= 0) {
            exponent = rest.sliced(at);
            rest = rest.first(at);
        }
    }
    readDigits(rest, exponent, minus || bracket);
}

void NumberEntry::readDigits(QStringView body, QStringView exponent, bool negative)
{
    const std::optional<Digits> read = digitsOf(body);
    if (!read || read->all.isEmpty()) {
        m_problem = Problem::NotANumber;
        return;
    }
    const Digits &digits = *read;
    const qsizetype last = digits.marks.size() - 1;
    const qsizetype commas = digits.count(Mark::Comma);
    const qsizetype points = digits.count(Mark::Point);
    // A percentage has no thousands separators, and neither has a number with an exponent.
    const bool onlyDecimals =
        m_unit == NumberUnit::Percent || m_rules.unit == NumberUnit::Percent || !exponent.isEmpty();
    // The last mark precedes the decimals if it is a comma or point that occurs only once.
    bool hasDecimals = commas + points > 0 &&
                       (digits.marks[last] == Mark::Comma || digits.marks[last] == Mark::Point) &&
                       digits.count(digits.marks[last]) == 1;
    if (hasDecimals && couldGroup(digits) && !onlyDecimals) {
        if (m_rules.decimals == 0 && digits.marks[0] == Mark::Comma) {
            hasDecimals = false;
        } else if (negative && m_rules.low && m_rules.low->raw() >= 0) {
            m_problem = Problem::Negative; // both readings are negative
            return;
        } else {
            const QString sign = negative ? u"-"_s : QString();
            m_problem = Problem::TwoReadings;
            m_plain = sign + digits.all;
            m_otherReading = sign + withPoint(digits.all, digits.places[0]);
            return;
        }
    }
    const qsizetype whole = hasDecimals ? digits.places[last] : digits.all.size();
    if (!areGroups(digits, hasDecimals ? last : last + 1, whole)) {
        m_problem = commas > 0 && points > 0 && !hasDecimals ? Problem::NotANumber : Problem::Groups;
        return;
    }
    m_plain = withPoint(digits.all, whole);
    if (negative)
        m_plain.prepend(u'-');
    const std::optional<int> power = powerOf(exponent);
    if (!power) {
        m_problem = Problem::NotANumber;
        return;
    }
    if (!exponent.isEmpty())
        m_plain += u'e' + QString::number(*power);
    const Range range = readValue(m_plain, !exponent.isEmpty(), m_value, m_double);
    if (range != Range::Kept)
        m_value = negative ? Currency::min() : Currency::max();
    if (range == Range::BeyondDouble || (range == Range::BeyondCurrency && !m_rules.exponent))
        m_problem = negative ? Problem::TooSmall : Problem::TooLarge;
    else
        judge(decimalsOf(digits, whole, *power));
}

void NumberEntry::judge(qsizetype decimals)
{
    if (m_rules.unit != NumberUnit::None && m_unit != NumberUnit::None && m_unit != m_rules.unit)
        m_problem = Problem::OtherUnit;
    else if (m_rules.low && m_value < *m_rules.low)
        m_problem = m_value.raw() < 0 && m_rules.low->raw() >= 0 ? Problem::Negative : Problem::TooSmall;
    else if (m_rules.high && m_value > *m_rules.high)
        m_problem = Problem::TooLarge;
    else if (m_rules.decimals >= 0 && decimals > m_rules.decimals)
        m_problem = Problem::TooManyDecimals;
}

bool NumberEntry::isUnfinished() const
{
    if (m_problem != Problem::NotANumber && m_problem != Problem::Groups &&
        m_problem != Problem::TwoReadings && m_problem != Problem::TooManyDecimals &&
        m_problem != Problem::Blank)
        return false;
    // The reader itself tries some possible continuations.
    static constexpr std::array<QStringView, 11> endings{u"0",  u"00",  u"000",  u",000", u".000", u")",
                                                         u"0)", u"00)", u"000)", u"R0",   u"AR0"};
    NumberRules rules = m_rules;
    rules.low.reset();
    rules.high.reset();
    return std::any_of(endings.begin(), endings.end(), [&](QStringView ending) {
        return NumberEntry(m_text + ending.toString(), rules).isNumber();
    });
}

QString NumberEntry::reason() const
{
    QString shown = m_text.simplified();
    if (shown.size() > longestShown)
        shown = shown.left(longestShown) + QChar(0x2026);
    const auto limit = [this](const std::optional<Currency> &value) {
        const QString text = FormatFloat(FormatMask::Thousands, *value);
        return m_rules.unit == NumberUnit::Percent ? text + u'%' : text;
    };
    switch (m_problem) {
    case Problem::None:
        return {};
    case Problem::Blank:
        return Text::tr("Nothing is entered");
    case Problem::NotANumber:
        return Text::tr("\"%1\" is not a number").arg(shown);
    case Problem::SeveralLines:
        return Text::tr("\"%1\" is more than one number").arg(shown);
    case Problem::Groups:
        return Text::tr("\"%1\" is not a number: thousands go in groups of three digits").arg(shown);
    case Problem::TwoReadings:
        return Text::tr("\"%1\" can mean %2 or %3; type the cents, or leave the separator out")
            .arg(shown, FormatFloat(FormatMask::Thousands, Currency::fromText(m_plain)), m_otherReading);
    case Problem::OtherUnit:
        return m_unit == NumberUnit::Percent ? Text::tr("\"%1\" is a percentage, not an amount").arg(shown)
                                             : Text::tr("\"%1\" is an amount, not a percentage").arg(shown);
    case Problem::TooManyDecimals:
        return m_rules.decimals == 0
                   ? Text::tr("\"%1\" is not a whole number").arg(shown)
                   : Text::tr("\"%1\" has more than %n decimal(s)", nullptr, m_rules.decimals).arg(shown);
    case Problem::Negative:
        switch (m_rules.unit) {
        case NumberUnit::Rand:
            return Text::tr("\"%1\" is below zero; an amount cannot be negative").arg(shown);
        case NumberUnit::Percent:
            return Text::tr("\"%1\" is below zero; a percentage cannot be negative").arg(shown);
        case NumberUnit::None:
            break;
        }
        return Text::tr("\"%1\" is below zero").arg(shown);
    case Problem::TooSmall:
        return m_rules.low ? Text::tr("\"%1\" is less than %2").arg(shown, limit(m_rules.low))
                           : Text::tr("\"%1\" is too small").arg(shown);
    case Problem::TooLarge:
        return m_rules.high ? Text::tr("\"%1\" is more than %2").arg(shown, limit(m_rules.high))
                            : Text::tr("\"%1\" is too large").arg(shown);
    }
    return {};
}
