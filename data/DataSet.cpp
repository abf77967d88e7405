#include "data/DataSet.h"

#include "data/Exceptions.h"
#include "data/FilterEngine_p.h"
#include "data/Table_p.h"
#include "data/Values_p.h"

#include <QMetaMethod>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

// A bookmark handle contains the number of its opening and the row.
static_assert(sizeof(TBookmark) == sizeof(quint64), "a bookmark handle holds 64 bits");

namespace
{

constexpr unsigned RowBits = 31;
constexpr quint64 RowMask = (quint64{1} << RowBits) - 1;

TBookmark packBookmark(quint64 opening, int row)
{
    return reinterpret_cast<TBookmark>((opening << RowBits) | (static_cast<quint64>(row) + 1));
}

quint64 openingOf(TBookmark bookmark)
{
    return reinterpret_cast<quint64>(bookmark) >> RowBits;
}

int rowOf(TBookmark bookmark)
{
    return static_cast<int>(reinterpret_cast<quint64>(bookmark) & RowMask) - 1;
}

/// The current row of a field of a closed dataset.
constexpr int NoRow = -1;

quint64 nextOpening()
{
    static quint64 last = 0;
    return ++last;
}

/// The key value of a look-up, converted to the column's type.
struct Key {
    enum class Kind { Nothing, Null, Whole, Real, Text };
    Kind Is = Kind::Nothing; ///< Nothing: no row can have this value.
    qint64 Whole = 0;
    double Real = 0.0;
    QString Text;
};

} // namespace

struct TDataSet::Private {
    TTablePtr Rows;          ///< nullptr when closed
    Zel::VisiblePtr Visible; ///< nullptr when every row is visible
    int Row = -1;            ///< table row of the cursor
    int Position = -1;       ///< position of the cursor among the visible rows
    int Count = 0;           ///< number of visible rows
    bool AtStart = true;
    bool AtEnd = true;
    bool Opening = false;
    bool Closing = false;
    quint64 Number = 0; ///< the number of this opening, unique among all datasets

    std::vector<int> HandedOut; ///< bookmarks not freed per table row; empty before the first bookmark
    int Outstanding = 0;
    int Lost = 0;

    QString FilterText;
    bool IsFiltered = false;
    TFilterOptions Options;
    std::shared_ptr<Zel::FilterEngine> Engine;

    int Disabled = 0;
    bool ChangedMeanwhile = false;
    bool Followed = false; ///< Whether DataChange has ever been connected.

    TParams Parameters;
    std::vector<std::unique_ptr<TField>> FieldList;

    /// Caches the columns of the last key or result fields, because loops repeat the same look-up.
    struct FieldNames {
        QString Text;
        std::vector<int> Columns;
    };
    mutable FieldNames Keys;
    mutable FieldNames Results;

    int RowAt(int position) const
    {
        return Visible ? Visible->Rows[static_cast<std::size_t>(position)] : position;
    }
    int PositionOf(int row) const { return Visible ? Visible->PositionOf(row) : row; }
    bool IsVisible(int row) const { return !Visible || Visible->Contains(row); }

    void StandAt(int position)
    {
        Position = position;
        Row = RowAt(position);
    }
    void StandOnRow(int row)
    {
        Row = row;
        Position = PositionOf(row);
        AtStart = AtEnd = false;
    }
    void StandOnFirst()
    {
        if (Count > 0) {
            StandAt(0);
        } else {
            Row = Position = -1;
        }
        AtStart = true;
        AtEnd = Count == 0;
    }
    void Show(Zel::VisiblePtr visible)
    {
        Visible = std::move(visible);
        Count = Visible ? static_cast<int>(Visible->Rows.size()) : Rows->RowCount();
    }
    /// Shows other rows of the same table; the current row stays current if it is visible.
    void Reshow(Zel::VisiblePtr visible)
    {
        const int row = Row;
        Show(std::move(visible));
        if (row >= 0 && IsVisible(row))
            StandOnRow(row);
        else
            StandOnFirst();
    }
    void Drop()
    {
        Lost += Outstanding;
        Outstanding = 0;
        HandedOut = {};
        for (const auto &field : FieldList)
            field->m_row = &NoRow;
        Rows.reset();
        Visible.reset();
        Row = Position = -1;
        Count = 0;
        AtStart = AtEnd = true;
        Number = 0;
        Keys = {};
        Results = {};
    }
    void Changed(TDataSet *self)
    {
        if (Disabled > 0)
            ChangedMeanwhile = true;
        else if (Followed)
            Q_EMIT self->DataChange();
    }
    const TTable::Private &Data() const { return Rows->data(); }
    const Zel::Column &ColumnAt(int column) const { return Data().Columns[static_cast<std::size_t>(column)]; }
    /// The first visible row that has each key in its column; -1 when there is none.
    int FindRow(const std::vector<int> &columns, const std::vector<Key> &keys, TLocateOptions options) const;
};

