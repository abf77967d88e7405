#include "desk/MainWindow.h"

#include "catalogue/CatalogueDatabase.h"
#include "desk/AboutDialog.h"
#include "desk/CataloguePlace.h"
#include "desk/ClientList.h"
#include "desk/ClientsPage.h"
#include "desk/DeletedQuotes.h"
#include "desk/DraftRecovery.h"
#include "desk/ErrorDialog.h"
#include "desk/FirstStart.h"
#include "desk/HelpWindow.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/OpenQuotes.h"
#include "desk/QuotePreview.h"
#include "desk/ShortcutList.h"
#include "desk/StartPage.h"
#include "look/Appearance.h"
#include "look/Banner.h"
#include "quote/EditedQuote.h"
#include "quote/PlainText.h"
#include "quote/ProductEditors.h"
#include "quote/QuoteReport.h"
#include "quote/ServerWait.h"
#include "quote/SmallScreen.h"

#include "database/Database.h"

#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"
#include "toolkit/TApplication.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTabBar>
#include <QToolButton>
#include <QUndoCommand>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The time for which a failed check of the store is displayed, in milliseconds.
constexpr int FailureMs = 3000;

// A window below these sizes has the rail, and lower bars. A page does not grow beyond the last one: longer
// lines are hard to follow.
constexpr int NarrowWidth = 1100;
constexpr int LowHeight = 680;
constexpr int WidestPage = 1500;

constexpr auto ServerTopic = "server";
constexpr auto DraftTopic = "drafts";
constexpr auto ListTopic = "list";
constexpr auto SaveTopic = "save";

/// The removal of a quote from the list.
class RemovedQuote : public QUndoCommand
{
public:
    RemovedQuote(MainWindow &window, StoreWorker &store, qint64 quoteID)
        : QUndoCommand(MainWindow::tr("Delete Quote")), m_window(window), m_store(store), m_quoteID(quoteID)
    {
    }
    void undo() override
    {
        bool mayComeBack = true;
        const bool isBack = attempt(&m_window, [&] {
            try {
                fetch(m_store, &m_window,
                      [quoteID = m_quoteID](QuoteStore &store) { store.restore(quoteID); });
            } catch (const QuoteGone &) {
                mayComeBack = false;
                throw;
            }
        });
        if (isBack) {
            attempt(&m_window, [this] {
                m_window.refresh();
                m_window.startPage()->chooseQuote(m_quoteID);
                m_window.banners->showBanner({BannerKind::Ok,
                                              MainWindow::tr("The quote has been restored"),
                                              {},
                                              {},
                                              QLatin1StringView(ListTopic)});
            });
            return;
        }
        // A failed undo stays available for another attempt, until the program ends and the quote is deleted.
        setObsolete(true);
        if (mayComeBack)
            QMetaObject::invokeMethod(
                &m_window, [&window = m_window, quoteID = m_quoteID] { window.keepRemoval(quoteID); },
                Qt::QueuedConnection);
    }
    void redo() override
    {
        // QUndoStack calls redo() when the command is pushed; the quote is already removed then.
        if (!std::exchange(m_done, true))
            return;
        const auto remove = [quoteID = m_quoteID](QuoteStore &store) { store.remove(quoteID); };
        if (!attempt(&m_window, [&] { fetch(m_store, &m_window, remove); }))
            setObsolete(true);
        attempt(&m_window, [this] { m_window.refresh(); });
    }

private:
    MainWindow &m_window;
    StoreWorker &m_store;
    qint64 m_quoteID;
    bool m_done = false;
};

/// QTabBar names its scroll buttons only once, in the language of that moment.
void nameScrollButtons(const QWidget &window)
{
    for (const QTabBar *const bar : window.findChildren<QTabBar *>()) {
        for (QToolButton *const button :
             bar->findChildren<QToolButton *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (button->objectName() == u"ScrollLeftButton"_s)
                button->setAccessibleName(QTabBar::tr("Scroll Left"));
            else if (button->objectName() == u"ScrollRightButton"_s)
                button->setAccessibleName(QTabBar::tr("Scroll Right"));
        }
    }
}

} // namespace

