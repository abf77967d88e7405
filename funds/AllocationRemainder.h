#pragma once

#include "data/Currency.h"
#include "export/zel_commonframes_export.h"

class TfraFundAllocation;

namespace Zel
{
/// Tells the bar below the grid of @p frame what remains of the investment, in rand and percent, when the
/// host counts more than the rows of the frame. The bar shows what is neither in the rows nor remains as
/// other funds. Only the application look has the bar; the captions stay as they are.
ZEL_COMMONFRAMES_EXPORT void ShowRemainder(TfraFundAllocation &frame, Currency amount, Currency percent);
} // namespace Zel
