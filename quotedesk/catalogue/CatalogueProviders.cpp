#include "catalogue/CatalogueProviders.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/TwinCaptions.h"

#include "data/Exceptions.h"
#include "database/Database.h"
#include "database/StoreError.h"

#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

// The tree requires all children of a parent in consecutive rows. So groups are sorted by type and funds by
// group.

constexpr auto FundGroupTypeSql =
    "SELECT GroupTypeID, GroupTypeDesc, GroupTypeDesc_AFR FROM group_types WHERE GroupTypeID IN"
    " (SELECT G.GroupTypeID FROM fund_groups G"
    " JOIN fund_group_product_groups A ON A.FundGroupID = G.FundGroupID WHERE A.ProductGroupID = ?)"
    " ORDER BY RowNo";

constexpr auto FundGroupSql =
    "SELECT G.FundGroupID, G.GroupTypeID, G.FundGroupName, G.FundGroupName_AFR FROM fund_groups G"
    " JOIN group_types T ON T.GroupTypeID = G.GroupTypeID"
    " JOIN fund_group_product_groups A ON A.FundGroupID = G.FundGroupID"
    " WHERE A.ProductGroupID = ?"
    " ORDER BY T.RowNo, G.RowNo";

constexpr auto FundPerProductSql = "SELECT G.FundGroupID, G.GroupTypeID FROM fund_groups G"
                                   " JOIN fund_group_products O ON O.FundGroupID = G.FundGroupID"
                                   " JOIN fund_group_product_groups A ON A.FundGroupID = G.FundGroupID"
                                   " WHERE O.ProductID = ? AND A.ProductGroupID = ? ORDER BY G.RowNo";

constexpr auto FundMessageSql =
    "SELECT FundID, FundGroupID, Question FROM fund_messages WHERE FundGroupID = ? ORDER BY RowNo";

constexpr auto FundColumnsSql =
    "SELECT F.FundID, F.FundGroupID, G.GroupTypeID, G.FundGroupName, G.FundGroupName_AFR, F.FundName,"
    " F.FundName_AFR, F.FundName AS \"FundName_ENG\", F.MainframeID AS \"F.MainframeID\","
    " F.MinimumInitialAmount, F.MinimumSchedAmount,"
    " F.BuySellRate, F.ManRate, F.UnderlyingManRate, F.GuaranteeRate, F.TrustRate, F.FundTerm,"
    " F.InternationalFund, F.AllowAsGuarantee, F.Benchmark, F.BenchmarkPerf, F.MinPerfFee, F.MaxPerfFee,"
    " F.FundSheetURL, P.ProductID, P.ProductGroupID FROM products P";
constexpr auto IsOfferedSql = "O.ProductID = P.ProductID AND O.FundGroupID = G.FundGroupID"
                              " AND A.ProductGroupID = P.ProductGroupID AND A.FundGroupID = G.FundGroupID";
constexpr auto FundOrderSql = " ORDER BY T.RowNo, G.RowNo, F.RowNo";

/// All funds that a product offers; the parameter is the product's id.
QString allFundsSql()
{
    return u"%1, fund_groups G, fund_group_products O, fund_group_product_groups A, group_types T, funds F"
           " WHERE P.ProductID = ? AND T.GroupTypeID = G.GroupTypeID AND F.FundGroupID = G.FundGroupID"
           " AND %2%3"_s.arg(QLatin1StringView(FundColumnsSql), QLatin1StringView(IsOfferedSql),
                             QLatin1StringView(FundOrderSql));
}

/// Only the given funds. CROSS JOIN makes SQLite join in this order, from the funds to their groups, so that
/// the time does not depend on the number of groups in the catalogue.
QString someFundsSql(const QList<int> &fundIDs)
{
    QStringList numbers;
    numbers.reserve(fundIDs.size());
    for (const int fundID : fundIDs)
        numbers.append(QString::number(fundID));
    if (numbers.isEmpty())
        numbers.append(u"-1"_s);
    return u"%1 CROSS JOIN funds F CROSS JOIN fund_groups G CROSS JOIN group_types T"
           " CROSS JOIN fund_group_products O CROSS JOIN fund_group_product_groups A"
           " WHERE P.ProductID = ? AND F.FundID IN (%2)"
           " AND G.FundGroupID = F.FundGroupID AND T.GroupTypeID = G.GroupTypeID AND %3%4"_s.arg(
               QLatin1StringView(FundColumnsSql), numbers.join(u','), QLatin1StringView(IsOfferedSql),
               QLatin1StringView(FundOrderSql));
}

