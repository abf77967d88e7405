// labels: x11
#include "Frames.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "toolkit/Glyphs.h"
#include "toolkit/TImageList.h"
#include "toolkit/TTreeView.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QHelpEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleFactory>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

TBookmark mark(quintptr number)
{
    return reinterpret_cast<TBookmark>(number);
}

/// Three roots with three children each and two leaves per child: "0", "0.0", "0.0.0", ...
void fill(TTreeView &view)
{
    view.Items().BeginUpdate();
    view.Items().Clear();
    for (int i = 0; i < 3; ++i) {
        TTreeNode *root = view.Items().Add(QString::number(i));
        for (int j = 0; j < 3; ++j) {
            TTreeNode *child = view.Items().AddChild(root, u"%1.%2"_s.arg(i).arg(j));
            for (int k = 0; k < 2; ++k)
                view.Items().AddChild(child, u"%1.%2.%3"_s.arg(i).arg(j).arg(k));
        }
    }
    view.Items().EndUpdate();
}

QStringList texts(const TTreeView &view)
{
    QStringList all;
    for (const TTreeNode *node = view.Items().GetFirstNode(); node; node = node->GetNext())
        all << node->Text();
    return all;
}

} // namespace

class tst_TreeView : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void fillsInBulk();
    void whatIsCutOffIsShownByTheMouse();
    void announcesSingleChanges();
    void walksTheNodes();
    void absoluteIndexFollowsChanges();
    void absoluteIndexOfAHundredThousand();
    void additionComesOncePerNode();
    void additionErrorReachesTheCaller();
    void additionMayDeleteTheNode_data();
    void additionMayDeleteTheNode();
    void keepsStateOverAnUpdate();
    void countsUpdates();
    void selects();
    void tellsOfANodeInAFormerOnesPlace();
    void whoHearsOfADeletionMayDeleteMore();
    void expandsAndCollapses();
    void deletesBranches();
    void drawsAsToldByTheHandler();
    void passesKeysByReference();
    void keysWithoutACodeGoOn();
    void aKeyHandlerMayReplaceItself();
    void enterAndExit();
    void doubleClicks();
    void dragsAreDecidedByTheHandler();
    void editsLabelsUnlessReadOnly();
    void showsPictures();
    void showsStatePictures();
    void outOfRange();
    void theChosenRowsPictureIsSeenInAnyWindow_data();
    void theChosenRowsPictureIsSeenInAnyWindow();
    void imagesMayGoFirst();
};

