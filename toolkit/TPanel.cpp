#include "toolkit/TPanel.h"

#include "toolkit/PlainTip_p.h"
#include "toolkit/TFonts.h"

#include <QLayout>
#include <QPainter>

TPanel::TPanel(QWidget *parent) : QFrame(parent)
{
    setFrameShape(QFrame::NoFrame);
}

TPanel::~TPanel() = default;

void TPanel::setCaption(const QString &caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    setAccessibleName(caption.trimmed());
    updateGeometry();
    update();
    Q_EMIT captionChanged(caption);
}

void TPanel::setCaptionAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void TPanel::setColorName(const QString &name)
{
    m_color = ColorByName(name);
    update();
}

void TPanel::setTextColorName(const QString &name)
{
    m_textColor = ColorByName(name);
    update();
}

template <typename Change> void TPanel::changeFont(Change change)
{
    QFont changed = font();
    change(changed);
    setFont(changed);
    updateGeometry();
}

void TPanel::setFontFamily(const QString &family)
{
    SubstituteDesignFonts();
    changeFont([&](QFont &f) { f.setFamilies({family}); });
}

void TPanel::setFontHeight(int pixels)
{
    changeFont([&](QFont &f) { f.setPixelSize(qMax(1, pixels)); });
}

void TPanel::setBold(bool bold)
{
    changeFont([&](QFont &f) { f.setBold(bold); });
}

void TPanel::setItalic(bool italic)
{
    changeFont([&](QFont &f) { f.setItalic(italic); });
}

void TPanel::setBevel(bool bevel)
{
    setFrameStyle(bevel ? int(QFrame::Panel) | int(QFrame::Raised) : int(QFrame::NoFrame));
    setLineWidth(1);
}

QSize TPanel::captionSize() const
{
    return m_caption.isEmpty() ? QSize(0, 0)
                               : fontMetrics().size(0, m_caption) + QSize(2 * frameWidth(), 2 * frameWidth());
}

QSize TPanel::sizeHint() const
{
    return QFrame::sizeHint().expandedTo(captionSize());
}

QSize TPanel::minimumSizeHint() const
{
    // A panel with a layout needs the space of its components; without one it may be smaller than its
    // caption.
    return layout() ? QFrame::minimumSizeHint() : QSize(0, qMin(captionSize().height(), 13));
}

void TPanel::paintEvent(QPaintEvent *event)
{
    if (m_color != TColor::None) {
        QPainter painter(this);
        painter.fillRect(rect(), ColorOf(m_color, palette()));
    }
    QFrame::paintEvent(event);
    if (m_caption.isEmpty())
        return;
    QPainter painter(this);
    const TColor shown = m_textColor == TColor::None ? TColor::clWindowText : m_textColor;
    painter.setPen(isEnabled() ? ColorOf(shown, palette())
                               : palette().color(QPalette::Disabled, QPalette::WindowText));
    // A caption that is too long is left-aligned, because a centred one would also lose its beginning.
    const QString text = shownCaption();
    const Qt::Alignment alignment = text == m_caption ? m_alignment : Qt::Alignment(Qt::AlignLeft);
    // Leading blanks are part of the designed captions and keep their width.
    painter.drawText(contentsRect(), int(alignment) | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

QString TPanel::shownCaption() const
{
    const QFontMetrics metrics = fontMetrics();
    const int room = contentsRect().width();
    // Without this check, eliding could shorten a caption that fits by rounding.
    return metrics.horizontalAdvance(m_caption) <= room ? m_caption
                                                        : metrics.elidedText(m_caption, Qt::ElideRight, room);
}

bool TPanel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && shownCaption() != m_caption) {
        Zel::ShowPlainTip(static_cast<const QHelpEvent &>(*event), m_caption, this, rect());
        return true;
    }
    return QFrame::event(event);
}
