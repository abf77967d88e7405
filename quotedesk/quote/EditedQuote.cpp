#include "quote/EditedQuote.h"

#include "funds/AllocationMath.h"

#include <algorithm>
#include <numeric>

namespace QuoteDesk
{
namespace
{

using Zel::Allocation::Shown;

/// Quotes from earlier versions may have more decimals than are displayed; this is not a modification.
Quote settled(Quote quote)
{
    settle(quote);
    return quote;
}

bool isSameFund(const QuotedFund &a, const QuotedFund &b)
{
    return a.fundID == b.fundID && a.name == b.name;
}

/// The grid has the catalogue's order, so funds are compared sorted by id.
QList<qsizetype> placesByFund(const QList<QuotedFund> &funds)
{
    QList<qsizetype> places(funds.size());
    std::iota(places.begin(), places.end(), qsizetype{0});
    std::stable_sort(places.begin(), places.end(),
                     [&funds](qsizetype a, qsizetype b) { return funds.at(a).fundID < funds.at(b).fundID; });
    return places;
}

} // namespace

EditedQuote::EditedQuote(const Quote &quote) : m_quote(settled(quote)), m_saved(m_quote), m_sums(m_quote) {}

EditedQuote::~EditedQuote() = default;

Quote EditedQuote::quote() const
{
    Quote quote = m_quote;
    const ShownSplit &split = shownSplit();
    quote.amount = split.investment;
    quote.funds = split.funds;
    return quote;
}

const ShownSplit &EditedQuote::shownSplit() const
{
    if (!m_shown && m_typed.value_or(m_quote.amount) != m_quote.amount) {
        Quote typed = m_quote;
        typed.amount = *m_typed;
        typed.funds = withInvestment({m_quote.amount, m_quote.byAmount, m_quote.funds}, *m_typed).funds;
        m_shown.emplace(typed);
    } else if (!m_shown) {
        m_shown.emplace(m_quote.funds, m_sums);
    }
    return *m_shown;
}

SplitState EditedQuote::splitState() const
{
    if (m_typed)
        return shownSplit();
    return m_sums.state();
}

Split EditedQuote::settledSplit() const
{
    const ShownSplit split = m_typed ? ShownSplit(m_quote.funds, m_sums) : shownSplit();
    return {split.investment, split.byAmount, split.funds};
}

const QList<QuotedFund> &EditedQuote::fundsByPercent() const
{
    const bool follow = m_sums.amountsLead() && !m_sums.columnsAgree();
    return m_typed || follow ? shownSplit().funds : m_quote.funds;
}

// --- comparison with the saved quote

/// A fund that is no longer offered cannot have been chosen again with another name, so its name does not
/// count.
QString EditedQuote::seenName(const QuotedFund &fund) const
{
    const FundNames::Fund *const known = m_names.find(fund.fundID);
    return !known || known->isCalled(fund.name) ? QString() : fund.name.trimmed();
}

bool EditedQuote::seemAlike(const QList<QuotedFund> &a, const QList<QuotedFund> &b) const
{
    const auto alike = [this](const QuotedFund &one, const QuotedFund &other) {
        return one.fundID == other.fundID && one.percent == other.percent && one.amount == other.amount &&
               (one.name == other.name || seenName(one) == seenName(other));
    };
    if (std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), alike))
        return true;
    if (a.size() != b.size())
        return false;
    const QList<qsizetype> placesInA = placesByFund(a);
    const QList<qsizetype> placesInB = placesByFund(b);
    return std::equal(placesInA.cbegin(), placesInA.cend(), placesInB.cbegin(),
                      [&](qsizetype inA, qsizetype inB) { return alike(a.at(inA), b.at(inB)); });
}

const FundComparison &EditedQuote::comparison() const
{
    if (m_comparison)
        return *m_comparison;
    const QList<QuotedFund> &funds = m_quote.funds;
    const QList<QuotedFund> &saved = m_saved.funds;
    m_comparison.emplace();
    if (funds.size() != saved.size())
        return *m_comparison;
    const QList<qsizetype> places = placesByFund(funds);
    const QList<qsizetype> savedPlaces = placesByFund(saved);
    m_comparison->sameFunds = std::equal(
        places.cbegin(), places.cend(), savedPlaces.cbegin(), [&](qsizetype place, qsizetype savedPlace) {
            const QuotedFund &fund = funds.at(place);
            const QuotedFund &before = saved.at(savedPlace);
            return fund.fundID == before.fundID &&
                   (fund.name == before.name || seenName(fund) == seenName(before));
        });
    if (!m_comparison->sameFunds)
        return *m_comparison;
    m_comparison->savedPlaces.resize(static_cast<std::size_t>(funds.size()));
    for (qsizetype i = 0; i < funds.size(); ++i)
        m_comparison->savedPlaces[static_cast<std::size_t>(places.at(i))] = savedPlaces.at(i);
    for (qsizetype place = 0; place < funds.size(); ++place)
        countDifferences(place, 1);
    return *m_comparison;
}

