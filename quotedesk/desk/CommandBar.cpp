#include "desk/CommandBar.h"

#include "look/Kinds.h"
#include "look/TextLabel.h"
#include "quote/PlainText.h"

#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"

#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleOptionToolButton>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int pictureEdge = 16;
constexpr int leastTitle = 8;     // the characters of a title that stay where there is little room
constexpr int leastProduct = 10;  // fewer characters of the product say nothing
constexpr qreal titleShare = 0.4; // of the bar, for a long title
constexpr int lineHeight = 24;
constexpr int leastContent = 220;

} // namespace

/// A button of the bar. It measures itself in another style without changing its style: a change would ask
/// for a new layout, and the caller is a layout in progress.
class CommandBar::Button : public QToolButton
{
public:
    explicit Button(QWidget *parent) : QToolButton(parent)
    {
        // Focus by Tab only, so that a click leaves the focus in the edited field.
        setFocusPolicy(Qt::TabFocus);
        setAutoRaise(true);
    }

    /// The width of sizeHint() in this style.
    int widthAs(Qt::ToolButtonStyle style) const
    {
        QStyleOptionToolButton option;
        initStyleOption(&option);
        option.toolButtonStyle = style;
        QSize size = option.iconSize;
        if (style == Qt::ToolButtonTextBesideIcon) {
            const QFontMetrics metrics = fontMetrics();
            const QSize text = metrics.size(Qt::TextShowMnemonic, this->text());
            size.rwidth() += 4 + text.width() + 2 * metrics.horizontalAdvance(u' ');
            size.setHeight(std::max(size.height(), text.height()));
        }
        option.rect.setSize(size);
        return this->style()->sizeFromContents(QStyle::CT_ToolButton, &option, size, this).width();
    }
};

CommandBar::CommandBar(QWidget *parent)
    : QWidget(parent), lblTitle(new TextLabel(LookFont::Title, LookColor::Text, this)),
      chpState(new Chip(this)), lblProduct(new TextLabel(LookFont::Body, LookColor::Text2, this)),
      btnMore(new Button(this))
{
    lblTitle->setObjectName(u"lblTitle"_s);
    lblTitle->setTextFormat(Qt::PlainText);
    chpState->setObjectName(u"chpState"_s);
    lblProduct->setObjectName(u"lblProduct"_s);
    lblProduct->setTextFormat(Qt::PlainText);
    btnMore->setObjectName(u"btnMore"_s);
    btnMore->setIcon(GlyphIcon(u"more"_s));
    btnMore->setPopupMode(QToolButton::InstantPopup);
    btnMore->setMenu(new QMenu(btnMore));
    for (QWidget *const part : QList<QWidget *>{chpState, lblProduct, btnMore})
        part->hide();
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    retext();
}

CommandBar::~CommandBar() = default;

void CommandBar::retext()
{
    setAccessibleName(tr("Commands"));
    btnMore->setToolTip(tr("More commands"));
    btnMore->setAccessibleName(tr("More commands"));
}

void CommandBar::setHead(const BarHead &head)
{
    m_head = head;
    if (head.state)
        chpState->setChip(*head.state);
    arrange();
}

void CommandBar::setWidestContent(int width)
{
    m_widest = width;
    arrange();
}

void CommandBar::setTight(bool low, bool narrow)
{
    if (low == m_isLow && narrow == m_isNarrow)
        return;
    m_isLow = low;
    m_isNarrow = narrow;
    updateGeometry();
    arrange();
}

void CommandBar::setCommands(const QList<BarCommand> &commands, QAction *filled)
{
    if (commands == m_commands && filled == m_filled)
        return;
    m_commands = commands;
    m_filled = filled;
    for (const Item &item : std::as_const(m_items)) {
        if (!item.button)
            continue;
        // The clicked button may be among them and still be executing.
        item.button->hide();
        item.button->deleteLater();
    }
    m_items.clear();
    const auto add = [this](const BarCommand &command, bool isFilled) {
        Item item{nullptr, command.action, command.hasCaption, isFilled};
        if (command.action) {
            item.button = new Button(this);
            item.button->setDefaultAction(command.action);
            item.button->setToolButtonStyle(command.hasCaption ? Qt::ToolButtonTextBesideIcon
                                                               : Qt::ToolButtonIconOnly);
            item.button->setIconSize({pictureEdge, pictureEdge});
            setButtonKind(*item.button, isFilled ? ButtonKind::Filled : ButtonKind::Flat);
        }
        m_items.append(item);
    };
    for (const BarCommand &command : commands)
        add(command, false);
    if (filled)
        add({filled}, true);
    // After the buttons in the order of the keyboard.
    btnMore->raise();
    arrange();
}

