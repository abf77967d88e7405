#pragma once

#include "quote/QuoteReport.h"

#include "ui_SummaryPage.h"

#include <QWidget>

namespace QuoteDesk
{

/// The quote as its client reads it, and what is still to be completed.
class SummaryPage : public QWidget, public Ui::SummaryPage
{
    Q_OBJECT
public:
    explicit SummaryPage(QWidget *parent = nullptr);
    ~SummaryPage() override;

    void show(const QuoteReport &report);
    using QWidget::show;
    /// Shows another description of the same quote.
    void showDescription(const QString &description);
    /// Shows a message about a command, until the page is shown again.
    void say(const QString &text);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addRow(const QString &name, const QString &percent, const QString &amount, bool bold);
    void nameColumns();

    bool m_overAllocated = false;
};

} // namespace QuoteDesk
