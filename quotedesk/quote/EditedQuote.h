#pragma once

#include "quote/FundNames.h"
#include "quote/Split.h"
#include "store/ShownSplit.h"

#include <QObject>

#include <optional>
#include <vector>

namespace QuoteDesk
{

/// The funds of an edited quote beside those that were saved.
struct FundComparison {
    bool sameFunds = false;                  ///< In any order.
    std::vector<qsizetype> savedPlaces = {}; ///< Of each fund, when they are the same.
    qsizetype percents = 0;                  ///< How many percentages differ, each rounded by itself.
    qsizetype amounts = 0;
};

/// The quote that an editor is at work on, with what is being typed, and the quote that was last opened or
/// saved. The pages put each change in here; whether the quote is modified and what is left of the investment
/// follow. A change of one fund costs no walk over the others, so that a key press takes as long in a quote
/// of ten funds as in one of ten thousand.
class EditedQuote : public QObject
{
    Q_OBJECT
public:
    explicit EditedQuote(const Quote &quote);
    ~EditedQuote() override;

    /// The quote as it stands, in the numbers that are shown of it.
    Quote quote() const;
    /// Whether an adviser sees a difference to what was last opened or saved. The order of the funds is none,
    /// nor is a name that is the catalogue's own in one of the languages.
    bool isModified() const;

    qint64 quoteID() const { return m_quote.quoteID; }
    qint64 clientID() const { return m_quote.clientID; }
    const QString &description() const { return m_quote.description; }
    const QMap<QString, QString> &details() const { return m_quote.details; }
    const AskedQuestions &asked() const { return m_quote.asked; }
    /// The investment that is being typed, or the one that was last entered.
    Currency investment() const { return m_typed.value_or(m_quote.amount); }
    /// The funds with the numbers that were entered, which may be finer than the ones that are shown.
    const QList<QuotedFund> &funds() const { return m_quote.funds; }
    /// The funds with the percentages that are shown, once these are rounded to hundredths.
    const QList<QuotedFund> &fundsByPercent() const;
    /// The split in the numbers that are shown of it.
    const ShownSplit &shownSplit() const;
    /// The same without the funds.
    SplitState splitState() const;

    /// What was entered of the split, in the numbers that are shown of it; without an investment that is
    /// still being typed.
    Split settledSplit() const;

    /// Takes another state of the quote, which is also the saved one. Nothing is signalled.
    void open(const Quote &quote);
    /// Takes an unsaved state; the quote keeps its number and revision. Nothing is signalled.
    void recover(const Quote &quote);
    /// The quote has been saved as @p saved; more may have been entered since.
    void takeSaved(const Quote &saved);
    void setSaveKey(const QString &key) { m_quote.saveKey = key; }
    /// The names by which the catalogue knows the funds.
    void setNames(const FundNames &names);

    void setClient(qint64 clientID);
    void setDescription(const QString &description);
    void setDetails(const QMap<QString, QString> &details);
    /// A blank value takes the detail away.
    void setDetail(const QString &name, const QString &value);
    void setAsked(const AskedQuestions &asked);
    void setSplit(const Split &split);
    /// The numbers of the fund at @p place have been edited.
    void setNumbers(qsizetype place, Currency amount, Currency percent);
    /// Takes the investment that is being typed; nothing when none is. The funds follow it as long as it is.
    void setTypedInvestment(std::optional<Currency> typed);

Q_SIGNALS:
    /// The quote has become another one for those who see it.
    void changed();

private:
    void start();
    template <typename T> void set(T &field, const T &value);
    void setFund(qsizetype place, const QuotedFund &fund);
    void countDifferences(qsizetype place, int sign) const;
    const FundComparison &comparison() const;
    QString seenName(const QuotedFund &fund) const;
    bool seemAlike(const QList<QuotedFund> &a, const QList<QuotedFund> &b) const;

    Quote m_quote;
    Quote m_saved;
    FundNames m_names;
    std::optional<Currency> m_typed;
    SplitSums m_sums;
    mutable std::optional<ShownSplit> m_shown; ///< Worked out when it is asked for.
    mutable std::optional<FundComparison> m_comparison;
};

} // namespace QuoteDesk