MainWindow::MainWindow(StoreWorker &store, CatalogueDatabase &catalogue, CatalogueProviders &providers,
                       const Options &options)
    : m_catalogue(catalogue), m_session(store, catalogue, providers), m_watch(m_session, catalogue),
      m_startPage(new StartPage), m_clientsPage(new ClientsPage(m_session)),
      m_cataloguePage(new CataloguePlace), m_sortActions(this), m_languageActions(this),
      m_countLabel(new QLabel), m_catalogueLabel(new QLabel), m_unsavedLabel(new QLabel)
{
    setupUi(this);
    givePictures();
    buildPages();
    m_quotes = std::make_unique<OpenQuotes>(m_session, *pages);
    m_settings = std::make_unique<SettingsKeeper>(*this);
    setUpMenus();
    m_places.push_back({m_startPage, u"quotes"_s, {{actOpen}, {actDuplicate}, {actDelete}}, actStartPage});
    pages->addPlace(m_startPage);
    actStartPage->setShortcuts({Qt::ALT | Qt::Key_1, Qt::ALT | Qt::Key_Home});
    addPlace(m_clientsPage, u"client"_s);
    addPlace(m_cataloguePage, u"funds"_s);
    connectActions();
    connectPlaces();
    connectSideBar();
    connectQuotes();
    setUpSession();
    m_startPage->setSession(m_session);
    m_cataloguePage->setCatalogue(catalogue, providers);
    countFunds();
    refresh();
    m_watch.start();
    if (options.dark)
        setDark(true);
    showTexts();
    m_startPage->edFind->setFocus();
}

MainWindow::~MainWindow()
{
    // A stack with steps reports their end when it is destroyed, and the open quotes would be gone by then.
    m_listSteps.clear();
}

void MainWindow::setUpMenus()
{
    const std::array sortColumns{QuoteColumn::Client, QuoteColumn::Product, QuoteColumn::Description,
                                 QuoteColumn::Amount, QuoteColumn::State,   QuoteColumn::Changed};
    for (const QuoteColumn column : sortColumns) {
        QAction *const action = mnuSort->addAction(QString());
        action->setParent(this);
        action->setObjectName(u"actSort%1"_s.arg(static_cast<int>(column) + 1));
        action->setShortcut(
            QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(column))));
        m_sortActions.addAction(action);
        connect(action, &QAction::triggered, this,
                [this, column] { attempt(this, [this, column] { m_startPage->sortBy(column); }); });
    }
    for (const Language language : allLanguages()) {
        QAction *const action = mnuLanguage->addAction(languageName(language));
        action->setCheckable(true);
        action->setChecked(language == currentLanguage());
        action->setData(languageCode(language));
        m_languageActions.addAction(action);
        connect(action, &QAction::triggered, this, [this, language] {
            attempt(this, [this, language] {
                Settings settings = m_settings->current();
                settings.language = language;
                m_settings->choose(settings);
            });
        });
    }
    // Only in the list of quotes, because elsewhere the key deletes text.
    actDelete->setShortcutContext(Qt::WidgetShortcut);
    m_startPage->lvQuotes->addActions({actOpen, actDuplicate, actDelete});
    const QList<QAction *> file = mnuFile->actions();
    mnuFile->insertAction(file.at(file.indexOf(actDelete) + 1), m_startPage->actDeleted);
    m_startPage->lvQuotes->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_startPage->preview()->setMoreActions({actDuplicate, actDelete});
    mnuView->insertAction(actRefresh, m_startPage->mnuColumns->menuAction());
    mnuView->insertAction(actRefresh, m_startPage->actPreview);
    new HelpKey(this);
}

void MainWindow::givePictures()
{
    const std::array pictures{std::pair{actNew, "new"},
                              std::pair{actOpen, "open"},
                              std::pair{actDuplicate, "duplicate"},
                              std::pair{actDelete, "clear"},
                              std::pair{actClients, "client"},
                              std::pair{actImport, "import"},
                              std::pair{actSettings, "settings"},
                              std::pair{actPrevious, "previous"},
                              std::pair{actNext, "next"},
                              std::pair{actCloseQuote, "close"},
                              std::pair{actUndo, "undo"},
                              std::pair{actRedo, "redo"}};
    for (const auto &[action, picture] : pictures)
        action->setIcon(GlyphIcon(QLatin1StringView(picture)));
}

