#pragma once

#include "toolkit/ItemsView.h"
#include "toolkit/TTreeNodes.h"

#include <functional>

/// The font of the item being drawn; a custom-draw handler can change it.
struct TCanvas {
    QFont Font; ///< The font of the node's text.
};

/// A tree view over its own nodes (see TTreeNodes): captions with pictures in one column. At most one node is
/// selected. All rows have the same height.
///
/// Exceptions of the host's handlers for painting, keys and drags go to the application's exception report;
/// exceptions of OnAddition pass to the caller that adds the node.
class ZEL_TOOLKIT_EXPORT TTreeView : public Zel::ItemsView
{
    Q_OBJECT
    Q_PROPERTY(bool ShowRoot READ ShowRoot WRITE SetShowRoot)
    Q_PROPERTY(bool RowSelect READ RowSelect WRITE SetRowSelect)
public:
    explicit TTreeView(QWidget *parent = nullptr);
    ~TTreeView() override;

    TTreeNodes &Items() noexcept { return m_nodes; }             ///< The nodes, owned by the view.
    const TTreeNodes &Items() const noexcept { return m_nodes; } ///< The same, read-only.

    /// The selected node; nullptr for none. Setting a node expands its ancestors; setting nullptr clears the
    /// selection.
    TTreeNode *Selected() const;
    void SetSelected(TTreeNode *node);
    /// The node at a position in the client area, in pixels; nullptr for none.
    TTreeNode *GetNodeAt(int x, int y) const;

    /// The pictures of the nodes. Not owned; nullptr after the list is destroyed.
    TImageList *Images() const { return ItemImages(); }
    void SetImages(TImageList *images) { SetItemImages(images); }
    /// The state pictures, drawn before the pictures of Images; default nullptr. Not owned; nullptr after the
    /// list is destroyed.
    TImageList *StateImages() const { return m_stateImages; }
    void SetStateImages(TImageList *images);

    bool ShowRoot() const { return rootIsDecorated(); } ///< Whether root nodes have lines and buttons.
    void SetShowRoot(bool show) { setRootIsDecorated(show); }
    bool RowSelect() const noexcept { return m_rowSelect; } ///< Whether the selection covers the whole row.
    void SetRowSelect(bool rowSelect);

    /// Expands every node that has children, in one step.
    void FullExpand();
    void FullCollapse(); ///< Collapses every node that has children, in one step.

    /// The canvas of the item being drawn, for OnCustomDrawItem.
    TCanvas &Canvas() noexcept { return m_canvas; }

    /// Runs once for each added node, before its pictures are set. The handler may change the node's text,
    /// and may delete the node: the add function then returns nullptr. It must not delete the node's
    /// ancestors or the view.
    std::function<void(TTreeNode *node)> OnAddition;
    /// Runs before an item is drawn with Canvas(). Setting @p defaultDraw to false suppresses the drawing.
    std::function<void(TTreeView *sender, TTreeNode *node, QStyle::State state, bool &defaultDraw)>
        OnCustomDrawItem;
    /// Runs when a key is pressed. @p key is the virtual key code (F5 is 116), or 0 for a key without a code.
    /// When the handler sets @p key to 0, the view ignores the key.
    std::function<void(QObject *sender, quint16 &key, Qt::KeyboardModifiers shift)> OnKeyDown;

Q_SIGNALS:
    void Change(TTreeNode *node); ///< The selection has changed; @p node is nullptr when no node is selected.

protected:
    void initViewItemOption(QStyleOptionViewItem *option) const override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    friend class TTreeNodes;
    void AnnounceSelection();
    void BeginManyExpansions() { scheduleDelayedItemsLayout(); }

    Zel::TreeModel *m_model; // a child of this
    TTreeNodes m_nodes;
    QPointer<TImageList> m_stateImages;
    TCanvas m_canvas;
    TTreeNode *m_announced = nullptr; // never dereferenced; the hidden root after its deletion
    bool m_rowSelect = false;
};
