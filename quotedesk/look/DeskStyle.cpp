#include "look/DeskStyle.h"

#include "look/DrawControls.h"
#include "look/DrawViews.h"
#include "look/GlyphLabel.h"
#include "look/TextLabel.h"

#include "toolkit/Glyphs.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSplitterHandle>
#include <QStatusBar>
#include <QTabBar>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>

#include <optional>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int buttonPadding = 12;
constexpr int flatPadding = 10;
constexpr int pictureGap = 8;
constexpr int fieldPadding = 8;
constexpr int arrowRoom = 26; ///< of a combo box
constexpr int stepRoom = 22;  ///< of a spin box

template <typename Option> const Option *as(const QStyleOption *option)
{
    return qstyleoption_cast<const Option *>(option);
}

/// Whether the screen of @p widget has no height to spare.
bool isOnLowScreen(const QWidget *widget)
{
    constexpr int low = 680;
    const QScreen *const screen = widget ? widget->screen() : QGuiApplication::primaryScreen();
    return screen && screen->availableGeometry().height() < low;
}

int heightOf(const QWidget *widget, const QFontMetrics &metrics)
{
    const bool small = isSmall(widget) || isOnLowScreen(widget);
    return HeightOf(small ? LookHeight::SmallField : LookHeight::Field, metrics);
}

int headHeight(const QWidget *widget, const QFontMetrics &metrics)
{
    return HeightOf(isOnLowScreen(widget) ? LookHeight::SmallField : LookHeight::TableHead, metrics);
}

int tabHeight(const QWidget *widget, const QFontMetrics &metrics)
{
    return HeightOf(isOnLowScreen(widget) ? LookHeight::SmallField : LookHeight::TabStrip, metrics);
}

bool isTextView(const QWidget *widget)
{
    return qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QPlainTextEdit *>(widget);
}

/// The view whose items are drawn on @p widget.
const QWidget *viewOf(const QStyleOptionViewItem &option, const QWidget *widget)
{
    return option.widget ? option.widget : widget;
}

ButtonKind toolKindOf(const QStyleOptionToolButton &option, const QWidget *widget)
{
    if (const std::optional<ButtonKind> kind = buttonKindOf(widget))
        return *kind;
    return option.state.testFlag(QStyle::State_AutoRaise) ? ButtonKind::Flat : ButtonKind::Quiet;
}

QSize pushButtonSize(const QStyleOptionButton &option, const QWidget *widget)
{
    const ButtonKind kind = Draw::kindOf(option, widget);
    // A button that the focus makes the dialog's default keeps its width.
    const bool mayBeStrong =
        option.features.testFlag(QStyleOptionButton::AutoDefaultButton) && !buttonKindOf(widget);
    const QFont body = widget ? widget->font() : QApplication::font();
    const QFontMetrics metrics(Draw::buttonFont(mayBeStrong ? ButtonKind::Filled : kind, body));
    const int height = heightOf(widget, option.fontMetrics);
    const QSize text = metrics.size(Qt::TextShowMnemonic, option.text);
    const int icon = option.icon.isNull() ? 0 : option.iconSize.width();
    if (option.text.isEmpty())
        return {qMax(height, icon + pictureGap), height};
    int width = text.width() + (icon > 0 ? icon + pictureGap : 0) +
                2 * (kind == ButtonKind::Flat ? flatPadding : buttonPadding);
    if (option.features.testFlag(QStyleOptionButton::HasMenu))
        width += arrowRoom - pictureGap;
    return {width, qMax(height, text.height() + pictureGap)};
}

QSize toolButtonSize(const QStyleOptionToolButton &option, const QSize &size, const QWidget *widget)
{
    const int height = heightOf(widget, option.fontMetrics);
    const bool isPicture = option.toolButtonStyle == Qt::ToolButtonIconOnly || option.text.isEmpty();
    if (isPicture)
        return {qMax(size.width() + 6, height), qMax(size.height() + 6, height)};
    if (option.toolButtonStyle == Qt::ToolButtonTextUnderIcon)
        return {size.width() + 2 * pictureGap, size.height() + pictureGap};
    return {size.width() + 2 * flatPadding, qMax(size.height(), height)};
}

