#pragma once

#include "export/zel_data_export.h"

#include <QMetaType>
#include <QString>

#include <compare>
#include <concepts>
#include <cstdint>
#include <type_traits>

namespace Zel
{
/// The types whose values count something: every integral type of up to 64 bits but truth values and
/// characters.
template <typename T>
concept WholeNumber = std::integral<T> && sizeof(T) <= sizeof(std::int64_t) &&
                      !std::same_as<std::remove_cv_t<T>, bool> && !std::same_as<std::remove_cv_t<T>, char> &&
                      !std::same_as<std::remove_cv_t<T>, wchar_t> &&
                      !std::same_as<std::remove_cv_t<T>, char8_t> &&
                      !std::same_as<std::remove_cv_t<T>, char16_t> &&
                      !std::same_as<std::remove_cv_t<T>, char32_t>;
/// Those of which a Currency holds every value, on every system: up to int and unsigned int. long is not one
/// of them, because it has 64 bits on some systems.
template <typename T>
concept NarrowWholeNumber = WholeNumber<T> && sizeof(T) <= sizeof(std::int32_t) &&
                            !std::same_as<std::make_signed_t<std::remove_cv_t<T>>, long>;
} // namespace Zel

/// Money and percentages: a signed 64-bit fixed-point number with four decimal places. The stored value is
/// the amount x 10000, so every sum and difference is exact; a result that does not fit raises EOverflow and
/// never wraps. Never a double inside.
class ZEL_DATA_EXPORT Currency
{
public:
    static constexpr std::int64_t Scale = 10000; ///< Stored units in 1.

    constexpr Currency() noexcept = default;
    /// A whole number of units (rand, percent), exactly. Every value of a type up to int fits, so these
    /// convert by themselves. A wider one may be too large and raise EOverflow, so it is asked for by name:
    /// Currency(count). Nothing raises on the way into a slot that takes a Currency.
    template <Zel::WholeNumber T>
    constexpr explicit(!Zel::NarrowWholeNumber<T>) Currency(T units) noexcept(Zel::NarrowWholeNumber<T>)
        : m_raw(scaled(units))
    {
    }
    /// Refused when the program is compiled: what a floating-point number is as money is asked for by name
    /// (fromDouble(), fromLongDouble()), and truth values and characters are no amounts.
    template <typename T>
    requires(std::is_arithmetic_v<T> && !Zel::WholeNumber<T>) Currency(T)
    = delete;
    /// The value whose stored integer is @p raw (ten-thousandths).
    static constexpr Currency fromRaw(std::int64_t raw) noexcept
    {
        Currency value;
        value.m_raw = raw;
        return value;
    }
    /// Refused when the program is compiled: the stored integer is a signed one, and not a fraction.
    template <typename T>
    requires(std::floating_point<T> ||
             (std::unsigned_integral<T> && sizeof(T) >= sizeof(std::int64_t))) static Currency
        fromRaw(T) = delete;
    /// Nearest ten-thousandth, ties to even on the exact binary value. Raises EOverflow when out of range or
    /// not a number.
    static Currency fromDouble(double value);
    /// @p value in extended precision, rounded as fromDouble().
    static Currency fromLongDouble(long double value);
    /// A plain number ("-12.5", "1e3" is refused); same rules and error as StrToCurr().
    static Currency fromText(const QString &text);
    /// @p amount as Currency from an integer, a double, a text or a Currency; a null variant is 0. Raises
    /// EConvertError for anything else.
    static Currency fromVariant(const QVariant &amount);
    static constexpr Currency max() noexcept { return fromRaw(INT64_MAX); } ///< The greatest amount.
    static constexpr Currency min() noexcept { return fromRaw(INT64_MIN); } ///< The least amount.

    constexpr std::int64_t raw() const noexcept { return m_raw; } ///< The amount in ten-thousandths.
    double toDouble() const noexcept;                             ///< The nearest double.
    /// Shortest plain text that reads back as the same value ("12.5", "-0.0001"); always "." as the point.
    QString toString() const;
    QVariant toVariant() const;                                   ///< The amount as a Currency, not a double.
    constexpr bool isZero() const noexcept { return m_raw == 0; } ///< Exactly 0.

    Currency operator-() const;           ///< EOverflow for the least amount.
    Currency &operator+=(Currency other); ///< EOverflow past the range, as for the next three.
    Currency &operator-=(Currency other); ///< Takes @p other away.
    friend Currency operator+(Currency a, Currency b) { return a += b; } ///< The sum.
    friend Currency operator-(Currency a, Currency b) { return a -= b; } ///< The difference.
    /// Exact product and quotient rounded to the nearest ten-thousandth, ties to even. Division by zero and
    /// results out of range raise EOverflow.
    friend ZEL_DATA_EXPORT Currency operator*(Currency a, Currency b);
    friend ZEL_DATA_EXPORT Currency operator/(Currency a, Currency b);
    /// a x b / c with one rounding at the end (nearest ten-thousandth, ties to even); a zero @p c raises
    /// EOverflow. The share of an amount and the amount of a percentage are both this.
    static Currency mulDiv(Currency a, Currency b, Currency c);

    friend constexpr auto operator<=>(Currency, Currency) noexcept = default;
    friend constexpr bool operator==(Currency, Currency) noexcept = default;

private:
    [[noreturn]] static void raiseTooLarge();
    template <Zel::WholeNumber T> static constexpr std::int64_t scaled(T units)
    {
        if constexpr (sizeof(T) >= sizeof(std::int64_t)) {
            if (units > static_cast<T>(INT64_MAX / Scale) ||
                (std::is_signed_v<T> && units < static_cast<T>(INT64_MIN / Scale)))
                raiseTooLarge();
        }
        return static_cast<std::int64_t>(units) * Scale;
    }

    std::int64_t m_raw = 0;
};
Q_DECLARE_METATYPE(Currency)
Q_DECLARE_TYPEINFO(Currency, Q_PRIMITIVE_TYPE);
