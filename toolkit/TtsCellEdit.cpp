#include "toolkit/TtsCellEdit_p.h"

#include "data/Format.h"
#include "toolkit/Digits_p.h"
#include "toolkit/TtsGridModel_p.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopeGuard>

#include <algorithm>

namespace
{
constexpr qsizetype digitsShown = 40; ///< The maximum length of a quoted number.
}

void TtsGrid::CellEdit::Opened(QLineEdit *editor, int column, int row)
{
    m_grid.setMarked(false);
    m_editor = editor;
    m_column = column;
    m_row = row;
    m_before = m_grid.Cell(column, row);
    m_entry.begin({});
}

void TtsGrid::CellEdit::Typed(const QString &text)
{
    if (!m_editor)
        return;
    const std::optional<QString> number = m_grid.Col(m_column).Mask().Corrected(text);
    if (!number && m_entry.doubtful)
        return;
    m_entry.doubtful = !number;
    // A doubtful entry restores the old value, so that its first digits do not count as the number.
    const QVariant value = number ? QVariant(*number) : m_before;
    m_entry.taken = TtsGrid::TextOf(value);
    m_grid.SetCell(m_column, m_row, value);
    if (m_grid.OnCellEdit)
        m_grid.OnCellEdit(m_column, m_row, !m_entry.doubtful);
    if (m_entry.doubtful)
        Q_EMIT m_grid.EntryTakenBack(m_column, m_row);
    Q_EMIT m_grid.CellEdited(m_column, m_row);
}

// Resolves a doubtful entry without asking: writes the characters that the mask accepts one by one into the
// cell. Returns false, without effect, when the entry has a comma or doubtful entries are refused.
bool TtsGrid::CellEdit::settleDoubt()
{
    if (m_entry.refuses || m_entry.shown.contains(u','))
        return false;
    const TtsMask &mask = m_grid.Col(m_column).Mask();
    QString passed;
    for (const QChar c : std::as_const(m_entry.shown)) {
        if (mask.Accepts(passed + c))
            passed += c;
    }
    m_entry.doubtful = false;
    m_entry.taken = passed;
    m_grid.SetCell(m_column, m_row, passed);
    if (m_grid.OnCellEdit)
        m_grid.OnCellEdit(m_column, m_row, true);
    Q_EMIT m_grid.CellEdited(m_column, m_row);
    return true;
}

QString TtsGrid::CellEdit::whyRefused(int column, const QString &text) const
{
    const TtsCol &col = m_grid.Col(column);
    const QString mask = col.Mask().Text();
    const qsizetype point = mask.lastIndexOf(u'.');
    NumberRules rules;
    rules.unit = col.Unit();
    rules.decimals = point < 0 ? 0 : static_cast<int>(QStringView(mask).sliced(point).count(u'#'));
    if (!mask.contains(u'-'))
        rules.low = Currency();
    const NumberEntry entry(text, rules);
    return entry.isNumber() ? TtsGrid::tr("\"%1\" has more digits than the cell can hold")
                                  .arg(entry.text().left(digitsShown))
                            : entry.reason();
}

// Emits EntryCorrected when the cell's number differs from the typed one.
void TtsGrid::CellEdit::tellCorrection(int column, int row, const QString &typed)
{
    if (m_grid.Col(column).Mask().IsEmpty() || !m_grid.m_model->Holds(column, row))
        return;
    const QString text = m_grid.CellText(column, row);
    NumberRules rules;
    rules.unit = m_grid.Col(column).Unit();
    rules.decimals = Zel::DecimalsKept;
    const NumberEntry said(typed, rules);
    Currency held;
    const bool same = TryStrToCurr(text, held) ? said.isNumber() && said.value() == held
                                               : text.trimmed() == typed.trimmed();
    if (!same)
        Q_EMIT m_grid.EntryCorrected(column, row, typed.trimmed());
}

