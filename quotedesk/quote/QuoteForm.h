#pragma once

#include "quote/ProductPages.h"
#include "store/Quote.h"

#include "editor/fra_BaseNavBar.h"
#include "editor/frm_BaseProductEditor.h"
#include "toolkit/TcxButton.h"
#include "toolkit/TcxPageControl.h"

#include <QAction>

#include <functional>

namespace QuoteDesk
{

class FundsPage;
class GlyphLabel;
class QuoteEditor;
struct QuoteReport;
class SummaryPage;

/// The window in which a quote is edited, common to all products: the pages details, income, funds and
/// summary. When a product has nothing to enter on a page, its tab is hidden, and Next and Previous skip it.
///
/// Closing hides the window of a stored quote and ends the editing of one that was never saved. In both cases
/// the editor keeps the entries.
class QuoteForm : public TfrmBaseProductEditor
{
    Q_OBJECT
public:
    /// The pages in their order.
    enum class Page { Details, Income, Funds, Summary };

    ~QuoteForm() override;

    TcxPageControl *pcPages;
    TfraBaseNavBar *fraNavBar;
    ElementsPage *detailsPage;
    ElementsPage *incomePage;
    FundsPage *fundsPage;
    SummaryPage *summaryPage;
    TcxButton *sbtNewClient; ///< beside the button for the client's details

    /// The commands, for a bar and menus. They are also actions of the form, so their keys work while the
    /// form has the focus. Enabled when they can be executed.
    QAction *actSave;
    QAction *actUndo;
    QAction *actRedo;
    QAction *actCopyFunds;
    QAction *actPasteFunds;
    QAction *actFactSheet;
    /// The commands of the allocation's toolbar, for a menu; enabled like the toolbar's buttons, which handle
    /// the keys.
    QList<QAction *> fundActions;
    QAction *actPrint;
    QAction *actPdf;
    QAction *actNextPoint; ///< goes to the next field that is still to be completed
    QAction *actPreviousPoint;

    /// The pages that Next and Previous skip.
    const TPageSkipSet &skippedPages() const { return m_skip; }

    void goTo(Page page);

    /// Displays the editor's quote.
    void showQuote();
    /// Applies an edit in progress, as if the field had lost the focus.
    void commit();
    /// A sentence for each missing or wrong entry.
    QStringList problems() const;
    /// What is still to be completed, in the order of the pages: the missing or wrong entries, and the split.
    QList<OpenPoint> openPoints() const;
    /// Goes to the field of a point and selects its text.
    void goToPoint(const OpenPoint &point);
    /// The quote as its client reads it.
    QuoteReport report() const;
    /// Updates the summary.
    void showSummary();

    void SetUpProduct(bool flag) override;
    void SelectedClientChanged() override;
    HResult Dispose() noexcept override;

protected:
    /// For a product that has an editor.
    explicit QuoteForm(int productID);

    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QuoteEditor *quoteEditor() const;
    bool isAt(const OpenPoint &point) const;
    void stepPoint(int step);
    QAction *newAction(const char *name, const QKeySequence &keys, void (QuoteForm::*command)());
    QAction *newAction(const char *name, const QKeySequence &keys, const std::function<void()> &command);
    void namePages();
    void layOut();
    void layOutBand();
    void placeNewClient();
    void refreshTabs();
    void showState(Page page, const QStringList &open);
    void showOpenPoints(int count);
    void addActions();
    void bindBand();
    void bindPages();
    void bindSteps();
    void retext();
    void retextActions();
    void takeClient();
    void takeDescription();
    void takeDetails();
    void refreshSummary();
    void addFundActions();
    void runFundCommand(const QAction *action);
    void storeClient();
    void newClient();
    void enterClient(const Client &start);
    void enterPage();
    void requestSave();
    void undo();
    void redo();
    void copyFunds();
    void pasteFunds();
    void openFactSheet();
    void print();
    void savePdf();

    QList<GlyphLabel *> m_states; ///< on the tabs
    TPageSkipSet m_skip;
    const ProductPages m_product;
    const bool m_hasIncome;
    bool m_showing = false;
};

} // namespace QuoteDesk