void tst_TreeView::whatIsCutOffIsShownByTheMouse()
{
    TTreeView view;
    const QString text = u"Open Ended Schemes (Debt <Scheme> & Income)"_s;
    TTreeNode *const node = view.Items().Add(text);
    view.Items().Add(u"a"_s);
    view.setToolTip(u"of the view"_s);
    view.resize(150, 120);
    QVERIFY(showActive(view));
    const auto tipAt = [&view](int row) {
        QToolTip::hideText();
        const QPoint place = view.visualRect(view.model()->index(row, 0)).center();
        QHelpEvent rest(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(view.viewport(), &rest);
        return QToolTip::text();
    };
    QCOMPARE(QTextDocumentFragment::fromHtml(tipAt(0)).toPlainText(), text);
    QCOMPARE(tipAt(1), u"of the view"_s);
    view.resize(600, 120);
    QTRY_COMPARE(tipAt(0), u"of the view"_s);
    // The handler's font decides: a larger one makes the text too long again.
    view.OnCustomDrawItem = [&view](TTreeView *, TTreeNode *, QStyle::State, bool &) {
        view.Canvas().Font.setPixelSize(40);
    };
    QCOMPARE(QTextDocumentFragment::fromHtml(tipAt(0)).toPlainText(), node->Text());
    QToolTip::hideText();
}

void tst_TreeView::fillsInBulk()
{
    TTreeView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy resets(view.model(), &QAbstractItemModel::modelReset);
    QSignalSpy inserts(view.model(), &QAbstractItemModel::rowsInserted);
    view.Items().BeginUpdate();
    TTreeNode *a = view.Items().AddObject(u"a"_s, mark(7));
    view.Items().AddChild(a, u"a1"_s);
    QCOMPARE(view.model()->rowCount(), 0); // the view shows nothing during an update
    QVERIFY(!view.updatesEnabled());
    view.Items().EndUpdate();
    QVERIFY(view.updatesEnabled());
    QCOMPARE(inserts.count(), 0);
    QCOMPARE(resets.count(), 2); // one reset removes the old nodes, one shows the new nodes
    QCOMPARE(view.model()->rowCount(), 1);
    QCOMPARE(a->Data(), mark(7));
    fill(view);
    QCOMPARE(view.Items().Count(), 3 + 9 + 18);
}

void tst_TreeView::announcesSingleChanges()
{
    TTreeView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy inserts(view.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy changes(view.model(), &QAbstractItemModel::dataChanged);
    TTreeNode *a = view.Items().Add(u"a"_s);
    TTreeNode *b = view.Items().AddChild(a, u"b"_s);
    QCOMPARE(inserts.count(), 2);
    b->SetText(u"c"_s);
    b->SetImageIndex(1);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(view.model()->index(0, 0, view.model()->index(0, 0)).data().toString(), u"c"_s);
    view.Items().Clear();
    QCOMPARE(view.Items().Count(), 0);
    QCOMPARE(view.model()->rowCount(), 0);
}

void tst_TreeView::walksTheNodes()
{
    TTreeView view;
    QVERIFY(!view.Items().GetFirstNode());
    fill(view);
    QCOMPARE(texts(view).mid(0, 8), QStringList({u"0"_s, u"0.0"_s, u"0.0.0"_s, u"0.0.1"_s, u"0.1"_s,
                                                 u"0.1.0"_s, u"0.1.1"_s, u"0.2"_s}));
    TTreeNode *root = view.Items().GetFirstNode();
    TTreeNode *leaf = root->Item(1)->GetLastChild();
    QCOMPARE(leaf->Text(), u"0.1.1"_s);
    QCOMPARE(leaf->Level(), 2);
    QCOMPARE(leaf->Index(), 1);
    QCOMPARE(leaf->Parent()->Text(), u"0.1"_s);
    QVERIFY(!root->Parent());
    QVERIFY(!leaf->GetNextSibling());
    QCOMPARE(leaf->GetPrevSibling()->Text(), u"0.1.0"_s);
    QCOMPARE(leaf->GetNext()->Text(), u"0.2"_s);
    QVERIFY(!view.Items().Item(29)->GetNext());
    QCOMPARE(leaf->TreeView(), &view);
    // A leaf is flagged as never having children, a branch is not.
    const QModelIndex rootIndex = view.model()->index(0, 0);
    QVERIFY(!rootIndex.flags().testFlag(Qt::ItemNeverHasChildren));
    const QModelIndex leafIndex = view.model()->index(0, 0, view.model()->index(0, 0, rootIndex));
    QVERIFY(leafIndex.flags().testFlag(Qt::ItemNeverHasChildren));
}

void tst_TreeView::absoluteIndexFollowsChanges()
{
    TTreeView view;
    fill(view);
    for (int i = 0; i < view.Items().Count(); ++i)
        QCOMPARE(view.Items()[i]->AbsoluteIndex(), i);
    // Appended at the end, inserted in the middle, and after a deletion.
    TTreeNode *last = view.Items().AddChild(view.Items()[29]->Parent(), u"end"_s);
    QCOMPARE(last->AbsoluteIndex(), 30);
    TTreeNode *middle = view.Items().AddChild(view.Items()[1], u"middle"_s);
    QCOMPARE(middle->AbsoluteIndex(), 4);
    QCOMPARE(last->AbsoluteIndex(), 31);
    view.Items()[1]->Delete();
    QCOMPARE(last->AbsoluteIndex(), 27);
    QCOMPARE(view.Items()[27], last);
}

void tst_TreeView::absoluteIndexOfAHundredThousand()
{
    // AbsoluteIndex while the tree is filled is the hardest case. With quadratic time this takes minutes.
    TTreeView view;
    qint64 sum = 0;
    view.OnAddition = [&](TTreeNode *node) { sum += node->AbsoluteIndex(); };
    view.Items().BeginUpdate();
    constexpr qint64 count = 100000;
    TTreeNode *root = nullptr;
    for (qint64 i = 0; i < count; ++i) {
        if (i % 100 == 0)
            root = view.Items().Add(u"r"_s);
        else
            view.Items().AddChild(root, u"c"_s);
    }
    view.Items().EndUpdate();
    for (TTreeNode *node = view.Items().GetFirstNode(); node; node = node->GetNext())
        sum -= node->AbsoluteIndex();
    QCOMPARE(sum, 0);
}

void tst_TreeView::additionComesOncePerNode()
{
    TTreeView view;
    QStringList seen;
    view.OnAddition = [&](TTreeNode *node) {
        QVERIFY(view.Items().Updating());
        QCOMPARE(node->Data(), mark(static_cast<quintptr>(seen.size()) + 1));
        seen << node->Text();
        if (node->Level() == 1)
            node->SetText(node->Text() + u" *"_s);
    };
    view.Items().BeginUpdate();
    TTreeNode *a = view.Items().AddObject(u"a"_s, mark(1));
    view.Items().AddChildObject(a, u"b"_s, mark(2));
    view.Items().AddChildObject(a, u"c"_s, mark(3));
    view.Items().EndUpdate();
    QCOMPARE(seen, QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(texts(view), QStringList({u"a"_s, u"b *"_s, u"c *"_s}));
}

void tst_TreeView::additionErrorReachesTheCaller()
{
    TTreeView view;
    view.OnAddition = [](TTreeNode *) { throw EListError(u"no"_s); };
    QVERIFY_THROWS_EXCEPTION(EListError, view.Items().Add(u"a"_s));
    QCOMPARE(view.Items().Count(), 1);
}

void tst_TreeView::additionMayDeleteTheNode_data()
{
    QTest::addColumn<bool>("inAnUpdate");
    QTest::newRow("at once") << false;
    QTest::newRow("in an update") << true;
}

void tst_TreeView::additionMayDeleteTheNode()
{
    QFETCH(bool, inAnUpdate);
    TTreeView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    TTreeNode *replacement = nullptr;
    view.OnAddition = [&](TTreeNode *node) {
        if (node->Text() == u"drop"_s) {
            node->Delete();
        } else if (node->Text() == u"replace"_s) {
            // The replacement may have the deleted node's address.
            node->Delete();
            replacement = view.Items().Add(u"other"_s);
        } else if (node->Text() == u"clear"_s) {
            view.Items().Clear();
        }
    };
    if (inAnUpdate)
        view.Items().BeginUpdate();
    TTreeNode *root = view.Items().Add(u"root"_s);
    QVERIFY(root);
    QVERIFY(!view.Items().AddChild(root, u"drop"_s));
    QVERIFY(view.Items().AddChild(root, u"stay"_s));
    QVERIFY(!view.Items().Add(u"replace"_s));
    QVERIFY(replacement);
    QCOMPARE(texts(view), QStringList({u"root"_s, u"stay"_s, u"other"_s}));
    QVERIFY(!view.Items().AddChild(root, u"clear"_s));
    QCOMPARE(view.Items().Count(), 0);
    QVERIFY(view.Items().Add(u"after"_s));
    if (inAnUpdate)
        view.Items().EndUpdate();
    QCOMPARE(texts(view), QStringList({u"after"_s}));
}

void tst_TreeView::keepsStateOverAnUpdate()
{
    TTreeView view;
    fill(view);
    view.resize(200, 100);
    QVERIFY(showActive(view));
    view.FullExpand();
    TTreeNode *collapsed = view.Items().GetFirstNode()->Item(0);
    collapsed->SetExpanded(false);
    TTreeNode *selected = view.Items().Item(20);
    view.SetSelected(selected);
    QTRY_VERIFY(view.verticalScrollBar()->value() > 0);
    const int place = view.verticalScrollBar()->value();
    QSignalSpy changes(&view, &TTreeView::Change);
    view.Items().BeginUpdate();
    TTreeNode *added = view.Items().AddChild(view.Items()[5], u"new"_s);
    QVERIFY(selected->Selected());
    QVERIFY(!collapsed->Expanded());
    QVERIFY(view.Items()[0]->Expanded());
    view.Items().EndUpdate();
    QVERIFY(selected->Selected());
    QVERIFY(!collapsed->Expanded());
    QVERIFY(view.Items()[0]->Expanded());
    QVERIFY(!added->Expanded());
    QCOMPARE(view.verticalScrollBar()->value(), place);
    QCOMPARE(changes.count(), 0);
    // Nodes that are expanded and selected inside an update are so at its end.
    view.Items().BeginUpdate();
    view.Items().Clear();
    TTreeNode *a = view.Items().Add(u"a"_s);
    a->SetExpanded(true); // has no children yet
    QVERIFY(!a->Expanded());
    TTreeNode *b = view.Items().AddChild(a, u"b"_s);
    a->SetExpanded(true);
    b->SetSelected(true);
    view.Items().EndUpdate();
    QVERIFY(a->Expanded());
    QCOMPARE(view.Selected(), b);
    QCOMPARE(changes.count(), 1);
}

void tst_TreeView::countsUpdates()
{
    TTreeView view;
    view.Items().EndUpdate(); // an EndUpdate without a BeginUpdate is ignored
    view.Items().BeginUpdate();
    view.Items().BeginUpdate();
    view.Items().Add(u"a"_s);
    view.Items().EndUpdate();
    QVERIFY(view.Items().Updating());
    QCOMPARE(view.model()->rowCount(), 0);
    view.Items().EndUpdate();
    QVERIFY(!view.Items().Updating());
    QCOMPARE(view.model()->rowCount(), 1);
}

void tst_TreeView::selects()
{
    TTreeView view;
    fill(view);
    QVERIFY(showActive(view));
    QSignalSpy changes(&view, &TTreeView::Change);
    QVERIFY(!view.Selected());
    TTreeNode *leaf = view.Items().Item(3);
    view.SetSelected(leaf);
    QCOMPARE(view.Selected(), leaf);
    QVERIFY(leaf->Selected());
    QVERIFY(leaf->Parent()->Expanded());
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last().first().value<TTreeNode *>(), leaf);
    QTest::keyClick(&view, Qt::Key_Up);
    QCOMPARE(view.Selected(), view.Items()[2]);
    QCOMPARE(changes.count(), 2);
    view.Items()[2]->SetSelected(false);
    QVERIFY(!view.Selected());
    QVERIFY(!changes.last().first().value<TTreeNode *>());
    // A click selects the node under the mouse pointer.
    TTreeNode *root = view.Items().GetFirstNode();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      view.visualRect(view.model()->index(0, 0)).center());
    QCOMPARE(view.Selected(), root);
    QCOMPARE(view.GetNodeAt(view.visualRect(view.model()->index(0, 0)).center().x(), 3), root);
    view.Items().Clear();
    QVERIFY(!view.Selected());
    QVERIFY(!changes.last().first().value<TTreeNode *>());
}

void tst_TreeView::whoHearsOfADeletionMayDeleteMore()
{
    TTreeView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    fill(view);
    view.FullExpand();
    view.SetSelected(view.Items()[2]);
    // The handler deletes each node that becomes selected, so the next one is selected, until none is left.
    int told = 0;
    connect(&view, &TTreeView::Change, this, [&](TTreeNode *node) {
        ++told;
        if (node)
            node->Delete();
    });
    view.Items()[2]->Delete();
    QCOMPARE(view.Items().Count(), 0);
    QVERIFY(told > 3);
}

void tst_TreeView::tellsOfANodeInAFormerOnesPlace()
{
    TTreeView view;
    fill(view);
    QVERIFY(showActive(view));
    TTreeNodes &nodes = view.Items();
    TTreeNode *last = nodes.Item(nodes.Count() - 1);
    view.SetSelected(last);
    QSignalSpy changes(&view, &TTreeView::Change);
    // Deleted and replaced in one update: the new node is another one, although it has the same address.
    nodes.BeginUpdate();
    last->Delete();
    TTreeNode *next = nodes.Add(u"new"_s);
    view.SetSelected(next);
    nodes.EndUpdate();
    QCOMPARE(next, last);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last().first().value<TTreeNode *>(), next);
    // The same when the whole tree is filled again, whatever addresses the new nodes have.
    view.SetSelected(nodes[0]);
    changes.clear();
    nodes.BeginUpdate();
    fill(view);
    view.SetSelected(nodes[0]);
    nodes.EndUpdate();
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last().first().value<TTreeNode *>(), nodes[0]);
    // Deleting the parent of the selected node.
    view.SetSelected(nodes[2]);
    changes.clear();
    nodes.BeginUpdate();
    nodes[1]->Delete();
    nodes.EndUpdate();
    QCOMPARE(changes.count(), 1);
    QVERIFY(!changes.last().first().value<TTreeNode *>());
    // A node that stays selected causes no signal.
    view.SetSelected(nodes[0]);
    changes.clear();
    nodes.BeginUpdate();
    nodes.Add(u"newer"_s);
    nodes.EndUpdate();
    QCOMPARE(changes.count(), 0);
}

