// labels: x11
#include "ZelTest.h"

#include "Frames.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "desk/MainWindow.h"

#include <QSignalSpy>

using namespace QuoteDesk;

namespace
{

struct Desk {
    CatalogueDatabase catalogue;
    CatalogueProviders providers{catalogue};
    MainWindow window;

    explicit Desk(const Options &options = {}) : window(catalogue, providers, options) {}
    bool show()
    {
        QSignalSpy ready(&window, &MainWindow::ready);
        return showActive(window) && (window.isReady() || ready.wait());
    }
    /// Gives the page a split the way the selector would, without opening it.
    void choose(TFunds funds)
    {
        window.fraFundAllocation->SetupFundAllocation(funds, window.product().productGroupID,
                                                      providers.connection());
    }
    QString cell(int column, int row) const
    {
        return window.fraFundAllocation->FundGrid->CellText(column, row);
    }
    void typeAmount(const char *text)
    {
        window.edAmount->setFocus();
        window.edAmount->selectAll();
        QTest::keyClicks(window.edAmount, QString::fromLatin1(text));
        QTest::keyClick(window.edAmount, Qt::Key_Return);
    }
};

} // namespace

class tst_mainwindow : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithItsOptions();
    void amountIsTypedAndShown();
    void amountsFollowTheInvestmentByPercent();
    void percentagesFollowTheInvestmentByAmount();
    void modeIsSwitched();
    void productDropsWhatItDoesNotOffer();
    void coloursAreTurnedRound();
    void everyInputCanBeReachedByKeyboard();
};

void tst_mainwindow::startsWithItsOptions()
{
    Options options;
    options.amount = 2500;
    options.byAmount = true;
    options.productID = 3;
    Desk desk(options);
    QVERIFY(desk.show());
    QCOMPARE(desk.window.cbProduct->currentText(), QStringLiteral("Summit Investment Plan"));
    QCOMPARE(desk.window.cbProduct->count(), 3);
    QCOMPARE(desk.window.edAmount->text(), QStringLiteral("2,500.00"));
    QVERIFY(desk.window.rbAmount->isChecked());
    QVERIFY(desk.window.fraFundAllocation->Get_AllocByAmount());
    QCOMPARE(desk.window.fraFundAllocation->Get_InvestmentAmount(), Currency(2500));
    QCOMPARE(desk.window.fraFundAllocation->ProductGroupID(), 2);
    QVERIFY(desk.window.windowTitle().contains(QStringLiteral("Summit Investment Plan")));
    QVERIFY(desk.window.fraFundAllocation->fraFundToolBar->sbtFunds->isEnabled());
}

void tst_mainwindow::amountIsTypedAndShown()
{
    Desk desk;
    QVERIFY(desk.show());
    const auto investment = [&desk] { return desk.window.fraFundAllocation->Get_InvestmentAmount(); };
    QCOMPARE(investment(), Currency(100000));
    desk.typeAmount("1234.5");
    QCOMPARE(investment(), Currency::fromText(QStringLiteral("1234.5")));
    QCOMPARE(desk.window.edAmount->text(), QStringLiteral("1,234.50"));
    desk.typeAmount("1,000,000");
    QCOMPARE(investment(), Currency(1000000));
    // Letters and a sign cannot be typed at all.
    desk.typeAmount("R-5x0");
    QCOMPARE(investment(), Currency(50));
    // What is no amount leaves the one before.
    desk.typeAmount("99999999999");
    QCOMPARE(investment(), Currency(50));
    QCOMPARE(desk.window.edAmount->text(), QStringLiteral("50.00"));
    QVERIFY(!desk.window.statusbar->currentMessage().isEmpty());
    desk.typeAmount("60");
    QVERIFY(desk.window.statusbar->currentMessage().isEmpty());
    desk.typeAmount("0");
    QCOMPARE(investment(), Currency(0));
}

void tst_mainwindow::amountsFollowTheInvestmentByPercent()
{
    Desk desk;
    QVERIFY(desk.show());
    desk.choose({{12, nullptr, 0, 40}, {15, nullptr, 0, 10}});
    QCOMPARE(desk.cell(4, 1), QStringLiteral("40000.00"));
    desk.typeAmount("500");
    QCOMPARE(desk.cell(3, 1), QStringLiteral("40.00"));
    QCOMPARE(desk.cell(4, 1), QStringLiteral("200.00"));
    QCOMPARE(desk.cell(4, 2), QStringLiteral("50.00"));
    QCOMPARE(desk.window.fraFundAllocation->pnlRemainAmount->caption(), QStringLiteral("Remaining: 50.00%"));
}

