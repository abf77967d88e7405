#include "quote/QuoteEditor.h"

#include "quote/FundsPage.h"
#include "quote/QuoteForm.h"

#include "toolkit/TApplication.h"

#include <QUndoStack>

namespace QuoteDesk
{
namespace
{

/// How long after the last edit a draft is kept, in milliseconds.
constexpr int draftDelayMs = 400;

} // namespace

QuoteEditor::QuoteEditor(QuoteSession &session, const Quote &quote, const QString &draftKey)
    : m_session(session), m_draftKey(draftKey), m_quote(quote), m_saved(quote),
      m_product(session.product(quote.productID))
{
    m_info.Set_QuoteKey(quote.quoteID);
    m_info.Set_Description(quote.description);
    m_info.Set_Client(session.findClient(quote.clientID));
    Set_QuoteInfo(&m_info);
    Set_Plan(quote.productID);
    // A stored quote's window is hidden rather than closed, so that it comes back as it was left.
    if (quote.quoteID != 0)
        Set_PrepPop(std::make_shared<TQuotePrePop>());

    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(draftDelayMs);
    connect(&m_draftTimer, &QTimer::timeout, this, [this] { GuardedCall([this] { Q_EMIT wantsSave(); }); });
}

QuoteEditor::~QuoteEditor()
{
    m_draftTimer.stop();
}

FundsPage *QuoteEditor::fundsPage() const
{
    return m_form ? m_form->fundsPage : nullptr;
}

QUndoStack *QuoteEditor::undoStack() const
{
    return m_form ? m_form->fundsPage->undoStack() : nullptr;
}

Quote QuoteEditor::quote() const
{
    Quote quote = m_quote;
    if (m_form)
        m_form->readInto(quote);
    return quote;
}

bool QuoteEditor::isModified() const
{
    // Where the quote is stored is no part of what the adviser sees of it.
    Quote known = m_saved;
    const Quote now = quote();
    known.quoteID = now.quoteID;
    known.revision = now.revision;
    known.changed = now.changed;
    known.changedBy = now.changedBy;
    known.saveKey = now.saveKey;
    return known != now;
}

void QuoteEditor::save(SaveMode mode)
{
    m_quote = quote();
    // In place: a save that fails can leave word in the quote for the next one.
    m_session.saveQuote(m_quote, mode, m_draftKey);
    m_draftTimer.stop();
    m_saved = m_quote;
    m_info.Set_QuoteKey(m_quote.quoteID);
    if (!Get_PrepPop())
        Set_PrepPop(std::make_shared<TQuotePrePop>());
    Q_EMIT saved();
}

void QuoteEditor::replace(const Quote &quote)
{
    m_draftTimer.stop();
    m_quote = quote;
    m_saved = quote;
    showQuote();
}

void QuoteEditor::recover(const Quote &quote)
{
    const Quote known = m_quote;
    m_quote = quote;
    m_quote.quoteID = known.quoteID;
    m_quote.revision = known.revision;
    m_quote.changed = known.changed;
    m_quote.changedBy = known.changedBy;
    m_quote.saveKey = known.saveKey;
    showQuote();
    noticeEdit();
}

void QuoteEditor::showQuote()
{
    m_info.Set_QuoteKey(m_quote.quoteID);
    m_info.Set_Description(m_quote.description);
    m_info.Set_Client(m_session.findClient(m_quote.clientID));
    if (m_form)
        m_form->showQuote(m_quote);
}

bool QuoteEditor::print()
{
    return false;
}

void QuoteEditor::exportPdf(const QString &) {}

void QuoteEditor::CalculateQuote() {}

void QuoteEditor::attach(QuoteForm *form)
{
    m_form = form;
    form->showQuote(m_quote);
}

void QuoteEditor::noticeEdit()
{
    if (m_form)
        m_form->readInto(m_quote);
    m_draftTimer.start();
    Q_EMIT changed();
}

} // namespace QuoteDesk
