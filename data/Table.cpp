#include "data/Table_p.h"

#include "data/Exceptions.h"
#include "data/Values_p.h"

#include <QStringEncoder>

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace Zel
{
namespace
{

std::size_t mix(quint64 value) noexcept
{
    value ^= value >> 32;
    value *= 0x9E3779B97F4A7C15ULL;
    value ^= value >> 29;
    return static_cast<std::size_t>(value);
}

std::size_t hashFloat(double value) noexcept
{
    // 0 and -0 are equal and must have the same hash.
    return mix(std::bit_cast<quint64>(value == 0.0 ? 0.0 : value));
}

bool sameFloat(double a, double b) noexcept
{
    return a == b || (a != a && b != b);
}

std::size_t hashText(QStringView text, bool foldCase)
{
    if (!foldCase)
        return qHash(text, 0);
    quint64 hash = 0xCBF29CE484222325ULL;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t code = text[i].unicode();
        if (QChar::isHighSurrogate(code) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            code = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        hash = (hash ^ QChar::toCaseFolded(code)) * 0x100000001B3ULL;
    }
    return mix(hash);
}

bool sameText(QStringView a, QStringView b, bool foldCase)
{
    return foldCase ? a.compare(b, Qt::CaseInsensitive) == 0 : a == b;
}

} // namespace

KeyIndex::KeyIndex(const Column &column, int rows, bool foldCase) : m_column(column), m_foldCase(foldCase)
{
    switch (column.Type) {
    case TFieldType::Integer:
    case TFieldType::Boolean:
        Build(
            rows, [&](std::size_t row) { return mix(static_cast<quint64>(qint64{column.Ints[row]})); },
            [&](std::size_t a, std::size_t b) { return column.Ints[a] == column.Ints[b]; });
        break;
    case TFieldType::LargeInt:
    case TFieldType::Currency:
    case TFieldType::Date:
    case TFieldType::DateTime:
        Build(
            rows, [&](std::size_t row) { return mix(static_cast<quint64>(column.Longs[row])); },
            [&](std::size_t a, std::size_t b) { return column.Longs[a] == column.Longs[b]; });
        break;
    case TFieldType::Float:
        Build(
            rows, [&](std::size_t row) { return hashFloat(column.Doubles[row]); },
            [&](std::size_t a, std::size_t b) { return sameFloat(column.Doubles[a], column.Doubles[b]); });
        break;
    case TFieldType::String:
        Build(
            rows, [&](std::size_t row) { return hashText(column.Texts[row], foldCase); },
            [&](std::size_t a, std::size_t b) {
                return sameText(column.Texts[a], column.Texts[b], foldCase);
            });
        break;
    }
}

int KeyIndex::Append(int group, int row)
{
    if (group == None) {
        m_groups.push_back({row, row, 1});
        return static_cast<int>(m_groups.size()) - 1;
    }
    Group &found = m_groups[static_cast<std::size_t>(group)];
    m_next[static_cast<std::size_t>(found.Last)] = row;
    found.Last = row;
    ++found.Count;
    return group;
}

template <typename Hash, typename Same> void KeyIndex::Build(int rows, Hash hash, Same same)
{
    m_next.assign(static_cast<std::size_t>(rows), None);
    // With twice as many slots as rows, searches stay short even when all values differ.
    m_slots.assign(std::bit_ceil(static_cast<std::size_t>(rows) * 2 + 2), {});
    const std::size_t mask = m_slots.size() - 1;
    for (int row = 0; row < rows; ++row) {
        if (m_column.IsNull(row)) {
            m_nullGroup = Append(m_nullGroup, row);
            continue;
        }
        const auto at = static_cast<std::size_t>(row);
        std::size_t slot = hash(at) & mask;
        while (m_slots[slot].Group != None && !same(static_cast<std::size_t>(m_slots[slot].First), at))
            slot = (slot + 1) & mask;
        const int group = Append(m_slots[slot].Group, row);
        m_slots[slot] = {group, FirstRow(group)};
    }
}

template <typename Same> KeyIndex::Match KeyIndex::Find(std::size_t hash, Same same) const
{
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask; m_slots[slot].Group != None; slot = (slot + 1) & mask) {
        if (same(static_cast<std::size_t>(m_slots[slot].First)))
            return m_slots[slot];
    }
    return {};
}

