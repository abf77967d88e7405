#include "quote/QuoteAllocation.h"

#include "quote/OfferedFunds.h"

#include "data/NumberEntry.h"
#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QEvent>
#include <QHash>
#include <QQueue>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The limits of a cell in the grid.
NumberRules cellRules(int column)
{
    const bool isPercent = column == TfraFundAllocation::PercentColumn;
    NumberRules rules;
    rules.unit = isPercent ? NumberUnit::Percent : NumberUnit::Rand;
    rules.low = Currency();
    rules.high = Currency::fromRaw((isPercent ? 100'00 : 999'999'999'99) * (Currency::Scale / 100));
    rules.decimals = 2;
    return rules;
}

} // namespace

QuoteAllocation::QuoteAllocation(QWidget *parent) : TfraFundAllocation(parent)
{
    // An ambiguous number keeps the cell open until the user decides; it is not corrected.
    FundGrid->SetRefusesDoubtful(true);
    FundGrid->OnEndCellEdit = [this, inherited = FundGrid->OnEndCellEdit](int column, int row, bool &cancel) {
        inherited(column, row, cancel);
        if (!cancel)
            Q_EMIT cellEntered(row);
    };
    connectGuarded(FundGrid, &TtsGrid::EntryCorrected, this,
                   [this](int column, int row, const QString &typed) {
                       QString reason = NumberEntry(typed, cellRules(column)).reason();
                       if (reason.isEmpty())
                           reason = tr("\"%1\" does not fit the cell").arg(typed);
                       tellOfCell(tr("%1: %2. Corrected to %3."), column, row, reason);
                   });
    connectGuarded(FundGrid, &TtsGrid::EntryRefused, this,
                   [this](int column, int row, const QString &, const QString &reason, bool stays) {
                       tellOfCell(stays ? tr("%1: %2. Escape brings back %3.")
                                        : tr("%1: %2. It stays at %3."),
                                  column, row, reason);
                   });
    clearCaptions();
}

QuoteAllocation::~QuoteAllocation() = default;

void QuoteAllocation::InitializeFrame()
{
    TfraFundAllocation::InitializeFrame();
    m_initialized = true;
    Q_EMIT initialized();
}

void QuoteAllocation::changeEvent(QEvent *event)
{
    TfraFundAllocation::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !m_initialized)
        clearCaptions();
}

/// The amounts in the design are samples and must not be shown before the frame has initialised itself.
void QuoteAllocation::clearCaptions()
{
    pnlRemainAmount->setCaption(QString());
    pnlAmount->setCaption(QString());
}

void QuoteAllocation::tellOfCell(const QString &sentence, int column, int row, const QString &reason)
{
    Q_EMIT entryTold(
        sentence.arg(FundGrid->CellText(FundColumn, row), reason, FundGrid->CellText(column, row)));
}

QList<QuotedFund> QuoteAllocation::inRowOrder(const Split &split, const QList<QuotedFund> &kept) const
{
    QHash<int, QQueue<const QuotedFund *>> wanted;
    for (const QuotedFund &fund : split.funds)
        wanted[fund.fundID].enqueue(&fund);
    QList<QuotedFund> funds;
    funds.reserve(split.funds.size());
    const auto take = [&](const QuotedFund &other) {
        QQueue<const QuotedFund *> &queue = wanted[other.fundID];
        funds.append(queue.isEmpty() ? other : *queue.dequeue());
    };
    for (const TAllocationRow &row : Allocation())
        take({row.FundID, {}, row.Amount, row.Percent});
    for (const QuotedFund &fund : kept)
        take(fund);
    return funds;
}

void QuoteAllocation::putNumbers(const QList<QuotedFund> &funds)
{
    int row = 0;
    for (TFundRec &record : Funds()) {
        const QuotedFund &fund = funds.at(row++);
        if (record.Amount == fund.amount && record.Percent == fund.percent)
            continue;
        record.Amount = fund.amount;
        record.Percent = fund.percent;
        FundGrid->SetCell(PercentColumn, row, fund.percent.toVariant());
        FundGrid->SetCell(AmountColumn, row, fund.amount.toVariant());
    }
    RecalcRemainingAmount(Get_AllocByAmount() ? AmountColumn : PercentColumn);
    UpdateRemainingCaption();
}

QList<QuotedFund> QuoteAllocation::readFunds(const QList<QuotedFund> &before,
                                             const OfferedFunds &offered) const
{
    // A change of numbers leaves every fund in its position.
    QHash<int, QQueue<QString>> moved;
    auto nameOf = [&, place = qsizetype{0}](int fundID) mutable -> QString {
        if (place < before.size() && before.at(place).fundID == fundID)
            return before.at(place++).name;
        if (moved.isEmpty()) {
            for (qsizetype i = place; i < before.size(); ++i)
                moved[before.at(i).fundID].enqueue(before.at(i).name);
            place = before.size();
        }
        const auto names = moved.find(fundID);
        return names == moved.end() || names->isEmpty() ? offered.names().fund(fundID).name
                                                        : names->dequeue();
    };
    QList<QuotedFund> funds;
    funds.reserve(Get_FundCount());
    for (const TAllocationRow &row : Allocation())
        funds.append({row.FundID, nameOf(row.FundID), row.Amount, row.Percent});
    return funds;
}

int QuoteAllocation::showNames(const QList<QuotedFund> &funds, const QStringList &names,
                               const OfferedFunds &offered)
{
    const QIcon warning = GlyphIcon(u"warning"_s);
    const QIcon picture = imgFund->Icon(0);
    int renamed = 0;
    for (int row = 1; row <= std::min(FundGrid->RowCount(), static_cast<int>(names.size())); ++row) {
        const QString &name = names.at(row - 1);
        const bool marked = offered.isRenamed(funds.at(row - 1));
        renamed += marked ? 1 : 0;
        if (FundGrid->CellText(FundColumn, row) == name)
            continue;
        FundGrid->SetCell(FundColumn, row, name);
        FundGrid->SetCell(PictureColumn, row, marked ? warning : picture);
    }
    return renamed;
}

} // namespace QuoteDesk
