#pragma once

#include "export/zel_toolkit_export.h"

#include <QTabWidget>

/// A page control: pages with tabs, of which one is active. A page with a hidden tab can be active.
class ZEL_TOOLKIT_EXPORT TcxPageControl : public QTabWidget
{
    Q_OBJECT
public:
    explicit TcxPageControl(QWidget *parent = nullptr);
    ~TcxPageControl() override;

    int Get_PageCount() const { return count(); } ///< Including pages with hidden tabs.
    /// The index of the active page; -1 without pages.
    int Get_ActivePageIndex() const { return currentIndex(); }
    /// Activates the page at @p index. An index below 0 or past the last page is ignored.
    void Set_ActivePageIndex(int index);
    /// Moves one page forward or back; does nothing at an end. With @p checkTabVisible it skips pages with
    /// hidden tabs.
    void SelectNextPage(bool goForward, bool checkTabVisible = false);
    /// Whether the tab of the page at @p index is shown; false for an index outside the pages.
    bool Get_TabVisible(int index) const { return isTabVisible(index); }
    /// Shows or hides the tab of the page at @p index. Does not change the active page.
    void Set_TabVisible(int index, bool visible);
};
