#include "desk/DialogFoot.h"

#include "toolkit/Look.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The ground of the buttons.
class Foot : public QWidget
{
public:
    explicit Foot(QDialogButtonBox &buttons)
    {
        auto *const row = new QHBoxLayout(this);
        row->setContentsMargins(LookSpace::Large, LookSpace::Medium, LookSpace::Large, LookSpace::Medium);
        row->addWidget(&buttons);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), ColorOf(LookColor::Raised, palette()));
        painter.setPen(QPen(ColorOf(LookColor::Line, palette()), 0)); // cosmetic
        const qreal middle = 0.5 / devicePixelRatioF();
        painter.drawLine(QPointF(0, middle), QPointF(width(), middle));
    }
};

/// Keeps the size of a dialog that the user has changed.
class KeptSize : public QObject
{
public:
    KeptSize(QDialog &dialog, const QString &name)
        : QObject(&dialog), m_dialog(dialog), m_key(u"sizes/"_s + name),
          m_settings(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                         u"/quotedesk.ini"_s,
                     QSettings::IniFormat)
    {
        const QSize room = dialog.screen()->availableGeometry().size() * 9 / 10;
        const QSize kept = m_settings.value(m_key).toSize();
        dialog.resize((kept.isValid() ? kept : dialog.size()).boundedTo(room));
        dialog.installEventFilter(this);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show)
            m_opened = m_dialog.size();
        if (event->type() == QEvent::Hide && m_opened.isValid() && m_dialog.size() != m_opened)
            m_settings.setValue(m_key, m_dialog.size());
        return QObject::eventFilter(watched, event);
    }

private:
    QDialog &m_dialog;
    QString m_key;
    QSettings m_settings;
    QSize m_opened;
};

} // namespace

QVBoxLayout *layOutDialog(QDialog &dialog, QDialogButtonBox &buttons)
{
    auto *const page = new QVBoxLayout(&dialog);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(0);
    auto *const content = new QVBoxLayout;
    content->setContentsMargins(LookSpace::Large, LookSpace::Large, LookSpace::Large, LookSpace::Large);
    content->setSpacing(LookSpace::Small);
    page->addLayout(content, 1);
    page->addWidget(new Foot(buttons));
    return content;
}

void rememberSize(QDialog &dialog, const QString &name)
{
    new KeptSize(dialog, name);
}

} // namespace QuoteDesk
