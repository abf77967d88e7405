#pragma once

#include "toolkit/Look.h"

#include <QWidget>

namespace QuoteDesk
{

/// A picture of toolkit/Glyphs in a colour of the look. It follows palette and font. Screen readers skip it:
/// the words beside it say the same.
class GlyphLabel : public QWidget
{
    Q_OBJECT
public:
    /// @p size is the edge in pixels beside a body font of 18 pixels; a larger font has a larger picture.
    explicit GlyphLabel(int size, QWidget *parent = nullptr);
    /// Shows the picture @p glyph in @p color.
    void setGlyph(const QString &glyph, LookColor color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int m_size;
    QString m_glyph;
    LookColor m_color = LookColor::Text;
};

/// @p pixels beside a body font of 18 pixels, in proportion to the height of @p font; at least @p pixels.
int besideFont(int pixels, const QFontMetrics &font);

} // namespace QuoteDesk
