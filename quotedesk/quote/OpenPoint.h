#pragma once

#include "store/ShownSplit.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace QuoteDesk
{

/// Something that is missing or wrong in a quote, and the field that mends it.
struct OpenPoint {
    Q_DECLARE_TR_FUNCTIONS(OpenPoint)
public:
    /// Where the field is.
    enum class Place {
        Investor, ///< the list of clients
        Details,  ///< an element of the page with the details
        Income,   ///< an element of the page with the income
        Amount,   ///< the field of the investment
        Split     ///< the grid of the funds
    };

    Place place = Place::Investor;
    QString sentence;
    QString field = {}; ///< the name of the page's element; blank elsewhere

    /// The point that a split makes: not all or too much is allocated, or no fund is chosen. None for a
    /// complete split, and none without an investment, which is a point of its own.
    static std::optional<OpenPoint> ofSplit(const SplitState &split);
    /// The sentences of @p points.
    static QStringList sentences(const QList<OpenPoint> &points);
};

} // namespace QuoteDesk
