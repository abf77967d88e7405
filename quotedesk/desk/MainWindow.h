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
    /// The quotes that are open.
    OpenQuotes &quotes() noexcept { return *m_quotes; }
    /// The editor on the current page; nullptr on the start page.
    QuoteEditor *currentEditor() const;

    /// Puts the window where it was when saveGeometry() gave @p geometry, which may be blank; never larger
    /// than the screen. Before it is shown.
    void takePlace(const QByteArray &geometry);

    /// Offers what an earlier run of the program left unsaved. Once, when the window is up.
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
    QUndoStack m_listSteps; ///< Of the start page; each quote has steps of its own.
    QPalette m_lightPalette;
    RibbonGroup *m_quotesGroup = nullptr;
    RibbonGroup *m_dataGroup = nullptr;
    RibbonGroup *m_quoteGroup = nullptr;
    RibbonGroup *m_pagesGroup = nullptr;
    RibbonGroup *m_stepsGroup = nullptr;
    RibbonGroup *m_moduleGroup = nullptr;
    QLabel *m_serverState;
    QHash<qint64, QString> m_copyKeys; ///< Of copies of which it is not known whether they were made.
    bool m_offeredDrafts = false;
    std::unique_ptr<OpenQuotes> m_quotes; ///< Goes first: its end changes what the window shows.
};

} // namespace QuoteDesk
