#pragma once

#include <QByteArrayView>
#include <QList>

namespace QuoteDesk
{

class Database;

/// The statements that lead from one version of the tables to the next, the first from nothing; a version's
/// number is the count of steps it has behind it. ":now" stands for the present time.
QList<QByteArrayView> schemaSteps();

/// Makes the tables, or brings older ones up to date, in one transaction. Raises StoreError, with nothing
/// changed, when the tables are of a newer version or of another program.
void prepareSchema(Database &database);

} // namespace QuoteDesk