void drawToolButton(const QStyle &style, const QStyleOptionToolButton &option, QPainter &painter,
                    const QWidget *widget)
{
    const ButtonKind kind = toolKindOf(option, widget);
    Draw::buttonGround(painter, option, kind);
    const bool hasPopup = option.features.testFlag(QStyleOptionToolButton::MenuButtonPopup);
    const bool hasMenu = option.features.testFlag(QStyleOptionToolButton::HasMenu);
    const bool hasArrow = option.features.testFlag(QStyleOptionToolButton::Arrow);
    const QRect words =
        hasPopup ? style.subControlRect(QStyle::CC_ToolButton, &option, QStyle::SC_ToolButton, widget)
                 : option.rect;
    const QColor ink = Draw::buttonInk(kind, option);
    painter.save();
    painter.setFont(option.font);
    if (option.toolButtonStyle == Qt::ToolButtonTextUnderIcon || hasArrow) {
        QStyleOptionToolButton label = option;
        label.rect = words;
        label.state.setFlag(QStyle::State_Sunken, false);
        label.palette.setColor(QPalette::ButtonText, ink);
        style.drawControl(QStyle::CE_ToolButtonLabel, &label, &painter, widget);
    } else {
        QStyleOptionButton label;
        label.QStyleOption::operator=(option);
        label.rect = words;
        label.iconSize = option.iconSize;
        if (option.toolButtonStyle != Qt::ToolButtonTextOnly)
            label.icon = option.icon;
        if (option.toolButtonStyle != Qt::ToolButtonIconOnly || option.icon.isNull())
            label.text = option.text;
        Draw::buttonLabel(painter, label, kind, pictureGap);
    }
    painter.restore();
    if (hasPopup)
        Draw::chevron(painter,
                      style.subControlRect(QStyle::CC_ToolButton, &option, QStyle::SC_ToolButtonMenu, widget),
                      Qt::DownArrow, ink);
    else if (hasMenu && option.toolButtonStyle != Qt::ToolButtonIconOnly)
        Draw::chevron(
            painter,
            QStyle::visualRect(option.direction, option.rect,
                               QRect(option.rect.right() - 14, option.rect.top(), 12, option.rect.height())),
            Qt::DownArrow, ink);
}

void drawComboBox(const QStyle &style, const QStyleOptionComboBox &option, QPainter &painter,
                  const QWidget *widget)
{
    if (option.frame)
        Draw::field(painter, option, widget, option.editable);
    if (!option.subControls.testFlag(QStyle::SC_ComboBoxArrow))
        return;
    const QRect arrow = style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, widget);
    const QColor ink = Draw::colorOf(LookColor::Text2, option);
    if (qobject_cast<const QDateTimeEdit *>(widget)) {
        const int edge = besideFont(16, option.fontMetrics);
        PaintGlyph(painter, QStyle::alignedRect(option.direction, Qt::AlignCenter, QSize(edge, edge), arrow),
                   u"calendar"_s, ink);
    } else {
        Draw::chevron(painter, arrow, Qt::DownArrow, ink);
    }
}

void drawSpinBox(const QStyle &style, const QStyleOptionSpinBox &option, QPainter &painter,
                 const QWidget *widget)
{
    if (option.frame)
        Draw::field(painter, option, widget);
    if (option.buttonSymbols == QAbstractSpinBox::NoButtons)
        return;
    struct Step {
        QStyle::SubControl part;
        Qt::ArrowType arrow;
        QAbstractSpinBox::StepEnabledFlag enabled;
    };
    for (const Step &step :
         {Step{QStyle::SC_SpinBoxUp, Qt::UpArrow, QAbstractSpinBox::StepUpEnabled},
          Step{QStyle::SC_SpinBoxDown, Qt::DownArrow, QAbstractSpinBox::StepDownEnabled}}) {
        const QRect rect = style.subControlRect(QStyle::CC_SpinBox, &option, step.part, widget);
        const bool isUsed =
            option.activeSubControls == step.part && option.stepEnabled.testFlag(step.enabled);
        if (isUsed)
            painter.fillRect(rect, Draw::colorOf(LookColor::AccentSoft, option));
        const bool canStep = option.stepEnabled.testFlag(step.enabled);
        Draw::chevron(painter, rect, step.arrow,
                      Draw::colorOf(canStep ? LookColor::Text2 : LookColor::Disabled, option));
    }
}

