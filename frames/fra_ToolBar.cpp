#include "frames/fra_ToolBar.h"

#include "frames/Started_p.h"
#include "toolkit/DesignTexts.h"
#include "toolkit/LookFonts_p.h"

namespace
{

/// In the application look, the buttons have their pictures at the left and are as wide as the widest.
void fitLook(const TfraToolBar &bar)
{
    if (CurrentLook() == Look::Designed)
        return;
    const std::initializer_list<TSpeedButton *> buttons{bar.sbtClient,     bar.sbtPreview,   bar.sbtSave,
                                                        bar.sbtDetails,    bar.sbtWorksheet, bar.sbtClose,
                                                        bar.sbtAcceptQuote};
    const int height = HeightOf(LookHeight::Field, bar.fontMetrics());
    int width = 0;
    for (const TSpeedButton *button : buttons)
        width = qMax(width, button->sizeHint().width());
    int y = LookSpace::Small;
    for (TSpeedButton *button : buttons) {
        Zel::SetInLook(button, "geometry", QRect(LookSpace::Grid, y, width, height));
        y += height + LookSpace::Grid;
    }
    Zel::SetInLook(bar.Panel1, "minimumWidth", width + 2 * LookSpace::Grid);
    Zel::SetInLook(bar.Panel1, "maximumWidth", width + 2 * LookSpace::Grid);
}

} // namespace

TfraToolBar::TfraToolBar(QWidget *owner) : TFrame(owner)
{
    Zel::Started::Want();
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    new Zel::LookFit(this, [this] { fitLook(*this); });
}

TfraToolBar::~TfraToolBar() = default;
