#include "desk/OpenQuotes.h"

#include "desk/ConflictDialog.h"
#include "desk/ErrorDialog.h"
#include "desk/ModuleStack.h"
#include "quote/PlainText.h"
#include "quote/ProductEditors.h"

#include "toolkit/TApplication.h"

#include <QPointer>
#include <QPushButton>

#include <algorithm>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// Focuses the first field that lacks an entry.
void beginTyping(const QuoteEditor &editor)
{
    const QuoteForm &form = *editor.form();
    QWidget *const first =
        editor.quote().clientID == 0 ? static_cast<QWidget *>(form.cbData) : form.edtDescription;
    first->setFocus();
}

} // namespace

OpenQuotes::OpenQuotes(QuoteSession &session, ModuleStack &pages) : m_session(session), m_pages(pages)
{
    pages.MayClose = [this](QWidget *page) {
        QuoteEditor *const editor = editorOf(page);
        return !editor || mayClose(*editor);
    };
}

OpenQuotes::~OpenQuotes()
{
    m_pages.MayClose = {};
    const QList<QuoteEditor *> editors = std::exchange(m_editors, {});
    for (QuoteEditor *const editor : editors) {
        disconnect(editor, nullptr, this, nullptr);
        GuardedCall([editor] { editor->Destroy(); });
    }
    // Deletes the forms that wait for their deletion, because they must not outlive the session.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QWidget *OpenQuotes::window() const
{
    return m_pages.window();
}

bool OpenQuotes::hasPage(const QuoteEditor &editor) const
{
    return editor.form() && m_pages.indexOf(editor.form()) >= 0;
}

QuoteEditor *OpenQuotes::current() const
{
    return editorOf(m_pages.currentWidget());
}

QuoteEditor *OpenQuotes::editorOf(const QWidget *page) const
{
    const auto found = std::find_if(m_editors.cbegin(), m_editors.cend(), [page](const QuoteEditor *editor) {
        return page && editor->form() == page;
    });
    return found == m_editors.cend() ? nullptr : *found;
}

QuoteEditor *OpenQuotes::editorOf(qint64 quoteID) const
{
    const auto found =
        std::find_if(m_editors.cbegin(), m_editors.cend(),
                     [quoteID](const QuoteEditor *editor) { return editor->quote().quoteID == quoteID; });
    return found == m_editors.cend() ? nullptr : *found;
}

QuoteEditor *OpenQuotes::openEditor(const Quote &quote, const QString &draftKey)
{
    auto *const editor = new QuoteEditor(m_session, quote, draftKey);
    m_editors.append(editor);
    connect(editor, &TLegacyEditor::QuoteDisposed, this, [this, editor] { forget(editor); });
    connect(editor, &QuoteEditor::changed, this,
            [this, editor] { attempt(window(), [this, editor] { showTitle(*editor); }); });
    connect(editor, &QuoteEditor::saved, this,
            [this, editor] { attempt(window(), [this, editor] { showTitle(*editor); }); });
    connectGuarded(editor, &QuoteEditor::saveRequested, this, [this, editor] { save(*editor); });
    connect(editor, &QuoteEditor::told, this,
            [this](const QString &sentence) { Q_EMIT done(shortText(sentence, 300)); });
    connect(editor, &QuoteEditor::wantsSave, this, [this, editor] { keepDraft(*editor); });
    try {
        openProductEditor(*editor);
    } catch (...) {
        forget(editor);
        throw;
    }
    // The commands' keys work anywhere in the window while the quote's page is in front.
    for (QAction *const action : editor->form()->actions())
        action->setShortcutContext(Qt::WindowShortcut);
    beginTyping(*editor);
    showTitle(*editor);
    Q_EMIT opened();
    return editor;
}

void OpenQuotes::forget(QuoteEditor *editor)
{
    m_editors.removeOne(editor);
    // The editor may be executing a function.
    editor->deleteLater();
}

QuoteEditor *OpenQuotes::begin(const Quote &quote)
{
    return openEditor(quote, QuoteStore::newDraftKey());
}

QuoteEditor *OpenQuotes::open(qint64 quoteID)
{
    if (QuoteEditor *const open = editorOf(quoteID); open && hasPage(*open)) {
        m_pages.bringUp(open->form());
        return open;
    }
    if (m_opening.contains(quoteID))
        return nullptr;
    if (!m_session.store().isDirect()) {
        m_opening.insert(quoteID);
        Q_EMIT told(tr("The quote is being read ..."));
    }
    m_session.store().ask(
        this, [quoteID](QuoteStore &store) { return store.quote(quoteID); },
        [this, quoteID](std::future<Quote> answer) {
            if (m_session.store().isDirect()) {
                showStored(answer.get());
                return;
            }
            m_opening.remove(quoteID);
            Q_EMIT told({});
            attempt(window(), [&] { showStored(answer.get()); });
        });
    return m_session.store().isDirect() ? editorOf(quoteID) : nullptr;
}

void OpenQuotes::showStored(const Quote &stored)
{
    QuoteEditor *const open = editorOf(stored.quoteID);
    if (!open) {
        openEditor(stored, QuoteStore::newDraftKey());
        return;
    }
    // A hidden page is shown unchanged, unless another user has saved the quote since.
    if (!hasPage(*open) && (open->isModified() || stored.revision != open->quote().revision))
        open->replace(stored);
    if (open->form())
        m_pages.bringUp(open->form());
    openProductEditor(*open);
    showTitle(*open);
    Q_EMIT opened();
}

void OpenQuotes::save(QuoteEditor &editor, const std::function<void(bool)> &then)
{
    saveAs(editor, SaveMode::OnlyIfUnchanged, then);
}

void OpenQuotes::saveAs(QuoteEditor &editor, SaveMode mode, const std::function<void(bool)> &then)
{
    if (editor.isSaving())
        return;
    const auto allowSave = [](const QuoteEditor &saved, bool allowed) {
        if (saved.form())
            saved.form()->actSave->setEnabled(allowed);
    };
    if (!m_session.store().isDirect()) {
        allowSave(editor, false);
        Q_EMIT told(tr("The quote is being saved ..."));
    }
    editor.save(mode, [this, allowSave, alive = QPointer(&editor), then](const std::exception_ptr &error) {
        allowSave(*alive, true);
        Q_EMIT told({});
        settle(*alive, error, then);
    });
}

/// Continues when the result of a save is known.
void OpenQuotes::settle(QuoteEditor &editor, const std::exception_ptr &error,
                        const std::function<void(bool)> &then)
{
    const QPointer<QuoteEditor> alive(&editor);
    bool settled = false;
    try {
        if (error)
            std::rethrow_exception(error);
        Q_EMIT told(tr("The quote has been saved"), 5000);
        settled = true;
    } catch (const QuoteChangedElsewhere &conflict) {
        ConflictDialog dialog(editor.quote(), conflict, m_session, window());
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
            settled = attempt(window(), [&] {
                editor.replace(conflict.theirs());
                m_session.drafts().drop(editor.draftKey());
                showTitle(editor);
                Q_EMIT listChanged();
            });
            break;
        }
    } catch (const StoreUnreachable &unreachable) {
        // Nothing waits for the save, so a banner with the next step suffices.
        if (then)
            showCurrentException(window());
        else
            Q_EMIT saveFailed(&editor, shortText(unreachable.message(), 300));
    } catch (const std::exception &) {
        showCurrentException(window());
    }
    if (then)
        then(settled);
}

