#include "quote/PlainText.h"

#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr qsizetype longestTip = 1000;
constexpr qsizetype longestTipLine = 100;
constexpr qsizetype longestWord = 40; // in a label; longer words may be broken
constexpr QChar ellipsis(0x2026);
constexpr QChar mayBreak(0x200b); // a zero-width break opportunity

/// The first characters of a text; never splits a character.
QString beginning(const QString &text, qsizetype most)
{
    qsizetype end = std::max<qsizetype>(most - 1, 0);
    if (end > 0 && text.at(end - 1).isHighSurrogate())
        --end;
    return text.left(end) + ellipsis;
}

} // namespace

QString shortText(const QString &text, qsizetype most)
{
    return text.size() <= most ? text : beginning(text, most).simplified();
}

QString wrappedText(const QString &text, qsizetype most)
{
    const QString shown = text.size() <= most ? text : beginning(text, most);
    QString result;
    result.reserve(shown.size() + shown.size() / longestWord);
    qsizetype word = 0;
    for (const QChar c : shown) {
        word = c.isSpace() ? 0 : word + 1;
        if (word > longestWord && !c.isLowSurrogate() && !c.isMark()) {
            result.append(mayBreak);
            word = 1;
        }
        result.append(c);
    }
    return result;
}

QString tipText(const QString &text)
{
    const QStringList lines = text.split(u'\n');
    const bool isNarrow = std::all_of(lines.cbegin(), lines.cend(),
                                      [](const QString &line) { return line.size() <= longestTipLine; });
    if (isNarrow && text.size() <= longestTip && !Qt::mightBeRichText(text))
        return text;
    // As escaped markup, because Qt would guess the format of a plain text; markup also wraps its lines.
    QString escaped = wrappedText(text, longestTip).toHtmlEscaped();
    escaped.replace(u'\n', u"<br>"_s);
    return u"<p>%1</p>"_s.arg(escaped);
}

PlainBox::PlainBox(Icon icon, const QString &text, StandardButtons buttons, StandardButton standard,
                   QWidget *parent)
    : QMessageBox(icon, u"Quote Desk"_s, QString(), buttons, parent)
{
    setTextFormat(Qt::PlainText);
    setText(wrappedText(text));
    setDefaultButton(standard);
}

PlainBox::~PlainBox() = default;

} // namespace QuoteDesk
