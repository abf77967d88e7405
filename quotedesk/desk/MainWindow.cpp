#include "desk/MainWindow.h"

#include "catalogue/CatalogueDatabase.h"
#include "desk/ClientsDialog.h"
#include "desk/DeletedQuotes.h"
#include "desk/DraftRecovery.h"
#include "desk/ErrorDialog.h"
#include "desk/HelpWindow.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/OpenQuotes.h"
#include "desk/StartPage.h"
#include "look/Appearance.h"
#include "quote/PlainText.h"
#include "quote/ProductEditors.h"
#include "quote/ServerWait.h"
#include "quote/SmallScreen.h"

#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTabBar>
#include <QToolButton>
#include <QUndoCommand>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The time for which a failed check of the store is displayed, in milliseconds.
constexpr int FailureMs = 3000;

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
                m_window.statusbar->showMessage(MainWindow::tr("The quote has been restored"), 5000);
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
      m_startPage(new StartPage), m_sortActions(this), m_languageActions(this), m_serverState(new QLabel)
{
    setupUi(this);
    m_quotes = std::make_unique<OpenQuotes>(m_session, *pages);
    m_serverState->setObjectName(u"lblServerState"_s);
    m_serverState->setTextFormat(Qt::PlainText);
    statusbar->addPermanentWidget(m_serverState);
    m_serverState->hide();
    pages->setStartPage(m_startPage, QString());
    setUpMenus();
    setUpRibbon();
    connectActions();
    setUpSession();
    m_startPage->setCatalogue(catalogue, providers);
    refresh();
    m_watch.start();
    actDark->setChecked(options.dark);
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
        connect(action, &QAction::triggered, this,
                [this, language] { attempt(this, [this, language] { setLanguage(language); }); });
    }
    // Only in the list of quotes, because elsewhere the key deletes text.
    actDelete->setShortcutContext(Qt::WidgetShortcut);
    m_startPage->lvQuotes->addActions({actOpen, actDuplicate, actDelete});
    const QList<QAction *> file = mnuFile->actions();
    mnuFile->insertAction(file.at(file.indexOf(actDelete) + 1), m_startPage->actDeleted);
    m_startPage->lvQuotes->setContextMenuPolicy(Qt::ActionsContextMenu);
    new HelpKey(this);
}

void MainWindow::setUpRibbon()
{
    const std::array pictures{std::pair{actNew, "new"},
                              std::pair{actOpen, "open"},
                              std::pair{actDuplicate, "duplicate"},
                              std::pair{actDelete, "remove"},
                              std::pair{actClients, "client"},
                              std::pair{actImport, "import"},
                              std::pair{actPrevious, "previous"},
                              std::pair{actNext, "next"},
                              std::pair{actCloseQuote, "close"},
                              std::pair{actUndo, "undo"},
                              std::pair{actRedo, "redo"}};
    for (const auto &[action, picture] : pictures)
        action->setIcon(GlyphIcon(QLatin1StringView(picture)));
    m_quotesGroup = ribbon->addGroup(u"grpQuotes"_s);
    m_dataGroup = ribbon->addGroup(u"grpData"_s);
    m_quoteGroup = ribbon->addGroup(u"grpQuote"_s);
    m_pagesGroup = ribbon->addGroup(u"grpPages"_s);
    m_stepsGroup = ribbon->addGroup(u"grpSteps"_s);
    m_moduleGroup = ribbon->addGroup(u"grpModule"_s);
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
    connect(actRefresh, &QAction::triggered, this,
            [this] { attempt(this, [this] { m_watch.refreshAll(); }); });
    connect(actCloseQuote, &QAction::triggered, this,
            [this] { attempt(this, [this] { pages->closeCurrent(); }); });
    connect(actStartPage, &QAction::triggered, this, [this] {
        pages->setCurrentIndex(0);
        m_startPage->lvQuotes->setFocus();
    });
    connect(actFind, &QAction::triggered, this, [this] {
        pages->setCurrentIndex(0);
        m_startPage->edFind->setFocus();
        m_startPage->edFind->selectAll();
    });
    connect(actQuit, &QAction::triggered, this, &QWidget::close);
    connect(actDark, &QAction::toggled, this, &MainWindow::setDark);
    connect(actUndo, &QAction::triggered, &m_listSteps, &QUndoStack::undo);
    connect(actRedo, &QAction::triggered, &m_listSteps, &QUndoStack::redo);

    connect(m_startPage, &StartPage::openWanted, this, [this] { attempt(this, [this] { openChosen(); }); });
    connect(m_startPage, &StartPage::newWanted, this, [this] { attempt(this, [this] { newQuote(); }); });
    connect(m_startPage, &StartPage::quoteChosen, this, &MainWindow::updateActions);
    connect(&m_listSteps, &QUndoStack::indexChanged, this, &MainWindow::updateActions);
    connectGuarded(pages, &QTabWidget::currentChanged, this, [this] {
        // The ribbon's Next and Previous belong to the quote in front.
        if (const QuoteEditor *const editor = currentEditor(); editor && editor->form())
            editor->form()->fraNavBar->UpdateTB();
        arrangeRibbon();
        updateTitles();
        // After a quote was closed the focus may be anywhere; the list of quotes should get the next key.
        if (!currentEditor() && !m_startPage->isAncestorOf(QApplication::focusWidget()) &&
            !pages->tabBar()->hasFocus())
            m_startPage->lvQuotes->setFocus();
    });
}

