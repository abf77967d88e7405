#include "DebugLine.h"
#include "Frames.h"
#include "ViewData.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "dataviews/ill_Misc.h"
#include "toolkit/TPanel.h"
#include "toolkit/TScreen.h"

#include <QTranslator>

namespace
{

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/// A dataset class that the reopening functions do not support.
class OtherDataSet : public TDataSet
{
public:
    explicit OtherDataSet(const TDataPacket &packet) : TDataSet(nullptr), m_packet(packet) {}

protected:
    TTablePtr FetchTable() override { return m_packet.Table(); }

private:
    TDataPacket m_packet;
};

QList<QVariantList> people()
{
    return {{1, s("Abel"), s("10.5"), s("1"), 2},
            {2, s("Baker"), s("1234.5"), s("0"), 1},
            {3, s("Baker"), s("-0.005"), QVariant(), 0},
            {4, s("Abel"), s("7"), s("1"), -1}};
}

QStringList peopleFields()
{
    return {s("#ID"), s("Name"), s("Amount"), s("Mark"), s("#Picture")};
}

QStringList captions(const TListView &view)
{
    QStringList all;
    for (int i = 0; i < view.Items().Count(); ++i)
        all << view.Items()[i]->Caption();
    return all;
}

/// The tree as a text: "a(b c(d)) e".
QString shape(const TTreeView &view)
{
    const std::function<QString(const TTreeNode *)> of = [&](const TTreeNode *node) {
        QStringList parts;
        for (; node; node = node->GetNextSibling()) {
            const QString below = of(node->GetFirstChild());
            parts << (below.isEmpty() ? node->Text()
                                      : node->Text() + QLatin1Char('(') + below + QLatin1Char(')'));
        }
        return parts.join(QLatin1Char(' '));
    };
    return of(view.Items().GetFirstNode());
}

/// Types, groups and funds in the order of their keys.
struct Catalogue {
    Source Types{{s("#GroupTypeID"), s("GroupTypeDesc")},
                 {{1, s(" Equity ")}, {2, s("Bond")}, {3, s("Empty")}}};
    Source Groups{{s("#GroupTypeID"), s("#FundGroupID"), s("FundGroupName")},
                  {{1, 10, s(" North ")}, {1, 11, s("South")}, {2, 20, s("East")}}};
    Source Funds{
        {s("#FundGroupID"), s("#FundID"), s("FundName")},
        {{10, 100, s("\tAlpha")}, {10, 101, s("Beta ")}, {20, 200, s("Gamma")}, {20, 201, QVariant()}}};
    QList<TDataSet *> Levels{&Types.DataSet, &Groups.DataSet, &Funds.DataSet};
    QStringList Links{s("GroupTypeID; GroupTypeID"), s("FundGroupID; FundGroupID")};
    QStringList Captions{s("GroupTypeDesc"), s("FundGroupName"), s("FundName")};
    QList<int> Images{8, 6, 7};

    void Build(TTreeView &view) { misc_BuildTreeView(view, Levels, Links, Captions, Images); }
    void Free(TTreeView &view)
    {
        for (int level = 0; level < 3; ++level)
            misc_FreeTreeBookMarks(view, level, Levels[level]);
    }
    int HandedOut() const
    {
        int sum = 0;
        for (const TDataSet *level : Levels)
            sum += level->BookmarksHandedOut();
        return sum;
    }
};

} // namespace

class tst_ill_Misc : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void init() override
    {
        ZelTest::init();
        Screen().SetCursor(TCursor::crDefault);
    }
    void cleanup() { QCOMPARE(Leftovers::Take(), QString()); }
    void sharedTypes();
    void convertStrToList_data();
    void convertStrToList();
    void convertListToStr();
    void removeChar();
    void execFunction();
    void calcFullName();
    void totalListViewColumn();

    void refreshClientDataSet();
    void refreshKeepsThePlaceByNumber();
    void refreshOfAnotherKind();
    void refreshErrorLeavesCursorAndControls();
    void closeTheQuery();

    void buildListView();
    void buildListViewFilters();
    void buildListViewDistinct();
    void buildListViewChecks();
    void buildListViewImages();
    void buildListViewErrors_data();
    void buildListViewErrors();
    void buildListViewAgain();
    void freeListBookMarks();
    void sizeListViewColumns();
    void deleteListViewColumn();
    void listViewFocus();
    void resetListViewFocus_data();
    void resetListViewFocus();
    void doesListItemExist();
    void clearViews();
    void oddCaptions();

    void buildComboBox();
    void theLineForAllIsTranslated();
    void buildComboBoxErrors();
    void freeComboBookMarks();

    void buildTreeView();
    void buildTreeViewAdditions();
    void buildTreeViewRuns();
    void buildTreeViewOfOneLevel();
    void buildTreeViewErrors();
    void buildTreeViewWithoutSomeNodes();
    void buildTreeViewMovedCursor();
    void buildTreeViewSharedCursor();
    void buildTreeViewAgain();
    void freeTreeBookMarks();
    void treeViewFocus();

    void fillsPaintOnce();
    void closedHalfWay();
    void destroyedHalfWay();
    void deathOfEitherSide();
    void showDataFields();
};

// ------------------------------------------------------------------------------------------ texts and values

void tst_ill_Misc::sharedTypes()
{
    QCOMPARE(int(dbInsert), 0);
    QCOMPARE(int(dbClear), 3);
    QCOMPARE(int(vtSelect), 0);
    QCOMPARE(int(vtEdit), 1);
    QCOMPARE(TCharSet().size(), std::size_t(256));
    const TCharSet set = Zel::CharSet(s("a\xC3\xBF\xE2\x82\xAC")); // a, y with dots, the euro sign
    QCOMPARE(set.count(), std::size_t(2));
    QVERIFY(set.test('a') && set.test(255));
    TSetofInt numbers;
    numbers.set(200);
    QVERIFY(numbers.test(200));
}

void tst_ill_Misc::convertStrToList_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("items"); // joined by "|"
    QTest::addColumn<int>("count");
    QTest::newRow("trimmed") << s("a; b ;c") << s("a|b|c") << 3;
    QTest::newRow("empty in the middle") << s("a;;b") << s("a||b") << 3;
    QTest::newRow("two at the end") << s("a;b;;") << s("a|b||") << 4;
    QTest::newRow("empty text") << QString() << QString() << 0;
    QTest::newRow("blank text") << s("  \t ") << QString() << 0;
    QTest::newRow("lone separator") << s(";") << QString() << 1;
    QTest::newRow("blank and separators") << s(" ;; ") << s("|") << 2;
    QTest::newRow("first empty") << s(";a") << s("|a") << 2;
    QTest::newRow("blank item before the end") << s("a; ;") << s("a||") << 3;
    QTest::newRow("quotes mean nothing") << s("\"a;b\"") << s("\"a|b\"") << 2;
    QTest::newRow("one") << s(" a ") << s("a") << 1;
}

void tst_ill_Misc::convertStrToList()
{
    QFETCH(QString, text);
    QFETCH(QString, items);
    QFETCH(int, count);
    const QStringList list = misc_ConvertStrToList(text, QLatin1Char(';'));
    QCOMPARE(list.join(QLatin1Char('|')), items);
    QCOMPARE(list.size(), count);
}

void tst_ill_Misc::convertListToStr()
{
    const QStringList ab{s("a"), s("b")};
    QCOMPARE(misc_ConvertListToStr(ab, s(";")), s("a;b"));
    QCOMPARE(misc_ConvertListToStr(ab, s("; ")), s("a; b;"));
    QCOMPARE(misc_ConvertListToStr({}, s(";")), QString());
    QCOMPARE(misc_ConvertListToStr({QString()}, s(";")), QString());
    QCOMPARE(misc_ConvertListToStr({s(" a "), QString()}, s(";")), s("a ;"));
    QCOMPARE(misc_ConvertListToStr(ab, QString()), s("ab"));
    QCOMPARE(misc_ConvertListToStr({s("a"), s("b ")}, s(";")),
             s("a;b")); // the last blank of "b " is removed, the separator follows it
}

