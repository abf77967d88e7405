#pragma once

#include <array>

/// The fixed data of the product range: the funds, fund groups and group types with special rules. The
/// numbers are keys of the catalogue.
namespace Zel::FundRules
{
/// Group types whose funds get another group type, depending on the fund: the funds in FundsOfFirstSplitType
/// get FirstSplitGroupType, all others OtherSplitGroupType.
inline constexpr std::array SplitGroupTypes{58, 59};
inline constexpr std::array FundsOfFirstSplitType{644, 658, 678}; ///< Get FirstSplitGroupType.
constexpr int FirstSplitGroupType = 1;                            ///< The group type of these funds.
constexpr int OtherSplitGroupType = 3;                            ///< The group type of the others.

/// Groups whose number is the group type of their funds. For a fund in several of them, the last one applies.
inline constexpr std::array GroupsThatAreTypes{8, 68, 11, 12, 67, 14, 13};
/// One of these groups, and the funds to which its rule does not apply.
constexpr int GroupWithExceptions = 8;
inline constexpr std::array FundsNotOfThatGroup{38, 249, 210, 813};

/// Groups whose funds may have a previous-investment question, in the order in which their messages are read.
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

/// The group type of a fund with the group type @p rowType in its row, before GroupsThatAreTypes is applied.
constexpr int SplitType(int rowType, int fundID) noexcept
{
    if (!Contains(SplitGroupTypes, rowType))
        return rowType;
    return Contains(FundsOfFirstSplitType, fundID) ? FirstSplitGroupType : OtherSplitGroupType;
}
} // namespace Zel::FundRules
