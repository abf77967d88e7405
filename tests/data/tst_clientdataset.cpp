#include "DataSetSuite.h"
#include "SummerTime.h"

#include "data/ClientDataSet.h"
#include "data/DataPacket.h"
#include "data/LocalConnection.h"

using namespace Qt::StringLiterals;

/// Client datasets: packets, clones, providers and parameters. The class also runs the suite on rows from a
/// packet.
class TestClientDataSet : public DataSetSuite
{
    Q_OBJECT
public:
    std::unique_ptr<TDataSet> make(const QList<TFieldDef> &defs, const Rows &rows) override
    {
        auto dataset = std::make_unique<TClientDataSet>();
        dataset->SetData(packetOf(defs, rows));
        dataset->Close();
        return dataset;
    }
    void replaceRows(TDataSet &dataset, const QList<TFieldDef> &defs, const Rows &rows) override
    {
        static_cast<TClientDataSet &>(dataset).SetData(packetOf(defs, rows));
        dataset.Close();
    }

private:
    static TDataPacket packet(const QList<TFieldDef> &defs, const Rows &rows)
    {
        TTableBuilder builder(defs);
        for (const QVariantList &row : rows)
            builder.AddRow(row);
        return TDataPacket(builder.Finish());
    }
    static QVariant packetOf(const QList<TFieldDef> &defs, const Rows &rows)
    {
        return packet(defs, rows).ToVariant();
    }
    static QVariant fundPacket() { return packetOf(fundDefs(), fundRows()); }
    static int id(const TDataSet &dataset) { return dataset.FieldByName(field("FundID"))->AsInteger(); }

private Q_SLOTS:
    // --- packets

    void momentsOfTheHourThatTheClockLeavesOut_data()
    {
        QTest::addColumn<QVariant>("given");
        QTest::newRow("text") << QVariant(field("2024-03-31 02:30:00.250"));
        QTest::newRow("ISO text") << QVariant(field("2024-03-31T02:30:00.250"));
        QTest::newRow("moment") << QVariant(QDateTime(QDate(2024, 3, 31), QTime(2, 30, 0, 250)));
    }

    void momentsOfTheHourThatTheClockLeavesOut()
    {
        // Databases store local times without a time zone. Where the clocks are put forward that night, this
        // hour does not exist for Qt; a dataset must keep it.
        const SummerTime zone;
        QFETCH(const QVariant, given);
        TClientDataSet dataset;
        dataset.SetData(packetOf({{field("When"), TFieldType::DateTime}},
                                 {{QDateTime(QDate(2024, 3, 30), QTime(2, 30))}, {given}}));
        dataset.Next();
        const TField *when = dataset.FieldByName(field("When"));
        QVERIFY(!when->IsNull());
        QCOMPARE(when->AsString(), field("2024-03-31 02:30:00.250"));
        QCOMPARE(when->AsDate(), QDate(2024, 3, 31));
        QCOMPARE(when->AsVariant().toDateTime().date(), QDate(2024, 3, 31));
        QCOMPARE(when->AsVariant().toDateTime().time(), QTime(2, 30, 0, 250));
        dataset.First();
        QVERIFY(dataset.Locate(field("When"), given));
        QCOMPARE(dataset.RecNo(), 2);
        dataset.First();
        QVERIFY(dataset.Locate(field("When"), when->AsVariant()));
        dataset.SetFilter(field("[When] = '2024-03-31 02:30:00.250'"));
        dataset.SetFiltered(true);
        QCOMPARE(dataset.RecordCount(), 1);
        TClientDataSet copy;
        copy.SetData(TDataPacket::FromVariant(dataset.Data()).ToBytes());
        copy.Last();
        QCOMPARE(copy.FieldByName(field("When"))->AsString(), field("2024-03-31 02:30:00.250"));
        // The same moment read as a text, as a date and as a parameter's value.
        dataset.SetFiltered(false);
        dataset.SetData(packetOf({{field("Text"), TFieldType::String}, {field("Day"), TFieldType::Date}},
                                 {{given, given}}));
        QCOMPARE(dataset.FieldByName(field("Day"))->AsDate(), QDate(2024, 3, 31));
        if (given.typeId() == QMetaType::QDateTime)
            QCOMPARE(dataset.FieldByName(field("Text"))->AsString(), field("2024-03-31 02:30:00.250"));
        dataset.Params().Add(field("When"), TParamDataType::DateTime).SetValue(given);
        QVERIFY(!dataset.Params()[0].IsNull());
        QCOMPARE(dataset.Params()[0].AsString(), field("2024-03-31 02:30:00.250"));
    }

