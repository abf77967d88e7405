// The C interface: what a host written with another toolkit calls.
// labels: x11
#include "Frames.h"
#include "ZelTest.h"

#include "package/ZelCommonFrames.h"
#include "package/ZelCommonFramesC.h"

#include <QScopeGuard>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
QString lastError()
{
    return QString::fromUtf8(ZelLastError());
}

QString propertyOf(ZelFrame *frame, const char *name)
{
    std::array<char, 256> text{};
    return ZelFrameGetProperty(frame, name, text.data(), text.size(), nullptr) == ZEL_OK
               ? QString::fromUtf8(text.data())
               : u"failure: "_s + lastError();
}

/// A data provider of the host: records what it was asked for and returns a fixed answer.
struct Provider {
    QStringList asked;
    ZelResult answer = ZEL_OK;

    static ZelResult deliver(void *context, const char *const *names, const char *const *values, size_t count,
                             ZelTable *rows)
    {
        auto *self = static_cast<Provider *>(context);
        for (size_t i = 0; i < count; ++i)
            self->asked.append(QString::fromUtf8(names[i]) + u'=' + QString::fromUtf8(values[i]));
        const std::array fields{"FundID:integer"};
        const std::array row{"4"};
        if (ZelTableSetFields(rows, fields.data(), fields.size()) < 0 ||
            ZelTableAddRow(rows, row.data(), row.size()) < 0)
            return ZEL_FAILED;
        return self->answer;
    }
};
} // namespace

class tst_cinterface : public ZelTest
{
    Q_OBJECT
    static bool onScreen() { return QGuiApplication::platformName() != u"offscreen"_s; }

    static ZelFrame *create(const char *className, quintptr parent = 0)
    {
        ZelFrame *frame = nullptr;
        const ZelResult result = ZelFrameCreate(className, parent, &frame);
        if (result != ZEL_OK)
            qWarning("%s: %s", className, ZelLastError());
        made.append(frame);
        return frame;
    }
    static inline QList<ZelFrame *> made; ///< destroyed after each test, even a failed one

    static ZelTable *catalogue()
    {
        ZelTable *table = nullptr;
        const std::array fields{"FundID:integer", "FundName:string", "GroupTypeID:integer",
                                "FundGroupID:integer", "FundTerm:integer"};
        const std::array<std::array<const char *, 5>, 4> rows{{{"1", "Öpal Balanced", "2", "1", "0"},
                                                               {"2", "Opal Equity", "2", "1", nullptr},
                                                               {"3", "Opal Money", "2", "1", "0"},
                                                               {"4", "World Opal", "2", "11", "0"}}};
        bool good = ZelTableCreate(&table) == ZEL_OK &&
                    ZelTableSetFields(table, fields.data(), fields.size()) == ZEL_OK;
        for (const auto &row : rows)
            good = good && ZelTableAddRow(table, row.data(), row.size()) == ZEL_OK;
        return good ? table : nullptr;
    }

    /// An allocation frame by percent with an investment of 1000.00 rand and the given funds.
    static ZelFrame *allocation(const QList<int> &ids)
    {
        ZelFrame *frame = create("TfraFundAllocation");
        ZelTable *table = catalogue();
        std::vector<ZelFund> funds;
        for (int id : ids)
            funds.push_back({id, 0, 0});
        const bool good = ZelFrameSetProperty(frame, "AllocByAmount", "false") == ZEL_OK &&
                          ZelFrameSetProperty(frame, "InvestmentAmount", "1000") == ZEL_OK &&
                          ZelFrameSetTable(frame, "FundsPerProductDataSet", table) == ZEL_OK &&
                          ZelFrameSetFunds(frame, funds.data(), funds.size(), 1) == ZEL_OK;
        ZelTableDestroy(table);
        if (!good)
            qWarning("%s", ZelLastError());
        return frame;
    }

    static std::vector<ZelFund> fundsOf(ZelFrame *frame)
    {
        size_t count = 0;
        ZelFrameGetFunds(frame, nullptr, 0, &count);
        std::vector<ZelFund> funds(count);
        if (ZelFrameGetFunds(frame, funds.data(), funds.size(), &count) != ZEL_OK)
            qWarning("%s", ZelLastError());
        return funds;
    }

    /// An allocation frame on screen whose fund selector has a catalogue.
    static ZelFrame *selecting()
    {
        const auto groups = [](void *, const char *const *, const char *const *, size_t,
                               ZelTable *rows) -> ZelResult {
            const std::array fields{"FundGroupID:integer", "GroupTypeID:integer", "FundGroupName:string",
                                    "GroupTypeDesc:string"};
            const std::array row{"1", "2", "Opal", "Unit trusts"};
            ZelTableSetFields(rows, fields.data(), fields.size());
            return ZelTableAddRow(rows, row.data(), row.size());
        };
        bool good = true;
        for (const char *name : {"dspFundGroupType", "dspFundGroup", "dspFundPerProduct"})
            good = good && ZelSetProvider(name, groups, nullptr) == ZEL_OK;
        ZelFrame *frame = create("TfraFundAllocation");
        ZelTable *table = nullptr;
        const std::array fields{"FundID:integer",      "FundName:string",    "GroupTypeID:integer",
                                "FundGroupID:integer", "FundTerm:integer",   "AllowAsGuarantee:boolean",
                                "ProductID:integer",   "FundSheetURL:string"};
        const std::array row{"1", "Opal Balanced", "2", "1", "0", "false", "7", ""};
        const ZelFund fund{1, 0, 0};
        good = good && ZelTableCreate(&table) == ZEL_OK &&
               ZelTableSetFields(table, fields.data(), fields.size()) == ZEL_OK &&
               ZelTableAddRow(table, row.data(), row.size()) == ZEL_OK &&
               ZelFrameSetTable(frame, "FundsPerProductDataSet", table) == ZEL_OK &&
               ZelFrameSetFunds(frame, &fund, 1, 1) == ZEL_OK && ZelFrameShow(frame, 1) == ZEL_OK &&
               ZelProcessEvents(50) == ZEL_OK;
        if (!good)
            qWarning("%s", ZelLastError());
        return frame;
    }

