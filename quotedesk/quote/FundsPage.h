#pragma once

#include "quote/FundLines.h"
#include "quote/QuoteAllocation.h"
#include "store/Quote.h"

#include "catalogue/CatalogueDatabase.h"

#include "ui_FundsPage.h"

#include <QSet>
#include <QUndoStack>

#include <optional>

namespace QuoteDesk
{

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

    /// Once, before the page is shown. @p session must outlive the page.
    void setUp(QuoteSession &session, const Product &product);

    /// The allocation frame takes funds once it has set itself up, after its first paint.
    bool isReady() const noexcept { return m_ready; }
    /// Shows the split of @p quote, and forgets the steps; before the page is ready, as soon as it is.
    void show(const Quote &quote);
    using QWidget::show;
    /// Writes the split and the questions asked into @p quote, with what is being typed: an investment that
    /// is no amount is kept as it was typed, among the details.
    void readInto(Quote &quote) const;
    /// Why the investment that was typed into @p quote is no amount, in a sentence; blank when there is none.
    static QString refusalOf(const Quote &quote);
    /// Takes what is being typed, as if the field had been left.
    void commit();
    /// The funds of the product by number and name: those of the quote, and all of them once the adviser has
    /// gone to choose or paste funds.
    const FundNames &names() const noexcept { return m_names; }
    /// The quote with its funds called as people are to read them: under the name that is kept with the
    /// quote, marked when the catalogue calls the fund otherwise, and told apart when two have the same.
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
    /// The adviser changed something, a keystroke at least.
    void edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    class Step;
    /// All that a step changes.
    struct Split {
        Currency investment;
        bool byAmount = false;
        QList<QuotedFund> funds; ///< In grid order, then those not offered any more.
        friend bool operator==(const Split &, const Split &) = default;
    };

    void start();
    void loadFunds(bool all, const QSet<int> &wanted);
    void provide(const QList<QuotedFund> &funds);
    void provideAll();
    void offerFunds();
    bool isRenamed(const QuotedFund &fund) const;
    void takeNames(QList<QuotedFund> &funds) const;
    QStringList shownNames(const QList<QuotedFund> &funds) const;
    void showNames();
    void retext();
    Split readSplit() const;
    static Split settled(const Split &split);
    void display(const Split &split);
    void putBack(const Split &split);
    void record(const QString &text);
    void record(const Split &wanted, const QString &text);
    void recordAllocation();
    void recordShown(const Split &split, const QString &text);
    void refresh();
    void showRest();
    void takeMode();
    void takeAmount();
    void showAmount();
    void setInvestment(Currency amount);
    std::optional<Currency> typedAmount() const;
    void markAmount(const QString &reason);
    bool hasRefusedAmount() const;
    void dropRefusedAmount();
    void tellOfCell(const QString &sentence, int row, const QString &reason, const QString &value);
    void removeKept();
    void askQuestions();
    void askOfCurrentFund();
    void ask(int groupID);
    QuotedFund currentFund() const;

    QuoteSession *m_session = nullptr;
    Product m_product;
    QVariant m_packet;     ///< Funds that the product offers; invalid before the first quote is shown.
    FundNames m_names;     ///< The same.
    QSet<int> m_wanted;    ///< The funds that they were read for.
    bool m_hasAll = false; ///< They are all that the product offers.
    Split m_split;         ///< As the last step left it; what is to be shown while the page is not ready.
    QList<QuotedFund> m_kept;
    QStringList m_keptShown;
    QString m_rest; ///< What the status panel says.
    TShowedMessageStatus m_asked;
    QMap<QString, QString> m_answers;
    QUndoStack m_undo;
    QAction *m_amountWarning = nullptr;
    QString m_amountTip; ///< What the field says of itself while its text is an amount.
    bool m_ready = false;
    bool m_displaying = false;
};

} // namespace QuoteDesk
