#include "desk/QuoteTable.h"

#include "quote/PlainText.h"
#include "quote/ShownNumbers.h"

#include "data/Format.h"

#include <QCollator>
#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(QuoteTable)
};

/// Compares two quotes as the list sorts them.
class Comparison
{
public:
    explicit Comparison(QuoteColumn column) : m_column(column)
    {
        m_collator.setCaseSensitivity(Qt::CaseInsensitive);
        m_collator.setNumericMode(true);
    }
    bool isLess(const QuoteSummary &a, const QuoteSummary &b) const
    {
        switch (m_column) {
        case QuoteColumn::Client:
            return m_collator.compare(a.client, b.client) < 0;
        case QuoteColumn::Product:
            return m_collator.compare(a.product, b.product) < 0;
        case QuoteColumn::Description:
            return m_collator.compare(a.description, b.description) < 0;
        case QuoteColumn::Amount:
            return a.amount < b.amount;
        case QuoteColumn::State:
            return stateOf(a) < stateOf(b);
        case QuoteColumn::Changed:
            return a.changed < b.changed;
        }
        return false;
    }

private:
    QuoteColumn m_column;
    QCollator m_collator;
};

/// The letter without its accents, in lower case.
QChar bare(QChar letter)
{
    // A decomposition of another kind is another character, for example a fraction.
    while (letter.unicode() >= 0x80 && letter.decompositionTag() == QChar::Canonical)
        letter = letter.decomposition().front();
    return letter.toLower();
}

QString clockTime(const QDateTime &time)
{
    return time.toString(u"HH:mm"_s);
}

/// A day that is neither today nor yesterday.
QString dayText(const QDate &day, const QDate &today)
{
    return QLocale().toString(day, day.year() == today.year() ? u"d MMM"_s : u"d MMM yyyy"_s);
}

} // namespace

ChipState stateOf(const QuoteSummary &quote)
{
    if (quote.overAllocated)
        return ChipState::TooMuch;
    return quote.allocated ? ChipState::Allocated : ChipState::Draft;
}

QString stateText(ChipState state)
{
    switch (state) {
    case ChipState::Draft:
        return Text::tr("Draft");
    case ChipState::TooMuch:
        return Text::tr("Too much");
    case ChipState::Allocated:
        return Text::tr("Allocated");
    }
    return {};
}

QString timeInWords(const QDateTime &time, const QDate &today)
{
    const QDateTime local = time.toLocalTime();
    if (!local.isValid())
        return {};
    if (local.date() == today)
        return Text::tr("Today %1").arg(clockTime(local));
    return local.date() == today.addDays(-1) ? Text::tr("Yesterday") : dayText(local.date(), today);
}

QString timeInSentence(const QDateTime &time, const QDate &today)
{
    const QDateTime local = time.toLocalTime();
    if (!local.isValid())
        return {};
    if (local.date() == today)
        return Text::tr("today %1").arg(clockTime(local));
    if (local.date() == today.addDays(-1))
        return Text::tr("yesterday %1").arg(clockTime(local));
    return Text::tr("%1 %2", "day and time").arg(dayText(local.date(), today), clockTime(local));
}

QString wholeTime(const QDateTime &time)
{
    return QLocale::c().toString(time.toLocalTime(), u"yyyy-MM-dd HH:mm"_s);
}

QDateTime timeOfText(const QString &text)
{
    return QLocale::c().toDateTime(text, u"yyyy-MM-dd HH:mm"_s);
}

QString searchable(const QString &text)
{
    QString result(text.size(), Qt::Uninitialized);
    std::transform(text.cbegin(), text.cend(), result.begin(), bare);
    return result;
}

TDataPacket quoteTable(const QList<QuoteSummary> &quotes, QuoteColumn column, Qt::SortOrder order)
{
    QList<QuoteSummary> sorted = quotes;
    const Comparison comparison(column);
    std::stable_sort(sorted.begin(), sorted.end(), [&](const QuoteSummary &a, const QuoteSummary &b) {
        return order == Qt::AscendingOrder ? comparison.isLess(a, b) : comparison.isLess(b, a);
    });

    TTableBuilder builder({{u"QuoteID"_s, TFieldType::LargeInt},
                           {u"Client"_s, TFieldType::String},
                           {u"Product"_s, TFieldType::String},
                           {u"Description"_s, TFieldType::String},
                           {u"Amount"_s, TFieldType::Currency},
                           {u"State"_s, TFieldType::String},
                           {u"Changed"_s, TFieldType::String},
                           {u"StateNumber"_s, TFieldType::Integer},
                           {u"ProductID"_s, TFieldType::Integer},
                           {u"Words"_s, TFieldType::String}});
    builder.Reserve(static_cast<int>(sorted.size()));
    for (const QuoteSummary &quote : std::as_const(sorted)) {
        const QString changed = wholeTime(quote.changed);
        const QString state = stateText(stateOf(quote));
        const QStringList words{quote.client,
                                quote.product,
                                quote.description,
                                FormatFloat(FormatMask::Thousands, quote.amount),
                                shownMoney(quote.amount),
                                FormatFloat(FormatMask::TwoDecimals, quote.amount),
                                state,
                                changed};
        builder.AddRow({quote.quoteID, shortText(quote.client), shortText(quote.product),
                        shortText(quote.description), QVariant::fromValue(quote.amount), state, changed,
                        static_cast<int>(stateOf(quote)), quote.productID, searchable(words.join(u'\n'))});
    }
    return TDataPacket(builder.Finish());
}

QString wordFilter(const QString &text)
{
    QStringList conditions;
    for (QString word : searchable(text).split(u' ', Qt::SkipEmptyParts)) {
        word.replace(u'\'', u"''"_s);
        conditions.append(u"instr(Words, '%1') > 0"_s.arg(word));
    }
    return conditions.join(u" AND "_s);
}

} // namespace QuoteDesk
