#include "quote/QuoteEditor.h"

#include "quote/EditedQuote.h"
#include "quote/FundsPage.h"
#include "quote/ProductPages.h"
#include "quote/QuoteForm.h"
#include "quote/QuoteReport.h"

#include "toolkit/TApplication.h"

#include <QPrinter>
#include <QUndoStack>

namespace QuoteDesk
{
namespace
{

/// The time after an edit until a draft is stored, in milliseconds.
constexpr int draftDelayMs = 400;

} // namespace

QuoteEditor::QuoteEditor(QuoteSession &session, const Quote &quote, const QString &draftKey)
    : m_session(session), m_draftKey(draftKey), m_quote(std::make_shared<EditedQuote>(quote)),
      m_product(session.product(quote.productID))
{
    m_info.Set_QuoteKey(quote.quoteID);
    m_info.Set_Description(quote.description);
    m_info.Set_Client(session.findClient(quote.clientID));
    Set_QuoteInfo(&m_info);
    Set_Plan(quote.productID);
    connectGuarded(&session, &QuoteSession::catalogueChanged, this,
                   [this] { m_product = m_session.product(m_product.productID); });
    // The window of a stored quote is hidden and not closed, so that it can be shown again unchanged.
    if (quote.quoteID != 0)
        Set_PrepPop(std::make_shared<TQuotePrePop>());

    connectGuarded(m_quote.get(), &EditedQuote::changed, this, &QuoteEditor::noticeChange);
    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(draftDelayMs);
    connectGuarded(&m_draftTimer, &QTimer::timeout, this, &QuoteEditor::wantsSave);
}

QuoteEditor::~QuoteEditor()
{
    // The form calls this class, which no longer exists when the base class would close the form.
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
    return m_quote->quote();
}

QString QuoteEditor::title() const
{
    if (QString title = m_quote->description().trimmed(); !title.isEmpty())
        return title;
    const ListedClient *const client = m_session.findClient(m_quote->clientID());
    const QString name = client ? client->DisplayText() : QString();
    return name.isEmpty() ? m_product.name : name;
}

bool QuoteEditor::isModified() const
{
    return m_quote->isModified();
}

void QuoteEditor::save(SaveMode mode, const std::function<void(const std::exception_ptr &)> &then)
{
    if (m_isSaving)
        return;
    Quote toSave = quote();
    // The key stays with the quote until a save is confirmed, so that another attempt does not save twice.
    if (toSave.saveKey.isEmpty()) {
        toSave.saveKey = QuoteStore::newSaveKey();
        m_quote->setSaveKey(toSave.saveKey);
    }
    m_draftTimer.stop();
    m_isSaving = true;
    m_session.saveQuote(toSave, mode, m_draftKey, [self = QPointer(this), then](std::future<Quote> answer) {
        if (!self)
            return;
        self->m_isSaving = false;
        std::exception_ptr error;
        try {
            self->takeSaved(answer.get());
        } catch (...) {
            error = std::current_exception();
        }
        // After an error or further changes, a draft is still needed.
        if (self->isModified())
            self->m_draftTimer.start();
        if (then)
            then(error);
        else if (error)
            std::rethrow_exception(error);
    });
}

void QuoteEditor::takeSaved(const Quote &saved)
{
    m_quote->takeSaved(saved);
    m_info.Set_QuoteKey(saved.quoteID);
    if (!Get_PrepPop())
        Set_PrepPop(std::make_shared<TQuotePrePop>());
    Q_EMIT this->saved();
}

void QuoteEditor::replace(const Quote &quote)
{
    m_draftTimer.stop();
    m_quote->open(quote);
    showQuote();
}

void QuoteEditor::recover(const Quote &quote)
{
    m_quote->recover(quote);
    showQuote();
}

void QuoteEditor::showQuote()
{
    m_info.Set_QuoteKey(m_quote->quoteID());
    m_info.Set_Description(m_quote->description());
    m_info.Set_Client(m_session.findClient(m_quote->clientID()));
    if (m_form)
        m_form->showQuote();
}

QuoteReport QuoteEditor::report() const
{
    if (m_form)
        return m_form->report();
    const Quote quote = this->quote();
    QuoteReport report(quote);
    report.product = m_product.name;
    if (const ListedClient *const client = m_session.findClient(quote.clientID))
        report.client = client->DisplayText();
    report.description = quote.description;
    report.date = QDate::currentDate();
    const ProductPages pages = pagesOf(m_product.productID);
    ElementsPage details;
    details.setElements(pages.details);
    details.show(quote.details);
    ElementsPage income;
    income.setElements(pages.income);
    income.show(quote.details);
    report.details = details.shown() + income.shown();
    report.problems = OpenPoint::sentences(problemsOf(quote, pages, details, income));
    return report;
}

bool QuoteEditor::print(QWidget *parent)
{
    const QuoteReport content = report();
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setDocName(content.description.isEmpty() ? content.product : content.description);
    if (!m_session.adviser().choosePrinter(printer, m_form ? m_form.data() : parent))
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
    form->showQuote();
}

void QuoteEditor::noticeChange()
{
    // The timer is not restarted, so that typing without a pause does not delay the draft.
    if (!m_draftTimer.isActive())
        m_draftTimer.start();
    Q_EMIT changed();
}

void QuoteEditor::keepDraft()
{
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
    // The funds page, which knows the catalogue's names, is destroyed.
    m_quote->setNames({});
}

} // namespace QuoteDesk
