#pragma once

#include "catalogue/CatalogueError.h"

#include <QString>
#include <QStringList>

namespace QuoteDesk
{

/// A misplaced or missing quotation mark. The message begins with the line number, reason() does not.
class CsvError : public CatalogueError
{
public:
    CsvError(const QString &message, QString reason) : CatalogueError(message), m_reason(std::move(reason)) {}
    const QString &reason() const noexcept { return m_reason; }

private:
    QString m_reason;
};

/// Reads comma-separated text record by record (RFC 4180: CRLF or LF, quoted fields with "" for a quotation
/// mark, line breaks inside quotes). Skips blank lines between records.
class CsvReader
{
public:
    explicit CsvReader(QString text);

    /// Reads the next record; returns false at the end of the text. Throws CsvError for a misplaced or
    /// missing quotation mark; after skipLine() reading can continue.
    bool readRecord();
    const QStringList &fields() const noexcept { return m_fields; }
    /// The line on which the current record begins, from 1.
    int line() const noexcept { return m_recordLine; }
    /// Continues with the line after the first line of the current record.
    void skipLine();
    /// The number of characters read so far.
    qsizetype position() const noexcept { return m_at; }

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
    qsizetype m_recordAt = 0;
    QStringList m_fields;
};

} // namespace QuoteDesk
