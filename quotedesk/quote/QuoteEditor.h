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

/// The editing of one quote. It owns the quote, with what is being typed, also after its form was hidden or
/// closed. QuoteDisposed() tells that the form was closed for good; the owner deletes the editor then (with
/// deleteLater(), for it is still at work).
class QuoteEditor : public TCustomQuoteEditor
{
    Q_OBJECT
public:
    /// @p session must outlive the editor. A quote with number 0 is a new one. @p draftKey is the key under
    /// which the owner keeps the drafts of this editor.
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

    /// The quote that the pages of the form put their changes into.
    const std::shared_ptr<EditedQuote> &edited() const noexcept { return m_quote; }
    /// The quote as it stands on the screen, with what is being typed.
    Quote quote() const;
    /// What the quote is called: its description, or else its client or its product.
    QString title() const;
    /// Whether the quote differs from what was last opened or saved.
    bool isModified() const;
    /// Saves the quote through the session. @p then is given nothing, or what stood against it and leaves the
    /// quote modified; without @p then that is raised where the session's answer comes. What is typed until
    /// the answer comes is not saved. Does nothing while another save is under way.
    void save(SaveMode mode = SaveMode::OnlyIfUnchanged,
              const std::function<void(const std::exception_ptr &)> &then = {});
    /// Whether a save is under way.
    bool isSaving() const noexcept { return m_isSaving; }
    /// Puts another state of the quote on the screen and takes it for the saved one: what somebody else
    /// saved, say. The steps to undo are gone.
    void replace(const Quote &quote);
    /// Puts an unsaved state of the quote on the screen; @p quote keeps the number and revision that it has.
    /// The quote is modified then: a draft that was recovered.
    void recover(const Quote &quote);

    /// Lets the adviser choose a printer and prints the quote; false when none was chosen.
    bool print();
    /// Saves the quote as a PDF file; raises Exception, naming the file, when it cannot be written.
    void exportPdf(const QString &path);

    /// Brings the summary up to date with the quote.
    void CalculateQuote() override;

    /// The quote as its client will read it.
    QuoteReport report() const;

    /// For the form: it is there; it is hidden; it goes.
    void attach(QuoteForm *form);
    void keepDraft();
    void detach();

Q_SIGNALS:
    /// The adviser changed something; the quote's new state is on the screen.
    void changed();
    void saved();
    /// The adviser asks for a save (the form's Save). Whoever owns the editor calls save() and deals with
    /// what it raises.
    void saveRequested();
    /// The unsaved state is to be kept against a crash: a moment after an edit, again and again while more is
    /// typed, and at once when the form is hidden or closed.
    void wantsSave();
    /// Something has been done of which nothing may be seen where the adviser is: a sentence for a status
    /// bar.
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
