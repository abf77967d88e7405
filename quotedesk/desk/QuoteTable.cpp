#include "desk/QuoteTable.h"

#include "quote/PlainText.h"

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

QString stateOf(const QuoteSummary &quote)
{
    return quote.allocated ? Text::tr("Allocated") : Text::tr("Draft");
}

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
            return a.allocated < b.allocated;
        case QuoteColumn::Changed:
            return a.changed < b.changed;
        }
        return false;
    }

private:
    QuoteColumn m_column;
    QCollator m_collator;
};

} // namespace

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
                           {u"Picture"_s, TFieldType::Integer},
                           {u"ProductID"_s, TFieldType::Integer},
                           {u"Words"_s, TFieldType::String}});
    builder.Reserve(static_cast<int>(sorted.size()));
    const QLocale locale;
    for (const QuoteSummary &quote : std::as_const(sorted)) {
        const QString changed = locale.toString(quote.changed.toLocalTime(), u"yyyy-MM-dd HH:mm"_s);
        const QString state = stateOf(quote);
        const QStringList words{quote.client,
                                quote.product,
                                quote.description,
                                FormatFloat(FormatMask::Thousands, quote.amount),
                                FormatFloat(FormatMask::TwoDecimals, quote.amount),
                                state,
                                changed};
        builder.AddRow({quote.quoteID, shortText(quote.client), shortText(quote.product),
                        shortText(quote.description), QVariant::fromValue(quote.amount), state, changed,
                        quote.allocated ? 0 : 1, quote.productID, words.join(u'\n').toLower()});
    }
    return TDataPacket(builder.Finish());
}

QString wordFilter(const QString &text)
{
    QStringList conditions;
    for (QString word : text.toLower().split(u' ', Qt::SkipEmptyParts)) {
        word.replace(u'\'', u"''"_s);
        conditions.append(u"instr(Words, '%1') > 0"_s.arg(word));
    }
    return conditions.join(u" AND "_s);
}

} // namespace QuoteDesk
