// Changing the language while frames and forms are shown.
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

using namespace Qt::StringLiterals;

namespace
{
/// A translator that puts every English text into brackets.
class TBrackets : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        // Qt's own texts (buttons of message boxes) are not translated here.
        return context[0] == 'T' || QByteArray(context).startsWith("Zel")
                   ? QLatin1Char('[') + QString::fromUtf8(text) + QLatin1Char(']')
                   : QString();
    }
};

/// Installs the translator during its lifetime.
class Spoken
{
public:
    Spoken() { QCoreApplication::installTranslator(&m_language); }
    ~Spoken() { QCoreApplication::removeTranslator(&m_language); }

private:
    TBrackets m_language;
};

/// The texts of @p widget and its children, except those that users enter.
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
    void SetUpProduct(bool) override { setWindowTitle(u"Annuity"_s); }
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
            // The allocation's captions contain amounts and have tests of their own; the base frame has no
            // texts.
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
                const bool sign = text.value() == u"..."_s;
                QCOMPARE(now.value(text.key()), sign ? text.value() : bracketed(text.value()));
            }
            // A frame created now is translated from the start.
            const std::unique_ptr<QWidget> later(FindFrameClass(name)->Create(nullptr));
            QCOMPARE(textsOf(later.get()), now);
        }
        QCoreApplication::processEvents();
        QCOMPARE(textsOf(frame.get()), english);
    }

    void whatThePageHasSetStays()
    {
        TfraElmtLabelEdit element;
        element.Value->Set_Caption(u"Premium"_s);
        element.Value->Set_Value(u"100"_s);
        TfraPageHeader header;
        header.pnlPageHeader->setCaption(u"Contract"_s);
        TfraToolBar bar;
        bar.sbtSave->setText(u"Keep"_s);
        TfraInvestorDetails investor;
        investor.fraInvestorName->Value->Set_Caption(u"Annuitant"_s);
        TfraInvestorDetails plain;
        for (int times = 0; times < 2; ++times) {
            const Spoken language;
            QCoreApplication::processEvents();
            QCOMPARE(element.lblCaption->text(), u"Premium"_s);
            QCOMPARE(element.edValue->text(), u"100"_s);
            QCOMPARE(header.pnlPageHeader->caption(), u"Contract"_s);
            QCOMPARE(bar.sbtSave->text(), u"Keep"_s);
            QCOMPARE(bar.sbtSave->toolTip(), u"[save the quotation]"_s);
            QCOMPARE(bar.sbtClient->text(), u"[Client]"_s);
            QCOMPARE(investor.fraInvestorName->lblCaption->text(), u"Annuitant"_s);
            QCOMPARE(plain.fraInvestorName->lblCaption->text(), u"[Investor]"_s);
        }
    }

    void aProblemIsExplainedInTheNewLanguage()
    {
        TfraElmtLabelInteger element;
        element.nfValue->setText(u"99999"_s);
        element.nfValue->setCursorPosition(2);
        const QString english = element.nfValue->ErrorText();
        QVERIFY(!english.isEmpty());
        const Spoken language;
        QCoreApplication::processEvents();
        QVERIFY2(element.nfValue->ErrorText().startsWith(QLatin1Char('[')),
                 qPrintable(element.nfValue->ErrorText()));
        QCOMPARE(element.nfValue->text(), u"99999"_s);
        QCOMPARE(element.nfValue->cursorPosition(), 2); // the user's entry is not set again
    }

    void aQuoteBeingEditedIsLeftAlone()
    {
        TBaseClients master;
        master.Add(std::make_unique<TBaseClient>(u"Adams"_s));
        ZelSystem().Items().SetItem(u"MASTERCLIENTS"_s, &master);
        TQuoteInfo info;
        info.Set_Description(u"Retirement"_s);
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
            QCOMPARE(form->lblCaption->text(), u"[Investor]"_s);
            QCOMPARE(form->sbtClient->toolTip(), u"[Modify Client's Details]"_s);
            QCOMPARE(form->windowTitle(), u"Annuity"_s);
            QVERIFY(form->Label2->width() >= form->Label2->sizeHint().width());
            QVERIFY(form->edtDescription->x() >= form->Label2->geometry().right());
        }
        QCoreApplication::processEvents();
        QCOMPARE(form->edtDescription->text(), u"Retirement"_s);
        QCOMPARE(form->cbData->currentText(), u"Adams"_s);
        QCOMPARE(described.count(), 0);
        QCOMPARE(chosen.count(), 0);
        StandardModuleManager().CloseAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ZelSystem().Items().Clear();
    }

    void theClientsDialog()
    {
        TBaseClient client(u"Adams"_s);
        TfrmEditClient dialog(&client);
        dialog.show();
        dialog.edSurname->clear();
        QTest::mouseClick(dialog.btnBox->button(QDialogButtonBox::Ok), Qt::LeftButton);
        const QString problem = dialog.lblProblem->text();
        QVERIFY(!problem.isEmpty());
        const Spoken language;
        QCoreApplication::processEvents();
        QCOMPARE(dialog.windowTitle(), u"[Client Details]"_s);
        QCOMPARE(dialog.lblSurname->text(), u"[&Surname]"_s);
        QCOMPARE(dialog.edIDNumber->placeholderText(), u"[13 digits]"_s);
        QCOMPARE(dialog.lblProblem->text(), bracketed(problem));
        QCOMPARE(dialog.edSurname->text(), QString());
    }
};

ZEL_TEST_MAIN(tst_retranslation)
#include "tst_retranslation.moc"