void drawGroupBox(const QStyle &style, const QStyleOptionGroupBox &option, QPainter &painter,
                  const QWidget *widget)
{
    if (option.subControls.testFlag(QStyle::SC_GroupBoxFrame))
        paintRounded(painter, option.rect, LookSpace::PanelRadius, Draw::colorOf(LookColor::Surface, option),
                     Draw::colorOf(LookColor::Line, option));
    if (option.subControls.testFlag(QStyle::SC_GroupBoxCheckBox)) {
        QStyleOptionButton box;
        box.QStyleOption::operator=(option);
        box.rect = style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, widget);
        style.drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, widget);
    }
    if (option.text.isEmpty() || !option.subControls.testFlag(QStyle::SC_GroupBoxLabel))
        return;
    painter.save();
    painter.setFont(Draw::headFont(painter.font()));
    painter.setPen(Draw::colorOf(LookColor::Text2, option));
    const QRect words = style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, widget);
    painter.drawText(words,
                     static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignLeft)) |
                         Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextDontClip,
                     option.text);
    painter.restore();
    if (Draw::hasKeyboardFocus(option))
        Draw::focusRing(painter, words.adjusted(-4, -2, 4, 2), option);
}

void drawFrame(const QStyleOption &option, QPainter &painter, const QWidget *widget)
{
    if (isTextView(widget)) {
        QStyleOption field = option;
        field.state.setFlag(QStyle::State_HasFocus, widget->hasFocus());
        Draw::field(painter, field, widget);
        return;
    }
    // A view that scrolls has square corners: its content would cover round ones.
    const bool scrolls = qobject_cast<const QAbstractScrollArea *>(widget) != nullptr;
    paintRounded(painter, option.rect, scrolls ? 1 : LookSpace::PanelRadius, {},
                 Draw::colorOf(LookColor::Line, option));
}

/// Draws arrows, ticks and what else shows a state; returns whether @p element is one.
bool drawIndicator(QStyle::PrimitiveElement element, const QStyleOption &option, QPainter &painter)
{
    const QColor ink = Draw::colorOf(LookColor::Text2, option);
    const Qt::ArrowType ahead = option.direction == Qt::RightToLeft ? Qt::LeftArrow : Qt::RightArrow;
    switch (element) {
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorItemViewItemCheck:
        Draw::checkBox(painter, option);
        return true;
    case QStyle::PE_IndicatorRadioButton:
        Draw::radioButton(painter, option);
        return true;
    case QStyle::PE_IndicatorArrowUp:
        Draw::chevron(painter, option.rect, Qt::UpArrow, ink);
        return true;
    case QStyle::PE_IndicatorArrowDown:
    case QStyle::PE_IndicatorButtonDropDown:
        Draw::chevron(painter, option.rect, Qt::DownArrow, ink);
        return true;
    case QStyle::PE_IndicatorArrowLeft:
        Draw::chevron(painter, option.rect, Qt::LeftArrow, ink);
        return true;
    case QStyle::PE_IndicatorArrowRight:
        Draw::chevron(painter, option.rect, Qt::RightArrow, ink);
        return true;
    case QStyle::PE_IndicatorBranch:
        if (option.state.testFlag(QStyle::State_Children))
            Draw::chevron(painter, option.rect,
                          option.state.testFlag(QStyle::State_Open) ? Qt::DownArrow : ahead, ink);
        return true;
    case QStyle::PE_IndicatorTabClose: {
        if (option.state.testFlag(QStyle::State_MouseOver) && option.state.testFlag(QStyle::State_Enabled))
            paintRounded(painter, option.rect, LookSpace::ControlRadius,
                         Draw::colorOf(LookColor::AccentSoft, option), {});
        const int edge = qMin(12, option.rect.height());
        PaintGlyph(painter,
                   QStyle::alignedRect(option.direction, Qt::AlignCenter, QSize(edge, edge), option.rect),
                   u"close"_s, ink);
        return true;
    }
    default:
        return false;
    }
}

