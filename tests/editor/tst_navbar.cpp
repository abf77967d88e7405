#include "Errors.h"
#include "Frames.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "editor/fra_BaseNavBar.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
void fill(TcxPageControl &pages, int count)
{
    for (int i = 0; i < count; ++i)
        pages.addTab(new QWidget, QString::number(i));
}

class TTestRibbonItem : public IRibbonItem
{
public:
    explicit TTestRibbonItem(QString text) : name(std::move(text)) {}
    HResult get_Name(QString &value) noexcept override
    {
        value = name;
        return failing ? refuse() : S_OK;
    }
    HResult get_Enabled(WordBool &value) noexcept override
    {
        value = enabled;
        return S_OK;
    }
    HResult put_Enabled(WordBool value) noexcept override
    {
        enabled = value;
        ++calls;
        return failing ? refuse() : S_OK;
    }
    static HResult refuse()
    {
        return SafecallGuard([] { throw Exception(u"No ribbon."_s); });
    }
    QString name;
    WordBool enabled = 77;
    int calls = 0;
    bool failing = false;
};
} // namespace

class TestNavBar : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void startsHiddenAndDisabled()
    {
        QWidget page;
        TfraBaseNavBar bar(&page);
        page.show();
        QVERIFY(bar.isHidden());
        QCOMPARE(bar.size(), QSize(415, 29));
        QVERIFY(!bar.btnPrev->isEnabled() && !bar.btnNext->isEnabled());
        QVERIFY(!bar.MovedNext() && !bar.MovedPrev());
        QVERIFY(!bar.ModuleForm);
        bar.setVisible(true);
        QCOMPARE(bar.btnPrev->text(), u"Previous"_s);
        QCOMPARE(bar.btnNext->text(), u"Next"_s);
        QCOMPARE(QRect(bar.btnPrev->mapTo(&bar, QPoint()), bar.btnPrev->size()), QRect(260, 3, 75, 25));
        QCOMPARE(QRect(bar.btnNext->mapTo(&bar, QPoint()), bar.btnNext->size()), QRect(337, 3, 75, 25));
    }

    void tabWalksTheButtons()
    {
        TfraBaseNavBar bar;
        TcxPageControl pages;
        fill(pages, 3);
        pages.Set_ActivePageIndex(1);
        bar.RefreshNavButton(pages);
        bar.show();
        QVERIFY(QTest::qWaitForWindowActive(&bar));
        QCOMPARE(detourOfTab({bar.btnPrev, bar.btnNext}), QString());
    }

    void withoutPagesNothingMovesAndBothAreDisabled()
    {
        TfraBaseNavBar bar;
        TcxPageControl none;
        TPageSkipSet all;
        all.set();
        const std::function<void()> moves[]{[&] { bar.Next(none); }, [&] { bar.NextSkip(none, all); },
                                            [&] { bar.Prev(none); }, [&] { bar.PrevSkip(none, all); },
                                            [&] { bar.RefreshNavBar(none, true); }};
        int at = 0;
        for (const auto &move : moves) {
            bar.btnNext->setEnabled(true);
            bar.btnPrev->setEnabled(true);
            move();
            QVERIFY(!bar.btnNext->isEnabled() && !bar.btnPrev->isEnabled());
            QCOMPARE(bar.MovedNext(), at < 2);
            QCOMPARE(bar.MovedPrev(), at == 2 || at == 3);
            QCOMPARE(none.Get_ActivePageIndex(), -1);
            ++at;
        }
    }

    void moving_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QList<int>>("skip");
        QTest::addColumn<int>("from");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<int>("to");
        const auto row = [](const char *name, int count, const QList<int> &skip, int from, bool forward,
                            int to) { QTest::newRow(name) << count << skip << from << forward << to; };
        row("2 and 3, forward from 1", 5, {2, 3}, 1, true, 4);
        row("2 and 3, back from 4", 5, {2, 3}, 4, false, 1);
        row("the skipped last page is shown", 5, {4}, 3, true, 4);
        row("the skipped first page is shown", 5, {0}, 1, false, 0);
        row("past the end: page 5 is ignored", 5, {3, 4}, 2, true, 2);
        row("past the start: page -1 is ignored", 5, {0, 1, 2}, 3, false, 3);
        row("nothing skipped, forward", 5, {}, 2, true, 3);
        row("nothing skipped, back", 5, {}, 2, false, 1);
        row("elsewhere skipped", 5, {0, 4}, 2, true, 3);
        row("everything skipped, forward", 3, {0, 1, 2}, 0, true, 0);
        row("everything skipped, back", 3, {0, 1, 2}, 2, false, 2);
        row("everything skipped, to the last", 3, {0, 1, 2}, 1, true, 2);
        row("everything skipped, to the first", 3, {0, 1, 2}, 1, false, 0);
        row("at the last page", 3, {}, 2, true, 2);
        row("at the first page", 3, {}, 0, false, 0);
        row("back over 1 to 0", 3, {1}, 2, false, 0);
        row("one page, forward", 1, {}, 0, true, 0);
        row("one page, back", 1, {}, 0, false, 0);
    }

    void moving()
    {
        QFETCH(int, count);
        QFETCH(QList<int>, skip);
        QFETCH(int, from);
        QFETCH(bool, forward);
        QFETCH(int, to);
        TPageSkipSet set;
        for (const int page : skip)
            set.set(static_cast<size_t>(page));
        TcxPageControl pages;
        fill(pages, count);
        TfraBaseNavBar bar;
        // With an empty skip set, Next and Prev must do the same.
        for (const bool plain : {false, true}) {
            if (plain && !skip.isEmpty())
                break;
            pages.Set_ActivePageIndex(from);
            if (plain)
                forward ? bar.Next(pages) : bar.Prev(pages);
            else
                forward ? bar.NextSkip(pages, set) : bar.PrevSkip(pages, set);
            QCOMPARE(pages.Get_ActivePageIndex(), to);
            QCOMPARE(bar.MovedNext(), forward);
            QCOMPARE(bar.MovedPrev(), !forward);
            QCOMPARE(bar.btnPrev->isEnabled(), to > 0);
            QCOMPARE(bar.btnNext->isEnabled(), to < count - 1);
        }
        bar.RefreshNavButton(pages);
        QVERIFY(!bar.MovedNext() && !bar.MovedPrev());
    }

    void valuesPast255AreNeverSkipped()
    {
        TcxPageControl pages;
        fill(pages, 300);
        TPageSkipSet all;
        all.set();
        TfraBaseNavBar bar;
        bar.NextSkip(pages, all);
        QCOMPARE(pages.Get_ActivePageIndex(), 256);
        bar.NextSkip(pages, all);
        QCOMPARE(pages.Get_ActivePageIndex(), 257);
    }

    void refreshSetsTheTabsAndGoesToTheFirstPage()
    {
        TcxPageControl pages;
        fill(pages, 4);
        pages.show();
        pages.Set_ActivePageIndex(3);
        QSignalSpy changed(&pages, &QTabWidget::currentChanged);
        TfraBaseNavBar bar;
        bar.RefreshNavBar(pages, false);
        QCOMPARE(changed.count(), 1);
        QVERIFY(!bar.btnPrev->isEnabled() && bar.btnNext->isEnabled());
        for (int i = 0; i < 4; ++i) {
            QVERIFY(!pages.Get_TabVisible(i));
            QCOMPARE(pages.Get_ActivePageIndex(), i);
            QVERIFY(pages.widget(i)->isVisible());
            bar.Next(pages);
        }
        // Both directions also work with hidden tabs.
        bar.Prev(pages);
        QCOMPARE(pages.Get_ActivePageIndex(), 2);
        bar.PrevSkip(pages, {});
        QCOMPARE(pages.Get_ActivePageIndex(), 1);
        bar.NextSkip(pages, {});
        QCOMPARE(pages.Get_ActivePageIndex(), 2);
        bar.RefreshNavBar(pages, true);
        for (int i = 0; i < 4; ++i)
            QVERIFY(pages.Get_TabVisible(i));
        QCOMPARE(pages.Get_ActivePageIndex(), 0);
        QVERIFY(!bar.MovedNext() && !bar.MovedPrev());
    }

    void thePageControlIgnoresIndicesPastItsEnds()
    {
        TcxPageControl pages;
        fill(pages, 3);
        pages.Set_ActivePageIndex(1);
        for (const int index : {-1, 3, 256, -32768}) {
            pages.Set_ActivePageIndex(index);
            QCOMPARE(pages.Get_ActivePageIndex(), 1);
        }
        pages.Set_TabVisible(2, false);
        pages.SelectNextPage(true, true);
        QCOMPARE(pages.Get_ActivePageIndex(), 1);
        pages.SelectNextPage(true, false);
        QCOMPARE(pages.Get_ActivePageIndex(), 2);
    }

    void ribbonItemsMirrorTheButtons()
    {
        TcxPageControl pages;
        fill(pages, 3);
        TfrmModule form;
        auto bar = std::make_unique<TfraBaseNavBar>();
        bar->ModuleForm = &form;
        connect(bar->btnNext, &QPushButton::clicked, bar.get(), [&] { bar->Next(pages); });
        connect(bar->btnPrev, &QPushButton::clicked, bar.get(), [&] { bar->Prev(pages); });
        const auto next = std::make_shared<TTestRibbonItem>(u"rbNext"_s);
        const auto prev = std::make_shared<TTestRibbonItem>(u"rbPrev"_s);
        bar->RefreshNavButton(pages);
        bar->SetNextBtn(next);
        bar->SetPrevBtn(prev);
        QCOMPARE(next->enabled, WordBool(-1));
        QCOMPARE(prev->enabled, WordFalse);
        for (const int expected : {1, 2, 2}) {
            QCOMPARE(form.ItemClicked(u"rbNext"_s, 0), S_OK);
            QCOMPARE(pages.Get_ActivePageIndex(), expected);
        }
        QCOMPARE(next->enabled, WordFalse);
        QCOMPARE(prev->enabled, WordTrue);
        QCOMPARE(form.ItemClicked(u"rbPrev"_s, 0), S_OK);
        QCOMPARE(pages.Get_ActivePageIndex(), 1);
        bar.reset();
        QCOMPARE(form.ItemClicked(u"rbNext"_s, 0), S_OK);
        QCOMPARE(pages.Get_ActivePageIndex(), 1);
    }

    void nilItemsAndAMissingFormKeepTheBinding()
    {
        TfraBaseNavBar bar;
        const auto item = std::make_shared<TTestRibbonItem>(u"rbNext"_s);
        bar.SetNextBtn(nullptr);
        QVERIFY_THROWS_EXCEPTION(Exception, bar.SetNextBtn(item));
        bar.UpdateTB();
        QCOMPARE(item->calls, 0);
        auto form = std::make_unique<TfrmModule>();
        bar.ModuleForm = form.get();
        bar.SetNextBtn(item);
        bar.SetPrevBtn(item);
        QCOMPARE(item->calls, 2);
        bar.SetNextBtn(nullptr);
        bar.UpdateTB();
        QCOMPARE(item->calls, 4);
        form.reset();
        const auto other = std::make_shared<TTestRibbonItem>(u"rbOther"_s);
        QVERIFY_THROWS_EXCEPTION(Exception, bar.SetNextBtn(other));
        bar.UpdateTB();
        QCOMPARE(item->calls, 6);
        QCOMPARE(other->calls, 0);
    }

    // A ribbon item that returns a bare error code has no message; the bar must not use an earlier failure's
    // message.
    void aFailureWithoutAMessageHasNone()
    {
        class TDumbItem : public TTestRibbonItem
        {
        public:
            using TTestRibbonItem::TTestRibbonItem;
            HResult put_Enabled(WordBool) noexcept override { return E_FAIL; }
        };
        TfrmModule form;
        TfraBaseNavBar bar;
        bar.ModuleForm = &form;
        QVERIFY(TTestRibbonItem::refuse() < 0);
        const QString message =
            messageOf<ESafecallError>([&] { bar.SetNextBtn(std::make_shared<TDumbItem>(u"rbNext"_s)); });
        QCOMPARE(message, u"The call failed with result 0x80004005"_s);
    }

    void aHiddenTabKeepsItsPage()
    {
        TcxPageControl pages;
        fill(pages, 3);
        pages.Set_ActivePageIndex(1);
        QSignalSpy moved(&pages, &QTabWidget::currentChanged);
        pages.Set_TabVisible(1, false);
        QCOMPARE(pages.Get_ActivePageIndex(), 1);
        QVERIFY(!pages.Get_TabVisible(1));
        pages.Set_TabVisible(0, false);
        pages.Set_TabVisible(1, true);
        QCOMPARE(pages.Get_ActivePageIndex(), 1);
        QCOMPARE(moved.count(), 0);
        QVERIFY(pages.updatesEnabled());
    }

    void aFailingItemIsRaisedAfterTheMove()
    {
        TcxPageControl pages;
        fill(pages, 2);
        TfrmModule form;
        TfraBaseNavBar bar;
        bar.ModuleForm = &form;
        const auto next = std::make_shared<TTestRibbonItem>(u"rbNext"_s);
        next->failing = true;
        QVERIFY_THROWS_EXCEPTION(ESafecallError, bar.SetNextBtn(next));
        QCOMPARE(next->calls, 0); // the call of its name failed
        QVERIFY_THROWS_EXCEPTION(ESafecallError, bar.UpdateTB());
        QVERIFY_THROWS_EXCEPTION(ESafecallError, bar.Next(pages));
        QCOMPARE(pages.Get_ActivePageIndex(), 1);
        QVERIFY(bar.MovedNext());
        QVERIFY(bar.btnPrev->isEnabled() && !bar.btnNext->isEnabled());
        // A failure of the other item is reported, too.
        next->failing = false;
        const auto prev = std::make_shared<TTestRibbonItem>(u"rbPrev"_s);
        bar.SetPrevBtn(prev);
        prev->failing = true;
        QVERIFY_THROWS_EXCEPTION(ESafecallError, bar.Prev(pages));
        QCOMPARE(pages.Get_ActivePageIndex(), 0);
        QVERIFY(bar.MovedPrev());
    }
};

ZEL_TEST_MAIN(TestNavBar)
#include "tst_navbar.moc"
