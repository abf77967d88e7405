// The language changes while frames and forms are up.
#include "ZelTest.h"

#include "editor/frm_BaseProductEditor.h"
#include "frames/fra_ElmtLabelEdit.h"
#include "frames/fra_ElmtLabelInteger.h"
#include "frames/fra_InvestorName.h"
#include "frames/fra_PageHeader.h"
#include "frames/fra_ToolBar.h"
#include "funds/fra_FundAllocation.h"
#include "host/Clienteditfrm.h"
#include "package/Classes.h"

#include <QDialogButtonBox>
#include <QMetaProperty>
#include <QPushButton>
#include <QSignalSpy>
#include <QTranslator>

#include <memory>

namespace
{
/// A language in which every text is the English one in brackets.
class TBrackets : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        // The toolkit's own texts (the buttons of message boxes) have no translation here.
        return context[0] == 'T' || QByteArray(context).startsWith("Zel")
                   ? QLatin1Char('[') + QString::fromUtf8(text) + QLatin1Char(']')
                   : QString();
    }
};

/// Speaks the language for as long as it lives.
class Spoken
{
public:
    Spoken() { QCoreApplication::installTranslator(&m_language); }
    ~Spoken() { QCoreApplication::removeTranslator(&m_language); }

private:
    TBrackets m_language;
};

/// The texts that a user reads on @p widget and all that it holds, what users enter themselves aside.
QMap<QString, QString> textsOf(QWidget *widget)
{
    QMap<QString, QString> texts;
    QList<QWidget *> widgets = widget->findChildren<QWidget *>();
    widgets.prepend(widget);
    for (const QWidget *part : widgets) {
        for (const char *name :
             {"text", "caption", "toolTip", "placeholderText", "windowTitle", "accessibleName"}) {
            const int index = part->metaObject()->indexOfProperty(name);
            const QString text = part->property(name).toString();
            if (index >= 0 && !part->metaObject()->property(index).isUser() && !text.isEmpty())
                texts.insert(part->objectName() + QLatin1Char('.') + QLatin1String(name), text);
        }
    }
    return texts;
}

QString bracketed(const QString &text)
{
    return QLatin1Char('[') + text + QLatin1Char(']');
}

class TfrmAnnuity : public TfrmBaseProductEditor
{
public:
    void SetUpProduct(bool) override { setWindowTitle(QStringLiteral("Annuity")); }
};
} // namespace

