// The fund selector frame: display, buttons, keys, drags and the selection that it returns.
// labels: x11 postgresql
// left out on Windows: what runs on PostgreSQL
#include "Frames.h"
#include "SelectorDriver.h"
#include "SelectorEngines.h"
#include "ZelTest.h"

#include "data/ClientDataSet.h"
#include "toolkit/TColors.h"
#include "toolkit/TImageList.h"
#include "toolkit/TScreen.h"

#include <QAbstractItemModelTester>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QSplitter>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace
{
const QString note =
    u"* Fixed Bonds are available if the Bond Code is valid and the Investment Receipt Date is in the "
    u"current "
    "working week (Monday-Friday).  Multi-manager funds are available if the investor is not a company."_s;

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromUtf8(text));
    return result;
}
} // namespace

class tst_fundselector : public ZelTest
{
    Q_OBJECT

    /// A frame, its catalogue and a driver.
    struct Desk {
        Desk() { catalogue.fillSmall(); }
        void build(const TDynamicArrayOfInt &preselected = {}, const QString &filter = {},
                   const QString &warning = {}, const QString &info = {})
        {
            frame.BuildFundSelector(SelectorCatalogue::productGroup, preselected, catalogue.connection(),
                                    catalogue.fundData(), filter, warning, info);
        }
        bool show() { return showActive(frame); }
        bool add(const char *fund)
        {
            hands.add(fund);
            return hands.captions().contains(QString::fromLatin1(fund));
        }
        TDynamicArrayOfInt confirmed()
        {
            TDynamicArrayOfInt ids;
            frame.btnSelect->click();
            frame.IsNewFundSelection(ids);
            return ids;
        }
        SelectorCatalogue catalogue;
        TfraFundSelector frame;
        SelectorDriver hands{frame};
    };

    SelectorEngines m_engines;

protected:
    void init() override
    {
        ZelTest::init();
        m_engines.Use();
    }

private Q_SLOTS:
    void initTestCase_data() { SelectorEngines::Rows(); }

    void componentsAsDesigned()
    {
        TfraFundSelector frame;
        QCOMPARE(frame.size(), QSize(616, 395));
        for (const char *name : {"pnlToolBar", "Panel2", "pnlMenu", "Panel1"})
            QVERIFY2(frame.findChild<TPanel *>(QLatin1String(name)), name);
        for (const char *name :
             {"sbtAdd", "sbtRemove", "sbtClear", "sbtExpand", "sbtCollapse", "sbtFundSheet"})
            QVERIFY2(frame.findChild<TSpeedButton *>(QLatin1String(name)), name);
        QCOMPARE(frame.findChild<TfraFundsTreeView *>(u"fraFundsTreeView"_s), frame.fraFundsTreeView);
        QCOMPARE(frame.findChild<TfraFundsSelectedListView *>(u"fraFundsSelectedListView"_s),
                 frame.fraFundsSelectedListView);
        QCOMPARE(frame.findChild<QSplitter *>(u"splMain"_s), frame.splMain);
        QCOMPARE(frame.findChild<QLabel *>(u"lblInfoMessage"_s), frame.lblInfoMessage);
        QCOMPARE(frame.findChild<QLabel *>(u"lblWarningMessage"_s), frame.lblWarningMessage);
        QCOMPARE(frame.findChild<QPushButton *>(u"btnSelect"_s), frame.btnSelect);
        QCOMPARE(frame.findChild<QPushButton *>(u"btnCancel"_s), frame.btnCancel);
        QCOMPARE(frame.findChild<TImageList *>(u"imgCommon"_s), frame.imgCommon);
        QCOMPARE(frame.findChild<TClientDataSet *>(u"cdsFundGroupType"_s), frame.cdsFundGroupType);
        QCOMPARE(frame.findChild<TClientDataSet *>(u"cdsFundGroup"_s), frame.cdsFundGroup);
        QCOMPARE(frame.findChild<TClientDataSet *>(u"cdsFund"_s), frame.cdsFund);
        QCOMPARE(frame.findChild<TClientDataSet *>(u"cdsFundPerProduct"_s), frame.cdsFundPerProduct);
        QCOMPARE(frame.imgCommon->Count(), 10);
        for (int i = 0; i < 10; ++i)
            QVERIFY(!frame.imgCommon->Icon(i).isNull());
        QCOMPARE(frame.lblInfoMessage->text(), u"< info message comes here >"_s);
        QCOMPARE(frame.lblWarningMessage->text(), u"< tree node warning comes here >"_s);
        QVERIFY(frame.lblWarningMessage->isHidden());
        QVERIFY(frame.lblWarningMessage->font().italic());
        QVERIFY(frame.lblInfoMessage->font().italic());
        QVERIFY(frame.lblWarningMessage->wordWrap());
        for (const QLabel *label : {frame.lblWarningMessage, frame.lblInfoMessage}) {
            QVERIFY(label->alignment() & Qt::AlignHCenter);
            QCOMPARE(label->textFormat(), Qt::PlainText); // the host's text is not interpreted as markup
        }
        QVERIFY(frame.btnSelect->isFlat() && frame.btnCancel->isFlat());
        TPanel *bar = frame.fraFundsSelectedListView->pnlHeaderCaption;
        QCOMPARE(bar->colorName(), u"clGreen5"_s);
        QCOMPARE(bar->textColorName(), u"clBlack"_s);
        QCOMPARE(frame.fraFundsTreeView->tvFunds->DragMode(), TDragMode::dmAutomatic);
        QCOMPARE(frame.fraFundsSelectedListView->lvSelectedFunds->DragMode(), TDragMode::dmAutomatic);
        QCOMPARE(frame.fraFundsSelectedListView->lvSelectedFunds->SmallImages(), frame.imgCommon);
    }

    void layoutAsDesigned()
    {
        TfraFundSelector frame;
        QVERIFY(showActive(frame));
        const auto at = [&frame](QWidget *widget) {
            return QRect(widget->mapTo(&frame, QPoint(0, 0)), widget->size());
        };
        QCOMPARE(at(frame.fraFundsTreeView), QRect(0, 0, 271, 340));
        QCOMPARE(frame.splMain->handleWidth(), 3);
        QCOMPARE(frame.splMain->orientation(), Qt::Horizontal);
        QCOMPARE(frame.splMain->handle(1)->cursor().shape(), Qt::SplitHCursor);
        QCOMPARE(at(frame.Panel2), QRect(274, 0, 58, 340));
        QCOMPARE(at(frame.fraFundsSelectedListView), QRect(332, 0, 284, 340));
        QCOMPARE(at(frame.pnlToolBar), QRect(0, 340, 616, 55));
        QCOMPARE(at(frame.Panel1), QRect(0, 340, 445, 55));
        QCOMPARE(at(frame.pnlMenu), QRect(445, 340, 171, 55));
        QCOMPARE(at(frame.lblInfoMessage).bottom(), 394);
        QCOMPARE(frame.lblInfoMessage->height(), 13);
        frame.lblWarningMessage->show();
        QTRY_COMPARE(at(frame.lblWarningMessage), QRect(0, 340, 445, 42));
        QCOMPARE(frame.btnSelect->size(), QSize(75, 25));
        QCOMPARE(frame.btnCancel->size(), QSize(75, 25));
        QCOMPARE(frame.btnCancel->pos(), QPoint(171 - 75 - 2, 26));
        QCOMPARE(frame.btnSelect->pos(), QPoint(171 - 75 - 2 - 75 - 2, 26));
        struct {
            TSpeedButton *button;
            int top;
        } const buttons[] = {{frame.sbtAdd, 42},       {frame.sbtClear, 82},   {frame.sbtExpand, 122},
                             {frame.sbtCollapse, 162}, {frame.sbtRemove, 202}, {frame.sbtFundSheet, 255}};
        for (const auto &[button, top] : buttons)
            QCOMPARE(button->geometry(), QRect(0, top, 58, 40));
    }

