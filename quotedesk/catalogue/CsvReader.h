#pragma once

#include <QString>
#include <QStringList>

namespace QuoteDesk
{

/// Reads comma-separated text (RFC 4180: CRLF or LF, quoted fields with "" for a quote, line breaks inside
/// quotes) record by record. Blank lines between records are passed over.
class CsvReader
{
public:
    explicit CsvReader(QString text);

    /// Reads the next record; false at the end of the text. Raises CatalogueError, with the line number, for
    /// a quote that is out of place or never closed.
    bool readRecord();
    const QStringList &fields() const noexcept { return m_fields; }
    /// The line on which the current record begins, counted from 1.
    int line() const noexcept { return m_recordLine; }

private:
    QString readField();
    QString readQuotedField();
    bool atLineEnd() const;
    void skipLineEnd();
    [[noreturn]] void refuse(const QString &reason) const;

    QString m_text;
    qsizetype m_at = 0;
    int m_line = 1;
    int m_recordLine = 0;
    QStringList m_fields;
};

} // namespace QuoteDesk
