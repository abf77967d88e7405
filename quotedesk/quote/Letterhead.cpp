#include "quote/Letterhead.h"

#include "data/Exceptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QImageReader>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Letterhead)
};

/// Enough for the width of a logo on paper at 300 dots per inch.
constexpr QSize largestLogo(900, 450);
/// A larger picture is no logo and would fill the memory.
constexpr int largestSide = 12'000;

Letterhead &letterheadInForce()
{
    static Letterhead letterhead;
    return letterhead;
}

} // namespace

bool Letterhead::isEmpty() const
{
    return logo.isNull() && firm.isEmpty() && adviser.isEmpty() && licence.isEmpty() && address.isEmpty() &&
           telephone.isEmpty() && email.isEmpty();
}

const Letterhead &Letterhead::current()
{
    return letterheadInForce();
}

void Letterhead::setCurrent(const Letterhead &letterhead)
{
    letterheadInForce() = letterhead;
}

QImage Letterhead::readLogo(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    const auto refuse = [&path](const QString &reason) {
        throw Exception(Text::tr("%1 cannot be used as a logo: %2. Choose a PNG, JPEG or SVG picture.")
                            .arg(QDir::toNativeSeparators(path), reason));
    };
    if (size.isValid() && std::max(size.width(), size.height()) > largestSide)
        refuse(Text::tr("the picture is too large"));
    if (size.isValid() && (size.width() > largestLogo.width() || size.height() > largestLogo.height()))
        reader.setScaledSize(size.scaled(largestLogo, Qt::KeepAspectRatio));
    const QImage logo = reader.read();
    if (logo.isNull())
        refuse(reader.errorString());
    return logo.convertToFormat(QImage::Format_ARGB32);
}

} // namespace QuoteDesk
