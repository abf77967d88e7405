#pragma once

#include "toolkit/ItemsView.h"
#include "toolkit/TTreeNodes.h"

#include <functional>

/// What an item is drawn with; a custom-draw handler changes it for the item at hand.
struct TCanvas {
    QFont Font; ///< The font of the node's text.
};

/// A tree view over nodes of its own (see TTreeNodes): captions with pictures in one column, one node
/// selected at a time. Rows are of one height.
///
/// Errors raised by the host's handlers during painting, keys and drags go to the application's exception
/// report; those of OnAddition pass to whoever adds the node.
class ZEL_TOOLKIT_EXPORT TTreeView : public Zel::ItemsView
{
    Q_OBJECT
    Q_PROPERTY(bool ShowRoot READ ShowRoot WRITE SetShowRoot)
    Q_PROPERTY(bool RowSelect READ RowSelect WRITE SetRowSelect)
public:
    explicit TTreeView(QWidget *parent = nullptr);
    ~TTreeView() override;

    TTreeNodes &Items() noexcept { return m_nodes; } ///< The nodes; they live as long as the view.
    const TTreeNodes &Items() const noexcept { return m_nodes; } ///< The same, to look at.

    /// The selected node, nullptr for none. Setting a node expands its ancestors; setting nullptr selects
    /// none.
    TTreeNode *Selected() const;
    void SetSelected(TTreeNode *node);
    /// The node at a place in the client area, nullptr where there is none.
    TTreeNode *GetNodeAt(int x, int y) const;

    /// The pictures of the nodes; not owned, forgotten when destroyed.
    TImageList *Images() const { return ItemImages(); }
    void SetImages(TImageList *images) { SetItemImages(images); }
    /// The state pictures, drawn before those of Images; none at first. Not owned, forgotten when destroyed.
    TImageList *StateImages() const { return m_stateImages; }
    void SetStateImages(TImageList *images);

    bool ShowRoot() const { return rootIsDecorated(); } ///< Lines and buttons at root nodes.
    void SetShowRoot(bool show) { setRootIsDecorated(show); }
    bool RowSelect() const noexcept { return m_rowSelect; } ///< The selection covers the whole row.
    void SetRowSelect(bool rowSelect);

    /// Every node with children expanded or collapsed, in one step.
    void FullExpand();
    void FullCollapse(); ///< Every node with children collapsed.

    /// The canvas of the item being drawn, for OnCustomDrawItem.
    TCanvas &Canvas() noexcept { return m_canvas; }

    /// A node was added; runs once per node before its pictures are set. It may change the node's text, and
    /// it may delete the node, which whoever adds it is told; not its ancestors, and not the view.
    std::function<void(TTreeNode *node)> OnAddition;
    /// An item is about to be drawn with Canvas(); @p defaultDraw set to false leaves it undrawn.
    std::function<void(TTreeView *sender, TTreeNode *node, QStyle::State state, bool &defaultDraw)>
        OnCustomDrawItem;
    /// A key went down. @p key is the system's virtual key code (F5 is 116), 0 for a key that has none; a
    /// code set to 0 the view ignores the key.
    std::function<void(QObject *sender, quint16 &key, Qt::KeyboardModifiers shift)> OnKeyDown;

Q_SIGNALS:
    void Change(TTreeNode *node); ///< Another node is selected; nullptr when none is any more.

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
    TTreeNode *m_announced = nullptr; // compared only, never followed; the hidden root for one deleted since
    bool m_rowSelect = false;
};
