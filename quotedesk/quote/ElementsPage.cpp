#include "quote/ElementsPage.h"

#include "quote/SelectOnEntry.h"

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
#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"
#include "toolkit/TComboBox.h"

#include <QButtonGroup>
#include <QDate>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int captionLeft = 2;
constexpr int gap = 8;
constexpr int warningSize = 16;
constexpr int narrowWidth = 121;
constexpr int listWidth = 180;
constexpr int textWidth = 280;

// A date without an entry displays only the mask's dashes.
constexpr auto dateMask = "9999-99-99";

QString translated(const char *text)
{
    return QCoreApplication::translate("Elements", text);
}

/// Shortens an entry for use in a sentence.
QString quoted(const QString &entry)
{
    constexpr qsizetype longest = 40;
    return entry.size() > longest ? entry.left(longest - 1) + QChar(0x2026) : entry;
}

void limitAmount(TOvcNumericField &field)
{
    field.setRangeLo(0);
    field.setRangeHi(999999999.99);
}

bool isDate(PageElement::Kind kind)
{
    return kind == PageElement::Kind::Date || kind == PageElement::Kind::EitherDate;
}

} // namespace

ElementsPage::ElementsPage(QWidget *parent)
    : QWidget(parent), m_elements(new QVBoxLayout), m_problemsPanel(new QWidget), m_warning(new QLabel),
      m_problems(new QLabel), m_either(new QButtonGroup(this))
{
    m_problems->setObjectName(u"lblProblems"_s);
    m_problems->setTextFormat(Qt::PlainText);
    m_problems->setWordWrap(true);
    m_warning->setObjectName(u"lblWarning"_s);
    auto *const said = new QHBoxLayout(m_problemsPanel);
    said->setContentsMargins(captionLeft, gap, 0, 0);
    said->addWidget(m_warning, 0, Qt::AlignTop);
    said->addWidget(m_problems, 1);

    auto *const inside = new QWidget;
    inside->setLayout(m_elements);
    m_elements->setSpacing(6);
    auto *const area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(inside);
    // Shows the page's own background.
    inside->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(area);
    connect(m_either, &QButtonGroup::idToggled, this, [this] { notice(); });
}

ElementsPage::~ElementsPage()
{
    for (const Line &line : std::as_const(m_lines))
        line.editor->removeEventFilter(this);
}

template <class TFrame>
void ElementsPage::add(const PageElement &element, TFrame *frame, QWidget *caption, QWidget *editor)
{
    frame->setObjectName(u"fra"_s + QLatin1String(element.name));
    auto *const reason = new QLabel;
    reason->setObjectName(u"lblReason"_s + QLatin1String(element.name));
    reason->setTextFormat(Qt::PlainText);
    reason->setWordWrap(true);
    reason->hide();
    const qsizetype number = m_lines.size();
    m_lines.append({element, frame, caption, editor, frame->Value, reason});
    // A number displays zeros and a date dashes, which a click should select.
    if (auto *const field = qobject_cast<QLineEdit *>(editor);
        field && (qobject_cast<TOvcNumericField *>(field) || isDate(element.kind)))
        new SelectOnEntry(field);
    // An unfinished entry is judged when the field loses the focus, for which there is no signal.
    editor->installEventFilter(this);
    connect(frame->Value, &Zel::ElementValue::Edited, this, [this, number, caption] {
        m_lines[number].kept.reset();
        m_lines[number].fits = true;
        // Typing an entry is meant to count, so it ticks its check box or radio button; otherwise the entry
        // would be lost.
        if (auto *const button = qobject_cast<QAbstractButton *>(caption))
            button->setChecked(true);
        notice();
    });
    auto *const row = new QHBoxLayout;
    row->setSpacing(gap);
    row->addWidget(frame, 0, Qt::AlignLeft | Qt::AlignTop);
    row->addWidget(reason, 1);
    m_elements->addLayout(row);
    // Some frames have the value first in the tab order; on a page the check box or radio button to its left
    // comes first.
    if (switchOf(m_lines.last()))
        setTabOrder(caption, editor);
}

void ElementsPage::setElements(const QList<PageElement> &elements)
{
    for (const PageElement &element : elements) {
        if (!addPlain(element))
            addSwitched(element);
    }
    m_elements->addWidget(m_problemsPanel);
    m_elements->addStretch(1);
    retext();
    show({});
}