// --- TField

const QString &TField::FieldName() const noexcept
{
    return m_def.Name;
}

TFieldType TField::DataType() const noexcept
{
    return m_def.Type;
}

bool TField::IsNull() const
{
    const int row = *m_row;
    return row < 0 || m_column->IsNull(row);
}

void TField::RaiseReading(const QString &kind, const QVariant &value) const
{
    throw EConvertError(u"Field \"%1\" of dataset \"%2\": \"%3\" is not a valid %4."_s.arg(
        m_def.Name, Zel::ShownName(*m_owner), Zel::ShownValue(value), kind));
}

QString TField::AsString() const
{
    const int row = *m_row;
    if (row < 0)
        return {};
    const auto at = static_cast<std::size_t>(row);
    if (m_def.Type == TFieldType::String) [[likely]]
        return m_column->Texts[at]; // a null row holds the empty text
    if (m_column->IsNull(row))
        return {};
    switch (m_def.Type) {
    case TFieldType::Integer:
        return QString::number(m_column->Ints[at]);
    case TFieldType::LargeInt:
        return QString::number(m_column->Longs[at]);
    case TFieldType::Float:
        return Zel::FloatText(m_column->Doubles[at]);
    case TFieldType::Currency:
        return Currency::fromRaw(m_column->Longs[at]).toString();
    case TFieldType::Boolean:
        return Zel::BooleanText(m_column->Ints[at] != 0);
    case TFieldType::Date:
        return Zel::DateText(QDate::fromJulianDay(m_column->Longs[at]));
    case TFieldType::DateTime:
        return Zel::MomentText(m_column->Longs[at]);
    case TFieldType::String:
        break;
    }
    return {};
}

int TField::AsInteger() const
{
    const int row = *m_row;
    if (row < 0)
        return 0;
    const auto at = static_cast<std::size_t>(row);
    if (m_def.Type == TFieldType::Integer || m_def.Type == TFieldType::Boolean) [[likely]]
        return m_column->Ints[at]; // a null row holds 0
    if (m_column->IsNull(row))
        return 0;
    if (m_def.Type == TFieldType::Float || m_def.Type == TFieldType::Currency) {
        const double rounded = std::nearbyint(AsFloat());
        if (rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max())
            return static_cast<int>(rounded);
    } else if (const std::optional<qint64> number = Zel::ToInteger(AsVariant());
               number && std::in_range<int>(*number)) {
        return static_cast<int>(*number);
    }
    RaiseReading(u"integer value"_s, AsVariant());
}

double TField::AsFloat() const
{
    const int row = *m_row;
    if (row < 0 || m_column->IsNull(row))
        return 0.0;
    const auto at = static_cast<std::size_t>(row);
    switch (m_def.Type) {
    case TFieldType::Float:
        return m_column->Doubles[at];
    case TFieldType::Integer:
        return m_column->Ints[at];
    case TFieldType::Currency:
        return Currency::fromRaw(m_column->Longs[at]).toDouble();
    default:
        break;
    }
    if (const std::optional<double> number = Zel::ToFloat(AsVariant()))
        return *number;
    RaiseReading(u"floating point value"_s, AsVariant());
}

