#pragma once

#include "data/LocalConnection.h"

#include <QStringList>
#include <QVariant>

namespace QuoteDesk
{

class CatalogueDatabase;

/// The data providers of the fund selector and the allocation frame, on one connection and one catalogue:
/// "dspFundGroupType" and "dspFundGroup" (pProductGroupID), "dspFundPerProduct" (pProductID, pProductGroupID)
/// and "dspFundMessage" (pFundGroupID).
class CatalogueProviders
{
public:
    /// @p catalogue must outlive the providers and all users of their connection.
    explicit CatalogueProviders(const CatalogueDatabase &catalogue);

    TLocalConnection *connection() noexcept { return &m_connection; }

    /// A data packet with the funds of a product's groups, group by group: the fields that the selector and
    /// the allocation frame read, and "FundName_ENG", the untranslated name. "FundName" distinguishes funds
    /// with the same name, because the selector identifies funds by their captions. Empty for an unknown
    /// product.
    QVariant fundPacket(int productID) const;
    /// The same for the given funds of the product only, without reading the rest of the catalogue. Equal
    /// names are not distinguished here.
    QVariant fundPacket(int productID, const QList<int> &fundIDs) const;

private:
    /// The values of @p parameters replace the "?" of the statement in this order.
    void registerProvider(const char *name, const char *sql, const QStringList &parameters);
    TDataPacket rows(const QString &sql, const QVariantList &values) const;

    const CatalogueDatabase &m_catalogue;
    TLocalConnection m_connection;
};

} // namespace QuoteDesk
