// labels: x11
#include "Frames.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "toolkit/TListView.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>

#include <functional>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

class tst_ListView : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void columns();
    void deletesColumns();
    void fillsInBulk();
    void announcesSingleChanges();
    void selectionAndFocus();
    void keepsSelectionOverAnUpdate();
    void severalSelected();
    void deletingLeavesNoSelection();
    void aListenerMayClearTheList();
    void aListenerMayDeleteTheNewItem();
    void aListenerMayDeleteWhatIsBeingDeleted();
    void checkBoxes();
    void enterExitResizedAndDoubleClick();
    void anotherWindowIsNoOtherWidget();
    void editsCaptionsUnlessReadOnly();
    void keepsItsPlaceOverAnUpdate();
    void picturesHaveTheirListsSize();
    void dragsAreDecidedByTheHandler();
    void outOfRange();
};

namespace
{

void fill(TListView &view, int count)
{
    view.Items().BeginUpdate();
    view.Items().Clear();
    for (int i = 0; i < count; ++i) {
        TListItem *item = view.Items().Add();
        item->SetCaption(u"item %1"_s.arg(i));
        item->AddSubItem(QString::number(i));
    }
    view.Items().EndUpdate();
}

} // namespace

void tst_ListView::columns()
{
    TListView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(view.AddColumn(u"Fund"_s, 150), 0);
    QCOMPARE(view.AddColumn(u"Fund Group"_s, 0), 1);
    QCOMPARE(view.ColumnCount(), 2);
    QCOMPARE(view.ColumnCaption(1), u"Fund Group"_s);
    QCOMPARE(view.ColumnWidth(0), 150);
    QCOMPARE(view.ColumnWidth(1), 0);
    QVERIFY(view.header()->isSectionHidden(1));
    view.SetColumnWidth(1, 3);
    QCOMPARE(view.ColumnWidth(1), 3);
    QVERIFY(!view.header()->isSectionHidden(1));
    view.SetColumnWidth(1, -5);
    QCOMPARE(view.ColumnWidth(1), 0);
    view.SetColumnCaption(0, u"F"_s);
    QCOMPARE(view.model()->headerData(0, Qt::Horizontal).toString(), u"F"_s);
    QCOMPARE(view.model()->headerData(0, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
             int(Qt::AlignLeft | Qt::AlignVCenter));
    fill(view, 3);
    QCOMPARE(view.ColumnWidth(0), 150); // filling the list again keeps the column widths
    QCOMPARE(view.ColumnWidth(1), 0);
    QVERIFY(!view.ColumnClick());
    view.SetColumnClick(true);
    QVERIFY(view.ColumnClick());
}

void tst_ListView::deletesColumns()
{
    TListView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (const char *caption : {"a", "b", "c"})
        view.AddColumn(QString::fromLatin1(caption), 50);
    TListItem *item = view.Items().Add();
    item->SetCaption(u"0"_s);
    item->SetSubItems({u"1"_s, u"2"_s});
    view.RemoveColumn(1);
    QCOMPARE(view.ColumnCount(), 2);
    QCOMPARE(item->SubItems(), QStringList({u"2"_s}));
    QCOMPARE(view.ColumnCaption(1), u"c"_s);
    view.RemoveColumn(0);
    QCOMPARE(item->Caption(), u"2"_s);
    view.RemoveColumn(0);
    QCOMPARE(item->Caption(), QString());
    QVERIFY_THROWS_EXCEPTION(EListError, view.RemoveColumn(0));
}

void tst_ListView::fillsInBulk()
{
    TListView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    view.AddColumn(u"a"_s, 100);
    view.AddColumn(u"b"_s, 100);
    QSignalSpy resets(view.model(), &QAbstractItemModel::modelReset);
    QSignalSpy inserts(view.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy told(&view, &TListView::ItemInserted);
    view.Items().BeginUpdate();
    for (int i = 0; i < 100; ++i) {
        TListItem *item = view.Items().Add();
        item->SetCaption(QString::number(i));
        item->SetSubItems({u"x"_s});
    }
    QCOMPARE(view.model()->rowCount(), 0);
    QVERIFY(!view.updatesEnabled());
    view.Items().EndUpdate();
    QVERIFY(view.updatesEnabled());
    QCOMPARE(inserts.count(), 0);
    QCOMPARE(resets.count(), 2);
    QCOMPARE(told.count(), 100);
    QCOMPARE(view.model()->rowCount(), 100);
    QCOMPARE(view.model()->index(99, 0).data().toString(), u"99"_s);
    QCOMPARE(view.model()->index(99, 1).data().toString(), u"x"_s);
}

void tst_ListView::announcesSingleChanges()
{
    TListView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    view.AddColumn(u"a"_s, 100);
    view.AddColumn(u"b"_s, 100);
    QSignalSpy inserts(view.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy told(&view, &TListView::ItemInserted);
    QSignalSpy changes(&view, &TListView::ItemChanged);
    TListItem *item = view.Items().Add();
    QCOMPARE(inserts.count(), 1);
    QCOMPARE(told.last().first().value<TListItem *>(), item);
    item->SetCaption(u"a"_s);
    item->SetSubItems({u"b"_s});
    item->SetSubItem(0, u"c"_s);
    item->AddSubItem(u"no column for this one"_s);
    item->SetImageIndex(2);
    QCOMPARE(changes.count(), 5);
    QCOMPARE(view.model()->index(0, 1).data().toString(), u"c"_s);
    QVERIFY_THROWS_EXCEPTION(EListError, item->SetSubItem(2, QString()));
    QCOMPARE(item->Index(), 0);
    QCOMPARE(item->ListView(), &view);
}

void tst_ListView::selectionAndFocus()
{
    TListView view;
    view.AddColumn(u"a"_s, 100);
    view.AddColumn(u"b"_s, 100);
    fill(view, 5);
    QVERIFY(showActive(view));
    QSignalSpy changes(&view, &TListView::ItemChanged);
    QVERIFY(!view.SelectedItem());
    TListItem *second = view.Items()[1];
    second->SetSelected(true);
    QCOMPARE(view.SelectedItem(), second);
    QCOMPARE(changes.count(), 1);
    view.Items()[2]->SetSelected(true);
    QVERIFY(!second->Selected());
    QCOMPARE(changes.count(), 3); // one signal for the deselected and one for the selected item
    view.Items()[2]->SetFocused(true);
    QVERIFY(view.Items()[2]->Focused());
    QTest::keyClick(&view, Qt::Key_Down);
    QCOMPARE(view.SelectedItem(), view.Items()[3]);
    QVERIFY(view.Items()[3]->Focused());
    view.Items()[3]->SetFocused(false);
    QVERIFY(!view.FocusedItem());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      view.visualRect(view.model()->index(0, 1)).center());
    QCOMPARE(view.SelectedItem(), view.Items()[0]);
    QCOMPARE(view.GetItemAt(5, view.visualRect(view.model()->index(4, 0)).center().y()), view.Items()[4]);
    QVERIFY(!view.GetItemAt(5, view.viewport()->height() - 1));
    view.SetSelected(nullptr);
    QVERIFY(!view.SelectedItem());
}

void tst_ListView::keepsSelectionOverAnUpdate()
{
    TListView view;
    view.AddColumn(u"a"_s, 100);
    fill(view, 5);
    view.SetSelected(view.Items()[3]);
    TListItem *third = view.Items()[3];
    view.Items().BeginUpdate();
    view.Items().Delete(0);
    QVERIFY(third->Selected());
    QVERIFY(third->Focused());
    view.Items().EndUpdate();
    QCOMPARE(view.SelectedItem(), third);
    QCOMPARE(view.FocusedItem(), third);
    QCOMPARE(third->Index(), 2);
    view.Items().BeginUpdate();
    view.Items().Add()->SetSelected(true);
    QVERIFY(!third->Selected());
    view.Items()[0]->SetSelected(true);
    view.Items()[0]->SetFocused(true);
    view.Items().EndUpdate();
    QCOMPARE(view.SelectedItem(), view.Items()[0]);
    view.Items().BeginUpdate();
    view.Items().Delete(0);
    view.Items().EndUpdate();
    QVERIFY(!view.SelectedItem());
}

void tst_ListView::severalSelected()
{
    TListView view;
    view.AddColumn(u"a"_s, 100);
    fill(view, 5);
    view.SetMultiSelect(true);
    view.Items()[3]->SetSelected(true);
    view.Items()[1]->SetSelected(true);
    QCOMPARE(view.SelectedItem(), view.Items()[1]);
    QVERIFY(view.Items()[3]->Selected());
    view.Items().BeginUpdate();
    view.Items().Add();
    view.Items()[0]->SetSelected(true);
    view.Items().EndUpdate();
    QVERIFY(view.Items()[3]->Selected());
    QCOMPARE(view.SelectedItem(), view.Items()[0]);
    view.Items()[0]->SetSelected(false);
    QCOMPARE(view.SelectedItem(), view.Items()[1]);
}

void tst_ListView::deletingLeavesNoSelection()
{
    TListView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    view.AddColumn(u"a"_s, 100);
    fill(view, 3);
    QVERIFY(showActive(view));
    view.SetSelected(view.Items()[1]);
    view.Items()[1]->Delete();
    QVERIFY(!view.SelectedItem());
    QCOMPARE(view.Items().Count(), 2);
    QCOMPARE(view.Items()[1]->Caption(), u"item 2"_s);
    QCOMPARE(view.Items()[1]->Index(), 1);
    view.SetSelected(view.Items()[1]);
    view.Items().Delete(0);
    QCOMPARE(view.SelectedItem(), view.Items()[0]);
    // A reused item slot starts blank.
    TListItem *fresh = view.Items().Add();
    QCOMPARE(fresh->Caption(), QString());
    QCOMPARE(fresh->ImageIndex(), -1);
    QVERIFY(!fresh->Data());
}

void tst_ListView::aListenerMayClearTheList()
{
    TListView view;
    view.AddColumn(u"a"_s, 100);
    fill(view, 5);
    view.SetMultiSelect(true);
    for (int i : {0, 2, 4})
        view.Items()[i]->SetSelected(true);
    int changes = 0;
    connect(&view, &TListView::ItemChanged, this, [&] {
        ++changes;
        view.Items().Clear();
    });
    view.SetSelected(nullptr);
    QCOMPARE(changes, 1); // the other items are gone, so there is nothing to report
    QCOMPARE(view.Items().Count(), 0);
    QVERIFY(!view.SelectedItem());
    // The same for items that are selected when an update ends.
    fill(view, 5);
    view.Items().BeginUpdate();
    view.Items().Add();
    for (int i : {1, 3, 5})
        view.Items()[i]->SetSelected(true);
    QCOMPARE(changes, 1);
    view.Items().EndUpdate();
    QCOMPARE(changes, 2);
    QCOMPARE(view.Items().Count(), 0);
    QVERIFY(!view.SelectedItem());
}

void tst_ListView::aListenerMayDeleteTheNewItem()
{
    auto view = std::make_unique<TListView>();
    const auto tester = std::make_unique<QAbstractItemModelTester>(
        view->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    view->AddColumn(u"a"_s, 100);
    fill(*view, 2);
    std::function<void(TListItem *)> answer = [](TListItem *item) { item->Delete(); };
    connect(view.get(), &TListView::ItemInserted, this, [&](TListItem *item) {
        const auto now = answer; // a copy, because the answer may replace itself
        now(item);
    });
    QVERIFY(!view->Items().Add());
    QCOMPARE(view->Items().Count(), 2);
    view->Items().BeginUpdate();
    QVERIFY(!view->Items().Add());
    view->Items().EndUpdate();
    QCOMPARE(view->Items().Count(), 2);
    // The replacement may have the deleted item's address.
    answer = [&](TListItem *item) {
        answer = [](TListItem *) {};
        item->Delete();
        view->Items().Add()->SetCaption(u"other"_s);
    };
    QVERIFY(!view->Items().Add());
    QCOMPARE(view->Items()[2]->Caption(), u"other"_s);
    answer = [&](TListItem *) { view->Items().Clear(); };
    QVERIFY(!view->Items().Add());
    QCOMPARE(view->Items().Count(), 0);
    answer = [](TListItem *) {};
    QVERIFY(view->Items().Add());
    answer = [&](TListItem *) { view.reset(); };
    QVERIFY(!view->Items().Add());
}

void tst_ListView::aListenerMayDeleteWhatIsBeingDeleted()
{
    TListView view;
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    view.AddColumn(u"a"_s, 100);
    fill(view, 4);
    // An item is deselected before it is deleted, and this is reported.
    const std::function<void(TListItem *)> answers[]{
        [](TListItem *item) { item->Delete(); },
        [&](TListItem *) { view.Items()[0]->Delete(); }, // an item before it
        [&](TListItem *) { view.Items().Clear(); },
    };
    const int left[]{3, 1, 0};
    for (int i = 0; i < 3; ++i) {
        view.Items()[view.Items().Count() - 1]->SetSelected(true);
        TListItem *const item = view.SelectedItem();
        bool told = false;
        const auto connection = connect(&view, &TListView::ItemChanged, this, [&](TListItem *changed) {
            if (changed == item && !std::exchange(told, true))
                answers[i](changed);
        });
        item->Delete();
        disconnect(connection);
        QVERIFY(told);
        QCOMPARE(view.Items().Count(), left[i]);
        QVERIFY(!view.SelectedItem());
    }
}

void tst_ListView::checkBoxes()
{
    TListView view;
    view.AddColumn(u"a"_s, 100);
    view.SetCheckBoxes(true);
    fill(view, 2);
    QVERIFY(showActive(view));
    QSignalSpy changes(&view, &TListView::ItemChanged);
    view.SetFocused(view.Items()[1]);
    QTest::keyClick(&view, Qt::Key_Space);
    QVERIFY(view.Items()[1]->Checked());
    QVERIFY(changes.count() >= 1);
    view.Items()[1]->SetChecked(false);
    QVERIFY(!view.Items()[1]->Checked());
    QCOMPARE(view.model()->index(1, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    // During a fill only a change of the check box is reported immediately.
    changes.clear();
    view.Items().BeginUpdate();
    TListItem *added = view.Items().Add();
    added->SetCaption(u"added"_s);
    added->SetSubItems({u"x"_s});
    QCOMPARE(changes.count(), 0);
    added->SetChecked(true);
    added->SetChecked(true);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last().first().value<TListItem *>(), added);
    view.Items().EndUpdate();
    QVERIFY(added->Checked());
    view.SetCheckBoxes(false);
    QVERIFY(!view.model()->index(1, 0).data(Qt::CheckStateRole).isValid());
}

void tst_ListView::enterExitResizedAndDoubleClick()
{
    QWidget window;
    window.resize(300, 200);
    TListView view(&window);
    view.resize(100, 100);
    view.AddColumn(u"a"_s, 50);
    fill(view, 2);
    QLineEdit edit(&window);
    edit.move(150, 0);
    edit.setFocus();
    QVERIFY(showActive(window));
    QSignalSpy entered(&view, &TListView::Enter);
    QSignalSpy left(&view, &TListView::Exit);
    QSignalSpy sized(&view, &TListView::Resized);
    QSignalSpy clicks(&view, &TListView::DoubleClick);
    view.setFocus();
    QCOMPARE(entered.count(), 1);
    edit.setFocus();
    QCOMPARE(left.count(), 1);
    view.resize(140, 100);
    QVERIFY(sized.count() >= 1);
    QCOMPARE(view.ClientWidth(), view.viewport()->width());
    const QPoint place = view.visualRect(view.model()->index(1, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(clicks.count(), 1);
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::RightButton, {}, place);
    QCOMPARE(clicks.count(), 1);
}

void tst_ListView::anotherWindowIsNoOtherWidget()
{
    QWidget window;
    TListView view(&window);
    view.AddColumn(u"a"_s, 50);
    QLineEdit edit(&window);
    view.setFocus();
    QVERIFY(showActive(window));
    QSignalSpy entered(&view, &TListView::Enter);
    QSignalSpy left(&view, &TListView::Exit);
    QWidget other;
    QVERIFY(showActive(other));
    QVERIFY(!view.hasFocus());
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_VERIFY(view.hasFocus());
    QCOMPARE(entered.count(), 0);
    QCOMPARE(left.count(), 0);
    edit.setFocus();
    QCOMPARE(left.count(), 1);
}

void tst_ListView::editsCaptionsUnlessReadOnly()
{
    TListView view;
    view.AddColumn(u"a"_s, 100);
    fill(view, 2);
    QVERIFY(showActive(view));
    view.SetSelected(view.Items()[1]);
    view.SetReadOnly(true);
    QTest::keyClick(&view, Qt::Key_F2);
    QVERIFY(!view.viewport()->findChild<QLineEdit *>());
    view.SetReadOnly(false);
    QSignalSpy changes(&view, &TListView::ItemChanged);
    QTest::keyClick(&view, Qt::Key_F2);
    auto *editor = view.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), u"item 1"_s);
    editor->selectAll();
    QTest::keyClicks(editor, u"new"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(view.Items()[1]->Caption(), u"new"_s);
    QCOMPARE(changes.count(), 1);
}

void tst_ListView::keepsItsPlaceOverAnUpdate()
{
    TListView view;
    view.AddColumn(u"a"_s, 100);
    view.resize(150, 100);
    fill(view, 100);
    QVERIFY(showActive(view));
    view.SetSelected(view.Items()[2]);
    view.Items()[60]->MakeVisible();
    const int place = view.verticalScrollBar()->value();
    QVERIFY(place > 0);
    view.Items().BeginUpdate();
    view.Items().Add()->SetCaption(u"added"_s);
    QCoreApplication::processEvents(); // a window handles events during a long fill
    view.Items().EndUpdate();
    QCOMPARE(view.verticalScrollBar()->value(), place);
    QCOMPARE(view.SelectedItem(), view.Items()[2]);
    QCOMPARE(view.FocusedItem(), view.Items()[2]);
    // Deleting the focused item leaves no item focused.
    view.Items().BeginUpdate();
    view.Items().Add();
    view.Items().Delete(2);
    QVERIFY(!view.FocusedItem());
    view.Items().EndUpdate();
    QVERIFY(!view.FocusedItem());
    QVERIFY(!view.SelectedItem());
}

void tst_ListView::picturesHaveTheirListsSize()
{
    TImageList images;
    images.Add(QIcon());
    TListView view;
    view.setIconSize(QSize(40, 40));
    view.SetSmallImages(&images);
    QCOMPARE(view.iconSize(), images.Size());
}

void tst_ListView::dragsAreDecidedByTheHandler()
{
    TListView view;
    view.AddColumn(u"a"_s, 50);
    fill(view, 2);
    QVERIFY(showActive(view));
    const std::unique_ptr<QMimeData> data(view.model()->mimeData({view.model()->index(0, 0)}));
    const auto over = [&] {
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view.viewport(), &enter);
        return enter.isAccepted();
    };
    QVERIFY(!over());
    view.OnDragOver = [](QObject *, QObject *, int, int, TDragState, bool &) {};
    QVERIFY(over());
    ReportCatcher reports;
    view.OnDragOver = [](QObject *, QObject *, int, int, TDragState, bool &) { throw EListError(u"drag"_s); };
    QVERIFY(!over());
    QCOMPARE(reports.messages, QStringList({u"drag"_s}));
    QDropEvent drop(QPointF(5, 6), Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(view.viewport(), &drop);
    QCOMPARE(view.Items().Count(), 2);
}

void tst_ListView::outOfRange()
{
    TListView view;
    QVERIFY_THROWS_EXCEPTION(EListError, view.Items().Item(0));
    QVERIFY_THROWS_EXCEPTION(EListError, view.Items().Delete(0));
    QVERIFY_THROWS_EXCEPTION(EListError, view.ColumnWidth(0));
    QVERIFY_THROWS_EXCEPTION(EListError, view.SetColumnWidth(-1, 5));
    // Items added before the first column appear with this column.
    view.Items().Add()->SetCaption(u"a"_s);
    view.AddColumn(u"c"_s, 50);
    QCOMPARE(view.model()->index(0, 0).data().toString(), u"a"_s);
}

ZEL_TEST_MAIN(tst_ListView)
#include "tst_listview.moc"