/// Adds an element that always counts; returns false for other kinds.
bool ElementsPage::addPlain(const PageElement &element)
{
    using Kind = PageElement::Kind;
    if (element.kind == Kind::Text) {
        auto *const frame = new TfraElmtLabelEdit;
        frame->edValue->setMaxLength(100);
        add(element, frame, frame->lblCaption, frame->edValue);
    } else if (element.kind == Kind::Code) {
        auto *const frame = new TfraElmtLabelPictureField;
        add(element, frame, frame->lblCaption, frame->pfValue);
    } else if (element.kind == Kind::Date) {
        auto *const frame = new TfraElmtLabelMaskedEdit;
        frame->medValue->setInputMask(QLatin1String(dateMask));
        add(element, frame, frame->lblCaption, frame->medValue);
    } else if (element.kind == Kind::Number) {
        auto *const frame = new TfraElmtLabelInteger;
        frame->nfValue->setRangeLo(0);
        add(element, frame, frame->lblCaption, frame->nfValue);
    } else if (element.kind == Kind::Amount) {
        auto *const frame = new TfraElmtLabelDouble;
        limitAmount(*frame->nfValue);
        add(element, frame, frame->lblCaption, frame->nfValue);
    } else if (element.kind == Kind::List) {
        auto *const frame = new TfraElmtLabelComboBox;
        add(element, frame, frame->lblCaption, frame->cbData);
    } else {
        return false;
    }
    return true;
}

/// Adds an element with a check box or with one of the page's radio buttons.
void ElementsPage::addSwitched(const PageElement &element)
{
    using Kind = PageElement::Kind;
    if (element.kind == Kind::OptionAmount) {
        auto *const frame = new TfraElmtCheckBoxDouble;
        limitAmount(*frame->nfValue);
        add(element, frame, frame->cbCaption, frame->nfValue);
        connect(frame->cbCaption, &QAbstractButton::toggled, this, [this] { notice(); });
    } else if (element.kind == Kind::EitherAmount) {
        auto *const frame = new TfraEmltRadioButtonDouble;
        limitAmount(*frame->nfValue);
        add(element, frame, frame->rbCaption, frame->nfValue);
        m_either->addButton(frame->rbCaption);
    } else if (element.kind == Kind::EitherNumber) {
        auto *const frame = new TfraElmtRadioButtonInteger;
        frame->nfValue->setRangeLo(0);
        add(element, frame, frame->rbCaption, frame->nfValue);
        m_either->addButton(frame->rbCaption);
    } else if (element.kind == Kind::EitherDate) {
        auto *const frame = new TfraElmtRadioButtonMaskedEdit;
        frame->medValue->setInputMask(QLatin1String(dateMask));
        add(element, frame, frame->rbCaption, frame->medValue);
        m_either->addButton(frame->rbCaption);
    }
}

QAbstractButton *ElementsPage::switchOf(const Line &line)
{
    return qobject_cast<QAbstractButton *>(line.caption);
}

void ElementsPage::retext()
{
    const QScopedValueRollback showing(m_showing, true);
    for (Line &line : m_lines) {
        line.value->Set_Caption(translated(line.element.caption));
        line.editor->setAccessibleName(translated(line.element.caption));
        if (auto *const list = qobject_cast<TComboBox *>(line.editor)) {
            const int chosen = list->ItemIndex();
            list->Items().BeginUpdate();
            list->Items().Clear();
            list->Items().Add(QString());
            for (const PageElement::Choice &choice : std::as_const(line.element.choices))
                list->Items().Add(translated(choice.text));
            list->Items().EndUpdate();
            list->SetItemIndex(std::max(0, chosen));
        }
    }
    arrange();
    showProblems();
}

/// Arranges captions and values in two columns; the widest caption determines the width.
void ElementsPage::arrange()
{
    int widest = 0;
    for (const Line &line : std::as_const(m_lines))
        widest = std::max(widest, line.caption->sizeHint().width());
    const int left = captionLeft + widest + gap;
    for (const Line &line : std::as_const(m_lines)) {
        const int width = line.element.kind == PageElement::Kind::Text   ? textWidth
                          : line.element.kind == PageElement::Kind::List ? listWidth
                                                                         : narrowWidth;
        const QRect caption = line.caption->geometry();
        line.caption->setGeometry(captionLeft, caption.top(), widest, caption.height());
        line.editor->setGeometry(left, 0, width, line.editor->height());
        line.frame->setMinimumWidth(left + width + 2);
        line.frame->resize(left + width + 2, line.frame->height());
        line.value->AdoptDesign(false);
    }
}

void ElementsPage::show(const QMap<QString, QString> &details)
{
    const QScopedValueRollback showing(m_showing, true);
    m_either->setExclusive(false);
    for (Line &line : m_lines) {
        const QString text = details.value(QLatin1String(line.element.name));
        showIn(line, text);
        line.kept = text;
        if (QAbstractButton *const button = switchOf(line))
            button->setChecked(!text.isEmpty());
    }
    m_either->setExclusive(true);
    showProblems();
}

/// Puts a text into the line's editor, even an invalid one.
void ElementsPage::showIn(Line &line, const QString &text)
{
    line.fits = true;
    if (auto *const list = qobject_cast<TComboBox *>(line.editor)) {
        const auto &choices = line.element.choices;
        const auto found =
            std::find_if(choices.cbegin(), choices.cend(), [&text](const PageElement::Choice &choice) {
                return text == QLatin1String(choice.value);
            });
        line.fits = text.isEmpty() || found != choices.cend();
        list->SetItemIndex(found == choices.cend() ? 0 : static_cast<int>(found - choices.cbegin()) + 1);
        return;
    }
    if (auto *const field = qobject_cast<TOvcNumericField *>(line.editor)) {
        line.value->Set_Value(0);
        if (text.isEmpty())
            return;
        // Set as if typed, so that the field shows the error.
        field->setText(text);
        if (field->HasError())
            return;
        try {
            line.value->Set_Value(text);
        } catch (const EConvertError &) {
            // The field keeps the text as typed.
        }
        return;
    }
    try {
        line.value->Set_Value(text);
    } catch (const EConvertError &) {
        line.value->Set_Value(QString());
        line.fits = false;
    }
}

