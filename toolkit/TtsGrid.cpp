#include "toolkit/TtsGrid.h"

#include "data/Exceptions.h"
#include "data/Format.h"
#include "data/NumberEntry.h"
#include "toolkit/TApplication.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScopeGuard>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QValidator>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
constexpr int decimalsKept = 4;       ///< Of a Currency.
constexpr qsizetype digitsShown = 40; ///< Of a number that is too long for its cell.

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// What the user has done to a cell: the open editor's text, and all that was typed to get there.
struct TypedEntry {
    QString typed; ///< Every key, those that the mask refused among them, with the marks as they were typed.
    QString refused; ///< Keys refused where a key replaces the whole text; they belong before the next one.
    QString shown;   ///< What the editor shows.
    QString taken;   ///< What the cell was given for it.
    qsizetype comma = -1;  ///< Where the point shown was typed as a comma.
    bool touched = false;  ///< The user typed something, taken or not.
    bool doubtful = false; ///< What is shown is no number of the mask, or could be two.
    bool refuses = false;  ///< Such an entry stays open on Enter; never is a part of it taken.

    void begin(const QString &text)
    {
        typed = shown = text;
        taken.clear();
        comma = -1;
        touched = doubtful = false;
    }
};
} // namespace

// --- masks

TtsMask::TtsMask(const QString &text) : m_text(text)
{
    const auto bad = [&text]() -> EConvertError {
        return EConvertError(u"\"%1\" is not a valid input mask."_s.arg(text));
    };
    constexpr int longest = 64;
    for (qsizetype i = 0; i < text.size(); ++i) {
        int repeat = 1;
        if (text.at(i) == u'*') {
            repeat = 0;
            for (++i; i < text.size() && isDigit(text.at(i)) && repeat <= longest; ++i)
                repeat = repeat * 10 + text.at(i).digitValue();
            if (i == text.size() || repeat < 1 || repeat > longest)
                throw bad();
        }
        Element element;
        element.optional = text.at(i) == u'[';
        if (element.optional && (++i == text.size() || i + 1 == text.size() || text.at(i + 1) != u']'))
            throw bad();
        if (text.at(i) != u'#')
            element.literal = text.at(i);
        if (element.optional)
            ++i;
        m_elements.insert(m_elements.end(), static_cast<std::size_t>(repeat), element);
    }
}

bool TtsMask::Accepts(QStringView text) const
{
    if (m_elements.empty())
        return true;
    // The places in the mask that can be reached by what was read so far.
    const std::size_t count = m_elements.size();
    std::vector<bool> places(count + 1, false);
    places[0] = true;
    for (const QChar c : text) {
        std::vector<bool> next(count + 1, false);
        bool any = false;
        for (std::size_t i = 0; i < count; ++i) {
            if (!places[i])
                continue;
            const Element &element = m_elements[i];
            if (element.optional)
                places[i + 1] = true;
            if (element.literal.isNull() ? isDigit(c) : element.literal == c)
                any = next[i + 1] = true;
        }
        if (!any)
            return false;
        places.swap(next);
    }
    return true;
}

std::optional<QString> TtsMask::Corrected(const QString &text) const
{
    if (m_elements.empty() || Accepts(text))
        return text;
    if (text.count(u',') == 1) {
        const QString pointed = QString(text).replace(u',', u'.');
        if (Accepts(pointed))
            return pointed;
    }
    NumberRules rules;
    rules.decimals = decimalsKept;
    const NumberEntry entry(text, rules);
    if (!entry.isNumber())
        return std::nullopt;
    // Zeros at the end may be more than the mask has places for.
    for (const QString &plain : {entry.plain(), entry.value().toString()}) {
        if (Accepts(plain))
            return plain;
    }
    return std::nullopt;
}

TtsMaskDefs::TtsMaskDefs(QObject *parent) : QObject(parent) {}
TtsMaskDefs::~TtsMaskDefs() = default;

void TtsMaskDefs::Add(const QString &name, const QString &text)
{
    m_masks.insert(name, TtsMask(text));
}

const TtsMask &TtsMaskDefs::Mask(const QString &name) const
{
    const auto found = m_masks.constFind(name);
    if (found == m_masks.cend())
        throw EListError(u"There is no input mask \"%1\"."_s.arg(name));
    return *found;
}

// --- the cells

