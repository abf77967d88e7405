#pragma once

#include "data/Currency.h"
#include "data/DataTypes.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QVariant>

#include <memory>
#include <vector>

/// A column's name and type.
struct TFieldDef {
    QString Name;                         ///< Case-insensitive.
    TFieldType Type = TFieldType::String; ///< The type of the values.
    friend bool operator==(const TFieldDef &, const TFieldDef &) = default;
};

/// An immutable table: typed columns, shared strings, null bits. Cursors and clones share a table, so passing
/// it on takes the same time at any size. TTableBuilder creates tables.
class ZEL_DATA_EXPORT TTable
{
public:
    struct Private;
    explicit TTable(std::unique_ptr<Private> d); ///< For TTableBuilder.
    ~TTable();
    TTable(const TTable &) = delete;
    TTable &operator=(const TTable &) = delete;

    int RowCount() const noexcept;                 ///< The number of rows; a table has no filter.
    int ColumnCount() const noexcept;              ///< The number of columns.
    const QList<TFieldDef> &Defs() const noexcept; ///< Names and types in column order.
    /// The column of that name: an exact match, otherwise the first match that ignores case; -1 for none.
    int IndexOf(const QString &name) const;

    bool IsNull(int row, int column) const; ///< Whether the value is null.
    /// The value at a row and column, which must be inside the table; a null value is an invalid QVariant.
    QVariant Value(int row, int column) const;

    const Private &data() const noexcept { return *d; } ///< For the units of the data module.

private:
    std::unique_ptr<Private> d;
};
using TTablePtr = std::shared_ptr<const TTable>;

/// Builds a table row by row: call Append for each column in order, then EndRow; or call AddRow.
class ZEL_DATA_EXPORT TTableBuilder
{
public:
    explicit TTableBuilder(QList<TFieldDef> defs); ///< Starts a table with these columns and no rows.
    ~TTableBuilder();
    void Reserve(int rows); ///< Allocates memory for that many rows; optional.
    /// Appends one value, converted to the column's type; an invalid or null variant gives null. Throws
    /// EConvertError, which names the column and the value, when the value cannot be converted.
    void Append(const QVariant &value);
    /// Ends the row. Throws EDatabaseError when the number of values differs from the number of columns.
    void EndRow();
    /// Adds a complete row. Throws EDatabaseError when the number of values differs from the number of
    /// columns.
    void AddRow(const QVariantList &values);
    /// Returns the table. The builder is empty afterwards.
    TTablePtr Finish();

private:
    std::unique_ptr<TTable::Private> d;
    int m_column = 0;
};
