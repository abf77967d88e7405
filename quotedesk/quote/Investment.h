#pragma once

#include "data/NumberEntry.h"

namespace QuoteDesk
{

/// The largest investment that the program accepts, in rand.
Currency maximumInvestment();

/// The limits of an investment: rand with two decimals from 0 to maximumInvestment().
NumberRules investmentRules();

} // namespace QuoteDesk
