// The allocation frame: a keystroke, filling the grid, looking up a fund's details, the list commands.

#include "BenchViews.h"

#include "data/DataPacket.h"
#include "funds/fra_FundAllocation.h"

#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

QVariant packet(int funds)
{
    const auto field = [](const char *name, TFieldType type) {
        return TFieldDef{QString::fromLatin1(name), type};
    };
    TTableBuilder rows(
        {field("FundID", TFieldType::Integer), field("GroupTypeID", TFieldType::Integer),
         field("FundGroupID", TFieldType::Integer), field("FundGroupName", TFieldType::String),
         field("FundGroupName_Afr", TFieldType::String), field("FundName", TFieldType::String),
         field("FundName_AFR", TFieldType::String), field("F.MainframeID", TFieldType::String),
         field("MinimumInitialAmount", TFieldType::Float), field("MinimumSchedAmount", TFieldType::Float),
         field("BuySellRate", TFieldType::Float), field("ManRate", TFieldType::Float),
         field("UnderlyingManRate", TFieldType::Float), field("GuaranteeRate", TFieldType::Float),
         field("TrustRate", TFieldType::Float), field("FundTerm", TFieldType::Integer),
         field("InternationalFund", TFieldType::Boolean), field("AllowAsGuarantee", TFieldType::Boolean)});
    rows.Reserve(funds);
    for (int id = 1; id <= funds; ++id) {
        const QString name = u"Opal %1 Growth Fund"_s.arg(id);
        rows.AddRow({id, id % 60, 100 + id % 40, u"Group"_s, u"Groep"_s, name, name, u"MF%1"_s.arg(id),
                     1000.0, 100.0, 1.5, 2.5, 0.5, 0.25, 0.1, 60, false, true});
    }
    return TDataPacket(rows.Finish()).ToVariant();
}

TFunds listOf(int count, int step = 1)
{
    std::vector<TFundRec> records(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        records[static_cast<std::size_t>(i)].FundID =
            (count - i) * step; // in the reverse order of the dataset
    return TFunds(std::move(records));
}

struct Shown {
    Shown(int catalogue, int rows)
    {
        frame.Set_FundsPerProductDataSet(packet(catalogue));
        frame.Set_InvestmentAmount(1'000'000);
        funds = listOf(rows);
        frame.SetupFundAllocation(funds, 1, &connection);
        frame.resize(622, 300);
        frame.show();
        QTest::qWait(50);
    }
    TLocalConnection connection;
    TFunds funds;
    TfraFundAllocation frame;
};

void keystroke(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    Shown shown(rows, rows);
    TtsGrid &grid = *shown.frame.FundGrid;
    grid.SetCurrentCell(TfraFundAllocation::AmountColumn, rows / 2);
    grid.BeginEdit();
    auto *editor = grid.findChild<QLineEdit *>(u"edCell"_s);
    bool more = true;
    for (auto _ : state) {
        QTest::keyClick(editor, more ? Qt::Key_5 : Qt::Key_Backspace);
        more = !more;
    }
}
BENCHMARK(keystroke)->Name("allocation.keystroke")->Arg(10)->Arg(200)->Arg(10'000);

void setup(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    Shown shown(rows, 1);
    for (auto _ : state) {
        state.PauseTiming();
        shown.funds = listOf(rows);
        state.ResumeTiming();
        shown.frame.SetupFundAllocation(shown.funds, 1, &shown.connection);
    }
}
BENCHMARK(setup)->Name("allocation.setup")->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// A list with each fund a hundred times.
void setupRepeated(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    Shown shown(rows / 100, 1);
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<TFundRec> records(static_cast<std::size_t>(rows));
        for (int i = 0; i < rows; ++i)
            records[static_cast<std::size_t>(i)].FundID = 1 + i % (rows / 100);
        shown.funds = TFunds(std::move(records));
        state.ResumeTiming();
        shown.frame.SetupFundAllocation(shown.funds, 1, &shown.connection);
    }
}
BENCHMARK(setupRepeated)
    ->Name("allocation.setup_repeated")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);

void setupTableWidget(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    QTableWidget table;
    table.resize(622, 300);
    table.show();
    QTest::qWait(50);
    const QIcon icon{QPixmap(16, 16)};
    for (auto _ : state) {
        table.clear();
        table.setRowCount(rows);
        table.setColumnCount(4);
        for (int row = 0; row < rows; ++row) {
            table.setItem(row, 0, new QTableWidgetItem(icon, QString()));
            table.setItem(row, 1, new QTableWidgetItem(u"Opal %1 Growth Fund"_s.arg(rows - row)));
            table.setItem(row, 2, new QTableWidgetItem(u"0.00"_s));
            table.setItem(row, 3, new QTableWidgetItem(u"0.00"_s));
        }
    }
}
BENCHMARK(setupTableWidget)
    ->Name("allocation.setup.baseline.tablewidget")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);

void fundInfo(benchmark::State &state)
{
    const int funds = static_cast<int>(state.range(0));
    TfraFundAllocation frame;
    frame.Set_FundsPerProductDataSet(packet(funds));
    int group, type, term, id = 1;
    QString name, nameAfr, mainframe, groupName, groupNameAfr;
    bool international;
    Currency rate[7];
    const auto ask = [&] {
        frame.GetFundInfo(id, group, type, name, nameAfr, international, rate[0], rate[1], rate[2], rate[3],
                          rate[4], rate[5], rate[6], term, mainframe, groupName, groupNameAfr);
        id = id % funds + 1;
    };
    ask(); // builds the table's index before the timing starts
    for (auto _ : state)
        ask();
}
BENCHMARK(fundInfo)->Name("allocation.fundinfo")->Arg(1'000)->Arg(100'000);

void rowChange(benchmark::State &state)
{
    const int funds = static_cast<int>(state.range(0));
    Shown shown(funds, 100);
    int row = 1;
    for (auto _ : state) {
        row = row % 100 + 1;
        shown.frame.FundGrid->SetCurrentRow(row);
    }
}
BENCHMARK(rowChange)->Name("allocation.rowchange")->Arg(1'000)->Arg(100'000);

enum class Command { Allocate, Reset, Remove, Clear };

template <Command command> void commands(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    Shown shown(rows, 1);
    TfraFundToolBar &bar = *shown.frame.fraFundToolBar;
    for (auto _ : state) {
        state.PauseTiming();
        shown.funds = listOf(rows);
        shown.frame.SetupFundAllocation(shown.funds, 1, &shown.connection);
        state.ResumeTiming();
        if constexpr (command == Command::Allocate)
            bar.sbtAllocateAmount->click();
        else if constexpr (command == Command::Reset)
            bar.sbtResetToZero->click();
        else if constexpr (command == Command::Remove)
            bar.sbtRemove->click();
        else
            bar.sbtClear->click();
    }
}
BENCHMARK(commands<Command::Allocate>)->Name("allocation.allocate")->Arg(1'000)->Arg(10'000);
BENCHMARK(commands<Command::Reset>)->Name("allocation.reset")->Arg(1'000)->Arg(10'000);
BENCHMARK(commands<Command::Remove>)->Name("allocation.remove")->Arg(1'000)->Arg(10'000);
BENCHMARK(commands<Command::Clear>)->Name("allocation.clear")->Arg(1'000)->Arg(10'000);

} // namespace

int main(int argc, char **argv)
{
    return BenchViews::run(argc, argv);
}
