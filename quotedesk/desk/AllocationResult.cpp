#include "desk/AllocationResult.h"

#include "data/Format.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(AllocationResult)
};

QString shown(Currency value)
{
    return FormatFloat(FormatMask::Thousands, value);
}

QString plain(Currency value)
{
    return FormatFloat(FormatMask::TwoDecimals, value);
}

} // namespace

QString AllocationResult::toTable() const
{
    QList<QStringList> lines{
        {Text::tr("Fund"), Text::tr("Percent"), Text::tr("Amount"), Text::tr("Remaining")}};
    Currency remaining = split.investment;
    for (const ShownSplit::Fund &fund : split.funds) {
        remaining -= fund.amount;
        lines.append({QStringLiteral("%1 %2").arg(fund.fundID).arg(fund.name), plain(fund.percent),
                      shown(fund.amount), shown(remaining)});
    }

    qsizetype widths[4] = {};
    for (const QStringList &line : lines) {
        for (int column = 0; column < 4; ++column)
            widths[column] = std::max(widths[column], line.at(column).size());
    }
    QString table;
    for (const QStringList &line : lines) {
        table += line.at(0).leftJustified(widths[0]);
        for (int column = 1; column < 4; ++column)
            table += QStringLiteral("  ") + line.at(column).rightJustified(widths[column]);
        table += u'\n';
    }
    const QString investment =
        split.byAmount ? Text::tr("Investment %1 by amount") : Text::tr("Investment %1 by percent");
    return table +
           QStringLiteral("%1. %2\n")
               .arg(investment.arg(shown(split.investment)),
                    Text::tr("Remaining %1 (%2%)").arg(shown(split.restAmount), plain(split.restPercent)));
}

QByteArray AllocationResult::toJson() const
{
    QJsonArray rows;
    for (const ShownSplit::Fund &fund : split.funds) {
        rows.append(QJsonObject{{QStringLiteral("id"), fund.fundID},
                                {QStringLiteral("name"), fund.name},
                                {QStringLiteral("percent"), plain(fund.percent)},
                                {QStringLiteral("amount"), plain(fund.amount)}});
    }
    const QJsonObject remaining{{QStringLiteral("amount"), plain(split.restAmount)},
                                {QStringLiteral("percent"), plain(split.restPercent)}};
    const QJsonObject result{
        {QStringLiteral("investment"), plain(split.investment)},
        {QStringLiteral("mode"), split.byAmount ? QStringLiteral("amount") : QStringLiteral("percent")},
        {QStringLiteral("remaining"), remaining},
        {QStringLiteral("funds"), rows}};
    return QJsonDocument(result).toJson(QJsonDocument::Compact);
}

} // namespace QuoteDesk