KeyIndex::Match KeyIndex::FindInteger(qint64 value) const
{
    const std::size_t hash = mix(static_cast<quint64>(value));
    if (m_column.Type == TFieldType::Integer || m_column.Type == TFieldType::Boolean)
        return Find(hash, [&](std::size_t row) { return m_column.Ints[row] == value; });
    return Find(hash, [&](std::size_t row) { return m_column.Longs[row] == value; });
}

KeyIndex::Match KeyIndex::FindFloat(double value) const
{
    return Find(hashFloat(value), [&](std::size_t row) { return sameFloat(m_column.Doubles[row], value); });
}

KeyIndex::Match KeyIndex::FindText(QStringView value) const
{
    return Find(hashText(value, m_foldCase),
                [&](std::size_t row) { return sameText(m_column.Texts[row], value, m_foldCase); });
}

TextPool::TextPool(const Column &column)
{
    std::size_t characters = 0;
    for (const QString &text : column.Texts)
        characters += static_cast<std::size_t>(text.size());
    // Most catalogue texts are ASCII, so one byte per character is reserved.
    m_bytes.reserve(characters + column.Texts.size());
    m_starts.reserve(column.Texts.size() + 1);
    QStringEncoder encode(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    for (const QString &text : column.Texts) {
        const std::size_t start = m_bytes.size();
        m_starts.push_back(start);
        m_bytes.resize(start + static_cast<std::size_t>(encode.requiredSpace(text.size())) + 1);
        char *end = encode.appendToBuffer(m_bytes.data() + start, text);
        *end = '\0';
        const std::size_t size = static_cast<std::size_t>(end - m_bytes.data()) - start;
        m_longest = std::max(m_longest, size);
        m_zeroInside = m_zeroInside || std::memchr(m_bytes.data() + start, 0, size) != nullptr;
        m_bytes.resize(start + size + 1);
    }
    m_starts.push_back(m_bytes.size());
    m_bytes.shrink_to_fit();
}

int TextPool::Size(int row) const noexcept
{
    if (!m_zeroInside)
        return -1;
    const auto at = static_cast<std::size_t>(row);
    return static_cast<int>(m_starts[at + 1] - m_starts[at]) - 1;
}

VisiblePtr VisibleRows::OfBits(QBitArray bits)
{
    auto visible = std::make_shared<VisibleRows>();
    visible->Rows.reserve(static_cast<std::size_t>(bits.count(true)));
    // Skips bytes without a row.
    const auto *const bytes = reinterpret_cast<const unsigned char *>(bits.bits());
    for (int i = 0; i < (bits.size() + 7) / 8; ++i) {
        for (unsigned byte = bytes[i]; byte != 0; byte &= byte - 1)
            visible->Rows.push_back(i * 8 + std::countr_zero(byte));
    }
    visible->Bits = std::move(bits);
    return visible;
}

int VisibleRows::PositionOf(int row) const
{
    return static_cast<int>(std::lower_bound(Rows.begin(), Rows.end(), row) - Rows.begin());
}

int VisibleRows::FirstOf(const KeyIndex &index, int group) const
{
    constexpr int LongChain = 16;
    constexpr int Unknown = -2;
    int *known = nullptr;
    if (index.RowsIn(group) > LongChain) {
        std::vector<int> &firsts = m_firsts[&index];
        if (firsts.empty())
            firsts.assign(static_cast<std::size_t>(index.Groups()), Unknown);
        known = &firsts[static_cast<std::size_t>(group)];
        if (*known != Unknown)
            return *known;
    }
    int row = index.FirstRow(group);
    while (row != KeyIndex::None && !Contains(row))
        row = index.NextRow(row);
    if (known)
        *known = row;
    return row;
}

} // namespace Zel

// --- TTable

TTable::Private::Private(QList<TFieldDef> defs) : Defs(std::move(defs))
{
    const auto count = static_cast<std::size_t>(Defs.size());
    Columns.resize(count);
    m_indexes.resize(count);
    m_pools.resize(count);
    for (int i = 0; i < Defs.size(); ++i) {
        Columns[static_cast<std::size_t>(i)].Type = Defs[i].Type;
        // Of several equal names the first is found.
        if (!ByName.contains(Defs[i].Name))
            ByName.insert(Defs[i].Name, i);
        const QString folded = Defs[i].Name.toCaseFolded();
        if (!ByFoldedName.contains(folded))
            ByFoldedName.insert(folded, i);
    }
}

