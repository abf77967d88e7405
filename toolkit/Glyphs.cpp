#include "toolkit/Glyphs.h"

#include "toolkit/GlyphTable_p.h"

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

// Draws with the current colours of the palette, so that a change from light to dark takes effect.
class GlyphEngine : public QIconEngine
{
public:
    GlyphEngine(const Zel::Glyph *normal, const Zel::Glyph *disabled) : m_normal(normal), m_disabled(disabled)
    {
    }

    QIconEngine *clone() const override { return new GlyphEngine(*this); }
    QString key() const override { return u"ZelGlyph"_s; }
    QString iconName() override { return QString::fromLatin1(m_normal->name); }
    bool isNull() override { return false; }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        // A view draws the same few pictures repeatedly, so pixmaps are cached. A painter that scales or
        // rotates needs the SVG itself.
        if (painter->worldTransform().type() > QTransform::TxTranslate) {
            draw(*painter, rect, mode == QIcon::Disabled, colorOf(mode));
            return;
        }
        const qreal ratio = painter->device()->devicePixelRatio();
        QPixmap picture = scaledPixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state, ratio);
        picture.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), picture);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal) override
    {
        const bool off = mode == QIcon::Disabled;
        const QColor color = colorOf(mode);
        const QString key = u"zelglyph/%1/%2x%3/%4/%5"_s.arg(QLatin1String(m_normal->name))
                                .arg(size.width())
                                .arg(size.height())
                                .arg(int(off))
                                .arg(color.rgb());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        draw(painter, QRect(QPoint(0, 0), size), off, color);
        painter.end();
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

private:
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
    void draw(QPainter &painter, const QRect &rect, bool off, const QColor &color) const
    {
        QByteArray svg((off && m_disabled ? m_disabled : m_normal)->svg);
        svg.replace("currentColor", color.name().toLatin1());
        QSvgRenderer renderer(svg);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter, rect);
    }

    const Zel::Glyph *m_normal;
    const Zel::Glyph *m_disabled;
};
} // namespace

QIcon GlyphIcon(const QString &name)
{
    const QByteArray key = name.toLatin1();
    const Zel::Glyph *normal = findGlyph(key);
    return normal ? QIcon(new GlyphEngine(normal, findGlyph(key + "-disabled"))) : QIcon();
}

QStringList GlyphNames()
{
    QStringList names;
    for (std::size_t i = 0; i < Zel::glyphCount; ++i)
        names.append(QString::fromLatin1(Zel::glyphTable[i].name));
    return names;
}
