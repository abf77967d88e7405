#include "editor/fra_BaseNavBar.h"

#include "frames/Started_p.h"
#include "toolkit/DesignTexts.h"
#include "toolkit/LookFonts_p.h"

namespace
{
bool isSkipped(const TPageSkipSet &skip, int index)
{
    return index >= 0 && index < static_cast<int>(skip.size()) && skip.test(static_cast<size_t>(index));
}

void copyState(const QAbstractButton &button, const IRibbonItemPtr &item)
{
    SafecallCheck([&] { return item->put_Enabled(ToWordBool(button.isEnabled())); });
}

/// In the application look, the buttons are as high as fields and start at the left.
void fitLook(TfraBaseNavBar &bar)
{
    if (CurrentLook() == Look::Designed)
        return;
    using Zel::SetInLook;
    constexpr int designedMargin = 260;
    // On a low screen the bar fits beside the tabs.
    const int height = Zel::RoomOf(bar) == Zel::Room::Enough ? HeightOf(LookHeight::Field, bar.fontMetrics())
                                                             : bar.fontMetrics().height() + LookSpace::Grid;
    for (QWidget *const button : {bar.btnPrev, bar.btnNext}) {
        SetInLook(button, "minimumHeight", height);
        SetInLook(button, "maximumHeight", height);
    }
    const int whole = height + LookSpace::Grid;
    SetInLook(bar.pnlNavBar, "maximumHeight", whole);
    SetInLook(bar.pnlNavBar, "minimumHeight", whole);
    SetInLook(&bar, "minimumHeight", whole);
    if (bar.layNavBar->contentsMargins().left() == designedMargin)
        SetInLook(bar.layNavBar, "contentsMargins",
                  QVariant::fromValue(QMargins(LookSpace::Large, 0, LookSpace::Large, 0)));
}
} // namespace

TfraBaseNavBar::TfraBaseNavBar(QWidget *owner) : TFrame(owner)
{
    Zel::Started::Want();
    setupUi(this);
    Zel::KeepTranslated(this, [this] { retranslateUi(this); });
    new Zel::LookFit(this, [this] { fitLook(*this); });
    btnPrev->setEnabled(false);
    btnNext->setEnabled(false);
    UpdateTB();
    TfraBaseNavBar::Loaded();
}

TfraBaseNavBar::~TfraBaseNavBar() = default;

void TfraBaseNavBar::Loaded()
{
    hide();
}

void TfraBaseNavBar::Next(TcxPageControl &pages)
{
    if (pages.Get_PageCount() > 0)
        pages.SelectNextPage(true, false);
    updateButtons(pages, TMove::Forward);
}

void TfraBaseNavBar::Prev(TcxPageControl &pages)
{
    if (pages.Get_PageCount() > 0)
        pages.SelectNextPage(false, false);
    updateButtons(pages, TMove::Back);
}

void TfraBaseNavBar::NextSkip(TcxPageControl &pages, const TPageSkipSet &skip)
{
    const int count = pages.Get_PageCount();
    if (count > 0) {
        int candidate = pages.Get_ActivePageIndex() + 1;
        // A skipped last page is shown when it is the next page, so the search starts only before it.
        if (isSkipped(skip, candidate) && candidate < count - 1) {
            while (isSkipped(skip, candidate))
                ++candidate;
            pages.Set_ActivePageIndex(candidate);
        } else {
            pages.SelectNextPage(true, false);
        }
    }
    updateButtons(pages, TMove::Forward);
}

void TfraBaseNavBar::PrevSkip(TcxPageControl &pages, const TPageSkipSet &skip)
{
    if (pages.Get_PageCount() > 0) {
        int candidate = pages.Get_ActivePageIndex() - 1;
        if (isSkipped(skip, candidate) && candidate > 0) {
            while (isSkipped(skip, candidate))
                --candidate;
            pages.Set_ActivePageIndex(candidate);
        } else {
            pages.SelectNextPage(false, false);
        }
    }
    updateButtons(pages, TMove::Back);
}

void TfraBaseNavBar::RefreshNavBar(TcxPageControl &pages, bool tabVisible)
{
    const int count = pages.Get_PageCount();
    for (int i = 0; i < count; ++i)
        pages.Set_TabVisible(i, tabVisible);
    if (count > 0)
        pages.Set_ActivePageIndex(0);
    updateButtons(pages, TMove::None);
}

void TfraBaseNavBar::RefreshNavButton(const TcxPageControl &pages)
{
    updateButtons(pages, TMove::None);
}

void TfraBaseNavBar::updateButtons(const TcxPageControl &pages, TMove move)
{
    const int active = pages.Get_ActivePageIndex();
    btnPrev->setEnabled(active > 0);
    btnNext->setEnabled(active < pages.Get_PageCount() - 1);
    FMovedNext = move == TMove::Forward;
    FMovedPrev = move == TMove::Back;
    UpdateTB();
}

void TfraBaseNavBar::SetNextBtn(const IRibbonItemPtr &item)
{
    bind(FNextItem, item, *btnNext, &TfraBaseNavBar::NextClicked);
}

void TfraBaseNavBar::SetPrevBtn(const IRibbonItemPtr &item)
{
    bind(FPrevItem, item, *btnPrev, &TfraBaseNavBar::PreviousClicked);
}

void TfraBaseNavBar::bind(IRibbonItemPtr &binding, const IRibbonItemPtr &item, const QAbstractButton &button,
                          TClicked clicked)
{
    if (!item)
        return;
    if (!ModuleForm)
        throw Exception(
            tr("The navigation bar has no module form yet: set ModuleForm before binding ribbon items."));
    binding = item;
    QString name;
    SafecallCheck([&] { return item->get_Name(name); });
    // The module form keeps the handler and may outlive the bar.
    ModuleForm->UpdateOnClick(name,
                              [bar = QPointer<TfraBaseNavBar>(this), clicked](QObject *sender, qint32 index) {
                                  if (bar)
                                      (bar->*clicked)(sender, index);
                              });
    copyState(button, item);
}

void TfraBaseNavBar::NextClicked(QObject *, qint32)
{
    btnNext->click();
}

void TfraBaseNavBar::PreviousClicked(QObject *, qint32)
{
    btnPrev->click();
}

void TfraBaseNavBar::UpdateTB()
{
    if (FNextItem)
        copyState(*btnNext, FNextItem);
    if (FPrevItem)
        copyState(*btnPrev, FPrevItem);
}
