// labels: x11
#include "Frames.h"
#include "ViewData.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "dataviews/fra_TreeView.h"
#include "examples/CatalogueCsv.h"

#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace
{

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/// Types, groups and funds, each sorted by its parent's key.
struct Catalogue {
    Source Types{{s("#GroupTypeID"), s("GroupTypeDesc")}, {{1, s("Equity")}, {2, s("Bond")}}};
    Source Groups{{s("#GroupTypeID"), s("#FundGroupID"), s("FundGroupName")},
                  {{1, 10, s("North")}, {1, 11, s("South")}, {2, 20, s("East")}}};
    Source Funds{{s("#FundGroupID"), s("#FundID"), s("FundName")},
                 {{10, 100, s("Alpha")}, {10, 101, s("Beta")}, {11, 110, s("Delta")}, {20, 200, s("Gamma")}}};

    void AddTo(TfraTreeView &frame, bool keys = true)
    {
        frame.AddLevel(&Types.DataSet, s("GroupTypeDesc"), 8, QString(), s("GroupTypeID"), QString(),
                       keys ? s(" GroupTypeID ") : QString());
        frame.AddLevel(&Groups.DataSet, s("FundGroupName"), 6, s("GroupTypeID"), s("FundGroupID"), QString(),
                       keys ? s("FundGroupID") : QString());
        frame.AddLevel(&Funds.DataSet, s("FundName"), 7, s("FundGroupID"), QString(), QString(),
                       keys ? s("FundID") : QString());
    }
};

QStringList texts(const TfraTreeView &frame)
{
    QStringList all;
    for (const TTreeNode *node = frame.TreeView->Items().GetFirstNode(); node; node = node->GetNext())
        all << QString(node->Level(), QLatin1Char('-')) + node->Text();
    return all;
}

TTreeNode *find(const TfraTreeView &frame, const QString &text)
{
    TTreeNode *node = frame.TreeView->Items().GetFirstNode();
    while (node && node->Text() != text)
        node = node->GetNext();
    return node;
}

} // namespace

class tst_fra_TreeView : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(Leftovers::Take(), QString()); }
    void design();
    void tabOrder();
    void properties();
    void addLevel();
    void addLevelKeepsTheSettings();
    void buildTree();
    void buildTreeOfOtherLevels();
    void buildingKeepsFormerBookmarks();
    void levelFilter();
    void levelData();
    void keySets();
    void keyOfNode();
    void viewStyles();
    void keepsStateByKeys();
    void keepsThePlaceOnScreen();
    void keepsStateByTheWholePath();
    void keepsStateOverOtherLevels();
    void withoutKeysTheFirstDecides();
    void withoutKeysOfTheFunds();
    void refreshKeepsTheFilters();
    void refreshInListStyle();
    void f5Refreshes();
    void failedRefreshKeepsTheTree();
    void refreshWithARefusedFilter();
    void refreshWhileTheHostChangesTheLevels();
    void staleBookmarks();
    void nothingIsSetUpAfterTheFirstPaint();
    void changeNodeImage();
    void cursorsGoWithTheFrame();
    void sourceMayGoFirst();
    void realCatalogue();
};

void tst_fra_TreeView::design()
{
    TfraTreeView frame;
    for (const char *name :
         {"TreeView", "pnlMainHeader", "pnlTreeViewMainHeader", "pnlEdit", "edtName", "pnlHeader", "pnlGap"})
        QVERIFY2(frame.findChild<QWidget *>(s(name)), name);
    QCOMPARE(frame.size(), QSize(458, 207));
    QVERIFY(frame.TreeView->ReadOnly() && frame.TreeView->RowSelect());
    QCOMPARE(frame.TreeView->indentation(), 19);
    QCOMPARE(frame.TreeView->accessibleName(), s("Tree"));
    QCOMPARE(frame.edtName->accessibleName(), s("Name"));
    QCOMPARE(frame.edtName->toolTip(), s("Name"));
    QCOMPARE(frame.pnlHeader->caption(), s("<header caption comes here>"));
    QVERIFY(frame.pnlMainHeader->isHidden() && frame.pnlEdit->isHidden());
    QVERIFY(!frame.Get_KeepTreeState());
    QCOMPARE(frame.GetLevelCount(), 0);
    frame.Set_ShowHeader(true);
    QVERIFY(showActive(frame));
    QCOMPARE(frame.TreeView->geometry(), QRect(0, 25, 458, 182));
    QCOMPARE(frame.pnlTreeViewMainHeader->height(), 21);
    QCOMPARE(frame.pnlMainHeader->height(), 25);
    QCOMPARE(frame.pnlGap->y(), 21);
    for (const TPanel *panel : {frame.pnlTreeViewMainHeader, frame.pnlHeader}) {
        QCOMPARE(panel->colorName(), s("clGray"));
        QCOMPARE(panel->textColorName(), s("clWhite"));
        QVERIFY(panel->font().bold());
    }
    frame.Set_ShowEditBox(true);
    QTRY_COMPARE(frame.edtName->geometry(), QRect(2, 0, 20, 21));
    QCOMPARE(frame.pnlEdit->width(), 24);
    QCOMPARE(frame.pnlEdit->geometry().right(), frame.pnlTreeViewMainHeader->width() - 1);
    QVERIFY(frame.edtName->font().bold());
    QCOMPARE(frame.edtName->font().pixelSize(), 11);
}

