#pragma once

#include "toolkit/TSpeedButton.h"

#include <QKeySequence>
#include <QList>

#include <utility>

namespace Zel
{

/// The shortcut keys of a tool bar's buttons, which the buttons' hints name.
class ToolBarKeys
{
public:
    /// Makes @p keys click @p button while it is shown, in the @p context of @p where.
    void Add(TSpeedButton *button, const QKeySequence &keys, QWidget *where, Qt::ShortcutContext context);
    void AddToHints(); ///< Adds the keys to the hints. Call it once each time the hints were set.

private:
    QList<std::pair<TSpeedButton *, QKeySequence>> m_keys;
};

} // namespace Zel
