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

/// One row of a list view. Made, owned and deleted by the view's TListItems; its address holds until then.
class ZEL_TOOLKIT_EXPORT TListItem
{
public:
    const QString &Caption() const noexcept { return m_caption; } ///< The text of column 0.
    void SetCaption(const QString &caption); ///< Shown at once, or at the end of an update.
    /// The texts of columns 1 and up; columns without one are blank.
    const QStringList &SubItems() const noexcept { return m_subItems; }
    void SetSubItems(const QStringList &subItems);
    void AddSubItem(const QString &text);               ///< Appends a text.
    void SetSubItem(int index, const QString &text);    ///< EListError outside the sub-items there are.
    bool Checked() const noexcept { return m_checked; } ///< Its check box, shown or not.
    void SetChecked(bool checked);                      ///< What the user's click does.
    /// Index into the view's SmallImages; -1 is no picture.
    int ImageIndex() const noexcept { return m_imageIndex; }
    void SetImageIndex(int index);
    /// The row the item leads back to. The item only carries it: taking and giving back is the host's.
    TBookmark Data() const noexcept { return m_data; }
    void SetData(TBookmark data) noexcept { m_data = data; }
    bool Selected() const;
    void SetSelected(bool selected);
    bool Focused() const;
    void SetFocused(bool focused);
    int Index() const noexcept { return m_row; } ///< Its place in the list.
    void MakeVisible();                          ///< Scrolls to it.
    /// Deletes the item. Its bookmark is not given back.
    void Delete();

    TListItems *Owner() const noexcept { return m_owner; } ///< The items it belongs to.
    TListView *ListView() const noexcept;                  ///< The view that shows it.

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
    explicit TListItems(TListView *view); ///< For the view, which owns it.
    ~TListItems();
    TListItems(const TListItems &) = delete;
    TListItems &operator=(const TListItems &) = delete;

    /// Adds an empty item after the last. The view's ItemInserted follows at once, inside an update too;
    /// nullptr when a listener has deleted the item.
    TListItem *Add();
    int Count() const noexcept { return static_cast<int>(m_rows.size()); } ///< How many items there are.
    TListItem *Item(int index) const;                                      ///< EListError outside 0..Count-1.
    TListItem *operator[](int index) const { return Item(index); }         ///< The same as Item.
    void Clear();
    void Delete(int index); ///< EListError outside 0..Count-1. A deleted selected item leaves no selection.

    /// Until the matching EndUpdate (calls are counted) the view shows nothing new; once items are added or
    /// deleted in between it forgets the old ones too, and is told of all the new ones at once at the end.
    /// Selection, focus and the place on screen of items that stay are kept.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const noexcept { return m_updates > 0; }
    bool Shown() const noexcept { return !m_hidden; } ///< Whether the view sees them; an update hides them.

    TListView *Owner() const noexcept { return m_view; } ///< The view that shows them.

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
    std::vector<TListItem *> m_selected; // meaningful while hidden
    TListItem *m_focused = nullptr;      // meaningful while hidden
    int m_scroll = 0;
    Zel::NodeWatch<TListItem> *m_watches = nullptr; // the newest
    std::unique_ptr<TWindowUpdateLock> m_lock;
};