class tst_retranslation : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyFrame_data()
    {
        QTest::addColumn<QString>("name");
        for (const TFrameClass &entry : FrameClasses()) {
            // The allocation's captions are sentences around amounts; they have tests of their own. The base
            // frame has no texts.
            if (entry.MetaObject != &TfraFundAllocation::staticMetaObject &&
                entry.MetaObject != &TBaseFrame::staticMetaObject)
                QTest::newRow(entry.ClassName) << QString::fromLatin1(entry.ClassName);
        }
    }

    void everyFrame()
    {
        QFETCH(QString, name);
        const std::unique_ptr<QWidget> frame(FindFrameClass(name)->Create(nullptr));
        const QMap<QString, QString> english = textsOf(frame.get());
        QVERIFY(!english.isEmpty());
        {
            const Spoken language;
            QCoreApplication::processEvents();
            const QMap<QString, QString> now = textsOf(frame.get());
            QCOMPARE(now.keys(), english.keys());
            for (auto text = english.begin(); text != english.end(); ++text) {
                const bool sign = text.value() == QStringLiteral("...");
                QCOMPARE(now.value(text.key()), sign ? text.value() : bracketed(text.value()));
            }
            // One made meanwhile speaks it from the start.
            const std::unique_ptr<QWidget> later(FindFrameClass(name)->Create(nullptr));
            QCOMPARE(textsOf(later.get()), now);
        }
        QCoreApplication::processEvents();
        QCOMPARE(textsOf(frame.get()), english);
    }

    void whatThePageHasSetStays()
    {
        TfraElmtLabelEdit element;
        element.Value->Set_Caption(QStringLiteral("Premium"));
        element.Value->Set_Value(QStringLiteral("100"));
        TfraPageHeader header;
        header.pnlPageHeader->setCaption(QStringLiteral("Contract"));
        TfraToolBar bar;
        bar.sbtSave->setText(QStringLiteral("Keep"));
        TfraInvestorDetails investor;
        investor.fraInvestorName->Value->Set_Caption(QStringLiteral("Annuitant"));
        TfraInvestorDetails plain;
        for (int times = 0; times < 2; ++times) {
            const Spoken language;
            QCoreApplication::processEvents();
            QCOMPARE(element.lblCaption->text(), QStringLiteral("Premium"));
            QCOMPARE(element.edValue->text(), QStringLiteral("100"));
            QCOMPARE(header.pnlPageHeader->caption(), QStringLiteral("Contract"));
            QCOMPARE(bar.sbtSave->text(), QStringLiteral("Keep"));
            QCOMPARE(bar.sbtSave->toolTip(), QStringLiteral("[save the quotation]"));
            QCOMPARE(bar.sbtClient->text(), QStringLiteral("[Client]"));
            QCOMPARE(investor.fraInvestorName->lblCaption->text(), QStringLiteral("Annuitant"));
            QCOMPARE(plain.fraInvestorName->lblCaption->text(), QStringLiteral("[Investor]"));
        }
    }

    void aProblemIsExplainedInTheNewLanguage()
    {
        TfraElmtLabelInteger element;
        element.nfValue->setText(QStringLiteral("99999"));
        element.nfValue->setCursorPosition(2);
        const QString english = element.nfValue->ErrorText();
        QVERIFY(!english.isEmpty());
        const Spoken language;
        QCoreApplication::processEvents();
        QVERIFY2(element.nfValue->ErrorText().startsWith(QLatin1Char('[')),
                 qPrintable(element.nfValue->ErrorText()));
        QCOMPARE(element.nfValue->text(), QStringLiteral("99999"));
        QCOMPARE(element.nfValue->cursorPosition(), 2); // what users enter is not written anew
    }

    void aQuoteBeingEditedIsLeftAlone()
    {
        TBaseClients master;
        master.Add(std::make_unique<TBaseClient>(QStringLiteral("Adams")));
        ZelSystem().Items().SetItem(QStringLiteral("MASTERCLIENTS"), &master);
        TQuoteInfo info;
        info.Set_Description(QStringLiteral("Retirement"));
        TCustomQuoteEditor editor;
        editor.Set_QuoteInfo(&info);
        TfrmBaseProductEditor::Execute<TfrmAnnuity>(&editor, false);
        QWidget *window = nullptr;
        SafecallCheck(editor.Get_Module()->get_Window(window));
        auto *form = qobject_cast<TfrmBaseProductEditor *>(window);
        QVERIFY(form);
        form->cbData->setCurrentIndex(0);
        QSignalSpy described(&info, &TQuoteInfo::DescriptionChanged);
        QSignalSpy chosen(&info, &TQuoteInfo::ClientChanged);
        {
            const Spoken language;
            QCoreApplication::processEvents();
            QCOMPARE(form->lblCaption->text(), QStringLiteral("[Investor]"));
            QCOMPARE(form->sbtClient->toolTip(), QStringLiteral("[Modify Client's Details]"));
            QCOMPARE(form->windowTitle(), QStringLiteral("Annuity"));
            QVERIFY(form->Label2->width() >= form->Label2->sizeHint().width());
            QVERIFY(form->edtDescription->x() >= form->Label2->geometry().right());
        }
        QCoreApplication::processEvents();
        QCOMPARE(form->edtDescription->text(), QStringLiteral("Retirement"));
        QCOMPARE(form->cbData->currentText(), QStringLiteral("Adams"));
        QCOMPARE(described.count(), 0);
        QCOMPARE(chosen.count(), 0);
        StandardModuleManager().CloseAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ZelSystem().Items().Clear();
    }

    void theClientsDialog()
    {
        TBaseClient client(QStringLiteral("Adams"));
        TfrmEditClient dialog(&client);
        dialog.show();
        dialog.edSurname->clear();
        QTest::mouseClick(dialog.btnBox->button(QDialogButtonBox::Ok), Qt::LeftButton);
        const QString problem = dialog.lblProblem->text();
        QVERIFY(!problem.isEmpty());
        const Spoken language;
        QCoreApplication::processEvents();
        QCOMPARE(dialog.windowTitle(), QStringLiteral("[Client Details]"));
        QCOMPARE(dialog.lblSurname->text(), QStringLiteral("[&Surname]"));
        QCOMPARE(dialog.edIDNumber->placeholderText(), QStringLiteral("[13 digits]"));
        QCOMPARE(dialog.lblProblem->text(), bracketed(problem));
        QCOMPARE(dialog.edSurname->text(), QString());
    }
};

ZEL_TEST_MAIN(tst_retranslation)
#include "tst_retranslation.moc"
