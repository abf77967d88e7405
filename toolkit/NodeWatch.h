#pragma once

namespace Zel
{

/// Watches a node while a handler of the host runs, which may delete the node or the whole view.
template <typename Node> class NodeWatch
{
public:
    /// Watches @p node. @p newest is the owner's list of active watches.
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
    Node *Get() const noexcept { return m_node; } ///< The node; nullptr after it was deleted.

    /// The owner calls this when @p node is deleted.
    static void Deleted(NodeWatch *newest, const Node *node) noexcept
    {
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer) {
            if (watch->m_node == node)
                watch->m_node = nullptr;
        }
    }
    /// The owner calls this when all nodes are deleted.
    static void Cleared(NodeWatch *newest) noexcept
    {
        for (NodeWatch *watch = newest; watch; watch = watch->m_outer)
            watch->m_node = nullptr;
    }
    /// The owner calls this in its destructor.
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
