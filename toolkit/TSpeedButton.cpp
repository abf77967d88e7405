#include "toolkit/TSpeedButton.h"

#include "toolkit/Glyphs.h"

TSpeedButton::TSpeedButton(QWidget *parent) : QToolButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAutoRaise(true);
    setIconSize(QSize(16, 16));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

TSpeedButton::~TSpeedButton() = default;

void TSpeedButton::setGlyph(const QString &name)
{
    m_glyph = name;
    setIcon(GlyphIcon(name));
}

void TSpeedButton::setGlyphOnTop(bool top)
{
    setToolButtonStyle(top ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
}