void tst_ill_Misc::removeChar()
{
    const TCharSet comma = Zel::CharSet(s(","));
    QCOMPARE(misc_RemoveChar(s("1,234.50"), comma, true), s("1234.50"));
    QCOMPARE(misc_RemoveChar(s("1,234.50"), comma, false), s(","));
    QCOMPARE(misc_RemoveChar(s("1,234.50"), TCharSet(), true), QString());
    QCOMPARE(misc_RemoveChar(s("1,234.50"), TCharSet(), false), QString());
    QCOMPARE(misc_RemoveChar(QString(), comma, true), QString());
    QCOMPARE(misc_RemoveChar(s("a\xE2\x82\xAC,"), comma, true), s("a\xE2\x82\xAC"));
    QCOMPARE(misc_RemoveChar(s("a\xE2\x82\xAC,"), comma, false), s(","));
}

void tst_ill_Misc::execFunction()
{
    QCOMPARE(misc_ExecFunction(0, s(" as is ")), s(" as is "));
    QCOMPARE(misc_ExecFunction(1, s("1234567.891")), s("1,234,567.89"));
    QCOMPARE(misc_ExecFunction(1, s("0.125")), s("0.13"));
    QCOMPARE(misc_ExecFunction(2, s("x")), QString());
    QCOMPARE(misc_ExecFunction(-1, s("x")), QString());
    QVERIFY_THROWS_EXCEPTION(EConvertError, misc_ExecFunction(1, s("x")));
    QVERIFY_THROWS_EXCEPTION(EConvertError, misc_ExecFunction(1, QString()));
}

void tst_ill_Misc::calcFullName()
{
    QCOMPARE(misc_CalcFullName(s(" Smith "), s(" John ")), s("Smith, John"));
    QCOMPARE(misc_CalcFullName(s(" Smith "), s("  ")), s("Smith"));
    QCOMPARE(misc_CalcFullName(s("Smith"), QString()), s("Smith"));
    QCOMPARE(misc_CalcFullName(QString(), s("John")), s(", John"));
}

void tst_ill_Misc::totalListViewColumn()
{
    TListView view;
    const TCharSet comma = Zel::CharSet(s(","));
    view.AddColumn(s("a"), 50);
    view.AddColumn(s("b"), 50);
    QCOMPARE(misc_TotalListViewColumn(&view, 0, comma), 0.0);
    for (const char *text : {"1,000.50", "  ", "2"}) {
        TListItem *item = view.Items().Add();
        item->SetCaption(s(text));
        item->AddSubItem(s("1,000"));
    }
    QCOMPARE(misc_TotalListViewColumn(&view, 0, comma), 1002.5);
    QCOMPARE(misc_TotalListViewColumn(&view, 1, comma), 3000.0);
    QCOMPARE(misc_TotalListViewColumn(&view, 3, comma),
             0.0); // a column number greater than the number of columns
    // A number equal to the number of columns is not checked and addresses a missing sub-item.
    QVERIFY_THROWS_EXCEPTION(EListError, misc_TotalListViewColumn(&view, 2, comma));
    QVERIFY_THROWS_EXCEPTION(EListError, misc_TotalListViewColumn(&view, -1, comma));
    QVERIFY_THROWS_EXCEPTION(EConvertError, misc_TotalListViewColumn(&view, 1, Zel::CharSet(s("x"))));
    QVERIFY_THROWS_EXCEPTION(EConvertError,
                             misc_TotalListViewColumn(&view, 1, TCharSet())); // removes all characters
}

// -------------------------------------------------------------------------------------------------- datasets

void tst_ill_Misc::refreshClientDataSet()
{
    Source source(peopleFields(), people());
    TClientDataSet &data = source.DataSet;
    TCursor during = TCursor::crDefault;
    bool disabled = false;
    data.BeforeOpen = [&](TDataSet *) {
        during = Screen().Cursor();
        disabled = data.ControlsDisabled();
    };
    data.Last();
    source.Rows.append({5, s("New"), s("0"), s("0"), 0});
    misc_RefreshIT(&data, false);
    QCOMPARE(data.RecordCount(), 5);
    QCOMPARE(data.RecNo(), 1);
    QCOMPARE(during, TCursor::crSQLWait);
    QVERIFY(disabled);
    QVERIFY(!data.ControlsDisabled());
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
    // A closed dataset is opened.
    data.Close();
    misc_RefreshIT(&data, true);
    QVERIFY(data.Active());
    QCOMPARE(data.RecNo(), 1);
}

void tst_ill_Misc::refreshKeepsThePlaceByNumber()
{
    Source source(peopleFields(), people());
    TClientDataSet &data = source.DataSet;
    data.SetRecNo(3);
    misc_RefreshIT(&data, true);
    QCOMPARE(data.RecNo(), 3);
    QCOMPARE(data.BookmarksHandedOut(), 0);
    QCOMPARE(data.BookmarksLost(), 0);
    source.Rows.remove(1, 3);
    misc_RefreshIT(&data, true);
    QCOMPARE(data.RecNo(), 1); // limited by the number of rows
    source.Rows.clear();
    misc_RefreshIT(&data, true);
    QVERIFY(data.IsEmpty());
    misc_RefreshIT(&data, true);
    QCOMPARE(data.BookmarksHandedOut(), 0);
}

void tst_ill_Misc::refreshOfAnotherKind()
{
    Watched<OtherDataSet> data(packetOf(peopleFields(), people()));
    data.Open();
    data.Last();
    int closings = 0;
    data.BeforeClose = [&](TDataSet *) { ++closings; };
    misc_RefreshIT(&data, false);
    QCOMPARE(closings, 0);
    QCOMPARE(data.RecNo(), 4);
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
    misc_CloseTheQuery(&data);
    QVERIFY(data.Active());
    QVERIFY(!data.Reopen());
    misc_RefreshIT(nullptr, true);
    misc_CloseTheQuery(nullptr);
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
}

void tst_ill_Misc::refreshErrorLeavesCursorAndControls()
{
    Source source(peopleFields(), people());
    source.DataSet.BeforeOpen = [](TDataSet *) { throw EDatabaseError(s("not now")); };
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, misc_RefreshIT(&source.DataSet, true));
    QVERIFY(!source.DataSet.Active());
    QVERIFY(source.DataSet.ControlsDisabled());
    QCOMPARE(Screen().Cursor(), TCursor::crSQLWait);
}

void tst_ill_Misc::closeTheQuery()
{
    Source source(peopleFields(), people());
    misc_CloseTheQuery(&source.DataSet);
    QVERIFY(!source.DataSet.Active());
    misc_CloseTheQuery(&source.DataSet);
    QVERIFY(!source.DataSet.Active());
}

// ------------------------------------------------------------------------------------------------ list views

