#pragma once

#include <QAbstractItemView>
#include <QItemSelectionModel>

#include <vector>

/// What the nodes of a tree and the items of a list have in common.
namespace Zel
{

/// The selection of one row in place of any other.
inline constexpr auto SelectRow = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;

/// Gives the nodes from index @p from on the row that they stand in.
template <typename Node> void Renumber(const std::vector<Node *> &nodes, int from, int Node::*row)
{
    for (std::size_t i = static_cast<std::size_t>(from); i < nodes.size(); ++i)
        nodes[i]->*row = static_cast<int>(i);
}

/// While one of these lives the view does not follow its current item around.
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
