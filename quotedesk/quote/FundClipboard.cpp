#include "quote/FundClipboard.h"

#include "data/Format.h"
#include "funds/AllocationMath.h"

#include <QStringList>

namespace QuoteDesk
{

QString FundClipboard::textOf(const QList<QuotedFund> &funds)
{
    QStringList lines{QStringList{tr("Fund ID"), tr("Fund"), tr("Percent"), tr("Amount")}.join(u'\t')};
    for (const QuotedFund &fund : funds) {
        lines.append(QStringList{QString::number(fund.fundID), fund.name, fund.percent.toString(),
                                 FormatFloat(FormatMask::TwoDecimals, fund.amount)}
                         .join(u'\t'));
    }
    return lines.join(u'\n') + u'\n';
}

Split FundClipboard::withLines(Split split, const FundLines &lines, const FundNames &names)
{
    QHash<int, qsizetype> places;
    for (qsizetype i = split.funds.size() - 1; i >= 0; --i)
        places.insert(split.funds.at(i).fundID, i);
    for (const FundLines::Entry &entry : lines.entries()) {
        if (!places.contains(entry.fundID)) {
            places.insert(entry.fundID, split.funds.size());
            split.funds.append({entry.fundID, names.fund(entry.fundID).name, {}, {}});
        }
        QuotedFund &fund = split.funds[places.value(entry.fundID)];
        const bool isAmount = entry.meaning == FundLines::Meaning::Amount;
        (isAmount ? fund.amount : fund.percent) = entry.value;
        follow(fund, isAmount, split.investment);
        if (split.byAmount && !isAmount) {
            // By amount the amounts count, in whole cents.
            fund.amount = Zel::Allocation::Shown(fund.amount);
            follow(fund, true, split.investment);
        }
    }
    return split;
}

QString FundClipboard::sentenceOf(const FundLines &lines)
{
    const auto taken = static_cast<int>(lines.entries().size());
    return taken == 0 && lines.refused().isEmpty() ? tr("The clipboard has no lines of funds to paste")
                                                   : tr("%n fund(s) pasted", nullptr, taken);
}

} // namespace QuoteDesk
