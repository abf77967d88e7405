#pragma once

#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"

#include <utility>

/// Records the bookmarks that a test's datasets handed out and never got back. Each test's cleanup expects
/// none. Views are declared after their datasets, so they are destroyed before a dataset's bookmarks are
/// counted.
class Leftovers
{
public:
    /// The text of all records since the last call.
    static QString Take() { return std::exchange(All(), {}).join(QStringLiteral("; ")); }
    static void Note(const TDataSet &dataSet, int out, int lost)
    {
        if (dataSet.BookmarksHandedOut() != out)
            All().append(QStringLiteral("%1 not given back").arg(dataSet.BookmarksHandedOut()));
        if (dataSet.BookmarksLost() != lost)
            All().append(QStringLiteral("%1 made void by a close").arg(dataSet.BookmarksLost()));
    }

private:
    static QStringList &All()
    {
        static QStringList all;
        return all;
    }
};

/// A dataset of the given class that reports to Leftovers in its destructor. The tests of this folder use it
/// for all of their datasets.
template <typename DataSet> class Watched : public DataSet
{
public:
    using DataSet::DataSet;
    ~Watched() override { Leftovers::Note(*this, m_out, m_lost); }
    /// The number of bookmarks still handed out at the end, for a dataset destroyed before its views.
    void ExpectOut(int bookmarks) { m_out = bookmarks; }
    /// The number of bookmarks that a close made void.
    void ExpectLost(int bookmarks) { m_lost = bookmarks; }

private:
    int m_out = 0;
    int m_lost = 0;
};

/// A packet with the given rows. A field is "Name" (text) or "#Name" (32-bit integer).
inline TDataPacket packetOf(const QStringList &fields, const QList<QVariantList> &rows)
{
    QList<TFieldDef> defs;
    for (const QString &field : fields) {
        if (field.startsWith(QLatin1Char('#')))
            defs.append({field.mid(1), TFieldType::Integer});
        else
            defs.append({field, TFieldType::String});
    }
    TTableBuilder builder(defs);
    builder.Reserve(static_cast<int>(rows.size()));
    for (const QVariantList &row : rows)
        builder.AddRow(row);
    return TDataPacket(builder.Finish());
}

/// A dataset with its own provider; a test may change Rows before the dataset is opened again.
class Source
{
public:
    Source(const QStringList &fields, const QList<QVariantList> &rows) : Rows(rows), m_fields(fields)
    {
        m_connection.RegisterProvider(QStringLiteral("rows"),
                                      [this](const TParams &) { return packetOf(m_fields, Rows); });
        DataSet.SetRemoteServer(&m_connection);
        DataSet.SetProviderName(QStringLiteral("rows"));
        DataSet.Open();
    }
    QList<QVariantList> Rows;
    Watched<TClientDataSet> DataSet;

private:
    QStringList m_fields;
    TLocalConnection m_connection;
};
