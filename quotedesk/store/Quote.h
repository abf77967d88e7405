#pragma once

#include "data/Currency.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

namespace QuoteDesk
{

/// A person that quotes are made for. The fields correspond to those of TBaseClient.
struct Client {
    qint64 clientID = 0; ///< 0 until the client is saved.
    QString surname;
    QString firstNames;
    QString idNumber;
    QDate dateOfBirth; ///< invalid when not known
    QString eMail;
    QString telephone;
    /// The id for a new client, when it was taken in advance with QuoteStore::newClientID(). Saving again,
    /// because it is not known whether the first attempt reached the database, then does not make a second
    /// client.
    qint64 takenID = 0;
    friend bool operator==(const Client &, const Client &) = default;
};

/// One fund of a quote. The quote stores the fund's name, so that it stays readable when the catalogue no
/// longer has the fund.
struct QuotedFund {
    int fundID = 0;
    QString name;
    Currency amount;  ///< rand
    Currency percent; ///< percent of the investment
    friend bool operator==(const QuotedFund &, const QuotedFund &) = default;
};

/// The previous-investment questions that the adviser has already been asked for a quote.
struct AskedQuestions {
    bool worldOGS = false;
    bool ogs = false;
    bool bulwarkWorld = false;
    bool worldOGSInternational = false;
    friend bool operator==(const AskedQuestions &, const AskedQuestions &) = default;
};

/// A quote with everything that its editor shows.
struct Quote {
    qint64 quoteID = 0; ///< 0 until the quote is saved.
    int revision = 0; ///< The number of the save that this copy was read from; each save increases it by one.
    int productID = 0;
    qint64 clientID = 0; ///< 0 while no client is chosen
    QString description;
    Currency amount; ///< rand
    bool byAmount = false;
    QMap<QString, QString> details; ///< The values of the details page as texts, by element name.
    AskedQuestions asked;
    QList<QuotedFund> funds; ///< In the order of the allocation grid.
    QDateTime changed;       ///< The time of the last save in UTC; set by the store.
    QString changedBy;       ///< The person of the last save; set by the store.
    /// Identifies a save while it is not known whether it has reached the database. The caller sets it before
    /// a save that may be cut short; otherwise the store sets it when the server is lost. The next save of
    /// the quote passes it back, so that nothing is saved twice. Blank after a confirmed save.
    QString saveKey;

    /// Whether the whole investment is allocated to funds, by the displayed numbers (see ShownSplit). All
    /// other quotes are drafts.
    bool isAllocated() const;
    friend bool operator==(const Quote &, const Quote &) = default;
};

} // namespace QuoteDesk