void tst_ill_Misc::buildListView()
{
    Source source(peopleFields(), people());
    TClientDataSet &data = source.DataSet;
    TListView view;
    view.AddColumn(s("Name"), 100);
    view.AddColumn(s("ID"), 100);
    view.AddColumn(s("Amount"), 100);
    TCursor during = TCursor::crDefault;
    connect(&view, &TListView::ItemInserted, this, [&] {
        during = Screen().Cursor();
        QVERIFY(view.Items().Updating());
    });
    misc_BuildListView(view, &data, QString(), s("Name; ID; Amount"), s("0;2;1"), QString(), false, -1,
                       QString());
    QCOMPARE(during, TCursor::crHourGlass);
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
    QVERIFY(!view.Items().Updating());
    QCOMPARE(captions(view), QStringList({s("Abel"), s("Baker"), s("Baker"), s("Abel")}));
    QCOMPARE(view.Items()[1]->SubItems(), QStringList({QString(), s("1,234.50")}));
    QCOMPARE(view.Items()[2]->SubItems().last(), s("-0.01"));
    QCOMPARE(view.Items()[0]->ImageIndex(), -1);
    QCOMPARE(data.BookmarksHandedOut(), 4);
    // Every item's bookmark leads to its row.
    for (int i = 0; i < 4; ++i) {
        data.GotoBookmark(view.Items()[i]->Data());
        QCOMPARE(data.RecNo(), i + 1);
    }
    misc_FreeListBookMarks(view, &data);
    QCOMPARE(data.BookmarksHandedOut(), 0);
    // An inactive dataset leaves the view unchanged.
    data.Close();
    misc_BuildListView(view, &data, QString(), s("Nonsense"), QString(), QString(), false, -1, QString());
    QCOMPARE(view.Items().Count(), 4);
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
}

void tst_ill_Misc::buildListViewFilters()
{
    Source source(peopleFields(), people());
    TClientDataSet &data = source.DataSet;
    TListView view;
    view.AddColumn(s("ID"), 100);
    misc_BuildListView(view, &data, s("Name = 'ABEL'"), s("ID"), s("0"), QString(), false, -1, QString());
    QCOMPARE(captions(view), QStringList({s("1"), s("4")}));
    QVERIFY(!data.Filtered());
    QCOMPARE(data.Filter(), s("Name = 'ABEL'"));
    QVERIFY(data.FilterOptions().testFlag(TFilterOption::CaseInsensitive));
    // A blank filter switches filtering off.
    data.SetFiltered(true);
    misc_BuildListView(view, &data, s("  "), s("ID"), s("0"), QString(), false, -1, QString());
    QCOMPARE(view.Items().Count(), 4);
    QVERIFY(!data.Filtered());
    misc_FreeListBookMarks(view, &data);
    QCOMPARE(data.BookmarksHandedOut(), 0);
}

void tst_ill_Misc::buildListViewDistinct()
{
    Source source({s("Key"), s("#ID")}, {{QVariant(), 0},
                                         {QString(), 1},
                                         {s("a"), 2},
                                         {s("a"), 3},
                                         {s("b"), 4},
                                         {s("a"), 5},
                                         {QString(), 6}});
    TListView view;
    view.AddColumn(s("ID"), 100);
    misc_BuildListView(view, &source.DataSet, QString(), s("ID"), s("0"), s("Key"), false, -1, QString());
    // Blank keys in the first rows equal the initial key; a row is skipped only when its key equals that of
    // the row before.
    QCOMPARE(captions(view), QStringList({s("2"), s("4"), s("5"), s("6")}));
    misc_BuildListView(view, &source.DataSet, QString(), s("ID"), s("0"), s("  "), false, -1, QString());
    QCOMPARE(view.Items().Count(), 7); // a blank field name means no field
    misc_FreeListBookMarks(view, &source.DataSet);
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
}

void tst_ill_Misc::buildListViewChecks()
{
    Source source(peopleFields(), people());
    TListView view;
    view.AddColumn(s("Name"), 100);
    view.AddColumn(s("ID"), 100);
    view.SetCheckBoxes(true);
    misc_BuildListView(view, &source.DataSet, QString(), s("Mark;Name;ID"), s("0;0;0"), QString(), true, -1,
                       QString());
    QCOMPARE(view.Items()[0]->Caption(), s("Abel"));
    QCOMPARE(view.Items()[0]->SubItems(), QStringList({s("1")}));
    QVERIFY(view.Items()[0]->Checked());
    QVERIFY(!view.Items()[1]->Checked());
    QVERIFY(!view.Items()[2]->Checked()); // a null is not checked
    // When the view has no check boxes or they are not requested, the first field is the caption.
    view.SetCheckBoxes(false);
    misc_BuildListView(view, &source.DataSet, QString(), s("Mark;Name;ID"), s("0;0;0"), QString(), true, -1,
                       QString());
    QCOMPARE(view.Items()[0]->Caption(), s("1"));
    QVERIFY(!view.Items()[0]->Checked());
    view.SetCheckBoxes(true);
    misc_BuildListView(view, &source.DataSet, QString(), s("Mark;Name;ID"), s("0;0;0"), QString(), false, -1,
                       QString());
    QCOMPARE(view.Items()[0]->Caption(), s("1"));
    // The field for the check box needs a format code, too.
    QVERIFY_THROWS_EXCEPTION(EListError, misc_BuildListView(view, &source.DataSet, QString(), s("Mark;Name"),
                                                            s("0"), QString(), true, -1, QString()));
    view.Items().EndUpdate();
    misc_FreeListBookMarks(view, &source.DataSet);
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
}

void tst_ill_Misc::buildListViewImages()
{
    Source source(peopleFields(), people());
    TListView view;
    view.AddColumn(s("Name"), 100);
    const auto images = [&](int index, const QString &field) {
        misc_BuildListView(view, &source.DataSet, QString(), s("Name"), s("0"), QString(), false, index,
                           field);
        QList<int> all;
        for (int i = 0; i < view.Items().Count(); ++i)
            all << view.Items()[i]->ImageIndex();
        return all;
    };
    QCOMPARE(images(5, s("Picture")), QList<int>({5, 5, 5, 5}));
    QCOMPARE(images(-1, s("Picture")), QList<int>({2, 1, 0, -1}));
    QCOMPARE(images(-1, s("  ")), QList<int>({-1, -1, -1, -1}));
    misc_FreeListBookMarks(view, &source.DataSet);
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
}

void tst_ill_Misc::buildListViewErrors_data()
{
    QTest::addColumn<QString>("fields");
    QTest::addColumn<QString>("formats");
    QTest::addColumn<QString>("distinct");
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("items");
    QTest::newRow("fewer codes than fields")
        << s("Name;ID") << s("0") << QString() << QString() << s("index") << 1;
    QTest::newRow("no codes") << s("Name") << QString() << QString() << QString() << s("index") << 1;
    QTest::newRow("no fields") << QString() << s("0") << QString() << QString() << s("index") << 1;
    QTest::newRow("code is no number")
        << s("Name") << s("zero") << QString() << QString() << s("convert") << 1;
    QTest::newRow("value is no number") << s("Name") << s("1") << QString() << QString() << s("convert") << 1;
    QTest::newRow("no such field") << s("Nobody") << s("0") << QString() << QString() << s("database") << 1;
    QTest::newRow("no such second field")
        << s("Name;X") << s("0;0") << QString() << QString() << s("database") << 1;
    QTest::newRow("no such distinct field")
        << s("Name") << s("0") << s("X") << QString() << s("database") << 0;
    QTest::newRow("no such image field") << s("Name") << s("0") << QString() << s("X") << s("database") << 1;
    QTest::newRow("image is no number") << s("Name") << s("0") << QString() << s("Name") << s("convert") << 1;
}

