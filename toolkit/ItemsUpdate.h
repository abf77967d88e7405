#pragma once

namespace Zel
{

/// Several changes of a view's items shown as one: an update that ends with this, also when an error passes.
template <typename Items> class ItemsUpdate
{
public:
    /// Begins an update of `items`, which is to outlive this guard.
    explicit ItemsUpdate(Items &items) : m_items(items) { items.BeginUpdate(); }
    ~ItemsUpdate() { m_items.EndUpdate(); }
    ItemsUpdate(const ItemsUpdate &) = delete;
    ItemsUpdate &operator=(const ItemsUpdate &) = delete;

private:
    Items &m_items;
};

} // namespace Zel