    /// Calls @p steps once the fund selector is open, then closes it.
    void inDialog(const std::function<void()> &steps)
    {
        QTimer::singleShot(0, this, [steps] {
            QWidget *dialog = QApplication::activeModalWidget();
            QVERIFY(dialog);
            const auto close = qScopeGuard([dialog] { dialog->close(); });
            QVERIFY(dialog->inherits("TfrmFundSelector"));
            steps();
        });
    }

    /// The frame's component of that name, so that a test can click it.
    static QWidget *componentOf(ZelFrame *frame, const char *name)
    {
        uintptr_t window = 0;
        QWidget *widget = ZelFrameWindow(frame, &window) == ZEL_OK ? QWidget::find(window) : nullptr;
        return widget ? widget->findChild<QWidget *>(QLatin1String(name)) : nullptr;
    }

    static ZelResult call(ZelFrame *frame, const char *operation,
                          const std::vector<const char *> &arguments = {})
    {
        return ZelFrameCall(frame, operation, arguments.data(), arguments.size(), nullptr, 0, nullptr);
    }

private Q_SLOTS:
    void init() override
    {
        ZelTest::init();
        QCOMPARE(Initialize(), ZEL_OK);
    }

    void cleanup()
    {
        for (ZelFrame *frame : std::exchange(made, {}))
            ZelFrameDestroy(frame);
        QCOMPARE(Finalize(), ZEL_OK);
        QVERIFY(qApp); // the host's own application object is left alone
    }

    void aSecondStartAndAStopTooManyAreRefused()
    {
        QCOMPARE(Initialize(), ZEL_ALREADY_INITIALIZED);
        QVERIFY2(lastError().contains("initialised already"_L1), ZelLastError());
        QCOMPARE(GetUnitCounter(0), -1);
        QCOMPARE(Finalize(), ZEL_OK);
        QCOMPARE(Finalize(), ZEL_NOT_INITIALIZED);
        QCOMPARE(GetUnitCounter(0), 0);
        ZelFrame *frame = nullptr;
        QCOMPARE(ZelFrameCreate("TfraHeader", 0, &frame), ZEL_NOT_INITIALIZED);
        QVERIFY(!frame);
        QVERIFY2(lastError().contains("not initialised"_L1), ZelLastError());
        QCOMPARE(ZelProcessEvents(0), ZEL_NOT_INITIALIZED);
        QCOMPARE(Initialize(), ZEL_OK);
    }

    void aFrameIsMadeByNameShownAndDestroyed()
    {
        ZelFrame *frame = create("TfraPageHeader");
        QVERIFY(frame);
        QCOMPARE(ZelFrameSetBounds(frame, 10, 20, 300, 60), ZEL_OK);
        QCOMPARE(ZelFrameShow(frame, 1), ZEL_OK);
        QCOMPARE(ZelProcessEvents(50), ZEL_OK);
        QCOMPARE(propertyOf(frame, "visible"), u"true"_s);
        QCOMPARE(propertyOf(frame, "width"), QString::number(qRound(300 / qApp->devicePixelRatio())));
        QCOMPARE(ZelFrameSetBounds(frame, 10, 20, -1, 60), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameSetBounds(frame, 10, 20, 300, -1), ZEL_BAD_VALUE);
        QVERIFY2(lastError().contains("300 x -1"_L1), ZelLastError());
        QCOMPARE(propertyOf(frame, "width"), QString::number(qRound(300 / qApp->devicePixelRatio())));
        uintptr_t window = 0;
        QCOMPARE(ZelFrameWindow(frame, &window), ZEL_OK);
        QVERIFY(window);
        QVERIFY(QWidget::find(window));
        QCOMPARE(ZelFrameFocus(frame), ZEL_OK);
        QCOMPARE(ZelFrameShow(frame, 0), ZEL_OK);
        QCOMPARE(propertyOf(frame, "visible"), u"false"_s);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
        QVERIFY(!QWidget::find(window));
    }

    void aClassThatTheSystemDoesNotHaveIsRefused()
    {
        ZelFrame *frame = reinterpret_cast<ZelFrame *>(1);
        QCOMPARE(ZelFrameCreate("TfraNothing", 0, &frame), ZEL_NO_CLASS);
        QVERIFY(!frame);
        QVERIFY2(lastError().contains("TfraNothing"_L1), ZelLastError());
        QCOMPARE(ZelFrameCreate(nullptr, 0, &frame), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameCreate("TfraHeader", 0, nullptr), ZEL_BAD_VALUE);
    }

