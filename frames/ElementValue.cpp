#include "frames/ElementValue.h"

#include "data/Exceptions.h"
#include "frames/Started_p.h"
#include "toolkit/LookFonts_p.h"
#include "toolkit/TComboBox.h"
#include "toolkit/TOvcNumericField.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QValidator>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Zel
{
namespace
{
void choose(TComboBox &list, const QVariant &value)
{
    const int index = value.isValid() ? list.Items().IndexOf(value.toString()) : -1;
    if (value.isValid() && index < 0)
        throw EConvertError(ElementValue::tr("The list has no line \"%1\".").arg(value.toString()));
    list.SetItemIndex(index);
}

void enter(TOvcNumericField &field, const QVariant &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber)
        throw EConvertError(ElementValue::tr("\"%1\" is not a number.").arg(value.toString()));
    field.Set_Value(number);
}

/// Whether an input mask keeps every character of @p text. A mask silently drops characters that do not fit,
/// adds its own separators and may change the case.
bool fitsMask(const QString &text, const QString &mask)
{
    QLineEdit probe;
    probe.setInputMask(mask);
    const QString ownSigns = probe.displayText();
    const auto withoutOwnSigns = [&ownSigns](const QString &whole) {
        QString rest;
        std::copy_if(whole.begin(), whole.end(), std::back_inserter(rest),
                     [&ownSigns](QChar sign) { return !ownSigns.contains(sign); });
        return rest;
    };
    probe.setText(text);
    return withoutOwnSigns(probe.text()).compare(withoutOwnSigns(text), Qt::CaseInsensitive) == 0;
}

/// @p caption without the "&" that marks its shortcut key, for screen readers.
QString withoutKey(const QString &caption)
{
    QString spoken;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && i + 1 < caption.size())
            ++i;
        spoken += caption[i];
    }
    return spoken;
}

bool fits(const QLineEdit &edit, QString text)
{
    int cursor = 0;
    if (edit.validator() && edit.validator()->validate(text, cursor) == QValidator::Invalid)
        return false;
    return edit.inputMask().isEmpty() || fitsMask(text, edit.inputMask());
}

void write(QLineEdit &edit, const QVariant &value)
{
    const QString text = value.toString();
    if (text.size() > edit.maxLength())
        throw EConvertError(
            ElementValue::tr("\"%1\" is longer than %2 characters.").arg(text).arg(edit.maxLength()));
    if (!fits(edit, text))
        throw EConvertError(ElementValue::tr("\"%1\" does not fit the field.").arg(text));
    edit.setText(text);
}
} // namespace

ElementValue::ElementValue(QWidget *frame) : QObject(frame), m_frame(frame)
{
    Started::Want();
}

ElementValue::~ElementValue() = default;

void ElementValue::Attach(QWidget *caption, QWidget *editor)
{
    m_caption = caption;
    m_editor = editor;
    AdoptDesign(false);
    nameEditor();
    if (const auto *list = qobject_cast<TComboBox *>(editor)) {
        connect(list, &QComboBox::activated, this, [this](int index) {
            if (index == std::exchange(m_choiceBefore, std::nullopt))
                return; // The user chose the same line again.
            userEdited();
            userFinished();
        });
    } else if (const auto *edit = qobject_cast<QLineEdit *>(editor)) {
        connect(edit, &QLineEdit::textEdited, this, [this] { userEdited(); });
        connect(edit, &QLineEdit::editingFinished, this, [this] { userFinished(); });
    }
    m_frame->installEventFilter(this);
    m_editor->installEventFilter(this);
}

void ElementValue::AdoptDesign(bool grows)
{
    m_captionPlace = m_caption->geometry();
    m_editorPlace = m_editor->geometry();
    m_frameSize = m_frame->size();
    m_frameMinimum = m_frame->minimumWidth();
    m_grows = grows;
}

QVariant ElementValue::Get_Value() const
{
    if (const auto *list = qobject_cast<TComboBox *>(m_editor))
        return list->ItemIndex() < 0 ? QVariant() : list->Items().Text(list->ItemIndex());
    return m_editor->metaObject()->userProperty().read(m_editor);
}

