#pragma once

#include "toolkit/MaskValidator_p.h"
#include "toolkit/TtsGrid.h"

class QKeyEvent;
class QLineEdit;

/// The edit of one cell, from its first key to its end, and what was typed for it.
class ZEL_TOOLKIT_NO_EXPORT TtsGrid::CellEdit
{
public:
    explicit CellEdit(TtsGrid &grid) : m_grid(grid) {}

    Zel::TypedEntry &Entry() noexcept { return m_entry; }
    QLineEdit *Editor() const noexcept { return m_editor; } ///< The open editor; nullptr when there is none.
    bool IsIn(int column) const noexcept { return m_editor && m_column == column; }

    void Opened(QLineEdit *editor, int column, int row); ///< An editor was made for a cell.
    void Typed(const QString &text);                     ///< The editor's text is another.
    bool HandleKey(const QKeyEvent &event);              ///< False when the key is the editor's own.
    void Paste();                                        ///< Into the grid's current cell, without an editor.
    /// Ends the edit, keeping what was typed or taking it back. A doubtful entry stays open where it
    /// @p mayStay. True when the edit is over.
    bool Finish(bool save, bool mayStay);
    /// Ends the edit even where its end is refused: the cell is about to go, or to move.
    void FinishAnyhow();
    void Forget() noexcept { m_editor = nullptr; } ///< The editor goes with the grid.

private:
    bool settleDoubt();
    QString whyRefused(int column, const QString &text) const;
    void tellCorrection(int column, int row, const QString &typed);
    void close();

    TtsGrid &m_grid;
    Zel::TypedEntry m_entry;
    QLineEdit *m_editor = nullptr;
    int m_column = 0;
    int m_row = 0;
    QVariant m_before;
    bool m_finishing = false;
};
