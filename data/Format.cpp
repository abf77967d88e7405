#include "data/Format.h"

#include "data/Exceptions.h"

#include <QCoreApplication>
#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace
{

constexpr std::int64_t RawPerCent = Currency::Scale / 100;

[[noreturn]] void raiseConvert(const char *message, const QString &text)
{
    throw EConvertError(QCoreApplication::translate("Format", message).arg(text));
}

FormatMask maskOf(const QString &mask)
{
    if (mask == u"#,##0.00" || mask == u"#,#0.00")
        return FormatMask::Thousands;
    if (mask == u"#0.00")
        return FormatMask::TwoDecimals;
    raiseConvert(QT_TRANSLATE_NOOP("Format", "'%1' is not a known format mask."), mask);
}

// The value in hundredths, rounded half away from zero.
constexpr std::int64_t centsOf(std::int64_t raw) noexcept
{
    const std::int64_t cents = raw / RawPerCent;
    const std::int64_t rest = raw % RawPerCent;
    if (2 * rest >= RawPerCent)
        return cents + 1;
    return 2 * rest <= -RawPerCent ? cents - 1 : cents;
}

constexpr bool isDigit(char16_t c) noexcept
{
    return c >= u'0' && c <= u'9';
}

// The parts of a number text. The views contain only the digits 0 to 9.
struct NumberText {
    bool Negative = false;
    QStringView Whole, Fraction;
    bool HasPoint = false;
    bool HasExponent = false;
    bool NegativeExponent = false;
    QStringView Exponent;
    QStringView All; // the whole text without surrounding blanks and a leading "+"
};

QStringView takeDigits(QStringView &rest) noexcept
{
    qsizetype count = 0;
    while (count < rest.size() && isDigit(rest[count].unicode()))
        ++count;
    const QStringView digits = rest.first(count);
    rest = rest.sliced(count);
    return digits;
}

bool takeSign(QStringView &rest) noexcept
{
    if (rest.isEmpty() || (rest.front() != u'-' && rest.front() != u'+'))
        return false;
    const bool negative = rest.front() == u'-';
    rest = rest.sliced(1);
    return negative;
}

bool parseNumber(QStringView text, NumberText &number) noexcept
{
    QStringView rest = text.trimmed();
    number.All = rest.startsWith(u'+') ? rest.sliced(1) : rest;
    number.Negative = takeSign(rest);
    number.Whole = takeDigits(rest);
    number.HasPoint = rest.startsWith(u'.');
    if (number.HasPoint) {
        rest = rest.sliced(1);
        number.Fraction = takeDigits(rest);
    }
    if (number.Whole.isEmpty() && number.Fraction.isEmpty())
        return false;
    number.HasExponent = rest.startsWith(u'e') || rest.startsWith(u'E');
    if (number.HasExponent) {
        rest = rest.sliced(1);
        number.NegativeExponent = takeSign(rest);
        number.Exponent = takeDigits(rest);
        if (number.Exponent.isEmpty())
            return false;
    }
    return rest.isEmpty();
}

// The power of ten of the first nonzero digit, limited to a value beyond the range of double.
qsizetype leadingPower(const NumberText &number)
{
    constexpr qsizetype beyond = 100000;
    const auto isZero = [](QChar digit) { return digit == u'0'; };
    const auto zerosOf = [&](QStringView digits) {
        return std::find_if_not(digits.begin(), digits.end(), isZero) - digits.begin();
    };
    const qsizetype zeros = zerosOf(number.Whole);
    const qsizetype power =
        zeros < number.Whole.size() ? number.Whole.size() - zeros - 1 : -zerosOf(number.Fraction) - 1;
    const QStringView digits = number.Exponent.sliced(zerosOf(number.Exponent));
    const qsizetype exponent = digits.size() > 5 ? beyond : digits.toInt();
    return power + (number.NegativeExponent ? -exponent : exponent);
}

unsigned digitValue(QChar digit) noexcept
{
    return static_cast<unsigned>(digit.unicode() - u'0');
}

// Appends a digit to a magnitude; false when the result exceeds the range of Currency.
bool appendDigit(std::uint64_t &magnitude, unsigned digit) noexcept
{
    constexpr std::uint64_t furthest = static_cast<std::uint64_t>(INT64_MAX) + 1;
    return !__builtin_mul_overflow(magnitude, std::uint64_t{10}, &magnitude) &&
           !__builtin_add_overflow(magnitude, std::uint64_t{digit}, &magnitude) && magnitude <= furthest;
}

} // namespace

QString FormatFloat(FormatMask mask, Currency value)
{
    const std::int64_t cents = centsOf(value.raw());
    auto rest = static_cast<std::uint64_t>(cents < 0 ? -cents : cents);
    // 17 digits of cents at most, 5 separators, the point and the sign.
    char16_t buffer[32];
    char16_t *const end = buffer + std::size(buffer);
    char16_t *out = end;
    const auto put = [&] {
        *--out = static_cast<char16_t>(u'0' + rest % 10);
        rest /= 10;
    };
    put();
    put();
    *--out = u'.';
    int digits = 0;
    do {
        if (mask == FormatMask::Thousands && digits != 0 && digits % 3 == 0)
            *--out = u',';
        put();
        ++digits;
    } while (rest != 0);
    if (cents < 0)
        *--out = u'-';
    return QStringView(out, end).toString();
}

QString FormatFloat(FormatMask mask, double value)
{
    return FormatDecimals(value, 2, mask == FormatMask::Thousands);
}

