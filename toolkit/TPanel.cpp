#include "toolkit/TPanel.h"

#include "toolkit/LookFonts_p.h"
#include "toolkit/PlainTip_p.h"
#include "toolkit/TColors_p.h"
#include "toolkit/TFonts.h"

#include <QLayout>
#include <QPainter>

namespace
{

/// What a coloured panel is in the application look; nullptr for others and in the designed look.
const Zel::ColorUse *lookOf(TColor color)
{
    return CurrentLook() == Look::Application ? Zel::UseOf(color) : nullptr;
}

/// The distance of a caption to the left edge in the application look.
int indentOf(const Zel::ColorUse *look)
{
    if (!look)
        return 0;
    return look->caption == LookFont::Heading ? LookSpace::Large : LookSpace::Medium;
}

/// The height of a panel with a caption in the application look.
int heightOf(const Zel::ColorUse &look, const QFontMetrics &metrics)
{
    return HeightOf(look.caption == LookFont::Heading ? LookHeight::TabStrip : LookHeight::TableHead,
                    metrics);
}

/// The font of the caption. The panel itself, and with it its components, has the font of the surroundings
/// in the application look.
QFont captionFont(const QWidget &panel, const Zel::ColorUse *look)
{
    return look ? FontOf(look->caption, panel.font()) : panel.font();
}

/// Captions of the designs have leading blanks as their margin.
QString captionIn(const QString &caption)
{
    return CurrentLook() == Look::Application ? caption.trimmed() : caption;
}

/// Makes room for the caption in the application look.
void fitLook(TPanel &panel)
{
    if (CurrentLook() != Look::Application)
        return;
    Zel::FollowLook(&panel);
    const Zel::ColorUse *const look = lookOf(ColorByName(panel.colorName()));
    if (!look || panel.caption().isEmpty() || panel.property(Zel::DrawnByOwner).toBool())
        return;
    const int height = heightOf(*look, panel.fontMetrics());
    Zel::LookChanges &changes = Zel::LookChanges::Of(&panel);
    changes.Set("minimumHeight", height);
    if (panel.maximumHeight() < QWIDGETSIZE_MAX)
        changes.Set("maximumHeight", height);
}

} // namespace

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
    fitLook(*this);
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
    fitLook(*this);
    update();
}

void TPanel::setTextColorName(const QString &name)
{
    m_textColor = ColorByName(name);
    update();
}

template <typename Change> void TPanel::changeFont(Change change)
{
    // In the application look, the designed font waits for the designed look.
    fitLook(*this);
    Zel::LookChanges *const look =
        CurrentLook() == Look::Application ? Zel::LookChanges::Find(this) : nullptr;
    auto changed = look ? look->Designed("font").value<QFont>() : font();
    change(changed);
    if (look)
        look->SetDesigned("font", changed);
    else
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
    if (m_caption.isEmpty())
        return {0, 0};
    const Zel::ColorUse *const look = lookOf(m_color);
    const QSize text = QFontMetrics(captionFont(*this, look)).size(0, captionIn(m_caption));
    if (look)
        return {text.width() + 2 * indentOf(look), heightOf(*look, fontMetrics())};
    return text + QSize(2 * frameWidth(), 2 * frameWidth());
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
    const Zel::ColorUse *const look = lookOf(m_color);
    const bool heading = look && look->caption == LookFont::Heading;
    QPainter painter(this);
    if (m_color != TColor::None && !heading)
        painter.fillRect(rect(), ColorOf(m_color, palette()));
    if (CurrentLook() == Look::Designed) {
        painter.end();
        QFrame::paintEvent(event);
        painter.begin(this);
    }
    if (m_caption.isEmpty())
        return;
    if (heading) {
        painter.setPen(ColorOf(LookColor::Line, palette()));
        painter.drawLine(0, height() - 1, width(), height() - 1);
    }
    QColor color =
        look ? ColorOf(look->onGround, palette())
             : Zel::TextColorOf(m_textColor == TColor::None ? TColor::clWindowText : m_textColor, palette());
    if (!isEnabled())
        color = palette().color(QPalette::Disabled, QPalette::WindowText);
    painter.setPen(color);
    painter.setFont(captionFont(*this, look));
    // A caption that is too long is left-aligned, because a centred one would also lose its beginning.
    const QString text = shownCaption();
    const Qt::Alignment alignment =
        !look && text == captionIn(m_caption) ? m_alignment : Qt::Alignment(Qt::AlignLeft);
    // Leading blanks are part of the designed captions and keep their width.
    const int indent = indentOf(look);
    painter.drawText(contentsRect().adjusted(indent, 0, -indent, 0),
                     int(alignment) | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

QString TPanel::shownCaption() const
{
    const Zel::ColorUse *const look = lookOf(m_color);
    const QFontMetrics metrics(captionFont(*this, look));
    const QString caption = captionIn(m_caption);
    const int room = contentsRect().width() - 2 * indentOf(look);
    // Without this check, eliding could shorten a caption that fits by rounding.
    return metrics.horizontalAdvance(caption) <= room ? caption
                                                      : metrics.elidedText(caption, Qt::ElideRight, room);
}

bool TPanel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && shownCaption() != captionIn(m_caption)) {
        Zel::ShowPlainTip(static_cast<const QHelpEvent &>(*event), m_caption, this, rect());
        return true;
    }
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) {
        fitLook(*this);
        updateGeometry();
    }
    return QFrame::event(event);
}
