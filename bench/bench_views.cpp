// Filling the views from datasets up to the first paint, reloading and expanding them, compared with two
// baselines over plain arrays of the same texts, icons and data pointers. The views must be faster than Qt's
// item widgets filled in bulk. Models written by hand for these arrays show the lower limit.

#include "BenchViews.h"

#include "data/ClientDataSet.h"
#include "data/DataPacket.h"
#include "dataviews/fra_TreeView.h"
#include "toolkit/Glyphs.h"

#include <QAbstractItemView>
#include <QStandardItemModel>

#include <malloc.h>

#include <memory>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace
{
QString s(const char *text)
{
    return QString::fromLatin1(text);
}

constexpr int fundsPerGroup = 20;
constexpr int listColumns = 4;

/// The same rows as arrays and as datasets.
struct Rows {
    explicit Rows(int count) : groupIcon(GlyphIcon(s("fund-group"))), fundIcon(GlyphIcon(s("fund")))
    {
        TTableBuilder group({{s("GroupID"), TFieldType::Integer}, {s("GroupName"), TFieldType::String}});
        TTableBuilder fund({{s("GroupID"), TFieldType::Integer},
                            {s("FundID"), TFieldType::Integer},
                            {s("FundName"), TFieldType::String},
                            {s("GroupName"), TFieldType::String}});
        for (int i = 0; i < count; ++i) {
            const int of = i / fundsPerGroup;
            if (i % fundsPerGroup == 0) {
                groupNames.append(u"Fund group %1"_s.arg(of));
                group.AddRow({of, groupNames.last()});
            }
            fundNames.append(BenchViews::fundName(i));
            fund.AddRow({of, i, fundNames.last(), groupNames.last()});
        }
        groups.SetData(TDataPacket(group.Finish()).ToVariant());
        funds.SetData(TDataPacket(fund.Finish()).ToVariant());
        images.AddGlyphs({s("fund-group"), s("fund")});
    }
    int Nodes() const { return static_cast<int>(groupNames.size() + fundNames.size()); }
    int Items() const { return static_cast<int>(fundNames.size()); }
    QStringList LineOf(int fund) const
    {
        const int group = fund / fundsPerGroup;
        return {fundNames[fund], QString::number(fund), groupNames[group], QString::number(group)};
    }

    QStringList groupNames, fundNames;
    QIcon groupIcon, fundIcon;
    TClientDataSet groups, funds;
    TImageList images;
};

/// A row's data in the hand-written models: its text, icon and pointer.
QVariant valueOf(const QString &text, const QIcon &icon, const void *data, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::DecorationRole:
        return icon;
    case Qt::UserRole:
        return QVariant::fromValue(const_cast<void *>(data));
    default:
        return {};
    }
}

/// A model of groups and funds that stores no nodes: a fund's index points to its group's name.
class ArrayTree : public QAbstractItemModel
{
public:
    explicit ArrayTree(const Rows &rows) : m_rows(rows) {}
    QModelIndex index(int row, int column, const QModelIndex &parent) const override
    {
        return createIndex(row, column, parent.isValid() ? &m_rows.groupNames[parent.row()] : nullptr);
    }
    QModelIndex parent(const QModelIndex &child) const override
    {
        const auto *group = static_cast<const QString *>(child.constInternalPointer());
        return group ? createIndex(static_cast<int>(group - m_rows.groupNames.constData()), 0, nullptr)
                     : QModelIndex();
    }
    int rowCount(const QModelIndex &parent) const override
    {
        if (!parent.isValid())
            return static_cast<int>(m_rows.groupNames.size());
        return parent.constInternalPointer() ? 0 : fundsPerGroup;
    }
    int columnCount(const QModelIndex &) const override { return 1; }
    bool hasChildren(const QModelIndex &parent) const override { return !parent.constInternalPointer(); }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        const Qt::ItemFlags all = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
        return index.constInternalPointer() ? all | Qt::ItemNeverHasChildren : all;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        const auto *group = static_cast<const QString *>(index.constInternalPointer());
        if (!group)
            return valueOf(m_rows.groupNames[index.row()], m_rows.groupIcon, &m_rows, role);
        const auto of = group - m_rows.groupNames.constData();
        return valueOf(m_rows.fundNames[of * fundsPerGroup + index.row()], m_rows.fundIcon, &m_rows, role);
    }

private:
    const Rows &m_rows;
};

class ArrayList : public QAbstractTableModel
{
public:
    explicit ArrayList(const Rows &rows) : m_rows(rows) {}
    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : m_rows.Items(); }
    int columnCount(const QModelIndex &) const override { return listColumns; }
    Qt::ItemFlags flags(const QModelIndex &) const override
    {
        return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (index.column() > 0 && role != Qt::DisplayRole)
            return {};
        return valueOf(m_rows.LineOf(index.row())[index.column()], m_rows.fundIcon, &m_rows, role);
    }

private:
    const Rows &m_rows;
};

double bytesInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

