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

using namespace Qt::StringLiterals;

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
        return failing ? SafecallGuard([] { throw Exception(u"No window today."_s); })
                       : TfrmModule::get_Window(window);
    }
    HResult CloseModule() noexcept override
    {
        return failing ? SafecallGuard([this] { throw Exception(reason); }) : TfrmModule::CloseModule();
    }
    bool failing = false;
    QString reason = u"Not now."_s;
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
        QVERIFY_THROWS_EXCEPTION(EListError, items.GetItemByID(u"Preparer"_s));
        QObject first;
        items.SetItem(u"Preparer"_s, &first);
        QCOMPARE(items.GetItemByID(u"Preparer"_s).Object(), &first);
        QCOMPARE(items.GetItemByID(u"Preparer"_s).ID(), u"Preparer"_s);
        QVERIFY_THROWS_EXCEPTION(EListError, items.GetItemByID(u"PREPARER"_s));
        {
            QObject second;
            items.SetItem(u"Preparer"_s, &second);
            QCOMPARE(items.GetItemByID(u"Preparer"_s).Object(), &second);
        }
        QVERIFY(!items.GetItemByID(u"Preparer"_s).Object());
        items.Remove(u"Preparer"_s);
        items.Remove(u"Preparer"_s);
        QVERIFY(!items.Contains(u"Preparer"_s));
    }

    void theFactoryMakesLinkedAndEmptyLists()
    {
        TBaseClients master;
        master.Add(std::make_unique<TBaseClient>(u"Botha"_s));
        std::unique_ptr<TBaseClients> list;
        TZelClass::CreateClass(TBaseClients::staticMetaObject, &master, u"Clients"_s, true, list);
        QCOMPARE(list->Get_Name(), u"Clients"_s);
        QCOMPARE(list->Count(), 1);
        QCOMPARE(list->Client(0), master.Client(0));

        std::unique_ptr<TBaseClients> empty;
        TZelClass::CreateClass(TBaseClients::staticMetaObject, &master, u"Own"_s, false, empty);
        QCOMPARE(empty->Count(), 0);
        empty->Add(std::make_unique<TBaseClient>(u"Own"_s));
        QCOMPARE(master.Count(), 1);
    }

    void theFactoryRefusesWhatItCannotMake()
    {
        TBaseClients master;
        auto list = std::make_unique<TBaseClients>();
        TBaseClients *before = list.get();
        const auto make = [&](const QMetaObject &type, TZelClass *source) {
            TZelClass::CreateClass(type, source, u"Clients"_s, true, list);
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
        TZelClass::CreateClass(TBaseClients::staticMetaObject, master.get(), u"Clients"_s, true, list);
        QSignalSpy changed(list.get(), &TBaseClients::Changed);
        TBaseClient *first = list->Add(std::make_unique<TBaseClient>(u"Adams"_s));
        TBaseClient *second = master->Add(std::make_unique<TBaseClient>(u"Botha"_s));
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
        TBaseClient client(u"Naidoo"_s, u"Priya"_s);
        QCOMPARE(client.DisplayText(), u"Naidoo, Priya"_s);
        client.Set_FirstNames({});
        QCOMPARE(client.DisplayText(), u"Naidoo"_s);
        TBaseClient copy;
        QSignalSpy changed(&copy, &TBaseClient::Changed);
        copy.Assign(&client);
        QCOMPARE(copy.Get_Surname(), u"Naidoo"_s);
        QCOMPARE(changed.count(), 1);
        client.Set_FirstNames(u"Priya"_s);
        client.Set_IDNumber(u"8001015009087"_s);
        client.Set_DateOfBirth(QDate(1980, 1, 1));
        client.Set_EMail(u"priya@example.com"_s);
        client.Set_Telephone(u"+27 11 555 0100"_s);
        copy.Assign(&client);
        QCOMPARE(copy.Get_FirstNames(), u"Priya"_s);
        QCOMPARE(copy.Get_IDNumber(), u"8001015009087"_s);
        QCOMPARE(copy.Get_DateOfBirth(), QDate(1980, 1, 1));
        QCOMPARE(copy.Get_EMail(), u"priya@example.com"_s);
        QCOMPARE(copy.Get_Telephone(), u"+27 11 555 0100"_s);
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
        info.Set_Description(u"Annuity"_s);
        info.Set_Description(u"Annuity"_s);
        QCOMPARE(described.count(), 1);
        {
            TBaseClient client(u"Zulu"_s);
            info.Set_Client(&client);
            QCOMPARE(info.Get_Client(), &client);
        }
        QVERIFY(!info.Get_Client());
        QCOMPARE(chosen.count(), 1);
        TBaseClient other(u"Adams"_s);
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
        QCOMPARE(copy.Get_Description(), u"Annuity"_s);
    }

    void documentsAreSharedByReference()
    {
        IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->documentElement().isNull());
        QVERIFY(xml->loadXML(u"<Quote><Plan No=\"7\">Flexible</Plan></Quote>"_s));
        const IXMLDOMDocument2Ptr other = xml;
        QCOMPARE(xml.use_count(), 2L);
        QDomElement fund = other->createElement(u"Fund"_s);
        fund.setAttribute(u"ID"_s, 12);
        other->documentElement().appendChild(fund);
        QCOMPARE(xml->selectSingleNode(u"Quote/Fund"_s).attribute(u"ID"_s), u"12"_s);
        QCOMPARE(xml->selectSingleNode(u"/Quote/Plan"_s).text(), u"Flexible"_s);
        QVERIFY(xml->selectSingleNode(u"Quote/None/Plan"_s).isNull());
        QVERIFY(xml->selectSingleNode(QString()).isNull());
        QCOMPARE(xml->xml(), u"<Quote><Plan No=\"7\">Flexible</Plan><Fund ID=\"12\"/></Quote>"_s);
        xml->setDocumentElement(xml->createElement(u"Annuity"_s));
        QCOMPARE(other->xml(), u"<Annuity/>"_s);
        xml.reset();
        QCOMPARE(other->documentElement().tagName(), u"Annuity"_s);
    }

    void elementsOfTheFormerDocumentStay()
    {
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->loadXML(u"<Quote><Plan>7</Plan></Quote>"_s));
        const QDomElement plan = xml->selectSingleNode(u"Quote/Plan"_s);
        QVERIFY(xml->loadXML(u"<Annuity/>"_s));
        QCOMPARE(plan.text(), u"7"_s);
    }

    void aBrokenDocumentSaysWhere()
    {
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->loadXML(u"<Quote/>"_s));
        QCOMPARE(xml->parseError().Line, 0);
        QVERIFY(!xml->loadXML(u"<Quote>\n<Plan></Quote>"_s));
        QCOMPARE(xml->parseError().Line, 2);
        QVERIFY(!xml->parseError().Reason.isEmpty());
        QVERIFY(xml->documentElement().isNull());
        QCOMPARE(xml->xml(), QString());
        xml->setDocumentElement(xml->createElement(u"Quote"_s));
        QCOMPARE(xml->documentElement().tagName(), u"Quote"_s);
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
        row("nested too deep", QString(u"<Q>\n"_s).repeated(100'000), 257);
        row("nested too deep and closed", u"<Q>"_s.repeated(257) + u"</Q>"_s.repeated(257), 1);
        QString bomb = of("<!DOCTYPE Q [<!ENTITY a0 \"ha\">");
        for (int i = 1; i < 30; ++i)
            bomb += u"<!ENTITY a%1 \"&a%2;&a%2;\">"_s.arg(i).arg(i - 1);
        row("entities without end", bomb + of("]>\n<Q>&a29;</Q>"), 2);
    }

    void brokenDocuments()
    {
        QFETCH(QString, text);
        QFETCH(int, line);
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY(xml->loadXML(u"<Quote/>"_s));
        QVERIFY(!xml->loadXML(text));
        QVERIFY(!xml->parseError().Reason.isEmpty());
        QCOMPARE(xml->parseError().Line, line);
        QVERIFY(xml->documentElement().isNull());
        QVERIFY(xml->loadXML(u"<Quote/>"_s));
        QVERIFY(xml->parseError().Reason.isEmpty());
    }

    void aLargeDocument()
    {
        // Ten million characters, and as deep as a document may be.
        QString text = u"<Quote>"_s;
        int count = 0;
        for (; text.size() < 10'000'000; ++count)
            text += u"<Fund ID=\"%1\"><Amount>%2.00</Amount></Fund>\n"_s.arg(count).arg(count % 977);
        text += u"<Q>"_s.repeated(255) + u"deep"_s + u"</Q>"_s.repeated(255);
        text += u"</Quote>"_s;
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        QVERIFY2(xml->loadXML(text), qPrintable(xml->parseError().Reason));
        QCOMPARE(xml->documentElement().childNodes().size(), count + 1);
        QCOMPARE(xml->selectSingleNode(u"Quote/Fund/Amount"_s).text(), u"0.00"_s);
        QCOMPARE(xml->documentElement().lastChildElement().text(), u"deep"_s);
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
        const QString text = u"No."_s;
        QCOMPARE(raised(SafecallGuard([&] { throw EListError(text); })), std::pair(E_FAIL, text));
        QCOMPARE(raised(SafecallGuard([] { throw std::runtime_error("No."); })), std::pair(E_FAIL, text));
        QCOMPARE(raised(SafecallGuard([] { throw 1; })).first, E_UNEXPECTED);
        // Passed on from one interface to the next it is still the same failure.
        constexpr HResult special = static_cast<HResult>(0x80070005);
        QCOMPARE(raised(SafecallGuard([&] { throw ESafecallError(special, text); })),
                 std::pair(special, text));
        // A text belongs to one failure; a result that came without one speaks for itself.
        QCOMPARE(raised(special), std::pair(special, u"The call failed with result 0x80070005"_s));
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
        const QString text = u"No further."_s;
        QVERIFY(shown([&] { throw Exception(text); }, text));
        QVERIFY(shown([] { throw std::runtime_error("No further."); }, text));
        QVERIFY(shown([] { throw 1; }, u"An unknown error occurred."_s));
    }

    void ribbonItemsActThroughTheirActions()
    {
        auto action = std::make_unique<QAction>();
        QStringList clicks;
        auto item = std::make_shared<TRibbonItem>(action.get(), u"rbNext"_s, 3,
                                                  [&](const QString &name, qint32 index) {
                                                      clicks << name + QString::number(index);
                                                      if (clicks.size() == 2)
                                                          throw Exception(u"No further."_s);
                                                  });
        QString name;
        QCOMPARE(item->get_Name(name), S_OK);
        QCOMPARE(name, u"rbNext"_s);
        WordBool enabled = WordFalse;
        QCOMPARE(item->get_Enabled(enabled), S_OK);
        QCOMPARE(enabled, WordBool(-1));
        QCOMPARE(item->put_Enabled(WordFalse), S_OK);
        QVERIFY(!action->isEnabled());
        QCOMPARE(item->put_Enabled(1), S_OK); // not every host sets all bits
        QVERIFY(action->isEnabled());
        action->trigger();
        QCOMPARE(clicks, QStringList{u"rbNext3"_s});

        QStringList reported;
        SetExceptionReport([&](const QString &message) { reported << message; });
        action->trigger();
        QCOMPARE(reported, QStringList{u"No further."_s});

        item.reset();
        action->trigger();
        QCOMPARE(clicks.size(), 2);

        TRibbonItem orphan(action.get(), u"rbNext"_s);
        action.reset();
        QVERIFY(orphan.put_Enabled(WordTrue) < 0);
        QVERIFY(orphan.get_Enabled(enabled) < 0);
        QVERIFY(orphan.get_Name(name) < 0);
        QVERIFY_THROWS_EXCEPTION(ESafecallError, SafecallCheck(orphan.get_Name(name)));
    }

    void prepopulationAnswersByName()
    {
        TQuotePrePop source({{u"Term"_s, 20}});
        QVariant value;
        QCOMPARE(source.get_Value(u"Term"_s, value), S_OK);
        QCOMPARE(value.toInt(), 20);
        QCOMPARE(source.get_Value(u"Other"_s, value), S_OK);
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
        const QString bare = u"The call failed with result 0x80004005"_s;
        QCOMPARE(said(fail("Disk full.")), u"Disk full."_s);
        QCOMPARE(said(E_FAIL), bare); // once
        // Nobody asked about the first failure, and the second one has another number and no message.
        QVERIFY(fail("Disk full.") < 0);
        QCOMPARE(said(denied), u"The call failed with result 0x80070005"_s);
        QCOMPARE(said(E_FAIL), bare);
        // The last one counts, and a success ends the matter.
        QVERIFY(fail("Disk full.") < 0);
        QCOMPARE(said(fail("No paper.")), u"No paper."_s);
        QVERIFY(fail("Disk full.") < 0);
        SafecallCheck(S_OK);
        QCOMPARE(said(E_FAIL), bare);
        // A call that is checked as such never shows what was said before it.
        QVERIFY(fail("Disk full.") < 0);
        QCOMPARE(messageOf<ESafecallError>([] { SafecallCheck([] { return E_FAIL; }); }), bare);
        QCOMPARE(messageOf<ESafecallError>([&] { SafecallCheck([&] { return fail("No paper."); }); }),
                 u"No paper."_s);
        SafecallCheck([] { return S_OK; });
        // It keeps its number and its text through several interfaces.
        const HResult outer = SafecallGuard([&] { throw ESafecallError(denied, u"Locked."_s); });
        QCOMPARE(outer, denied);
        QCOMPARE(said(outer), u"Locked."_s);
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
        form.UpdateOnClick(u"rbNext"_s, [&](QObject *sender, qint32 index) {
            from = sender;
            at = index;
        });
        const IZelModulePtr module = form.Module();
        QCOMPARE(module->ItemClicked(u"rbNext"_s, 5), S_OK);
        QCOMPARE(from, &form);
        QCOMPARE(at, 5);
        QCOMPARE(module->ItemClicked(u"rbOther"_s, 6), S_OK);
        QCOMPARE(at, 5);
        form.UpdateOnClick(u"rbNext"_s, [](QObject *, qint32) { throw Exception(u"Refused."_s); });
        QCOMPARE(module->ItemClicked(u"rbNext"_s, 7), E_FAIL);
        form.UpdateOnClick(u"rbNext"_s, {});
        QCOMPARE(module->ItemClicked(u"rbNext"_s, 8), S_OK);
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
        QVERIFY(module->ItemClicked(u"x"_s, 0) < 0);

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
        QCOMPARE(closed, (QStringList{u"third"_s, u"second"_s, u"first"_s}));
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
        newest.reason = u"Not me."_s;
        QCOMPARE(ModuleManager().OpenModule(newest.Module()), S_OK);
        newest.failing = true;
        QCOMPARE(messageOf<ESafecallError>([] { StandardModuleManager().CloseAll(); }), newest.reason);
        QVERIFY(other->IsDisposed());
        QVERIFY(!form.IsDisposed());
        QVERIFY(!newest.IsDisposed());
    }

    void theDialogWritesOnlyWhatIsValid()
    {
        TBaseClient client(u"Dlamini"_s, u"Thandi"_s);
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
        QVERIFY(refused(dialog.edSurname, u"   "_s));
        QVERIFY(refused(dialog.edIDNumber, u"800101500908"_s));
        QVERIFY(refused(dialog.edIDNumber, u"8001015009088"_s));
        QVERIFY(refused(dialog.edDateOfBirth, u"1980-02-30"_s));
        QVERIFY(refused(dialog.edDateOfBirth, u"9999-01-01"_s));
        QVERIFY(refused(dialog.edEMail, u"thandi"_s));
        QVERIFY(refused(dialog.edTelephone, u"12345"_s));
        QVERIFY(refused(dialog.edTelephone, u"(011) - 555"_s));
        QCOMPARE(client.Get_Surname(), u"Dlamini"_s);

        // What is wrong is there to be typed over.
        type(dialog.edTelephone, u"12345"_s);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(dialog.edTelephone->selectedText(), u"12345"_s);
        type(dialog.edSurname, u" Khumalo "_s);
        type(dialog.edFirstNames, u" Thandi Zinhle "_s);
        type(dialog.edIDNumber, u"8001015009087"_s);
        type(dialog.edDateOfBirth, u"1980-01-01"_s);
        type(dialog.edEMail, u" thandi@example.com "_s);
        type(dialog.edTelephone, u"+27 11 555 0100"_s);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(client.Get_Surname(), u"Khumalo"_s);
        QCOMPARE(client.Get_FirstNames(), u"Thandi Zinhle"_s);
        QCOMPARE(client.Get_DateOfBirth(), QDate(1980, 1, 1));
        QCOMPARE(client.Get_IDNumber(), u"8001015009087"_s);
        QCOMPARE(client.Get_EMail(), u"thandi@example.com"_s);
        QCOMPARE(client.Get_Telephone(), u"+27 11 555 0100"_s);
        // What was entered is shown again, and a child of today's is a client too.
        TfrmEditClient again(&client);
        QCOMPARE(again.edFirstNames->text(), u"Thandi Zinhle"_s);
        QCOMPARE(again.edIDNumber->text(), u"8001015009087"_s);
        QCOMPARE(again.edDateOfBirth->text(), u"1980-01-01"_s);
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
        client.Set_EMail(QString(300, QLatin1Char('m')) + u"@example.com"_s);
        client.Set_Telephone(u"+27 11 555 0100 - 11 555 0199 - 12 555 0177"_s);
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
        TBaseClient client(u"Dlamini"_s);
        QVERIFY(inDialog<TfrmEditClient>([&] { QVERIFY(!TfrmEditClient::EditClient(&client)); },
                                         [](TfrmEditClient &dialog) {
                                             type(dialog.edSurname, u"Other"_s);
                                             QTest::keyClick(&dialog, Qt::Key_Escape);
                                         }));
        QCOMPARE(client.Get_Surname(), u"Dlamini"_s);
        QVERIFY(!TfrmEditClient::EditClient(nullptr));
    }

    void theDialogGivesUpWithItsClient()
    {
        auto client = std::make_unique<TBaseClient>(u"Dlamini"_s);
        QTimer::singleShot(0, this, [&] { client.reset(); });
        QVERIFY(!TfrmEditClient::EditClient(client.get()));
        QVERIFY(!client);
    }
};

ZEL_TEST_MAIN(TestHost)
#include "tst_host.moc"
