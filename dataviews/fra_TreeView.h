#pragma once

#include "data/ClientDataSet.h"
#include "dataviews/ill_Misc.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_TreeView.h"

#include <QPointer>

/// One level of a TfraTreeView.
struct TTreeLevel {
    TClientDataSet *DataSet =
        nullptr;            ///< The level's own cursor: a clone of the caller's, owned by the frame.
    QString CaptionField;   ///< The field shown as the node's text.
    int ImageIndex = -1;    ///< Also the index of the selected picture.
    QString LinkField;      ///< Field of this level that holds the parent row's value.
    QString ParentKeyField; ///< Field of this level whose value the next level's LinkField holds.
    QString Filter;         ///< Trimmed; empty is unfiltered.
    QString KeyField;       ///< Integer key by which the state of nodes is kept, trimmed; may be empty.
};
using TarrayTreeLevel = QList<TTreeLevel>; ///< Index 0 is the root level.

/// The state of a node before a refresh, by the keys of its path.
struct TTreeNodeData {
    TDynamicArrayOfInt KeyValues; ///< One per level, -1 for none.
    bool Expanded = false;        ///< Whether the node was open.
    bool Selected = false;        ///< Whether the node was the selected one.
};

/// A frame that shows the rows of several datasets as one tree, a dataset per level, each tied to the level
/// above by a pair of fields. It works on cursors of its own, so the caller's current rows never move. F5 and
/// RefreshTreeView reload the data; with KeepTreeState nodes stay expanded and selected by the keys of
/// their path.
///
/// Use: set HeaderCaption, ImageList and ShowHeader, AddLevel once per level from the root down, then
/// BuildTree or set ViewStyle.
///
/// A node's Data is a bookmark of its level's DataSet at the time it was built and valid as long as that
/// cursor lives: rebuilding and refreshing give none back and keep former cursors, and all of them go with
/// the frame.
class ZEL_COMMONFRAMES_EXPORT TfraTreeView : public TBaseFrame, public Ui::TfraTreeView
{
    Q_OBJECT
    Q_PROPERTY(
        QString HeaderCaption READ Get_HeaderCaption WRITE Set_HeaderCaption NOTIFY HeaderCaptionChanged)
    Q_PROPERTY(bool ShowHeader READ Get_ShowHeader WRITE Set_ShowHeader NOTIFY ShowHeaderChanged)
    Q_PROPERTY(TViewStyle ViewStyle READ Get_ViewStyle WRITE Set_ViewStyle NOTIFY ViewStyleChanged)
    Q_PROPERTY(
        TImageList *ImageList READ Get_ImageList WRITE Set_ImageList NOTIFY ImageListChanged DESIGNABLE false)
    Q_PROPERTY(bool AllowDragDrop READ Get_AllowDragDrop WRITE Set_AllowDragDrop NOTIFY AllowDragDropChanged)
    Q_PROPERTY(bool ShowEditBox READ Get_ShowEditBox WRITE Set_ShowEditBox NOTIFY ShowEditBoxChanged)
    Q_PROPERTY(bool KeepTreeState READ Get_KeepTreeState WRITE Set_KeepTreeState NOTIFY KeepTreeStateChanged)
public:
    /// Which of the levels the tree shows.
    enum TViewStyle {
        vwsList, ///< the rows of level 0 only
        vwsTree  ///< all levels
    };
    Q_ENUM(TViewStyle)

    explicit TfraTreeView(QWidget *parent = nullptr);
    ~TfraTreeView() override;

