// The fund selector frame: what it shows, its buttons, keys and drags, and the selection it hands back.
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

namespace
{
const QString note = QStringLiteral(
    "* Fixed Bonds are available if the Bond Code is valid and the Investment Receipt Date is in the current "
    "working week (Monday-Friday).  Multi-manager funds are available if the investor is not a company.");

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

    /// A frame, the catalogue behind it and the hands that work it.
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
        QCOMPARE(frame.findChild<TfraFundsTreeView *>(QStringLiteral("fraFundsTreeView")),
                 frame.fraFundsTreeView);
        QCOMPARE(frame.findChild<TfraFundsSelectedListView *>(QStringLiteral("fraFundsSelectedListView")),
                 frame.fraFundsSelectedListView);
        QCOMPARE(frame.findChild<QSplitter *>(QStringLiteral("splMain")), frame.splMain);
        QCOMPARE(frame.findChild<QLabel *>(QStringLiteral("lblInfoMessage")), frame.lblInfoMessage);
        QCOMPARE(frame.findChild<QLabel *>(QStringLiteral("lblWarningMessage")), frame.lblWarningMessage);
        QCOMPARE(frame.findChild<QPushButton *>(QStringLiteral("btnSelect")), frame.btnSelect);
        QCOMPARE(frame.findChild<QPushButton *>(QStringLiteral("btnCancel")), frame.btnCancel);
        QCOMPARE(frame.findChild<TImageList *>(QStringLiteral("imgCommon")), frame.imgCommon);
        QCOMPARE(frame.findChild<TClientDataSet *>(QStringLiteral("cdsFundGroupType")),
                 frame.cdsFundGroupType);
        QCOMPARE(frame.findChild<TClientDataSet *>(QStringLiteral("cdsFundGroup")), frame.cdsFundGroup);
        QCOMPARE(frame.findChild<TClientDataSet *>(QStringLiteral("cdsFund")), frame.cdsFund);
        QCOMPARE(frame.findChild<TClientDataSet *>(QStringLiteral("cdsFundPerProduct")),
                 frame.cdsFundPerProduct);
        QCOMPARE(frame.imgCommon->Count(), 10);
        for (int i = 0; i < 10; ++i)
            QVERIFY(!frame.imgCommon->Icon(i).isNull());
        QCOMPARE(frame.lblInfoMessage->text(), QStringLiteral("< info message comes here >"));
        QCOMPARE(frame.lblWarningMessage->text(), QStringLiteral("< tree node warning comes here >"));
        QVERIFY(frame.lblWarningMessage->isHidden());
        QVERIFY(frame.lblWarningMessage->font().italic());
        QVERIFY(frame.lblInfoMessage->font().italic());
        QVERIFY(frame.lblWarningMessage->wordWrap());
        for (const QLabel *label : {frame.lblWarningMessage, frame.lblInfoMessage}) {
            QVERIFY(label->alignment() & Qt::AlignHCenter);
            QCOMPARE(label->textFormat(), Qt::PlainText); // what the caller says is no markup
        }
        QVERIFY(frame.btnSelect->isFlat() && frame.btnCancel->isFlat());
        TPanel *bar = frame.fraFundsSelectedListView->pnlHeaderCaption;
        QCOMPARE(bar->colorName(), QStringLiteral("clGreen5"));
        QCOMPARE(bar->textColorName(), QStringLiteral("clBlack"));
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
        // The splitter gives the tree what it takes from the list.
        const QPoint handle = frame.splMain->handle(1)->rect().center();
        QTest::mousePress(frame.splMain->handle(1), Qt::LeftButton, {}, handle);
        QTest::mouseMove(frame.splMain->handle(1), handle + QPoint(80, 0));
        QTest::mouseRelease(frame.splMain->handle(1), Qt::LeftButton, {}, handle + QPoint(80, 0));
        QVERIFY(frame.fraFundsTreeView->width() > 271);
        QCOMPARE(frame.Panel2->width(), 58);
        // It cannot be dragged out of sight.
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
        const QString remove = QStringLiteral("remove selected fund(s) from the list");
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
        QVERIFY(letters.contains(QStringLiteral("Alt+S")));
        QVERIFY(letters.contains(QStringLiteral("Alt+C")));
    }

    void parametersAsDesigned()
    {
        TfraFundSelector frame;
        QCOMPARE(frame.cdsFundGroupType->ProviderName(), QStringLiteral("dspFundGroupType"));
        QCOMPARE(frame.cdsFundGroup->ProviderName(), QStringLiteral("dspFundGroup"));
        QCOMPARE(frame.cdsFund->ProviderName(), QString());
        QCOMPARE(frame.cdsFundPerProduct->ProviderName(), QStringLiteral("dspFundPerProduct"));
        QCOMPARE(frame.cdsFundGroupType->Params().Count(), 1);
        QCOMPARE(frame.cdsFundGroupType->Params()[0].Name, QStringLiteral("pProductGroupID"));
        QCOMPARE(frame.cdsFundGroupType->Params()[0].DataType, TParamDataType::Integer);
        QCOMPARE(frame.cdsFundGroup->Params().Count(), 1);
        QCOMPARE(frame.cdsFundGroup->Params()[0].DataType, TParamDataType::FixedChar);
        for (const TClientDataSet *dataSet : {frame.cdsFund, frame.cdsFundPerProduct}) {
            QCOMPARE(dataSet->Params().Count(), 2);
            QCOMPARE(dataSet->Params()[0].Name, QStringLiteral("pProductID"));
            QCOMPARE(dataSet->Params()[1].Name, QStringLiteral("pProductGroupID"));
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
        QCOMPARE(desk.catalogue.calls.first(), QStringLiteral("dspFundGroup pProductGroupID=44"));
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
        QCOMPARE(desk.frame.cdsFundGroup->Filter(), QStringLiteral("not(FundGroupID in (12,-1,40))"));
        QVERIFY(desk.frame.cdsFundGroup->Filtered());
        QCOMPARE(desk.frame.cdsFundGroupType->Filter(), QStringLiteral("not(GroupTypeID in (3))"));
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
        const QString group = QStringLiteral("FundGroupID");
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFund, group, true),
                 QStringLiteral("not(FundGroupID in (12,-1,40))"));
        // Without recording, what the product offers counts as childless like the rest.
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFund, group, false),
                 QStringLiteral("not(FundGroupID in (12,15,40))"));
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, QStringLiteral("  FundGroupID "),
                                            frame.cdsFund, group, false),
                 QStringLiteral("not(FundGroupID in (12,15,40))"));
        QCOMPARE(
            frame.BuildExclusionFilter(frame.cdsFundGroup, QStringLiteral("  "), frame.cdsFund, group, true),
            QString());
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFund, QString(), true),
                 QString());
        QCOMPARE(frame.cdsFundGroup->RecNo(), 1);
        QCOMPARE(frame.BuildExclusionFilter(frame.cdsFundGroup, group, frame.cdsFundGroup, group, true),
                 QString());
        TClientDataSet closed1;
        TClientDataSet closed2;
        QCOMPARE(frame.BuildExclusionFilter(&closed1, group, &closed2, group, true), QString());
        // One active dataset is enough to go on, and then the closed one is in the way.
        QVERIFY_THROWS_EXCEPTION(EDatabaseError,
                                 frame.BuildExclusionFilter(&closed1, group, frame.cdsFund, group, true));
        QVERIFY_THROWS_EXCEPTION(
            EDatabaseError, frame.BuildExclusionFilter(frame.cdsFundGroup, group, &closed2, group, true));
    }

    void perProductFilter()
    {
        // Group 15 is offered as a bond only: filtering the offers by kind takes it out of the tree.
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build({}, QStringLiteral("  Kind = 'fund'  "));
        QCOMPARE(desk.frame.cdsFundPerProduct->Filter(), QStringLiteral("Kind = 'fund'"));
        QVERIFY(desk.frame.cdsFundPerProduct->Filtered());
        QVERIFY(!desk.hands.node("Fixed Bonds *"));
        QCOMPARE(desk.frame.cdsFundGroup->Filter(), QStringLiteral("not(FundGroupID in (12,15,40))"));
        QVERIFY(desk.frame.lblWarningMessage->isHidden());
    }

    void blankPerProductFilterIsNone()
    {
        Desk desk;
        desk.catalogue.addChildlessGroups();
        desk.build({}, QStringLiteral("   "));
        QVERIFY(!desk.frame.cdsFundPerProduct->Filtered());
        QVERIFY(desk.hands.node("Fixed Bonds *"));
    }

    void markedAreOfferedGroupsOnly()
    {
        // An offered group with funds is not marked, nor is a type or a fund with the group's number.
        Desk desk;
        desk.catalogue.addType(15, QStringLiteral("Type 15"));
        desk.catalogue.addGroup(50, 15, QStringLiteral("Group 50"));
        desk.catalogue.addFund(15, 50, QStringLiteral("Fund 15"));
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
        QTest::newRow("blanks") << QStringLiteral("   ") << QStringLiteral(" \t ") << note << QString();
        QTest::newRow("texts") << QStringLiteral("  Ask first. ") << QStringLiteral(" Up to 20 funds ")
                               << note + QStringLiteral(" Ask first.") << QStringLiteral("Up to 20 funds");
        QTest::newRow("markup is text")
            << QStringLiteral("<b>x</b> & y") << QStringLiteral("a && b <i>")
            << note + QStringLiteral(" <b>x</b> & y") << QStringLiteral("a && b <i>");
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
        // The whole text stands inside the label, whatever its length.
        const QLabel *label = desk.frame.lblWarningMessage;
        QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
    }

    void noteWithoutMarkedGroupIsNotShown()
    {
        Desk desk;
        desk.build({}, {}, QStringLiteral("Ask first."), QStringLiteral("Info"));
        QVERIFY(desk.frame.lblWarningMessage->isHidden());
        QCOMPARE(desk.frame.lblWarningMessage->text(), QStringLiteral("< tree node warning comes here >"));
        QCOMPARE(desk.frame.lblInfoMessage->text(), QStringLiteral("Info"));
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
                                     plain.fundData(), {}, QStringLiteral("again"), {});
        QVERIFY(!desk.frame.lblWarningMessage->isHidden());
        QCOMPARE(desk.frame.lblWarningMessage->text(), note + QStringLiteral(" again"));
    }

    void offeredGroupsOutliveABuildWithoutChildlessOnes()
    {
        // The first build remembers group 15 as offered and empty. The second one has a fund in every group,
        // so nothing is worked out anew: group 15, which has a fund now, is still marked.
        Desk desk;
        desk.catalogue.addGroup(15, 2, QStringLiteral("Fixed Bonds"));
        desk.catalogue.offer(15);
        desk.build();
        QVERIFY(desk.hands.node("Fixed Bonds *"));
        QCOMPARE(desk.frame.cdsFundGroup->Filter(), QStringLiteral("not(FundGroupID in (-1))"));
        desk.catalogue.addFund(301, 15, QStringLiteral("Bond Fund"));
        desk.build();
        QVERIFY(desk.hands.node("Fixed Bonds *"));
        QVERIFY(desk.hands.node("Bond Fund"));
        // A build with other childless groups starts the list anew.
        desk.catalogue.addGroup(16, 2, QStringLiteral("Unwanted"));
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
        QVERIFY(!desk.frame.cdsFund->ControlsDisabled()); // whoever watches the dataset hears of it
    }

    // A build starts from nothing, whatever was done since the one before: every provider is asked, the
    // list's column has its width and no button is left from a fund that is gone.
    void buildingAgainAsksForEverything()
    {
        Desk desk;
        desk.build({101, 102});
        QVERIFY(desk.show());
        desk.hands.click(desk.hands.list->Items()[0]);
        QVERIFY(desk.frame.sbtRemove->isEnabled());
        desk.hands.list->SetColumnWidth(0, 40);
        desk.catalogue.addType(5, QStringLiteral("Hedge"));
        desk.catalogue.addGroup(50, 5, QStringLiteral("Long Short"));
        desk.catalogue.addFund(501, 50, QStringLiteral("Delta Fund"));
        desk.build({501});
        QCOMPARE(desk.hands.nodes().mid(10), strings({"Hedge", "  Long Short", "    Delta Fund"}));
        QVERIFY(!desk.frame.sbtRemove->isEnabled());
        QCOMPARE(desk.hands.list->ColumnWidth(0), desk.hands.list->ClientWidth());
    }

    // The product is that of the packet's first row, wherever the adviser has gone in the funds since.
    void theProductIsTheFirstRows()
    {
        Desk desk;
        TTableBuilder funds({{QStringLiteral("FundID"), TFieldType::Integer},
                             {QStringLiteral("FundGroupID"), TFieldType::Integer},
                             {QStringLiteral("FundName"), TFieldType::String},
                             {QStringLiteral("FundSheetURL"), TFieldType::String},
                             {QStringLiteral("ProductID"), TFieldType::Integer}});
        funds.AddRow({101, 10, QStringLiteral("Alpha Fund"), QString(), 7});
        funds.AddRow({201, 20, QStringLiteral("Estate Fund"), QString(), 8});
        desk.frame.BuildFundSelector(3, {}, desk.catalogue.connection(),
                                     TDataPacket(funds.Finish()).ToVariant(), {}, {}, {});
        QVERIFY(desk.show());
        QVERIFY(desk.add("Estate Fund"));
        desk.catalogue.calls.clear();
        desk.frame.cdsFundPerProduct->Close();
        desk.frame.cdsFundPerProduct->Open();
        QCOMPARE(desk.catalogue.calls, strings({"dspFundPerProduct pProductID=7 pProductGroupID=3"}));
    }

    // The warning is black on light and what stands for it on dark, also when the palette changes later.
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

    // A larger font needs larger buttons; none of a caption is cut off.
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

    // Nothing is left to remove when the list is empty, however it was emptied.
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
        QCOMPARE(desk.frame.cdsFund->FieldByName(QStringLiteral("FundID"))->AsInteger(), 201);
        QCOMPARE(desk.frame.cdsFundGroup->FieldByName(QStringLiteral("FundGroupID"))->AsInteger(), 20);
        QVERIFY(desk.add("Beta Fund"));
        QCOMPARE(desk.frame.cdsFundGroup->FieldByName(QStringLiteral("FundGroupID"))->AsInteger(), 10);
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
        // Recognised by caption, blanks around it and case left out; the first one stays.
        Desk desk;
        desk.catalogue.addFund(999, 20, QStringLiteral("  ALPHA fund "));
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
        // The per-product dataset's opening left the funds on the first row, which has an address: every fund
        // turns the button on, its own address or not.
        desk.frame.cdsFund->First();
        desk.hands.click(desk.hands.node("Beta Fund"));
        QVERIFY(desk.frame.sbtFundSheet->isEnabled());
        desk.hands.click(desk.hands.node("Equity"));
        QVERIFY(!desk.frame.sbtFundSheet->isEnabled());
        // Adding Cash Fund moves the dataset to its row, whose address is blank: now no fund turns it on.
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
        QCOMPARE(asked[0][1].toString(), QStringLiteral("https://funds.example/103"));
        // The dataset stays where it was, and nothing else happens in the frame.
        QCOMPARE(desk.frame.cdsFund->RecNo(), 1);
        QCOMPARE(desk.hands.captions(), QStringList());
        // A fund without an address of its own asks for nothing.
        desk.hands.click(desk.hands.node("Cash Fund"));
        QVERIFY(desk.frame.sbtFundSheet->isEnabled());
        QTest::mouseClick(desk.frame.sbtFundSheet, Qt::LeftButton);
        QCOMPARE(asked.size(), 1);
    }

    void fundSheetMayTakeTheFrameAway()
    {
        // A host that answers by closing the page: nothing of the frame is touched after that.
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
        QCOMPARE(handedOut, before); // nothing is left to be given back
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
        // The tree's own type-ahead leads to a fund.
        typeWord(desk.hands.tree, QStringLiteral("gam"));
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

    // Such a key means what is chosen as it is pressed, not what the next key chooses.
    void altWithALetterActsAtOnce()
    {
        Desk desk;
        desk.build();
        QVERIFY(desk.show());
        desk.hands.tree->setFocus();
        desk.hands.tree->FullExpand();
        typeWord(desk.hands.tree, QStringLiteral("alp"));
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
        // A button that is out of reach stays silent.
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
        // Where the drag began plays no part: the tree's selected fund is what is added.
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
        // The tree's selection ends on the last fund that was found.
        QCOMPARE(desk.hands.tree->Selected(), desk.hands.node("Alpha Fund"));
        QVERIFY(desk.hands.node("Unit Trusts")->Expanded());
        QVERIFY(desk.frame.btnSelect->isEnabled());
        QCOMPARE(desk.confirmed(), TDynamicArrayOfInt({201, 101, 111}));
    }

    void preselectionEndsOnTheLastFundOfTheTree()
    {
        Desk desk;
        desk.build({103});
        QCOMPARE(desk.frame.cdsFund->FieldByName(QStringLiteral("FundID"))->AsInteger(), 201);
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
        // The same identifier under two names is two entries; under one name it is one.
        Desk desk;
        desk.catalogue.addFund(500, 11, QStringLiteral("Double"));
        desk.catalogue.addFund(500, 20, QStringLiteral("Double"));
        desk.catalogue.addFund(501, 11, QStringLiteral("First Name"));
        desk.catalogue.addFund(501, 20, QStringLiteral("Second Name"));
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
        // Confirmed with an empty list: the confirmation stands, the array too.
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

    // --- bad input

    void badInputReachesTheCaller_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("named");
        for (const char *field : {"FundID", "FundGroupID", "FundName", "FundSheetURL", "ProductID"})
            QTest::addRow("packet without %s", field)
                << QString::fromLatin1("without ") + QLatin1String(field) << QString::fromLatin1(field);
        QTest::newRow("no packet") << QStringLiteral("none") << QString();
        QTest::newRow("a packet of another kind") << QStringLiteral("text") << QString();
        QTest::newRow("missing provider") << QStringLiteral("provider") << QStringLiteral("dspFundGroup");
        QTest::newRow("no connection") << QStringLiteral("connection") << QString();
        QTest::newRow("provider failing half way") << QStringLiteral("halfway") << QStringLiteral("half way");
        QTest::newRow("table gone half way") << QStringLiteral("table") << QStringLiteral("offer");
        QTest::newRow("malformed filter") << QStringLiteral("filter") << QString();
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
        if (what.startsWith(QLatin1String("without")))
            packet = desk.catalogue.fundDataWithout(named);
        else if (what == QLatin1String("none"))
            packet = QVariant();
        else if (what == QLatin1String("text"))
            packet = QStringLiteral("not a packet");
        else if (what == QLatin1String("provider"))
            connection = &bare;
        else if (what == QLatin1String("connection"))
            connection = nullptr;
        else if (what == QLatin1String("halfway"))
            connection->RegisterProvider(QStringLiteral("dspFundPerProduct"),
                                         [](const TParams &) -> TDataPacket {
                                             throw EDatabaseError(QStringLiteral("gone half way"));
                                         });
        else if (what == QLatin1String("table"))
            QVERIFY(QSqlQuery(desk.catalogue.database()).exec(QStringLiteral("drop table offer")));
        else
            filter = QStringLiteral("Kind = (");
        try {
            desk.frame.BuildFundSelector(3, {101, 201}, connection, packet, filter, {}, {});
            QFAIL("nothing was raised");
        } catch (const EDatabaseError &error) {
            QVERIFY(!error.message().isEmpty());
            QVERIFY2(error.message().contains(named), qPrintable(error.message()));
        }
        QCOMPARE(report.messages, QStringList());
        QCOMPARE(int(Screen().Cursor()), int(TCursor::crDefault));
        // The next build is whole again.
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
                                     desk.catalogue.fundDataWithout(QStringLiteral("FundSheetURL")), {}, {},
                                     {});
        QVERIFY(desk.show());
        desk.hands.click(desk.hands.node("Equity"));
        QCOMPARE(report.messages, QStringList());
        desk.hands.click(desk.hands.node("Beta Fund"));
        QCOMPARE(report.messages.size(), 1);
        QVERIFY(report.messages[0].contains(QStringLiteral("FundSheetURL")));
    }

    void groupWithoutName()
    {
        Desk desk;
        desk.catalogue.addGroup(21, 2, QVariant());
        desk.catalogue.addFund(301, 21, QStringLiteral("Nameless Fund"));
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
        TTableBuilder types({{QStringLiteral("GroupTypeID"), TFieldType::Integer},
                             {QStringLiteral("GroupTypeDesc"), TFieldType::String}});
        types.AddRow({1, QStringLiteral("All")});
        TTableBuilder group({{QStringLiteral("FundGroupID"), TFieldType::Integer},
                             {QStringLiteral("GroupTypeID"), TFieldType::Integer},
                             {QStringLiteral("FundGroupName"), TFieldType::String}});
        TTableBuilder offer({{QStringLiteral("FundGroupID"), TFieldType::Integer}});
        TTableBuilder fund({{QStringLiteral("FundID"), TFieldType::Integer},
                            {QStringLiteral("FundGroupID"), TFieldType::Integer},
                            {QStringLiteral("FundName"), TFieldType::String},
                            {QStringLiteral("FundSheetURL"), TFieldType::String},
                            {QStringLiteral("ProductID"), TFieldType::Integer}});
        TDynamicArrayOfInt ids;
        for (int g = 0; g < groups; ++g) {
            group.AddRow({g + 1, 1, QStringLiteral("Group %1").arg(g + 1)});
            offer.AddRow({g + 1});
            if (g % 2)
                continue; // every other group is offered and empty
            for (int f = 0; f < 2 * funds / groups; ++f) {
                ids.append(static_cast<int>(ids.size()) + 1);
                fund.AddRow({ids.last(), g + 1, QStringLiteral("Fund %1").arg(ids.last()), QString(), 7});
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
