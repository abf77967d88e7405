#include "dataviews/fra_TreeView.h"

#include "data/Exceptions.h"
#include "toolkit/DesignTexts.h"
#include "toolkit/ItemsUpdate.h"
#include "toolkit/LookFonts_p.h"
#include "toolkit/TFonts.h"
#include "toolkit/TabStops_p.h"

#include <QHash>
#include <QScrollBar>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr quint16 KeyF5 = 116;

/// Assigns numbers to paths of keys; equal paths have equal numbers. The class remembers the last path, so a
/// walk over the nodes of a tree costs one look-up per node. Call Add for all paths before the first Find.
class PathNumbers
{
public:
    explicit PathNumbers(int length, qsizetype paths) : m_keys(length, -1), m_numbers(length, 0)
    {
        m_steps.reserve(paths);
        m_order.reserve(static_cast<std::size_t>(paths));
    }
    /// The number of @p keys; assigns a new number to an unknown path.
    int Add(const TDynamicArrayOfInt &keys) { return Walk(keys, true); }
    /// The number of @p keys, -1 for a path that was not added.
    int Find(const TDynamicArrayOfInt &keys) { return Walk(keys, false); }

private:
    /// The step from the parent path, numbered Above, to a path with one more key. A key of -1 makes no step.
    struct Step {
        int Above;
        int Level;
        int Key;
        friend bool operator==(const Step &a, const Step &b)
        {
            return a.Above == b.Above && a.Level == b.Level && a.Key == b.Key;
        }
        friend size_t qHash(const Step &step, size_t seed)
        {
            // Siblings often have consecutive keys and are looked up in turn, so consecutive keys get
            // neighbouring hashes.
            constexpr size_t side = 31;
            const size_t hash = qHashMulti(seed, step.Above, step.Level, step.Key >> 5);
            return (hash & ~side) | ((hash + static_cast<size_t>(step.Key)) & side);
        }
    };

    int Walk(const TDynamicArrayOfInt &keys, bool add)
    {
        int number = 0; // of the empty path
        bool same = true;
        for (int level = 0; level < keys.size(); ++level) {
            same = same && keys[level] == m_keys[level];
            if (!same) {
                m_keys[level] = keys[level];
                m_numbers[level] = After({number, level, keys[level]}, add);
            }
            number = m_numbers[level];
        }
        return number;
    }
    int After(const Step &step, bool add)
    {
        if (step.Key == -1 || step.Above < 0)
            return step.Above;
        if (add) {
            int &number = m_steps[step];
            if (number == 0) {
                m_order.push_back(step);
                number = static_cast<int>(m_order.size());
            }
            return number;
        }
        // Paths are usually looked up in the order in which they were added.
        if (m_next < m_order.size() && m_order[m_next] == step)
            return static_cast<int>(++m_next);
        const int number = m_steps.value(step, -1);
        if (number > 0)
            m_next = static_cast<std::size_t>(number);
        return number;
    }

    QHash<Step, int> m_steps;
    std::vector<Step> m_order; // the steps in the order of their numbers, which start at 1
    std::size_t m_next = 0;    // the position after the step found last
    TDynamicArrayOfInt m_keys; // the last path
    QList<int> m_numbers;      // the numbers of the last path's prefixes
};

/// Filters @p dataSet by the trimmed text @p filter; an empty text shows all rows.
void Apply(const QString &filter, TDataSet &dataSet)
{
    dataSet.SetFiltered(false);
    dataSet.SetFilter(filter);
    if (!filter.isEmpty())
        dataSet.SetFiltered(true);
}

} // namespace

/// Reads the keys of nodes, by which their state is stored.
class TfraTreeView::KeyReader
{
public:
    explicit KeyReader(const TarrayTreeLevel &levels) : m_levels(levels), m_fields(levels.size(), nullptr) {}

    int KeyOf(const TTreeNode *node, int depth)
    {
        const TTreeLevel &level = m_levels.at(depth);
        if (level.KeyField.isEmpty())
            return -1;
        try {
            level.DataSet->GotoBookmark(node->Data());
        } catch (const EDatabaseError &) {
            return -1; // the level's filter now hides the node's row
        }
        TField *&field = m_fields[depth];
        if (!field)
            field = level.DataSet->FieldByName(level.KeyField);
        return field->AsInteger();
    }

private:
    const TarrayTreeLevel &m_levels;
    QList<TField *> m_fields;
};

