#pragma once

#include "look/Chip.h"
#include "store/QuoteStore.h"

#include "data/DataPacket.h"

namespace QuoteDesk
{

/// The columns of the list of quotes.
enum class QuoteColumn { Client, Product, Description, Amount, State, Changed };

/// The state of a quote.
ChipState stateOf(const QuoteSummary &quote);
/// The state in words.
QString stateText(ChipState state);

/// The quotes as rows for a list: the fields QuoteID, Client, Product, Description, Amount, State, Changed
/// (as displayed; the time as "2026-11-22 14:32"), StateNumber (a ChipState), ProductID and Words (all
/// searchable text, see searchable()). Sorted by @p column; equal rows keep their order in @p quotes.
TDataPacket quoteTable(const QList<QuoteSummary> &quotes, QuoteColumn column, Qt::SortOrder order);

/// A time as short as it is clear on @p today: "Today 14:32", "Yesterday", "19 Nov", and with the year when
/// the year is another one. Blank for an invalid time.
QString timeInWords(const QDateTime &time, const QDate &today);
/// The same in the middle of a sentence: "today 14:32".
QString timeInSentence(const QDateTime &time, const QDate &today);
/// The whole time: "2026-11-22 14:32".
QString wholeTime(const QDateTime &time);
/// The time that wholeTime() returned as text; invalid for other texts.
QDateTime timeOfText(const QString &text);

/// A text as it is searched: in lower case and without accents, with one character for each of @p text.
QString searchable(const QString &text);
/// A dataset filter for the rows whose field Words contains every word of @p text; blank without words.
QString wordFilter(const QString &text);

} // namespace QuoteDesk
