#pragma once

#include "store/QuoteStore.h"

#include "data/DataPacket.h"

namespace QuoteDesk
{

/// The columns of the list of quotes.
enum class QuoteColumn { Client, Product, Description, Amount, State, Changed };

/// The quotes as rows for a list: the fields QuoteID, Client, Product, Description, Amount, State, Changed
/// (as shown), Picture (0 for an allocated quote, 1 for a draft), ProductID and Words (all that can be found
/// by, in lower case). In the order of @p column; equal ones stay as they are in @p quotes.
TDataPacket quoteTable(const QList<QuoteSummary> &quotes, QuoteColumn column, Qt::SortOrder order);

/// A dataset's filter for the rows in whose field Words every word of @p text occurs; blank for no words.
QString wordFilter(const QString &text);

} // namespace QuoteDesk
