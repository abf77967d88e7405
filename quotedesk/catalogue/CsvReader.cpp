#include "catalogue/CsvReader.h"

#include <QCoreApplication>

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(CsvReader)
};

} // namespace

CsvReader::CsvReader(QString text) : m_text(std::move(text)) {}

bool CsvReader::readRecord()
{
    while (m_at < m_text.size() && atLineEnd())
        skipLineEnd();
    if (m_at >= m_text.size())
        return false;

    m_recordLine = m_line;
    m_recordAt = m_at;
    m_fields.clear();
    m_fields.append(readField());
    while (m_at < m_text.size() && m_text.at(m_at) == u',') {
        ++m_at;
        m_fields.append(readField());
    }
    if (m_at < m_text.size())
        skipLineEnd();
    return true;
}

QString CsvReader::readField()
{
    if (m_at < m_text.size() && m_text.at(m_at) == u'"')
        return readQuotedField();
    const qsizetype start = m_at;
    while (m_at < m_text.size() && m_text.at(m_at) != u',' && !atLineEnd()) {
        if (m_text.at(m_at) == u'"')
            refuse(Text::tr("a quotation mark inside a field that does not begin with one"));
        ++m_at;
    }
    return m_text.mid(start, m_at - start);
}

QString CsvReader::readQuotedField()
{
    QString field;
    ++m_at;
    for (;;) {
        if (m_at >= m_text.size())
            refuse(Text::tr("the quotation mark that begins a field is never closed"));
        const QChar c = m_text.at(m_at++);
        if (c == u'"') {
            if (m_at >= m_text.size() || m_text.at(m_at) != u'"')
                break;
            ++m_at;
        } else if (c == u'\n') {
            ++m_line;
        }
        field.append(c);
    }
    if (m_at < m_text.size() && m_text.at(m_at) != u',' && !atLineEnd())
        refuse(Text::tr("text after the closing quotation mark of a field"));
    return field;
}

bool CsvReader::atLineEnd() const
{
    if (m_text.at(m_at) == u'\n')
        return true;
    // A carriage return alone belongs to a field; only CRLF ends a line.
    return m_text.at(m_at) == u'\r' && m_at + 1 < m_text.size() && m_text.at(m_at + 1) == u'\n';
}

void CsvReader::skipLineEnd()
{
    m_at += m_text.at(m_at) == u'\r' ? 2 : 1;
    ++m_line;
}

void CsvReader::skipLine()
{
    const qsizetype end = m_text.indexOf(u'\n', m_recordAt);
    m_at = end < 0 ? m_text.size() : end + 1;
    m_line = m_recordLine + 1;
}

void CsvReader::refuse(const QString &reason) const
{
    // Reports the record's first line, because that is where to look for an unclosed quotation mark.
    throw CsvError(Text::tr("line %1: %2").arg(m_recordLine).arg(reason), reason);
}

} // namespace QuoteDesk
