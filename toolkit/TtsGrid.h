#pragma once

#include "toolkit/TtsCol.h"

#include <QTableView>

#include <functional>
#include <memory>

/// A grid of cells with variants (texts, Currency values shown with two decimals, pictures as QIcon), edited
/// as in a spreadsheet. Columns and rows are numbered from 1; 0 means "none". The column argument precedes
/// the row.
///
/// A grid with rows always has a current row. Typing or F2 starts an edit of the current cell. Each keystroke
/// changes the cell at once and is reported. Enter, Up, Down, Tab and a click elsewhere end the edit: Enter
/// moves down; Tab moves to the next editable cell, and after the last one out of the grid. Escape undoes and
/// ends the edit. In a column with a mask, keys that do not fit the mask have no effect; thousands separators
/// may be typed
/// ("1,250,000"). An entry that ends ambiguous ("1,250") restores the cell's value before the edit. Ctrl+C
/// copies the current cell; after Ctrl+A, or without a current cell, it copies the visible cells of the whole
/// grid with the headings, tab-separated. Ctrl+V is accepted or refused like a typed text.
class ZEL_TOOLKIT_EXPORT TtsGrid : public QTableView
{
    Q_OBJECT
public:
    explicit TtsGrid(QWidget *parent = nullptr);
    ~TtsGrid() override;

    int ColCount() const noexcept; ///< The number of columns, including hidden ones.
    /// A change of the number removes all rows; new columns are plain text columns.
    void SetColCount(int count);
    /// A column. Throws EListError outside 1..ColCount.
    TtsCol &Col(int column);
    const TtsCol &Col(int column) const;

    int RowCount() const noexcept; ///< The number of rows without the heading.
    /// Appends empty rows or removes the last ones.
    void SetRowCount(int count);
    /// Appends an empty row and returns its number.
    int AppendRow();
    /// Removes a row. Throws EListError outside 1..RowCount. If the row was current, the next row becomes
    /// current, or the previous one when there is no next.
    void DeleteRow(int row);
    int CurrentRow() const noexcept { return m_row; } ///< 0 only when there are no rows.
    int CurrentCol() const noexcept { return m_col; } ///< 0 until there is a row.
    /// Makes the cell current. Throws EListError when there is no such cell. For a cell in a hidden column
    /// the nearest visible cell of the row becomes current, because the keys would not move on from a hidden
    /// cell.
    void SetCurrentCell(int column, int row);
    /// Makes the row current, in the current column or the first.
    void SetCurrentRow(int row) { SetCurrentCell(qMax(1, m_col), row); }

    /// The value of a cell. Throws EListError when there is no such cell.
    const QVariant &Cell(int column, int row) const;
    /// Writes a cell and calls no handler but OnCellChanged. Throws EListError when there is no such cell.
    void SetCell(int column, int row, const QVariant &value);
    QString CellText(int column, int row) const; ///< The shown text of a cell.
    /// The shown text of @p value: a Currency with two decimals; "" for a picture.
    static QString TextOf(const QVariant &value);

    /// Between BeginUpdate and EndUpdate the grid draws nothing and reports no change of the row; the
    /// outermost EndUpdate does both. BeginUpdate ends a running edit and keeps its entry.
    void BeginUpdate();
    void EndUpdate();

    /// With true, an ambiguous entry does not change the cell, and Enter, Tab and the arrows keep the edit
    /// open until the entry is corrected or Escape is pressed. With false, the default, the mask's accepted
    /// characters are used: "1.250" in a column of two decimals becomes "1.25". An entry with a comma is
    /// never used so.
    void SetRefusesDoubtful(bool refuses);
    bool RefusesDoubtful() const; ///< Whether ambiguous entries are refused.

    bool IsEditing() const noexcept; ///< Whether a cell is being edited.
    /// Ends a running edit: with @p save like Enter but without moving, otherwise like Escape.
    void EndEdit(bool save);
    /// Starts an edit of the current cell; false when it cannot be edited.
    bool BeginEdit();

    /// The cells of the visible columns without pictures, headings first, tab-separated.
    QString AsTabSeparatedText() const;

    int RowHeight() const;             ///< In pixels; at least the height of the font.
    void SetRowHeight(int height);     ///< In pixels, for every row.
    int HeadingHeight() const;         ///< In pixels.
    void SetHeadingHeight(int height); ///< In pixels.
    int RowBarWidth() const; ///< In pixels; 0 while the bar left of the rows is hidden, which is the default.
    int ClientWidth() const; ///< In pixels, without the frame and the scroll bar.
    int ScrollBarWidth() const; ///< The width of the vertical scroll bar in pixels, shown or not.

    /// Runs after a cell's value was replaced by the user or by code, so that sums can be updated. Also runs
    /// for each cell of a removed row, with an invalid @p now. Must not throw.
    std::function<void(int column, const QVariant &before, const QVariant &now)> OnCellChanged;
    /// Runs after each keystroke of an edit; the cell has the new entry.
    std::function<void(int column, int row, bool byUser)> OnCellEdit;
    /// Runs before an edit ends. Setting @p cancel keeps the edit open.
    std::function<void(int column, int row, bool &cancel)> OnEndCellEdit;
    /// Runs before an edit is undone. When the handler sets @p cancel, the entry stays and the edit ends as
    /// with Enter. Otherwise, or without a handler, the cell gets its value before the edit.
    std::function<void(int column, int row, bool byUser, bool &cancel)> OnUndoCellEdit;
    /// Runs when another row has become current, also if it has the same number after rows were removed.
    std::function<void(int oldRow, int newRow)> OnRowChanged;

Q_SIGNALS:
    void CellEdited(int column, int row);    ///< A keystroke, a paste or an undo has changed a cell.
    void RowChanged(int oldRow, int newRow); ///< Another row has become current.
    /// An entry has ended, and the cell's number differs from @p typed, because keys were refused or the
    /// number was corrected in place.
    void EntryCorrected(int column, int row, const QString &typed);
    /// A typed or pasted text was refused. @p reason is a sentence without a full stop. With @p stays the
    /// edit is still open; otherwise the cell has its former value.
    void EntryRefused(int column, int row, const QString &typed, const QString &reason, bool stays);
    /// The running entry has become doubtful, and the cell has its value before the edit again. A receiver
    /// that stores more precise values than the cell shows restores its own value, too.
    void EntryTakenBack(int column, int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    friend class TtsCol;
    class Model;
    class Delegate;
    class CellEdit;
    void moveOn(bool forward);
    bool canEdit(int column, int row) const;
    void setMarked(bool marked);
    void columnChanged(int column);
    void columnSized(int column);
    void endEditIn(int column);
    void setCurrent(int column, int row);
    void rowsReplaced(int oldRow, bool sameRow);
    int firstColumn() const;
    int visibleColumn(int column) const;
    void applyHeights();

    Model *m_model;
    std::unique_ptr<CellEdit> m_edit;
    int m_row = 0;
    int m_col = 0;
    int m_updates = 0;
    int m_rowBeforeUpdate = 0;
    int m_rowHeight = 18;
    int m_headingHeight = 16;
    bool m_rowsDropped = false; ///< the row that was current at BeginUpdate has been removed
    bool m_quiet = false;       ///< changes of the current index are ignored
    bool m_marked = false;      ///< whether Ctrl+A has marked the whole grid
};
