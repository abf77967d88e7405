#include "data/Currency.h"

#include "data/Exceptions.h"
#include "data/Format.h"

#include <QCoreApplication>
#include <QVariant>

#include <cmath>
#include <limits>
#include <tuple>

namespace
{

// Products of two stored values take up to 126 bits, and so does the mantissa of the widest long double
// times the scale.
__extension__ using Wide = unsigned __int128;

constexpr std::uint64_t MaxMagnitude = static_cast<std::uint64_t>(INT64_MAX);
constexpr std::uint64_t UnsignedScale = static_cast<std::uint64_t>(Currency::Scale);

[[noreturn]] void raiseOverflow()
{
    throw EOverflow(QCoreApplication::translate("Currency", "The amount is too large."));
}

[[noreturn]] void raiseDivisionByZero()
{
    throw EOverflow(QCoreApplication::translate("Currency", "Division by zero."));
}

[[noreturn]] void raiseNotAnAmount(const QString &what)
{
    throw EConvertError(QCoreApplication::translate("Currency", "'%1' is not a valid amount.").arg(what));
}

constexpr std::uint64_t magnitude(std::int64_t value) noexcept
{
    const auto bits = static_cast<std::uint64_t>(value);
    return value < 0 ? 0 - bits : bits;
}

// The stored value of the given sign and magnitude. The negative range is larger by one.
Currency signedValue(bool negative, Wide value)
{
    if (value > MaxMagnitude + (negative ? 1U : 0U))
        raiseOverflow();
    const auto bits = static_cast<std::uint64_t>(value);
    return Currency::fromRaw(static_cast<std::int64_t>(negative ? 0 - bits : bits));
}

// Nearest whole quotient, ties to even. The comparison is written so that doubling cannot overflow.
template <typename T> constexpr T nearestQuotient(T dividend, T divisor) noexcept
{
    T quotient = dividend / divisor;
    const T rest = dividend % divisor;
    const T missing = divisor - rest;
    if (rest > missing || (rest == missing && (quotient & 1U) != 0))
        ++quotient;
    return quotient;
}

Currency roundedShare(std::int64_t a, std::int64_t b, std::int64_t divisor)
{
    const bool negative = ((a < 0) != (b < 0)) != (divisor < 0);
    const std::uint64_t bottom = magnitude(divisor);
    std::uint64_t narrow = 0;
    // 64-bit division is several times faster and suffices for usual amounts.
    if (!__builtin_mul_overflow(magnitude(a), magnitude(b), &narrow))
        return signedValue(negative, nearestQuotient(narrow, bottom));
    const Wide product = Wide{magnitude(a)} * magnitude(b);
    return signedValue(negative, nearestQuotient(product, Wide{bottom}));
}

// Registers a QVariant conversion from or to Currency, and unregisters it in the destructor.
template <typename From, typename To> class Conversion
{
public:
    explicit Conversion(bool (*convert)(const From &, To &) noexcept)
        : m_registered(QMetaType::registerConverterFunction(
              [convert](const void *from, void *to) {
                  return convert(*static_cast<const From *>(from), *static_cast<To *>(to));
              },
              QMetaType::fromType<From>(), QMetaType::fromType<To>()))
    {
    }
    ~Conversion()
    {
        if (m_registered)
            QMetaType::unregisterConverterFunction(QMetaType::fromType<From>(), QMetaType::fromType<To>());
    }
    Q_DISABLE_COPY_MOVE(Conversion)

private:
    bool m_registered;
};

template <typename T> bool unitsToCurrency(const T &units, Currency &value) noexcept
{
    try {
        value = Currency(units);
        return true;
    } catch (const EOverflow &) {
        return false;
    }
}

template <typename... T> struct WholeNumberConversions {
    std::tuple<Conversion<T, Currency>...> each{&unitsToCurrency<T>...};
};

// Views and cell editors use these conversions. They are registered when the first variant is made, because
// registering takes locks and memory of Qt.
void registerConversions()
{
    static const Conversion<Currency, QString> toText([](const Currency &value, QString &text) noexcept {
        text = value.toString();
        return true;
    });
    static const Conversion<Currency, double> toDouble([](const Currency &value, double &number) noexcept {
        number = value.toDouble();
        return true;
    });
    static const Conversion<QString, Currency> fromText(
        [](const QString &text, Currency &value) noexcept { return TryStrToCurr(text, value); });
    static const WholeNumberConversions<short, ushort, int, uint, long, ulong, qlonglong, qulonglong>
        fromIntegers;
    static const Conversion<double, Currency> fromNumber([](const double &number, Currency &value) noexcept {
        try {
            value = Currency::fromDouble(number);
            return true;
        } catch (const EOverflow &) {
            return false;
        }
    });
}

} // namespace

