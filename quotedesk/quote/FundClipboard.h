#pragma once

#include "quote/FundLines.h"
#include "quote/Split.h"

#include <QCoreApplication>

namespace QuoteDesk
{

/// Exchanges a quote's funds with a spreadsheet through the clipboard.
struct FundClipboard {
    Q_DECLARE_TR_FUNCTIONS(FundClipboard)
public:
    /// The funds as lines for a spreadsheet, with a heading.
    static QString textOf(const QList<QuotedFund> &funds);
    /// @p split with the numbers of @p lines. New funds are added at the end, with their names in @p names.
    static Split withLines(Split split, const FundLines &lines, const FundNames &names);
    /// The number of pasted lines, in a sentence.
    static QString sentenceOf(const FundLines &lines);
};

} // namespace QuoteDesk