// Tab reaches the tree before the edit box above it, in a window of its own and on a page between two fields.
void tst_fra_TreeView::tabOrder()
{
    TfraTreeView alone;
    alone.Set_ShowHeader(true);
    alone.Set_ShowEditBox(true);
    QVERIFY(showActive(alone));
    QCOMPARE(QApplication::focusWidget(), alone.TreeView); // the first tab stop of the window
    QTest::keyClick(alone.TreeView, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), alone.edtName);

    QWidget page;
    QVBoxLayout column(&page);
    QLineEdit before;
    TfraTreeView frame;
    QLineEdit behind;
    for (QWidget *field : std::initializer_list<QWidget *>{&before, &frame, &behind})
        column.addWidget(field);
    frame.Set_ShowHeader(true);
    frame.Set_ShowEditBox(true);
    QVERIFY(showActive(page));
    QCOMPARE(detourOfTab({&before, frame.TreeView, frame.edtName, &behind}), QString());
}

void tst_fra_TreeView::properties()
{
    TfraTreeView frame;
    TImageList images;
    QCOMPARE(toldOnce(frame, "HeaderCaption", s("Funds")), QString());
    QCOMPARE(frame.pnlHeader->caption(), s("Funds"));
    QCOMPARE(toldOnce(frame, "ShowHeader", true), QString());
    QCOMPARE(toldOnce(frame, "ShowEditBox", true), QString());
    QVERIFY(!frame.pnlMainHeader->isHidden() && !frame.pnlEdit->isHidden());
    QVERIFY(frame.setProperty("ShowHeader", false)); // hides the edit box, too
    QVERIFY(frame.pnlMainHeader->isHidden() && frame.pnlEdit->isHidden());
    QVERIFY(!frame.Get_ShowEditBox());
    QCOMPARE(toldOnce(frame, "ImageList", QVariant::fromValue(&images)), QString());
    QCOMPARE(frame.TreeView->Images(), &images);
    QCOMPARE(toldOnce(frame, "AllowDragDrop", true), QString());
    QCOMPARE(frame.TreeView->DragMode(), TDragMode::dmAutomatic);
    frame.Set_AllowDragDrop(false);
    QCOMPARE(frame.TreeView->DragMode(), TDragMode::dmManual);
    QCOMPARE(toldOnce(frame, "KeepTreeState", true), QString());
    QVERIFY(frame.Get_KeepTreeState());
    QCOMPARE(toldOnce(frame, "ViewStyle", QVariant::fromValue(vwsTree)), QString());
    QCOMPARE(frame.Get_ViewStyle(), vwsTree);
}

void tst_fra_TreeView::addLevel()
{
    Catalogue catalogue;
    catalogue.Types.DataSet.Last();
    TfraTreeView frame;
    catalogue.AddTo(frame);
    QCOMPARE(frame.GetLevelCount(), 3);
    frame.Set_ViewStyle(vwsTree);
    const TTreeLevel level = frame.GetLevelData(0);
    QVERIFY(level.DataSet && level.DataSet != &catalogue.Types.DataSet);
    QCOMPARE(level.DataSet->parent(), &frame);
    QCOMPARE(level.KeyField, s("GroupTypeID"));
    QCOMPARE(catalogue.Types.DataSet.RecNo(), 2); // the caller's dataset keeps its row
    Watched<TClientDataSet> closed;
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             frame.AddLevel(&closed, s("X"), 0, QString(), QString(), QString(), QString()));
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.AddLevel(&catalogue.Types.DataSet, s("X"), 0, QString(),
                                                            QString(), s("not a filter ("), QString()));
    QCOMPARE(frame.GetLevelCount(), 3);
    QCOMPARE(frame.findChildren<TClientDataSet *>().size(), 3); // refused levels get no cursor
    frame.ClearTree();
    QCOMPARE(frame.GetLevelCount(), 0);
    QCOMPARE(frame.TreeView->Items().Count(), 0);
}

void tst_fra_TreeView::addLevelKeepsTheSettings()
{
    Catalogue catalogue;
    TClientDataSet &types = catalogue.Types.DataSet;
    types.SetFilterOptions(TFilterOption::CaseInsensitive);
    types.SetFilter(s("GroupTypeID = 2"));
    types.SetFiltered(true);
    TfraTreeView frame;
    frame.AddLevel(&types, s("GroupTypeDesc"), 0, QString(), QString(), s(" GroupTypeDesc = 'EQUITY' "),
                   QString());
    frame.BuildTree();
    // The filter is that of the level; the filter options are copied from the source.
    QCOMPARE(texts(frame), QStringList(s("Equity")));
    QCOMPARE(frame.GetLevelData(0).Filter, s("GroupTypeDesc = 'EQUITY'"));
    frame.ClearTree();
    frame.AddLevel(&types, s("GroupTypeDesc"), 0, QString(), QString(), s("  "), QString());
    frame.BuildTree();
    QCOMPARE(texts(frame), QStringList({s("Equity"), s("Bond")}));
    QCOMPARE(types.RecordCount(), 1);
    QCOMPARE(types.Filter(), s("GroupTypeID = 2"));
}

