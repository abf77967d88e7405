#pragma once

#include "quote/ProductPages.h"
#include "store/Quote.h"

#include "editor/fra_BaseNavBar.h"
#include "editor/frm_BaseProductEditor.h"
#include "toolkit/TcxButton.h"
#include "toolkit/TcxPageControl.h"

#include <QAction>

class QLabel;

namespace QuoteDesk
{

class FundsPage;
class QuoteEditor;
struct QuoteReport;
class SummaryPage;

/// The window in which a quote is edited, common to all products: the pages details, income, funds and
/// summary. A product in which a page has nothing to enter has that page's tab hidden, and Next and Previous
/// pass it over.
///
/// Closing hides the window of a quote that is stored, and ends the editing of one that never was; in both
/// cases the editor still has what was typed.
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
    TcxButton *sbtNewClient; ///< Beside the button for the chosen client's details.
    QLabel *lblProduct;      ///< The product's name, beside the pages' tabs.

    /// The commands, for a ribbon. They are the form's own actions too, so their keys work while the focus is
    /// in the form. Enabled as they can be carried out.
    QAction *actSave;
    QAction *actUndo;
    QAction *actRedo;
    QAction *actCopyFunds;
    QAction *actPasteFunds;
    QAction *actFactSheet;
    /// The commands of the allocation's tool bar, for a menu: enabled as its buttons are, which have the
    /// keys.
    QList<QAction *> fundActions;
    QAction *actPrint;
    QAction *actPdf;

    /// The pages that Next and Previous pass over.
    const TPageSkipSet &skippedPages() const { return m_skip; }

    void goTo(Page page);

    /// Puts the editor's quote on the screen.
    void showQuote();
    /// Takes what is being typed, as if the field had been left.
    void commit();
    /// A sentence for each thing that is missing or wrong.
    QStringList problems() const;
    /// The quote as its client will read it.
    QuoteReport report() const;
    /// Brings the summary up to date.
    void showSummary();

    void SetUpProduct(bool flag) override;
    void SelectedClientChanged() override;
    HResult Dispose() noexcept override;

protected:
    /// The form of a product that has an editor.
    explicit QuoteForm(int productID);

    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QuoteEditor *quoteEditor() const;
    QAction *newAction(const char *name, const QKeySequence &keys, void (QuoteForm::*command)());
    void namePages();
    void layOut();
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
    void placeNewClient();
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

    TPageSkipSet m_skip;
    const ProductPages m_product;
    const bool m_hasIncome;
    bool m_showing = false;
};

} // namespace QuoteDesk