QString FormatDecimals(double value, int decimals, bool thousands)
{
    if (!std::isfinite(value))
        raiseConvert(QT_TRANSLATE_NOOP("Format", "'%1' cannot be shown as a number."),
                     QString::number(value));
    // The shortest digits that read back as the same double: "d.ddde+xx".
    char shortest[32];
    const std::to_chars_result written = std::to_chars(std::begin(shortest), std::end(shortest),
                                                       std::fabs(value), std::chars_format::scientific);
    const std::string_view text(shortest, static_cast<std::size_t>(written.ptr - shortest));
    const std::size_t mark = text.find('e');
    int exponent = 0;
    const char *exponentText = text.data() + mark + 1;
    if (*exponentText == '+')
        ++exponentText;
    std::from_chars(exponentText, written.ptr, exponent);

    // The digit at a power of ten. A double has at most 17 digits; all others are 0. The digit after the last
    // shown one decides the rounding.
    const auto digitAt = [&](int power) {
        const int index = exponent - power;
        if (index < 0)
            return '0';
        const std::size_t at = index == 0 ? 0 : static_cast<std::size_t>(index) + 1;
        return at < mark ? text[at] : '0';
    };
    const int lowest = -std::max(decimals, 0);
    QVarLengthArray<char, 64> digits; // lowest first
    bool carry = digitAt(lowest - 1) >= '5';
    for (int power = lowest; power <= std::max(exponent, 0); ++power) {
        char digit = digitAt(power);
        if (carry)
            digit = digit == '9' ? '0' : static_cast<char>(digit + 1);
        carry = carry && digit == '0';
        digits.append(digit);
    }
    if (carry)
        digits.append('1');

    const qsizetype whole = digits.size() + lowest;
    QString shown;
    shown.reserve(digits.size() + whole / 3 + 2);
    const bool zero = std::all_of(digits.cbegin(), digits.cend(), [](char digit) { return digit == '0'; });
    if (value < 0 && !zero)
        shown += u'-';
    for (qsizetype index = digits.size() - 1; index >= 0; --index) {
        shown += QLatin1Char(digits[index]);
        const qsizetype power = index + lowest;
        if (power == 0 && lowest < 0)
            shown += u'.';
        else if (thousands && power > 0 && power % 3 == 0)
            shown += u',';
    }
    return shown;
}

QString FormatFloat(const QString &mask, Currency value)
{
    return FormatFloat(maskOf(mask), value);
}

QString FormatFloat(const QString &mask, double value)
{
    return FormatFloat(maskOf(mask), value);
}

Currency RoundToShownCents(Currency value)
{
    std::int64_t raw = 0;
    if (__builtin_mul_overflow(centsOf(value.raw()), RawPerCent, &raw))
        throw EOverflow(QCoreApplication::translate("Format", "The amount is too large."));
    return Currency::fromRaw(raw);
}

double StrToFloat(const QString &text)
{
    constexpr const char *message = QT_TRANSLATE_NOOP("Format", "'%1' is not a valid number.");
    NumberText number;
    if (!parseNumber(text, number))
        raiseConvert(message, text);
    const QByteArray plain = number.All.toLatin1();
    double value = 0;
    const std::from_chars_result read = std::from_chars(plain.cbegin(), plain.cend(), value);
    // from_chars has one error for both ends of the range. A number that is too small is read as 0; a number
    // that is too large is an error.
    if (read.ec == std::errc::result_out_of_range && leadingPower(number) > 0)
        raiseConvert(message, text);
    return value;
}

int StrToInt(const QString &text)
{
    NumberText number;
    int value = 0;
    if (parseNumber(text, number) && !number.HasPoint && !number.HasExponent) {
        const QByteArray plain = number.All.toLatin1();
        if (std::from_chars(plain.cbegin(), plain.cend(), value).ec == std::errc())
            return value;
    }
    raiseConvert(QT_TRANSLATE_NOOP("Format", "'%1' is not a valid integer."), text);
}

bool TryStrToCurr(QStringView text, Currency &value) noexcept
{
    NumberText number;
    if (!parseNumber(text, number) || number.HasExponent)
        return false;
    std::uint64_t magnitude = 0;
    for (const QChar digit : number.Whole) {
        if (!appendDigit(magnitude, digitValue(digit)))
            return false;
    }
    constexpr qsizetype decimals = 4;
    for (qsizetype index = 0; index < decimals; ++index) {
        const bool given = index < number.Fraction.size();
        if (!appendDigit(magnitude, given ? digitValue(number.Fraction[index]) : 0))
            return false;
    }
    const QStringView rest = number.Fraction.sliced(std::min(decimals, number.Fraction.size()));
    if (!rest.isEmpty() && rest.front() >= u'5') {
        const bool tie = rest.front() == u'5' &&
                         std::all_of(rest.begin() + 1, rest.end(), [](QChar digit) { return digit == u'0'; });
        if (!tie || (magnitude & 1U) != 0)
            ++magnitude;
    }
    // The negative range is larger by one ten-thousandth.
    if (magnitude > static_cast<std::uint64_t>(INT64_MAX) + (number.Negative ? 1U : 0U))
        return false;
    value = Currency::fromRaw(static_cast<std::int64_t>(number.Negative ? 0 - magnitude : magnitude));
    return true;
}

Currency StrToCurr(const QString &text)
{
    Currency value;
    if (!TryStrToCurr(text, value))
        raiseConvert(QT_TRANSLATE_NOOP("Format", "'%1' is not a valid amount."), text);
    return value;
}
