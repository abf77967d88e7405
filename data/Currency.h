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
/// Every integral type of up to 64 bits except bool and the character types.
template <typename T>
concept WholeNumber = std::integral<T> && sizeof(T) <= sizeof(std::int64_t) &&
                      !std::same_as<std::remove_cv_t<T>, bool> && !std::same_as<std::remove_cv_t<T>, char> &&
                      !std::same_as<std::remove_cv_t<T>, wchar_t> &&
                      !std::same_as<std::remove_cv_t<T>, char8_t> &&
                      !std::same_as<std::remove_cv_t<T>, char16_t> &&
                      !std::same_as<std::remove_cv_t<T>, char32_t>;
/// The whole-number types whose every value fits in a Currency, on every system: up to int and unsigned int.
/// long is excluded, because it has 64 bits on some systems.
template <typename T>
concept NarrowWholeNumber = WholeNumber<T> && sizeof(T) <= sizeof(std::int32_t) &&
                            !std::same_as<std::make_signed_t<std::remove_cv_t<T>>, long>;
} // namespace Zel

/// Money and percentages: a signed 64-bit fixed-point number with four decimal places. The stored integer is
/// the amount x 10000, so sums and differences are exact. A result that does not fit throws EOverflow and
/// never wraps.
class ZEL_DATA_EXPORT Currency
{
public:
    static constexpr std::int64_t Scale = 10000; ///< Stored units in 1.

    constexpr Currency() noexcept = default;
    /// A whole number of units (rand, percent). Types up to int convert implicitly, because all their values
    /// fit. Wider types convert explicitly, Currency(count), because a large value throws EOverflow. So an
    /// implicit conversion, for example in a connection to a slot, never throws.
    template <Zel::WholeNumber T>
    constexpr explicit(!Zel::NarrowWholeNumber<T>) Currency(T units) noexcept(Zel::NarrowWholeNumber<T>)
        : m_raw(scaled(units))
    {
    }
    /// A compile-time error for other arithmetic types: floating-point numbers need fromDouble() or
    /// fromLongDouble(), and Booleans and characters are not amounts.
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
    /// A compile-time error for floating-point numbers and unsigned 64-bit integers, because the stored
    /// integer is a signed 64-bit integer.
    template <typename T>
    requires(std::floating_point<T> ||
             (std::unsigned_integral<T> && sizeof(T) >= sizeof(std::int64_t))) static Currency
        fromRaw(T) = delete;
    /// @p value rounded to the nearest ten-thousandth; the exact binary value decides, and ties go to even.
    /// Throws EOverflow when @p value is out of range or not a number.
    static Currency fromDouble(double value);
    /// The same as fromDouble() for extended precision.
    static Currency fromLongDouble(long double value);
    /// Reads a plain number such as "-12.5", without an exponent. Rules and error are those of StrToCurr().
    static Currency fromText(const QString &text);
    /// Converts an integer, a double, a text or a Currency; a null variant gives 0. Throws EConvertError for
    /// anything else.
    static Currency fromVariant(const QVariant &amount);
    static constexpr Currency max() noexcept { return fromRaw(INT64_MAX); } ///< The greatest amount.
    static constexpr Currency min() noexcept { return fromRaw(INT64_MIN); } ///< The least amount.

    constexpr std::int64_t raw() const noexcept { return m_raw; } ///< The amount in ten-thousandths.
    double toDouble() const noexcept;                             ///< The nearest double.
    /// The shortest plain text that reads back as the same value ("12.5", "-0.0001"). The decimal point is
    /// always ".".
    QString toString() const;
    QVariant toVariant() const;                                   ///< The amount as a Currency, not a double.
    constexpr bool isZero() const noexcept { return m_raw == 0; } ///< Exactly 0.

    Currency operator-() const;           ///< Throws EOverflow for the least amount.
    Currency &operator+=(Currency other); ///< Throws EOverflow when the sum is out of range.
    Currency &operator-=(Currency other); ///< Throws EOverflow when the difference is out of range.
    friend Currency operator+(Currency a, Currency b) { return a += b; } ///< Throws like +=.
    friend Currency operator-(Currency a, Currency b) { return a -= b; } ///< Throws like -=.
    /// The exact product or quotient rounded to the nearest ten-thousandth, ties to even. Throws EOverflow
    /// for a division by zero and for a result out of range.
    friend ZEL_DATA_EXPORT Currency operator*(Currency a, Currency b);
    friend ZEL_DATA_EXPORT Currency operator/(Currency a, Currency b);
    /// a x b / c, rounded once at the end to the nearest ten-thousandth, ties to even. Throws EOverflow when
    /// @p c is zero or the result is out of range. Calculates the percentage of an amount, or the amount of a
    /// percentage.
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
