#pragma once

#include "catalogue/CatalogueDatabase.h"
#include "store/Quote.h"

#include "editor/fra_BaseNavBar.h"
#include "editor/frm_BaseProductEditor.h"
#include "toolkit/TcxPageControl.h"

namespace QuoteDesk
{

class FundsPage;
class QuoteEditor;

/// The window in which a quote is edited, common to all products: the pages details, funds and summary.
/// Closing hides it; its module is disposed of by whoever deletes the editor.
class QuoteForm : public TfrmBaseProductEditor
{
    Q_OBJECT
public:
    explicit QuoteForm(QWidget *parent = nullptr);
    ~QuoteForm() override;

    /// The pages and the bar that steps through them.
    TcxPageControl *pcPages;
    TfraBaseNavBar *fraNavBar;
    FundsPage *fundsPage;

    /// Puts the quote on the screen.
    void showQuote(const Quote &quote);
    /// Writes what is on the screen into @p quote.
    void readInto(Quote &quote) const;
    /// The pages in which there is nothing to enter for this quote.
    TPageSkipSet skippedPages() const { return m_skip; }

    void SetUpProduct(bool flag) override;
    void SelectedClientChanged() override;

protected:
    QuoteEditor *quoteEditor() const;
    void hideEvent(QHideEvent *event) override;

    TPageSkipSet m_skip;
    bool m_showing = false;
};

/// The forms of the three products.
class RetirementAnnuityForm : public QuoteForm
{
    Q_OBJECT
};
class LivingAnnuityForm : public QuoteForm
{
    Q_OBJECT
};
class InvestmentPlanForm : public QuoteForm
{
    Q_OBJECT
};

} // namespace QuoteDesk
