#pragma once

#include "export/zel_commonframes_export.h"
#include "host/Modulefrm.h"
#include "toolkit/TFrame.h"
#include "toolkit/TcxPageControl.h"
#include "ui_fra_BaseNavBar.h"

#include <bitset>

/// The page indices, 0 to 255, that a move jumps over.
using TPageSkipSet = std::bitset<256>;

/// Moves a product editor through the pages of a page control. The two buttons are enabled to match the
/// position and mirrored on two ribbon items, which stand for them: the bar itself is hidden once made, and a
/// page that wants it seen shows it. The page also connects the buttons' clicks to Next and Prev.
///
/// Whatever a ribbon item or the module form refuses is raised; the buttons are up to date by then.
class ZEL_COMMONFRAMES_EXPORT TfraBaseNavBar : public TFrame, public Ui::TfraBaseNavBar
{
    Q_OBJECT
public:
    explicit TfraBaseNavBar(QWidget *owner = nullptr);
    ~TfraBaseNavBar() override;

    /// The design has been read: the frame makes itself invisible.
    virtual void Loaded();

    /// One page forward or back, hidden tabs included; nothing moves without pages or past an end.
    void Next(TcxPageControl &pages);
    void Prev(TcxPageControl &pages);
    /// One page forward, jumping over the pages in @p skip. A skipped last page is still shown; a run of
    /// skipped pages that reaches the end leads past it, which the page control ignores.
    void NextSkip(TcxPageControl &pages, const TPageSkipSet &skip);
    /// One page back, jumping over the pages in @p skip. A skipped first page is still shown when the move
    /// starts beside it; a run of skipped pages that reaches the start leads to -1, which is ignored.
    void PrevSkip(TcxPageControl &pages, const TPageSkipSet &skip);
    /// Shows or hides every tab, goes to the first page and updates the buttons.
    void RefreshNavBar(TcxPageControl &pages, bool tabVisible);
    /// Updates the buttons to the active page.
    void RefreshNavButton(const TcxPageControl &pages);

    /// Lets a ribbon item stand for a button: its clicks click the button, and it is enabled as the button
    /// is. Nil is ignored. Raises Exception, keeping the earlier binding, while ModuleForm is not set.
    void SetNextBtn(const IRibbonItemPtr &item);
    void SetPrevBtn(const IRibbonItemPtr &item);
    /// The ribbon's clicks: click the button, which does nothing while it is disabled.
    void NextClicked(QObject *sender, qint32 index);
    void PreviousClicked(QObject *sender, qint32 index);
    /// Copies the buttons' enabled states to the ribbon items.
    void UpdateTB();

    /// Whether the last move was forward or back, even if the page stayed; both false after a refresh.
    bool MovedNext() const { return FMovedNext; }
    bool MovedPrev() const { return FMovedPrev; }

private:
    bool FMovedNext = false;
    bool FMovedPrev = false;
    IRibbonItemPtr FNextItem;
    IRibbonItemPtr FPrevItem;

public:
    /// The module form through which ribbon clicks are bound. Whoever places the bar sets it, before
    /// SetNextBtn and SetPrevBtn.
    QPointer<TfrmModule> ModuleForm;

private:
    enum class TMove { None, Forward, Back };
    using TClicked = void (TfraBaseNavBar::*)(QObject *, qint32);
    void updateButtons(const TcxPageControl &pages, TMove move);
    void bind(IRibbonItemPtr &binding, const IRibbonItemPtr &item, const QAbstractButton &button,
              TClicked clicked);
};
