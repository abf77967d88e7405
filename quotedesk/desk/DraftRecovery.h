#pragma once

class QWidget;

namespace QuoteDesk
{

class OpenQuotes;
class QuoteSession;

/// Offers the drafts that earlier runs have left in the store and on this computer, and opens those that the
/// adviser chooses. @p session, @p quotes and @p parent must exist until the store has answered.
void offerDrafts(QuoteSession &session, OpenQuotes &quotes, QWidget *parent);

} // namespace QuoteDesk