void tst_mainwindow::percentagesFollowTheInvestmentByAmount()
{
    Options options;
    options.byAmount = true;
    Desk desk(options);
    QVERIFY(desk.show());
    desk.choose({{12, nullptr, 40000, 0}});
    QCOMPARE(desk.cell(3, 1), QStringLiteral("40.00"));
    desk.typeAmount("50000");
    QCOMPARE(desk.cell(3, 1), QStringLiteral("80.00"));
    QCOMPARE(desk.cell(4, 1), QStringLiteral("40000.00"));
    QCOMPARE(desk.window.fraFundAllocation->pnlRemainAmount->caption(),
             QStringLiteral("Remaining: 10000.00 (20.00%)"));
}

void tst_mainwindow::modeIsSwitched()
{
    Desk desk;
    QVERIFY(desk.show());
    QVERIFY(!desk.window.fraFundAllocation->Get_AllocByAmount());
    QTest::keyClick(&desk.window, Qt::Key_M, Qt::AltModifier);
    // A button pressed by its letter shows so for a moment first.
    QTRY_VERIFY(desk.window.fraFundAllocation->Get_AllocByAmount());
    QTest::mouseClick(desk.window.rbPercent, Qt::LeftButton, {},
                      QPoint(8, desk.window.rbPercent->height() / 2));
    QVERIFY(!desk.window.fraFundAllocation->Get_AllocByAmount());
}

void tst_mainwindow::productDropsWhatItDoesNotOffer()
{
    Desk desk;
    QVERIFY(desk.show());
    // 644 is a preservation fund, which the investment plan does not have.
    desk.choose({{12, nullptr, 0, 40}, {644, nullptr, 0, 60}});
    QCOMPARE(desk.window.fraFundAllocation->Get_FundCount(), 2);
    desk.window.cbProduct->setFocus();
    QTest::keyClick(desk.window.cbProduct, Qt::Key_End);
    QCOMPARE(desk.window.product().productID, 3);
    QCOMPARE(desk.window.fraFundAllocation->Get_FundCount(), 1);
    QCOMPARE(desk.cell(3, 1), QStringLiteral("40.00"));
    QVERIFY(desk.window.statusbar->currentMessage().contains(QStringLiteral("taken out")));
    QTest::keyClick(desk.window.cbProduct, Qt::Key_Home);
    QVERIFY(desk.window.statusbar->currentMessage().isEmpty());
}

void tst_mainwindow::coloursAreTurnedRound()
{
    Desk desk;
    QVERIFY(desk.show());
    const QPalette light = QApplication::palette();
    QVERIFY(light.window().color().lightness() > light.windowText().color().lightness());
    desk.window.actDark->trigger();
    const QPalette dark = QApplication::palette();
    QVERIFY(dark.window().color().lightness() < 80);
    QVERIFY(dark.windowText().color().lightness() > 180);
    QVERIFY(dark.base().color().lightness() < dark.text().color().lightness());
    desk.window.actDark->trigger();
    QCOMPARE(QApplication::palette().window().color(), light.window().color());
}

void tst_mainwindow::everyInputCanBeReachedByKeyboard()
{
    Desk desk;
    QVERIFY(desk.show());
    desk.choose({{12, nullptr, 0, 40}});
    desk.window.cbProduct->setFocus();
    QList<QWidget *> reached;
    for (int step = 0; step < 8; ++step) {
        reached.append(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (QWidget *input :
         {static_cast<QWidget *>(desk.window.cbProduct), static_cast<QWidget *>(desk.window.edAmount),
          static_cast<QWidget *>(desk.window.rbPercent)})
        QVERIFY2(reached.contains(input), qPrintable(input->objectName()));
    QVERIFY(std::any_of(reached.cbegin(), reached.cend(), [&desk](QWidget *widget) {
        return desk.window.fraFundAllocation->isAncestorOf(widget);
    }));
}

ZEL_TEST_MAIN(tst_mainwindow)
#include "tst_mainwindow.moc"
