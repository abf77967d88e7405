#pragma once

#include "Dialogs.h"
#include "ZelTest.h"

#include "data/DataPacket.h"
#include "data/Format.h"
#include "data/LocalConnection.h"
#include "funds/fra_FundAllocation.h"
#include "funds/frm_FundSelector.h"

#include <QHash>
#include <QLineEdit>
#include <QVBoxLayout>

/// One fund of the product.
struct FundRow {
    int id = 0;
    int group = 1;
    int groupType = 2;
    int term = 0;
    bool guarantee = false;
    QString name = {};
};

/// A packet with every field that the allocation frame reads, except @p without.
inline QVariant fundPacket(const QList<FundRow> &rows, const QString &without = {})
{
    const QList<TFieldDef> all{
        {QStringLiteral("FundID"), TFieldType::Integer},
        {QStringLiteral("GroupTypeID"), TFieldType::Integer},
        {QStringLiteral("FundGroupID"), TFieldType::Integer},
        {QStringLiteral("FundGroupName"), TFieldType::String},
        {QStringLiteral("FundGroupName_Afr"), TFieldType::String},
        {QStringLiteral("FundName"), TFieldType::String},
        {QStringLiteral("FundName_AFR"), TFieldType::String},
        {QStringLiteral("F.MainframeID"), TFieldType::String},
        {QStringLiteral("MinimumInitialAmount"), TFieldType::Float},
        {QStringLiteral("MinimumSchedAmount"), TFieldType::Float},
        {QStringLiteral("BuySellRate"), TFieldType::Float},
        {QStringLiteral("ManRate"), TFieldType::Float},
        {QStringLiteral("UnderlyingManRate"), TFieldType::Float},
        {QStringLiteral("GuaranteeRate"), TFieldType::Float},
        {QStringLiteral("TrustRate"), TFieldType::Float},
        {QStringLiteral("FundTerm"), TFieldType::Integer},
        {QStringLiteral("InternationalFund"), TFieldType::Boolean},
        {QStringLiteral("AllowAsGuarantee"), TFieldType::Boolean},
        {QStringLiteral("Benchmark"), TFieldType::String},
        {QStringLiteral("BenchmarkPerf"), TFieldType::Float},
        {QStringLiteral("MinPerfFee"), TFieldType::Float},
        {QStringLiteral("MaxPerfFee"), TFieldType::String},
        {QStringLiteral("ProductID"), TFieldType::Integer},
        {QStringLiteral("FundSheetURL"), TFieldType::String},
    };
    QList<TFieldDef> defs;
    for (const TFieldDef &def : all) {
        if (def.Name != without)
            defs.append(def);
    }
    TTableBuilder builder(defs);
    builder.Reserve(static_cast<int>(rows.size()));
    for (const FundRow &row : rows) {
        const QString name =
            row.name.isEmpty() ? QStringLiteral(" Fund %1 ").arg(row.id) : row.name; // the frame trims it
        const QVariantList values{row.id,
                                  row.groupType,
                                  row.group,
                                  QStringLiteral(" Group %1").arg(row.group),
                                  QStringLiteral("Groep %1 ").arg(row.group),
                                  name,
                                  QStringLiteral(" Fonds %1 ").arg(row.id),
                                  QStringLiteral(" M%1 ").arg(row.id),
                                  1000.5,
                                  100.25,
                                  1.2345,
                                  2.5,
                                  0.75,
                                  3.125,
                                  0.1,
                                  row.term,
                                  row.id % 2 == 0,
                                  row.guarantee,
                                  QStringLiteral("ALSI"),
                                  12.5,
                                  0.25,
                                  QStringLiteral("2%"),
                                  1,
                                  QString()};
        for (int i = 0; i < all.size(); ++i) {
            if (all.at(i).Name != without)
                builder.Append(values.at(i));
        }
        builder.EndRow();
    }
    return TDataPacket(builder.Finish()).ToVariant();
}

/// Funds with the ids 1 to @p count in this order.
inline QVariant fundPacket(int count)
{
    QList<FundRow> rows;
    for (int id = 1; id <= count; ++id)
        rows.append(FundRow{.id = id});
    return fundPacket(rows);
}

inline TFundRec fundRecord(int id, Currency amount = {}, Currency percent = {})
{
    TFundRec record;
    record.FundID = id;
    record.Amount = amount;
    record.Percent = percent;
    return record;
}

inline Currency money(const char *text)
{
    return StrToCurr(QString::fromLatin1(text));
}

