#pragma once

#include "toolkit/ItemsView.h"
#include "toolkit/TListItems.h"

#include <QEvent>

/// A list view in report style over its own items (see TListItems): columns with captions, an optional check
/// box and picture in column 0. The selection covers whole rows. All rows have the same height.
class ZEL_TOOLKIT_EXPORT TListView : public Zel::ItemsView
{
    Q_OBJECT
    Q_PROPERTY(bool CheckBoxes READ CheckBoxes WRITE SetCheckBoxes)
    Q_PROPERTY(bool MultiSelect READ MultiSelect WRITE SetMultiSelect)
    Q_PROPERTY(bool ColumnClick READ ColumnClick WRITE SetColumnClick)
public:
    /// The type of the event that deletes a column, see DeleteColumnEvent.
    static constexpr auto DeleteColumn = QEvent::Type(4124);
    /// The event that deletes a column of the list view that receives it.
    struct DeleteColumnEvent : QEvent {
        /// An event for the column at @p index.
        explicit DeleteColumnEvent(int index) : QEvent(DeleteColumn), Index(index) {}
        int Index; ///< The column to delete.
    };

    explicit TListView(QWidget *parent = nullptr);
    ~TListView() override;

    TListItems &Items() noexcept { return m_items; }             ///< The rows, owned by the view.
    const TListItems &Items() const noexcept { return m_items; } ///< The same, read-only.

    /// Appends a column and returns its index. The width is in pixels; a column of width 0 is hidden.
    int AddColumn(const QString &caption, int width);
    int ColumnCount() const;                 ///< Including hidden columns.
    QString ColumnCaption(int column) const; ///< EListError outside 0..ColumnCount-1, as for the next six.
    void SetColumnCaption(int column, const QString &caption); ///< Shown at once.
    /// The alignment of a column's texts and heading: Qt::AlignLeft by default, Qt::AlignRight for numbers,
    /// or Qt::AlignHCenter.
    Qt::Alignment ColumnAlignment(int column) const;
    void SetColumnAlignment(int column, Qt::Alignment alignment); ///< Shown at once.
    int ColumnWidth(int column) const;                            ///< In pixels.
    void SetColumnWidth(int column, int width);                   ///< A negative width counts as 0.
    /// Removes a column with its texts. The texts of the following columns move with their columns.
    void RemoveColumn(int column);
    /// The width of the area that shows the columns, in pixels.
    int ClientWidth() const { return viewport()->width(); }

    /// The selected item, with MultiSelect the first one; nullptr for none. Setting nullptr clears the
    /// selection.
    TListItem *SelectedItem() const;
    void SetSelected(TListItem *item);
    /// The item with the keyboard focus; nullptr for none.
    TListItem *FocusedItem() const;
    void SetFocused(TListItem *item);
    /// The item at a position in the client area, in pixels; nullptr for none.
    TListItem *GetItemAt(int x, int y) const;

    /// The pictures of the items. Not owned; nullptr after the list is destroyed.
    TImageList *SmallImages() const { return ItemImages(); }
    void SetSmallImages(TImageList *images) { SetItemImages(images); }

    bool CheckBoxes() const noexcept; ///< Whether each item has a check box in column 0.
    void SetCheckBoxes(bool checkBoxes);
    /// Whether several items can be selected.
    bool MultiSelect() const { return selectionMode() == ExtendedSelection; }
    void SetMultiSelect(bool multiSelect)
    {
        setSelectionMode(multiSelect ? ExtendedSelection : SingleSelection);
    }
    bool ColumnClick() const; ///< Whether column headings act as buttons; default false.
    void SetColumnClick(bool columnClick);

Q_SIGNALS:
    /// An item was added and is still empty. Emitted at once, also inside an update. A slot may delete the
    /// item.
    void ItemInserted(TListItem *item);
    void ItemChanged(
        TListItem *item); ///< Text, picture, check box or selection; inside an update only for the check box.
    void Resized();       ///< The size of the client area has changed.

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
