// What the allocation frame knows about its funds, and the buttons that depend on it.
#include "AllocationWindow.h"
#include "Frames.h"

#include "data/Exceptions.h"
#include "host/Kivbase.h"
#include "toolkit/TScreen.h"

using namespace Qt::StringLiterals;

class TestFundInfo : public ZelTest
{
    Q_OBJECT

    struct Info {
        int group = 5, type = 5, term = 5;
        QString name = u"kept"_s, nameAfr = u"behou"_s;
        bool international = true;
        Currency initial = 5, sched = 5, buySell = 5, man = 5, underlying = 5, guarantee = 5, trust = 5;
        QString mainframe = u"x"_s, groupName = u"x"_s, groupNameAfr = u"x"_s;
    };
    static Info infoOf(TfraFundAllocation &frame, int id)
    {
        Info i;
        frame.GetFundInfo(id, i.group, i.type, i.name, i.nameAfr, i.international, i.initial, i.sched,
                          i.buySell, i.man, i.underlying, i.guarantee, i.trust, i.term, i.mainframe,
                          i.groupName, i.groupNameAfr);
        return i;
    }
    static void verifyUnknown(const Info &info)
    {
        QCOMPARE(info.group, -1);
        QCOMPARE(info.type, -1);
        QCOMPARE(info.term, -1);
        QVERIFY(!info.international);
        for (const Currency rate :
             {info.initial, info.sched, info.buySell, info.man, info.underlying, info.guarantee, info.trust})
            QCOMPARE(rate, Currency(-1));
        QCOMPARE(info.mainframe + info.groupName + info.groupNameAfr, QString());
        QCOMPARE(info.name, u"kept"_s); // keeps its former text
        QCOMPARE(info.nameAfr, u"behou"_s);
    }

private Q_SLOTS:
    void allOutputs()
    {
        AllocationWindow window{fundPacket({{.id = 4}, {.id = 6, .group = 33, .groupType = 9, .term = 60}})};
        const Info info = infoOf(*window.frame, 6);
        QCOMPARE(info.group, 33);
        QCOMPARE(info.type, 9);
        QCOMPARE(info.name, u"Fund 6"_s);
        QCOMPARE(info.nameAfr, u"Fonds 6"_s);
        QVERIFY(info.international);
        QCOMPARE(info.initial, money("1000.5"));
        QCOMPARE(info.sched, money("100.25"));
        QCOMPARE(info.buySell, money("1.2345"));
        QCOMPARE(info.man, money("2.5"));
        QCOMPARE(info.underlying, money("0.75"));
        QCOMPARE(info.guarantee, money("3.125"));
        QCOMPARE(info.trust, money("0.1"));
        QCOMPARE(info.term, 60);
        QCOMPARE(info.mainframe, u"M6"_s);
        QCOMPARE(info.groupName, u" Group 33"_s); // not trimmed
        QCOMPARE(info.groupNameAfr, u"Groep 33 "_s);
    }

    void unknownAndClosed()
    {
        AllocationWindow window;
        verifyUnknown(infoOf(*window.frame, 999));
        QVERIFY(window.frame->cdsFunds->Eof());
        AllocationWindow closed{QVariant()};
        verifyUnknown(infoOf(*closed.frame, 1));
    }

    void cursorAfterwards()
    {
        AllocationWindow window;
        TClientDataSet &funds = *window.frame->cdsFunds;
        infoOf(*window.frame, 3);
        QCOMPARE(funds.FieldByName(u"FundID"_s)->AsInteger(), 4);
        QVERIFY(!funds.Eof());
        infoOf(*window.frame, 10);
        QVERIFY(funds.Eof());
        // Only rows that pass the frame's filter are found.
        window.setupIds({2, 5});
        verifyUnknown(infoOf(*window.frame, 3));
        QCOMPARE(infoOf(*window.frame, 2).group, 1);
        QCOMPARE(funds.FieldByName(u"FundID"_s)->AsInteger(), 5);
    }

