#pragma once

#include "toolkit/Look.h"
#include "toolkit/LookChanges.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>

#include <functional>
#include <utility>

namespace Zel
{

/// In the application look, @p widget gets the font of its surroundings in place of its designed one. Call it
/// after the designed font was set, and on each QEvent::StyleChange.
inline void FollowLook(QWidget *widget)
{
    if (CurrentLook() != Look::Application)
        return;
    // Only once: a style sheet answers each font that is set with a font of its own.
    if (LookChanges &changes = LookChanges::Of(widget); !changes.Designed("font").isValid())
        changes.Set("font", QFont());
}

/// How much room a window has for rows and bars.
enum class Room {
    Tiny, ///< the screen has less than a page needs
    Low,
    Enough
};
/// The room in the window of @p widget. The least room is that of the screen, because a window that is too
/// high for its screen must be able to become lower.
inline Room RoomOf(const QWidget &widget)
{
    constexpr int tiny = 480;
    constexpr int low = 680;
    const int screen = widget.screen()->availableGeometry().height();
    if (screen < tiny)
        return Room::Tiny;
    return qMin(screen, widget.window()->height()) < low ? Room::Low : Room::Enough;
}

/// Calls a function whenever the look, the font, the language or the size of a widget changes, and once when
/// it is made in the application look. In the designed look, the function is called after the designed
/// properties of the widget have come back.
class LookFit : public QObject
{
public:
    /// @p widget owns the object.
    LookFit(QWidget *widget, std::function<void()> fit) : QObject(widget), m_fit(std::move(fit))
    {
        widget->installEventFilter(this);
        if (CurrentLook() == Look::Application)
            m_fit();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        const bool inLook = CurrentLook() == Look::Application;
        if (type == QEvent::StyleChange ||
            (inLook && (type == QEvent::FontChange || type == QEvent::LanguageChange ||
                        type == QEvent::Resize || type == QEvent::LayoutRequest)))
            m_fit();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_fit;
};

/// Sets a property in the application look; the designed look brings the designed value back.
inline void SetInLook(QObject *object, const char *property, const QVariant &value)
{
    LookChanges::Of(object).Set(property, value);
}

/// Brings the designed values of @p object back at once.
inline void BackToDesign(QObject *object)
{
    if (LookChanges *const changes = LookChanges::Find(object))
        changes->Restore();
}

/// The property of a panel whose owner sets its height and draws it in the application look.
inline constexpr auto DrawnByOwner = "zelDrawnByOwner";

} // namespace Zel
