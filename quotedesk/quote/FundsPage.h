#pragma once

#include "quote/OfferedFunds.h"
#include "quote/QuoteAllocation.h"
#include "quote/Split.h"

#include "catalogue/CatalogueDatabase.h"

#include "ui_FundsPage.h"

#include <QUndoStack>

#include <memory>

namespace QuoteDesk
{

class EditedQuote;
class InvestmentField;
class QuoteSession;

/// The page on which the investment is spread over funds: amount, mode, the allocation frame, the split as a
/// picture, and the funds that the quote has but the product offers no more.
///
/// Every change of the adviser's is a step that can be undone. A step keeps the whole split before and after
/// it, so that grid and list can never part.
class FundsPage : public QWidget, public Ui::FundsPage
{
    Q_OBJECT
public:
    explicit FundsPage(QWidget *parent = nullptr);
    ~FundsPage() override;

    /// Once, before the page is shown. @p session must outlive the page. What the adviser changes goes into
    /// @p quote from then on.
    void setUp(QuoteSession &session, const Product &product, const std::shared_ptr<EditedQuote> &quote);
    /// The editing is over: what is changed from here on goes nowhere.
    void letGo();

    /// The allocation frame takes funds once it has set itself up, after its first paint.
    bool isReady() const noexcept { return m_ready; }
    /// Shows the split of the quote, and forgets the steps; before the page is ready, as soon as it is.
    void showQuote();
    /// Takes what is being typed, as if the field had been left.
    void commit();
    /// The funds of the product by number and name: those of the quote, and all of them once the adviser has
    /// gone to choose or paste funds.
    const FundNames &names() const noexcept { return m_offered.names(); }
    /// The quote with its funds called as people are to read them; see OfferedFunds::shownNames().
    Quote withShownNames(Quote quote) const;
    /// The previous-investment questions that were answered, with their answers.
    QList<QPair<QString, QString>> answers() const;

    /// For what shows the steps; to step back use undo(), which first takes what is being typed.
    QUndoStack *undoStack() { return &m_undo; }
    void undo();
    void redo();

    /// The funds as lines for a spreadsheet, to the clipboard.
    void copyFunds();
    /// Takes the clipboard's lines over as one step and tells which of them were of no use.
    void pasteFunds();
    /// Opens the fact sheet of the grid's current fund.
    void openFactSheet();

Q_SIGNALS:
    void ready();
    /// The adviser has changed something outside of the grid, or a step has been made.
    void edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    class Step;

    void layOut();
    void bindGrid();
    void bindToolBar();
    void bindFields();

    void start();
    void followCatalogue();
    void provide(const QList<QuotedFund> &funds);
    void provideAll();
    void offerFunds();
    void display(const Split &split);
    void putBack(const Split &split);
    Split readSplit() const;

    void record(const QString &text);
    void record(const Split &wanted, const QString &text);
    void recordEntry(int row);
    void recordAllocation();
    void recordShown(const Split &split, const QString &text);
    void push(const Split &now, const QString &text);
    void takeRow(int row);
    void takeMode();
    void takeInvestment(Currency amount);
    void removeKept();

    void retext();
    void refresh();
    void showRest();
    void showCommands();
    void showKept();
    void showNames();

    void askQuestions();
    void ask(int groupID);
    QuotedFund currentFund() const;

    QuoteSession *m_session = nullptr;
    Product m_product;
    std::shared_ptr<EditedQuote> m_quote; ///< What is on the page, with what is being typed.
    OfferedFunds m_offered;
    InvestmentField *m_investment;
    Split m_split; ///< As the last step left it; what is to be shown while the page is not ready.
    QList<QuotedFund> m_kept;
    QStringList m_keptShown;
    QStringList m_names; ///< What the funds of the split are called on the screen.
    QString m_rest;      ///< What the status panel says.
    QUndoStack m_undo;
    bool m_ready = false;
    bool m_displaying = false;
};

} // namespace QuoteDesk
