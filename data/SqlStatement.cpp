#include "data/SqlStatement_p.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace Zel
{

// Qt's own parser of named parameters finds marks in comments and in PostgreSQL's E'...' and $$...$$ texts.
// A text without its closing quote extends to the end of the statement, and the engine reports the error.
Statement::Statement(const QString &sql)
{
    static const QRegularExpression pattern(
        uR"((?<!\w)E'(?:[^'\\]+|\\.|'')*+(?:'|\z)|'[^']*+(?:'|\z)|"[^"]*+(?:"|\z))"
        R"(|(?<comment>--[^\n]*+|/\*.*?(?:\*/|\z)))"
        R"(|(?<!\w)(?<tag>\$(?:[^\W\d]\w*+)?\$).*?(?:\k<tag>|\z)|::|:(?<mark>[^\W\d]\w*+))"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption |
            QRegularExpression::UseUnicodePropertiesOption);
    qsizetype at = 0;
    for (QRegularExpressionMatchIterator found = pattern.globalMatch(sql); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        Pieces.last() += QStringView(sql).sliced(at, match.capturedStart() - at);
        at = match.capturedEnd();
        if (match.hasCaptured(u"mark"))
            AddMark(match.captured(u"mark"));
        else if (match.hasCaptured(u"comment")) // the drivers would find marks and quotes in it
            Pieces.last() += u' ';
        else
            Pieces.last() += match.capturedView();
    }
    Pieces.last() += QStringView(sql).sliced(at);
}

QString Statement::Command() const
{
    static const QRegularExpression firstWord(u"^[\\s(]*+([a-z]+)"_s,
                                              QRegularExpression::CaseInsensitiveOption);
    return firstWord.match(Pieces.first()).captured(1).toLower();
}

} // namespace Zel
