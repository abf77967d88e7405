// labels: x11
#include "Dialogs.h"
#include "Frames.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "editor/frm_BaseProductEditor.h"
#include "frames/fra_ToolBar.h"
#include "host/Clienteditfrm.h"
#include "toolkit/TApplication.h"

#include <QSignalSpy>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{
void letGo()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

class TfrmAnnuity : public TfrmBaseProductEditor
{
public:
    TfrmAnnuity()
    {
        last = this;
        ++made;
    }
    void SetUpProduct(bool flag) override
    {
        setUp << flag;
        clientsAtSetUp = cbData->count();
        if (raises)
            throw Exception(u"No product."_s);
    }
    void SelectedClientChanged() override
    {
        ++changes;
        selected = SelectedClient();
    }
    HResult CloseModule() noexcept override
    {
        ++closings;
        return refusesToClose ? SafecallGuard([] { throw Exception(u"Still printing."_s); })
                              : TfrmBaseProductEditor::CloseModule();
    }
    using TfrmBaseProductEditor::CopiedQuoteField;
    using TfrmBaseProductEditor::Editor;
    using TfrmBaseProductEditor::SelectedClient;

    static inline QPointer<TfrmAnnuity> last;
    static inline int made = 0;
    static inline bool raises = false;
    static inline int closings = 0;
    QList<bool> setUp;
    int clientsAtSetUp = -1;
    int changes = 0;
    TBaseClient *selected = nullptr;
    bool refusesToClose = false;
};

/// A form with two fields below the header with client and description.
class TfrmWithPage : public TfrmAnnuity
{
public:
    TfrmWithPage() : first(new QLineEdit(pnlProdEditor)), second(new QLineEdit(pnlProdEditor))
    {
        first->setObjectName(u"first"_s);
        second->setObjectName(u"second"_s);
        pnlProdEditor->layout()->addWidget(first);
        pnlProdEditor->layout()->addWidget(second);
    }
    QLineEdit *const first;
    QLineEdit *const second;
};

class TClientWithoutText : public TBaseClient
{
public:
    TClientWithoutText() : TBaseClient(u"Dube"_s) {}
    QString DisplayText() const override
    {
        if (fails)
            throw EDatabaseError(u"No name."_s);
        return TBaseClient::DisplayText();
    }
    bool fails = false;
};

class TRefusingManager : public IModuleManager
{
public:
    HResult OpenModule(const IZelModulePtr &) noexcept override
    {
        return SafecallGuard([] { throw Exception(u"No room."_s); });
    }
};
} // namespace

class TestProductEditor : public ZelTest
{
    Q_OBJECT
protected Q_SLOTS:
    void init() override
    {
        ZelTest::init();
        SetModuleManager(nullptr);
        m_master = std::make_unique<TBaseClients>();
        for (const char *name : {"Adams", "Botha", "Cele"})
            m_master->Add(std::make_unique<TBaseClient>(QLatin1String(name)));
        ZelSystem().Items().Clear();
        ZelSystem().Items().SetItem(u"MASTERCLIENTS"_s, m_master.get());
        m_info = std::make_unique<TQuoteInfo>();
        m_info->Set_Description(u"Retirement"_s);
        TfrmAnnuity::made = 0;
        TfrmAnnuity::closings = 0;
        TfrmAnnuity::raises = false;
    }

private Q_SLOTS:
    void cleanup()
    {
        StandardModuleManager().CloseAll();
        letGo();
        QVERIFY(!TfrmAnnuity::last);
        SetExceptionReport({});
        m_info.reset();
        m_master.reset();
    }

    void anEditorNeedsTheMasterClients()
    {
        ZelSystem().Items().Remove(u"MASTERCLIENTS"_s);
        QVERIFY_THROWS_EXCEPTION(EListError, TCustomQuoteEditor());
        QObject other;
        ZelSystem().Items().SetItem(u"MASTERCLIENTS"_s, &other);
        QVERIFY_THROWS_EXCEPTION(EConvertError, TCustomQuoteEditor());
    }

