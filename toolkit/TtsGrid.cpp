#include "toolkit/TtsGrid.h"

#include "data/Format.h"
#include "toolkit/GridLook_p.h"
#include "toolkit/LookFonts_p.h"
#include "toolkit/TApplication.h"
#include "toolkit/TtsCellEdit_p.h"
#include "toolkit/TtsGridDelegate_p.h"
#include "toolkit/TtsGridModel_p.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>

using namespace Qt::StringLiterals;

TtsGrid::TtsGrid(QWidget *parent)
    : QTableView(parent), m_model(new Model(this)), m_edit(std::make_unique<CellEdit>(*this))
{
    setHorizontalHeader(new Zel::GridLook::Header(this));
    setItemDelegate(new Delegate(this));
    setModel(m_model);
    setSelectionMode(NoSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(true);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerItem);
    QHeaderView *const headings = horizontalHeader();
    headings->setSectionsMovable(false);
    headings->setSectionsClickable(false);
    headings->setSectionResizeMode(QHeaderView::Fixed);
    headings->setHighlightSections(false);
    headings->setMinimumSectionSize(0);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    applyHeights();
}

TtsGrid::~TtsGrid()
{
    // The destructor of QTableView may close an editor; the handlers must not run then.
    m_edit->Forget();
    OnCellChanged = nullptr;
    OnCellEdit = nullptr;
    OnEndCellEdit = nullptr;
    OnUndoCellEdit = nullptr;
    OnRowChanged = nullptr;
}

int TtsGrid::ColCount() const noexcept
{
    return static_cast<int>(m_model->m_columns.size());
}

void TtsGrid::SetColCount(int count)
{
    count = qMax(0, count);
    if (count == ColCount())
        return;
    SetRowCount(0);
    m_col = 0;
    BeginUpdate();
    auto &columns = m_model->m_columns;
    while (ColCount() > count)
        columns.pop_back();
    while (ColCount() < count)
        columns.emplace_back(new TtsCol(this, ColCount() + 1)); // the constructor is private
    EndUpdate();
    for (int column = 1; column <= count; ++column)
        columnSized(column);
}

TtsCol &TtsGrid::Col(int column)
{
    if (column < 1 || column > ColCount())
        throw EListError(u"The grid has no column %1."_s.arg(column));
    return *m_model->m_columns[static_cast<std::size_t>(column - 1)];
}