TfraTreeView::TfraTreeView(QWidget *parent) : TBaseFrame(parent)
{
    const Zel::DesignsTabOrder tabOrder(this);
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    edtName->setFont([] {
        QFont font = DesignFont();
        font.setBold(true);
        return font;
    }());
    new Zel::LookFit(edtName, [this] {
        if (CurrentLook() == Look::Designed)
            return;
        Zel::FollowLook(edtName);
        const int height = HeightOf(LookHeight::SmallField, fontMetrics());
        Zel::SetInLook(edtName, "maximumHeight", height);
        Zel::SetInLook(edtName, "minimumHeight", height);
    });
    TreeView->OnKeyDown = [this](QObject *sender, quint16 &key, Qt::KeyboardModifiers shift) {
        TreeViewKeyDown(sender, key, shift);
    };
    pnlMainHeader->setVisible(false);
    pnlEdit->setVisible(false);
}

TfraTreeView::~TfraTreeView()
{
    for (TTreeLevel &level : m_levels)
        level.DataSet = nullptr;
    m_levels.clear();
}

void TfraTreeView::InitializeFrame()
{
    TBaseFrame::InitializeFrame();
}

TClientDataSet *TfraTreeView::CloneOf(TDataSet *DataSet)
{
    auto clone = std::make_unique<TClientDataSet>(this);
    clone->CloneCursor(DataSet, false, true);
    return clone.release();
}

void TfraTreeView::AddLevel(TDataSet *DataSet, const QString &CaptionField, int ImageIndex,
                            const QString &LinkField, const QString &ParentKeyField, const QString &Filter,
                            const QString &KeyField)
{
    TTreeLevel level;
    level.DataSet = CloneOf(DataSet);
    level.CaptionField = CaptionField;
    level.ImageIndex = ImageIndex;
    level.LinkField = LinkField;
    level.ParentKeyField = ParentKeyField;
    level.KeyField = KeyField.trimmed();
    m_levels.append(level);
    try {
        LevelFilter(GetLevelCount() - 1, Filter, false);
    } catch (...) {
        m_levels.removeLast();
        delete level.DataSet;
        throw;
    }
}

void TfraTreeView::Do_BuildTree(const TarrayTreeLevel &Levels)
{
    misc_ClearTreeView(TreeView);
    if (Levels.isEmpty())
        return;
    QList<TDataSet *> dataSets;
    QStringList linkFields;
    QStringList captionFields;
    QList<int> imageIndexes;
    for (int k = 0; k < Levels.size(); ++k) {
        dataSets.append(Levels[k].DataSet);
        captionFields.append(Levels[k].CaptionField);
        imageIndexes.append(Levels[k].ImageIndex);
        if (k + 1 < Levels.size())
            linkFields.append(Levels[k].ParentKeyField + u"; "_s + Levels[k + 1].LinkField);
    }
    for (const TDataSet *dataSet : std::as_const(dataSets)) {
        if (!dataSet || !dataSet->Active())
            return;
    }
    misc_BuildTreeView(*TreeView, dataSets, linkFields, captionFields, imageIndexes);
}

void TfraTreeView::ClearTree()
{
    misc_ClearTreeView(TreeView);
    m_levels.clear();
}

TTreeLevel TfraTreeView::GetLevelData(int Index) const
{
    return m_levels.value(m_viewStyle == vwsList ? 0 : Index);
}

void TfraTreeView::LevelFilter(int Level, const QString &Filter, bool Rebuild)
{
    if (Level < 0 || Level >= GetLevelCount())
        return;
    TTreeLevel &level = m_levels[Level];
    level.Filter = Filter.trimmed();
    Apply(level.Filter, *level.DataSet);
    if (Rebuild)
        BuildTree();
}

