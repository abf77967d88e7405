#pragma once

#include "data/NumberEntry.h"

#include <QString>

/// A number as people write it, and the value expected wherever it is entered. One table for the reader and
/// for all fields and cells that use it.
struct NumberCase {
    using Problem = NumberEntry::Problem;

    const char *text;  ///< UTF-8
    const char *value; ///< As Currency writes it; empty where there is a problem.
    Problem problem = Problem::None;
    NumberUnit unit = NumberUnit::None; ///< The unit that the text itself names.
    int decimals = 0;                   ///< The number of decimals, without zeros at the end.

    QString said() const { return QString::fromUtf8(text); }
    bool isNumber() const { return problem == Problem::None; }
    Currency number() const
    {
        return isNumber() ? Currency::fromText(QString::fromLatin1(value)) : Currency();
    }
    /// Whether a field for an amount in rand accepts the text: from 0 to @p most, with at most two decimals.
    bool isAmountUpTo(Currency most) const
    {
        return isNumber() && unit != NumberUnit::Percent && number() >= Currency() && number() <= most &&
               decimals <= 2;
    }
};

/// Texts that mean the same wherever they are entered.
inline constexpr NumberCase numberCases[] = {
    {"0", "0"},
    {"7", "7"},
    {"007", "7"},
    {"1250000", "1250000"},
    {"1250000.50", "1250000.5", {}, {}, 1},
    {"12.5", "12.5", {}, {}, 1},
    {"12,5", "12.5", {}, {}, 1},
    {"12.", "12"},
    {"12,", "12"},
    {".5", "0.5", {}, {}, 1},
    {",5", "0.5", {}, {}, 1},
    {"12500.75", "12500.75", {}, {}, 2},
    {"12500,75", "12500.75", {}, {}, 2},
    {"0.10", "0.1", {}, {}, 1},
    // Thousands separators of both conventions.
    {"1,250,000", "1250000"},
    {"1.250.000", "1250000"},
    {"1,250,000.5", "1250000.5", {}, {}, 1},
    {"1.250.000,5", "1250000.5", {}, {}, 1},
    {"1,234.56", "1234.56", {}, {}, 2},
    {"1.234,56", "1234.56", {}, {}, 2},
    {"1,234.500", "1234.5", {}, {}, 1},
    {"1,250.", "1250"},
    {"1,000,000,000.00", "1000000000"},
    // A comma or point that can only be a decimal separator.
    {"1234,567", "1234.567", {}, {}, 3},
    {"0,125", "0.125", {}, {}, 3},
    {"0.125", "0.125", {}, {}, 3},
    {",125", "0.125", {}, {}, 3},
    {"1 250,125", "1250.125", {}, {}, 3},
    {"1.2345", "1.2345", {}, {}, 4},
    {"33.33333", "33.3333", {}, {}, 5},
    // Blanks of every kind and apostrophes as thousands separators.
    {"12 500.75", "12500.75", {}, {}, 2},
    {"1 250 000", "1250000"},
    {"1  250  000", "1250000"},
    {"1\u00a0250\u00a0000,50", "1250000.5", {}, {}, 1},
    {"1\u202f250\u202f000.50", "1250000.5", {}, {}, 1},
    {"1\u2009250", "1250"},
    {"1\u2007250\u3000000", "1250000"},
    {"1'250'000.50", "1250000.5", {}, {}, 1},
    {"1\u2019250\u2019000,50", "1250000.5", {}, {}, 1},
    {"  12,5\t", "12.5", {}, {}, 1},
    {"100\n", "100"},
    {"100\r\n", "100"},
    {"\u200e1\u200b250\u2060,50\ufeff", "1250.5", {}, {}, 1},
    // Units.
    {"R1234.5", "1234.5", {}, NumberUnit::Rand, 1},
    {"R 1 234,56", "1234.56", {}, NumberUnit::Rand, 2},
    {"r 1 234", "1234", {}, NumberUnit::Rand},
    {"ZAR 99", "99", {}, NumberUnit::Rand},
    {"zar99.5", "99.5", {}, NumberUnit::Rand, 1},
    {"99 ZAR", "99", {}, NumberUnit::Rand},
    {"50%", "50", {}, NumberUnit::Percent},
    {"12,5 %", "12.5", {}, NumberUnit::Percent, 1},
    {"33,333%", "33.333", {}, NumberUnit::Percent, 3},
    // Signs and negative numbers.
    {"-5", "-5"},
    {"\u22125", "-5"},
    {"\u20135", "-5"},
    {"- 5", "-5"},
    {"-100", "-100"},
    {"+5", "5"},
    {"(1 234,56)", "-1234.56", {}, {}, 2},
    {"(R 5)", "-5", {}, NumberUnit::Rand},
    {"R -5", "-5", {}, NumberUnit::Rand},
    {"-R5", "-5", {}, NumberUnit::Rand},
    {"R(5)", "-5", {}, NumberUnit::Rand},
    {"-5%", "-5", {}, NumberUnit::Percent},
    {"-0", "0"},
    // A separator that may be for thousands or for decimals.
    {"1,234", "", NumberCase::Problem::TwoReadings},
    {"1.234", "", NumberCase::Problem::TwoReadings},
    {"1,250", "", NumberCase::Problem::TwoReadings},
    {"1.250", "", NumberCase::Problem::TwoReadings},
    {"R 1.250", "", NumberCase::Problem::TwoReadings, NumberUnit::Rand},
    {"123,456", "", NumberCase::Problem::TwoReadings},
    {"1.005", "", NumberCase::Problem::TwoReadings},
    // Wrong groups of thousands.
    {"1 23", "", NumberCase::Problem::Groups},
    {"12 34", "", NumberCase::Problem::Groups},
    {"1 2345", "", NumberCase::Problem::Groups},
    {"1234 567", "", NumberCase::Problem::Groups},
    {"1,23,456.00", "", NumberCase::Problem::Groups},
    {"1234,567.8", "", NumberCase::Problem::Groups},
    {",234.56", "", NumberCase::Problem::Groups},
    {"1,234 567.00", "", NumberCase::Problem::Groups},
    {"1,250,00", "", NumberCase::Problem::Groups},
    {"1.2.3", "", NumberCase::Problem::Groups},
    {"1 234'567", "", NumberCase::Problem::Groups},
    {"1,,250", "", NumberCase::Problem::Groups},
    // Not numbers.
    {"", "", NumberCase::Problem::Blank},
    {"  ", "", NumberCase::Problem::Blank},
    {"\n", "", NumberCase::Problem::Blank},
    {".", "", NumberCase::Problem::NotANumber},
    {",", "", NumberCase::Problem::NotANumber},
    {"...", "", NumberCase::Problem::NotANumber},
    {"-", "", NumberCase::Problem::NotANumber},
    {"R", "", NumberCase::Problem::NotANumber},
    {"%", "", NumberCase::Problem::NotANumber},
    {"()", "", NumberCase::Problem::NotANumber},
    {"abc", "", NumberCase::Problem::NotANumber},
    {"12a", "", NumberCase::Problem::NotANumber},
    {"12x5", "", NumberCase::Problem::NotANumber},
    {"R-5x0", "", NumberCase::Problem::NotANumber, NumberUnit::Rand},
    {"1e5", "", NumberCase::Problem::NotANumber},
    {"nan", "", NumberCase::Problem::NotANumber},
    {"inf", "", NumberCase::Problem::NotANumber},
    {"0x10", "", NumberCase::Problem::NotANumber},
    {"--5", "", NumberCase::Problem::NotANumber},
    {"5-", "", NumberCase::Problem::NotANumber},
    {"-(5)", "", NumberCase::Problem::NotANumber},
    {"(-5)", "", NumberCase::Problem::NotANumber},
    {"(5", "", NumberCase::Problem::NotANumber},
    {"5)", "", NumberCase::Problem::NotANumber},
    {"1 234 R", "", NumberCase::Problem::NotANumber},
    {"R 5 ZAR", "", NumberCase::Problem::NotANumber},
    {"R5%", "", NumberCase::Problem::NotANumber},
    {"1.2,3.4,5", "", NumberCase::Problem::NotANumber},
    {"$5", "", NumberCase::Problem::NotANumber},
    {"\u0661\u0662", "", NumberCase::Problem::NotANumber}, // digits of another script
    {"\uff11\uff12", "", NumberCase::Problem::NotANumber},
    {"100\n200", "", NumberCase::Problem::SeveralLines},
    {"100\t200", "", NumberCase::Problem::SeveralLines},
    {"1\r\n250", "", NumberCase::Problem::SeveralLines},
    // The limits of Currency.
    {"922337203685477.5807", "922337203685477.5807", {}, {}, 4},
    {"-922337203685477.5808", "-922337203685477.5808", {}, {}, 4},
    {"922337203685477.5808", "", NumberCase::Problem::TooLarge},
    {"99999999999999999999", "", NumberCase::Problem::TooLarge},
    {"-99999999999999999999", "", NumberCase::Problem::TooSmall},
};
