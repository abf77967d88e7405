#include "desk/SearchField.h"

#include "look/GlyphLabel.h"
#include "look/TextLabel.h"
#include "quote/PlainText.h"

#include "toolkit/Glyphs.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

// The magnifier: its distance from the edge, its size beside a usual font, and the gap before the text.
constexpr int GlyphPlace = 10;
constexpr int GlyphEdge = 16;
constexpr int GlyphGap = 6;

} // namespace

SearchField::SearchField(QWidget *parent)
    : QLineEdit(parent), m_note(new TextLabel(LookFont::Caption, LookColor::Text2, this))
{
    setMaxLength(longestSearch);
    setClearButtonEnabled(true);
    m_note->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_note->setTextFormat(Qt::PlainText);
    connect(this, &QLineEdit::textChanged, this, &SearchField::showNote);
}

SearchField::~SearchField() = default;

void SearchField::setKeyHint(const QKeySequence &key)
{
    m_keyHint = key.toString(QKeySequence::NativeText);
    showNote();
}

void SearchField::setHits(const QString &hits)
{
    m_hits = hits;
    showNote();
}

void SearchField::showNote()
{
    const bool isEmpty = text().isEmpty();
    m_note->setText(isEmpty ? m_keyHint : m_hits);
    m_note->resize(m_note->sizeHint());
    // At the end of the field, or before the button that empties the field.
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int edge = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this) + 8;
    int room = edge;
    if (!isEmpty) {
        for (const QToolButton *const button : findChildren<QToolButton *>()) {
            const QRect place = QStyle::visualRect(layoutDirection(), rect(), button->geometry());
            if (place.center().x() > width() / 2)
                room = std::max(room, width() - place.left() + 4);
        }
    }
    const QRect place(width() - room - m_note->width(), (height() - m_note->height()) / 2, m_note->width(),
                      m_note->height());
    m_note->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    const int before = GlyphPlace + besideFont(GlyphEdge, fontMetrics()) + GlyphGap - edge + 8;
    const int behind = m_note->width() + 8;
    setTextMargins(isMirrored ? behind : before, 0, isMirrored ? before : behind, 0);
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (!text().isEmpty())
            clear();
        else if (window()->windowType() == Qt::Dialog)
            break; // closes the dialog
        else
            Q_EMIT left();
        event->accept();
        return;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        Q_EMIT left();
        event->accept();
        return;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void SearchField::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    const int size = besideFont(GlyphEdge, fontMetrics());
    const QRect place(GlyphPlace, (height() - size) / 2, size, size);
    QPainter painter(this);
    PaintGlyph(painter, QStyle::visualRect(layoutDirection(), rect(), place), u"search"_s,
               ColorOf(LookColor::Text2, palette()));
}

void SearchField::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    showNote();
}

bool SearchField::event(QEvent *event)
{
    const bool done = QLineEdit::event(event);
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::LayoutDirectionChange:
        showNote();
        break;
    default:
        break;
    }
    return done;
}

} // namespace QuoteDesk