Currency TField::AsCurrency() const
{
    const int row = *m_row;
    if (row < 0 || m_column->IsNull(row))
        return {};
    if (m_def.Type == TFieldType::Currency)
        return Currency::fromRaw(m_column->Longs[static_cast<std::size_t>(row)]);
    if (const std::optional<Currency> amount = Zel::ToCurrency(AsVariant()))
        return *amount;
    RaiseReading(u"amount"_s, AsVariant());
}

bool TField::AsBoolean() const
{
    const int row = *m_row;
    if (row < 0 || m_column->IsNull(row))
        return false;
    if (m_def.Type == TFieldType::Boolean)
        return m_column->Ints[static_cast<std::size_t>(row)] != 0;
    if (const std::optional<bool> truth = Zel::ToBoolean(AsVariant()))
        return *truth;
    RaiseReading(u"Boolean value"_s, AsVariant());
}

QDate TField::AsDate() const
{
    const int row = *m_row;
    if (row < 0 || m_column->IsNull(row))
        return {};
    if (m_def.Type == TFieldType::Date)
        return QDate::fromJulianDay(m_column->Longs[static_cast<std::size_t>(row)]);
    if (const std::optional<QDate> date = Zel::ToDate(AsVariant()))
        return *date;
    RaiseReading(u"date"_s, AsVariant());
}

QVariant TField::AsVariant() const
{
    const int row = *m_row;
    return row < 0 ? QVariant() : m_owner->Table()->Value(row, m_index);
}

// --- TDataSet: opening and closing

TDataSet::TDataSet(QObject *parent) : QObject(parent), d(std::make_unique<Private>()) {}

TDataSet::~TDataSet() = default;

QString TDataSet::DisplayName() const
{
    return Zel::ShownName(*this);
}

bool TDataSet::Active() const noexcept
{
    return d->Rows != nullptr;
}

void TDataSet::SetActive(bool active)
{
    if (active)
        Open();
    else
        Close();
}

void TDataSet::RequireOpen() const
{
    if (!d->Rows)
        throw EDatabaseError(u"Dataset \"%1\" is not open."_s.arg(DisplayName()));
}

void TDataSet::RequireRows(const TTablePtr &table) const
{
    if (!table)
        throw EDatabaseError(u"Dataset \"%1\" has no rows to open."_s.arg(DisplayName()));
}

Zel::VisiblePtr TDataSet::Evaluate(const TTable &table, const QString &filter, TFilterOptions options) const
{
    const QString text = filter.trimmed();
    if (text.isEmpty())
        return nullptr;
    if (Zel::VisiblePtr known = table.data().FindVisible(text, options))
        return known;
    if (!d->Engine)
        d->Engine = Zel::FilterEngine::Acquire();
    Zel::VisiblePtr visible = d->Engine->Evaluate(table, text, options, DisplayName());
    table.data().RememberVisible(text, options, visible);
    return visible;
}

std::shared_ptr<const Zel::VisibleRows> TDataSet::CheckFilter(const TTable &table) const
{
    return d->IsFiltered ? Evaluate(table, d->FilterText, d->Options) : nullptr;
}

void TDataSet::PutInPlace(TTablePtr table, int row)
{
    Zel::VisiblePtr visible = CheckFilter(*table);
    d->Rows = std::move(table);
    d->Number = nextOpening();
    d->Show(std::move(visible));
    d->StandOnFirst();
    if (row >= 0 && row < d->Rows->RowCount() && d->IsVisible(row))
        d->StandOnRow(row);

    // The field objects survive a close, so that a caller that keeps a field too long reads another column or
    // nothing, but never freed memory.
    const TTable::Private &data = d->Data();
    while (d->FieldList.size() < data.Columns.size())
        d->FieldList.emplace_back(new TField(this));
    for (std::size_t i = 0; i < data.Columns.size(); ++i) {
        TField &field = *d->FieldList[i];
        field.m_row = &d->Row;
        field.m_column = &data.Columns[i];
        field.m_def = data.Defs[static_cast<qsizetype>(i)];
        field.m_index = static_cast<int>(i);
    }
}