void tst_fra_TreeView::buildTree()
{
    Catalogue catalogue;
    TfraTreeView frame;
    frame.BuildTree();
    catalogue.AddTo(frame);
    frame.BuildTree();
    const QStringList all{s("Equity"),  s("-North"), s("--Alpha"), s("--Beta"), s("-South"),
                          s("--Delta"), s("Bond"),   s("-East"),   s("--Gamma")};
    QCOMPARE(texts(frame), all);
    QCOMPARE(find(frame, s("North"))->ImageIndex(), 6);
    frame.Set_ViewStyle(vwsTree);
    frame.GetLevelData(1).DataSet->Close();
    frame.BuildTree(); // an inactive level builds nothing and throws nothing
    QCOMPARE(frame.TreeView->Items().Count(), 0);
    for (TClientDataSet *data :
         {&catalogue.Types.DataSet, &catalogue.Groups.DataSet, &catalogue.Funds.DataSet})
        QCOMPARE(data->BookmarksHandedOut(), 0);
    TfraTreeView wrong;
    wrong.AddLevel(&catalogue.Types.DataSet, s("Nobody"), 0, QString(), QString(), QString(), QString());
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, wrong.BuildTree());
    QVERIFY(!wrong.TreeView->Items().Updating());
}

void tst_fra_TreeView::buildTreeOfOtherLevels()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.Set_ViewStyle(vwsTree);
    TTreeLevel groups = frame.GetLevelData(1);
    groups.ImageIndex = 3;
    frame.Do_BuildTree({groups, frame.GetLevelData(2)});
    QCOMPARE(texts(frame), QStringList({s("North"), s("-Alpha"), s("-Beta"), s("South"), s("-Delta"),
                                        s("East"), s("-Gamma")}));
    QCOMPARE(find(frame, s("North"))->ImageIndex(), 3);
    QCOMPARE(find(frame, s("North"))->SelectedIndex(), 3);
    QCOMPARE(frame.GetLevelCount(), 3);
    frame.Do_BuildTree({});
    QCOMPARE(frame.TreeView->Items().Count(), 0);
    // A default-constructed record has no dataset and so is inactive, too.
    frame.BuildTree();
    frame.Do_BuildTree({groups, frame.GetLevelData(3)});
    QCOMPARE(frame.TreeView->Items().Count(), 0);
}

void tst_fra_TreeView::buildingKeepsFormerBookmarks()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.Set_ViewStyle(vwsTree);
    const TClientDataSet *funds = frame.GetLevelData(2).DataSet;
    QCOMPARE(funds->BookmarksHandedOut(), 4);
    const TBookmark former = find(frame, s("Beta"))->Data();
    frame.BuildTree();
    QCOMPARE(funds->BookmarksHandedOut(), 8);
    QVERIFY(funds->BookmarkValid(former)); // valid during the cursor's lifetime
    frame.ClearTree();
    QCOMPARE(funds->BookmarksHandedOut(), 8);
}

void tst_fra_TreeView::levelFilter()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.Set_ViewStyle(vwsTree);
    frame.LevelFilter(1, s("  FundGroupID <> 10 "), false);
    QCOMPARE(frame.TreeView->Items().Count(), 9);
    QCOMPARE(frame.GetLevelData(1).Filter, s("FundGroupID <> 10"));
    frame.LevelFilter(1, s("FundGroupID <> 10"), true);
    QCOMPARE(texts(frame),
             QStringList({s("Equity"), s("-South"), s("--Delta"), s("Bond"), s("-East"), s("--Gamma")}));
    frame.LevelFilter(1, s("  "), true);
    QCOMPARE(frame.TreeView->Items().Count(), 9);
    QVERIFY(!frame.GetLevelData(1).DataSet->Filtered());
    QCOMPARE(frame.GetLevelData(1).DataSet->Filter(), QString());
    frame.LevelFilter(3, s("x"), true);
    frame.LevelFilter(-1, s("x"), true);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.LevelFilter(0, s("broken ("), true));
    QVERIFY(!catalogue.Types.DataSet.Filtered()); // the caller's dataset keeps its filter
}

void tst_fra_TreeView::levelData()
{
    Catalogue catalogue;
    TfraTreeView frame;
    QVERIFY(!frame.GetLevelData(0).DataSet);
    QCOMPARE(frame.GetLevelData(0).ImageIndex, -1);
    catalogue.AddTo(frame);
    frame.Set_ViewStyle(vwsTree);
    QCOMPARE(frame.GetLevelData(2).CaptionField, s("FundName"));
    QVERIFY(!frame.GetLevelData(3).DataSet);
    QVERIFY(!frame.GetLevelData(-1).DataSet);
    frame.Set_ViewStyle(vwsList);
    QCOMPARE(frame.GetLevelData(2).CaptionField, s("GroupTypeDesc"));
}

