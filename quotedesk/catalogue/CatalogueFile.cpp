#include "catalogue/CatalogueFile.h"

#include "catalogue/CatalogueError.h"
#include "catalogue/ShownText.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>

#include <zlib.h>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

// A compressed file of a few kilobytes can expand to gigabytes; real catalogues are far smaller than this
// limit.
constexpr qsizetype MaximumSize = qsizetype{256} * 1024 * 1024;

/// The context of this file's messages.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(CatalogueFile)
};

/// Owns zlib's state for decompression.
class Inflater
{
public:
    explicit Inflater(QByteArray &packed)
    {
        m_stream.next_in = reinterpret_cast<Bytef *>(packed.data());
        m_stream.avail_in = static_cast<uInt>(packed.size());
        constexpr int gzipOnly = 16 + MAX_WBITS;
        if (inflateInit2(&m_stream, gzipOnly) != Z_OK)
            throw CatalogueError(Text::tr("there is not enough memory to unpack it"));
    }
    ~Inflater() { inflateEnd(&m_stream); }
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;

    QByteArray unpack()
    {
        QByteArray result;
        std::array<char, 65536> piece{};
        for (;;) {
            m_stream.next_out = reinterpret_cast<Bytef *>(piece.data());
            m_stream.avail_out = static_cast<uInt>(piece.size());
            const int state = inflate(&m_stream, Z_NO_FLUSH);
            if (state != Z_OK && state != Z_STREAM_END)
                throw CatalogueError(Text::tr("the packed file is damaged or cut off; get it again"));
            result.append(piece.data(), static_cast<qsizetype>(piece.size() - m_stream.avail_out));
            if (result.size() > MaximumSize)
                throw CatalogueError(Text::tr("it is too large for a catalogue; choose another file"));
            if (state == Z_STREAM_END) {
                // A gzip file may consist of several streams.
                if (m_stream.avail_in == 0)
                    return result;
                inflateReset(&m_stream);
            }
        }
    }

private:
    z_stream m_stream{};
};

/// Names the format of files that are often mistaken for a catalogue, by their first bytes; blank for other
/// files.
QString knownKind(const QByteArray &bytes)
{
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff"))
        return Text::tr("it is text in UTF-16; save it as UTF-8");
    if (bytes.startsWith("PK\x03\x04"))
        return Text::tr("it is a ZIP archive or a workbook of a spreadsheet program; save the funds as CSV");
    if (bytes.startsWith("\xd0\xcf\x11\xe0"))
        return Text::tr("it is a document or a workbook of an older program; save the funds as CSV");
    if (bytes.startsWith("%PDF-"))
        return Text::tr("it is a PDF document; a catalogue is a CSV file");
    if (bytes.startsWith("SQLite format 3"))
        return Text::tr("it is a database; a catalogue is a CSV file");
    return {};
}

/// The number of bytes at the start of a line that are valid UTF-8 without a zero character.
qsizetype goodBytes(QByteArrayView line)
{
    constexpr qsizetype longest = 4;
    const auto isCharacter = [](QByteArrayView bytes) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString read = decoder(bytes);
        return !decoder.hasError() && !read.contains(QChar::Null);
    };
    for (qsizetype good = 0;;) {
        qsizetype length = 1;
        while (length <= longest && good + length <= line.size() && !isCharacter(line.sliced(good, length)))
            ++length;
        if (length > longest || good + length > line.size())
            return good;
        good += length;
    }
}

/// Refuses the file because of its first line that is not valid UTF-8.
[[noreturn]] void refuseEncoding(const QByteArray &bytes)
{
    constexpr qsizetype shown = 30;
    qsizetype start = 0;
    for (int line = 1; start < bytes.size(); ++line) {
        qsizetype end = bytes.indexOf('\n', start);
        end = end < 0 ? bytes.size() : end + 1;
        const QByteArrayView text = QByteArrayView(bytes).sliced(start, end - start);
        QStringDecoder lineDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString decodedLine = lineDecoder(text);
        if (lineDecoder.hasError() || decodedLine.contains(QChar::Null)) {
            const qsizetype good = goodBytes(text);
            const QString before = shownText(QString::fromUtf8(text.first(good)).right(shown));
            const auto byte = static_cast<unsigned char>(good < text.size() ? text.at(good) : 0);
            throw CatalogueError(
                Text::tr("line %1: this is not text in UTF-8: byte %2 after \"%3\"; save the file as UTF-8")
                    .arg(line)
                    .arg(u"0x%1"_s.arg(byte, 2, 16, QLatin1Char('0')), before));
        }
        start = end;
    }
    throw CatalogueError(Text::tr("line 1: this is not text in UTF-8; save the file as UTF-8"));
}

QString decoded(const QByteArray &bytes, BadText badText)
{
    if (const QString kind = knownKind(bytes); !kind.isEmpty())
        throw CatalogueError(kind);
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString result = decoder(bytes);
    if (badText == BadText::Refuse && (decoder.hasError() || result.contains(QChar::Null)))
        refuseEncoding(bytes);
    return result;
}

/// Reads a file up to the maximum size of a catalogue. Reads in pieces, because a single read allocates the
/// requested size at once and a file's reported size is not reliable.
QByteArray readAll(QFile &file)
{
    QByteArray bytes;
    // Reserves the reported size, but never more than the maximum.
    bytes.reserve(std::min(file.size(), MaximumSize) + 1);
    std::array<char, 65536> piece{};
    for (;;) {
        const qint64 read = file.read(piece.data(), static_cast<qint64>(piece.size()));
        if (read < 0 || file.error() != QFileDevice::NoError)
            throw CatalogueError(file.errorString());
        if (read == 0)
            return bytes;
        bytes.append(piece.data(), static_cast<qsizetype>(read));
        if (bytes.size() > MaximumSize)
            throw CatalogueError(Text::tr("it is too large for a catalogue; choose another file"));
    }
}

} // namespace

QString readCatalogueFile(const QString &path, BadText badText)
{
    if (QFileInfo(path).isDir())
        throw CatalogueError(Text::tr("it is a folder; choose a file"));
    if (!QFileInfo::exists(path))
        throw CatalogueError(Text::tr("there is no such file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw CatalogueError(file.errorString());
    QByteArray bytes = readAll(file);
    if (bytes.startsWith("\x1f\x8b"))
        bytes = Inflater(bytes).unpack();
    return decoded(bytes, badText);
}

} // namespace QuoteDesk
