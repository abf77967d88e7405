#include "quote/StateColours.h"

#include "toolkit/TColors.h"

#include <QLabel>

namespace QuoteDesk
{

void showOverAllocation(QLabel &label, bool over)
{
    QPalette colours;
    if (over) {
        // The colours of an entry with an error, which are readable in light and dark palettes.
        const QPalette surroundings =
            label.parentWidget() ? label.parentWidget()->palette() : label.palette();
        colours.setColor(QPalette::Window, ColorOf(TColor::clRed, surroundings));
        colours.setColor(QPalette::WindowText, ColorOf(TColor::clBlack, surroundings));
    }
    label.setAutoFillBackground(over);
    label.setPalette(colours);
}

} // namespace QuoteDesk
