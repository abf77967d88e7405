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
    DateTime, ///< local date and time in milliseconds, without a time zone
    String    ///< a text of any length
};

/// Identifies a row of a dataset, see TDataSet::GetBookmark. Only that dataset can use it. The handle has the
/// size of a pointer but is never dereferenced: an outdated or foreign handle is an error, not a crash.
/// nullptr means "no row".
using TBookmark = struct TBookmarkHandle *;

/// Keys of rows (of funds, fund groups, the nodes of a tree), used as a list or a set.
using TDynamicArrayOfInt = QList<int>;

/// How a dataset's filter compares texts.
enum class TFilterOption {
    CaseInsensitive = 1 ///< Ignore upper and lower case, in every alphabet.
};
Q_DECLARE_FLAGS(TFilterOptions, TFilterOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TFilterOptions)

/// How TDataSet::Locate compares texts.
enum class TLocateOption {
    CaseInsensitive = 1, ///< Ignore upper and lower case, in every alphabet.
    PartialKey = 2       ///< Also find texts that begin with the key.
};
Q_DECLARE_FLAGS(TLocateOptions, TLocateOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TLocateOptions)
