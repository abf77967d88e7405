#pragma once

#include "store/QuoteStore.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <exception>
#include <functional>

namespace QuoteDesk
{

class ModuleTabs;
class QuoteEditor;
class QuoteSession;

/// The quotes that are open: an editor for each, with its page among the window's tabs. It opens, saves and
/// closes them, and asks what has to be asked over that. It never waits for a server.
class OpenQuotes : public QObject
{
    Q_OBJECT
public:
    /// @p session and @p pages must outlive it.
    OpenQuotes(QuoteSession &session, ModuleTabs &pages);
    /// Takes the quotes down without asking.
    ~OpenQuotes() override;

    /// Every open quote, hidden ones included.
    const QList<QuoteEditor *> &editors() const noexcept { return m_editors; }
    /// The editor on the current page; nullptr on the start page.
    QuoteEditor *current() const;

    /// Opens a new quote on a page of its own. Raises CatalogueError for a product without an editor.
    QuoteEditor *begin(const Quote &quote);
    /// Opens a stored quote, or brings its page up; nullptr while a server is asked for it. Raises StoreError
    /// when it is gone from a file; what a server says is shown.
    QuoteEditor *open(qint64 quoteID);
    /// Opens what was being typed when an earlier run of the program ended.
    void restore(const QString &draftKey, const Quote &draft);
    /// Saves an open quote, asks when somebody else has changed it meanwhile, shows what stands against it.
    /// @p then is given whether that is settled, at once or when a server has answered.
    void save(QuoteEditor &editor, const std::function<void(bool)> &then = {});

    /// Closes a quote that is to be deleted, a hidden one too; false when the adviser keeps it open.
    bool close(qint64 quoteID);
    /// Closes every page; false when one stays open. When that is because its quote is still being saved,
    /// allSaved() follows.
    bool closeAll();
    /// Gives the pages their titles anew, in the present language.
    void showTitles();

Q_SIGNALS:
    /// A quote's page has come to the front with its commands.
    void opened();
    /// The title of the page in front is another one.
    void titleChanged();
    /// Others' versions have been taken over: the lists of quotes are out of date.
    void listChanged();
    /// The last quote that kept closeAll() waiting has been saved and closed.
    void allSaved();
    /// A sentence for the status bar, and how long it stays there in milliseconds; 0 for until the next one.
    void told(const QString &sentence, int ms = 0);

private:
    QuoteEditor *openEditor(const Quote &quote, const QString &draftKey);
    void showStored(const Quote &stored);
    void forget(QuoteEditor *editor);
    QuoteEditor *editorOf(const QWidget *page) const;
    QuoteEditor *editorOf(qint64 quoteID) const;
    bool hasPage(const QuoteEditor &editor) const;
    void showTitle(QuoteEditor &editor);
    void saveAs(QuoteEditor &editor, SaveMode mode, const std::function<void(bool)> &then);
    void settle(QuoteEditor &editor, const std::exception_ptr &error, const std::function<void(bool)> &then);
    void keepDraft(QuoteEditor &editor);
    bool mayClose(QuoteEditor &editor);
    bool mayLeaveSave(QuoteEditor &editor);
    bool saveAndClose(QuoteEditor &editor);
    QWidget *window() const;

    QuoteSession &m_session;
    ModuleTabs &m_pages;
    QList<QuoteEditor *> m_editors;
    QSet<qint64> m_opening; ///< Quotes that a server is asked for.
    bool m_closesWhenSaved = false;
};

} // namespace QuoteDesk
