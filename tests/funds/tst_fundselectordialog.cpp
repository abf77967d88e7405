// The modal fund selector: choosing by keyboard and mouse, every way to close it, and errors while it opens.
// labels: x11 postgresql
// left out on Windows: what runs on PostgreSQL
#include "Frames.h"
#include "SelectorDriver.h"
#include "SelectorEngines.h"
#include "ZelTest.h"

#include "funds/frm_FundSelector.h"

#include <QCloseEvent>
#include <QPointer>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class tst_fundselectordialog : public ZelTest
{
    Q_OBJECT

    using Steps = std::function<void(TfrmFundSelector &)>;

    /// Opens the dialog, calls @p steps when it is shown and closes it if the steps have not.
    bool pick(SelectorCatalogue &catalogue, TDynamicArrayOfInt &ids, const Steps &steps)
    {
        m_freed = 0;
        m_shown = 0;
        QTimer::singleShot(0, this, [this, steps] {
            auto *form = qobject_cast<TfrmFundSelector *>(QApplication::activeModalWidget());
            QVERIFY2(form, "the dialog is not modal");
            ++m_shown;
            const QPointer<TfrmFundSelector> watched = form;
            connect(form, &QObject::destroyed, this, [this] { ++m_freed; });
            const auto close = qScopeGuard([watched] {
                if (watched && watched->isVisible() && !watched->property("quitting").toBool())
                    watched->reject();
            });
            QVERIFY(QTest::qWaitForWindowExposed(form));
            form->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(form));
            steps(*form);
        });
        return TfrmFundSelector::FundSelector(ids, SelectorCatalogue::productGroup, catalogue.connection(),
                                              catalogue.fundData(), QString(), QString(), QString());
    }
    /// Sends the key to the window, which passes it to its focus widget.
    static void press(TfrmFundSelector &form, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(form.windowHandle(), key, modifiers);
    }
    static bool waitUntilClosed(const QPointer<TfrmFundSelector> &form)
    {
        return QTest::qWaitFor([&form] { return !form || !form->isVisible(); });
    }
    static bool anyFormLeft()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (qobject_cast<TfrmFundSelector *>(widget))
                return true;
        }
        return false;
    }

    SelectorEngines m_engines;
    int m_freed = 0;
    int m_shown = 0;

protected:
    void init() override
    {
        ZelTest::init();
        m_engines.Use();
    }

