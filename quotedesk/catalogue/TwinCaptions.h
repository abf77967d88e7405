#pragma once

#include <QHash>
#include <QPair>
#include <QString>

#include <functional>

namespace QuoteDesk
{

/// Is told one row of a list of funds: the fund's number, its name and its group's; blank for a group that is
/// not known.
using FundVisitor = std::function<void(int fundID, const QString &name, const QString &group)>;
/// Tells a visitor every row of a list of funds, each time the same ones. A fund may have several rows.
using FundWalk = std::function<void(const FundVisitor &visitor)>;

/// By a fund's number and its trimmed name, its caption.
using TwinCaptions = QHash<QPair<int, QString>, QString>;

/// Captions for the funds that share their name with another fund of a list: the name with the group behind
/// it, or the fund's number where the groups do not tell them apart. No two funds of the list then look the
/// same, however upper and lower case are taken. Funds with a name of their own are not in the result.
TwinCaptions twinCaptions(const FundWalk &walk);

} // namespace QuoteDesk
