#pragma once

#include <QString>

namespace QuoteDesk
{

/// Checks and prepares a database file before it is opened: creates the folder, makes the file private, and
/// checks that it belongs to this program. A foreign file is not changed by a single byte. Throws StoreError.
void prepareDatabaseFile(const QString &path);

} // namespace QuoteDesk