private Q_SLOTS:
    void initTestCase_data() { SelectorEngines::Rows(); }
    void cleanup()
    {
        QVERIFY(!QTest::currentTestFailed());
        QVERIFY2(!anyFormLeft(), "a dialog was left behind");
    }

    void windowAsDesigned()
    {
        TfrmFundSelector form;
        QCOMPARE(form.windowTitle(), u"Fund Selector"_s);
        QCOMPARE(form.size(), QSize(664, 534));
        QCOMPARE(form.font().family(), u"Tahoma"_s);
        QCOMPARE(form.font().pixelSize(), 11);
        QVERIFY(!form.windowIcon().isNull());
        QVERIFY(form.windowFlags() & Qt::WindowSystemMenuHint);
        QVERIFY(form.windowFlags() & Qt::WindowMaximizeButtonHint);
        QVERIFY(form.windowFlags() & Qt::WindowCloseButtonHint);
        QVERIFY(!(form.windowFlags() & Qt::WindowMinimizeButtonHint));
        QCOMPARE(form.findChild<TfraFundSelector *>(u"fraFundSelector"_s), form.fraFundSelector);
        QVERIFY(!form.parentWidget());
        QVERIFY(showActive(form));
        const TfraFundSelector &frame = *form.fraFundSelector;
        const auto at = [&form](const QWidget *widget) {
            return QRect(widget->mapTo(&form, QPoint(0, 0)), widget->size());
        };
        QCOMPARE(frame.geometry(), QRect(0, 0, 664, 534));
        QCOMPARE(at(frame.fraFundsTreeView), QRect(0, 0, 271, 479));
        QCOMPARE(at(frame.Panel2), QRect(274, 0, 58, 479));
        QCOMPARE(at(frame.fraFundsSelectedListView), QRect(332, 0, 332, 479));
        QCOMPARE(at(frame.fraFundsSelectedListView->lvSelectedFunds), QRect(332, 20, 332, 459));
        QCOMPARE(at(frame.pnlToolBar), QRect(0, 479, 664, 55));
        QCOMPARE(at(frame.pnlMenu), QRect(493, 479, 171, 55));
        QCOMPARE(at(frame.Panel1), QRect(0, 479, 493, 55));
        QCOMPARE(frame.lblInfoMessage->width(), 493);
        frame.lblWarningMessage->show();
        QTRY_COMPARE(frame.lblWarningMessage->width(), 493);
        QCOMPARE(frame.fraFundsSelectedListView->lvSelectedFunds->SmallImages(), frame.imgCommon);
        const QPoint middle = form.screen()->availableGeometry().center();
        QVERIFY((form.frameGeometry().center() - middle).manhattanLength() < 40);
    }

    void pickedWithTheKeyboardOnly()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{101, 102};
        const bool chosen = pick(catalogue, ids, [](TfrmFundSelector &form) {
            const SelectorDriver hands(*form.fraFundSelector);
            const QPointer<TfrmFundSelector> watched = &form;
            QCOMPARE(QApplication::focusWidget(), hands.tree);
            press(form, Qt::Key_E, Qt::AltModifier);
            QTRY_VERIFY(hands.node("Property")->Expanded());
            press(form, Qt::Key_Home);
            typeWord(form.windowHandle(), u"est"_s);
            press(form, Qt::Key_Return);
            press(form, Qt::Key_Home);
            typeWord(form.windowHandle(), u"gam"_s);
            press(form, Qt::Key_Return);
            QCOMPARE(hands.captions().size(), 4);
            press(form, Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), hands.list);
            press(form, Qt::Key_Home);
            press(form, Qt::Key_Space);
            press(form, Qt::Key_Delete);
            QCOMPARE(hands.captions().size(), 3);
            press(form, Qt::Key_S, Qt::AltModifier);
            QVERIFY(waitUntilClosed(watched));
        });
        QVERIFY(chosen);
        QCOMPARE(ids, TDynamicArrayOfInt({102, 201, 103}));
        QCOMPARE(m_freed, 1);
    }

    void selectedThroughTheTabOrder()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{111};
        QVERIFY(pick(catalogue, ids, [](TfrmFundSelector &form) {
            const QPointer<TfrmFundSelector> watched = &form;
            press(form, Qt::Key_Tab);
            press(form, Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), form.fraFundSelector->btnSelect);
            press(form, Qt::Key_Return);
            QVERIFY(waitUntilClosed(watched));
        }));
        QCOMPARE(ids, TDynamicArrayOfInt({111}));
    }

    void pickedWithTheMouseOnly()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{101, 102};
        const bool chosen = pick(catalogue, ids, [](TfrmFundSelector &form) {
            const SelectorDriver hands(*form.fraFundSelector);
            TfraFundSelector &frame = *form.fraFundSelector;
            QTest::mouseClick(frame.sbtCollapse, Qt::LeftButton);
            // A click on the sign in front of a node expands the node.
            for (const char *text : {"Specialist", "Property"}) {
                const QRect row = hands.tree->visualRect(hands.index(hands.node(text)));
                QTest::mouseClick(hands.tree->viewport(), Qt::LeftButton, {},
                                  QPoint(row.left() - hands.tree->indentation() / 2, row.center().y()));
                QVERIFY(hands.node(text)->Expanded());
            }
            hands.add("Estate Fund");
            hands.doubleClick(hands.node("Gamma Fund"));
            hands.remove(0);
            QCOMPARE(hands.captions().size(), 3);
            QTest::mouseClick(frame.btnSelect, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        QVERIFY(chosen);
        QCOMPARE(ids, TDynamicArrayOfInt({102, 201, 103}));
        QCOMPARE(m_freed, 1);
    }

    void selectReplacesTheWholeArray()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{1, 2, 3, 4, 5, 6, 7};
        QVERIFY(pick(catalogue, ids, [](TfrmFundSelector &form) {
            const SelectorDriver hands(*form.fraFundSelector);
            QVERIFY(!form.fraFundSelector->btnSelect->isEnabled());
            for (const char *fund : {"Gamma Fund", "Cash Fund", "Alpha Fund"})
                hands.doubleClick(hands.node(fund));
            QTest::mouseClick(form.fraFundSelector->btnSelect, Qt::LeftButton);
        }));
        QCOMPARE(ids, TDynamicArrayOfInt({103, 111, 101}));
    }

    // Enter in the list acts on the list only and presses no button; the dialog stays open.
    void enterInTheListKeepsTheDialog()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{101, 102};
        const bool chosen = pick(catalogue, ids, [](TfrmFundSelector &form) {
            const SelectorDriver hands(*form.fraFundSelector);
            const QPointer<TfrmFundSelector> watched = &form;
            hands.doubleClick(hands.node("Gamma Fund"));
            hands.click(hands.list->Items()[1]);
            QCOMPARE(QApplication::focusWidget(), hands.list);
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
                press(form, key);
                QCoreApplication::processEvents();
                QVERIFY(watched && watched->isVisible());
            }
        });
        QVERIFY(!chosen);
        QCOMPARE(ids, TDynamicArrayOfInt({101, 102}));
    }

    void leftWithoutSelecting_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : {"Cancel", "Alt+C", "Escape", "title bar", "window gone"})
            QTest::newRow(how) << QString::fromLatin1(how);
    }
    void leftWithoutSelecting()
    {
        QFETCH(QString, how);
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{101, 102};
        const bool chosen = pick(catalogue, ids, [&how](TfrmFundSelector &form) {
            const QPointer<TfrmFundSelector> watched = &form;
            const SelectorDriver hands(*form.fraFundSelector);
            hands.doubleClick(hands.node("Gamma Fund"));
            QCOMPARE(hands.captions().size(), 3);
            if (how == "Cancel"_L1) {
                QTest::mouseClick(form.fraFundSelector->btnCancel, Qt::LeftButton);
            } else if (how == "Alt+C"_L1) {
                press(form, Qt::Key_C, Qt::AltModifier);
            } else if (how == "Escape"_L1) {
                press(form, Qt::Key_Escape);
            } else if (how == "title bar"_L1) {
                QCloseEvent close;
                QCoreApplication::sendEvent(form.windowHandle(), &close);
            } else {
                // The host deletes all of its windows, including the open dialog.
                delete &form;
            }
            QVERIFY(waitUntilClosed(watched));
        });
        QVERIFY(!chosen);
        QCOMPARE(ids, TDynamicArrayOfInt({101, 102}));
        QCOMPARE(m_freed, 1);
    }

    void applicationQuits_data()
    {
        QTest::addColumn<bool>("politely");
        QTest::newRow("closing its windows first") << true;
        QTest::newRow("leaving its message loops") << false;
    }
    void applicationQuits()
    {
        QFETCH(bool, politely);
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{101};
        bool chosen = true;
        bool returned = false;
        QTimer::singleShot(0, this, [&] {
            chosen = pick(catalogue, ids, [politely](TfrmFundSelector &form) {
                const SelectorDriver hands(*form.fraFundSelector);
                hands.doubleClick(hands.node("Gamma Fund"));
                if (politely)
                    QCoreApplication::quit();
                else
                    QCoreApplication::exit(0);
                // Leaves it to the application to close the dialog.
                form.setProperty("quitting", true);
            });
            returned = true;
        });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(returned);
        QVERIFY(!chosen);
        QCOMPARE(ids, TDynamicArrayOfInt({101}));
        QCOMPARE(m_freed, 1);
    }

    void nothingIsRemembered()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids{101};
        QVERIFY(pick(catalogue, ids, [](TfrmFundSelector &form) {
            form.resize(800, 700);
            const SelectorDriver hands(*form.fraFundSelector);
            hands.doubleClick(hands.node("Gamma Fund"));
            QTest::mouseClick(form.fraFundSelector->btnSelect, Qt::LeftButton);
        }));
        ids.clear();
        QVERIFY(!pick(catalogue, ids, [](TfrmFundSelector &form) {
            const SelectorDriver hands(*form.fraFundSelector);
            QCOMPARE(form.size(), QSize(664, 534));
            QCOMPARE(hands.captions(), QStringList());
            QVERIFY(!hands.tree->Selected());
            QVERIFY(!hands.node("Unit Trusts")->Expanded());
            QVERIFY(!form.fraFundSelector->btnSelect->isEnabled());
        }));
        QCOMPARE(catalogue.calls.size(), 6);
    }

    void fundSheetReachesTheHost()
    {
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TDynamicArrayOfInt ids;
        QSignalSpy asked(TfrmFundSelector::Requests(), &TFundSelectorRequests::FundSheetRequested);
        QVERIFY(!pick(catalogue, ids, [](TfrmFundSelector &form) {
            const SelectorDriver hands(*form.fraFundSelector);
            hands.click(hands.node("Estate Fund"));
            hands.doubleClick(hands.node("Estate Fund"));
            hands.click(hands.node("Alpha Fund"));
            QTest::mouseClick(form.fraFundSelector->sbtFundSheet, Qt::LeftButton);
            QVERIFY(form.isVisible());
        }));
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked[0][0].toInt(), 101);
        QCOMPARE(asked[0][1].toString(), u"https://funds.example/101"_s);
    }

    void errorsReachTheCaller_data()
    {
        QTest::addColumn<QString>("what");
        for (const char *what : {"field", "packet", "provider", "half way", "table", "filter"})
            QTest::newRow(what) << QString::fromLatin1(what);
    }
    void errorsReachTheCaller()
    {
        QFETCH(QString, what);
        SelectorCatalogue catalogue;
        catalogue.fillSmall();
        TLocalConnection bare;
        TLocalConnection *connection = catalogue.connection();
        QVariant packet = catalogue.fundData();
        QString filter;
        if (what == "field"_L1)
            packet = catalogue.fundDataWithout(u"FundID"_s);
        else if (what == "packet"_L1)
            packet = QVariant(42);
        else if (what == "provider"_L1)
            connection = &bare;
        else if (what == "half way"_L1)
            connection->RegisterProvider(u"dspFundGroupType"_s, [](const TParams &) -> TDataPacket {
                throw EDatabaseError(u"gone"_s);
            });
        else if (what == "table"_L1) // the database refuses the last of the three queries
            QVERIFY(QSqlQuery(catalogue.database()).exec(u"drop table offer"_s));
        else
            filter = u"no such thing >"_s;
        TDynamicArrayOfInt ids{101, 201};
        ReportCatcher report;
        QVERIFY_THROWS_EXCEPTION(
            EDatabaseError,
            TfrmFundSelector::FundSelector(ids, 3, connection, packet, filter, QString(), QString()));
        QCOMPARE(ids, TDynamicArrayOfInt({101, 201}));
        QVERIFY(!anyFormLeft());
        QCOMPARE(report.messages, QStringList());
    }

    void shownWithoutBlockingItFreesItselfWhenClosed()
    {
        QPointer<TfrmFundSelector> form = new TfrmFundSelector;
        QVERIFY(showActive(*form));
        form->close();
        QTRY_VERIFY(!form);
        TCloseAction action = TCloseAction::caHide;
        TfrmFundSelector other;
        other.FormClose(nullptr, action);
        QCOMPARE(int(action), int(TCloseAction::caFree));
    }

    void realCatalogueThroughTheDialog()
    {
        SelectorCatalogue catalogue;
        if (const QString file = realCatalogue(); !file.isEmpty()) {
            catalogue.fillFrom(file);
        } else {
            qInfo("the real catalogue is not there; 14,000 made funds stand in");
            QVERIFY(catalogue.database().transaction());
            for (int group = 1; group <= 1000; ++group) {
                if (group % 10 == 1)
                    catalogue.addType(group / 10 + 1, u"Type %1"_s.arg(group / 10 + 1));
                catalogue.addGroup(group, (group - 1) / 10 + 1, u"Group %1"_s.arg(group));
                for (int fund = 0; fund < 14; ++fund)
                    catalogue.addFund(group * 100 + fund, group, u"Fund %1-%2"_s.arg(group).arg(fund));
            }
            QVERIFY(catalogue.database().commit());
        }
        const TTablePtr funds = catalogue.funds().Table();
        QVERIFY(funds->RowCount() > 14000 - 1);
        const auto fund = [&funds](int row) { return funds->Value(row, 0).toInt(); };
        const auto name = [&funds](int row) { return funds->Value(row, 2).toString().trimmed(); };
        TDynamicArrayOfInt ids;
        for (int i = 0; i < 50; ++i)
            ids.append(fund((50 - i) * 270));
        TDynamicArrayOfInt expected = ids;
        for (const int row : {5, 7001, funds->RowCount() - 1})
            expected.append(fund(row));
        expected.removeAt(20);
        const bool chosen = pick(catalogue, ids, [&](TfrmFundSelector &form) {
            const SelectorDriver hands(*form.fraFundSelector);
            const QPointer<TfrmFundSelector> watched = &form;
            QCOMPARE(hands.captions().size(), 50);
            hands.doubleClick(hands.node(name(5)));
            hands.click(hands.node(name(7001)));
            QTest::mouseClick(form.fraFundSelector->sbtAdd, Qt::LeftButton);
            hands.click(hands.node(name(funds->RowCount() - 1)));
            press(form, Qt::Key_Return);
            QCOMPARE(hands.captions().size(), 53);
            hands.click(hands.list->Items()[20]);
            press(form, Qt::Key_Delete);
            QCOMPARE(hands.captions().size(), 52);
            QTest::mouseClick(form.fraFundSelector->btnSelect, Qt::LeftButton);
            QVERIFY(waitUntilClosed(watched));
        });
        QVERIFY(chosen);
        QCOMPARE(ids.size(), 52);
        QCOMPARE(ids, expected);
        QCOMPARE(m_freed, 1);
    }
};

ZEL_TEST_MAIN(tst_fundselectordialog)
#include "tst_fundselectordialog.moc"
