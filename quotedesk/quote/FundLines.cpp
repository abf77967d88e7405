#include "quote/FundLines.h"

#include "quote/PlainText.h"

#include "data/Exceptions.h"
#include "data/NumberEntry.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The reason why a line is refused.
class LineRefused : public Exception
{
public:
    using Exception::Exception;
};

constexpr int maximumPercent = 100;
constexpr auto maximumAmount = Currency::fromRaw(99'999'999'999 * (Currency::Scale / 100));
constexpr int percentDecimals = 4;
constexpr int amountDecimals = 2;

/// The limits of a percentage or an amount.
NumberRules rulesOf(FundLines::Meaning meaning)
{
    const bool isPercent = meaning == FundLines::Meaning::Percent;
    NumberRules rules;
    rules.unit = isPercent ? NumberUnit::Percent : NumberUnit::Rand;
    rules.low = Currency();
    rules.high = isPercent ? Currency(maximumPercent) : maximumAmount;
    rules.decimals = isPercent ? percentDecimals : amountDecimals;
    return rules;
}

QStringList cellsOf(const QString &line)
{
    QStringList cells = line.split(line.contains(u'\t') ? u'\t' : u';');
    for (QString &cell : cells) {
        cell = cell.trimmed();
        if (cell.size() >= 2 && cell.startsWith(u'"') && cell.endsWith(u'"'))
            cell = cell.mid(1, cell.size() - 2).replace(u"\"\""_s, u"\""_s).trimmed();
    }
    while (!cells.isEmpty() && cells.last().isEmpty())
        cells.removeLast();
    return cells;
}

bool isIdentifier(const QString &cell)
{
    return !cell.isEmpty() && cell.size() <= 9 &&
           std::all_of(cell.cbegin(), cell.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

FundLines::FundLines(const QString &text, const FundNames &names, Meaning meaning)
    : m_names(names), m_meaning(meaning)
{
    Columns columns;
    QHash<int, int> lineOfFund;
    bool first = true;
    const QStringList lines = QString(text).replace(u"\r\n"_s, u"\n"_s).split(u'\n');
    for (int i = 0; i < lines.size(); ++i) {
        const QString &line = lines.at(i);
        const QStringList cells = cellsOf(line);
        if (cells.isEmpty())
            continue;
        if (std::exchange(first, false) && readHeading(cells, columns))
            continue;
        try {
            Entry entry = readLine(cells, columns);
            entry.line = i + 1;
            if (const int before = lineOfFund.value(entry.fundID))
                throw LineRefused(tr("the fund is already on line %1").arg(before));
            lineOfFund.insert(entry.fundID, entry.line);
            m_entries.append(entry);
        } catch (const LineRefused &refusal) {
            m_refused.append({i + 1, line.simplified(), refusal.message()});
        }
    }
}

bool FundLines::looksLikeLines(const QString &text)
{
    return text.contains(u'\t') || text.contains(u';') || text.trimmed().contains(u'\n');
}

// A heading has no number. Columns that its words do not define are taken by position.
bool FundLines::readHeading(const QStringList &cells, Columns &columns)
{
    static const QRegularExpression digit(u"[0-9]"_s);
    if (std::any_of(cells.cbegin(), cells.cend(), [](const QString &cell) { return cell.contains(digit); }))
        return false;
    if (cells.size() < 2)
        return false;
    for (int i = 0; i < cells.size(); ++i) {
        const QString word = cells.at(i).toCaseFolded();
        const auto says = [&word](const char *part) { return word.contains(QLatin1String(part)); };
        if (says("%") || says("percent") || says("persent"))
            columns.percent = i;
        else if (says("amount") || says("bedrag") || says("(r)") || says("rand") || word == "r"_L1)
            columns.amount = i;
        else if (word == "id"_L1 || says(" id") || says("-id") || says("number") || says("nommer"))
            columns.id = i;
        else if (says("fund") || says("fonds") || says("name") || says("naam"))
            columns.name = i;
    }
    if (columns.percent < 0 && columns.amount < 0)
        columns = {};
    return true;
}

FundLines::Entry FundLines::readLine(const QStringList &cells, const Columns &columns) const
{
    const auto cell = [&cells](int column) {
        return column >= 0 && column < cells.size() ? cells.at(column) : QString();
    };
    QString key;
    QList<QPair<QString, std::optional<Meaning>>> values;
    if ((columns.id >= 0 || columns.name >= 0) && (columns.percent >= 0 || columns.amount >= 0)) {
        key = cell(columns.id).isEmpty() ? cell(columns.name) : cell(columns.id);
        if (!cell(columns.percent).isEmpty())
            values.append({cell(columns.percent), Meaning::Percent});
        if (!cell(columns.amount).isEmpty())
            values.append({cell(columns.amount), Meaning::Amount});
    } else {
        key = cells.first();
        // The id may be followed by the fund's name, which adds nothing.
        const bool named =
            cells.size() > 2 && isIdentifier(key) &&
            std::none_of(cells.at(1).cbegin(), cells.at(1).cend(), [](QChar c) { return c.isDigit(); });
        for (int i = named ? 2 : 1; i < cells.size(); ++i) {
            if (!cells.at(i).isEmpty())
                values.append({cells.at(i), std::nullopt});
        }
        if (values.size() > 1) {
            values[0].second = Meaning::Percent;
            values[1].second = Meaning::Amount;
        }
    }
    Entry entry;
    entry.fundID = findFund(key);
    if (values.isEmpty())
        throw LineRefused(tr("the percentage or the amount is missing"));
    const auto wanted = std::find_if(values.cbegin(), values.cend(),
                                     [this](const auto &value) { return value.second == m_meaning; });
    const auto &value = wanted == values.cend() ? values.first() : *wanted;
    const Number number = readNumber(value.first, value.second.value_or(m_meaning));
    entry.meaning = number.meaning;
    entry.value = number.value;
    return entry;
}

FundLines::Number FundLines::readNumber(const QString &cell, Meaning meaning)
{
    // A unit beside the number takes precedence over the column.
    const NumberUnit unit = NumberEntry(cell).unit();
    if (unit != NumberUnit::None)
        meaning = unit == NumberUnit::Percent ? Meaning::Percent : Meaning::Amount;
    const NumberEntry number(cell, rulesOf(meaning));
    if (!number.isNumber())
        throw LineRefused(number.reason());
    return {number.value(), meaning};
}

int FundLines::findFund(const QString &cell) const
{
    if (cell.isEmpty())
        throw LineRefused(tr("the fund is missing"));
    if (isIdentifier(cell) && m_names.contains(cell.toInt()))
        return cell.toInt();
    const QList<int> found = m_names.named(cell);
    if (found.size() > 1)
        throw LineRefused(
            tr("%n funds have this name; write the fund's number", nullptr, static_cast<int>(found.size())));
    if (found.isEmpty())
        throw LineRefused(isIdentifier(cell)
                              ? tr("the product offers no fund with the number %1").arg(cell)
                              : tr("the product offers no fund called \"%1\"").arg(shortText(cell)));
    return found.first();
}

QString FundLines::report() const
{
    QStringList lines;
    for (const Refused &refused : m_refused)
        lines.append(
            tr("Line %1: %2 (%3)").arg(refused.line).arg(refused.reason, shortText(refused.text, 300)));
    return lines.join(u'\n');
}

} // namespace QuoteDesk
