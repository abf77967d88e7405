#include "Dialogs.h"
#include "Errors.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "host/Clienteditfrm.h"
#include "host/Modulefrm.h"
#include "host/Quoteappimpl.h"
#include "toolkit/TApplication.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QScreen>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest/qtestspontaneevent.h>

namespace
{
void letGo()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void type(QLineEdit *edit, const QString &text)
{
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

/// A module whose operations can be made to fail.
class TfrmFailing : public TfrmModule
{
public:
    HResult get_Window(QWidget *&window) noexcept override
    {
        return failing ? SafecallGuard([] { throw Exception(QStringLiteral("No window today.")); })
                       : TfrmModule::get_Window(window);
    }
    HResult CloseModule() noexcept override
    {
        return failing ? SafecallGuard([this] { throw Exception(reason); }) : TfrmModule::CloseModule();
    }
    bool failing = false;
    QString reason = QStringLiteral("Not now.");
};
} // namespace

class TestHost : public ZelTest
{
    Q_OBJECT
protected Q_SLOTS:
    void init() override
    {
        ZelTest::init();
        ZelSystem().Items().Clear();
        SetModuleManager(nullptr);
    }

private Q_SLOTS:
    void cleanup()
    {
        StandardModuleManager().CloseAll();
        letGo();
        SetExceptionReport({});
    }

    void itemsAreFoundByIdentifier()
    {
        TZelSysItems &items = ZelSystem().Items();
        QVERIFY_THROWS_EXCEPTION(EListError, items.GetItemByID(QStringLiteral("Preparer")));
        QObject first;
        items.SetItem(QStringLiteral("Preparer"), &first);
        QCOMPARE(items.GetItemByID(QStringLiteral("Preparer")).Object(), &first);
        QCOMPARE(items.GetItemByID(QStringLiteral("Preparer")).ID(), QStringLiteral("Preparer"));
        QVERIFY_THROWS_EXCEPTION(EListError, items.GetItemByID(QStringLiteral("PREPARER")));
        {
            QObject second;
            items.SetItem(QStringLiteral("Preparer"), &second);
            QCOMPARE(items.GetItemByID(QStringLiteral("Preparer")).Object(), &second);
        }
        QVERIFY(!items.GetItemByID(QStringLiteral("Preparer")).Object());
        items.Remove(QStringLiteral("Preparer"));
        items.Remove(QStringLiteral("Preparer"));
        QVERIFY(!items.Contains(QStringLiteral("Preparer")));
    }

    void theFactoryMakesLinkedAndEmptyLists()
    {
        TBaseClients master;
        master.Add(std::make_unique<TBaseClient>(QStringLiteral("Botha")));
        std::unique_ptr<TBaseClients> list;
        TZelClass::CreateClass(TBaseClients::staticMetaObject, &master, QStringLiteral("Clients"), true,
                               list);
        QCOMPARE(list->Get_Name(), QStringLiteral("Clients"));
        QCOMPARE(list->Count(), 1);
        QCOMPARE(list->Client(0), master.Client(0));

        std::unique_ptr<TBaseClients> empty;
        TZelClass::CreateClass(TBaseClients::staticMetaObject, &master, QStringLiteral("Own"), false, empty);
        QCOMPARE(empty->Count(), 0);
        empty->Add(std::make_unique<TBaseClient>(QStringLiteral("Own")));
        QCOMPARE(master.Count(), 1);
    }

    void theFactoryRefusesWhatItCannotMake()
    {
        TBaseClients master;
        auto list = std::make_unique<TBaseClients>();
        TBaseClients *before = list.get();
        const auto make = [&](const QMetaObject &type, TZelClass *source) {
            TZelClass::CreateClass(type, source, QStringLiteral("Clients"), true, list);
        };
        QVERIFY_THROWS_EXCEPTION(EConvertError, make(QObject::staticMetaObject, &master));
        QVERIFY_THROWS_EXCEPTION(EConvertError, make(TZelClass::staticMetaObject, &master));
        QVERIFY_THROWS_EXCEPTION(EConvertError, make(TBaseClients::staticMetaObject, nullptr));
        TZelClass other;
        QVERIFY_THROWS_EXCEPTION(EConvertError, make(TBaseClients::staticMetaObject, &other));
        QCOMPARE(list.get(), before);
    }

