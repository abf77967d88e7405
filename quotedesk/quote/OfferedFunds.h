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

/// The funds that a product offers, and what the funds of a quote are called beside them. Only the funds that
/// a quote has are read, until somebody looks for another one: what the opening of a quote costs is to follow
/// the quote, however large the catalogue is.
class OfferedFunds
{
    Q_DECLARE_TR_FUNCTIONS(OfferedFunds)
public:
    /// @p session must outlive the object. Nothing is read yet.
    void setUp(const QuoteSession &session, int productID);

    /// Reads what is not known yet of @p funds; false when all of them were read before.
    bool want(const QList<QuotedFund> &funds);
    /// The same for every fund of the product.
    bool wantAll();
    /// Reads the same funds once more: the catalogue is another one.
    void readAgain() { read(m_hasAll, m_wanted); }

    /// The funds that were read, for the allocation frame; invalid while none were.
    const QVariant &packet() const { return m_packet; }
    const FundNames &names() const { return m_names; }
    FundNames &names() { return m_names; }

    /// Whether the catalogue has the fund under another name than the quote.
    bool isRenamed(const QuotedFund &fund) const;
    /// Gives the funds the catalogue's names of the language in use, but for those that it calls otherwise:
    /// they keep the name under which they were quoted.
    void takeNames(QList<QuotedFund> &funds) const;
    /// What people read for each of the funds: the name that is kept with the quote, marked when the
    /// catalogue calls the fund otherwise, and told apart when two have the same.
    QStringList shownNames(const QList<QuotedFund> &funds) const;

private:
    void read(bool all, const QSet<int> &wanted);

    const QuoteSession *m_session = nullptr;
    int m_productID = 0;
    QVariant m_packet;
    FundNames m_names;
    QSet<int> m_wanted;    ///< The funds that were read.
    bool m_hasAll = false; ///< They are all that the product offers.
};

} // namespace QuoteDesk