/// A window with an allocation frame, driven by keys and clicks and read as displayed.
struct AllocationWindow : QWidget {
    explicit AllocationWindow(const QVariant &packet = fundPacket(10))
    {
        auto *box = new QVBoxLayout(this);
        box->setContentsMargins(0, 0, 0, 0);
        frame = new TfraFundAllocation(this);
        box->addWidget(frame);
        frame->installEventFilter(this);
        connection.RegisterProvider(QStringLiteral("dspFundMessage"), [this](const TParams &params) {
            const int group = params.ParamByName(QStringLiteral("pFundGroupID")).AsInteger();
            messagesAsked.append(group);
            TTableBuilder builder({{QStringLiteral("FundID"), TFieldType::Integer}});
            for (const int id : messageFunds.value(group))
                builder.AddRow({id});
            return TDataPacket(builder.Finish());
        });
        if (packet.isValid())
            frame->Set_FundsPerProductDataSet(packet);
    }
    ~AllocationWindow() override { delete frame; } // before the members that its providers use
    AllocationWindow(const AllocationWindow &) = delete;
    AllocationWindow &operator=(const AllocationWindow &) = delete;
    /// Shows the window and waits until the frame has initialised itself.
    void open(int width = 622, int height = 300)
    {
        resize(width, height);
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
        QTRY_VERIFY(initialized);
        frame->FundGrid->setFocus();
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The flag is set before the frame handles the message, but open() sees it only after that.
        initialized = initialized || event->type() == WM_INITIALIZEFRAME;
        return QWidget::eventFilter(watched, event);
    }
    void setup(const QList<TFundRec> &records)
    {
        funds = TFunds(std::vector<TFundRec>(records.begin(), records.end()));
        frame->SetupFundAllocation(funds, 7, &connection);
    }
    void setupIds(const QList<int> &ids)
    {
        QList<TFundRec> records;
        for (const int id : ids)
            records.append(fundRecord(id));
        setup(records);
    }
    /// Registers providers with one type and one group that contains all funds.
    void offerOneGroup()
    {
        connection.RegisterProvider(QStringLiteral("dspFundGroupType"), [](const TParams &) {
            TTableBuilder rows({{QStringLiteral("GroupTypeID"), TFieldType::Integer},
                                {QStringLiteral("GroupTypeDesc"), TFieldType::String}});
            rows.AddRow({2, QStringLiteral("Type")});
            return TDataPacket(rows.Finish());
        });
        connection.RegisterProvider(QStringLiteral("dspFundGroup"), [](const TParams &) {
            TTableBuilder rows({{QStringLiteral("FundGroupID"), TFieldType::Integer},
                                {QStringLiteral("GroupTypeID"), TFieldType::Integer},
                                {QStringLiteral("FundGroupName"), TFieldType::String}});
            rows.AddRow({1, 2, QStringLiteral("Group")});
            return TDataPacket(rows.Finish());
        });
        connection.RegisterProvider(QStringLiteral("dspFundPerProduct"), [](const TParams &) {
            TTableBuilder rows({{QStringLiteral("FundGroupID"), TFieldType::Integer}});
            rows.AddRow({1});
            return TDataPacket(rows.Finish());
        });
    }
    TtsGrid &grid() const { return *frame->FundGrid; }
    QString cell(int column, int row) const { return grid().CellText(column, row); }
    QString remaining() const { return frame->pnlRemainAmount->caption(); }
    QString investment() const { return frame->pnlAmount->caption(); }
    QLineEdit *editor() const
    {
        // A closed editor is deleted in the event loop only, so the last one is the open one.
        return grid().findChildren<QLineEdit *>(QStringLiteral("edCell")).last();
    }
    QWidget *target() const
    {
        return grid().IsEditing() ? static_cast<QWidget *>(editor()) : frame->FundGrid;
    }
    void keys(const QString &text) const
    {
        for (const QChar c : text)
            QTest::keyClicks(target(), QString(c));
    }
    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(target(), which, modifiers);
    }
    void stand(int column, int row) const { grid().SetCurrentCell(column, row); }
    /// Types into the row's cell of the mode's column and presses Enter.
    void type(int row, const char *text) const
    {
        stand(frame->Get_AllocByAmount() ? 4 : 3, row);
        keys(QString::fromLatin1(text));
        key(Qt::Key_Return);
    }
    static void click(QAbstractButton *button) { QTest::mouseClick(button, Qt::LeftButton); }
    TfraFundToolBar &bar() const { return *frame->fraFundToolBar; }
    /// Clicks Funds and calls @p work with the fund selector; false when it did not open.
    template <typename Work> bool inSelector(Work work) const
    {
        return inDialog<TfrmFundSelector>([this] { click(bar().sbtFunds); }, work);
    }

    /// Describes how list, grid and bookmarks contradict one another; empty when they agree.
    QString disagreement() const
    {
        TFunds &list = frame->Funds();
        if (list.Length() != grid().RowCount())
            return QStringLiteral("%1 records, %2 rows").arg(list.Length()).arg(grid().RowCount());
        int handedOut = 0;
        for (int row = 1; row <= grid().RowCount(); ++row) {
            const TFundRec &record = list[row - 1];
            if (cell(3, row) != FormatFloat(FormatMask::TwoDecimals, record.Percent) ||
                cell(4, row) != FormatFloat(FormatMask::TwoDecimals, record.Amount))
                return QStringLiteral("row %1 shows %2, %3").arg(row).arg(cell(3, row), cell(4, row));
            if (cell(2, row) != QStringLiteral("Fund %1").arg(record.FundID))
                return QStringLiteral("row %1 is %2").arg(row).arg(cell(2, row));
            if (record.Bookmark) {
                ++handedOut;
                if (!frame->cdsFunds->BookmarkValid(record.Bookmark))
                    return QStringLiteral("bookmark of row %1").arg(row);
            }
        }
        if (frame->cdsFunds->BookmarksHandedOut() != handedOut)
            return QStringLiteral("%1 bookmarks out, %2 held")
                .arg(frame->cdsFunds->BookmarksHandedOut())
                .arg(handedOut);
        return {};
    }
    /// @p whole less the values shown in a column.
    Currency leftOf(Currency whole, int column) const
    {
        Currency sum;
        for (int row = 1; row <= grid().RowCount(); ++row) {
            const QString text = cell(column, row).trimmed();
            if (!text.isEmpty())
                sum += StrToCurr(FormatFloat(FormatMask::TwoDecimals, StrToCurr(text)));
        }
        return whole - sum;
    }

    TLocalConnection connection;
    QHash<int, QList<int>> messageFunds; ///< by fund group
    QList<int> messagesAsked;
    TFunds funds; ///< the list that the host passed to the frame
    bool initialized = false;
    TfraFundAllocation *frame;
};
