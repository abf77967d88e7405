#include "quote/ElementsPage.h"

#include "quote/PageParts.h"
#include "quote/SelectOnEntry.h"

#include "look/Banner.h"
#include "look/GlyphLabel.h"
#include "look/ProblemLine.h"

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
#include "toolkit/Look.h"
#include "toolkit/TApplication.h"
#include "toolkit/TComboBox.h"

#include <QButtonGroup>
#include <QDate>
#include <QEvent>
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

// Widths beside a body font of 18 pixels.
constexpr int longestCaption = 240;
constexpr int textWidth = 360;
constexpr int codeWidth = 180;
constexpr int numberWidth = 100;

constexpr int panelPadding = 20;

// The topic of the banner.
constexpr auto fieldsTopic = "fields"_L1;

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

/// As wide as the content needs.
int widthOf(PageElement::Kind kind)
{
    using Kind = PageElement::Kind;
    if (kind == Kind::Text)
        return textWidth;
    return kind == Kind::Number || kind == Kind::EitherNumber ? numberWidth : codeWidth;
}

bool isDate(PageElement::Kind kind)
{
    return kind == PageElement::Kind::Date || kind == PageElement::Kind::EitherDate;
}

} // namespace

ElementsPage::ElementsPage(QWidget *parent)
    : QWidget(parent), m_banners(new BannerStack(this)), m_area(new QScrollArea), m_elements(new QVBoxLayout),
      m_either(new QButtonGroup(this))
{
    auto *const inside = new QWidget;
    auto *const column = new QVBoxLayout(inside);
    column->setContentsMargins(0, 0, 0, 0);
    auto *const panel = new Panel(inside);
    panel->setLayout(m_elements);
    m_elements->setContentsMargins(panelPadding, panelPadding, panelPadding, panelPadding);
    m_elements->setSpacing(LookSpace::Medium);
    column->addWidget(panel);
    column->addStretch(1);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setWidget(inside);
    // Shows the page's own background.
    inside->setAutoFillBackground(false);
    m_area->viewport()->setAutoFillBackground(false);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(LookSpace::Large, LookSpace::Large, LookSpace::Large, LookSpace::Large);
    layout->setSpacing(LookSpace::Medium);
    layout->addWidget(m_banners);
    layout->addWidget(m_area, 1);
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
    auto *const problem = new ProblemLine(editor);
    problem->setObjectName(u"problem"_s + QLatin1String(element.name));
    const qsizetype number = m_lines.size();
    m_lines.append({element, frame, caption, editor, frame->Value, problem});
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
    if (auto *const label = qobject_cast<QLabel *>(caption))
        label->setWordWrap(true);
    auto *const row = new QVBoxLayout;
    row->setSpacing(0);
    row->addWidget(frame, 0, Qt::AlignLeft | Qt::AlignTop);
    row->addWidget(problem);
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
    m_counted = 0; // the banner gets its new text
    judgeAll();
}