    /// Appends a level over a clone of @p DataSet's cursor, filtered by @p Filter instead of its own filter.
    /// EDatabaseError when @p DataSet is closed or the filter is malformed; no level is added then.
    void AddLevel(TDataSet *DataSet, const QString &CaptionField, int ImageIndex, const QString &LinkField,
                  const QString &ParentKeyField, const QString &Filter, const QString &KeyField);
    void BuildTree() { Do_BuildTree(FLevels); } ///< Builds the tree over the levels there are.
    /// Builds the tree from @p Levels; empty when there are none or the dataset of one is not active.
    void Do_BuildTree(const TarrayTreeLevel &Levels);
    void ClearTree(); ///< Empties the tree and the levels.
    /// The level at @p Index, with vwsList always level 0; a default record when there is none.
    TTreeLevel GetLevelData(int Index) const;
    int GetLevelCount() const { return static_cast<int>(FLevels.size()); } ///< How many levels there are.
    /// Filters a level, an empty text shows all, and builds the tree with @p Rebuild. Ignored for a level
    /// that does not exist. EDatabaseError for a malformed filter.
    void LevelFilter(int Level, const QString &Filter, bool Rebuild);
    /// The integer @p KeyField of every row that @p DataSet's filter lets through; empty when it is not
    /// active. Its current row stays.
    TDynamicArrayOfInt BuildKeyFieldSetFromDataSet(TDataSet *DataSet, const QString &KeyField);
    /// The same of a level's rows; empty for a level that does not exist.
    TDynamicArrayOfInt BuildKeyFieldSetFromLevel(int Level, const QString &KeyField);
    /// @p Set without any @p Value.
    static TDynamicArrayOfInt RemoveFromSet(const TDynamicArrayOfInt &Set, int Value);
    static bool ValueInSet(int Value, const TDynamicArrayOfInt &Set); ///< Whether @p Value is in @p Set.
    /// The integer @p KeyField of the row of @p Node, whose own depth says which level's dataset it is in. -1
    /// when @p Level does not exist, @p KeyField is blank or @p Node is nullptr. EDatabaseError when the
    /// level's filter has hidden the row since.
    int GetKeyFieldValueFromLevel(TTreeNode *Node, int Level, const QString &KeyField);
    /// Builds the tree anew; what was expanded and selected is so again.
    void RefreshTreeView() { Do_RefreshTreeView(); }
    /// Closes and reopens the dataset behind every level and builds the tree anew. When one cannot be
    /// reopened its error passes and tree and levels stay as they were.
    void Do_RefreshTreeView();
    /// F5 (@p Key 116) refreshes; the key is passed on unchanged.
    void TreeViewKeyDown(QObject *Sender, quint16 &Key, Qt::KeyboardModifiers Shift);
    void Do_TreeViewBookMark();        ///< Notes the state of every node by its keys.
    void Do_RestoreTreeViewBookMark(); ///< Gives nodes of the same keys that state; others keep theirs.
    /// Picture, state and selected picture of the node at that absolute index; ignored below 0, EListError
    /// beyond the nodes.
    void ChangeNodeImage(int NodeIndex, int ImageIndex);

    QString Get_HeaderCaption() const { return FHeaderCaption; } ///< The text of the band above the tree.
    void Set_HeaderCaption(const QString &Value);
    bool Get_ShowHeader() const { return FShowHeader; } ///< Whether that band is shown; it is not at first.
    void Set_ShowHeader(bool Value);                    ///< Hiding the header hides the edit box with it.
    TViewStyle Get_ViewStyle() const { return FViewStyle; }
    void Set_ViewStyle(TViewStyle Value); ///< Builds the tree that way, also when it is the style already.
    TImageList *Get_ImageList() const { return FImageList; }
    void Set_ImageList(TImageList *Value); ///< Not owned; forgotten when destroyed.
    /// Whether moving the mouse with the button down over a node drags it out of the tree; off at first.
    bool Get_AllowDragDrop() const { return FAllowDragDrop; }
    void Set_AllowDragDrop(bool Value);
    /// Whether the edit edtName is shown at the band's end; not at first. What it is for is the page's
    /// business.
    bool Get_ShowEditBox() const { return FShowEditBox; }
    void Set_ShowEditBox(bool Value);
    bool Get_KeepTreeState() const { return FKeepTreeState; }
    void Set_KeepTreeState(bool Value); ///< Off at first.

Q_SIGNALS:
    void HeaderCaptionChanged(const QString &Value);
    void ShowHeaderChanged(bool Value);
    void ViewStyleChanged(TfraTreeView::TViewStyle Value);
    void ImageListChanged(TImageList *Value);
    void AllowDragDropChanged(bool Value);
    void ShowEditBoxChanged(bool Value);
    void KeepTreeStateChanged(bool Value);

protected:
    void InitializeFrame() override;

private:
    class KeyReader;
    TClientDataSet *CloneOf(TDataSet *DataSet);

    TarrayTreeLevel FLevels;
    QList<TTreeNodeData> FMarks;
    QString FHeaderCaption;
    bool FShowHeader = false;
    TViewStyle FViewStyle = vwsList;
    QPointer<TImageList> FImageList;
    bool FAllowDragDrop = false;
    bool FShowEditBox = false;
    bool FKeepTreeState = false;
};

using TViewStyle = TfraTreeView::TViewStyle;
inline constexpr TViewStyle vwsList = TfraTreeView::vwsList;
inline constexpr TViewStyle vwsTree = TfraTreeView::vwsTree;
