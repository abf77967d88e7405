#pragma once

#include "quote/ElementsPage.h"
#include "store/Quote.h"

#include "editor/fra_BaseNavBar.h"
#include "editor/frm_BaseProductEditor.h"
#include "toolkit/TcxButton.h"
#include "toolkit/TcxPageControl.h"

#include <QAction>

#include <functional>

class QLabel;

namespace QuoteDesk
{

class FundsPage;
class QuoteEditor;
struct QuoteReport;
class SummaryPage;

/// What a product asks for on its own pages.
struct ProductPages {
    QList<PageElement> details;
    QList<PageElement> income; ///< None in a product without an income page.
    /// What is wrong in a quote as a whole, in sentences; empty when nothing can be.
    std::function<QStringList(const Quote &)> problems = {};
};
/// Nothing for a product without an editor.
ProductPages pagesOf(int productID);
/// A sentence for each thing that is missing or wrong in a quote whose details stand on two pages.
QStringList problemsOf(const Quote &quote, const ProductPages &product, const ElementsPage &details,
                       const ElementsPage &income);

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

    /// Puts the quote on the screen.
    void showQuote(const Quote &quote);
    /// Writes what is on the screen into @p quote, with what is being typed.
    void readInto(Quote &quote) const;
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
    void retext();
    void notice();
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

/// A retirement annuity: saved into until retirement.
class RetirementAnnuityForm : public QuoteForm
{
    Q_OBJECT
public:
    static constexpr int ProductID = 1;
    RetirementAnnuityForm();
    ~RetirementAnnuityForm() override;
};

/// A living annuity: capital from which an income is drawn.
class LivingAnnuityForm : public QuoteForm
{
    Q_OBJECT
public:
    static constexpr int ProductID = 2;
    LivingAnnuityForm();
    ~LivingAnnuityForm() override;
};

/// An investment plan: money put away for a term.
class InvestmentPlanForm : public QuoteForm
{
    Q_OBJECT
public:
    static constexpr int ProductID = 3;
    InvestmentPlanForm();
    ~InvestmentPlanForm() override;
};

} // namespace QuoteDesk