    void aLinkedListFollowsItsMaster()
    {
        auto master = std::make_unique<TBaseClients>();
        std::unique_ptr<TBaseClients> list;
        TZelClass::CreateClass(TBaseClients::staticMetaObject, master.get(), QStringLiteral("Clients"), true,
                               list);
        QSignalSpy changed(list.get(), &TBaseClients::Changed);
        TBaseClient *first = list->Add(std::make_unique<TBaseClient>(QStringLiteral("Adams")));
        TBaseClient *second = master->Add(std::make_unique<TBaseClient>(QStringLiteral("Botha")));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(list->Count(), 2);
        QCOMPARE(list->IndexOf(second), 1);
        list->Delete(first);
        QCOMPARE(changed.count(), 3);
        QCOMPARE(list->Client(0), second);
        delete second;
        QCOMPARE(changed.count(), 4);
        QCOMPARE(master->Count(), 0);
        master.reset();
        QCOMPARE(changed.count(), 5);
        QCOMPARE(list->Count(), 0);
        QCOMPARE(list->IndexOf(nullptr), -1);
        QVERIFY_THROWS_EXCEPTION(EListError, list->Add(std::make_unique<TBaseClient>()));
    }

    void listsRefuseWhatIsNotTheirs()
    {
        TBaseClients list;
        TBaseClient stranger;
        QVERIFY_THROWS_EXCEPTION(EListError, list.Client(0));
        QVERIFY_THROWS_EXCEPTION(EListError, list.Client(-1));
        QVERIFY_THROWS_EXCEPTION(EListError, list.Delete(&stranger));
        QVERIFY_THROWS_EXCEPTION(EListError, list.Delete(nullptr));
        QVERIFY_THROWS_EXCEPTION(EListError, list.Add(nullptr));
    }

    void manyChangesAreSaidOnce()
    {
        TBaseClients list;
        QSignalSpy changed(&list, &TBaseClients::Changed);
        list.BeginUpdate();
        list.BeginUpdate();
        for (int i = 0; i < 1000; ++i)
            list.Add(std::make_unique<TBaseClient>(QString::number(i)));
        list.EndUpdate();
        QCOMPARE(changed.count(), 0);
        list.EndUpdate();
        QCOMPARE(changed.count(), 1);
        list.BeginUpdate();
        list.EndUpdate();
        list.EndUpdate();
        QCOMPARE(changed.count(), 1);
    }

    void clientsAreShownByNameAndAssigned()
    {
        TBaseClient client(QStringLiteral("Naidoo"), QStringLiteral("Priya"));
        QCOMPARE(client.DisplayText(), QStringLiteral("Naidoo, Priya"));
        client.Set_FirstNames({});
        QCOMPARE(client.DisplayText(), QStringLiteral("Naidoo"));
        TBaseClient copy;
        QSignalSpy changed(&copy, &TBaseClient::Changed);
        copy.Assign(&client);
        QCOMPARE(copy.Get_Surname(), QStringLiteral("Naidoo"));
        QCOMPARE(changed.count(), 1);
        client.Set_FirstNames(QStringLiteral("Priya"));
        client.Set_IDNumber(QStringLiteral("8001015009087"));
        client.Set_DateOfBirth(QDate(1980, 1, 1));
        client.Set_EMail(QStringLiteral("priya@example.com"));
        client.Set_Telephone(QStringLiteral("+27 11 555 0100"));
        copy.Assign(&client);
        QCOMPARE(copy.Get_FirstNames(), QStringLiteral("Priya"));
        QCOMPARE(copy.Get_IDNumber(), QStringLiteral("8001015009087"));
        QCOMPARE(copy.Get_DateOfBirth(), QDate(1980, 1, 1));
        QCOMPARE(copy.Get_EMail(), QStringLiteral("priya@example.com"));
        QCOMPARE(copy.Get_Telephone(), QStringLiteral("+27 11 555 0100"));
        QCOMPARE(changed.count(), 6);
        QObject other;
        QVERIFY_THROWS_EXCEPTION(EConvertError, copy.Assign(&other));
        QVERIFY_THROWS_EXCEPTION(EConvertError, copy.Assign(nullptr));
    }

    void quoteInformationSaysWhatChanged()
    {
        TQuoteInfo info;
        QSignalSpy described(&info, &TQuoteInfo::DescriptionChanged);
        QSignalSpy chosen(&info, &TQuoteInfo::ClientChanged);
        info.Set_Description(QStringLiteral("Annuity"));
        info.Set_Description(QStringLiteral("Annuity"));
        QCOMPARE(described.count(), 1);
        {
            TBaseClient client(QStringLiteral("Zulu"));
            info.Set_Client(&client);
            QCOMPARE(info.Get_Client(), &client);
        }
        QVERIFY(!info.Get_Client());
        QCOMPARE(chosen.count(), 1);
        TBaseClient other(QStringLiteral("Adams"));
        info.Set_Client(&other);
        info.Set_Client(&other);
        QCOMPARE(chosen.count(), 2);
        QSignalSpy keyed(&info, &TQuoteInfo::QuoteKeyChanged);
        info.Set_QuoteKey(Q_INT64_C(-9007199254740993));
        info.Set_QuoteKey(Q_INT64_C(-9007199254740993));
        QCOMPARE(keyed.count(), 1);
        TQuoteInfo copy;
        copy.Assign(&info);
        QCOMPARE(copy.Get_Client(), &other);
        QCOMPARE(copy.Get_QuoteKey(), Q_INT64_C(-9007199254740993));
        QCOMPARE(copy.Get_Description(), QStringLiteral("Annuity"));
    }