const Zel::KeyIndex &TTable::Private::Index(int column, bool foldCase) const
{
    const Zel::Column &data = Columns[static_cast<std::size_t>(column)];
    const std::size_t variant = foldCase && data.Type == TFieldType::String ? 1 : 0;
    auto &slot = m_indexes[static_cast<std::size_t>(column)][variant];
    if (!slot)
        slot = std::make_unique<Zel::KeyIndex>(data, Rows, variant == 1);
    return *slot;
}

const Zel::TextPool &TTable::Private::Pool(int column) const
{
    auto &slot = m_pools[static_cast<std::size_t>(column)];
    if (!slot)
        slot = std::make_unique<Zel::TextPool>(Columns[static_cast<std::size_t>(column)]);
    return *slot;
}

Zel::VisiblePtr TTable::Private::FindVisible(const QString &filter, TFilterOptions options) const
{
    for (const KnownFilter &known : m_filters) {
        if (known.Options == options && known.Text == filter) {
            if (Zel::VisiblePtr rows = known.Rows.lock())
                return rows;
        }
    }
    return nullptr;
}

void TTable::Private::RememberVisible(const QString &filter, TFilterOptions options,
                                      const Zel::VisiblePtr &rows) const
{
    std::erase_if(m_filters, [](const KnownFilter &known) { return known.Rows.expired(); });
    m_filters.push_back({filter, options, rows});
}

TTable::TTable(std::unique_ptr<Private> priv) : d(std::move(priv)) {}

TTable::~TTable() = default;

int TTable::RowCount() const noexcept
{
    return d->Rows;
}

int TTable::ColumnCount() const noexcept
{
    return static_cast<int>(d->Defs.size());
}

const QList<TFieldDef> &TTable::Defs() const noexcept
{
    return d->Defs;
}

int TTable::IndexOf(const QString &name) const
{
    const auto exact = d->ByName.constFind(name);
    if (exact != d->ByName.constEnd())
        return *exact;
    return d->ByFoldedName.value(name.toCaseFolded(), -1);
}

bool TTable::IsNull(int row, int column) const
{
    return d->Columns[static_cast<std::size_t>(column)].IsNull(row);
}

QVariant TTable::Value(int row, int column) const
{
    const Zel::Column &data = d->Columns[static_cast<std::size_t>(column)];
    if (data.IsNull(row))
        return {};
    const auto at = static_cast<std::size_t>(row);
    switch (data.Type) {
    case TFieldType::Integer:
        return data.Ints[at];
    case TFieldType::LargeInt:
        return data.Longs[at];
    case TFieldType::Float:
        return data.Doubles[at];
    case TFieldType::Currency:
        return QVariant::fromValue(Currency::fromRaw(data.Longs[at]));
    case TFieldType::Boolean:
        return data.Ints[at] != 0;
    case TFieldType::Date:
        return QDate::fromJulianDay(data.Longs[at]);
    case TFieldType::DateTime:
        return Zel::FromMoment(data.Longs[at]);
    case TFieldType::String:
        return data.Texts[at];
    }
    return {};
}

// --- TTableBuilder