QToolButton *CommandBar::buttonOf(const QAction *action) const
{
    for (const Item &item : m_items) {
        if (item.button && item.action == action)
            return item.button;
    }
    return nullptr;
}

int CommandBar::widthOf(const Item &item, bool captions) const
{
    if (!item.button)
        return 2 * LookSpace::Grid + 1;
    return item.button->widthAs((captions || item.isFilled) && item.hasCaption ? Qt::ToolButtonTextBesideIcon
                                                                               : Qt::ToolButtonIconOnly);
}

/// The width of the first items, of the menu's button when it is needed, and of the filled button.
int CommandBar::widthOfItems(qsizetype shown, bool captions) const
{
    int width = 0;
    qsizetype plain = 0;
    for (const Item &item : m_items) {
        if (!item.isFilled && plain++ >= shown)
            continue;
        width += widthOf(item, captions) + LookSpace::Grid;
    }
    if (shown < plain)
        width += static_cast<const Button *>(btnMore)->widthAs(Qt::ToolButtonIconOnly) + LookSpace::Grid;
    return width;
}

CommandBar::Fit CommandBar::fitFor(int room) const
{
    const qsizetype plain = m_items.size() - (m_filled ? 1 : 0);
    Fit fit{true, plain, widthOfItems(plain, true)};
    if (fit.width <= room)
        return fit;
    fit.captions = false;
    for (; fit.shown >= 0; --fit.shown) {
        fit.width = widthOfItems(fit.shown, false);
        if (fit.width <= room || fit.shown == 0)
            break;
    }
    return fit;
}

void CommandBar::arrange()
{
    if (m_isArranging)
        return;
    const QScopedValueRollback arranging(m_isArranging, true);
    // A part that was never shown does not have its font yet.
    for (QWidget *const part : QList<QWidget *>{lblTitle, chpState, lblProduct})
        part->ensurePolished();
    const int margin = m_isNarrow ? LookSpace::Medium : LookSpace::Large;
    QRect content = rect().adjusted(margin, 0, -margin, 0);
    if (m_widest > 0)
        content.setWidth(std::min(content.width(), m_widest - 2 * margin));
    const QFontMetrics metrics = lblTitle->fontMetrics();
    const int chip = m_head.state ? chpState->sizeHint().width() + LookSpace::Small : 0;
    const int title = std::min(
        metrics.horizontalAdvance(m_head.title) + 1,
        std::max(metrics.averageCharWidth() * leastTitle, static_cast<int>(content.width() * titleShare)));
    int right = content.right() + 1;
    placeButtons(fitFor(content.width() - chip - title - LookSpace::Large), right);
    placeHead(content, right);
    update();
}

/// Places title, state and product in @p content, left of @p right.
void CommandBar::placeHead(QRect content, int right)
{
    const auto place = [this](QWidget *part, int left, int width) {
        const int height = part->sizeHint().height();
        const QRect at(left, (this->height() - 1 - height) / 2, width, height);
        part->setGeometry(QStyle::visualRect(layoutDirection(), rect(), at));
    };
    const auto show = [](TextLabel *label, const QString &text, int width) {
        const QString shown = label->fontMetrics().elidedText(text, Qt::ElideRight, width);
        label->setText(shown);
        label->setToolTip(shown == text ? QString() : tipText(text));
        label->setAccessibleName(text);
    };
    content.setRight(right - LookSpace::Large - 1);
    const int chip = m_head.state ? chpState->sizeHint().width() : 0;
    const int wholeTitle = lblTitle->fontMetrics().horizontalAdvance(m_head.title) + 1;
    const int title =
        std::max(0, std::min(wholeTitle, content.width() - (chip > 0 ? chip + LookSpace::Small : 0)));
    show(lblTitle, m_head.title, title);
    place(lblTitle, content.left(), title);
    content.setLeft(content.left() + title + LookSpace::Small);
    chpState->setVisible(chip > 0);
    if (chip > 0) {
        place(chpState, content.left(), chip);
        content.setLeft(content.left() + chip + LookSpace::Small);
    }
    const QFontMetrics body = lblProduct->fontMetrics();
    const int wholeProduct = body.horizontalAdvance(m_head.product) + 1;
    const int product = std::min(wholeProduct, content.width());
    const bool says = product == wholeProduct || product >= leastProduct * body.averageCharWidth();
    lblProduct->setVisible(!m_head.product.isEmpty() && says);
    show(lblProduct, m_head.product, product);
    place(lblProduct, content.left(), std::max(0, product));
}

