#include "dataviews/ill_Misc.h"

#include "data/Exceptions.h"
#include "data/Format.h"
#include "dataviews/SystemViews_p.h"
#include "toolkit/ItemsUpdate.h"
#include "toolkit/TScreen.h"

#include <QCoreApplication>
#include <QPointer>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

[[noreturn]] void RaiseIndex(qsizetype index)
{
    throw EListError(QCoreApplication::translate("ill_Misc", "List index out of bounds (%1)").arg(index));
}

template <typename List> decltype(auto) ItemOf(const List &list, qsizetype index)
{
    if (index < 0 || index >= list.size())
        RaiseIndex(index);
    return list.at(index);
}

/// Looks up the fields that a fill reads, once per opening of the dataset. A host's handler may close, reopen
/// or destroy the dataset during a fill. The fields are then looked up again, and the look-up in a closed
/// dataset throws.
class FieldReader
{
public:
    explicit FieldReader(TDataSet *dataSet) : m_dataSet(dataSet), m_table(dataSet->Table()) {}

    TDataSet *DataSet() const
    {
        if (!m_dataSet)
            throw EDatabaseError(QCoreApplication::translate(
                "ill_Misc", "The dataset was destroyed while a view was filled from it"));
        return m_dataSet;
    }
    /// The field @p name; @p known caches it for the next rows.
    TField *Field(TField *&known, const QString &name) const
    {
        if (!known)
            known = DataSet()->FieldByName(name);
        return known;
    }
    bool Alive() const { return m_dataSet != nullptr; }
    /// Whether the dataset was reopened, so that cached fields must be discarded.
    bool Reopened()
    {
        if (m_dataSet && m_dataSet->Table() == m_table)
            return false;
        m_table = DataSet()->Table();
        return true;
    }

private:
    QPointer<TDataSet> m_dataSet;
    TTablePtr m_table;
};

int RoundHalfEven(double value)
{
    const double down = std::floor(value);
    const double rest = value - down;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(down, 2.0) != 0.0);
    return static_cast<int>(up ? down + 1 : down);
}

} // namespace

TCharSet Zel::CharSet(const QString &characters)
{
    TCharSet set;
    for (const QChar c : characters) {
        if (c.unicode() < set.size())
            set.set(c.unicode());
    }
    return set;
}

// ------------------------------------------------------------------------------------------------ datasets

void misc_RefreshIT(TDataSet *DataSet, bool KeepPosition)
{
    Screen().SetCursor(TCursor::crSQLWait);
    if (DataSet) {
        // Reopening invalidates bookmarks, so the position is kept as a row number.
        const int place = KeepPosition && DataSet->Active() ? DataSet->RecNo() : 0;
        DataSet->DisableControls();
        // The dataset stays closed after a procedure that returns no rows.
        if (DataSet->Reopen() && place > 0 && DataSet->Active())
            DataSet->SetRecNo(place);
        DataSet->EnableControls();
    }
    Screen().SetCursor(TCursor::crDefault);
}

void misc_CloseTheQuery(TDataSet *DataSet)
{
    if (DataSet)
        DataSet->Release();
}

// ----------------------------------------------------------------------------------------- texts and values

QString misc_CalcFullName(const QString &A, const QString &B)
{
    const QString second = B.trimmed();
    return second.isEmpty() ? A.trimmed() : A.trimmed() + u", "_s + second;
}

QString misc_ConvertListToStr(const QStringList &List, const QString &Separator)
{
    QString text;
    for (const QString &item : List)
        text += item + Separator;
    text = text.trimmed();
    if (!text.isEmpty() && text.last(1) == Separator)
        text.chop(1);
    return text.trimmed();
}

QStringList misc_ConvertStrToList(const QString &S, QChar Separator)
{
    QStringList list;
    QStringView text = QStringView(S).trimmed();
    qsizetype stripped = 0;
    while (text.endsWith(Separator)) {
        text.chop(1);
        ++stripped;
    }
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf(Separator);
        list.append(text.left(end < 0 ? text.size() : end).trimmed().toString());
        text = end < 0 ? QStringView() : text.mid(end + 1);
    }
    for (; stripped > 0; --stripped)
        list.append(QString());
    return list;
}

QString misc_ExecFunction(int Code, const QString &Value)
{
    switch (Code) {
    case 0:
        return Value;
    case 1:
        return FormatFloat(u"#,#0.00"_s, StrToFloat(Value));
    default:
        return {};
    }
}

