#pragma once

#include <QAbstractButton>
#include <QShortcutEvent>

namespace Zel
{
/// Clicks @p button at once when @p event is its shortcut key; returns whether it was. Qt itself would show
/// the button pressed and click a tenth of a second later, when the user may already work elsewhere.
inline bool ClicksAtOnce(QAbstractButton &button, const QEvent &event)
{
    if (event.type() != QEvent::Shortcut)
        return false;
    const auto &key = static_cast<const QShortcutEvent &>(event);
    // A key that several buttons share clicks none of them.
    if (key.isAmbiguous() || key.key() != button.shortcut())
        return false;
    button.click();
    return true;
}
} // namespace Zel
