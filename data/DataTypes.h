#pragma once

#include "export/zel_data_export.h"

#include <QFlags>
#include <QList>

/// The types a column of a dataset can have.
enum class TFieldType : quint8 {
    Integer,  ///< signed 32-bit
    LargeInt, ///< signed 64-bit
    Float,    ///< double
    Currency, ///< fixed-point, four decimals
    Boolean,  ///< true or false
    Date,     ///< a day
    DateTime, ///< what the clock on the wall showed, to the millisecond; without a time zone
    String    ///< a text of any length
};

/// A dataset row, handed out by TDataSet::GetBookmark and meaningful to that dataset only. A pointer-sized
/// handle that is never dereferenced: an old or foreign one is refused, not followed. nullptr is "no row".
using TBookmark = struct TBookmarkHandle *;

/// Keys of rows (of funds, fund groups, the nodes of a tree), used as a list or a set. A plain value.
using TDynamicArrayOfInt = QList<int>;

/// How a dataset's filter compares texts.
enum class TFilterOption {
    CaseInsensitive = 1 ///< Upper and lower case make no difference, in every alphabet.
};
Q_DECLARE_FLAGS(TFilterOptions, TFilterOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TFilterOptions)

/// How TDataSet::Locate compares texts.
enum class TLocateOption {
    CaseInsensitive = 1, ///< Upper and lower case make no difference, in every alphabet.
    PartialKey = 2       ///< A text that begins with the one looked for is found too.
};
Q_DECLARE_FLAGS(TLocateOptions, TLocateOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TLocateOptions)