/// The side bar, and beside it the command bar, the banners and the page in front.
void MainWindow::buildPages()
{
    sideBar = new SideBar(actNew, centralwidget);
    commandBar = new CommandBar(centralwidget);
    banners = new BannerStack(centralwidget);
    pages = new ModuleStack(centralwidget);
    sideBar->setObjectName(u"sideBar"_s);
    commandBar->setObjectName(u"commandBar"_s);
    banners->setObjectName(u"banners"_s);
    pages->setObjectName(u"pages"_s);
    sideBar->addCommand(actImport);
    sideBar->addCommand(actSettings);
    commandBar->setWidestContent(WidestPage);
    banners->setMaximumWidth(WidestPage);
    pages->setMaximumWidth(WidestPage);
    const auto column = [](QBoxLayout *layout) {
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        return layout;
    };
    auto *const window = column(new QHBoxLayout(centralwidget));
    auto *const page = column(new QVBoxLayout);
    window->addWidget(sideBar);
    window->addLayout(page, 1);
    page->addWidget(commandBar);
    // The rest of a very wide window stays empty.
    for (QWidget *const part : QList<QWidget *>{banners, pages}) {
        auto *const row = column(new QHBoxLayout);
        row->addWidget(part, 1);
        row->addStretch(0);
        page->addLayout(row, part == pages ? 1 : 0);
    }
    for (QLabel *const label : {m_countLabel, m_catalogueLabel, m_unsavedLabel})
        label->setTextFormat(Qt::PlainText);
    m_countLabel->setObjectName(u"lblStatusCount"_s);
    m_catalogueLabel->setObjectName(u"lblStatusCatalogue"_s);
    m_unsavedLabel->setObjectName(u"lblStatusUnsaved"_s);
    statusbar->addWidget(m_countLabel, 1);
    statusbar->addPermanentWidget(m_catalogueLabel);
    statusbar->addPermanentWidget(m_unsavedLabel);
    statusbar->setSizeGripEnabled(false);
}

void MainWindow::addPlace(QWidget *page, const QString &picture, const QList<BarCommand> &commands)
{
    auto *const action = new QAction(this);
    const auto number = static_cast<int>(m_places.size()) + 1;
    action->setObjectName(u"actPlace%1"_s.arg(number));
    action->setIcon(GlyphIcon(picture));
    action->setShortcut(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + number));
    connect(action, &QAction::triggered, this, [this, page] {
        pages->setCurrentWidget(page);
        enterPage();
    });
    const QList<QAction *> view = mnuView->actions();
    mnuView->insertAction(view.at(view.indexOf(m_places.back().action) + 1), action);
    m_places.push_back({page, picture, commands, action});
    pages->addPlace(page);
    connect(page, &QWidget::windowTitleChanged, this, [this] {
        updateSideBar();
        updateHead();
    });
    updateSideBar();
}

void MainWindow::setPlaceCount(const QWidget *page, int count)
{
    for (Place &place : m_places) {
        if (place.page == page && std::exchange(place.count, count) != count)
            updateSideBar();
    }
}

void MainWindow::connectActions()
{
    const auto bind = [this](QAction *action, void (MainWindow::*work)()) {
        connect(action, &QAction::triggered, this,
                [this, work] { attempt(this, [this, work] { (this->*work)(); }); });
    };
    bind(actNew, &MainWindow::newQuote);
    bind(actOpen, &MainWindow::openChosen);
    bind(actDuplicate, &MainWindow::duplicateChosen);
    bind(actDelete, &MainWindow::deleteChosen);
    bind(m_startPage->actDeleted, &MainWindow::showDeleted);
    bind(actClients, &MainWindow::showClients);
    bind(actImport, &MainWindow::importCatalogue);
    bind(actAbout, &MainWindow::about);
    bind(actHelp, &MainWindow::help);
    bind(actShortcuts, &MainWindow::showShortcuts);
    connect(actSettings, &QAction::triggered, this,
            [this] { attempt(this, [this] { m_settings->edit(); }); });
    connect(actRefresh, &QAction::triggered, this,
            [this] { attempt(this, [this] { m_watch.refreshAll(); }); });
    connect(actCloseQuote, &QAction::triggered, this,
            [this] { attempt(this, [this] { pages->closeCurrent(); }); });
    connect(actStartPage, &QAction::triggered, this, [this] {
        pages->setCurrentIndex(0);
        m_startPage->lvQuotes->setFocus();
    });
    connect(actNextQuote, &QAction::triggered, pages, [this] { pages->step(1); });
    connect(actPreviousQuote, &QAction::triggered, pages, [this] { pages->step(-1); });
    connect(actNextArea, &QAction::triggered, this, [this] { goToNextArea(1); });
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F6, this), &QShortcut::activated, this,
            [this] { goToNextArea(-1); });
    connect(actRail, &QAction::triggered, this, &MainWindow::setRail);
    connect(actFind, &QAction::triggered, this, &MainWindow::showSearch);
    connect(actQuit, &QAction::triggered, this, &QWidget::close);
    connect(actDark, &QAction::triggered, this, [this](bool dark) {
        Settings settings = m_settings->current();
        settings.colours = dark ? ColourScheme::Dark : ColourScheme::Light;
        m_settings->choose(settings);
    });
    connect(actUndo, &QAction::triggered, &m_listSteps, &QUndoStack::undo);
    connect(actRedo, &QAction::triggered, &m_listSteps, &QUndoStack::redo);

    connect(m_startPage, &StartPage::openWanted, this, [this] { attempt(this, [this] { openChosen(); }); });
    connect(m_startPage, &StartPage::quoteChosen, this, [this] {
        updateActions();
        updateStatus();
    });
    connect(&m_listSteps, &QUndoStack::indexChanged, this, &MainWindow::updateActions);
    actRedo->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    connectGuarded(pages, &QStackedWidget::currentChanged, this, [this] {
        // Next and Previous belong to the quote in front.
        if (const QuoteEditor *const editor = currentEditor(); editor && editor->form())
            editor->form()->fraNavBar->UpdateTB();
        arrangePage();
        // After a quote was closed the focus may be anywhere; the list of quotes should get the next key.
        if (pages->currentIndex() == 0 && !m_startPage->isAncestorOf(QApplication::focusWidget()) &&
            !sideBar->lvPages->hasFocus())
            m_startPage->lvQuotes->setFocus();
    });
}

