#pragma once

#include "package/ZelCommonFrames.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QString>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

/// What the benchmarks of the frames share.
namespace BenchViews
{

inline QString fundName(int fund)
{
    return QStringLiteral("Opal %1 Growth and Income Fund of Funds").arg(fund);
}

/// An item of Qt's tree widget with everything that a node of this library's views carries.
template <typename Parent>
QTreeWidgetItem *treeItem(Parent *parent, const QStringList &texts, const QIcon &icon, const void *data)
{
    auto *item = new QTreeWidgetItem(parent, texts);
    item->setIcon(0, icon);
    item->setData(0, Qt::UserRole, QVariant::fromValue(const_cast<void *>(data)));
    return item;
}

/// Runs the program's benchmarks with an application that shows no windows; the exit code.
inline int run(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    // A line per repetition would be timed along with the work.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    Initialize();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace BenchViews