void TDataSet::OpenOn(const std::function<TTablePtr()> &fetch, int row)
{
    {
        const bool insideHandler = d->Opening;
        const QScopedValueRollback opening(d->Opening, true);
        // A copy of the handler is run, here and below, because a handler may replace itself.
        if (const auto handler = BeforeOpen; handler && !insideHandler)
            handler(this);
        if (Active())
            return; // the handler has opened the dataset on its own rows
        TTablePtr table = fetch();
        RequireRows(table);
        PutInPlace(std::move(table), row);
    }
    if (const auto handler = AfterOpen)
        handler(this);
    d->Changed(this);
}

void TDataSet::Open()
{
    if (!Active() && !d->Opening)
        OpenOn([this] { return FetchTable(); }, -1);
}

void TDataSet::InstallTable(TTablePtr table, int row)
{
    RequireRows(table);
    const Zel::VisiblePtr checked = CheckFilter(*table);
    Close();
    OpenOn([&] { return std::move(table); }, row);
}

void TDataSet::Close()
{
    if (!Active() || d->Closing)
        return;
    {
        const QScopedValueRollback closing(d->Closing, true);
        if (const auto handler = BeforeClose)
            handler(this);
        d->Drop();
    }
    if (const auto handler = AfterClose)
        handler(this);
    d->Changed(this);
}

bool TDataSet::Reopen()
{
    return false;
}

void TDataSet::Release() {}

// --- TDataSet: the cursor

void TDataSet::First()
{
    RequireOpen();
    d->StandOnFirst();
    d->Changed(this);
}

void TDataSet::Next()
{
    RequireOpen();
    if (d->Position + 1 < d->Count) {
        d->StandAt(d->Position + 1);
        d->AtStart = false;
    } else {
        d->AtEnd = true;
    }
    d->Changed(this);
}

void TDataSet::Prior()
{
    RequireOpen();
    if (d->Position > 0) {
        d->StandAt(d->Position - 1);
        d->AtEnd = false;
    } else {
        d->AtStart = true;
    }
    d->Changed(this);
}

void TDataSet::Last()
{
    RequireOpen();
    if (d->Count > 0)
        d->StandAt(d->Count - 1);
    d->AtStart = d->Count == 0;
    d->AtEnd = true;
    d->Changed(this);
}

bool TDataSet::Eof() const
{
    return d->AtEnd;
}

bool TDataSet::Bof() const
{
    return d->AtStart;
}

bool TDataSet::IsEmpty() const
{
    RequireOpen();
    return d->Count == 0;
}

int TDataSet::RecordCount() const
{
    RequireOpen();
    return d->Count;
}

int TDataSet::RecNo() const
{
    RequireOpen();
    return d->Position + 1;
}

void TDataSet::SetRecNo(int recNo)
{
    RequireOpen();
    if (d->Count == 0)
        return;
    d->StandAt(std::clamp(recNo, 1, d->Count) - 1);
    d->AtStart = d->AtEnd = false;
    d->Changed(this);
}

// --- TDataSet: fields

int TDataSet::FieldCount() const
{
    return d->Rows ? d->Rows->ColumnCount() : 0;
}

TField *TDataSet::Fields(int index) const
{
    if (index < 0 || index >= FieldCount())
        throw EListError(u"Dataset \"%1\": field index %2 is outside its %3 fields."_s.arg(DisplayName())
                             .arg(index)
                             .arg(FieldCount()));
    return d->FieldList[static_cast<std::size_t>(index)].get();
}

TField *TDataSet::FieldByName(const QString &name) const
{
    RequireOpen();
    if (TField *field = FindField(name))
        return field;
    throw EDatabaseError(u"Dataset \"%1\": field \"%2\" not found."_s.arg(DisplayName(), name));
}

TField *TDataSet::FindField(const QString &name) const
{
    const int index = d->Rows ? d->Rows->IndexOf(name) : -1;
    return index < 0 ? nullptr : d->FieldList[static_cast<std::size_t>(index)].get();
}

