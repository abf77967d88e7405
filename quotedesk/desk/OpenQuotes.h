#pragma once

#include "store/QuoteStore.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <exception>
#include <functional>

namespace QuoteDesk
{

class ModuleStack;
class QuoteEditor;
class QuoteSession;

/// The open quotes, each with an editor and a page in the window. This class opens, saves and
/// closes them and asks the adviser where necessary. It never waits for a server.
class OpenQuotes : public QObject
{
    Q_OBJECT
public:
    /// @p session and @p pages must outlive this object.
    OpenQuotes(QuoteSession &session, ModuleStack &pages);
    /// Closes the quotes without asking.
    ~OpenQuotes() override;

    /// All open quotes, including hidden ones.
    const QList<QuoteEditor *> &editors() const noexcept { return m_editors; }
    /// The editor on the current page; nullptr on the start page.
    QuoteEditor *current() const;

    /// Opens a new quote on its own page. Throws CatalogueError for a product without an editor.
    QuoteEditor *begin(const Quote &quote);
    /// Opens a stored quote or shows its page; returns nullptr while a server is asked for it. Throws
    /// StoreError when a file no longer has it; a server's error is shown.
    QuoteEditor *open(qint64 quoteID);
    /// Opens a draft that an earlier run has left.
    void restore(const QString &draftKey, const Quote &draft);
    /// Saves an open quote, asks in case of a conflict with another user's save, and shows errors. Calls @p
    /// then with whether the quote is saved, at once or when the server has answered.
    void save(QuoteEditor &editor, const std::function<void(bool)> &then = {});

    /// Closes a quote that is to be deleted, even a hidden one; returns false when the adviser keeps it open.
    bool close(qint64 quoteID);
    /// Closes all pages; returns false when one stays open. When this is only because quotes are still being
    /// saved, allSaved() follows.
    bool closeAll();
    /// Sets the titles of the pages again, in the current language.
    void showTitles();

Q_SIGNALS:
    /// A quote's page and its commands are in front.
    void opened();
    /// The title of the page in front has changed.
    void titleChanged();
    /// Versions of other users were loaded, so the lists of quotes are out of date.
    void listChanged();
    /// The last quote that closeAll() waited for was saved and closed.
    void allSaved();
    /// A sentence for the status bar, and for how many milliseconds it is displayed; 0 until the next
    /// sentence.
    void told(const QString &sentence, int ms = 0);
    /// The result of a command, for a banner.
    void done(const QString &sentence);
    /// A quote could not be saved for this reason, because the store cannot be reached. The quote stays open
    /// and modified, so the save can be tried again.
    void saveFailed(QuoteEditor *editor, const QString &reason);

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
    ModuleStack &m_pages;
    QList<QuoteEditor *> m_editors;
    QSet<qint64> m_opening; ///< quotes that were requested from a server
    bool m_closesWhenSaved = false;
};

} // namespace QuoteDesk
