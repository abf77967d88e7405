#pragma once

#include <QString>

namespace QuoteDesk
{

/// Looks at a file of quotes before it is opened and makes it ready: its folder is there, it is nobody else's
/// to read, and it is this program's own; where it is not, it is left byte for byte as it was. Raises
/// StoreError.
void prepareDatabaseFile(const QString &path);

} // namespace QuoteDesk