TDynamicArrayOfInt TfraTreeView::BuildKeyFieldSetFromDataSet(TDataSet *DataSet, const QString &KeyField)
{
    TDynamicArrayOfInt keys;
    if (!DataSet || !DataSet->Active())
        return keys;
    const std::unique_ptr<TClientDataSet> clone(CloneOf(DataSet));
    clone->First();
    if (clone->Eof())
        return keys;
    const TField *key = clone->FieldByName(KeyField.trimmed());
    keys.reserve(clone->RecordCount());
    for (; !clone->Eof(); clone->Next())
        keys.append(key->AsInteger());
    return keys;
}

TDynamicArrayOfInt TfraTreeView::BuildKeyFieldSetFromLevel(int Level, const QString &KeyField)
{
    if (Level < 0 || Level >= GetLevelCount())
        return {};
    return BuildKeyFieldSetFromDataSet(m_levels[Level].DataSet, KeyField);
}

TDynamicArrayOfInt TfraTreeView::RemoveFromSet(const TDynamicArrayOfInt &Set, int Value)
{
    TDynamicArrayOfInt kept = Set;
    kept.removeAll(Value);
    return kept;
}

bool TfraTreeView::ValueInSet(int Value, const TDynamicArrayOfInt &Set)
{
    return Set.contains(Value);
}

int TfraTreeView::GetKeyFieldValueFromLevel(TTreeNode *Node, int Level, const QString &KeyField)
{
    const QString name = KeyField.trimmed();
    if (Level < 0 || Level >= GetLevelCount() || name.isEmpty() || !Node)
        return -1;
    const int depth = Node->Level();
    if (depth >= GetLevelCount())
        return -1;
    TClientDataSet *dataSet = m_levels[depth].DataSet;
    dataSet->GotoBookmark(Node->Data());
    return dataSet->FieldByName(name)->AsInteger();
}

void TfraTreeView::Do_RefreshTreeView()
{
    const int place = TreeView->verticalScrollBar()->value();
    {
        const Zel::ItemsUpdate update(TreeView->Items());
        if (m_keepTreeState)
            Do_TreeViewBookMark();
        // All cursors are replaced together, so that an exception leaves the nodes with their cursors.
        QList<TClientDataSet *> clones;
        try {
            // A host's handler may change the levels while a dataset is reopened.
            for (int k = 0; k < GetLevelCount(); ++k) {
                TDataSet *source = m_levels[k].DataSet->CloneSource();
                if (source) {
                    source->Close();
                    source->Open();
                }
                if (k >= GetLevelCount())
                    break;
                // When the source was destroyed, the level keeps its own rows.
                clones.append(CloneOf(source ? source : m_levels[k].DataSet));
                Apply(m_levels[k].Filter, *clones.last());
            }
        } catch (...) {
            qDeleteAll(clones);
            throw;
        }
        for (int k = 0; k < clones.size(); ++k) {
            if (k < GetLevelCount())
                m_levels[k].DataSet = clones[k];
            else
                delete clones[k];
        }
        Do_BuildTree(m_levels);
        if (m_keepTreeState)
            Do_RestoreTreeViewBookMark();
    }
    if (m_keepTreeState && place > 0) {
        TreeView->doItemsLayout();
        TreeView->verticalScrollBar()->setValue(place);
    }
}

void TfraTreeView::TreeViewKeyDown(QObject *Sender, quint16 &Key, Qt::KeyboardModifiers Shift)
{
    Q_UNUSED(Sender)
    Q_UNUSED(Shift)
    if (Key == KeyF5)
        Do_RefreshTreeView();
}

void TfraTreeView::Do_TreeViewBookMark()
{
    const int count = GetLevelCount();
    m_marks.clear();
    m_marks.reserve(TreeView->Items().Count());
    KeyReader keys(m_levels);
    const TTreeNode *selected = TreeView->Selected();
    for (const TTreeNode *node = TreeView->Items().GetFirstNode(); node; node = node->GetNext()) {
        const int depth = node->Level();
        TTreeNodeData mark;
        // The preceding node is the parent or has the same ancestors.
        if (depth > 0 && !m_marks.isEmpty()) {
            mark.KeyValues = m_marks.last().KeyValues;
            std::fill(mark.KeyValues.begin() + std::min(depth, count), mark.KeyValues.end(), -1);
        } else {
            mark.KeyValues.fill(-1, count);
        }
        if (depth < count)
            mark.KeyValues[depth] = keys.KeyOf(node, depth);
        mark.Expanded = node->Expanded();
        mark.Selected = node == selected;
        m_marks.append(std::move(mark));
    }
}

