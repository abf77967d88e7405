#pragma once

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace Zel
{
/// Shows a tool tip at the mouse while the mouse stays in @p place of @p widget. The text is plain text, even
/// if it looks like HTML; a long text is wrapped.
inline void ShowPlainTip(const QHelpEvent &help, const QString &text, QWidget *widget, QRect place)
{
    QToolTip::showText(help.globalPos(),
                       QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped()),
                       widget, place);
}
} // namespace Zel
