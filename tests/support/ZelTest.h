#pragma once

#include <QApplication>
#include <QObject>
#include <QTest>

/// The base of every test class. A test function fails on each warning that it has not announced with
/// QTest::ignoreMessage. A class with its own init() calls ZelTest::init() first.
class ZelTest : public QObject
{
    Q_OBJECT
protected Q_SLOTS:
    virtual void init();

public:
    /// A file or folder of the source tree, by its path from the top.
    static QString sourceFile(const QString &path);
    /// A program of this build, by its name.
    static QString builtProgram(const QString &name);
    /// The path of the real catalogue for large tests, beside the project's folder; empty when it is missing.
    static QString realCatalogue();
};

namespace ZelTesting
{
/// Whether the package is started before the tests run, as a host does before its first frame.
enum class Package { Started, NotStarted };

/// Runs a test object inside a QApplication; returns the exit code.
int run(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &make,
        Package package = Package::Started);
} // namespace ZelTesting

/// The main of a test program with one test class.
#define ZEL_TEST_MAIN(Class)                                                                                 \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return ZelTesting::run(argc, argv, [] { return std::make_unique<Class>(); });                        \
    }

/// The same for a class whose tests start and stop the package themselves.
#define ZEL_TEST_MAIN_NOT_STARTED(Class)                                                                     \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return ZelTesting::run(                                                                              \
            argc, argv, [] { return std::make_unique<Class>(); }, ZelTesting::Package::NotStarted);          \
    }
