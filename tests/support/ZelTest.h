#pragma once

#include <QApplication>
#include <QObject>
#include <QTest>

/// The base of every test class: a test function fails on any warning it did not announce with
/// QTest::ignoreMessage. A class with an init() of its own calls ZelTest::init() first.
class ZelTest : public QObject
{
    Q_OBJECT
protected Q_SLOTS:
    virtual void init();

public:
    /// A file or folder of this source tree, by its path from the top.
    static QString sourceFile(const QString &path);
    /// A program of this build, by its name.
    static QString builtProgram(const QString &name);
    /// Where the real catalogue for large tests lies, beside the project; empty when it is not there.
    static QString realCatalogue();
};

namespace ZelTesting
{
/// Whether the package is started before the tests run, as hosts do before their first frame.
enum class Package { Started, NotStarted };

/// Runs a test object inside the application that the frames expect; returns the exit code.
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
