#include "look/Banner.h"

#include "look/GlyphLabel.h"
#include "look/Kinds.h"
#include "look/TextLabel.h"

#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int stripWidth = 4;
constexpr int mostShown = 2;

struct BannerLook {
    const char *glyph;
    LookColor picture;
    LookColor ground;
    LookColor strip;
};

BannerLook lookOf(BannerKind kind)
{
    switch (kind) {
    case BannerKind::Info:
        return {"info", LookColor::InfoText, LookColor::InfoGround, LookColor::InfoText};
    case BannerKind::Ok:
        return {"complete", LookColor::OkText, LookColor::OkGround, LookColor::Accent};
    case BannerKind::Warn:
        return {"warning", LookColor::WarnText, LookColor::WarnGround, LookColor::WarnMark};
    case BannerKind::Error:
        return {"error", LookColor::ErrorText, LookColor::ErrorGround, LookColor::ErrorMark};
    }
    Q_UNREACHABLE();
}

bool goesByItself(BannerKind kind)
{
    return kind == BannerKind::Info || kind == BannerKind::Ok;
}

/// A banner to screen readers: a message whose name is the sentence.
class AccessibleBanner : public QAccessibleWidget
{
public:
    explicit AccessibleBanner(Banner *banner) : QAccessibleWidget(banner, QAccessible::AlertMessage) {}
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? static_cast<Banner *>(widget())->content().text
                                         : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface *accessibleBanner(const QString &, QObject *object)
{
    auto *const banner = qobject_cast<Banner *>(object);
    return banner ? new AccessibleBanner(banner) : nullptr;
}

} // namespace

Banner::Banner(const BannerText &content, QWidget *parent)
    : QWidget(parent), m_content(content), m_text(new TextLabel(LookFont::Body, LookColor::Text, this)),
      m_close(new QToolButton(this))
{
    static const bool installed = [] {
        QAccessible::installFactory(accessibleBanner);
        return true;
    }();
    Q_UNUSED(installed)
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(stripWidth + LookSpace::Medium, 6, LookSpace::Small, 6);
    row->setSpacing(10);
    auto *const picture = new GlyphLabel(18, this);
    const BannerLook look = lookOf(content.kind);
    picture->setGlyph(QLatin1StringView(look.glyph), look.picture);
    row->addWidget(picture);
    m_text->setObjectName(u"lblText"_s);
    m_text->setWordWrap(true);
    m_text->setText(content.text);
    row->addWidget(m_text, 1);
    if (!content.action.isEmpty()) {
        m_action = new QPushButton(content.action, this);
        m_action->setObjectName(u"btnAction"_s);
        m_action->setAutoDefault(false);
        setButtonKind(*m_action, ButtonKind::Quiet);
        setSmall(*m_action);
        row->addWidget(m_action);
        connect(m_action, &QPushButton::clicked, this, &Banner::act);
    }
    m_close->setObjectName(u"btnClose"_s);
    m_close->setIcon(GlyphIcon(u"close"_s));
    m_close->setIconSize(QSize(14, 14));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::TabFocus);
    setSmall(*m_close);
    row->addWidget(m_close);
    connect(m_close, &QToolButton::clicked, this, &Banner::closed);
    m_time.setSingleShot(true);
    connect(&m_time, &QTimer::timeout, this, &Banner::endTime);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    retranslate();
}

Banner::~Banner() = default;

void Banner::act()
{
    // The action may show another banner, or destroy the page.
    const std::function<void()> act = m_content.act;
    Q_EMIT closed();
    if (act)
        GuardedCall(act);
}

void Banner::endTime()
{
    const QWidget *const focus = window()->focusWidget();
    const bool isUsed = underMouse() || (focus && focus->hasFocus() && isAncestorOf(focus));
    if (isUsed)
        m_time.start();
    else
        Q_EMIT closed();
}

void Banner::retranslate()
{
    m_close->setToolTip(tr("Close this message"));
    m_close->setAccessibleName(tr("Close this message"));
}

void Banner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const BannerLook look = lookOf(m_content.kind);
    QPainterPath shape;
    shape.addRoundedRect(rect(), LookSpace::PanelRadius, LookSpace::PanelRadius);
    painter.setClipPath(shape);
    painter.fillPath(shape, ColorOf(look.ground, palette()));
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), QRect(0, 0, stripWidth, height())),
                     ColorOf(look.strip, palette()));
}

void Banner::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void Banner::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT closed();
    else
        QWidget::keyPressEvent(event);
}

void Banner::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    QAccessibleEvent announced(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&announced);
    if (goesByItself(m_content.kind))
        m_time.start();
}

void Banner::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_time.stop();
}

BannerStack::BannerStack(QWidget *parent) : QWidget(parent)
{
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(LookSpace::Small);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    hide();
}

BannerStack::~BannerStack() = default;

Banner *BannerStack::showBanner(const BannerText &content)
{
    const QList<Banner *> former = m_banners;
    for (Banner *banner : former) {
        const BannerText &old = banner->content();
        const bool isSame = old.kind == content.kind && old.text == content.text;
        if (isSame || (!content.topic.isEmpty() && old.topic == content.topic))
            remove(banner);
    }
    auto *const banner = new Banner(content, this);
    banner->m_time.setInterval(m_shownTime);
    connect(banner, &Banner::closed, this, [this, banner] { remove(banner); });
    banner->hide();
    m_banners.prepend(banner);
    static_cast<QVBoxLayout *>(layout())->insertWidget(0, banner);
    arrange();
    return banner;
}

void BannerStack::dismiss(const QString &topic)
{
    const auto found = std::find_if(m_banners.cbegin(), m_banners.cend(), [&topic](const Banner *banner) {
        return !topic.isEmpty() && banner->content().topic == topic;
    });
    if (found != m_banners.cend())
        remove(*found);
}

void BannerStack::clear()
{
    while (!m_banners.isEmpty())
        remove(m_banners.constLast());
}

void BannerStack::setShownTime(int milliseconds)
{
    m_shownTime = milliseconds;
}

void BannerStack::remove(Banner *banner)
{
    if (!m_banners.removeOne(banner))
        return;
    layout()->removeWidget(banner);
    banner->hide();
    banner->deleteLater(); // its button may have called this function
    arrange();
}

void BannerStack::arrange()
{
    for (int i = 0; i < m_banners.size(); ++i)
        m_banners.at(i)->setVisible(i < mostShown);
    setVisible(!m_banners.isEmpty());
}

} // namespace QuoteDesk
