#pragma once

#include "store/Quote.h"

namespace QuoteDesk
{

/// A quote as JSON, for a draft. Amounts stand in it as exact decimals.
QString quoteToJson(const Quote &quote);
/// The quote of such a text. Raises StoreError for one that is damaged.
Quote quoteFromJson(const QString &json);

} // namespace QuoteDesk