class ZEL_TOOLKIT_NO_EXPORT TtsGrid::Model : public QAbstractTableModel
{
public:
    explicit Model(TtsGrid *grid) : QAbstractTableModel(grid), m_grid(grid) {}

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : m_rows; }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        if (index.isValid() && m_grid->canEdit(index.column() + 1, index.row() + 1))
            flags |= Qt::ItemIsEditable;
        return flags;
    }
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void Reset(bool begin)
    {
        if (begin)
            beginResetModel();
        else
            endResetModel();
    }
    std::size_t At(int column, int row) const
    {
        return static_cast<std::size_t>(row - 1) * m_columns.size() + static_cast<std::size_t>(column - 1);
    }
    bool Holds(int column, int row) const
    {
        return column >= 1 && column <= columnCount() && row >= 1 && row <= m_rows;
    }
    void Require(int column, int row) const
    {
        if (!Holds(column, row))
            throw EListError(u"The grid has no cell in column %1 of row %2."_s.arg(column).arg(row));
    }
    void Changed(int column, int row)
    {
        const QModelIndex cell = index(row - 1, column - 1);
        Q_EMIT dataChanged(cell, cell);
    }
    void ColumnChanged(int column)
    {
        Q_EMIT headerDataChanged(Qt::Horizontal, column - 1, column - 1);
        if (m_rows > 0)
            Q_EMIT dataChanged(index(0, column - 1), index(m_rows - 1, column - 1));
    }
    void Insert(bool announce)
    {
        if (announce)
            beginInsertRows({}, m_rows, m_rows);
        m_cells.resize(m_cells.size() + m_columns.size());
        ++m_rows;
        if (announce)
            endInsertRows();
    }
    void Remove(int row, bool announce)
    {
        if (announce)
            beginRemoveRows({}, row - 1, row - 1);
        const auto first = m_cells.begin() + static_cast<std::ptrdiff_t>(At(1, row));
        m_cells.erase(first, first + static_cast<std::ptrdiff_t>(m_columns.size()));
        --m_rows;
        if (announce)
            endRemoveRows();
    }

    std::vector<QVariant> m_cells; ///< row by row
    std::vector<std::unique_ptr<TtsCol>> m_columns;
    int m_rows = 0;
    TypedEntry m_entry;

private:
    TtsGrid *m_grid;
};

QVariant TtsGrid::Model::data(const QModelIndex &index, int role) const
{
    const int column = index.column() + 1;
    const int row = index.row() + 1;
    if (!index.isValid() || !Holds(column, row))
        return {};
    const TtsCol &col = *m_columns[static_cast<std::size_t>(column - 1)];
    const QVariant &cell = m_cells[At(column, row)];
    const bool picture = cell.typeId() == QMetaType::QIcon;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return picture ? QVariant() : QVariant(TextOf(cell));
    case Qt::DecorationRole:
        return picture ? cell : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(col.Alignment() | Qt::AlignVCenter));
    case Qt::ForegroundRole:
        if (col.FontColor() == TColor::None)
            return {};
        return ColorOf(col.FontColor(), m_grid->palette());
    case Qt::FontRole:
        // The font colour of a column that cannot be typed into at the moment is not its only sign.
        if (col.ReadOnly() && !col.Mask().IsEmpty()) {
            QFont font = m_grid->font();
            font.setItalic(true);
            return font;
        }
        return {};
    case Qt::AccessibleTextRole: {
        const QString text = picture ? col.PictureText() : TextOf(cell);
        return col.Heading().trimmed().isEmpty() ? text
                                                 : TtsGrid::tr("%1: %2").arg(col.Heading().trimmed(), text);
    }
    case Qt::AccessibleDescriptionRole:
        return col.ReadOnly() ? TtsGrid::tr("read-only") : TtsGrid::tr("can be edited");
    default:
        return {};
    }
}

QVariant TtsGrid::Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section < 0 || section >= (orientation == Qt::Horizontal ? columnCount() : m_rows))
        return {};
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    const TtsCol &col = *m_columns[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return col.Heading();
    case Qt::AccessibleTextRole:
        return col.Heading().trimmed().isEmpty() ? col.PictureText() : col.Heading().trimmed();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(col.HeadingAlignment() | Qt::AlignVCenter));
    default:
        return {};
    }
}

// --- editing and drawing

