#pragma once

#include "data/ClientDataSet.h"

#include <QHash>

#include <memory>

namespace Zel
{

/// Determines the group types of funds by the rules of FundRules.h. Reads the special groups of all funds
/// once for each table of funds.
class GroupTypes
{
public:
    /// The group type of the fund @p fundID in @p funds. @p rowType is the group type in the fund's row.
    int TypeOf(int fundID, int rowType, TClientDataSet &funds);

private:
    std::weak_ptr<const TTable> m_table;
    QHash<int, quint32> m_groupsOf; ///< by fund ID: bits in the order of GroupsThatAreTypes
};

} // namespace Zel
