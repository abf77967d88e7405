#pragma once

namespace Zel
{

/// Follows a node while a handler of the host's runs, which may delete it, or the view with all of its nodes.
template <typename Node> class NodeWatch
{
public:
    /// Follows @p node; @p newest is where its owner keeps the watches that there are at the moment.
    NodeWatch(NodeWatch *&newest, Node *node) : m_newest(&newest), m_outer(newest), m_node(node)
    {
        newest = this;
    }
    ~NodeWatch()
    {
        if (m_newest)
            *m_newest = m_outer;
    }
    NodeWatch(const NodeWatch &) = delete;
    NodeWatch &operator=(const NodeWatch &) = delete;
    Node *Get() const noexcept { return m_node; } ///< The node; nullptr when it is gone.

    /// For the owner: @p node is deleted.
    static void Deleted(NodeWatch *newest, const Node *node) noexcept
    {
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer) {
            if (watch->m_node == node)
                watch->m_node = nullptr;
        }
    }
    /// For the owner: all nodes are deleted.
    static void Cleared(NodeWatch *newest) noexcept
    {
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer)
            watch->m_node = nullptr;
    }
    /// For the owner: it goes itself.
    static void Orphaned(NodeWatch *newest) noexcept
    {
        Cleared(newest);
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer)
            watch->m_newest = nullptr;
    }

private:
    NodeWatch **m_newest;
    NodeWatch *m_outer;
    Node *m_node;
};

} // namespace Zel
