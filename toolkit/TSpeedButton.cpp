#include "toolkit/TSpeedButton.h"

#include "toolkit/Buttons_p.h"
#include "toolkit/Glyphs.h"
#include "toolkit/LookFonts_p.h"

namespace
{

/// In the application look, the picture is beside the caption, and the button is as high as a field.
void fitLook(TSpeedButton &button)
{
    if (CurrentLook() != Look::Application)
        return;
    Zel::LookChanges &changes = Zel::LookChanges::Of(&button);
    changes.Set("toolButtonStyle", Qt::ToolButtonTextBesideIcon);
    changes.Set("minimumHeight", HeightOf(LookHeight::SmallField, button.fontMetrics()));
}

} // namespace

TSpeedButton::TSpeedButton(QWidget *parent) : QToolButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAutoRaise(true);
    setIconSize(QSize(16, 16));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

TSpeedButton::~TSpeedButton() = default;

bool TSpeedButton::event(QEvent *event)
{
    // Not before the button is polished: its design sets its size until then.
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange ||
        (event->type() == QEvent::FontChange && testAttribute(Qt::WA_WState_Polished)))
        fitLook(*this);
    return Zel::ClicksAtOnce(*this, *event) || QToolButton::event(event);
}

void TSpeedButton::setGlyph(const QString &name)
{
    m_glyph = name;
    setIcon(GlyphIcon(name));
}

void TSpeedButton::setGlyphOnTop(bool top)
{
    const Qt::ToolButtonStyle style = top ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon;
    Zel::LookChanges *const look = Zel::LookChanges::Find(this);
    if (!look || !look->SetDesigned("toolButtonStyle", style))
        setToolButtonStyle(style);
}
