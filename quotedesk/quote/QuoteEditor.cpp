#include "quote/QuoteEditor.h"

#include "quote/FundsPage.h"
#include "quote/QuoteForm.h"
#include "quote/QuoteReport.h"
#include "store/ShownSplit.h"

#include "toolkit/TApplication.h"

#include <QPrinter>
#include <QUndoStack>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

/// How long an edit waits for others before a draft is kept, in milliseconds.
constexpr int draftDelayMs = 400;

/// What was kept by an earlier version can have finer numbers than are shown; that is no change of anybody's.
Quote settled(Quote quote)
{
    settle(quote);
    return quote;
}

} // namespace

QuoteEditor::QuoteEditor(QuoteSession &session, const Quote &quote, const QString &draftKey)
    : m_session(session), m_draftKey(draftKey), m_quote(settled(quote)), m_saved(m_quote),
      m_product(session.product(quote.productID))
{
    m_info.Set_QuoteKey(quote.quoteID);
    m_info.Set_Description(quote.description);
    m_info.Set_Client(session.findClient(quote.clientID));
    Set_QuoteInfo(&m_info);
    Set_Plan(quote.productID);
    connect(&session, &QuoteSession::catalogueChanged, this,
            [this] { GuardedCall([this] { m_product = m_session.product(m_product.productID); }); });
    // A stored quote's window is hidden rather than closed, so that it comes back as it was left.
    if (quote.quoteID != 0)
        Set_PrepPop(std::make_shared<TQuotePrePop>());

    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(draftDelayMs);
    connect(&m_draftTimer, &QTimer::timeout, this, [this] { GuardedCall([this] { Q_EMIT wantsSave(); }); });
}

QuoteEditor::~QuoteEditor()
{
    // The form speaks to this class, which is gone when the base class would take the form down.
    m_draftTimer.stop();
    if (const IZelModulePtr module = Get_Module()) {
        BeginDestruction();
        GuardedCall([&module] { SafecallCheck(module->CloseModule()); });
    }
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

/// What the adviser sees of a quote: without where and when it was stored, without the names that are the
/// catalogue's own in one language or the other, and with the funds in an order of their own, because the
/// grid has the catalogue's.
Quote QuoteEditor::seenOf(Quote quote) const
{
    quote.quoteID = 0;
    quote.revision = 0;
    quote.changed = {};
    quote.changedBy.clear();
    quote.saveKey.clear();
    const FundNames *const names = m_form ? &m_form->fundsPage->names() : nullptr;
    for (QuotedFund &fund : quote.funds) {
        // A fund that is not offered cannot have been chosen anew under another name.
        if (!names || !names->contains(fund.fundID) || names->fund(fund.fundID).isCalled(fund.name))
            fund.name.clear();
        fund.name = fund.name.trimmed();
    }
    std::stable_sort(quote.funds.begin(), quote.funds.end(),
                     [](const QuotedFund &a, const QuotedFund &b) { return a.fundID < b.fundID; });
    return quote;
}

bool QuoteEditor::isModified() const
{
    return seenOf(quote()) != seenOf(m_saved);
}

void QuoteEditor::save(SaveMode mode, const std::function<void(const std::exception_ptr &)> &then)
{
    if (m_isSaving)
        return;
    m_quote = quote();
    // It stays with the quote until a save has been confirmed, so that one more try is no second save.
    if (m_quote.saveKey.isEmpty())
        m_quote.saveKey = QuoteStore::newSaveKey();
    m_draftTimer.stop();
    m_isSaving = true;
    m_session.saveQuote(m_quote, mode, m_draftKey, [self = QPointer(this), then](std::future<Quote> answer) {
        if (!self)
            return;
        self->m_isSaving = false;
        std::exception_ptr error;
        try {
            self->takeSaved(answer.get());
        } catch (...) {
            error = std::current_exception();
        }
        // What is typed is kept still, or anew what was typed since.
        if (self->isModified())
            self->m_draftTimer.start();
        if (then)
            then(error);
        else if (error)
            std::rethrow_exception(error);
    });
}

/// The quote has been saved as @p saved; more may have been typed since.
void QuoteEditor::takeSaved(const Quote &saved)
{
    m_quote.quoteID = saved.quoteID;
    m_quote.revision = saved.revision;
    m_quote.changed = saved.changed;
    m_quote.changedBy = saved.changedBy;
    m_quote.saveKey = saved.saveKey;
    m_saved = saved;
    m_info.Set_QuoteKey(m_quote.quoteID);
    if (!Get_PrepPop())
        Set_PrepPop(std::make_shared<TQuotePrePop>());
    Q_EMIT this->saved();
}

void QuoteEditor::replace(const Quote &quote)
{
    m_draftTimer.stop();
    m_quote = settled(quote);
    m_saved = m_quote;
    showQuote();
}

void QuoteEditor::recover(const Quote &quote)
{
    const Quote known = m_quote;
    m_quote = settled(quote);
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

QuoteReport QuoteEditor::report() const
{
    if (m_form)
        return m_form->report();
    QuoteReport report(m_quote);
    report.product = m_product.name;
    if (const ListedClient *const client = m_session.findClient(m_quote.clientID))
        report.client = client->DisplayText();
    report.description = m_quote.description;
    report.date = QDate::currentDate();
    const ProductPages pages = pagesOf(m_product.productID);
    ElementsPage details;
    details.setElements(pages.details);
    details.show(m_quote.details);
    ElementsPage income;
    income.setElements(pages.income);
    income.show(m_quote.details);
    report.details = details.shown() + income.shown();
    report.problems = problemsOf(m_quote, pages, details, income);
    return report;
}

bool QuoteEditor::print()
{
    const QuoteReport content = report();
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setDocName(content.description.isEmpty() ? content.product : content.description);
    if (!m_session.choosePrinter(printer, m_form))
        return false;
    content.print(printer);
    return true;
}

void QuoteEditor::exportPdf(const QString &path)
{
    report().savePdf(path);
}

void QuoteEditor::CalculateQuote()
{
    if (m_form)
        m_form->showSummary();
}

void QuoteEditor::attach(QuoteForm *form)
{
    m_form = form;
    form->showQuote(m_quote);
}

void QuoteEditor::noticeEdit()
{
    Quote now = quote();
    const bool differs = seenOf(now) != seenOf(m_quote);
    m_quote = std::move(now);
    if (!differs)
        return;
    // Who types on and on is not to wait for a pause.
    if (!m_draftTimer.isActive())
        m_draftTimer.start();
    Q_EMIT changed();
}

void QuoteEditor::keepDraft()
{
    noticeEdit();
    if (!m_draftTimer.isActive())
        return;
    m_draftTimer.stop();
    if (!IsDestroying())
        Q_EMIT wantsSave();
}

void QuoteEditor::detach()
{
    keepDraft();
    m_form = nullptr;
}

} // namespace QuoteDesk