/// Draws the grounds and edges of bars, menus and panels; returns whether @p element is one.
bool drawSurface(QStyle::PrimitiveElement element, const QStyleOption &option, QPainter &painter)
{
    const auto color = [&option](LookColor wanted) { return Draw::colorOf(wanted, option); };
    switch (element) {
    case QStyle::PE_FrameGroupBox:
        paintRounded(painter, option.rect, LookSpace::PanelRadius, color(LookColor::Surface),
                     color(LookColor::Line));
        return true;
    case QStyle::PE_PanelScrollAreaCorner:
        painter.fillRect(option.rect, color(LookColor::Raised));
        return true;
    case QStyle::PE_FrameTabBarBase:
        Draw::edgeLine(painter, option.rect, Qt::BottomEdge, color(LookColor::Line));
        return true;
    case QStyle::PE_FrameTabWidget:
        Draw::edgeLine(painter, option.rect, Qt::TopEdge, color(LookColor::Line));
        return true;
    case QStyle::PE_PanelMenu:
        painter.fillRect(option.rect, color(LookColor::Surface));
        return true;
    case QStyle::PE_FrameMenu:
        paintRounded(painter, option.rect, 1, {}, color(LookColor::LineStrong));
        return true;
    case QStyle::PE_PanelMenuBar:
    case QStyle::PE_FrameStatusBarItem:
        return true;
    case QStyle::PE_PanelStatusBar:
        painter.fillRect(option.rect, color(LookColor::Raised));
        Draw::edgeLine(painter, option.rect, Qt::TopEdge, color(LookColor::Line));
        return true;
    case QStyle::PE_PanelTipLabel:
        painter.fillRect(option.rect, option.palette.color(QPalette::ToolTipBase));
        paintRounded(painter, option.rect, 1, {}, color(LookColor::LineStrong));
        return true;
    default:
        return false;
    }
}

/// The part of a row of a view where no item is: before the items of a tree, behind the last column.
void drawRow(const QStyleOptionViewItem &option, QPainter &painter)
{
    if (option.state.testFlag(QStyle::State_Selected))
        painter.fillRect(option.rect, option.palette.brush(QPalette::Highlight));
    else if (option.features.testFlag(QStyleOptionViewItem::Alternate))
        painter.fillRect(option.rect, option.palette.brush(QPalette::AlternateBase));
}

void drawLineEdit(const QStyleOption &option, QPainter &painter, const QWidget *widget, bool hasGround)
{
    const auto *const frame = as<QStyleOptionFrame>(&option);
    if (frame && frame->lineWidth > 0)
        Draw::field(painter, option, widget);
    else if (hasGround)
        painter.fillRect(option.rect,
                         Draw::colorOf(option.state.testFlag(QStyle::State_Enabled) ? LookColor::Surface
                                                                                    : LookColor::Raised,
                                       option));
}

void drawPushButtonLabel(const QStyleOptionButton &option, QPainter &painter, const QWidget *widget)
{
    QStyleOptionButton label = option;
    const ButtonKind kind = Draw::kindOf(option, widget);
    if (option.features.testFlag(QStyleOptionButton::HasMenu)) {
        const QRect whole = option.rect;
        label.rect = QStyle::visualRect(option.direction, whole,
                                        whole.adjusted(pictureGap, 0, -arrowRoom + pictureGap, 0));
        const QRect arrow(whole.right() - arrowRoom + 1, whole.top(), arrowRoom - 4, whole.height());
        Draw::chevron(painter, QStyle::visualRect(option.direction, whole, arrow), Qt::DownArrow,
                      Draw::buttonInk(kind, option));
    }
    Draw::buttonLabel(painter, label, kind, pictureGap);
}

/// Draws the parts of menus; returns whether @p element is one.
bool drawMenuPart(QStyle::ControlElement element, const QStyleOption &option, QPainter &painter)
{
    const auto *const item = as<QStyleOptionMenuItem>(&option);
    switch (element) {
    case QStyle::CE_MenuItem:
        if (item)
            Draw::menuItem(painter, *item);
        return true;
    case QStyle::CE_MenuEmptyArea:
        return true;
    case QStyle::CE_MenuBarItem:
        if (item)
            Draw::menuBarItem(painter, *item);
        return true;
    case QStyle::CE_MenuBarEmptyArea:
        painter.fillRect(option.rect, Draw::colorOf(LookColor::Raised, option));
        return true;
    default:
        return false;
    }
}