namespace
{
/// Lets pass what the column's mask describes, however it arrives: keys, paste, drop, input method. Thousands
/// that are parted as they are typed pass too, and whatever is typed is noted.
class MaskValidator : public QValidator
{
public:
    MaskValidator(const TtsMask &mask, TypedEntry &entry, QObject *parent)
        : QValidator(parent), m_mask(mask), m_entry(entry)
    {
    }
    State validate(QString &input, int &position) const override
    {
        if (input == m_entry.shown)
            return Acceptable;
        const Shown shown = read(input);
        note(input, shown.isRight);
        if (!shown.isRight)
            return Invalid;
        m_entry.shown = shown.text;
        m_entry.comma = shown.comma;
        if (shown.text != input) {
            position += static_cast<int>(shown.text.size() - input.size());
            position = qBound(0, position, static_cast<int>(shown.text.size()));
            input = shown.text;
        }
        return Acceptable;
    }

private:
    struct Shown {
        bool isRight = false;
        QString text = {};
        qsizetype comma = -1; ///< Where the point shown was typed as a comma.
    };

    /// @p input with the comma that is shown as a point.
    QString asTyped(const QString &input) const
    {
        const qsizetype comma = m_entry.comma;
        const QStringView before = QStringView(m_entry.shown).left(comma + 1);
        if (comma < 0 || !input.startsWith(before))
            return input;
        QString typed = input;
        typed[comma] = u',';
        return typed;
    }

    Shown read(const QString &input) const
    {
        const QString typed = asTyped(input);
        if (m_mask.Accepts(typed))
            return {true, typed};
        if (typed.count(u',') == 1) {
            const QString pointed = QString(typed).replace(u',', u'.');
            if (m_mask.Accepts(pointed))
                return {true, pointed, typed.indexOf(u',')};
        }
        if (hasThousands(typed))
            return {true, typed};
        const std::optional<QString> corrected = m_mask.Corrected(typed);
        return corrected ? Shown{true, *corrected} : Shown{};
    }

    /// Whether @p text is a number that the mask holds, or the beginning of one, with its thousands parted.
    bool hasThousands(const QString &text) const
    {
        QString digits;
        for (const QChar c : text) {
            if (isDigit(c))
                digits.append(c);
            else if (c != u',' && c != u'.')
                return false;
        }
        const NumberEntry entry(text);
        if (entry.isNumber())
            return m_mask.Accepts(entry.plain());
        return m_mask.Accepts(digits) && entry.isUnfinished();
    }

    void note(const QString &input, bool isRight) const
    {
        const QString &shown = m_entry.shown;
        m_entry.touched = true;
        if (!shown.isEmpty() && input.size() > shown.size() && input.startsWith(shown)) {
            m_entry.typed += QStringView(input).sliced(shown.size());
            return;
        }
        const auto same = std::mismatch(input.cbegin(), input.cend(), shown.cbegin(), shown.cend());
        const auto end = std::mismatch(input.crbegin(), input.crend(), shown.crbegin(), shown.crend());
        const bool replaced = same.first == input.cbegin() && end.first == input.crbegin();
        if (isRight)
            m_entry.typed = (replaced ? std::exchange(m_entry.refused, {}) : QString()) + asTyped(input);
        else if (replaced)
            m_entry.refused += input;
    }

    TtsMask m_mask;
    TypedEntry &m_entry;
};
} // namespace

