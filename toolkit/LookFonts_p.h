#pragma once

#include "toolkit/Look.h"
#include "toolkit/LookChanges_p.h"

#include <QScreen>
#include <QWidget>

namespace Zel
{

/// In the application look, @p widget gets the font of its surroundings in place of its designed one. Call it
/// after the designed font was set, and on each QEvent::StyleChange.
inline void FollowLook(QWidget *widget)
{
    if (CurrentLook() == Look::Application)
        LookChanges::Of(widget).Set("font", QFont());
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

/// The property of a panel whose owner sets its height and draws it in the application look.
inline constexpr auto DrawnByOwner = "zelDrawnByOwner";

} // namespace Zel
