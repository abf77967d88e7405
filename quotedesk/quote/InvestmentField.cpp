#include "quote/InvestmentField.h"

#include "quote/EditedQuote.h"
#include "quote/Investment.h"
#include "quote/PlainText.h"
#include "quote/SelectOnEntry.h"

#include "look/ProblemLine.h"

#include "data/Format.h"
#include "data/NumberEntry.h"
#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QAction>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The key in the quote's details under which an invalid investment is stored as typed.
QString typedInvestmentKey()
{
    return u"InvestmentAsTyped"_s;
}

} // namespace

InvestmentField::InvestmentField(QLineEdit &field, ProblemLine &problem)
    : QObject(&field), m_field(field), m_problem(problem),
      m_warning(field.addAction(GlyphIcon(u"warning"_s), QLineEdit::TrailingPosition))
{
    m_warning->setVisible(false);
    field.installEventFilter(this);
    new SelectOnEntry(&field);
    // Enter selects the text, ready for another amount.
    connect(&field, &QLineEdit::returnPressed, &field, &QLineEdit::selectAll);
    connectGuarded(&field, &QLineEdit::editingFinished, this, &InvestmentField::enter);
    connect(&field, &QLineEdit::textEdited, this, [this] {
        mark({});
        Q_EMIT edited();
    });
}

InvestmentField::~InvestmentField() = default;

void InvestmentField::show(Currency amount)
{
    m_amount = amount;
    if (isRefused())
        return;
    const bool allSelected = m_field.hasSelectedText() && m_field.selectedText() == m_field.text();
    m_field.setText(FormatFloat(FormatMask::Thousands, amount));
    if (allSelected)
        m_field.selectAll();
}

void InvestmentField::show(const Quote &quote)
{
    m_field.setModified(false);
    mark({});
    show(quote.amount);
    if (refusalOf(quote).isEmpty())
        return;
    m_field.setText(quote.details.value(typedInvestmentKey()));
    m_field.setModified(true);
    enter();
}

std::optional<Currency> InvestmentField::typed() const
{
    if (!m_field.isModified())
        return std::nullopt;
    const NumberEntry entry(m_field.text(), investmentRules());
    return entry.isNumber() ? std::optional(entry.value()) : std::nullopt;
}

void InvestmentField::enter()
{
    if (!m_field.isModified())
        return;
    const NumberEntry entry(m_field.text(), investmentRules());
    if (entry.isNumber()) {
        Q_EMIT entered(entry.value());
        mark({});
        show(m_amount);
    } else {
        mark(entry.reason());
    }
    Q_EMIT edited();
}

/// Marks the field with the reason why its text is refused; a blank reason removes the mark.
void InvestmentField::mark(const QString &reason)
{
    const bool wasMarked = m_warning->isVisible();
    if (reason.isEmpty() && !wasMarked)
        return;
    if (!wasMarked)
        m_tip = m_field.toolTip();
    // The reason repeats the entry.
    const QString tip = reason.isEmpty() ? QString() : tipText(reason + u'.');
    m_field.setToolTip(reason.isEmpty() ? m_tip : tip);
    m_warning->setToolTip(tip);
    m_warning->setVisible(!reason.isEmpty());
    m_problem.showProblem(
        reason.isEmpty()
            ? QString()
            : tr("%1. Escape brings back %2.").arg(reason, FormatFloat(FormatMask::Thousands, m_amount)));
}

void InvestmentField::takeBack()
{
    m_field.setModified(false);
    mark({});
    show(m_amount);
    Q_EMIT edited();
}

void InvestmentField::writeInto(EditedQuote &quote) const
{
    quote.setTypedInvestment(typed());
    quote.setDetail(typedInvestmentKey(), isRefused() ? m_field.text() : QString());
}

void InvestmentField::retext()
{
    if (!m_warning->isVisible())
        return;
    m_tip = m_field.toolTip();
    enter();
}

QString InvestmentField::refusalOf(const Quote &quote)
{
    const auto typed = quote.details.constFind(typedInvestmentKey());
    if (typed == quote.details.cend())
        return {};
    const NumberEntry entry(*typed, investmentRules());
    return entry.isNumber() ? QString() : tr("The investment was not changed: %1.").arg(entry.reason());
}

bool InvestmentField::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && isRefused() &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        GuardedCall([this] { takeBack(); });
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && !m_field.isModified()) {
        // The field has nothing to undo, so the key undoes a step.
        const auto *const key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace QuoteDesk