    void aPacketOpensAndIsShared()
    {
        TClientDataSet first;
        first.SetData(fundPacket());
        QVERIFY(first.Active());
        QCOMPARE(first.RecordCount(), 5);
        TClientDataSet second;
        QVERIFY(!second.Data().isValid());
        second.SetData(first.Data());
        QCOMPARE(second.Table().get(), first.Table().get());
        second.Next();
        QCOMPARE(id(first), 10);
        QCOMPARE(id(second), 20);
    }

    void aPacketIsShownAgain()
    {
        TClientDataSet dataset;
        dataset.SetData(fundPacket());
        const TTablePtr table = dataset.Table();
        dataset.Close();
        QVERIFY(!dataset.Data().isValid());
        dataset.Open();
        QCOMPARE(dataset.Table().get(), table.get());
    }

    void bytesAreAPacket()
    {
        TClientDataSet dataset;
        dataset.SetData(packet(fundDefs(), fundRows()).ToBytes());
        QCOMPARE(visibleIDs(dataset), (QList<int>{10, 20, 30, 40, 50}));
    }

    void aRefusedPacketLeavesEverything()
    {
        TClientDataSet dataset;
        dataset.setObjectName(field("cdsFund"));
        dataset.SetData(fundPacket());
        dataset.SetFilter(field("FundID > 10"));
        dataset.SetFiltered(true);
        dataset.Next();
        const TBookmark mark = dataset.GetBookmark();
        int closings = 0;
        dataset.BeforeClose = [&](TDataSet *) { ++closings; };
        QByteArray damaged = packet(fundDefs(), fundRows()).ToBytes();
        damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 1);
        // The last packet is valid but lacks the filter's column.
        for (const QVariant &bad : {QVariant(), QVariant(damaged), QVariant(5), QVariant(QByteArray("x")),
                                    packetOf({{field("Other"), TFieldType::Integer}}, {{1}})}) {
            QVERIFY_THROWS_EXCEPTION(EDatabaseError, dataset.SetData(bad));
            QVERIFY(dataset.Active());
            QCOMPARE(id(dataset), 30);
            QCOMPARE(dataset.RecordCount(), 4);
            QVERIFY(dataset.BookmarkValid(mark));
        }
        QCOMPARE(closings, 0);
        dataset.FreeBookmark(mark);
        dataset.Close();
        dataset.Open();
        QCOMPARE(dataset.RecordCount(), 4);
    }

    void aPacketClosesFirst()
    {
        TClientDataSet dataset;
        dataset.SetData(fundPacket());
        const TBookmark mark = dataset.GetBookmark();
        QStringList steps;
        dataset.BeforeClose = [&](TDataSet *) {
            steps.append(field("BeforeClose"));
            dataset.FreeBookmark(mark);
        };
        dataset.AfterClose = [&](TDataSet *) { steps.append(field("AfterClose")); };
        dataset.BeforeOpen = [&](TDataSet *) { steps.append(field("BeforeOpen")); };
        dataset.AfterOpen = [&](TDataSet *) { steps.append(field("AfterOpen")); };
        dataset.SetData(packetOf(fundDefs(), fundRows().mid(2)));
        QCOMPARE(steps, (QStringList{field("BeforeClose"), field("AfterClose"), field("BeforeOpen"),
                                     field("AfterOpen")}));
        QCOMPARE(dataset.BookmarksLost(), 0);
        QVERIFY(!dataset.BookmarkValid(mark));
        QCOMPARE(visibleIDs(dataset), (QList<int>{30, 40, 50}));
    }

    void aCloseThatIsRefusedKeepsTheOldPacket()
    {
        TClientDataSet dataset;
        dataset.SetData(fundPacket());
        dataset.BeforeClose = [](TDataSet *) { throw EDatabaseError(field("busy")); };
        QCOMPARE(messageOf<EDatabaseError>([&] { dataset.SetData(packetOf(fundDefs(), {})); }),
                 field("busy"));
        QCOMPARE(dataset.RecordCount(), 5);
        dataset.BeforeClose = nullptr;
        dataset.Close();
        dataset.Open();
        QCOMPARE(dataset.RecordCount(), 5);
    }

    void fieldsOfAFormerTableAreNotFollowed()
    {
        TClientDataSet dataset;
        dataset.SetData(fundPacket());
        const TField *name = dataset.FieldByName(field("FundName"));
        QCOMPARE(name->AsString(), field("Opal Balanced Fund"));
        dataset.Close();
        QVERIFY(name->IsNull());
        QCOMPARE(name->AsString(), QString());
        QCOMPARE(name->AsInteger(), 0);
        QVERIFY(!name->AsVariant().isValid());
        // A later table with fewer columns has no value for the field.
        dataset.SetData(packetOf({{field("Other"), TFieldType::Integer}}, {{1}}));
        QVERIFY(name->IsNull());
        QCOMPARE(name->AsString(), QString());
    }

    // --- clones

    void aCloneHasItsOwnCursor()
    {
        TClientDataSet source;
        source.SetData(fundPacket());
        source.SetRecNo(3);
        TClientDataSet clone;
        clone.CloneCursor(&source, false, false);
        QCOMPARE(clone.CloneSource(), &source);
        QCOMPARE(clone.Table().get(), source.Table().get());
        QCOMPARE(id(clone), 30);
        clone.Last();
        QCOMPARE(id(source), 30);
        clone.CloneCursor(&source, true, false);
        QCOMPARE(id(clone), 10);
        QVERIFY(clone.Bof());
        source.First();
        QCOMPARE(id(source), 10);
    }

    void aCloneTakesSettingsOrNone()
    {
        TClientDataSet source;
        source.SetData(fundPacket());
        source.SetFilterOptions(TFilterOption::CaseInsensitive);
        source.SetFilter(field("FundName like 'OPAL%'"));
        source.SetFiltered(true);
        source.Last();
        TClientDataSet kept;
        kept.CloneCursor(&source, false, true);
        QCOMPARE(kept.Filter(), source.Filter());
        QVERIFY(kept.Filtered());
        QVERIFY(kept.FilterOptions() == TFilterOptions(TFilterOption::CaseInsensitive));
        QCOMPARE(id(kept), 30);
        QCOMPARE(visibleIDs(kept), (QList<int>{10, 30}));
        TClientDataSet bare;
        bare.SetFilter(field("FundID = 10"));
        bare.SetFiltered(true);
        bare.SetFilterOptions(TFilterOption::CaseInsensitive);
        bare.CloneCursor(&source, false, false);
        QCOMPARE(bare.Filter(), QString());
        QVERIFY(!bare.Filtered());
        QVERIFY(bare.FilterOptions() == TFilterOptions());
        QCOMPARE(id(bare), 30);
        QCOMPARE(bare.RecordCount(), 5);
        kept.SetFilter(field("FundID = 10"));
        QCOMPARE(kept.RecordCount(), 1);
        QCOMPARE(visibleIDs(source), (QList<int>{10, 30}));
    }

    void aClonesBookmarksAreItsOwn()
    {
        TClientDataSet source;
        source.SetData(fundPacket());
        TClientDataSet clone;
        clone.CloneCursor(&source, true, true);
        const TBookmark ofSource = source.GetBookmark();
        const TBookmark ofClone = clone.GetBookmark();
        QVERIFY(ofSource != ofClone);
        QVERIFY(!clone.BookmarkValid(ofSource));
        QVERIFY(!source.BookmarkValid(ofClone));
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, clone.GotoBookmark(ofSource));
        source.FreeBookmark(ofClone);
        QCOMPARE(source.BookmarksHandedOut(), 1);
        QCOMPARE(clone.BookmarksHandedOut(), 1);
        source.FreeBookmark(ofSource);
        clone.FreeBookmark(ofClone);
        QCOMPARE(source.BookmarksHandedOut() + clone.BookmarksHandedOut(), 0);
    }

    void aBookmarkOfADestroyedDatasetIsRefused()
    {
        auto source = std::make_unique<TClientDataSet>();
        source->SetData(fundPacket());
        TClientDataSet clone;
        clone.CloneCursor(source.get(), true, true);
        const TBookmark mark = source->GetBookmark();
        source.reset();
        QVERIFY(!clone.BookmarkValid(mark));
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, clone.GotoBookmark(mark));
        // A new dataset, perhaps at the same address, must refuse the old one's bookmarks.
        source = std::make_unique<TClientDataSet>();
        source->SetData(fundPacket());
        QVERIFY(!source->BookmarkValid(mark));
    }

    void aCloneOutlivesItsSource()
    {
        TClientDataSet clone;
        {
            TClientDataSet source;
            source.SetData(fundPacket());
            clone.CloneCursor(&source, true, true);
            source.Close();
            QCOMPARE(clone.RecordCount(), 5);
        }
        QVERIFY(!clone.CloneSource());
        QCOMPARE(visibleIDs(clone), (QList<int>{10, 20, 30, 40, 50}));
        QVERIFY(clone.Locate(field("FundID"), 40));
        clone.Close();
        clone.Open();
        QCOMPARE(clone.RecordCount(), 5);
        QCOMPARE(id(clone), 10);
    }

    void aCloneOpenedAgainFollowsItsSource()
    {
        TClientDataSet source;
        source.SetData(fundPacket());
        TClientDataSet clone;
        clone.CloneCursor(&source, true, false);
        source.SetData(packetOf(fundDefs(), fundRows().mid(3)));
        QCOMPARE(clone.RecordCount(), 5);
        clone.Close();
        clone.Open();
        QCOMPARE(visibleIDs(clone), (QList<int>{40, 50}));
        source.Close();
        clone.Close();
        clone.Open();
        QCOMPARE(clone.RecordCount(), 2);
    }

    void cloningWithoutASourceIsRefused()
    {
        TClientDataSet source;
        source.setObjectName(field("cdsSource"));
        TClientDataSet clone;
        clone.setObjectName(field("cdsClone"));
        clone.SetData(fundPacket());
        clone.Next();
        const QString message = messageOf<EDatabaseError>([&] { clone.CloneCursor(&source, true, true); });
        QVERIFY(message.contains(field("cdsSource")) && message.contains(field("cdsClone")));
        // A dataset without an object name is named by its class.
        source.setObjectName(QString());
        QCOMPARE(messageOf<EDatabaseError>([&] { clone.CloneCursor(&source, true, true); }),
                 u"Dataset \"cdsClone\" cannot clone dataset \"TClientDataSet\", which is not open."_s);
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, clone.CloneCursor(nullptr, true, true));
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, clone.CloneCursor(&clone, true, true));
        QCOMPARE(id(clone), 20);
    }

    // --- providers

    void aProviderGetsTheParameters()
    {
        TLocalConnection connection;
        connection.RegisterProvider(field("dspFundGroup"), [](const TParams &params) {
            const int group = params.ParamByName(u"pproductgroupid"_s).AsInteger();
            return packet({{field("FundID"), TFieldType::Integer}}, {{group}, {group + 1}});
        });
        TClientDataSet dataset;
        dataset.Params().Add(field("pProductGroupID"), TParamDataType::FixedChar);
        dataset.SetRemoteServer(&connection);
        dataset.SetProviderName(field("DSPFUNDGROUP"));
        int group = 7;
        dataset.BeforeOpen = [&](TDataSet *sender) {
            sender->Params().ParamByName(field("pProductGroupID")).SetAsInteger(group);
        };
        dataset.Open();
        QCOMPARE(visibleIDs(dataset), (QList<int>{7, 8}));
        QCOMPARE(dataset.Params()[0].Value(), QVariant(field("7")));
        group = 20;
        dataset.Close();
        dataset.Open();
        QCOMPARE(visibleIDs(dataset), (QList<int>{20, 21}));
    }

    void missingProvidersAreNamed()
    {
        TLocalConnection connection;
        TClientDataSet dataset;
        dataset.setObjectName(field("cdsFundGroup"));
        QVERIFY(messageOf<EDatabaseError>([&] { dataset.Open(); }).contains(field("cdsFundGroup")));
        dataset.SetProviderName(field("dspMissing"));
        QVERIFY(messageOf<EDatabaseError>([&] { dataset.Open(); }).contains(field("dspMissing")));
        dataset.SetRemoteServer(&connection);
        QVERIFY(messageOf<EDatabaseError>([&] { dataset.Open(); }).contains(field("dspMissing")));
        QVERIFY(!dataset.Active());
        connection.RegisterProvider(field("dspMissing"), [](const TParams &) { return TDataPacket(); });
        QVERIFY(messageOf<EDatabaseError>([&] { dataset.Open(); }).contains(field("dspMissing")));
        connection.RegisterProvider(
            field("dspMissing"), [](const TParams &) -> TDataPacket { throw EDatabaseError(field("down")); });
        QCOMPARE(messageOf<EDatabaseError>([&] { dataset.Open(); }), field("down"));
        QVERIFY(!dataset.Active());
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, connection.GetRecords(field("dspNone"), {}));
    }

    void aConnectionMayGoFirst()
    {
        auto connection = std::make_unique<TLocalConnection>();
        TClientDataSet dataset;
        dataset.SetRemoteServer(connection.get());
        dataset.SetProviderName(field("dspFund"));
        connection->RegisterProvider(field("dspFund"),
                                     [](const TParams &) { return packet(fundDefs(), fundRows()); });
        dataset.Open();
        connection.reset();
        QVERIFY(!dataset.RemoteServer());
        QCOMPARE(dataset.RecordCount(), 5);
        dataset.Close();
        QVERIFY(messageOf<EDatabaseError>([&] { dataset.Open(); }).contains(field("dspFund")));
    }

    void theLastSourceDecides()
    {
        TLocalConnection connection;
        connection.RegisterProvider(field("dspOne"), [](const TParams &) {
            return packet({{field("FundID"), TFieldType::Integer}}, {{1}});
        });
        TClientDataSet dataset;
        dataset.SetRemoteServer(&connection);
        dataset.SetProviderName(field("dspOne"));
        dataset.SetData(fundPacket());
        dataset.Close();
        dataset.Open();
        QCOMPARE(dataset.RecordCount(), 5);
        dataset.SetProviderName(field("dspOne"));
        QCOMPARE(dataset.RecordCount(), 5);
        dataset.Close();
        dataset.Open();
        QCOMPARE(visibleIDs(dataset), QList<int>{1});
        TClientDataSet other;
        other.SetData(fundPacket());
        dataset.CloneCursor(&other, true, false);
        QCOMPARE(dataset.RecordCount(), 5);
        dataset.SetData(packetOf(fundDefs(), {}));
        QVERIFY(!dataset.CloneSource());
        QVERIFY(dataset.IsEmpty());
    }

    void openingAndClosingInsideAHandlerIsHarmless()
    {
        TClientDataSet dataset;
        dataset.SetData(fundPacket());
        dataset.Close();
        int openings = 0;
        dataset.BeforeOpen = [&](TDataSet *sender) {
            ++openings;
            sender->Open();
        };
        dataset.Open();
        QCOMPARE(openings, 1);
        QVERIFY(dataset.Active());
        int closings = 0;
        dataset.BeforeClose = [&](TDataSet *sender) {
            ++closings;
            sender->Close();
        };
        dataset.Close();
        QCOMPARE(closings, 1);
        QVERIFY(!dataset.Active());
        dataset.BeforeOpen = [&](TDataSet *) { dataset.SetData(fundPacket()); };
        dataset.Open();
        QCOMPARE(dataset.RecordCount(), 5);
        dataset.SetData(packetOf(fundDefs(), {}));
        QCOMPARE(dataset.RecordCount(), 5);
    }

    void destroyedOpenItRunsNoHandlers()
    {
        int closings = 0;
        {
            TClientDataSet dataset;
            dataset.SetData(fundPacket());
            dataset.BeforeClose = dataset.AfterClose = [&](TDataSet *) { ++closings; };
        }
        QCOMPARE(closings, 0);
    }

    // --- parameters

    void parametersKeepTheirKind()
    {
        TParams params;
        params.Add(field("pFixed"), TParamDataType::FixedChar).SetAsInteger(42);
        params.Add(field("pInt"), TParamDataType::Integer).SetAsString(field(" 42 "));
        params.Add(field("pAny")).SetAsFloat(1.5);
        params.Add(field("pMoney"), TParamDataType::Currency).SetAsString(field("12.5"));
        params.Add(field("pDate"), TParamDataType::Date).SetAsString(field("2024-02-29"));
        params.Add(field("pOut"), TParamDataType::Integer, TParamType::Output);
        QCOMPARE(params.Count(), 6);
        QCOMPARE(params[0].Value(), QVariant(field("42")));
        QCOMPARE(params[0].AsInteger(), 42);
        QCOMPARE(params[1].Value(), QVariant(42));
        QCOMPARE(params[1].AsString(), field("42"));
        QCOMPARE(params[2].Value(), QVariant(1.5));
        QCOMPARE(params[3].Value().value<Currency>(), Currency::fromRaw(125000));
        QCOMPARE(params[4].Value(), QVariant(QDate(2024, 2, 29)));
        QVERIFY(params[5].IsNull());
        QCOMPARE(params[5].AsInteger(), 0);
        QCOMPARE(params[5].AsString(), QString());
        QCOMPARE(&params.ParamByName(field("PINT")), &params[1]);
        params[0].Clear();
        QVERIFY(params[0].IsNull());
        params[0].SetValue(QVariant());
        QVERIFY(params[0].IsNull());
        params[0].SetAsCurrency(Currency::fromRaw(125000));
        QCOMPARE(params[0].AsString(), field("12.5"));
    }

    void badParametersAreNamed()
    {
        TParams params;
        params.Add(field("pInt"), TParamDataType::Integer).SetAsInteger(5);
        QVERIFY(
            messageOf<EDatabaseError>([&] { params.ParamByName(field("pNone")); }).contains(field("pNone")));
        const TParams &fixed = params;
        QVERIFY(
            messageOf<EDatabaseError>([&] { fixed.ParamByName(field("pNone")); }).contains(field("pNone")));
        QVERIFY(!params.FindParam(field("pNone")));
        QVERIFY(!fixed.FindParam(field("pNone")));
        const QString message = messageOf<EConvertError>([&] { params[0].SetAsString(field("five")); });
        QVERIFY(message.contains(field("pInt")) && message.contains(field("five")));
        QCOMPARE(params[0].AsInteger(), 5);
        // An amount with cents does not fit an integer parameter.
        QVERIFY_THROWS_EXCEPTION(EConvertError, params[0].SetAsCurrency(Currency::fromRaw(60001)));
        QCOMPARE(params[0].AsInteger(), 5);
        params[0].SetAsCurrency(Currency(6));
        QCOMPARE(params[0].AsInteger(), 6);
        QVERIFY_THROWS_EXCEPTION(EListError, params[1]);
        QVERIFY_THROWS_EXCEPTION(EListError, params[-1]);
        params.Add(field("pText")).SetAsString(field("2147483648"));
        QVERIFY(messageOf<EConvertError>([&] { (void)params[1].AsInteger(); }).contains(field("pText")));
        params.Clear();
        QCOMPARE(params.Count(), 0);
    }
};

ZEL_TEST_MAIN(TestClientDataSet)
#include "moc_DataSetSuite.cpp"
#include "tst_clientdataset.moc"
