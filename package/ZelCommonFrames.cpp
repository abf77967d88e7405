#include "package/ZelCommonFrames.h"

#include "package/Lifecycle_p.h"

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
int PackageLoad()
{
    if (GetUnitCounter(0) < 0)
        return Zel::Lifecycle::Refuse(ZEL_ALREADY_INITIALIZED, "The package is initialised already");
    for (const TUnitEntry &unit : unitTable)
        unit.Init();
    return ZEL_OK;
}

int PackageUnload()
{
    if (GetUnitCounter(0) >= 0)
        return Zel::Lifecycle::Refuse(ZEL_NOT_INITIALIZED, "The package is not initialised");
    if (Zel::Lifecycle::FramesAlive())
        return Zel::Lifecycle::Refuse(ZEL_FRAMES_ALIVE, "There are frames that have not been destroyed");
    Zel::Lifecycle::Close();
    for (auto unit = unitTable.rbegin(); unit != unitTable.rend(); ++unit)
        unit->Final();
    return ZEL_OK;
}
} // namespace ZelCommonFrames

int Initialize()
{
    return ZelCommonFrames::PackageLoad();
}

int Finalize()
{
    return ZelCommonFrames::PackageUnload();
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
