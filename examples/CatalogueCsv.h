#pragma once

#include "data/Exceptions.h"

#include <QFile>
#include <QProcess>
#include <QStringDecoder>
#include <QStringList>

#include <utility>

/// Reads a fund catalogue for examples and tests: a CSV file of six columns, with the key and name of the
/// group type, of the fund group and of the fund. The first line has the headings.
namespace CatalogueCsv
{

/// Splits CSV text into rows of cells. A quoted cell may contain commas, line ends and doubled quotes. Throws
/// EDatabaseError for an unclosed quote.
inline QList<QStringList> rowsOf(const QString &text)
{
    QList<QStringList> rows;
    QStringList row;
    QString cell;
    bool quoted = false;
    const auto endRow = [&] {
        row.append(std::exchange(cell, QString()));
        if (row.size() > 1 || !row.first().isEmpty())
            rows.append(row);
        row.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('"')) {
            const bool doubled = quoted && i + 1 < text.size() && text.at(i + 1) == c;
            if (doubled)
                cell += text.at(++i);
            else
                quoted = !quoted;
        } else if (quoted) {
            cell += c;
        } else if (c == QLatin1Char(',')) {
            row.append(std::exchange(cell, QString()));
        } else if (c == QLatin1Char('\n')) {
            endRow();
        } else if (c != QLatin1Char('\r')) {
            cell += c;
        }
    }
    if (quoted)
        throw EDatabaseError(QStringLiteral("a quote is not closed"));
    endRow();
    return rows;
}

/// The text of a UTF-8 file, plain or packed with gzip. Throws EDatabaseError with the reason.
inline QString textOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw EDatabaseError(file.errorString());
    QByteArray bytes = file.readAll();
    if (bytes.startsWith("\x1f\x8b")) {
        QProcess unpack;
        unpack.start(QStringLiteral("gzip"), {QStringLiteral("-dc"), path});
        if (!unpack.waitForFinished() || unpack.exitCode() != 0)
            throw EDatabaseError(QStringLiteral("it cannot be unpacked"));
        bytes = unpack.readAllStandardOutput();
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        throw EDatabaseError(QStringLiteral("it is no text in UTF-8"));
    return text;
}

/// The rows of a catalogue file without the headings. Throws EDatabaseError that names the file and the row.
inline QList<QStringList> read(const QString &path)
{
    constexpr int columns = 6;
    try {
        QList<QStringList> rows = rowsOf(textOf(path));
        for (qsizetype i = 0; i < rows.size(); ++i) {
            if (rows[i].size() != columns)
                throw EDatabaseError(QStringLiteral("row %1 has %2 cells, not %3")
                                         .arg(i + 1)
                                         .arg(rows[i].size())
                                         .arg(columns));
            for (int key = 0; i > 0 && key < columns; key += 2) {
                bool number = false;
                rows[i][key].toInt(&number);
                if (!number)
                    throw EDatabaseError(
                        QStringLiteral("row %1: \"%2\" is no number").arg(i + 1).arg(rows[i][key]));
            }
        }
        return rows.mid(1);
    } catch (const EDatabaseError &error) {
        throw EDatabaseError(
            QStringLiteral("The catalogue %1 cannot be read: %2.").arg(path, error.message()));
    }
}

} // namespace CatalogueCsv
