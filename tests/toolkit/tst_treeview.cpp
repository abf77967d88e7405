#include "ZelTest.h"

#include "toolkit/TTreeView.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

class tst_TreeView : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void fillsInBulk();
};

void tst_TreeView::fillsInBulk()
{
    TTreeView view;
    QAbstractItemModelTester tester(view.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy resets(view.model(), &QAbstractItemModel::modelReset);
    QSignalSpy inserts(view.model(), &QAbstractItemModel::rowsInserted);
    QStringList added;
    view.OnAddition = [&](TTreeNode *node) { added << node->Text(); };
    view.Items().BeginUpdate();
    TTreeNode *a = view.Items().Add(QStringLiteral("a"));
    view.Items().AddChild(a, QStringLiteral("a1"));
    view.Items().AddChild(a, QStringLiteral("a2"));
    view.Items().Add(QStringLiteral("b"));
    QCOMPARE(view.model()->rowCount(), 0);
    view.Items().EndUpdate();
    QCOMPARE(added.join(QLatin1Char(' ')), QStringLiteral("a a1 a2 b"));
    QCOMPARE(inserts.count(), 0);
    QCOMPARE(resets.count(), 2);
    QCOMPARE(view.Items().Count(), 4);
    QCOMPARE(view.Items().Item(2)->Text(), QStringLiteral("a2"));
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.FullExpand();
    QVERIFY(a->Expanded());
    view.SetSelected(view.Items()[3]);
    QCOMPARE(view.Selected()->Text(), QStringLiteral("b"));
}

ZEL_TEST_MAIN(tst_TreeView)
#include "tst_treeview.moc"