void MainWindow::connectPlaces()
{
    const auto guarded = [this](void (MainWindow::*work)()) {
        return [this, work] { attempt(this, [this, work] { (this->*work)(); }); };
    };
    connect(m_startPage, &StartPage::newQuoteWanted, this, guarded(&MainWindow::newQuote));
    connect(m_startPage->firstStart(), &FirstStart::importWanted, this,
            guarded(&MainWindow::importCatalogue));
    connect(m_startPage->firstStart(), &FirstStart::tryWanted, this, guarded(&MainWindow::beginAtOnce));
    connect(m_startPage->preview(), &QuotePreview::told, banners, [this](const QString &sentence) {
        banners->showBanner({BannerKind::Ok, shortText(sentence, 300), {}, {}, QLatin1StringView(ListTopic)});
    });
    connect(m_cataloguePage, &CataloguePlace::newWanted, this, guarded(&MainWindow::newQuote));
    connect(m_clientsPage, &ClientsPage::clientsChanged, this, guarded(&MainWindow::refresh));
    connect(m_clientsPage, &ClientsPage::quoteWanted, this,
            [this](qint64 quoteID) { attempt(this, [&] { m_quotes->open(quoteID); }); });
    connect(&m_watch, &StoreWatch::clientsRead, this, [this](const QList<Client> &clients) {
        attempt(this, [&] {
            m_clientsPage->setClients(clients);
            m_startPage->setClientCount(static_cast<int>(clients.size()));
            setPlaceCount(m_clientsPage, static_cast<int>(clients.size()));
        });
    });
    connect(&m_watch, &StoreWatch::unreachable, this, [this] { serverAnswers(false); });
}

void MainWindow::connectSideBar()
{
    connect(sideBar, &SideBar::pageWanted, pages, [this](int page) { pages->setCurrentIndex(page); });
    connect(sideBar, &SideBar::leftForPage, this, &MainWindow::enterPage);
    connect(sideBar, &SideBar::closeWanted, this,
            [this](int quote) { closeQuotes(pages->modules().mid(quote, 1)); });
    connect(sideBar, &SideBar::closeOthersWanted, this, [this](int quote) {
        QList<QWidget *> windows = pages->modules();
        windows.removeAt(quote);
        closeQuotes(windows);
    });
    connect(pages, &ModuleStack::modulesChanged, this, &MainWindow::updateSideBar);
}

void MainWindow::connectQuotes()
{
    const auto show = [this](void (MainWindow::*work)()) {
        return [this, work] { attempt(this, [this, work] { (this->*work)(); }); };
    };
    connect(m_quotes.get(), &OpenQuotes::opened, this, show(&MainWindow::arrangePage));
    connect(m_quotes.get(), &OpenQuotes::titleChanged, this, show(&MainWindow::updateHead));
    connect(m_quotes.get(), &OpenQuotes::listChanged, this, show(&MainWindow::refresh));
    connect(m_quotes.get(), &OpenQuotes::allSaved, this, &QWidget::close);
    connect(m_quotes.get(), &OpenQuotes::told, statusbar, &QStatusBar::showMessage);
    connect(m_quotes.get(), &OpenQuotes::saveFailed, this, &MainWindow::offerSaveAgain);
    connect(&m_session, &QuoteSession::quoteSaved, banners,
            [this] { banners->dismiss(QLatin1StringView(SaveTopic)); });
    connect(m_quotes.get(), &OpenQuotes::done, banners, [this](const QString &sentence) {
        banners->showBanner({BannerKind::Ok, sentence, {}, {}, {}});
    });
}

void MainWindow::offerSaveAgain(QuoteEditor *editor, const QString &reason)
{
    const auto again = [this, alive = QPointer(editor)] {
        if (alive)
            m_quotes->save(*alive);
    };
    banners->showBanner({BannerKind::Error,
                         tr("\"%1\" is not saved: %2").arg(shortText(editor->title()), reason),
                         tr("Try again"), again, QLatin1StringView(SaveTopic)});
}

