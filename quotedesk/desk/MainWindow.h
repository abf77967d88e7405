#pragma once

#include "desk/CommandBar.h"
#include "desk/Language.h"
#include "desk/ModuleStack.h"
#include "desk/Options.h"
#include "desk/SettingsKeeper.h"
#include "desk/SideBar.h"
#include "desk/StoreWatch.h"
#include "quote/QuoteSession.h"

#include "ui_MainWindow.h"

#include <QActionGroup>
#include <QHash>
#include <QLabel>
#include <QMainWindow>
#include <QUndoStack>

#include <memory>
#include <optional>
#include <vector>

namespace QuoteDesk
{

class BannerStack;
class CatalogueDatabase;
class CataloguePlace;
class CatalogueProviders;
class ClientsPage;
class OpenQuotes;
class QuoteEditor;
class StartPage;

/// The main window: the side bar with the places and the open quotes, the command bar, and the page in front.
///
/// The window never waits for a server: answers arrive later (from a file, before the call returns), and
/// until then the last known state is displayed. A banner says when the server does not answer.
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

    SideBar *sideBar;
    CommandBar *commandBar;
    BannerStack *banners; ///< below the command bar
    ModuleStack *pages;

    /// Adds a place behind the others: a page with an entry in the side bar and in the menu View, and with
    /// the key Alt and its number. Its title is the page's window title, which may change; @p picture is a
    /// name of toolkit/Glyphs. @p commands are shown in the command bar while the page is in front; they
    /// belong into a menu, too. The window owns the page.
    void addPlace(QWidget *page, const QString &picture, const QList<BarCommand> &commands = {});
    /// Sets the number beside a place; below 0 for none.
    void setPlaceCount(const QWidget *page, int count);

    StartPage *startPage() const { return m_startPage; }
    ClientsPage *clientsPage() const { return m_clientsPage; }
    CataloguePlace *cataloguePage() const { return m_cataloguePage; }
    QuoteSession &session() noexcept { return m_session; }
    /// The open quotes.
    OpenQuotes &quotes() noexcept { return *m_quotes; }
    /// The editor on the current page; nullptr on a place.
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
    /// The settings in force.
    SettingsKeeper &settings() noexcept { return *m_settings; }
    void setLanguage(Language language);
    void setDark(bool dark);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void serverAnswers(bool answers);

    /// A page that is always there.
    struct Place {
        QWidget *page;
        QString picture;
        QList<BarCommand> commands;
        QAction *action; ///< in the menu View
        int count = -1;
    };

    void buildPages();
    void connectActions();
    void connectQuotes();
    void connectPlaces();
    void connectSideBar();
    void setUpMenus();
    void setUpSession();
    void givePictures();
    void showTexts();
    void arrangePage();
    void arrangeMenus();
    void arrangeWidth();
    void updateActions();
    void updateHead();
    void updateSideBar();
    void updateStatus();
    void countFunds();
    void enterPage();
    void goToNextArea(int step);
    void setRail(bool rail);
    void offerSaveAgain(QuoteEditor *editor, const QString &reason);
    void closeQuotes(const QList<QWidget *> &windows);

    void newQuote();
    void beginAtOnce();
    void showSearch();
    void openChosen();
    void duplicateChosen();
    void deleteChosen();
    void showDeleted();
    void showClients();
    void importCatalogue();
    void help();
    void showShortcuts();
    void about();

    void clickModule(const QString &name, qint32 index);

    CatalogueDatabase &m_catalogue;
    QuoteSession m_session;
    StoreWatch m_watch;
    StartPage *m_startPage;
    ClientsPage *m_clientsPage;
    CataloguePlace *m_cataloguePage;
    QActionGroup m_sortActions;
    QActionGroup m_languageActions;
    QUndoStack m_listSteps;   ///< of the start page; each quote has steps of its own
    QLabel *m_countLabel;     ///< at the left of the status bar
    QLabel *m_catalogueLabel; ///< at its right
    QLabel *m_unsavedLabel;
    std::vector<Place> m_places;
    std::optional<bool> m_rail; ///< what the user has chosen; otherwise the width of the window decides
    int m_fundCount = 0;
    QHash<qint64, QString> m_copyKeys; ///< keys of copies that may or may not have been made, by quote
    bool m_offeredDrafts = false;
    std::unique_ptr<SettingsKeeper> m_settings;
    std::unique_ptr<OpenQuotes> m_quotes; ///< destroyed first, because closing quotes changes the window
};

} // namespace QuoteDesk
