#pragma once

#include "data/NumberEntry.h"

namespace QuoteDesk
{

/// The largest investment that the program takes, in rand.
Currency maximumInvestment();

/// What an investment may be: rand and cents from 0 to maximumInvestment().
NumberRules investmentRules();

} // namespace QuoteDesk
