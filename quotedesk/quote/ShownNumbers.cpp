#include "quote/ShownNumbers.h"

#include "data/Format.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

NumberNotation &notationInForce()
{
    static NumberNotation notation;
    return notation;
}

/// A number text of FormatFloat in another notation.
QString inNotation(const QString &text, const NumberNotation &notation)
{
    QString result;
    result.reserve(text.size());
    for (const QChar character : text) {
        if (character == u'.')
            result.append(notation.decimal);
        else if (character != u',')
            result.append(character);
        else if (!notation.grouping.isNull())
            result.append(notation.grouping);
    }
    return result;
}

} // namespace

bool NumberNotation::isCurrency(const QString &sign)
{
    return !sign.isEmpty() && sign.size() <= LongestCurrency && sign.trimmed() == sign &&
           std::all_of(sign.cbegin(), sign.cend(), [](QChar character) {
               return character.isLetter() || character.category() == QChar::Symbol_Currency ||
                      character == u'.';
           });
}

QList<NumberNotation> NumberNotation::choices()
{
    // A blank that does not break keeps the digits of a number on one line.
    constexpr QChar blank = QChar::Nbsp;
    return {{}, {u"R"_s, blank, u'.'}, {u"R"_s, blank, u','}, {u"R"_s, u'.', u','}, {u"R"_s, QChar(), u'.'}};
}

const NumberNotation &numberNotation()
{
    return notationInForce();
}

void setNumberNotation(const NumberNotation &notation)
{
    notationInForce() = notation;
}

QString shownMoney(Currency value, const NumberNotation &notation)
{
    return inNotation(FormatFloat(FormatMask::Thousands, value), notation);
}

QString shownAmount(Currency value, const NumberNotation &notation)
{
    return u"%1 %2"_s.arg(notation.currency, shownMoney(value, notation));
}

QString withCurrency(QString caption)
{
    return caption.replace(u"(R)"_s, u'(' + notationInForce().currency + u')');
}

QString shownPercent(Currency value, const NumberNotation &notation)
{
    return inNotation(FormatFloat(FormatMask::TwoDecimals, value), notation);
}

} // namespace QuoteDesk