/// Arranges captions and values in two columns; the widest caption determines the width, up to a limit.
void ElementsPage::arrange()
{
    const QFontMetrics metrics = fontMetrics();
    const int limit = besideFont(longestCaption, metrics);
    const int height = HeightOf(LookHeight::Field, metrics);
    QPalette colors;
    colors.setColor(QPalette::WindowText, ColorOf(LookColor::Text2, palette()));
    int widest = 0;
    for (const Line &line : std::as_const(m_lines)) {
        if (auto *const label = qobject_cast<QLabel *>(line.caption)) {
            label->setPalette(colors);
            widest = std::max(
                widest,
                std::min(limit, label->fontMetrics().size(Qt::TextShowMnemonic, label->text()).width() + 2));
        } else {
            widest = std::max(widest, line.caption->sizeHint().width());
        }
    }
    const int left = widest + LookSpace::Large;
    for (const Line &line : std::as_const(m_lines)) {
        int width = besideFont(widthOf(line.element.kind), metrics);
        if (line.element.kind == PageElement::Kind::List)
            width = std::max(width, line.editor->sizeHint().width());
        line.caption->setGeometry(0, 0, widest, height);
        line.editor->setGeometry(left, 0, width, height);
        line.frame->setFixedHeight(height);
        line.frame->setMinimumWidth(left + width);
        line.frame->resize(left + width, height);
        line.value->AdoptDesign(false);
        line.problem->setContentsMargins(left, 0, 0, 0);
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
    judgeAll();
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

/// What is wrong with the value of a valid entry, or that it is missing; blank when nothing is.
QString ElementsPage::problemOf(const Line &line) const
{
    return line.element.problem ? line.element.problem(valueOf(line)) : QString();
}

QList<ElementsPage::Problem> ElementsPage::problems() const
{
    QList<Problem> invalid;
    QList<Problem> others;
    for (const Line &line : m_lines) {
        const QString name = QLatin1String(line.element.name);
        const QString caption = translated(line.element.caption);
        if (const QString reason = reasonOf(line); !reason.isEmpty()) {
            const QString sentence =
                line.fits ? tr("%1: \"%2\" cannot be used. %3").arg(caption, quoted(valueOf(line)), reason)
                          : tr("%1: %2").arg(caption, reason);
            invalid.append({name, sentence});
        } else if (const QString problem = problemOf(line); !problem.isEmpty()) {
            others.append({name, problem});
        }
    }
    return invalid + others;
}

ProblemLine *ElementsPage::problemLine(const QString &element) const
{
    const auto found = std::find_if(m_lines.cbegin(), m_lines.cend(), [&element](const Line &line) {
        return element == QLatin1String(line.element.name);
    });
    return found == m_lines.cend() ? nullptr : found->problem;
}

bool ElementsPage::enter(const QString &element)
{
    for (const Line &line : std::as_const(m_lines)) {
        if (element != QLatin1String(line.element.name))
            continue;
        m_area->ensureWidgetVisible(line.problem->isHidden() ? line.frame : line.problem);
        m_area->ensureWidgetVisible(line.frame);
        line.editor->setFocus(Qt::OtherFocusReason);
        if (auto *const field = qobject_cast<QLineEdit *>(line.editor))
            field->selectAll();
        return true;
    }
    return false;
}

QString ElementsPage::entered() const
{
    const QWidget *const focus = window()->focusWidget();
    for (const Line &line : m_lines) {
        if (focus && line.frame->isAncestorOf(focus))
            return QLatin1String(line.element.name);
    }
    return {};
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
    clearMended();
    Q_EMIT edited();
}

/// Shows what is wrong with an entry: a missing one is still to be done, another one is wrong.
void ElementsPage::judge(const Line &line)
{
    if (const QString reason = reasonOf(line); !reason.isEmpty())
        line.problem->showProblem(reason);
    else if (valueOf(line).isEmpty())
        line.problem->showAdvice(problemOf(line));
    else
        line.problem->showProblem(problemOf(line));
}

void ElementsPage::judgeAll()
{
    for (const Line &line : std::as_const(m_lines))
        judge(line);
    showCount();
}

/// Removes the sentences of entries that are right by now.
void ElementsPage::clearMended()
{
    for (const Line &line : std::as_const(m_lines)) {
        if (line.problem->mark() != FieldMark::None && reasonOf(line).isEmpty() && problemOf(line).isEmpty())
            line.problem->clear();
    }
    showCount();
}

void ElementsPage::showCount()
{
    const qsizetype count = std::count_if(m_lines.cbegin(), m_lines.cend(), [](const Line &line) {
        return line.problem->mark() != FieldMark::None;
    });
    if (std::exchange(m_counted, count) == count)
        return;
    if (count == 0) {
        m_banners->dismiss(fieldsTopic);
        return;
    }
    const auto enterFirst = [this] {
        const auto first = std::find_if(m_lines.cbegin(), m_lines.cend(), [](const Line &line) {
            return line.problem->mark() != FieldMark::None;
        });
        if (first != m_lines.cend())
            enter(QLatin1String(first->element.name));
    };
    m_banners->showBanner(
        {BannerKind::Warn,
         tr("%n field(s) need another look before the quote is complete.", nullptr, static_cast<int>(count)),
         tr("Go to it"), enterFirst, fieldsTopic});
    order();
}

/// Puts the banner's buttons before the fields. The order counts in a window only.
void ElementsPage::order()
{
    if (m_lines.isEmpty() || !isVisible())
        return;
    const Line &first = m_lines.constFirst();
    for (const Banner *const banner : m_banners->banners())
        putBefore(switchOf(first) ? *first.caption : *first.editor, *banner);
}

void ElementsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    order();
}

void ElementsPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::LanguageChange:
        retext();
        // After the fields have translated their messages.
        QMetaObject::invokeMethod(
            this, [this] { judgeAll(); }, Qt::QueuedConnection);
        break;
    case QEvent::FontChange:
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
        arrange();
        break;
    default:
        break;
    }
}

bool ElementsPage::eventFilter(QObject *watched, QEvent *event)
{
    // A field changes its tooltip when its entry becomes valid or invalid.
    if (event->type() == QEvent::ToolTipChange)
        notice();
    if (event->type() == QEvent::FocusOut) {
        QMetaObject::invokeMethod(
            this,
            [this, watched] {
                notice();
                for (const Line &line : std::as_const(m_lines)) {
                    if (line.editor == watched)
                        judge(line);
                }
                showCount();
            },
            Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace QuoteDesk
