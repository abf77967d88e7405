#pragma once

#include "store/Database.h"
#include "store/QuoteStore.h"

#include <QFile>
#include <QTemporaryDir>

/// What the tests of the store share.
namespace StoreTesting
{

using namespace QuoteDesk;

inline Currency money(const char *text)
{
    return Currency::fromText(QString::fromLatin1(text));
}

/// The message of a StoreError that the body raises; blank when it raises nothing.
template <class Body> QString storeErrorOf(Body &&body)
{
    try {
        body();
        return {};
    } catch (const StoreError &error) {
        return error.message();
    }
}

/// A quote in which every part follows from one number, so that a mixture of two of them shows.
inline Quote numberedQuote(int number, int funds)
{
    Quote quote;
    quote.productID = 1;
    quote.description = QStringLiteral("Number %1").arg(number);
    quote.byAmount = number % 2 == 1;
    quote.details = {{QStringLiteral("number"), QString::number(number)},
                     {QStringLiteral("term"), QString::number(number % 40)}};
    for (int fund = 1; fund <= funds; ++fund) {
        quote.funds.append({fund, QStringLiteral("Fund %1 of %2").arg(fund).arg(number),
                            Currency::fromRaw(number * 100LL + fund), Currency::fromRaw(number)});
        quote.amount += quote.funds.constLast().amount;
    }
    return quote;
}

/// The number of such a quote; -1 when it is not whole.
inline int numberOf(const Quote &quote)
{
    const int number = quote.details.value(QStringLiteral("number")).toInt();
    const Quote whole = numberedQuote(number, static_cast<int>(quote.funds.size()));
    return !quote.funds.isEmpty() && quote.description == whole.description &&
                   quote.details == whole.details && quote.funds == whole.funds &&
                   quote.amount == whole.amount && quote.byAmount == whole.byAmount
               ? number
               : -1;
}

inline StoreLocation fileLocation(const QTemporaryDir &folder, const char *name)
{
    StoreLocation location;
    location.file = folder.filePath(QString::fromLatin1(name));
    return location;
}

} // namespace StoreTesting
