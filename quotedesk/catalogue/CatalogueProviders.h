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
    /// that the selector and the allocation frame read. A product that does not exist has no funds.
    QVariant fundPacket(int productID) const;

private:
    /// The values of the parameters stand in the statement's "?" in that order.
    void registerProvider(const char *name, const char *sql, const QStringList &parameters);
    TDataPacket rows(const char *sql, const QVariantList &values) const;

    const CatalogueDatabase &m_catalogue;
    TLocalConnection m_connection;
};

} // namespace QuoteDesk
