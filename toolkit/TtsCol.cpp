#include "toolkit/TtsCol.h"

#include "toolkit/TtsGrid.h"

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
    m_grid->endEditIn(m_column);
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