void TfraTreeView::Do_RestoreTreeViewBookMark()
{
    const int count = GetLevelCount();
    // The marks by the numbers of their paths; of marks with equal paths the first is used.
    PathNumbers paths(count, m_marks.size());
    std::vector<const TTreeNodeData *> marks;
    for (const TTreeNodeData &mark : std::as_const(m_marks)) {
        if (mark.KeyValues.size() != count)
            continue; // the levels have changed
        const auto number = static_cast<std::size_t>(paths.Add(mark.KeyValues));
        if (number >= marks.size())
            marks.resize(number + 1, nullptr);
        if (!marks[number])
            marks[number] = &mark;
    }

    const Zel::ItemsUpdate update(TreeView->Items());
    KeyReader keys(m_levels);
    TDynamicArrayOfInt path(count, -1);
    for (TTreeNode *node = TreeView->Items().GetFirstNode(); node; node = node->GetNext()) {
        const int depth = node->Level();
        if (depth >= count)
            continue;
        path[depth] = keys.KeyOf(node, depth);
        std::fill(path.begin() + depth + 1, path.end(), -1);
        const auto number = static_cast<std::size_t>(paths.Find(path)); // -1 becomes the largest number
        const TTreeNodeData *mark = number < marks.size() ? marks[number] : nullptr;
        if (!mark)
            continue;
        node->SetExpanded(mark->Expanded);
        node->SetSelected(mark->Selected);
    }
}

void TfraTreeView::ChangeNodeImage(int NodeIndex, int ImageIndex)
{
    if (NodeIndex < 0)
        return;
    TTreeNode *node = TreeView->Items().Item(NodeIndex);
    node->SetImageIndex(ImageIndex);
    node->SetStateIndex(ImageIndex);
    node->SetSelectedIndex(ImageIndex);
}

void TfraTreeView::Set_HeaderCaption(const QString &Value)
{
    const bool changed = m_headerCaption != Value;
    m_headerCaption = Value;
    pnlHeader->setCaption(Value);
    if (changed)
        Q_EMIT HeaderCaptionChanged(Value);
}

void TfraTreeView::Set_ShowHeader(bool Value)
{
    const bool changed = m_showHeader != Value;
    m_showHeader = Value;
    pnlMainHeader->setVisible(Value);
    if (!Value && m_showEditBox)
        Set_ShowEditBox(false);
    if (changed)
        Q_EMIT ShowHeaderChanged(Value);
}

void TfraTreeView::Set_ViewStyle(TViewStyle Value)
{
    const bool changed = m_viewStyle != Value;
    m_viewStyle = Value;
    TreeView->SetShowRoot(Value == vwsTree);
    if (Value == vwsTree) {
        Do_BuildTree(m_levels);
    } else if (!m_levels.isEmpty()) {
        TTreeLevel flat = m_levels.first();
        flat.LinkField.clear();
        flat.ParentKeyField.clear();
        Do_BuildTree({flat});
    }
    if (changed)
        Q_EMIT ViewStyleChanged(Value);
}

void TfraTreeView::Set_ImageList(TImageList *Value)
{
    const bool changed = m_imageList != Value;
    m_imageList = Value;
    TreeView->SetImages(Value);
    if (changed)
        Q_EMIT ImageListChanged(Value);
}

void TfraTreeView::Set_AllowDragDrop(bool Value)
{
    const bool changed = m_allowDragDrop != Value;
    m_allowDragDrop = Value;
    TreeView->SetDragMode(Value ? TDragMode::dmAutomatic : TDragMode::dmManual);
    if (changed)
        Q_EMIT AllowDragDropChanged(Value);
}

void TfraTreeView::Set_ShowEditBox(bool Value)
{
    const bool changed = m_showEditBox != Value;
    m_showEditBox = Value;
    pnlEdit->setVisible(Value);
    if (changed)
        Q_EMIT ShowEditBoxChanged(Value);
}

void TfraTreeView::Set_KeepTreeState(bool Value)
{
    const bool changed = m_keepTreeState != Value;
    m_keepTreeState = Value;
    if (changed)
        Q_EMIT KeepTreeStateChanged(Value);
}
