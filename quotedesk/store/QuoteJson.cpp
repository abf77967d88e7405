#include "store/QuoteJson.h"

#include "database/StoreError.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(QuoteJson)
};

namespace Key
{
constexpr QLatin1StringView QuoteID("quoteID");
constexpr QLatin1StringView Revision("revision");
constexpr QLatin1StringView ProductID("productID");
constexpr QLatin1StringView ClientID("clientID");
constexpr QLatin1StringView Description("description");
constexpr QLatin1StringView Amount("amount");
constexpr QLatin1StringView ByAmount("byAmount");
constexpr QLatin1StringView Details("details");
constexpr QLatin1StringView Asked("asked");
constexpr QLatin1StringView WorldOGS("worldOGS");
constexpr QLatin1StringView OGS("ogs");
constexpr QLatin1StringView BulwarkWorld("bulwarkWorld");
constexpr QLatin1StringView WorldOGSInternational("worldOGSInternational");
constexpr QLatin1StringView Funds("funds");
constexpr QLatin1StringView FundID("fundID");
constexpr QLatin1StringView Name("name");
constexpr QLatin1StringView Percent("percent");
constexpr QLatin1StringView Changed("changed");
constexpr QLatin1StringView ChangedBy("changedBy");
constexpr QLatin1StringView SaveKey("saveKey");
} // namespace Key

} // namespace

QString quoteToJson(const Quote &quote)
{
    QJsonObject details;
    for (auto detail = quote.details.cbegin(); detail != quote.details.cend(); ++detail)
        details.insert(detail.key(), detail.value());
    QJsonArray funds;
    for (const QuotedFund &fund : quote.funds)
        funds.append(QJsonObject{{Key::FundID, fund.fundID},
                                 {Key::Name, fund.name},
                                 {Key::Amount, fund.amount.toString()},
                                 {Key::Percent, fund.percent.toString()}});
    const QJsonObject object{
        {Key::QuoteID, quote.quoteID},
        {Key::Revision, quote.revision},
        {Key::ProductID, quote.productID},
        {Key::ClientID, quote.clientID},
        {Key::Description, quote.description},
        {Key::Amount, quote.amount.toString()},
        {Key::ByAmount, quote.byAmount},
        {Key::Details, details},
        {Key::Asked, QJsonObject{{Key::WorldOGS, quote.asked.worldOGS},
                                 {Key::OGS, quote.asked.ogs},
                                 {Key::BulwarkWorld, quote.asked.bulwarkWorld},
                                 {Key::WorldOGSInternational, quote.asked.worldOGSInternational}}},
        {Key::Funds, funds},
        {Key::Changed, quote.changed.toString(Qt::ISODateWithMs)},
        {Key::ChangedBy, quote.changedBy},
        {Key::SaveKey, quote.saveKey},
    };
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

Quote quoteFromJson(const QString &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json.toUtf8());
    if (!document.isObject())
        throw StoreError(Text::tr(
            "The draft is damaged and cannot be restored. What was saved of its quote is as it was."));
    const QJsonObject object = document.object();
    const auto amountOf = [](const QJsonObject &from, QLatin1StringView key) {
        try {
            return Currency::fromText(from.value(key).toString());
        } catch (const Exception &error) {
            throw StoreError(
                Text::tr(
                    "The draft is damaged and cannot be restored. What was saved of its quote is as it was."),
                error.message());
        }
    };

    Quote quote;
    quote.quoteID = object.value(Key::QuoteID).toInteger();
    quote.revision = object.value(Key::Revision).toInt();
    quote.productID = object.value(Key::ProductID).toInt();
    quote.clientID = object.value(Key::ClientID).toInteger();
    quote.description = object.value(Key::Description).toString();
    quote.amount = amountOf(object, Key::Amount);
    quote.byAmount = object.value(Key::ByAmount).toBool();
    const QJsonObject details = object.value(Key::Details).toObject();
    for (auto detail = details.begin(); detail != details.end(); ++detail)
        quote.details.insert(detail.key(), detail.value().toString());
    const QJsonObject asked = object.value(Key::Asked).toObject();
    quote.asked = {asked.value(Key::WorldOGS).toBool(), asked.value(Key::OGS).toBool(),
                   asked.value(Key::BulwarkWorld).toBool(), asked.value(Key::WorldOGSInternational).toBool()};
    const QJsonArray funds = object.value(Key::Funds).toArray();
    for (const auto &value : funds) {
        const QJsonObject fund = value.toObject();
        quote.funds.append({fund.value(Key::FundID).toInt(), fund.value(Key::Name).toString(),
                            amountOf(fund, Key::Amount), amountOf(fund, Key::Percent)});
    }
    quote.changed = QDateTime::fromString(object.value(Key::Changed).toString(), Qt::ISODateWithMs);
    quote.changedBy = object.value(Key::ChangedBy).toString();
    quote.saveKey = object.value(Key::SaveKey).toString();
    return quote;
}

} // namespace QuoteDesk
