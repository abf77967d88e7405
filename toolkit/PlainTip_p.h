#pragma once

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace Zel
{
/// Shows a text where the mouse rests, for as long as it stays in @p place of @p widget. One that looks like
/// HTML is still only a text, and a long one takes several lines.
inline void ShowPlainTip(const QHelpEvent &help, const QString &text, QWidget *widget, QRect place)
{
    QToolTip::showText(help.globalPos(),
                       QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped()),
                       widget, place);
}
} // namespace Zel
