#pragma once

#include "data/LocalConnection.h"

#include <QStringList>
#include <QVariant>

namespace QuoteDesk
{

class CatalogueDatabase;

/// The providers of the fund selector and the allocation frame behind one connection, answering from a
/// catalogue database: "dspFundGroupType" and "dspFundGroup" (pProductGroupID), "dspFundPerProduct"
/// (pProductID, pProductGroupID) and "dspFundMessage" (pFundGroupID).
class CatalogueProviders
{
public:
    /// @p catalogue must outlive the providers and whatever holds their connection.
    explicit CatalogueProviders(const CatalogueDatabase &catalogue);

    TLocalConnection *connection() noexcept { return &m_connection; }

    /// The funds of the groups that a product offers, group by group, as a data packet with the fields
    /// that the selector and the allocation frame read, and "FundName_ENG", the name that is no translation.
    /// Funds of one name have in "FundName" what tells them apart: the selector knows a fund that is chosen
    /// by its caption. A product that does not exist has no funds.
    QVariant fundPacket(int productID) const;
    /// The same for these funds of the product only, without looking at the rest of the catalogue; a name
    /// that two funds have stands alone.
    QVariant fundPacket(int productID, const QList<int> &fundIDs) const;

private:
    /// The values of the parameters stand in the statement's "?" in that order.
    void registerProvider(const char *name, const char *sql, const QStringList &parameters);
    TDataPacket rows(const QString &sql, const QVariantList &values) const;

    const CatalogueDatabase &m_catalogue;
    TLocalConnection m_connection;
};

} // namespace QuoteDesk
