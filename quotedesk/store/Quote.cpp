#include "store/Quote.h"

#include "data/Exceptions.h"

namespace QuoteDesk
{

bool Quote::isAllocated() const
{
    try {
        Currency spread;
        for (const QuotedFund &fund : funds)
            spread += fund.amount;
        return !funds.isEmpty() && spread == amount;
    } catch (const EOverflow &) {
        // More than any amount there is.
        return false;
    }
}

} // namespace QuoteDesk
