#pragma once

#include "quote/FundLines.h"
#include "quote/Split.h"

#include <QCoreApplication>

namespace QuoteDesk
{

/// What the clipboard carries between the funds of a quote and a spreadsheet.
struct FundClipboard {
    Q_DECLARE_TR_FUNCTIONS(FundClipboard)
public:
    /// The funds as lines for a spreadsheet, with a heading.
    static QString textOf(const QList<QuotedFund> &funds);
    /// @p split with the numbers of @p lines in place of those that the funds had. A fund that is not there
    /// yet is added at the end, under its name in @p names.
    static Split withLines(Split split, const FundLines &lines, const FundNames &names);
    /// How many lines were taken, in a sentence.
    static QString sentenceOf(const FundLines &lines);
};

} // namespace QuoteDesk