void tst_fra_TreeView::keySets()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    catalogue.Funds.DataSet.SetRecNo(2);
    const QList<int> all{100, 101, 110, 200};
    QCOMPARE(frame.BuildKeyFieldSetFromDataSet(&catalogue.Funds.DataSet, s(" FundID ")), all);
    QCOMPARE(catalogue.Funds.DataSet.RecNo(), 2);
    catalogue.Funds.DataSet.SetFilter(s("FundGroupID = 10"));
    catalogue.Funds.DataSet.SetFiltered(true);
    QCOMPARE(frame.BuildKeyFieldSetFromDataSet(&catalogue.Funds.DataSet, s("FundID")),
             QList<int>({100, 101}));
    QCOMPARE(frame.BuildKeyFieldSetFromLevel(2, s("FundID")), all);
    QCOMPARE(frame.BuildKeyFieldSetFromLevel(3, s("FundID")), QList<int>());
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.BuildKeyFieldSetFromLevel(2, s("Nobody")));
    catalogue.Funds.DataSet.Close();
    QCOMPARE(frame.BuildKeyFieldSetFromDataSet(&catalogue.Funds.DataSet, s("FundID")), QList<int>());
    QCOMPARE(TfraTreeView::RemoveFromSet({1, 2, 3, 2, 4}, 2), QList<int>({1, 3, 4}));
    QVERIFY(TfraTreeView::ValueInSet(3, {1, 2, 3}));
    QVERIFY(!TfraTreeView::ValueInSet(9, {1, 2, 3}));
    QVERIFY(!TfraTreeView::ValueInSet(0, {}));
}

void tst_fra_TreeView::keyOfNode()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    TTreeNode *beta = find(frame, s("Beta"));
    QCOMPARE(frame.GetKeyFieldValueFromLevel(beta, 2, s(" FundID ")), 101);
    QCOMPARE(frame.GetKeyFieldValueFromLevel(beta, 0, s("FundID")),
             101); // the node's depth determines the level, not the argument
    QCOMPARE(frame.GetKeyFieldValueFromLevel(beta, 3, s("FundID")), -1);
    QCOMPARE(frame.GetKeyFieldValueFromLevel(beta, 2, s("  ")), -1);
    QCOMPARE(frame.GetKeyFieldValueFromLevel(nullptr, 2, s("FundID")), -1);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.GetKeyFieldValueFromLevel(beta, 2, s("Nobody")));
}

void tst_fra_TreeView::viewStyles()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.Set_ViewStyle(vwsList);
    QCOMPARE(texts(frame), QStringList({s("Equity"), s("Bond")}));
    QVERIFY(!frame.TreeView->ShowRoot());
    QCOMPARE(frame.GetLevelCount(), 3);
    frame.Set_ViewStyle(vwsTree);
    QCOMPARE(frame.TreeView->Items().Count(), 9);
    QVERIFY(frame.TreeView->ShowRoot());
    QCOMPARE(frame.GetLevelData(0).ParentKeyField, s("GroupTypeID"));
}

void tst_fra_TreeView::keepsStateByKeys()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    frame.Set_KeepTreeState(true);
    find(frame, s("Equity"))->SetExpanded(true);
    find(frame, s("South"))->SetExpanded(true);
    find(frame, s("Delta"))->SetSelected(true);
    find(frame, s("Bond"))->SetExpanded(false);
    catalogue.Groups.Rows.removeFirst();         // removes North
    catalogue.Types.Rows.prepend({7, s("New")}); // a new first row
    catalogue.Groups.Rows.prepend({7, 70, s("New group")});
    catalogue.Funds.Rows[2][2] = s("Delta renamed");
    frame.RefreshTreeView();
    QVERIFY(!find(frame, s("North")));
    QVERIFY(find(frame, s("Equity"))->Expanded());
    QVERIFY(find(frame, s("South"))->Expanded());
    QVERIFY(!find(frame, s("Bond"))->Expanded());
    QVERIFY(!find(frame, s("New"))->Expanded());
    QCOMPARE(frame.TreeView->Selected(), find(frame, s("Delta renamed")));
    // Without KeepTreeState the tree is as after BuildTree.
    frame.Set_KeepTreeState(false);
    frame.RefreshTreeView();
    QVERIFY(!find(frame, s("Equity"))->Expanded());
    QVERIFY(!frame.TreeView->Selected());
    // The frame keeps the former cursors.
    QCOMPARE(frame.findChildren<TClientDataSet *>().size(), 9);
    for (TClientDataSet *data :
         {&catalogue.Types.DataSet, &catalogue.Groups.DataSet, &catalogue.Funds.DataSet})
        QCOMPARE(data->BookmarksHandedOut(), 0);
}

