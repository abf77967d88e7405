#pragma once

#include "PostgresServer.h"
#include "SelectorCatalogue.h"

/// Runs a class's tests twice: with catalogues in SQLite and with catalogues on a PostgreSQL server of its
/// own. The class calls Rows() in initTestCase_data() and Use() in init().
class SelectorEngines
{
public:
    static void Rows()
    {
        QTest::addColumn<QString>("engine");
        QTest::newRow("sqlite") << QStringLiteral("QSQLITE");
        if (PostgresServer::Offered())
            QTest::newRow("postgresql") << QStringLiteral("QPSQL");
    }
    void Use()
    {
        QFETCH_GLOBAL(const QString, engine);
        const bool served = engine == QLatin1String("QPSQL");
        SelectorCatalogue::NewDatabase() =
            served ? SelectorCatalogue::Opener([this] { return Served(); }) : SelectorCatalogue::Embedded;
        if (served && m_server.ProcessId() == 0)
            QVERIFY2(m_server.Start(), qPrintable(m_server.Reason()));
    }

private:
    QSqlDatabase Served()
    {
        const QString name = QStringLiteral("served%1").arg(++m_count);
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        database.setDatabaseName(QStringLiteral("postgres"));
        database.setHostName(m_server.Host());
        database.setUserName(QStringLiteral("zel"));
        if (!database.open())
            qFatal("%s", qPrintable(database.lastError().text()));
        // One schema per catalogue, so that catalogues do not see each other's tables.
        for (const char *sql : {"create schema %1", "set search_path to %1"}) {
            QSqlQuery query(database);
            if (!query.exec(QString::fromLatin1(sql).arg(name)))
                qFatal("%s", qPrintable(query.lastError().text()));
        }
        return database;
    }

    PostgresServer m_server;
    int m_count = 0;
};
