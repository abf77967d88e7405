#pragma once

#include "toolkit/TtsCol.h"

#include <QTableView>

#include <functional>
#include <memory>

/// A grid of cells that hold variants (texts, Currency values shown in two decimals, pictures as QIcon) and
/// are edited as in a spreadsheet. Columns and rows count from 1, a column before a row; number 0 is "none".
///
/// A grid with rows always has a current row. Typing or F2 starts an edit of the current cell; each keystroke
/// goes into the cell at once and is reported. Enter, the arrows up and down, Tab and a click elsewhere end
/// the edit: Enter goes down, Tab on to the next cell that can be edited and after the last one out of the
/// grid. Escape asks to undo and leaves the edit. In a column with a mask the keys that cannot stand in the
/// cell do nothing; thousands may be parted while a number is typed ("1,250,000"). An entry that ends as
/// something that can be read in two ways ("1,250") leaves the cell as it was before the edit. Ctrl+C copies
/// the current cell; after Ctrl+A, or when there is no current cell, it copies the visible cells of the whole
/// grid with the headings, tab-separated. Ctrl+V is taken or refused as if it were typed.
class ZEL_TOOLKIT_EXPORT TtsGrid : public QTableView
{
    Q_OBJECT
public:
    explicit TtsGrid(QWidget *parent = nullptr);
    ~TtsGrid() override;

    int ColCount() const noexcept; ///< Hidden columns included.
    /// Drops all rows when the number changes; new columns are plain text columns.
    void SetColCount(int count);
    /// EListError outside 1..ColCount.
    TtsCol &Col(int column);
    const TtsCol &Col(int column) const;

    int RowCount() const noexcept; ///< Without the heading.
    /// Appends empty rows or drops the last ones.
    void SetRowCount(int count);
    /// Appends an empty row and returns its number.
    int AppendRow();
    /// Drops a row; EListError outside 1..RowCount. The row after it, else the one before, becomes current
    /// when it was the current one.
    void DeleteRow(int row);
    int CurrentRow() const noexcept { return m_row; } ///< 0 exactly when there are no rows.
    int CurrentCol() const noexcept { return m_col; } ///< 0 until there is a row.
    /// Makes the cell the current one; EListError when there is no such cell. For a cell of a hidden column
    /// the nearest visible one of the row stands in: the keys would not move on from a cell that is out of
    /// sight.
    void SetCurrentCell(int column, int row);
    /// In the current column, or the first.
    void SetCurrentRow(int row) { SetCurrentCell(qMax(1, m_col), row); }

    /// EListError when there is no such cell.
    const QVariant &Cell(int column, int row) const;
    /// Writes a cell; no event but CellChanged. Raises as Cell().
    void SetCell(int column, int row, const QVariant &value);
    QString CellText(int column, int row) const; ///< As shown.
    /// @p value as shown: a Currency in two decimals, a picture as "".
    static QString TextOf(const QVariant &value);

    /// Between the two nothing is drawn and no row change is reported; EndUpdate makes up for both. They
    /// nest. BeginUpdate ends an edit in progress, keeping it.
    void BeginUpdate();
    void EndUpdate();

    /// With it nothing is taken of an entry that can be read in two ways, and the edit stays open on Enter,
    /// Tab and the arrows until the entry is put right or left with Escape. Without it, as at first, "1.250"
    /// in a column of two decimals is what the mask lets pass of it, "1.25"; a comma is never read so.
    void SetRefusesDoubtful(bool refuses);
    bool RefusesDoubtful() const; ///< Whether doubtful entries are refused.

    bool IsEditing() const noexcept; ///< Whether a cell is being edited.
    /// Ends an edit in progress as Enter does, without moving, or as Escape does; nothing when there is none.
    void EndEdit(bool save);
    /// Starts an edit of the current cell; false when it cannot be edited.
    bool BeginEdit();

    /// The cells of the visible columns without pictures, headings first, tab-separated.
    QString AsTabSeparatedText() const;

    int RowHeight() const;             ///< pixels; grows to what the font needs
    void SetRowHeight(int height);     ///< In pixels, for every row.
    int HeadingHeight() const;         ///< In pixels.
    void SetHeadingHeight(int height); ///< In pixels.
    int RowBarWidth() const;    ///< pixels; 0 while the bar left of the rows is hidden, as it is by default
    int ClientWidth() const;    ///< pixels inside the frame and the scroll bar
    int ScrollBarWidth() const; ///< pixels the vertical scroll bar takes or would take

    /// A cell's value was replaced, by whomever. Keeps sums in step; called for each cell that a dropped row
    /// takes with it (@p now invalid) too. It must not raise.
    std::function<void(int column, const QVariant &before, const QVariant &now)> OnCellChanged;
    /// After each keystroke of an edit, with the cell holding what was typed so far.
    std::function<void(int column, int row, bool byUser)> OnCellEdit;
    /// Before an edit ends. Setting @p cancel keeps it open.
    std::function<void(int column, int row, bool &cancel)> OnEndCellEdit;
    /// Before an edit is taken back. Without a handler, or when it leaves @p cancel unset, the cell gets back
    /// what it held before the edit; else what was typed stays and the edit ends as with Enter.
    std::function<void(int column, int row, bool byUser, bool &cancel)> OnUndoCellEdit;
    /// Another row is the current one, or the same number stands for another row since rows were dropped.
    std::function<void(int oldRow, int newRow)> OnRowChanged;

Q_SIGNALS:
    void CellEdited(int column, int row);    ///< A cell has followed a keystroke, a paste or an undo.
    void RowChanged(int oldRow, int newRow); ///< Another row is the current one.
    /// An entry has ended, and the cell holds another number than @p typed says: keys were refused, or the
    /// number was corrected in place.
    void EntryCorrected(int column, int row, const QString &typed);
    /// What was typed or pasted is not taken; @p reason says why, without a full stop. The cell is as before,
    /// or, when the entry @p stays, still open.
    void EntryRefused(int column, int row, const QString &typed, const QString &reason, bool stays);
    /// What is being typed has become doubtful, and the cell has got back what it held before the edit.
    /// Whoever keeps more of it than the cell shows puts it back too.
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
    bool m_rowsDropped = false; ///< the current row of the update's start is gone
    bool m_quiet = false;       ///< the current index moves without meaning
    bool m_marked = false;      ///< Ctrl+A
};
