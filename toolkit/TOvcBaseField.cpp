#include "toolkit/TOvcBaseField.h"

#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"
#include "toolkit/TColors.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace
{
/// The picture in a field with an error in the application look.
QIcon errorIcon(const QWidget &field)
{
    constexpr int size = 16;
    const qreal ratio = field.devicePixelRatioF();
    QPixmap picture(QSize(size, size) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    PaintGlyph(painter, QRect(0, 0, size, size), u"error"_s, ColorOf(LookColor::ErrorText, field.palette()));
    return picture;
}

/// @p text for a tool tip. The text quotes the entry, which must not be interpreted as markup.
QString plainTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? u"<p>%1</p>"_s.arg(text.toHtmlEscaped()) : text;
}
} // namespace

/// Calls the field's Judge as the validator of the line edit.
class TOvcBaseField::Check : public QValidator
{
public:
    explicit Check(TOvcBaseField *field) : QValidator(field), m_field(field) {}

    State validate(QString &text, int &) const override
    {
        const Verdict verdict = m_field->Judge(text);
        if (verdict.state == Invalid)
            refusal = verdict.problem;
        return verdict.state;
    }

    mutable QString refusal;

private:
    TOvcBaseField *m_field;
};

TOvcBaseField::TOvcBaseField(QWidget *parent)
    : QLineEdit(parent), m_check(new Check(this)),
      m_warning(addAction(GlyphIcon(u"warning"_s), QLineEdit::TrailingPosition))
{
    m_warning->setVisible(false);
    setValidator(m_check);
    connect(this, &QLineEdit::textChanged, this, [this] { Recheck(); });
    connect(this, &QLineEdit::inputRejected, this, [this] { explainRefusal(); });
    applyColours();
}

TOvcBaseField::~TOvcBaseField() = default;

void TOvcBaseField::setPictureMask(const QString &mask)
{
    if (m_mask == mask)
        return;
    m_mask = mask;
    MaskChanged();
}

void TOvcBaseField::Recheck()
{
    const Verdict verdict = Judge(text());
    showError(verdict.unfinished && hasFocus() ? QString() : verdict.problem);
}

void TOvcBaseField::showError(const QString &problem)
{
    if (problem == m_error)
        return;
    if (m_error.isEmpty())
        m_hint = toolTip();
    m_error = problem;
    setToolTip(m_error.isEmpty() ? m_hint : plainTip(m_error));
    setAccessibleDescription(m_error);
    m_warning->setToolTip(plainTip(m_error));
    m_warning->setVisible(HasError());
    applyColours();
}

void TOvcBaseField::applyColours()
{
    if (m_colouring)
        return;
    m_colouring = true;
    setPalette(QPalette());
    QPalette colours = palette();
    colours.setColor(QPalette::Disabled, QPalette::Base, ColorOf(TColor::clBtnFace, colours));
    colours.setColor(QPalette::Disabled, QPalette::Text, ColorOf(TColor::clGrayText, colours));
    const bool inLook = CurrentLook() == Look::Application;
    m_warning->setIcon(inLook ? errorIcon(*this) : GlyphIcon(u"warning"_s));
    if (inLook)
        colours.setColor(QPalette::Disabled, QPalette::Base, ColorOf(LookColor::Raised, colours));
    if (HasError() && !inLook) {
        const QColor red = ColorOf(TColor::clRed, palette());
        const QColor black = ColorOf(TColor::clBlack, palette());
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            colours.setColor(group, QPalette::Base, red);
            colours.setColor(group, QPalette::Text, black);
        }
    }
    setPalette(colours);
    m_colouring = false;
}

void TOvcBaseField::explainRefusal()
{
    // QLineEdit cuts off a text that is too long without calling the validator.
    const QString reason =
        m_check->refusal.isEmpty() ? tr("At most %1 characters.").arg(maxLength()) : m_check->refusal;
    m_check->refusal.clear();
    QToolTip::showText(mapToGlobal(QPoint(0, height())), plainTip(reason), this);
}

void TOvcBaseField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) {
        m_overwriting = !m_overwriting;
        update();
        return;
    }
    const QString typed = event->text();
    const bool types = !typed.isEmpty() && typed.at(0).isPrint() &&
                       !(event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier));
    const bool replaces =
        m_overwriting && types && !isReadOnly() && !hasSelectedText() && cursorPosition() < text().size();
    if (replaces)
        setSelection(cursorPosition(), 1);
    QLineEdit::keyPressEvent(event);
    if (replaces && hasSelectedText())
        setCursorPosition(selectionStart());
}

void TOvcBaseField::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    Recheck();
}

void TOvcBaseField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    Recheck();
}

void TOvcBaseField::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (HasError() && CurrentLook() == Look::Application) {
        QPainter edge(this);
        edge.setRenderHint(QPainter::Antialiasing);
        edge.setPen(QPen(ColorOf(LookColor::ErrorMark, palette()), LookSpace::Ring));
        edge.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), LookSpace::ControlRadius,
                             LookSpace::ControlRadius);
    }
    if (!m_overwriting || !hasFocus() || hasSelectedText() || cursorPosition() >= text().size())
        return;
    const QString covered = text().mid(cursorPosition(), 1);
    const QRect caret = cursorRect();
    const QRect block(caret.center().x(), caret.top(), fontMetrics().horizontalAdvance(covered),
                      caret.height());
    QPainter painter(this);
    painter.fillRect(block, palette().text());
    painter.setPen(palette().color(QPalette::Base));
    painter.drawText(block, Qt::AlignLeft | Qt::AlignVCenter, covered);
}

void TOvcBaseField::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        applyColours();
    else if (event->type() == QEvent::LanguageChange)
        Recheck();
}
