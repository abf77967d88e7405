#pragma once

#include "data/DataTypes.h"
#include "export/zel_toolkit_export.h"
#include "toolkit/NodePool.h"
#include "toolkit/NodeWatch.h"

#include <QStringList>

#include <memory>
#include <vector>

class TListItems;
class TListView;
class TWindowUpdateLock;

namespace Zel
{
class ListModel;
}

/// One row of a list view. The view's TListItems creates, owns and deletes it; its address does not change.
class ZEL_TOOLKIT_EXPORT TListItem
{
public:
    const QString &Caption() const noexcept { return m_caption; } ///< The text of column 0.
    void SetCaption(const QString &caption); ///< Shown at once, or at the end of an update.
    /// The texts of columns 1 and up; columns without one are blank.
    const QStringList &SubItems() const noexcept { return m_subItems; }
    void SetSubItems(const QStringList &subItems);
    void AddSubItem(const QString &text);               ///< Appends a text.
    void SetSubItem(int index, const QString &text);    ///< Throws EListError when there is no such sub-item.
    bool Checked() const noexcept { return m_checked; } ///< The state of the check box, shown or not.
    void SetChecked(bool checked);                      ///< Has the same effect as a click by the user.
    /// The index in the view's SmallImages; -1 for no picture.
    int ImageIndex() const noexcept { return m_imageIndex; }
    void SetImageIndex(int index);
    /// The bookmark of the item's row. The host gets and frees the bookmark; the item only stores it.
    TBookmark Data() const noexcept { return m_data; }
    void SetData(TBookmark data) noexcept { m_data = data; }
    bool Selected() const;
    void SetSelected(bool selected);
    bool Focused() const;
    void SetFocused(bool focused);
    int Index() const noexcept { return m_row; } ///< The position in the list.
    void MakeVisible();                          ///< Scrolls to the item.
    /// Deletes the item without freeing its bookmark.
    void Delete();

    TListItems *Owner() const noexcept { return m_owner; } ///< The items of the view.
    TListView *ListView() const noexcept;                  ///< The view that shows the item.

private:
    friend class TListItems;
    friend class Zel::NodePool<TListItem>;

    TListItem() = default;
    TListItem(const TListItem &) = delete;
    TListItem &operator=(TListItem &&) = default;
    void Changed(int column);
    void RemoveColumn(int column);

    QString m_caption;
    QStringList m_subItems;
    TBookmark m_data = nullptr;
    TListItems *m_owner = nullptr;
    int m_row = 0;
    int m_imageIndex = -1;
    bool m_checked = false;
};

/// The rows of one list view.
class ZEL_TOOLKIT_EXPORT TListItems
{
public:
    explicit TListItems(TListView *view); ///< Only the view calls this; it owns the items.
    ~TListItems();
    TListItems(const TListItems &) = delete;
    TListItems &operator=(const TListItems &) = delete;

    /// Appends an empty item and emits the view's ItemInserted, also inside an update. Returns nullptr when a
    /// slot of ItemInserted has deleted the item.
    TListItem *Add();
    int Count() const noexcept { return static_cast<int>(m_rows.size()); } ///< The number of items.
    TListItem *Item(int index) const;                              ///< Throws EListError outside 0..Count-1.
    TListItem *operator[](int index) const { return Item(index); } ///< The same as Item.
    void Clear();
    void Delete(int index); ///< Throws EListError outside 0..Count-1. Selects no other item instead.

    /// Until the matching EndUpdate (calls are counted) the view shows no changes. After an item was added or
    /// deleted, the view has no items until EndUpdate, which shows all of them at once. The view keeps the
    /// selection, the focus and the scroll position for the items that remain.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const noexcept { return m_updates > 0; }
    bool Shown() const noexcept { return !m_hidden; } ///< False while an update hides the items.

    TListView *Owner() const noexcept { return m_view; } ///< The view of the items.

private:
    friend class TListItem;
    friend class TListView;

    void Hide(bool keepState);
    void Show();
    void RemoveColumn(int column);

    TListView *m_view;
    Zel::ListModel *m_model; // owned by the view
    Zel::NodePool<TListItem> m_pool;
    std::vector<TListItem *> m_rows;
    int m_updates = 0;
    bool m_hidden = false;               // the view does not see the items
    std::vector<TListItem *> m_selected; // valid while hidden
    TListItem *m_focused = nullptr;      // valid while hidden
    int m_scroll = 0;
    Zel::NodeWatch<TListItem> *m_watches = nullptr; // the newest watch
    std::unique_ptr<TWindowUpdateLock> m_lock;
};
