#include "store/Quote.h"

#include "store/ShownSplit.h"

namespace QuoteDesk
{

bool Quote::isAllocated() const
{
    return ShownSplit(*this).isAllocated();
}

} // namespace QuoteDesk