/// Closes pages until one of them stays open.
void MainWindow::closeQuotes(const QList<QWidget *> &windows)
{
    attempt(this, [&] {
        for (QWidget *const window : windows) {
            if (!pages->closePage(window))
                return;
        }
    });
}

void MainWindow::setUpSession()
{
    const auto show = [this](void (MainWindow::*work)()) {
        return [this, work] { attempt(this, [this, work] { (this->*work)(); }); };
    };
    connect(&m_session, &QuoteSession::quoteSaved, this, show(&MainWindow::refresh));
    connect(&m_session, &QuoteSession::catalogueChanged, m_startPage, [this] {
        attempt(this, [this] {
            m_cataloguePage->refreshCatalogue();
            countFunds();
        });
    });
    connect(&m_watch, &StoreWatch::quotesRead, this, [this](const QList<QuoteSummary> &quotes) {
        attempt(this, [&] {
            m_startPage->setQuotes(quotes);
            m_clientsPage->setQuotes(quotes);
            setPlaceCount(m_startPage, static_cast<int>(quotes.size()));
            updateStatus();
            updateActions();
        });
    });
    connect(&m_watch, &StoreWatch::failed, this,
            [this](const QString &reason) { statusbar->showMessage(shortText(reason, 300), FailureMs); });
    connectGuarded(&m_session.store(), &StoreWorker::answering, this,
                   [this](bool answers) { serverAnswers(answers); });
    connect(&m_session.drafts(), &DraftKeeper::failed, this, [this](const QString &reason) {
        // The adviser is typing, so no dialog interrupts; a save will report the problem, too.
        banners->showBanner(
            {BannerKind::Warn,
             shortText(tr("Unsaved changes cannot be protected against a crash: %1 Save your quotes soon.")
                           .arg(reason),
                       300),
             {},
             {},
             QLatin1StringView(DraftTopic)});
    });
    const auto click = [this](const QString &name, qint32 index) { clickModule(name, index); };
    m_session.nextItem = std::make_shared<TRibbonItem>(actNext, u"Next"_s, 0, click);
    m_session.previousItem = std::make_shared<TRibbonItem>(actPrevious, u"Previous"_s, 0, click);
}

void MainWindow::clickModule(const QString &name, qint32 index)
{
    if (const IZelModulePtr module = pages->activeModule())
        SafecallCheck(module->ItemClicked(name, index));
}

void MainWindow::showTexts()
{
    m_startPage->setWindowTitle(tr("Quotes"));
    m_clientsPage->setWindowTitle(tr("Clients"));
    m_cataloguePage->setWindowTitle(tr("Funds"));
    const std::array columns{tr("&Client"), tr("&Product"), tr("&Description"),
                             tr("&Amount"), tr("&State"),   tr("C&hanged")};
    const QList<QAction *> sorts = m_sortActions.actions();
    for (qsizetype i = 0; i < sorts.size(); ++i)
        sorts.at(i)->setText(columns.at(static_cast<std::size_t>(i)));
    m_quotes->showTitles();
    updateSideBar();
    arrangePage();
}

/// Shows the commands, the title and the state of the page in front.
void MainWindow::arrangePage()
{
    const QuoteEditor *const editor = currentEditor();
    if (const QuoteForm *const form = editor ? editor->form() : nullptr) {
        commandBar->setCommands(
            {{form->actUndo, false}, {form->actRedo, false}, {}, {form->actSave}, {form->actPrint}},
            form->actPdf);
    } else {
        for (const Place &place : m_places) {
            if (place.page == pages->currentWidget())
                commandBar->setCommands(place.commands);
        }
    }
    sideBar->setCurrentPage(pages->currentIndex());
    arrangeMenus();
    updateActions();
    updateHead();
}

void MainWindow::arrangeMenus()
{
    // The commands of a quote belong to its form; the menus show those of the quote in front.
    mnuQuote->clear();
    mnuEdit->clear();
    mnuFunds->clear();
    const QuoteEditor *const editor = currentEditor();
    if (const QuoteForm *const form = editor ? editor->form() : nullptr) {
        mnuQuote->addActions({form->actSave, form->actPrint, form->actPdf});
        mnuQuote->addSeparator();
        mnuEdit->addActions({form->actUndo, form->actRedo});
        mnuEdit->addSeparator();
        mnuEdit->addActions({form->actCopyFunds, form->actPasteFunds});
        mnuFunds->addActions(form->fundActions);
        mnuFunds->addSeparator();
        mnuFunds->addAction(form->actFactSheet);
    } else {
        mnuEdit->addActions({actUndo, actRedo});
    }
    mnuFunds->menuAction()->setVisible(editor != nullptr);
    mnuQuote->addActions({actPrevious, actNext});
    if (const QuoteForm *const form = editor ? editor->form() : nullptr)
        mnuQuote->addActions({form->actPreviousPoint, form->actNextPoint});
    mnuQuote->addSeparator();
    mnuQuote->addActions({actNextQuote, actPreviousQuote, actCloseQuote});
    mnuEdit->addSeparator();
    mnuEdit->addAction(actFind);
}

