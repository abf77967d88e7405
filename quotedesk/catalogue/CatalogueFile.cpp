#include "catalogue/CatalogueFile.h"

#include "catalogue/CatalogueError.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>

#include <zlib.h>

namespace QuoteDesk
{
namespace
{

// A packed file of a few kilobytes can unpack to gigabytes; no catalogue comes near this.
constexpr qsizetype MaximumSize = qsizetype{256} * 1024 * 1024;

/// Texts of this file for the person who chose the catalogue.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(CatalogueFile)
};

/// zlib's state of one unpacking, given back in every case.
class Inflater
{
public:
    explicit Inflater(QByteArray &packed)
    {
        m_stream.next_in = reinterpret_cast<Bytef *>(packed.data());
        m_stream.avail_in = static_cast<uInt>(packed.size());
        constexpr int gzipOnly = 16 + MAX_WBITS;
        if (inflateInit2(&m_stream, gzipOnly) != Z_OK)
            throw CatalogueError(Text::tr("no memory to unpack it"));
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
                throw CatalogueError(Text::tr("the packed file is damaged or cut off"));
            result.append(piece.data(), static_cast<qsizetype>(piece.size() - m_stream.avail_out));
            if (result.size() > MaximumSize)
                throw CatalogueError(Text::tr("it is too large for a catalogue"));
            if (state == Z_STREAM_END) {
                // gzip files may be joined end to end; each is a stream of its own.
                if (m_stream.avail_in == 0)
                    return result;
                inflateReset(&m_stream);
            }
        }
    }

private:
    z_stream m_stream{};
};

QString decoded(const QByteArray &bytes, BadText badText)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString result = decoder(bytes);
    if (badText == BadText::Mark || (!decoder.hasError() && !result.contains(QChar::Null)))
        return result;

    // The first line that does not read by itself is the one to name.
    qsizetype start = 0;
    for (int line = 1; start < bytes.size(); ++line) {
        qsizetype end = bytes.indexOf('\n', start);
        end = end < 0 ? bytes.size() : end + 1;
        QStringDecoder lineDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString decodedLine = lineDecoder(QByteArrayView(bytes).sliced(start, end - start));
        if (lineDecoder.hasError() || decodedLine.contains(QChar::Null))
            throw CatalogueError(Text::tr("line %1: this is no text in UTF-8").arg(line));
        start = end;
    }
    throw CatalogueError(Text::tr("line 1: this is no text in UTF-8"));
}

} // namespace

QString readCatalogueFile(const QString &path, BadText badText)
{
    if (QFileInfo(path).isDir())
        throw CatalogueError(Text::tr("it is a folder"));
    if (!QFileInfo::exists(path))
        throw CatalogueError(Text::tr("there is no such file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw CatalogueError(file.errorString());
    QByteArray bytes = file.read(MaximumSize + 1);
    if (file.error() != QFileDevice::NoError)
        throw CatalogueError(file.errorString());
    if (bytes.size() > MaximumSize)
        throw CatalogueError(Text::tr("it is too large for a catalogue"));
    if (bytes.startsWith("\x1f\x8b"))
        bytes = Inflater(bytes).unpack();
    return decoded(bytes, badText);
}

} // namespace QuoteDesk