    void anEditorKeepsWhatItIsGiven()
    {
        const IXMLDOMDocument2Ptr xml = CreateXMLDocument();
        const IQuotePrePopPtr source = std::make_shared<TQuotePrePop>();
        {
            TCustomQuoteEditor editor;
            QCOMPARE(editor.Get_Clients()->Get_Name(), u"Clients"_s);
            QVERIFY(editor.Get_Clients() != m_master.get());
            QCOMPARE(editor.Get_Clients()->Count(), 3);
            QVERIFY(!editor.Get_QuoteInfo() && !editor.Get_XML() && !editor.Get_PrepPop() &&
                    !editor.Get_Module());
            QCOMPARE(editor.Get_Plan(), 0);
            QCOMPARE(editor.GetStyleSheet(), QString());
            QVERIFY_THROWS_EXCEPTION(EAbstractError, editor.CalculateQuote());
            QVERIFY(editor.SaveToFinalisor(nullptr));
            QVERIFY(editor.SaveToFinalisor(xml));
            editor.Set_Plan(-7);
            QCOMPARE(editor.Get_Plan(), -7);
            editor.Set_QuoteInfo(m_info.get());
            QCOMPARE(editor.Get_QuoteInfo(), m_info.get());
            editor.SetStyleSheet(u"quote.xsl"_s);
            QCOMPARE(editor.Get_StyleSheet(), u"quote.xsl"_s);
            QCOMPARE(editor.GetStyleSheet(), u"quote.xsl"_s);
            editor.Set_XML(xml);
            QCOMPARE(editor.Get_XML(), xml);
            QCOMPARE(xml.use_count(), 2L);
            editor.Set_PrepPop(source);
            QCOMPARE(editor.Get_PrepPop(), source);
            m_info.reset();
            QVERIFY(!editor.Get_QuoteInfo());
        }
        QCOMPARE(xml.use_count(), 1L);
        QCOMPARE(source.use_count(), 1L);
    }

    void thePreparerIsLookedUpOnEveryCall()
    {
        const TCustomQuoteEditor editor;
        QVERIFY_THROWS_EXCEPTION(EListError, editor.Preparer());
        QObject first;
        QObject second;
        ZelSystem().Items().SetItem(u"Preparer"_s, &first);
        QCOMPARE(editor.Preparer(), &first);
        ZelSystem().Items().SetItem(u"Preparer"_s, &second);
        QCOMPARE(editor.Preparer(), &second);
    }

    void theDesign()
    {
        TfrmAnnuity form;
        QCOMPARE(form.size(), QSize(604, 453));
        QCOMPARE(form.windowTitle(), u"Base Product Editor"_s);
        QCOMPARE(form.ilMain->Count(), 11);
        for (int i = 0; i < 11; ++i)
            QVERIFY(!form.ilMain->Icon(i).isNull());
        QCOMPARE(form.edtDescription->text(), u"edtDescription"_s);
        QVERIFY(!form.sbtClient->isEnabled());
        QCOMPARE(form.sbtClient->toolTip(), u"Modify Client's Details"_s);
        QVERIFY(!form.cbData->isEditable());
        form.show();
        QCOMPARE(form.pnlClient->size(), QSize(604, 73));
        QCOMPARE(form.cbData->geometry(), QRect(72, 8, 337, 21));
        QCOMPARE(form.edtDescription->geometry(), QRect(72, 40, 404, 21));
        QCOMPARE(form.sbtClient->geometry(), QRect(408, 8, 23, 22));
        QCOMPARE(form.lblCaption->text(), u"Investor"_s);
        QCOMPARE(form.Label2->text(), u"Description"_s);
        QCOMPARE(form.lblCaption->pos(), QPoint(10, 12));
        QCOMPARE(form.Label2->pos(), QPoint(8, 44));
        QCOMPARE(form.lblCaption->buddy(), form.cbData);
        QCOMPARE(form.Label2->buddy(), form.edtDescription);
        QCOMPARE(form.sbtClient->text(), u"..."_s);
        QCOMPARE(form.sbtClient->accessibleName(), u"Modify Client's Details"_s);
        QCOMPARE(form.Shape1->colorName(), u"clGreen2"_s);
        QCOMPARE(form.Shape1->height(), 3);
        QCOMPARE(form.Shape1->geometry().bottom(), 73 - 3 - 1);
        QCOMPARE(form.edtDescription->text(), QString());
    }

    void captionsThatNeedMoreRoomMoveTheFields()
    {
        TfrmAnnuity form;
        form.lblCaption->setText(u"The person who invests"_s);
        form.show();
        QVERIFY(form.lblCaption->width() >= form.lblCaption->sizeHint().width());
        QVERIFY(form.lblCaption->geometry().right() < form.cbData->x());
        QCOMPARE(form.edtDescription->x(), form.cbData->x());
        QCOMPARE(form.sbtClient->x(), form.cbData->x() + 408 - 72);
    }