void MainWindow::updateActions()
{
    const bool isQuote = currentEditor() != nullptr;
    const bool atStart = pages->currentWidget() == m_startPage;
    const bool chosen = atStart && m_startPage->chosenQuote() != 0;
    for (QAction *const action : {actOpen, actDuplicate, actDelete})
        action->setEnabled(chosen);
    actCloseQuote->setEnabled(isQuote);
    for (QAction *const action : {actNextQuote, actPreviousQuote})
        action->setEnabled(pages->count() > pages->placeCount());
    // On other pages the key is for what they list.
    actFind->setEnabled(atStart || pages->currentWidget() == m_clientsPage);
    if (!isQuote) {
        actNext->setEnabled(false);
        actPrevious->setEnabled(false);
    }
    // A quote's page has its own steps with the same keys.
    actUndo->setEnabled(atStart && m_listSteps.canUndo());
    actRedo->setEnabled(atStart && m_listSteps.canRedo());
    const auto tip = [](const QString &what, const QString &text, const QAction *action) {
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        return text.isEmpty() ? u"%1 (%2)"_s.arg(what, keys) : u"%1: %2 (%3)"_s.arg(what, text, keys);
    };
    actUndo->setToolTip(tip(tr("Undo"), m_listSteps.undoText(), actUndo));
    actRedo->setToolTip(tip(tr("Redo"), m_listSteps.redoText(), actRedo));
}

/// Shows the title and the state of the page in front.
void MainWindow::updateHead()
{
    const QString program = u"Quote Desk"_s;
    const QuoteEditor *const editor = currentEditor();
    updateStatus();
    if (!editor) {
        setWindowTitle(program);
        commandBar->setHead({pages->currentWidget() ? pages->currentWidget()->windowTitle() : QString()});
        return;
    }
    const QString title = shortText(pages->pageTitle(pages->currentWidget()));
    setWindowTitle(u"%1 - %2"_s.arg(title, program));
    const SplitState state = editor->edited()->splitState();
    const ChipText chip = state.isOver()        ? chipOf(ChipState::TooMuch, tr("Too much"))
                          : state.isAllocated() ? chipOf(ChipState::Allocated, tr("Allocated"))
                                                : chipOf(ChipState::Draft, tr("Draft"));
    const QString product = shortText(editor->product().name);
    commandBar->setHead({title, chip, title == product ? QString() : product});
}

void MainWindow::updateSideBar()
{
    QList<SidePlace> places;
    for (const Place &place : m_places) {
        places.append({place.picture, place.page->windowTitle(), place.count});
        QString text = place.page->windowTitle();
        if (place.action != actStartPage)
            place.action->setText(text.replace(u'&', u"&&"_s));
    }
    QList<SideQuote> quotes;
    for (const QWidget *const window : pages->modules()) {
        SideQuote quote{{}, shortText(pages->pageTitle(window)), pages->isPageModified(window)};
        for (const QuoteEditor *const editor : m_quotes->editors()) {
            if (editor->form() != window)
                continue;
            const ListedClient *const client = m_session.findClient(editor->edited()->clientID());
            quote.client = client ? shortText(client->DisplayText()) : tr("No investor yet");
            const QString description = editor->edited()->description().simplified();
            quote.title = shortText(description.isEmpty() ? editor->product().name : description);
        }
        quotes.append(quote);
    }
    sideBar->setPlaces(places);
    sideBar->setQuotes(quotes);
    sideBar->setCurrentPage(pages->currentIndex());
    updateStatus();
    updateActions();
}

void MainWindow::countFunds()
{
    m_fundCount = m_catalogue.database().single(u"SELECT count(*) FROM funds"_s).toInt();
    setPlaceCount(m_cataloguePage, m_fundCount);
    m_startPage->setCatalogue(m_catalogue, m_fundCount);
    updateStatus();
}