/// Times @p job, including the paint, on views that @p made creates. Also counts the memory of a view per
/// item.
/// @p over undoes the changes of the job to the datasets.
template <typename Made, typename Job, typename Over>
void timeViews(benchmark::State &state, int items, Made made, Job job, Over over)
{
    double bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const double before = bytesInUse();
        auto view = made();
        state.ResumeTiming();
        job(*view);
        view->grab();
        state.PauseTiming();
        bytes = bytesInUse() - before;
        over(*view);
        view.reset();
        state.ResumeTiming();
    }
    state.counters["bytes"] = bytes / items;
}

template <typename Made, typename Job> void timeViews(benchmark::State &state, int items, Made made, Job job)
{
    timeViews(state, items, made, job, [](const QWidget &) {});
}

// ---- trees

std::unique_ptr<TTreeView> madeTree(Rows &rows)
{
    auto tree = std::make_unique<TTreeView>();
    tree->resize(300, 400);
    tree->SetImages(&rows.images);
    return tree;
}

template <typename View> std::unique_ptr<View> madePlainTree()
{
    auto tree = std::make_unique<View>();
    tree->resize(300, 400);
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true);
    return tree;
}

void buildTree(TTreeView &tree, Rows &rows)
{
    misc_BuildTreeView(tree, {&rows.groups, &rows.funds}, {s("GroupID;GroupID")},
                       {s("GroupName"), s("FundName")}, {0, 1});
}

void freeTree(TTreeView &tree, Rows &rows)
{
    misc_FreeTreeBookMarks(tree, 0, &rows.groups);
    misc_FreeTreeBookMarks(tree, 1, &rows.funds);
}

void fillTree(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    timeViews(
        state, rows.Nodes(), [&] { return madeTree(rows); }, [&](TTreeView &tree) { buildTree(tree, rows); },
        [&](TTreeView &tree) { freeTree(tree, rows); });
}

void fillTreeWidget(benchmark::State &state)
{
    const Rows rows(static_cast<int>(state.range(0)));
    timeViews(state, rows.Nodes(), madePlainTree<QTreeWidget>, [&](QTreeWidget &tree) {
        QTreeWidget *none = nullptr;
        QList<QTreeWidgetItem *> roots;
        for (int i = 0; i < rows.Items(); ++i) {
            if (i % fundsPerGroup == 0)
                roots.append(
                    BenchViews::treeItem(none, {rows.groupNames[i / fundsPerGroup]}, rows.groupIcon, &rows));
            BenchViews::treeItem(roots.last(), {rows.fundNames[i]}, rows.fundIcon, &rows);
        }
        tree.addTopLevelItems(roots);
    });
}

void fillTreeModel(benchmark::State &state)
{
    const Rows rows(static_cast<int>(state.range(0)));
    ArrayTree model(rows);
    timeViews(state, rows.Nodes(), madePlainTree<QTreeView>, [&](QTreeView &tree) { tree.setModel(&model); });
}

void expandAll(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    timeViews(
        state, rows.Nodes(),
        [&] {
            auto tree = madeTree(rows);
            buildTree(*tree, rows);
            tree->grab();
            return tree;
        },
        [](TTreeView &tree) { tree.FullExpand(); }, [&](TTreeView &tree) { freeTree(tree, rows); });
}

void expandAllModel(benchmark::State &state)
{
    const Rows rows(static_cast<int>(state.range(0)));
    ArrayTree model(rows);
    timeViews(
        state, rows.Nodes(),
        [&] {
            auto tree = madePlainTree<QTreeView>();
            tree->setModel(&model);
            tree->grab();
            return tree;
        },
        [](QTreeView &tree) { tree.expandAll(); });
}

std::unique_ptr<TfraTreeView> madeFrame(Rows &rows)
{
    auto frame = std::make_unique<TfraTreeView>();
    frame->resize(300, 400);
    frame->Set_ImageList(&rows.images);
    frame->Set_KeepTreeState(true);
    frame->AddLevel(&rows.groups, s("GroupName"), 0, QString(), s("GroupID"), QString(), s("GroupID"));
    frame->AddLevel(&rows.funds, s("FundName"), 1, s("GroupID"), QString(), QString(), s("FundID"));
    return frame;
}

void buildFrame(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    timeViews(
        state, rows.Nodes(), [&] { return madeFrame(rows); }, [](TfraTreeView &frame) { frame.BuildTree(); });
}

/// Reloads a tree with a tenth of the groups expanded and one fund selected.
void refreshFrame(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    timeViews(
        state, rows.Nodes(),
        [&] {
            auto frame = madeFrame(rows);
            frame->BuildTree();
            TTreeNode *node = frame->TreeView->Items().GetFirstNode();
            node->GetFirstChild()->SetSelected(true);
            for (; node; node = node->GetNextSibling())
                node->SetExpanded(node->Index() % 10 == 0);
            frame->grab();
            return frame;
        },
        [](TfraTreeView &frame) { frame.RefreshTreeView(); });
}

// ---- lists