    void resizingGrowsTheListAndKeepsTheButtonsRight()
    {
        TfraFundSelector frame;
        QVERIFY(showActive(frame));
        frame.resize(900, 600);
        QTRY_COMPARE(frame.pnlToolBar->geometry(), QRect(0, 545, 900, 55));
        QCOMPARE(frame.fraFundsTreeView->width(), 271);
        QCOMPARE(frame.fraFundsSelectedListView->width(), 900 - 332);
        QCOMPARE(frame.pnlMenu->geometry().right(), 899);
        QCOMPARE(frame.btnCancel->x(), frame.pnlMenu->width() - frame.btnCancel->width() - 2);
        QCOMPARE(frame.btnSelect->x(), frame.btnCancel->x() - frame.btnSelect->width() - 2);
        // Dragging the splitter gives width from the list to the tree.
        const QPoint handle = frame.splMain->handle(1)->rect().center();
        QTest::mousePress(frame.splMain->handle(1), Qt::LeftButton, {}, handle);
        QTest::mouseMove(frame.splMain->handle(1), handle + QPoint(80, 0));
        QTest::mouseRelease(frame.splMain->handle(1), Qt::LeftButton, {}, handle + QPoint(80, 0));
        QVERIFY(frame.fraFundsTreeView->width() > 271);
        QCOMPARE(frame.Panel2->width(), 58);
        // The tree cannot be dragged to zero width.
        QTest::mousePress(frame.splMain->handle(1), Qt::LeftButton, {}, handle);
        QTest::mouseMove(frame.splMain->handle(1), handle - QPoint(600, 0));
        QTest::mouseRelease(frame.splMain->handle(1), Qt::LeftButton, {}, handle - QPoint(600, 0));
        QVERIFY(frame.fraFundsTreeView->width() > 20);
        QVERIFY(frame.fraFundsTreeView->isVisible());
    }

