// The main controls fit on the screen of a small laptop, at every scale factor.
#include "DeskWindow.h"

#include "desk/Preferences.h"

#include "funds/frm_FundSelector.h"

#include <QHeaderView>
#include <QProcess>
#include <QScreen>
#include <QStyle>

using namespace Qt::StringLiterals;

using namespace QuoteDesk;

namespace
{

constexpr auto AtWork = "ZEL_SMALL_SCREEN";

/// Whether the whole widget is inside its window.
bool isInWindow(const QWidget &widget)
{
    const QWidget &window = *widget.window();
    return widget.isVisible() &&
           window.rect().contains(QRect(widget.mapTo(&window, QPoint(0, 0)), widget.size()));
}

#define VERIFY_IN_WINDOW(widget)                                                                             \
    QVERIFY2(isInWindow(*(widget)),                                                                          \
             qPrintable(QStringLiteral(#widget " ends at %1 of %2")                                          \
                            .arg((widget)->mapTo((widget)->window(), (widget)->rect().bottomRight()).y())    \
                            .arg((widget)->window()->height())))

} // namespace

/// The checks, run in a process with such a screen.
class SmallScreen : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void screenIsSmall();
    void selectorFits();
    void remainderIsShown();
    void amountsAreWhole();
};

void SmallScreen::screenIsSmall()
{
    QVERIFY(QApplication::primaryScreen()->size().height() <= 512);
}

void SmallScreen::selectorFits()
{
    DeskWindow desk;
    const qint64 number = desk.quote(0, 1, "Mine", 1250000, 12);
    QVERIFY(desk.show());
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    form.pcPages->setCurrentWidget(form.fundsPage);
    QTRY_VERIFY(form.fundsPage->isReady());
    QVERIFY(inDialog<TfrmFundSelector>(
        [&] {
            QTest::mouseClick(form.fundsPage->fraFundAllocation->fraFundToolBar->sbtFunds, Qt::LeftButton);
        },
        [](TfrmFundSelector &dialog) {
            const QRect screen = dialog.screen()->availableGeometry();
            const int title = dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight);
            QVERIFY2(screen.adjusted(0, title, 0, 0).contains(dialog.geometry()),
                     qPrintable(u"%1 high"_s.arg(dialog.height())));
            const TfraFundSelector &frame = *dialog.fraFundSelector;
            for (const QWidget *const widget :
                 QList<QWidget *>{frame.sbtAdd, frame.sbtClear, frame.sbtExpand, frame.sbtCollapse,
                                  frame.sbtRemove, frame.sbtFundSheet, frame.btnSelect, frame.btnCancel})
                VERIFY_IN_WINDOW(widget);
            dialog.reject();
        }));
}

void SmallScreen::remainderIsShown()
{
    DeskWindow desk;
    const qint64 number = desk.quote(desk.client("Botha", "Piet"), 2, "Mine", 1250000, 12);
    QVERIFY(desk.show());
    desk.window->takePlace({});
    QuoteForm &form = *desk.window->quotes().open(number)->form();
    for (const QuoteForm::Page page : {QuoteForm::Page::Details, QuoteForm::Page::Income,
                                       QuoteForm::Page::Summary, QuoteForm::Page::Funds}) {
        form.goTo(page);
        QCoreApplication::processEvents();
    }
    QTRY_VERIFY(form.fundsPage->isReady());
    desk.window->takePlace({});
    QCoreApplication::processEvents();
    const QRect screen = desk.window->screen()->availableGeometry();
    const int title = desk.window->style()->pixelMetric(QStyle::PM_TitleBarHeight);
    QVERIFY2(desk.window->height() + title <= screen.height() && desk.window->width() <= screen.width(),
             qPrintable(u"%1 x %2"_s.arg(desk.window->width()).arg(desk.window->height())));
    const TfraFundAllocation &frame = *form.fundsPage->fraFundAllocation;
    VERIFY_IN_WINDOW(frame.pnlRemainAmount);
    VERIFY_IN_WINDOW(frame.pnlAmount);
    VERIFY_IN_WINDOW(form.fundsPage->edAmount);
    VERIFY_IN_WINDOW(frame.fraFundToolBar->sbtFunds);
    // At least one row of the grid is visible.
    QVERIFY(frame.FundGrid->viewport()->height() >= frame.FundGrid->rowHeight(0));
}

void SmallScreen::amountsAreWhole()
{
    DeskWindow desk;
    desk.quote(desk.client("Botha", "Piet"), 1, "Mine", 1250000, 12);
    desk.quote(desk.client("Botha", "Piet"), 1, "Large", Currency(999999999), 12);
    QVERIFY(desk.show());
    desk.window->takePlace({});
    QCoreApplication::processEvents();
    const TListView &list = desk.list();
    for (int row = 0; row < 2; ++row) {
        const QModelIndex index = list.model()->index(row, static_cast<int>(QuoteColumn::Amount));
        const QString text = index.data().toString();
        const int needed = list.fontMetrics().horizontalAdvance(text);
        QVERIFY2(list.visualRect(index).width() > needed + 4,
                 qPrintable(u"%1 in %2 pixels"_s.arg(text).arg(list.visualRect(index).width())));
        QVERIFY(list.viewport()->rect().contains(list.visualRect(index)));
    }
}

/// Runs the checks with each of the screens.
class tst_smallscreens : public ZelTest
{
    Q_OBJECT

private Q_SLOTS:
    void everythingIsOnTheScreen_data();
    void everythingIsOnTheScreen();
};

void tst_smallscreens::everythingIsOnTheScreen_data()
{
    QTest::addColumn<QString>("scale");
    QTest::newRow("1366 x 768 at 150 %") << u"1.5"_s;
    QTest::newRow("1366 x 768 at 200 %") << u"2"_s;
}

void tst_smallscreens::everythingIsOnTheScreen()
{
    QFETCH(QString, scale);
    const QTemporaryDir folder;
    QFile screen(folder.filePath(u"screen.json"_s));
    QVERIFY(screen.open(QIODevice::WriteOnly));
    screen.write("{\"screens\": [{\"name\": \"laptop\", \"x\": 0, \"y\": 0, \"width\": 1366, \"height\": 768,"
                 " \"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}");
    screen.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(AtWork), u"1"_s);
    environment.insert(u"QT_SCALE_FACTOR"_s, scale);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen:configfile="_s + screen.fileName());
    QProcess work;
    work.setProcessEnvironment(environment);
    work.setProcessChannelMode(QProcess::MergedChannels);
    work.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY2(work.waitForFinished(300'000), qPrintable(work.errorString()));
    const QByteArray said = work.readAll();
    QVERIFY2(work.exitStatus() == QProcess::NormalExit && work.exitCode() == 0, said.constData());
}

int main(int argc, char **argv)
{
    return ZelTesting::run(argc, argv, []() -> std::unique_ptr<QObject> {
        if (qEnvironmentVariableIsSet(AtWork))
            return std::make_unique<SmallScreen>();
        return std::make_unique<tst_smallscreens>();
    });
}
#include "tst_smallscreens.moc"
