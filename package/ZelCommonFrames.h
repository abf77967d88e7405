#pragma once

#include "export/zel_commonframes_export.h"

#include <cstdint>

/// The package's entry points and its description. A host loads the library, calls Initialize, creates frames
/// and forms by class, destroys them all, and calls Finalize. No code of the package runs at load time.

/// One unit with its start-up and shut-down routines.
struct TUnitEntry {
    const char *UnitName; ///< valid until the library is unloaded
    void (*Init)();       ///< start-up routine
    void (*Final)();      ///< shut-down routine
};

/// The units in the order of their start-up: each after the units it uses.
struct TPackageInfoTable {
    int UnitCount;              ///< Entries in UnitInfo.
    const TUnitEntry *UnitInfo; ///< The first entry.
};

/// The package information record: the package's kind, the packages it requires and the units it contains.
struct TPackageInfo {
    /// A package that must be loaded first.
    struct TRequired {
        const char *Name;      ///< Valid until the library is unloaded.
        std::uint8_t NameHash; ///< the sum of the upper-case name's bytes, modulo 256
    };
    /// The kind of package.
    enum TFlag : std::uint32_t {
        NeverBuild = 0x1, ///< never rebuilt implicitly
        RunOnly = 0x4,    ///< not used at design time
        Package = 0x40000000
    };
    std::uint32_t Flags;         ///< TFlag values combined by "or"
    int RequiresCount;           ///< Entries in Requires.
    const TRequired *Requires;   ///< In the order of the record.
    int ContainsCount;           ///< Entries in Contains.
    const char *const *Contains; ///< unit names in the order of the record
};

extern "C" {
/// Runs the units' start-up routines, first entry first. Returns 0; or a negative number, without effect,
/// when the package is already initialised. package/ZelCommonFramesC.h names the numbers. Before this call no
/// frame or form can be created.
ZEL_COMMONFRAMES_EXPORT int Initialize();
/// Runs the units' shut-down routines, last entry first. Returns 0; or a negative number, without effect,
/// when the package is not initialised, while a frame or form is alive (also one waiting for deleteLater),
/// inside ZelProcessEvents, or on another thread than the application's. ZelLastError returns the reason.
ZEL_COMMONFRAMES_EXPORT int Finalize();
/// The unit table; valid until the library is unloaded.
ZEL_COMMONFRAMES_EXPORT const TPackageInfoTable *GetPackageInfoTable();
/// The package information record; valid until the library is unloaded.
ZEL_COMMONFRAMES_EXPORT const TPackageInfo *GetPackageInfo();
/// The start counter of the unit at @p index of the unit table: 0 after loading, decremented by the unit's
/// start-up, incremented by its shut-down; 0 for an index outside the table.
ZEL_COMMONFRAMES_EXPORT int GetUnitCounter(int index);
}

namespace ZelCommonFrames
{
/// Other names of Initialize and Finalize.
ZEL_COMMONFRAMES_EXPORT int PackageLoad();
ZEL_COMMONFRAMES_EXPORT int PackageUnload();
} // namespace ZelCommonFrames
