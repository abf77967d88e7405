#include "data/KeyListFilter_p.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace Zel
{
namespace
{

bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Reads words, marks and numbers from the front of a text.
class Reader
{
public:
    explicit Reader(QStringView text) : m_text(text) {}

    bool AtEnd()
    {
        SkipBlanks();
        return m_at == m_text.size();
    }
    bool Take(QChar mark)
    {
        SkipBlanks();
        if (m_at == m_text.size() || m_text.at(m_at) != mark)
            return false;
        ++m_at;
        return true;
    }
    /// A name or keyword; empty when there is none.
    QStringView TakeWord()
    {
        SkipBlanks();
        const qsizetype start = m_at;
        while (m_at < m_text.size() &&
               (isLetter(m_text.at(m_at)) || (m_at > start && isDigit(m_text.at(m_at)))))
            ++m_at;
        return m_text.sliced(start, m_at - start);
    }
    /// Reads at most 18 digits, so that the number fits in 64 bits; nothing when there is no digit.
    std::optional<qint64> TakeNumber()
    {
        constexpr int digitsThatFit = 18;
        SkipBlanks();
        const bool negative = m_at < m_text.size() && m_text.at(m_at) == u'-';
        if (negative)
            ++m_at;
        const qsizetype start = m_at;
        qint64 number = 0;
        for (; m_at < m_text.size() && isDigit(m_text.at(m_at)) && m_at - start < digitsThatFit; ++m_at)
            number = number * 10 + (m_text.at(m_at).unicode() - u'0');
        if (m_at == start)
            return std::nullopt;
        return negative ? -number : number;
    }

private:
    void SkipBlanks()
    {
        while (m_at < m_text.size() && (m_text.at(m_at) == u' ' || m_text.at(m_at) == u'\t' ||
                                        m_text.at(m_at) == u'\n' || m_text.at(m_at) == u'\r'))
            ++m_at;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

bool isWord(QStringView text, QLatin1StringView word)
{
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

/// The column that SQLite would use for the plain word: the first one of that name, ignoring the case of
/// ASCII letters. Nothing unless its values are integers, because SQLite's type affinity could change other
/// keys.
std::optional<int> columnOf(const TTable::Private &table, QStringView word)
{
    const QByteArray name = word.toLatin1();
    if (name.isEmpty() || sqlite3_keyword_check(name.constData(), static_cast<int>(name.size())) != 0)
        return std::nullopt;
    for (int i = 0; i < table.Defs.size(); ++i) {
        const QString &candidate = table.Defs[i].Name;
        if (candidate.size() != word.size() || candidate.toUtf8().toLower() != name.toLower())
            continue;
        const TFieldType type = table.Defs[i].Type;
        if (type == TFieldType::Integer || type == TFieldType::LargeInt || type == TFieldType::Boolean)
            return i;
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<KeyListFilter> KeyListFilter::Read(const TTable::Private &table, QStringView filter)
{
    KeyListFilter read;
    Reader text(filter);
    QStringView word = text.TakeWord();
    if (isWord(word, "not"_L1)) {
        read.Negated = true;
        if (!text.Take(u'('))
            return std::nullopt;
        word = text.TakeWord();
    }
    const std::optional<int> column = columnOf(table, word);
    if (!column || !isWord(text.TakeWord(), "in"_L1) || !text.Take(u'('))
        return std::nullopt;
    read.Column = *column;
    do {
        const std::optional<qint64> key = text.TakeNumber();
        if (!key)
            return std::nullopt;
        read.Keys.push_back(*key);
    } while (text.Take(u','));
    if (!text.Take(u')') || (read.Negated && !text.Take(u')')) || !text.AtEnd())
        return std::nullopt;
    return read;
}

VisiblePtr KeyListFilter::Evaluate(const TTable::Private &table) const
{
    const KeyIndex &index = table.Index(Column, false);
    QBitArray bits(table.Rows);
    const auto mark = [&](int first) {
        if (first == KeyIndex::None || bits.testBit(first))
            return; // no row has the key, or it occurred before in the list
        for (int row = first; row != KeyIndex::None; row = index.NextRow(row))
            bits.setBit(row);
    };
    for (const qint64 key : Keys)
        mark(index.FindInteger(key).First);
    if (Negated) {
        mark(index.FindNull().First);
        bits = ~bits;
    }
    return VisibleRows::OfBits(std::move(bits));
}

} // namespace Zel