    void groupTypes_data()
    {
        QTest::addColumn<int>("fund");
        QTest::addColumn<QList<int>>("groups");
        QTest::addColumn<int>("rowType");
        QTest::addColumn<int>("type");
        const auto row = [](const char *what, int fund, const QList<int> &groups, int rowType, int type) {
            QTest::newRow(what) << fund << groups << rowType << type;
        };
        row("plain", 700, {1}, 2, 2);
        row("658 of 59", 658, {1}, 59, 1);
        row("644 of 58", 644, {1}, 58, 1);
        row("678 of 58", 678, {1}, 58, 1);
        row("700 of 58", 700, {1}, 58, 3);
        row("658 of 57", 658, {1}, 57, 57);
        row("group 8", 700, {8}, 58, 8);
        row("38 of group 8", 38, {8}, 5, 5);
        row("38 of group 8, split", 38, {8}, 59, 3);
        row("249", 249, {8}, 5, 5);
        row("210", 210, {8}, 5, 5);
        row("813", 813, {8}, 5, 5);
        row("38 of group 11", 38, {11}, 5, 11);
        row("11 and 13", 700, {11, 13}, 5, 13);
        row("13 and 11", 700, {13, 11}, 5, 13);
        row("8 and 68", 700, {68, 8}, 5, 68);
        row("68 and 11", 700, {11, 68}, 5, 11);
        row("11 and 12", 700, {12, 11}, 5, 12);
        row("12 and 67", 700, {67, 12}, 5, 67);
        row("67 and 14", 700, {14, 67}, 5, 14);
        row("14 and 13", 700, {13, 14}, 5, 13);
    }
    void groupTypes()
    {
        QFETCH(int, fund);
        QFETCH(QList<int>, groups);
        QFETCH(int, rowType);
        QFETCH(int, type);
        QList<FundRow> rows{{.id = 1, .group = 8}, {.id = 2, .group = 13}};
        for (const int group : groups)
            rows.append(FundRow{.id = fund, .group = group, .groupType = rowType});
        AllocationWindow window{fundPacket(rows)};
        const Info info = infoOf(*window.frame, fund);
        QCOMPARE(info.type, type);
        QCOMPARE(info.group, groups.first()); // the group of the first row
        // Another packet has other groups.
        window.frame->Set_FundsPerProductDataSet(
            fundPacket({{.id = fund, .group = 1, .groupType = 4}, {.id = 1}}));
        QCOMPARE(infoOf(*window.frame, fund).type, 4);
    }

    // The groups of all of the product's funds count, not only of those displayed.
    void groupTypesOfFundsOutOfSight()
    {
        AllocationWindow window{fundPacket({{.id = 1, .group = 11}, {.id = 2, .group = 13}, {.id = 3}})};
        window.setupIds({1});
        QCOMPARE(infoOf(*window.frame, 1).type, 11);
        window.setupIds({2});
        QCOMPARE(infoOf(*window.frame, 2).type, 13);
    }

    void performance()
    {
        AllocationWindow window;
        TFundItem item(3);
        window.frame->LoadPerformanceInfo(3, item);
        QCOMPARE(item.Benchmark(), u"ALSI"_s);
        QCOMPARE(item.BenchmarkPerf(), u"12.5"_s);
        QCOMPARE(item.MinPerfFee(), u"0.25"_s);
        QCOMPARE(item.MaxPerfFee(), u"2%"_s);
        QCOMPARE(window.frame->cdsFunds->FieldByName(u"FundID"_s)->AsInteger(), 3);
        TFundItem none;
        none.SetBenchmark(u"own"_s);
        window.frame->LoadPerformanceInfo(77, none);
        QCOMPARE(none.Benchmark(), u"own"_s);
        QVERIFY(window.frame->cdsFunds->Eof());
        window.frame->cdsFunds->Close();
        window.frame->LoadPerformanceInfo(3, none);
        QCOMPARE(none.Benchmark(), u"own"_s);
    }

    void sets()
    {
        AllocationWindow window{fundPacket(
            {{.id = 4, .group = 8}, {.id = 2, .group = 9}, {.id = 1, .group = 8}, {.id = 4, .group = 8}})};
        TClientDataSet *funds = window.frame->cdsFunds;
        funds->Next();
        QCOMPARE(TfraFundAllocation::BuildFundSetFromDataSet(funds, 8), (TDynamicArrayOfInt{4, 1, 4}));
        QCOMPARE(funds->RecNo(), 2);
        QCOMPARE(TfraFundAllocation::BuildFundSetFromDataSet(funds, 77), TDynamicArrayOfInt());
        QCOMPARE(TfraFundAllocation::BuildFundSet(TFunds()), TDynamicArrayOfInt());
        window.setupIds({2});
        window.messageFunds.insert(11, {5, 3, 5});
        QCOMPARE(window.frame->BuildFundMessageSetFromDataSet(11), (TDynamicArrayOfInt{5, 3, 5}));
        QCOMPARE(window.frame->BuildFundMessageSetFromDataSet(12), TDynamicArrayOfInt());
        QVERIFY(!window.frame->cdsFundMessage->Active());
    }