class TtsGrid::Delegate : public QStyledItemDelegate
{
public:
    explicit Delegate(TtsGrid *grid) : QStyledItemDelegate(grid), m_grid(grid) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &,
                          const QModelIndex &index) const override
    {
        const TtsCol &col = m_grid->Col(index.column() + 1);
        auto *editor = new QLineEdit(parent);
        editor->setObjectName(u"edCell"_s);
        editor->setFrame(false);
        editor->setAlignment(col.Alignment() | Qt::AlignVCenter);
        editor->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
        editor->setTextMargins(2, 0, 1, 0);
        if (!col.Mask().IsEmpty())
            editor->setValidator(new MaskValidator(col.Mask(), m_grid->m_model->m_entry, editor));
        QObject::connect(editor, &QLineEdit::textEdited, m_grid,
                         [grid = m_grid](const QString &text) { GuardedCall([&] { grid->typed(text); }); });
        m_grid->editorOpened(editor, index.column() + 1, index.row() + 1);
        return editor;
    }
    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        // The cell follows each keystroke; only a value that code wrote meanwhile goes back into the editor.
        auto *line = qobject_cast<QLineEdit *>(editor);
        const QString text = index.data(Qt::EditRole).toString();
        TypedEntry &entry = m_grid->m_model->m_entry;
        if (!line || line->text() == text || (entry.touched && text == entry.taken))
            return;
        entry.begin(text);
        line->setText(text);
    }
    void setModelData(QWidget *, QAbstractItemModel *, const QModelIndex &) const override {}
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        if (index != m_grid->currentIndex())
            return;
        // The frame is the only sign of the cell and row that keys and commands work on; what styles draw of
        // their own is faint, or missing after a click.
        const auto group = m_grid->hasFocus() ? QPalette::Active : QPalette::Inactive;
        painter->save();
        painter->setPen(m_grid->palette().color(group, QPalette::Highlight));
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
        painter->restore();
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
        if (option->features & QStyleOptionViewItem::HasDecoration) {
            option->decorationPosition = QStyleOptionViewItem::Top;
            option->decorationAlignment = Qt::AlignCenter;
            option->decorationSize = QSize(16, 16).boundedTo(option->rect.size());
        }
        if (m_grid->m_marked)
            option->state |= QStyle::State_Selected;
    }
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && object == m_grid->m_editor) {
            bool handled = false;
            GuardedCall([&] { handled = m_grid->handleEditorKey(*static_cast<QKeyEvent *>(event)); });
            if (handled)
                return true;
        }
        return QStyledItemDelegate::eventFilter(object, event);
    }

private:
    TtsGrid *m_grid;
};

// --- columns

void TtsCol::SetHeading(const QString &heading)
{
    m_heading = heading;
    m_grid->columnChanged(m_column);
}

void TtsCol::SetWidth(int width)
{
    m_width = qMax(0, width);
    m_grid->columnSized(m_column);
}

void TtsCol::SetVisible(bool visible)
{
    m_visible = visible;
    m_grid->columnSized(m_column);
}

void TtsCol::SetReadOnly(bool readOnly)
{
    if (m_readOnly == readOnly)
        return;
    if (m_grid->m_editor && m_grid->m_editCol == m_column)
        m_grid->EndEdit(true);
    m_readOnly = readOnly;
    m_grid->columnChanged(m_column);
}

void TtsCol::SetFontColor(TColor color)
{
    m_fontColor = color;
    m_grid->columnChanged(m_column);
}

void TtsCol::SetMask(const TtsMask &mask)
{
    m_mask = mask;
    m_grid->columnChanged(m_column);
}

void TtsCol::SetAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    m_grid->columnChanged(m_column);
}

void TtsCol::SetHeadingAlignment(Qt::Alignment alignment)
{
    m_headingAlignment = alignment;
    m_grid->columnChanged(m_column);
}

void TtsCol::SetUnit(NumberUnit unit)
{
    m_unit = unit;
}

void TtsCol::SetPictureText(const QString &text)
{
    m_pictureText = text;
    m_grid->columnChanged(m_column);
}

// --- the grid