void tst_TreeView::expandsAndCollapses()
{
    TTreeView view;
    fill(view);
    view.FullExpand();
    for (const TTreeNode *node = view.Items().GetFirstNode(); node; node = node->GetNext())
        QCOMPARE(node->Expanded(), node->HasChildren());
    view.FullCollapse();
    for (const TTreeNode *node = view.Items().GetFirstNode(); node; node = node->GetNext())
        QVERIFY(!node->Expanded());
    // Inside an update, before and after the first new node.
    view.Items().BeginUpdate();
    view.Items()[0]->SetExpanded(true);
    QVERIFY(view.Items()[0]->Expanded());
    view.Items().Add(u"x"_s);
    QVERIFY(view.Items()[0]->Expanded());
    view.FullExpand();
    view.Items().EndUpdate();
    QVERIFY(view.Items()[1]->Expanded());
    view.Items().BeginUpdate();
    view.Items().Add(u"y"_s);
    view.FullCollapse();
    view.Items().EndUpdate();
    QVERIFY(!view.Items()[0]->Expanded());
    view.Items()[3]->MakeVisible();
    QVERIFY(view.Items()[0]->Expanded());
    QVERIFY(view.Items()[1]->Expanded());
    view.resize(100, 60);
    QVERIFY(showActive(view));
    const auto last = [&view] { return view.Items()[view.Items().Count() - 1]; };
    last()->MakeVisible();
    const QRect row = view.visualRect(view.model()->index(view.model()->rowCount() - 1, 0));
    QVERIFY(view.viewport()->rect().intersects(row));
}

