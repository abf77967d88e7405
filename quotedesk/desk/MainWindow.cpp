#include "desk/MainWindow.h"

#include "catalogue/CatalogueCopy.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "database/Database.h"
#include "desk/Appearance.h"
#include "desk/ClientsDialog.h"
#include "desk/ConflictDialog.h"
#include "desk/ErrorDialog.h"
#include "desk/HelpWindow.h"
#include "desk/ImportDialogs.h"
#include "desk/NewQuoteDialog.h"
#include "desk/RecoveryDialog.h"
#include "desk/ServerWait.h"
#include "desk/StartPage.h"
#include "quote/PlainText.h"
#include "quote/ProductEditors.h"
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

/// How often the window looks whether somebody else has changed something, in milliseconds.
constexpr int LookAroundMs = 3000;

/// A quote that was taken out of the list.
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
                m_window.statusbar->showMessage(MainWindow::tr("The quote is back"), 5000);
            });
            return;
        }
        // A step that was not taken back stays to be tried again: the end of the program makes it final.
        setObsolete(true);
        if (mayComeBack)
            QMetaObject::invokeMethod(
                &m_window, [&window = m_window, quoteID = m_quoteID] { window.keepRemoval(quoteID); },
                Qt::QueuedConnection);
    }
    void redo() override
    {
        // The first time the quote has gone already: what cannot be deleted makes no step.
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

/// A bar of tabs names its two scroll buttons once, in the language of that moment.
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
    : m_store(store), m_catalogue(catalogue), m_providers(providers), m_session(catalogue, providers),
      m_drafts(store), m_startPage(new StartPage), m_sortActions(this), m_languageActions(this),
      m_lightPalette(QApplication::palette()), m_serverState(new QLabel)
{
    setupUi(this);
    m_serverState->setObjectName(u"lblServerState"_s);
    m_serverState->setTextFormat(Qt::PlainText);
    statusbar->addPermanentWidget(m_serverState);
    m_serverState->hide();
    pages->setStartPage(m_startPage, QString());
    setUpMenus();
    setUpRibbon();
    connectActions();
    setUpSession();
    m_startPage->setCatalogue(m_catalogue, m_providers);
    refresh();
    m_store.ask(
        this, [](QuoteStore &quotes) { quotes.changedElsewhere(); }, [](const std::future<void> &) {});
    actDark->setChecked(options.dark);
    showTexts();
    m_startPage->edFind->setFocus();

    m_lookAround.setInterval(LookAroundMs);
    connect(&m_lookAround, &QTimer::timeout, this, [this] { lookAround(); });
    m_lookAround.start();
}

MainWindow::~MainWindow()
{
    const QList<QuoteEditor *> editors = std::exchange(m_editors, {});
    for (QuoteEditor *const editor : editors) {
        disconnect(editor, nullptr, this, nullptr);
        GuardedCall([editor] { editor->Destroy(); });
    }
    // The forms are released in the message loop; they must not outlive the session that they work with.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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
    // Elsewhere the key deletes what it always deletes.
    actDelete->setShortcutContext(Qt::WidgetShortcut);
    m_startPage->lvQuotes->addActions({actOpen, actDuplicate, actDelete});
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
    bind(actClients, &MainWindow::showClients);
    bind(actImport, &MainWindow::importCatalogue);
    bind(actAbout, &MainWindow::about);
    bind(actHelp, &MainWindow::help);
    bind(actRefresh, &MainWindow::refreshAll);
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
    connect(pages, &QTabWidget::currentChanged, this, [this] {
        GuardedCall([this] {
            // The ribbon's two page buttons stand for the bar of whichever quote is in front.
            if (const QuoteEditor *const editor = currentEditor(); editor && editor->form())
                editor->form()->fraNavBar->UpdateTB();
            arrangeRibbon();
            updateTitles();
            // A quote that closes leaves the focus anywhere; the next key is for the list that it is in.
            if (!currentEditor() && !m_startPage->isAncestorOf(QApplication::focusWidget()) &&
                !pages->tabBar()->hasFocus())
                m_startPage->lvQuotes->setFocus();
        });
    });
    pages->MayClose = [this](QWidget *window) {
        QuoteEditor *const editor = editorOf(window);
        return !editor || mayClose(*editor);
    };
}

void MainWindow::setUpSession()
{
    m_session.saveQuote = [this](const Quote &quote, SaveMode mode, const QString &draftKey,
                                 const std::function<void(std::future<Quote>)> &then) {
        const auto save = [quote, mode, draftKey](QuoteStore &store) {
            Quote saved = quote;
            store.save(saved, mode, draftKey);
            return saved;
        };
        m_store.ask(this, save, [this, draftKey, then](std::future<Quote> answer) {
            std::promise<Quote> passedOn;
            bool isSaved = false;
            try {
                passedOn.set_value(answer.get());
                isSaved = true;
            } catch (...) {
                passedOn.set_exception(std::current_exception());
            }
            if (isSaved)
                m_drafts.forget(draftKey);
            then(passedOn.get_future());
            // Also when the page was closed without waiting.
            if (isSaved)
                attempt(this, [this] { refresh(); });
        });
    };
    m_session.saveClient = [this](Client &client) { saveClient(m_store, this, client); };
    connect(&m_store, &StoreWorker::answering, this,
            [this](bool answers) { GuardedCall([&] { serverAnswers(answers); }); });
    connect(&m_drafts, &DraftKeeper::failed, this, [this](const QString &reason) {
        // The adviser is typing: a line is enough, and the save will say it aloud.
        statusbar->showMessage(
            shortText(tr("What is typed cannot be kept against a crash: %1").arg(reason), 300));
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
        tr("The office's server does not answer. What is typed is kept on this computer."));
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
    for (QuoteEditor *const editor : std::as_const(m_editors))
        updatePageTitle(*editor);
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
    // The commands of a quote are its own form's; the menus show those of the quote in front.
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
    // On a quote's page the key belongs to its funds.
    actFind->setEnabled(atStart);
    if (atStart) {
        actNext->setEnabled(false);
        actPrevious->setEnabled(false);
    }
    // A quote in front has steps of its own, under the same keys.
    actUndo->setEnabled(atStart && m_listSteps.canUndo());
    actRedo->setEnabled(atStart && m_listSteps.canRedo());
    const auto tip = [](const QString &what, const QString &text, const QAction *action) {
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        return text.isEmpty() ? u"%1 (%2)"_s.arg(what, keys) : u"%1: %2 (%3)"_s.arg(what, text, keys);
    };
    actUndo->setToolTip(tip(tr("Undo"), m_listSteps.undoText(), actUndo));
    actRedo->setToolTip(tip(tr("Redo"), m_listSteps.redoText(), actRedo));
}

void MainWindow::updatePageTitle(QuoteEditor &editor)
{
    if (!editor.form())
        return;
    pages->setPageTitle(editor.form(), editor.title(), editor.isModified());
    if (currentEditor() == &editor)
        updateTitles();
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
    return editorOf(pages->currentWidget());
}

QuoteEditor *MainWindow::editorOf(const QWidget *window) const
{
    const auto found =
        std::find_if(m_editors.cbegin(), m_editors.cend(),
                     [window](const QuoteEditor *editor) { return window && editor->form() == window; });
    return found == m_editors.cend() ? nullptr : *found;
}

QuoteEditor *MainWindow::editorOf(qint64 quoteID) const
{
    const auto found =
        std::find_if(m_editors.cbegin(), m_editors.cend(),
                     [quoteID](const QuoteEditor *editor) { return editor->quote().quoteID == quoteID; });
    return found == m_editors.cend() ? nullptr : *found;
}

QuoteEditor *MainWindow::openEditor(const Quote &quote, const QString &draftKey)
{
    auto *const editor = new QuoteEditor(m_session, quote, draftKey);
    m_editors.append(editor);
    connect(editor, &TLegacyEditor::QuoteDisposed, this, [this, editor] { forget(editor); });
    connect(editor, &QuoteEditor::changed, this,
            [this, editor] { attempt(this, [this, editor] { updatePageTitle(*editor); }); });
    connect(editor, &QuoteEditor::saved, this,
            [this, editor] { attempt(this, [this, editor] { updatePageTitle(*editor); }); });
    connect(editor, &QuoteEditor::saveRequested, this,
            [this, editor] { GuardedCall([this, editor] { save(*editor); }); });
    connect(editor, &QuoteEditor::told, this,
            [this](const QString &sentence) { statusbar->showMessage(shortText(sentence, 300), 8000); });
    connect(editor, &QuoteEditor::wantsSave, this, [this, editor] { keepDraft(*editor); });
    try {
        openProductEditor(*editor);
    } catch (...) {
        forget(editor);
        throw;
    }
    // The keys of its commands work wherever the focus is while its page is in front.
    for (QAction *const action : editor->form()->actions())
        action->setShortcutContext(Qt::WindowShortcut);
    beginTyping(*editor);
    updatePageTitle(*editor);
    arrangeRibbon();
    return editor;
}

/// Puts the focus where something is missing first.
void MainWindow::beginTyping(const QuoteEditor &editor)
{
    const QuoteForm &form = *editor.form();
    QWidget *const first =
        editor.quote().clientID == 0 ? static_cast<QWidget *>(form.cbData) : form.edtDescription;
    first->setFocus();
}

void MainWindow::forget(QuoteEditor *editor)
{
    m_editors.removeOne(editor);
    // It may be in the middle of its own work.
    editor->deleteLater();
}

QuoteEditor *MainWindow::beginQuote(const Quote &quote)
{
    return openEditor(quote, QuoteStore::newDraftKey());
}

QuoteEditor *MainWindow::openQuote(qint64 quoteID)
{
    if (QuoteEditor *const open = editorOf(quoteID); open && pages->indexOf(open->form()) >= 0) {
        pages->bringUp(open->form());
        return open;
    }
    if (m_opening.contains(quoteID))
        return nullptr;
    if (!m_store.isDirect()) {
        m_opening.insert(quoteID);
        statusbar->showMessage(tr("The quote is being read ..."));
    }
    m_store.ask(
        this, [quoteID](QuoteStore &store) { return store.quote(quoteID); },
        [this, quoteID](std::future<Quote> answer) {
            if (m_store.isDirect()) {
                showStored(answer.get());
                return;
            }
            m_opening.remove(quoteID);
            statusbar->clearMessage();
            attempt(this, [&] { showStored(answer.get()); });
        });
    return m_store.isDirect() ? editorOf(quoteID) : nullptr;
}

void MainWindow::showStored(const Quote &stored)
{
    QuoteEditor *const open = editorOf(stored.quoteID);
    if (!open) {
        openEditor(stored, QuoteStore::newDraftKey());
        return;
    }
    // A hidden page comes back as it was left, unless somebody has saved the quote since.
    if (pages->indexOf(open->form()) < 0 && (open->isModified() || stored.revision != open->quote().revision))
        open->replace(stored);
    if (open->form())
        pages->bringUp(open->form());
    openProductEditor(*open);
    updatePageTitle(*open);
    arrangeRibbon();
}

void MainWindow::save(QuoteEditor &editor, const std::function<void(bool)> &then)
{
    saveAs(editor, SaveMode::OnlyIfUnchanged, then);
}

void MainWindow::saveAs(QuoteEditor &editor, SaveMode mode, const std::function<void(bool)> &then)
{
    if (editor.isSaving())
        return;
    const auto allowSave = [](const QuoteEditor &saved, bool allowed) {
        if (saved.form())
            saved.form()->actSave->setEnabled(allowed);
    };
    if (!m_store.isDirect()) {
        allowSave(editor, false);
        statusbar->showMessage(tr("The quote is being saved ..."));
    }
    editor.save(mode, [this, allowSave, alive = QPointer(&editor), then](const std::exception_ptr &error) {
        allowSave(*alive, true);
        statusbar->clearMessage();
        settle(*alive, error, then);
    });
}

/// Goes on when it is known what has become of a save.
void MainWindow::settle(QuoteEditor &editor, const std::exception_ptr &error,
                        const std::function<void(bool)> &then)
{
    const QPointer<QuoteEditor> alive(&editor);
    bool settled = false;
    try {
        if (error)
            std::rethrow_exception(error);
        statusbar->showMessage(tr("The quote has been saved"), 5000);
        settled = true;
    } catch (const QuoteChangedElsewhere &conflict) {
        ConflictDialog dialog(editor.quote(), conflict, m_session, this);
        dialog.exec();
        if (!alive)
            return;
        switch (dialog.choice()) {
        case ConflictChoice::GoOnEditing:
            break;
        case ConflictChoice::KeepMine:
            saveAs(editor, SaveMode::Overwrite, then);
            return;
        case ConflictChoice::SaveAsCopy:
            saveAs(editor, SaveMode::AsCopy, then);
            return;
        case ConflictChoice::TakeTheirs:
            settled = attempt(this, [&] {
                editor.replace(conflict.theirs());
                m_drafts.drop(editor.draftKey());
                updatePageTitle(editor);
                refresh();
            });
            break;
        }
    } catch (const std::exception &) {
        showCurrentException(this);
    }
    if (then)
        then(settled);
}

void MainWindow::keepDraft(QuoteEditor &editor)
{
    if (editor.isModified())
        m_drafts.keep(editor.draftKey(), editor.quote());
    else
        m_drafts.drop(editor.draftKey());
}

bool MainWindow::mayClose(QuoteEditor &editor)
{
    if (editor.isSaving())
        return mayLeaveSave(editor);
    if (!editor.isModified())
        return true;
    updatePageTitle(editor);
    PlainBox box(QMessageBox::Question,
                 tr("\"%1\" has changes that are not saved. Save them?")
                     .arg(shortText(pages->pageTitle(editor.form()))),
                 QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save, this);
    switch (box.ask()) {
    case QMessageBox::Save:
        return saveAndClose(editor);
    case QMessageBox::Discard:
        m_drafts.drop(editor.draftKey());
        return true;
    default:
        return false;
    }
}

/// Saves a quote whose page is to be closed; true when it may be closed at once. Else it closes, and the
/// window when that was meant, once a server has confirmed the save.
bool MainWindow::saveAndClose(QuoteEditor &editor)
{
    struct State {
        bool isSettled = false;
        bool isLater = false;
    };
    const auto state = std::make_shared<State>();
    save(editor, [this, state, alive = QPointer(&editor)](bool settled) {
        state->isSettled = settled;
        if (!state->isLater)
            return;
        const bool closesAll = std::exchange(m_closesWhenSaved, false);
        if (!settled || !alive || !alive->form() || pages->indexOf(alive->form()) < 0)
            return;
        if (pages->closePage(alive->form()) && closesAll)
            close();
    });
    state->isLater = true;
    return state->isSettled;
}

/// Whether a page may close although its quote is still being saved.
bool MainWindow::mayLeaveSave(QuoteEditor &editor)
{
    QMessageBox box(QMessageBox::Question, u"Quote Desk"_s, {}, QMessageBox::NoButton, this);
    box.setTextFormat(Qt::PlainText);
    box.setText(
        tr("\"%1\" is still being saved: the office's server has not answered yet. Without waiting it "
           "is kept on this computer, and offered when the program starts again.")
            .arg(shortText(pages->pageTitle(editor.form()))));
    QPushButton *const leave = box.addButton(tr("&Close without waiting"), QMessageBox::AcceptRole);
    QPushButton *const wait = box.addButton(tr("&Wait"), QMessageBox::RejectRole);
    leave->setObjectName(u"btnLeave"_s);
    wait->setObjectName(u"btnWait"_s);
    box.setDefaultButton(wait);
    box.setEscapeButton(wait);
    const QPointer<QuoteEditor> alive(&editor);
    box.exec();
    // The answer may have come while the question was there.
    if (!alive || !alive->isSaving())
        return alive && !alive->isModified();
    if (box.clickedButton() != leave)
        return false;
    return attempt(this, [&] { m_drafts.keepHere(editor.draftKey(), editor.quote()); });
}

MainWindow::Lists MainWindow::readLists(QuoteStore &store)
{
    return {store.clients(), store.quotes(), CatalogueCopy::versionOf(store.database())};
}

void MainWindow::refresh()
{
    m_store.ask(this, &MainWindow::readLists, [this](std::future<Lists> answer) {
        try {
            showLists(answer.get());
        } catch (const StoreUnreachable &) {
            // The status bar says so; once the server is back they are read again.
        }
    });
}

void MainWindow::showLists(const Lists &lists)
{
    m_session.setClients(lists.clients);
    QList<QuoteSummary> quotes = lists.quotes;
    QHash<int, QString> names;
    for (const Product &product : m_catalogue.products())
        names.insert(product.productID, product.name);
    for (QuoteSummary &quote : quotes)
        quote.product = names.value(quote.productID, quote.product);
    m_startPage->setQuotes(quotes);
    updateActions();
    if (lists.catalogueVersion != m_catalogue.version())
        readCatalogue(false);
}

void MainWindow::refreshAll()
{
    refresh();
    readCatalogue(true);
}

/// Brings the copy of a server's catalogue up to date.
void MainWindow::readCatalogue(bool showAnew)
{
    const auto show = [this] {
        m_startPage->refreshCatalogue();
        Q_EMIT m_session.catalogueChanged();
    };
    if (m_store.isDirect()) {
        show();
        return;
    }
    if (std::exchange(m_isReadingCatalogue, true))
        return;
    m_store.ask(
        this, [](QuoteStore &store) { return CatalogueCopy::of(store.database()); },
        [this, show, showAnew](std::future<CatalogueCopy> answer) {
            m_isReadingCatalogue = false;
            try {
                m_catalogue.take(answer.get());
                if (showAnew)
                    show();
            } catch (const StoreUnreachable &) {
                // The status bar says so.
            }
        },
        StoreWorker::LongLimit);
}

void MainWindow::serverAnswers(bool answers)
{
    m_serverState->setVisible(!answers);
    if (!answers)
        return;
    statusbar->showMessage(tr("The office's server answers again"), 5000);
    refresh();
}

void MainWindow::lookAround()
{
    if (std::exchange(m_isLooking, true))
        return;
    const auto look = [](QuoteStore &store) {
        return store.changedElsewhere() ? std::optional(readLists(store)) : std::nullopt;
    };
    m_store.ask(this, look, [this](std::future<std::optional<Lists>> answer) {
        m_isLooking = false;
        try {
            if (const std::optional<Lists> lists = answer.get())
                showLists(*lists);
        } catch (const StoreUnreachable &) {
            // The status bar says so already.
        } catch (const Exception &error) {
            // Whoever does something with the quotes is told in a dialog; this was only a look.
            statusbar->showMessage(shortText(error.message(), 300), LookAroundMs);
        }
    });
}

void MainWindow::newQuote()
{
    NewQuoteDialog dialog(m_store, m_session, m_startPage->chosenProduct(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    Quote quote;
    quote.productID = dialog.productID();
    quote.clientID = dialog.clientID();
    beginQuote(quote);
}

void MainWindow::openChosen()
{
    if (const qint64 quoteID = m_startPage->chosenQuote())
        openQuote(quoteID);
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
        Lists lists;
    };
    const auto [copy, lists] = fetch(m_store, this, [quoteID, key](QuoteStore &store) {
        const qint64 made = store.duplicate(quoteID, key);
        return Copied{made, readLists(store)};
    });
    m_copyKeys.remove(quoteID);
    showLists(lists);
    m_startPage->chooseQuote(copy);
    statusbar->showMessage(tr("The quote has been copied"), 5000);
}

void MainWindow::deleteChosen()
{
    const qint64 quoteID = m_startPage->chosenQuote();
    if (quoteID == 0)
        return;
    if (QuoteEditor *const editor = editorOf(quoteID)) {
        if (pages->indexOf(editor->form()) >= 0 && !pages->closePage(editor->form()))
            return;
        // Hidden it would come back with a quote that is gone.
        if (m_editors.contains(editor)) {
            m_editors.removeOne(editor);
            disconnect(editor, nullptr, this, nullptr);
            editor->Destroy();
        }
    }
    fetch(m_store, this, [quoteID](QuoteStore &store) { store.remove(quoteID); });
    keepRemoval(quoteID);
    refresh();
    statusbar->showMessage(tr("The quote has been deleted; Undo brings it back"), 8000);
}

void MainWindow::keepRemoval(qint64 quoteID)
{
    m_listSteps.push(new RemovedQuote(*this, m_store, quoteID));
}

void MainWindow::showClients()
{
    ClientsDialog dialog(m_store, m_session, this);
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
    if (importWithProgress(m_store, dialog.selectedFiles().constFirst(), this)) {
        refreshAll();
    } else {
        statusbar->showMessage(tr("The import was cancelled; the catalogue is as it was"), 8000);
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
    PlainBox box(QMessageBox::NoIcon,
                 tr("Quote Desk %1\n\nChoose funds, spread an investment over them, read the result.\n\n"
                    "Quotes: %2")
                     .arg(QApplication::applicationVersion(), m_store.location().text()),
                 QMessageBox::Ok, QMessageBox::Ok, this);
    box.setWindowTitle(tr("About Quote Desk"));
    box.setIconPixmap(windowIcon().pixmap(64, 64));
    box.ask();
}

void MainWindow::showEvent(QShowEvent *event)
{
    // All its commands are in the menus, too.
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
    // Without a place of its own the system finds one.
    if (hasPlace && !room.contains(this->geometry()))
        move(available.topLeft());
}

void MainWindow::offerDrafts()
{
    if (std::exchange(m_offeredDrafts, true))
        return;
    m_store.ask(
        this, [](QuoteStore &store) { return store.abandonedDrafts(); },
        [this](std::future<QList<Draft>> answer) {
            QList<Draft> stored;
            try {
                stored = answer.get();
            } catch (const StoreUnreachable &) {
                // Those of this computer are there all the same.
            }
            offer(stored);
        });
}

/// Offers the drafts of the store together with those that were kept on this computer.
void MainWindow::offer(const QList<Draft> &stored)
{
    QList<Draft> drafts = stored;
    QSet<QString> inStore;
    for (const Draft &draft : stored)
        inStore.insert(draft.key);
    QSet<QString> here;
    const QList<Draft> keptHere = m_drafts.leftHere();
    for (const Draft &draft : keptHere) {
        const auto same = std::find_if(drafts.begin(), drafts.end(),
                                       [&draft](const Draft &other) { return other.key == draft.key; });
        here.insert(draft.key);
        if (same == drafts.end())
            drafts.append(draft);
        else if (same->kept < draft.kept)
            *same = draft;
        else
            here.remove(draft.key);
    }
    if (drafts.isEmpty())
        return;
    std::stable_sort(drafts.begin(), drafts.end(),
                     [](const Draft &a, const Draft &b) { return a.kept > b.kept; });
    RecoveryDialog dialog(drafts, m_session, this);
    dialog.exec();
    const auto adoptStored = [this](const QString &key) {
        return fetch(m_store, this, [key](QuoteStore &store) { return store.adoptDraft(key); });
    };
    for (const QString &key : dialog.chosenKeys()) {
        switch (dialog.choice()) {
        case RecoveryDialog::Choice::Later:
            return;
        case RecoveryDialog::Choice::Restore:
            attempt(this, [&] {
                restoreDraft(key, here.contains(key) ? m_drafts.adoptFromHere(key) : adoptStored(key));
            });
            break;
        case RecoveryDialog::Choice::Discard:
            attempt(this, [&] {
                if (inStore.contains(key))
                    adoptStored(key);
                if (here.contains(key))
                    m_drafts.adoptFromHere(key);
                m_drafts.drop(key);
            });
            break;
        }
    }
}

void MainWindow::restoreDraft(const QString &key, const Quote &draft)
{
    // The base of what was typed: with its revision, so that a save since then is noticed.
    Quote base;
    base.quoteID = draft.quoteID;
    base.revision = draft.revision;
    base.productID = draft.productID;
    base.saveKey = draft.saveKey;
    QuoteEditor *const editor = openEditor(base, key);
    editor->recover(draft);
    // One that was kept on this computer is handed in.
    keepDraft(*editor);
    beginTyping(*editor);
    updatePageTitle(*editor);
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
    QApplication::setPalette(dark ? inverted(m_lightPalette) : m_lightPalette);
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    attempt(this, [this] {
        retranslateUi(this);
        refresh();
        m_startPage->refreshCatalogue();
        // The catalogue speaks the other language now, and the open quotes with it.
        Q_EMIT m_session.catalogueChanged();
        showTexts();
        nameScrollButtons(*this);
        statusbar->clearMessage();
    });
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    // By value: closing a page can take its editor out of the list.
    const QList<QuoteEditor *> editors = m_editors;
    m_closesWhenSaved = false;
    for (QuoteEditor *const editor : editors) {
        if (!m_editors.contains(editor) || !editor->form() || pages->indexOf(editor->form()) < 0)
            continue;
        if (editor->isModified())
            pages->setCurrentWidget(editor->form());
        bool closed = false;
        const bool wasSaving = editor->isSaving();
        if (!attempt(this, [&] { closed = pages->closePage(editor->form()); }) || !closed) {
            m_closesWhenSaved = m_editors.contains(editor) && editor->isSaving() && !wasSaving;
            return;
        }
    }
    event->accept();
}

} // namespace QuoteDesk
