#pragma once

#include "export/zel_commonframes_export.h"
#include "host/Modulefrm.h"
#include "toolkit/TFrame.h"
#include "toolkit/TcxPageControl.h"
#include "ui_fra_BaseNavBar.h"

#include <bitset>

/// The page indices, 0 to 255, that a move jumps over.
using TPageSkipSet = std::bitset<256>;

/// Moves a product editor through the pages of a page control. The two buttons are enabled according to the
/// active page, and two ribbon items mirror them. The constructor hides the bar, because the ribbon items
/// replace it; a page can show it. The page connects the buttons' clicks to Next and Prev.
///
/// A failure of a ribbon item or of the module form is thrown after the buttons were updated.
class ZEL_COMMONFRAMES_EXPORT TfraBaseNavBar : public TFrame, public Ui::TfraBaseNavBar
{
    Q_OBJECT
public:
    explicit TfraBaseNavBar(QWidget *owner = nullptr);
    ~TfraBaseNavBar() override;

    /// Called when the design has been loaded; hides the frame.
    virtual void Loaded();

    /// Moves one page forward or back, including pages with hidden tabs. Does nothing without pages or at an
    /// end.
    void Next(TcxPageControl &pages);
    void Prev(TcxPageControl &pages);
    /// Moves forward to the next page that is not in @p skip. From the page before the last, it shows the
    /// last page even if that is in @p skip. When all following pages are in @p skip, the active page stays.
    void NextSkip(TcxPageControl &pages, const TPageSkipSet &skip);
    /// Moves back to the nearest page that is not in @p skip. From the second page, it shows the first page
    /// even if that is in @p skip. When all preceding pages are in @p skip, the active page stays.
    void PrevSkip(TcxPageControl &pages, const TPageSkipSet &skip);
    /// Shows or hides every tab, goes to the first page and updates the buttons.
    void RefreshNavBar(TcxPageControl &pages, bool tabVisible);
    /// Enables or disables the buttons according to the active page.
    void RefreshNavButton(const TcxPageControl &pages);

    /// Binds a ribbon item to a button: a click on the item clicks the button, and the item is enabled when
    /// the button is. Nil is ignored. While ModuleForm is not set, throws Exception and keeps the former
    /// binding.
    void SetNextBtn(const IRibbonItemPtr &item);
    void SetPrevBtn(const IRibbonItemPtr &item);
    /// Handles a click on the ribbon item: clicks the button, which does nothing while it is disabled.
    void NextClicked(QObject *sender, qint32 index);
    void PreviousClicked(QObject *sender, qint32 index);
    /// Copies the buttons' enabled states to the ribbon items.
    void UpdateTB();

    /// Whether the last move was forward or back, even if the active page did not change; both are false
    /// after a refresh.
    bool MovedNext() const { return FMovedNext; }
    bool MovedPrev() const { return FMovedPrev; }

private:
    bool FMovedNext = false;
    bool FMovedPrev = false;
    IRibbonItemPtr FNextItem;
    IRibbonItemPtr FPrevItem;

public:
    /// The module form through which ribbon clicks are bound. The page that places the bar sets it before
    /// SetNextBtn and SetPrevBtn.
    QPointer<TfrmModule> ModuleForm;

private:
    enum class TMove { None, Forward, Back };
    using TClicked = void (TfraBaseNavBar::*)(QObject *, qint32);
    void updateButtons(const TcxPageControl &pages, TMove move);
    void bind(IRibbonItemPtr &binding, const IRibbonItemPtr &item, const QAbstractButton &button,
              TClicked clicked);
};