QString misc_RemoveChar(const QString &S, const TCharSet &Chars, bool RemoveListed)
{
    QString kept;
    if (Chars.none())
        return kept;
    kept.reserve(S.size());
    for (const QChar c : S) {
        const bool listed = c.unicode() < Chars.size() && Chars.test(c.unicode());
        if (listed != RemoveListed)
            kept.append(c);
    }
    return kept;
}

// ---------------------------------------------------------------------------------------------- list views

namespace
{

/// The state of one fill of a list view. Field names and codes are evaluated at the first row, so that a
/// wrong one causes no error for an empty dataset.
class ListFill
{
public:
    ListFill(TDataSet *dataSet, const QString &fieldList, const QString &formatList,
             const QString &distinctField, bool checks, int imageIndex, const QString &imageField)
        : m_reader(dataSet), m_names(misc_ConvertStrToList(fieldList, QLatin1Char(';'))),
          m_formats(misc_ConvertStrToList(formatList, QLatin1Char(';'))), m_distinctField(distinctField),
          m_imageField(imageField), m_checks(checks), m_imageIndex(imageIndex),
          m_fields(static_cast<std::size_t>(m_names.size()), nullptr),
          m_codes(static_cast<std::size_t>(m_names.size()))
    {
    }

    void AddRows(TListItems &items)
    {
        m_reader.DataSet()->First();
        for (; !m_reader.DataSet()->Eof(); m_reader.DataSet()->Next()) {
            Refresh();
            if (RepeatsTheRowBefore())
                continue;
            TListItem *item = items.Add();
            Refresh();
            if (item) // otherwise a handler of the host deleted the item
                Show(*item);
        }
    }

private:
    void Refresh()
    {
        if (!m_reader.Reopened())
            return;
        std::fill(m_fields.begin(), m_fields.end(), nullptr);
        m_distinct = m_image = nullptr;
    }
    bool RepeatsTheRowBefore()
    {
        if (m_distinctField.trimmed().isEmpty())
            return false;
        QString now = m_reader.Field(m_distinct, m_distinctField)->AsString();
        return now == std::exchange(m_last, now);
    }
    QString Value(qsizetype index)
    {
        const QString &name = ItemOf(m_names, index);
        return m_reader.Field(m_fields[static_cast<std::size_t>(index)], name)->AsString();
    }
    QString Shown(qsizetype index)
    {
        if (index >= m_names.size()) {
            ItemOf(m_formats, index);
            RaiseIndex(index);
        }
        std::optional<int> &code = m_codes[static_cast<std::size_t>(index)];
        if (!code)
            code = StrToInt(ItemOf(m_formats, index));
        return misc_ExecFunction(*code, Value(index));
    }
    void Show(TListItem &item)
    {
        const qsizetype first = m_checks ? 1 : 0;
        if (m_checks)
            item.SetChecked(Value(0) == "1"_L1);
        item.SetCaption(Shown(first));
        QStringList subItems;
        subItems.reserve(std::max<qsizetype>(0, m_names.size() - first - 1));
        for (qsizetype j = first + 1; j < m_names.size(); ++j)
            subItems.append(Shown(j));
        item.SetSubItems(subItems);
        const bool hasImageField = m_imageIndex == -1 && !m_imageField.trimmed().isEmpty();
        item.SetImageIndex(hasImageField ? m_reader.Field(m_image, m_imageField)->AsInteger() : m_imageIndex);
        item.SetData(m_reader.DataSet()->GetBookmark());
    }

    FieldReader m_reader;
    const QStringList m_names;
    const QStringList m_formats;
    const QString m_distinctField;
    const QString m_imageField;
    const bool m_checks;
    const int m_imageIndex;
    std::vector<TField *> m_fields;
    std::vector<std::optional<int>> m_codes;
    TField *m_distinct = nullptr;
    TField *m_image = nullptr;
    QString m_last; ///< the distinct field's value in the row before
};

} // namespace

void misc_BuildListView(TListView &ListView, TDataSet *DataSet, const QString &Filter,
                        const QString &FieldList, const QString &FormatList, const QString &DistinctField,
                        bool UseCheckBox, int ImageIndex, const QString &ImageField)
{
    if (!DataSet->Active())
        return;
    Screen().SetCursor(TCursor::crHourGlass);
    misc_FreeListBookMarks(ListView, DataSet);
    TListItems &items = ListView.Items();
    items.BeginUpdate();
    items.Clear();
    DataSet->SetFiltered(false);
    DataSet->SetFilter(Filter);
    DataSet->SetFiltered(!Filter.trimmed().isEmpty());
    DataSet->SetFilterOptions(TFilterOption::CaseInsensitive);
    ListFill(DataSet, FieldList, FormatList, DistinctField, UseCheckBox && ListView.CheckBoxes(), ImageIndex,
             ImageField)
        .AddRows(items);
    DataSet->SetFiltered(false);
    items.EndUpdate();
    Screen().SetCursor(TCursor::crDefault);
}

