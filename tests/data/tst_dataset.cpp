#include "DataSetSuite.h"

#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"

using namespace Qt::StringLiterals;

/// The suite on TDataSet, which a provider fills.
class TestDataSet : public DataSetSuite
{
    Q_OBJECT
public:
    std::unique_ptr<TDataSet> make(const QList<TFieldDef> &defs, const Rows &rows) override
    {
        auto dataset = std::make_unique<TClientDataSet>();
        dataset->SetRemoteServer(&m_connection);
        dataset->SetProviderName(u"dspFund"_s);
        store(defs, rows);
        return dataset;
    }
    void replaceRows(TDataSet &, const QList<TFieldDef> &defs, const Rows &rows) override
    {
        store(defs, rows);
    }

private:
    void store(const QList<TFieldDef> &defs, const Rows &rows)
    {
        TTableBuilder builder(defs);
        builder.Reserve(static_cast<int>(rows.size()));
        for (const QVariantList &row : rows)
            builder.AddRow(row);
        const TDataPacket packet(builder.Finish());
        m_connection.RegisterProvider(u"dspFund"_s, [packet](const TParams &) { return packet; });
    }

    TLocalConnection m_connection;
};

ZEL_TEST_MAIN(TestDataSet)
#include "moc_DataSetSuite.cpp"
#include "tst_dataset.moc"