// A refresh keeps the scroll position in a long tree.
void tst_fra_TreeView::keepsThePlaceOnScreen()
{
    QList<QVariantList> rows;
    for (int key = 1; key <= 100; ++key)
        rows.append({1, key, QString::number(key)});
    Source types({s("#Type"), s("Name")}, {{1, s("One")}, {2, s("Two")}});
    Source groups({s("#Type"), s("#Group"), s("Name")}, rows);
    TfraTreeView frame;
    frame.AddLevel(&types.DataSet, s("Name"), 0, QString(), s("Type"), QString(), s("Type"));
    frame.AddLevel(&groups.DataSet, s("Name"), 0, s("Type"), QString(), QString(), s("Group"));
    frame.BuildTree();
    frame.Set_KeepTreeState(true);
    QVERIFY(showActive(frame));
    find(frame, s("One"))->SetExpanded(true);
    find(frame, s("3"))->SetSelected(true); // above the visible part
    QCoreApplication::processEvents();
    frame.TreeView->verticalScrollBar()->setValue(40);
    const int place = frame.TreeView->verticalScrollBar()->value();
    QVERIFY(place > 0);
    QTest::keyClick(frame.TreeView, Qt::Key_F5);
    QCoreApplication::processEvents(); // the tree is laid out again
    QCOMPARE(frame.TreeView->verticalScrollBar()->value(), place);
}

void tst_fra_TreeView::keepsStateByTheWholePath()
{
    // The same group keys appear below both types.
    Source types({s("#Type"), s("Name")}, {{1, s("One")}, {2, s("Two")}});
    Source groups({s("#Type"), s("#Group"), s("#Path"), s("Name")},
                  {{1, 10, 110, s("a")}, {1, 11, 111, s("b")}, {2, 10, 210, s("c")}, {2, 11, 211, s("d")}});
    Source funds(
        {s("#Path"), s("#Fund"), s("Name")},
        {{110, 1, s("a1")}, {110, 2, s("a2")}, {111, 1, s("b1")}, {210, 1, s("c1")}, {210, 2, s("c2")}});
    TfraTreeView frame;
    frame.AddLevel(&types.DataSet, s("Name"), 0, QString(), s("Type"), QString(), s("Type"));
    frame.AddLevel(&groups.DataSet, s("Name"), 0, s("Type"), s("Path"), QString(), s("Group"));
    frame.AddLevel(&funds.DataSet, s("Name"), 0, s("Path"), QString(), QString(), s("Fund"));
    frame.BuildTree();
    frame.Set_KeepTreeState(true);
    find(frame, s("Two"))->SetExpanded(true);
    find(frame, s("c"))->SetExpanded(true);
    find(frame, s("c2"))->SetSelected(true);
    // Rows are added and removed elsewhere, and the order changes.
    std::swap(types.Rows[0], types.Rows[1]);
    groups.Rows = {{2, 9, 209, s("new")}, {2, 10, 210, s("c")}, {1, 11, 111, s("b")}, {1, 10, 110, s("a")}};
    std::swap(funds.Rows[3], funds.Rows[4]);
    frame.RefreshTreeView();
    QCOMPARE(texts(frame), QStringList({s("Two"), s("-new"), s("-c"), s("--c2"), s("--c1"), s("One"), s("-b"),
                                        s("--b1"), s("-a"), s("--a1"), s("--a2")}));
    QStringList expanded;
    for (const TTreeNode *node = frame.TreeView->Items().GetFirstNode(); node; node = node->GetNext()) {
        if (node->Expanded())
            expanded << node->Text();
    }
    QCOMPARE(expanded, QStringList({s("Two"), s("c")}));
    QCOMPARE(frame.TreeView->Selected(), find(frame, s("c2")));
}

void tst_fra_TreeView::keepsStateOverOtherLevels()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    find(frame, s("Equity"))->SetExpanded(true);
    find(frame, s("Bond"))->SetSelected(true);
    frame.Do_TreeViewBookMark();
    frame.TreeView->FullCollapse();
    frame.TreeView->SetSelected(nullptr);
    frame.Do_RestoreTreeViewBookMark();
    QVERIFY(find(frame, s("Equity"))->Expanded());
    QVERIFY(find(frame, s("Bond"))->Selected());
    // A path with fewer or more levels is a different path.
    frame.ClearTree();
    frame.AddLevel(&catalogue.Types.DataSet, s("GroupTypeDesc"), 8, QString(), s("GroupTypeID"), QString(),
                   s("GroupTypeID"));
    frame.BuildTree();
    frame.Do_RestoreTreeViewBookMark();
    QVERIFY(!frame.TreeView->Selected());
    find(frame, s("Bond"))->SetSelected(true);
    frame.Do_TreeViewBookMark();
    frame.ClearTree();
    catalogue.AddTo(frame);
    frame.BuildTree();
    frame.Do_RestoreTreeViewBookMark();
    QVERIFY(!frame.TreeView->Selected());
}

