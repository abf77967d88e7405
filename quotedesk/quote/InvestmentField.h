#pragma once

#include "data/Currency.h"

#include <QLineEdit>

#include <optional>

class QAction;
class QLabel;

namespace QuoteDesk
{

class EditedQuote;
struct Quote;

/// Makes a line edit the field of an investment. What is typed counts at once; it is entered when the field
/// is left. A text that is no amount stays as it was typed, with the reason beside it, and the quote keeps
/// the amount before, until the text is put right or taken back with Escape.
class InvestmentField : public QObject
{
    Q_OBJECT
public:
    /// @p field owns the object. @p message is where the reason is shown; it must live as long as the field.
    InvestmentField(QLineEdit &field, QLabel &message);
    ~InvestmentField() override;

    /// Shows an amount; a text that is no amount stays.
    void show(Currency amount);
    /// Forgets what was typed, and shows what a quote has: its amount, or the text that is none.
    void show(const Quote &quote);
    /// Enters what is being typed, as if the field had been left.
    void enter();
    /// Whether the text that was typed is no amount.
    bool isRefused() const { return m_field.isModified() && !typed(); }
    /// Gives the field its amount back in place of a text that is none.
    void takeBack();
    /// Puts what is being typed into @p quote: an amount, or the text that is none among the details.
    void writeInto(EditedQuote &quote) const;
    /// The texts of the field are in another language.
    void retext();

    /// Why the investment that was typed into @p quote is no amount, in a sentence; blank when there is none.
    static QString refusalOf(const Quote &quote);

Q_SIGNALS:
    /// An amount has been entered.
    void entered(Currency amount);
    /// The text has become another one, or was refused or taken back.
    void edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::optional<Currency> typed() const;
    void mark(const QString &reason);

    QLineEdit &m_field;
    QLabel &m_message;
    QAction *m_warning;
    Currency m_amount; ///< What was shown last.
    QString m_tip;     ///< What the field says of itself while its text is an amount.
};

} // namespace QuoteDesk
