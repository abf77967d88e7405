#pragma once

#include "quote/QuoteReport.h"

#include "ui_SummaryPage.h"

#include <QWidget>

namespace QuoteDesk
{

/// The quote as its client will read it, and what is still to be completed.
class SummaryPage : public QWidget, public Ui::SummaryPage
{
    Q_OBJECT
public:
    explicit SummaryPage(QWidget *parent = nullptr);
    ~SummaryPage() override;

    /// @p problems are sentences, one for each field.
    void show(const QuoteReport &report, const QStringList &problems);
    using QWidget::show;
    /// Tells what was done with the quote; until it is shown anew.
    void say(const QString &text);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addRow(const QString &name, const QString &percent, const QString &amount, bool bold);
    void nameColumns();
};

} // namespace QuoteDesk
