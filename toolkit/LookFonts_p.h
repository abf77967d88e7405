#pragma once

#include "toolkit/Look.h"
#include "toolkit/LookChanges_p.h"

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

/// Whether @p widget is in a window that is too low for comfortable rows.
inline bool IsInLowWindow(const QWidget &widget)
{
    constexpr int low = 680;
    return widget.window()->height() < low;
}

} // namespace Zel
