#include "desk/AllocationResult.h"

#include "data/Format.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

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
        lines.append({u"%1 %2"_s.arg(fund.fundID).arg(fund.name), plain(fund.percent), shown(fund.amount),
                      shown(remaining)});
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
            table += u"  "_s + line.at(column).rightJustified(widths[column]);
        table += u'\n';
    }
    const QString investment =
        split.byAmount ? Text::tr("Investment %1 by amount") : Text::tr("Investment %1 by percent");
    return table + u"%1. %2\n"_s.arg(
                       investment.arg(shown(split.investment)),
                       Text::tr("Remaining %1 (%2%)").arg(shown(split.restAmount), plain(split.restPercent)));
}

QByteArray AllocationResult::toJson() const
{
    QJsonArray rows;
    for (const ShownSplit::Fund &fund : split.funds) {
        rows.append(QJsonObject{{u"id"_s, fund.fundID},
                                {u"name"_s, fund.name},
                                {u"percent"_s, plain(fund.percent)},
                                {u"amount"_s, plain(fund.amount)}});
    }
    const QJsonObject remaining{{u"amount"_s, plain(split.restAmount)},
                                {u"percent"_s, plain(split.restPercent)}};
    const QJsonObject result{{u"investment"_s, plain(split.investment)},
                             {u"mode"_s, split.byAmount ? u"amount"_s : u"percent"_s},
                             {u"remaining"_s, remaining},
                             {u"funds"_s, rows}};
    return QJsonDocument(result).toJson(QJsonDocument::Compact);
}

} // namespace QuoteDesk
