#include "funds/GroupTypes_p.h"

#include "funds/FundRules.h"

using namespace Qt::StringLiterals;

namespace Zel
{

int GroupTypes::TypeOf(int fundID, int rowType, TClientDataSet &funds)
{
    using namespace FundRules;
    static_assert(GroupsThatAreTypes.size() <= 32, "one bit for each group");
    const TTablePtr table = funds.Table();
    if (m_table.lock() != table) {
        // One walk over the table finds, for every fund, the special groups in which the fund has a row.
        QHash<int, quint32> groupsOf;
        TClientDataSet rows;
        rows.CloneCursor(&funds, true, false);
        const TField *const group = rows.FieldByName(u"FundGroupID"_s);
        const TField *const fund = rows.FieldByName(u"FundID"_s);
        for (; !rows.Eof(); rows.Next()) {
            const int number = group->AsInteger();
            for (std::size_t i = 0; i < GroupsThatAreTypes.size(); ++i) {
                if (GroupsThatAreTypes[i] == number)
                    groupsOf[fund->AsInteger()] |= quint32{1} << i;
            }
        }
        m_groupsOf.swap(groupsOf);
        m_table = table;
    }
    int type = SplitType(rowType, fundID);
    const quint32 groups = m_groupsOf.value(fundID);
    for (std::size_t i = 0; i < GroupsThatAreTypes.size(); ++i) {
        const int group = GroupsThatAreTypes[i];
        const bool counts = group != GroupWithExceptions || !Contains(FundsNotOfThatGroup, fundID);
        if ((groups & (quint32{1} << i)) != 0 && counts)
            type = group;
    }
    return type;
}

} // namespace Zel
