// Filling the views from datasets up to the first paint, beside Qt's item widgets filled in bulk from arrays
// with the same texts, icons and data pointers.

#include "data/ClientDataSet.h"
#include "data/DataPacket.h"
#include "dataviews/fra_TreeView.h"
#include "toolkit/Glyphs.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <memory>
#include <type_traits>

namespace
{
QString s(const char *text)
{
    return QString::fromLatin1(text);
}
QString fundName(int fund)
{
    return QStringLiteral("Opal %1 Growth and Income Fund of Funds").arg(fund);
}
QString groupName(int group)
{
    return QStringLiteral("Fund group %1").arg(group);
}
constexpr int fundsPerGroup = 20;

struct Rows {
    explicit Rows(int count)
    {
        TTableBuilder group({{s("GroupID"), TFieldType::Integer}, {s("GroupName"), TFieldType::String}});
        TTableBuilder fund({{s("GroupID"), TFieldType::Integer},
                            {s("FundID"), TFieldType::Integer},
                            {s("FundName"), TFieldType::String},
                            {s("GroupName"), TFieldType::String}});
        for (int i = 0; i < count; ++i) {
            const int of = i / fundsPerGroup;
            if (i % fundsPerGroup == 0) {
                groupNames.append(groupName(of));
                group.AddRow({of, groupNames.last()});
            }
            fundNames.append(fundName(i));
            fund.AddRow({of, i, fundNames.last(), groupNames.last()});
        }
        groups.SetData(TDataPacket(group.Finish()).ToVariant());
        funds.SetData(TDataPacket(fund.Finish()).ToVariant());
        images.AddGlyphs({s("fund-group"), s("fund")});
    }
    QStringList groupNames, fundNames;
    TClientDataSet groups, funds;
    TImageList images;
};

void fillTree(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<TTreeView>();
        tree->resize(300, 400);
        tree->SetImages(&rows.images);
        state.ResumeTiming();
        misc_BuildTreeView(*tree, {&rows.groups, &rows.funds}, {s("GroupID;GroupID")},
                           {s("GroupName"), s("FundName")}, {0, 1});
        tree->grab();
        state.PauseTiming();
        misc_FreeTreeBookMarks(*tree, 0, &rows.groups);
        misc_FreeTreeBookMarks(*tree, 1, &rows.funds);
        tree.reset();
        state.ResumeTiming();
    }
}

void fillTreeWidget(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    const QIcon groupIcon = GlyphIcon(s("fund-group"));
    const QIcon fundIcon = GlyphIcon(s("fund"));
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<QTreeWidget>();
        tree->resize(300, 400);
        tree->setHeaderHidden(true);
        tree->setUniformRowHeights(true);
        state.ResumeTiming();
        QList<QTreeWidgetItem *> roots;
        for (qsizetype i = 0; i < rows.fundNames.size(); ++i) {
            if (i % fundsPerGroup == 0) {
                roots.append(new QTreeWidgetItem(QStringList(rows.groupNames[i / fundsPerGroup])));
                roots.last()->setIcon(0, groupIcon);
                roots.last()->setData(0, Qt::UserRole, QVariant::fromValue<void *>(&rows));
            }
            auto *item = new QTreeWidgetItem(roots.last(), QStringList(rows.fundNames[i]));
            item->setIcon(0, fundIcon);
            item->setData(0, Qt::UserRole, QVariant::fromValue<void *>(&rows));
        }
        tree->addTopLevelItems(roots);
        tree->grab();
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
}

void fillList(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto list = std::make_unique<TListView>();
        list->resize(500, 400);
        list->SetSmallImages(&rows.images);
        for (int column = 0; column < 4; ++column)
            list->AddColumn(QString::number(column), 100);
        state.ResumeTiming();
        misc_BuildListView(*list, &rows.funds, QString(), s("FundName;FundID;GroupName;GroupID"),
                           s("0;0;0;0"), QString(), false, 1, QString());
        list->grab();
        state.PauseTiming();
        misc_FreeListBookMarks(*list, &rows.funds);
        list.reset();
        state.ResumeTiming();
    }
}

void fillListWidget(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    const QIcon icon = GlyphIcon(s("fund"));
    for (auto _ : state) {
        state.PauseTiming();
        auto list = std::make_unique<QTreeWidget>();
        list->resize(500, 400);
        list->setRootIsDecorated(false);
        list->setUniformRowHeights(true);
        list->setColumnCount(4);
        state.ResumeTiming();
        QList<QTreeWidgetItem *> items;
        for (qsizetype i = 0; i < rows.fundNames.size(); ++i) {
            const qsizetype group = i / fundsPerGroup;
            auto *item = new QTreeWidgetItem(
                {rows.fundNames[i], QString::number(i), rows.groupNames[group], QString::number(group)});
            item->setIcon(0, icon);
            item->setData(0, Qt::UserRole, QVariant::fromValue<void *>(&rows));
            items.append(item);
        }
        list->addTopLevelItems(items);
        list->grab();
        state.PauseTiming();
        list.reset();
        state.ResumeTiming();
    }
}

template <typename Combo> void openCombo(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto combo = std::make_unique<Combo>();
        if constexpr (std::is_same_v<Combo, TComboBox>)
            misc_BuildComboBox(*combo, &rows.funds, s("FundName"), false, s("FundID"), s("1"));
        else
            combo->addItems(rows.fundNames);
        state.ResumeTiming();
        combo->show();
        combo->showPopup();
        combo->view()->grab();
        state.PauseTiming();
        combo->hidePopup();
        if constexpr (std::is_same_v<Combo, TComboBox>)
            misc_FreeComboBookMarks(*combo, &rows.funds);
        combo.reset();
        state.ResumeTiming();
    }
}

void sizes(benchmark::internal::Benchmark *job)
{
    job->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(fillTree)->Name("views.tree")->Apply(sizes);
BENCHMARK(fillTreeWidget)->Name("views.tree.yardstick.treewidget")->Apply(sizes);
BENCHMARK(fillList)->Name("views.list")->Apply(sizes);
BENCHMARK(fillListWidget)->Name("views.list.yardstick.treewidget")->Apply(sizes);
BENCHMARK(openCombo<TComboBox>)->Name("views.opencombo")->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(openCombo<QComboBox>)
    ->Name("views.opencombo.yardstick.combobox")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
