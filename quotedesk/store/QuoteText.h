#pragma once

#include "store/Quote.h"

namespace QuoteDesk
{

/// A quote as one text, for a draft. Amounts stand in it as exact decimals.
QString quoteToText(const Quote &quote);
/// The quote of such a text; StoreError for one that is damaged.
Quote quoteFromText(const QString &text);

} // namespace QuoteDesk
