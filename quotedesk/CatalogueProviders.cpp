#include "CatalogueProviders.h"

#include "CatalogueDatabase.h"

#include "data/SqlDataSets.h"

namespace QuoteDesk
{
namespace
{

// A number is in a blank-separated list when it is found there with a blank on each side.

constexpr auto FundGroupTypeSql =
    "SELECT GroupTypeID, GroupTypeDesc, GroupTypeDesc_AFR FROM group_types WHERE GroupTypeID IN"
    " (SELECT GroupTypeID FROM fund_groups"
    " WHERE instr(' ' || ProductGroups || ' ', ' ' || :pProductGroupID || ' ') > 0)"
    " ORDER BY rowid";

constexpr auto FundGroupSql =
    "SELECT FundGroupID, GroupTypeID, FundGroupName, FundGroupName_AFR FROM fund_groups"
    " WHERE instr(' ' || ProductGroups || ' ', ' ' || :pProductGroupID || ' ') > 0"
    " ORDER BY rowid";

constexpr auto FundPerProductSql =
    "SELECT FundGroupID, GroupTypeID FROM fund_groups"
    " WHERE instr(' ' || OfferedBy || ' ', ' ' || :pProductID || ' ') > 0"
    " AND instr(' ' || ProductGroups || ' ', ' ' || :pProductGroupID || ' ') > 0"
    " ORDER BY rowid";

constexpr auto FundMessageSql = "SELECT FundID, FundGroupID, Question FROM fund_messages WHERE FundGroupID = "
                                ":pFundGroupID ORDER BY rowid";

constexpr auto FundPacketSql =
    "SELECT F.FundID, F.FundGroupID, G.GroupTypeID, G.FundGroupName, G.FundGroupName_AFR, F.FundName, "
    "F.FundName_AFR,"
    " F.MainframeID AS \"F.MainframeID\", F.MinimumInitialAmount, F.MinimumSchedAmount, F.BuySellRate, "
    "F.ManRate,"
    " F.UnderlyingManRate, F.GuaranteeRate, F.TrustRate, F.FundTerm, F.InternationalFund, F.AllowAsGuarantee,"
    " F.Benchmark, F.BenchmarkPerf, F.MinPerfFee, F.MaxPerfFee, F.FundSheetURL, P.ProductID, P.ProductGroupID"
    " FROM products P"
    " JOIN fund_groups G ON instr(' ' || G.OfferedBy || ' ', ' ' || P.ProductID || ' ') > 0"
    " AND instr(' ' || G.ProductGroups || ' ', ' ' || P.ProductGroupID || ' ') > 0"
    " JOIN funds F ON F.FundGroupID = G.FundGroupID"
    " WHERE P.ProductID = :pProductID ORDER BY F.rowid";

} // namespace

CatalogueProviders::CatalogueProviders(const CatalogueDatabase &catalogue) : m_catalogue(catalogue)
{
    const struct {
        const char *name;
        const char *sql;
    } providers[] = {{"dspFundGroupType", FundGroupTypeSql},
                     {"dspFundGroup", FundGroupSql},
                     {"dspFundPerProduct", FundPerProductSql},
                     {"dspFundMessage", FundMessageSql}};
    for (const auto &provider : providers) {
        const char *sql = provider.sql;
        m_connection.RegisterProvider(QString::fromLatin1(provider.name),
                                      [this, sql](const TParams &params) { return rows(sql, params); });
    }
}

TDataPacket CatalogueProviders::rows(const char *sql, const TParams &params) const
{
    TQuery query;
    query.SetDatabaseName(m_catalogue.connectionName());
    query.SetSQL(QString::fromLatin1(sql));
    for (int i = 0; i < query.Params().Count(); ++i) {
        TParam &param = query.Params()[i];
        // The callers write identifiers as integers or as their decimal text; the catalogue's are integers.
        param.SetAsInteger(params.ParamByName(param.Name).AsInteger());
    }
    query.Open();
    return TDataPacket(query.Table());
}

QVariant CatalogueProviders::fundPacket(int productID) const
{
    TParams params;
    params.Add(QStringLiteral("pProductID"), TParamDataType::Integer).SetAsInteger(productID);
    return rows(FundPacketSql, params).ToVariant();
}

} // namespace QuoteDesk