QList<TFieldDef> TDataSet::FieldDefs() const
{
    return d->Rows ? d->Rows->Defs() : QList<TFieldDef>();
}

// --- TDataSet: bookmarks

TBookmark TDataSet::GetBookmark()
{
    if (d->Row < 0)
        return nullptr;
    if (d->HandedOut.empty())
        d->HandedOut.resize(static_cast<std::size_t>(d->Rows->RowCount()), 0);
    ++d->HandedOut[static_cast<std::size_t>(d->Row)];
    ++d->Outstanding;
    return packBookmark(d->Number, d->Row);
}

void TDataSet::GotoBookmark(TBookmark bookmark)
{
    RequireOpen();
    if (!BookmarkValid(bookmark))
        throw EDatabaseError(u"Dataset \"%1\": the bookmark is not valid."_s.arg(DisplayName()));
    const int row = rowOf(bookmark);
    if (!d->IsVisible(row))
        throw EDatabaseError(
            u"Dataset \"%1\": the bookmark's row does not pass the filter."_s.arg(DisplayName()));
    d->StandOnRow(row);
    d->Changed(this);
}

void TDataSet::FreeBookmark(TBookmark bookmark)
{
    if (!BookmarkValid(bookmark) || d->HandedOut.empty())
        return;
    int &out = d->HandedOut[static_cast<std::size_t>(rowOf(bookmark))];
    if (out > 0) {
        --out;
        --d->Outstanding;
    }
}

bool TDataSet::BookmarkValid(TBookmark bookmark) const
{
    return bookmark && d->Rows && openingOf(bookmark) == d->Number && rowOf(bookmark) >= 0 &&
           rowOf(bookmark) < d->Rows->RowCount();
}

int TDataSet::BookmarksHandedOut() const noexcept
{
    return d->Outstanding;
}

int TDataSet::BookmarksLost() const noexcept
{
    return d->Lost;
}

// --- TDataSet: the filter

void TDataSet::ApplyFilter(const QString &filter, bool filtered, TFilterOptions options)
{
    if (filter == d->FilterText && filtered == d->IsFiltered && options == d->Options)
        return;
    // The rows are evaluated before anything is stored, so that an invalid filter changes nothing.
    const bool showsOthers = Active() && (filtered || d->IsFiltered);
    Zel::VisiblePtr visible = showsOthers && filtered ? Evaluate(*d->Rows, filter, options) : nullptr;
    d->FilterText = filter;
    d->IsFiltered = filtered;
    d->Options = options;
    if (!showsOthers)
        return;
    d->Reshow(std::move(visible));
    d->Changed(this);
}

QString TDataSet::Filter() const
{
    return d->FilterText;
}

void TDataSet::SetFilter(const QString &filter)
{
    ApplyFilter(filter, d->IsFiltered, d->Options);
}

bool TDataSet::Filtered() const noexcept
{
    return d->IsFiltered;
}

void TDataSet::SetFiltered(bool filtered)
{
    ApplyFilter(d->FilterText, filtered, d->Options);
}

TFilterOptions TDataSet::FilterOptions() const noexcept
{
    return d->Options;
}

void TDataSet::SetFilterOptions(TFilterOptions options)
{
    ApplyFilter(d->FilterText, d->IsFiltered, options);
}

void TDataSet::TakeFilterOf(const TDataSet &source)
{
    d->FilterText = source.d->FilterText;
    d->IsFiltered = source.d->IsFiltered;
    d->Options = source.d->Options;
}

void TDataSet::DropFilter()
{
    d->FilterText.clear();
    d->IsFiltered = false;
    d->Options = {};
}

// --- TDataSet: look-ups

