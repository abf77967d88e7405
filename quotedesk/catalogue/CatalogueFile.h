#pragma once

#include <QString>

namespace QuoteDesk
{

/// What becomes of lines that are no text in UTF-8.
enum class BadText {
    Refuse, ///< The file is refused, naming the first one.
    Mark    ///< What cannot be read in them becomes a replacement character.
};

/// The text of a catalogue file, plain or packed with gzip, in UTF-8 with or without a byte order mark.
/// Raises CatalogueError for a file that cannot be read, is damaged or unpacks to more than 256 MB.
QString readCatalogueFile(const QString &path, BadText badText = BadText::Refuse);

} // namespace QuoteDesk
