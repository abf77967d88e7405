#include "toolkit/TtsGridDelegate_p.h"

#include "toolkit/GridLook_p.h"
#include "toolkit/MaskValidator_p.h"
#include "toolkit/TApplication.h"
#include "toolkit/TtsCellEdit_p.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

using namespace Qt::StringLiterals;

QWidget *TtsGrid::Delegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                         const QModelIndex &index) const
{
    const TtsCol &col = m_grid->Col(index.column() + 1);
    auto *editor = new QLineEdit(parent);
    editor->setObjectName(u"edCell"_s);
    editor->setFrame(false);
    editor->setAlignment(col.Alignment() | Qt::AlignVCenter);
    editor->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
    // The text stays where the cell shows it; QLineEdit itself adds two pixels.
    const int margin = Zel::GridLook::FieldPadding - LookSpace::Ring - 2;
    if (CurrentLook() == Look::Application)
        editor->setTextMargins(margin, 0, margin, 0);
    else
        editor->setTextMargins(2, 0, 1, 0);
    if (!col.Mask().IsEmpty())
        editor->setValidator(new Zel::MaskValidator(col.Mask(), m_grid->m_edit->Entry(), editor));
    connectGuarded(editor, &QLineEdit::textEdited, m_grid,
                   [grid = m_grid](const QString &text) { grid->m_edit->Typed(text); });
    m_grid->m_edit->Opened(editor, index.column() + 1, index.row() + 1);
    return editor;
}

void TtsGrid::Delegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    // The cell changes with each keystroke. Only a value that code has written is copied into the editor.
    auto *line = qobject_cast<QLineEdit *>(editor);
    const QString text = index.data(Qt::EditRole).toString();
    Zel::TypedEntry &entry = m_grid->m_edit->Entry();
    if (!line || line->text() == text || (entry.touched && text == entry.taken))
        return;
    entry.begin(text);
    line->setText(text);
}

void TtsGrid::Delegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    if (CurrentLook() == Look::Application) {
        Zel::GridLook::PaintCell(*painter, option, *m_grid, index);
        return;
    }
    QStyledItemDelegate::paint(painter, option, index);
    if (index != m_grid->currentIndex())
        return;
    // The frame marks the current cell. The marks of the styles are faint, or missing after a click.
    const auto group = m_grid->hasFocus() ? QPalette::Active : QPalette::Inactive;
    painter->save();
    painter->setPen(m_grid->palette().color(group, QPalette::Highlight));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void TtsGrid::Delegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                             const QModelIndex &index) const
{
    using namespace Zel::GridLook;
    if (CurrentLook() == Look::Application && IsField(m_grid->Col(index.column() + 1)))
        editor->setGeometry(
            FieldIn(option.rect)
                .adjusted(LookSpace::Ring, LookSpace::Ring, -LookSpace::Ring, -LookSpace::Ring));
    else
        QStyledItemDelegate::updateEditorGeometry(editor, option, index);
}

void TtsGrid::Delegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
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

bool TtsGrid::Delegate::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && object == m_grid->m_edit->Editor()) {
        bool handled = false;
        GuardedCall([&] { handled = m_grid->m_edit->HandleKey(*static_cast<QKeyEvent *>(event)); });
        if (handled)
            return true;
    }
    return QStyledItemDelegate::eventFilter(object, event);
}
