#pragma once

#include <QDialog>

namespace QuoteDesk
{

/// What a page or a dialog is for, and the keys that help there.
class HelpWindow : public QDialog
{
    Q_OBJECT
public:
    /// What there is help for.
    enum class Topic { Start, Details, Income, Funds, Summary, NewQuote, Clients, FundSelector, Dialog };

    /// The topic of the place that @p widget belongs to: the dialog around it, or the page of the main
    /// window.
    static Topic topicOf(const QWidget *widget);

    HelpWindow(Topic topic, QWidget *parent);
    ~HelpWindow() override;

    Topic topic() const noexcept { return m_topic; }

private:
    const Topic m_topic;
};

/// Opens the help of the place where one is when F1 is pressed in a dialog that waits for an answer; the main
/// window's own command serves everywhere else. While it lives.
class HelpKey : public QObject
{
public:
    explicit HelpKey(QObject *parent);
    ~HelpKey() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace QuoteDesk
