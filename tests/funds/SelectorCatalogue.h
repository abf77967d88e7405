#pragma once

#include "data/DataPacket.h"
#include "data/Exceptions.h"
#include "data/LocalConnection.h"
#include "data/Table.h"
#include "examples/CatalogueCsv.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

#include <atomic>
#include <functional>
#include <memory>

/// A fund catalogue in a database and the providers that deliver it, as a host gives them to a fund selector.
/// Each object has an empty database of its own, in SQLite unless NewDatabase() is changed.
class SelectorCatalogue
{
public:
    SelectorCatalogue() : SelectorCatalogue(NewDatabase()()) {}
    explicit SelectorCatalogue(QSqlDatabase database) : m_database(std::move(database))
    {
        run("create table group_type (id integer, description varchar(200))");
        run("create table fund_group (id integer, type_id integer, name varchar(200))");
        run("create table fund (id integer, group_id integer, name varchar(400), url varchar(200), "
            "product_id integer, place integer)");
        run("create table offer (product_id integer, product_group_id integer, fund_group_id integer, kind "
            "varchar(20))");
        m_connection.RegisterProvider(QStringLiteral("dspFundGroupType"), [this](const TParams &params) {
            note(QStringLiteral("dspFundGroupType"), params);
            return rows({{QStringLiteral("GroupTypeID"), TFieldType::Integer},
                         {QStringLiteral("GroupTypeDesc"), TFieldType::String}},
                        "select id, description from group_type order by id");
        });
        m_connection.RegisterProvider(QStringLiteral("dspFundGroup"), [this](const TParams &params) {
            note(QStringLiteral("dspFundGroup"), params);
            return rows({{QStringLiteral("FundGroupID"), TFieldType::Integer},
                         {QStringLiteral("GroupTypeID"), TFieldType::Integer},
                         {QStringLiteral("FundGroupName"), TFieldType::String}},
                        "select id, type_id, name from fund_group order by type_id, id");
        });
        m_connection.RegisterProvider(QStringLiteral("dspFundPerProduct"), [this](const TParams &params) {
            note(QStringLiteral("dspFundPerProduct"), params);
            return rows({{QStringLiteral("FundGroupID"), TFieldType::Integer},
                         {QStringLiteral("Kind"), TFieldType::String}},
                        "select fund_group_id, kind from offer where product_id = ? and product_group_id = ? "
                        "order by fund_group_id",
                        {params.ParamByName(QStringLiteral("pProductID")).AsInteger(),
                         params.ParamByName(QStringLiteral("pProductGroupID")).AsInteger()});
        });
    }
    ~SelectorCatalogue()
    {
        const QString name = m_database.connectionName();
        m_addFund.reset();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
    }
    SelectorCatalogue(const SelectorCatalogue &) = delete;
    SelectorCatalogue &operator=(const SelectorCatalogue &) = delete;

