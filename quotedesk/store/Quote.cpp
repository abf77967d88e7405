#include "store/Quote.h"

#include "data/Exceptions.h"

namespace QuoteDesk
{

bool Quote::isAllocated() const
{
    if (funds.isEmpty() || amount.isZero())
        return false;
    try {
        Currency spread;
        Currency percent;
        for (const QuotedFund &fund : funds) {
            spread += fund.amount;
            percent += fund.percent;
        }
        // By percent the percentages are what is typed. Each amount that follows from one is rounded to its
        // last decimal, so that together they may miss the whole.
        const qint64 missing = qAbs((amount - spread).raw());
        return missing == 0 || (!byAmount && percent == Currency(100) && missing <= funds.size());
    } catch (const EOverflow &) {
        // More than any amount there is.
        return false;
    }
}

} // namespace QuoteDesk