    void documentsAreSharedByReference()
    {
        IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->documentElement().isNull());
        QVERIFY(xml->loadXML(QStringLiteral("<Quote><Plan No=\"7\">Flexible</Plan></Quote>")));
        const IXMLDOMDocument2Ptr other = xml;
        QCOMPARE(xml.use_count(), 2L);
        QDomElement fund = other->createElement(QStringLiteral("Fund"));
        fund.setAttribute(QStringLiteral("ID"), 12);
        other->documentElement().appendChild(fund);
        QCOMPARE(xml->selectSingleNode(QStringLiteral("Quote/Fund")).attribute(QStringLiteral("ID")),
                 QStringLiteral("12"));
        QCOMPARE(xml->selectSingleNode(QStringLiteral("/Quote/Plan")).text(), QStringLiteral("Flexible"));
        QVERIFY(xml->selectSingleNode(QStringLiteral("Quote/None/Plan")).isNull());
        QVERIFY(xml->selectSingleNode(QString()).isNull());
        QCOMPARE(xml->xml(),
                 QStringLiteral("<Quote><Plan No=\"7\">Flexible</Plan><Fund ID=\"12\"/></Quote>"));
        xml->setDocumentElement(xml->createElement(QStringLiteral("Annuity")));
        QCOMPARE(other->xml(), QStringLiteral("<Annuity/>"));
        xml.reset();
        QCOMPARE(other->documentElement().tagName(), QStringLiteral("Annuity"));
    }