void EditedQuote::countDifferences(qsizetype place, int sign) const
{
    if (!m_comparison || !m_comparison->sameFunds)
        return;
    const QuotedFund &fund = m_quote.funds.at(place);
    const QuotedFund &saved = m_saved.funds.at(m_comparison->savedPlaces.at(static_cast<std::size_t>(place)));
    m_comparison->percents += Shown(fund.percent) == saved.percent ? 0 : sign;
    m_comparison->amounts += Shown(fund.amount) == saved.amount ? 0 : sign;
}

bool EditedQuote::isModified() const
{
    if (m_quote.clientID != m_saved.clientID || m_quote.description != m_saved.description ||
        m_quote.byAmount != m_saved.byAmount || m_quote.details != m_saved.details ||
        m_quote.asked != m_saved.asked || m_quote.productID != m_saved.productID ||
        investment() != m_saved.amount)
        return true;
    const FundComparison &funds = comparison();
    if (!funds.sameFunds)
        return true;
    if (investment() == m_quote.amount) {
        // The leading numbers are displayed as entered, the others only where they agree with the leading
        // ones.
        if ((m_sums.amountsLead() ? funds.amounts : funds.percents) > 0)
            return true;
        if (m_sums.columnsAgree())
            return funds.amounts + funds.percents > 0;
    }
    return !seemAlike(shownSplit().funds, m_saved.funds);
}

// --- replacing the quote

void EditedQuote::open(const Quote &quote)
{
    m_quote = settled(quote);
    m_saved = m_quote;
    start();
}

void EditedQuote::recover(const Quote &quote)
{
    const Quote known = std::exchange(m_quote, settled(quote));
    m_quote.quoteID = known.quoteID;
    m_quote.revision = known.revision;
    m_quote.changed = known.changed;
    m_quote.changedBy = known.changedBy;
    m_quote.saveKey = known.saveKey;
    start();
}

/// Starts again after the whole quote was replaced.
void EditedQuote::start()
{
    m_sums = SplitSums(m_quote);
    m_typed.reset();
    m_shown.reset();
    m_comparison.reset();
}

void EditedQuote::takeSaved(const Quote &saved)
{
    m_quote.quoteID = saved.quoteID;
    m_quote.revision = saved.revision;
    m_quote.changed = saved.changed;
    m_quote.changedBy = saved.changedBy;
    m_quote.saveKey = saved.saveKey;
    m_saved = saved;
    m_comparison.reset();
}

void EditedQuote::setNames(const FundNames &names)
{
    m_names = names;
    m_comparison.reset();
}

// --- changes

template <typename T> void EditedQuote::set(T &field, const T &value)
{
    if (field == value)
        return;
    field = value;
    Q_EMIT changed();
}

void EditedQuote::setClient(qint64 clientID)
{
    set(m_quote.clientID, clientID);
}

void EditedQuote::setDescription(const QString &description)
{
    set(m_quote.description, description);
}

void EditedQuote::setDetails(const QMap<QString, QString> &details)
{
    set(m_quote.details, details);
}

void EditedQuote::setDetail(const QString &name, const QString &value)
{
    QMap<QString, QString> details = m_quote.details;
    if (value.isEmpty())
        details.remove(name);
    else
        details.insert(name, value);
    setDetails(details);
}

void EditedQuote::setAsked(const AskedQuestions &asked)
{
    set(m_quote.asked, asked);
}

void EditedQuote::setFund(qsizetype place, const QuotedFund &fund)
{
    m_shown.reset();
    countDifferences(place, -1);
    m_sums.remove(m_quote.funds.at(place));
    m_quote.funds[place] = fund;
    m_sums.add(fund);
    countDifferences(place, 1);
}

void EditedQuote::setNumbers(qsizetype place, Currency amount, Currency percent)
{
    const QuotedFund before = m_quote.funds.at(place);
    if (before.amount == amount && before.percent == percent)
        return;
    setFund(place, {before.fundID, before.name, amount, percent});
    if (Shown(before.amount) != Shown(amount) || Shown(before.percent) != Shown(percent))
        Q_EMIT changed();
}

void EditedQuote::setSplit(const Split &split)
{
    const Quote before = quote();
    const bool sameRules = m_quote.amount == split.investment && m_quote.byAmount == split.byAmount;
    if (sameRules && std::equal(m_quote.funds.cbegin(), m_quote.funds.cend(), split.funds.cbegin(),
                                split.funds.cend(), isSameFund)) {
        for (qsizetype place = 0; place < split.funds.size(); ++place) {
            if (m_quote.funds.at(place) != split.funds.at(place))
                setFund(place, split.funds.at(place));
        }
    } else {
        m_quote.amount = split.investment;
        m_quote.byAmount = split.byAmount;
        m_quote.funds = split.funds;
        m_sums = SplitSums(m_quote);
        m_shown.reset();
        m_comparison.reset();
    }
    const ShownSplit &now = shownSplit();
    if (before.byAmount != now.byAmount || before.amount != now.investment ||
        !seemAlike(before.funds, now.funds))
        Q_EMIT changed();
}

void EditedQuote::setTypedInvestment(std::optional<Currency> typed)
{
    if (typed == m_typed)
        return;
    const Currency before = investment();
    m_typed = typed;
    m_shown.reset();
    if (investment() != before)
        Q_EMIT changed();
}

} // namespace QuoteDesk
