#include "toolkit/Glyphs.h"

#include "toolkit/GlyphTable_p.h"
#include "toolkit/Look.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QStyle>
#include <QSvgRenderer>

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace
{
const Zel::Glyph *findGlyph(const QByteArray &name)
{
    const Zel::Glyph *end = Zel::glyphTable + Zel::glyphCount;
    const Zel::Glyph *found =
        std::lower_bound(Zel::glyphTable, end, name, [](const Zel::Glyph &g, const QByteArray &n) {
            return std::strcmp(g.name, n.constData()) < 0;
        });
    return found != end && name == found->name ? found : nullptr;
}

void draw(QPainter &painter, const QRect &rect, const Zel::Glyph &glyph, const QColor &color)
{
    QByteArray svg(glyph.svg);
    svg.replace("currentColor", color.name().toLatin1());
    QSvgRenderer renderer(svg);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(&painter, rect);
}

// A view draws the same few pictures repeatedly, so pixmaps are cached.
QPixmap cachedPixmap(const Zel::Glyph &glyph, const QSize &size, const QColor &color)
{
    const QString key = u"zelglyph/%1/%2x%3/%4"_s.arg(QLatin1String(glyph.name))
                            .arg(size.width())
                            .arg(size.height())
                            .arg(color.rgb());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter, QRect(QPoint(0, 0), size), glyph, color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

void paintGlyph(QPainter &painter, const QRect &rect, const Zel::Glyph &glyph, const QColor &color)
{
    // A painter that scales or rotates needs the SVG itself.
    if (painter.worldTransform().type() > QTransform::TxTranslate) {
        draw(painter, rect, glyph, color);
        return;
    }
    const qreal ratio = painter.device()->devicePixelRatio();
    QPixmap picture = cachedPixmap(glyph, (QSizeF(rect.size()) * ratio).toSize(), color);
    picture.setDevicePixelRatio(ratio);
    painter.drawPixmap(rect.topLeft(), picture);
}

// Draws with the current colours of the palette, so that a change from light to dark takes effect.
class GlyphEngine : public QIconEngine
{
public:
    GlyphEngine(const Zel::Glyph &glyph, const Zel::Glyph *disabled) : m_glyph(glyph), m_disabled(disabled) {}

    QIconEngine *clone() const override { return new GlyphEngine(*this); }
    QString key() const override { return u"ZelGlyph"_s; }
    QString iconName() override { return QString::fromLatin1(m_glyph.name); }
    bool isNull() override { return false; }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        paintGlyph(*painter, rect, glyphOf(mode), colorOf(mode));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        return cachedPixmap(glyphOf(mode), size, colorOf(mode));
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal) override
    {
        return cachedPixmap(glyphOf(mode), size, colorOf(mode));
    }

private:
    const Zel::Glyph &glyphOf(QIcon::Mode mode) const
    {
        const bool isDesigned = CurrentLook() == Look::Designed;
        return mode == QIcon::Disabled && m_disabled && isDesigned ? *m_disabled : m_glyph;
    }
    static QColor colorOf(QIcon::Mode mode)
    {
        const QPalette palette = QApplication::palette();
        if (mode == QIcon::Disabled)
            return palette.color(QPalette::Disabled, QPalette::ButtonText);
        const bool highlighted = mode == QIcon::Selected && !chosenRowsKeepTheirText();
        return palette.color(QPalette::Active,
                             highlighted ? QPalette::HighlightedText : QPalette::ButtonText);
    }
    /// Windows' native style keeps the text colour of a selected row and hardly changes its background.
    static bool chosenRowsKeepTheirText() { return QApplication::style()->inherits("QWindowsVistaStyle"); }

    const Zel::Glyph &m_glyph;
    const Zel::Glyph *m_disabled;
};
} // namespace

QIcon GlyphIcon(const QString &name)
{
    const QByteArray key = name.toLatin1();
    const Zel::Glyph *const glyph = findGlyph(key);
    return glyph ? QIcon(new GlyphEngine(*glyph, findGlyph(key + "-disabled"))) : QIcon();
}

void PaintGlyph(QPainter &painter, const QRect &rect, const QString &name, const QColor &color)
{
    if (const Zel::Glyph *const glyph = findGlyph(name.toLatin1()))
        paintGlyph(painter, rect, *glyph, color);
}

QStringList GlyphNames()
{
    QStringList names;
    for (std::size_t i = 0; i < Zel::glyphCount; ++i)
        names.append(QString::fromLatin1(Zel::glyphTable[i].name));
    return names;
}