void tst_ill_Misc::buildListViewErrors()
{
    QFETCH(QString, fields);
    QFETCH(QString, formats);
    QFETCH(QString, distinct);
    QFETCH(QString, image);
    QFETCH(QString, kind);
    QFETCH(int, items);
    Source source(peopleFields(), people());
    TListView view;
    view.AddColumn(s("Name"), 100);
    QString raised;
    try {
        misc_BuildListView(view, &source.DataSet, QString(), fields, formats, distinct, false, -1, image);
    } catch (const EListError &) {
        raised = s("index");
    } catch (const EConvertError &) {
        raised = s("convert");
    } catch (const EDatabaseError &) {
        raised = s("database");
    }
    QCOMPARE(raised, kind);
    QCOMPARE(Screen().Cursor(), TCursor::crHourGlass);
    QVERIFY(view.Items().Updating());
    QCOMPARE(view.Items().Count(), items); // the item of the failing row was already added
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
    // Without rows none of these arguments is evaluated.
    view.Items().EndUpdate();
    source.Rows.clear();
    misc_RefreshIT(&source.DataSet, false);
    misc_BuildListView(view, &source.DataSet, QString(), fields, formats, distinct, false, -1, image);
    QCOMPARE(view.Items().Count(), 0);
    QVERIFY(!view.Items().Updating());
}

void tst_ill_Misc::buildListViewAgain()
{
    Source source(peopleFields(), people());
    TListView view;
    view.AddColumn(s("Name"), 100);
    for (int i = 0; i < 3; ++i)
        misc_BuildListView(view, &source.DataSet, QString(), s("Name"), s("0"), QString(), false, -1,
                           QString());
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 4);
    // A malformed filter is refused after the items were removed and their bookmarks freed.
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             misc_BuildListView(view, &source.DataSet, s("Name = "), s("Name"), s("0"),
                                                QString(), false, -1, QString()));
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
    QVERIFY(view.Items().Updating());
}

void tst_ill_Misc::freeListBookMarks()
{
    Source source(peopleFields(), people());
    Source other(peopleFields(), people());
    TListView view;
    view.AddColumn(s("Name"), 100);
    misc_BuildListView(view, &source.DataSet, QString(), s("Name"), s("0"), QString(), false, -1, QString());
    const TBookmark kept = view.Items()[0]->Data();
    const TBookmark taken = view.Items()[3]->Data();
    view.Items()[3]->SetData(nullptr);
    misc_FreeListBookMarks(view, &other.DataSet); // bookmarks of another dataset stay
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 4);
    misc_FreeListBookMarks(view, &source.DataSet);
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 1); // the bookmark that was taken from its item
    source.DataSet.FreeBookmark(taken);
    QCOMPARE(view.Items()[0]->Data(), kept);
    misc_FreeListBookMarks(view, &source.DataSet);
    // Bookmarks from before a reopening are refused.
    misc_RefreshIT(&source.DataSet, false);
    misc_FreeListBookMarks(view, &source.DataSet);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, source.DataSet.GotoBookmark(kept));
}

void tst_ill_Misc::sizeListViewColumns()
{
    TListView view;
    misc_SizeListViewColumns(view); // a view without columns
    view.setFrameShape(QFrame::NoFrame);
    view.resize(333, 100);
    for (int width : {100, 50, 50})
        view.AddColumn(QString(), width);
    QVERIFY(showActive(view));
    const int client = view.ClientWidth();
    QCOMPARE(client, 333);
    misc_SizeListViewColumns(view);
    // 50 %, 25 % and the rest: 166.5 is rounded to the even 166, 83.25 to 83.
    QCOMPARE(view.ColumnWidth(0), 166);
    QCOMPARE(view.ColumnWidth(1), 83);
    QCOMPARE(view.ColumnWidth(2), 333 - 166 - 83);
    // Hidden columns stay hidden, in the middle and at the end.
    view.SetColumnWidth(1, 0);
    view.SetColumnWidth(2, 0);
    misc_SizeListViewColumns(view);
    QCOMPARE(view.ColumnWidth(0), 333);
    QCOMPARE(view.ColumnWidth(1), 0);
    QCOMPARE(view.ColumnWidth(2), 0);
    // The same when rounding leaves a remainder: 166.5 twice.
    view.SetColumnWidth(0, 100);
    view.SetColumnWidth(1, 100);
    misc_SizeListViewColumns(view);
    QCOMPARE(view.ColumnWidth(1), 166);
    QCOMPARE(view.ColumnWidth(2), 0);
    // Percentages are rounded to whole numbers, halves to even: 12.5 of 100 is 12.
    view.SetColumnWidth(0, 25);
    view.SetColumnWidth(1, 75);
    view.SetColumnWidth(2, 100);
    misc_SizeListViewColumns(view);
    QCOMPARE(view.ColumnWidth(0), 40);  // 12 % of 333 is 39.96
    QCOMPARE(view.ColumnWidth(1), 127); // 37.5 is rounded to 38 %: 126.54
    QCOMPARE(view.ColumnWidth(2), 333 - 40 - 127);
    // All columns are hidden.
    for (int column = 0; column < 3; ++column)
        view.SetColumnWidth(column, 0);
    misc_SizeListViewColumns(view);
    QCOMPARE(view.ColumnWidth(2), 0);
    QVERIFY(view.updatesEnabled());
}

void tst_ill_Misc::deleteListViewColumn()
{
    QWidget window;
    TListView view(&window);
    QTreeView stranger(&window);
    view.AddColumn(s("a"), 50);
    view.AddColumn(s("b"), 50);
    QVERIFY(showActive(window));
    misc_DeleteListViewColumn(static_cast<int>(view.winId()), 0);
    QCOMPARE(view.ColumnCount(), 1);
    QCOMPARE(view.ColumnCaption(0), s("b"));
    misc_DeleteListViewColumn(static_cast<int>(view.winId()), 5);
    misc_DeleteListViewColumn(static_cast<int>(view.winId()), -1);
    misc_DeleteListViewColumn(static_cast<int>(stranger.winId()), 0);
    misc_DeleteListViewColumn(static_cast<int>(window.winId()), 0);
    misc_DeleteListViewColumn(0, 0);
    misc_DeleteListViewColumn(-1, 0);
    QCOMPARE(view.ColumnCount(), 1);
}

void tst_ill_Misc::listViewFocus()
{
    TListView view;
    view.AddColumn(s("a"), 50);
    misc_ListViewFocus(view);
    QVERIFY(!view.SelectedItem());
    for (int i = 0; i < 3; ++i)
        view.Items().Add();
    view.SetSelected(view.Items()[2]);
    misc_ListViewFocus(view);
    QVERIFY(view.Items()[0]->Selected());
    QVERIFY(view.Items()[0]->Focused());
    QVERIFY(!view.Items()[2]->Selected());
}

void tst_ill_Misc::resetListViewFocus_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("selected"); // -1 for none
    QTest::newRow("first of four") << 4 << 0 << 0;
    QTest::newRow("in the middle") << 4 << 1 << 1;
    QTest::newRow("last but one") << 4 << 2 << 2;
    QTest::newRow("last of four") << 4 << 3 << 2;
    QTest::newRow("behind the last") << 4 << 4 << 3;
    QTest::newRow("far behind") << 4 << 9 << -1;
    QTest::newRow("one left, first deleted") << 1 << 0 << -1;
    QTest::newRow("one left, last deleted") << 1 << 1 << 0;
    QTest::newRow("none left") << 0 << 0 << -1;
    QTest::newRow("negative") << 4 << -1 << -1;
}

void tst_ill_Misc::resetListViewFocus()
{
    QFETCH(int, count);
    QFETCH(int, index);
    QFETCH(int, selected);
    TListView view;
    view.AddColumn(s("a"), 50);
    for (int i = 0; i < count; ++i)
        view.Items().Add();
    misc_ResetListViewFocus(&view, index);
    QCOMPARE(view.SelectedItem() ? view.SelectedItem()->Index() : -1, selected);
}

