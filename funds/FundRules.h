#pragma once

#include <array>

/// The fixed data of the product range: the funds, fund groups and group types that are treated specially.
/// The numbers are keys of the catalogue.
namespace Zel::FundRules
{
/// Group types whose funds are told apart fund by fund.
inline constexpr std::array SplitGroupTypes{58, 59};
/// What a fund of a split group type counts as: these funds the first, every other the second.
inline constexpr std::array FundsOfFirstSplitType{644, 658, 678};
constexpr int FirstSplitGroupType = 1; ///< The group type of these funds.
constexpr int OtherSplitGroupType = 3; ///< The group type of the others.

/// Groups whose funds take the group's number as their group type, in the order applied: a later one wins.
inline constexpr std::array GroupsThatAreTypes{8, 68, 11, 12, 67, 14, 13};
/// The group of the above that some of its funds do not count to, and those funds.
constexpr int GroupWithExceptions = 8;
inline constexpr std::array FundsNotOfThatGroup{38, 249, 210, 813};

/// Groups whose funds may carry a previous-investment question, in the order their messages are read.
inline constexpr std::array GroupsWithMessages{11, 12, 68, 67};

/// Whether @p number is in @p list.
template <typename List> constexpr bool Contains(const List &list, int number) noexcept
{
    for (const int each : list) {
        if (each == number)
            return true;
    }
    return false;
}

/// The group type of a fund whose row says @p rowType, before the groups override it.
constexpr int SplitType(int rowType, int fundID) noexcept
{
    if (!Contains(SplitGroupTypes, rowType))
        return rowType;
    return Contains(FundsOfFirstSplitType, fundID) ? FirstSplitGroupType : OtherSplitGroupType;
}
} // namespace Zel::FundRules
