#pragma once

#include <QString>

#include <algorithm>

namespace QuoteDesk
{

/// A text from a file for a message: one line of at most @p most characters, with replacement characters for
/// what cannot be printed.
inline QString shownText(const QString &text, qsizetype most = 120)
{
    QString line = text.left(most).simplified();
    std::replace_if(
        line.begin(), line.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); },
        QChar(QChar::ReplacementCharacter));
    return text.size() > most ? line + u'…' : line;
}

} // namespace QuoteDesk
