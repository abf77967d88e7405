#include "look/Appearance.h"

#include "look/DeskStyle.h"

#include "toolkit/Look.h"
#include "toolkit/TColors.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPointer>
#include <QWindow>

#ifdef Q_OS_WIN
#include <QSettings>
#endif

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace QuoteDesk::Appearance
{
namespace
{

struct Chosen {
    ColourScheme scheme = ColourScheme::System;
    TextSize size = TextSize::Normal;
    // As the application had them before.
    std::optional<QFont> systemFont;
    std::optional<QPalette> systemPalette;
    std::function<QPalette()> source;
};

Chosen &chosen()
{
    static Chosen value;
    return value;
}

qreal pointsOf(TextSize size)
{
    switch (size) {
    case TextSize::Small:
        return -1;
    case TextSize::Normal:
        return 0;
    case TextSize::Large:
        return 1.5;
    case TextSize::Largest:
        return 3;
    }
    Q_UNREACHABLE();
}

bool isSystemDark(const QPalette &system)
{
#ifdef Q_OS_WIN
    // Qt 6.4 passes on the dark colours of Windows to its own style only.
    const QSettings theme(
        u"HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize"_s,
        QSettings::NativeFormat);
    if (theme.contains(u"AppsUseLightTheme"_s))
        return !theme.value(u"AppsUseLightTheme"_s).toBool();
#endif
    return IsDark(system);
}

void applyPalette()
{
    Chosen &now = chosen();
    if (!now.systemPalette)
        now.systemPalette = now.source ? now.source() : QGuiApplication::palette();
    const QPalette &system = *now.systemPalette;
    const bool isPlain = isHighContrast(system);
    const bool hasOwnStyle = qobject_cast<DeskStyle *>(QApplication::style()) != nullptr;
    if (isPlain)
        QApplication::setStyle(u"Fusion"_s);
    else if (!hasOwnStyle)
        QApplication::setStyle(new DeskStyle);
    const bool dark =
        now.scheme == ColourScheme::System ? isSystemDark(system) : now.scheme == ColourScheme::Dark;
    const QPalette palette = isPlain ? system : LookPalette(dark);
    QApplication::setPalette(palette);
    // Selected text stands out more than a chosen row does.
    QPalette editors = palette;
    if (!isPlain)
        editors.setColor(QPalette::Highlight, ColorOf(LookColor::AccentMid, palette));
    for (const char *const editor : {"QLineEdit", "QTextEdit", "QPlainTextEdit"})
        QApplication::setPalette(editors, editor);
}

void applyFont()
{
    Chosen &now = chosen();
    if (!now.systemFont)
        now.systemFont = QApplication::font();
    QFont font = interfaceFont(*now.systemFont);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() + pointsOf(now.size));
    else
        font.setPixelSize(font.pixelSize() + qRound(pointsOf(now.size) * 96 / 72));
    if (font != QApplication::font())
        QApplication::setFont(font);
}

/// Applies the palette again when the system's has changed.
class SystemWatch : public QObject
{
public:
    using QObject::QObject;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ThemeChange && watched->isWindowType() && !m_waits) {
            // Each window has the event; the palette is read once, when all have it.
            m_waits = true;
            QMetaObject::invokeMethod(
                this,
                [this] {
                    m_waits = false;
                    // Qt tells the system's palette only to an application that has set none.
                    QApplication::setPalette(QPalette());
                    chosen().systemPalette.reset();
                    applyPalette();
                },
                Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_waits = false;
};

} // namespace

void apply(ColourScheme scheme, TextSize size)
{
    chosen().scheme = scheme;
    chosen().size = size;
    static QPointer<SystemWatch> watch;
    if (!watch) {
        watch = new SystemWatch(qApp);
        qApp->installEventFilter(watch);
    }
    applyFont();
    applyPalette();
}

void setSystemPalette(std::function<QPalette()> source)
{
    chosen().source = std::move(source);
}

ColourScheme scheme()
{
    return chosen().scheme;
}

TextSize textSize()
{
    return chosen().size;
}

bool isDark()
{
    return IsDark(QApplication::palette());
}

bool isHighContrast(const QPalette &palette)
{
    const QColor ground = palette.color(QPalette::Window);
    const bool isPure = ground == QColor(Qt::black) || ground == QColor(Qt::white);
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::WindowText);
    // Text is as far from the ground as can be, in windows, fields and buttons alike.
    return isPure && base == ground && palette.color(QPalette::Button) == ground &&
           qAbs(text.lightness() - ground.lightness()) > 240;
}

bool hasEqualDigits(const QFont &font)
{
    const QFontMetricsF metrics(font);
    const qreal zero = metrics.horizontalAdvance(u'0');
    const QString others = u"123456789"_s;
    return std::all_of(others.cbegin(), others.cend(), [&metrics, zero](QChar digit) {
        return qAbs(metrics.horizontalAdvance(digit) - zero) < 0.01;
    });
}

QFont interfaceFont(const QFont &system)
{
    // Asking for each font costs less than a list of all of them.
    const auto isInstalled = [](const QFont &font) {
        return QFontInfo(font).family().compare(font.family(), Qt::CaseInsensitive) == 0;
    };
    const auto first = [&](const QStringList &families) {
        QFont font = system;
        for (const QString &family : families) {
            font.setFamilies({family});
            if (isInstalled(font) && hasEqualDigits(font))
                return font;
        }
        return system;
    };
    if (!isInstalled(system)) {
        // A desktop that names no font has Qt take any.
        QFont font = first({u"Noto Sans"_s, u"Cantarell"_s, u"DejaVu Sans"_s});
        constexpr qreal readable = 10;
        if (font.pointSizeF() > 0)
            font.setPointSizeF(qMax(font.pointSizeF(), readable));
        return font;
    }
    if (hasEqualDigits(system))
        return system;
    return first({u"Noto Sans"_s, u"Segoe UI"_s, u"Liberation Sans"_s, u"DejaVu Sans"_s});
}

} // namespace QuoteDesk::Appearance