/// Places the buttons from the right and sets @p right to where they begin.
void CommandBar::placeButtons(const Fit &fit, int &right)
{
    const int buttonHeight = HeightOf(LookHeight::Field, fontMetrics());
    const auto place = [&](Button *button, int width) {
        const QRect at(right - width, (height() - 1 - buttonHeight) / 2, width, buttonHeight);
        button->setGeometry(QStyle::visualRect(layoutDirection(), rect(), at));
        right -= width + LookSpace::Grid;
    };
    const qsizetype plain = m_items.size() - (m_filled ? 1 : 0);
    if (m_filled) {
        place(m_items.last().button, widthOf(m_items.last(), fit.captions));
        m_items.last().button->show();
    }
    btnMore->setVisible(fit.shown < plain);
    if (fit.shown < plain) {
        auto *const more = static_cast<Button *>(btnMore);
        place(more, more->widthAs(Qt::ToolButtonIconOnly));
    }
    for (qsizetype i = plain - 1; i >= 0; --i) {
        Item &item = m_items[i];
        if (i >= fit.shown) {
            if (item.button)
                item.button->hide();
            continue;
        }
        if (!item.button) {
            item.x = right - LookSpace::Grid;
            right -= widthOf(item, true) + LookSpace::Grid;
            continue;
        }
        item.button->setToolButtonStyle(fit.captions && item.hasCaption ? Qt::ToolButtonTextBesideIcon
                                                                        : Qt::ToolButtonIconOnly);
        place(item.button, widthOf(item, fit.captions));
        item.button->show();
    }
    fillMenu(fit.shown);
}

/// Puts the commands without a button into the menu.
void CommandBar::fillMenu(qsizetype shown)
{
    QList<QAction *> hidden;
    for (const Item &item : m_items.mid(shown)) {
        if (item.action && !item.isFilled)
            hidden.append(item.action);
    }
    // QList compares two empty lists of pointers through null pointers.
    const QList<QAction *> inMenu = btnMore->menu()->actions();
    if (std::equal(hidden.cbegin(), hidden.cend(), inMenu.cbegin(), inMenu.cend()))
        return;
    btnMore->menu()->clear();
    btnMore->menu()->addActions(hidden);
}

QSize CommandBar::sizeHint() const
{
    return {leastContent,
            HeightOf(m_isLow ? LookHeight::LowCommandBar : LookHeight::CommandBar, fontMetrics())};
}

QSize CommandBar::minimumSizeHint() const
{
    return sizeHint();
}

void CommandBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), ColorOf(LookColor::Surface, palette()));
    painter.setPen(QPen(ColorOf(LookColor::Line, palette()), 0));
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
    const qsizetype plain = m_items.size() - (m_filled ? 1 : 0);
    for (qsizetype i = 0; i < plain; ++i) {
        const Item &item = m_items.at(i);
        if (item.button || item.x == 0)
            continue;
        const QRect line(item.x, (height() - lineHeight) / 2, 1, lineHeight);
        painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), line),
                         ColorOf(LookColor::Line, palette()));
    }
}

void CommandBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

bool CommandBar::event(QEvent *event)
{
    const bool done = QWidget::event(event);
    switch (event->type()) {
    case QEvent::LanguageChange:
        retext();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        updateGeometry();
        arrange();
        break;
    case QEvent::LayoutRequest:
        // A button has another text.
        arrange();
        break;
    default:
        break;
    }
    return done;
}

} // namespace QuoteDesk
