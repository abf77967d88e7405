#pragma once

#include <QString>

namespace QuoteDesk
{

/// What to do with lines that are not valid UTF-8.
enum class BadText {
    Refuse, ///< Refuse the file; the message names the first such line.
    Mark    ///< Read invalid bytes as replacement characters.
};

/// The text of a catalogue file, uncompressed or compressed with gzip, in UTF-8 with or without a byte order
/// mark. Throws CatalogueError for a file that cannot be read, is damaged or has more than 256 MB of text.
QString readCatalogueFile(const QString &path, BadText badText = BadText::Refuse);

} // namespace QuoteDesk