TtsGrid::TtsGrid(QWidget *parent) : QTableView(parent), m_model(new Model(this))
{
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
    // What the toolkit still closes while it takes the view apart is reported to nobody.
    m_editor = nullptr;
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
        columns.emplace_back(new TtsCol(this, ColCount() + 1)); // the constructor is the grid's alone
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
    if (m_editor && !finishEdit(true, false)) {
        // As in BeginUpdate: the rows move, and the edit with them.
        QWidget *const editor = std::exchange(m_editor, nullptr);
        QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
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

// The column itself, or the visible one that is nearest to it, of two the right one.
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

// Makes the view stand where the grid stands after rows came and went, and tells it once.
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
    if (m_editor && !finishEdit(true, false)) {
        // Its end was refused, but the cell is about to go: what was typed is in it already.
        QWidget *const editor = std::exchange(m_editor, nullptr);
        QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
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

bool TtsGrid::BeginEdit()
{
    return m_editor || (canEdit(m_col, m_row) && edit(currentIndex(), AllEditTriggers, nullptr));
}

void TtsGrid::EndEdit(bool save)
{
    if (m_editor)
        finishEdit(save, false);
}

void TtsGrid::editorOpened(QLineEdit *editor, int column, int row)
{
    setMarked(false);
    m_editor = editor;
    m_editCol = column;
    m_editRow = row;
    m_beforeEdit = Cell(column, row);
    m_model->m_entry.begin({});
}

void TtsGrid::typed(const QString &text)
{
    if (!m_editor)
        return;
    TypedEntry &entry = m_model->m_entry;
    const std::optional<QString> number = Col(m_editCol).Mask().Corrected(text);
    if (!number && entry.doubtful)
        return;
    entry.doubtful = !number;
    // What was typed before it became doubtful is not to be taken for the number that is meant.
    const QVariant value = number ? QVariant(*number) : m_beforeEdit;
    entry.taken = TextOf(value);
    SetCell(m_editCol, m_editRow, value);
    if (OnCellEdit)
        OnCellEdit(m_editCol, m_editRow, !entry.doubtful);
    if (entry.doubtful)
        Q_EMIT EntryTakenBack(m_editCol, m_editRow);
    Q_EMIT CellEdited(m_editCol, m_editRow);
}

// What a doubtful entry is taken for where nobody is asked: the keys that the mask lets pass one by one, as
// long as the point was typed as one. False when it is taken for nothing.
bool TtsGrid::settleDoubt()
{
    TypedEntry &entry = m_model->m_entry;
    if (entry.refuses || entry.shown.contains(u','))
        return false;
    const TtsMask &mask = Col(m_editCol).Mask();
    QString passed;
    for (const QChar c : std::as_const(entry.shown)) {
        if (mask.Accepts(passed + c))
            passed += c;
    }
    entry.doubtful = false;
    entry.taken = passed;
    SetCell(m_editCol, m_editRow, passed);
    if (OnCellEdit)
        OnCellEdit(m_editCol, m_editRow, true);
    Q_EMIT CellEdited(m_editCol, m_editRow);
    return true;
}

QString TtsGrid::whyRefused(int column, const QString &text) const
{
    const TtsCol &col = Col(column);
    const QString mask = col.Mask().Text();
    const qsizetype point = mask.lastIndexOf(u'.');
    NumberRules rules;
    rules.unit = col.Unit();
    rules.decimals = point < 0 ? 0 : static_cast<int>(QStringView(mask).sliced(point).count(u'#'));
    if (!mask.contains(u'-'))
        rules.low = Currency();
    const NumberEntry entry(text, rules);
    return entry.isNumber()
               ? tr("\"%1\" has more digits than the cell can hold").arg(entry.text().left(digitsShown))
               : entry.reason();
}

// Says so when the cell holds something else than what was typed into it.
void TtsGrid::tellCorrection(int column, int row, const QString &typed)
{
    if (Col(column).Mask().IsEmpty() || !m_model->Holds(column, row))
        return;
    const QString text = CellText(column, row);
    NumberRules rules;
    rules.unit = Col(column).Unit();
    rules.decimals = decimalsKept;
    const NumberEntry said(typed, rules);
    Currency held;
    const bool same = TryStrToCurr(text, held) ? said.isNumber() && said.value() == held
                                               : text.trimmed() == typed.trimmed();
    if (!same)
        Q_EMIT EntryCorrected(column, row, typed.trimmed());
}

// True when the edit is over.
bool TtsGrid::finishEdit(bool save, bool mayStay)
{
    if (m_finishing)
        return false;
    m_finishing = true;
    const auto leave = qScopeGuard([this] { m_finishing = false; });
    // Whatever a handler raises, the editor does not stay behind half closed.
    bool cancel = false;
    auto close = qScopeGuard([this, &cancel] {
        if (cancel || !m_editor)
            return;
        QWidget *const editor = std::exchange(m_editor, nullptr);
        QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    });
    const int column = m_editCol;
    const int row = m_editRow;
    if (!save) {
        bool keep = false;
        if (OnUndoCellEdit)
            OnUndoCellEdit(column, row, true, keep);
        if (!keep) {
            SetCell(column, row, m_beforeEdit);
            if (OnCellEdit)
                OnCellEdit(column, row, false);
            Q_EMIT CellEdited(column, row);
            return true;
        }
    }
    TypedEntry &entry = m_model->m_entry;
    const QString typed = entry.typed;
    const bool touched = entry.touched; // what the handler writes into the cell begins anew
    const bool refused = entry.doubtful && !settleDoubt();
    if (refused && mayStay && entry.refuses) {
        cancel = true;
        Q_EMIT EntryRefused(column, row, typed, whyRefused(column, typed), true);
        return false;
    }
    if (OnEndCellEdit)
        OnEndCellEdit(column, row, cancel);
    if (cancel)
        return false;
    entry.touched = entry.doubtful = false;
    entry.refused.clear();
    if (refused)
        Q_EMIT EntryRefused(column, row, typed, whyRefused(column, typed), false);
    else if (touched)
        tellCorrection(column, row, typed);
    return true;
}

void TtsGrid::SetRefusesDoubtful(bool refuses)
{
    m_model->m_entry.refuses = refuses;
}

bool TtsGrid::RefusesDoubtful() const
{
    return m_model->m_entry.refuses;
}

void TtsGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (editor != m_editor || !m_editor) {
        QTableView::closeEditor(editor, hint);
        return;
    }
    GuardedCall([&] { finishEdit(hint != QAbstractItemDelegate::RevertModelCache, false); });
}

bool TtsGrid::handleEditorKey(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Escape:
        finishEdit(false, false);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        if (finishEdit(true, true) && m_row < RowCount())
            setCurrent(m_col, m_row + 1);
        return true;
    case Qt::Key_Up:
        if (finishEdit(true, true) && m_row > 1)
            setCurrent(m_col, m_row - 1);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (finishEdit(true, true))
            moveOn(event.key() == Qt::Key_Tab);
        return true;
    default:
        return false;
    }
}

// To the next cell that can be edited, in reading order; after the last one to the next widget.
void TtsGrid::moveOn(bool forward)
{
    const int step = forward ? 1 : -1;
    int column = m_col + step;
    // Whether a column can be edited is the same in all rows but for pictures: two rows are enough to see.
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
                event->ignore(); // nothing that could stand in the cell: no edit begins
                m_model->m_entry.refused += text;
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
            paste();
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

void TtsGrid::paste()
{
    if (!canEdit(m_col, m_row))
        return;
    const QString pasted = QGuiApplication::clipboard()->text();
    if (pasted.trimmed().isEmpty())
        return;
    NumberRules rules;
    rules.unit = Col(m_col).Unit();
    const bool isOther = NumberEntry(pasted, rules).problem() == NumberEntry::Problem::OtherUnit;
    const std::optional<QString> text = Col(m_col).Mask().Corrected(pasted);
    // The beginning of a number, which may be typed, is none when it is all that is there.
    const bool isNone = !Col(m_col).Mask().IsEmpty() && text &&
                        std::none_of(text->cbegin(), text->cend(), [](QChar c) { return isDigit(c); });
    if (!text || isOther || isNone) {
        Q_EMIT EntryRefused(m_col, m_row, pasted.trimmed(), whyRefused(m_col, pasted), false);
        return;
    }
    setMarked(false);
    m_editCol = m_col;
    m_editRow = m_row;
    const int column = m_editCol;
    const int row = m_editRow;
    SetCell(column, row, *text);
    if (OnCellEdit)
        OnCellEdit(column, row, true);
    Q_EMIT CellEdited(column, row);
    bool cancel = false;
    if (OnEndCellEdit)
        OnEndCellEdit(column, row, cancel);
    tellCorrection(column, row, pasted);
}

void TtsGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (m_quiet || m_updates > 0 || !current.isValid())
        return;
    setMarked(false);
    m_model->m_entry.refused.clear();
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
    if (!col.Visible() && m_editor && m_editCol == column)
        EndEdit(true);
    setColumnHidden(column - 1, !col.Visible());
    if (col.Visible()) {
        setColumnWidth(column - 1, col.Width());
    } else if (m_col == column) {
        // Keys never work on a cell that is out of sight.
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
            // A tab or a line break inside a text would move what follows into other cells.
            fields.append(CellText(column, row).replace(u'\t', u' ').replace(u'\n', u' '));
        }
        lines.append(fields.join(u'\t'));
    }
    return lines.join(u'\n') + u'\n';
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
    // A style cuts off what reaches into its margin around a heading; the last line of the font's height may.
    const int text = QFontMetrics(bold).height();
    const int margins = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, horizontalHeader());
    horizontalHeader()->setFixedHeight(qMax(m_headingHeight, text + qMax(2, margins - 1)));
    const int row = qMax(m_rowHeight, fontMetrics().height() + 3);
    verticalHeader()->setMinimumSectionSize(row);
    verticalHeader()->setDefaultSectionSize(row);
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
