#pragma once

#include <QAbstractButton>
#include <QShortcutEvent>

namespace Zel
{
/// Clicks @p button when @p event is its own key; says whether it was. Qt shows the button going down and
/// clicks a tenth of a second later, on whatever the user has gone on to by then.
inline bool ClicksAtOnce(QAbstractButton &button, const QEvent &event)
{
    if (event.type() != QEvent::Shortcut)
        return false;
    const auto &key = static_cast<const QShortcutEvent &>(event);
    // A key that several buttons lay claim to clicks none of them.
    if (key.isAmbiguous() || key.key() != button.shortcut())
        return false;
    button.click();
    return true;
}
} // namespace Zel