void fillList(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    timeViews(
        state, rows.Items(),
        [&] {
            auto list = std::make_unique<TListView>();
            list->resize(500, 400);
            list->SetSmallImages(&rows.images);
            for (int column = 0; column < listColumns; ++column)
                list->AddColumn(QString::number(column), 100);
            return list;
        },
        [&](TListView &list) {
            misc_BuildListView(list, &rows.funds, QString(), s("FundName;FundID;GroupName;GroupID"),
                               s("0;0;0;0"), QString(), false, 1, QString());
        },
        [&](TListView &list) { misc_FreeListBookMarks(list, &rows.funds); });
}

template <typename View> std::unique_ptr<View> madePlainList()
{
    auto list = std::make_unique<View>();
    list->resize(500, 400);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    return list;
}

void fillListWidget(benchmark::State &state)
{
    const Rows rows(static_cast<int>(state.range(0)));
    timeViews(state, rows.Items(), madePlainList<QTreeWidget>, [&](QTreeWidget &list) {
        QTreeWidget *none = nullptr;
        list.setColumnCount(listColumns);
        QList<QTreeWidgetItem *> items;
        for (int i = 0; i < rows.Items(); ++i)
            items.append(BenchViews::treeItem(none, rows.LineOf(i), rows.fundIcon, &rows));
        list.addTopLevelItems(items);
    });
}

void fillListModel(benchmark::State &state)
{
    const Rows rows(static_cast<int>(state.range(0)));
    ArrayList model(rows);
    timeViews(state, rows.Items(), madePlainList<QTreeView>, [&](QTreeView &list) { list.setModel(&model); });
}

// ---- combo boxes

void buildCombo(TComboBox &combo, Rows &rows)
{
    misc_BuildComboBox(combo, &rows.funds, s("FundName"), false, s("FundID"), s("1"));
}

void buildCombo(QComboBox &combo, const Rows &rows)
{
    auto *model = new QStandardItemModel(&combo);
    QList<QStandardItem *> lines;
    for (const QString &name : rows.fundNames) {
        lines.append(new QStandardItem(name));
        lines.last()->setData(QVariant::fromValue(static_cast<void *>(&lines)), Qt::UserRole);
    }
    model->appendColumn(lines);
    combo.setModel(model);
}

template <typename Combo> void giveBack(Combo &combo, Rows &rows)
{
    if constexpr (std::is_same_v<Combo, TComboBox>)
        misc_FreeComboBookMarks(combo, &rows.funds);
}

template <typename Combo> void fillCombo(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    timeViews(
        state, rows.Items(), [] { return std::make_unique<Combo>(); },
        [&](Combo &combo) { buildCombo(combo, rows); }, [&](Combo &combo) { giveBack(combo, rows); });
}

void fillComboModel(benchmark::State &state)
{
    const Rows rows(static_cast<int>(state.range(0)));
    ArrayList model(rows);
    timeViews(
        state, rows.Items(), [] { return std::make_unique<QComboBox>(); },
        [&](QComboBox &combo) { combo.setModel(&model); });
}

template <typename Combo> void openCombo(benchmark::State &state)
{
    Rows rows(static_cast<int>(state.range(0)));
    timeViews(
        state, rows.Items(),
        [&] {
            auto combo = std::make_unique<Combo>();
            buildCombo(*combo, rows);
            return combo;
        },
        [](Combo &combo) {
            combo.show();
            combo.showPopup();
            combo.view()->grab();
        },
        [&](Combo &combo) {
            combo.hidePopup();
            giveBack(combo, rows);
        });
}

void sizes(benchmark::internal::Benchmark *job)
{
    job->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(fillTree)->Name("views.tree")->Apply(sizes);
BENCHMARK(fillTreeWidget)->Name("views.tree.baseline.treewidget")->Apply(sizes);
BENCHMARK(fillTreeModel)->Name("views.tree.baseline.model")->Apply(sizes);
BENCHMARK(expandAll)->Name("views.expandall")->Apply(sizes);
BENCHMARK(expandAllModel)->Name("views.expandall.baseline.model")->Apply(sizes);
BENCHMARK(refreshFrame)->Name("views.refresh")->Apply(sizes);
BENCHMARK(buildFrame)->Name("views.refresh.baseline.build")->Apply(sizes);
BENCHMARK(fillList)->Name("views.list")->Apply(sizes);
BENCHMARK(fillListWidget)->Name("views.list.baseline.treewidget")->Apply(sizes);
BENCHMARK(fillListModel)->Name("views.list.baseline.model")->Apply(sizes);
BENCHMARK(fillCombo<TComboBox>)->Name("views.combo")->Apply(sizes);
BENCHMARK(fillCombo<QComboBox>)->Name("views.combo.baseline.combobox")->Apply(sizes);
BENCHMARK(fillComboModel)->Name("views.combo.baseline.model")->Apply(sizes);
BENCHMARK(openCombo<TComboBox>)->Name("views.opencombo")->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(openCombo<QComboBox>)
    ->Name("views.opencombo.baseline.combobox")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    return BenchViews::run(argc, argv);
}