void tst_ill_Misc::doesListItemExist()
{
    TListView view;
    view.AddColumn(s("a"), 50);
    QVERIFY(!misc_DoesListItemExist(&view, QString()));
    view.Items().Add()->SetCaption(s("  Money Market\t"));
    view.Items().Add()->SetCaption(s("\xC3\x84pfel"));
    QVERIFY(misc_DoesListItemExist(&view, s("MONEY market ")));
    QVERIFY(misc_DoesListItemExist(&view, s("\xC3\xA4pfel")));
    QVERIFY(!misc_DoesListItemExist(&view, s("Money")));
    QVERIFY(!misc_DoesListItemExist(&view, QString()));
}

void tst_ill_Misc::clearViews()
{
    Source source(peopleFields(), people());
    TListView list;
    list.AddColumn(s("a"), 50);
    misc_BuildListView(list, &source.DataSet, QString(), s("Name"), s("0"), QString(), false, -1, QString());
    QList<TBookmark> rows;
    for (int i = 0; i < list.Items().Count(); ++i)
        rows << list.Items()[i]->Data();
    misc_ClearListView(&list);
    QCOMPARE(list.Items().Count(), 0);
    QVERIFY(!list.Items().Updating());
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 4); // misc_ClearListView does not free bookmarks
    for (const TBookmark row : std::as_const(rows))
        source.DataSet.FreeBookmark(row);
    Catalogue catalogue;
    TTreeView tree;
    catalogue.Build(tree);
    const int out = catalogue.HandedOut();
    QList<std::pair<TDataSet *, TBookmark>> nodes;
    for (const TTreeNode *node = tree.Items().GetFirstNode(); node; node = node->GetNext())
        nodes.append({catalogue.Levels[node->Level()], node->Data()});
    misc_ClearTreeView(&tree);
    QCOMPARE(tree.Items().Count(), 0);
    QVERIFY(!tree.Items().Updating());
    QCOMPARE(catalogue.HandedOut(), out);
    for (const auto &[level, row] : std::as_const(nodes))
        level->FreeBookmark(row);
    QCOMPARE(catalogue.HandedOut(), 0);
}

void tst_ill_Misc::oddCaptions()
{
    const QString long1(1000000, QLatin1Char('x'));
    Source source({s("Name")},
                  {{QVariant()}, {long1}, {s("  blank first")}, {s("tab\there \xC3\xA9\xE2\x80\x93")}});
    TListView list;
    list.AddColumn(s("a"), 200);
    misc_BuildListView(list, &source.DataSet, QString(), s("Name"), s("0"), QString(), false, -1, QString());
    QCOMPARE(list.Items()[0]->Caption(), QString());
    QCOMPARE(list.Items()[1]->Caption(), long1);
    QCOMPARE(list.Items()[2]->Caption(), s("  blank first"));
    TTreeView tree;
    misc_BuildTreeView(tree, {&source.DataSet}, {}, {s("Name")}, {0});
    QCOMPARE(tree.Items()[2]->Text(), s("  blank first")); // root texts are not trimmed
    TComboBox combo;
    misc_FreeListBookMarks(list, &source.DataSet);
    misc_FreeTreeBookMarks(tree, 0, &source.DataSet);
    misc_BuildComboBox(combo, &source.DataSet, s("Name"), false, QString(), QString());
    QCOMPARE(combo.Items()[3], s("tab\there \xC3\xA9\xE2\x80\x93"));
    for (QWidget *view :
         {static_cast<QWidget *>(&list), static_cast<QWidget *>(&tree), static_cast<QWidget *>(&combo)}) {
        view->resize(200, 100);
        QVERIFY(!view->grab().isNull());
    }
    misc_FreeComboBookMarks(combo, &source.DataSet);
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
}

// ----------------------------------------------------------------------------------------------- combo boxes

void tst_ill_Misc::buildComboBox()
{
    Source source(peopleFields(), people());
    TClientDataSet &data = source.DataSet;
    data.Last();
    TComboBox combo;
    source.Rows.append({5, s("Cesar"), s("0"), s("0"), 0});
    misc_BuildComboBox(combo, &data, s("Name"), true, QString(), QString());
    QCOMPARE(combo.Items().Count(), 6); // the dataset is opened again first
    QCOMPARE(combo.Items()[0], s("ALL"));
    QVERIFY(!combo.Items().Object(0));
    QCOMPARE(combo.ItemIndex(), 0);
    QCOMPARE(combo.currentText(), s("ALL"));
    data.GotoBookmark(static_cast<TBookmark>(combo.Items().Object(5)));
    QCOMPARE(data.FieldByName(s("ID"))->AsInteger(), 5);
    QCOMPARE(data.BookmarksHandedOut(), 5);
    misc_FreeComboBookMarks(combo, &data);
    // The last match wins, case is ignored, and with ALL the indexes shift by one.
    misc_BuildComboBox(combo, &data, s("ID"), false, s("Name"), s("BAKER"));
    QCOMPARE(combo.currentText(), s("3"));
    misc_FreeComboBookMarks(combo, &data);
    misc_BuildComboBox(combo, &data, s("ID"), true, s("Name"), s("baker"));
    QCOMPARE(combo.currentText(), s("3"));
    QCOMPARE(combo.ItemIndex(), 3);
    misc_FreeComboBookMarks(combo, &data);
    misc_BuildComboBox(combo, &data, s("ID"), false, s("Name"), s("Nobody"));
    QCOMPARE(combo.ItemIndex(), 0);
    misc_FreeComboBookMarks(combo, &data);
    QCOMPARE(data.BookmarksHandedOut(), 0);
    source.Rows.clear();
    misc_BuildComboBox(combo, &data, s("ID"), false, QString(), QString());
    QCOMPARE(combo.ItemIndex(), -1);
    misc_BuildComboBox(combo, &data, s("ID"), true, QString(), QString());
    QCOMPARE(combo.currentText(), s("ALL"));
    QCOMPARE(data.BookmarksLost(), 0);
}

void tst_ill_Misc::theLineForAllIsTranslated()
{
    class Afrikaans : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            return qstrcmp(context, "ill_Misc") == 0 && qstrcmp(source, "ALL") == 0 ? s("ALMAL") : QString();
        }
    };
    Source source(peopleFields(), {});
    TComboBox combo;
    Afrikaans language;
    QCoreApplication::installTranslator(&language);
    misc_BuildComboBox(combo, &source.DataSet, s("Name"), true, QString(), QString());
    QCoreApplication::removeTranslator(&language);
    QCOMPARE(combo.currentText(), s("ALMAL"));
}

void tst_ill_Misc::buildComboBoxErrors()
{
    Source source(peopleFields(), people());
    TComboBox combo;
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             misc_BuildComboBox(combo, &source.DataSet, s("X"), false, QString(), QString()));
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             misc_BuildComboBox(combo, &source.DataSet, s("ID"), false, s("X"), QString()));
    QVERIFY(!combo.Items().Updating());
    misc_FreeComboBookMarks(combo, &source.DataSet);
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
    QCOMPARE(Screen().Cursor(), TCursor::crDefault);
}

void tst_ill_Misc::freeComboBookMarks()
{
    Source source(peopleFields(), people());
    Source other(peopleFields(), people());
    TComboBox combo;
    misc_BuildComboBox(combo, &source.DataSet, s("ID"), true, QString(), QString());
    {
        const DebugLine line("x=5");
        misc_FreeComboBookMarks(combo, &other.DataSet);
        QVERIFY(line.Came());
    }
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 4);
    void *kept = combo.Items().Object(1);
    const DebugLine line("x=5");
    misc_FreeComboBookMarks(combo, &source.DataSet);
    QVERIFY(line.Came());
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
    QCOMPARE(combo.Items().Object(1), kept);
}

