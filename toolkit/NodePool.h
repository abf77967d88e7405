#pragma once

#include <algorithm>
#include <memory>
#include <vector>

namespace Zel
{

/// Keeps nodes in blocks: a node's address never changes, a deleted node's place is used again, and letting
/// go of all of them costs a few blocks instead of one call per node.
template <typename Node> class NodePool
{
public:
    /// A fresh node.
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
    /// Puts @p node back as a fresh one; its address may be handed out again.
    void GiveBack(Node *node)
    {
        m_free.push_back(node);
        *node = Node();
        --m_live;
    }
    /// Lets go of every node.
    void Clear() noexcept
    {
        m_blocks.clear();
        m_free.clear();
        m_used = m_room = m_live = 0;
    }
    int Live() const noexcept { return static_cast<int>(m_live); } ///< Nodes handed out and not given back.

private:
    std::vector<std::unique_ptr<Node[]>> m_blocks;
    std::vector<Node *> m_free;
    std::size_t m_used = 0; // nodes handed out of the last block
    std::size_t m_room = 0; // nodes in the last block
    std::size_t m_live = 0;
};

} // namespace Zel
