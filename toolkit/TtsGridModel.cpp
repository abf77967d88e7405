#include "toolkit/TtsGridModel_p.h"

#include "toolkit/GridLook_p.h"
#include "toolkit/TColors_p.h"

#include <QIcon>

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
        return Zel::TextColorOf(col.FontColor(), m_grid->palette());
    case Qt::FontRole:
        if (CurrentLook() == Look::Application)
            return Zel::GridLook::FontOfCells(*m_grid, column);
        // A column that is currently read-only is also shown in italics, not only by its font colour.
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
