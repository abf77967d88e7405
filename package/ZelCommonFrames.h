#pragma once

#include "export/zel_commonframes_export.h"

#include <cstdint>

/// The package's entry points and what it says about itself. A host loads the library, calls Initialize,
/// creates frames and forms by class, destroys them all, and calls Finalize. Nothing runs at load time.

/// One unit whose start-up or shut-down runs with the package.
struct TUnitEntry {
    const char *UnitName; ///< lives as long as the library
    void (*Init)();       ///< start-up routine
    void (*Final)();      ///< shut-down routine
};

/// The units in the order their start-up runs: each after the units it uses.
struct TPackageInfoTable {
    int UnitCount;              ///< Entries in UnitInfo.
    const TUnitEntry *UnitInfo; ///< The first entry.
};

/// What the package is, for a host that wants to know before it loads it for good.
struct TPackageInfo {
    /// A package that must be there first.
    struct TRequired {
        const char *Name;      ///< Lives as long as the library.
        std::uint8_t NameHash; ///< the sum of the upper-case name's bytes, modulo 256
    };
    /// What kind of package it is.
    enum TFlag : std::uint32_t {
        NeverBuild = 0x1, ///< never rebuilt implicitly
        RunOnly = 0x4,    ///< not used at design time
        Package = 0x40000000
    };
    std::uint32_t Flags;         ///< TFlag values joined
    int RequiresCount;           ///< Entries in Requires.
    const TRequired *Requires;   ///< In the order of the record.
    int ContainsCount;           ///< Entries in Contains.
    const char *const *Contains; ///< unit names in the order of the record
};

extern "C" {
/// Runs the units' start-up routines, first entry first. The answer is 0, or negative with nothing done when
/// they have run already; package/ZelCommonFramesC.h names the numbers. Before it no frame or form can be
/// made.
ZEL_COMMONFRAMES_EXPORT int Initialize();
/// Runs the units' shut-down routines, last entry first. The answer is 0, or negative with nothing done when
/// the package is not initialised, while a frame or form is alive (one that is to be deleted later is),
/// inside ZelProcessEvents, or on another thread than the application's; ZelLastError says which.
ZEL_COMMONFRAMES_EXPORT int Finalize();
/// The unit table; lives as long as the library.
ZEL_COMMONFRAMES_EXPORT const TPackageInfoTable *GetPackageInfoTable();
/// The package information record; lives as long as the library.
ZEL_COMMONFRAMES_EXPORT const TPackageInfo *GetPackageInfo();
/// The start counter of the unit at @p index of the unit table: 0 at load, lowered by one by its start-up,
/// raised by one by its shut-down; 0 for an index outside the table.
ZEL_COMMONFRAMES_EXPORT int GetUnitCounter(int index);
}

namespace ZelCommonFrames
{
/// The second names of Initialize and Finalize.
ZEL_COMMONFRAMES_EXPORT int PackageLoad();
ZEL_COMMONFRAMES_EXPORT int PackageUnload();
} // namespace ZelCommonFrames
