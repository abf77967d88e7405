#pragma once

#include "data/ClientDataSet.h"
#include "dataviews/ill_Misc.h"
#include "frames/fra_BaseFrame.h"
#include "ui_fra_TreeView.h"

#include <QPointer>

/// One level of a TfraTreeView.
struct TTreeLevel {
    TClientDataSet *DataSet = nullptr; ///< A clone of the caller's cursor, owned by the frame.
    QString CaptionField;              ///< The field shown as the node's text.
    int ImageIndex = -1;               ///< The index of the picture, also of a selected node.
    QString LinkField;                 ///< The field of this level that holds the parent row's value.
    QString ParentKeyField; ///< The field of this level whose value the next level's LinkField holds.
    QString Filter;         ///< Trimmed; empty means unfiltered.
    QString KeyField; ///< The integer key that identifies nodes across a refresh; trimmed, may be empty.
};
using TarrayTreeLevel = QList<TTreeLevel>; ///< Index 0 is the root level.

/// The state of a node before a refresh, identified by the keys of its path.
struct TTreeNodeData {
    TDynamicArrayOfInt KeyValues; ///< One key per level, -1 for none.
    bool Expanded = false;        ///< Whether the node was expanded.
    bool Selected = false;        ///< Whether the node was selected.
};

/// A frame that shows the rows of several datasets as one tree, one dataset per level. A pair of fields links
/// each level to the level above. The frame uses clones of the caller's cursors, so the caller's current rows
/// do not change. F5 and RefreshTreeView reload the data. With KeepTreeState a refresh keeps nodes with the
/// same path of keys expanded and selected.
///
/// Use: set HeaderCaption, ImageList and ShowHeader, call AddLevel once per level from the root down, then
/// call BuildTree or set ViewStyle.
///
/// A node's Data is a bookmark of its level's DataSet, and is valid as long as that cursor exists. Rebuilding
/// and refreshing free neither bookmarks nor former cursors; the destructor of the frame does.
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

    /// Appends a level over a clone of @p DataSet's cursor. The clone is filtered by @p Filter instead of the
    /// filter of @p DataSet. Throws EDatabaseError, without adding a level, when @p DataSet is closed or the
    /// filter is malformed.
    void AddLevel(TDataSet *DataSet, const QString &CaptionField, int ImageIndex, const QString &LinkField,
                  const QString &ParentKeyField, const QString &Filter, const QString &KeyField);
    void BuildTree() { Do_BuildTree(m_levels); } ///< Builds the tree from the current levels.
    /// Builds the tree from @p Levels. The tree is empty without levels or when a level's dataset is not
    /// active.
    void Do_BuildTree(const TarrayTreeLevel &Levels);
    void ClearTree(); ///< Removes all nodes and levels.
    /// The level at @p Index, with vwsList always level 0; a default record when there is none.
    TTreeLevel GetLevelData(int Index) const;
    int GetLevelCount() const { return static_cast<int>(m_levels.size()); } ///< The number of levels.
    /// Sets the filter of a level; an empty text shows all rows. With @p Rebuild also builds the tree. Does
    /// nothing for a level that does not exist. Throws EDatabaseError for a malformed filter.
    void LevelFilter(int Level, const QString &Filter, bool Rebuild);
    /// The integer @p KeyField of every row that the filter of @p DataSet shows; empty when @p DataSet is not
    /// active. The current row does not change.
    TDynamicArrayOfInt BuildKeyFieldSetFromDataSet(TDataSet *DataSet, const QString &KeyField);
    /// The integer @p KeyField of every row of a level; empty for a level that does not exist.
    TDynamicArrayOfInt BuildKeyFieldSetFromLevel(int Level, const QString &KeyField);
    /// @p Set without any @p Value.
    static TDynamicArrayOfInt RemoveFromSet(const TDynamicArrayOfInt &Set, int Value);
    static bool ValueInSet(int Value, const TDynamicArrayOfInt &Set); ///< Whether @p Value is in @p Set.
    /// The integer @p KeyField of the row of @p Node. The depth of the node, not @p Level, determines the
    /// dataset. -1 when @p Level does not exist, @p KeyField is blank or @p Node is nullptr. Throws
    /// EDatabaseError when the level's filter now hides the row.
    int GetKeyFieldValueFromLevel(TTreeNode *Node, int Level, const QString &KeyField);
    /// The same as Do_RefreshTreeView.
    void RefreshTreeView() { Do_RefreshTreeView(); }
    /// Closes and reopens the source dataset of every level and builds the tree again. When a dataset cannot
    /// be reopened, passes its exception on and leaves the tree and the levels unchanged.
    void Do_RefreshTreeView();
    /// Refreshes on F5 (@p Key 116); leaves @p Key unchanged.
    void TreeViewKeyDown(QObject *Sender, quint16 &Key, Qt::KeyboardModifiers Shift);
    void Do_TreeViewBookMark();        ///< Stores the state of every node by the keys of its path.
    void Do_RestoreTreeViewBookMark(); ///< Restores the stored state of nodes with the same keys.
    /// Sets picture, state picture and selected picture of the node at that absolute index. Ignores an index
    /// below 0; throws EListError for an index beyond the nodes.
    void ChangeNodeImage(int NodeIndex, int ImageIndex);

    QString Get_HeaderCaption() const { return m_headerCaption; } ///< The text of the band above the tree.
    void Set_HeaderCaption(const QString &Value);
    bool Get_ShowHeader() const { return m_showHeader; } ///< Whether the band is shown; default false.
    void Set_ShowHeader(bool Value);                     ///< Hiding the header also hides the edit box.
    TViewStyle Get_ViewStyle() const { return m_viewStyle; }
    void Set_ViewStyle(TViewStyle Value); ///< Builds the tree in that style, even if the style is the same.
    TImageList *Get_ImageList() const { return m_imageList; }
    void Set_ImageList(TImageList *Value); ///< Not owned; nullptr after the list is destroyed.
    /// Whether moving the mouse with the button down over a node drags the node; default false.
    bool Get_AllowDragDrop() const { return m_allowDragDrop; }
    void Set_AllowDragDrop(bool Value);
    /// Whether the edit edtName is shown at the end of the band; default false. The page decides its use.
    bool Get_ShowEditBox() const { return m_showEditBox; }
    void Set_ShowEditBox(bool Value);
    bool Get_KeepTreeState() const { return m_keepTreeState; }
    void Set_KeepTreeState(bool Value); ///< Whether a refresh keeps the state of nodes; default false.

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

    TarrayTreeLevel m_levels;
    QList<TTreeNodeData> m_marks;
    QString m_headerCaption;
    bool m_showHeader = false;
    TViewStyle m_viewStyle = vwsList;
    QPointer<TImageList> m_imageList;
    bool m_allowDragDrop = false;
    bool m_showEditBox = false;
    bool m_keepTreeState = false;
};

using TViewStyle = TfraTreeView::TViewStyle;
inline constexpr TViewStyle vwsList = TfraTreeView::vwsList;
inline constexpr TViewStyle vwsTree = TfraTreeView::vwsTree;
