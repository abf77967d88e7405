#pragma once

#include <QByteArrayView>
#include <QList>

namespace QuoteDesk
{

class Database;

/// The statements that upgrade the tables from each version to the next, beginning with none. The version
/// number is the number of steps taken. ":now" is replaced by the current time.
QList<QByteArrayView> schemaSteps();

/// Creates the tables or upgrades older ones in one transaction. Throws StoreError, with nothing changed,
/// when the tables are of a newer version or of another program.
void prepareSchema(Database &database);

} // namespace QuoteDesk
