#pragma once

#include "store/Quote.h"

#include <QList>

namespace QuoteDesk
{

/// The split of a quote as it is shown to people, in whole cents and hundredths of a percent. Rounding every
/// number by itself would print three thirds as 33.33 + 33.33 + 33.33, so the numbers are rounded together:
/// what is shown for the funds and for the rest adds up to the investment and to 100.00 percent.
struct ShownSplit {
    struct Fund {
        int fundID = 0;
        QString name;
        Currency percent;
        Currency amount; ///< rand
    };

    explicit ShownSplit(const Quote &quote);

    Currency investment; ///< rand
    QList<Fund> funds;   ///< In the order of the quote.
    /// What is not given to a fund; negative when more is given out than there is.
    Currency restPercent;
    Currency restAmount;
    bool isEmpty() const { return funds.isEmpty(); }
};

/// Each part times @p factor / @p divisor (above 0) in whole numbers that add up to the same multiple of all
/// parts together: each is rounded down, and the units lost by it go one each to the parts that lost most,
/// the first ones among equals.
QList<qint64> roundTogether(const QList<qint64> &parts, qint64 factor, qint64 divisor);

} // namespace QuoteDesk
