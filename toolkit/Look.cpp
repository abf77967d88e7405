#include "toolkit/Look.h"

#include "toolkit/TColors.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

Look currentLook = Look::Designed;

struct ColorEntry {
    LookColor color;
    QRgb light;
    QRgb dark;
};

// In the order of LookColor. Text has a contrast of at least 4.5:1 on every ground it stands on, an edge one
// of at least 3:1; tst_look calculates them.
constexpr std::array colors{
    ColorEntry{LookColor::Ground, 0xfff3f5f4, 0xff151a18},
    ColorEntry{LookColor::Surface, 0xffffffff, 0xff1d2320},
    ColorEntry{LookColor::Raised, 0xfff8faf9, 0xff252c29},
    ColorEntry{LookColor::Line, 0xffdee4e1, 0xff343d39},
    ColorEntry{LookColor::LineStrong, 0xffc2ccc7, 0xff4a5550},
    ColorEntry{LookColor::Field, 0xff7d8a84, 0xff76837c},
    ColorEntry{LookColor::Text, 0xff1a2320, 0xffe7edea},
    ColorEntry{LookColor::Text2, 0xff52605a, 0xffaab7b1},
    ColorEntry{LookColor::Text3, 0xff626f69, 0xff94a19b},
    ColorEntry{LookColor::Disabled, 0xff98a39e, 0xff66726c},
    ColorEntry{LookColor::Accent, 0xff3f7f68, 0xff3f7f68},
    ColorEntry{LookColor::AccentHover, 0xff356c58, 0xff38725d},
    ColorEntry{LookColor::AccentPress, 0xff2b5848, 0xff356c58},
    ColorEntry{LookColor::OnAccent, 0xffffffff, 0xffffffff},
    ColorEntry{LookColor::AccentText, 0xff2a6150, 0xff7fcbaa},
    ColorEntry{LookColor::AccentSoft, 0xffe4f0ea, 0xff24382f},
    ColorEntry{LookColor::AccentMid, 0xffbad8c4, 0xff2f5b4a},
    ColorEntry{LookColor::Focus, 0xff1f7a5c, 0xff5dbb97},
    ColorEntry{LookColor::Mark, 0xffffe9a8, 0xff5c4a12},
    ColorEntry{LookColor::Side, 0xff1e3a31, 0xff101614},
    ColorEntry{LookColor::SideChosen, 0xff2a4b40, 0xff1f2c27},
    ColorEntry{LookColor::SideText, 0xffe6f0eb, 0xffdce8e2},
    ColorEntry{LookColor::SideText2, 0xffa9c4b8, 0xff93a9a0},
    ColorEntry{LookColor::SideButton, 0xff8ccfb0, 0xff3f7f68},
    ColorEntry{LookColor::OnSideButton, 0xff10241c, 0xffffffff},
    ColorEntry{LookColor::SideStrip, 0xff8ccfb0, 0xff8ccfb0},
    ColorEntry{LookColor::Unsaved, 0xfff0c169, 0xfff0c169},
    ColorEntry{LookColor::OkText, 0xff1f6247, 0xff86d3ae},
    ColorEntry{LookColor::OkGround, 0xffe1f1e8, 0xff1c3429},
    ColorEntry{LookColor::InfoText, 0xff1d557f, 0xff8fc6ee},
    ColorEntry{LookColor::InfoGround, 0xffe5eff7, 0xff1a2f3e},
    ColorEntry{LookColor::WarnText, 0xff7a4a00, 0xfff0c169},
    ColorEntry{LookColor::WarnGround, 0xfffdf1d8, 0xff372b14},
    ColorEntry{LookColor::WarnMark, 0xffb26a00, 0xffe0a030},
    ColorEntry{LookColor::ErrorText, 0xff9f2318, 0xffff9f94},
    ColorEntry{LookColor::ErrorGround, 0xfffbe9e7, 0xff40211e},
    ColorEntry{LookColor::ErrorMark, 0xffc0392b, 0xfff0766a},
    ColorEntry{LookColor::NeutralText, 0xff46524d, 0xffbac6c0},
    ColorEntry{LookColor::NeutralGround, 0xffecf0ee, 0xff2b332f},
};
static_assert(std::is_sorted(colors.begin(), colors.end(),
                             [](const ColorEntry &a, const ColorEntry &b) { return a.color < b.color; }));
static_assert(colors.size() == static_cast<std::size_t>(LookColor::NeutralGround) + 1);

QColor designed(LookColor color, bool dark)
{
    const ColorEntry &entry = colors.at(static_cast<std::size_t>(color));
    return QColor::fromRgb(dark ? entry.dark : entry.light);
}

// The last one is that of the other funds.
constexpr std::array<QRgb, FundColorCount + 1> fundsLight{0xff2f6f5b, 0xffcb852a, 0xff3d8fd6,
                                                          0xff8a3a2a, 0xff6c9d87, 0xff4b3a7a,
                                                          0xffb57a9e, 0xff8c7a2e, 0xff87948e};
constexpr std::array<QRgb, FundColorCount + 1> fundsDark{0xff3f9e7f, 0xffedb65c, 0xff5aa2e6,
                                                         0xffc75b43, 0xffbfe0cf, 0xff7c68b8,
                                                         0xffe5b3d0, 0xffa5923c, 0xff87938d};

