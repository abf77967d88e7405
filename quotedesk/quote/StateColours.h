#pragma once

class QLabel;

namespace QuoteDesk
{

/// Shows on a label with the state of a quote whether more is given out than there is: then it stands on the
/// ground of an error, which no other state has. The label's own words say the same. To be called again when
/// the palette changes.
void showOverAllocation(QLabel &label, bool over);

} // namespace QuoteDesk
