#include "package/ZelCommonFrames.h"

#include "frames/Started_p.h"
#include "package/Lifecycle_p.h"
#include "package/PackageInfo_p.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace
{
// In the order of dependency: a unit follows the units it uses.
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

// The start counter of each unit (see GetUnitCounter). No unit has start-up work of its own.
constinit std::array<int, unitNames.size()> counters{};

// The package counts as started when the base frame's unit is, because a host may run the routines of the
// table itself.
void tellFrames()
{
    Zel::Started::Set(counters[0] < 0);
}

template <std::size_t Unit> void startUnit()
{
    --counters[Unit];
    tellFrames();
}

template <std::size_t Unit> void stopUnit()
{
    ++counters[Unit];
    tellFrames();
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

#define ZEL_ENTRY(name, hash) TPackageInfo::TRequired{name, static_cast<std::uint8_t>((hash)[0])},
constexpr std::array requiredPackages{ZEL_REQUIRED_PACKAGES(ZEL_ENTRY)};
#undef ZEL_ENTRY
static_assert(requiredPackages.size() == ZEL_REQUIRED_COUNT);
static_assert(std::ranges::all_of(requiredPackages, [](const TPackageInfo::TRequired &required) {
    return required.NameHash == nameHash(required.Name);
}));

#define ZEL_ENTRY(name) name,
constexpr std::array containedUnits{ZEL_CONTAINED_UNITS(ZEL_ENTRY)};
#undef ZEL_ENTRY
static_assert(containedUnits.size() == ZEL_CONTAINED_COUNT);

static_assert(ZEL_PACKAGE_FLAGS ==
              (TPackageInfo::Package | TPackageInfo::RunOnly | TPackageInfo::NeverBuild));
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
    if (Zel::Lifecycle::OnAnotherThread())
        return Zel::Lifecycle::Refuse(ZEL_WRONG_THREAD, "The package is used on another thread");
    if (const char *alive = Zel::Lifecycle::FrameAlive()) {
        std::array<char, 160> reason{};
        std::snprintf(reason.data(), reason.size(),
                      "There are frames that have not been destroyed, a %.60s among them", alive);
        return Zel::Lifecycle::Refuse(ZEL_FRAMES_ALIVE, reason.data());
    }
    if (Zel::Lifecycle::Serving())
        return Zel::Lifecycle::Refuse(ZEL_FAILED, "ZelProcessEvents has not come back yet");
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