void MainWindow::setUpSession()
{
    const auto show = [this](void (MainWindow::*work)()) {
        return [this, work] { attempt(this, [this, work] { (this->*work)(); }); };
    };
    connect(&m_session, &QuoteSession::quoteSaved, this, show(&MainWindow::refresh));
    connect(&m_session, &QuoteSession::catalogueChanged, m_startPage,
            [this] { attempt(this, [this] { m_startPage->refreshCatalogue(); }); });
    connect(m_quotes.get(), &OpenQuotes::opened, this, show(&MainWindow::arrangeRibbon));
    connect(m_quotes.get(), &OpenQuotes::titleChanged, this, show(&MainWindow::updateTitles));
    connect(m_quotes.get(), &OpenQuotes::listChanged, this, show(&MainWindow::refresh));
    connect(m_quotes.get(), &OpenQuotes::allSaved, this, &QWidget::close);
    connect(m_quotes.get(), &OpenQuotes::told, statusbar, &QStatusBar::showMessage);
    connect(&m_watch, &StoreWatch::quotesRead, this, [this](const QList<QuoteSummary> &quotes) {
        attempt(this, [&] {
            m_startPage->setQuotes(quotes);
            updateActions();
        });
    });
    connect(&m_watch, &StoreWatch::failed, this,
            [this](const QString &reason) { statusbar->showMessage(shortText(reason, 300), FailureMs); });
    connectGuarded(&m_session.store(), &StoreWorker::answering, this,
                   [this](bool answers) { serverAnswers(answers); });
    connect(&m_session.drafts(), &DraftKeeper::failed, this, [this](const QString &reason) {
        // The adviser is typing, so a line in the status bar suffices; a save will report the problem in a
        // dialog.
        statusbar->showMessage(shortText(
            tr("Unsaved changes cannot be protected against a crash: %1 Save your quotes soon.").arg(reason),
            300));
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
    pages->setTabText(0, tr("Start"));
    m_serverState->setText(
        tr("The office's server does not answer. Your changes are kept on this computer."));
    pages->setAccessibleName(tr("Open quotes"));
    pages->tabBar()->setAccessibleName(tr("Open quotes"));
    ribbon->setAccessibleName(tr("Ribbon"));
    m_quotesGroup->setTitle(tr("Quotes"));
    m_dataGroup->setTitle(tr("Office"));
    m_quoteGroup->setTitle(tr("Quote"));
    m_pagesGroup->setTitle(tr("Pages"));
    m_stepsGroup->setTitle(tr("Steps"));
    m_moduleGroup->setTitle(tr("Funds"));
    const std::array columns{tr("&Client"), tr("&Product"), tr("&Description"),
                             tr("&Amount"), tr("&State"),   tr("C&hanged")};
    const QList<QAction *> sorts = m_sortActions.actions();
    for (qsizetype i = 0; i < sorts.size(); ++i)
        sorts.at(i)->setText(columns.at(static_cast<std::size_t>(i)));
    arrangeRibbon();
    m_quotes->showTitles();
    updateTitles();
}

void MainWindow::arrangeRibbon()
{
    const QuoteEditor *const editor = currentEditor();
    if (const QuoteForm *const form = editor ? editor->form() : nullptr) {
        m_quotesGroup->setActions({});
        m_dataGroup->setActions({});
        m_quoteGroup->setActions({form->actSave, form->actPrint, form->actPdf, actCloseQuote});
        m_pagesGroup->setActions({actPrevious, actNext});
        m_stepsGroup->setActions({form->actUndo, form->actRedo});
        m_moduleGroup->setActions({form->actCopyFunds, form->actPasteFunds, form->actFactSheet});
    } else {
        m_quotesGroup->setActions({actNew, actOpen, actDuplicate, actDelete});
        m_dataGroup->setActions({actClients, actImport});
        m_stepsGroup->setActions({actUndo, actRedo});
        for (RibbonGroup *const group : {m_quoteGroup, m_pagesGroup, m_moduleGroup})
            group->setActions({});
    }
    arrangeMenus();
    ribbon->arrange();
    updateActions();
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
    mnuQuote->addSeparator();
    mnuQuote->addAction(actCloseQuote);
    mnuEdit->addSeparator();
    mnuEdit->addAction(actFind);
}

void MainWindow::updateActions()
{
    const bool atStart = currentEditor() == nullptr;
    const bool chosen = atStart && m_startPage->chosenQuote() != 0;
    for (QAction *const action : {actOpen, actDuplicate, actDelete})
        action->setEnabled(chosen);
    actCloseQuote->setEnabled(!atStart);
    // On a quote's page the key is for the quote's funds.
    actFind->setEnabled(atStart);
    if (atStart) {
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

void MainWindow::updateTitles()
{
    const QuoteEditor *const editor = currentEditor();
    const QString program = u"Quote Desk"_s;
    setWindowTitle(editor ? u"%1 - %2"_s.arg(shortText(pages->pageTitle(pages->currentWidget())), program)
                          : program);
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
    m_serverState->setVisible(!answers);
    if (!answers)
        return;
    statusbar->showMessage(tr("The office's server answers again"), 5000);
    refresh();
}

void MainWindow::newQuote()
{
    NewQuoteDialog dialog(m_session, m_startPage->chosenProduct(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    Quote quote;
    quote.productID = dialog.productID();
    quote.clientID = dialog.clientID();
    m_quotes->begin(quote);
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
    statusbar->showMessage(tr("The quote has been copied"), 5000);
}

void MainWindow::deleteChosen()
{
    const qint64 quoteID = m_startPage->chosenQuote();
    if (quoteID == 0 || !m_quotes->close(quoteID))
        return;
    fetch(m_session.store(), this, [quoteID](QuoteStore &store) { store.remove(quoteID); });
    keepRemoval(quoteID);
    refresh();
    statusbar->showMessage(
        tr("The quote has been deleted. Undo brings it back, and so does Deleted Quotes for "
           "%1 days.")
            .arg(QuoteStore::DaysInBin),
        8000);
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
    ClientsDialog dialog(m_session, this);
    dialog.exec();
    refresh();
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
    } else {
        statusbar->showMessage(tr("The import was cancelled; the catalogue has not changed"), 8000);
    }
}

void MainWindow::help()
{
    const QuoteEditor *const editor = currentEditor();
    const QWidget *const place = editor ? static_cast<QWidget *>(editor->form()) : this;
    HelpWindow(HelpWindow::topicOf(place), this).exec();
}

void MainWindow::about()
{
    PlainBox box(
        QMessageBox::NoIcon,
        tr("Quote Desk %1\n\nChoose funds, split an investment over them, read the result.\n\nQuotes: %2")
            .arg(QApplication::applicationVersion(), m_session.store().location().text()),
        QMessageBox::Ok, QMessageBox::Ok, this);
    box.setWindowTitle(tr("About Quote Desk"));
    box.setIconPixmap(windowIcon().pixmap(64, 64));
    box.ask();
}

void MainWindow::showEvent(QShowEvent *event)
{
    // All commands of the ribbon are in the menus, too.
    ribbon->setVisible(!isLowScreen(*this));
    QMainWindow::showEvent(event);
}

void MainWindow::takePlace(const QByteArray &geometry)
{
    ribbon->setVisible(!isLowScreen(*this));
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
        statusbar->clearMessage();
    });
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(m_quotes->closeAll());
}

} // namespace QuoteDesk
