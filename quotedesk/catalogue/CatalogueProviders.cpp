#include "catalogue/CatalogueProviders.h"

#include "catalogue/CatalogueDatabase.h"

#include "data/Exceptions.h"
#include "store/Database.h"
#include "store/StoreError.h"

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
    " (SELECT GroupTypeID FROM fund_groups WHERE ' ' || ProductGroups || ' ' LIKE '% ' || ? || ' %')"
    " ORDER BY RowNo";

constexpr auto FundGroupSql =
    "SELECT G.FundGroupID, G.GroupTypeID, G.FundGroupName, G.FundGroupName_AFR FROM fund_groups G"
    " JOIN group_types T ON T.GroupTypeID = G.GroupTypeID"
    " WHERE ' ' || G.ProductGroups || ' ' LIKE '% ' || ? || ' %'"
    " ORDER BY T.RowNo, G.RowNo";

constexpr auto FundPerProductSql = "SELECT FundGroupID, GroupTypeID FROM fund_groups"
                                   " WHERE ' ' || OfferedBy || ' ' LIKE '% ' || ? || ' %'"
                                   " AND ' ' || ProductGroups || ' ' LIKE '% ' || ? || ' %'"
                                   " ORDER BY RowNo";

constexpr auto FundMessageSql =
    "SELECT FundID, FundGroupID, Question FROM fund_messages WHERE FundGroupID = ? ORDER BY RowNo";

constexpr auto FundPacketSql =
    "SELECT F.FundID, F.FundGroupID, G.GroupTypeID, G.FundGroupName, G.FundGroupName_AFR, F.FundName,"
    " F.FundName_AFR, F.MainframeID AS \"F.MainframeID\", F.MinimumInitialAmount, F.MinimumSchedAmount,"
    " F.BuySellRate, F.ManRate, F.UnderlyingManRate, F.GuaranteeRate, F.TrustRate, F.FundTerm,"
    " F.InternationalFund, F.AllowAsGuarantee, F.Benchmark, F.BenchmarkPerf, F.MinPerfFee, F.MaxPerfFee,"
    " F.FundSheetURL, P.ProductID, P.ProductGroupID"
    " FROM products P"
    " JOIN fund_groups G ON ' ' || G.OfferedBy || ' ' LIKE '% ' || P.ProductID || ' %'"
    " AND ' ' || G.ProductGroups || ' ' LIKE '% ' || P.ProductGroupID || ' %'"
    " JOIN group_types T ON T.GroupTypeID = G.GroupTypeID"
    " JOIN funds F ON F.FundGroupID = G.FundGroupID"
    " WHERE P.ProductID = ? ORDER BY T.RowNo, G.RowNo, F.RowNo";

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
        QVariantList values;
        for (const QString &parameter : parameters)
            values.append(params.ParamByName(parameter).AsInteger());
        return rows(sql, values);
    });
}

QVariant CatalogueProviders::fundPacket(int productID) const
{
    return rows(FundPacketSql, {productID}).ToVariant();
}

TDataPacket CatalogueProviders::rows(const char *sql, const QVariantList &values) const
{
    try {
        QSqlQuery query = m_catalogue.database().run(QString::fromLatin1(sql), values);
        const QSqlRecord columns = query.record();
        QList<TFieldDef> defs;
        for (int i = 0; i < columns.count(); ++i)
            defs.append({columns.fieldName(i), fieldType(columns.field(i))});
        // The frames know one name of a fund and of a group; in Afrikaans that is the Afrikaans one.
        QList<int> translated(columns.count(), -1);
        for (int i = 0; m_catalogue.isAfrikaans() && i < columns.count(); ++i)
            translated[i] = columns.indexOf(columns.fieldName(i) + QStringLiteral("_AFR"));
        TTableBuilder builder(defs);
        while (m_catalogue.database().next(query)) {
            for (int i = 0; i < columns.count(); ++i) {
                const int own = translated.at(i);
                const bool isTranslated = own >= 0 && !query.value(own).toString().isEmpty();
                builder.Append(query.value(isTranslated ? own : i));
            }
            builder.EndRow();
        }
        return TDataPacket(builder.Finish());
    } catch (const StoreError &error) {
        // What asks here is a dataset, whose owner knows errors of the data layer.
        throw EDatabaseError(error.message());
    }
}

} // namespace QuoteDesk
