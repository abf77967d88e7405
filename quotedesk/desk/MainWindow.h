#pragma once

#include "desk/Language.h"
#include "desk/Options.h"
#include "desk/StoreWatch.h"
#include "quote/QuoteSession.h"

#include "ui_MainWindow.h"

#include <QActionGroup>
#include <QHash>
#include <QLabel>
#include <QMainWindow>
#include <QPalette>
#include <QUndoStack>

#include <memory>

namespace QuoteDesk
{

class CatalogueDatabase;
class CatalogueProviders;
class OpenQuotes;
class QuoteEditor;
class StartPage;

/// The main window: the ribbon, the start page and a page for each open quote.
///
/// The window never waits for a server: answers arrive later (from a file, before the call returns), and
/// until then the last known state is displayed. A line in the status bar says when the server does not
/// answer.
class MainWindow : public QMainWindow, public Ui::MainWindow
{
    Q_OBJECT
public:
    /// @p store, @p catalogue and @p providers must outlive the window. Throws StoreError when the quotes of
    /// a file cannot be read.
    MainWindow(StoreWorker &store, CatalogueDatabase &catalogue, CatalogueProviders &providers,
               const Options &options);
    /// Closes the open quotes without asking.
    ~MainWindow() override;

    StartPage *startPage() const { return m_startPage; }
    QuoteSession &session() noexcept { return m_session; }
    /// The open quotes.
    OpenQuotes &quotes() noexcept { return *m_quotes; }
    /// The editor on the current page; nullptr on the start page.
    QuoteEditor *currentEditor() const;

    /// Restores the position from saveGeometry(); @p geometry may be blank. The window is never larger than
    /// the screen. Call it before the window is shown.
    void takePlace(const QByteArray &geometry);

    /// Offers the drafts that earlier runs have left. Call once, when the window is shown.
    void offerDrafts();

    /// Makes the removal of a quote a step that can be undone.
    void keepRemoval(qint64 quoteID);

    /// Reads the quotes and clients again.
    void refresh();
    void setLanguage(Language language);
    void setDark(bool dark);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void serverAnswers(bool answers);

    void connectActions();
    void setUpMenus();
    void setUpRibbon();
    void setUpSession();
    void showTexts();
    void arrangeRibbon();
    void arrangeMenus();
    void updateActions();
    void updateTitles();

    void newQuote();
    void openChosen();
    void duplicateChosen();
    void deleteChosen();
    void showDeleted();
    void showClients();
    void importCatalogue();
    void help();
    void about();

    void clickModule(const QString &name, qint32 index);

    CatalogueDatabase &m_catalogue;
    QuoteSession m_session;
    StoreWatch m_watch;
    StartPage *m_startPage;
    QActionGroup m_sortActions;
    QActionGroup m_languageActions;
    QUndoStack m_listSteps; ///< of the start page; each quote has steps of its own
    RibbonGroup *m_quotesGroup = nullptr;
    RibbonGroup *m_dataGroup = nullptr;
    RibbonGroup *m_quoteGroup = nullptr;
    RibbonGroup *m_pagesGroup = nullptr;
    RibbonGroup *m_stepsGroup = nullptr;
    RibbonGroup *m_moduleGroup = nullptr;
    QLabel *m_serverState;
    QHash<qint64, QString> m_copyKeys; ///< keys of copies that may or may not have been made, by quote
    bool m_offeredDrafts = false;
    std::unique_ptr<OpenQuotes> m_quotes; ///< destroyed first, because closing quotes changes the window
};

} // namespace QuoteDesk
