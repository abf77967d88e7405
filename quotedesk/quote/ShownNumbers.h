#pragma once

#include "data/Currency.h"

#include <QChar>
#include <QList>
#include <QString>

namespace QuoteDesk
{

/// How amounts and percentages are displayed on the program's own pages and in the printout. Fields that are
/// typed into, the frames, files and the command line have the notation of FormatFloat, whatever is set here.
struct NumberNotation {
    QString currency = QStringLiteral("R"); ///< the sign before an amount
    QChar grouping = u',';                  ///< between groups of three digits; null for none
    QChar decimal = u'.';

    friend bool operator==(const NumberNotation &, const NumberNotation &) = default;

    /// The longest currency sign, in characters.
    static constexpr int LongestCurrency = 5;
    /// Whether @p sign can stand before an amount without changing how it reads.
    static bool isCurrency(const QString &sign);
    /// The notations to choose from, all with the currency "R"; the first one is the default.
    static QList<NumberNotation> choices();
};

/// The notation in force.
const NumberNotation &numberNotation();
/// Sets the notation for everything that is displayed from now on.
void setNumberNotation(const NumberNotation &notation);

/// @p value with two decimals and groups: "1,250,000.00".
QString shownMoney(Currency value, const NumberNotation &notation = numberNotation());
/// The same after the currency sign: "R 1,250,000.00".
QString shownAmount(Currency value, const NumberNotation &notation = numberNotation());
/// A caption that ends with "(R)", with the currency sign in force there.
QString withCurrency(QString caption);
/// @p value with two decimals and without groups: "12.50".
QString shownPercent(Currency value, const NumberNotation &notation = numberNotation());

} // namespace QuoteDesk
