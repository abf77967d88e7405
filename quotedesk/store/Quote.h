#pragma once

#include "data/Currency.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

namespace QuoteDesk
{

/// A person that quotes are made for. The fields are those of TBaseClient.
struct Client {
    qint64 clientID = 0; ///< 0 until the client is saved.
    QString surname;
    QString firstNames;
    QString idNumber;
    QDate dateOfBirth; ///< Invalid when not known.
    QString eMail;
    QString telephone;
    /// The number that a new client is to be saved under, when it was taken beforehand with
    /// QuoteStore::newClientID(): saved again, because it is not known whether the first time has reached the
    /// database, it is still one client.
    qint64 takenID = 0;
    friend bool operator==(const Client &, const Client &) = default;
};

/// One fund of a quote. The name is kept with the quote, so that the quote stays readable when the catalogue
/// no longer has the fund.
struct QuotedFund {
    int fundID = 0;
    QString name;
    Currency amount;  ///< rand
    Currency percent; ///< percent of the investment
    friend bool operator==(const QuotedFund &, const QuotedFund &) = default;
};

/// Which of the previous-investment questions the adviser has been asked for a quote.
struct AskedQuestions {
    bool worldOGS = false;
    bool ogs = false;
    bool bulwarkWorld = false;
    bool worldOGSInternational = false;
    friend bool operator==(const AskedQuestions &, const AskedQuestions &) = default;
};

/// A quote with all that its editor shows.
struct Quote {
    qint64 quoteID = 0; ///< 0 until the quote is saved.
    int revision = 0;   ///< The save that this copy was read from; counts up by one with each save.
    int productID = 0;
    qint64 clientID = 0; ///< 0 for no client chosen yet.
    QString description;
    Currency amount; ///< rand
    bool byAmount = false;
    QMap<QString, QString> details; ///< The details page: element name to its value as text.
    AskedQuestions asked;
    QList<QuotedFund> funds; ///< In the order of the allocation grid.
    QDateTime changed;       ///< Of the last save, UTC; set by the store.
    QString changedBy;       ///< Who made the last save; set by the store.
    /// Tells a save that was begun apart while it is not known whether it has reached the database: set by
    /// whoever begins one that may be cut short, else by the store when the server is lost over it. Whoever
    /// makes the next save of the same quote hands it back with it, so that nothing is saved twice. Blank
    /// once saved.
    QString saveKey;

    /// Whether the whole amount is spread over the funds, as the quote is shown (see ShownSplit); any other
    /// quote is a draft.
    bool isAllocated() const;
    friend bool operator==(const Quote &, const Quote &) = default;
};

} // namespace QuoteDesk
