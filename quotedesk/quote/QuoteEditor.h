#pragma once

#include "quote/QuoteSession.h"

#include "editor/unt_BaseProductEditorImpl.h"

#include <QPointer>
#include <QTimer>

#include <exception>
#include <functional>
#include <memory>

class QUndoStack;

namespace QuoteDesk
{

class EditedQuote;
class FundsPage;
class QuoteForm;
struct QuoteReport;

/// Edits one quote. The editor owns the quote, including an edit in progress, even after its form was hidden
/// or closed. QuoteDisposed() is emitted when the form was closed for good; the owner then deletes the editor
/// with deleteLater(), because the editor is still working.
class QuoteEditor : public TCustomQuoteEditor
{
    Q_OBJECT
public:
    /// @p session must outlive the editor. A quote with the id 0 is new. @p draftKey is the key under which
    /// the owner stores this editor's drafts.
    QuoteEditor(QuoteSession &session, const Quote &quote, const QString &draftKey = {});
    ~QuoteEditor() override;

    QuoteSession &session() const noexcept { return m_session; }
    const QString &draftKey() const noexcept { return m_draftKey; }
    Product product() const { return m_product; }
    /// The open form, hidden or not; nullptr without one. See openProductEditor().
    QuoteForm *form() const { return m_form; }
    /// The form's funds page; nullptr without a form.
    FundsPage *fundsPage() const;
    /// The steps of the allocation; nullptr without a form.
    QUndoStack *undoStack() const;

    /// The quote to which the form's pages write their changes.
    const std::shared_ptr<EditedQuote> &edited() const noexcept { return m_quote; }
    /// The quote as displayed, including an edit in progress.
    Quote quote() const;
    /// The quote's title: its description, or else its client or its product.
    QString title() const;
    /// Whether the quote has unsaved changes.
    bool isModified() const;
    /// Saves the quote through the session. @p then gets nullptr, or the error that prevented the save and
    /// leaves the quote modified; without @p then the error is thrown where the session's answer arrives.
    /// Changes made before the answer are not saved. Does nothing while another save is in progress.
    void save(SaveMode mode = SaveMode::OnlyIfUnchanged,
              const std::function<void(const std::exception_ptr &)> &then = {});
    /// Whether a save is in progress.
    bool isSaving() const noexcept { return m_isSaving; }
    /// Shows another state of the quote, e.g. one that another user has saved, and regards it as saved.
    /// Clears the steps to undo.
    void replace(const Quote &quote);
    /// Shows an unsaved state of the quote, a recovered draft; id and revision stay. The quote is modified
    /// afterwards.
    void recover(const Quote &quote);

    /// Lets the adviser choose a printer and prints the quote; returns false when the adviser cancelled.
    /// Without a form, the choice belongs to @p parent.
    bool print(QWidget *parent = nullptr);
    /// Saves the quote as a PDF file. Throws Exception with the file's name when it cannot be written.
    void exportPdf(const QString &path);

    /// Updates the summary.
    void CalculateQuote() override;

    /// The quote as its client reads it.
    QuoteReport report() const;

    /// Called by the form when it is created, hidden and destroyed.
    void attach(QuoteForm *form);
    void keepDraft();
    void detach();

Q_SIGNALS:
    /// The adviser has changed something, and the new state is displayed.
    void changed();
    void saved();
    /// The adviser wants to save (the form's Save). The owner of the editor calls save() and handles its
    /// errors.
    void saveRequested();
    /// The unsaved changes should be stored as a draft: emitted shortly after an edit, repeatedly while more
    /// is typed, and at once when the form is hidden or closed.
    void wantsSave();
    /// A sentence for a status bar, about a command whose result may not be visible on the current page.
    void told(const QString &sentence);

private:
    void noticeChange();
    void takeSaved(const Quote &saved);
    void showQuote();

    QuoteSession &m_session;
    const QString m_draftKey;
    std::shared_ptr<EditedQuote> m_quote;
    Product m_product;
    TQuoteInfo m_info;
    QPointer<QuoteForm> m_form;
    QTimer m_draftTimer;
    bool m_isSaving = false;
};

} // namespace QuoteDesk
