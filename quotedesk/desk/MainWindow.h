#pragma once

#include "desk/DraftKeeper.h"
#include "desk/Language.h"
#include "desk/Options.h"
#include "quote/QuoteSession.h"
#include "store/StoreWorker.h"

#include "ui_MainWindow.h"

#include <QActionGroup>
#include <QHash>
#include <QLabel>
#include <QMainWindow>
#include <QPalette>
#include <QSet>
#include <QTimer>
#include <QUndoStack>

#include <functional>
#include <future>

namespace QuoteDesk
{

class CatalogueDatabase;
class CatalogueProviders;
class QuoteEditor;
class StartPage;

/// The main window: the ribbon, the start page and a page for each quote that is open.
///
/// It never waits for a server: what it asks of the store is answered later then (with a file, before the
/// call returns), and until then it shows what it knew last. A line in the status bar says when the server is
/// silent.
class MainWindow : public QMainWindow, public Ui::MainWindow
{
    Q_OBJECT
public:
    /// @p store, @p catalogue and @p providers must outlive the window. Raises StoreError when the quotes of
    /// a file cannot be read.
    MainWindow(StoreWorker &store, CatalogueDatabase &catalogue, CatalogueProviders &providers,
               const Options &options);
    /// Takes the open quotes down without asking.
    ~MainWindow() override;

    StartPage *startPage() const { return m_startPage; }
    QuoteSession &session() noexcept { return m_session; }
    /// The editor on the current page; nullptr on the start page.
    QuoteEditor *currentEditor() const;
    /// Every open quote, hidden ones included.
    const QList<QuoteEditor *> &editors() const noexcept { return m_editors; }

    /// Puts the window where it was when saveGeometry() gave @p geometry, which may be blank; never larger
    /// than the screen. Before it is shown.
    void takePlace(const QByteArray &geometry);

    /// Offers what an earlier run of the program left unsaved. Once, when the window is up.
    void offerDrafts();

    /// Opens a new quote on a page of its own. Raises CatalogueError for a product without an editor.
    QuoteEditor *beginQuote(const Quote &quote);
    /// Opens a stored quote, or brings its page up; nullptr while a server is asked for it. Raises StoreError
    /// when it is gone from a file; what a server says is shown.
    QuoteEditor *openQuote(qint64 quoteID);
    /// Saves an open quote, asks when somebody else has changed it meanwhile, shows what stands against it.
    /// @p then is given whether that is settled, at once or when a server has answered.
    void save(QuoteEditor &editor, const std::function<void(bool)> &then = {});

    /// Makes the removal of a quote a step that can be undone.
    void keepRemoval(qint64 quoteID);

    /// What a server has not confirmed of what is being typed.
    DraftKeeper &drafts() noexcept { return m_drafts; }

    /// Reads the quotes and clients again.
    void refresh();
    void setLanguage(Language language);
    void setDark(bool dark);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    /// What the start page shows, and the state of the catalogue with it.
    struct Lists {
        QList<Client> clients;
        QList<QuoteSummary> quotes;
        QString catalogueVersion;
    };
    static Lists readLists(QuoteStore &store);
    void showLists(const Lists &lists);
    void refreshAll();
    void readCatalogue(bool showAnew);
    void serverAnswers(bool answers);

    void connectActions();
    void setUpMenus();
    void setUpRibbon();
    void setUpSession();
    void showTexts();
    void arrangeRibbon();
    void arrangeMenus();
    void updateActions();
    void updatePageTitle(QuoteEditor &editor);
    void updateTitles();

    void newQuote();
    void openChosen();
    void duplicateChosen();
    void deleteChosen();
    void showClients();
    void importCatalogue();
    void help();
    void about();

    QuoteEditor *openEditor(const Quote &quote, const QString &draftKey);
    void showStored(const Quote &stored);
    void saveAs(QuoteEditor &editor, SaveMode mode, const std::function<void(bool)> &then);
    void settle(QuoteEditor &editor, const std::exception_ptr &error, const std::function<void(bool)> &then);
    static void beginTyping(const QuoteEditor &editor);
    QuoteEditor *editorOf(const QWidget *window) const;
    QuoteEditor *editorOf(qint64 quoteID) const;
    bool mayClose(QuoteEditor &editor);
    bool mayLeaveSave(QuoteEditor &editor);
    bool saveAndClose(QuoteEditor &editor);
    void keepDraft(QuoteEditor &editor);
    void forget(QuoteEditor *editor);
    void offer(const QList<Draft> &stored);
    void restoreDraft(const QString &key, const Quote &draft);
    void clickModule(const QString &name, qint32 index);
    void lookAround();

    StoreWorker &m_store;
    CatalogueDatabase &m_catalogue;
    CatalogueProviders &m_providers;
    QuoteSession m_session;
    DraftKeeper m_drafts;
    QList<QuoteEditor *> m_editors;
    StartPage *m_startPage;
    QActionGroup m_sortActions;
    QActionGroup m_languageActions;
    QUndoStack m_listSteps; ///< Of the start page; each quote has steps of its own.
    QPalette m_lightPalette;
    QTimer m_lookAround;
    RibbonGroup *m_quotesGroup = nullptr;
    RibbonGroup *m_dataGroup = nullptr;
    RibbonGroup *m_quoteGroup = nullptr;
    RibbonGroup *m_pagesGroup = nullptr;
    RibbonGroup *m_stepsGroup = nullptr;
    RibbonGroup *m_moduleGroup = nullptr;
    QLabel *m_serverState;
    QSet<qint64> m_opening;            ///< Quotes that a server is asked for.
    QHash<qint64, QString> m_copyKeys; ///< Of copies of which it is not known whether they were made.
    bool m_offeredDrafts = false;
    bool m_isLooking = false;
    bool m_isReadingCatalogue = false;
    bool m_closesWhenSaved = false;
};

} // namespace QuoteDesk