void tst_fra_TreeView::withoutKeysTheFirstDecides()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame, false);
    frame.BuildTree();
    frame.Set_KeepTreeState(true);
    find(frame, s("Equity"))->SetExpanded(true);
    frame.RefreshTreeView();
    QVERIFY(find(frame, s("Equity"))->Expanded());
    QVERIFY(find(frame, s("Bond"))->Expanded());
    // Without keys on any level all paths are equal.
    QVERIFY(find(frame, s("North"))->Expanded());
}

void tst_fra_TreeView::withoutKeysOfTheFunds()
{
    Catalogue catalogue;
    TfraTreeView frame;
    frame.AddLevel(&catalogue.Types.DataSet, s("GroupTypeDesc"), 8, QString(), s("GroupTypeID"), QString(),
                   s("GroupTypeID"));
    frame.AddLevel(&catalogue.Groups.DataSet, s("FundGroupName"), 6, s("GroupTypeID"), s("FundGroupID"),
                   QString(), s("FundGroupID"));
    frame.AddLevel(&catalogue.Funds.DataSet, s("FundName"), 7, s("FundGroupID"), QString(), QString(),
                   QString());
    frame.BuildTree();
    frame.Set_KeepTreeState(true);
    find(frame, s("North"))->SetExpanded(true);
    find(frame, s("Alpha"))->SetSelected(true);
    frame.RefreshTreeView();
    // Without keys on their level, all funds of a group have their group's path. That path was not selected,
    // so no fund is selected.
    QVERIFY(find(frame, s("North"))->Expanded());
    QVERIFY(!frame.TreeView->Selected());
    // When the group is selected, all of its funds match; the tree selects only one node, the last.
    find(frame, s("North"))->SetSelected(true);
    frame.RefreshTreeView();
    QCOMPARE(frame.TreeView->Selected(), find(frame, s("Beta")));
}

void tst_fra_TreeView::refreshKeepsTheFilters()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.LevelFilter(1, s("FundGroupID <> 10"), true);
    catalogue.Groups.Rows.append({2, 21, s("West")});
    frame.RefreshTreeView();
    QCOMPARE(texts(frame), QStringList({s("Equity"), s("-South"), s("--Delta"), s("Bond"), s("-East"),
                                        s("--Gamma"), s("-West")}));
    QVERIFY(!catalogue.Groups.DataSet.Filtered());
}

void tst_fra_TreeView::refreshInListStyle()
{
    // A refresh builds all levels in both styles.
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.Set_ViewStyle(vwsList);
    QCOMPARE(frame.TreeView->Items().Count(), 2);
    frame.RefreshTreeView();
    QCOMPARE(frame.TreeView->Items().Count(), 9);
    QCOMPARE(frame.Get_ViewStyle(), vwsList);
}

void tst_fra_TreeView::f5Refreshes()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    QVERIFY(showActive(frame));
    frame.TreeView->setFocus();
    catalogue.Types.Rows.append({9, s("Late")});
    QTest::keyClick(frame.TreeView, Qt::Key_F4);
    QVERIFY(!find(frame, s("Late")));
    QTest::keyClick(frame.TreeView, Qt::Key_F5);
    QVERIFY(find(frame, s("Late")));
    quint16 key = 116;
    frame.TreeViewKeyDown(frame.TreeView, key, {});
    QCOMPARE(key, quint16(116));
    ReportCatcher reports;
    catalogue.Types.DataSet.BeforeOpen = [](TDataSet *) { throw EDatabaseError(s("gone")); };
    QTest::keyClick(frame.TreeView, Qt::Key_F5);
    QCOMPARE(reports.messages, QStringList(s("gone")));
}

void tst_fra_TreeView::failedRefreshKeepsTheTree()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    frame.Set_KeepTreeState(true);
    const QStringList before = texts(frame);
    catalogue.Groups.DataSet.BeforeOpen = [](TDataSet *) { throw EDatabaseError(s("gone")); };
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.RefreshTreeView());
    QCOMPARE(texts(frame), before);
    QVERIFY(!frame.TreeView->Items().Updating());
    QCOMPARE(frame.GetKeyFieldValueFromLevel(find(frame, s("Beta")), 2, s("FundID")), 101);
    QCOMPARE(frame.findChildren<TClientDataSet *>().size(), 3);
}

void tst_fra_TreeView::refreshWithARefusedFilter()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    const QStringList before = texts(frame);
    // The level keeps the malformed filter, so each refresh throws.
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.LevelFilter(1, s("broken ("), false));
    for (int i = 0; i < 2; ++i) {
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, frame.RefreshTreeView());
        QCOMPARE(texts(frame), before);
        QCOMPARE(frame.GetKeyFieldValueFromLevel(find(frame, s("Equity")), 0, s("GroupTypeID")), 1);
        QCOMPARE(frame.GetKeyFieldValueFromLevel(find(frame, s("Beta")), 2, s("FundID")), 101);
        QCOMPARE(frame.findChildren<TClientDataSet *>().size(), 3);
    }
    frame.LevelFilter(1, s("FundGroupID = 11"), false);
    frame.RefreshTreeView();
    QCOMPARE(texts(frame), QStringList({s("Equity"), s("-South"), s("--Delta"), s("Bond")}));
}

