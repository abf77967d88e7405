#include "look/EmptyState.h"

#include "look/GlyphLabel.h"
#include "look/TextLabel.h"

#include "toolkit/Glyphs.h"

#include <QEvent>
#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{

EmptyState::EmptyState(QWidget *parent)
    : QWidget(parent), m_content(new QWidget(this)), m_picture(new GlyphLabel(32, m_content)),
      m_heading(new TextLabel(LookFont::Heading, LookColor::Text, m_content)),
      m_sentence(new TextLabel(LookFont::Body, LookColor::Text2, m_content)), m_buttons(new QHBoxLayout)
{
    m_heading->setObjectName(u"lblEmptyHeading"_s);
    m_sentence->setObjectName(u"lblEmptySentence"_s);
    auto *const column = new QVBoxLayout(m_content);
    column->setContentsMargins(LookSpace::Large, LookSpace::Small, LookSpace::Large, LookSpace::Small);
    column->setSpacing(LookSpace::Grid);
    column->addWidget(m_picture, 0, Qt::AlignHCenter);
    column->addSpacing(LookSpace::Grid);
    for (TextLabel *label : {m_heading, m_sentence}) {
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        label->setWordWrap(true);
        column->addWidget(label);
    }
    column->addSpacing(LookSpace::Small);
    m_buttons->setSpacing(LookSpace::Small);
    m_buttons->addStretch();
    m_buttons->addStretch();
    column->addLayout(m_buttons);
}

EmptyState::~EmptyState() = default;

void EmptyState::setContent(const QString &glyph, const QString &heading, const QString &sentence)
{
    m_picture->setGlyph(glyph, LookColor::Field);
    m_heading->setText(heading);
    m_sentence->setText(sentence);
    m_sentence->setVisible(!sentence.isEmpty());
    updateGeometry();
    place();
}

QPushButton *EmptyState::addButton(const QString &caption, const QString &glyph, ButtonKind kind)
{
    auto *const button = new QPushButton(caption, m_content);
    button->setAutoDefault(false);
    if (!glyph.isEmpty())
        button->setIcon(GlyphIcon(glyph));
    setButtonKind(*button, kind);
    m_buttons->insertWidget(m_buttons->count() - 1, button);
    updateGeometry();
    place();
    return button;
}

QSize EmptyState::contentSize(int width) const
{
    // A paragraph of more than 80 characters is hard to read.
    const int widest = 80 * fontMetrics().averageCharWidth();
    const int taken = qMax(m_content->minimumSizeHint().width(), qMin(width, widest));
    const QLayout *const column = m_content->layout();
    return {taken, column->hasHeightForWidth() ? column->totalHeightForWidth(taken)
                                               : column->totalSizeHint().height()};
}

QSize EmptyState::sizeHint() const
{
    return contentSize(40 * fontMetrics().averageCharWidth());
}

QSize EmptyState::minimumSizeHint() const
{
    // Not the height at the least width, where the sentence has many lines: in a stack of pages it would make
    // the window too high for a small screen, although it is never that narrow.
    return m_content->minimumSizeHint();
}

void EmptyState::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place();
}

bool EmptyState::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    // A text or a font has changed inside.
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        place();
    }
    return handled;
}

void EmptyState::place()
{
    const QSize size = contentSize(width());
    const int middle = height() * 2 / 5;
    const int top = qMax(0, qMin(middle - size.height() / 2, height() - size.height()));
    m_content->setGeometry((width() - size.width()) / 2, top, size.width(), size.height());
}

} // namespace QuoteDesk
