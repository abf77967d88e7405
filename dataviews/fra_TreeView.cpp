#include "dataviews/fra_TreeView.h"

#include "data/Exceptions.h"
#include "toolkit/TFonts.h"

#include <QScrollBar>

#include <algorithm>
#include <unordered_set>

namespace
{

constexpr quint16 KeyF5 = 116;

/// Several changes of the tree shown as one, also when an error passes.
class TreeUpdate
{
public:
    explicit TreeUpdate(TTreeView *treeView) : m_nodes(treeView->Items()) { m_nodes.BeginUpdate(); }
    ~TreeUpdate() { m_nodes.EndUpdate(); }
    TreeUpdate(const TreeUpdate &) = delete;
    TreeUpdate &operator=(const TreeUpdate &) = delete;

private:
    TTreeNodes &m_nodes;
};

} // namespace

/// Reads the keys of nodes, one after the other, as the state of nodes is kept by them.
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
            return -1; // a row that its level's filter has hidden since the node was built
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
    setupUi(this);
    edtName->setFont([] {
        QFont font = DesignFont();
        font.setBold(true);
        return font;
    }());
    TreeView->OnKeyDown = [this](QObject *sender, quint16 &key, Qt::KeyboardModifiers shift) {
        TreeViewKeyDown(sender, key, shift);
    };
    pnlMainHeader->setVisible(false);
    pnlEdit->setVisible(false);
}

TfraTreeView::~TfraTreeView()
{
    for (TTreeLevel &level : FLevels)
        level.DataSet = nullptr;
    FLevels.clear();
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
    FLevels.append(level);
    try {
        LevelFilter(GetLevelCount() - 1, Filter, false);
    } catch (...) {
        FLevels.removeLast();
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
            linkFields.append(Levels[k].ParentKeyField + QStringLiteral("; ") + Levels[k + 1].LinkField);
    }
    for (const TDataSet *dataSet : std::as_const(dataSets)) {
        if (!dataSet->Active())
            return;
    }
    misc_BuildTreeView(*TreeView, dataSets, linkFields, captionFields, imageIndexes);
}

void TfraTreeView::ClearTree()
{
    misc_ClearTreeView(TreeView);
    FLevels.clear();
}

TTreeLevel TfraTreeView::GetLevelData(int Index) const
{
    return FLevels.value(FViewStyle == vwsList ? 0 : Index);
}

void TfraTreeView::LevelFilter(int Level, const QString &Filter, bool Rebuild)
{
    if (Level < 0 || Level >= GetLevelCount())
        return;
    TTreeLevel &level = FLevels[Level];
    level.Filter = Filter.trimmed();
    level.DataSet->SetFiltered(false);
    level.DataSet->SetFilter(level.Filter);
    if (!level.Filter.isEmpty())
        level.DataSet->SetFiltered(true);
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
    return BuildKeyFieldSetFromDataSet(FLevels[Level].DataSet, KeyField);
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
    TClientDataSet *dataSet = FLevels[depth].DataSet;
    dataSet->GotoBookmark(Node->Data());
    return dataSet->FieldByName(name)->AsInteger();
}