const TtsCol &TtsGrid::Col(int column) const
{
    return const_cast<TtsGrid *>(this)->Col(column); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

int TtsGrid::RowCount() const noexcept
{
    return m_model->m_rows;
}

void TtsGrid::SetRowCount(int count)
{
    count = qMax(0, count);
    if (count == RowCount())
        return;
    BeginUpdate();
    const std::size_t kept = static_cast<std::size_t>(count) * m_model->m_columns.size();
    if (count < RowCount() && OnCellChanged) {
        for (int row = count + 1; row <= RowCount(); ++row) {
            for (int column = 1; column <= ColCount(); ++column)
                OnCellChanged(column, m_model->m_cells[m_model->At(column, row)], QVariant());
        }
    }
    if (m_row > count) {
        m_rowsDropped = true;
        m_row = count;
    }
    m_model->m_cells.resize(kept);
    m_model->m_rows = count;
    if (m_row == 0 && count > 0)
        m_row = 1;
    EndUpdate();
}

int TtsGrid::AppendRow()
{
    m_model->Insert(m_updates == 0);
    const int row = RowCount();
    if (m_row == 0) {
        if (m_updates > 0)
            m_row = row;
        else
            setCurrent(qMax(m_col, firstColumn()), row);
    }
    return row;
}

void TtsGrid::DeleteRow(int row)
{
    m_model->Require(1, row);
    m_edit->FinishAnyhow();
    if (OnCellChanged) {
        for (int column = 1; column <= ColCount(); ++column)
            OnCellChanged(column, m_model->m_cells[m_model->At(column, row)], QVariant());
    }
    const int before = m_row;
    const bool current = row == m_row;
    {
        const bool quiet = std::exchange(m_quiet, true);
        m_model->Remove(row, m_updates == 0);
        m_quiet = quiet;
    }
    if (row < m_row || m_row > RowCount())
        --m_row;
    if (m_updates > 0)
        m_rowsDropped = m_rowsDropped || current;
    else
        rowsReplaced(before, !current);
}

void TtsGrid::SetCurrentCell(int column, int row)
{
    m_model->Require(column, row);
    column = visibleColumn(column);
    if (m_updates > 0) {
        m_col = column;
        m_row = row;
    } else {
        setCurrent(column, row);
    }
}

// The column itself, or the nearest visible one; of two at the same distance the right one.
int TtsGrid::visibleColumn(int column) const
{
    for (int distance = 0; distance < ColCount(); ++distance) {
        for (const int near : {column + distance, column - distance}) {
            if (near >= 1 && near <= ColCount() && Col(near).Visible())
                return near;
        }
    }
    return column;
}

void TtsGrid::setCurrent(int column, int row)
{
    setCurrentIndex(m_model->index(row - 1, column - 1));
}

// Sets the view's current cell after rows were added or removed, and reports a change of the row once.
void TtsGrid::rowsReplaced(int oldRow, bool sameRow)
{
    if (m_col == 0 && m_row > 0)
        m_col = firstColumn();
    {
        const bool quiet = std::exchange(m_quiet, true);
        if (m_row > 0)
            setCurrent(m_col, m_row);
        m_quiet = quiet;
    }
    if (oldRow == m_row && (sameRow || m_row == 0))
        return;
    if (OnRowChanged)
        OnRowChanged(oldRow, m_row);
    Q_EMIT RowChanged(oldRow, m_row);
}

int TtsGrid::firstColumn() const
{
    int first = 0;
    for (int column = 1; column <= ColCount(); ++column) {
        const TtsCol &col = Col(column);
        if (!col.Visible())
            continue;
        if (!col.ReadOnly())
            return column;
        if (first == 0 || Col(first).Heading().isEmpty())
            first = column;
    }
    return qMax(1, first);
}

const QVariant &TtsGrid::Cell(int column, int row) const
{
    m_model->Require(column, row);
    return m_model->m_cells[m_model->At(column, row)];
}

void TtsGrid::SetCell(int column, int row, const QVariant &value)
{
    m_model->Require(column, row);
    QVariant &cell = m_model->m_cells[m_model->At(column, row)];
    if (OnCellChanged)
        OnCellChanged(column, cell, value);
    cell = value;
    if (m_updates == 0)
        m_model->Changed(column, row);
}

QString TtsGrid::CellText(int column, int row) const
{
    return TextOf(Cell(column, row));
}

QString TtsGrid::TextOf(const QVariant &value)
{
    if (value.typeId() == qMetaTypeId<Currency>())
        return FormatFloat(FormatMask::TwoDecimals, value.value<Currency>());
    return value.toString();
}

void TtsGrid::BeginUpdate()
{
    if (m_updates > 0) {
        ++m_updates;
        return;
    }
    m_edit->FinishAnyhow();
    ++m_updates;
    m_rowBeforeUpdate = m_row;
    m_rowsDropped = false;
    m_model->Reset(true);
}

void TtsGrid::EndUpdate()
{
    if (m_updates == 0 || --m_updates > 0)
        return;
    {
        const bool quiet = std::exchange(m_quiet, true);
        m_model->Reset(false);
        m_quiet = quiet;
    }
    rowsReplaced(m_rowBeforeUpdate, !m_rowsDropped);
}

bool TtsGrid::canEdit(int column, int row) const
{
    if (!m_model->Holds(column, row))
        return false;
    const TtsCol &col = Col(column);
    return col.Visible() && !col.ReadOnly() && Cell(column, row).typeId() != QMetaType::QIcon;
}

bool TtsGrid::IsEditing() const noexcept
{
    return m_edit->Editor() != nullptr;
}

bool TtsGrid::BeginEdit()
{
    return IsEditing() || (canEdit(m_col, m_row) && edit(currentIndex(), AllEditTriggers, nullptr));
}

void TtsGrid::EndEdit(bool save)
{
    if (IsEditing())
        m_edit->Finish(save, false);
}

void TtsGrid::SetRefusesDoubtful(bool refuses)
{
    m_edit->Entry().refuses = refuses;
}

bool TtsGrid::RefusesDoubtful() const
{
    return m_edit->Entry().refuses;
}

void TtsGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (!editor || editor != m_edit->Editor()) {
        QTableView::closeEditor(editor, hint);
        return;
    }
    GuardedCall([&] { m_edit->Finish(hint != QAbstractItemDelegate::RevertModelCache, false); });
}

// Moves to the next editable cell in reading order; after the last one to the next widget.
void TtsGrid::moveOn(bool forward)
{
    const int step = forward ? 1 : -1;
    int column = m_col + step;
    // Except for pictures, a column is editable in all rows or in none, so checking two rows is enough.
    for (int row = m_row; row >= 1 && row <= RowCount() && qAbs(row - m_row) < 2; row += step) {
        for (; column >= 1 && column <= ColCount(); column += step) {
            if (canEdit(column, row)) {
                setCurrent(column, row);
                return;
            }
        }
        column = forward ? 1 : ColCount();
    }
    QTableView::setTabKeyNavigation(false);
    focusNextPrevChild(forward);
    QTableView::setTabKeyNavigation(true);
}

void TtsGrid::keyPressEvent(QKeyEvent *event)
{
    GuardedCall([&] {
        const QString text = event->text();
        const bool printable =
            !text.isEmpty() && text.at(0).isPrint() &&
            !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
        if (printable) {
            if (!canEdit(m_col, m_row)) {
                event->ignore();
            } else if (Col(m_col).Mask().Corrected(text)) {
                QTableView::keyPressEvent(event);
            } else {
                event->ignore(); // the key does not fit the mask: no edit starts
                m_edit->Entry().refused += text;
            }
            return;
        }
        if (event->matches(QKeySequence::Copy)) {
            const bool whole = m_marked || m_row == 0 || m_col == 0;
            QGuiApplication::clipboard()->setText(whole ? AsTabSeparatedText() : CellText(m_col, m_row));
            return;
        }
        if (event->matches(QKeySequence::SelectAll)) {
            setMarked(RowCount() > 0);
            return;
        }
        if (event->matches(QKeySequence::Paste)) {
            m_edit->Paste();
            return;
        }
        switch (event->key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            moveOn(event->key() == Qt::Key_Tab);
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (m_row > 0 && m_row < RowCount())
                setCurrent(m_col, m_row + 1);
            return;
        case Qt::Key_Escape:
            if (!m_marked)
                break;
            setMarked(false);
            return;
        default:
            break;
        }
        QTableView::keyPressEvent(event);
    });
}

void TtsGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (CurrentLook() == Look::Application && current.row() != previous.row())
        viewport()->update(); // the whole rows are marked
    if (m_quiet || m_updates > 0 || !current.isValid())
        return;
    setMarked(false);
    m_edit->Entry().refused.clear();
    const int before = m_row;
    m_row = current.row() + 1;
    m_col = current.column() + 1;
    if (before == m_row)
        return;
    GuardedCall([&] {
        if (OnRowChanged)
            OnRowChanged(before, m_row);
    });
    Q_EMIT RowChanged(before, m_row);
}

void TtsGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        applyHeights();
}

void TtsGrid::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event);
    viewport()->update();
}

void TtsGrid::setMarked(bool marked)
{
    if (m_marked == marked)
        return;
    m_marked = marked;
    viewport()->update();
}

void TtsGrid::columnChanged(int column)
{
    if (m_updates == 0)
        m_model->ColumnChanged(column);
}

void TtsGrid::columnSized(int column)
{
    const TtsCol &col = Col(column);
    if (!col.Visible())
        endEditIn(column);
    setColumnHidden(column - 1, !col.Visible());
    if (col.Visible()) {
        setColumnWidth(column - 1, col.Width());
    } else if (m_col == column) {
        // The current cell must not be in a hidden column.
        if (m_row > 0 && m_updates == 0)
            setCurrent(firstColumn(), m_row);
        else
            m_col = 0;
    }
}

QString TtsGrid::AsTabSeparatedText() const
{
    QList<int> columns;
    for (int column = 1; column <= ColCount(); ++column) {
        if (Col(column).Visible() && Col(column).PictureText().isEmpty())
            columns.append(column);
    }
    QStringList lines;
    QStringList fields;
    for (const int column : std::as_const(columns))
        fields.append(Col(column).Heading().trimmed());
    lines.append(fields.join(u'\t'));
    for (int row = 1; row <= RowCount(); ++row) {
        fields.clear();
        for (const int column : std::as_const(columns)) {
            // A tab or line break inside a text would shift the following cells.
            fields.append(CellText(column, row).replace(u'\t', u' ').replace(u'\n', u' '));
        }
        lines.append(fields.join(u'\t'));
    }
    return lines.join(u'\n') + u'\n';
}

void TtsGrid::endEditIn(int column)
{
    if (m_edit->IsIn(column))
        EndEdit(true);
}

int TtsGrid::RowHeight() const
{
    return verticalHeader()->defaultSectionSize();
}

void TtsGrid::SetRowHeight(int height)
{
    m_rowHeight = height;
    applyHeights();
}

int TtsGrid::HeadingHeight() const
{
    return horizontalHeader()->maximumHeight();
}

void TtsGrid::SetHeadingHeight(int height)
{
    m_headingHeight = height;
    applyHeights();
}

void TtsGrid::applyHeights()
{
    QFont bold = font();
    bold.setBold(true);
    horizontalHeader()->setFont(bold);
    int row = qMax(m_rowHeight, fontMetrics().height() + 3);
    if (CurrentLook() == Look::Application) {
        Zel::LookChanges::Of(this).Set("showGrid", false);
        const bool low = Zel::RoomOf(*this) != Zel::Room::Enough;
        horizontalHeader()->setFixedHeight(
            HeightOf(low ? LookHeight::SmallField : LookHeight::TableHead, fontMetrics()));
        row = HeightOf(low ? LookHeight::CompactFieldRow : LookHeight::FieldRow, fontMetrics());
    } else {
        // Styles clip a heading at their margin. The last line of the font's height may reach into the
        // margin.
        const int text = QFontMetrics(bold).height();
        const int margins = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, horizontalHeader());
        horizontalHeader()->setFixedHeight(qMax(m_headingHeight, text + qMax(2, margins - 1)));
    }
    // The minimum first when it falls, the height first when it rises.
    verticalHeader()->setMinimumSectionSize(qMin(row, verticalHeader()->minimumSectionSize()));
    verticalHeader()->setDefaultSectionSize(row);
    verticalHeader()->setMinimumSectionSize(row);
}

int TtsGrid::RowBarWidth() const
{
    return verticalHeader()->isHidden() ? 0 : verticalHeader()->width();
}

int TtsGrid::ClientWidth() const
{
    return viewport()->width();
}

int TtsGrid::ScrollBarWidth() const
{
    return verticalScrollBar()->sizeHint().width();
}