    void theFormComesUpInTheMiddleOfTheScreen()
    {
        TCustomQuoteEditor editor;
        const TfrmAnnuity *form = open(editor);
        const QPoint middle = form->screen()->availableGeometry().center();
        QTRY_VERIFY((form->geometry().center() - middle).manhattanLength() < 40);
    }

    // Showing the form displays the quote's current description again.
    void showingTheFormWritesTheDescriptionBack()
    {
        TCustomQuoteEditor editor;
        int heard = 0;
        QStringList shown;
        TfrmAnnuity *form = open(editor);
        form->hide();
        connect(form->edtDescription, &QLineEdit::textChanged, this, [&](const QString &text) {
            ++heard;
            shown.append(text);
        });
        m_info->Set_Description(u"Of the host"_s);
        QCOMPARE(form->edtDescription->text(), u"Retirement"_s);
        form->show();
        QCOMPARE(heard, 1);
        QCOMPARE(shown, QStringList{u"Of the host"_s});
        QCOMPARE(m_info->Get_Description(), u"Of the host"_s);
    }

    void executeOpensTheForm()
    {
        TCustomQuoteEditor editor;
        m_info->Set_QuoteKey(42);
        m_info->Set_Client(m_master->Client(1));
        TfrmAnnuity *form = open(editor);
        QVERIFY(form->isVisible());
        QVERIFY(!form->parent());
        QCOMPARE(form->Editor(), &editor);
        QCOMPARE(editor.Get_Module(), form->Module());
        QCOMPARE(form->CopiedQuoteField(), 42);
        QCOMPARE(form->setUp, QList<bool>{true});
        QCOMPARE(form->clientsAtSetUp, 3);
        QCOMPARE(form->cbData->itemText(2), u"Cele"_s);
        QCOMPARE(form->cbData->currentIndex(), -1);
        QVERIFY(!form->sbtClient->isEnabled());
        QCOMPARE(form->changes, 0);
        QCOMPARE(m_info->Get_Client(), m_master->Client(1));
        QCOMPARE(form->edtDescription->text(), u"Retirement"_s);
        QCOMPARE(m_info->Get_Description(), u"Retirement"_s);
        QCOMPARE(StandardModuleManager().ActiveModule(), form->Module());
        qint32 image = 5;
        QCOMPARE(form->Module()->get_ImageIndex(image), S_OK);
        QCOMPARE(image, 0);
        QVERIFY(TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, false));
        QCOMPARE(TfrmAnnuity::made, 1);
        QCOMPARE(form->setUp.size(), 1);
        form->LoadClients();
        QCOMPARE(form->changes, 0);
        QCOMPARE(m_info->Get_Client(), m_master->Client(1));
    }

    void aQuoteWithoutInformation()
    {
        TCustomQuoteEditor editor;
        QVERIFY(TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, true));
        TfrmAnnuity *form = TfrmAnnuity::last;
        QCOMPARE(form->CopiedQuoteField(), 0);
        QCOMPARE(form->edtDescription->text(), QString());
        form->cbData->setCurrentIndex(1);
        QCOMPARE(form->SelectedClient(), m_master->Client(1));
        form->edtDescription->setText(u"goes nowhere"_s);
        QCOMPARE(form->changes, 1);
        // Quote information that is set later gets the choices made from then on.
        editor.Set_QuoteInfo(m_info.get());
        form->RefreshClient(true);
        QCOMPARE(m_info->Get_Client(), m_master->Client(1));
        QCOMPARE(m_info->Get_Description(), u"Retirement"_s);
    }

    void withoutTheFlagNothingIsCopied()
    {
        TCustomQuoteEditor editor;
        m_info->Set_QuoteKey(42);
        editor.Set_QuoteInfo(m_info.get());
        QVERIFY(TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, false));
        QCOMPARE(TfrmAnnuity::last->CopiedQuoteField(), 0);
        QCOMPARE(TfrmAnnuity::last->setUp, QList<bool>{false});
    }

    void aFailedExecuteTakesTheFormBack()
    {
        TCustomQuoteEditor editor;
        QVERIFY_THROWS_EXCEPTION(Exception, TfrmBaseProductEditor::Execute<TfrmAnnuity>(nullptr, true));
        QVERIFY_THROWS_EXCEPTION(EAbstractError,
                                 TfrmBaseProductEditor::Execute<TfrmBaseProductEditor>(&editor, true));
        QVERIFY(!editor.Get_Module());
        TfrmAnnuity::raises = true;
        QVERIFY_THROWS_EXCEPTION(Exception, TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, true));
        QVERIFY(!TfrmAnnuity::last);
        TfrmAnnuity::raises = false;
        TRefusingManager refusing;
        SetModuleManager(&refusing);
        QVERIFY_THROWS_EXCEPTION(ESafecallError, TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, true));
        QVERIFY(!TfrmAnnuity::last);
        SetModuleManager(nullptr);
        QVERIFY(open(editor)->isVisible());
    }

    void choosingAClientPassesItOn()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        form->cbData->setFocus();
        QTest::keyClick(form->cbData, Qt::Key_Down);
        QCOMPARE(form->cbData->currentIndex(), 0);
        QVERIFY(form->sbtClient->isEnabled());
        QCOMPARE(m_info->Get_Client(), m_master->Client(0));
        QCOMPARE(form->changes, 1);
        QTest::keyClicks(form->cbData, u"C"_s);
        QCOMPARE(form->cbData->currentText(), u"Cele"_s);
        QCOMPARE(form->selected, m_master->Client(2));
        QCOMPARE(form->changes, 2);
        form->RefreshClient(false);
        QCOMPARE(form->changes, 2);
        form->RefreshClient(true);
        QCOMPARE(form->changes, 3);
        form->cbData->setCurrentIndex(-1);
        QCOMPARE(form->changes, 4);
        QVERIFY(!m_info->Get_Client());
        QVERIFY(!form->sbtClient->isEnabled());
        form->RefreshClient(false);
        QCOMPARE(form->changes, 5);
    }

    void refillingKeepsTheClientByObject()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        TBaseClient *botha = m_master->Client(1);
        form->cbData->setCurrentIndex(1);
        botha->Set_Surname(u"Adams"_s);
        const int before = form->changes;
        form->LoadClients();
        QCOMPARE(form->cbData->currentIndex(), 1);
        QCOMPARE(form->cbData->itemText(0), u"Adams"_s);
        QCOMPARE(form->cbData->itemText(1), u"Adams"_s);
        QCOMPARE(form->SelectedClient(), botha);
        QCOMPARE(form->changes, before + 1);
        m_master->Delete(m_master->Client(0));
        QCOMPARE(form->cbData->count(), 2);
        QCOMPARE(form->cbData->currentIndex(), 0);
        QCOMPARE(m_info->Get_Client(), botha);
        m_master->Add(std::make_unique<TBaseClient>(u"Dube"_s));
        QCOMPARE(form->cbData->count(), 3);
        QCOMPARE(form->SelectedClient(), botha);
    }

    // The list stays unchanged and keeps reporting choices.
    void aClientWhoseTextFails()
    {
        ReportCatcher report;
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        auto *dube = static_cast<TClientWithoutText *>(m_master->Add(std::make_unique<TClientWithoutText>()));
        form->cbData->setCurrentIndex(1);
        dube->fails = true;
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, form->LoadClients());
        QCOMPARE(form->cbData->count(), 4);
        QCOMPARE(form->SelectedClient(), m_master->Client(1));
        m_master->Add(std::make_unique<TBaseClient>(u"Ebrahim"_s));
        QCOMPARE(report.messages, QStringList{u"No name."_s});
        form->cbData->setCurrentIndex(2);
        QCOMPARE(m_info->Get_Client(), m_master->Client(2));
        QVERIFY(form->sbtClient->isEnabled());
        dube->fails = false;
        form->LoadClients();
        QCOMPARE(form->cbData->count(), 5);
        QCOMPARE(form->SelectedClient(), m_master->Client(2));
        QCOMPARE(m_info->Get_Client(), m_master->Client(2));
    }

    void aDeletedClientLeavesNoTrace_data()
    {
        QTest::addColumn<bool>("bulk");
        QTest::newRow("at once") << false;
        QTest::newRow("within an update") << true;
    }

    void aDeletedClientLeavesNoTrace()
    {
        QFETCH(bool, bulk);
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        form->cbData->setCurrentIndex(1);
        const int before = form->changes;
        if (bulk)
            m_master->BeginUpdate();
        m_master->Delete(m_master->Client(1));
        if (bulk) {
            QVERIFY(!form->SelectedClient());
            QVERIFY(!m_info->Get_Client());
            m_master->EndUpdate();
        }
        QCOMPARE(form->cbData->currentIndex(), -1);
        QCOMPARE(form->cbData->count(), 2);
        QVERIFY(!form->sbtClient->isEnabled());
        QVERIFY(!m_info->Get_Client());
        QVERIFY(!form->SelectedClient());
        QVERIFY(!form->selected);
        QCOMPARE(form->changes, before + 1);
        form->cbData->setCurrentIndex(0);
        m_master.reset();
        QCOMPARE(form->cbData->count(), 0);
        QVERIFY(!form->sbtClient->isEnabled());
        QVERIFY(!m_info->Get_Client());
    }

    // However the list loses its last client, the form reports the change once.
    void anEmptiedListIsToldOnce_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : {"deleted", "list destroyed", "editor destroyed", "refilled empty"})
            QTest::newRow(how) << QString::fromLatin1(how);
    }

    void anEmptiedListIsToldOnce()
    {
        QFETCH(QString, how);
        while (m_master->Count() > 1)
            m_master->Delete(m_master->Client(1));
        auto editor = std::make_unique<TCustomQuoteEditor>();
        TfrmAnnuity *form = open(*editor);
        form->cbData->setCurrentIndex(0);
        QVERIFY(form->selected);
        const int before = form->changes;
        if (how == "deleted"_L1)
            m_master->Delete(m_master->Client(0));
        else if (how == "list destroyed"_L1)
            m_master.reset();
        else if (how == "editor destroyed"_L1) {
            form->refusesToClose = true;
            QVERIFY_THROWS_EXCEPTION(ESafecallError, editor.release()->Destroy());
            form->refusesToClose = false;
        } else {
            // The selected client is deleted without a signal to the form.
            editor->Get_Clients()->blockSignals(true);
            m_master->Delete(m_master->Client(0));
            editor->Get_Clients()->blockSignals(false);
            form->LoadClients();
        }
        QCOMPARE(form->cbData->count(), 0);
        QVERIFY(!form->selected);
        QVERIFY(!form->sbtClient->isEnabled());
        QCOMPARE(form->changes, before + 1);
    }

    void theButtonOpensTheClientsDetails()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        form->cbData->setCurrentIndex(1);
        QVERIFY(inDialog<TfrmEditClient>([&] { QTest::mouseClick(form->sbtClient, Qt::LeftButton); },
                                         [](TfrmEditClient &dialog) {
                                             dialog.edSurname->selectAll();
                                             QTest::keyClicks(dialog.edSurname, u"Zondo"_s);
                                             QTest::keyClick(dialog.edSurname, Qt::Key_Return);
                                         }));
        QCOMPARE(form->cbData->currentText(), u"Zondo"_s);
        QCOMPARE(form->SelectedClient(), m_master->Client(1));
        // The host destroys the form while its dialog is open.
        QTimer::singleShot(0, this, [&] { delete form; });
        form->sbtClientClick();
        QVERIFY(!TfrmAnnuity::last);
    }

    void theKeysOfTheBand()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        QVERIFY(QTest::qWaitForWindowActive(form));
        form->edtDescription->setFocus();
        int dialogs = 0;
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&] {
            if (auto *dialog = qobject_cast<TfrmEditClient *>(QApplication::activeModalWidget())) {
                ++dialogs;
                QTest::keyClick(dialog, Qt::Key_Escape);
            }
        });
        watch.start(10);
        const auto press = [&] {
            QTest::keyClick(form->edtDescription, Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
        };
        press();
        QCOMPARE(dialogs, 0); // no client is chosen
        form->cbData->setCurrentIndex(2);
        press();
        QCOMPARE(dialogs, 1); // the dialog opened at once for the selected client
        QCOMPARE(m_master->Client(2)->Get_Surname(), u"Cele"_s);
        QCOMPARE(form->edtDescription->text(), u"Retirement"_s);
    }

    void tenThousandClientsAreListedAtOnce()
    {
        const auto addUpTo = [this](int count) {
            m_master->BeginUpdate();
            while (m_master->Count() < count)
                m_master->Add(std::make_unique<TBaseClient>(QString::number(m_master->Count())));
            m_master->EndUpdate();
        };
        addUpTo(10'000);
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        QCOMPARE(form->cbData->count(), 10'000);
        form->cbData->setCurrentIndex(9'999);
        form->LoadClients();
        QCOMPARE(form->cbData->count(), 10'000);
        QCOMPARE(form->cbData->currentIndex(), 9'999);
        QCOMPARE(form->SelectedClient(), m_master->Client(9'999));
        addUpTo(40'000);
        QCOMPARE(form->cbData->count(), 40'000);
        QCOMPARE(form->cbData->currentIndex(), 9'999);
        m_master->Delete(m_master->Client(9'999));
        QCOMPARE(form->cbData->count(), 39'999);
        QCOMPARE(form->cbData->currentIndex(), -1);
        QVERIFY(!m_info->Get_Client());
    }

    void theDescriptionFollowsEachKey()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        QSignalSpy described(m_info.get(), &TQuoteInfo::DescriptionChanged);
        form->edtDescription->setFocus();
        form->edtDescription->end(false);
        QTest::keyClicks(form->edtDescription, u" 65"_s);
        QCOMPARE(described.count(), 3);
        QCOMPARE(m_info->Get_Description(), u"Retirement 65"_s);
        form->hide();
        const QString strange = u"two\nlines\t\u00a0and \U0001F600 \x01 end "_s;
        m_info->Set_Description(strange);
        form->show();
        QCOMPARE(form->edtDescription->text(), strange);
        QCOMPARE(m_info->Get_Description(), strange);
        form->hide();
        m_info->Set_Description(QString(100000, QLatin1Char('w')));
        form->show();
        QCOMPARE(form->edtDescription->text().size(), 100000);
        QCOMPARE(m_info->Get_Description().size(), 100000);
        form->edtDescription->end(false);
        QTest::keyClicks(form->edtDescription, u"x"_s);
        QCOMPARE(m_info->Get_Description().size(), 100001);
    }

    void tabWalksTheBand()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        QVERIFY(QTest::qWaitForWindowActive(form));
        // The button is a tab stop only when a client is selected.
        for (const bool chosen : {false, true}) {
            form->cbData->setCurrentIndex(chosen ? 0 : -1);
            QList<QWidget *> stops{form->cbData, form->edtDescription, form->cbData};
            if (chosen)
                stops.insert(1, form->sbtClient);
            QCOMPARE(detourOfTab(stops), QString());
        }
    }

    // The form's header comes before the fields of the product's pages.
    void tabWalksFromTheBandToThePages()
    {
        TCustomQuoteEditor editor;
        editor.Set_QuoteInfo(m_info.get());
        TfrmBaseProductEditor::Execute<TfrmWithPage>(&editor, true);
        auto *form = static_cast<TfrmWithPage *>(TfrmAnnuity::last.data());
        QVERIFY(QTest::qWaitForWindowActive(form));
        QCOMPARE(QApplication::focusWidget(), form->cbData); // the first tab stop of the window
        form->cbData->setCurrentIndex(0);
        QCOMPARE(detourOfTab({form->cbData, form->sbtClient, form->edtDescription, form->first, form->second,
                              form->cbData}),
                 QString());
    }

    void ribbonClicksTakeTheFocusFirst()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        QVERIFY(QTest::qWaitForWindowActive(form));
        form->edtDescription->setFocus();
        QWidget *focusAtClick = nullptr;
        form->UpdateOnClick(u"rbSave"_s,
                            [&](QObject *, qint32) { focusAtClick = QApplication::focusWidget(); });
        QCOMPARE(form->Module()->ItemClicked(u"rbSave"_s, 1), S_OK);
        QCOMPARE(focusAtClick, form->pnlProdEditor);
        form->UpdateOnClick(u"rbSave"_s, [](QObject *, qint32) { throw Exception(u"Disk full."_s); });
        const HResult result = form->Module()->ItemClicked(u"rbSave"_s, 1);
        QVERIFY(result < 0);
        QVERIFY_THROWS_EXCEPTION(ESafecallError, SafecallCheck(result));
    }

    // An error that a field throws when it loses the focus stops neither a ribbon click nor the close button
    // and is not reported.
    void whatMovingTheFocusRaisesDoesNotCount()
    {
        ReportCatcher report;
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        QVERIFY(QTest::qWaitForWindowActive(form));
        int complaints = 0;
        connect(form->edtDescription, &QLineEdit::editingFinished, this, [&complaints] {
            GuardedCall([&complaints] {
                ++complaints;
                throw Exception(u"Not this."_s);
            });
        });
        const auto type = [form] {
            form->edtDescription->setFocus();
            QTest::keyClicks(form->edtDescription, u"x"_s);
        };
        int clicks = 0;
        form->UpdateOnClick(u"rbSave"_s, [&clicks](QObject *, qint32) { ++clicks; });
        type();
        QCOMPARE(form->Module()->ItemClicked(u"rbSave"_s, 1), S_OK);
        QCOMPARE(complaints, 1);
        QCOMPARE(clicks, 1);
        QCOMPARE(report.messages, QStringList());
        type();
        QTest::keyClick(form->edtDescription, Qt::Key_Tab); // leaving the field with Tab reports the error
        QCOMPARE(report.messages, QStringList{u"Not this."_s});
        type();
        form->fraToolBarsbtCloseClick();
        QCOMPARE(complaints, 3);
        QVERIFY(form->IsDisposed());
        QCOMPARE(report.messages.size(), 1);
    }

    void hidingIsPreferredWithAPrepopulationSource()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        WordBool prefer = 1;
        QCOMPARE(form->Module()->PreferHideOverClose(prefer), S_OK);
        QCOMPARE(prefer, WordFalse);
        editor.Set_PrepPop(std::make_shared<TQuotePrePop>());
        QCOMPARE(form->Module()->PreferHideOverClose(prefer), S_OK);
        QCOMPARE(prefer, WordBool(-1));
        form->close();
        QVERIFY(!form->isVisible());
        QVERIFY(!form->IsDisposed());
        QVERIFY(TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, true));
        QCOMPARE(TfrmAnnuity::made, 1);
        QCOMPARE(editor.Get_Module()->ShowModule(), S_OK);
        QVERIFY(form->isVisible());
        editor.Set_PrepPop(nullptr);
        form->close();
        QVERIFY(form->IsDisposed());
    }

    void theToolBarsCloseButtonClosesTheForm()
    {
        TCustomQuoteEditor editor;
        TfrmAnnuity *form = open(editor);
        auto *bar = new TfraToolBar(form->pnlProdEditor);
        form->pnlProdEditor->layout()->addWidget(bar);
        connect(bar->sbtClose, &QToolButton::clicked, form, &TfrmBaseProductEditor::fraToolBarsbtCloseClick);
        QVERIFY(QTest::qWaitForWindowActive(form));
        form->edtDescription->setFocus();
        QTest::mouseClick(bar->sbtClose, Qt::LeftButton);
        QVERIFY(!form->isVisible());
        QCOMPARE(form->focusWidget(), form->pnlClient);
        QVERIFY(form->IsDisposed());
    }

    void aFormClosedWhileItsEditorLives()
    {
        TCustomQuoteEditor editor;
        const QPointer<TfrmAnnuity> form = open(editor);
        QSignalSpy disposed(&editor, &TLegacyEditor::QuoteDisposed);
        bool formFirst = false;
        connect(&editor, &TLegacyEditor::QuoteDisposed, form,
                [&formFirst, form] { formFirst = form->IsDisposed(); });
        form->close();
        QCOMPARE(disposed.count(), 1);
        QVERIFY(formFirst); // the form is disposed before the host is notified
        QVERIFY(!editor.Get_Module());
        QVERIFY(!form->Editor());
        QCOMPARE(form->Dispose(), S_OK);
        QCOMPARE(disposed.count(), 1);
        TfrmAnnuity *second = open(editor);
        QCOMPARE(TfrmAnnuity::made, 2);
        letGo();
        QVERIFY(!form);
        QVERIFY(second->isVisible());
        delete second;
        QVERIFY(!editor.Get_Module());
        open(editor);
        QCOMPARE(TfrmAnnuity::made, 3);
    }

    void anEditorDestroyedWhileItsFormIsOpen()
    {
        auto *editor = new TCustomQuoteEditor;
        TfrmAnnuity *form = open(*editor);
        form->cbData->setCurrentIndex(0);
        QSignalSpy disposed(editor, &TLegacyEditor::QuoteDisposed);
        editor->Destroy();
        QCOMPARE(disposed.count(), 0);
        QVERIFY(form->IsDisposed());
        QVERIFY(!form->Editor());
        QCOMPARE(TfrmAnnuity::closings, 1);
        form->edtDescription->setText(u"late"_s);
        QCOMPARE(m_info->Get_Description(), u"Retirement"_s);
        (new TCustomQuoteEditor)->Destroy();
        QCOMPARE(TfrmAnnuity::closings, 1);
    }

    void anEditorDestroyedByItsHostWhileDisposing()
    {
        QPointer<TCustomQuoteEditor> editor = new TCustomQuoteEditor;
        TfrmAnnuity *form = open(*editor);
        connect(editor, &TLegacyEditor::QuoteDisposed, this, [&] { delete editor.data(); });
        form->close();
        QVERIFY(!editor);
        QCOMPARE(TfrmAnnuity::closings, 0);
    }

    void aFormThatRefusesToClose()
    {
        auto *editor = new TCustomQuoteEditor;
        TfrmAnnuity *form = open(*editor);
        form->cbData->setCurrentIndex(1);
        form->refusesToClose = true;
        const QPointer<TCustomQuoteEditor> alive = editor;
        QVERIFY_THROWS_EXCEPTION(ESafecallError, editor->Destroy());
        QVERIFY(!alive);
        QCOMPARE(TfrmAnnuity::closings, 1); // the form asked once only
        QVERIFY(!form->Editor());
        QVERIFY(form->isVisible());
        QCOMPARE(form->cbData->count(), 0);
        QVERIFY(!form->sbtClient->isEnabled());
        form->close();
        letGo();

        editor = new TCustomQuoteEditor;
        open(*editor)->refusesToClose = true;
        QStringList reported;
        SetExceptionReport([&](const QString &message) { reported << message; });
        delete editor;
        QCOMPARE(reported, QStringList{u"Still printing."_s});
        TfrmAnnuity::last->refusesToClose = false;
    }

    void lifeCyclesInEveryOrder()
    {
        // c close, d dispose, e destroy the editor, f destroy the form, h hide: all 120 orders, with the
        // event loop between the steps and without.
        QString steps = u"cdefh"_s;
        int lives = 0;
        do {
            live(steps, true);
            live(steps, false);
            lives += 2;
        } while (std::next_permutation(steps.begin(), steps.end()));
        QCOMPARE(lives, 240);
    }

    void lifeCyclesWithTheHostsOwn()
    {
        // Also m (destroy the clients) and q (destroy the quote information); every 17th of the 5,040 orders.
        QString steps = u"cdefhmq"_s;
        int order = 0;
        do {
            if (order++ % 17 == 0)
                live(steps, order % 2 == 0);
        } while (std::next_permutation(steps.begin(), steps.end()));
    }

private:
    TfrmAnnuity *open(TCustomQuoteEditor &editor)
    {
        editor.Set_QuoteInfo(m_info.get());
        TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, true);
        return TfrmAnnuity::last;
    }

    void live(const QString &steps, bool loop)
    {
        auto master = std::make_unique<TBaseClients>();
        TBaseClient *client = master->Add(std::make_unique<TBaseClient>(u"Adams"_s));
        ZelSystem().Items().SetItem(u"MASTERCLIENTS"_s, master.get());
        auto info = std::make_unique<TQuoteInfo>();
        auto editor = std::make_unique<TCustomQuoteEditor>();
        editor->Set_QuoteInfo(info.get());
        TfrmBaseProductEditor::Execute<TfrmAnnuity>(editor.get(), true);
        const QPointer<TfrmAnnuity> form = TfrmAnnuity::last;
        const IZelModulePtr module = form->Module();
        form->cbData->setCurrentIndex(0);
        QCOMPARE(info->Get_Client(), client);
        for (const QChar step : steps) {
            switch (step.unicode()) {
            case 'h':
                if (form)
                    form->hide();
                break;
            case 'c':
                if (form)
                    form->close();
                break;
            case 'd':
                QCOMPARE(module->Dispose(), S_OK);
                break;
            case 'f':
                delete form.data();
                break;
            case 'e':
                editor.reset();
                break;
            case 'm':
                master.reset();
                break;
            default:
                info.reset();
            }
            if (form)
                form->edtDescription->setText(form->edtDescription->text() + step);
            if (loop)
                letGo();
        }
        letGo();
        QVERIFY(!form);
    }

    std::unique_ptr<TBaseClients> m_master;
    std::unique_ptr<TQuoteInfo> m_info;
};

ZEL_TEST_MAIN(TestProductEditor)
#include "tst_producteditor.moc"
