#pragma once

#include "quote/FundNames.h"
#include "quote/Split.h"
#include "store/ShownSplit.h"

#include <QObject>

#include <optional>
#include <vector>

namespace QuoteDesk
{

/// The comparison of an edited quote's funds with the saved ones.
struct FundComparison {
    bool sameFunds = false; ///< whether they are the same in any order
    std::vector<qsizetype> savedPlaces =
        {};                 ///< the index of each fund among the saved ones, when they are the same
    qsizetype percents = 0; ///< the number of different percentages, each rounded alone
    qsizetype amounts = 0;
};

/// The quote that an editor works on, including an edit in progress, and the quote last opened or saved. The
/// pages write each change to this object, which knows whether the quote is modified and what remains of the
/// investment. A change of one fund does not visit the other funds, so that a key press takes as long with
/// ten funds as with ten thousand.
class EditedQuote : public QObject
{
    Q_OBJECT
public:
    explicit EditedQuote(const Quote &quote);
    ~EditedQuote() override;

    /// The present quote with the displayed numbers.
    Quote quote() const;
    /// Whether the quote differs visibly from the one last opened or saved. The order of the funds does not
    /// count, nor does a fund's name that is the catalogue's in one of the languages.
    bool isModified() const;

    qint64 quoteID() const { return m_quote.quoteID; }
    qint64 clientID() const { return m_quote.clientID; }
    /// When the quote was saved last, in UTC; invalid for a quote that was never saved.
    QDateTime lastSaved() const { return m_quote.changed; }
    const QString &description() const { return m_quote.description; }
    const QMap<QString, QString> &details() const { return m_quote.details; }
    const AskedQuestions &asked() const { return m_quote.asked; }
    /// The investment being typed, or the one entered last.
    Currency investment() const { return m_typed.value_or(m_quote.amount); }
    /// The funds with the numbers entered, which may have more decimals than are displayed.
    const QList<QuotedFund> &funds() const { return m_quote.funds; }
    /// The funds with percentages that become the displayed ones when they are rounded to hundredths.
    const QList<QuotedFund> &fundsByPercent() const;
    /// The split with the displayed numbers.
    const ShownSplit &shownSplit() const;
    /// The same without the funds.
    SplitState splitState() const;

    /// The split as entered, with the displayed numbers; without an investment that is still being typed.
    Split settledSplit() const;

    /// Replaces the quote and regards it as saved. Emits no signal.
    void open(const Quote &quote);
    /// Replaces the quote by an unsaved state; id and revision stay. Emits no signal.
    void recover(const Quote &quote);
    /// The quote was saved as @p saved; it may have been changed since.
    void takeSaved(const Quote &saved);
    void setSaveKey(const QString &key) { m_quote.saveKey = key; }
    /// Sets the catalogue's names of the funds.
    void setNames(const FundNames &names);

    void setClient(qint64 clientID);
    void setDescription(const QString &description);
    void setDetails(const QMap<QString, QString> &details);
    /// A blank value removes the detail.
    void setDetail(const QString &name, const QString &value);
    void setAsked(const AskedQuestions &asked);
    void setSplit(const Split &split);
    /// Sets the numbers of the fund at the index @p place.
    void setNumbers(qsizetype place, Currency amount, Currency percent);
    /// Sets the investment being typed, or none. While it is set, the funds are recalculated with it.
    void setTypedInvestment(std::optional<Currency> typed);

Q_SIGNALS:
    /// The displayed quote has changed.
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
    mutable std::optional<ShownSplit> m_shown; ///< calculated when needed
    mutable std::optional<FundComparison> m_comparison;
};

} // namespace QuoteDesk