namespace
{

Key readKey(const Zel::Column &column, const QVariant &value)
{
    Key key;
    const auto whole = [&](std::optional<qint64> number) {
        if (number) {
            key.Is = Key::Kind::Whole;
            key.Whole = *number;
        }
    };
    if (Zel::IsNullValue(value)) {
        key.Is = Key::Kind::Null;
        return key;
    }
    switch (column.Type) {
    case TFieldType::Integer:
    case TFieldType::LargeInt:
        whole(Zel::ToInteger(value));
        break;
    case TFieldType::Currency:
        if (const std::optional<Currency> amount = Zel::ToCurrency(value))
            whole(amount->raw());
        break;
    case TFieldType::Boolean:
        if (const std::optional<bool> truth = Zel::ToBoolean(value))
            whole(*truth ? 1 : 0);
        break;
    case TFieldType::Date:
        if (const std::optional<QDate> date = Zel::ToDate(value))
            whole(date->toJulianDay());
        break;
    case TFieldType::DateTime:
        whole(Zel::ToMoment(value));
        break;
    case TFieldType::Float:
        if (const std::optional<double> number = Zel::ToFloat(value)) {
            key.Is = Key::Kind::Real;
            key.Real = *number;
        }
        break;
    case TFieldType::String:
        if (std::optional<QString> text = Zel::ToText(value)) {
            key.Is = Key::Kind::Text;
            key.Text = *std::move(text);
        }
        break;
    }
    return key;
}

Zel::KeyIndex::Match find(const Zel::KeyIndex &index, const Key &key)
{
    switch (key.Is) {
    case Key::Kind::Null:
        return index.FindNull();
    case Key::Kind::Whole:
        return index.FindInteger(key.Whole);
    case Key::Kind::Real:
        return index.FindFloat(key.Real);
    case Key::Kind::Text:
        return index.FindText(key.Text);
    case Key::Kind::Nothing:
        break;
    }
    return {};
}

bool hasKey(const Zel::Column &column, int row, const Key &key, TLocateOptions options)
{
    if (key.Is == Key::Kind::Null || column.IsNull(row))
        return key.Is == Key::Kind::Null && column.IsNull(row);
    const auto at = static_cast<std::size_t>(row);
    switch (key.Is) {
    case Key::Kind::Whole:
        return key.Whole == (column.Ints.empty() ? column.Longs[at] : qint64{column.Ints[at]});
    case Key::Kind::Real:
        return key.Real == column.Doubles[at];
    case Key::Kind::Text: {
        const Qt::CaseSensitivity cases =
            options.testFlag(TLocateOption::CaseInsensitive) ? Qt::CaseInsensitive : Qt::CaseSensitive;
        return options.testFlag(TLocateOption::PartialKey) ? column.Texts[at].startsWith(key.Text, cases)
                                                           : column.Texts[at].compare(key.Text, cases) == 0;
    }
    case Key::Kind::Null:
    case Key::Kind::Nothing:
        break;
    }
    return false;
}

} // namespace

const std::vector<int> &TDataSet::ColumnsOf(const QString &names, bool results) const
{
    Private::FieldNames &known = results ? d->Results : d->Keys;
    if (known.Columns.empty() || known.Text != names) {
        std::vector<int> columns;
        for (const QStringView part : QStringView(names).split(u';')) {
            const QString name = part.trimmed().toString();
            const int column = d->Rows->IndexOf(name);
            if (column < 0)
                throw EDatabaseError(u"Dataset \"%1\": field \"%2\" not found."_s.arg(DisplayName(), name));
            columns.push_back(column);
        }
        known = {names, std::move(columns)};
    }
    return known.Columns;
}

