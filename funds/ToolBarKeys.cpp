#include "funds/ToolBarKeys_p.h"

#include "funds/fra_FundAllocation.h"

#include <QShortcut>

namespace Zel
{

void ToolBarKeys::Add(TSpeedButton *button, const QKeySequence &keys, QWidget *where,
                      Qt::ShortcutContext context)
{
    auto *shortcut = new QShortcut(keys, where);
    shortcut->setContext(context);
    QObject::connect(shortcut, &QShortcut::activated, button, [button] {
        if (!button->isHidden())
            button->click();
    });
    m_keys.append({button, keys});
}

void ToolBarKeys::AddToHints()
{
    for (const auto &[button, keys] : std::as_const(m_keys))
        button->setToolTip(TfraFundAllocation::tr("%1 (%2)").arg(button->toolTip(),
                                                                 keys.toString(QKeySequence::NativeText)));
}

} // namespace Zel