    using Opener = std::function<QSqlDatabase()>;
    /// The function that opens the database of the next catalogue.
    static Opener &NewDatabase()
    {
        static Opener opener = Embedded;
        return opener;
    }
    static QSqlDatabase Embedded()
    {
        static std::atomic<int> count = 0;
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("catalogue%1").arg(++count));
        database.setDatabaseName(QStringLiteral(":memory:"));
        if (!database.open())
            qFatal("%s", qPrintable(database.lastError().text()));
        return database;
    }

    static constexpr int product = 7;
    static constexpr int productGroup = 3;

    void addType(int id, const QString &description)
    {
        run("insert into group_type values (?, ?)", {id, description});
    }
    void addGroup(int id, int type, const QVariant &name)
    {
        run("insert into fund_group values (?, ?, ?)", {id, type, name});
    }
    void addFund(int id, int group, const QString &name, const QString &url = {})
    {
        if (!m_addFund) {
            m_addFund = std::make_unique<QSqlQuery>(m_database);
            m_addFund->prepare(QStringLiteral("insert into fund values (?, ?, ?, ?, ?, ?)"));
        }
        const QVariantList values{id, group, name, url, product, ++m_place};
        for (int i = 0; i < values.size(); ++i)
            m_addFund->bindValue(i, values.at(i));
        if (!m_addFund->exec())
            throw EDatabaseError(m_addFund->lastError().text());
    }
    void offer(int group, const QString &kind = QStringLiteral("fund"))
    {
        run("insert into offer values (?, ?, ?, ?)", {product, productGroup, group, kind});
    }

    /// Two types with five funds: Equity (10: 101, 102, 103) and Money Market (11: 111) under Unit Trusts,
    /// Property (20: 201) under Specialist.
    void fillSmall()
    {
        addType(1, QStringLiteral("Unit Trusts"));
        addType(2, QStringLiteral("Specialist"));
        addGroup(10, 1, QStringLiteral("Equity"));
        addGroup(11, 1, QStringLiteral("Money Market"));
        addGroup(20, 2, QStringLiteral("Property"));
        addFund(101, 10, QStringLiteral(" Alpha Fund "), QStringLiteral("https://funds.example/101"));
        addFund(102, 10, QStringLiteral("Beta Fund"));
        addFund(103, 10, QStringLiteral("Gamma Fund"), QStringLiteral("https://funds.example/103"));
        addFund(111, 11, QStringLiteral("Cash Fund"), QStringLiteral("   "));
        addFund(201, 20, QStringLiteral("Estate Fund"), QStringLiteral("https://funds.example/201"));
        for (const int group : {10, 11, 20})
            offer(group);
    }
    /// Adds groups without funds to the small catalogue: 12 and 40, which no product offers, and 15, which
    /// the product offers; also a type (3) whose only group is 40.
    void addChildlessGroups()
    {
        addType(3, QStringLiteral("Discontinued"));
        addGroup(12, 2, QStringLiteral("Closed Group"));
        addGroup(15, 2, QStringLiteral("Fixed Bonds"));
        addGroup(40, 3, QStringLiteral("Old Group"));
        offer(15, QStringLiteral("bond"));
    }
    /// Adds the rows of a catalogue file.
    void fillFrom(const QString &file)
    {
        int type = 0;
        int group = 0;
        m_database.transaction();
        const QList<QStringList> rows = CatalogueCsv::read(file);
        for (const QStringList &row : rows) {
            if (row[0].toInt() > type) {
                type = row[0].toInt();
                addType(type, row[1]);
            }
            if (row[2].toInt() > group) {
                group = row[2].toInt();
                addGroup(group, type, row[3]);
                offer(group);
            }
            addFund(row[4].toInt(), group, row[5]);
        }
        if (!m_database.commit())
            throw EDatabaseError(m_database.lastError().text());
    }

    TLocalConnection *connection() { return &m_connection; }
    QSqlDatabase &database() { return m_database; }
    /// The packet of the product's funds, by group and in the order in which they were added.
    QVariant fundData() const { return QVariant::fromValue(funds()); }
    TDataPacket funds() const
    {
        return rows({{QStringLiteral("FundID"), TFieldType::Integer},
                     {QStringLiteral("FundGroupID"), TFieldType::Integer},
                     {QStringLiteral("FundName"), TFieldType::String},
                     {QStringLiteral("FundSheetURL"), TFieldType::String},
                     {QStringLiteral("ProductID"), TFieldType::Integer}},
                    "select id, group_id, name, url, product_id from fund order by group_id, place");
    }
    /// The same packet without one field.
    QVariant fundDataWithout(const QString &field) const
    {
        const TDataPacket whole = funds();
        const TTable &table = *whole.Table();
        QList<TFieldDef> defs = table.Defs();
        const int left = table.IndexOf(field);
        defs.removeAt(left);
        TTableBuilder builder(defs);
        for (int row = 0; row < table.RowCount(); ++row) {
            for (int column = 0; column < table.ColumnCount(); ++column) {
                if (column != left)
                    builder.Append(table.Value(row, column));
            }
            builder.EndRow();
        }
        return QVariant::fromValue(TDataPacket(builder.Finish()));
    }

    /// The provider calls so far, e.g. "dspFundGroup pProductGroupID=3".
    QStringList calls;

private:
    QSqlQuery run(const char *sql, const QVariantList &values = {}) const
    {
        QSqlQuery query(m_database);
        // Only statements with values are prepared: PostgreSQL cannot prepare a "create table".
        bool done = false;
        if (values.isEmpty()) {
            done = query.exec(QLatin1String(sql));
        } else {
            done = query.prepare(QLatin1String(sql));
            for (const QVariant &value : values)
                query.addBindValue(value);
            done = done && query.exec();
        }
        if (!done)
            throw EDatabaseError(query.lastError().text());
        return query;
    }
    TDataPacket rows(const QList<TFieldDef> &defs, const char *sql, const QVariantList &values = {}) const
    {
        QSqlQuery query = run(sql, values);
        TTableBuilder builder(defs);
        while (query.next()) {
            for (int column = 0; column < defs.size(); ++column)
                builder.Append(query.isNull(column) ? QVariant() : query.value(column));
            builder.EndRow();
        }
        return TDataPacket(builder.Finish());
    }
    void note(const QString &provider, const TParams &params)
    {
        QString call = provider;
        for (int i = 0; i < params.Count(); ++i)
            call += QStringLiteral(" %1=%2").arg(params[i].Name, params[i].AsString());
        calls.append(call);
    }
    QSqlDatabase m_database;
    std::unique_ptr<QSqlQuery> m_addFund; ///< prepared once, for catalogues with thousands of funds
    TLocalConnection m_connection;
    int m_place = 0;
};
