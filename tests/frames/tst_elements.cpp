// labels: x11
#include "Frames.h"
#include "NumberCases.h"
#include "ZelTest.h"

#include "data/Exceptions.h"
#include "data/Format.h"
#include "frames/fra_ElmtCheckBoxDouble.h"
#include "frames/fra_ElmtLabelComboBox.h"
#include "frames/fra_ElmtLabelDouble.h"
#include "frames/fra_ElmtLabelEdit.h"
#include "frames/fra_ElmtLabelInteger.h"
#include "frames/fra_ElmtLabelMaskedEdit.h"
#include "frames/fra_ElmtLabelPictureField.h"
#include "frames/fra_ElmtRadioButtonDouble.h"
#include "frames/fra_ElmtRadioButtonInteger.h"
#include "frames/fra_ElmtRadioButtonMaskedEdit.h"
#include "frames/fra_ElmtRadioButtonPictureField.h"
#include "frames/fra_Header.h"
#include "frames/fra_InvestorName.h"
#include "frames/fra_PageHeader.h"
#include "frames/fra_ToolBar.h"
#include "toolkit/TColors.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QButtonGroup>
#include <QClipboard>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
struct Element {
    const char *name;
    std::function<TFrame *()> make;
    int width;
    QRect caption;
    QRect value;
    bool captionTakesFocus;
    bool valueFirst;
};

template <class T> Element element(int width, QRect caption, QRect value, bool focus, bool valueFirst)
{
    return {T::staticMetaObject.className(), [] { return new T; }, width, caption, value, focus, valueFirst};
}

const QList<Element> &elements()
{
    static const QRect label(2, 4, 101, 13);
    static const QRect box(112, 0, 121, 21);
    static const QList<Element> all{
        element<TfraElmtLabelEdit>(235, label, box, false, true),
        element<TfraElmtLabelComboBox>(243, label, QRect(112, 0, 129, 21), false, true),
        element<TfraElmtLabelMaskedEdit>(235, label, box, false, true),
        element<TfraElmtLabelInteger>(235, label, box, false, true),
        element<TfraElmtLabelDouble>(235, label, box, false, true),
        element<TfraElmtLabelPictureField>(235, label, box, false, true),
        element<TfraElmtRadioButtonInteger>(251, QRect(2, 3, 121, 15), QRect(128, 0, 121, 21), true, true),
        element<TfraEmltRadioButtonDouble>(251, QRect(2, 3, 121, 15), QRect(128, 0, 121, 21), true, false),
        element<TfraElmtRadioButtonMaskedEdit>(251, QRect(2, 3, 111, 15), QRect(120, 0, 129, 21), true,
                                               false),
        element<TfraElmtRadioButtonPictureField>(258, QRect(2, 3, 119, 15), QRect(128, 0, 129, 21), true,
                                                 false),
        element<TfraElmtCheckBoxDouble>(251, QRect(0, 4, 113, 14), QRect(128, 0, 121, 21), true, true),
    };
    return all;
}

QWidget *captionOf(QWidget *frame)
{
    for (const char *name : {"lblCaption", "rbCaption", "cbCaption"}) {
        if (auto *found = frame->findChild<QWidget *>(QLatin1String(name), Qt::FindDirectChildrenOnly))
            return found;
    }
    return nullptr;
}

QWidget *editorOf(QWidget *frame)
{
    for (const char *name : {"edValue", "cbData", "medValue", "nfValue", "pfValue"}) {
        if (auto *found = frame->findChild<QWidget *>(QLatin1String(name), Qt::FindDirectChildrenOnly))
            return found;
    }
    return nullptr;
}

/// A page with one element between two edits, so that the focus can enter and leave it.
struct Page {
    explicit Page(QWidget *element) : frame(element)
    {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(before = new QLineEdit);
        column->addWidget(frame);
        column->addWidget(after = new QLineEdit);
        window.show();
        window.activateWindow();
    }
    QWidget window;
    QWidget *frame;
    QLineEdit *before;
    QLineEdit *after;
};

/// Opening a list grabs the keyboard, which the offscreen platform does not support.
void announceOpening()
{
    if (QGuiApplication::platformName() == "offscreen"_L1)
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
}

void enter(QLineEdit *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}
} // namespace

