#include "desk/Ribbon.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
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
    for (QToolButton *const button : std::exchange(m_buttonList, {})) {
        // The one that was clicked may be among them, and still at work.
        m_buttons->removeWidget(button);
        button->hide();
        button->deleteLater();
    }
    for (QAction *const action : actions) {
        if (!action->isVisible() || action->isSeparator())
            continue;
        auto *const button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        // Reached with Tab; a click leaves the focus in the field that is being edited.
        button->setFocusPolicy(Qt::TabFocus);
        button->setIconSize({PictureSize, PictureSize});
        styleButton(*button);
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
                     [action](const QToolButton *button) { return button->defaultAction() == action; });
    return found == m_buttonList.cend() ? nullptr : *found;
}

void RibbonGroup::styleButton(QToolButton &button) const
{
    button.setToolButtonStyle(m_captions || button.icon().isNull() ? Qt::ToolButtonTextUnderIcon
                                                                   : Qt::ToolButtonIconOnly);
}

void RibbonGroup::setCaptionsShown(bool shown)
{
    if (shown == m_captions)
        return;
    m_captions = shown;
    for (QToolButton *const button : std::as_const(m_buttonList))
        styleButton(*button);
}

int RibbonGroup::widthWithCaptions(bool shown) const
{
    if (m_buttonList.isEmpty())
        return 0;
    int width = 0;
    for (QToolButton *const button : m_buttonList) {
        const Qt::ToolButtonStyle style = button->toolButtonStyle();
        if (!shown && !button->icon().isNull())
            button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        else
            button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        width += button->sizeHint().width() + m_buttons->spacing();
        button->setToolButtonStyle(style);
    }
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