void TfraTreeView::Do_RefreshTreeView()
{
    const int place = TreeView->verticalScrollBar()->value();
    {
        const TreeUpdate update(TreeView);
        if (FKeepTreeState)
            Do_TreeViewBookMark();
        // The new cursors take the places of the old ones together, so that an error on the way leaves nodes
        // and cursors that belong to each other.
        QList<TClientDataSet *> clones;
        try {
            for (const TTreeLevel &level : std::as_const(FLevels)) {
                TDataSet *source = level.DataSet->CloneSource();
                if (source) {
                    source->Close();
                    source->Open();
                }
                // Without its source the level's own rows are all there is.
                clones.append(CloneOf(source ? source : level.DataSet));
            }
        } catch (...) {
            qDeleteAll(clones);
            throw;
        }
        for (int k = 0; k < clones.size(); ++k) {
            FLevels[k].DataSet = clones[k];
            LevelFilter(k, QString(FLevels[k].Filter), false);
        }
        Do_BuildTree(FLevels);
        if (FKeepTreeState)
            Do_RestoreTreeViewBookMark();
    }
    if (FKeepTreeState && place > 0) {
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
    FMarks.clear();
    FMarks.reserve(TreeView->Items().Count());
    KeyReader keys(FLevels);
    const TTreeNode *selected = TreeView->Selected();
    for (const TTreeNode *node = TreeView->Items().GetFirstNode(); node; node = node->GetNext()) {
        const int depth = node->Level();
        TTreeNodeData mark;
        // The node before is the parent or shares its ancestors.
        if (depth > 0 && !FMarks.isEmpty()) {
            mark.KeyValues = FMarks.last().KeyValues;
            std::fill(mark.KeyValues.begin() + std::min(depth, count), mark.KeyValues.end(), -1);
        } else {
            mark.KeyValues.fill(-1, count);
        }
        if (depth < count)
            mark.KeyValues[depth] = keys.KeyOf(node, depth);
        mark.Expanded = node->Expanded();
        mark.Selected = node == selected;
        FMarks.append(std::move(mark));
    }
}

void TfraTreeView::Do_RestoreTreeViewBookMark()
{
    const int count = GetLevelCount();
    // The marks by their keys; of equal ones the first decides, as in a search from the first.
    const auto hash = [](const TTreeNodeData *mark) {
        return qHashRange(mark->KeyValues.cbegin(), mark->KeyValues.cend());
    };
    const auto equal = [](const TTreeNodeData *a, const TTreeNodeData *b) {
        return a->KeyValues == b->KeyValues;
    };
    std::unordered_set<const TTreeNodeData *, decltype(hash), decltype(equal)> marks(
        static_cast<std::size_t>(FMarks.size()), hash, equal);
    for (const TTreeNodeData &mark : std::as_const(FMarks))
        marks.insert(&mark);

    const TreeUpdate update(TreeView);
    KeyReader keys(FLevels);
    TTreeNodeData path;
    path.KeyValues.fill(-1, count);
    for (TTreeNode *node = TreeView->Items().GetFirstNode(); node; node = node->GetNext()) {
        const int depth = node->Level();
        if (depth >= count)
            continue;
        path.KeyValues[depth] = keys.KeyOf(node, depth);
        std::fill(path.KeyValues.begin() + depth + 1, path.KeyValues.end(), -1);
        const auto found = marks.find(&path);
        if (found == marks.end())
            continue;
        node->SetExpanded((*found)->Expanded);
        node->SetSelected((*found)->Selected);
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
    const bool changed = FHeaderCaption != Value;
    FHeaderCaption = Value;
    pnlHeader->setCaption(Value);
    if (changed)
        Q_EMIT HeaderCaptionChanged(Value);
}

void TfraTreeView::Set_ShowHeader(bool Value)
{
    const bool changed = FShowHeader != Value;
    FShowHeader = Value;
    pnlMainHeader->setVisible(Value);
    if (!Value && FShowEditBox)
        Set_ShowEditBox(false);
    if (changed)
        Q_EMIT ShowHeaderChanged(Value);
}

void TfraTreeView::Set_ViewStyle(TViewStyle Value)
{
    const bool changed = FViewStyle != Value;
    FViewStyle = Value;
    TreeView->SetShowRoot(Value == vwsTree);
    if (Value == vwsTree) {
        Do_BuildTree(FLevels);
    } else if (!FLevels.isEmpty()) {
        TTreeLevel flat = FLevels.first();
        flat.LinkField.clear();
        flat.ParentKeyField.clear();
        Do_BuildTree({flat});
    }
    if (changed)
        Q_EMIT ViewStyleChanged(Value);
}

void TfraTreeView::Set_ImageList(TImageList *Value)
{
    const bool changed = FImageList != Value;
    FImageList = Value;
    TreeView->SetImages(Value);
    if (changed)
        Q_EMIT ImageListChanged(Value);
}

void TfraTreeView::Set_AllowDragDrop(bool Value)
{
    const bool changed = FAllowDragDrop != Value;
    FAllowDragDrop = Value;
    TreeView->SetDragMode(Value ? TDragMode::dmAutomatic : TDragMode::dmManual);
    if (changed)
        Q_EMIT AllowDragDropChanged(Value);
}

void TfraTreeView::Set_ShowEditBox(bool Value)
{
    const bool changed = FShowEditBox != Value;
    FShowEditBox = Value;
    pnlEdit->setVisible(Value);
    if (changed)
        Q_EMIT ShowEditBoxChanged(Value);
}

void TfraTreeView::Set_KeepTreeState(bool Value)
{
    const bool changed = FKeepTreeState != Value;
    FKeepTreeState = Value;
    if (changed)
        Q_EMIT KeepTreeStateChanged(Value);
}
