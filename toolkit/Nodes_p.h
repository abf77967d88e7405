#pragma once

#include <QAbstractItemView>
#include <QItemSelectionModel>

#include <vector>

/// Common functions for the nodes of a tree and the items of a list.
namespace Zel
{

/// Selects one row and deselects all others.
inline constexpr auto SelectRow = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;

/// Sets the row number of the nodes from index @p from on.
template <typename Node> void Renumber(const std::vector<Node *> &nodes, int from, int Node::*row)
{
    for (std::size_t i = static_cast<std::size_t>(from); i < nodes.size(); ++i)
        nodes[i]->*row = static_cast<int>(i);
}

/// During its lifetime the view does not scroll to its current item.
class StillView
{
public:
    explicit StillView(QAbstractItemView *view) : m_view(view), m_was(view->hasAutoScroll())
    {
        view->setAutoScroll(false);
    }
    ~StillView() { m_view->setAutoScroll(m_was); }
    StillView(const StillView &) = delete;
    StillView &operator=(const StillView &) = delete;

private:
    QAbstractItemView *m_view;
    bool m_was;
};

} // namespace Zel