class TestElements : public ZelTest
{
    Q_OBJECT
private Q_SLOTS:
    void design_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < elements().size(); ++i)
            QTest::newRow(elements().at(i).name) << i;
    }

    void design()
    {
        QFETCH(int, index);
        const Element &expected = elements().at(index);
        const std::unique_ptr<TFrame> frame(expected.make());
        QCOMPARE(frame->metaObject()->superClass(), &TFrame::staticMetaObject);
        QCOMPARE(frame->size(), QSize(expected.width, 21));
        QCOMPARE(frame->font().pixelSize(), 11);
        QCOMPARE(frame->font().family(), u"Tahoma"_s);
        frame->show();
        QCOMPARE(captionOf(frame.get())->property("text").toString(), u"<< Caption Here >>"_s);
        // The caption may be wider than designed, depending on the font; it still ends before the editor.
        QCOMPARE(captionOf(frame.get())->geometry().topLeft(), expected.caption.topLeft());
        QCOMPARE(captionOf(frame.get())->height(), expected.caption.height());
        QVERIFY(captionOf(frame.get())->width() >= expected.caption.width());
        QCOMPARE(editorOf(frame.get())->size(), expected.value.size());
        QVERIFY(editorOf(frame.get())->x() >= expected.value.x());
        QVERIFY(editorOf(frame.get())->x() <= expected.value.x() + 12);
        QCOMPARE(editorOf(frame.get())->y(), 0);
        // The components are created in the order of their declaration.
        const bool valueFirst =
            QList<QByteArray>{"TfraElmtLabelInteger", "TfraElmtRadioButtonInteger", "TfraElmtCheckBoxDouble"}
                .contains(expected.name);
        const QObjectList made = frame->children();
        QCOMPARE(made.indexOf(editorOf(frame.get())) < made.indexOf(captionOf(frame.get())), valueFirst);
    }

    void tabWalks_data() { design_data(); }

    void tabWalks()
    {
        QFETCH(int, index);
        const Element &expected = elements().at(index);
        Page page(expected.make());
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QList<QWidget *> stops{page.before};
        QWidget *caption = captionOf(page.frame);
        QWidget *editor = editorOf(page.frame);
        if (expected.captionTakesFocus)
            stops << (expected.valueFirst ? editor : caption) << (expected.valueFirst ? caption : editor);
        else
            stops << editor;
        stops << page.after;
        QCOMPARE(detourOfTab(stops), QString());
    }

    void longCaptionsGetRoom_data() { design_data(); }

    void longCaptionsGetRoom()
    {
        QFETCH(int, index);
        const std::unique_ptr<TFrame> frame(elements().at(index).make());
        frame->show();
        // A window manager may set the first size once more when it takes the window over.
        QVERIFY(QTest::qWaitForWindowExposed(frame.get()));
        QTest::qWait(50);
        QWidget *caption = captionOf(frame.get());
        const int minimum = frame->minimumWidth();
        caption->setProperty("text", u"A caption in a language with rather long words"_s);
        QTRY_VERIFY(caption->width() >= caption->sizeHint().width());
        QVERIFY(editorOf(frame.get())->x() >= caption->geometry().right());
        QTRY_VERIFY(frame->width() >= editorOf(frame.get())->geometry().right());
        caption->setProperty("text", u"Short"_s);
        QTRY_COMPARE(editorOf(frame.get())->geometry(), elements().at(index).value);
        QVERIFY(frame->minimumWidth() <= minimum);
        // A caption set through the element is laid out immediately.
        frame->findChild<Zel::ElementValue *>()->Set_Caption(
            u"A caption in a language with rather long words"_s);
        QVERIFY(caption->width() >= caption->sizeHint().width());
        QVERIFY(editorOf(frame.get())->x() >= caption->geometry().right());
    }

    void editedAndCommittedAreToldApart()
    {
        auto *frame = new TfraElmtLabelEdit;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QSignalSpy edited(frame->Value, &Zel::ElementValue::Edited);
        QSignalSpy committed(frame->Value, &Zel::ElementValue::Committed);
        frame->edValue->setText(u"written"_s);
        QVERIFY(!frame->Value->IsEdited());
        frame->Value->Set_Value(u"told"_s);
        QCOMPARE(frame->Value->Get_Value().toString(), u"told"_s);
        QVERIFY(!frame->Value->IsEdited());
        frame->edValue->setFocus();
        QTest::keyClicks(frame->edValue, u"ab"_s);
        QCOMPARE(edited.count(), 2);
        QCOMPARE(committed.count(), 0);
        QVERIFY(frame->Value->IsEdited());
        QTest::keyClick(frame->edValue, Qt::Key_Return);
        QCOMPARE(committed.count(), 1);
        QTest::keyClick(frame->edValue, Qt::Key_Tab);
        QCOMPARE(committed.count(), 1);
        frame->edValue->setFocus();
        QTest::keyClicks(frame->edValue, u"c"_s);
        QTest::keyClick(frame->edValue, Qt::Key_Tab);
        QCOMPARE(committed.count(), 2);
        QVERIFY(frame->Value->IsEdited());
        frame->Value->Set_Value(QString());
        QVERIFY(!frame->Value->IsEdited());
        // A value set by the page during an edit leaves nothing to commit.
        frame->edValue->setFocus();
        QTest::keyClicks(frame->edValue, u"d"_s);
        frame->Value->Set_Value(u"told"_s);
        QTest::keyClick(frame->edValue, Qt::Key_Tab);
        QCOMPARE(committed.count(), 2);
        frame->Value->Set_Caption(u"Name"_s);
        QCOMPARE(frame->lblCaption->text(), u"Name"_s);
        QCOMPARE(frame->Value->Get_Caption(), u"Name"_s);
    }

    void everyElementKnowsItsValue_data() { design_data(); }

    void everyElementKnowsItsValue()
    {
        QFETCH(int, index);
        Page page(elements().at(index).make());
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QWidget *editor = editorOf(page.frame);
        auto *value = page.frame->findChild<Zel::ElementValue *>();
        QVERIFY(value);
        value->Set_Caption(u"Premium"_s);
        QCOMPARE(captionOf(page.frame)->property("text").toString(), u"Premium"_s);
        auto *list = qobject_cast<TComboBox *>(editor);
        if (list) {
            list->Items().Add(u"7"_s);
            list->Items().Add(u"12"_s);
        }
        value->Set_Value(u"7"_s);
        QCOMPARE(value->Get_Value().toInt(), 7);
        QVERIFY(!value->IsEdited());
        QSignalSpy edited(value, &Zel::ElementValue::Edited);
        QSignalSpy committed(value, &Zel::ElementValue::Committed);
        // Moving the focus through the editor is no edit.
        editor->setFocus();
        QTest::keyClick(editor, Qt::Key_Tab);
        QVERIFY(!value->IsEdited());
        QCOMPARE(edited.count() + committed.count(), 0);
        editor->setFocus();
        if (auto *edit = qobject_cast<QLineEdit *>(editor)) {
            edit->selectAll();
            QTest::keyClicks(edit, u"12"_s);
            QCOMPARE(edited.count(), 2);
            QCOMPARE(committed.count(), 0);
            QTest::keyClick(edit, Qt::Key_Tab);
        } else {
            QTest::keyClick(editor, Qt::Key_Down);
            QCOMPARE(edited.count(), 1);
        }
        QCOMPARE(committed.count(), 1);
        QVERIFY(value->IsEdited());
        QCOMPARE(value->Get_Value().toInt(), 12);
        value->MarkUnedited();
        QVERIFY(!value->IsEdited());
        // A screen reader gets the caption as the editor's name or as its label.
        const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(editor);
        QVERIFY(spoken);
        if (qobject_cast<QLabel *>(captionOf(page.frame)))
            QCOMPARE(spoken->relations(QAccessible::Label).value(0).first,
                     QAccessible::queryAccessibleInterface(captionOf(page.frame)));
        else
            QCOMPARE(spoken->text(QAccessible::Name), u"Premium"_s);
        editor->setEnabled(false);
        value->Set_Value(u"7"_s);
        QCOMPARE(value->Get_Value().toInt(), 7);
    }

    // A screen reader gets the caption before the editor was first focused, and after each change.
    void editorsAreNamedAfterTheirCaptions_data() { design_data(); }

    void editorsAreNamedAfterTheirCaptions()
    {
        QFETCH(int, index);
        const std::unique_ptr<TFrame> frame(elements().at(index).make());
        QWidget *const caption = captionOf(frame.get());
        QWidget *const editor = editorOf(frame.get());
        auto *const value = frame->findChild<Zel::ElementValue *>();
        if (qobject_cast<QLabel *>(caption)) {
            const auto labels = QAccessible::queryAccessibleInterface(editor)->relations(QAccessible::Label);
            QCOMPARE(labels.value(0).first, QAccessible::queryAccessibleInterface(caption));
            return;
        }
        const auto name = [editor] {
            return QAccessible::queryAccessibleInterface(editor)->text(QAccessible::Name);
        };
        QCOMPARE(name(), u"<< Caption Here >>"_s);
        value->Set_Caption(u"Premium"_s);
        QCOMPARE(name(), u"Premium"_s);
        // The mnemonic of the caption is underlined but not part of the accessible name.
        value->Set_Caption(u"&Rent && rates"_s);
        QCOMPARE(name(), u"Rent & rates"_s);
        // The same when the page changes the caption's component directly.
        caption->setProperty("text", u"Cover"_s);
        frame->show();
        QTRY_COMPARE(name(), u"Cover"_s);
        caption->setProperty("text", u"Term"_s);
        QTRY_COMPARE(name(), u"Term"_s);
        // A name that the page has set is kept.
        editor->setAccessibleName(u"Monthly amount"_s);
        value->Set_Caption(u"Amount"_s);
        editor->setFocus();
        QCOMPARE(name(), u"Monthly amount"_s);
    }

    void aListOffersNoFreeTyping()
    {
        auto *frame = new TfraElmtLabelComboBox;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        for (const char *line : {"Monthly", "Quarterly", "Yearly"})
            frame->cbData->Items().Add(QLatin1String(line));
        QVERIFY(!frame->cbData->isEditable());
        QVERIFY(!frame->Value->Get_Value().isValid());
        QSignalSpy committed(frame->Value, &Zel::ElementValue::Committed);
        frame->cbData->setFocus();
        QTest::keyClicks(frame->cbData, u"Q"_s);
        QCOMPARE(frame->Value->Get_Value().toString(), u"Quarterly"_s);
        QVERIFY(frame->Value->IsEdited());
        QCOMPARE(committed.count(), 1);
        frame->Value->Set_Value(u"Yearly"_s);
        QCOMPARE(frame->cbData->ItemIndex(), 2);
        // Opening the list and confirming the chosen line is no edit; choosing another line is one.
        QSignalSpy edited(frame->Value, &Zel::ElementValue::Edited);
        announceOpening();
        QTest::mouseClick(frame->cbData, Qt::LeftButton);
        QTRY_VERIFY(frame->cbData->view()->isVisible());
        QTest::keyClick(frame->cbData->view(), Qt::Key_Return);
        QTRY_VERIFY(!frame->cbData->view()->isVisible());
        QVERIFY(!frame->Value->IsEdited());
        QCOMPARE(edited.count(), 0);
        QCOMPARE(committed.count(), 1);
        announceOpening();
        QTest::keyClick(frame->cbData, Qt::Key_F4);
        QTRY_VERIFY(frame->cbData->view()->isVisible());
        QTest::keyClick(frame->cbData->view(), Qt::Key_Up);
        QTest::keyClick(frame->cbData->view(), Qt::Key_Return);
        QTRY_VERIFY(!frame->cbData->view()->isVisible());
        QCOMPARE(frame->Value->Get_Value().toString(), u"Quarterly"_s);
        QVERIFY(frame->Value->IsEdited());
        QCOMPARE(edited.count(), 1);
        QCOMPARE(committed.count(), 2);
        // Turning the wheel is an edit, even back to a line that was chosen at an earlier key press.
        QTest::keyClick(frame->cbData, Qt::Key_Shift);
        frame->Value->Set_Value(u"Yearly"_s);
        QWheelEvent turn(QPointF(5, 5), frame->cbData->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120), {},
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(frame->cbData, &turn);
        QCOMPARE(frame->Value->Get_Value().toString(), u"Quarterly"_s);
        QVERIFY(frame->Value->IsEdited());
        QCOMPARE(edited.count(), 2);
        QCOMPARE(committed.count(), 3);
        frame->Value->Set_Value(u"Yearly"_s);
        QVERIFY_THROWS_EXCEPTION(EConvertError, frame->Value->Set_Value(u"Never"_s));
        QCOMPARE(frame->cbData->ItemIndex(), 2);
        frame->Value->Set_Value(QVariant());
        QCOMPARE(frame->cbData->ItemIndex(), -1);
    }

    void aMaskedEditTakesThePagesMask()
    {
        auto *frame = new TfraElmtLabelMaskedEdit;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QCOMPARE(frame->medValue->inputMask(), QString());
        frame->medValue->setInputMask(u"0000-00-00"_s);
        QSignalSpy committed(frame->Value, &Zel::ElementValue::Committed);
        frame->medValue->setFocus();
        frame->medValue->home(false);
        QTest::keyClicks(frame->medValue, u"1968x0327"_s);
        QTest::keyClick(frame->medValue, Qt::Key_Tab);
        QCOMPARE(frame->Value->Get_Value().toString(), u"1968-03-27"_s);
        QCOMPARE(committed.count(), 1);
    }

    void aMaskedEditIsToldWhatFitsItsMask()
    {
        TfraElmtRadioButtonMaskedEdit frame;
        frame.Value->Set_Value(u"27/03/1968"_s); // without a mask any text is accepted
        frame.medValue->setInputMask(u"9999-99-99"_s);
        frame.Value->Set_Value(u"1968-03-27"_s);
        QCOMPARE(frame.Value->Get_Value().toString(), u"1968-03-27"_s);
        for (const char *bad : {"27/03/1968", "1968-03-27-1", "19 March", "1968-3-27x"}) {
            QVERIFY_THROWS_EXCEPTION(EConvertError, frame.Value->Set_Value(QLatin1String(bad)));
            QCOMPARE(frame.medValue->text(), u"1968-03-27"_s);
        }
        frame.Value->Set_Value(u"19690428"_s);
        QCOMPARE(frame.medValue->text(), u"1969-04-28"_s);
        frame.Value->Set_Value(u"1970"_s);
        QCOMPARE(frame.medValue->text(), u"1970--"_s);
        frame.Value->Set_Value(QString());
        QCOMPARE(frame.medValue->text(), u"--"_s);
        frame.medValue->setInputMask(u">AA999;_"_s);
        frame.Value->Set_Value(u"ab123"_s);
        QCOMPARE(frame.medValue->text(), u"AB123"_s);
        frame.Value->Set_Value(QVariant());
        QCOMPARE(frame.medValue->text(), QString());
    }

    void numbers_data()
    {
        QTest::addColumn<bool>("whole");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("right");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("shown");
        const auto row = [](bool whole, const char *typed, bool right, double value, const char *shown) {
            QTest::addRow("%s %s", whole ? "integer" : "double", typed)
                << whole << QString::fromLatin1(typed) << right << value << QString::fromLatin1(shown);
        };
        row(true, "32767", true, 32767, "32,767");
        row(true, "-32768", true, -32768, "-32,768");
        row(true, "32768", false, 5, "32768");
        row(true, "-32769", false, 5, "-32769");
        row(true, "12,3", false, 5, "12,3");
        row(true, "1,234", true, 1234, "1,234");
        row(true, "1,2345", false, 5, "1,2345");
        row(true, "", true, 0, "0");
        row(true, "-0", true, 0, "0");
        row(true, "007", true, 7, "7");
        row(true, "-", false, 5, "-");
        row(true, "1.5", false, 5, "1.5");
        row(true, "1.234", false, 5, "1.234");
        row(true, "12 500", true, 12500, "12,500");
        row(true, "12x5", false, 5, "12x5");
        row(true, "1e2", false, 5, "1e2");
        row(true, "99999999999999999999", false, 5, "99999999999999999999");
        row(false, "1234567.5", true, 1234567.5, "1,234,567.50");
        row(false, "-1234.56", true, -1234.56, "-1,234.56");
        row(false, "12,3", true, 12.3, "12.30");
        row(false, "12 500.75", true, 12500.75, "12,500.75");
        row(false, "R 1 234,56", true, 1234.56, "1,234.56");
        row(false, "1,250,000", true, 1250000, "1,250,000.00");
        row(false, "(1 250)", true, -1250, "-1,250.00");
        row(false, "1,250", false, 5, "1,250");
        row(false, "12.345", false, 5, "12.345");
        row(false, "1234.567", false, 5, "1234.567");
        row(false, "1e2", true, 100, "100.00");
        row(false, "1e-3", false, 5, "1e-3");
        row(false, "abc", false, 5, "abc");
        row(false, "1,234.5", true, 1234.5, "1,234.50");
        row(false, "1.234", false, 5, "1.234");
        row(false, "1e309", false, 5, "1e309");
        row(false, "-1e309", false, 5, "-1e309");
        row(false, "1.7e308", true, 1.7e308, "1.7e+308");
        row(false, "1e", false, 5, "1e");
        row(false, "1.2.3", false, 5, "1.2.3");
        row(false, ".5", true, 0.5, "0.50");
        row(false, ".", false, 5, ".");
        row(false, "0.1", true, 0.1, "0.10");
        row(false, "-0.00", true, 0, "0.00");
    }

    void numbers()
    {
        QFETCH(bool, whole);
        QFETCH(QString, typed);
        QFETCH(bool, right);
        QFETCH(double, value);
        QFETCH(QString, shown);
        QWidget *frame = whole ? static_cast<QWidget *>(new TfraElmtLabelInteger) : new TfraElmtLabelDouble;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        auto *field = frame->findChild<TOvcNumericField *>(u"nfValue"_s);
        auto *state = frame->findChild<Zel::ElementValue *>();
        state->Set_Value(5);
        field->setToolTip(u"the page's own"_s);
        QSignalSpy committed(state, &Zel::ElementValue::Committed);
        const QColor plain = field->palette().color(QPalette::Base);
        for (const bool pasted : {false, true}) {
            enter(field, pasted ? QString() : typed);
            if (pasted) {
                QGuiApplication::clipboard()->setText(typed);
                QTest::keySequence(field, QKeySequence::Paste);
            }
            QVERIFY(state->IsEdited());
            QTest::keyClick(field, Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), page.after);
            QCOMPARE(field->text(), shown);
            QCOMPARE(field->HasError(), !right);
            QCOMPARE(committed.count(), right ? 1 : 0);
            QCOMPARE(field->palette().color(QPalette::Base) == plain, right);
            QCOMPARE(field->toolTip(), right ? u"the page's own"_s : field->ErrorText());
            QCOMPARE(field->accessibleDescription(), field->ErrorText());
            QCOMPARE(state->Get_Value().toDouble(), value);
            committed.clear();
        }
    }

    // Types (where keys exist) and pastes each text of the table. The field has the number that the text
    // means, or it keeps the text with an error and its former value.
    void numbersAsPeopleWriteThem()
    {
        auto *frame = new TfraElmtLabelDouble;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        TOvcNumericField *const field = frame->nfValue;
        for (const NumberCase &each : numberCases) {
            const QString text = each.said();
            const bool hasKeys =
                std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u' ' && c <= u'~'; });
            for (const bool pasted : {false, true}) {
                if (!pasted && !hasKeys)
                    continue;
                frame->Value->Set_Value(5);
                enter(field, pasted ? QString() : text);
                if (pasted) {
                    QGuiApplication::clipboard()->setText(text);
                    QTest::keySequence(field, QKeySequence::Paste);
                }
                QTest::keyClick(field, Qt::Key_Tab);
                const double value = frame->Value->Get_Value().toDouble();
                if (each.problem == NumberCase::Problem::Blank ||
                    each.problem == NumberCase::Problem::SeveralLines) {
                    QCOMPARE(value, 0.0); // the entry is empty or was not accepted at all
                } else if (text == u"1e5"_s) {
                    QCOMPARE(value, 1e5); // this field accepts exponents
                } else if (each.problem == NumberCase::Problem::TooLarge ||
                           each.problem == NumberCase::Problem::TooSmall) {
                    QVERIFY2(std::abs(value) > 1e14 || field->HasError(),
                             each.text); // and larger numbers
                } else if (each.isNumber() && each.decimals <= 2) {
                    QVERIFY2(value == each.number().toDouble(), each.text);
                    QVERIFY2(!field->HasError(), each.text);
                } else {
                    QVERIFY2(value == 5.0, each.text);
                    QVERIFY2(field->HasError(), each.text);
                    QCOMPARE(field->text(), text);
                }
            }
        }
    }

    // The error text repeats the entry; in the tooltip it must be escaped.
    void anEntryIsNoMarkup()
    {
        TfraElmtLabelDouble real;
        const QString hostile = u"<img src='x'>"_s;
        real.nfValue->setText(hostile);
        QVERIFY(real.nfValue->ErrorText().contains(hostile));
        QVERIFY(!real.nfValue->toolTip().contains(hostile));
        QVERIFY(real.nfValue->toolTip().contains(hostile.toHtmlEscaped()));
    }

    // A half is rounded away from zero, based on the decimal digits, as everywhere in the program.
    void decimalsAreRoundedAsEverywhere()
    {
        TfraElmtLabelDouble real;
        const QPair<double, const char *> values[] = {
            {1.005, "1.01"}, {-1.005, "-1.01"}, {2.675, "2.68"},        {1.004999, "1.00"},
            {0.005, "0.01"}, {-0.004, "0.00"},  {1234.565, "1,234.57"}, {999.995, "1,000.00"}};
        for (const auto &[value, shown] : values) {
            real.Value->Set_Value(value);
            QCOMPARE(real.nfValue->text(), QLatin1String(shown));
            QCOMPARE(real.nfValue->text(), FormatFloat(FormatMask::Thousands, value));
            QCOMPARE(real.Value->Get_Value().toDouble(), value);
        }
        real.nfValue->setPictureMask(u"###,###.###"_s);
        real.Value->Set_Value(1.0005);
        QCOMPARE(real.nfValue->text(), u"1.001"_s);
        QVERIFY(!real.nfValue->HasError());
        real.nfValue->setPictureMask(u"###,###"_s);
        real.Value->Set_Value(1234.5);
        QCOMPARE(real.nfValue->text(), u"1,235"_s);
        QVERIFY(!real.nfValue->HasError());
    }

    void theFieldsShareOneColourScheme_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void theFieldsShareOneColourScheme()
    {
        QFETCH(bool, dark);
        QPalette host = QApplication::palette();
        host.setColor(QPalette::Window, dark ? QColor(45, 45, 48) : QColor(239, 239, 239));
        host.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
        host.setColor(QPalette::Base, dark ? QColor(30, 30, 30) : QColor(Qt::white));
        host.setColor(QPalette::Text, dark ? Qt::white : Qt::black);
        host.setColor(QPalette::Button, host.color(QPalette::Window));
        host.setColor(QPalette::Disabled, QPalette::Text, QColor(127, 128, 129));
        QWidget page;
        page.setPalette(host);
        const QList<TFrame *> frames{new TfraElmtLabelInteger(&page), new TfraEmltRadioButtonDouble(&page),
                                     new TfraElmtCheckBoxDouble(&page), new TfraElmtLabelPictureField(&page)};
        page.show();
        for (TFrame *frame : frames) {
            auto *field = frame->findChild<TOvcBaseField *>();
            const QPalette plain = field->palette();
            QCOMPARE(plain.color(QPalette::Disabled, QPalette::Base), host.color(QPalette::Button));
            QCOMPARE(plain.color(QPalette::Disabled, QPalette::Text),
                     host.color(QPalette::Disabled, QPalette::Text));
            QCOMPARE(plain.color(QPalette::Active, QPalette::Highlight),
                     host.color(QPalette::Active, QPalette::Highlight));
            QCOMPARE(plain.color(QPalette::Base), host.color(QPalette::Base));
            if (!qobject_cast<TOvcNumericField *>(field))
                continue;
            field->setText(u"1e309"_s);
            QVERIFY(field->HasError());
            QCOMPARE(field->palette().color(QPalette::Base), ColorOf(TColor::clRed, host));
            QCOMPARE(field->palette().color(QPalette::Text), ColorOf(TColor::clBlack, host));
            // An error shows as a sign beside the entry and as text, not only as a colour.
            QVERIFY(field->actions().constFirst()->isVisible());
            QVERIFY(!field->ErrorText().isEmpty());
            field->setText(u"1"_s);
            QVERIFY(!field->HasError());
            QCOMPARE(field->palette().color(QPalette::Base), host.color(QPalette::Base));
            QVERIFY(!field->actions().constFirst()->isVisible());
        }
    }

    void refusedTextsAreExplained()
    {
        auto *frame = new TfraElmtLabelInteger;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        enter(frame->nfValue, u"12"_s);
        QSignalSpy refused(frame->nfValue, &QLineEdit::inputRejected);
        // Several numbers are refused, and a text of 5000 characters is an accident.
        QGuiApplication::clipboard()->setText(u"1\n234"_s);
        QTest::keySequence(frame->nfValue, QKeySequence::Paste);
        QCOMPARE(frame->nfValue->text(), u"12"_s);
        QCOMPARE(refused.count(), 1);
        QCOMPARE(QToolTip::text(), u"\"121 234\" is more than one number."_s);
        QGuiApplication::clipboard()->setText(QString(5000, u'1'));
        QTest::keySequence(frame->nfValue, QKeySequence::Paste);
        QCOMPARE(frame->nfValue->text(), u"12"_s);
        QCOMPARE(refused.count(), 2);
        QCOMPARE(QToolTip::text(), u"At most 400 characters."_s);
        // Each refusal has its own message.
        auto *picture = new TfraElmtLabelPictureField;
        page.window.layout()->addWidget(picture);
        picture->pfValue->setPictureMask(u"AA-99"_s);
        enter(picture->pfValue, u"ab1"_s);
        QCOMPARE(QToolTip::text(), u"\"1\" does not belong at place 3."_s);
        QTest::keyClicks(picture->pfValue, u"-123"_s);
        QCOMPARE(picture->pfValue->text(), u"ab-12"_s);
        QCOMPARE(QToolTip::text(), u"At most 5 characters."_s);
        QToolTip::hideText();
    }

    void anUnfinishedNumberIsNoErrorYet()
    {
        auto *frame = new TfraElmtLabelDouble;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        for (const char *start : {"-", "1e", "1e-", "1,250", "1,250,0", "."}) {
            enter(frame->nfValue, QLatin1String(start));
            QVERIFY2(!frame->nfValue->HasError(), start);
            QTest::keyClick(frame->nfValue, Qt::Key_Tab);
            QVERIFY2(frame->nfValue->HasError(), start);
        }
        enter(frame->nfValue, u"1.2.3"_s); // no continuation makes it a number
        QVERIFY(frame->nfValue->HasError());
    }

    void valuesAreToldOnce()
    {
        auto *frame = new TfraElmtLabelDouble;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QSignalSpy values(frame->nfValue, &TOvcNumericField::valueChanged);
        frame->Value->Set_Value(5);
        frame->Value->Set_Value(5);
        QCOMPARE(values.count(), 1);
        enter(frame->nfValue, QString());
        values.clear();
        QTest::keyClicks(frame->nfValue, u"7"_s);
        QCOMPARE(values.count(), 1);
        QTest::keyClicks(frame->nfValue, u".0"_s);
        QCOMPARE(values.count(), 1);
        // A wrong entry falls back to the last finished value.
        QTest::keyClick(frame->nfValue, Qt::Key_Tab);
        enter(frame->nfValue, u"8.1234"_s);
        QVERIFY(frame->nfValue->HasError());
        QCOMPARE(frame->Value->Get_Value().toDouble(), 7.0);
        QCOMPARE(values.last().first().toDouble(), 7.0);
    }

    void aMenuLeavesTheEntryAsItIsTyped()
    {
        auto *frame = new TfraElmtLabelDouble;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        enter(frame->nfValue, u"1234.5"_s);
        QMenu menu;
        menu.addAction(u"a"_s);
        announceOpening();
        menu.popup(frame->nfValue->mapToGlobal(QPoint(0, 0)));
        QVERIFY(menu.isVisible());
        QCOMPARE(frame->nfValue->text(), u"1234.5"_s);
        menu.close();
        QVERIFY(frame->nfValue->hasFocus());
        QCOMPARE(frame->nfValue->text(), u"1234.5"_s);
        QTest::keyClick(frame->nfValue, Qt::Key_Tab);
        QCOMPARE(frame->nfValue->text(), u"1,234.50"_s);
    }

    void numbersAreToldWithinTheRange()
    {
        TfraElmtLabelInteger whole;
        TfraElmtLabelDouble real;
        QCOMPARE(whole.nfValue->text(), u"0"_s);
        QCOMPARE(real.nfValue->text(), u"0.00"_s);
        whole.Value->Set_Value(-32768);
        QCOMPARE(whole.nfValue->text(), u"-32,768"_s);
        for (const QVariant &bad : {QVariant(-32769), QVariant(32768), QVariant(1.5), QVariant(qQNaN()),
                                    QVariant(u"12,3"_s), QVariant()}) {
            QVERIFY_THROWS_EXCEPTION(EConvertError, whole.Value->Set_Value(bad));
            QCOMPARE(whole.Value->Get_Value().toDouble(), -32768.0);
        }
        QVERIFY_THROWS_EXCEPTION(EConvertError, real.Value->Set_Value(qInf()));
        real.Value->Set_Value(1.23456);
        QCOMPARE(real.nfValue->text(), u"1.23"_s);
        QCOMPARE(real.Value->Get_Value().toDouble(), 1.23456);
        real.Value->Set_Value(999999999.99);
        QCOMPARE(real.nfValue->text(), u"999,999,999.99"_s);
        real.Value->Set_Value(999999999999999.0);
        QCOMPARE(real.nfValue->text(), u"999,999,999,999,999.00"_s);
        real.Value->Set_Value(1e15);
        QCOMPARE(real.nfValue->text(), u"1e+15"_s);
    }

    void separatorsLeaveWhileTyping()
    {
        auto *frame = new TfraElmtLabelInteger;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        frame->Value->Set_Value(1234);
        QCOMPARE(frame->nfValue->text(), u"1,234"_s);
        frame->nfValue->setFocus();
        QCOMPARE(frame->nfValue->text(), u"1234"_s);
        frame->nfValue->end(false);
        QTest::keyClicks(frame->nfValue, u"5"_s);
        QVERIFY(!frame->nfValue->HasError());
        QTest::keyClick(frame->nfValue, Qt::Key_Tab);
        QCOMPARE(frame->nfValue->text(), u"12,345"_s);
    }

    void aPictureFieldTakesFifteenCharacters()
    {
        auto *frame = new TfraElmtLabelPictureField;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QSignalSpy refused(frame->pfValue, &QLineEdit::inputRejected);
        enter(frame->pfValue, u"aB3 -_.,:;!?()="_s);
        QCOMPARE(frame->Value->Get_Value().toString().size(), 15);
        QCOMPARE(refused.count(), 0);
        QTest::keyClicks(frame->pfValue, u"x"_s);
        QCOMPARE(frame->pfValue->text(), u"aB3 -_.,:;!?()="_s);
        QCOMPARE(refused.count(), 1);
        QGuiApplication::clipboard()->setText(u"0123456789abcdefgh"_s);
        frame->pfValue->selectAll();
        QTest::keySequence(frame->pfValue, QKeySequence::Paste);
        QCOMPARE(frame->pfValue->text(), u"0123456789abcde"_s);
        QVERIFY_THROWS_EXCEPTION(EConvertError, frame->Value->Set_Value(u"0123456789abcdef"_s));
        QCOMPARE(frame->pfValue->text(), u"0123456789abcde"_s);
        frame->pfValue->setPictureMask(u"AA-999"_s);
        frame->Value->Set_Value(u"xy-12"_s);
        QVERIFY_THROWS_EXCEPTION(EConvertError, frame->Value->Set_Value(u"12-xy"_s));
        QVERIFY_THROWS_EXCEPTION(EConvertError, frame->Value->Set_Value(u"xy+12"_s));
        QCOMPARE(frame->pfValue->text(), u"xy-12"_s);
        QVERIFY(!frame->pfValue->HasError());
        enter(frame->pfValue, u"a1b-2c3"_s);
        QCOMPARE(frame->pfValue->text(), u"ab-23"_s);
        // A character of two UTF-16 code units is taken completely or not at all.
        frame->pfValue->setPictureMask(QString(3, u'X'));
        enter(frame->pfValue, u"a"_s);
        const QString face = QString::fromUtf8("\xF0\x9F\x98\x80");
        QGuiApplication::clipboard()->setText(face);
        QTest::keySequence(frame->pfValue, QKeySequence::Paste);
        QCOMPARE(frame->pfValue->text(), u"a"_s + face);
        enter(frame->pfValue, u"ab"_s);
        QTest::keySequence(frame->pfValue, QKeySequence::Paste);
        QCOMPARE(frame->pfValue->text(), u"ab"_s);
    }

    void insertOverwrites()
    {
        auto *frame = new TfraElmtLabelPictureField;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        enter(frame->pfValue, u"abc"_s);
        frame->pfValue->home(false);
        QTest::keyClick(frame->pfValue, Qt::Key_Insert);
        QVERIFY(frame->pfValue->IsOverwriting());
        QTest::keyClicks(frame->pfValue, u"xyzw"_s);
        QCOMPARE(frame->pfValue->text(), u"xyzw"_s);
        QTest::keyClick(frame->pfValue, Qt::Key_Insert);
        frame->pfValue->home(false);
        QTest::keyClicks(frame->pfValue, u"a"_s);
        QCOMPARE(frame->pfValue->text(), u"axyzw"_s);
        // In overwrite mode a key replaces the whole selection.
        QTest::keyClick(frame->pfValue, Qt::Key_Insert);
        frame->pfValue->setSelection(1, 2);
        QTest::keyClicks(frame->pfValue, u"b"_s);
        QCOMPARE(frame->pfValue->text(), u"abzw"_s);
        // A refused key changes neither the text nor the selection.
        frame->pfValue->setPictureMask(u"AAAA"_s);
        frame->pfValue->setCursorPosition(1);
        QTest::keyClicks(frame->pfValue, u"1"_s);
        QCOMPARE(frame->pfValue->text(), u"abzw"_s);
        QVERIFY(!frame->pfValue->hasSelectedText());
        QCOMPARE(frame->pfValue->cursorPosition(), 1);
        QToolTip::hideText();
        // In overwrite mode the caret covers the character that the next key replaces.
        enter(frame->pfValue, u"mmm"_s);
        frame->pfValue->home(false);
        const QRect caret = frame->pfValue->inputMethodQuery(Qt::ImCursorRectangle).toRect();
        const auto behindCaret = [&] {
            return frame->pfValue->grab().toImage().pixelColor(caret.center().x() + 3, caret.top() + 1);
        };
        QCOMPARE(behindCaret(), frame->pfValue->palette().color(QPalette::Text));
        QTest::keyClick(frame->pfValue, Qt::Key_Insert);
        QCOMPARE(behindCaret(), frame->pfValue->palette().color(QPalette::Base));
    }

    // A radio button is the only one in its element, so only the page can turn it off.
    void aRadioButtonStaysOn_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < elements().size(); ++i) {
            if (QByteArray(elements().at(i).name).contains("RadioButton"))
                QTest::newRow(elements().at(i).name) << i;
        }
    }

    void aRadioButtonStaysOn()
    {
        QFETCH(int, index);
        Page page(elements().at(index).make());
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        auto *button = qobject_cast<QRadioButton *>(captionOf(page.frame));
        QVERIFY(button);
        QSignalSpy toggled(button, &QAbstractButton::toggled);
        QSignalSpy clicked(button, &QAbstractButton::clicked);
        for (int click = 1; click <= 2; ++click) {
            QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
            QVERIFY(button->isChecked());
            QCOMPARE(clicked.count(), click);
        }
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Space);
        QVERIFY(button->isChecked());
        QCOMPARE(clicked.count(), 3);
        QCOMPARE(clicked.constLast(), QVariantList{true});
        QCOMPARE(toggled.count(), 1);
        button->setChecked(false);
        QVERIFY(!button->isChecked());
        QTest::keyClick(button, Qt::Key_Space);
        QVERIFY(button->isChecked());
    }

    void aPageMakesRadioButtonsExclusive()
    {
        auto *first = new TfraElmtRadioButtonInteger;
        auto *second = new TfraEmltRadioButtonDouble;
        Page page(first);
        page.window.layout()->addWidget(second);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QButtonGroup group;
        group.addButton(first->rbCaption);
        group.addButton(second->rbCaption);
        const auto click = [](QAbstractButton *button) {
            QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
        };
        click(first->rbCaption);
        QVERIFY(first->rbCaption->isChecked() && !second->rbCaption->isChecked());
        click(second->rbCaption);
        QVERIFY(!first->rbCaption->isChecked() && second->rbCaption->isChecked());
        click(second->rbCaption);
        second->rbCaption->click();
        QVERIFY(!first->rbCaption->isChecked() && second->rbCaption->isChecked());
        group.setExclusive(false);
        second->rbCaption->setChecked(false);
        QVERIFY(!group.checkedButton());
    }

    void theToolBar()
    {
        TfraToolBar bar;
        bar.show();
        QCOMPARE(bar.size(), QSize(104, 310));
        QCOMPARE(bar.Panel1->geometry(), QRect(0, 0, 55, 310));
        struct Row {
            TSpeedButton *button;
            int top;
            const char *caption;
            const char *hint;
        };
        const QList<Row> rows{{bar.sbtClient, 0, "Client", "select clients"},
                              {bar.sbtPreview, 40, "Preview", "preview the quotation"},
                              {bar.sbtSave, 80, "Save", "save the quotation"},
                              {bar.sbtDetails, 120, "Details", "save the quotation"},
                              {bar.sbtWorksheet, 160, "Worksheet", "save the quotation"},
                              {bar.sbtClose, 200, "Close", "exit"},
                              {bar.sbtAcceptQuote, 240, "Complete", "exit"}};
        for (const Row &row : rows) {
            QCOMPARE(row.button->geometry(), QRect(0, row.top, 55, 40));
            QCOMPARE(row.button->text(), QLatin1String(row.caption));
            QCOMPARE(row.button->toolTip(), QLatin1String(row.hint));
            QCOMPARE(hasDisabledPicture(row.button->icon()),
                     row.button == bar.sbtClose || row.button == bar.sbtAcceptQuote);
            QVERIFY(row.button->isGlyphOnTop());
            QCOMPARE(row.button->focusPolicy(), Qt::NoFocus);
            QCOMPARE(row.button->isVisible(), row.button != bar.sbtAcceptQuote);
            QCOMPARE(row.button->isEnabled(), row.button != bar.sbtAcceptQuote);
            QVERIFY(row.button->fontMetrics().horizontalAdvance(row.button->text()) <= 55);
        }
        QCOMPARE(bar.metaObject()->superClass(), &TFrame::staticMetaObject);
    }

    void theHeaders()
    {
        TfraHeader header;
        TfraPageHeader pageHeader;
        QCOMPARE(header.size(), QSize(389, 30));
        QCOMPARE(pageHeader.size(), QSize(447, 27));
        QCOMPARE(header.pnlPageHeader->caption(), u"< HEADER CAPTION COMES HERE >"_s);
        QCOMPARE(pageHeader.pnlPageHeader->caption(), u"<< Page Header Comes Here >>"_s);
        header.resize(500, 60);
        pageHeader.resize(500, 60);
        header.show();
        pageHeader.show();
        QCOMPARE(header.pnlPageHeader->geometry(), QRect(0, 0, 500, 60));
        QCOMPARE(pageHeader.pnlPageHeader->geometry(), QRect(0, 0, 500, 27));
        for (const TPanel *panel : {header.pnlPageHeader, pageHeader.pnlPageHeader}) {
            QCOMPARE(panel->colorName(), u"clGreen3"_s);
            QCOMPARE(panel->textColorName(), u"clWhite"_s);
            QCOMPARE(panel->fontFamily(), u"Trebuchet MS"_s);
            QCOMPARE(panel->fontHeight(), 15);
            QVERIFY(panel->isBold());
            QVERIFY(panel->hasBevel());
        }
        // A caption is reported once and is read out without the blanks that position it.
        QSignalSpy told(header.pnlPageHeader, &TPanel::captionChanged);
        for (int i = 0; i < 2; ++i)
            header.pnlPageHeader->setCaption(u"  Fund allocation "_s);
        QCOMPARE(told.count(), 1);
        QCOMPARE(header.pnlPageHeader->accessibleName(), u"Fund allocation"_s);
        // A disabled caption is gray.
        const auto isWhiteInside = [&header] {
            const QImage seen =
                header.pnlPageHeader->grab(header.pnlPageHeader->rect().adjusted(4, 4, -4, -4)).toImage();
            for (int y = 0; y < seen.height(); ++y) {
                for (int x = 0; x < seen.width(); ++x) {
                    if (seen.pixelColor(x, y) == QColor(Qt::white))
                        return true;
                }
            }
            return false;
        };
        QVERIFY(isWhiteInside());
        header.pnlPageHeader->setEnabled(false);
        QVERIFY(!isWhiteInside());
        header.pnlPageHeader->setEnabled(true);
        // The outer bevel is lowered and the inner one raised: dark before light on the left, and the same on
        // the right.
        for (QWidget *panel : {header.pnlPageHeader, pageHeader.pnlPageHeader}) {
            const QImage seen = panel->grab().toImage();
            const qreal scale = seen.devicePixelRatio();
            const auto lightness = [&](int x) {
                return seen.pixelColor(int((x + 0.5) * scale), seen.height() / 2).lightness();
            };
            const int right = panel->width() - 1;
            QVERIFY(lightness(0) < lightness(1));
            QVERIFY(lightness(right - 1) < lightness(right));
        }
        QCOMPARE(header.metaObject()->superClass(), &TBaseFrame::staticMetaObject);
        QCOMPARE(pageHeader.metaObject()->superClass(), &TBaseFrame::staticMetaObject);
    }

    // A caption that is too long is left-aligned and elided, and its tooltip shows it completely.
    void aHeadersCaptionThatIsTooLong()
    {
        const QString text =
            u"Retirement annuity with <b>guaranteed</b> growth "_s + QString(80, QLatin1Char('n'));
        for (const bool page : {false, true}) {
            TfraHeader band;
            TfraPageHeader pageBand;
            QWidget *const frame = page ? static_cast<QWidget *>(&pageBand) : &band;
            TPanel &panel = *(page ? pageBand.pnlPageHeader : band.pnlPageHeader);
            QVERIFY(showActive(*frame));
            const auto face = [&panel](const QString &caption) {
                panel.setCaption(caption);
                return panel.grab().toImage();
            };
            const int half = panel.width() / 2;
            const qreal scale = panel.devicePixelRatioF();
            const auto left = [&](const QImage &seen) {
                return seen.copy(0, 0, int(half * scale), seen.height());
            };
            // The left half looks the same for all captions that begin with the same text.
            QCOMPARE(left(face(text)), left(face(text + u"nnnn"_s)));
            QVERIFY(left(face(text)) != left(face(text.mid(20))));
            panel.setCaptionAlignment(Qt::AlignLeft);
            const QImage leftAligned = face(text);
            panel.setCaptionAlignment(Qt::AlignCenter);
            QCOMPARE(face(text), leftAligned);
            const auto tip = [&panel] {
                QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), panel.mapToGlobal(QPoint(5, 5)));
                QCoreApplication::sendEvent(&panel, &asked);
                if (!asked.isAccepted())
                    return QString();
                return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
            };
            QCOMPARE(tip(), text);
            panel.setCaption(u"Short"_s);
            QCOMPARE(tip(), QString());
            panel.setToolTip(u"The page's own"_s);
            panel.setCaption(text);
            QCOMPARE(tip(), u"The page's own"_s);
            QToolTip::hideText();
        }
    }

    void tabWalksTheInvestor()
    {
        auto *frame = new TfraInvestorDetails;
        Page page(frame);
        QVERIFY(QTest::qWaitForWindowActive(&page.window));
        QCOMPARE(detourOfTab({page.before, frame->fraInvestorName->cbData, frame->sbtClient, page.after}),
                 QString());
        // The button only emits clicked(); the page decides what it does.
        QSignalSpy clicked(frame->sbtClient, &QPushButton::clicked);
        frame->sbtClient->setFocus();
        QTest::keyClick(frame->sbtClient, Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
    }

    void theInvestorsListGrowsWithItsFrame()
    {
        TfraInvestorDetails frame;
        frame.show();
        QCOMPARE(frame.size(), QSize(373, 47));
        QCOMPARE(frame.fraInvestorName->geometry(), QRect(10, 12, 321, 21));
        QCOMPARE(frame.fraInvestorName->lblCaption->text(), u"Investor"_s);
        QCOMPARE(frame.fraInvestorName->cbData->geometry(), QRect(48, 0, 273, 21));
        QCOMPARE(frame.sbtClient->geometry(), QRect(340, 12, 23, 22));
        QVERIFY(frame.sbtClient->text().isEmpty() && frame.sbtClient->toolTip().isEmpty());
        QVERIFY(!frame.sbtClient->icon().isNull() && !frame.sbtClient->accessibleName().isEmpty());
        QSignalSpy clicked(frame.sbtClient, &QPushButton::clicked);
        QTest::mouseClick(frame.sbtClient, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        // A wider frame widens the list up to the button, which stays in place.
        frame.resize(473, 47);
        const auto listsEnd = [&frame] {
            const TComboBox &list = *frame.fraInvestorName->cbData;
            return list.mapTo(&frame, QPoint(list.width(), 0)).x();
        };
        QCOMPARE(frame.sbtClient->geometry(), QRect(340, 12, 23, 22));
        QVERIFY(frame.fraInvestorName->cbData->width() > 273);
        QVERIFY(listsEnd() < 340);
        QVERIFY(listsEnd() > 340 - 9);
        QCOMPARE(frame.fraInvestorName->width(), frame.fraInvestorName->cbData->geometry().right() + 1);
        QCOMPARE(frame.childAt(frame.sbtClient->geometry().center()), frame.sbtClient);
        // Moving or hiding the button changes the list's width.
        frame.sbtClient->move(440, 12);
        QCOMPARE(frame.fraInvestorName->cbData->width(), 373);
        frame.sbtClient->move(400, 12);
        QVERIFY(listsEnd() < 400 && listsEnd() > 390);
        frame.sbtClient->hide();
        QCOMPARE(frame.fraInvestorName->cbData->width(), 373);
        frame.sbtClient->show();
        QVERIFY(listsEnd() < 400 && listsEnd() > 390);
        frame.sbtClient->move(340, 12);
        // A longer caption makes the list narrower; the gap between list and button stays.
        frame.fraInvestorName->Value->Set_Caption(u"The person who invests"_s);
        QVERIFY(listsEnd() < 340 && listsEnd() > 340 - 9);
        frame.fraInvestorName->Value->Set_Caption(u"Investor"_s);
        frame.resize(373, 47);
        QCOMPARE(frame.fraInvestorName->cbData->width(), 273);
        frame.resize(273, 47);
        QCOMPARE(frame.fraInvestorName->cbData->width(), 173);
        QCOMPARE(frame.fraInvestorName->cbData->accessibleName(), u"Investor"_s);
        QCOMPARE(frame.metaObject()->superClass(), &TFrame::staticMetaObject);
    }
};

ZEL_TEST_MAIN(TestElements)
#include "tst_elements.moc"
