#pragma once

#include "export/zel_data_export.h"

#include <QFlags>
#include <QString>

/// The types a column of a dataset can have.
enum class TFieldType : quint8 {
    Integer,  ///< signed 32-bit
    LargeInt, ///< signed 64-bit
    Float,    ///< double
    Currency, ///< fixed-point, four decimals
    Boolean,
    Date,
    DateTime,
    String
};

/// A dataset row, handed out by TDataSet::GetBookmark and meaningful to that dataset only. A pointer-sized
/// handle that is never dereferenced: an old or foreign one is refused, not followed. nullptr is "no row".
using TBookmark = struct TBookmarkHandle *;

enum class TFilterOption { CaseInsensitive = 1 };
Q_DECLARE_FLAGS(TFilterOptions, TFilterOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TFilterOptions)

enum class TLocateOption { CaseInsensitive = 1, PartialKey = 2 };
Q_DECLARE_FLAGS(TLocateOptions, TLocateOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TLocateOptions)
