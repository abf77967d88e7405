#pragma once

namespace Zel
{

/// Begins an update of a view's items in the constructor and ends it in the destructor, also after an
/// exception.
template <typename Items> class ItemsUpdate
{
public:
    /// Begins an update of `items`, which must outlive this object.
    explicit ItemsUpdate(Items &items) : m_items(items) { items.BeginUpdate(); }
    ~ItemsUpdate() { m_items.EndUpdate(); }
    ItemsUpdate(const ItemsUpdate &) = delete;
    ItemsUpdate &operator=(const ItemsUpdate &) = delete;

private:
    Items &m_items;
};

} // namespace Zel
