#include "quote/Investment.h"

namespace QuoteDesk
{

Currency maximumInvestment()
{
    return Currency::fromRaw(9'999'999'999'99 * (Currency::Scale / 100));
}

NumberRules investmentRules()
{
    NumberRules rules;
    rules.unit = NumberUnit::Rand;
    rules.low = Currency();
    rules.high = maximumInvestment();
    rules.decimals = 2;
    return rules;
}

} // namespace QuoteDesk
