#include "toolkit/TcxPageControl.h"

#include <QSignalBlocker>
#include <QTabBar>

TcxPageControl::TcxPageControl(QWidget *parent) : QTabWidget(parent) {}

TcxPageControl::~TcxPageControl() = default;

void TcxPageControl::Set_ActivePageIndex(int index)
{
    if (index >= 0 && index < count())
        setCurrentIndex(index);
}

void TcxPageControl::SelectNextPage(bool goForward, bool checkTabVisible)
{
    const int step = goForward ? 1 : -1;
    int index = currentIndex() + step;
    while (checkTabVisible && index >= 0 && index < count() && !isTabVisible(index))
        index += step;
    Set_ActivePageIndex(index);
}

void TcxPageControl::Set_TabVisible(int index, bool visible)
{
    const int active = currentIndex();
    // QTabWidget leaves a page when its tab is hidden. The page is restored below without signals and
    // repaints.
    const QSignalBlocker block(this);
    const bool enabled = updatesEnabled();
    setUpdatesEnabled(false);
    setTabVisible(index, visible);
    setCurrentIndex(active);
    setUpdatesEnabled(enabled);
}
