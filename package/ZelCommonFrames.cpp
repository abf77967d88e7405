#include "package/ZelCommonFrames.h"

#include <array>
#include <utility>

namespace
{
// In the order of dependency: a unit stands after the units it uses.
constexpr std::array unitNames{
    "fra_BaseFrame",
    "ill_Misc",
    "fra_ToolBar",
    "fra_ElmtRadioButtonPictureField",
    "fra_ElmtLabelComboBox",
    "fra_ElmtLabelDouble",
    "fra_ElmtLabelEdit",
    "fra_ElmtLabelInteger",
    "fra_ElmtRadioButtonDouble",
    "fra_ElmtRadioButtonInteger",
    "fra_ElmtRadioButtonMaskedEdit",
    "fra_ElmtCheckBoxDouble",
    "fra_InvestorName",
    "unt_BaseProductEditorImpl",
    "frm_BaseProductEditor",
    "misc_Types",
    "fra_TreeView",
    "fra_Header",
    "fra_PageHeader",
    "fra_FundToolBar",
    "fra_FundsSelectedListView",
    "fra_FundsTreeView",
    "fra_FundSelector",
    "frm_FundSelector",
    "fra_FundAllocation",
    "fra_BaseNavBar",
    "fra_ElmtLabelMaskedEdit",
    "fra_ElmtLabelPictureField",
};

// No unit has start-up work of its own; the counter keeps its sections from running more than once.
constinit std::array<int, unitNames.size()> counters{};

template <std::size_t Unit> void startUnit()
{
    --counters[Unit];
}

template <std::size_t Unit> void stopUnit()
{
    ++counters[Unit];
}

template <std::size_t... Units> constexpr auto makeTable(std::index_sequence<Units...>)
{
    return std::array{TUnitEntry{unitNames[Units], &startUnit<Units>, &stopUnit<Units>}...};
}

constexpr auto unitTable = makeTable(std::make_index_sequence<unitNames.size()>());
constexpr TPackageInfoTable infoTable{static_cast<int>(unitTable.size()), unitTable.data()};

constexpr std::uint8_t nameHash(const char *name)
{
    unsigned sum = 0;
    for (; *name; ++name)
        sum += static_cast<unsigned char>(*name >= 'a' && *name <= 'z' ? *name - 'a' + 'A' : *name);
    return static_cast<std::uint8_t>(sum);
}

constexpr TPackageInfo::TRequired required(const char *name)
{
    return {name, nameHash(name)};
}

constexpr std::array requiredPackages{required("bdertl60"), required("ZelWrapper60"), required("Tsg6201"),
                                      required("o406_r60"), required("rtl60")};

constexpr std::array containedUnits{
    "ZelCommonFrames",
    "misc_Types",
    "SysInit",
    "fra_InvestorName",
    "fra_ElmtLabelComboBox",
    "frm_FundSelector",
    "fra_BaseFrame",
    "ill_Misc",
    "fra_FundSelector",
    "fra_FundsTreeView",
    "fra_FundsSelectedListView",
    "fra_ElmtLabelPictureField",
    "fra_ElmtLabelMaskedEdit",
    "fra_BaseNavBar",
    "fra_FundAllocation",
    "fra_FundToolBar",
    "fra_PageHeader",
    "fra_Header",
    "fra_TreeView",
    "unt_BaseProductEditorImpl",
    "frm_BaseProductEditor",
    "fra_ToolBar",
    "fra_ElmtCheckBoxDouble",
    "fra_ElmtRadioButtonMaskedEdit",
    "fra_ElmtRadioButtonInteger",
    "fra_ElmtRadioButtonDouble",
    "fra_ElmtLabelInteger",
    "fra_ElmtLabelEdit",
    "fra_ElmtLabelDouble",
    "fra_ElmtRadioButtonPictureField",
};
static_assert(containedUnits.size() == 30);

constexpr TPackageInfo packageInfo{TPackageInfo::Package | TPackageInfo::RunOnly | TPackageInfo::NeverBuild,
                                   static_cast<int>(requiredPackages.size()), requiredPackages.data(),
                                   static_cast<int>(containedUnits.size()), containedUnits.data()};
} // namespace

namespace ZelCommonFrames
{
void PackageLoad()
{
    for (const TUnitEntry &unit : unitTable)
        unit.Init();
}

void PackageUnload()
{
    for (auto unit = unitTable.rbegin(); unit != unitTable.rend(); ++unit)
        unit->Final();
}
} // namespace ZelCommonFrames

void Initialize()
{
    ZelCommonFrames::PackageLoad();
}

void Finalize()
{
    ZelCommonFrames::PackageUnload();
}

const TPackageInfoTable *GetPackageInfoTable()
{
    return &infoTable;
}

const TPackageInfo *GetPackageInfo()
{
    return &packageInfo;
}

int GetUnitCounter(int index)
{
    return index >= 0 && index < infoTable.UnitCount ? counters[static_cast<std::size_t>(index)] : 0;
}
