#pragma once

#include "quote/FundNames.h"
#include "store/Quote.h"

#include <QCoreApplication>
#include <QSet>
#include <QStringList>
#include <QVariant>

namespace QuoteDesk
{

class QuoteSession;

/// The funds that a product offers, and the displayed names of a quote's funds. Only the quote's funds are
/// read until the adviser looks for another one, so that the time to open a quote depends on the quote and
/// not on the catalogue.
class OfferedFunds
{
    Q_DECLARE_TR_FUNCTIONS(OfferedFunds)
public:
    /// @p session must outlive this object. Reads nothing yet.
    void setUp(const QuoteSession &session, int productID);

    /// Reads those of @p funds that are not known yet; returns false when all are known.
    bool want(const QList<QuotedFund> &funds);
    /// The same for all of the product's funds.
    bool wantAll();
    /// Reads the same funds again after the catalogue has changed.
    void readAgain() { read(m_hasAll, m_wanted); }

    /// The known funds for the allocation frame; invalid before the first read.
    const QVariant &packet() const { return m_packet; }
    const FundNames &names() const { return m_names; }
    FundNames &names() { return m_names; }

    /// Whether the catalogue has another name for the fund than the quote.
    bool isRenamed(const QuotedFund &fund) const;
    /// Gives the funds the catalogue's names in the current language. Funds that have another name in the
    /// catalogue keep the one with which they were quoted.
    void takeNames(QList<QuotedFund> &funds) const;
    /// The displayed names of the funds: the names stored with the quote, marked when the catalogue has
    /// another name, and distinguished when two are equal.
    QStringList shownNames(const QList<QuotedFund> &funds) const;

private:
    void read(bool all, const QSet<int> &wanted);

    const QuoteSession *m_session = nullptr;
    int m_productID = 0;
    QVariant m_packet;
    FundNames m_names;
    QSet<int> m_wanted;    ///< the funds that were read
    bool m_hasAll = false; ///< whether they are all of the product's funds
};

} // namespace QuoteDesk
