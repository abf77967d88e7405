#pragma once

#include <algorithm>
#include <memory>
#include <vector>

namespace Zel
{

/// Allocates nodes in blocks. A node's address never changes, the memory of a deleted node is reused, and
/// Clear frees a few blocks instead of every node.
template <typename Node> class NodePool
{
public:
    /// Returns a default-constructed node.
    Node *Take()
    {
        if (!m_free.empty()) {
            Node *node = m_free.back();
            m_free.pop_back();
            ++m_live;
            return node;
        }
        if (m_used == m_room) {
            m_room = std::min<std::size_t>(m_room ? m_room * 2 : 16, 4096);
            m_blocks.emplace_back(new Node[m_room]);
            m_used = 0;
        }
        ++m_live;
        return &m_blocks.back()[m_used++];
    }
    /// Resets @p node; Take may return its address again.
    void GiveBack(Node *node)
    {
        m_free.push_back(node);
        *node = Node();
        --m_live;
    }
    /// Frees every node.
    void Clear() noexcept
    {
        m_blocks.clear();
        m_free.clear();
        m_used = m_room = m_live = 0;
    }
    int Live() const noexcept { return static_cast<int>(m_live); } ///< The number of nodes in use.

private:
    std::vector<std::unique_ptr<Node[]>> m_blocks;
    std::vector<Node *> m_free;
    std::size_t m_used = 0; // nodes taken from the last block
    std::size_t m_room = 0; // size of the last block
    std::size_t m_live = 0;
};

} // namespace Zel