// ------------------------------------------------------------------------------------------------ tree views

void tst_ill_Misc::buildTreeView()
{
    Catalogue catalogue;
    TTreeView view;
    view.Items().Add(s("stays"));
    misc_BuildTreeView(view, {}, {}, {}, {});
    QCOMPARE(shape(view), s("stays"));
    view.Items().Clear();
    catalogue.Build(view);
    // Only texts below the root are trimmed; a parent without rows below it appears without children.
    QCOMPARE(shape(view), s(" Equity (North(Alpha Beta) South) Bond(East(Gamma )) Empty"));
    for (const TTreeNode *node = view.Items().GetFirstNode(); node; node = node->GetNext()) {
        QCOMPARE(node->ImageIndex(), catalogue.Images[node->Level()]);
        QCOMPARE(node->SelectedIndex(), node->ImageIndex());
        TDataSet *level = catalogue.Levels[node->Level()];
        level->GotoBookmark(node->Data());
        QCOMPARE(level->FieldByName(catalogue.Captions[node->Level()])->AsString().trimmed(),
                 node->Text().trimmed());
    }
    QCOMPARE(catalogue.HandedOut(), view.Items().Count());
    catalogue.Free(view);
    QCOMPARE(catalogue.HandedOut(), 0);
}

void tst_ill_Misc::buildTreeViewAdditions()
{
    Catalogue catalogue;
    TTreeView view;
    QStringList added;
    view.OnAddition = [&](TTreeNode *node) {
        added << node->Text();
        QCOMPARE(node->ImageIndex(), -1); // pictures are set afterwards
        catalogue.Levels[node->Level()]->GotoBookmark(node->Data());
        if (node->Level() == 1 && catalogue.Groups.DataSet.FieldByName(s("FundGroupID"))->AsInteger() == 11)
            node->SetText(node->Text() + s(" *"));
    };
    catalogue.Build(view);
    QCOMPARE(added, QStringList({s(" Equity "), s("North"), s("Alpha"), s("Beta"), s("South"), s("Bond"),
                                 s("East"), s("Gamma"), QString(), s("Empty")}));
    QCOMPARE(shape(view), s(" Equity (North(Alpha Beta) South *) Bond(East(Gamma )) Empty"));
    catalogue.Free(view);
}

void tst_ill_Misc::buildTreeViewRuns()
{
    // A parent's children are the first run of consecutive rows with its key; later rows with this key are
    // not found.
    Source parents({s("#K"), s("Name")}, {{1, s("a")}, {2, s("b")}});
    Source children({s("#K"), s("Name")}, {{2, s("x")}, {1, s("y")}, {1, s("z")}, {2, s("lost")}});
    TTreeView view;
    misc_BuildTreeView(view, {&parents.DataSet, &children.DataSet}, {s("K;K")}, {s("Name"), s("Name")},
                       {0, 0});
    QCOMPARE(shape(view), s("a(y z) b(x)"));
    misc_FreeTreeBookMarks(view, 0, &parents.DataSet);
    misc_FreeTreeBookMarks(view, 1, &children.DataSet);
    // The run ends where the child's field with the parent's field name has another value.
    Source up({s("#ID"), s("Name")}, {{1, s("a")}});
    Source down({s("#Up"), s("#ID"), s("Name")}, {{1, 1, s("x")}, {1, 1, s("y")}, {1, 9, s("z")}});
    misc_BuildTreeView(view, {&up.DataSet, &down.DataSet}, {s("ID;Up")}, {s("Name"), s("Name")}, {0, 0});
    QCOMPARE(shape(view), s("a(x y)"));
    // When the child has no such field, the first child is added and the error is thrown.
    Source bare({s("#Up"), s("Name")}, {{1, s("x")}, {1, s("y")}});
    misc_FreeTreeBookMarks(view, 0, &up.DataSet);
    misc_FreeTreeBookMarks(view, 1, &down.DataSet);
    QVERIFY_THROWS_EXCEPTION(
        EDatabaseError,
        misc_BuildTreeView(view, {&up.DataSet, &bare.DataSet}, {s("ID;Up")}, {s("Name"), s("Name")}, {0, 0}));
    QCOMPARE(shape(view), s("a(x)"));
    misc_FreeTreeBookMarks(view, 0, &up.DataSet);
    misc_FreeTreeBookMarks(view, 1, &bare.DataSet);
    for (TClientDataSet *data :
         {&parents.DataSet, &children.DataSet, &up.DataSet, &down.DataSet, &bare.DataSet})
        QCOMPARE(data->BookmarksHandedOut(), 0);
}

void tst_ill_Misc::buildTreeViewOfOneLevel()
{
    Source source(peopleFields(), people());
    TTreeView view;
    for (const QStringList &links : {QStringList(), QStringList(QString()), QStringList(s("ID"))}) {
        misc_BuildTreeView(view, {&source.DataSet}, links, {s("Name")}, {3});
        QCOMPARE(shape(view), s("Abel Baker Baker Abel"));
    }
    // Fewer than two names for a level build the root level only.
    misc_BuildTreeView(view, {&source.DataSet, &source.DataSet}, {s("ID")}, {s("Name"), s("Name")}, {3, 3});
    QCOMPARE(shape(view), s("Abel Baker Baker Abel"));
    misc_FreeTreeBookMarks(view, 0, &source.DataSet);
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 0);
}

void tst_ill_Misc::buildTreeViewErrors()
{
    Catalogue catalogue;
    TTreeView view;
    const QStringList links = catalogue.Links;
    const QStringList captionFields = catalogue.Captions;
    const QList<int> images = catalogue.Images;
    const auto fails = [&] {
        QString raised;
        try {
            catalogue.Build(view);
        } catch (const EListError &) {
            raised = s("index");
        } catch (const EDatabaseError &) {
            raised = s("database");
        }
        if (view.Items().Updating())
            raised += s(" updating");
        for (int level = 0; level < 3; ++level) {
            if (catalogue.Levels[level]->Active())
                misc_FreeTreeBookMarks(view, level, catalogue.Levels[level]);
        }
        if (catalogue.HandedOut() != 0)
            raised += s(" lost");
        catalogue.Links = links;
        catalogue.Captions = captionFields;
        catalogue.Images = images;
        return raised;
    };
    catalogue.Captions[0] = s("X");
    QCOMPARE(fails(), s("database"));
    catalogue.Captions[2] = s("X");
    QCOMPARE(fails(), s("database"));
    QCOMPARE(view.Items().Count(), 2); // nodes added before the error stay
    catalogue.Captions.removeLast();
    QCOMPARE(fails(), s("index"));
    catalogue.Images.removeLast();
    QCOMPARE(fails(), s("index"));
    catalogue.Images.clear();
    QCOMPARE(fails(), s("index"));
    catalogue.Links.removeLast();
    QCOMPARE(fails(), s("index"));
    catalogue.Links[0] = s("X;GroupTypeID");
    QCOMPARE(fails(), s("database"));
    catalogue.Links[0] = s("GroupTypeID;X");
    QCOMPARE(fails(), s("database"));
    catalogue.Links[0] = s(";GroupTypeID");
    QCOMPARE(fails(), s("database"));
    QCOMPARE(fails(), QString());
    catalogue.Funds.DataSet.Close();
    QCOMPARE(fails(), s("database"));
    catalogue.Types.DataSet.Close();
    QCOMPARE(fails(), s("database"));
    QCOMPARE(view.Items().Count(), 0);
}

