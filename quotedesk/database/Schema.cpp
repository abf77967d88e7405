#include "database/Schema.h"

#include "database/Database.h"
#include "database/StoreError.h"

#include <QCoreApplication>
#include <QDateTime>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Schema)
};

/// The advisory lock under which programs on one server create the tables one after the other.
constexpr int SchemaLock = 1'902'671;

/// The version of the tables; 0 when there are none.
int versionOf(Database &database)
{
    const bool server = database.engine() == Database::Engine::PostgreSQL;
    const bool known =
        database
            .single(server ? u"SELECT count(*) FROM information_schema.tables WHERE table_schema ="
                             " 'quotedesk' AND table_name = 'schema_version'"_s
                           : u"SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name ="
                             " 'schema_version'"_s)
            .toInt() > 0;
    if (known)
        return database.single(u"SELECT Version FROM schema_version"_s).toInt();
    // Other tables do not matter: on a server the program has its own schema, and a file with another
    // program's tables was not opened.
    return 0;
}

} // namespace

void prepareSchema(Database &database)
{
    const bool server = database.engine() == Database::Engine::PostgreSQL;
    // Opened for writing even when nothing has to be done, so that a read-only database is reported at the
    // start and not at the first save.
    Transaction transaction(database, Transaction::Write);
    if (server)
        database.run(u"SELECT pg_advisory_xact_lock(?)"_s, {SchemaLock});
    const int found = versionOf(database);
    const QList<QByteArrayView> steps = schemaSteps();
    const auto newest = static_cast<int>(steps.size());
    if (found > newest)
        throw StoreError(Text::tr("The database %1 was made by a newer version of Quote Desk (its tables are "
                                  "of version %2, this program knows up to %3). Install the newer version.")
                             .arg(database.location().text())
                             .arg(found)
                             .arg(newest));
    if (found == 0) {
        if (server && database.single(u"SELECT count(*) FROM information_schema.schemata WHERE "
                                      "schema_name = 'quotedesk'"_s)
                              .toInt() == 0)
            database.run(u"CREATE SCHEMA quotedesk"_s);
        database.run(u"CREATE TABLE schema_version (Version INTEGER NOT NULL)"_s);
        database.run(u"INSERT INTO schema_version (Version) VALUES (0)"_s);
    }
    for (int version = found; version < newest; ++version) {
        const QString step =
            QString::fromUtf8(steps.at(version))
                .replace(u":now"_s, QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
        for (const QString &statement : step.split(u";\n"_s, Qt::SkipEmptyParts))
            database.run(statement);
    }
    if (found < newest)
        database.run(u"UPDATE schema_version SET Version = ?"_s, {newest});
    transaction.commit();
}

} // namespace QuoteDesk
