#pragma once

#include "toolkit/MaskValidator_p.h"
#include "toolkit/TtsGrid.h"

class QKeyEvent;
class QLineEdit;

/// The edit of one cell, from the first key to the end, and the keys typed in it.
class ZEL_TOOLKIT_NO_EXPORT TtsGrid::CellEdit
{
public:
    explicit CellEdit(TtsGrid &grid) : m_grid(grid) {}

    Zel::TypedEntry &Entry() noexcept { return m_entry; }
    QLineEdit *Editor() const noexcept { return m_editor; } ///< The open editor; nullptr when there is none.
    bool IsIn(int column) const noexcept { return m_editor && m_column == column; }

    void Opened(QLineEdit *editor, int column, int row); ///< Starts an edit with a new editor.
    void Typed(const QString &text);                     ///< Handles a change of the editor's text.
    bool HandleKey(const QKeyEvent &event);              ///< False when the editor must handle the key.
    void Paste();                                        ///< Pastes into the current cell without an editor.
    /// Ends the edit and keeps or undoes the entry. With @p mayStay a doubtful entry may keep the edit open.
    /// True when the edit has ended.
    bool Finish(bool save, bool mayStay);
    /// Ends the edit even if OnEndCellEdit cancels, because the cell will be removed or moved.
    void FinishAnyhow();
    void Forget() noexcept { m_editor = nullptr; } ///< For the grid's destructor, which destroys the editor.

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