void tst_fra_TreeView::refreshWhileTheHostChangesTheLevels()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    // A handler sets up the levels again whenever the types are opened.
    catalogue.Types.DataSet.AfterOpen = [&](TDataSet *) {
        frame.ClearTree();
        catalogue.AddTo(frame);
    };
    catalogue.Types.Rows.append({3, s("New")});
    frame.RefreshTreeView();
    QCOMPARE(frame.GetLevelCount(), 3);
    QCOMPARE(frame.TreeView->Items().Count(), 10);
    // A handler removes the levels during the refresh.
    catalogue.Types.DataSet.AfterOpen = nullptr;
    catalogue.Groups.DataSet.AfterOpen = [&](TDataSet *) { frame.ClearTree(); };
    const qsizetype cursors = frame.findChildren<TClientDataSet *>().size();
    frame.RefreshTreeView();
    QCOMPARE(frame.GetLevelCount(), 0);
    QCOMPARE(frame.TreeView->Items().Count(), 0);
    QCOMPARE(frame.findChildren<TClientDataSet *>().size(), cursors); // removed levels get no new cursors
}

void tst_fra_TreeView::staleBookmarks()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.Set_ViewStyle(vwsTree);
    frame.Set_KeepTreeState(true);
    find(frame, s("Equity"))->SetExpanded(true);
    find(frame, s("North"))->SetExpanded(true);
    find(frame, s("Bond"))->SetSelected(true);
    // A cursor that was opened again refuses the bookmarks of its nodes.
    TClientDataSet *groups = frame.GetLevelData(1).DataSet;
    groups->Close();
    groups->Open();
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             frame.GetKeyFieldValueFromLevel(find(frame, s("North")), 1, s("FundGroupID")));
    QCOMPARE(frame.GetKeyFieldValueFromLevel(find(frame, s("Beta")), 2, s("FundID")), 101);
    frame.RefreshTreeView();
    QCOMPARE(frame.TreeView->Items().Count(), 9);
    QVERIFY(find(frame, s("Equity"))->Expanded());
    QVERIFY(!find(frame, s("North"))->Expanded());
    QCOMPARE(frame.TreeView->Selected(), find(frame, s("Bond")));
}

void tst_fra_TreeView::nothingIsSetUpAfterTheFirstPaint()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    find(frame, s("Bond"))->SetSelected(true);
    const QStringList before = texts(frame);
    QVERIFY(showActive(frame));
    QEvent message{QEvent::Type(1524)};
    QCoreApplication::sendEvent(&frame, &message);
    QCOMPARE(texts(frame), before);
    QCOMPARE(frame.TreeView->Selected(), find(frame, s("Bond")));
    QVERIFY(frame.pnlMainHeader->isHidden());
}

void tst_fra_TreeView::changeNodeImage()
{
    Catalogue catalogue;
    TfraTreeView frame;
    catalogue.AddTo(frame);
    frame.BuildTree();
    frame.ChangeNodeImage(-1, 3);
    frame.ChangeNodeImage(2, 3);
    const TTreeNode *node = frame.TreeView->Items()[2];
    QCOMPARE(node->ImageIndex(), 3);
    QCOMPARE(node->StateIndex(), 3);
    QCOMPARE(node->SelectedIndex(), 3);
    QVERIFY_THROWS_EXCEPTION(EListError, frame.ChangeNodeImage(9, 3));
}

void tst_fra_TreeView::cursorsGoWithTheFrame()
{
    Catalogue catalogue;
    QList<QPointer<TClientDataSet>> cursors;
    {
        TfraTreeView frame;
        catalogue.AddTo(frame);
        frame.BuildTree();
        frame.RefreshTreeView();
        frame.ClearTree();
        catalogue.AddTo(frame);
        frame.BuildTree();
        const QList<TClientDataSet *> own = frame.findChildren<TClientDataSet *>();
        for (TClientDataSet *cursor : own)
            cursors.append(cursor);
        QCOMPARE(cursors.size(), 9); // the frame keeps former cursors until it is destroyed
    }
    for (const QPointer<TClientDataSet> &cursor : std::as_const(cursors))
        QVERIFY(!cursor);
}

void tst_fra_TreeView::sourceMayGoFirst()
{
    TfraTreeView frame;
    {
        Catalogue catalogue;
        catalogue.AddTo(frame);
        frame.BuildTree();
    }
    frame.Set_KeepTreeState(true);
    find(frame, s("Equity"))->SetExpanded(true);
    QVERIFY(!frame.grab().isNull());
    frame.RefreshTreeView(); // uses the rows that its cursors still have
    QCOMPARE(frame.TreeView->Items().Count(), 9);
    QVERIFY(find(frame, s("Equity"))->Expanded());
}