/// SQLite limits statements to a million bytes; an id has up to ten digits and a comma.
constexpr qsizetype MostFundsByNumber = 80'000;

/// The same rows, with names that distinguish funds of the same name.
TDataPacket withCaptions(const TDataPacket &packet)
{
    const TTablePtr &table = packet.Table();
    const int id = table->IndexOf(u"FundID"_s);
    const int name = table->IndexOf(u"FundName"_s);
    const int group = table->IndexOf(u"FundGroupName"_s);
    const TwinCaptions captions = twinCaptions([&](const FundVisitor &visitor) {
        for (int row = 0; row < table->RowCount(); ++row)
            visitor(table->Value(row, id).toInt(), table->Value(row, name).toString(),
                    table->Value(row, group).toString());
    });
    if (captions.isEmpty())
        return packet;
    TTableBuilder builder(table->Defs());
    builder.Reserve(table->RowCount());
    for (int row = 0; row < table->RowCount(); ++row) {
        for (int column = 0; column < table->ColumnCount(); ++column) {
            const QVariant value = table->Value(row, column);
            if (column != name) {
                builder.Append(value);
                continue;
            }
            const auto caption =
                captions.constFind({table->Value(row, id).toInt(), value.toString().trimmed()});
            builder.Append(caption == captions.constEnd() ? value : QVariant(*caption));
        }
        builder.EndRow();
    }
    return TDataPacket(builder.Finish());
}

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
    registerProvider("dspFundGroupType", FundGroupTypeSql, {u"pProductGroupID"_s});
    registerProvider("dspFundGroup", FundGroupSql, {u"pProductGroupID"_s});
    registerProvider("dspFundPerProduct", FundPerProductSql, {u"pProductID"_s, u"pProductGroupID"_s});
    registerProvider("dspFundMessage", FundMessageSql, {u"pFundGroupID"_s});
}

void CatalogueProviders::registerProvider(const char *name, const char *sql, const QStringList &parameters)
{
    m_connection.RegisterProvider(QString::fromLatin1(name), [this, sql, parameters](const TParams &params) {
        // Callers pass ids as integers or as decimal texts; the catalogue's ids are integers.
        QVariantList values;
        for (const QString &parameter : parameters)
            values.append(params.ParamByName(parameter).AsInteger());
        return rows(QString::fromLatin1(sql), values);
    });
}

QVariant CatalogueProviders::fundPacket(int productID) const
{
    return withCaptions(rows(allFundsSql(), {productID})).ToVariant();
}

QVariant CatalogueProviders::fundPacket(int productID, const QList<int> &fundIDs) const
{
    if (fundIDs.size() > MostFundsByNumber)
        return fundPacket(productID);
    return rows(someFundsSql(fundIDs), {productID}).ToVariant();
}

TDataPacket CatalogueProviders::rows(const QString &sql, const QVariantList &values) const
{
    try {
        QSqlQuery query = m_catalogue.database().run(sql, values);
        const QSqlRecord columns = query.record();
        QList<TFieldDef> defs;
        for (int i = 0; i < columns.count(); ++i)
            defs.append({columns.fieldName(i), fieldType(columns.field(i))});
        // The frames have one name per fund and group: in Afrikaans the Afrikaans one.
        QList<int> translated(columns.count(), -1);
        for (int i = 0; m_catalogue.isAfrikaans() && i < columns.count(); ++i)
            translated[i] = columns.indexOf(columns.fieldName(i) + u"_AFR"_s);
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
        // The caller is a dataset, whose owner expects errors of the data layer.
        throw EDatabaseError(error.message());
    }
}

} // namespace QuoteDesk