int TDataSet::FindRow(const QString &keyFields, const QVariant &keyValues, TLocateOptions options) const
{
    RequireOpen();
    const std::vector<int> &columns = ColumnsOf(keyFields, false);
    const bool isList =
        keyValues.typeId() == QMetaType::QVariantList || keyValues.typeId() == QMetaType::QStringList;
    const bool partial = options.testFlag(TLocateOption::PartialKey);
    if (columns.size() == 1 && !isList && !(partial && d->ColumnAt(columns[0]).Type == TFieldType::String))
        [[likely]] {
        const Zel::KeyIndex &index =
            d->Data().Index(columns[0], options.testFlag(TLocateOption::CaseInsensitive));
        const Zel::KeyIndex::Match match = find(index, readKey(d->ColumnAt(columns[0]), keyValues));
        return d->Visible && match.Group != Zel::KeyIndex::None ? d->Visible->FirstOf(index, match.Group)
                                                                : match.First;
    }
    const QVariantList values = isList ? keyValues.toList() : QVariantList{keyValues};
    if (static_cast<std::size_t>(values.size()) != columns.size())
        throw EDatabaseError(u"Dataset \"%1\": %2 values for the key fields \"%3\"."_s.arg(DisplayName())
                                 .arg(values.size())
                                 .arg(keyFields));
    std::vector<Key> keys;
    keys.reserve(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        keys.push_back(readKey(d->ColumnAt(columns[i]), values[static_cast<qsizetype>(i)]));
    return d->FindRow(columns, keys, options);
}

int TDataSet::Private::FindRow(const std::vector<int> &columns, const std::vector<Key> &keys,
                               TLocateOptions options) const
{
    const bool foldCase = options.testFlag(TLocateOption::CaseInsensitive);
    const bool partial = options.testFlag(TLocateOption::PartialKey);
    const auto fits = [&](int row) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (!hasKey(ColumnAt(columns[i]), row, keys[i], options))
                return false;
        }
        return IsVisible(row);
    };
    // Only the rows with the rarest key are compared. A partial text key has no group in the index.
    const Zel::KeyIndex *rarest = nullptr;
    int group = Zel::KeyIndex::None;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (partial && keys[i].Is == Key::Kind::Text)
            continue;
        const Zel::KeyIndex &index = Data().Index(columns[i], foldCase);
        const int found = find(index, keys[i]).Group;
        if (found == Zel::KeyIndex::None)
            return -1;
        if (!rarest || index.RowsIn(found) < rarest->RowsIn(group)) {
            rarest = &index;
            group = found;
        }
    }
    if (rarest) {
        int row = rarest->FirstRow(group);
        while (row != Zel::KeyIndex::None && !fits(row))
            row = rarest->NextRow(row);
        return row;
    }
    for (int position = 0; position < Count; ++position) {
        if (fits(RowAt(position)))
            return RowAt(position);
    }
    return -1;
}

bool TDataSet::Locate(const QString &keyFields, const QVariant &keyValues, TLocateOptions options)
{
    const int row = FindRow(keyFields, keyValues, options);
    if (row < 0)
        return false;
    d->StandOnRow(row);
    d->Changed(this);
    return true;
}

QVariant TDataSet::Lookup(const QString &keyFields, const QVariant &keyValues,
                          const QString &resultFields) const
{
    RequireOpen();
    const std::vector<int> &columns = ColumnsOf(resultFields, true);
    const int row = FindRow(keyFields, keyValues, {});
    if (row < 0)
        return {};
    if (columns.size() == 1)
        return d->Rows->Value(row, columns[0]);
    QVariantList values;
    values.reserve(static_cast<qsizetype>(columns.size()));
    for (const int column : columns)
        values.append(d->Rows->Value(row, column));
    return values;
}

// --- TDataSet: the rest

void TDataSet::DisableControls()
{
    ++d->Disabled;
}

void TDataSet::EnableControls()
{
    if (d->Disabled == 0 || --d->Disabled > 0)
        return;
    if (std::exchange(d->ChangedMeanwhile, false))
        d->Changed(this);
}

bool TDataSet::ControlsDisabled() const noexcept
{
    return d->Disabled > 0;
}

TParams &TDataSet::Params() noexcept
{
    return d->Parameters;
}

const TParams &TDataSet::Params() const noexcept
{
    return d->Parameters;
}

TTablePtr TDataSet::Table() const
{
    return d->Rows;
}

int TDataSet::CurrentTableRow() const noexcept
{
    return d->Row;
}

void TDataSet::connectNotify(const QMetaMethod &signal)
{
    // Without a connection, a walk over many rows need not emit a signal per row. The flag is not reset on
    // disconnection: querying the connections in disconnectNotify would deadlock when the dataset and the
    // disconnecting receiver share a lock of Qt.
    if (signal == QMetaMethod::fromSignal(&TDataSet::DataChange))
        d->Followed = true;
}
