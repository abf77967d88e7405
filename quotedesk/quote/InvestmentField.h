#pragma once

#include "data/Currency.h"

#include <QLineEdit>

#include <optional>

class QAction;

namespace QuoteDesk
{

class EditedQuote;
class ProblemLine;
struct Quote;

/// Makes a line edit the field of an investment. A typed amount counts at once and is entered when the field
/// loses the focus. An invalid text stays as typed, with the reason below it, and the quote keeps the former
/// amount, until the text is corrected or Escape restores the amount.
class InvestmentField : public QObject
{
    Q_OBJECT
public:
    /// @p field owns this object. @p problem displays the reason and must outlive the field.
    InvestmentField(QLineEdit &field, ProblemLine &problem);
    ~InvestmentField() override;

    /// Shows an amount; an invalid text stays.
    void show(Currency amount);
    /// Drops an edit in progress and shows the quote's amount or its invalid text.
    void show(const Quote &quote);
    /// Enters an edit in progress, as if the field had lost the focus.
    void enter();
    /// Whether the typed text is invalid.
    bool isRefused() const { return m_field.isModified() && !typed(); }
    /// Restores the field's amount in place of a refused text.
    void takeBack();
    /// Writes an edit in progress into @p quote: an amount, or an invalid text among the details.
    void writeInto(EditedQuote &quote) const;
    /// Updates the texts after a change of the language.
    void retext();

    /// Why the investment typed into @p quote is invalid, as a sentence; blank when it is valid.
    static QString refusalOf(const Quote &quote);

Q_SIGNALS:
    /// An amount was entered.
    void entered(Currency amount);
    /// The text was changed, refused or restored.
    void edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::optional<Currency> typed() const;
    void mark(const QString &reason);

    QLineEdit &m_field;
    ProblemLine &m_problem;
    QAction *m_warning;
    Currency m_amount; ///< the amount shown last
    QString m_tip;     ///< the field's tooltip while its text is valid
};

} // namespace QuoteDesk
