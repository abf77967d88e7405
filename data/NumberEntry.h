#pragma once

#include "data/Currency.h"

#include <QString>
#include <QStringView>

#include <optional>

/// The unit of a number. A text may contain its unit: "R" or "ZAR" for rand, "%" for a percentage.
enum class NumberUnit {
    None,   ///< No unit, or the text does not state one.
    Rand,   ///< An amount.
    Percent ///< A percentage.
};

/// The rules for a number in a certain field.
struct NumberRules {
    NumberUnit unit = NumberUnit::None; ///< A text with the other unit is refused; None accepts both.
    std::optional<Currency> low;        ///< The least number.
    std::optional<Currency> high;       ///< The greatest number.
    /// The maximum number of decimals, without trailing zeros. 0 allows whole numbers only; negative means no
    /// limit.
    int decimals = -1;
    bool exponent = false; ///< Accepts "1e5", also a number beyond the range of Currency.
};

/// Reads a number that a person types, pastes, or writes on a command line or in a file. All input uses this
/// reader, so the same text is the same number everywhere. For a text that is not a number it has the reason.
///
/// Surrounding blanks and invisible characters are ignored. A sign, "R" or "ZAR" may precede the number,
/// "ZAR" or
/// "%" may follow it, and brackets around it make it negative. Blanks, apostrophes, commas or points may
/// separate thousands, in groups of three digits. A comma or a point precedes the decimals. The text must
/// show which of the two a comma or point is: "1,234.50", "1.234,50", "1 234,5", "12,5", "0,125". A single
/// comma or point before three digits ("1,234") is ambiguous and refused, with two exceptions: in a
/// percentage it precedes the decimals, because percentages have no thousands; in a whole number a comma
/// separates thousands.
///
/// The reader never guesses and never drops a part of the text. The locale of the machine does not matter.
class ZEL_DATA_EXPORT NumberEntry
{
public:
    /// The reason why a text is not accepted.
    enum class Problem {
        None,            ///< the text is accepted
        Blank,           ///< the text is empty
        NotANumber,      ///< characters that do not belong to a number or are misplaced
        SeveralLines,    ///< more than one line, or cells separated by tabs
        Groups,          ///< thousands that are not in groups of three digits
        TwoReadings,     ///< "1,234": with or without decimals
        OtherUnit,       ///< a percentage instead of an amount, or the reverse
        TooManyDecimals, ///< more decimals than the rules allow
        Negative,        ///< below zero when the least number is zero or more
        TooSmall,        ///< below the least number
        TooLarge,        ///< above the greatest number, or out of range
    };

    /// Reads @p text; throws nothing.
    explicit NumberEntry(QStringView text, const NumberRules &rules = {});

    bool isNumber() const noexcept { return m_problem == Problem::None; } ///< Whether the text is accepted.
    Problem problem() const noexcept { return m_problem; }                ///< None when the text is accepted.
    /// The reason why the text is not accepted, in the current language, without a full stop: "\"1,234\" can
    /// be read in two ways, ...". Empty for a number.
    QString reason() const;
    /// Whether further typing at the end can turn the text into a number ("-", "1,", "1,250,0").
    bool isUnfinished() const;

    /// The number, rounded to four decimals, ties to even; 0 when the text is not a number. For a number
    /// beyond the range of Currency, which only the rule `exponent` allows, the end of the range.
    Currency value() const noexcept { return m_value; }
    double toDouble() const noexcept { return m_double; } ///< The number as the nearest double, or 0.
    /// The number as digits with at most a "-", a "." and an exponent. It keeps the written decimals
    /// ("-1234.50"). Empty when the text is not a number.
    const QString &plain() const noexcept { return m_plain; }
    NumberUnit unit() const noexcept { return m_unit; }     ///< The unit in the text.
    const QString &text() const noexcept { return m_text; } ///< The text without surrounding blanks.

private:
    void read(QStringView rest);
    void readDigits(QStringView body, QStringView exponent, bool negative);
    void judge(qsizetype decimals);

    NumberRules m_rules;
    Problem m_problem = Problem::None;
    NumberUnit m_unit = NumberUnit::None;
    QString m_text;
    QString m_plain;
    QString m_otherReading; // for TwoReadings: the reading with decimals; m_plain has the one without
    Currency m_value;
    double m_double = 0;
};