void OpenQuotes::keepDraft(QuoteEditor &editor)
{
    if (editor.isModified())
        m_session.drafts().keep(editor.draftKey(), editor.quote());
    else
        m_session.drafts().drop(editor.draftKey());
}

bool OpenQuotes::mayClose(QuoteEditor &editor)
{
    if (editor.isSaving())
        return mayLeaveSave(editor);
    if (!editor.isModified())
        return true;
    showTitle(editor);
    PlainBox box(QMessageBox::Question,
                 tr("\"%1\" has changes that are not saved. Save them?")
                     .arg(shortText(m_pages.pageTitle(editor.form()))),
                 QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save, window());
    switch (box.ask()) {
    case QMessageBox::Save:
        return saveAndClose(editor);
    case QMessageBox::Discard:
        m_session.drafts().drop(editor.draftKey());
        return true;
    default:
        return false;
    }
}

/// Saves a quote whose page is to be closed. Returns whether the page may be closed at once. Otherwise it
/// closes when the server has confirmed the save, and so does the window when it was to be closed.
bool OpenQuotes::saveAndClose(QuoteEditor &editor)
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
        if (settled && alive && hasPage(*alive) && m_pages.closePage(alive->form()) && closesAll)
            Q_EMIT allSaved();
    });
    state->isLater = true;
    return state->isSettled;
}