/// Shows what the page in front is about at the left of the status bar, and what concerns all at its right.
void MainWindow::updateStatus()
{
    qsizetype unsaved = 0;
    for (const QWidget *const window : pages->modules())
        unsaved += pages->isPageModified(window) ? 1 : 0;
    m_unsavedLabel->setText(unsaved > 0 ? tr("%n quote(s) not saved", nullptr, static_cast<int>(unsaved))
                                        : QString());
    m_unsavedLabel->setVisible(unsaved > 0);
    if (const QuoteEditor *const editor = currentEditor()) {
        m_countLabel->setText(QuoteReport::stateText(editor->edited()->splitState(), true));
        const QDateTime saved = editor->edited()->lastSaved().toLocalTime();
        const QString format = saved.date() == QDate::currentDate() ? u"HH:mm"_s : u"d MMM yyyy HH:mm"_s;
        m_catalogueLabel->setText(saved.isValid() ? tr("Last saved %1").arg(QLocale().toString(saved, format))
                                                  : tr("Not saved yet"));
        return;
    }
    m_countLabel->setText(m_startPage->countText());
    m_catalogueLabel->setText(m_fundCount == 0 ? tr("No catalogue yet")
                                               : tr("%n fund(s) in the catalogue", nullptr, m_fundCount));
}

/// Gives the focus to the page in front: to where it was there last, or to the first field.
void MainWindow::enterPage()
{
    const QWidget *const page = pages->currentWidget();
    QWidget *target = page == m_startPage ? m_startPage->lvQuotes : page->focusWidget();
    if (!target || !target->isVisible()) {
        for (target = page->nextInFocusChain(); target != page; target = target->nextInFocusChain()) {
            if (page->isAncestorOf(target) && (target->focusPolicy() & Qt::TabFocus) && target->isVisible() &&
                target->isEnabled())
                break;
        }
    }
    target->setFocus(Qt::TabFocusReason);
}

QuoteEditor *MainWindow::currentEditor() const
{
    return m_quotes->current();
}

void MainWindow::refresh()
{
    m_watch.refresh();
}

void MainWindow::offerDrafts()
{
    if (!std::exchange(m_offeredDrafts, true))
        QuoteDesk::offerDrafts(m_session, *m_quotes, this);
}

void MainWindow::serverAnswers(bool answers)
{
    if (!answers) {
        banners->showBanner(
            {BannerKind::Error,
             tr("The office's server does not answer. Your changes are kept on this computer."),
             tr("Try again"), [this] { refresh(); }, QLatin1StringView(ServerTopic)});
        return;
    }
    banners->showBanner(
        {BannerKind::Ok, tr("The office's server answers again"), {}, {}, QLatin1StringView(ServerTopic)});
    refresh();
}

