#pragma once

#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"

#include <utility>

/// What the datasets of a test left behind in bookmarks. A test's cleanup asks that there is nothing: views
/// are declared behind their datasets, so they are gone when a dataset's count is looked at.
class Leftovers
{
public:
    /// One text for all datasets that are gone since the last call.
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

/// A dataset of the given kind that tells Leftovers at its end how many of its bookmarks are still out. Every
/// dataset of a test of this room is one.
template <typename DataSet> class Watched : public DataSet
{
public:
    using DataSet::DataSet;
    ~Watched() override { Leftovers::Note(*this, m_out, m_lost); }
    /// For tests in which the dataset is destroyed before its views,
    void ExpectOut(int bookmarks) { m_out = bookmarks; }
    /// or is closed while items hold its bookmarks.
    void ExpectLost(int bookmarks) { m_lost = bookmarks; }

private:
    int m_out = 0;
    int m_lost = 0;
};

/// A whole packet of rows; a field is "Name" (text) or "#Name" (32-bit integer).
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

/// Source rows that a test may change between two openings: one provider per dataset.
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
