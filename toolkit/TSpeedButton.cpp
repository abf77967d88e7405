#include "toolkit/TSpeedButton.h"

#include "toolkit/Buttons_p.h"
#include "toolkit/Glyphs.h"

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
    return Zel::ClicksAtOnce(*this, *event) || QToolButton::event(event);
}

void TSpeedButton::setGlyph(const QString &name)
{
    m_glyph = name;
    setIcon(GlyphIcon(name));
}

void TSpeedButton::setGlyphOnTop(bool top)
{
    setToolButtonStyle(top ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
}
