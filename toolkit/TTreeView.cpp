#include "toolkit/TTreeView.h"

#include "toolkit/Keys.h"
#include "toolkit/Nodes_p.h"
#include "toolkit/TApplication.h"
#include "toolkit/TreeModel.h"

#include <QHeaderView>
#include <QIconEngine>
#include <QKeyEvent>
#include <QStyledItemDelegate>

namespace
{

/// Two pictures of one size side by side.
class PairEngine : public QIconEngine
{
public:
    PairEngine(QIcon left, QIcon right) : m_left(std::move(left)), m_right(std::move(right)) {}
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const QSize half(rect.width() / 2, rect.height());
        m_left.paint(painter, {rect.topLeft(), half}, Qt::AlignCenter, mode, state);
        m_right.paint(painter, {rect.topLeft() + QPoint(half.width(), 0), half}, Qt::AlignCenter, mode,
                      state);
    }
    QIconEngine *clone() const override { return new PairEngine(m_left, m_right); }

private:
    QIcon m_left;
    QIcon m_right;
};

/// Calls the host's custom-draw handler before an item is drawn, and draws the picture of a selected node and
/// the state picture.
class NodeDelegate : public QStyledItemDelegate
{
public:
    explicit NodeDelegate(TTreeView *view) : QStyledItemDelegate(view), m_view(view) {}

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        TTreeNode *node = Zel::TreeModel::NodeOf(index);
        if (option->state.testFlag(QStyle::State_Selected) && node->SelectedIndex() >= 0 && m_view->Images())
            option->icon = m_view->Images()->Icon(node->SelectedIndex());
        if (m_view->StateImages() && node->StateIndex() >= 0) {
            const QIcon state = m_view->StateImages()->Icon(node->StateIndex());
            if (!option->features.testFlag(QStyleOptionViewItem::HasDecoration)) {
                option->icon = state;
                option->features |= QStyleOptionViewItem::HasDecoration;
                option->decorationSize = m_view->StateImages()->Size();
            } else {
                option->icon = QIcon(new PairEngine(state, option->icon));
                option->decorationSize.rwidth() *= 2;
            }
        }
        if (!m_view->OnCustomDrawItem)
            return;
        m_view->Canvas().Font = option->font;
        bool defaultDraw = true;
        GuardedCall([&] { m_view->OnCustomDrawItem(m_view, node, option->state, defaultDraw); });
        option->font = m_view->Canvas().Font;
        option->fontMetrics = QFontMetrics(option->font);
        if (!defaultDraw) {
            option->text.clear();
            option->icon = QIcon();
            option->features &= ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration);
        }
    }

private:
    TTreeView *m_view;
};

} // namespace

TTreeView::TTreeView(QWidget *parent) : Zel::ItemsView(parent), m_nodes(this)
{
    m_model = m_nodes.m_model;
    ShowItems(m_model);
    setItemDelegate(new NodeDelegate(this));
    setHeaderHidden(true);
    setIndentation(19);
    setAnimated(false);
    header()->setStretchLastSection(true);
}

TTreeView::~TTreeView() = default;

TTreeNode *TTreeView::Selected() const
{
    if (m_nodes.m_hidden)
        return m_nodes.m_selected;
    const QItemSelection selection = selectionModel()->selection();
    return selection.isEmpty() ? nullptr : Zel::TreeModel::NodeOf(selection.first().topLeft());
}

void TTreeView::SetSelected(TTreeNode *node)
{
    if (m_nodes.m_hidden) {
        m_nodes.m_selected = node;
    } else if (!node) {
        selectionModel()->clearSelection();
        selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    } else {
        const QModelIndex index = m_model->IndexOf(node);
        if (!m_nodes.Updating())
            node->MakeVisible();
        selectionModel()->setCurrentIndex(index, Zel::SelectRow);
    }
}

TTreeNode *TTreeView::GetNodeAt(int x, int y) const
{
    const QModelIndex index = indexAt({x, y});
    return index.isValid() ? Zel::TreeModel::NodeOf(index) : nullptr;
}

void TTreeView::SetStateImages(TImageList *images)
{
    m_stateImages = images;
    scheduleDelayedItemsLayout();
}

void TTreeView::SetRowSelect(bool rowSelect)
{
    m_rowSelect = rowSelect;
    viewport()->update();
}

void TTreeView::FullExpand()
{
    if (m_nodes.m_hidden) {
        for (TTreeNode *node = m_nodes.GetFirstNode(); node; node = node->GetNext())
            node->SetExpanded(true);
    } else {
        expandAll();
    }
}

void TTreeView::FullCollapse()
{
    if (m_nodes.m_hidden) {
        for (TTreeNode *node = m_nodes.GetFirstNode(); node; node = node->GetNext())
            node->SetExpanded(false);
    } else {
        collapseAll();
    }
}

void TTreeView::AnnounceSelection()
{
    TTreeNode *selected = Selected();
    if (selected == m_announced)
        return;
    m_announced = selected;
    Q_EMIT Change(selected);
}

void TTreeView::initViewItemOption(QStyleOptionViewItem *option) const
{
    ItemsView::initViewItemOption(option);
    option->showDecorationSelected = m_rowSelect;
}

void TTreeView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    ItemsView::selectionChanged(selected, deselected);
    // Emits one Change for the step from the old to the new selection. Inside an update, EndUpdate emits it.
    if (!m_nodes.Updating())
        AnnounceSelection();
}

void TTreeView::keyPressEvent(QKeyEvent *event)
{
    if (OnKeyDown) {
        const quint16 pressed = Zel::VirtualKey(*event);
        quint16 key = pressed;
        const QPointer<TTreeView> alive(this);
        const auto handler = OnKeyDown; // a copy, because the handler may replace OnKeyDown
        GuardedCall([&] { handler(this, key, event->modifiers()); });
        // For a key without a code, 0 does not mean that the handler suppressed it.
        if ((key == 0 && pressed != 0) || !alive) {
            event->accept();
            return;
        }
    }
    ItemsView::keyPressEvent(event);
}