void tst_TreeView::deletesBranches()
{
    TTreeView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    fill(view);
    view.SetSelected(view.Items()[2]);
    view.Items()[1]->Delete();
    QCOMPARE(view.Items().Count(), 27);
    QCOMPARE(view.Items()[1]->Text(), u"0.1"_s);
    QCOMPARE(view.Items()[1]->Index(), 0);
    view.Items().BeginUpdate();
    view.SetSelected(view.Items()[2]);
    view.Items().Delete(view.Items()[0]);
    view.Items().EndUpdate();
    QCOMPARE(view.Items().Count(), 20);
    QVERIFY(!view.Selected());
    QCOMPARE(view.Items()[0]->Text(), u"1"_s);
    // Reused node slots start blank.
    TTreeNode *fresh = view.Items().Add(u"new"_s);
    QCOMPARE(fresh->Count(), 0);
    QCOMPARE(fresh->ImageIndex(), -1);
    QVERIFY(!fresh->Data());
}

void tst_TreeView::drawsAsToldByTheHandler()
{
    TTreeView view;
    fill(view);
    QVERIFY(showActive(view));
    QStringList drawn;
    view.OnCustomDrawItem = [&](TTreeView *sender, TTreeNode *node, QStyle::State, bool &) {
        drawn << node->Text();
        if (node->Level() < 2)
            sender->Canvas().Font.setBold(true);
    };
    const QImage bold = view.grab().toImage();
    QVERIFY(drawn.contains(u"0"_s));
    view.OnCustomDrawItem = nullptr;
    const QImage plain = view.grab().toImage();
    QVERIFY(bold != plain);
    view.OnCustomDrawItem = [&](TTreeView *, TTreeNode *, QStyle::State, bool &defaultDraw) {
        defaultDraw = false;
    };
    QVERIFY(view.grab().toImage() != plain);
    ReportCatcher reports;
    view.OnCustomDrawItem = [&](TTreeView *, TTreeNode *, QStyle::State, bool &) {
        throw EListError(u"draw"_s);
    };
    view.grab();
    QVERIFY(reports.messages.contains(u"draw"_s));
    view.OnCustomDrawItem = nullptr;
}

