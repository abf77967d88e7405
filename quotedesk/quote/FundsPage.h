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

class BannerStack;
struct BannerText;
class EditedQuote;
class EmptyState;
class FundLines;
class GlyphLabel;
class InvestmentField;
class ProblemLine;
class QuoteSession;

/// The page on which the investment is allocated to funds: amount, mode, allocation frame, a chart of the
/// split, and the quote's funds that the product no longer offers. On a narrow window the chart loses its
/// legend and then goes.
///
/// Every change by the adviser is a step that can be undone. A step stores the complete split before and
/// after it, so that grid and list always agree.
class FundsPage : public QWidget, public Ui::FundsPage
{
    Q_OBJECT
public:
    explicit FundsPage(QWidget *parent = nullptr);
    ~FundsPage() override;

    ProblemLine *amountProblem; ///< why the typed investment is invalid
    BannerStack *banners;       ///< what the grid corrected, and what a paste has done
    EmptyState *emptyState;     ///< in the place of the grid's rows
    QPushButton *btnChoose;     ///< "Choose funds" in the empty state
    TextLabel *lblState;        ///< the quote's state, below the chart
    TextLabel *lblCount;        ///< the number of funds

    /// Call once, before the page is shown. @p session must outlive the page. The adviser's changes are
    /// written to @p quote from then on.
    void setUp(QuoteSession &session, const Product &product, const std::shared_ptr<EditedQuote> &quote);
    /// Ends the editing: later changes are not written to the quote.
    void letGo();

    /// Whether the allocation frame has initialised itself, which it does after its first paint; it accepts
    /// funds only then.
    bool isReady() const noexcept { return m_ready; }
    /// Shows the split of the quote and clears the steps; before the page is ready, it is shown as soon as it
    /// is.
    void showQuote();
    /// Applies an edit in progress, as if the field had lost the focus.
    void commit();
    /// The product's funds by id and name: those of the quote, and all of them once the adviser has opened
    /// the selector or pasted lines.
    const FundNames &names() const noexcept { return m_offered.names(); }
    /// The quote with its funds' displayed names; see OfferedFunds::shownNames().
    Quote withShownNames(Quote quote) const;
    /// The previous-investment questions that were answered, with their answers.
    QList<QPair<QString, QString>> answers() const;

    /// For views of the steps. To undo, call undo(), which applies an edit in progress first.
    QUndoStack *undoStack() { return &m_undo; }
    void undo();
    void redo();

    /// Copies the funds to the clipboard, as lines for a spreadsheet.
    void copyFunds();
    /// Pastes the clipboard's lines as one step. A banner says how many, and shows the refused ones on
    /// request.
    void pasteFunds();
    /// Opens the fact sheet of the grid's current fund.
    void openFactSheet();

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void ready();
    /// The adviser has changed something outside of the grid, or a step was made.
    void edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    class Step;

    void layOut();
    void layOutSplit();
    void layOutEmptyState();
    void order();
    void adoptFont();
    void arrange();
    void placeEmptyState();
    void tell(const QString &sentence);
    void tellPasted(const FundLines &lines);
    void showBanner(const BannerText &content);
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
    void showState(const SplitState &state);
    void showKept();
    void showNames();
    void showEmptyState();

    void askQuestions();
    void ask(int groupID);
    QuotedFund currentFund() const;

    QuoteSession *m_session = nullptr;
    Product m_product;
    std::shared_ptr<EditedQuote> m_quote; ///< the displayed quote, including an edit in progress
    OfferedFunds m_offered;
    InvestmentField *m_investment;
    GlyphLabel *m_statePicture;
    TextLabel *m_countCaption;
    QBoxLayout *m_countLayout = nullptr;
    Split m_split; ///< after the last step; while the page is not ready, the split to be shown
    QList<QuotedFund> m_kept;
    QStringList m_keptShown;
    QStringList m_names; ///< the displayed names of the split's funds
    QString m_rest;      ///< the text of the status panel
    QUndoStack m_undo;
    bool m_ready = false;
    bool m_displaying = false;
};

} // namespace QuoteDesk
