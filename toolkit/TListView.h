#pragma once

#include "toolkit/ItemsView.h"
#include "toolkit/TListItems.h"

#include <QEvent>

/// A list view in report style over items of its own (see TListItems): columns with captions, an optional
/// check box and picture in column 0, whole rows selected. Rows are of one height.
class ZEL_TOOLKIT_EXPORT TListView : public Zel::ItemsView
{
    Q_OBJECT
    Q_PROPERTY(bool CheckBoxes READ CheckBoxes WRITE SetCheckBoxes)
    Q_PROPERTY(bool MultiSelect READ MultiSelect WRITE SetMultiSelect)
    Q_PROPERTY(bool ColumnClick READ ColumnClick WRITE SetColumnClick)
public:
    /// Sent to a list view it deletes a column; its index is DeleteColumnEvent::Index.
    static constexpr auto DeleteColumn = QEvent::Type(4124);
    /// The message that deletes a column.
    struct DeleteColumnEvent : QEvent {
        /// For the column at @p index.
        explicit DeleteColumnEvent(int index) : QEvent(DeleteColumn), Index(index) {}
        int Index; ///< The column to delete.
    };

    explicit TListView(QWidget *parent = nullptr);
    ~TListView() override;

    TListItems &Items() noexcept { return m_items; }             ///< The rows; they live as long as the view.
    const TListItems &Items() const noexcept { return m_items; } ///< The same, to look at.

    /// Adds a column after the last and returns its index. Width in pixels; 0 is present but hidden.
    int AddColumn(const QString &caption, int width);
    int ColumnCount() const;                 ///< Hidden ones included.
    QString ColumnCaption(int column) const; ///< EListError outside 0..ColumnCount-1, as for the next five.
    void SetColumnCaption(int column, const QString &caption); ///< Shown at once.
    /// Where a column's texts stand, and its heading above them: Qt::AlignLeft when not set, Qt::AlignRight
    /// for numbers, or Qt::AlignHCenter.
    Qt::Alignment ColumnAlignment(int column) const;
    void SetColumnAlignment(int column, Qt::Alignment alignment); ///< Shown at once.
    int ColumnWidth(int column) const;                            ///< In pixels.
    void SetColumnWidth(int column, int width);                   ///< A negative width counts as 0.
    /// Removes a column with its texts; the texts of the columns behind it move up with them.
    void RemoveColumn(int column);
    /// Width of the area that shows the columns, in pixels.
    int ClientWidth() const { return viewport()->width(); }

    /// The selected item, the first of them with MultiSelect; nullptr for none. Setting nullptr selects none.
    TListItem *SelectedItem() const;
    void SetSelected(TListItem *item);
    /// The item with the keyboard mark; nullptr for none.
    TListItem *FocusedItem() const;
    void SetFocused(TListItem *item);
    /// The item at a place in the client area, nullptr where there is none.
    TListItem *GetItemAt(int x, int y) const;

    /// The pictures of the items; not owned, forgotten when destroyed.
    TImageList *SmallImages() const { return ItemImages(); }
    void SetSmallImages(TImageList *images) { SetItemImages(images); }

    bool CheckBoxes() const noexcept; ///< Each item has one in column 0.
    void SetCheckBoxes(bool checkBoxes);
    bool MultiSelect() const { return selectionMode() == ExtendedSelection; } ///< More than one at a time.
    void SetMultiSelect(bool multiSelect)
    {
        setSelectionMode(multiSelect ? ExtendedSelection : SingleSelection);
    }
    bool ColumnClick() const; ///< Column headings act as buttons; off when not set.
    void SetColumnClick(bool columnClick);

Q_SIGNALS:
    /// At once, still empty, inside an update too. A listener may delete the item.
    void ItemInserted(TListItem *item);
    void ItemChanged(
        TListItem *item); ///< Text, picture, check box or selection; inside an update only the check box.
    void Resized();       ///< The client area has another size.

protected:
    bool event(QEvent *event) override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    friend class TListItems;
    void CheckColumn(int column) const;

    Zel::ListModel *m_model; // a child of this
    TListItems m_items;
};