void misc_FreeListBookMarks(TListView &ListView, TDataSet *DataSet)
{
    const TListItems &items = ListView.Items();
    for (int i = 0; i < items.Count(); ++i) {
        const TBookmark bookmark = items[i]->Data();
        if (bookmark && DataSet->BookmarkValid(bookmark))
            DataSet->FreeBookmark(bookmark);
    }
}

void misc_ClearListView(TListView *ListView)
{
    const Zel::ItemsUpdate update(ListView->Items());
    ListView->Items().Clear();
}

void misc_SizeListViewColumns(TListView &ListView)
{
    const TWindowUpdateLock lock(&ListView);
    const int last = ListView.ColumnCount() - 1;
    int total = 0;
    for (int column = 0; column <= last; ++column)
        total += ListView.ColumnWidth(column);
    const int client = ListView.ClientWidth();
    // Without visible columns or space, the widths stay: columns of width 0 would lose their proportions.
    if (total == 0 || client <= 0)
        return;
    int used = 0;
    for (int column = 0; column < last; ++column) {
        const int percent = RoundHalfEven(double(ListView.ColumnWidth(column)) / total * 100);
        const int width = RoundHalfEven(client * (percent / 100.0));
        ListView.SetColumnWidth(column, width);
        used += width;
    }
    if (ListView.ColumnWidth(last) != 0)
        ListView.SetColumnWidth(last, client - used);
}

void misc_DeleteListViewColumn(int WindowHandle, int Index)
{
    // Handles are unsigned; the upper half of their range arrives as negative numbers.
    QWidget *window = QWidget::find(static_cast<WId>(static_cast<unsigned int>(WindowHandle)));
    if (auto *view = qobject_cast<TListView *>(window)) {
        TListView::DeleteColumnEvent message(Index);
        QCoreApplication::sendEvent(view, &message);
    } else {
        Zel::SystemViews::DeleteColumn(WindowHandle, Index);
    }
}

void misc_ListViewFocus(TListView &ListView)
{
    if (ListView.Items().Count() == 0)
        return;
    ListView.Items()[0]->SetSelected(true);
    ListView.SetFocused(ListView.SelectedItem());
}

void misc_ResetListViewFocus(TListView *ListView, int Index)
{
    const int count = ListView->Items().Count();
    const int chosen = Index >= count - 1 ? Index - 1 : Index;
    if (chosen >= 0 && chosen < count)
        ListView->SetSelected(ListView->Items()[chosen]);
}

bool misc_DoesListItemExist(const TListView *ListView, const QString &Text)
{
    const QString wanted = Text.trimmed().toLower();
    const TListItems &items = ListView->Items();
    for (int i = 0; i < items.Count(); ++i) {
        if (items[i]->Caption().trimmed().toLower() == wanted)
            return true;
    }
    return false;
}

double misc_TotalListViewColumn(const TListView *ListView, int Column, const TCharSet &Chars)
{
    const TListItems &items = ListView->Items();
    double total = 0;
    if (items.Count() == 0 || ListView->ColumnCount() < Column)
        return total;
    for (int i = 0; i < items.Count(); ++i) {
        QString text = Column == 0 ? items[i]->Caption() : ItemOf(items[i]->SubItems(), Column - 1);
        if (text.trimmed().isEmpty())
            text = u"0.00"_s;
        total += StrToFloat(misc_RemoveChar(text, Chars, true));
    }
    return total;
}

// --------------------------------------------------------------------------------------------- combo boxes

void misc_BuildComboBox(TComboBox &ComboBox, TDataSet *DataSet, const QString &DisplayField, bool AddAll,
                        const QString &MatchField, const QString &MatchValue)
{
    misc_RefreshIT(DataSet, false);
    TComboItems &items = ComboBox.Items();
    const Zel::ItemsUpdate update(items);
    items.Clear();
    if (AddAll)
        items.AddObject(QCoreApplication::translate("ill_Misc", "ALL"), nullptr);
    const QString wanted = MatchValue.toLower();
    FieldReader reader(DataSet);
    TField *display = nullptr;
    TField *match = nullptr;
    int index = 0;
    for (int i = 0; !reader.DataSet()->Eof(); ++i) {
        if (reader.Reopened())
            display = match = nullptr;
        const QString text = reader.Field(display, DisplayField)->AsString();
        items.AddObject(text, DataSet->GetBookmark());
        if (!MatchField.isEmpty() && reader.Field(match, MatchField)->AsString().toLower() == wanted)
            index = AddAll ? i + 1 : i;
        DataSet->Next();
    }
    ComboBox.SetItemIndex(index);
}