void tst_ill_Misc::buildTreeViewWithoutSomeNodes()
{
    // The host's handler deletes unwanted nodes and frees their bookmarks.
    Catalogue catalogue;
    TTreeView view;
    QStringList unwanted{s("North"), s("Gamma"), s("Empty")};
    view.OnAddition = [&](TTreeNode *node) {
        if (!unwanted.contains(node->Text()))
            return;
        catalogue.Levels[node->Level()]->FreeBookmark(node->Data());
        node->Delete();
    };
    catalogue.Build(view);
    QCOMPARE(shape(view), s(" Equity (South) Bond(East)"));
    QCOMPARE(catalogue.HandedOut(), view.Items().Count());
    catalogue.Free(view);
    Source source(peopleFields(), people());
    TListView list;
    list.AddColumn(s("Name"), 100);
    connect(&list, &TListView::ItemInserted, this, [&](TListItem *item) {
        if (source.DataSet.RecNo() == 2)
            item->Delete();
    });
    misc_BuildListView(list, &source.DataSet, QString(), s("Name"), s("0"), QString(), false, -1, QString());
    QCOMPARE(captions(list), QStringList({s("Abel"), s("Baker"), s("Abel")}));
    QCOMPARE(source.DataSet.BookmarksHandedOut(), 3);
    misc_FreeListBookMarks(list, &source.DataSet);
}

void tst_ill_Misc::buildTreeViewMovedCursor()
{
    // The host's handler moves the children's cursor; each row still appears once and in order.
    Catalogue catalogue;
    TTreeView view;
    view.OnAddition = [&](TTreeNode *node) {
        if (node->Level() == 2)
            catalogue.Levels[2]->First();
    };
    catalogue.Build(view);
    QCOMPARE(shape(view), s(" Equity (North(Alpha Beta) South) Bond(East(Gamma )) Empty"));
    catalogue.Free(view);
    QCOMPARE(catalogue.HandedOut(), 0);
}

void tst_ill_Misc::buildTreeViewSharedCursor()
{
    Catalogue catalogue;
    TClientDataSet &groups = catalogue.Groups.DataSet;
    TTreeView view;
    // Two levels below the root use one dataset: after its children each row is found again.
    misc_BuildTreeView(view, {&catalogue.Types.DataSet, &groups, &groups},
                       {s("GroupTypeID;GroupTypeID"), s("FundGroupID;FundGroupID")},
                       {s("GroupTypeDesc"), s("FundGroupName"), s("FundGroupName")}, {8, 6, 7});
    QCOMPARE(shape(view), s(" Equity (North(North) South(South)) Bond(East(East)) Empty"));
    misc_FreeTreeBookMarks(view, 0, &catalogue.Types.DataSet);
    misc_FreeTreeBookMarks(view, 1, &groups);
    misc_FreeTreeBookMarks(view, 2, &groups);
    // When root and children share a dataset, the root continues after the children's rows.
    misc_BuildTreeView(view, {&groups, &groups}, {s("FundGroupID;FundGroupID")},
                       {s("FundGroupName"), s("FundGroupName")}, {6, 7});
    QCOMPARE(shape(view), s(" North (North) East(East)"));
    misc_FreeTreeBookMarks(view, 0, &groups);
    misc_FreeTreeBookMarks(view, 1, &groups);
}

void tst_ill_Misc::buildTreeViewAgain()
{
    Catalogue catalogue;
    TTreeView view;
    for (int i = 0; i < 3; ++i)
        catalogue.Build(view);
    QCOMPARE(catalogue.HandedOut(), view.Items().Count());
    catalogue.Groups.DataSet.SetFilter(s("FundGroupID <> 10"));
    catalogue.Groups.DataSet.SetFiltered(true);
    catalogue.Build(view);
    QCOMPARE(shape(view), s(" Equity (South) Bond(East(Gamma )) Empty"));
    QCOMPARE(catalogue.HandedOut(), view.Items().Count());
    catalogue.Types.Rows.clear();
    misc_FreeTreeBookMarks(view, 0, &catalogue.Types.DataSet);
    misc_RefreshIT(&catalogue.Types.DataSet, false);
    catalogue.Build(view);
    QCOMPARE(view.Items().Count(), 0);
    QCOMPARE(catalogue.HandedOut(), 0);
}

void tst_ill_Misc::freeTreeBookMarks()
{
    Catalogue catalogue;
    TTreeView view;
    catalogue.Build(view);
    misc_FreeTreeBookMarks(view, 1, &catalogue.Groups.DataSet);
    QCOMPARE(catalogue.Groups.DataSet.BookmarksHandedOut(), 0);
    QCOMPARE(catalogue.Types.DataSet.BookmarksHandedOut(), 3);
    QCOMPARE(catalogue.Funds.DataSet.BookmarksHandedOut(), 4);
    for (const TTreeNode *node = view.Items().GetFirstNode(); node; node = node->GetNext())
        QCOMPARE(node->Data() == nullptr, node->Level() == 1);
    misc_FreeTreeBookMarks(view, 1, &catalogue.Groups.DataSet); // no bookmarks are left
    misc_FreeTreeBookMarks(view, 7, &catalogue.Groups.DataSet);
    misc_FreeTreeBookMarks(view, -1, &catalogue.Groups.DataSet);
    catalogue.Free(view);
    QCOMPARE(catalogue.HandedOut(), 0);
}

void tst_ill_Misc::treeViewFocus()
{
    TTreeView view;
    misc_TreeViewFocus(view);
    QVERIFY(!view.Selected());
    view.Items().Add(s("a"));
    view.Items().Add(s("b"));
    misc_TreeViewFocus(view);
    QCOMPARE(view.Selected(), view.Items()[0]);
}

// --- handlers and listeners that close, reopen or destroy during a fill

void tst_ill_Misc::fillsPaintOnce()
{
    class Paints : public QObject
    {
    public:
        int Count = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            Count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };
    Source source(peopleFields(), people());
    TClientDataSet &data = source.DataSet;
    QWidget window;
    TListView list(&window);
    list.AddColumn(s("a"), 50);
    TTreeView tree(&window);
    tree.setGeometry(110, 0, 100, 100);
    TComboBox combo(&window);
    combo.move(220, 0);
    window.resize(400, 120);
    QVERIFY(showActive(window));
    const auto paintsOf = [](QWidget *painted, const std::function<void()> &fill) {
        QCoreApplication::processEvents();
        Paints paints;
        painted->installEventFilter(&paints);
        fill();
        QCoreApplication::processEvents();
        return paints.Count;
    };
    for (int round = 0; round < 2; ++round) { // empty views in the first round, filled ones in the second
        QCOMPARE(paintsOf(list.viewport(),
                          [&] {
                              misc_BuildListView(list, &data, QString(), s("Name"), s("0"), QString(), false,
                                                 -1, QString());
                          }),
                 1);
        misc_FreeListBookMarks(list, &data);
        QCOMPARE(paintsOf(tree.viewport(), [&] { misc_BuildTreeView(tree, {&data}, {}, {s("Name")}, {0}); }),
                 1);
        misc_FreeTreeBookMarks(tree, 0, &data);
        QCOMPARE(
            paintsOf(&combo,
                     [&] { misc_BuildComboBox(combo, &data, s("Name"), round == 0, QString(), QString()); }),
            1);
        const DebugLine line(round == 0 ? "x=5" : "x=4");
        misc_FreeComboBookMarks(combo, &data);
        QVERIFY(line.Came());
    }
    // Sizing columns and switching a page also paint once, because both lock the window's updates.
    list.AddColumn(s("b"), 70);
    list.AddColumn(s("c"), 70);
    QCOMPARE(paintsOf(list.viewport(), [&] { misc_SizeListViewColumns(list); }), 1);
    TPanel browse(&window);
    TPanel fields(&window);
    browse.show();
    QCOMPARE(
        paintsOf(tree.viewport(),
                 [&] { misc_ShowDataFields(&browse, &fields, nullptr, nullptr, 0, true, &tree, &list); }),
        1);
}