void tst_TreeView::passesKeysByReference()
{
    TTreeView view;
    fill(view);
    QVERIFY(showActive(view));
    view.SetSelected(view.Items()[0]);
    QList<quint16> keys;
    Qt::KeyboardModifiers shifts;
    view.OnKeyDown = [&](QObject *sender, quint16 &key, Qt::KeyboardModifiers shift) {
        QCOMPARE(sender, &view);
        keys << key;
        shifts = shift;
    };
    QTest::keyClick(&view, Qt::Key_F5, Qt::ShiftModifier);
    QCOMPARE(keys.last(), 116);
    QCOMPARE(shifts, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Right);
    QCOMPARE(keys.last(), 39);
    QVERIFY(view.Items()[0]->Expanded()); // the handler let the key through
    const QList<std::pair<Qt::Key, quint16>> codes{
        {Qt::Key_Backspace, 8},  {Qt::Key_Return, 13}, {Qt::Key_Enter, 13},    {Qt::Key_Escape, 27},
        {Qt::Key_Space, 32},     {Qt::Key_PageUp, 33}, {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},
        {Qt::Key_Home, 36},      {Qt::Key_Up, 38},     {Qt::Key_Down, 40},     {Qt::Key_Insert, 45},
        {Qt::Key_Delete, 46},    {Qt::Key_7, 55},      {Qt::Key_Q, 81},        {Qt::Key_Menu, 93},
        {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},  {Qt::Key_Minus, 109},   {Qt::Key_Slash, 111},
        {Qt::Key_F1, 112},       {Qt::Key_F12, 123},   {Qt::Key_Shift, 16},    {Qt::Key_Control, 17}};
    for (const auto &[key, code] : codes) {
        keys.clear();
        QTest::keyClick(&view, key);
        QCOMPARE(keys, QList<quint16>{code});
    }
    view.SetSelected(view.Items()[0]);
    view.Items()[0]->SetExpanded(true);
    view.OnKeyDown = [&](QObject *, quint16 &key, Qt::KeyboardModifiers) { key = 0; };
    QTest::keyClick(&view, Qt::Key_Left);
    QVERIFY(view.Items()[0]->Expanded()); // the handler consumed the key
    ReportCatcher reports;
    view.OnKeyDown = [&](QObject *, quint16 &, Qt::KeyboardModifiers) { throw EListError(u"key"_s); };
    QTest::keyClick(&view, Qt::Key_Left);
    QCOMPARE(reports.messages, QStringList({u"key"_s}));
}

