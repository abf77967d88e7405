#pragma once

#include "data/Currency.h"

#include <QString>
#include <QStringView>

#include <optional>

/// What a number stands for. A text may say it itself: "R" or "ZAR" for rand, "%" for a percentage.
enum class NumberUnit {
    None,   ///< Neither, or it is not said.
    Rand,   ///< An amount.
    Percent ///< A percentage.
};

/// What a number has to be where it is entered.
struct NumberRules {
    NumberUnit unit = NumberUnit::None; ///< A text that says the other unit is refused; None takes both.
    std::optional<Currency> low;        ///< The least one.
    std::optional<Currency> high;       ///< The greatest one.
    /// The most decimals it may have, zeros at the end not counted. Only whole numbers: 0. Any: negative.
    int decimals = -1;
    bool exponent = false; ///< "1e5" is a number, and it may be larger than a Currency.
};

/// A number as a person types it, pastes it, or writes it on a command line or in a file; or why the text is
/// none. There is one such reader, so that the same text is the same number wherever it is entered.
///
/// Blanks of every kind around the number, and what cannot be seen at all, do not count. In front may stand a
/// sign, "R" or "ZAR", behind it "ZAR" or "%", and brackets around it make it negative. Thousands may be
/// parted, in groups of three digits, by blanks, apostrophes, commas or points, and a comma or a point stands
/// before the decimals. Which of the two a mark is follows from the text where the text says it: "1,234.50",
/// "1.234,50", "1 234,5", "12,5", "0,125". A single comma or point before three digits ("1,234") says
/// nothing, and is refused, but for two cases: percentages have no thousands, and whole numbers have no
/// decimals, where a comma can only part thousands.
///
/// Nothing is ever guessed, cut off or left out. The locale of the machine does not matter.
class ZEL_DATA_EXPORT NumberEntry
{
public:
    /// Why a text is not taken.
    enum class Problem {
        None,            ///< it is taken
        Blank,           ///< nothing is entered
        NotANumber,      ///< signs that no number has, or in the wrong place
        SeveralLines,    ///< more than one line, or cells parted by tabs
        Groups,          ///< thousands that are not in groups of three digits
        TwoReadings,     ///< "1,234": with or without decimals
        OtherUnit,       ///< a percentage in place of an amount, or the other way round
        TooManyDecimals, ///< more than the rules allow
        Negative,        ///< below zero where the least is zero or more
        TooSmall,        ///< below the least
        TooLarge,        ///< above the greatest, or more than can be kept
    };

    /// Reads @p text; raises nothing.
    explicit NumberEntry(QStringView text, const NumberRules &rules = {});

    bool isNumber() const noexcept { return m_problem == Problem::None; } ///< It is taken.
    Problem problem() const noexcept { return m_problem; }                ///< Why it is not; else None.
    /// Why the text is not taken, in the present language, without a full stop: "\"1,234\" can be read in two
    /// ways, ...". Blank for a number.
    QString reason() const;
    /// Whether typing on at the end can make a number of what is none yet ("-", "1,", "1,250,0").
    bool isUnfinished() const;

    /// The number, to four decimals, ties to even; 0 when there is none. Of numbers beyond a Currency's
    /// range, which only the rule `exponent` lets pass, the end of the range.
    Currency value() const noexcept { return m_value; }
    double toDouble() const noexcept { return m_double; } ///< The number as the nearest double; 0 for none.
    /// The number as digits with at most a "-", a "." and an exponent, decimals as they were written
    /// ("-1234.50"); blank when there is none.
    const QString &plain() const noexcept { return m_plain; }
    NumberUnit unit() const noexcept { return m_unit; }     ///< What the text itself says.
    const QString &text() const noexcept { return m_text; } ///< What was read, without blanks around it.

private:
    void read(QStringView rest);
    void readDigits(QStringView body, QStringView exponent, bool negative);
    void judge(qsizetype decimals);

    NumberRules m_rules;
    Problem m_problem = Problem::None;
    NumberUnit m_unit = NumberUnit::None;
    QString m_text;
    QString m_plain;
    QString m_otherReading; // of two: the one with decimals; m_plain has the one without
    Currency m_value;
    double m_double = 0;
};