void tst_fra_TreeView::realCatalogue()
{
    QList<QStringList> rows;
    if (!ZelTest::realCatalogue().isEmpty()) {
        rows = CatalogueCsv::read(ZelTest::realCatalogue());
    } else {
        qInfo("The real catalogue is not there: small data instead");
        for (int i = 0; i < 60; ++i)
            rows.append({QString::number(i / 20), s(" Type %1").arg(i / 20), QString::number(i / 5),
                         s("Group %1 \xC3\xA9").arg(i / 5), QString::number(1000 + i),
                         s("\tFund %1 ").arg(i)});
    }
    QList<QVariantList> types;
    QList<QVariantList> groups;
    QList<QVariantList> funds;
    QStringList expected;
    for (const QStringList &row : std::as_const(rows)) {
        if (types.isEmpty() || types.last().first() != row[0].toInt()) {
            types.append({row[0].toInt(), row[1]});
            expected << row[1];
        }
        if (groups.isEmpty() || groups.last().at(1) != row[2].toInt()) {
            groups.append({row[0].toInt(), row[2].toInt(), row[3]});
            expected << s("-") + row[3].trimmed();
        }
        funds.append({row[2].toInt(), row[4].toInt(), row[5]});
        expected << s("--") + row[5].trimmed();
    }
    if (!ZelTest::realCatalogue().isEmpty()) {
        QCOMPARE(types.size(), 93);
        QCOMPARE(groups.size(), 1117);
        QCOMPARE(funds.size(), 14280);
    }
    Source typeSource({s("#GroupTypeID"), s("GroupTypeDesc")}, types);
    Source groupSource({s("#GroupTypeID"), s("#FundGroupID"), s("FundGroupName")}, groups);
    Source fundSource({s("#FundGroupID"), s("#FundID"), s("FundName")}, funds);
    TfraTreeView frame;
    frame.AddLevel(&typeSource.DataSet, s("GroupTypeDesc"), 0, QString(), s("GroupTypeID"), QString(),
                   s("GroupTypeID"));
    frame.AddLevel(&groupSource.DataSet, s("FundGroupName"), 1, s("GroupTypeID"), s("FundGroupID"), QString(),
                   s("FundGroupID"));
    frame.AddLevel(&fundSource.DataSet, s("FundName"), 2, s("FundGroupID"), QString(), QString(),
                   s("FundID"));
    frame.Set_KeepTreeState(true);
    frame.Set_ViewStyle(vwsTree);
    QCOMPARE(texts(frame), expected);
    QVERIFY(showActive(frame));

    // Expands the first type, the last type and the last type's first group and selects one of this group's
    // funds. Then another group is deleted, a fund is added to the source, and F5 is pressed.
    TTreeNodes &nodes = frame.TreeView->Items();
    nodes.GetFirstNode()->SetExpanded(true);
    TTreeNode *lastType = nodes.GetFirstNode();
    while (lastType->GetNextSibling())
        lastType = lastType->GetNextSibling();
    TTreeNode *group = lastType->GetFirstChild();
    lastType->SetExpanded(true);
    group->SetExpanded(true);
    frame.TreeView->SetSelected(group->GetFirstChild());
    const int fundID = frame.GetKeyFieldValueFromLevel(group->GetFirstChild(), 2, s("FundID"));
    const int groupID = frame.GetKeyFieldValueFromLevel(group, 1, s("FundGroupID"));
    const int count = nodes.Count();
    const int goneGroup = groups.first().at(1).toInt();
    const auto goneFunds =
        fundSource.Rows.removeIf([&](const QVariantList &row) { return row.first().toInt() == goneGroup; });
    groupSource.Rows.removeFirst();
    const auto place = std::find_if(fundSource.Rows.begin(), fundSource.Rows.end(),
                                    [&](const QVariantList &row) { return row.first().toInt() == groupID; });
    fundSource.Rows.insert(place, {groupID, 999999, s("A new fund")});
    frame.TreeView->setFocus();
    QTest::keyClick(frame.TreeView, Qt::Key_F5);
    QCOMPARE(nodes.Count(), count - 1 - int(goneFunds) + 1);
    QVERIFY(nodes.GetFirstNode()->Expanded());
    int expanded = 0;
    for (const TTreeNode *node = nodes.GetFirstNode(); node; node = node->GetNext())
        expanded += node->Expanded() ? 1 : 0;
    QCOMPARE(expanded, 3);
    TTreeNode *selected = frame.TreeView->Selected();
    QVERIFY(selected);
    QCOMPARE(frame.GetKeyFieldValueFromLevel(selected, 2, s("FundID")), fundID);
    QCOMPARE(frame.GetKeyFieldValueFromLevel(selected->Parent(), 1, s("FundGroupID")), groupID);
    QCOMPARE(selected->GetPrevSibling()->Text(), s("A new fund"));
    for (Source *source : {&typeSource, &groupSource, &fundSource})
        QCOMPARE(source->DataSet.BookmarksHandedOut(), 0);
}

ZEL_TEST_MAIN(tst_fra_TreeView)
#include "tst_fra_treeview.moc"
