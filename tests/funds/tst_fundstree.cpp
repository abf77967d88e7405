// The catalogue tree and the list of selected funds, each on its own.
// labels: x11
#include "Frames.h"
#include "SelectorCatalogue.h"
#include "ZelTest.h"

#include "data/ClientDataSet.h"
#include "funds/fra_FundsSelectedListView.h"
#include "funds/fra_FundsTreeView.h"
#include "toolkit/TImageList.h"

#include <QAbstractItemModelTester>

#include <cmath>

using namespace Qt::StringLiterals;

class tst_fundstree : public ZelTest
{
    Q_OBJECT

    struct Sets {
        Sets()
        {
            types.SetProviderName(u"dspFundGroupType"_s);
            groups.SetProviderName(u"dspFundGroup"_s);
            types.SetRemoteServer(catalogue.connection());
            groups.SetRemoteServer(catalogue.connection());
        }
        void open()
        {
            types.Open();
            groups.Open();
            funds.SetData(catalogue.fundData());
        }
        SelectorCatalogue catalogue;
        TClientDataSet types, groups, funds;
        TImageList images;
    };
    static void build(TfraFundsTreeView &frame, Sets &sets)
    {
        frame.BuildFundTreeView(sets.types, sets.groups, sets.funds, &sets.images);
    }
    static void giveBack(TfraFundsTreeView &frame, Sets &sets)
    {
        TDataSet *const levels[] = {&sets.types, &sets.groups, &sets.funds};
        for (TTreeNode *node = frame.tvFunds->Items().GetFirstNode(); node; node = node->GetNext()) {
            levels[node->Level()]->FreeBookmark(node->Data());
            node->SetData(nullptr);
        }
    }
    static QStringList texts(const TfraFundsTreeView &frame)
    {
        QStringList result;
        for (TTreeNode *node = frame.tvFunds->Items().GetFirstNode(); node; node = node->GetNext())
            result.append(QString(2 * node->Level(), QLatin1Char(' ')) + node->Text());
        return result;
    }
    /// The font in which the tree draws a node.
    static QFont fontDrawn(TTreeView *tree, TTreeNode *node, QStyle::State state)
    {
        bool defaultDraw = true;
        tree->Canvas().Font = tree->font();
        tree->OnCustomDrawItem(tree, node, state, defaultDraw);
        if (!defaultDraw)
            QTest::qFail("the drawing was taken from the tree", __FILE__, __LINE__);
        return tree->Canvas().Font;
    }

private Q_SLOTS:
    void treeAsDesigned()
    {
        TfraFundsTreeView frame;
        QCOMPARE(frame.size(), QSize(212, 332));
        QCOMPARE(frame.findChild<TTreeView *>(u"tvFunds"_s), frame.tvFunds);
        QVERIFY(showActive(frame));
        QCOMPARE(frame.tvFunds->geometry(), frame.rect());
        QCOMPARE(frame.tvFunds->indentation(), 19);
        QVERIFY(frame.tvFunds->ReadOnly());
        QCOMPARE(frame.tvFunds->font().family(), u"Tahoma"_s);
        QCOMPARE(frame.tvFunds->font().pixelSize(), 11);
        QCOMPARE(frame.tvFunds->Items().Count(), 0);
        QCOMPARE(frame.tvFunds->accessibleName(), u"Fund catalogue"_s);
        frame.setFocus();
        QVERIFY(frame.tvFunds->hasFocus());
    }