    void investedButton()
    {
        AllocationWindow window{fundPacket({{.id = 1, .group = 11},
                                            {.id = 2, .group = 12},
                                            {.id = 3, .group = 67},
                                            {.id = 4, .group = 68},
                                            {.id = 5, .group = 13},
                                            {.id = 6, .group = 11}})};
        window.messageFunds = {{11, {1}}, {12, {2, 5}}, {68, {4}}, {67, {3}}};
        window.open();
        QTRY_VERIFY(window.bar().sbtInvested->isHidden());
        window.setupIds({1, 2, 3, 4, 5, 6});
        QVERIFY(window.bar().sbtInvested->isVisible());
        window.messagesAsked.clear();
        window.key(Qt::Key_Down);
        QCOMPARE(window.messagesAsked, (QList<int>{11, 12, 68, 67}));
        QVERIFY(window.bar().sbtInvested->isVisible());
        QCOMPARE(window.frame->CurrentFundID(), 2);
        QCOMPARE(window.frame->CurrentFundGroupID(), 12);
        window.key(Qt::Key_Down);
        QVERIFY(window.bar().sbtInvested->isVisible());
        window.key(Qt::Key_Down);
        QVERIFY(window.bar().sbtInvested->isVisible());
        window.messagesAsked.clear();
        window.key(Qt::Key_Down); // a message lists the fund, but for another group
        QVERIFY(window.bar().sbtInvested->isHidden());
        QVERIFY(window.messagesAsked.isEmpty());
        window.key(Qt::Key_Down);
        QVERIFY(window.bar().sbtInvested->isHidden());
        // When the host has hidden the button, the rules do not show it.
        window.stand(4, 1);
        QVERIFY(window.frame->Get_ShowButtonInvested());
        window.frame->Set_ShowButtonInvested(false);
        window.key(Qt::Key_Down);
        window.key(Qt::Key_Up);
        QVERIFY(window.bar().sbtInvested->isHidden());
        window.frame->Set_ShowButtonInvested(true);
        window.stand(4, 6);
        QVERIFY(window.bar().sbtInvested->isHidden());
        window.frame->ClearFunds();
        QVERIFY(window.bar().sbtInvested->isHidden());
    }

    // The provider of messages fails: the error is reported, and the wait cursor does not stay.
    void messagesThatDoNotCome()
    {
        AllocationWindow window{
            fundPacket({{.id = 1}, {.id = 2, .group = 11, .term = 60, .guarantee = true}, {.id = 3}})};
        window.setupIds({1, 2, 3});
        window.open();
        const auto fail = [](const TParams &) -> TDataPacket {
            throw EDatabaseError(u"The line is dead."_s);
        };
        const auto answer = [](const TParams &) {
            TTableBuilder builder({{u"FundID"_s, TFieldType::Integer}});
            builder.AddRow({2});
            return TDataPacket(builder.Finish());
        };
        window.connection.RegisterProvider(u"dspFundMessage"_s, fail);
        const ReportCatcher reported;
        window.key(Qt::Key_Down);
        QCOMPARE(reported.messages, QStringList{u"The line is dead."_s});
        QCOMPARE(window.frame->CurrentFundID(), 2);
        QCOMPARE(Screen().Cursor(), TCursor::crDefault);
        QVERIFY(!window.frame->cdsFundMessage->ControlsDisabled());
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, window.frame->BuildFundMessageSetFromDataSet(11));
        QCOMPARE(Screen().Cursor(), TCursor::crDefault);
        QVERIFY(!window.frame->cdsFundMessage->ControlsDisabled());
        window.connection.RegisterProvider(u"dspFundMessage"_s, answer);
        window.key(Qt::Key_Down);
        window.key(Qt::Key_Up);
        QCOMPARE(reported.messages.size(), 1);
        QVERIFY(window.bar().sbtInvested->isVisible());
    }

    void guaranteeButton()
    {
        AllocationWindow window{fundPacket({{.id = 1, .term = 60, .guarantee = true},
                                            {.id = 2, .term = 0, .guarantee = true},
                                            {.id = 3, .term = 60, .guarantee = false}})};
        window.open();
        window.setupIds({1, 2, 3});
        QVERIFY(window.bar().sbtGuarantee->isEnabled());
        QCOMPARE(window.frame->CurrentFundTerm(), 60);
        window.key(Qt::Key_Down);
        QVERIFY(!window.bar().sbtGuarantee->isEnabled());
        window.key(Qt::Key_Down);
        QVERIFY(!window.bar().sbtGuarantee->isEnabled());
        window.stand(3, 1);
        window.frame->Set_ShowColumn_Amount(false);
        QVERIFY(!window.bar().sbtGuarantee->isEnabled());
        window.frame->Set_ShowColumn_Amount(true);
        QVERIFY(window.bar().sbtGuarantee->isEnabled());
        window.frame->cdsFunds->Close();
        QVERIFY(!window.bar().sbtGuarantee->isEnabled());
        QCOMPARE(window.frame->CurrentFundID(), -1);
    }
};

ZEL_TEST_MAIN(TestFundInfo)
#include "tst_fundinfo.moc"