void tst_TreeView::keysWithoutACodeGoOn()
{
    TTreeView view;
    for (const char *caption : {"Alpha", "(closed)", "Beta"})
        view.Items().Add(QString::fromUtf8(caption));
    QVERIFY(showActive(view));
    view.SetSelected(view.Items()[0]);
    QList<quint16> keys;
    view.OnKeyDown = [&](QObject *, quint16 &key, Qt::KeyboardModifiers) { keys << key; };
    QTest::keyClick(&view, '(');
    QCOMPARE(keys.size(), 1);
    QCOMPARE(keys.first(), quint16(0));
    QCOMPARE(view.Selected(), view.Items()[1]); // the key selected it by its caption
}

void tst_TreeView::aKeyHandlerMayReplaceItself()
{
    TTreeView view;
    fill(view);
    QVERIFY(showActive(view));
    const auto token = std::make_shared<int>(1);
    long uses = 0;
    view.OnKeyDown = [&view, &uses, token](QObject *, quint16 &, Qt::KeyboardModifiers) {
        const std::weak_ptr<int> held = token;
        view.OnKeyDown = nullptr;
        uses = held.use_count(); // what the handler has captured lives until it returns
    };
    QTest::keyClick(&view, Qt::Key_F2);
    QCOMPARE(uses, 2L);
    QCOMPARE(token.use_count(), 1L);
}

