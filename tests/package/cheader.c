/* Compiled but never run: the header has to be plain C and must not rely on other headers included before it. */
#include "package/ZelCommonFramesC.h"

ZelResult UseTheInterface(uintptr_t window);

ZelResult UseTheInterface(uintptr_t window)
{
    ZelFrame *frame = NULL;
    ZelFund fund = {1, 0, 0};
    ZelResult result = Initialize();
    if (result == ZEL_OK)
        result = ZelFrameCreate("TfraFundAllocation", window, &frame);
    if (result == ZEL_OK)
        result = ZelFrameSetFunds(frame, &fund, 1, 1);
    if (result == ZEL_OK)
        result = ZelFrameSetAllocation(frame, &fund, 1, 1, &fund, 1, NULL);
    ZelFrameDestroy(frame);
    return Finalize() < 0 ? ZEL_FAILED : result;
}
