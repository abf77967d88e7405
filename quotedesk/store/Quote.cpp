#include "store/Quote.h"

namespace QuoteDesk
{

bool Quote::isAllocated() const
{
    Currency spread;
    for (const QuotedFund &fund : funds)
        spread += fund.amount;
    return !funds.isEmpty() && spread == amount;
}

} // namespace QuoteDesk
