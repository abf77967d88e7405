#pragma once

#include "store/QuoteStore.h"

#include "data/DataPacket.h"

namespace QuoteDesk
{

/// The columns of the list of quotes.
enum class QuoteColumn { Client, Product, Description, Amount, State, Changed };

/// The quotes as rows for a list: the fields QuoteID, Client, Product, Description, Amount, State, Changed
/// (as displayed), Picture (0 for an allocated quote, 1 for a draft), ProductID and Words (all searchable
/// text in lower case). Sorted by @p column; equal rows keep their order in @p quotes.
TDataPacket quoteTable(const QList<QuoteSummary> &quotes, QuoteColumn column, Qt::SortOrder order);

/// A dataset filter for the rows whose field Words contains every word of @p text; blank without words.
QString wordFilter(const QString &text);

} // namespace QuoteDesk