void tst_ill_Misc::closedHalfWay()
{
    Catalogue catalogue;
    TTreeView tree;
    for (int level = 0; level < 3; ++level) {
        tree.OnAddition = [&](TTreeNode *node) {
            if (node->Level() == level)
                catalogue.Levels[level]->Close();
        };
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, catalogue.Build(tree));
        QVERIFY(!tree.Items().Updating());
        catalogue.Levels[level]->Open();
    }
    // When the dataset is reopened during the fill, the position in its rows is lost.
    tree.OnAddition = [&](TTreeNode *node) {
        if (node->Text() == s("Beta"))
            misc_RefreshIT(&catalogue.Funds.DataSet, false);
    };
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, catalogue.Build(tree));
    catalogue.Free(tree);
    catalogue.Types.DataSet.ExpectLost(1);
    catalogue.Groups.DataSet.ExpectLost(1);
    catalogue.Funds.DataSet.ExpectLost(3);
    Source source(peopleFields(), people());
    source.DataSet.ExpectLost(1);
    TListView list;
    list.AddColumn(s("a"), 50);
    connect(&list, &TListView::ItemInserted, this, [&] {
        if (list.Items().Count() == 2)
            source.DataSet.Close();
    });
    QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                             misc_BuildListView(list, &source.DataSet, QString(), s("Name;ID"), s("0;0"),
                                                s("ID"), false, -1, QString()));
    QCOMPARE(list.Items().Count(), 2);
    // A listener closes the dataset, or opens it again with other rows, while a combo box is filled.
    Source types(peopleFields(), people());
    TComboBox combo;
    int moves = 0;
    std::function<void()> interrupt = [&] { types.DataSet.Close(); };
    connect(&types.DataSet, &TDataSet::DataChange, this, [&] {
        if (types.DataSet.Active() && types.DataSet.RecNo() == 3 && ++moves == 1)
            interrupt();
    });
    misc_BuildComboBox(combo, &types.DataSet, s("Name"), false, s("ID"), s("2"));
    QCOMPARE(combo.Items().Count(), 2);
    QCOMPARE(combo.currentText(), s("Baker"));
    moves = 0;
    types.DataSet.ExpectLost(4);
    interrupt = [&] {
        types.DataSet.Close();
        types.DataSet.Open();
    };
    misc_BuildComboBox(combo, &types.DataSet, s("Name"), false, s("ID"), s("2"));
    QCOMPARE(combo.Items().Count(), 6); // two rows from before the reopening, then all new ones
    misc_FreeComboBookMarks(combo, &types.DataSet);
}

void tst_ill_Misc::destroyedHalfWay()
{
    auto data = std::make_unique<Watched<TClientDataSet>>();
    data->SetData(packetOf(peopleFields(), people()).ToVariant());
    data->ExpectOut(1);
    TTreeView tree;
    tree.OnAddition = [&](TTreeNode *) { data.reset(); };
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, misc_BuildTreeView(tree, {data.get()}, {}, {s("Name")}, {0}));
    QCOMPARE(tree.Items().Count(), 1);
    data = std::make_unique<Watched<TClientDataSet>>();
    data->SetData(packetOf(peopleFields(), people()).ToVariant());
    TListView list;
    list.AddColumn(s("a"), 50);
    connect(&list, &TListView::ItemInserted, this, [&] { data.reset(); });
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, misc_BuildListView(list, data.get(), QString(), s("Name"),
                                                                s("0"), QString(), false, -1, QString()));
}

void tst_ill_Misc::deathOfEitherSide()
{
    auto list = std::make_unique<TListView>();
    list->AddColumn(s("a"), 50);
    auto tree = std::make_unique<TTreeView>();
    auto combo = std::make_unique<TComboBox>();
    {
        Source source(peopleFields(), people());
        misc_BuildComboBox(*combo, &source.DataSet, s("Name"), false, QString(), QString());
        misc_BuildListView(*list, &source.DataSet, QString(), s("Name"), s("0"), QString(), false, -1,
                           QString());
        misc_BuildTreeView(*tree, {&source.DataSet}, {}, {s("Name")}, {0});
        source.DataSet.ExpectOut(12);
    }
    // The views work without their dataset; another dataset does not free their bookmarks.
    QVERIFY(!list->grab().isNull());
    QVERIFY(!tree->grab().isNull());
    QVERIFY(!combo->grab().isNull());
    Source other(peopleFields(), people());
    misc_FreeListBookMarks(*list, &other.DataSet);
    misc_FreeTreeBookMarks(*tree, 0, &other.DataSet);
    misc_FreeComboBookMarks(*combo, &other.DataSet);
    misc_BuildListView(*list, &other.DataSet, QString(), s("Name"), s("0"), QString(), false, -1, QString());
    misc_BuildTreeView(*tree, {&other.DataSet}, {}, {s("Name")}, {0});
    // Views are destroyed first: the dataset still counts its bookmarks and can be closed.
    list.reset();
    tree.reset();
    QCOMPARE(other.DataSet.BookmarksHandedOut(), 8);
    other.DataSet.Close();
    QCOMPARE(other.DataSet.BookmarksHandedOut(), 0);
    QCOMPARE(other.DataSet.BookmarksLost(), 8);
    other.DataSet.ExpectLost(8);
}

void tst_ill_Misc::showDataFields()
{
    QWidget window;
    TPanel browse(&window);
    TPanel fields(&window);
    TPanel third(&window);
    TPanel fourth(&window);
    TTreeView tree(&window);
    TListView list(&window);
    fields.hide();
    third.hide();
    fourth.hide();
    QVERIFY(showActive(window));
    const auto shown = [&] {
        QString all;
        for (const TPanel *panel : {&browse, &fields, &third, &fourth})
            all += panel->isVisible() ? QLatin1Char('1') : QLatin1Char('0');
        return all;
    };
    misc_ShowDataFields(&browse, &fields, &third, &fourth, 0, true, &tree, &list);
    QCOMPARE(shown(), s("0111"));
    QVERIFY(!tree.isEnabled() && !list.isEnabled());
    QCOMPARE(tree.Color(), QPalette::Button);
    QCOMPARE(list.Color(), QPalette::Button);
    QVERIFY(window.updatesEnabled());
    QVERIFY(tree.updatesEnabled());
    // The fields are already shown, so nothing happens.
    fields.hide();
    misc_ShowDataFields(&browse, &fields, &third, &fourth, 0, true, &tree, &list);
    QCOMPARE(shown(), s("0011"));
    QVERIFY(window.updatesEnabled());
    fields.show();
    misc_ShowDataFields(&browse, &fields, &third, &fourth, 0, false, &tree, &list);
    QCOMPARE(shown(), s("1000"));
    QVERIFY(tree.isEnabled() && list.isEnabled());
    QCOMPARE(tree.Color(), QPalette::Base);
    misc_ShowDataFields(&browse, &fields, &third, &fourth, 1, true, &tree, nullptr);
    QCOMPARE(shown(), s("0110"));
    misc_ShowDataFields(&browse, &fields, &third, &fourth, 1, false, nullptr, &list);
    QCOMPARE(shown(), s("1000"));
    misc_ShowDataFields(&browse, &fields, &third, &fourth, 2, true, nullptr, nullptr);
    QCOMPARE(shown(), s("0101"));
    misc_ShowDataFields(&browse, &fields, nullptr, nullptr, 0, false, nullptr, nullptr);
    QCOMPARE(shown(), s("1001"));
}

ZEL_TEST_MAIN(tst_ill_Misc)
#include "tst_ill_misc.moc"
