#pragma once

#include <QHash>
#include <QPair>
#include <QString>

#include <functional>

namespace QuoteDesk
{

/// Called for one row of a list of funds with the fund's id, its name and its group's name; the group is
/// blank when it is not known.
using FundVisitor = std::function<void(int fundID, const QString &name, const QString &group)>;
/// Calls a visitor for every row of a list of funds, with the same rows each time. A fund may have several
/// rows.
using FundWalk = std::function<void(const FundVisitor &visitor)>;

/// Captions by fund id and trimmed name.
using TwinCaptions = QHash<QPair<int, QString>, QString>;

/// Captions for funds that share their name with another fund of a list: the name followed by the group, or
/// by the fund's id where the groups are equal, too. No two captions are equal, ignoring case. Funds with a
/// unique name are not in the result.
TwinCaptions twinCaptions(const FundWalk &walk);

} // namespace QuoteDesk