    void elementsOfTheFormerDocumentStay()
    {
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->loadXML(QStringLiteral("<Quote><Plan>7</Plan></Quote>")));
        const QDomElement plan = xml->selectSingleNode(QStringLiteral("Quote/Plan"));
        QVERIFY(xml->loadXML(QStringLiteral("<Annuity/>")));
        QCOMPARE(plan.text(), QStringLiteral("7"));
    }

    void aBrokenDocumentSaysWhere()
    {
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->loadXML(QStringLiteral("<Quote/>")));
        QCOMPARE(xml->parseError().Line, 0);
        QVERIFY(!xml->loadXML(QStringLiteral("<Quote>\n<Plan></Quote>")));
        QCOMPARE(xml->parseError().Line, 2);
        QVERIFY(!xml->parseError().Reason.isEmpty());
        QVERIFY(xml->documentElement().isNull());
        QCOMPARE(xml->xml(), QString());
        xml->setDocumentElement(xml->createElement(QStringLiteral("Quote")));
        QCOMPARE(xml->documentElement().tagName(), QStringLiteral("Quote"));
    }

    void brokenDocuments_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        const auto row = [](const char *name, const QString &text, int line) {
            QTest::newRow(name) << text << line;
        };
        const auto of = [](const char *text) { return QString::fromUtf8(text); };
        row("nothing", QString(), 1);
        row("no XML", of("Quote"), 1);
        row("two roots", of("<Quote/>\n<Plan/>"), 2);
        row("never closed", of("<Quote>\n\n<Plan>"), 3);
        row("closed the wrong way round", of("<Quote>\n<Plan></Quote></Plan>"), 2);
        row("an attribute twice", of("<Quote No=\"1\" No=\"2\"/>"), 1);
        row("an attribute without quotes", of("<Quote No=1/>"), 1);
        row("an unknown entity", of("<Quote>&fee;</Quote>"), 1);
        row("an unknown prefix", of("<Quote>\n<q:Plan/></Quote>"), 2);
        row("a character that is none", of("<Quote>\n\n\n\x01</Quote>"), 4);
        row("nested too deep", QString(QStringLiteral("<Q>\n")).repeated(100'000), 257);
        row("nested too deep and closed",
            QStringLiteral("<Q>").repeated(257) + QStringLiteral("</Q>").repeated(257), 1);
        QString bomb = of("<!DOCTYPE Q [<!ENTITY a0 \"ha\">");
        for (int i = 1; i < 30; ++i)
            bomb += QStringLiteral("<!ENTITY a%1 \"&a%2;&a%2;\">").arg(i).arg(i - 1);
        row("entities without end", bomb + of("]>\n<Q>&a29;</Q>"), 2);
    }

    void brokenDocuments()
    {
        QFETCH(QString, text);
        QFETCH(int, line);
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->loadXML(QStringLiteral("<Quote/>")));
        QVERIFY(!xml->loadXML(text));
        QVERIFY(!xml->parseError().Reason.isEmpty());
        QCOMPARE(xml->parseError().Line, line);
        QVERIFY(xml->documentElement().isNull());
        QVERIFY(xml->loadXML(QStringLiteral("<Quote/>")));
        QVERIFY(xml->parseError().Reason.isEmpty());
    }

    void aLargeDocument()
    {
        // Ten million characters, and as deep as a document may be.
        QString text = QStringLiteral("<Quote>");
        int count = 0;
        for (; text.size() < 10'000'000; ++count)
            text +=
                QStringLiteral("<Fund ID=\"%1\"><Amount>%2.00</Amount></Fund>\n").arg(count).arg(count % 977);
        text += QStringLiteral("<Q>").repeated(255) + QStringLiteral("deep") +
                QStringLiteral("</Q>").repeated(255);
        text += QStringLiteral("</Quote>");
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY2(xml->loadXML(text), qPrintable(xml->parseError().Reason));
        QCOMPARE(xml->documentElement().childNodes().size(), count + 1);
        QCOMPARE(xml->selectSingleNode(QStringLiteral("Quote/Fund/Amount")).text(), QStringLiteral("0.00"));
        QCOMPARE(xml->documentElement().lastChildElement().text(), QStringLiteral("deep"));
        QVERIFY(xml->xml().size() > 9'000'000);
        // The mistake is at the very end, and is found there.
        text.chop(2);
        QVERIFY(!xml->loadXML(text));
        QCOMPARE(xml->parseError().Line, count + 1);
        QVERIFY(xml->documentElement().isNull());
    }

    void failuresKeepTheirResultAndTheirText()
    {
        const auto raised = [](HResult result) {
            try {
                SafecallCheck(result);
            } catch (const ESafecallError &error) {
                return std::pair(error.Result(), error.message());
            }
            return std::pair(S_OK, QString());
        };
        const QString text = QStringLiteral("No.");
        QCOMPARE(raised(SafecallGuard([&] { throw EListError(text); })), std::pair(E_FAIL, text));
        QCOMPARE(raised(SafecallGuard([] { throw std::runtime_error("No."); })), std::pair(E_FAIL, text));
        QCOMPARE(raised(SafecallGuard([] { throw 1; })).first, E_UNEXPECTED);
        // Passed on from one interface to the next it is still the same failure.
        constexpr HResult special = static_cast<HResult>(0x80070005);
        QCOMPARE(raised(SafecallGuard([&] { throw ESafecallError(special, text); })),
                 std::pair(special, text));
        // A text belongs to one failure; a result that came without one speaks for itself.
        QCOMPARE(raised(special),
                 std::pair(special, QStringLiteral("The call failed with result 0x80070005")));
        QCOMPARE(raised(1), std::pair(S_OK, QString()));
    }

    void errorsWithoutAReportAreShownInABox()
    {
        const auto shown = [](const std::function<void()> &body, const QString &text) {
            QTest::ignoreMessage(QtCriticalMsg, text.toUtf8().constData());
            GuardedCall(body);
            QWidget *box = QApplication::activeModalWidget();
            const auto *message = qobject_cast<QMessageBox *>(box);
            const bool right = message && message->isVisible() && message->text() == text;
            if (box)
                QTest::keyClick(box, Qt::Key_Return);
            letGo();
            return right && !QApplication::activeModalWidget();
        };
        const QString text = QStringLiteral("No further.");
        QVERIFY(shown([&] { throw Exception(text); }, text));
        QVERIFY(shown([] { throw std::runtime_error("No further."); }, text));
        QVERIFY(shown([] { throw 1; }, QStringLiteral("An unknown error occurred.")));
    }

    void ribbonItemsActThroughTheirActions()
    {
        auto action = std::make_unique<QAction>();
        QStringList clicks;
        auto item = std::make_shared<TRibbonItem>(action.get(), QStringLiteral("rbNext"), 3,
                                                  [&](const QString &name, qint32 index) {
                                                      clicks << name + QString::number(index);
                                                      if (clicks.size() == 2)
                                                          throw Exception(QStringLiteral("No further."));
                                                  });
        QString name;
        QCOMPARE(item->get_Name(name), S_OK);
        QCOMPARE(name, QStringLiteral("rbNext"));
        WordBool enabled = WordFalse;
        QCOMPARE(item->get_Enabled(enabled), S_OK);
        QCOMPARE(enabled, WordBool(-1));
        QCOMPARE(item->put_Enabled(WordFalse), S_OK);
        QVERIFY(!action->isEnabled());
        QCOMPARE(item->put_Enabled(1), S_OK); // not every host sets all bits
        QVERIFY(action->isEnabled());
        action->trigger();
        QCOMPARE(clicks, QStringList{QStringLiteral("rbNext3")});

        QStringList reported;
        SetExceptionReport([&](const QString &message) { reported << message; });
        action->trigger();
        QCOMPARE(reported, QStringList{QStringLiteral("No further.")});

        item.reset();
        action->trigger();
        QCOMPARE(clicks.size(), 2);

        TRibbonItem orphan(action.get(), QStringLiteral("rbNext"));
        action.reset();
        QVERIFY(orphan.put_Enabled(WordTrue) < 0);
        QVERIFY(orphan.get_Enabled(enabled) < 0);
        QVERIFY(orphan.get_Name(name) < 0);
        QVERIFY_THROWS_EXCEPTION(ESafecallError, SafecallCheck(orphan.get_Name(name)));
    }

    void prepopulationAnswersByName()
    {
        TQuotePrePop source({{QStringLiteral("Term"), 20}});
        QVariant value;
        QCOMPARE(source.get_Value(QStringLiteral("Term"), value), S_OK);
        QCOMPARE(value.toInt(), 20);
        QCOMPARE(source.get_Value(QStringLiteral("Other"), value), S_OK);
        QVERIFY(!value.isValid());
    }

    void aFailureIsRaisedWithItsOwnMessage()
    {
        const auto fail = [](const char *text) {
            return SafecallGuard([text] { throw Exception(QString::fromLatin1(text)); });
        };
        const auto said = [](HResult result) {
            return messageOf<ESafecallError>([result] { SafecallCheck(result); });
        };
        constexpr auto denied = static_cast<HResult>(0x80070005);
        const QString bare = QStringLiteral("The call failed with result 0x80004005");
        QCOMPARE(said(fail("Disk full.")), QStringLiteral("Disk full."));
        QCOMPARE(said(E_FAIL), bare); // once
        // Nobody asked about the first failure, and the second one has another number and no message.
        QVERIFY(fail("Disk full.") < 0);
        QCOMPARE(said(denied), QStringLiteral("The call failed with result 0x80070005"));
        QCOMPARE(said(E_FAIL), bare);
        // The last one counts, and a success ends the matter.
        QVERIFY(fail("Disk full.") < 0);
        QCOMPARE(said(fail("No paper.")), QStringLiteral("No paper."));
        QVERIFY(fail("Disk full.") < 0);
        SafecallCheck(S_OK);
        QCOMPARE(said(E_FAIL), bare);
        // A call that is checked as such never shows what was said before it.
        QVERIFY(fail("Disk full.") < 0);
        QCOMPARE(messageOf<ESafecallError>([] { SafecallCheck([] { return E_FAIL; }); }), bare);
        QCOMPARE(messageOf<ESafecallError>([&] { SafecallCheck([&] { return fail("No paper."); }); }),
                 QStringLiteral("No paper."));
        SafecallCheck([] { return S_OK; });
        // It keeps its number and its text through several interfaces.
        const HResult outer = SafecallGuard([&] { throw ESafecallError(denied, QStringLiteral("Locked.")); });
        QCOMPARE(outer, denied);
        QCOMPARE(said(outer), QStringLiteral("Locked."));
    }

    void abstractCallsAreRaised()
    {
        class TBare : public TLegacyEditor
        {
            TBaseClients *Get_Clients() const override { return nullptr; }
            qint32 Get_Plan() const override { return 0; }
            void Set_Plan(qint32) override {}
            TQuoteInfo *Get_QuoteInfo() const override { return nullptr; }
            void Set_QuoteInfo(TQuoteInfo *) override {}
            QString Get_StyleSheet() const override { return {}; }
            IXMLDOMDocument2Ptr Get_XML() const override { return {}; }
            void Set_XML(const IXMLDOMDocument2Ptr &) override {}
            IQuotePrePopPtr Get_PrepPop() const override { return {}; }
            void Set_PrepPop(const IQuotePrePopPtr &) override {}
            IZelModulePtr Get_Module() const override { return {}; }
            bool SaveToFinalisor(const IDispatchPtr &) override { return false; }
        };
        TBare editor;
        QVERIFY_THROWS_EXCEPTION(EAbstractError, editor.CalculateQuote());
        QSignalSpy disposed(&editor, &TLegacyEditor::QuoteDisposed);
        editor.DisposeQuote();
        QCOMPARE(disposed.count(), 1);
    }

    void clicksReachTheHandlerBoundByName()
    {
        TfrmModule form;
        QObject *from = nullptr;
        qint32 at = 0;
        form.UpdateOnClick(QStringLiteral("rbNext"), [&](QObject *sender, qint32 index) {
            from = sender;
            at = index;
        });
        const IZelModulePtr module = form.Module();
        QCOMPARE(module->ItemClicked(QStringLiteral("rbNext"), 5), S_OK);
        QCOMPARE(from, &form);
        QCOMPARE(at, 5);
        QCOMPARE(module->ItemClicked(QStringLiteral("rbOther"), 6), S_OK);
        QCOMPARE(at, 5);
        form.UpdateOnClick(QStringLiteral("rbNext"),
                           [](QObject *, qint32) { throw Exception(QStringLiteral("Refused.")); });
        QCOMPARE(module->ItemClicked(QStringLiteral("rbNext"), 7), E_FAIL);
        form.UpdateOnClick(QStringLiteral("rbNext"), {});
        QCOMPARE(module->ItemClicked(QStringLiteral("rbNext"), 8), S_OK);
    }

    void theManagerShowsAndForgetsModules()
    {
        QPointer<TfrmModule> first = new TfrmModule;
        QPointer<TfrmModule> second = new TfrmModule;
        QSignalSpy shown(first, &TfrmModule::VisualPluginShow);
        QCOMPARE(ModuleManager().OpenModule(first->Module()), S_OK);
        QCOMPARE(ModuleManager().OpenModule(second->Module()), S_OK);
        QVERIFY(first->isVisible());
        QCOMPARE(shown.count(), 1);
        QCOMPARE(StandardModuleManager().Modules().size(), size_t(2));
        QVERIFY(QTest::qWaitForWindowActive(second));
        QCOMPARE(StandardModuleManager().ActiveModule(), second->Module());
        QVERIFY(ModuleManager().OpenModule(nullptr) < 0);

        const IZelModulePtr module = first->Module();
        qint32 picture = 7;
        QCOMPARE(module->get_ImageIndex(picture), S_OK);
        QCOMPARE(picture, 0);
        QSignalSpy disposed(first, &TfrmModule::Disposed);
        first->close();
        QVERIFY(first->IsDisposed());
        QCOMPARE(module->CloseModule(), S_OK);
        QCOMPARE(disposed.count(), 1);
        QVERIFY(module->ShowModule() < 0);
        letGo();
        QVERIFY(!first);
        QCOMPARE(StandardModuleManager().Modules().size(), size_t(1));
        QCOMPARE(module->Dispose(), S_OK);
        QCOMPARE(module->CloseModule(), S_OK);
        QWidget *window = nullptr;
        QVERIFY(module->get_Window(window) < 0);
        WordBool prefer = WordFalse;
        QVERIFY(module->PreferHideOverClose(prefer) < 0);
        qint32 index = 0;
        QVERIFY(module->get_ImageIndex(index) < 0);
        QVERIFY(module->ItemClicked(QStringLiteral("x"), 0) < 0);

        StandardModuleManager().CloseAll();
        letGo();
        QVERIFY(!second);
        QVERIFY(!StandardModuleManager().ActiveModule());
    }

    void aModuleStartsInTheMiddleAndStaysWhereItIsPut()
    {
        auto *form = new TfrmModule;
        form->resize(200, 100);
        QCOMPARE(ModuleManager().OpenModule(form->Module()), S_OK);
        QVERIFY(QTest::qWaitForWindowExposed(form));
        const QPoint middle = form->screen()->availableGeometry().center();
        QCOMPARE(form->pos(), middle - QPoint(100, 50));
        form->move(30, 40);
        form->hide();
        QCOMPARE(form->Module()->ShowModule(), S_OK);
        QCOMPARE(form->pos(), QPoint(30, 40));
    }

    void aModuleComesUpBeforeTheOthers()
    {
        auto *first = new TfrmModule;
        auto *second = new TfrmModule;
        QCOMPARE(ModuleManager().OpenModule(first->Module()), S_OK);
        QCOMPARE(ModuleManager().OpenModule(second->Module()), S_OK);
        QVERIFY(QTest::qWaitForWindowActive(second));
        QSignalSpy shown(first, &TfrmModule::VisualPluginShow);
        first->showMinimized();
        shown.clear();
        QCOMPARE(first->Module()->ShowModule(), S_OK);
        QVERIFY(!first->isMinimized());
        QVERIFY(QTest::qWaitForWindowActive(first));
        // The window system's own showing and hiding is none of the module's.
        shown.clear();
        QShowEvent mapped;
        QSpontaneKeyEvent::setSpontaneous(&mapped);
        qApp->notify(first, &mapped); // sending it would make it the program's own
        QCOMPARE(shown.count(), 0);
    }

    void theActiveModuleIsTheOneInTheActiveWindow()
    {
        QWidget host;
        auto *inside = new TfrmModule(&host);
        auto *window = new TfrmModule;
        auto *last = new TfrmModule;
        for (TfrmModule *form : {inside, window, last})
            QCOMPARE(ModuleManager().OpenModule(form->Module()), S_OK);
        const auto activate = [](QWidget *widget) {
            widget->show();
            widget->activateWindow();
            return QTest::qWaitForWindowActive(widget);
        };
        QVERIFY(activate(window));
        QCOMPARE(StandardModuleManager().ActiveModule(), window->Module());
        QVERIFY(activate(&host));
        QCOMPARE(StandardModuleManager().ActiveModule(), inside->Module());
        inside->hide();
        QCOMPARE(StandardModuleManager().ActiveModule(), last->Module());
        inside->show();
        QWidget other;
        QVERIFY(activate(&other));
        QCOMPARE(StandardModuleManager().ActiveModule(), last->Module());
        StandardModuleManager().CloseAll();
        letGo();
    }

    void allAreClosedTheNewestFirst()
    {
        QStringList closed;
        for (const char *name : {"first", "second", "third"}) {
            auto *form = new TfrmModule;
            QCOMPARE(ModuleManager().OpenModule(form->Module()), S_OK);
            connect(form, &TfrmModule::Disposed, this, [&closed, name] { closed << QLatin1String(name); });
        }
        StandardModuleManager().CloseAll();
        QCOMPARE(closed,
                 (QStringList{QStringLiteral("third"), QStringLiteral("second"), QStringLiteral("first")}));
    }

    void aFormDestroyedByItsHostWhileDisposing()
    {
        QPointer<TfrmModule> form = new TfrmModule;
        const IZelModulePtr module = form->Module();
        QCOMPARE(ModuleManager().OpenModule(module), S_OK);
        connect(form, &TfrmModule::Disposed, this, [&form] { delete form.data(); });
        QCOMPARE(module->CloseModule(), S_OK);
        QVERIFY(!form);
        QCOMPARE(module->Dispose(), S_OK);
    }

    // The manager knows no module that has been disposed of, though its form is still to go.
    void aDisposedModuleIsNotOpen()
    {
        auto *first = new TfrmModule;
        auto *second = new TfrmModule;
        QCOMPARE(ModuleManager().OpenModule(first->Module()), S_OK);
        QCOMPARE(ModuleManager().OpenModule(second->Module()), S_OK);
        std::vector<IZelModulePtr> open;
        connect(second, &TfrmModule::Disposed, this, [&open] { open = StandardModuleManager().Modules(); });
        second->close();
        QCOMPARE(open, std::vector<IZelModulePtr>{first->Module()});
        QCOMPARE(StandardModuleManager().Modules(), std::vector<IZelModulePtr>{first->Module()});
        QCOMPARE(StandardModuleManager().ActiveModule(), first->Module());
        first->close();
        QVERIFY(StandardModuleManager().Modules().empty());
        QVERIFY(!StandardModuleManager().ActiveModule());
    }

    // A window larger than the screen still shows its title and its first fields.
    void aLargeModuleStartsOnTheScreen()
    {
        auto *form = new TfrmModule;
        const QRect available = form->screen()->availableGeometry();
        form->resize(available.width() + 400, available.height() + 300);
        QCOMPARE(ModuleManager().OpenModule(form->Module()), S_OK);
        QVERIFY(QTest::qWaitForWindowExposed(form));
        QCOMPARE(form->pos(), available.topLeft());
    }

    void aFailingModuleIsRaisedAndNotKept()
    {
        TfrmFailing form;
        form.failing = true;
        QVERIFY_THROWS_EXCEPTION(ESafecallError, SafecallCheck(ModuleManager().OpenModule(form.Module())));
        QVERIFY(StandardModuleManager().Modules().empty());
        form.failing = false;
        QCOMPARE(ModuleManager().OpenModule(form.Module()), S_OK);
        form.failing = true;
        auto *other = new TfrmModule;
        QCOMPARE(ModuleManager().OpenModule(other->Module()), S_OK);
        TfrmFailing newest;
        newest.reason = QStringLiteral("Not me.");
        QCOMPARE(ModuleManager().OpenModule(newest.Module()), S_OK);
        newest.failing = true;
        QCOMPARE(messageOf<ESafecallError>([] { StandardModuleManager().CloseAll(); }), newest.reason);
        QVERIFY(other->IsDisposed());
        QVERIFY(!form.IsDisposed());
        QVERIFY(!newest.IsDisposed());
    }

    void theDialogWritesOnlyWhatIsValid()
    {
        TBaseClient client(QStringLiteral("Dlamini"), QStringLiteral("Thandi"));
        TfrmEditClient dialog(&client);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QAbstractButton *ok = dialog.btnBox->button(QDialogButtonBox::Ok);
        const auto refused = [&](QLineEdit *field, const QString &text) {
            const QString before = field->text();
            type(field, text);
            QTest::mouseClick(ok, Qt::LeftButton);
            const bool stays = dialog.isVisible() && dialog.lblProblem->isVisible() &&
                               !dialog.lblProblem->text().isEmpty() && dialog.focusWidget() == field;
            type(field, before);
            return stays;
        };
        QVERIFY(refused(dialog.edSurname, QString()));
        QVERIFY(refused(dialog.edSurname, QStringLiteral("   ")));
        QVERIFY(refused(dialog.edIDNumber, QStringLiteral("800101500908")));
        QVERIFY(refused(dialog.edIDNumber, QStringLiteral("8001015009088")));
        QVERIFY(refused(dialog.edDateOfBirth, QStringLiteral("1980-02-30")));
        QVERIFY(refused(dialog.edDateOfBirth, QStringLiteral("9999-01-01")));
        QVERIFY(refused(dialog.edEMail, QStringLiteral("thandi")));
        QVERIFY(refused(dialog.edTelephone, QStringLiteral("12345")));
        QVERIFY(refused(dialog.edTelephone, QStringLiteral("(011) - 555")));
        QCOMPARE(client.Get_Surname(), QStringLiteral("Dlamini"));

        // What is wrong is there to be typed over.
        type(dialog.edTelephone, QStringLiteral("12345"));
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(dialog.edTelephone->selectedText(), QStringLiteral("12345"));
        type(dialog.edSurname, QStringLiteral(" Khumalo "));
        type(dialog.edFirstNames, QStringLiteral(" Thandi Zinhle "));
        type(dialog.edIDNumber, QStringLiteral("8001015009087"));
        type(dialog.edDateOfBirth, QStringLiteral("1980-01-01"));
        type(dialog.edEMail, QStringLiteral(" thandi@example.com "));
        type(dialog.edTelephone, QStringLiteral("+27 11 555 0100"));
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(client.Get_Surname(), QStringLiteral("Khumalo"));
        QCOMPARE(client.Get_FirstNames(), QStringLiteral("Thandi Zinhle"));
        QCOMPARE(client.Get_DateOfBirth(), QDate(1980, 1, 1));
        QCOMPARE(client.Get_IDNumber(), QStringLiteral("8001015009087"));
        QCOMPARE(client.Get_EMail(), QStringLiteral("thandi@example.com"));
        QCOMPARE(client.Get_Telephone(), QStringLiteral("+27 11 555 0100"));
        // What was entered is shown again, and a child of today's is a client too.
        TfrmEditClient again(&client);
        QCOMPARE(again.edFirstNames->text(), QStringLiteral("Thandi Zinhle"));
        QCOMPARE(again.edIDNumber->text(), QStringLiteral("8001015009087"));
        QCOMPARE(again.edDateOfBirth->text(), QStringLiteral("1980-01-01"));
        again.show();
        QVERIFY(QTest::qWaitForWindowActive(&again));
        const QDate today = QDate::currentDate();
        type(again.edDateOfBirth, today.toString(Qt::ISODate));
        QTest::mouseClick(again.btnBox->button(QDialogButtonBox::Ok), Qt::LeftButton);
        QCOMPARE(again.result(), int(QDialog::Accepted));
        QCOMPARE(client.Get_DateOfBirth(), today);
    }

    void theDialogCutsNothingOff()
    {
        TBaseClient client(QString(150, QLatin1Char('s')), QString(150, QLatin1Char('f')));
        client.Set_EMail(QString(300, QLatin1Char('m')) + QStringLiteral("@example.com"));
        client.Set_Telephone(QStringLiteral("+27 11 555 0100 - 11 555 0199 - 12 555 0177"));
        TBaseClient before;
        before.Assign(&client);
        TfrmEditClient dialog(&client);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QTest::mouseClick(dialog.btnBox->button(QDialogButtonBox::Ok), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(client.Get_Surname(), before.Get_Surname());
        QCOMPARE(client.Get_FirstNames(), before.Get_FirstNames());
        QCOMPARE(client.Get_EMail(), before.Get_EMail());
        QCOMPARE(client.Get_Telephone(), before.Get_Telephone());
    }

    void cancellingWritesNothing()
    {
        TBaseClient client(QStringLiteral("Dlamini"));
        QVERIFY(inDialog<TfrmEditClient>([&] { QVERIFY(!TfrmEditClient::EditClient(&client)); },
                                         [](TfrmEditClient &dialog) {
                                             type(dialog.edSurname, QStringLiteral("Other"));
                                             QTest::keyClick(&dialog, Qt::Key_Escape);
                                         }));
        QCOMPARE(client.Get_Surname(), QStringLiteral("Dlamini"));
        QVERIFY(!TfrmEditClient::EditClient(nullptr));
    }

    void theDialogGivesUpWithItsClient()
    {
        auto client = std::make_unique<TBaseClient>(QStringLiteral("Dlamini"));
        QTimer::singleShot(0, this, [&] { client.reset(); });
        QVERIFY(!TfrmEditClient::EditClient(client.get()));
        QVERIFY(!client);
    }
};

ZEL_TEST_MAIN(TestHost)
#include "tst_host.moc"
