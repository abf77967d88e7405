#pragma once

class QWidget;

namespace QuoteDesk
{

class OpenQuotes;
class QuoteSession;

/// Offers what an earlier run of the program left unsaved, in the store and on this computer, and opens what
/// the adviser wants back. Asks the store first: @p session, @p quotes and @p parent must live until then.
void offerDrafts(QuoteSession &session, OpenQuotes &quotes, QWidget *parent);

} // namespace QuoteDesk