void tst_TreeView::enterAndExit()
{
    QWidget window;
    TTreeView view(&window);
    QLineEdit edit(&window);
    edit.setFocus();
    QVERIFY(showActive(window));
    QSignalSpy entered(&view, &TTreeView::Enter);
    QSignalSpy left(&view, &TTreeView::Exit);
    view.setFocus();
    QCOMPARE(entered.count(), 1);
    QCOMPARE(left.count(), 0);
    edit.setFocus();
    QCOMPARE(entered.count(), 1);
    QCOMPARE(left.count(), 1);
}

void tst_TreeView::doubleClicks()
{
    TTreeView view;
    fill(view);
    QVERIFY(showActive(view));
    QSignalSpy clicks(&view, &TTreeView::DoubleClick);
    const QPoint place = view.visualRect(view.model()->index(1, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(view.Selected()->Text(), u"1"_s);
}

void tst_TreeView::dragsAreDecidedByTheHandler()
{
    TTreeView view;
    fill(view);
    QVERIFY(showActive(view));
    QCOMPARE(view.DragMode(), TDragMode::dmManual);
    view.SetDragMode(TDragMode::dmAutomatic);
    QVERIFY(view.AutoDrag());
    const std::unique_ptr<QMimeData> data(view.model()->mimeData({view.model()->index(0, 0)}));
    const auto over = [&] {
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view.viewport(), &enter);
        QDragMoveEvent move(QPoint(5, 6), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view.viewport(), &move);
        return move.isAccepted();
    };
    QVERIFY(!over());
    QList<TDragState> states;
    view.OnDragOver = [&](QObject *sender, QObject *, int x, int, TDragState state, bool &accept) {
        QCOMPARE(sender, &view);
        QVERIFY(accept);
        states << state;
        if (state == TDragState::dsDragMove)
            QCOMPARE(x, 5);
    };
    QVERIFY(over());
    QCOMPARE(states, QList<TDragState>({TDragState::dsDragEnter, TDragState::dsDragMove}));
    view.OnDragOver = [&](QObject *, QObject *, int, int, TDragState, bool &accept) { accept = false; };
    QVERIFY(!over());
    // A drop alone changes nothing.
    const int count = view.Items().Count();
    QDropEvent drop(QPointF(5, 6), Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(view.viewport(), &drop);
    QCOMPARE(view.Items().Count(), count);
}

void tst_TreeView::editsLabelsUnlessReadOnly()
{
    TTreeView view;
    TTreeNode *node = view.Items().Add(u"old"_s);
    QVERIFY(showActive(view));
    view.SetSelected(node);
    view.SetReadOnly(true);
    QTest::keyClick(&view, Qt::Key_F2);
    QVERIFY(!view.viewport()->findChild<QLineEdit *>());
    view.SetReadOnly(false);
    QTest::keyClick(&view, Qt::Key_F2);
    auto *editor = view.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, u"new"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(node->Text(), u"new"_s);
}

namespace
{
QIcon plain(Qt::GlobalColor color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return QIcon(pixmap);
}

/// The pictures in the first node's row from left to right as the letters of their colours: "r", "g", "b".
QString pictures(TTreeView &view)
{
    const QImage image = view.grab().toImage();
    const QRect row = view.visualRect(view.model()->index(0, 0)).translated(view.viewport()->pos());
    QString all;
    for (int x = row.left(); x < row.left() + 48; ++x) {
        const QColor color = image.pixelColor(x, row.center().y());
        for (const auto &[known, letter] :
             {std::pair{Qt::red, u'r'}, std::pair{Qt::green, u'g'}, std::pair{Qt::blue, u'b'}}) {
            if (color == QColor(known) && !all.endsWith(QChar(letter)))
                all += QChar(letter);
        }
    }
    return all;
}
} // namespace

void tst_TreeView::showsPictures()
{
    TImageList images;
    images.Add(plain(Qt::red));
    images.Add(plain(Qt::green));
    TTreeView view;
    view.SetImages(&images);
    QCOMPARE(view.Images(), &images);
    TTreeNode *node = view.Items().Add(u"a"_s);
    node->SetImageIndex(0);
    node->SetSelectedIndex(1);
    QVERIFY(showActive(view));
    QCOMPARE(pictures(view), u"r"_s);
    node->SetSelected(true);
    view.setFocus();
    QVERIFY(!pictures(view).contains(u'r')); // the picture for selected nodes, tinted by the style
    const QImage own = view.grab().toImage();
    node->SetSelectedIndex(0);
    const QImage other = view.grab().toImage();
    QVERIFY(own != other);
    node->SetSelectedIndex(-1); // without a picture for the selected state the normal one is used
    QCOMPARE(view.grab().toImage(), other);
}

void tst_TreeView::showsStatePictures()
{
    TImageList images;
    images.Add(plain(Qt::red));
    TTreeView view;
    view.SetImages(&images);
    TTreeNode *node = view.Items().Add(u"a"_s);
    node->SetImageIndex(0);
    node->SetStateIndex(1);
    QCOMPARE(node->StateIndex(), 1);
    QVERIFY(!view.StateImages());
    QVERIFY(showActive(view));
    QCOMPARE(pictures(view), u"r"_s); // without state pictures none is drawn
    {
        TImageList states;
        states.Add(plain(Qt::green));
        states.Add(plain(Qt::blue));
        view.SetStateImages(&states);
        QCOMPARE(view.StateImages(), &states);
        QCOMPARE(pictures(view), u"br"_s);
        node->SetStateIndex(0);
        QCOMPARE(pictures(view), u"gr"_s);
        node->SetImageIndex(-1);
        QCOMPARE(pictures(view), u"g"_s);
        node->SetStateIndex(-1);
        QCOMPARE(pictures(view), QString());
        node->SetStateIndex(1);
        node->SetImageIndex(0);
    }
    QVERIFY(!view.StateImages());
    QCOMPARE(pictures(view), u"r"_s);
}

void tst_TreeView::outOfRange()
{
    TTreeView view;
    QVERIFY_THROWS_EXCEPTION(EListError, view.Items().Item(0));
    fill(view);
    QVERIFY_THROWS_EXCEPTION(EListError, view.Items().Item(-1));
    QVERIFY_THROWS_EXCEPTION(EListError, view.Items().Item(30));
    QVERIFY_THROWS_EXCEPTION(EListError, view.Items()[0]->Item(3));
}

void tst_TreeView::theChosenRowsPictureIsSeenInAnyWindow_data()
{
    QTest::addColumn<QString>("style");
    for (const QString &key : QStyleFactory::keys()) {
        // This style works with Windows' own platform plugin only.
        if (key != u"windowsvista" || QGuiApplication::platformName() == u"windows")
            QTest::addRow("%s", qPrintable(key)) << key;
    }
}

void tst_TreeView::theChosenRowsPictureIsSeenInAnyWindow()
{
    QFETCH(QString, style);
    const QString before = QApplication::style()->name();
    const auto restore = qScopeGuard([&before] { QApplication::setStyle(before); });
    QApplication::setStyle(style);
    TImageList images;
    images.Add(GlyphIcon(u"fund"_s));
    TTreeView view;
    view.resize(200, 100);
    view.SetImages(&images);
    fill(view);
    view.Items()[0]->SetImageIndex(0);
    view.SetSelected(view.Items()[0]);
    QPalette palette = view.palette();
    palette.setColor(QPalette::Highlight, Qt::darkBlue);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, Qt::lightGray); // as on Windows
    view.setPalette(palette);
    const QRect row = view.visualRect(view.currentIndex());
    const QImage image = view.viewport()->grab().toImage();
    int most = 0;
    for (int x = row.left() + 1; x < row.left() + 20; ++x) {
        for (int y = row.top() + 1; y < row.bottom(); ++y)
            most = std::max(
                most, std::abs(qGray(image.pixel(x, y)) - qGray(image.pixel(row.left() + 1, row.top() + 1))));
    }
    QVERIFY2(most > 96, qPrintable(QString::number(most)));
}

void tst_TreeView::imagesMayGoFirst()
{
    TTreeView view;
    {
        TImageList images;
        images.Add(QIcon());
        view.SetImages(&images);
        view.Items().Add(u"a"_s)->SetImageIndex(0);
    }
    QVERIFY(!view.Images());
    view.grab();
}

ZEL_TEST_MAIN(tst_TreeView)
#include "tst_treeview.moc"
