#pragma once

#include <QString>

namespace QuoteDesk
{

class QuoteStore;

/// Writes a copy of the file of @p store to @p path, complete even while other programs write to the file. A
/// file with that name is replaced when the copy is complete. The copy can be opened like the file itself,
/// and only its owner can read it. Throws StoreError; a file with that name is unchanged then. Not for a
/// store on a server.
void backUp(QuoteStore &store, const QString &path);

} // namespace QuoteDesk
