#pragma once

#include "export/zel_data_export.h"

#include <QMetaType>
#include <QString>

#include <compare>
#include <cstdint>

/// Money and percentages: a signed 64-bit fixed-point number with four decimal places. The stored value is
/// the amount x 10000, so every sum and difference is exact; a result that does not fit raises EOverflow and
/// never wraps. Never a double inside.
class ZEL_DATA_EXPORT Currency
{
public:
    static constexpr std::int64_t Scale = 10000; ///< Stored units in 1.

    constexpr Currency() noexcept = default;
    /// A whole number of units (rand, percent); every one fits.
    Currency(int units) noexcept : m_raw(std::int64_t{units} * Scale) {}
    /// The value whose stored integer is @p raw (ten-thousandths).
    static constexpr Currency fromRaw(std::int64_t raw) noexcept
    {
        Currency value;
        value.m_raw = raw;
        return value;
    }
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
    std::int64_t m_raw = 0;
};
Q_DECLARE_METATYPE(Currency)
Q_DECLARE_TYPEINFO(Currency, Q_PRIMITIVE_TYPE);
