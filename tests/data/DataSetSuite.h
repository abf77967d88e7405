#pragma once

#include "Errors.h"
#include "ZelTest.h"

#include "data/DataSet.h"
#include "data/Exceptions.h"

#include <QSignalSpy>

#include <memory>

/// The tests that every kind of dataset must pass. A test class per kind derives from this class and stores
/// the rows where the kind reads them. Its .cpp includes "moc_DataSetSuite.cpp" in addition to its own .moc
/// file.
class DataSetSuite : public ZelTest
{
    Q_OBJECT
public:
    using Rows = QList<QVariantList>;

    /// Stores the rows in place of those of an earlier call. Returns a closed dataset that opens on them in
    /// this order, with these field names. An engine may keep a column in a related type (a Boolean as a
    /// number, an amount as a decimal), so the tests read each field through the As function of its type.
    virtual std::unique_ptr<TDataSet> make(const QList<TFieldDef> &defs, const Rows &rows) = 0;
    /// Replaces the stored rows; @p dataset shows them after it is closed and opened again.
    virtual void replaceRows(TDataSet &dataset, const QList<TFieldDef> &defs, const Rows &rows) = 0;
    /// The rows of the large table; fewer for a slow driver.
    virtual int largeRowCount() const { return 100000; }

protected:
    static QList<TFieldDef> fundDefs()
    {
        return {{QStringLiteral("FundID"), TFieldType::Integer},
                {QStringLiteral("FundGroupID"), TFieldType::Integer},
                {QStringLiteral("FundName"), TFieldType::String},
                {QStringLiteral("F.MainframeID"), TFieldType::String},
                {QStringLiteral("BuySellRate"), TFieldType::Float},
                {QStringLiteral("MinimumInitialAmount"), TFieldType::Currency},
                {QStringLiteral("InternationalFund"), TFieldType::Boolean},
                {QStringLiteral("LaunchDate"), TFieldType::Date}};
    }
    static Rows fundRows()
    {
        const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
        const auto money = [](qint64 raw) { return QVariant::fromValue(Currency::fromRaw(raw)); };
        return {
            {10, 1, text("Opal Balanced Fund"), text("0012"), 1.5, money(500000000), false,
             QDate(2001, 2, 3)},
            {20, 1, text("Bulwark World Fund"), text("12"), 0.25, money(123400), true, QDate(2010, 12, 31)},
            {30, 2, text("opal growth fund"), text("A7"), -2.0, money(-1), false, QDate(1999, 1, 1)},
            {40, 2, text("Äpfel Ertragsfonds"), text("77"), 100.125, money(0), true, QDate(2024, 2, 29)},
            {50, 3, QVariant(), QVariant(), QVariant(), QVariant(), QVariant(), QVariant()}};
    }
    std::unique_ptr<TDataSet> funds()
    {
        auto dataset = make(fundDefs(), fundRows());
        dataset->setObjectName(QStringLiteral("cdsFund"));
        return dataset;
    }
    static QList<int> visibleIDs(TDataSet &dataset)
    {
        QList<int> ids;
        const TField *id = dataset.FieldByName(QStringLiteral("FundID"));
        for (dataset.First(); !dataset.Eof(); dataset.Next())
            ids.append(id->AsInteger());
        return ids;
    }
    static QList<int> filteredIDs(TDataSet &dataset, const QString &filter)
    {
        dataset.SetFiltered(false);
        dataset.SetFilter(filter);
        dataset.SetFiltered(true);
        return visibleIDs(dataset);
    }
    static QString field(const char *name) { return QString::fromLatin1(name); }

private Q_SLOTS:
    void opensOnTheFirstRow()
    {
        const auto dataset = funds();
        QVERIFY(!dataset->Active());
        QVERIFY(dataset->Eof());
        QVERIFY(dataset->Bof());
        dataset->Open();
        QVERIFY(dataset->Active());
        QCOMPARE(dataset->RecordCount(), 5);
        QCOMPARE(dataset->RecNo(), 1);
        QVERIFY(dataset->Bof());
        QVERIFY(!dataset->Eof());
        QVERIFY(!dataset->IsEmpty());
        QCOMPARE(dataset->FieldCount(), 8);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 10);
        dataset->Close();
        QVERIFY(!dataset->Active());
        QCOMPARE(dataset->FieldCount(), 0);
    }

    void setActiveOpensAndCloses()
    {
        const auto dataset = funds();
        dataset->SetActive(true);
        QVERIFY(dataset->Active());
        dataset->SetActive(true);
        QVERIFY(dataset->Active());
        dataset->SetActive(false);
        QVERIFY(!dataset->Active());
        dataset->SetActive(false);
        QVERIFY(!dataset->Active());
    }

    void runsItsHandlersInOrder()
    {
        const auto dataset = funds();
        QStringList steps;
        const auto note = [&](const char *name) {
            return [&steps, name](TDataSet *sender) {
                steps.append(field(name) + (sender->Active() ? u'+' : u'-'));
            };
        };
        dataset->BeforeOpen = note("BeforeOpen");
        dataset->AfterOpen = note("AfterOpen");
        dataset->BeforeClose = note("BeforeClose");
        dataset->AfterClose = note("AfterClose");
        dataset->Open();
        dataset->Open();
        dataset->Close();
        dataset->Close();
        QCOMPARE(steps, (QStringList{field("BeforeOpen-"), field("AfterOpen+"), field("BeforeClose+"),
                                     field("AfterClose-")}));
    }

    void handlersMayReplaceThemselves()
    {
        // A handler may remove itself; what it has captured stays alive until it returns.
        const auto dataset = funds();
        const auto token = std::make_shared<int>(1);
        QList<long> uses;
        const auto once = [&](std::function<void(TDataSet *)> TDataSet::*place) {
            dataset.get()->*place = [&uses, place, token](TDataSet *sender) {
                const std::weak_ptr<int> held = token;
                QList<long> &seen = uses;
                sender->*place = nullptr;
                seen.append(held.use_count());
            };
        };
        for (const auto place :
             {&TDataSet::BeforeOpen, &TDataSet::AfterOpen, &TDataSet::BeforeClose, &TDataSet::AfterClose}) {
            once(place);
            dataset->Open();
            dataset->Close();
            QVERIFY(!(dataset.get()->*place));
        }
        QCOMPARE(uses, QList<long>({2, 2, 2, 2}));
        QCOMPARE(token.use_count(), 1L);
    }

    void errorsOfHandlersReachTheCaller()
    {
        const auto dataset = funds();
        dataset->BeforeOpen = [](TDataSet *) { throw EDatabaseError(field("not now")); };
        QCOMPARE(messageOf<EDatabaseError>([&] { dataset->Open(); }), field("not now"));
        QVERIFY(!dataset->Active());
        dataset->BeforeOpen = nullptr;
        dataset->Open();
        dataset->BeforeClose = [](TDataSet *) { throw EDatabaseError(field("not yet")); };
        QCOMPARE(messageOf<EDatabaseError>([&] { dataset->Close(); }), field("not yet"));
        QVERIFY(dataset->Active());
        QCOMPARE(dataset->RecordCount(), 5);
        dataset->BeforeClose = nullptr;
    }

    void walksBothWays()
    {
        const auto dataset = funds();
        dataset->Open();
        QCOMPARE(visibleIDs(*dataset), (QList<int>{10, 20, 30, 40, 50}));
        QVERIFY(dataset->Eof());
        QCOMPARE(dataset->RecNo(), 5);
        dataset->Next();
        QVERIFY(dataset->Eof());
        QList<int> back;
        for (dataset->Last(); !dataset->Bof(); dataset->Prior())
            back.append(dataset->FieldByName(field("FundID"))->AsInteger());
        QCOMPARE(back, (QList<int>{50, 40, 30, 20, 10}));
        QVERIFY(!dataset->Eof());
        dataset->SetRecNo(3);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 30);
        QVERIFY(!dataset->Bof());
        QVERIFY(!dataset->Eof());
        dataset->SetRecNo(99);
        QCOMPARE(dataset->RecNo(), 5);
        dataset->SetRecNo(-3);
        QCOMPARE(dataset->RecNo(), 1);
        dataset->Last();
        QVERIFY(dataset->Eof());
        dataset->First();
        QVERIFY(dataset->Bof());
        QCOMPARE(dataset->RecNo(), 1);
    }

    void closedCursorIsRefused()
    {
        const auto dataset = funds();
        const QList<std::function<void()>> steps{
            [&] { dataset->First(); },
            [&] { dataset->Next(); },
            [&] { dataset->Prior(); },
            [&] { dataset->Last(); },
            [&] { dataset->SetRecNo(1); },
            [&] { (void)dataset->IsEmpty(); },
            [&] { (void)dataset->RecordCount(); },
            [&] { (void)dataset->RecNo(); },
            [&] { dataset->FieldByName(field("FundID")); },
            [&] { dataset->GotoBookmark(nullptr); },
            [&] { dataset->Locate(field("FundID"), 10); },
            [&] { dataset->Lookup(field("FundID"), 10, field("FundID")); }};
        for (const auto &step : steps)
            QVERIFY2(messageOf<EDatabaseError>(step).contains(field("cdsFund")),
                     "the error names the dataset");
        QVERIFY(!dataset->FindField(field("FundID")));
        QVERIFY(!dataset->GetBookmark());
        QVERIFY(dataset->Table() == nullptr);
        QCOMPARE(dataset->CurrentTableRow(), -1);
    }

    void findsFieldsWithoutRegardToCase()
    {
        const auto dataset = funds();
        dataset->Open();
        QCOMPARE(dataset->FieldByName(field("fundid")), dataset->FieldByName(field("FUNDID")));
        QCOMPARE(dataset->FieldByName(field("f.mainframeid"))->AsString(), field("0012"));
        QVERIFY(!dataset->FindField(field("Fund")));
        const QString message =
            messageOf<EDatabaseError>([&] { dataset->FieldByName(field("NoSuchField")); });
        QVERIFY(message.contains(field("NoSuchField")));
        QVERIFY(message.contains(field("cdsFund")));
        QCOMPARE(dataset->Fields(0), dataset->FieldByName(field("FundID")));
        QVERIFY(messageOf<EListError>([&] { dataset->Fields(8); }).contains(field("8")));
        QVERIFY(messageOf<EListError>([&] { dataset->Fields(-1); }).contains(field("-1")));
        QCOMPARE(dataset->FieldDefs().size(), 8);
        QCOMPARE(dataset->FieldDefs().at(2).Name.toLower(), field("fundname"));
    }

    void readsEveryKindOfField()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(2);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 20);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsString(), field("20"));
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsFloat(), 20.0);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsCurrency(), Currency(20));
        QCOMPARE(dataset->FieldByName(field("FundName"))->AsString(), field("Bulwark World Fund"));
        QCOMPARE(dataset->FieldByName(field("F.MainframeID"))->AsInteger(), 12);
        QCOMPARE(dataset->FieldByName(field("BuySellRate"))->AsFloat(), 0.25);
        QCOMPARE(dataset->FieldByName(field("BuySellRate"))->AsCurrency(), Currency::fromRaw(2500));
        QCOMPARE(dataset->FieldByName(field("MinimumInitialAmount"))->AsCurrency(),
                 Currency::fromRaw(123400));
        QCOMPARE(dataset->FieldByName(field("MinimumInitialAmount"))->AsFloat(), 12.34);
        QCOMPARE(dataset->FieldByName(field("InternationalFund"))->AsBoolean(), true);
        QCOMPARE(dataset->FieldByName(field("LaunchDate"))->AsDate(), QDate(2010, 12, 31));
        dataset->SetRecNo(4);
        QCOMPARE(dataset->FieldByName(field("FundName"))->AsString(),
                 QString::fromUtf8("Äpfel Ertragsfonds"));
        dataset->SetRecNo(3);
        QCOMPARE(dataset->FieldByName(field("InternationalFund"))->AsBoolean(), false);
        QCOMPARE(dataset->FieldByName(field("MinimumInitialAmount"))->AsCurrency(), Currency::fromRaw(-1));
    }

    void fractionsAreRoundedToIntegers()
    {
        const auto money = [](qint64 raw) { return QVariant::fromValue(Currency::fromRaw(raw)); };
        const auto dataset =
            make({{field("Rate"), TFieldType::Float}, {field("Amount"), TFieldType::Currency}},
                 {{1.5, money(125100)}, {2.5, money(125000)}, {-1.75, money(-5100)}, {0.0, money(0)}});
        dataset->Open();
        QList<int> rates;
        QList<int> amounts;
        for (; !dataset->Eof(); dataset->Next()) {
            rates.append(dataset->Fields(0)->AsInteger());
            amounts.append(dataset->Fields(1)->AsInteger());
        }
        QCOMPARE(rates, (QList<int>{2, 2, -2, 0}));
        QCOMPARE(amounts, (QList<int>{13, 12, -1, 0}));
        dataset->First();
        QVERIFY(dataset->Locate(field("Rate"), -0.0)); // 0.0 and -0.0 are the same number
        QCOMPARE(dataset->RecNo(), 4);
    }

    void largeNumbersAreWrittenWithAPowerOfTen()
    {
        const auto dataset =
            make({{field("Rate"), TFieldType::Float}}, {{999999999999999.0}, {1e15}, {1e-5}, {1e-6}});
        dataset->Open();
        QStringList shown;
        for (; !dataset->Eof(); dataset->Next())
            shown.append(dataset->Fields(0)->AsString());
        QCOMPARE(shown,
                 (QStringList{field("999999999999999"), field("1e+15"), field("0.00001"), field("1e-06")}));
    }

    void nullsReadAsNothing()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->Last();
        for (int i = 2; i < dataset->FieldCount(); ++i) {
            const TField *empty = dataset->Fields(i);
            QVERIFY(empty->IsNull());
            QCOMPARE(empty->AsString(), QString());
            QCOMPARE(empty->AsInteger(), 0);
            QCOMPARE(empty->AsFloat(), 0.0);
            QCOMPARE(empty->AsCurrency(), Currency());
            QCOMPARE(empty->AsBoolean(), false);
            QVERIFY(!empty->AsDate().isValid());
            QVERIFY(!empty->AsVariant().isValid());
        }
        QVERIFY(!dataset->FieldByName(field("FundID"))->IsNull());
    }

    void textInANumberFieldIsRefused()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(3);
        const TField *text = dataset->FieldByName(field("F.MainframeID"));
        const QList<std::function<void()>> readings{
            [&] { (void)text->AsInteger(); }, [&] { (void)text->AsFloat(); },
            [&] { (void)text->AsCurrency(); }, [&] { (void)text->AsBoolean(); },
            [&] { (void)text->AsDate(); }};
        for (const auto &reading : readings) {
            const QString message = messageOf<EConvertError>(reading);
            QVERIFY2(message.contains(field("A7")), qPrintable(message));
            QVERIFY2(message.contains(field("MainframeID"), Qt::CaseInsensitive), qPrintable(message));
        }
        QCOMPARE(dataset->RecNo(), 3);
    }

    void integersBeyond32BitsAreRefused()
    {
        const auto dataset = make(
            {{field("Wide"), TFieldType::LargeInt}, {field("Long"), TFieldType::String}},
            {{Q_INT64_C(2147483648), field("-2147483649")}, {Q_INT64_C(2147483647), field("-2147483648")}});
        dataset->Open();
        QVERIFY(messageOf<EConvertError>([&] {
                    (void)dataset->Fields(0)->AsInteger();
                }).contains(field("2147483648")));
        QVERIFY(messageOf<EConvertError>([&] {
                    (void)dataset->Fields(1)->AsInteger();
                }).contains(field("-2147483649")));
        QCOMPARE(dataset->Fields(0)->AsString(), field("2147483648"));
        dataset->Next();
        QCOMPARE(dataset->Fields(0)->AsInteger(), 2147483647);
        QCOMPARE(dataset->Fields(1)->AsInteger(), std::numeric_limits<int>::min());
    }

    void noRowsAtAll()
    {
        const auto dataset = make(fundDefs(), {});
        dataset->Open();
        QVERIFY(dataset->IsEmpty());
        QVERIFY(dataset->Eof());
        QVERIFY(dataset->Bof());
        QCOMPARE(dataset->RecNo(), 0);
        for (const auto &step : {&TDataSet::First, &TDataSet::Next, &TDataSet::Prior, &TDataSet::Last})
            (dataset.get()->*step)();
        dataset->SetRecNo(1);
        QVERIFY(dataset->Eof());
        QVERIFY(dataset->Bof());
        QVERIFY(!dataset->GetBookmark());
        QVERIFY(dataset->FieldByName(field("FundID"))->IsNull());
        QCOMPARE(dataset->FieldByName(field("FundName"))->AsString(), QString());
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 0);
        QVERIFY(!dataset->Locate(field("FundID"), 10));
        QVERIFY(!dataset->Lookup(field("FundID"), 10, field("FundName")).isValid());
        QCOMPARE(filteredIDs(*dataset, field("FundID = 1")), QList<int>());
    }

    void oneRow()
    {
        const auto dataset = make(fundDefs(), fundRows().mid(1, 1));
        dataset->Open();
        QCOMPARE(dataset->RecordCount(), 1);
        QCOMPARE(visibleIDs(*dataset), QList<int>{20});
        QVERIFY(dataset->Eof());
        QCOMPARE(dataset->RecNo(), 1);
        QVERIFY(dataset->Locate(field("FundID"), 20));
        QVERIFY(!dataset->Eof());
        dataset->Last();
        QVERIFY(dataset->Eof());
        QVERIFY(!dataset->Bof());
        dataset->First();
        QVERIFY(dataset->Bof());
        QVERIFY(!dataset->Eof());
        QCOMPARE(filteredIDs(*dataset, field("FundID <> 20")), QList<int>());
        QCOMPARE(dataset->RecNo(), 0);
        dataset->SetFiltered(false);
        QCOMPARE(dataset->RecNo(), 1);
    }

    void onlyNulls()
    {
        Rows rows;
        for (int i = 0; i < 200; ++i)
            rows.append({i, QVariant()});
        const auto dataset =
            make({{field("FundID"), TFieldType::Integer}, {field("Note"), TFieldType::String}}, rows);
        dataset->Open();
        const TField *note = dataset->FieldByName(field("Note"));
        for (dataset->First(); !dataset->Eof(); dataset->Next())
            QVERIFY(note->IsNull());
        QVERIFY(dataset->Locate(field("Note"), QVariant()));
        QCOMPARE(dataset->RecNo(), 1);
        QVERIFY(!dataset->Locate(field("Note"), QString()));
        QCOMPARE(filteredIDs(*dataset, field("Note is null")).size(), 200);
        QCOMPARE(filteredIDs(*dataset, field("Note is not null")).size(), 0);
    }

    void aLargeTable()
    {
        const int count = largeRowCount();
        Rows rows;
        rows.reserve(count);
        for (int i = 0; i < count; ++i)
            rows.append({i * 2, i % 1000, QStringLiteral("Fund %1").arg(i)});
        const auto dataset = make({{field("FundID"), TFieldType::Integer},
                                   {field("FundGroupID"), TFieldType::Integer},
                                   {field("FundName"), TFieldType::String}},
                                  rows);
        dataset->Open();
        QCOMPARE(dataset->RecordCount(), count);
        const TField *id = dataset->FieldByName(field("FundID"));
        const TField *name = dataset->FieldByName(field("FundName"));
        int at = 0;
        for (dataset->First(); !dataset->Eof(); dataset->Next(), ++at) {
            if (id->AsInteger() != at * 2 || name->AsString() != QStringLiteral("Fund %1").arg(at))
                QFAIL(qPrintable(QStringLiteral("row %1 is wrong").arg(at)));
        }
        QCOMPARE(at, count);
        for (int i = 0; i < count; i += 97) {
            QVERIFY(dataset->Locate(field("FundID"), QString::number(i * 2)));
            QCOMPARE(dataset->RecNo(), i + 1);
            QVERIFY(!dataset->Locate(field("FundID"), i * 2 + 1));
        }
        QCOMPARE(filteredIDs(*dataset, field("not(FundGroupID in (0,1,2,3,4,5,6,7,8,9))")).size(),
                 count - 10 * (count / 1000));
    }

    void bookmarksLeadBack()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(3);
        const TBookmark third = dataset->GetBookmark();
        QVERIFY(third);
        QVERIFY(dataset->BookmarkValid(third));
        dataset->First();
        const TBookmark first = dataset->GetBookmark();
        QCOMPARE(dataset->BookmarksHandedOut(), 2);
        dataset->GotoBookmark(third);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 30);
        QVERIFY(!dataset->Bof());
        QVERIFY(!dataset->Eof());
        dataset->GotoBookmark(first);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 10);
        dataset->FreeBookmark(third);
        dataset->FreeBookmark(third);
        QCOMPARE(dataset->BookmarksHandedOut(), 1);
        dataset->FreeBookmark(nullptr);
        dataset->FreeBookmark(first);
        QCOMPARE(dataset->BookmarksHandedOut(), 0);
        dataset->Close();
        QCOMPARE(dataset->BookmarksLost(), 0);
    }

    void bookmarksOfOneRowAreCounted()
    {
        const auto dataset = funds();
        dataset->Open();
        const TBookmark one = dataset->GetBookmark();
        const TBookmark two = dataset->GetBookmark();
        QCOMPARE(dataset->BookmarksHandedOut(), 2);
        dataset->FreeBookmark(one);
        QCOMPARE(dataset->BookmarksHandedOut(), 1);
        QVERIFY(dataset->BookmarkValid(two));
        dataset->FreeBookmark(two);
        QCOMPARE(dataset->BookmarksHandedOut(), 0);
    }

    void bookmarksDieWithTheirOpening()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(2);
        const TBookmark old = dataset->GetBookmark();
        dataset->Close();
        QCOMPARE(dataset->BookmarksLost(), 1);
        QCOMPARE(dataset->BookmarksHandedOut(), 0);
        QVERIFY(!dataset->BookmarkValid(old));
        dataset->Open();
        QVERIFY(!dataset->BookmarkValid(old));
        dataset->SetRecNo(4);
        QVERIFY(messageOf<EDatabaseError>([&] { dataset->GotoBookmark(old); }).contains(field("cdsFund")));
        QVERIFY(
            messageOf<EDatabaseError>([&] { dataset->GotoBookmark(nullptr); }).contains(field("cdsFund")));
        QCOMPARE(dataset->RecNo(), 4);
        dataset->FreeBookmark(old);
        QCOMPARE(dataset->BookmarksHandedOut(), 0);
    }

    void aFilteredOutBookmarkIsKeptButNotGoneTo()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(2);
        const TBookmark second = dataset->GetBookmark();
        dataset->SetFilter(field("FundID > 20"));
        dataset->SetFiltered(true);
        QVERIFY(dataset->BookmarkValid(second));
        dataset->SetRecNo(2);
        QVERIFY(messageOf<EDatabaseError>([&] { dataset->GotoBookmark(second); }).contains(field("cdsFund")));
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 40);
        dataset->SetFiltered(false);
        dataset->GotoBookmark(second);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 20);
        dataset->FreeBookmark(second);
        QCOMPARE(dataset->BookmarksHandedOut(), 0);
    }

    void filtersByExpression_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QList<int>>("ids");
        const auto row = [](const char *filter, QList<int> ids) {
            QTest::newRow(filter) << QString::fromUtf8(filter) << std::move(ids);
        };
        row("FundID = 30", {30});
        row("FundID <> 30", {10, 20, 40, 50});
        row("FundID >= 30 and FundGroupID = 2", {30, 40});
        row("FundID < 20 or FundID > 40", {10, 50});
        row("not(FundGroupID in (2,-1,3))", {10, 20});
        row("FundID in (50,10)", {10, 50});
        row("FundID in (18446744073709551626,20)", {20});
        row("FundID between 20 and 40", {20, 30, 40});
        row("FundName like 'Opal%'", {10});
        row("FundName like '%Fund'", {10, 20});
        row("FundName like '_pfel%'", {40});
        row("FundName is null", {50});
        row("FundName is not null and FundGroupID = 1", {10, 20});
        row("FundID / 10 + FundGroupID * 2 = 8", {40});
        row("upper(FundName) = 'OPAL GROWTH FUND'", {30});
        row("length(FundName) = 18", {10, 20, 40});
        row("substr(FundName, 1, 4) = 'Opal'", {10});
        row("[FundName] = 'Bulwark World Fund'", {20});
        row("\"FundName\" = 'Bulwark World Fund'", {20});
        row("[F.MainframeID] = '77'", {40});
        row("\"F.MainframeID\" = '12'", {20});
        row("fundid = 10", {10});
        row("BuySellRate > 1", {10, 40});
        row("BuySellRate * 4 = 1", {20});
        row("MinimumInitialAmount = 12.34", {20});
        row("MinimumInitialAmount < 0", {30});
        row("  FundID = 10  ", {10});
        row("FundID = 10 -- the first", {10});
        row("1", {10, 20, 30, 40, 50});
        row("0", {});
        row("null", {});
    }

    void filtersByExpression()
    {
        QFETCH(const QString, filter);
        QFETCH(const QList<int>, ids);
        const auto dataset = funds();
        dataset->Open();
        QCOMPARE(filteredIDs(*dataset, filter), ids);
        QCOMPARE(dataset->RecordCount(), ids.size());
        dataset->SetFiltered(false);
        QCOMPARE(dataset->RecordCount(), 5);
        QCOMPARE(dataset->Filter(), filter);
    }

    void textIsFilteredWithoutCaseOnRequest()
    {
        const auto dataset = funds();
        dataset->Open();
        QCOMPARE(filteredIDs(*dataset, field("FundName like 'opal%'")), QList<int>{30});
        QCOMPARE(filteredIDs(*dataset, field("FundName = 'OPAL GROWTH FUND'")), QList<int>());
        dataset->SetFilterOptions(TFilterOption::CaseInsensitive);
        QCOMPARE(visibleIDs(*dataset), QList<int>{30});
        QCOMPARE(filteredIDs(*dataset, field("FundName like 'opal%'")), (QList<int>{10, 30}));
        QCOMPARE(filteredIDs(*dataset, QString::fromUtf8("FundName = 'äPFEL ERTRAGSFONDS'")), QList<int>{40});
        QCOMPARE(filteredIDs(*dataset, QString::fromUtf8("FundName in ('x', 'äPFEL eRTRAGSFONDS')")),
                 QList<int>{40});
        QCOMPARE(filteredIDs(*dataset, QString::fromUtf8("FundName like 'äPF%'")), QList<int>{40});
        dataset->SetFilterOptions({});
        QCOMPARE(visibleIDs(*dataset), QList<int>());
    }

    void aBadFilterChangesNothing_data()
    {
        QTest::addColumn<QString>("filter");
        for (const char *filter :
             {"FundID =", "NoSuchField = 1", "\"NoSuchField\" = 1", "FundID in (1,2", "FundID = 1)",
              "1) or (1", "FundID = 'x", "select 1", "FundID = 1; select 1", "FundID = ?", "FundID = :id",
              "F.MainframeID = '77'", "nosuchfunction(FundID)", "-- nothing", "FundID = 1 /* open",
              "FundID, FundGroupID"})
            QTest::newRow(filter) << QString::fromLatin1(filter);
    }

    void aBadFilterChangesNothing()
    {
        QFETCH(const QString, filter);
        const auto dataset = funds();
        dataset->Open();
        dataset->SetFilter(field("FundID >= 20"));
        dataset->SetFiltered(true);
        dataset->SetRecNo(3);
        const TBookmark mark = dataset->GetBookmark();
        const QString message = messageOf<EDatabaseError>([&] { dataset->SetFilter(filter); });
        QVERIFY2(message.contains(filter), qPrintable(message));
        QVERIFY2(message.contains(field("cdsFund")), qPrintable(message));
        QCOMPARE(dataset->Filter(), field("FundID >= 20"));
        QVERIFY(dataset->Filtered());
        QCOMPARE(dataset->RecNo(), 3);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 40);
        QVERIFY(dataset->BookmarkValid(mark));
        QCOMPARE(visibleIDs(*dataset), (QList<int>{20, 30, 40, 50}));
        dataset->FreeBookmark(mark);

        // Without Filtered a filter is only stored; switching Filtered on reports its error.
        dataset->SetFiltered(false);
        dataset->SetFilter(filter);
        QCOMPARE(dataset->RecordCount(), 5);
        dataset->SetRecNo(2);
        QVERIFY(messageOf<EDatabaseError>([&] { dataset->SetFiltered(true); }).contains(filter));
        QVERIFY(!dataset->Filtered());
        QCOMPARE(dataset->RecordCount(), 5);
        QCOMPARE(dataset->RecNo(), 2);
    }

    void aFilterKeepsTheRowWhenItCan()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(3);
        dataset->SetFilter(field("FundGroupID = 2"));
        dataset->SetFiltered(true);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 30);
        QCOMPARE(dataset->RecNo(), 1);
        dataset->SetFilter(field("FundGroupID = 1"));
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 10);
        dataset->Next();
        dataset->SetFiltered(false);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 20);
        QCOMPARE(dataset->RecNo(), 2);
        dataset->SetFilter(field("0"));
        dataset->SetFiltered(true);
        QVERIFY(dataset->Eof());
        QVERIFY(dataset->Bof());
        QCOMPARE(dataset->RecNo(), 0);
        QVERIFY(dataset->FieldByName(field("FundID"))->IsNull());
        dataset->SetFiltered(false);
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 10);
    }

    void anEmptyFilterShowsAllRows()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetFilter(QString());
        dataset->SetFiltered(true);
        QCOMPARE(dataset->RecordCount(), 5);
        dataset->SetFilter(field("   "));
        QCOMPARE(dataset->RecordCount(), 5);
        QVERIFY(dataset->Filtered());
    }

    void aFilterSetBeforeOpeningHoldsFromTheStart()
    {
        const auto dataset = funds();
        dataset->SetFilter(field("FundGroupID = 2"));
        dataset->SetFiltered(true);
        dataset->Open();
        QCOMPARE(visibleIDs(*dataset), (QList<int>{30, 40}));
        dataset->Close();
        dataset->SetFilter(field("NoSuchField = 1"));
        QVERIFY(messageOf<EDatabaseError>([&] { dataset->Open(); }).contains(field("NoSuchField")));
        QVERIFY(!dataset->Active());
        dataset->SetFiltered(false);
        dataset->Open();
        QCOMPARE(dataset->RecordCount(), 5);
    }

    void locatesAcrossIntegerAndText()
    {
        const auto dataset = funds();
        dataset->Open();
        QVERIFY(dataset->Locate(field("FundID"), 30));
        QCOMPARE(dataset->RecNo(), 3);
        QVERIFY(dataset->Locate(field("FundID"), field("40")));
        QCOMPARE(dataset->RecNo(), 4);
        QVERIFY(dataset->Locate(field("F.MainframeID"), 12));
        QCOMPARE(dataset->RecNo(), 2);
        QVERIFY(dataset->Locate(field("F.MainframeID"), field("0012")));
        QCOMPARE(dataset->RecNo(), 1);
        dataset->SetRecNo(5);
        QVERIFY(!dataset->Locate(field("FundID"), 31));
        QVERIFY(!dataset->Locate(field("FundID"), field("A7")));
        QVERIFY(!dataset->Locate(field("FundID"), field("18446744073709551626"))); // 2^64 + 10
        QVERIFY(!dataset->Locate(field("FundName"), field("Opal")));
        QCOMPARE(dataset->RecNo(), 5);
        QVERIFY(dataset->Locate(field("LaunchDate"), QDate(1999, 1, 1)));
        QCOMPARE(dataset->RecNo(), 3);
        QVERIFY(dataset->Locate(field("BuySellRate"), 0.25));
        QCOMPARE(dataset->RecNo(), 2);
        QVERIFY(dataset->Locate(field("FundName"), QVariant()));
        QCOMPARE(dataset->RecNo(), 5);
        QVERIFY(!dataset->Eof());
        QVERIFY(
            messageOf<EDatabaseError>([&] { dataset->Locate(field("NoKey"), 1); }).contains(field("NoKey")));
        QCOMPARE(dataset->RecNo(), 5);
    }

    void locatesWithItsOptions()
    {
        const auto dataset = funds();
        dataset->Open();
        const QString name = field("FundName");
        QVERIFY(!dataset->Locate(name, field("OPAL GROWTH FUND")));
        QVERIFY(dataset->Locate(name, field("OPAL GROWTH FUND"), TLocateOption::CaseInsensitive));
        QCOMPARE(dataset->RecNo(), 3);
        QVERIFY(
            dataset->Locate(name, QString::fromUtf8("äPFEL ertragsfonds"), TLocateOption::CaseInsensitive));
        QCOMPARE(dataset->RecNo(), 4);
        QVERIFY(dataset->Locate(name, field("opal"), TLocateOption::PartialKey));
        QCOMPARE(dataset->RecNo(), 3);
        QVERIFY(dataset->Locate(name, field("opal"),
                                TLocateOptions(TLocateOption::PartialKey) | TLocateOption::CaseInsensitive));
        QCOMPARE(dataset->RecNo(), 1);
        QVERIFY(!dataset->Locate(name, field("World"), TLocateOption::PartialKey));
        QVERIFY(dataset->Locate(field("FundID"), 20, TLocateOption::PartialKey));
        QVERIFY(!dataset->Locate(field("FundID"), 2, TLocateOption::PartialKey));
    }

    void locatesBySeveralFields()
    {
        const auto dataset = funds();
        dataset->Open();
        QVERIFY(dataset->Locate(field("FundGroupID;FundName"),
                                QVariantList{field("1"), field("Bulwark World Fund")}));
        QCOMPARE(dataset->RecNo(), 2);
        QVERIFY(dataset->Locate(field("FundGroupID; FundID"), QVariantList{2, 40}));
        QCOMPARE(dataset->RecNo(), 4);
        QVERIFY(!dataset->Locate(field("FundGroupID;FundID"), QVariantList{1, 40}));
        QVERIFY(dataset->Locate(field("FundGroupID;FundName"), QVariantList{2, field("opal")},
                                TLocateOption::PartialKey));
        QCOMPARE(dataset->RecNo(), 3);
        QVERIFY(dataset->Locate(field("FundGroupID;FundName"), QVariantList{3, QVariant()}));
        QCOMPARE(dataset->RecNo(), 5);
        QVERIFY(messageOf<EDatabaseError>([&] {
                    dataset->Locate(field("FundGroupID;FundID"), 1);
                }).contains(field("FundGroupID;FundID")));
        QCOMPARE(dataset->RecNo(), 5);
        QCOMPARE(
            dataset->Lookup(field("FundGroupID;FundID"), QVariantList{1, 20}, field("FundName")).toString(),
            field("Bulwark World Fund"));
    }

    void looksUpWithoutMoving()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(4);
        QCOMPARE(dataset->Lookup(field("FundID"), field("20"), field("FundName")).toString(),
                 field("Bulwark World Fund"));
        const QVariantList both = dataset->Lookup(field("FundID"), 10, field("FundID;FundName")).toList();
        QCOMPARE(both.size(), 2);
        QCOMPARE(both.at(0).toInt(), 10);
        QCOMPARE(both.at(1).toString(), field("Opal Balanced Fund"));
        QVERIFY(!dataset->Lookup(field("FundID"), 11, field("FundName")).isValid());
        QVERIFY(!dataset->Lookup(field("FundID"), 50, field("FundName")).isValid());
        QVERIFY(messageOf<EDatabaseError>([&] {
                    dataset->Lookup(field("FundID"), 10, field("NoResult"));
                }).contains(field("NoResult")));
        QCOMPARE(dataset->RecNo(), 4);
    }

    void looksUpAmongTheVisibleRowsOnly()
    {
        const auto dataset = funds();
        dataset->Open();
        QVERIFY(dataset->Locate(field("FundGroupID"), 2));
        QCOMPARE(dataset->RecNo(), 3);
        dataset->SetFilter(field("not(FundID in (30))"));
        dataset->SetFiltered(true);
        QVERIFY(dataset->Locate(field("FundGroupID"), field("2")));
        QCOMPARE(dataset->FieldByName(field("FundID"))->AsInteger(), 40);
        QCOMPARE(dataset->RecNo(), 3);
        QVERIFY(!dataset->Locate(field("FundID"), 30));
        QVERIFY(!dataset->Lookup(field("FundID"), 30, field("FundID")).isValid());
        QVERIFY(!dataset->Locate(field("FundName"), field("opal"), TLocateOption::PartialKey));
        dataset->SetFiltered(false);
        QVERIFY(dataset->Locate(field("FundID"), 30));
    }

    void announcesChangesUnlessDisabled()
    {
        const auto dataset = funds();
        QSignalSpy changes(dataset.get(), &TDataSet::DataChange);
        dataset->Open();
        QVERIFY(changes.count() > 0);
        changes.clear();
        dataset->Next();
        QCOMPARE(changes.count(), 1);
        dataset->DisableControls();
        dataset->DisableControls();
        QVERIFY(dataset->ControlsDisabled());
        dataset->First();
        dataset->Last();
        dataset->EnableControls();
        QVERIFY(dataset->ControlsDisabled());
        QCOMPARE(changes.count(), 1);
        dataset->EnableControls();
        QVERIFY(!dataset->ControlsDisabled());
        QCOMPARE(changes.count(), 2);
        dataset->EnableControls();
        QVERIFY(!dataset->ControlsDisabled());
        dataset->DisableControls();
        dataset->EnableControls();
        QCOMPARE(changes.count(), 2);
    }

    void announcesEachStepOnce()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(3);
        const TBookmark mark = dataset->GetBookmark();
        dataset->SetFilter(field("FundID >= 20"));
        QSignalSpy changes(dataset.get(), &TDataSet::DataChange);
        const QList<std::function<void()>> steps{
            [&] { dataset->First(); },
            [&] { dataset->Next(); },
            [&] { dataset->Prior(); },
            [&] { dataset->Last(); },
            [&] { dataset->SetRecNo(2); },
            [&] { dataset->GotoBookmark(mark); },
            [&] { dataset->Locate(field("FundID"), 20); },
            [&] { dataset->SetFiltered(true); },
            [&] { dataset->SetFilter(field("FundID > 20")); },
            [&] { dataset->SetFilterOptions(TFilterOption::CaseInsensitive); },
            [&] { dataset->SetFiltered(false); },
            [&] {
                dataset->FreeBookmark(mark);
                dataset->Close();
            },
            [&] { dataset->Open(); }};
        for (int i = 0; i < steps.size(); ++i) {
            steps.at(i)();
            QCOMPARE(changes.count(), i + 1);
        }
        // Calls that change nothing emit no signal.
        QVERIFY(!dataset->Locate(field("FundID"), 1));
        dataset->SetFilter(field("FundID > 30"));
        dataset->FreeBookmark(dataset->GetBookmark());
        QCOMPARE(changes.count(), steps.size());
    }

    void listenersGoWithoutBlocking()
    {
        // Qt has 131 locks for signal connections, so some listeners share one with the dataset. A dataset
        // that locks its own while a listener is destroyed would deadlock.
        const auto dataset = funds();
        dataset->Open();
        int heard = 0;
        for (int round = 0; round < 20; ++round) {
            std::vector<std::unique_ptr<QObject>> listeners;
            for (int i = 0; i < 100; ++i) {
                listeners.push_back(std::make_unique<QObject>());
                connect(dataset.get(), &TDataSet::DataChange, listeners.back().get(), [&heard] { ++heard; });
            }
            dataset->First();
        }
        QCOMPARE(heard, 2000);
        dataset->First();
        QCOMPARE(heard, 2000);
    }

    void showsNewRowsWhenOpenedAgain()
    {
        const auto dataset = funds();
        dataset->Open();
        dataset->SetRecNo(5);
        const TBookmark mark = dataset->GetBookmark();
        dataset->Close();
        replaceRows(*dataset, fundDefs(), fundRows().mid(0, 2));
        dataset->Open();
        QCOMPARE(visibleIDs(*dataset), (QList<int>{10, 20}));
        QVERIFY(!dataset->BookmarkValid(mark));
        QVERIFY(!dataset->Locate(field("FundID"), 30));
        QVERIFY(dataset->Locate(field("FundID"), 20));
    }
};