/// Draws the parts of a table's head; returns whether @p element is one.
bool drawHeadPart(QStyle::ControlElement element, const QStyleOption &option, QPainter &painter)
{
    const auto *const head = as<QStyleOptionHeader>(&option);
    const bool isWhole = element == QStyle::CE_Header;
    if (element == QStyle::CE_HeaderEmptyArea) {
        painter.fillRect(option.rect, Draw::colorOf(LookColor::Raised, option));
        Draw::edgeLine(painter, option.rect, Qt::BottomEdge, Draw::colorOf(LookColor::Line, option));
        return true;
    }
    if (!isWhole && element != QStyle::CE_HeaderSection && element != QStyle::CE_HeaderLabel)
        return false;
    if (head && (isWhole || element == QStyle::CE_HeaderSection))
        Draw::headGround(painter, *head);
    if (head && (isWhole || element == QStyle::CE_HeaderLabel))
        Draw::headLabel(painter, *head);
    return true;
}

QRect comboPart(const QStyleOptionComplex &option, QStyle::SubControl part)
{
    const QRect whole = option.rect;
    const int room = qMin(arrowRoom, whole.width() / 3);
    const QRect rect = part == QStyle::SC_ComboBoxArrow
                           ? QRect(whole.right() - room + 1, whole.top(), room, whole.height())
                           : whole.adjusted(fieldPadding, 2, -room, -2);
    return QStyle::visualRect(option.direction, whole, rect);
}

QRect spinPart(const QStyleOptionComplex &option, QStyle::SubControl part)
{
    const QRect whole = option.rect;
    const auto *const spin = as<QStyleOptionSpinBox>(&option);
    const bool hasSteps = spin && spin->buttonSymbols != QAbstractSpinBox::NoButtons;
    const int room = hasSteps ? qMin(stepRoom, whole.width() / 3) : fieldPadding;
    QRect rect;
    if (part == QStyle::SC_SpinBoxEditField) {
        rect = whole.adjusted(fieldPadding - 2, 2, -room - 2, -2);
    } else if (hasSteps) {
        const int half = whole.height() / 2 - 2;
        rect = QRect(whole.right() - room, whole.top() + 2, room - 1, half);
        if (part == QStyle::SC_SpinBoxDown)
            rect.translate(0, half);
    }
    return rect.isNull() ? rect : QStyle::visualRect(option.direction, whole, rect);
}

QFontMetrics groupTitleMetrics(const QWidget *widget)
{
    return QFontMetrics(Draw::headFont(widget ? widget->font() : QApplication::font()));
}

/// The height of a group box's title with the space around it.
int groupHead(const QFontMetrics &title)
{
    return title.height() + LookSpace::Small + 2;
}

QRect groupPart(const QStyleOptionGroupBox &option, QStyle::SubControl part, const QWidget *widget, int tick)
{
    const QRect whole = option.rect;
    const QFontMetrics metrics = groupTitleMetrics(widget);
    const bool hasTick = option.subControls.testFlag(QStyle::SC_GroupBoxCheckBox);
    const bool hasHead = hasTick || !option.text.isEmpty();
    const int start = LookSpace::Medium + (hasTick ? tick + LookSpace::Small : 0);
    QRect rect = whole;
    if (part == QStyle::SC_GroupBoxContents)
        rect = whole.adjusted(1, (hasHead ? groupHead(metrics) : 0) + 1, -1, -1);
    else if (part == QStyle::SC_GroupBoxCheckBox)
        rect = QRect(LookSpace::Medium, LookSpace::Small + (metrics.height() - tick) / 2, tick, tick);
    else if (part == QStyle::SC_GroupBoxLabel)
        rect = QRect(start, LookSpace::Small, metrics.size(Qt::TextShowMnemonic, option.text).width(),
                     metrics.height());
    return QStyle::visualRect(option.direction, whole, rect);
}

QSize tabSize(const QStyleOptionTab &option, const QSize &size, const QWidget *widget)
{
    const QFont body = widget ? widget->font() : QApplication::font();
    const QFontMetrics strong(FontOf(LookFont::Strong, body));
    const int wider = strong.size(Qt::TextShowMnemonic, option.text).width() -
                      option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    return {size.width() + qMax(0, wider), tabHeight(widget, option.fontMetrics)};
}

