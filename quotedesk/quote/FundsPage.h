#pragma once

#include "quote/QuoteAllocation.h"
#include "store/Quote.h"

#include "catalogue/CatalogueDatabase.h"

#include "ui_FundsPage.h"

#include <QUndoStack>

namespace QuoteDesk
{

class QuoteSession;

/// The page on which the investment is spread over funds: amount, mode, and the allocation frame.
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
    /// Shows the funds, amount and mode of @p quote; before the page is ready, as soon as it is.
    void show(const Quote &quote);
    /// Writes funds, amount and mode into @p quote.
    void readInto(Quote &quote) const;
    QUndoStack *undoStack() { return &m_undo; }

    using QWidget::show;

Q_SIGNALS:
    void ready();
    /// The adviser changed something.
    void edited();

private:
    void start();
    void showFunds();
    void takeMode();
    void takeAmount();
    void showAmount();

    QuoteSession *m_session = nullptr;
    Product m_product;
    Quote m_quote; ///< What is to be shown while the page is not ready.
    Currency m_investment;
    QHash<int, QString> m_names;
    QUndoStack m_undo;
    bool m_ready = false;
};

} // namespace QuoteDesk
