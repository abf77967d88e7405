#pragma once

// The storage of a table, and the indexes and filter results that all its cursors share.

#include "data/Table.h"

#include <QBitArray>
#include <QHash>
#include <QStringView>

#include <array>
#include <cstddef>

namespace Zel
{

/// One column: an array of its type and one bit per row for null. The array has a zero or an empty text for
/// null.
struct Column {
    TFieldType Type = TFieldType::String;
    std::vector<qint32> Ints;  ///< Integer; Boolean as 0 and 1
    std::vector<qint64> Longs; ///< LargeInt; Currency's stored integer; Date's Julian day; DateTime's moment
    std::vector<double> Doubles; ///< Float
    std::vector<QString> Texts;  ///< String
    QBitArray Nulls;             ///< One bit per row; empty when no row is null, as in most columns.

    bool IsNull(int row) const { return !Nulls.isEmpty() && Nulls.testBit(row); }
};

/// An index of one column: the rows with the same value form a group, chained in table order.
class KeyIndex
{
public:
    KeyIndex(const Column &column, int rows, bool foldCase);

    static constexpr int None = -1;
    /// A group and its first row; both are None when no row has the value.
    struct Match {
        int Group = None;
        int First = None;
    };
    // The value must have the column's type.
    Match FindInteger(qint64 value) const;
    Match FindFloat(double value) const;
    Match FindText(QStringView value) const;
    Match FindNull() const noexcept
    {
        return m_nullGroup == None ? Match() : Match{m_nullGroup, FirstRow(m_nullGroup)};
    }

    int Groups() const noexcept { return static_cast<int>(m_groups.size()); }
    int FirstRow(int group) const noexcept { return m_groups[static_cast<std::size_t>(group)].First; }
    int RowsIn(int group) const noexcept { return m_groups[static_cast<std::size_t>(group)].Count; }
    /// The next row of the same group; None after the last one.
    int NextRow(int row) const noexcept { return m_next[static_cast<std::size_t>(row)]; }

private:
    struct Group {
        int First;
        int Last;
        int Count;
    };
    template <typename Hash, typename Same> void Build(int rows, Hash hash, Same same);
    template <typename Same> Match Find(std::size_t hash, Same same) const;
    int Append(int group, int row);

    const Column &m_column;
    bool m_foldCase;
    std::vector<Match> m_slots; ///< The hash table, a power of two in size; Group is None in a free slot.
    std::vector<Group> m_groups;
    std::vector<int> m_next;
    int m_nullGroup = None;
};

/// A text column as zero-terminated UTF-8 texts, for the filter engine.
class TextPool
{
public:
    explicit TextPool(const Column &column);
    const char *Text(int row) const noexcept
    {
        return m_bytes.data() + m_starts[static_cast<std::size_t>(row)];
    }
    /// The size of the text in bytes, if any text of the column contains a zero character; otherwise -1, so
    /// that SQLite finds the end itself.
    int Size(int row) const noexcept;
    std::size_t Longest() const noexcept { return m_longest; } ///< The size of the longest text in bytes.

private:
    std::vector<char> m_bytes;
    std::vector<std::size_t> m_starts;
    std::size_t m_longest = 0;
    bool m_zeroInside = false;
};

/// The rows that pass a filter, in table order.
struct VisibleRows {
    std::vector<int> Rows;
    QBitArray Bits;

    /// @p bits has one bit for each row of the table, set when the row passes.
    static std::shared_ptr<const VisibleRows> OfBits(QBitArray bits);

    bool Contains(int row) const { return Bits.testBit(row); }
    /// The index of a visible row in Rows.
    int PositionOf(int row) const;
    /// The first visible row of a group; KeyIndex::None when there is none. Caches the result for long
    /// chains.
    int FirstOf(const KeyIndex &index, int group) const;

private:
    mutable QHash<const KeyIndex *, std::vector<int>> m_firsts;
};
using VisiblePtr = std::shared_ptr<const VisibleRows>;

} // namespace Zel

struct ZEL_DATA_NO_EXPORT TTable::Private {
    explicit Private(QList<TFieldDef> defs);

    QList<TFieldDef> Defs;
    std::vector<Zel::Column> Columns;
    int Rows = 0;
    QHash<QString, int> ByName;
    QHash<QString, int> ByFoldedName;

    /// The index of a column, built at the first call and kept. @p foldCase matters for text columns only.
    const Zel::KeyIndex &Index(int column, bool foldCase) const;
    bool HasIndex(int column) const { return m_indexes[static_cast<std::size_t>(column)][0] != nullptr; }
    const Zel::TextPool &Pool(int column) const;

    /// The rows of a filter that a cursor over this table currently shows; nullptr when no cursor does.
    Zel::VisiblePtr FindVisible(const QString &filter, TFilterOptions options) const;
    void RememberVisible(const QString &filter, TFilterOptions options, const Zel::VisiblePtr &rows) const;

private:
    struct KnownFilter {
        QString Text;
        TFilterOptions Options;
        std::weak_ptr<const Zel::VisibleRows> Rows;
    };
    mutable std::vector<std::array<std::unique_ptr<Zel::KeyIndex>, 2>> m_indexes;
    mutable std::vector<std::unique_ptr<Zel::TextPool>> m_pools;
    mutable std::vector<KnownFilter> m_filters;
};