void TtsGrid::CellEdit::close()
{
    if (QWidget *const editor = std::exchange(m_editor, nullptr))
        m_grid.QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void TtsGrid::CellEdit::FinishAnyhow()
{
    if (m_editor && !Finish(true, false))
        close();
}

bool TtsGrid::CellEdit::Finish(bool save, bool mayStay)
{
    if (m_finishing)
        return false;
    m_finishing = true;
    const auto leave = qScopeGuard([this] { m_finishing = false; });
    // Closes the editor even if a handler throws.
    bool cancel = false;
    const auto closing = qScopeGuard([this, &cancel] {
        if (!cancel)
            close();
    });
    const int column = m_column;
    const int row = m_row;
    if (!save) {
        bool keep = false;
        if (m_grid.OnUndoCellEdit)
            m_grid.OnUndoCellEdit(column, row, true, keep);
        if (!keep) {
            m_grid.SetCell(column, row, m_before);
            if (m_grid.OnCellEdit)
                m_grid.OnCellEdit(column, row, false);
            Q_EMIT m_grid.CellEdited(column, row);
            return true;
        }
    }
    const QString typed = m_entry.typed;
    const bool touched = m_entry.touched; // read now, because a handler that writes the cell resets it
    const bool refused = m_entry.doubtful && !settleDoubt();
    if (refused && mayStay && m_entry.refuses) {
        cancel = true;
        Q_EMIT m_grid.EntryRefused(column, row, typed, whyRefused(column, typed), true);
        return false;
    }
    if (m_grid.OnEndCellEdit)
        m_grid.OnEndCellEdit(column, row, cancel);
    if (cancel)
        return false;
    m_entry.touched = m_entry.doubtful = false;
    m_entry.refused.clear();
    if (refused)
        Q_EMIT m_grid.EntryRefused(column, row, typed, whyRefused(column, typed), false);
    else if (touched)
        tellCorrection(column, row, typed);
    return true;
}

bool TtsGrid::CellEdit::HandleKey(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Escape:
        Finish(false, false);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        if (Finish(true, true) && m_grid.m_row < m_grid.RowCount())
            m_grid.setCurrent(m_grid.m_col, m_grid.m_row + 1);
        return true;
    case Qt::Key_Up:
        if (Finish(true, true) && m_grid.m_row > 1)
            m_grid.setCurrent(m_grid.m_col, m_grid.m_row - 1);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (Finish(true, true))
            m_grid.moveOn(event.key() == Qt::Key_Tab);
        return true;
    default:
        return false;
    }
}

void TtsGrid::CellEdit::Paste()
{
    const int column = m_grid.m_col;
    const int row = m_grid.m_row;
    if (!m_grid.canEdit(column, row))
        return;
    const QString pasted = QGuiApplication::clipboard()->text();
    if (pasted.trimmed().isEmpty())
        return;
    const TtsCol &col = m_grid.Col(column);
    NumberRules rules;
    rules.unit = col.Unit();
    const bool isOther = NumberEntry(pasted, rules).problem() == NumberEntry::Problem::OtherUnit;
    const std::optional<QString> text = col.Mask().Corrected(pasted);
    // A mere beginning of a number, such as a point, may be typed but not pasted.
    const bool isNone = !col.Mask().IsEmpty() && text &&
                        std::none_of(text->cbegin(), text->cend(), [](QChar c) { return Zel::IsDigit(c); });
    if (!text || isOther || isNone) {
        Q_EMIT m_grid.EntryRefused(column, row, pasted.trimmed(), whyRefused(column, pasted), false);
        return;
    }
    m_grid.setMarked(false);
    m_grid.SetCell(column, row, *text);
    if (m_grid.OnCellEdit)
        m_grid.OnCellEdit(column, row, true);
    Q_EMIT m_grid.CellEdited(column, row);
    bool cancel = false;
    if (m_grid.OnEndCellEdit)
        m_grid.OnEndCellEdit(column, row, cancel);
    tellCorrection(column, row, pasted);
}