    void stoppingWithFramesAliveIsRefused()
    {
        ZelFrame *frame = create("TfraHeader");
        QCOMPARE(Finalize(), ZEL_FRAMES_ALIVE);
        QVERIFY2(lastError().contains("not been destroyed"_L1), ZelLastError());
        QCOMPARE(GetUnitCounter(0), -1);
        QCOMPARE(propertyOf(frame, "enabled"), u"true"_s); // the frame still works
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void aHandleThatIsNotAliveIsRefused()
    {
        ZelFrame *frame = create("TfraHeader");
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_NO_HANDLE);
        QCOMPARE(ZelFrameShow(frame, 1), ZEL_NO_HANDLE);
        QCOMPARE(ZelFrameShow(nullptr, 1), ZEL_NO_HANDLE);
        QCOMPARE(ZelTableDestroy(nullptr), ZEL_NO_HANDLE);
        ZelTable *table = catalogue();
        QCOMPARE(ZelTableDestroy(table), ZEL_OK);
        QCOMPARE(ZelTableDestroy(table), ZEL_NO_HANDLE);
        QCOMPARE(ZelTableAddRow(table, nullptr, 0), ZEL_NO_HANDLE);
        QVERIFY(lastError().contains("table"_L1));
    }

    void propertiesAreWrittenAndReadAsText()
    {
        ZelFrame *frame = create("TfraFundAllocation");
        QCOMPARE(propertyOf(frame, "AllocByAmount"), u"true"_s);
        for (const char *no : {"false", "FALSE", "0"}) {
            QCOMPARE(ZelFrameSetProperty(frame, "AllocByAmount", "1"), ZEL_OK);
            QCOMPARE(ZelFrameSetProperty(frame, "AllocByAmount", no), ZEL_OK);
            QCOMPARE(propertyOf(frame, "AllocByAmount"), u"false"_s);
        }
        QCOMPARE(ZelFrameSetProperty(frame, "InvestmentAmount", "1234567.8901"), ZEL_OK);
        QCOMPARE(propertyOf(frame, "InvestmentAmount"), u"1234567.8901"_s);
        QCOMPARE(propertyOf(frame, "RemainingPercent"), u"100"_s);
        QCOMPARE(propertyOf(frame, "FundCount"), u"0"_s);
        QCOMPARE(ZelFrameSetProperty(frame, "ColumnCaption_Fund", "Fonds é €"), ZEL_OK);
        QCOMPARE(propertyOf(frame, "ColumnCaption_Fund"), u"Fonds é €"_s);
        // of a component, and of one inside another
        QCOMPARE(ZelFrameSetProperty(frame, "pnlHeaderCaption.caption", "Lump sum"), ZEL_OK);
        QCOMPARE(propertyOf(frame, "pnlHeaderCaption.caption"), u"Lump sum"_s);
        QCOMPARE(ZelFrameSetProperty(frame, "fraFundToolBar.sbtFunds.enabled", "false"), ZEL_OK);
        QCOMPARE(propertyOf(frame, "fraFundToolBar.sbtFunds.enabled"), u"false"_s);
        // flags and enumerations by name
        QCOMPARE(propertyOf(frame, "focusPolicy"), u"NoFocus"_s);
        QCOMPARE(ZelFrameSetProperty(frame, "focusPolicy", "TabFocus"), ZEL_OK);
        QCOMPARE(propertyOf(frame, "focusPolicy"), u"TabFocus"_s);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void whatAPropertyCannotTakeIsRefused_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("result");
        QTest::newRow("truth") << QByteArray("AllocByAmount") << QByteArray("maybe") << int(ZEL_BAD_VALUE);
        QTest::newRow("money") << QByteArray("InvestmentAmount") << QByteArray("much") << int(ZEL_BAD_VALUE);
        QTest::newRow("too much") << QByteArray("InvestmentAmount") << QByteArray("1000000000000000")
                                  << int(ZEL_BAD_VALUE);
        QTest::newRow("enumeration") << QByteArray("focusPolicy") << QByteArray("Sometimes")
                                     << int(ZEL_BAD_VALUE);
        QTest::newRow("read-only") << QByteArray("FundCount") << QByteArray("3") << int(ZEL_NO_NAME);
        QTest::newRow("unknown") << QByteArray("Nothing") << QByteArray("3") << int(ZEL_NO_NAME);
        QTest::newRow("no name") << QByteArray("") << QByteArray("3") << int(ZEL_NO_NAME);
        QTest::newRow("unknown component")
            << QByteArray("pnlNothing.caption") << QByteArray("3") << int(ZEL_NO_NAME);
        QTest::newRow("no step") << QByteArray(".objectName") << QByteArray("3") << int(ZEL_NO_NAME);
        QTest::newRow("no component") << QByteArray("..caption") << QByteArray("3") << int(ZEL_NO_NAME);
        QTest::newRow("rows") << QByteArray("FundsPerProductDataSet") << QByteArray("3")
                              << int(ZEL_BAD_VALUE);
    }
    void whatAPropertyCannotTakeIsRefused()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, value);
        QFETCH(int, result);
        ZelFrame *frame = create("TfraFundAllocation");
        QCOMPARE(ZelFrameSetProperty(frame, name.constData(), value.constData()), result);
        QVERIFY(!lastError().isEmpty());
        QCOMPARE(propertyOf(frame, "AllocByAmount"), u"true"_s);
        QCOMPARE(propertyOf(frame, "InvestmentAmount"), u"0"_s);
        QCOMPARE(ZelFrameSetProperty(frame, nullptr, "1"), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameSetProperty(frame, "AllocByAmount", nullptr), ZEL_BAD_VALUE);
        QVERIFY(propertyOf(frame, "palette").startsWith("failure: "_L1));
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void textsFitTheirBufferOrSayWhatTheyNeed()
    {
        ZelFrame *frame = create("TfraFundAllocation");
        QCOMPARE(ZelFrameSetProperty(frame, "ColumnCaption_Fund", "€€"), ZEL_OK); // six bytes
        size_t length = 0;
        QCOMPARE(ZelFrameGetProperty(frame, "ColumnCaption_Fund", nullptr, 0, &length), ZEL_OK);
        QCOMPARE(length, size_t(6));
        std::array<char, 8> text{"???????"};
        QCOMPARE(ZelFrameGetProperty(frame, "ColumnCaption_Fund", text.data(), 6, &length),
                 ZEL_BUFFER_TOO_SMALL);
        QCOMPARE(length, size_t(6));
        QCOMPARE(text[0], '\0');
        QCOMPARE(text[6], '?'); // nothing is written beyond the buffer's size
        QCOMPARE(ZelFrameGetProperty(frame, "ColumnCaption_Fund", text.data(), 7, nullptr), ZEL_OK);
        QCOMPARE(QString::fromUtf8(text.data()), u"€€"_s);
        QCOMPARE(ZelFrameGetProperty(frame, "ColumnCaption_Fund", nullptr, 7, nullptr), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void aListIsHandedOverAllocatedAndReadBack()
    {
        ZelFrame *frame = allocation({3, 1, 2});
        QCOMPARE(propertyOf(frame, "FundCount"), u"3"_s);
        QCOMPARE(call(frame, "fraFundToolBar.sbtAllocateAmount.click"), ZEL_OK);
        const auto funds = fundsOf(frame);
        QCOMPARE(funds.size(), size_t(3));
        qint64 amount = 0;
        for (size_t i = 0; i < funds.size(); ++i) {
            QCOMPARE(funds[i].FundID, int(i) + 1); // in the catalogue's order
            QCOMPARE(funds[i].Amount,
                     i < 2 ? 3333300 : 3333400); // the remaining cent goes to the last row
            QCOMPARE(funds[i].Percent, funds[i].Amount / 10);
            amount += funds[i].Amount;
        }
        QCOMPARE(amount, qint64(10000000));
        QCOMPARE(propertyOf(frame, "RemainingPercent"), u"0"_s);
        // a buffer for one fund: it is filled, and count returns the number of all
        std::array<ZelFund, 2> some{{{-1, -1, -1}, {-1, -1, -1}}};
        size_t count = 0;
        QCOMPARE(ZelFrameGetFunds(frame, some.data(), 1, &count), ZEL_BUFFER_TOO_SMALL);
        QCOMPARE(count, size_t(3));
        QCOMPARE(some[0].FundID, 1);
        QCOMPARE(some[1].FundID, -1);
        QCOMPARE(ZelFrameGetFunds(frame, nullptr, 3, &count), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    // A stored allocation is set for another product: the funds that this product no longer offers are
    // returned with their amounts.
    void aKeptAllocationTellsWhatIsLeftOut()
    {
        ZelFrame *frame = allocation({});
        const std::array<ZelFund, 4> kept{
            {{3, 2'000'000, 200'000}, {77, 10'000, 1'000}, {1, 3'000'000, 300'000}, {78, 5, 6}}};
        std::array<ZelFund, 4> leftOut{};
        size_t count = 9;
        QCOMPARE(
            ZelFrameSetAllocation(frame, kept.data(), kept.size(), 1, leftOut.data(), leftOut.size(), &count),
            ZEL_OK);
        QCOMPARE(count, size_t(2));
        QCOMPARE(leftOut[0].FundID, 77);
        QCOMPARE(leftOut[0].Amount, qint64(10'000));
        QCOMPARE(leftOut[0].Percent, qint64(1'000));
        QCOMPARE(leftOut[1].FundID, 78);
        auto funds = fundsOf(frame);
        QCOMPARE(funds.size(), size_t(2));
        QCOMPARE(funds[0].FundID, 1); // in the catalogue's order
        QCOMPARE(funds[0].Percent, qint64(300'000));
        QCOMPARE(funds[0].Amount, qint64(3'000'000));
        // Without a buffer for the funds left out the call reports it; the other funds are set.
        QCOMPARE(ZelFrameSetAllocation(frame, kept.data(), 2, 1, nullptr, 0, nullptr), ZEL_BUFFER_TOO_SMALL);
        QCOMPARE(fundsOf(frame).size(), size_t(1));
        // The same array for input and output, with no fund left out.
        auto both = kept;
        QCOMPARE(ZelFrameSetAllocation(frame, both.data(), both.size(), 1, both.data(), both.size(), &count),
                 ZEL_OK);
        QCOMPARE(count, size_t(2));
        QCOMPARE(both[1].FundID, 78);
        funds = fundsOf(frame);
        QCOMPARE(ZelFrameSetAllocation(frame, funds.data(), funds.size(), 1, nullptr, 0, &count), ZEL_OK);
        QCOMPARE(count, size_t(0));
        QCOMPARE(fundsOf(frame).size(), size_t(2));
        QCOMPARE(ZelFrameSetAllocation(frame, nullptr, 0, 1, nullptr, 0, nullptr), ZEL_OK);
        QCOMPARE(fundsOf(frame).size(), size_t(0));
        // A null list, a null buffer, a null frame and a missing catalogue are refused.
        QCOMPARE(ZelFrameSetAllocation(frame, nullptr, 1, 1, nullptr, 0, &count), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameSetAllocation(frame, kept.data(), 1, 1, nullptr, 1, &count), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameSetAllocation(nullptr, kept.data(), 1, 1, nullptr, 0, &count), ZEL_NO_HANDLE);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
        ZelFrame *bare = create("TfraFundAllocation");
        QCOMPARE(ZelFrameSetAllocation(bare, kept.data(), 1, 1, nullptr, 0, &count), ZEL_FAILED);
        QVERIFY2(lastError().contains("FundsPerProductDataSet"_L1), ZelLastError());
        QCOMPARE(ZelFrameDestroy(bare), ZEL_OK);
    }

    // The result only says that the operation ran; the count says whether the fund was added.
    void addingAFundThatIsNotOffered()
    {
        ZelFrame *frame = allocation({1});
        QCOMPARE(call(frame, "AddFundIDToList", {"77", "1", "1"}), ZEL_OK);
        QCOMPARE(propertyOf(frame, "FundCount"), u"1"_s);
        QCOMPARE(call(frame, "AddFundIDToList", {"2", "1", "1"}), ZEL_OK);
        QCOMPARE(propertyOf(frame, "FundCount"), u"2"_s);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void operationsAreCalledByNameWithArguments()
    {
        ZelFrame *frame = allocation({1});
        QCOMPARE(call(frame, "AddFundIDToList", {"2", "250.5", "25.05"}), ZEL_OK);
        const auto funds = fundsOf(frame);
        QCOMPARE(funds.size(), size_t(2));
        QCOMPARE(funds[1].FundID, 2);
        QCOMPARE(funds[1].Amount, qint64(2505000));
        QCOMPARE(funds[1].Percent, qint64(250500));

        QCOMPARE(call(frame, "FundGrid.setCurrentCell", {"2", "3"}), ZEL_NO_NAME);
        QCOMPARE(call(frame, "AddFundIDToList", {"2"}), ZEL_NO_NAME);
        QVERIFY2(lastError().contains("with 1 arguments"_L1), ZelLastError());
        QCOMPARE(call(frame, "AddFundIDToList", {"two", "1", "1"}), ZEL_BAD_VALUE);
        QCOMPARE(call(frame, "AddFundIDToList", {"2", "much", "1"}), ZEL_BAD_VALUE);
        QCOMPARE(call(frame, "AddFundIDToList", {"2", nullptr, "1"}), ZEL_BAD_VALUE);
        QCOMPARE(call(frame, "Nothing"), ZEL_NO_NAME);
        QCOMPARE(ZelFrameCall(frame, nullptr, nullptr, 0, nullptr, 0, nullptr), ZEL_BAD_VALUE);
        QCOMPARE(fundsOf(frame).size(), size_t(2));

        // a result comes back as text
        std::array<char, 32> text{};
        const std::array column{"3"};
        QCOMPARE(ZelFrameCall(frame, "GetCurrentGridRowValue", column.data(), column.size(), text.data(),
                              text.size(), nullptr),
                 ZEL_OK);
        QCOMPARE(QByteArray(text.data()), QByteArray("0"));

        QCOMPARE(call(frame, "ResetValues"), ZEL_OK);
        QCOMPARE(call(frame, "ClearFunds"), ZEL_OK);
        QVERIFY(fundsOf(frame).empty());
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void anErrorOfTheFrameIsAFailureWithItsText()
    {
        ZelFrame *frame = create("TfraFundAllocation");
        const ZelFund fund{1, 0, 0};
        // without a catalogue the fund dataset is closed
        QCOMPARE(ZelFrameSetFunds(frame, &fund, 1, 1), ZEL_FAILED);
        QVERIFY2(lastError().contains("cdsFunds"_L1), ZelLastError());
        QCOMPARE(ZelFrameSetFunds(frame, nullptr, 1, 1), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
        ZelFrame *header = create("TfraHeader");
        QCOMPARE(ZelFrameSetFunds(header, &fund, 1, 1), ZEL_NO_NAME);
        size_t count = 0;
        QCOMPARE(ZelFrameGetFunds(header, nullptr, 0, &count), ZEL_NO_NAME);
        QCOMPARE(ZelFrameSetTable(header, "enabled", nullptr), ZEL_BAD_VALUE);
        QCOMPARE(ZelFrameDestroy(header), ZEL_OK);
    }

    void aTableTakesOnlyWhatItsFieldsTake()
    {
        ZelTable *table = nullptr;
        QCOMPARE(ZelTableCreate(nullptr), ZEL_BAD_VALUE);
        QCOMPARE(ZelTableCreate(&table), ZEL_OK);
        for (const char *field : {"FundID", ":integer", "FundID:number", ""}) {
            QCOMPARE(ZelTableSetFields(table, &field, 1), ZEL_BAD_VALUE);
            QVERIFY2(lastError().contains(QString::fromUtf8(field)), ZelLastError());
        }
        QCOMPARE(ZelTableSetFields(table, nullptr, 1), ZEL_BAD_VALUE);
        const std::array fields{"A:integer", "B:boolean", "C:date", "D:currency", "E:float", "F:largeint"};
        QCOMPARE(ZelTableSetFields(table, fields.data(), fields.size()), ZEL_OK);
        QCOMPARE(ZelTableSetFields(table, fields.data(), fields.size()), ZEL_BAD_VALUE);
        std::array row{"1", "true", "2024-02-29", "1.2345", "0.5", "9000000000"};
        QCOMPARE(ZelTableAddRow(table, row.data(), row.size()), ZEL_OK);
        QCOMPARE(ZelTableAddRow(table, row.data(), 2), ZEL_BAD_VALUE);
        row[0] = "one";
        QCOMPARE(ZelTableAddRow(table, row.data(), row.size()), ZEL_BAD_VALUE);
        QVERIFY2(lastError().contains(u'A') && lastError().contains("one"_L1), ZelLastError());
        row[0] = "1";
        row[3] = "1000000000000000";
        QCOMPARE(ZelTableAddRow(table, row.data(), row.size()), ZEL_BAD_VALUE);
        QCOMPARE(ZelTableAddRow(table, nullptr, row.size()), ZEL_BAD_VALUE);
        // Finalize destroys the frame
    }

    // Texts in another encoding are refused, not misread.
    void textsThatAreNotUtf8AreRefused()
    {
        const char *const latin = "K\xf6nig"; // "König" as Windows-1252 has it
        const auto refused = [](ZelResult result) {
            return result == ZEL_BAD_VALUE && lastError().endsWith("is not UTF-8"_L1);
        };
        ZelFrame *none = nullptr;
        QVERIFY(refused(ZelFrameCreate(latin, 0, &none)));
        QVERIFY(!none);
        ZelFrame *frame = create("TfraHeader");
        QVERIFY(refused(ZelFrameSetProperty(frame, "Caption", latin)));
        QVERIFY(refused(ZelFrameSetProperty(frame, latin, "Caption")));
        QVERIFY(propertyOf(frame, "Caption").startsWith(u'<'));
        QVERIFY(refused(ZelFrameGetProperty(frame, latin, nullptr, 0, nullptr)));
        QVERIFY(refused(ZelFrameCall(frame, latin, nullptr, 0, nullptr, 0, nullptr)));
        QVERIFY(refused(ZelFrameCall(frame, "setWindowTitle", &latin, 1, nullptr, 0, nullptr)));
        QVERIFY(refused(ZelSetProvider(latin, nullptr, nullptr)));
        ZelTable *table = nullptr;
        QCOMPARE(ZelTableCreate(&table), ZEL_OK);
        QVERIFY(refused(ZelFrameSetTable(frame, latin, table)));
        const char *field = "K\xf6nig:string";
        QVERIFY(refused(ZelTableSetFields(table, &field, 1)));
        field = "FundName:string";
        QCOMPARE(ZelTableSetFields(table, &field, 1), ZEL_OK);
        for (const char *text : {latin, "cut \xc3", "\xed\xa0\x80", "\xc0\xaf", "\xf5\x80\x80\x80"})
            QVERIFY2(refused(ZelTableAddRow(table, &text, 1)), text);
        const char *good = "König 😀";
        QCOMPARE(ZelTableAddRow(table, &good, 1), ZEL_OK);
        QCOMPARE(ZelFrameSetProperty(frame, "Caption", good), ZEL_OK);
        QCOMPARE(propertyOf(frame, "Caption"), QString::fromUtf8(good));
        QCOMPARE(ZelTableDestroy(table), ZEL_OK);
    }

    void aProviderOfTheHostIsAskedForRows()
    {
        Provider provider;
        QCOMPARE(ZelSetProvider("dspFundMessage", &Provider::deliver, &provider), ZEL_OK);
        ZelFrame *frame = allocation({4}); // a fund of group 11, whose funds may ask a question
        ZelFrameShow(frame, 1);
        QVERIFY(provider.asked.contains(u"pFundGroupID=11"_s));
        QCOMPARE(propertyOf(frame, "FundCount"), u"1"_s);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void aProviderThatFailsIsNamed()
    {
        Provider provider;
        provider.answer = -7;
        QCOMPARE(ZelSetProvider("dspFundMessage", &Provider::deliver, &provider), ZEL_OK);
        QCOMPARE(ZelSetProvider(nullptr, &Provider::deliver, &provider), ZEL_BAD_VALUE);
        ZelFrame *frame = create("TfraFundAllocation");
        ZelTable *table = catalogue();
        const ZelFund fund{4, 0, 0};
        QCOMPARE(ZelFrameSetTable(frame, "FundsPerProductDataSet", table), ZEL_OK);
        QCOMPARE(ZelFrameSetFunds(frame, &fund, 1, 1), ZEL_FAILED);
        QVERIFY2(lastError().contains("dspFundMessage"_L1) && lastError().contains("-7"_L1), ZelLastError());
        QCOMPARE(ZelSetProvider("dspFundMessage", nullptr, nullptr), ZEL_OK);
        QCOMPARE(ZelFrameSetFunds(frame, &fund, 1, 1), ZEL_FAILED);
        QVERIFY2(lastError().contains("no provider"_L1), ZelLastError());
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void aProvidersRowsAreNotItsOwnToFree()
    {
        ZelResult freed = ZEL_OK;
        const auto deliver = [](void *context, const char *const *names, const char *const *values,
                                size_t count, ZelTable *rows) {
            *static_cast<ZelResult *>(context) = ZelTableDestroy(rows);
            Provider provider;
            return Provider::deliver(&provider, names, values, count, rows);
        };
        QCOMPARE(ZelSetProvider("dspFundMessage", deliver, &freed), ZEL_OK);
        ZelFrame *frame = allocation({4});
        QCOMPARE(freed, ZEL_FAILED);
        QVERIFY2(lastError().contains("belongs to the package"_L1), ZelLastError());
        QCOMPARE(propertyOf(frame, "FundCount"), u"1"_s);
    }

    // A click is no call through the interface. While its event handler asks the host's provider, the frame
    // still must not be destroyed.
    void aFrameStaysWhileAProviderIsAsked()
    {
        struct Asked {
            ZelFrame *frame = nullptr;
            QList<int> answers;
        } asked;
        const auto deliver = [](void *context, const char *const *, const char *const *, size_t,
                                ZelTable *) -> ZelResult {
            auto *self = static_cast<Asked *>(context);
            self->answers += {ZelFrameDestroy(self->frame), Finalize()};
            return ZEL_FAILED;
        };
        ZelFrame *frame = asked.frame = allocation({1});
        QCOMPARE(ZelSetProvider("dspFundGroup", deliver, &asked), ZEL_OK);
        QCOMPARE(ZelFrameShow(frame, 1), ZEL_OK);
        QCOMPARE(ZelProcessEvents(50), ZEL_OK);
        ReportCatcher report;
        QTest::mouseClick(componentOf(frame, "sbtFunds"), Qt::LeftButton);
        QCOMPARE(asked.answers, QList<int>({ZEL_FAILED, ZEL_FRAMES_ALIVE}));
        QCOMPARE(report.messages.size(), 1);
        QVERIFY2(report.messages[0].contains("dspFundGroup"_L1), qPrintable(report.messages[0]));
        QCOMPARE(propertyOf(frame, "FundCount"), u"1"_s);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    // The frame is destroyed while its dialog is open. Finalize is refused, because the dialog is a form of
    // the package, too.
    void stoppingUnderAnOpenDialogIsRefused()
    {
        ZelFrame *frame = selecting();
        QList<int> answers;
        inDialog([&] { answers = {ZelFrameDestroy(frame), Finalize(), GetUnitCounter(0)}; });
        QTest::mouseClick(componentOf(frame, "sbtFunds"), Qt::LeftButton);
        QCOMPARE(answers, QList<int>({ZEL_OK, ZEL_FRAMES_ALIVE, -1}));
    }

    void aFrameStaysWhileAnOperationOfItRuns()
    {
        ZelFrame *frame = selecting();
        QList<int> answers;
        inDialog([&] { answers = {ZelFrameDestroy(frame), Finalize()}; });
        QCOMPARE(call(frame, "fraFundToolBar.sbtFunds.click"), ZEL_OK);
        QCOMPARE(answers, QList<int>({ZEL_FAILED, ZEL_FRAMES_ALIVE}));
        QVERIFY2(lastError().contains("not been destroyed"_L1), ZelLastError());
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void processingEventsWaitsAndLetsGo()
    {
        bool rang = false;
        QTimer::singleShot(30, this, [&] { rang = true; });
        QCOMPARE(ZelProcessEvents(0), ZEL_OK);
        QVERIFY(!rang);
        int calls = 0; // each call waits for events
        for (; !rang && calls < 20; ++calls)
            QCOMPARE(ZelProcessEvents(200), ZEL_OK);
        QVERIFY(rang);
        // Without events the call sleeps until its time is over.
        QElapsedTimer clock;
        clock.start();
        for (calls = 0; clock.elapsed() < 200 && calls < 20; ++calls)
            QCOMPARE(ZelProcessEvents(50), ZEL_OK);
        QVERIFY2(clock.elapsed() >= 200, qPrintable(QString::number(calls)));
        QPointer<QObject> doomed = new QObject;
        doomed->deleteLater();
        QCOMPARE(ZelProcessEvents(0), ZEL_OK);
        QVERIFY(!doomed);
    }

    // Deferred deletions wait until the provider returns: its caller may still use the object.
    void nothingIsLetGoWhileAProviderIsAsked()
    {
        struct Asked {
            QPointer<QObject> doomed;
            bool alive = false;
        } asked;
        const auto deliver = [](void *context, const char *const *, const char *const *, size_t,
                                ZelTable *) -> ZelResult {
            auto *self = static_cast<Asked *>(context);
            self->doomed = new QObject;
            self->doomed->deleteLater();
            ZelProcessEvents(0);
            self->alive = self->doomed;
            return ZEL_FAILED;
        };
        ZelFrame *frame = allocation({1});
        QCOMPARE(ZelSetProvider("dspFundMessage", deliver, &asked), ZEL_OK);
        const ZelFund fund{4, 0, 0};
        QCOMPARE(ZelFrameSetFunds(frame, &fund, 1, 1), ZEL_FAILED);
        QVERIFY(asked.alive);
        QCOMPARE(ZelProcessEvents(0), ZEL_OK);
        QVERIFY(!asked.doomed);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void stoppingFromInsideTheMessageLoopIsRefused()
    {
        ZelResult stopped = ZEL_OK;
        QTimer::singleShot(0, this, [&] { stopped = Finalize(); });
        QCOMPARE(ZelProcessEvents(50), ZEL_OK);
        QCOMPARE(stopped, ZEL_FAILED);
        QVERIFY2(lastError().contains("ZelProcessEvents"_L1), ZelLastError());
    }

    void anotherThreadIsRefused()
    {
        ZelFrame *frame = create("TfraHeader");
        ZelResult result = ZEL_OK;
        ZelResult stopped = ZEL_OK;
        QString error;
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            result = ZelFrameShow(frame, 1);
            error = lastError();
            stopped = Finalize();
        }));
        thread->start();
        QVERIFY(thread->wait(10000));
        QCOMPARE(result, ZEL_WRONG_THREAD);
        QVERIFY2(error.contains("another thread"_L1), qPrintable(error));
        QCOMPARE(stopped, ZEL_WRONG_THREAD);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
    }

    void aLongErrorIsCutBetweenCharacters()
    {
        ZelFrame *frame = nullptr;
        for (int shift = 0; shift < 3; ++shift) {
            const QByteArray name = QByteArray(shift, 'x') + u"€"_s.repeated(1000).toUtf8();
            QCOMPARE(ZelFrameCreate(name.constData(), 0, &frame), ZEL_NO_CLASS);
            const QByteArray error(ZelLastError());
            QVERIFY(error.size() < 1024 && error.size() > 1000);
            QVERIFY(!lastError().contains(QChar::ReplacementCharacter));
        }
    }

    void aWindowThatIsNotThereIsNoParent()
    {
        ZelFrame *frame = nullptr;
        QCOMPARE(ZelFrameCreate("TfraHeader", 0x7ffffff1, &frame), ZEL_NO_WINDOW);
        QVERIFY(!frame);
        QVERIFY2(lastError().contains("window"_L1), ZelLastError());
        QCOMPARE(ZelFrameCreate("TfraHeader", ~quintptr(0), &frame), ZEL_NO_WINDOW);
    }

    void aFrameStandsInTheWindowOfItsHost()
    {
        if (!onScreen())
            return; // the offscreen platform has no foreign windows, as the test above shows
        QWindow host;
        host.setGeometry(100, 100, 500, 300);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        ZelFrame *frame = create("TfraPageHeader", host.winId());
        QVERIFY(frame);
        QCOMPARE(ZelFrameSetBounds(frame, 20, 30, 400, 50), ZEL_OK);
        QCOMPARE(ZelFrameShow(frame, 1), ZEL_OK);
        uintptr_t window = 0;
        QCOMPARE(ZelFrameWindow(frame, &window), ZEL_OK);
        QWidget *inside = QWidget::find(window);
        QVERIFY(QTest::qWaitForWindowExposed(inside));
        QCOMPARE(inside->geometry(), QRect(20, 30, 400, 50));
        QTRY_COMPARE(inside->mapToGlobal(QPoint(0, 0)), host.mapToGlobal(QPoint(20, 30)));
        QCOMPARE(ZelFrameFocus(frame), ZEL_OK);
        QTRY_COMPARE(QGuiApplication::focusWindow(), inside->windowHandle());
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
        QVERIFY(host.isVisible());
    }

    void aParentWindowThatGoesAwayLeavesAFailure()
    {
        if (!onScreen())
            return; // the offscreen platform has no foreign windows
#ifdef Q_OS_WIN
        // Qt logs this when the system destroys a window.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^External WM_DESTROY received"_s));
#endif
        auto host = std::make_unique<QWindow>();
        host->resize(500, 300);
        host->show();
        QVERIFY(QTest::qWaitForWindowExposed(host.get()));
        ZelFrame *frame = create("TfraFundAllocation", host->winId());
        QCOMPARE(ZelFrameShow(frame, 1), ZEL_OK);
        QCOMPARE(ZelProcessEvents(100), ZEL_OK);
        host.reset();
        QCOMPARE(ZelProcessEvents(100), ZEL_OK);
        QCOMPARE(ZelFrameSetBounds(frame, 0, 0, 100, 100), ZEL_NO_WINDOW);
        QVERIFY2(lastError().contains("gone"_L1), ZelLastError());
        QCOMPARE(ZelFrameSetProperty(frame, "AllocByAmount", "false"), ZEL_NO_WINDOW);
        QCOMPARE(ZelFrameDestroy(frame), ZEL_OK);
        QCOMPARE(ZelProcessEvents(100), ZEL_OK);
    }
};

ZEL_TEST_MAIN_NOT_STARTED(tst_cinterface)
#include "tst_cinterface.moc"
