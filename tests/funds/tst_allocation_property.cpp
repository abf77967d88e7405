// Random operations on the allocation frame: after each step list, grid, remainder and bookmarks agree.
// labels: slow
#include "AllocationWindow.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

using Zel::Allocation::PercentOf;

class TestAllocationProperty : public ZelTest
{
    Q_OBJECT

#ifdef Q_OS_WIN
    // Under Wine each posted event is slow, because it goes through another process.
    static constexpr int steps = 10'000;
#else
    static constexpr int steps = 100'000;
#endif
    static constexpr int trials = steps;

private Q_SLOTS:
    void randomSteps()
    {
        constexpr quint32 seed = 20'050'611;
        QRandomGenerator random(seed);
        AllocationWindow window(fundPacket(30));
        window.frame->Set_InvestmentAmount(1000);
        window.setupIds({1, 2, 3});
        window.open();
        TfraFundAllocation &frame = *window.frame;
        const TField *const fundID = frame.cdsFunds->FieldByName(u"FundID"_s);
        const auto step = [&](int kind) {
            const int rows = window.grid().RowCount();
            switch (kind) {
            case 0: { // change the mode
                frame.Set_AllocByAmount(random.bounded(2) == 0);
                break;
            }
            case 1: // change the investment
                frame.Set_InvestmentAmount(Currency::fromRaw(
                    random.bounded(20) == 0 ? 0 : random.bounded(2'000'000'000) - 1'000'000));
                break;
            case 2: { // set another list, with duplicates and unknown funds
                QList<TFundRec> records;
                for (int i = random.bounded(7); i > 0; --i)
                    records.append(fundRecord(random.bounded(1, 33),
                                              Currency::fromRaw(random.bounded(100'000'000)),
                                              Currency::fromRaw(random.bounded(1'000'000))));
                window.setup(records);
                break;
            }
            case 3:
                frame.Set_ShowColumn_Amount(random.bounded(2) == 0);
                break;
            case 4:
                frame.Set_ShowColumn_Percent(random.bounded(2) == 0);
                break;
            case 5:
                if (rows > 0)
                    window.stand(1 + random.bounded(4), 1 + random.bounded(rows));
                break;
            case 6:
                if (rows > 0)
                    frame.RemoveFundFromList(frame.Funds(), random.bounded(rows), true);
                break;
            case 7:
                frame.AddFundIDToList(random.bounded(1, 33), 50, 5);
                break;
            default: { // type into a cell of the mode's column
                const int column = frame.Get_AllocByAmount() ? 4 : 3;
                if (rows == 0 || !window.grid().Col(column).Visible())
                    break;
                window.stand(column, 1 + random.bounded(rows));
                static constexpr std::array keys{'0', '1', '2', '3', '5', '9', '.', ',', '-', 'x'};
                QString text;
                for (int i = random.bounded(1, 6); i > 0; --i)
                    text.append(QLatin1Char(keys.at(static_cast<std::size_t>(random.bounded(10)))));
                window.keys(text);
                static constexpr std::array ends{Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape, Qt::Key_Up};
                if (window.grid().IsEditing())
                    window.key(ends.at(static_cast<std::size_t>(random.bounded(4))));
                window.frame->FundGrid->setFocus();
                break;
            }
            }
        };
        for (int i = 0; i < steps; ++i) {
            const int kind = random.bounded(14);
            step(kind);
            QString wrong = window.disagreement();
            const bool byAmount = frame.Get_AllocByAmount();
            if (byAmount && frame.Get_RemainingAmount() != window.leftOf(frame.Get_InvestmentAmount(), 4))
                wrong = u"remaining amount"_s;
            const Currency whole = frame.Get_InvestmentAmount();
            if (byAmount &&
                frame.Get_RemainingPercent() !=
                    (whole.isZero() ? Currency(100) : PercentOf(frame.Get_RemainingAmount(), whole)))
                wrong = u"remaining percent of the amount"_s;
            if (!byAmount && frame.Get_RemainingPercent() != window.leftOf(frame.Get_InvestmentPercent(), 3))
                wrong = u"remaining percent"_s;
            const QString shown =
                byAmount ? u"Remaining: %1 (%2%)"_s.arg(
                               FormatFloat(FormatMask::TwoDecimals, frame.Get_RemainingAmount()),
                               FormatFloat(FormatMask::TwoDecimals, frame.Get_RemainingPercent()))
                         : u"Remaining: %1%"_s.arg(
                               FormatFloat(FormatMask::TwoDecimals, frame.Get_RemainingPercent()));
            if (window.remaining() != shown)
                wrong = u"caption"_s;
            for (int row = 1; wrong.isEmpty() && row <= window.grid().RowCount(); ++row) {
                // Every bookmark leads to its own fund's row.
                frame.cdsFunds->GotoBookmark(frame.Funds()[row - 1].Bookmark);
                if (fundID->AsInteger() != frame.Funds()[row - 1].FundID)
                    wrong = u"bookmark"_s;
            }
            if (!wrong.isEmpty())
                QFAIL(qPrintable(u"seed %1, step %2 of kind %3: %4"_s.arg(seed).arg(i).arg(kind).arg(wrong)));
            // Deletes closed editors, as the event loop does.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (i % 1000 == 0)
                QCoreApplication::processEvents();
        }
    }

    // Compares Allocate with a model: integer cents, shares rounded as doubles are.
    void randomAllocations()
    {
        constexpr quint32 seed = 1862;
        QRandomGenerator random(seed);
        AllocationWindow window(fundPacket(8));
        TfraFundAllocation &frame = *window.frame;
        int exact = 0;
        for (int trial = 0; trial < trials; ++trial) {
            const int rows = 1 + random.bounded(8);
            const Currency investment =
                Currency::fromRaw(qint64{random.bounded(random.bounded(1, 2'000'000'000))} * 100);
            frame.Set_InvestmentAmount(investment);
            QList<TFundRec> records;
            qint64 left = investment.raw() / 100; // in cents
            int open = 0;
            for (int i = 1; i <= rows; ++i) {
                const qint64 cents = random.bounded(3) == 0 ? random.bounded(1, 500'000) : 0;
                records.append(fundRecord(i, Currency::fromRaw(cents * 100)));
                left -= cents;
                open += cents == 0 ? 1 : 0;
            }
            window.setup(records);
            window.bar().sbtAllocateAmount->click();
            const auto cents = [](double value) { // half a cent added, then truncated towards zero
                return static_cast<qint64>(value * 100.0 + 0.5);
            };
            qint64 share = 0;
            if (open > 0) {
                // The quotient has four decimals, ties to even, before it is rounded to cents.
                const qint64 a = left * 100;
                qint64 whole = a / open;
                qint64 rest = a % open;
                if (rest < 0) {
                    rest += open;
                    --whole;
                }
                if (2 * rest > open || (2 * rest == open && whole % 2 != 0))
                    ++whole;
                share = cents(static_cast<double>(whole) / 10000.0);
            }
            qint64 sum = 0;
            int seen = 0;
            for (int row = 1; row <= rows; ++row) {
                const qint64 shown = frame.Funds()[row - 1].Amount.raw() / 100;
                qint64 expected = records.at(row - 1).Amount.raw() / 100;
                if (expected == 0)
                    expected = ++seen < open ? share : cents(static_cast<double>(left) / 100.0);
                if (records.at(row - 1).Amount.isZero())
                    left -= shown;
                if (shown != expected)
                    QFAIL(qPrintable(u"seed %1, trial %2, row %3: %4, not %5"_s.arg(seed)
                                         .arg(trial)
                                         .arg(row)
                                         .arg(shown)
                                         .arg(expected)));
                sum += shown;
            }
            // Exact to the cent, unless the rounded shares before the last row exceeded the remainder.
            if (open > 0 && left == 0) {
                ++exact;
                QCOMPARE(sum * 100, investment.raw());
                QCOMPARE(frame.Get_RemainingAmount(), Currency());
            }
        }
        QVERIFY(exact > trials / 2);
    }
};

ZEL_TEST_MAIN(TestAllocationProperty)
#include "tst_allocation_property.moc"
