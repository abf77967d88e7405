// The toolbar above the allocation grid.
// labels: x11
#include "Frames.h"
#include "ZelTest.h"

#include "funds/fra_FundToolBar.h"

#include <QAccessible>
#include <QSignalSpy>

class tst_fundtoolbar : public ZelTest
{
    Q_OBJECT
    static QList<TSpeedButton *> buttons(const TfraFundToolBar &bar)
    {
        return {bar.sbtFunds,          bar.sbtDuplicate,   bar.sbtRemove,    bar.sbtClear,
                bar.sbtAllocateAmount, bar.sbtResetToZero, bar.sbtGuarantee, bar.sbtInvested};
    }

private Q_SLOTS:
    void eightButtonsAsDesigned_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("left");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("hint");
        QTest::addRow("Funds") << 0 << "sbtFunds" << 0 << "Funds"
                               << "fund selector";
        QTest::addRow("Duplicate") << 1 << "sbtDuplicate" << 70 << "Duplicate"
                                   << "duplicates the selected fund";
        QTest::addRow("Remove") << 2 << "sbtRemove" << 140 << "Remove"
                                << "removes the selected fund from the list";
        QTest::addRow("Clear") << 3 << "sbtClear" << 210 << "Clear"
                               << "clears the fund selection list";
        QTest::addRow("Allocate") << 4 << "sbtAllocateAmount" << 280 << "Allocate"
                                  << "allocates the remaining amount to the unallocated funds";
        QTest::addRow("Reset") << 5 << "sbtResetToZero" << 350 << "Reset"
                               << "sets all the fund values to 0";
        QTest::addRow("Guar") << 6 << "sbtGuarantee" << 420 << "Guar"
                              << "calculates the required guarantee";
        QTest::addRow("Invested?") << 7 << "sbtInvested" << 490 << "Invested?"
                                   << "calculates the required guarantee";
    }
    void eightButtonsAsDesigned()
    {
        QFETCH(int, index);
        QFETCH(QString, name);
        QFETCH(int, left);
        QFETCH(QString, caption);
        QFETCH(QString, hint);
        TfraFundToolBar bar;
        QCOMPARE(bar.size(), QSize(600, 20));
        QVERIFY(showActive(bar));
        TSpeedButton *button = buttons(bar).at(index);
        QCOMPARE(button->objectName(), name);
        QCOMPARE(bar.findChild<TSpeedButton *>(name), button);
        QCOMPARE(button->geometry(), QRect(left, 0, 70, 20));
        QCOMPARE(button->text(), caption);
        QCOMPARE(button->toolTip(), hint);
        QVERIFY(button->autoRaise());
        QVERIFY(button->isVisible());
        QVERIFY(!button->icon().isNull());
        QCOMPARE(button->iconSize(), QSize(16, 16));
        QCOMPARE(button->parentWidget(), bar.pnlMenu);
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(button);
        QCOMPARE(spoken->text(QAccessible::Name), caption);
        QCOMPARE(spoken->text(QAccessible::Description), hint);
        // Picture, gap and caption fit into the button.
        QVERIFY2(16 + 4 + button->fontMetrics().horizontalAdvance(caption) <= 70, qPrintable(caption));
    }

    void fourButtonsHaveADisabledPictureOfTheirOwn()
    {
        TfraFundToolBar bar;
        const QList<const TSpeedButton *> two{bar.sbtRemove, bar.sbtGuarantee, bar.sbtAllocateAmount,
                                              bar.sbtResetToZero};
        for (const TSpeedButton *button : buttons(bar))
            QVERIFY2(hasDisabledPicture(button->icon()) == two.contains(button),
                     qPrintable(button->objectName()));
    }

    void showToolButtonsDoesNothing()
    {
        TfraFundToolBar bar;
        bar.sbtInvested->hide();
        bar.sbtGuarantee->setEnabled(false);
        QVERIFY(showActive(bar));
        for (bool on : {true, false}) {
            bar.ShowToolButtons(on, !on, on, !on, on);
            for (const TSpeedButton *button : buttons(bar)) {
                QCOMPARE(button->isVisible(), button != bar.sbtInvested);
                QCOMPARE(button->isEnabled(), button != bar.sbtGuarantee);
            }
        }
    }

    void buttonsKeepTheirPlacesInAnyWidth()
    {
        QWidget page;
        TfraFundToolBar bar(&page);
        page.resize(900, 60);
        QVERIFY(showActive(page));
        for (int width : {200, 600, 900}) {
            bar.resize(width, 20);
            QCoreApplication::processEvents();
            QCOMPARE(bar.pnlMenu->geometry(), bar.rect());
            QVERIFY(!bar.pnlMenu->hasBevel());
            int left = 0;
            for (const TSpeedButton *button : buttons(bar)) {
                QCOMPARE(button->geometry(), QRect(left, 0, 70, 20));
                left += 70;
            }
        }
    }

    void pressingAButtonLeavesTheFocusAlone()
    {
        QWidget page;
        QLineEdit edit(&page);
        TfraFundToolBar bar(&page);
        bar.move(0, 30);
        page.resize(620, 60);
        QVERIFY(showActive(page));
        edit.setFocus();
        QTRY_VERIFY(edit.hasFocus());
        const QSignalSpy clicks(bar.sbtFunds, &QAbstractButton::clicked);
        QTest::mouseClick(bar.sbtFunds, Qt::LeftButton);
        QCOMPARE(clicks.count(), 1);
        QVERIFY(edit.hasFocus());
    }
};

ZEL_TEST_MAIN(tst_fundtoolbar)
#include "tst_fundtoolbar.moc"