void misc_FreeComboBookMarks(TComboBox &ComboBox, TDataSet *DataSet)
{
    const TComboItems &items = ComboBox.Items();
    Zel::SystemViews::WriteDebugLine(QByteArray("x=" + QByteArray::number(items.Count())).constData());
    for (int i = 0; i < items.Count(); ++i) {
        const auto bookmark = static_cast<TBookmark>(items.Object(i));
        if (bookmark && DataSet->BookmarkValid(bookmark))
            DataSet->FreeBookmark(bookmark);
    }
}

// ---------------------------------------------------------------------------------------------- tree views

namespace
{

/// The state of one fill of a tree.
class TreeFill
{
public:
    TreeFill(TTreeView &treeView, const QList<TDataSet *> &dataSets, const QStringList &linkFields,
             const QStringList &captionFields, const QList<int> &imageIndexes)
        : m_nodes(treeView.Items()), m_linkFields(linkFields), m_captionFields(captionFields),
          m_imageIndexes(imageIndexes)
    {
        m_levels.reserve(static_cast<std::size_t>(dataSets.size()));
        for (TDataSet *dataSet : dataSets)
            m_levels.emplace_back(dataSet);
    }

    void BuildRoots()
    {
        Level &root = m_levels.front();
        root.Reader.DataSet()->First();
        while (!root.Reader.DataSet()->Eof()) {
            BookmarkOf mark(root);
            const QString caption = root.Value(root.Caption, ItemOf(m_captionFields, 0));
            TTreeNode *node = m_nodes.AddObject(caption, mark.Release());
            root.Refresh();
            if (node) {
                SetPictures(*node, 0);
                BuildTreeLevel(node, 1);
                root.Refresh();
            }
            root.Reader.DataSet()->Next();
        }
    }

private:
    struct Level {
        explicit Level(TDataSet *dataSet) : Reader(dataSet) {}
        QString Value(TField *&field, const QString &name) { return Reader.Field(field, name)->AsString(); }
        void Refresh()
        {
            if (Reader.Reopened())
                Caption = ParentKey = OwnKey = nullptr;
        }
        FieldReader Reader;
        TField *Caption = nullptr;
        TField *ParentKey = nullptr;     // the first field of the next level's pair, read from this level
        TField *OwnKey = nullptr;        // the first field of this level's pair, read from this level
        std::optional<QStringList> Pair; // links this level to the level above
    };

    /// A bookmark that is freed unless a node takes it.
    class BookmarkOf
    {
    public:
        explicit BookmarkOf(Level &level) : m_level(level), m_mark(level.Reader.DataSet()->GetBookmark()) {}
        ~BookmarkOf()
        {
            if (m_mark && m_level.Reader.Alive())
                m_level.Reader.DataSet()->FreeBookmark(m_mark);
        }
        BookmarkOf(const BookmarkOf &) = delete;
        BookmarkOf &operator=(const BookmarkOf &) = delete;
        TBookmark Release() { return std::exchange(m_mark, nullptr); }
        TBookmark Mark() const { return m_mark; }

    private:
        Level &m_level;
        TBookmark m_mark;
    };

    void SetPictures(TTreeNode &node, int level) const
    {
        node.SetImageIndex(ItemOf(m_imageIndexes, level));
        node.SetSelectedIndex(node.ImageIndex());
    }
    const QStringList &PairOf(int level);
    void BuildTreeLevel(TTreeNode *parentNode, int level);

    TTreeNodes &m_nodes;
    const QStringList &m_linkFields;
    const QStringList &m_captionFields;
    const QList<int> &m_imageIndexes;
    std::vector<Level> m_levels;
};

} // namespace

const QStringList &TreeFill::PairOf(int level)
{
    std::optional<QStringList> &pair = m_levels[static_cast<std::size_t>(level)].Pair;
    if (!pair)
        pair = misc_ConvertStrToList(ItemOf(m_linkFields, level - 1), QLatin1Char(';'));
    return *pair;
}