QSize headSize(const QStyleOptionHeader &option, const QWidget *widget)
{
    const QFontMetrics metrics(Draw::headFont(widget ? widget->font() : QApplication::font()));
    const QSize text = metrics.size(0, option.text);
    const int arrow = option.sortIndicator == QStyleOptionHeader::None ? 0 : 18;
    const int least = text.height() + LookSpace::Small;
    return {text.width() + 2 * Draw::CellPadding + arrow,
            option.orientation == Qt::Horizontal ? qMax(headHeight(widget, option.fontMetrics), least)
                                                 : least};
}

/// The lengths that stay the same in every font.
std::optional<int> fixedMetric(QStyle::PixelMetric metric)
{
    switch (metric) {
    case QStyle::PM_ButtonShiftHorizontal:
    case QStyle::PM_ButtonShiftVertical:
    case QStyle::PM_TabBarTabShiftHorizontal:
    case QStyle::PM_TabBarTabShiftVertical:
    case QStyle::PM_TabBarTabOverlap:
    case QStyle::PM_TabBarBaseOverlap:
    case QStyle::PM_MenuBarVMargin:
    case QStyle::PM_MenuBarItemSpacing:
    case QStyle::PM_MenuBarPanelWidth:
    case QStyle::PM_MenuHMargin:
        return 0;
    case QStyle::PM_MenuPanelWidth:
        return 1;
    case QStyle::PM_MenuVMargin:
        return LookSpace::Grid;
    case QStyle::PM_MenuBarHMargin:
    case QStyle::PM_HeaderMargin:
    case QStyle::PM_CheckBoxLabelSpacing:
    case QStyle::PM_RadioButtonLabelSpacing:
        return LookSpace::Small;
    case QStyle::PM_TabBarTabHSpace:
        return 2 * Draw::TabPadding;
    case QStyle::PM_ScrollBarExtent:
        return 10;
    case QStyle::PM_ScrollBarSliderMin:
        return 28;
    case QStyle::PM_SplitterWidth:
        return 7;
    case QStyle::PM_HeaderMarkSize:
        return 14;
    default:
        return std::nullopt;
    }
}

