#pragma once

#include "store/Quote.h"

namespace QuoteDesk
{

/// A quote as JSON, for drafts. Amounts are exact decimals.
QString quoteToJson(const Quote &quote);
/// Reads such a text; throws StoreError when it is damaged.
Quote quoteFromJson(const QString &json);

} // namespace QuoteDesk
