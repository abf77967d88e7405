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
#include <QTabBar>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>

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
}

void DeskStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    const auto color = [option](LookColor wanted) { return Draw::colorOf(wanted, *option); };
    switch (element) {
    case PE_PanelButtonCommand:
    case PE_PanelButtonBevel:
    case PE_FrameDefaultButton:
        if (const auto *const button = as<QStyleOptionButton>(option))
            Draw::buttonGround(*painter, *option, Draw::kindOf(*button, widget));
        return;
    case PE_PanelButtonTool:
        Draw::buttonGround(*painter, *option,
                           option->state.testFlag(State_AutoRaise) ? ButtonKind::Flat : ButtonKind::Quiet);
        return;
    case PE_PanelLineEdit:
    case PE_FrameLineEdit: {
        const auto *const frame = as<QStyleOptionFrame>(option);
        if (frame && frame->lineWidth > 0)
            Draw::field(*painter, *option, widget);
        else if (element == PE_PanelLineEdit)
            painter->fillRect(option->rect, option->state.testFlag(State_Enabled) ? color(LookColor::Surface)
                                                                                  : color(LookColor::Raised));
        return;
    }
    case PE_Frame:
        drawFrame(*option, *painter, widget);
        return;
    case PE_FrameGroupBox:
        paintRounded(*painter, option->rect, LookSpace::PanelRadius, color(LookColor::Surface),
                     color(LookColor::Line));
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        Draw::checkBox(*painter, *option);
        return;
    case PE_IndicatorRadioButton:
        Draw::radioButton(*painter, *option);
        return;
    case PE_IndicatorArrowUp:
        Draw::chevron(*painter, option->rect, Qt::UpArrow, color(LookColor::Text2));
        return;
    case PE_IndicatorArrowDown:
    case PE_IndicatorButtonDropDown:
        Draw::chevron(*painter, option->rect, Qt::DownArrow, color(LookColor::Text2));
        return;
    case PE_IndicatorArrowLeft:
        Draw::chevron(*painter, option->rect, Qt::LeftArrow, color(LookColor::Text2));
        return;
    case PE_IndicatorArrowRight:
        Draw::chevron(*painter, option->rect, Qt::RightArrow, color(LookColor::Text2));
        return;
    case PE_IndicatorBranch:
        if (option->state.testFlag(State_Children)) {
            const Qt::ArrowType closed =
                option->direction == Qt::RightToLeft ? Qt::LeftArrow : Qt::RightArrow;
            Draw::chevron(*painter, option->rect, option->state.testFlag(State_Open) ? Qt::DownArrow : closed,
                          color(LookColor::Text2));
        }
        return;
    case PE_FrameFocusRect:
        // The style marks items, push buttons and tabs itself.
        if (!Draw::marksCurrentItem(widget) && !qobject_cast<const QPushButton *>(widget) &&
            !qobject_cast<const QToolButton *>(widget) && !qobject_cast<const QComboBox *>(widget))
            Draw::focusRing(*painter, option->rect, *option);
        return;
    case PE_PanelItemViewRow:
        if (const auto *const item = as<QStyleOptionViewItem>(option)) {
            // The part of a tree's row before its item.
            if (option->state.testFlag(State_Selected))
                painter->fillRect(option->rect, option->palette.brush(QPalette::Highlight));
            else if (item->features.testFlag(QStyleOptionViewItem::Alternate))
                painter->fillRect(option->rect, option->palette.brush(QPalette::AlternateBase));
        }
        return;
    case PE_PanelItemViewItem:
        if (const auto *const item = as<QStyleOptionViewItem>(option))
            Draw::itemGround(*painter, *item, viewOf(*item, widget));
        return;
    case PE_IndicatorTabClose: {
        if (option->state.testFlag(State_MouseOver) && option->state.testFlag(State_Enabled))
            paintRounded(*painter, option->rect, LookSpace::ControlRadius, color(LookColor::AccentSoft), {});
        const int edge = qMin(12, option->rect.height());
        PaintGlyph(*painter, alignedRect(option->direction, Qt::AlignCenter, QSize(edge, edge), option->rect),
                   u"close"_s, color(LookColor::Text2));
        return;
    }
    case PE_PanelScrollAreaCorner:
        painter->fillRect(option->rect, color(LookColor::Raised));
        return;
    case PE_FrameTabBarBase:
        Draw::edgeLine(*painter, option->rect, Qt::BottomEdge, color(LookColor::Line));
        return;
    case PE_FrameTabWidget:
        Draw::edgeLine(*painter, option->rect, Qt::TopEdge, color(LookColor::Line));
        return;
    case PE_PanelMenu:
        painter->fillRect(option->rect, color(LookColor::Surface));
        return;
    case PE_FrameMenu:
        paintRounded(*painter, option->rect, 1, {}, color(LookColor::LineStrong));
        return;
    case PE_PanelMenuBar:
    case PE_FrameStatusBarItem:
        return;
    case PE_PanelStatusBar:
        painter->fillRect(option->rect, color(LookColor::Raised));
        Draw::edgeLine(*painter, option->rect, Qt::TopEdge, color(LookColor::Line));
        return;
    case PE_PanelTipLabel:
        painter->fillRect(option->rect, option->palette.color(QPalette::ToolTipBase));
        paintRounded(*painter, option->rect, 1, {}, color(LookColor::LineStrong));
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void DeskStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    switch (element) {
    case CE_PushButton:
        if (const auto *const button = as<QStyleOptionButton>(option)) {
            Draw::buttonGround(*painter, *option, Draw::kindOf(*button, widget));
            proxy()->drawControl(CE_PushButtonLabel, option, painter, widget);
        }
        return;
    case CE_PushButtonLabel:
        if (const auto *const button = as<QStyleOptionButton>(option)) {
            QStyleOptionButton label = *button;
            const ButtonKind kind = Draw::kindOf(*button, widget);
            if (button->features.testFlag(QStyleOptionButton::HasMenu)) {
                const QRect whole = button->rect;
                label.rect = visualRect(option->direction, whole,
                                        whole.adjusted(pictureGap, 0, -arrowRoom + pictureGap, 0));
                const QRect arrow(whole.right() - arrowRoom + 1, whole.top(), arrowRoom - 4, whole.height());
                Draw::chevron(*painter, visualRect(option->direction, whole, arrow), Qt::DownArrow,
                              Draw::buttonInk(kind, *option));
            }
            Draw::buttonLabel(*painter, label, kind, pictureGap);
        }
        return;
    case CE_RadioButton:
        if (const auto *const button = as<QStyleOptionButton>(option);
            button && switchPlaceOf(widget) != SwitchPlace::None) {
            Draw::switchPart(*painter, *button, widget);
            return;
        }
        break;
    case CE_ComboBoxLabel:
        if (const auto *const combo = as<QStyleOptionComboBox>(option)) {
            QStyleOptionComboBox label = *combo;
            label.palette.setColor(QPalette::Text, Draw::colorOf(LookColor::Text, *option));
            label.palette.setColor(QPalette::ButtonText, Draw::colorOf(LookColor::Text, *option));
            QProxyStyle::drawControl(element, &label, painter, widget);
        }
        return;
    case CE_HeaderSection:
        if (const auto *const head = as<QStyleOptionHeader>(option))
            Draw::headGround(*painter, *head);
        return;
    case CE_HeaderLabel:
        if (const auto *const head = as<QStyleOptionHeader>(option))
            Draw::headLabel(*painter, *head);
        return;
    case CE_Header:
        proxy()->drawControl(CE_HeaderSection, option, painter, widget);
        proxy()->drawControl(CE_HeaderLabel, option, painter, widget);
        return;
    case CE_HeaderEmptyArea:
        painter->fillRect(option->rect, Draw::colorOf(LookColor::Raised, *option));
        Draw::edgeLine(*painter, option->rect, Qt::BottomEdge, Draw::colorOf(LookColor::Line, *option));
        return;
    case CE_TabBarTabShape:
    case CE_TabBarTabLabel:
        if (const auto *const tab = as<QStyleOptionTab>(option); tab && Draw::isTabAbove(*tab)) {
            if (element == CE_TabBarTabShape)
                Draw::tabGround(*painter, *tab);
            else
                Draw::tabLabel(*painter, *tab);
            return;
        }
        break;
    case CE_MenuItem:
        if (const auto *const item = as<QStyleOptionMenuItem>(option))
            Draw::menuItem(*painter, *item);
        return;
    case CE_MenuEmptyArea:
        return;
    case CE_MenuBarItem:
        if (const auto *const item = as<QStyleOptionMenuItem>(option))
            Draw::menuBarItem(*painter, *item);
        return;
    case CE_MenuBarEmptyArea:
        painter->fillRect(option->rect, Draw::colorOf(LookColor::Raised, *option));
        return;
    case CE_ProgressBarGroove:
        return;
    case CE_ProgressBarContents:
        if (const auto *const bar = as<QStyleOptionProgressBar>(option))
            Draw::progressBar(*painter, *bar);
        return;
    case CE_Splitter:
        Draw::splitter(*painter, *option);
        return;
    case CE_ToolBar:
        painter->fillRect(option->rect, Draw::colorOf(LookColor::Surface, *option));
        Draw::edgeLine(*painter, option->rect, Qt::BottomEdge, Draw::colorOf(LookColor::Line, *option));
        return;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
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
        return option->rect;
    case SE_RadioButtonClickRect:
        if (switchPlaceOf(widget) != SwitchPlace::None)
            return option->rect;
        break;
    case SE_HeaderLabel:
        return option->rect;
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
    const auto mirrored = [option](const QRect &rect) {
        return visualRect(option->direction, option->rect, rect);
    };
    const QRect whole = option->rect;
    if (control == CC_ComboBox) {
        const int room = qMin(arrowRoom, whole.width() / 3);
        if (part == SC_ComboBoxArrow)
            return mirrored(QRect(whole.right() - room + 1, whole.top(), room, whole.height()));
        if (part == SC_ComboBoxEditField)
            return mirrored(whole.adjusted(fieldPadding, 2, -room, -2));
    } else if (control == CC_SpinBox) {
        const auto *const spin = as<QStyleOptionSpinBox>(option);
        const bool hasSteps = spin && spin->buttonSymbols != QAbstractSpinBox::NoButtons;
        const int room = hasSteps ? qMin(stepRoom, whole.width() / 3) : fieldPadding;
        const int half = whole.height() / 2;
        const QRect steps(whole.right() - room, whole.top() + 2, room - 1, half - 2);
        if (part == SC_SpinBoxUp)
            return hasSteps ? mirrored(steps) : QRect();
        if (part == SC_SpinBoxDown)
            return hasSteps ? mirrored(steps.translated(0, half - 2)) : QRect();
        if (part == SC_SpinBoxEditField)
            return mirrored(whole.adjusted(fieldPadding - 2, 2, -room - 2, -2));
    } else if (control == CC_GroupBox) {
        const auto *const box = as<QStyleOptionGroupBox>(option);
        const QFontMetrics metrics(Draw::headFont(widget ? widget->font() : QApplication::font()));
        const bool hasTitle = box && (!box->text.isEmpty() || box->subControls.testFlag(SC_GroupBoxCheckBox));
        const int head = hasTitle ? metrics.height() + LookSpace::Small + 2 : 0;
        const bool hasTick = box && box->subControls.testFlag(SC_GroupBoxCheckBox);
        const int edge = proxy()->pixelMetric(PM_IndicatorWidth, option, widget);
        const int start = LookSpace::Medium + (hasTick ? edge + LookSpace::Small : 0);
        if (part == SC_GroupBoxFrame)
            return whole;
        if (part == SC_GroupBoxContents)
            return whole.adjusted(1, head + 1, -1, -1);
        if (part == SC_GroupBoxCheckBox)
            return mirrored(
                QRect(LookSpace::Medium, LookSpace::Small + (metrics.height() - edge) / 2, edge, edge));
        if (part == SC_GroupBoxLabel && box)
            return mirrored(QRect(start, LookSpace::Small,
                                  metrics.size(Qt::TextShowMnemonic, box->text).width(), metrics.height()));
    } else if (control == CC_ScrollBar && (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine)) {
        return {};
    }
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
    case CT_RadioButton:
        if (const auto *const button = as<QStyleOptionButton>(option);
            button && switchPlaceOf(widget) != SwitchPlace::None) {
            const QFont body = widget->font();
            const int words =
                QFontMetrics(FontOf(LookFont::Strong, body)).size(Qt::TextShowMnemonic, button->text).width();
            return {words + besideFont(12, option->fontMetrics) + 6 + 2 * Draw::TabPadding,
                    heightOf(widget, option->fontMetrics)};
        }
        break;
    case CT_TabBarTab:
        if (const auto *const tab = as<QStyleOptionTab>(option); tab && Draw::isTabAbove(*tab)) {
            const QFont body = widget ? widget->font() : QApplication::font();
            const int wider =
                QFontMetrics(FontOf(LookFont::Strong, body)).size(Qt::TextShowMnemonic, tab->text).width() -
                option->fontMetrics.size(Qt::TextShowMnemonic, tab->text).width();
            return {size.width() + qMax(0, wider), tabHeight(widget, option->fontMetrics)};
        }
        break;
    case CT_HeaderSection:
        if (const auto *const head = as<QStyleOptionHeader>(option)) {
            const QFontMetrics metrics(Draw::headFont(widget ? widget->font() : QApplication::font()));
            const QSize text = metrics.size(0, head->text);
            const int arrow = head->sortIndicator == QStyleOptionHeader::None ? 0 : 18;
            return {text.width() + 2 * Draw::CellPadding + arrow,
                    head->orientation == Qt::Horizontal
                        ? qMax(headHeight(widget, option->fontMetrics), text.height() + LookSpace::Small)
                        : text.height() + LookSpace::Small};
        }
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
    case CT_GroupBox: {
        const QFontMetrics metrics(Draw::headFont(widget ? widget->font() : QApplication::font()));
        return {size.width() + 2, size.height() + 2 + metrics.height() + LookSpace::Small + 2};
    }
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
    switch (metric) {
    case PM_DefaultFrameWidth:
        return isTextView(widget) ? 3 : 1;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabOverlap:
    case PM_TabBarBaseOverlap:
    case PM_MenuBarVMargin:
    case PM_MenuBarItemSpacing:
        return 0;
    case PM_MenuBarHMargin:
        return LookSpace::Small;
    case PM_MenuBarPanelWidth:
        return 0;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuVMargin:
        return LookSpace::Grid;
    case PM_MenuHMargin:
        return 0;
    case PM_TabBarTabHSpace:
        return 2 * Draw::TabPadding;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_TabBarIconSize:
    case PM_ListViewIconSize:
        return scaled(16);
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return LookSpace::Small;
    case PM_ScrollBarExtent:
        return 10;
    case PM_ScrollBarSliderMin:
        return 28;
    case PM_SplitterWidth:
        return 7;
    case PM_TreeViewIndentation:
        return scaled(18);
    case PM_FocusFrameHMargin:
        // Qt puts one pixel more at both sides of an item's text.
        return qobject_cast<const QTableView *>(widget) ? Draw::CellPadding - 1 : 5;
    case PM_HeaderDefaultSectionSizeVertical:
        return HeightOf(isOnLowScreen(widget) ? LookHeight::CompactRow : LookHeight::Row,
                        widget ? widget->fontMetrics() : QFontMetrics(QApplication::font()));
    case PM_HeaderMargin:
        return LookSpace::Small;
    case PM_HeaderMarkSize:
        return 14;
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
        return 0;
    case SH_DialogButtonLayout:
        return 0; // the filled button, then Cancel, on every desktop
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
        QIcon icon;
        for (const int edge : {16, 24, 32, 48, 64, 96}) {
            QPixmap pixmap(edge, edge);
            pixmap.fill(Qt::transparent);
            QPainter painter(&pixmap);
            PaintGlyph(painter, pixmap.rect(), glyph, ColorOf(color, palette));
            painter.end();
            icon.addPixmap(pixmap);
        }
        return icon;
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
