#pragma once

#include <QDialog>

namespace QuoteDesk
{

/// Help about a page or dialog and its keys.
class HelpWindow : public QDialog
{
    Q_OBJECT
public:
    /// The topics.
    enum class Topic { Start, Details, Income, Funds, Summary, NewQuote, Clients, FundSelector, Dialog };

    /// The topic for @p widget: that of its dialog, or of its page in the main window.
    static Topic topicOf(const QWidget *widget);

    HelpWindow(Topic topic, QWidget *parent);
    ~HelpWindow() override;

    Topic topic() const noexcept { return m_topic; }

private:
    const Topic m_topic;
};

/// During its lifetime, F1 in a modal dialog opens the dialog's help. Elsewhere the main window's command
/// handles the key.
class HelpKey : public QObject
{
public:
    explicit HelpKey(QObject *parent);
    ~HelpKey() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace QuoteDesk
