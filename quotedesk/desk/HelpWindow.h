#pragma once

#include "desk/Language.h"

#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBrowser>
#include <QToolButton>

namespace QuoteDesk
{

/// The manual: the contents with a search at the left, and a page. The window is not modal, so the manual can
/// be read beside the work.
class HelpWindow : public QDialog
{
    Q_OBJECT
public:
    /// Places in the program that the manual has something to say about.
    enum class Topic {
        Start,
        Details,
        Income,
        Funds,
        Summary,
        NewQuote,
        Clients,
        FundSelector,
        Catalogue,
        Settings,
        Shortcuts,
        Dialog
    };

    /// The topic for @p widget: that of its dialog, or of its page in the main window.
    static Topic topicOf(const QWidget *widget);
    /// The page that has the topic.
    static QString pageOf(Topic topic);
    /// Shows the manual for @p place, in the window that @p place's window already has for it, or in a new
    /// one.
    static HelpWindow *open(QWidget *place);

    explicit HelpWindow(QWidget *parent);
    ~HelpWindow() override;

    void goTo(const QString &page);
    const QString &page() const { return m_page; }

    QLineEdit *edFind;
    QListWidget *lstPages;
    QTextBrowser *browser;
    QToolButton *btnBack;
    QToolButton *btnForward;

protected:
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    void retext();
    void find();
    void showFound();
    void takePage();
    void styleDocument();

    QString m_page;
    Language m_language = Language::English;
};

/// During its lifetime, F1 in a modal dialog opens the manual for the dialog. Elsewhere the main window's
/// command handles the key.
class HelpKey : public QObject
{
public:
    explicit HelpKey(QObject *parent);
    ~HelpKey() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace QuoteDesk