void Currency::raiseTooLarge()
{
    raiseOverflow();
}

Currency Currency::fromDouble(double value)
{
    return fromLongDouble(static_cast<long double>(value));
}

Currency Currency::fromLongDouble(long double value)
{
    constexpr int mantissaBits = std::numeric_limits<long double>::digits;
    static_assert(mantissaBits <= 113, "the scaled mantissa must fit in 128 bits");
    if (!std::isfinite(value))
        raiseOverflow();
    // The value as an integer mantissa times a power of two is exact, so it is rounded only once.
    int exponent = 0;
    const long double fraction = std::frexp(std::fabs(value), &exponent);
    const Wide scaled = static_cast<Wide>(std::ldexp(fraction, mantissaBits)) * UnsignedScale;
    const int shift = mantissaBits - exponent;
    const bool negative = std::signbit(value);
    if (exponent > 63)
        raiseOverflow();
    if (shift <= 0)
        return signedValue(negative, scaled << -shift);
    if (shift > 127) // below half of the smallest step
        return {};
    return signedValue(negative, nearestQuotient(scaled, Wide{1} << shift));
}

Currency Currency::fromText(const QString &text)
{
    return StrToCurr(text);
}

Currency Currency::fromVariant(const QVariant &amount)
{
    if (!amount.isValid() || amount.isNull())
        return {};
    switch (amount.typeId()) {
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::SChar:
    case QMetaType::LongLong:
    case QMetaType::Long:
        return Currency(amount.toLongLong());
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        return Currency(amount.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return fromDouble(amount.toDouble());
    case QMetaType::QString:
        return StrToCurr(amount.toString());
    default:
        break;
    }
    if (amount.metaType() == QMetaType::fromType<Currency>())
        return amount.value<Currency>();
    const QString text = amount.toString();
    raiseNotAnAmount(text.isEmpty() ? QString::fromLatin1(amount.typeName()) : text);
}

double Currency::toDouble() const noexcept
{
    constexpr std::uint64_t exactLimit = std::uint64_t{1} << std::numeric_limits<double>::digits;
    const std::uint64_t top = magnitude(m_raw);
    if (top <= exactLimit)
        return static_cast<double>(m_raw) / static_cast<double>(Scale);
    // A dividend of more than 53 bits would be rounded before the division. Instead, the quotient is
    // calculated with 64 more bits; its lowest bit is set when there is a remainder. Only the conversion to
    // double rounds.
    const Wide dividend = Wide{top} << 64;
    const Wide quotient = dividend / UnsignedScale | (dividend % UnsignedScale != 0 ? 1U : 0U);
    const double value = std::ldexp(static_cast<double>(quotient), -64);
    return m_raw < 0 ? -value : value;
}

QString Currency::toString() const
{
    char16_t buffer[24];
    char16_t *const end = buffer + std::size(buffer);
    char16_t *out = end;
    std::uint64_t whole = magnitude(m_raw) / UnsignedScale;
    std::uint64_t fraction = magnitude(m_raw) % UnsignedScale;
    if (fraction != 0) {
        int digits = 4;
        for (; fraction % 10 == 0; --digits)
            fraction /= 10;
        for (; digits > 0; --digits, fraction /= 10)
            *--out = static_cast<char16_t>(u'0' + fraction % 10);
        *--out = u'.';
    }
    do {
        *--out = static_cast<char16_t>(u'0' + whole % 10);
        whole /= 10;
    } while (whole != 0);
    if (m_raw < 0)
        *--out = u'-';
    return QStringView(out, end).toString();
}

QVariant Currency::toVariant() const
{
    registerConversions();
    return QVariant::fromValue(*this);
}

Currency Currency::operator-() const
{
    return Currency() -= *this;
}

Currency &Currency::operator+=(Currency other)
{
    std::int64_t raw = 0;
    if (__builtin_add_overflow(m_raw, other.m_raw, &raw))
        raiseOverflow();
    m_raw = raw;
    return *this;
}

Currency &Currency::operator-=(Currency other)
{
    std::int64_t raw = 0;
    if (__builtin_sub_overflow(m_raw, other.m_raw, &raw))
        raiseOverflow();
    m_raw = raw;
    return *this;
}

Currency operator*(Currency a, Currency b)
{
    return roundedShare(a.raw(), b.raw(), Currency::Scale);
}

Currency operator/(Currency a, Currency b)
{
    if (b.isZero())
        raiseDivisionByZero();
    return roundedShare(a.raw(), Currency::Scale, b.raw());
}

Currency Currency::mulDiv(Currency a, Currency b, Currency c)
{
    if (c.isZero())
        raiseDivisionByZero();
    return roundedShare(a.raw(), b.raw(), c.raw());
}