/// The picture @p glyph in one colour, at the sizes of message boxes.
QIcon messagePicture(const QString &glyph, const QColor &color)
{
    QIcon icon;
    for (const int edge : {16, 24, 32, 48, 64, 96}) {
        QPixmap pixmap(edge, edge);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        PaintGlyph(painter, pixmap.rect(), glyph, color);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

DeskStyle::DeskStyle() : QProxyStyle(u"Fusion"_s) {}

DeskStyle::~DeskStyle() = default;

void DeskStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    const bool follows = qobject_cast<QAbstractButton *>(widget) || qobject_cast<QComboBox *>(widget) ||
                         qobject_cast<QAbstractSpinBox *>(widget) || qobject_cast<QTabBar *>(widget) ||
                         qobject_cast<QSplitterHandle *>(widget) || qobject_cast<QHeaderView *>(widget);
    if (follows)
        widget->setAttribute(Qt::WA_Hover);
    // A caption stands above its column's texts; a column of amounts has an alignment of its own.
    if (auto *const head = qobject_cast<QHeaderView *>(widget); head && head->orientation() == Qt::Horizontal)
        head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    if (qobject_cast<QStatusBar *>(widget))
        widget->setContentsMargins(LookSpace::Medium, 0, LookSpace::Medium, 0);
}

void DeskStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    if (drawIndicator(element, *option, *painter) || drawSurface(element, *option, *painter))
        return;
    const auto *const button = as<QStyleOptionButton>(option);
    const auto *const item = as<QStyleOptionViewItem>(option);
    switch (element) {
    case PE_PanelButtonCommand:
    case PE_PanelButtonBevel:
    case PE_FrameDefaultButton:
        if (button)
            Draw::buttonGround(*painter, *option, Draw::kindOf(*button, widget));
        return;
    case PE_PanelButtonTool:
        Draw::buttonGround(*painter, *option,
                           option->state.testFlag(State_AutoRaise) ? ButtonKind::Flat : ButtonKind::Quiet);
        return;
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        drawLineEdit(*option, *painter, widget, element == PE_PanelLineEdit);
        return;
    case PE_Frame:
        drawFrame(*option, *painter, widget);
        return;
    case PE_FrameFocusRect:
        // The style marks items, push buttons and fields itself.
        if (!Draw::marksCurrentItem(widget) && !qobject_cast<const QPushButton *>(widget) &&
            !qobject_cast<const QToolButton *>(widget) && !qobject_cast<const QComboBox *>(widget))
            Draw::focusRing(*painter, option->rect, *option);
        return;
    case PE_PanelItemViewRow:
        if (item)
            drawRow(*item, *painter);
        return;
    case PE_PanelItemViewItem:
        if (item)
            Draw::itemGround(*painter, *item, viewOf(*item, widget));
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void DeskStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    if (drawMenuPart(element, *option, *painter) || drawHeadPart(element, *option, *painter))
        return;
    const auto *const button = as<QStyleOptionButton>(option);
    const auto *const tab = as<QStyleOptionTab>(option);
    const auto *const bar = as<QStyleOptionProgressBar>(option);
    if (element == CE_PushButton && button) {
        Draw::buttonGround(*painter, *option, Draw::kindOf(*button, widget));
        proxy()->drawControl(CE_PushButtonLabel, option, painter, widget);
    } else if (element == CE_PushButtonLabel && button) {
        drawPushButtonLabel(*button, *painter, widget);
    } else if (element == CE_TabBarTabShape && tab && Draw::isTabAbove(*tab)) {
        Draw::tabGround(*painter, *tab);
    } else if (element == CE_TabBarTabLabel && tab && Draw::isTabAbove(*tab)) {
        Draw::tabLabel(*painter, *tab);
    } else if (element == CE_ProgressBarContents && bar) {
        Draw::progressBar(*painter, *bar);
    } else if (element == CE_Splitter) {
        Draw::splitter(*painter, *option);
    } else if (element == CE_ToolBar) {
        painter->fillRect(option->rect, Draw::colorOf(LookColor::Surface, *option));
        Draw::edgeLine(*painter, option->rect, Qt::BottomEdge, Draw::colorOf(LookColor::Line, *option));
    } else if (element != CE_ProgressBarGroove) {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void DeskStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const
{
    switch (control) {
    case CC_ToolButton:
        if (const auto *const button = as<QStyleOptionToolButton>(option))
            drawToolButton(*proxy(), *button, *painter, widget);
        return;
    case CC_ComboBox:
        if (const auto *const combo = as<QStyleOptionComboBox>(option))
            drawComboBox(*proxy(), *combo, *painter, widget);
        return;
    case CC_SpinBox:
        if (const auto *const spin = as<QStyleOptionSpinBox>(option))
            drawSpinBox(*proxy(), *spin, *painter, widget);
        return;
    case CC_GroupBox:
        if (const auto *const box = as<QStyleOptionGroupBox>(option))
            drawGroupBox(*proxy(), *box, *painter, widget);
        return;
    case CC_ScrollBar:
        if (const auto *const bar = as<QStyleOptionSlider>(option))
            Draw::scrollBar(*painter, *bar,
                            proxy()->subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget));
        return;
    default:
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

QRect DeskStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    switch (element) {
    case SE_LineEditContents: {
        const auto *const frame = as<QStyleOptionFrame>(option);
        const bool hasEdge = frame && frame->lineWidth > 0;
        return hasEdge ? option->rect.adjusted(fieldPadding, 1, -fieldPadding, -1)
                       : option->rect.adjusted(2, 0, -2, 0);
    }
    case SE_PushButtonContents:
    case SE_PushButtonBevel:
    case SE_HeaderLabel:
    case SE_ItemViewItemFocusRect:
        return option->rect;
    default:
        break;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect DeskStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                const QWidget *widget) const
{
    const auto *const group = as<QStyleOptionGroupBox>(option);
    if (control == CC_ComboBox && (part == SC_ComboBoxArrow || part == SC_ComboBoxEditField))
        return comboPart(*option, part);
    if (control == CC_SpinBox && part != SC_SpinBoxFrame)
        return spinPart(*option, part);
    if (control == CC_GroupBox && group)
        return groupPart(*group, part, widget, proxy()->pixelMetric(PM_IndicatorWidth, option, widget));
    if (control == CC_ScrollBar && (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine))
        return {};
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize DeskStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                  const QWidget *widget) const
{
    switch (type) {
    case CT_PushButton:
        if (const auto *const button = as<QStyleOptionButton>(option))
            return pushButtonSize(*button, widget);
        break;
    case CT_ToolButton:
        if (const auto *const button = as<QStyleOptionToolButton>(option))
            return toolButtonSize(*button, size, widget);
        break;
    case CT_LineEdit:
        if (const auto *const frame = as<QStyleOptionFrame>(option); frame && frame->lineWidth > 0)
            return {size.width() + 2 * fieldPadding,
                    qMax(size.height(), heightOf(widget, option->fontMetrics))};
        return size;
    case CT_ComboBox:
        return {size.width() + fieldPadding + arrowRoom, heightOf(widget, option->fontMetrics)};
    case CT_SpinBox:
        return {size.width() + fieldPadding + stepRoom, heightOf(widget, option->fontMetrics)};
    case CT_TabBarTab:
        if (const auto *const tab = as<QStyleOptionTab>(option); tab && Draw::isTabAbove(*tab))
            return tabSize(*tab, size, widget);
        break;
    case CT_HeaderSection:
        if (const auto *const head = as<QStyleOptionHeader>(option))
            return headSize(*head, widget);
        break;
    case CT_MenuItem:
        if (const auto *const item = as<QStyleOptionMenuItem>(option))
            return Draw::menuItemSize(*item);
        break;
    case CT_ItemViewItem: {
        const QSize item = QProxyStyle::sizeFromContents(type, option, size, widget);
        return {item.width(), qMax(item.height(), HeightOf(LookHeight::CompactRow, option->fontMetrics))};
    }
    case CT_MenuBarItem:
        return {size.width() + 2 * flatPadding, HeightOf(LookHeight::SmallField, option->fontMetrics)};
    case CT_GroupBox:
        return {size.width() + 2, size.height() + 2 + groupHead(groupTitleMetrics(widget))};
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int DeskStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const auto scaled = [&](int pixels) {
        return besideFont(pixels, widget ? widget->fontMetrics() : QFontMetrics(QApplication::font()));
    };
    if (const std::optional<int> fixed = fixedMetric(metric))
        return *fixed;
    switch (metric) {
    case PM_DefaultFrameWidth:
        return isTextView(widget) ? 3 : 1;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_TabBarIconSize:
    case PM_ListViewIconSize:
        return scaled(16);
    case PM_TreeViewIndentation:
        return scaled(18);
    case PM_FocusFrameHMargin:
        // Qt puts one pixel more at both sides of an item's text.
        return qobject_cast<const QTableView *>(widget) ? Draw::CellPadding - 1 : 5;
    case PM_HeaderDefaultSectionSizeVertical:
        return HeightOf(isOnLowScreen(widget) ? LookHeight::CompactRow : LookHeight::Row,
                        widget ? widget->fontMetrics() : QFontMetrics(QApplication::font()));
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int DeskStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                         QStyleHintReturn *result) const
{
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_Widget_Animate:
    case SH_Widget_Animation_Duration:
    case SH_ScrollBar_Transient:
    case SH_ComboBox_Popup:
    case SH_DialogButtonLayout: // the filled button, then Cancel, on every desktop
        return 0;
    case SH_TabBar_Alignment:
        return Qt::AlignLeft;
    case SH_Table_GridLineColor:
        return static_cast<int>(
            ColorOf(LookColor::Line, option ? option->palette : QApplication::palette()).rgba());
    case SH_ItemView_ShowDecorationSelected:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

QIcon DeskStyle::standardIcon(StandardPixmap picture, const QStyleOption *option, const QWidget *widget) const
{
    const QPalette palette = widget ? widget->palette() : QApplication::palette();
    const auto drawn = [&palette](const QString &glyph, LookColor color) {
        return messagePicture(glyph, ColorOf(color, palette));
    };
    switch (picture) {
    case SP_MessageBoxInformation:
        return drawn(u"info"_s, LookColor::InfoText);
    case SP_MessageBoxWarning:
        return drawn(u"warning"_s, LookColor::WarnMark);
    case SP_MessageBoxCritical:
        return drawn(u"error"_s, LookColor::ErrorMark);
    case SP_MessageBoxQuestion:
        return drawn(u"help"_s, LookColor::InfoText);
    case SP_LineEditClearButton:
        return GlyphIcon(u"close"_s);
    default:
        return QProxyStyle::standardIcon(picture, option, widget);
    }
}

} // namespace QuoteDesk
