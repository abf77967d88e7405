#pragma once

#include <QString>

namespace QuoteDesk
{

/// The text of a catalogue file, plain or packed with gzip, in UTF-8 with or without a byte order mark.
/// Raises CatalogueError for a file that cannot be read, is damaged, is no UTF-8 text or unpacks to more than
/// 256 MB.
QString readCatalogueFile(const QString &path);

} // namespace QuoteDesk
