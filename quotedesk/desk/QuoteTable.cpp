#include "desk/QuoteTable.h"

#include "quote/PlainText.h"

#include "data/Format.h"

#include <QCollator>
#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

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

/// Less, equal or greater, as a list reads it.
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

    TTableBuilder builder({{QStringLiteral("QuoteID"), TFieldType::LargeInt},
                           {QStringLiteral("Client"), TFieldType::String},
                           {QStringLiteral("Product"), TFieldType::String},
                           {QStringLiteral("Description"), TFieldType::String},
                           {QStringLiteral("Amount"), TFieldType::Currency},
                           {QStringLiteral("State"), TFieldType::String},
                           {QStringLiteral("Changed"), TFieldType::String},
                           {QStringLiteral("Picture"), TFieldType::Integer},
                           {QStringLiteral("ProductID"), TFieldType::Integer},
                           {QStringLiteral("Words"), TFieldType::String}});
    builder.Reserve(static_cast<int>(sorted.size()));
    const QLocale locale;
    for (const QuoteSummary &quote : std::as_const(sorted)) {
        const QString changed =
            locale.toString(quote.changed.toLocalTime(), QStringLiteral("yyyy-MM-dd HH:mm"));
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
        word.replace(u'\'', QStringLiteral("''"));
        conditions.append(QStringLiteral("instr(Words, '%1') > 0").arg(word));
    }
    return conditions.join(QStringLiteral(" AND "));
}

} // namespace QuoteDesk
