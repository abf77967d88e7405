#pragma once

#include "catalogue/CatalogueError.h"

#include <QString>
#include <QStringList>

namespace QuoteDesk
{

/// A quote that is out of place or never closed. The message begins with the line, the reason does not.
class CsvError : public CatalogueError
{
public:
    CsvError(const QString &message, QString reason) : CatalogueError(message), m_reason(std::move(reason)) {}
    const QString &reason() const noexcept { return m_reason; }

private:
    QString m_reason;
};

/// Reads comma-separated text (RFC 4180: CRLF or LF, quoted fields with "" for a quote, line breaks inside
/// quotes) record by record. Blank lines between records are passed over.
class CsvReader
{
public:
    explicit CsvReader(QString text);

    /// Reads the next record; false at the end of the text. Raises CsvError for a quote that is out of place
    /// or never closed; reading can go on after skipLine().
    bool readRecord();
    const QStringList &fields() const noexcept { return m_fields; }
    /// The line on which the current record begins, counted from 1.
    int line() const noexcept { return m_recordLine; }
    /// Goes on with the line after the one on which the current record begins.
    void skipLine();
    /// How much of the text has been read.
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