void MainWindow::newQuote()
{
    NewQuoteDialog dialog(m_session, m_cataloguePage->chosenProduct(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    Quote quote;
    quote.productID = dialog.productID();
    quote.clientID = dialog.clientID();
    m_quotes->begin(quote);
}

/// Begins a quote for the first product, without a question.
void MainWindow::beginAtOnce()
{
    for (const Product &product : m_catalogue.products()) {
        if (!hasProductEditor(product.productID))
            continue;
        Quote quote;
        quote.productID = product.productID;
        m_quotes->begin(quote);
        return;
    }
}

/// Leads to the search field of the page in front, or else to that of the quotes.
void MainWindow::showSearch()
{
    SearchField *field = m_clientsPage->list()->edFind;
    if (pages->currentWidget() != m_clientsPage) {
        pages->setCurrentWidget(m_startPage);
        field = m_startPage->edFind;
    }
    field->setFocus();
    field->selectAll();
}

void MainWindow::openChosen()
{
    if (const qint64 quoteID = m_startPage->chosenQuote())
        m_quotes->open(quoteID);
}

void MainWindow::duplicateChosen()
{
    const qint64 quoteID = m_startPage->chosenQuote();
    if (quoteID == 0)
        return;
    QString &key = m_copyKeys[quoteID];
    if (key.isEmpty())
        key = QuoteStore::newSaveKey();
    struct Copied {
        qint64 quoteID = 0;
        StoreWatch::Lists lists;
    };
    const auto [copy, lists] = fetch(m_session.store(), this, [quoteID, key](QuoteStore &store) {
        const qint64 made = store.duplicate(quoteID, key);
        return Copied{made, StoreWatch::read(store)};
    });
    m_copyKeys.remove(quoteID);
    m_watch.show(lists);
    m_startPage->chooseQuote(copy);
    banners->showBanner(
        {BannerKind::Ok, tr("The quote has been copied"), {}, {}, QLatin1StringView(ListTopic)});
}

void MainWindow::deleteChosen()
{
    const qint64 quoteID = m_startPage->chosenQuote();
    if (quoteID == 0 || !m_quotes->close(quoteID))
        return;
    fetch(m_session.store(), this, [quoteID](QuoteStore &store) { store.remove(quoteID); });
    keepRemoval(quoteID);
    refresh();
    banners->showBanner({BannerKind::Ok,
                         tr("The quote has been deleted. Undo brings it back, and so does Deleted Quotes for "
                            "%1 days.")
                             .arg(QuoteStore::DaysInBin),
                         tr("Undo"), [this] { m_listSteps.undo(); }, QLatin1StringView(ListTopic)});
}

void MainWindow::showDeleted()
{
    DeletedQuotesDialog dialog(m_session, this);
    dialog.exec();
    m_watch.show(fetch(m_session.store(), this, &StoreWatch::read));
    m_startPage->chooseQuote(dialog.broughtBack());
}

void MainWindow::keepRemoval(qint64 quoteID)
{
    m_listSteps.push(new RemovedQuote(*this, m_session.store(), quoteID));
}

void MainWindow::showClients()
{
    pages->setCurrentWidget(m_clientsPage);
    showSearch();
}

void MainWindow::importCatalogue()
{
    QFileDialog dialog(this, tr("Import a catalogue"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({tr("Catalogues (*.csv *.csv.gz)"), tr("All files (*)")});
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    if (importWithProgress(m_session.store(), dialog.selectedFiles().constFirst(), this)) {
        m_watch.refreshAll();
        banners->showBanner({BannerKind::Ok, tr("The catalogue has been imported"), {}, {}, {}});
    } else {
        banners->showBanner(
            {BannerKind::Info, tr("The import was cancelled; the catalogue has not changed"), {}, {}, {}});
    }
}

void MainWindow::help()
{
    const QuoteEditor *const editor = currentEditor();
    HelpWindow::open(editor && editor->form() ? static_cast<QWidget *>(editor->form()) : this);
}

void MainWindow::showShortcuts()
{
    ShortcutList(allCommands(*this), m_session.adviser(), this).exec();
}

void MainWindow::about()
{
    AboutDialog(m_session, this).exec();
}

void MainWindow::showEvent(QShowEvent *event)
{
    arrangeWidth();
    QMainWindow::showEvent(event);
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    arrangeWidth();
    QMainWindow::resizeEvent(event);
}

/// Fits the bars into the window.
void MainWindow::arrangeWidth()
{
    const bool narrow = width() < NarrowWidth;
    // All commands are in the menus, too.
    commandBar->setVisible(!isLowScreen(*this));
    commandBar->setTight(height() < LowHeight, narrow);
    sideBar->setRail(m_rail.value_or(narrow));
    actRail->setChecked(sideBar->isRail());
}

void MainWindow::setRail(bool rail)
{
    m_rail = rail == (width() < NarrowWidth) ? std::nullopt : std::optional(rail);
    arrangeWidth();
}

/// Moves the focus to the next part of the window, of the side bar and the parts of the page.
void MainWindow::goToNextArea(int step)
{
    QList<QWidget *> areas{sideBar->lvPages, pages->currentWidget()};
    if (QWidget *const preview = pages->currentWidget()->findChild<QWidget *>(u"preview"_s);
        preview && preview->isVisible())
        areas.append(preview);
    // The last area that has the focus, because the preview is a part of the page.
    qsizetype now = -1;
    for (qsizetype i = 0; i < areas.size(); ++i) {
        const QWidget *const focus = QApplication::focusWidget();
        if (focus && (areas.at(i) == focus || areas.at(i)->isAncestorOf(focus)))
            now = i;
    }
    const qsizetype next = now < 0 ? 0 : (now + step + areas.size()) % areas.size();
    if (next == 1)
        enterPage();
    else
        areas.at(next)->setFocus(Qt::TabFocusReason);
}

void MainWindow::takePlace(const QByteArray &geometry)
{
    arrangeWidth();
    const bool hasPlace = restoreGeometry(geometry);
    if (isMaximized() || isFullScreen())
        return;
    const QRect available = screen()->availableGeometry();
    const QRect room = available.adjusted(0, style()->pixelMetric(QStyle::PM_TitleBarHeight), 0, 0);
    resize(size().boundedTo(room.size()));
    // Without a stored position the system places the window.
    if (hasPlace && !room.contains(this->geometry()))
        move(available.topLeft());
}

void MainWindow::setLanguage(Language language)
{
    if (language == currentLanguage())
        return;
    setCurrentLanguage(language);
    m_catalogue.setAfrikaans(language == Language::Afrikaans);
    for (QAction *const action : m_languageActions.actions())
        action->setChecked(action->data() == languageCode(language));
}

void MainWindow::setDark(bool dark)
{
    actDark->setChecked(dark);
    Appearance::apply(dark ? ColourScheme::Dark : ColourScheme::Light, Appearance::textSize());
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    attempt(this, [this] {
        retranslateUi(this);
        refresh();
        // Catalogue and open quotes get the other language, too.
        Q_EMIT m_session.catalogueChanged();
        showTexts();
        nameScrollButtons(*this);
        applyShortcuts(*this);
        statusbar->clearMessage();
    });
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(m_quotes->closeAll());
}

} // namespace QuoteDesk