/// Why the entry is invalid; blank when it is valid.
QString ElementsPage::reasonOf(const Line &line)
{
    const QAbstractButton *const button = switchOf(line);
    if (button && !button->isChecked())
        return {};
    if (!line.fits)
        return tr("\"%1\" does not fit this field. The text is kept until you enter another one.")
            .arg(quoted(*line.kept));
    const auto *const field = qobject_cast<TOvcBaseField *>(line.editor);
    return field && field->HasError() ? field->ErrorText() : QString();
}

QString ElementsPage::valueOf(const Line &line) const
{
    const QAbstractButton *const button = switchOf(line);
    if (button && !button->isChecked())
        return {};
    if (line.kept && !(button && line.kept->isEmpty()))
        return *line.kept;
    if (const auto *const field = qobject_cast<TOvcBaseField *>(line.editor); field && field->HasError())
        return field->text().trimmed();
    if (const auto *const list = qobject_cast<TComboBox *>(line.editor)) {
        const int chosen = list->ItemIndex();
        return chosen > 0 ? QString::fromLatin1(line.element.choices.at(chosen - 1).value) : QString();
    }
    const QVariant value = line.value->Get_Value();
    if (const auto *const field = qobject_cast<TOvcNumericField *>(line.editor)) {
        const double number = value.toDouble();
        if (qFuzzyIsNull(number))
            return button ? u"0"_s : QString();
        return field->dataType() == TOvcNumericField::nftInteger
                   ? QString::number(static_cast<int>(number))
                   : FormatFloat(FormatMask::TwoDecimals, number);
    }
    QString text = value.toString().trimmed();
    if (isDate(line.element.kind) && text == u"--"_s)
        return {};
    return text;
}

void ElementsPage::readInto(QMap<QString, QString> &details) const
{
    for (const Line &line : m_lines) {
        const QString name = QLatin1String(line.element.name);
        const QString value = valueOf(line);
        if (value.isEmpty())
            details.remove(name);
        else
            details.insert(name, value);
    }
}

QStringList ElementsPage::problems() const
{
    return entryProblems(true) + entryProblems(false);
}

/// The sentences about invalid entries, or those about the other problems.
QStringList ElementsPage::entryProblems(bool refused) const
{
    QStringList sentences;
    for (const Line &line : m_lines) {
        const QString reason = reasonOf(line);
        if (reason.isEmpty() == refused)
            continue;
        const QString caption = translated(line.element.caption);
        QString sentence;
        if (refused)
            sentence = line.fits
                           ? tr("%1: \"%2\" cannot be used. %3").arg(caption, quoted(valueOf(line)), reason)
                           : tr("%1: %2").arg(caption, reason);
        else if (line.element.problem)
            sentence = line.element.problem(valueOf(line));
        if (!sentence.isEmpty())
            sentences.append(sentence);
    }
    return sentences;
}

QList<QPair<QString, QString>> ElementsPage::shown() const
{
    QList<QPair<QString, QString>> result;
    for (const Line &line : m_lines) {
        const QString value = valueOf(line);
        if (value.isEmpty())
            continue;
        const auto *const list = qobject_cast<TComboBox *>(line.editor);
        result.append({translated(line.element.caption),
                       list && line.fits ? list->Items().Text(list->ItemIndex()) : value});
    }
    return result;
}

void ElementsPage::notice()
{
    if (m_showing)
        return;
    showProblems();
    Q_EMIT edited();
}

void ElementsPage::showProblems()
{
    for (const Line &line : std::as_const(m_lines)) {
        const QString reason = reasonOf(line);
        line.reason->setText(reason);
        line.reason->setVisible(!reason.isEmpty());
    }
    const QStringList sentences = entryProblems(false);
    m_problems->setText(sentences.join(u'\n'));
    m_warning->setAccessibleName(tr("Warning"));
    m_warning->setPixmap(GlyphIcon(u"warning"_s).pixmap(warningSize, warningSize));
    m_problemsPanel->setVisible(!sentences.isEmpty());
}

void ElementsPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retext();
        // After the fields have translated their messages.
        QMetaObject::invokeMethod(
            this, [this] { showProblems(); }, Qt::QueuedConnection);
    }
}

bool ElementsPage::eventFilter(QObject *watched, QEvent *event)
{
    // A field changes its tooltip when its entry becomes valid or invalid.
    if (event->type() == QEvent::ToolTipChange)
        notice();
    if (event->type() == QEvent::FocusOut)
        QMetaObject::invokeMethod(
            this, [this] { notice(); }, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

} // namespace QuoteDesk