/// Asks whether a page may be closed while its quote is being saved.
bool OpenQuotes::mayLeaveSave(QuoteEditor &editor)
{
    QMessageBox box(QMessageBox::Question, u"Quote Desk"_s, {}, QMessageBox::NoButton, window());
    box.setTextFormat(Qt::PlainText);
    box.setText(
        tr("\"%1\" is still being saved: the office's server has not answered yet. Without waiting it "
           "is kept on this computer, and offered when the program starts again.")
            .arg(shortText(m_pages.pageTitle(editor.form()))));
    QPushButton *const leave = box.addButton(tr("&Close without waiting"), QMessageBox::AcceptRole);
    QPushButton *const wait = box.addButton(tr("&Wait"), QMessageBox::RejectRole);
    leave->setObjectName(u"btnLeave"_s);
    wait->setObjectName(u"btnWait"_s);
    box.setDefaultButton(wait);
    box.setEscapeButton(wait);
    const QPointer<QuoteEditor> alive(&editor);
    box.exec();
    // The answer may have arrived during the question.
    if (!alive || !alive->isSaving())
        return alive && !alive->isModified();
    if (box.clickedButton() != leave)
        return false;
    return attempt(window(), [&] { m_session.drafts().keepHere(editor.draftKey(), editor.quote()); });
}

void OpenQuotes::restore(const QString &draftKey, const Quote &draft)
{
    // The state on which the draft is based, with its revision, so that a later save by others is noticed.
    Quote base;
    base.quoteID = draft.quoteID;
    base.revision = draft.revision;
    base.productID = draft.productID;
    base.saveKey = draft.saveKey;
    QuoteEditor *const editor = openEditor(base, draftKey);
    editor->recover(draft);
    // A draft from this computer's file is moved to the store.
    keepDraft(*editor);
    beginTyping(*editor);
    showTitle(*editor);
}

void OpenQuotes::showTitle(QuoteEditor &editor)
{
    if (!editor.form())
        return;
    m_pages.setPageTitle(editor.form(), editor.title(), editor.isModified());
    if (current() == &editor)
        Q_EMIT titleChanged();
}

bool OpenQuotes::close(qint64 quoteID)
{
    QuoteEditor *const editor = editorOf(quoteID);
    if (!editor)
        return true;
    if (hasPage(*editor) && !m_pages.closePage(editor->form()))
        return false;
    // A hidden page would be shown again for a quote that no longer exists.
    if (m_editors.removeOne(editor)) {
        disconnect(editor, nullptr, this, nullptr);
        editor->Destroy();
    }
    return true;
}

bool OpenQuotes::closeAll()
{
    // A copy, because closing a page can remove its editor from the list.
    const QList<QuoteEditor *> editors = m_editors;
    m_closesWhenSaved = false;
    for (QuoteEditor *const editor : editors) {
        if (!m_editors.contains(editor) || !hasPage(*editor))
            continue;
        if (editor->isModified())
            m_pages.setCurrentWidget(editor->form());
        bool closed = false;
        const bool wasSaving = editor->isSaving();
        if (!attempt(window(), [&] { closed = m_pages.closePage(editor->form()); }) || !closed) {
            m_closesWhenSaved = m_editors.contains(editor) && editor->isSaving() && !wasSaving;
            return false;
        }
    }
    return true;
}

void OpenQuotes::showTitles()
{
    for (QuoteEditor *const editor : std::as_const(m_editors))
        showTitle(*editor);
}

} // namespace QuoteDesk
