// Building the fund selector on a large catalogue with preselected funds, up to its first paint, compared
// with a QTreeWidget filled in bulk from arrays with the same nodes.

#include "BenchViews.h"

#include "data/DataPacket.h"
#include "data/LocalConnection.h"
#include "data/Table.h"
#include "funds/fra_FundSelector.h"
#include "toolkit/Glyphs.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
constexpr int typeCount = 10;
constexpr int groupCount = 5000;

int groupOf(int fund, int funds)
{
    return static_cast<int>(static_cast<qint64>(fund) * groupCount / funds);
}
int typeOf(int group)
{
    return group * typeCount / groupCount;
}

TFieldDef number(const char *name)
{
    return {QString::fromLatin1(name), TFieldType::Integer};
}
TFieldDef text(const char *name)
{
    return {QString::fromLatin1(name), TFieldType::String};
}

struct Catalogue {
    Catalogue(int funds, int preselectedCount)
    {
        TTableBuilder types({number("GroupTypeID"), text("GroupTypeDesc")});
        for (int type = 0; type < typeCount; ++type)
            types.AddRow({type, u"Group type %1"_s.arg(type)});
        TTableBuilder groups({number("FundGroupID"), number("GroupTypeID"), text("FundGroupName")});
        TTableBuilder offers({number("FundGroupID")});
        for (int group = 0; group < groupCount; ++group) {
            groups.AddRow({group, typeOf(group), u"Fund group %1"_s.arg(group)});
            offers.AddRow({group});
        }
        TTableBuilder fund({number("FundID"), number("FundGroupID"), text("FundName"), text("FundSheetURL"),
                            number("ProductID")});
        fund.Reserve(funds);
        for (int i = 0; i < funds; ++i)
            fund.AddRow({i, groupOf(i, funds), BenchViews::fundName(i), QString(), 1});
        fundData = TDataPacket(fund.Finish()).ToVariant();
        provide("dspFundGroupType", types);
        provide("dspFundGroup", groups);
        provide("dspFundPerProduct", offers);
        for (int i = 0; i < preselectedCount; ++i)
            preselected.append(i * (funds / preselectedCount));
    }
    void provide(const char *name, TTableBuilder &rows)
    {
        connection.RegisterProvider(QString::fromLatin1(name), [packet = TDataPacket(rows.Finish())](
                                                                   const TParams &) { return packet; });
    }
    TLocalConnection connection;
    QVariant fundData;
    TDynamicArrayOfInt preselected;
};

void buildWith(benchmark::State &state, int preselectedCount)
{
    Catalogue catalogue(static_cast<int>(state.range(0)), preselectedCount);
    for (auto _ : state) {
        state.PauseTiming();
        auto frame = std::make_unique<TfraFundSelector>();
        state.ResumeTiming();
        frame->BuildFundSelector(1, catalogue.preselected, &catalogue.connection, catalogue.fundData, {}, {},
                                 {});
        frame->grab();
        state.PauseTiming();
        frame.reset();
        state.ResumeTiming();
    }
}
void build(benchmark::State &state)
{
    buildWith(state, 50);
}
BENCHMARK(build)->Name("selector.build")->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void buildAllChosen(benchmark::State &state)
{
    buildWith(state, static_cast<int>(state.range(0)));
}
BENCHMARK(buildAllChosen)
    ->Name("selector.build_all_chosen")
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

void treeWidget(benchmark::State &state)
{
    const int funds = static_cast<int>(state.range(0));
    std::vector<QString> names;
    names.reserve(static_cast<std::size_t>(funds));
    for (int i = 0; i < funds; ++i)
        names.push_back(BenchViews::fundName(i));
    const QIcon type = GlyphIcon(u"fund-type"_s);
    const QIcon group = GlyphIcon(u"fund-group"_s);
    const QIcon fund = GlyphIcon(u"fund"_s);
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<QTreeWidget>();
        tree->resize(271, 340);
        tree->setHeaderHidden(true);
        tree->setUniformRowHeights(true);
        state.ResumeTiming();
        QList<QTreeWidgetItem *> roots;
        std::vector<QTreeWidgetItem *> groups;
        for (int i = 0; i < typeCount; ++i) {
            auto *item = new QTreeWidgetItem(QStringList(u"Group type %1"_s.arg(i)));
            item->setIcon(0, type);
            roots.append(item);
        }
        for (int i = 0; i < groupCount; ++i) {
            auto *item = new QTreeWidgetItem(roots[typeOf(i)], QStringList(u"Fund group %1"_s.arg(i)));
            item->setIcon(0, group);
            groups.push_back(item);
        }
        for (int i = 0; i < funds; ++i) {
            auto *item = new QTreeWidgetItem(groups[static_cast<std::size_t>(groupOf(i, funds))],
                                             QStringList(names[static_cast<std::size_t>(i)]));
            item->setIcon(0, fund);
            item->setData(0, Qt::UserRole, i);
        }
        tree->addTopLevelItems(roots);
        tree->grab();
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(treeWidget)
    ->Name("selector.build.baseline.treewidget")
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    return BenchViews::run(argc, argv);
}
