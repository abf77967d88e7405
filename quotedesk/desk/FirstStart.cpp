#include "desk/FirstStart.h"

#include "look/GlyphLabel.h"
#include "look/Kinds.h"
#include "look/TextLabel.h"

#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int StartWidth = 326;
constexpr int StepWidth = 206;
constexpr int Wide = LookSpace::Large + LookSpace::Small;
constexpr int ProgramPicture = 72;
/// A lower page has no room for the program's picture.
constexpr int LowPage = 560;

} // namespace

FirstStart::FirstStart(QWidget *parent)
    : QWidget(parent), btnImport(new QPushButton), btnTry(new QPushButton), btnOffice(new QPushButton),
      m_title(TextLabel::wrapped(LookFont::Title, LookColor::Text, this)),
      m_question(TextLabel::wrapped(LookFont::Body, LookColor::Text2, this)),
      m_importKey(TextLabel::wrapped(LookFont::Caption, LookColor::Text2, this)),
      m_officeText(TextLabel::wrapped(LookFont::Body, LookColor::Text2, this)), m_content(new QWidget)
{
    btnImport->setObjectName(u"btnImport"_s);
    btnTry->setObjectName(u"btnTry"_s);
    btnOffice->setObjectName(u"btnOffice"_s);
    setButtonKind(*btnImport, ButtonKind::Filled);
    setButtonKind(*btnOffice, ButtonKind::Flat);
    btnOffice->setCheckable(true);
    for (QPushButton *const button : {btnImport, btnTry, btnOffice})
        button->setAutoDefault(true); // Enter presses the button with the focus
    for (TextLabel *const label : {m_title, m_question, m_officeText})
        label->setAlignment(Qt::AlignHCenter);
    m_importKey->setWordWrap(false);
    m_officeText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_officeText->hide();

    auto *const picture = new QLabel(m_content);
    picture->setObjectName(u"lblPicture"_s);
    picture->setAlignment(Qt::AlignHCenter);
    picture->setPixmap(
        QApplication::windowIcon().pixmap(QSize(ProgramPicture, ProgramPicture), devicePixelRatioF()));
    auto *const starts = new QHBoxLayout;
    starts->setSpacing(LookSpace::Large);
    starts->addStretch();
    starts->addWidget(makeStart(u"import"_s, m_importHeading, m_importText, btnImport, m_importKey));
    starts->addWidget(makeStart(u"funds"_s, m_tryHeading, m_tryText, btnTry, nullptr));
    starts->addStretch();

    auto *const layout = new QVBoxLayout(m_content);
    layout->setContentsMargins(LookSpace::Large, LookSpace::Large, LookSpace::Large, LookSpace::Large);
    layout->setSpacing(LookSpace::Small);
    layout->addStretch();
    layout->addWidget(picture);
    layout->addWidget(m_title);
    layout->addWidget(m_question);
    layout->addSpacing(LookSpace::Large);
    layout->addLayout(starts);
    layout->addSpacing(LookSpace::Large);
    layout->addWidget(makeSteps());
    layout->addWidget(btnOffice, 0, Qt::AlignHCenter);
    layout->addWidget(m_officeText);
    layout->addStretch();
    auto *const scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(m_content);
    auto *const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
    setFocusProxy(btnImport);

    connect(btnImport, &QPushButton::clicked, this, &FirstStart::importWanted);
    connect(btnTry, &QPushButton::clicked, this, &FirstStart::tryWanted);
    connect(btnOffice, &QPushButton::toggled, m_officeText, &QWidget::setVisible);
    showTexts();
}

FirstStart::~FirstStart() = default;

QWidget *FirstStart::makeStart(const QString &glyph, TextLabel *&heading, TextLabel *&text,
                               QPushButton *button, QWidget *beside)
{
    auto *const panel = new Panel(m_content);
    auto *const picture = new GlyphLabel(24, panel);
    picture->setGlyph(glyph, LookColor::AccentText);
    heading = TextLabel::wrapped(LookFont::Heading, LookColor::Text, panel);
    text = TextLabel::wrapped(LookFont::Body, LookColor::Text2, panel);
    auto *const foot = new QHBoxLayout;
    foot->setSpacing(LookSpace::Small);
    foot->addWidget(button);
    if (beside)
        foot->addWidget(beside);
    foot->addStretch();
    auto *const layout = new QVBoxLayout(panel);
    layout->setContentsMargins(Wide, Wide, Wide, Wide);
    layout->setSpacing(LookSpace::Small);
    layout->addWidget(picture, 0, Qt::AlignLeft);
    layout->addWidget(heading);
    layout->addWidget(text, 1, Qt::AlignTop);
    layout->addSpacing(LookSpace::Small);
    layout->addLayout(foot);
    panel->setFixedWidth(besideFont(StartWidth, fontMetrics()));
    return panel;
}

QWidget *FirstStart::makeSteps()
{
    auto *const steps = new QWidget(m_content);
    auto *const layout = new QHBoxLayout(steps);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Wide);
    layout->addStretch();
    for (TextLabel *&step : m_steps) {
        step = TextLabel::wrapped(LookFont::Body, LookColor::Text, steps);
        step->setMaximumWidth(besideFont(StepWidth, fontMetrics()));
        layout->addWidget(step, 1, Qt::AlignTop);
    }
    layout->addStretch();
    return steps;
}

void FirstStart::setFundCount(int count)
{
    if (std::exchange(m_fundCount, count) != count)
        showTexts();
}

void FirstStart::showTexts()
{
    setAccessibleName(tr("First start"));
    m_title->setText(tr("Welcome to Quote Desk"));
    m_question->setText(tr("A quote needs funds to choose from. Where should they come from?"));
    m_importHeading->setText(tr("Import my fund catalogue"));
    m_importText->setText(
        tr("A CSV file, plain or packed (.gz). It replaces the sample funds; Quote Desk asks before "
           "a fund goes or gets another name."));
    btnImport->setText(tr("Choose file ..."));
    btnImport->setAccessibleName(m_importHeading->text());
    m_importKey->setText(tr("Enter"));
    m_tryHeading->setText(tr("Try with sample data"));
    m_tryText->setText(
        tr("%n invented fund(s) are already here. A first quote begins at once; your own catalogue "
           "can follow at any time.",
           nullptr, m_fundCount));
    btnTry->setText(tr("Begin a quote"));
    btnTry->setAccessibleName(m_tryHeading->text());
    m_steps[0]->setText(tr("1  Begin a quote: the product, and the client when you know."));
    m_steps[1]->setText(tr("2  Choose the funds and split the investment."));
    m_steps[2]->setText(tr("3  Print the quote, or save it as PDF."));
    btnOffice->setText(tr("Does your office share a database?"));
    m_officeText->setText(tr(
        "Start Quote Desk with the address of the database, for example\n"
        "quotedesk --database postgresql://anna@server/quotes\n"
        "Whoever looks after the server knows the address. Put it into the program's shortcut, so that it is "
        "there every time. Without an address the quotes are kept in your own folder."));
}

void FirstStart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        GuardedCall([this] { showTexts(); });
}

void FirstStart::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        btnImport->click();
    else
        QWidget::keyPressEvent(event);
}

void FirstStart::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    findChild<QLabel *>(u"lblPicture"_s)->setVisible(height() >= LowPage);
}

} // namespace QuoteDesk
