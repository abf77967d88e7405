#pragma once

#include "toolkit/TSpeedButton.h"

#include <QKeySequence>
#include <QList>

#include <utility>

namespace Zel
{

/// The keys that press the buttons of a tool bar, and that their hints name.
class ToolBarKeys
{
public:
    /// From now on @p keys press @p button while it is shown, in the @p context of @p where.
    void Add(TSpeedButton *button, const QKeySequence &keys, QWidget *where, Qt::ShortcutContext context);
    void AddToHints(); ///< To be called once for each time that the hints were set.

private:
    QList<std::pair<TSpeedButton *, QKeySequence>> m_keys;
};

} // namespace Zel
