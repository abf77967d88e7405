#include "look/ProblemLine.h"

#include "look/GlyphLabel.h"
#include "look/TextLabel.h"

#include <QAccessible>
#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

ProblemLine::ProblemLine(QWidget *field, QWidget *parent)
    : QWidget(parent), m_field(field), m_picture(new GlyphLabel(14, this)),
      m_text(new TextLabel(LookFont::Caption, LookColor::ErrorText, this))
{
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, LookSpace::Grid, 0, 0);
    row->setSpacing(6);
    row->addWidget(m_picture, 0, Qt::AlignTop);
    m_text->setWordWrap(true);
    m_text->setObjectName(u"lblProblem"_s);
    row->addWidget(m_text, 1);
    hide();
}

ProblemLine::~ProblemLine() = default;

void ProblemLine::showProblem(const QString &sentence)
{
    show(FieldMark::Problem, sentence);
}

void ProblemLine::showAdvice(const QString &sentence)
{
    show(FieldMark::Advice, sentence);
}

void ProblemLine::clear()
{
    show(FieldMark::None, {});
}

QString ProblemLine::text() const
{
    return m_text->text();
}

void ProblemLine::show(FieldMark mark, const QString &sentence)
{
    const FieldMark shown = sentence.isEmpty() ? FieldMark::None : mark;
    if (shown == m_mark && sentence == m_text->text())
        return;
    const bool isProblem = shown == FieldMark::Problem;
    m_picture->setGlyph(isProblem ? u"error"_s : u"warning"_s,
                        isProblem ? LookColor::ErrorText : LookColor::WarnText);
    m_text->setLookColor(isProblem ? LookColor::ErrorText : LookColor::WarnText);
    m_text->setText(sentence);
    if (m_field) {
        if (m_mark == FieldMark::None)
            m_fieldDescription = m_field->accessibleDescription();
        m_field->setAccessibleDescription(shown == FieldMark::None ? m_fieldDescription : sentence);
        setFieldMark(*m_field, shown);
    }
    m_mark = shown;
    setVisible(shown != FieldMark::None);
}

} // namespace QuoteDesk