struct FontEntry {
    qreal points; // more than the body font
    QFont::Weight weight;
};

FontEntry entryOf(LookFont font)
{
    switch (font) {
    case LookFont::Caption:
        return {-1, QFont::Normal};
    case LookFont::Body:
        return {0, QFont::Normal};
    case LookFont::Strong:
        return {0, QFont::DemiBold};
    case LookFont::Heading:
        return {1.5, QFont::DemiBold};
    case LookFont::Title:
        return {4, QFont::DemiBold};
    case LookFont::Figure:
        return {10, QFont::DemiBold};
    case LookFont::Result:
        return {5, QFont::DemiBold};
    }
    Q_UNREACHABLE();
}

} // namespace

void SetLook(Look look)
{
    if (std::exchange(currentLook, look) == look || !qApp)
        return;
    const QWidgetList widgets = QApplication::allWidgets();
    const QList<QPointer<QWidget>> alive(widgets.cbegin(), widgets.cend());
    for (const QPointer<QWidget> &widget : alive) {
        QEvent changed(QEvent::StyleChange);
        if (widget)
            QCoreApplication::sendEvent(widget, &changed);
    }
}

Look CurrentLook()
{
    return currentLook;
}

QColor ColorOf(LookColor color, const QPalette &palette)
{
    switch (color) {
    case LookColor::Ground:
        return palette.color(QPalette::Window);
    case LookColor::Surface:
        return palette.color(QPalette::Base);
    case LookColor::Raised:
        return palette.color(QPalette::AlternateBase);
    case LookColor::Text:
        return palette.color(QPalette::WindowText);
    case LookColor::Text3:
        return palette.color(QPalette::PlaceholderText);
    case LookColor::Disabled:
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    default:
        return designed(color, IsDark(palette));
    }
}

QPalette LookPalette(bool dark)
{
    struct Role {
        QPalette::ColorRole role;
        LookColor color;
    };
    static constexpr std::array roles{
        Role{QPalette::Window, LookColor::Ground},
        Role{QPalette::WindowText, LookColor::Text},
        Role{QPalette::Base, LookColor::Surface},
        Role{QPalette::AlternateBase, LookColor::Raised},
        Role{QPalette::ToolTipBase, LookColor::Surface},
        Role{QPalette::ToolTipText, LookColor::Text},
        Role{QPalette::PlaceholderText, LookColor::Text3},
        Role{QPalette::Text, LookColor::Text},
        Role{QPalette::Button, LookColor::Surface},
        Role{QPalette::ButtonText, LookColor::Text},
        Role{QPalette::BrightText, LookColor::ErrorText},
        Role{QPalette::Light, LookColor::Surface},
        Role{QPalette::Midlight, LookColor::Raised},
        Role{QPalette::Mid, LookColor::LineStrong},
        Role{QPalette::Dark, LookColor::Field},
        Role{QPalette::Shadow, LookColor::Field},
        Role{QPalette::Highlight, LookColor::AccentSoft},
        Role{QPalette::HighlightedText, LookColor::Text},
        Role{QPalette::Link, LookColor::AccentText},
        Role{QPalette::LinkVisited, LookColor::AccentText},
    };
    QPalette palette;
    for (const Role &entry : roles)
        palette.setColor(entry.role, designed(entry.color, dark));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::HighlightedText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, designed(LookColor::Disabled, dark));
    return palette;
}

QColor FundColor(int index, bool dark)
{
    const auto place = static_cast<std::size_t>(std::clamp(index, 0, FundColorCount));
    return QColor::fromRgb((dark ? fundsDark : fundsLight).at(place));
}

QFont FontOf(LookFont font, const QFont &body)
{
    constexpr qreal smallest = 8; // points
    const auto [points, weight] = entryOf(font);
    QFont result = body;
    result.setWeight(weight);
    if (body.pixelSize() > 0) {
        constexpr qreal pixelsPerPoint = 96.0 / 72.0;
        const qreal least = qMin(qreal(body.pixelSize()), smallest * pixelsPerPoint);
        result.setPixelSize(qRound(qMax(body.pixelSize() + points * pixelsPerPoint, least)));
    } else {
        result.setPointSizeF(qMax(body.pointSizeF() + points, qMin(body.pointSizeF(), smallest)));
    }
    return result;
}

int HeightOf(LookHeight height, const QFontMetrics &metrics)
{
    const auto added = [height] {
        switch (height) {
        case LookHeight::Row:
            return 16;
        case LookHeight::CompactRow:
        case LookHeight::SmallField:
        case LookHeight::FilterChip:
            return 10;
        case LookHeight::FieldRow:
            return 20;
        case LookHeight::CompactFieldRow:
            return 12;
        case LookHeight::TableHead:
        case LookHeight::Field:
            return 14;
        case LookHeight::TabStrip:
        case LookHeight::LowBand:
            return 22;
        case LookHeight::CommandBar:
            return 34;
        case LookHeight::LowCommandBar:
            return 28;
        case LookHeight::Band:
            return 30;
        case LookHeight::StatusBar:
            return 8;
        case LookHeight::Chip:
            return 4;
        }
        Q_UNREACHABLE();
    };
    return metrics.height() + added();
}
