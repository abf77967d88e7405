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
    QString Name;                         ///< Found without regard to case.
    TFieldType Type = TFieldType::String; ///< How values are kept.
    friend bool operator==(const TFieldDef &, const TFieldDef &) = default;
};

/// An immutable table: typed columns, shared strings, null bits. Every dataset shows one; cursors and clones
/// share it, so handing a table over costs the same at any size. Made with TTableBuilder.
class ZEL_DATA_EXPORT TTable
{
public:
    struct Private;
    explicit TTable(std::unique_ptr<Private> d); ///< For TTableBuilder.
    ~TTable();
    TTable(const TTable &) = delete;
    TTable &operator=(const TTable &) = delete;

    int RowCount() const noexcept;                 ///< All rows; a table knows no filter.
    int ColumnCount() const noexcept;              ///< How many columns there are.
    const QList<TFieldDef> &Defs() const noexcept; ///< Names and types in column order.
    /// The column of that name: an exact match first, else the first without regard to case; -1 when none.
    int IndexOf(const QString &name) const;

    bool IsNull(int row, int column) const; ///< Whether there is no value.
    /// The value at a row and column, both inside the table; a null value is an invalid QVariant.
    QVariant Value(int row, int column) const;

    const Private &data() const noexcept { return *d; } ///< For the data layer's own units.

private:
    std::unique_ptr<Private> d;
};
using TTablePtr = std::shared_ptr<const TTable>;

/// Fills a table row by row: one Append per column in order, then EndRow.
class ZEL_DATA_EXPORT TTableBuilder
{
public:
    explicit TTableBuilder(QList<TFieldDef> defs); ///< A table of these columns and no rows.
    ~TTableBuilder();
    void Reserve(int rows); ///< Room for that many rows, when it is known.
    /// Appends one value converted to the column's type; an invalid or null variant is null. Raises
    /// EConvertError naming the column and the value when it cannot be converted.
    void Append(const QVariant &value);
    /// Closes the row; EDatabaseError when it has more or fewer values than columns.
    void EndRow();
    /// A whole row; EDatabaseError when it has more or fewer values than columns.
    void AddRow(const QVariantList &values);
    /// The finished table; the builder is empty afterwards.
    TTablePtr Finish();

private:
    std::unique_ptr<TTable::Private> d;
    int m_column = 0;
};
