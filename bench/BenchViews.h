#pragma once

#include "package/ZelCommonFrames.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QString>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

/// Common code of the frames' benchmarks.
namespace BenchViews
{

inline QString fundName(int fund)
{
    return QStringLiteral("Opal %1 Growth and Income Fund of Funds").arg(fund);
}

/// An item of Qt's tree widget with the same data as a node of this library's views.
template <typename Parent>
QTreeWidgetItem *treeItem(Parent *parent, const QStringList &texts, const QIcon &icon, const void *data)
{
    auto *item = new QTreeWidgetItem(parent, texts);
    item->setIcon(0, icon);
    item->setData(0, Qt::UserRole, QVariant::fromValue(const_cast<void *>(data)));
    return item;
}

/// Runs the program's benchmarks off screen and returns the exit code.
inline int run(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    // Debug output would be timed as part of the work.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    Initialize();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace BenchViews
