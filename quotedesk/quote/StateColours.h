#pragma once

class QLabel;

namespace QuoteDesk
{

/// Sets the colours of a label with a quote's state: the background of an error when the allocation exceeds
/// the investment, otherwise none. The label's text says the same. Call it again when the palette changes.
void showOverAllocation(QLabel &label, bool over);

} // namespace QuoteDesk
