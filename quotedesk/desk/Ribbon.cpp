#include "desk/Ribbon.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionToolButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

constexpr int PictureSize = 20;
constexpr int Gap = 6;

} // namespace

/// A button of a group. It measures its width in another style without changing its style: a change would
/// request a new layout, and the caller is a layout in progress.
class RibbonGroup::Button : public QToolButton
{
public:
    using QToolButton::QToolButton;

    /// The width of sizeHint() in this style.
    int widthAs(Qt::ToolButtonStyle style) const
    {
        QStyleOptionToolButton option;
        initStyleOption(&option);
        option.toolButtonStyle = style;
        QSize size(0, 0);
        if (style != Qt::ToolButtonTextOnly)
            size = option.iconSize;
        if (style == Qt::ToolButtonTextUnderIcon) {
            const QFontMetrics metrics = fontMetrics();
            const QSize text = metrics.size(Qt::TextShowMnemonic, this->text());
            size = QSize(qMax(size.width(), text.width() + 2 * metrics.horizontalAdvance(QLatin1Char(' '))),
                         size.height() + 4 + text.height());
        }
        option.rect.setSize(size);
        return this->style()->sizeFromContents(QStyle::CT_ToolButton, &option, size, this).width();
    }
};

RibbonGroup::RibbonGroup(QWidget *parent)
    : QWidget(parent), m_buttons(new QHBoxLayout), m_title(new QLabel(this))
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(Gap, 2, Gap, 1);
    layout->setSpacing(0);
    m_buttons->setSpacing(1);
    layout->addLayout(m_buttons, 1);
    layout->addWidget(m_title, 0, Qt::AlignHCenter);
    m_title->setForegroundRole(QPalette::PlaceholderText);
    QFont small = m_title->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    m_title->setFont(small);
    hide();
}

RibbonGroup::~RibbonGroup() = default;

QString RibbonGroup::title() const
{
    return m_title->text();
}

void RibbonGroup::setTitle(const QString &title)
{
    m_title->setText(title);
    setAccessibleName(title);
}

void RibbonGroup::setActions(const QList<QAction *> &actions)
{
    if (actions == m_actions)
        return;
    m_actions = actions;
    for (Button *const button : std::exchange(m_buttonList, {})) {
        // The clicked button may be among them and still be executing.
        m_buttons->removeWidget(button);
        button->hide();
        button->deleteLater();
    }
    for (QAction *const action : actions) {
        if (!action->isVisible() || action->isSeparator())
            continue;
        auto *const button = new Button(this);
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        // Focus by Tab only, so that a click leaves the focus in the edited field.
        button->setFocusPolicy(Qt::TabFocus);
        button->setIconSize({PictureSize, PictureSize});
        button->setToolButtonStyle(styleOf(*button, m_captions));
        m_buttons->addWidget(button);
        button->show();
        m_buttonList.append(button);
    }
    setVisible(!m_buttonList.isEmpty());
}

QToolButton *RibbonGroup::buttonOf(const QAction *action) const
{
    const auto found =
        std::find_if(m_buttonList.cbegin(), m_buttonList.cend(),
                     [action](const Button *button) { return button->defaultAction() == action; });
    return found == m_buttonList.cend() ? nullptr : *found;
}

Qt::ToolButtonStyle RibbonGroup::styleOf(const QToolButton &button, bool captions)
{
    return captions || button.icon().isNull() ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly;
}

void RibbonGroup::setCaptionsShown(bool shown)
{
    if (shown == m_captions)
        return;
    m_captions = shown;
    for (Button *const button : std::as_const(m_buttonList))
        button->setToolButtonStyle(styleOf(*button, m_captions));
}

int RibbonGroup::widthWithCaptions(bool shown) const
{
    if (m_buttonList.isEmpty())
        return 0;
    int width = 0;
    for (const Button *const button : m_buttonList)
        width += button->widthAs(styleOf(*button, shown)) + m_buttons->spacing();
    return std::max(width, m_title->sizeHint().width()) + 2 * Gap;
}

Ribbon::Ribbon(QWidget *parent) : QWidget(parent), m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(2, 2, 2, 2);
    m_layout->setSpacing(2);
    m_layout->addStretch(1);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

Ribbon::~Ribbon() = default;

RibbonGroup *Ribbon::addGroup(const QString &name)
{
    auto *const group = new RibbonGroup(this);
    group->setObjectName(name);
    m_layout->insertWidget(m_layout->count() - 1, group);
    m_groups.append(group);
    return group;
}

QToolButton *Ribbon::buttonOf(const QAction *action) const
{
    for (const RibbonGroup *const group : m_groups) {
        if (QToolButton *const button = group->buttonOf(action))
            return button;
    }
    return nullptr;
}

int Ribbon::widthOfGroups(bool captions) const
{
    int width = 4;
    for (const RibbonGroup *const group : m_groups)
        width += group->widthWithCaptions(captions) + m_layout->spacing();
    return width;
}

void Ribbon::arrange()
{
    const bool captions = widthOfGroups(true) <= width();
    for (RibbonGroup *const group : std::as_const(m_groups))
        group->setCaptionsShown(captions);
    updateGeometry();
}

QSize Ribbon::minimumSizeHint() const
{
    return {widthOfGroups(false), m_layout->minimumSize().height()};
}

void Ribbon::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void Ribbon::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        arrange();
}

} // namespace QuoteDesk
