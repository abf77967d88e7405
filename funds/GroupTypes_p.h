#pragma once

#include "data/ClientDataSet.h"

#include <QHash>

#include <memory>

namespace Zel
{

/// The group types of funds, by the rules of FundRules.h. Which of the special groups each fund is in is read
/// once for a table of funds.
class GroupTypes
{
public:
    /// The group type of fund @p fundID of @p funds, whose row says @p rowType.
    int TypeOf(int fundID, int rowType, TClientDataSet &funds);

private:
    std::weak_ptr<const TTable> m_table;
    QHash<int, quint32> m_groupsOf; ///< fund ID -> bits in the order of GroupsThatAreTypes
};

} // namespace Zel
