#pragma once

#include "export/zel_toolkit_export.h"

#include <QTabWidget>

/// The page control: pages with tabs, one page active. A page whose tab is hidden can still be the active
/// one.
class ZEL_TOOLKIT_EXPORT TcxPageControl : public QTabWidget
{
    Q_OBJECT
public:
    explicit TcxPageControl(QWidget *parent = nullptr);
    ~TcxPageControl() override;

    int Get_PageCount() const { return count(); } ///< Hidden tabs included.
    /// The index of the active page; -1 without pages.
    int Get_ActivePageIndex() const { return currentIndex(); }
    /// Activates the page at @p index. An index below 0 or past the last page is ignored.
    void Set_ActivePageIndex(int index);
    /// Steps one page forward or back. Past the last or before the first page nothing happens. With
    /// @p checkTabVisible pages whose tabs are hidden are stepped over.
    void SelectNextPage(bool goForward, bool checkTabVisible = false);
    /// False for an index outside the pages.
    bool Get_TabVisible(int index) const { return isTabVisible(index); }
    /// Shows or hides the tab of the page at @p index; the active page stays the active one.
    void Set_TabVisible(int index, bool visible);
};
