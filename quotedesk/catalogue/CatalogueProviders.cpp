#include "catalogue/CatalogueProviders.h"

#include "catalogue/CatalogueDatabase.h"

#include "data/Exceptions.h"

#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

namespace QuoteDesk
{
namespace
{

// A number is in a blank-separated list when it is found there with a blank on each side.
// The tree takes the children of one parent as one run of rows, so groups come type by type and funds group
// by group, whatever the order of the source.

constexpr auto FundGroupTypeSql =
    "SELECT GroupTypeID, GroupTypeDesc, GroupTypeDesc_AFR FROM group_types WHERE GroupTypeID IN"
    " (SELECT GroupTypeID FROM fund_groups"
    " WHERE instr(' ' || ProductGroups || ' ', ' ' || :pProductGroupID || ' ') > 0)"
    " ORDER BY rowid";

constexpr auto FundGroupSql =
    "SELECT G.FundGroupID, G.GroupTypeID, G.FundGroupName, G.FundGroupName_AFR FROM fund_groups G"
    " JOIN group_types T ON T.GroupTypeID = G.GroupTypeID"
    " WHERE instr(' ' || G.ProductGroups || ' ', ' ' || :pProductGroupID || ' ') > 0"
    " ORDER BY T.rowid, G.rowid";

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
    " JOIN group_types T ON T.GroupTypeID = G.GroupTypeID"
    " JOIN funds F ON F.FundGroupID = G.FundGroupID"
    " WHERE P.ProductID = :pProductID ORDER BY T.rowid, G.rowid, F.rowid";

TFieldType fieldType(const QSqlField &field)
{
    switch (field.metaType().id()) {
    case QMetaType::Int:
        return TFieldType::Integer;
    case QMetaType::Double:
        return TFieldType::Float;
    case QMetaType::Bool:
        return TFieldType::Boolean;
    default:
        return TFieldType::String;
    }
}

} // namespace

CatalogueProviders::CatalogueProviders(const CatalogueDatabase &catalogue) : m_catalogue(catalogue)
{
    registerProvider("dspFundGroupType", FundGroupTypeSql, {QStringLiteral("pProductGroupID")});
    registerProvider("dspFundGroup", FundGroupSql, {QStringLiteral("pProductGroupID")});
    registerProvider("dspFundPerProduct", FundPerProductSql,
                     {QStringLiteral("pProductID"), QStringLiteral("pProductGroupID")});
    registerProvider("dspFundMessage", FundMessageSql, {QStringLiteral("pFundGroupID")});
}

void CatalogueProviders::registerProvider(const char *name, const char *sql, const QStringList &parameters)
{
    m_connection.RegisterProvider(QString::fromLatin1(name), [this, sql, parameters](const TParams &params) {
        // The callers write identifiers as integers or as their decimal text; the catalogue's are integers.
        Values values;
        for (const QString &parameter : parameters)
            values.insert(parameter, params.ParamByName(parameter).AsInteger());
        return rows(sql, values);
    });
}

QVariant CatalogueProviders::fundPacket(int productID) const
{
    return rows(FundPacketSql, {{QStringLiteral("pProductID"), productID}}).ToVariant();
}

TDataPacket CatalogueProviders::rows(const char *sql, const Values &values) const
{
    QSqlQuery query(QSqlDatabase::database(m_catalogue.connectionName()));
    query.setForwardOnly(true);
    if (!query.prepare(QString::fromLatin1(sql)))
        throw EDatabaseError(query.lastError().text());
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        query.bindValue(u':' + value.key(), value.value());
    if (!query.exec())
        throw EDatabaseError(query.lastError().text());

    const QSqlRecord columns = query.record();
    QList<TFieldDef> defs;
    for (int i = 0; i < columns.count(); ++i)
        defs.append({columns.fieldName(i), fieldType(columns.field(i))});
    TTableBuilder builder(defs);
    while (query.next()) {
        for (int i = 0; i < columns.count(); ++i)
            builder.Append(query.value(i));
        builder.EndRow();
    }
    return TDataPacket(builder.Finish());
}

} // namespace QuoteDesk