void TreeFill::BuildTreeLevel(TTreeNode *parentNode, int level)
{
    const int last = static_cast<int>(m_levels.size()) - 1;
    // Nothing is below the last level, and its pair may be missing from the list.
    if (level > last)
        return;
    const QStringList &pair = PairOf(level);
    if (pair.isEmpty())
        return;
    Level &above = m_levels[static_cast<std::size_t>(level) - 1];
    Level &own = m_levels[static_cast<std::size_t>(level)];
    const QString parentValue = above.Value(above.ParentKey, pair.first());
    if (pair.size() < 2)
        return;
    own.Refresh();
    if (!own.Reader.DataSet()->Locate(pair.at(1), parentValue))
        return;
    QString current = parentValue;
    while (current == parentValue && !own.Reader.DataSet()->Eof()) {
        const int row = own.Reader.DataSet()->CurrentTableRow();
        const QString caption = own.Value(own.Caption, ItemOf(m_captionFields, level)).trimmed();
        BookmarkOf mark(own);
        const TBookmark place = mark.Mark();
        TTreeNode *node = m_nodes.AddChildObject(parentNode, caption, mark.Release());
        own.Refresh();
        if (node) { // null when a handler of the host deleted the node
            SetPictures(*node, level);
            if (level < last) {
                BuildTreeLevel(node, level + 1);
                own.Refresh();
            }
        }
        // The host's handler, or a lower level with the same dataset, may have moved the cursor.
        TDataSet *dataSet = own.Reader.DataSet();
        if (dataSet->CurrentTableRow() != row)
            dataSet->GotoBookmark(place);
        dataSet->Next();
        // The children end where the parent's field, read from the child's row, changes its value.
        current = own.Value(own.OwnKey, pair.first());
    }
}

void misc_BuildTreeView(TTreeView &TreeView, const QList<TDataSet *> &DataSets, const QStringList &LinkFields,
                        const QStringList &CaptionFields, const QList<int> &ImageIndexes)
{
    if (DataSets.isEmpty())
        return;
    if (TreeView.Items().Count() > 0) {
        for (int level = 0; level < DataSets.size(); ++level)
            misc_FreeTreeBookMarks(TreeView, level, DataSets[level]);
    }
    const Zel::ItemsUpdate update(TreeView.Items());
    TreeView.Items().Clear();
    TreeFill(TreeView, DataSets, LinkFields, CaptionFields, ImageIndexes).BuildRoots();
}

void misc_FreeTreeBookMarks(TTreeView &TreeView, int Level, TDataSet *DataSet)
{
    // Depth first over the nodes no deeper than the level.
    int level = 0;
    TTreeNode *node = TreeView.Items().GetFirstNode();
    while (node) {
        if (level == Level) {
            DataSet->FreeBookmark(node->Data());
            node->SetData(nullptr);
        }
        TTreeNode *next = nullptr;
        if (level < Level && (next = node->GetFirstChild())) {
            ++level;
        } else {
            while (node && !(next = node->GetNextSibling())) {
                node = node->Parent();
                --level;
            }
        }
        node = next;
    }
}

void misc_ClearTreeView(TTreeView *TreeView)
{
    const Zel::ItemsUpdate update(TreeView->Items());
    TreeView->Items().Clear();
}

void misc_TreeViewFocus(TTreeView &TreeView)
{
    if (TTreeNode *first = TreeView.Items().GetFirstNode())
        first->SetSelected(true);
}

// -------------------------------------------------------------------------------------------------- panels

void misc_ShowDataFields(QWidget *Panel1, QWidget *Panel2, QWidget *Panel3, QWidget *Panel4, int Mode,
                         bool Show, TTreeView *TreeView, TListView *ListView)
{
    const TWindowUpdateLock lock(ListView ? ListView->window() : nullptr);
    if (Show && Panel1->isHidden())
        return; // the data fields are already shown
    Panel1->setVisible(!Show);
    Panel2->setVisible(Show);
    if (Panel3 && (Mode == 0 || Mode == 1))
        Panel3->setVisible(Show);
    if (Panel4 && (Mode == 0 || Mode == 2))
        Panel4->setVisible(Show);
    const auto restyle = [&](auto *view) {
        if (!view)
            return;
        const Zel::ItemsUpdate update(view->Items());
        view->setEnabled(!Show);
        view->SetColor(Show ? QPalette::Button : QPalette::Base);
    };
    restyle(TreeView);
    restyle(ListView);
}
