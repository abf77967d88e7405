#include "quote/OpenPoint.h"

#include "quote/ShownNumbers.h"

namespace QuoteDesk
{

std::optional<OpenPoint> OpenPoint::ofSplit(const SplitState &split)
{
    const auto say = [](const QString &text) { return OpenPoint{Place::Split, text}; };
    const auto money = [](Currency value) { return shownAmount(value); };
    const auto percent = [](Currency value) { return shownPercent(value); };
    if (split.isEmpty())
        return say(tr("No funds are chosen."));
    if (split.isAllocated() || split.investment.isZero())
        return std::nullopt;
    if (split.isOver())
        return say(tr("%1 (%2%) more is allocated than the investment.")
                       .arg(money(-split.restAmount), percent(-split.restPercent)));
    return say(tr("%1 (%2%) is not allocated.").arg(money(split.restAmount), percent(split.restPercent)));
}

QStringList OpenPoint::sentences(const QList<OpenPoint> &points)
{
    QStringList result;
    result.reserve(points.size());
    for (const OpenPoint &point : points)
        result.append(point.sentence);
    return result;
}

} // namespace QuoteDesk