namespace
{

/// Appends @p value to a column; false when the value cannot be converted to the column's type.
bool appendValue(Zel::Column &column, const QVariant &value)
{
    switch (column.Type) {
    case TFieldType::Integer:
        if (const auto number = Zel::ToInteger(value); number && std::in_range<qint32>(*number)) {
            column.Ints.push_back(static_cast<qint32>(*number));
            return true;
        }
        return false;
    case TFieldType::LargeInt:
        if (const auto number = Zel::ToInteger(value)) {
            column.Longs.push_back(*number);
            return true;
        }
        return false;
    case TFieldType::Float:
        if (const auto number = Zel::ToFloat(value)) {
            column.Doubles.push_back(*number);
            return true;
        }
        return false;
    case TFieldType::Currency:
        if (const auto amount = Zel::ToCurrency(value)) {
            column.Longs.push_back(amount->raw());
            return true;
        }
        return false;
    case TFieldType::Boolean:
        if (const auto truth = Zel::ToBoolean(value)) {
            column.Ints.push_back(*truth ? 1 : 0);
            return true;
        }
        return false;
    case TFieldType::Date:
        if (const auto date = Zel::ToDate(value)) {
            column.Longs.push_back(date->toJulianDay());
            return true;
        }
        return false;
    case TFieldType::DateTime:
        if (const auto moment = Zel::ToMoment(value)) {
            column.Longs.push_back(*moment);
            return true;
        }
        return false;
    case TFieldType::String:
        if (auto text = Zel::ToText(value)) {
            column.Texts.push_back(*std::move(text));
            return true;
        }
        return false;
    }
    return false;
}

void appendNull(Zel::Column &column, int row)
{
    switch (column.Type) {
    case TFieldType::Integer:
    case TFieldType::Boolean:
        column.Ints.push_back(0);
        break;
    case TFieldType::LargeInt:
    case TFieldType::Currency:
    case TFieldType::Date:
    case TFieldType::DateTime:
        column.Longs.push_back(0);
        break;
    case TFieldType::Float:
        column.Doubles.push_back(0.0);
        break;
    case TFieldType::String:
        column.Texts.emplace_back();
        break;
    }
    if (column.Nulls.size() <= row)
        column.Nulls.resize(row + 1);
    column.Nulls.setBit(row);
}

void removeValue(Zel::Column &column, int row)
{
    switch (column.Type) {
    case TFieldType::Integer:
    case TFieldType::Boolean:
        column.Ints.pop_back();
        break;
    case TFieldType::LargeInt:
    case TFieldType::Currency:
    case TFieldType::Date:
    case TFieldType::DateTime:
        column.Longs.pop_back();
        break;
    case TFieldType::Float:
        column.Doubles.pop_back();
        break;
    case TFieldType::String:
        column.Texts.pop_back();
        break;
    }
    if (column.Nulls.size() > row)
        column.Nulls.clearBit(row);
}

} // namespace

TTableBuilder::TTableBuilder(QList<TFieldDef> defs) : d(std::make_unique<TTable::Private>(std::move(defs))) {}

TTableBuilder::~TTableBuilder() = default;

void TTableBuilder::Reserve(int rows)
{
    const auto count = static_cast<std::size_t>(std::max(rows, 0));
    for (Zel::Column &column : d->Columns) {
        switch (column.Type) {
        case TFieldType::Integer:
        case TFieldType::Boolean:
            column.Ints.reserve(count);
            break;
        case TFieldType::LargeInt:
        case TFieldType::Currency:
        case TFieldType::Date:
        case TFieldType::DateTime:
            column.Longs.reserve(count);
            break;
        case TFieldType::Float:
            column.Doubles.reserve(count);
            break;
        case TFieldType::String:
            column.Texts.reserve(count);
            break;
        }
    }
}

void TTableBuilder::Append(const QVariant &value)
{
    if (m_column >= d->Defs.size())
        throw EDatabaseError(
            u"Row %1 has more values than the table's %2 columns."_s.arg(d->Rows + 1).arg(d->Defs.size()));
    Zel::Column &column = d->Columns[static_cast<std::size_t>(m_column)];
    if (Zel::IsNullValue(value))
        appendNull(column, d->Rows);
    else if (!appendValue(column, value))
        throw EConvertError(u"Column \"%1\" cannot take the value \"%2\"."_s.arg(d->Defs[m_column].Name,
                                                                                 Zel::ShownValue(value)));
    ++m_column;
}

void TTableBuilder::EndRow()
{
    if (m_column != d->Defs.size() || d->Defs.isEmpty())
        throw EDatabaseError(u"Row %1 has %2 values for the table's %3 columns."_s.arg(d->Rows + 1)
                                 .arg(m_column)
                                 .arg(d->Defs.size()));
    m_column = 0;
    ++d->Rows;
}

void TTableBuilder::AddRow(const QVariantList &values)
{
    try {
        for (const QVariant &value : values)
            Append(value);
        EndRow();
    } catch (...) {
        // Removes the values of the incomplete row, so that the builder can be used after an error.
        while (m_column > 0)
            removeValue(d->Columns[static_cast<std::size_t>(--m_column)], d->Rows);
        throw;
    }
}

TTablePtr TTableBuilder::Finish()
{
    if (m_column != 0)
        throw EDatabaseError(u"Row %1 has %2 values for the table's %3 columns."_s.arg(d->Rows + 1)
                                 .arg(m_column)
                                 .arg(d->Defs.size()));
    for (Zel::Column &column : d->Columns) {
        if (!column.Nulls.isEmpty())
            column.Nulls.resize(d->Rows);
    }
    QList<TFieldDef> defs = d->Defs;
    auto finished = std::exchange(d, std::make_unique<TTable::Private>(std::move(defs)));
    return std::make_shared<const TTable>(std::move(finished));
}