    void speedButtons_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("hint");
        const QString remove = u"remove selected fund(s) from the list"_s;
        QTest::newRow("add") << "sbtAdd"
                             << "Add"
                             << "add selected fund to the selection list";
        QTest::newRow("remove") << "sbtRemove"
                                << "Remove" << remove;
        QTest::newRow("clear") << "sbtClear"
                               << "Clear All"
                               << "clear selection list";
        QTest::newRow("expand") << "sbtExpand"
                                << "Expand"
                                << "expands the entire fund selection list";
        QTest::newRow("collapse") << "sbtCollapse"
                                  << "Collapse"
                                  << "collapses the entire fund selection list";
        QTest::newRow("fund sheet") << "sbtFundSheet"
                                    << "FundSheet" << remove;
    }
    void speedButtons()
    {
        QFETCH(QString, name);
        QFETCH(QString, caption);
        QFETCH(QString, hint);
        TfraFundSelector frame;
        const auto *button = frame.findChild<TSpeedButton *>(name);
        QCOMPARE(button->text().remove(QLatin1Char('&')), caption);
        QCOMPARE(button->text().count(QLatin1Char('&')), 1);
        QCOMPARE(button->toolTip(), hint);
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        QVERIFY(button->autoRaise());
        QVERIFY(button->isGlyphOnTop());
        QCOMPARE(hasDisabledPicture(button->icon()), button == frame.sbtFundSheet);
    }

    void hintsAppear()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        for (TSpeedButton *button : {desk.frame.sbtExpand, desk.frame.sbtCollapse}) {
            QHelpEvent over(QEvent::ToolTip, button->rect().center(),
                            button->mapToGlobal(button->rect().center()));
            QCoreApplication::sendEvent(button, &over);
            QVERIFY(QToolTip::isVisible());
            QCOMPARE(QToolTip::text(), button->toolTip());
        }
        QToolTip::hideText();
    }

    void altLettersDiffer()
    {
        TfraFundSelector frame;
        QSet<QString> letters;
        int buttons = 0;
        for (const QAbstractButton *button : frame.findChildren<QAbstractButton *>()) {
            if (button->text().isEmpty())
                continue;
            ++buttons;
            letters.insert(button->shortcut().toString());
        }
        QCOMPARE(buttons, 8);
        QCOMPARE(letters.size(), 8);
        QVERIFY(letters.contains(u"Alt+S"_s));
        QVERIFY(letters.contains(u"Alt+C"_s));
    }

    void parametersAsDesigned()
    {
        TfraFundSelector frame;
        QCOMPARE(frame.cdsFundGroupType->ProviderName(), u"dspFundGroupType"_s);
        QCOMPARE(frame.cdsFundGroup->ProviderName(), u"dspFundGroup"_s);
        QCOMPARE(frame.cdsFund->ProviderName(), QString());
        QCOMPARE(frame.cdsFundPerProduct->ProviderName(), u"dspFundPerProduct"_s);
        QCOMPARE(frame.cdsFundGroupType->Params().Count(), 1);
        QCOMPARE(frame.cdsFundGroupType->Params()[0].Name, u"pProductGroupID"_s);
        QCOMPARE(frame.cdsFundGroupType->Params()[0].DataType, TParamDataType::Integer);
        QCOMPARE(frame.cdsFundGroup->Params().Count(), 1);
        QCOMPARE(frame.cdsFundGroup->Params()[0].DataType, TParamDataType::FixedChar);
        for (const TClientDataSet *dataSet : {frame.cdsFund, frame.cdsFundPerProduct}) {
            QCOMPARE(dataSet->Params().Count(), 2);
            QCOMPARE(dataSet->Params()[0].Name, u"pProductID"_s);
            QCOMPARE(dataSet->Params()[1].Name, u"pProductGroupID"_s);
            QCOMPARE(dataSet->Params()[0].DataType, TParamDataType::FixedChar);
            QCOMPARE(dataSet->Params()[0].ParamType, TParamType::Input);
        }
    }

    void providersGetTheProductAndItsGroup()
    {
        Desk desk;
        desk.build();
        QCOMPARE(desk.catalogue.calls,
                 strings({"dspFundGroup pProductGroupID=3", "dspFundGroupType pProductGroupID=3",
                          "dspFundPerProduct pProductID=7 pProductGroupID=3"}));
        QVERIFY(desk.frame.cdsFund->Params()[0].IsNull());
        QVERIFY(desk.frame.cdsFund->Params()[1].IsNull());
        desk.catalogue.calls.clear();
        desk.frame.BuildFundSelector(44, {}, desk.catalogue.connection(), desk.catalogue.fundData(), {}, {},
                                     {});
        QCOMPARE(desk.catalogue.calls.first(), u"dspFundGroup pProductGroupID=44"_s);
    }

    void catalogueOfThreeLevels()
    {
        Desk desk;
        const QAbstractItemModelTester tester(desk.hands.tree->model(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        desk.build();
        QCOMPARE(desk.hands.nodes(),
                 strings({"Unit Trusts", "  Equity", "    Alpha Fund", "    Beta Fund", "    Gamma Fund",
                          "  Money Market", "    Cash Fund", "Specialist", "  Property", "    Estate Fund"}));
        QVERIFY(!desk.frame.cdsFundGroup->Filtered());
        QVERIFY(!desk.frame.cdsFundGroupType->Filtered());
        QVERIFY(!desk.frame.cdsFundPerProduct->Filtered());
        QVERIFY(desk.frame.lblWarningMessage->isHidden());
    }

    void childlessGroupsAreHiddenUnlessOffered()
    {
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build();
        QCOMPARE(desk.hands.nodes(),
                 strings({"Unit Trusts", "  Equity", "    Alpha Fund", "    Beta Fund", "    Gamma Fund",
                          "  Money Market", "    Cash Fund", "Specialist", "  Fixed Bonds *", "  Property",
                          "    Estate Fund"}));
        QCOMPARE(desk.frame.cdsFundGroup->Filter(), u"not(FundGroupID in (12,-1,40))"_s);
        QVERIFY(desk.frame.cdsFundGroup->Filtered());
        QCOMPARE(desk.frame.cdsFundGroupType->Filter(), u"not(GroupTypeID in (3))"_s);
        QVERIFY(desk.frame.cdsFundGroupType->Filtered());
        QVERIFY(!desk.hands.node("Fixed Bonds *")->HasChildren());
        QVERIFY(!desk.frame.lblWarningMessage->isHidden());
        QCOMPARE(desk.frame.lblWarningMessage->text(), note);
    }

    void exclusionFilterOfItsOwn()
    {
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build();
        TfraFundSelector &frame = desk.frame;
        frame.cdsFundGroup->SetFiltered(false);
        const QString group = u"FundGroupID"_s;
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFund, group, true),
                 u"not(FundGroupID in (12,-1,40))"_s);
        // Without recording, groups that the product offers count as childless, too.
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFund, group, false),
                 u"not(FundGroupID in (12,15,40))"_s);
        QCOMPARE(
            frame.BuildExclusionFilter(frame.cdsFundGroup, u"  FundGroupID "_s, frame.cdsFund, group, false),
            u"not(FundGroupID in (12,15,40))"_s);
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, u"  "_s, frame.cdsFund, group, true),
                 QString());
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFund, QString(), true),
                 QString());
        QCOMPARE(frame.cdsFundGroup->RecNo(), 1);
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFundGroup, group, true),
                 QString());
        TClientDataSet closed1;
        TClientDataSet closed2;
        QCOMPARE(frame.BuildExclusionFilter(&closed1, group, &closed2, group, true), QString());
        // One active dataset makes the function go on, and then the closed one throws.
        QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                                 frame.BuildExclusionFilter(&closed1, group, frame.cdsFund, group, true));
        QVERIFY_THROWS_EXCEPTION(
            EDatabaseError, frame.BuildExclusionFilter(frame.cdsFundGroup, group, &closed2, group, true));
    }

    void perProductFilter()
    {
        // Group 15 is offered as a bond only: a filter by kind removes it from the tree.
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build({}, u"  Kind = 'fund'  "_s);
        QCOMPARE(desk.frame.cdsFundPerProduct->Filter(), u"Kind = 'fund'"_s);
        QVERIFY(desk.frame.cdsFundPerProduct->Filtered());
        QVERIFY(!desk.hands.node("Fixed Bonds *"));
        QCOMPARE(desk.frame.cdsFundGroup->Filter(), u"not(FundGroupID in (12,15,40))"_s);
        QVERIFY(desk.frame.lblWarningMessage->isHidden());
    }

    void blankPerProductFilterIsNone()
    {
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build({}, u"   "_s);
        QVERIFY(!desk.frame.cdsFundPerProduct->Filtered());
        QVERIFY(desk.hands.node("Fixed Bonds *"));
    }

    void markedAreOfferedGroupsOnly()
    {
        // An offered group that has funds is not marked; neither is a type or a fund with the group's id.
        Desk desk;
        desk.catalogue.addType(15, u"Type 15"_s);
        desk.catalogue.addGroup(50, 15, u"Group 50"_s);
        desk.catalogue.addFund(15, 50, u"Fund 15"_s);
        desk.catalogue.addChildlessGroups();
        desk.build();
        QStringList marked;
        for (const QString &text : desk.hands.nodes()) {
            if (text.endsWith(QLatin1Char('*')))
                marked.append(text);
        }
        QCOMPARE(marked, strings({"  Fixed Bonds *"}));
    }

    void warningAndInfoTexts_data()
    {
        QTest::addColumn<QString>("warning");
        QTest::addColumn<QString>("info");
        QTest::addColumn<QString>("shownWarning");
        QTest::addColumn<QString>("shownInfo");
        QTest::newRow("none") << QString() << QString() << note << QString();
        QTest::newRow("blanks") << u"   "_s << u" \t "_s << note << QString();
        QTest::newRow("texts") << u"  Ask first. "_s << u" Up to 20 funds "_s << note + u" Ask first."_s
                               << u"Up to 20 funds"_s;
        QTest::newRow("markup is text")
            << u"<b>x</b> & y"_s << u"a && b <i>"_s << note + u" <b>x</b> & y"_s << u"a && b <i>"_s;
    }
    void warningAndInfoTexts()
    {
        QFETCH(QString, warning);
        QFETCH(QString, info);
        QFETCH(QString, shownWarning);
        QFETCH(QString, shownInfo);
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build({}, {}, warning, info);
        QCOMPARE(desk.frame.lblWarningMessage->text(), shownWarning);
        QVERIFY(!desk.frame.lblWarningMessage->isHidden());
        QCOMPARE(desk.frame.lblInfoMessage->text(), shownInfo);
        QVERIFY(desk.show());
        // The label is high enough for the whole text.
        const QLabel *label = desk.frame.lblWarningMessage;
        QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
    }

    void noteWithoutMarkedGroupIsNotShown()
    {
        Desk desk;
        desk.build({}, {}, u"Ask first."_s, u"Info"_s);
        QVERIFY(desk.frame.lblWarningMessage->isHidden());
        QCOMPARE(desk.frame.lblWarningMessage->text(), u"< tree node warning comes here >"_s);
        QCOMPARE(desk.frame.lblInfoMessage->text(), u"Info"_s);
    }

    void warningIsNeverTakenBack()
    {
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build();
        QVERIFY(!desk.frame.lblWarningMessage->isHidden());
        SelectorCatalogue plain;
        plain.fillSmall();
        desk.frame.BuildFundSelector(SelectorCatalogue::productGroup, {}, plain.connection(),
                                     plain.fundData(), {}, u"again"_s, {});
        QVERIFY(!desk.frame.lblWarningMessage->isHidden());
        QCOMPARE(desk.frame.lblWarningMessage->text(), note + u" again"_s);
    }

    void offeredGroupsOutliveABuildWithoutChildlessOnes()
    {
        // The first build remembers group 15 as offered and empty. In the second build every group has a
        // fund, so the list is not made again, and group 15 is still marked.
        Desk desk;
        desk.catalogue.addGroup(15, 2, u"Fixed Bonds"_s);
        desk.catalogue.offer(15);
        desk.build();
        QVERIFY(desk.hands.node("Fixed Bonds *"));
        QCOMPARE(desk.frame.cdsFundGroup->Filter(), u"not(FundGroupID in (-1))"_s);
        desk.catalogue.addFund(301, 15, u"Bond Fund"_s);
        desk.build();
        QVERIFY(desk.hands.node("Fixed Bonds *"));
        QVERIFY(desk.hands.node("Bond Fund"));
        // A build with other childless groups makes the list again.
        desk.catalogue.addGroup(16, 2, u"Unwanted"_s);
        desk.build();
        QVERIFY(desk.hands.node("Fixed Bonds"));
        QVERIFY(!desk.hands.node("Unwanted"));
    }

    void valueInList()
    {
        TfraFundSelector frame;
        QVERIFY(!frame.ValueInList(1, {}));
        QVERIFY(frame.ValueInList(1, {1, 2}));
        QVERIFY(frame.ValueInList(2, {1, 2}));
        QVERIFY(frame.ValueInList(-1, {12, -1, 40}));
        QVERIFY(!frame.ValueInList(3, {1, 2}));
    }

    // --- buttons

    void buttonsAfterBuilding()
    {
        Desk desk;
        desk.build();
        QVERIFY(!desk.frame.sbtAdd->isEnabled());
        QVERIFY(!desk.frame.sbtClear->isEnabled());
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        QVERIFY(!desk.frame.btnSelect->isEnabled());
        QVERIFY(!desk.frame.sbtFundSheet->isEnabled());
        QVERIFY(desk.frame.btnCancel->isEnabled());
        QVERIFY(desk.frame.sbtExpand->isEnabled());
        QVERIFY(desk.frame.sbtCollapse->isEnabled());
        desk.build({101});
        QVERIFY(desk.frame.sbtClear->isEnabled());
        QVERIFY(desk.frame.btnSelect->isEnabled());
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        QVERIFY(!desk.frame.cdsFund->ControlsDisabled()); // the dataset's listeners are not muted
    }

    // Each build starts from scratch: it calls every provider, restores the column's width and resets the
    // buttons.
    void buildingAgainAsksForEverything()
    {
        Desk desk;
        desk.build({101, 102});
        QVERIFY(desk.show());
        desk.hands.click(desk.hands.list->Items()[0]);
        QVERIFY(desk.frame.sbtRemove->isEnabled());
        desk.hands.list->SetColumnWidth(0, 40);
        desk.catalogue.addType(5, u"Hedge"_s);
        desk.catalogue.addGroup(50, 5, u"Long Short"_s);
        desk.catalogue.addFund(501, 50, u"Delta Fund"_s);
        desk.build({501});
        QCOMPARE(desk.hands.nodes().mid(10), strings({"Hedge", "  Long Short", "    Delta Fund"}));
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        QCOMPARE(desk.hands.list->ColumnWidth(0), desk.hands.list->ClientWidth());
    }

    // The product id comes from the packet's first row, not from the current row.
    void theProductIsTheFirstRows()
    {
        Desk desk;
        TTableBuilder funds({{u"FundID"_s, TFieldType::Integer},
                             {u"FundGroupID"_s, TFieldType::Integer},
                             {u"FundName"_s, TFieldType::String},
                             {u"FundSheetURL"_s, TFieldType::String},
                             {u"ProductID"_s, TFieldType::Integer}});
        funds.AddRow({101, 10, u"Alpha Fund"_s, QString(), 7});
        funds.AddRow({201, 20, u"Estate Fund"_s, QString(), 8});
        desk.frame.BuildFundSelector(3, {}, desk.catalogue.connection(),
                                     TDataPacket(funds.Finish()).ToVariant(), {}, {}, {});
        QVERIFY(desk.show());
        QVERIFY(desk.add("Estate Fund"));
        desk.catalogue.calls.clear();
        desk.frame.cdsFundPerProduct->Close();
        desk.frame.cdsFundPerProduct->Open();
        QCOMPARE(desk.catalogue.calls, strings({"dspFundPerProduct pProductID=7 pProductGroupID=3"}));
    }

    // The warning is black on a light background and has a light colour on a dark one, also after the palette
    // changes.
    void theWarningFollowsThePalette()
    {
        Desk desk;
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(32, 32, 32));
        dark.setColor(QPalette::Base, QColor(24, 24, 24));
        dark.setColor(QPalette::WindowText, Qt::white);
        dark.setColor(QPalette::Text, Qt::white);
        const auto color = [&desk] {
            return desk.frame.lblWarningMessage->palette().color(QPalette::WindowText);
        };
        const QColor before = color();
        desk.frame.setPalette(dark);
        QCOMPARE(color(), ColorOf(TColor::clBlack, desk.frame.palette()));
        QVERIFY(color() != before);
    }

    // Buttons grow with the font, so that no caption is cut off.
    void theButtonsFollowTheFont()
    {
        Desk desk;
        QVERIFY(desk.show());
        const int before = desk.frame.btnSelect->width();
        QFont large = desk.frame.font();
        large.setPixelSize(30);
        desk.frame.setFont(large);
        QTRY_VERIFY(desk.frame.btnSelect->width() > before);
        QCOMPARE(desk.frame.btnSelect->x() + desk.frame.btnSelect->width() + 2, desk.frame.btnCancel->x());
    }

    void addFollowsTheSelectedLevel()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        desk.hands.click(desk.hands.node("Unit Trusts"));
        QVERIFY(!desk.frame.sbtAdd->isEnabled());
        desk.hands.click(desk.hands.node("Equity"));
        QVERIFY(!desk.frame.sbtAdd->isEnabled());
        desk.hands.click(desk.hands.node("Alpha Fund"));
        QVERIFY(desk.frame.sbtAdd->isEnabled());
        desk.hands.click(desk.hands.node("Property"));
        QVERIFY(!desk.frame.sbtAdd->isEnabled());
    }

    void addFollowsTheTreesFocus()
    {
        Desk desk;
        desk.build({102});
        QVERIFY(desk.show());
        desk.hands.click(desk.hands.node("Alpha Fund"));
        QVERIFY(desk.hands.tree->hasFocus());
        QTest::mouseClick(desk.frame.sbtAdd, Qt::LeftButton);
        QVERIFY2(desk.hands.tree->hasFocus(), "a speed button takes no focus");
        QVERIFY(desk.frame.sbtAdd->isEnabled());
        QTest::keyClick(desk.hands.tree, Qt::Key_Tab);
        QVERIFY(desk.hands.list->hasFocus());
        QVERIFY(!desk.frame.sbtAdd->isEnabled());
        QTest::keyClick(desk.hands.list, Qt::Key_Tab, Qt::ShiftModifier);
        QVERIFY(desk.hands.tree->hasFocus());
        QVERIFY(desk.frame.sbtAdd->isEnabled());
        desk.hands.click(desk.hands.node("Equity"));
        QTest::keyClick(desk.hands.tree, Qt::Key_Tab);
        QTest::keyClick(desk.hands.list, Qt::Key_Tab, Qt::ShiftModifier);
        QVERIFY(!desk.frame.sbtAdd->isEnabled());
    }

    void removeFollowsTheListsSelectionAndFocus()
    {
        Desk desk;
        desk.build({101, 102});
        QVERIFY(desk.show());
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        desk.hands.click(desk.hands.list->Items()[1]);
        QVERIFY(desk.frame.sbtRemove->isEnabled());
        QTest::keyClick(desk.hands.list, Qt::Key_Tab);
        QVERIFY(desk.frame.btnSelect->hasFocus());
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        QTest::keyClick(desk.frame.btnSelect, Qt::Key_Tab, Qt::ShiftModifier);
        QVERIFY(desk.hands.list->hasFocus());
        QVERIFY(desk.frame.sbtRemove->isEnabled());
        desk.hands.list->SetSelected(nullptr);
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        desk.hands.tree->setFocus();
        desk.hands.list->setFocus();
        QCOMPARE(desk.frame.sbtRemove->isEnabled(), desk.hands.list->SelectedItem() != nullptr);
    }

    // Remove is disabled when the list is empty, however it was emptied.
    void removeGoesWithTheLastFund()
    {
        Desk desk;
        desk.build({101, 102});
        QVERIFY(desk.show());
        desk.hands.click(desk.hands.list->Items()[1]);
        QVERIFY(desk.frame.sbtRemove->isEnabled());
        QTest::mouseClick(desk.frame.sbtClear, Qt::LeftButton);
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        QVERIFY(!desk.frame.sbtClear->isEnabled());
        QVERIFY(!desk.frame.btnSelect->isEnabled());
        desk.build({101});
        desk.hands.remove(0);
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
    }

    void addingAndClearing()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        QVERIFY(desk.add("Beta Fund"));
        QVERIFY(desk.frame.btnSelect->isEnabled());
        QVERIFY(desk.frame.sbtClear->isEnabled());
        QVERIFY(desk.add("Estate Fund"));
        QVERIFY(desk.add("Alpha Fund"));
        QCOMPARE(desk.hands.captions(), strings({"Beta Fund", "Estate Fund", "Alpha Fund"}));
        for (int i = 0; i < 3; ++i) {
            const TListItem *item = desk.hands.list->Items()[i];
            QCOMPARE(item->ImageIndex(), 7);
            QCOMPARE(item->Data(), desk.hands.node(item->Caption())->Data());
            QVERIFY(item->SubItems().isEmpty());
        }
        QTest::mouseClick(desk.frame.sbtClear, Qt::LeftButton);
        QCOMPARE(desk.hands.captions(), QStringList());
        QVERIFY(!desk.frame.btnSelect->isEnabled());
        QVERIFY(!desk.frame.sbtClear->isEnabled());
    }

    void addingStandsOnTheFundAndItsGroup()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        QVERIFY(desk.add("Estate Fund"));
        QCOMPARE(desk.frame.cdsFund->FieldByName(u"FundID"_s)->AsInteger(), 201);
        QCOMPARE(desk.frame.cdsFundGroup->FieldByName(u"FundGroupID"_s)->AsInteger(), 20);
        QVERIFY(desk.add("Beta Fund"));
        QCOMPARE(desk.frame.cdsFundGroup->FieldByName(u"FundGroupID"_s)->AsInteger(), 10);
    }

    void sameFundIsAddedOnce()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        QVERIFY(desk.add("Alpha Fund"));
        QVERIFY(desk.add("Alpha Fund"));
        desk.hands.doubleClick(desk.hands.node("Alpha Fund"));
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund"}));
    }

    void sameNameUnderAnotherGroupIsTheSameFund()
    {
        // Equal captions count as the same fund, ignoring case and surrounding blanks; the first one stays.
        Desk desk;
        desk.catalogue.addFund(999, 20, u"  ALPHA fund "_s);
        desk.build();
        QVERIFY(desk.show());
        QVERIFY(desk.add("Alpha Fund"));
        desk.hands.add("ALPHA fund");
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund"}));
        QCOMPARE(desk.confirmed(), TDynamicArrayOfInt({101}));
    }

    void doubleClickAdds()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        desk.hands.doubleClick(desk.hands.node("Gamma Fund"));
        QCOMPARE(desk.hands.captions(), strings({"Gamma Fund"}));
        desk.hands.doubleClick(desk.hands.node("Money Market"));
        QCOMPARE(desk.hands.captions(), strings({"Gamma Fund"}));
    }

    void removing_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("selected");
        QTest::newRow("the only one") << 1 << 0 << -1;
        QTest::newRow("first of two") << 2 << 0 << -1;
        QTest::newRow("second of two") << 2 << 1 << 0;
        QTest::newRow("first of five") << 5 << 0 << 0;
        QTest::newRow("second of five") << 5 << 1 << 1;
        QTest::newRow("third of five") << 5 << 2 << 2;
        QTest::newRow("last but one of five") << 5 << 3 << 2;
        QTest::newRow("last of five") << 5 << 4 << 3;
    }
    void removing()
    {
        QFETCH(int, count);
        QFETCH(int, removed);
        QFETCH(int, selected);
        ReportCatcher report;
        Desk desk;
        TDynamicArrayOfInt ids{101, 102, 103, 111, 201};
        ids.resize(count);
        desk.build(ids);
        QVERIFY(desk.show());
        desk.hands.remove(removed);
        QCOMPARE(desk.hands.list->Items().Count(), count - 1);
        ids.removeAt(removed);
        const TListItem *now = desk.hands.list->SelectedItem();
        QCOMPARE(now ? now->Index() : -1, selected);
        QCOMPARE(desk.frame.btnSelect->isEnabled(), count > 1);
        QCOMPARE(desk.frame.sbtClear->isEnabled(), count > 1);
        QCOMPARE(report.messages, QStringList());
        if (count > 1)
            QCOMPARE(desk.confirmed(), ids);
    }

    void removeWithoutSelectionDoesNothing()
    {
        Desk desk;
        desk.build({101, 102});
        QVERIFY(desk.show());
        desk.hands.list->SetSelected(nullptr);
        desk.hands.list->setFocus();
        desk.hands.list->SetSelected(nullptr);
        QTest::keyClick(desk.hands.list, Qt::Key_Delete);
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund", "Beta Fund"}));
    }

    void expandAndCollapse()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        QTest::mouseClick(desk.frame.sbtExpand, Qt::LeftButton);
        for (TTreeNode *node = desk.hands.tree->Items().GetFirstNode(); node; node = node->GetNext())
            QCOMPARE(node->Expanded(), node->HasChildren());
        QTest::mouseClick(desk.frame.sbtCollapse, Qt::LeftButton);
        for (TTreeNode *node = desk.hands.tree->Items().GetFirstNode(); node; node = node->GetNext())
            QVERIFY(!node->Expanded());
    }

    void fundSheetRuleReadsTheCurrentRow()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        // Opening the per-product dataset left the funds dataset on its first row, which has an address. So
        // every fund enables the button, with or without an address of its own.
        desk.frame.cdsFund->First();
        desk.hands.click(desk.hands.node("Beta Fund"));
        QVERIFY(desk.frame.sbtFundSheet->isEnabled());
        desk.hands.click(desk.hands.node("Equity"));
        QVERIFY(!desk.frame.sbtFundSheet->isEnabled());
        // Adding Cash Fund moves the dataset to its row, which has no address; now every fund disables the
        // button.
        QVERIFY(desk.add("Cash Fund"));
        desk.hands.click(desk.hands.node("Gamma Fund"));
        QVERIFY(!desk.frame.sbtFundSheet->isEnabled());
        QVERIFY(desk.add("Gamma Fund"));
        desk.hands.click(desk.hands.node("Cash Fund"));
        QVERIFY(desk.frame.sbtFundSheet->isEnabled());
    }

    void fundSheetAsksTheHost()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        QSignalSpy asked(&desk.frame, &TfraFundSelector::FundSheetRequested);
        desk.frame.cdsFund->First();
        desk.hands.click(desk.hands.node("Gamma Fund"));
        QTest::mouseClick(desk.frame.sbtFundSheet, Qt::LeftButton);
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked[0][0].toInt(), 103);
        QCOMPARE(asked[0][1].toString(), u"https://funds.example/103"_s);
        // The dataset's row and the list do not change.
        QCOMPARE(desk.frame.cdsFund->RecNo(), 1);
        QCOMPARE(desk.hands.captions(), QStringList());
        // A fund without an address emits no signal.
        desk.hands.click(desk.hands.node("Cash Fund"));
        QVERIFY(desk.frame.sbtFundSheet->isEnabled());
        QTest::mouseClick(desk.frame.sbtFundSheet, Qt::LeftButton);
        QCOMPARE(asked.size(), 1);
    }

    void fundSheetMayTakeTheFrameAway()
    {
        // The host destroys the frame in its handler; the frame must not touch its members afterwards.
        Desk desk;
        auto frame = std::make_unique<TfraFundSelector>();
        frame->BuildFundSelector(SelectorCatalogue::productGroup, {103}, desk.catalogue.connection(),
                                 desk.catalogue.fundData(), {}, {}, {});
        QVERIFY(showActive(*frame));
        QVERIFY(frame->sbtFundSheet->isEnabled());
        int handedOut = -1;
        const int before = frame->cdsFund->BookmarksHandedOut();
        connect(frame.get(), &TfraFundSelector::FundSheetRequested, this, [&] {
            handedOut = frame->cdsFund->BookmarksHandedOut();
            frame.reset();
        });
        QTest::mouseClick(frame->sbtFundSheet, Qt::LeftButton);
        QVERIFY(!frame);
        QCOMPARE(handedOut, before); // no bookmark was handed out for the signal
    }

    // --- keys

    void keysInTheTree()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        desk.hands.tree->setFocus();
        QTest::keyClick(desk.hands.tree, Qt::Key_Home);
        QTest::keyClick(desk.hands.tree, Qt::Key_Return);
        QCOMPARE(desk.hands.captions(), QStringList());
        QTest::keyClick(desk.frame.window(), Qt::Key_E, Qt::AltModifier);
        QVERIFY(desk.hands.node("Equity")->Expanded());
        // Typing in the tree finds a fund.
        typeWord(desk.hands.tree, u"gam"_s);
        QCOMPARE(desk.hands.tree->Selected(), desk.hands.node("Gamma Fund"));
        QTest::keyClick(desk.hands.tree, Qt::Key_Return);
        QCOMPARE(desk.hands.captions(), strings({"Gamma Fund"}));
        QTest::keyClick(desk.hands.tree, Qt::Key_Up);
        QTest::keyClick(desk.hands.tree, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(desk.hands.captions(), strings({"Gamma Fund", "Beta Fund"}));
        QTest::keyClick(desk.hands.tree, Qt::Key_Up);
        QTest::keyClick(desk.frame.window(), Qt::Key_A, Qt::AltModifier);
        QCOMPARE(desk.hands.captions(), strings({"Gamma Fund", "Beta Fund", "Alpha Fund"}));
        QTest::keyClick(desk.frame.window(), Qt::Key_O, Qt::AltModifier);
        QVERIFY(!desk.hands.node("Unit Trusts")->Expanded());
    }

    // Alt with a letter acts immediately on the current selection, not on the one after the next key.
    void altWithALetterActsAtOnce()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        desk.hands.tree->setFocus();
        desk.hands.tree->FullExpand();
        typeWord(desk.hands.tree, u"alp"_s);
        QTest::keyClick(desk.frame.window(), Qt::Key_A, Qt::AltModifier);
        QTest::keyClick(desk.hands.tree, Qt::Key_Down);
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund"}));
        QCOMPARE(desk.hands.tree->Selected(), desk.hands.node("Beta Fund"));
        QTest::keyClick(desk.frame.window(), Qt::Key_A, Qt::AltModifier);
        QTest::keyClick(desk.hands.tree, Qt::Key_Down);
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund", "Beta Fund"}));
        desk.hands.click(desk.hands.list->Items()[0]);
        QTest::keyClick(desk.frame.window(), Qt::Key_R, Qt::AltModifier);
        QCOMPARE(desk.hands.captions(), strings({"Beta Fund"}));
        // The key of a disabled button does nothing.
        desk.frame.sbtClear->setEnabled(false);
        QTest::keyClick(desk.frame.window(), Qt::Key_L, Qt::AltModifier);
        QCOMPARE(desk.hands.captions(), strings({"Beta Fund"}));
    }

    void keysInTheList()
    {
        Desk desk;
        desk.build({101, 102, 103});
        QVERIFY(desk.show());
        QSignalSpy selected(desk.frame.btnSelect, &QPushButton::clicked);
        desk.hands.list->setFocus();
        QTest::keyClick(desk.hands.list, Qt::Key_Home);
        QTest::keyClick(desk.hands.list, Qt::Key_Down);
        QCOMPARE(desk.hands.list->SelectedItem()->Index(), 1);
        QTest::keyClick(desk.hands.list, Qt::Key_Delete);
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund", "Gamma Fund"}));
        QTest::keyClick(desk.hands.list, Qt::Key_Return);
        QCOMPARE(selected.size(), 0);
        QTest::keyClick(desk.hands.list, Qt::Key_End);
        QTest::keyClick(desk.frame.window(), Qt::Key_R, Qt::AltModifier);
        QTRY_COMPARE(desk.hands.captions(), strings({"Alpha Fund"}));
        QTest::keyClick(desk.frame.window(), Qt::Key_L, Qt::AltModifier);
        QTRY_COMPARE(desk.hands.captions(), QStringList());
    }

    void tabOrder()
    {
        Desk desk;
        desk.build({101});
        QVERIFY(desk.show());
        desk.frame.setFocus();
        QVERIFY(desk.hands.tree->hasFocus());
        QCOMPARE(detourOfTab({desk.hands.tree, desk.hands.list, desk.frame.btnSelect, desk.frame.btnCancel,
                              desk.hands.tree}),
                 QString());
    }

    // --- drags

    void draggingOverTheListAddsAtOnce()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        TTreeNode *node = desk.hands.node("Beta Fund");
        const QPoint start = desk.hands.place(node);
        QStringList during;
        QVERIFY(desk.hands.dragToList(desk.hands.tree, start, QPoint(40, 60), [&] {
            QVERIFY(QTest::qWaitFor([&] { return desk.hands.list->Items().Count() > 0; }));
            during = desk.hands.captions();
        }));
        QCOMPARE(during, strings({"Beta Fund"}));
        QCOMPARE(desk.hands.captions(), strings({"Beta Fund"}));
        QVERIFY(desk.frame.btnSelect->isEnabled());
    }

    void draggingAGroupAddsNothing()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        const QPoint start = desk.hands.place(desk.hands.node("Equity"));
        QVERIFY(desk.hands.dragToList(desk.hands.tree, start, QPoint(40, 60), [] {}));
        QCOMPARE(desk.hands.captions(), QStringList());
    }

    void draggingTheListOverItselfFollowsTheTree()
    {
        // The start of the drag does not matter: the fund selected in the tree is added.
        Desk desk;
        desk.build({101});
        QVERIFY(desk.show());
        desk.hands.tree->SetSelected(desk.hands.node("Estate Fund"));
        const QPoint start = desk.hands.place(desk.hands.list->Items()[0]);
        QVERIFY(desk.hands.dragToList(desk.hands.list, start, QPoint(40, 120), [&] {
            QVERIFY(QTest::qWaitFor([&] { return desk.hands.list->Items().Count() > 1; }));
        }));
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund", "Estate Fund"}));
    }

    void draggingWithoutSelectedNodeIsNotAccepted()
    {
        Desk desk;
        desk.build({101});
        QVERIFY(desk.show());
        desk.hands.tree->SetSelected(nullptr);
        QVERIFY(!desk.hands.tree->Selected());
        ReportCatcher report;
        const QPoint start = desk.hands.place(desk.hands.list->Items()[0]);
        QVERIFY(desk.hands.dragToList(desk.hands.list, start, QPoint(40, 120), [] {}));
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund"}));
        bool accept = true;
        desk.hands.list->OnDragOver(desk.hands.list, desk.hands.tree, 1, 1, TDragState::dsDragMove, accept);
        QVERIFY(!accept);
        QCOMPARE(report.messages, QStringList());
    }

    void whatIsAcceptedWhere()
    {
        Desk desk;
        desk.build();
        desk.hands.tree->SetSelected(desk.hands.node("Equity"));
        const auto over = [](const TDragOverEvent &handler, QObject *sender, QObject *source) {
            bool accept = true;
            handler(sender, source, 1, 1, TDragState::dsDragEnter, accept);
            return accept;
        };
        QVERIFY(over(desk.hands.tree->OnDragOver, desk.hands.tree, desk.hands.list));
        QVERIFY(!over(desk.hands.list->OnDragOver, desk.hands.list, desk.hands.tree));
        desk.hands.tree->SetSelected(desk.hands.node("Alpha Fund"));
        QVERIFY(!over(desk.hands.list->OnDragOver, desk.hands.list, nullptr));
        QCOMPARE(desk.hands.captions(), QStringList());
        QVERIFY(over(desk.hands.list->OnDragOver, desk.hands.list, desk.hands.tree));
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund"}));
    }

    // --- the selection

    void preselectionInTheOrderOfTheArray()
    {
        Desk desk;
        desk.build({201, 101, 12345, 111, 101});
        QCOMPARE(desk.hands.captions(), strings({"Estate Fund", "Alpha Fund", "Cash Fund"}));
        // The last fund found stays selected in the tree.
        QCOMPARE(desk.hands.tree->Selected(), desk.hands.node("Alpha Fund"));
        QVERIFY(desk.hands.node("Unit Trusts")->Expanded());
        QVERIFY(desk.frame.btnSelect->isEnabled());
        QCOMPARE(desk.confirmed(), TDynamicArrayOfInt({201, 101, 111}));
    }

    void preselectionEndsOnTheLastFundOfTheTree()
    {
        Desk desk;
        desk.build({103});
        QCOMPARE(desk.frame.cdsFund->FieldByName(u"FundID"_s)->AsInteger(), 201);
        QCOMPARE(desk.frame.sbtFundSheet->isEnabled(), true);
        desk.build({102});
        QVERIFY(!desk.frame.sbtFundSheet->isEnabled());
    }

    void preselectedFundThatIsNotVisibleIsDropped()
    {
        Desk desk;
        desk.build({777});
        QCOMPARE(desk.hands.captions(), QStringList());
        QVERIFY(!desk.frame.btnSelect->isEnabled());
        QVERIFY(!desk.hands.tree->Selected());
    }

    void oneFundInTwoRows()
    {
        // The same id with two names makes two entries, with one name one entry.
        Desk desk;
        desk.catalogue.addFund(500, 11, u"Double"_s);
        desk.catalogue.addFund(500, 20, u"Double"_s);
        desk.catalogue.addFund(501, 11, u"First Name"_s);
        desk.catalogue.addFund(501, 20, u"Second Name"_s);
        desk.build({501, 500});
        QCOMPARE(desk.hands.captions(), strings({"First Name", "Second Name", "Double"}));
        QCOMPARE(desk.hands.tree->Selected()->Parent(), desk.hands.node("Property"));
        QCOMPARE(desk.confirmed(), TDynamicArrayOfInt({501, 501, 500}));
    }

    void displayingMoreLater()
    {
        Desk desk;
        desk.build({101});
        QVERIFY(desk.show());
        QTest::keyClick(desk.hands.tree, Qt::Key_Tab);
        desk.frame.DisplaySelectedItems({101, 201});
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund", "Estate Fund"}));
        desk.frame.DisplaySelectedItems({});
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund", "Estate Fund"}));
    }

    void displayingTheSelectedFundWhileAddIsOff()
    {
        Desk desk;
        desk.build({101});
        QVERIFY(desk.show());
        QTest::mouseClick(desk.frame.sbtClear, Qt::LeftButton);
        desk.hands.tree->setFocus();
        QTest::keyClick(desk.hands.tree, Qt::Key_Tab);
        QVERIFY(!desk.frame.sbtAdd->isEnabled());
        desk.frame.DisplaySelectedItems({101});
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund"}));
    }

    void newSelection()
    {
        Desk desk;
        TDynamicArrayOfInt ids{9, 8, 7, 6};
        QVERIFY(!desk.frame.IsNewFundSelection(ids));
        desk.build({101, 201});
        QVERIFY(desk.show());
        QVERIFY(!desk.frame.IsNewFundSelection(ids));
        QTest::mouseClick(desk.frame.btnCancel, Qt::LeftButton);
        QVERIFY(!desk.frame.IsNewFundSelection(ids));
        QCOMPARE(ids, TDynamicArrayOfInt({9, 8, 7, 6}));
        QTest::mouseClick(desk.frame.btnSelect, Qt::LeftButton);
        QVERIFY2(desk.frame.isVisible(), "closing is the host's");
        QVERIFY(desk.frame.IsNewFundSelection(ids));
        QCOMPARE(ids, TDynamicArrayOfInt({101, 201}));
        // A confirmed empty list returns true and leaves the array unchanged.
        QTest::mouseClick(desk.frame.sbtClear, Qt::LeftButton);
        ids = {5};
        QVERIFY(desk.frame.IsNewFundSelection(ids));
        QCOMPARE(ids, TDynamicArrayOfInt({5}));
        desk.build({101});
        QVERIFY(!desk.frame.IsNewFundSelection(ids));
        QCOMPARE(ids, TDynamicArrayOfInt({5}));
    }

    void buildingAgainStartsWithAnEmptyList()
    {
        Desk desk;
        desk.build({101, 102});
        desk.build({103});
        QCOMPARE(desk.hands.captions(), strings({"Gamma Fund"}));
        QCOMPARE(desk.hands.tree->Items().Count(), 10);
        QCOMPARE(desk.frame.cdsFund->BookmarksLost(), 0);
        QCOMPARE(desk.frame.cdsFundGroup->BookmarksLost(), 0);
        QCOMPARE(desk.frame.cdsFundGroupType->BookmarksLost(), 0);
    }

    void everyBookmarkComesBack()
    {
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build({101, 201});
        QVERIFY(desk.show());
        QVERIFY(desk.add("Beta Fund"));
        QCOMPARE(desk.confirmed().size(), 3);
        for (TClientDataSet *dataSet :
             {desk.frame.cdsFund, desk.frame.cdsFundGroup, desk.frame.cdsFundGroupType}) {
            QVERIFY(dataSet->BookmarksHandedOut() > 0);
            dataSet->Close();
            QCOMPARE(dataSet->BookmarksLost(), 0);
        }
        for (TTreeNode *node = desk.hands.tree->Items().GetFirstNode(); node; node = node->GetNext())
            QCOMPARE(node->Data(), nullptr);
    }

    void destructionClosesTheDatasetsAndFreesTheBookmarks()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        auto frame = std::make_unique<TfraFundSelector>();
        frame->BuildFundSelector(3, {101}, catalogue.connection(), catalogue.fundData(), {}, {}, {});
        int lost = -1;
        int closed = 0;
        for (TClientDataSet *dataSet :
             {frame->cdsFund, frame->cdsFundGroup, frame->cdsFundGroupType, frame->cdsFundPerProduct}) {
            dataSet->AfterClose = [&](TDataSet *sender) {
                ++closed;
                lost = qMax(lost, sender->BookmarksLost());
            };
        }
        frame.reset();
        QCOMPARE(closed, 4);
        QCOMPARE(lost, 0);
    }

    // --- invalid input

    void badInputReachesTheCaller_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("named");
        for (const char *field : {"FundID", "FundGroupID", "FundName", "FundSheetURL", "ProductID"})
            QTest::addRow("packet without %s", field)
                << QString::fromLatin1("without ") + QLatin1String(field) << QString::fromLatin1(field);
        QTest::newRow("no packet") << u"none"_s << QString();
        QTest::newRow("a packet of another kind") << u"text"_s << QString();
        QTest::newRow("missing provider") << u"provider"_s << u"dspFundGroup"_s;
        QTest::newRow("no connection") << u"connection"_s << QString();
        QTest::newRow("provider failing half way") << u"halfway"_s << u"half way"_s;
        QTest::newRow("table gone half way") << u"table"_s << u"offer"_s;
        QTest::newRow("malformed filter") << u"filter"_s << QString();
    }
    void badInputReachesTheCaller()
    {
        QFETCH(QString, what);
        QFETCH(QString, named);
        ReportCatcher report;
        Desk desk;
        TLocalConnection *connection = desk.catalogue.connection();
        TLocalConnection bare;
        QVariant packet = desk.catalogue.fundData();
        QString filter;
        if (what.startsWith("without"_L1))
            packet = desk.catalogue.fundDataWithout(named);
        else if (what == "none"_L1)
            packet = QVariant();
        else if (what == "text"_L1)
            packet = u"not a packet"_s;
        else if (what == "provider"_L1)
            connection = &bare;
        else if (what == "connection"_L1)
            connection = nullptr;
        else if (what == "halfway"_L1)
            connection->RegisterProvider(u"dspFundPerProduct"_s, [](const TParams &) -> TDataPacket {
                throw EDatabaseError(u"gone half way"_s);
            });
        else if (what == "table"_L1)
            QVERIFY(QSqlQuery(desk.catalogue.database()).exec(u"drop table offer"_s));
        else
            filter = u"Kind = ("_s;
        try {
            desk.frame.BuildFundSelector(3, {101, 201}, connection, packet, filter, {}, {});
            QFAIL("nothing was raised");
        } catch (const EDatabaseError &error) {
            QVERIFY(!error.message().isEmpty());
            QVERIFY2(error.message().contains(named), qPrintable(error.message()));
        }
        QCOMPARE(report.messages, QStringList());
        QCOMPARE(int(Screen().Cursor()), int(TCursor::crDefault));
        // The next build works completely.
        SelectorCatalogue other;
        other.fillSmall();
        desk.frame.BuildFundSelector(3, {101, 201}, other.connection(), other.fundData(), {}, {}, {});
        QCOMPARE(desk.hands.captions(), strings({"Alpha Fund", "Estate Fund"}));
    }

    void emptyPacketHidesEverythingThatIsNotOffered()
    {
        Desk desk;
        SelectorCatalogue empty;
        desk.frame.BuildFundSelector(3, {101}, desk.catalogue.connection(), empty.fundData(), {}, {}, {});
        QCOMPARE(desk.hands.nodes(), QStringList());
        QCOMPARE(desk.hands.captions(), QStringList());
        QVERIFY(!desk.frame.btnSelect->isEnabled());
    }

    void fundSheetFieldMissingIsReportedWhenAFundIsPicked()
    {
        ReportCatcher report;
        Desk desk;
        desk.frame.BuildFundSelector(3, {}, desk.catalogue.connection(),
                                     desk.catalogue.fundDataWithout(u"FundSheetURL"_s), {}, {}, {});
        QVERIFY(desk.show());
        desk.hands.click(desk.hands.node("Equity"));
        QCOMPARE(report.messages, QStringList());
        desk.hands.click(desk.hands.node("Beta Fund"));
        QCOMPARE(report.messages.size(), 1);
        QVERIFY(report.messages[0].contains(u"FundSheetURL"_s));
    }

    void groupWithoutName()
    {
        Desk desk;
        desk.catalogue.addGroup(21, 2, QVariant());
        desk.catalogue.addFund(301, 21, u"Nameless Fund"_s);
        desk.catalogue.addGroup(22, 2, QVariant());
        desk.catalogue.offer(22);
        desk.build({301});
        const QStringList nodes = desk.hands.nodes();
        QCOMPARE(nodes.mid(nodes.size() - 3), strings({"  ", "    Nameless Fund", "   *"}));
        QCOMPARE(desk.hands.captions(), strings({"Nameless Fund"}));
    }

    // --- size

    void manyFundsPreselected()
    {
        constexpr int funds = 20'000;
        constexpr int groups = 2'000;
        TTableBuilder types(
            {{u"GroupTypeID"_s, TFieldType::Integer}, {u"GroupTypeDesc"_s, TFieldType::String}});
        types.AddRow({1, u"All"_s});
        TTableBuilder group({{u"FundGroupID"_s, TFieldType::Integer},
                             {u"GroupTypeID"_s, TFieldType::Integer},
                             {u"FundGroupName"_s, TFieldType::String}});
        TTableBuilder offer({{u"FundGroupID"_s, TFieldType::Integer}});
        TTableBuilder fund({{u"FundID"_s, TFieldType::Integer},
                            {u"FundGroupID"_s, TFieldType::Integer},
                            {u"FundName"_s, TFieldType::String},
                            {u"FundSheetURL"_s, TFieldType::String},
                            {u"ProductID"_s, TFieldType::Integer}});
        TDynamicArrayOfInt ids;
        for (int g = 0; g < groups; ++g) {
            group.AddRow({g + 1, 1, u"Group %1"_s.arg(g + 1)});
            offer.AddRow({g + 1});
            if (g % 2)
                continue; // every other group is offered and has no funds
            for (int f = 0; f < 2 * funds / groups; ++f) {
                ids.append(static_cast<int>(ids.size()) + 1);
                fund.AddRow({ids.last(), g + 1, u"Fund %1"_s.arg(ids.last()), QString(), 7});
            }
        }
        TLocalConnection connection;
        const TTablePtr tables[] = {types.Finish(), group.Finish(), offer.Finish()};
        const char *const names[] = {"dspFundGroupType", "dspFundGroup", "dspFundPerProduct"};
        for (int i = 0; i < 3; ++i) {
            connection.RegisterProvider(QLatin1String(names[i]),
                                        [table = tables[i]](const TParams &) { return TDataPacket(table); });
        }
        TfraFundSelector frame;
        frame.BuildFundSelector(3, ids, &connection, TDataPacket(fund.Finish()).ToVariant(), {}, {}, {});
        const SelectorDriver hands(frame);
        QCOMPARE(hands.list->Items().Count(), ids.size());
        QVERIFY(!frame.lblWarningMessage->isHidden());
    }
};

ZEL_TEST_MAIN(tst_fundselector)
#include "tst_fundselector.moc"