void ElementValue::Set_Value(const QVariant &value)
{
    if (auto *list = qobject_cast<TComboBox *>(m_editor))
        choose(*list, value);
    else if (auto *field = qobject_cast<TOvcNumericField *>(m_editor))
        enter(*field, value);
    else if (auto *edit = qobject_cast<QLineEdit *>(m_editor))
        write(*edit, value);
    MarkUnedited();
}

void ElementValue::MarkUnedited()
{
    m_edited = false;
    m_uncommitted = false;
}

QString ElementValue::Get_Caption() const
{
    return m_caption->property("text").toString();
}

void ElementValue::Set_Caption(const QString &caption)
{
    m_caption->setProperty("text", caption);
    arrange();
    nameEditor();
}

void ElementValue::nameEditor()
{
    // Qt names an editor after its buddy label, but not after a button. A name set by the page stays.
    if (qobject_cast<QLabel *>(m_caption))
        return;
    constexpr const char *given = "zelNameFromCaption";
    const QString name = withoutKey(Get_Caption());
    const QString former = m_editor->accessibleName();
    const bool ofThePage =
        !former.isEmpty() && former != name && former != m_editor->property(given).toString();
    if (ofThePage)
        return;
    m_editor->setProperty(given, name);
    m_editor->setAccessibleName(name);
}

void ElementValue::userEdited()
{
    m_edited = true;
    m_uncommitted = true;
    Q_EMIT Edited();
}

void ElementValue::userFinished()
{
    if (std::exchange(m_uncommitted, false))
        Q_EMIT Committed();
}

bool ElementValue::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_frame) {
        // A caption that was set directly on the component causes a LayoutRequest of the frame.
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show ||
            event->type() == QEvent::StyleChange ||
            (event->type() == QEvent::FontChange && CurrentLook() == Look::Application) ||
            (m_grows && event->type() == QEvent::Resize))
            arrange();
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
            nameEditor();
        return QObject::eventFilter(watched, event);
    }
    if (const auto *list = qobject_cast<TComboBox *>(m_editor);
        list && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress ||
                 event->type() == QEvent::Wheel))
        m_choiceBefore = list->ItemIndex();
    // On a change of language, the frame and its caption get the event before the editor does.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::LanguageChange)
        nameEditor();
    return QObject::eventFilter(watched, event);
}

void ElementValue::arrange()
{
    constexpr int gap = 2;
    constexpr int designedFont = 13; // the height of the designed font, in pixels
    const int room = m_editorPlace.left() - gap - m_captionPlace.left();
    const int wanted = m_caption->sizeHint().width();
    const int shift = qMax(0, wanted - room);
    const int captionWidth = qMax(wanted, m_captionPlace.width());
    QRect caption(m_captionPlace.topLeft(), QSize(captionWidth, m_captionPlace.height()));
    QRect editor(m_editorPlace.topLeft() + QPoint(shift, 0), m_editorPlace.size());
    const QFontMetrics metrics = m_frame->fontMetrics();
    const int height = HeightOf(LookHeight::Field, metrics);
    // In the application look, a field of the designed height follows the font. A page may have placed it.
    const bool inLook = CurrentLook() == Look::Application && m_editorPlace.height() < height;
    if (inLook) {
        editor.setSize({m_grows ? editor.width() : editor.width() * metrics.height() / designedFont, height});
        caption.setHeight(height);
        caption.moveTop(editor.top());
        SetInLook(m_frame, "minimumHeight", qMax(m_frameSize.height(), height));
    }
    m_caption->setGeometry(caption);

    const QSize gained = m_grows ? m_frame->size() - m_frameSize - QSize(shift, 0) : QSize(0, 0);
    editor.setSize(editor.size() + (inLook ? QSize(gained.width(), 0) : gained));
    m_editor->setGeometry(editor);
    if (m_grows)
        return;
    m_frame->setMinimumWidth(m_frameMinimum + shift + (inLook ? editor.width() - m_editorPlace.width() : 0));
    const QSize least(qMax(m_frame->width(), m_frame->minimumWidth()),
                      qMax(m_frame->height(), inLook ? height : 0));
    if (m_frame->size() == least)
        return;
    if (inLook)
        SetInLook(m_frame, "geometry", QRect(m_frame->pos(), least));
    else
        m_frame->resize(least);
}
} // namespace Zel