    void listAsDesigned()
    {
        TfraFundsSelectedListView frame;
        QCOMPARE(frame.size(), QSize(319, 332));
        QVERIFY(showActive(frame));
        QCOMPARE(frame.findChild<TPanel *>(u"pnlListView"_s), frame.pnlListView);
        QCOMPARE(frame.findChild<TPanel *>(u"pnlHeaderCaption"_s), frame.pnlHeaderCaption);
        QCOMPARE(frame.findChild<TListView *>(u"lvSelectedFunds"_s), frame.lvSelectedFunds);
        QCOMPARE(frame.pnlListView->geometry(), frame.rect());
        QCOMPARE(frame.pnlHeaderCaption->geometry(), QRect(0, 0, 319, 20));
        QCOMPARE(frame.lvSelectedFunds->geometry(), QRect(0, 20, 319, 312));
        QCOMPARE(frame.pnlHeaderCaption->caption(), u"SELECTED FUNDS"_s);
        QCOMPARE(frame.pnlHeaderCaption->colorName(), u"clOlive"_s);
        QCOMPARE(frame.pnlHeaderCaption->textColorName(), u"clWhite"_s);
        QVERIFY(frame.pnlHeaderCaption->isBold());
        QVERIFY(!frame.pnlHeaderCaption->hasBevel());
        QCOMPARE(frame.pnlHeaderCaption->fontHeight(), 11);
        TListView *list = frame.lvSelectedFunds;
        QVERIFY(list->ReadOnly());
        QVERIFY(!list->MultiSelect());
        QVERIFY(!list->ColumnClick());
        QCOMPARE(list->selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(list->ColumnCount(), 2);
        QCOMPARE(list->ColumnCaption(0), u"Fund"_s);
        QCOMPARE(list->ColumnCaption(1), u"Fund Group"_s);
        QCOMPARE(list->accessibleName(), u"Selected funds"_s);
        frame.setFocus();
        QVERIFY(list->hasFocus());
    }

    void listIsEmptyWhenCreated()
    {
        TfraFundsSelectedListView frame;
        QCOMPARE(frame.lvSelectedFunds->Items().Count(), 0);
        QCOMPARE(frame.lvSelectedFunds->ColumnWidth(0), 150);
        QCOMPARE(frame.lvSelectedFunds->ColumnWidth(1), 0);
    }

    void resizingRefitsTheColumns()
    {
        TfraFundsSelectedListView frame;
        QVERIFY(showActive(frame));
        TListView *list = frame.lvSelectedFunds;
        for (const int width : {500, 240, 333}) {
            frame.resize(width, 332);
            QTRY_COMPARE(list->width(), width);
            QCOMPARE(list->ColumnWidth(0), list->ClientWidth());
            QCOMPARE(list->ColumnWidth(1), 0);
        }
    }

    void aListWithoutRoomShowsItsColumnsAgain()
    {
        // A page that temporarily resizes the frame to nothing, as a closed splitter does.
        QWidget page;
        page.resize(400, 400);
        TfraFundsSelectedListView frame(&page);
        QVERIFY(showActive(page));
        TListView *list = frame.lvSelectedFunds;
        frame.resize(0, 332);
        QTRY_COMPARE(list->width(), 0);
        frame.resize(319, 332);
        QTRY_COMPARE(list->width(), 319);
        QCOMPARE(list->ColumnWidth(0), list->ClientWidth());
        QCOMPARE(list->ColumnWidth(1), 0);
    }

    void shownGroupColumnTakesItsShare()
    {
        TfraFundsSelectedListView frame;
        QVERIFY(showActive(frame));
        TListView *list = frame.lvSelectedFunds;
        list->SetColumnWidth(0, 300);
        list->SetColumnWidth(1, 100);
        frame.resize(608, 332);
        QTRY_COMPARE(list->width(), 608);
        QCOMPARE(list->ColumnWidth(0), static_cast<int>(std::nearbyint(list->ClientWidth() * 0.75)));
        QCOMPARE(list->ColumnWidth(0) + list->ColumnWidth(1), list->ClientWidth());
    }

    void threeLevelsWithTheirPicturesAndRows()
    {
        Sets sets;
        sets.catalogue.fillSmall();
        sets.open();
        TfraFundsTreeView frame;
        const QAbstractItemModelTester tester(frame.tvFunds->model(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        build(frame, sets);
        QCOMPARE(texts(frame),
                 QStringList({u"Unit Trusts"_s, u"  Equity"_s, u"    Alpha Fund"_s, u"    Beta Fund"_s,
                              u"    Gamma Fund"_s, u"  Money Market"_s, u"    Cash Fund"_s, u"Specialist"_s,
                              u"  Property"_s, u"    Estate Fund"_s}));
        QCOMPARE(frame.tvFunds->Images(), &sets.images);
        const int pictures[] = {8, 6, 7};
        TDataSet *const levels[] = {&sets.types, &sets.groups, &sets.funds};
        const char *const captions[] = {"GroupTypeDesc", "FundGroupName", "FundName"};
        for (TTreeNode *node = frame.tvFunds->Items().GetFirstNode(); node; node = node->GetNext()) {
            QCOMPARE(node->ImageIndex(), pictures[node->Level()]);
            QCOMPARE(node->SelectedIndex(), pictures[node->Level()]);
            levels[node->Level()]->GotoBookmark(node->Data());
            const QString field = QLatin1String(captions[node->Level()]);
            QCOMPARE(levels[node->Level()]->FieldByName(field)->AsString().trimmed(), node->Text());
        }
        giveBack(frame, sets);
    }

    void rebuildingReplacesTheNodes()
    {
        Sets sets;
        sets.catalogue.fillSmall();
        sets.open();
        TfraFundsTreeView frame;
        build(frame, sets);
        giveBack(frame, sets);
        build(frame, sets);
        QCOMPARE(frame.tvFunds->Items().Count(), 10);
        giveBack(frame, sets);
        QCOMPARE(sets.funds.BookmarksHandedOut(), 0);
    }

    void datasetsWithoutRowsGiveAnEmptyTree()
    {
        Sets sets;
        sets.open();
        TfraFundsTreeView frame;
        frame.tvFunds->Items().Add(u"Optimised Funds"_s);
        build(frame, sets);
        QCOMPARE(frame.tvFunds->Items().Count(), 0);
    }

    void groupWithoutFundsIsALeaf()
    {
        Sets sets;
        sets.catalogue.fillSmall();
        sets.catalogue.addGroup(30, 2, u"Zinc"_s);
        sets.open();
        TfraFundsTreeView frame;
        build(frame, sets);
        TTreeNode *last = frame.tvFunds->Items()[frame.tvFunds->Items().Count() - 1];
        QCOMPARE(last->Text(), u"Zinc"_s);
        QCOMPARE(last->Level(), 1);
        QVERIFY(!last->HasChildren());
        QVERIFY(fontDrawn(frame.tvFunds, last, QStyle::State_Enabled).bold());
        giveBack(frame, sets);
    }

    void groupTypesAndGroupsAreBoldInEveryState()
    {
        Sets sets;
        sets.catalogue.fillSmall();
        sets.open();
        TfraFundsTreeView frame;
        build(frame, sets);
        for (const QStyle::State state :
             {QStyle::State(QStyle::State_Enabled), QStyle::State_Enabled | QStyle::State_Selected,
              QStyle::State_HasFocus | QStyle::State_Selected,
              QStyle::State_Enabled | QStyle::State_MouseOver}) {
            for (TTreeNode *node = frame.tvFunds->Items().GetFirstNode(); node; node = node->GetNext())
                QCOMPARE(fontDrawn(frame.tvFunds, node, state).bold(), node->Level() < 2);
        }
        giveBack(frame, sets);
    }

    void boldIsSeenOnScreen()
    {
        // The same text on every level: bold text covers more pixels than plain text.
        Sets sets;
        sets.catalogue.addType(1, u"MMMMMMMM"_s);
        sets.catalogue.addGroup(1, 1, u"MMMMMMMM"_s);
        sets.catalogue.addFund(1, 1, u"MMMMMMMM"_s);
        sets.open();
        TfraFundsTreeView frame;
        build(frame, sets);
        frame.tvFunds->FullExpand();
        frame.tvFunds->SetSelected(nullptr);
        QVERIFY(showActive(frame));
        frame.tvFunds->SetImages(nullptr);
        const QImage picture = frame.tvFunds->viewport()->grab().toImage();
        int ink[3] = {};
        QModelIndex index;
        for (int &sum : ink) {
            index = frame.tvFunds->model()->index(0, 0, index);
            const QRect row = frame.tvFunds->visualRect(index);
            const qreal scale = picture.devicePixelRatio();
            for (int y = int(row.top() * scale); y < int(row.bottom() * scale); ++y) {
                for (int x = int((row.left() + 1) * scale); x < picture.width(); ++x)
                    sum += 255 - qGray(picture.pixel(x, y));
            }
        }
        QVERIFY2(ink[0] > ink[2] * 11 / 10, qPrintable(u"%1 %2"_s.arg(ink[0]).arg(ink[2])));
        QVERIFY2(ink[1] > ink[2] * 11 / 10, qPrintable(u"%1 %2"_s.arg(ink[1]).arg(ink[2])));
        giveBack(frame, sets);
    }

    void missingFieldReachesTheCaller_data()
    {
        QTest::addColumn<QString>("field");
        QTest::newRow("the link to the group") << u"FundGroupID"_s;
        QTest::newRow("the caption") << u"FundName"_s;
    }
    void missingFieldReachesTheCaller()
    {
        QFETCH(QString, field);
        Sets sets;
        sets.catalogue.fillSmall();
        sets.types.Open();
        sets.groups.Open();
        sets.funds.SetData(sets.catalogue.fundDataWithout(field));
        TfraFundsTreeView frame;
        try {
            build(frame, sets);
            QFAIL("nothing was raised");
        } catch (const EDatabaseError &error) {
            QVERIFY2(error.message().contains(field), qPrintable(error.message()));
        }
        giveBack(frame, sets);
    }

    void labelsAreNotEdited()
    {
        Sets sets;
        sets.catalogue.fillSmall();
        sets.open();
        TfraFundsTreeView frame;
        build(frame, sets);
        QVERIFY(showActive(frame));
        frame.tvFunds->SetSelected(frame.tvFunds->Items()[2]);
        QTest::keyClick(frame.tvFunds, Qt::Key_F2);
        QCOMPARE(frame.tvFunds->findChildren<QLineEdit *>().size(), 0);
        giveBack(frame, sets);
    }
};

ZEL_TEST_MAIN(tst_fundstree)
#include "tst_fundstree.moc"
