#include "desk/QuotePreview.h"

#include "desk/ErrorDialog.h"
#include "desk/QuoteTable.h"
#include "look/GlyphLabel.h"
#include "look/Kinds.h"
#include "look/TextLabel.h"
#include "quote/PlainText.h"
#include "quote/QuoteEditor.h"
#include "quote/QuoteForm.h"
#include "quote/QuoteReport.h"
#include "quote/ServerWait.h"
#include "quote/ShownNumbers.h"
#include "quote/SplitChart.h"
#include "store/ShownSplit.h"

#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QDir>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollArea>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The time after a reading in which no further quote is read, in milliseconds.
constexpr int PauseMs = 120;
constexpr int Width = 316;
/// The smallest height of ring and legend, in lines.
constexpr int ChartLines = 15;
/// At least as many funds as the chart names.
constexpr qsizetype NamedFunds = 12;

} // namespace

QuotePreview::QuotePreview(QWidget *parent)
    : QWidget(parent), btnOpen(new QPushButton(this)), btnPdf(new QToolButton(this)),
      btnPrint(new QToolButton(this)), btnMore(new QToolButton(this)), m_scroll(new QScrollArea(this)),
      m_nothing(TextLabel::wrapped(LookFont::Body, LookColor::Text2, this))
{
    setObjectName(u"preview"_s);
    m_nothing->setAlignment(Qt::AlignCenter);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->viewport()->setBackgroundRole(QPalette::Base);
    m_scroll->setWidget(makeContent());
    m_foot = makeFoot();

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(LookSpace::Large, LookSpace::Large, LookSpace::Large, LookSpace::Large);
    layout->setSpacing(LookSpace::Medium);
    layout->addWidget(m_nothing, 1);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(m_foot);

    m_pause.setSingleShot(true);
    m_pause.setInterval(PauseMs);
    connectGuarded(&m_pause, &QTimer::timeout, this, &QuotePreview::readWhenNeeded);
    connect(btnOpen, &QPushButton::clicked, this, &QuotePreview::openWanted);
    connect(btnPdf, &QToolButton::clicked, this, [this] { attempt(this, [this] { savePdf(); }); });
    connect(btnPrint, &QToolButton::clicked, this, [this] { attempt(this, [this] { print(); }); });
    setFixedWidth(besideFont(Width, fontMetrics()));
    showTexts();
    showSummary();
}

QuotePreview::~QuotePreview() = default;

QWidget *QuotePreview::makeContent()
{
    auto *const content = new QWidget;
    content->setBackgroundRole(QPalette::Base);
    m_client = TextLabel::wrapped(LookFont::Heading, LookColor::Text, content);
    m_product = TextLabel::wrapped(LookFont::Body, LookColor::Text2, content);
    m_description = TextLabel::wrapped(LookFont::Body, LookColor::Text, content);
    m_state = new Chip(content);
    m_amountCaption = TextLabel::wrapped(LookFont::Caption, LookColor::Text2, content);
    m_amount = TextLabel::wrapped(LookFont::Figure, LookColor::Text, content);
    m_amount->setWordWrap(false);
    m_chart = new SplitChart(content);
    // The ring takes the room that is left, and does not ask for more.
    m_chart->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    m_note = TextLabel::wrapped(LookFont::Body, LookColor::Text2, content);
    m_changed = TextLabel::wrapped(LookFont::Caption, LookColor::Text2, content);
    m_changedBy = TextLabel::wrapped(LookFont::Body, LookColor::Text, content);
    m_client->setObjectName(u"lblClient"_s);
    m_product->setObjectName(u"lblProduct"_s);
    m_amount->setObjectName(u"lblAmount"_s);
    m_note->setObjectName(u"lblNote"_s);
    m_changed->setObjectName(u"lblChanged"_s);

    auto *const layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_client);
    layout->addWidget(m_product);
    layout->addWidget(m_description);
    layout->addSpacing(LookSpace::Small);
    layout->addWidget(m_state);
    layout->addSpacing(LookSpace::Medium);
    layout->addWidget(m_amountCaption);
    layout->addWidget(m_amount);
    layout->addSpacing(LookSpace::Medium);
    layout->addWidget(m_chart, 1);
    layout->addWidget(m_note);
    layout->addSpacing(LookSpace::Medium);
    layout->addWidget(m_changed);
    layout->addWidget(m_changedBy);
    layout->addStretch();
    return content;
}

QWidget *QuotePreview::makeFoot()
{
    auto *const foot = new QWidget(this);
    setButtonKind(*btnOpen, ButtonKind::Filled);
    btnOpen->setAutoDefault(false);
    btnOpen->setIcon(GlyphIcon(u"open"_s));
    btnPdf->setIcon(GlyphIcon(u"pdf"_s));
    btnPrint->setIcon(GlyphIcon(u"print"_s));
    btnMore->setIcon(GlyphIcon(u"more"_s));
    btnOpen->setObjectName(u"btnOpen"_s);
    btnPdf->setObjectName(u"btnPdf"_s);
    btnPrint->setObjectName(u"btnPrint"_s);
    btnMore->setObjectName(u"btnMore"_s);
    btnMore->setPopupMode(QToolButton::InstantPopup);
    btnMore->setMenu(new QMenu(btnMore));
    auto *const layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(LookSpace::Small);
    layout->addWidget(btnOpen, 1);
    for (QToolButton *const button : {btnPdf, btnPrint, btnMore}) {
        button->setFocusPolicy(Qt::StrongFocus);
        setButtonKind(*button, ButtonKind::Quiet);
        layout->addWidget(button);
    }
    return foot;
}

void QuotePreview::setSession(QuoteSession &session)
{
    m_session = &session;
    connectGuarded(&session.store(), &StoreWorker::answering, this, [this](bool answers) {
        if (!answers)
            return;
        m_read.reset();
        readWhenNeeded();
    });
}

void QuotePreview::setMoreActions(const QList<QAction *> &actions)
{
    btnMore->menu()->clear();
    btnMore->menu()->addActions(actions);
}

void QuotePreview::showTexts()
{
    setAccessibleName(tr("Preview of the chosen quote"));
    btnOpen->setText(tr("Open"));
    btnOpen->setToolTip(tr("Opens the quote (Enter in the list)"));
    btnPdf->setToolTip(tr("Save as PDF"));
    btnPrint->setToolTip(tr("Print"));
    btnMore->setToolTip(tr("More"));
    for (QToolButton *const button : {btnPdf, btnPrint, btnMore})
        button->setAccessibleName(button->toolTip());
    m_amountCaption->setText(tr("Investment"));
    m_nothing->setText(tr("The chosen quote appears here."));
}

void QuotePreview::showQuote(const std::optional<QuoteSummary> &quote)
{
    if (quote == m_quote)
        return;
    const bool isSame = quote && m_quote && quote->quoteID == m_quote->quoteID;
    m_quote = quote;
    showSummary();
    // The former split of the same quote stays until the new one is read.
    if (!isSame) {
        m_read.reset();
        showNote({});
    }
    readWhenNeeded();
}

void QuotePreview::showSummary()
{
    m_scroll->setVisible(m_quote.has_value());
    m_foot->setVisible(m_quote.has_value());
    m_nothing->setVisible(!m_quote);
    if (!m_quote)
        return;
    const ChipState state = stateOf(*m_quote);
    m_client->setText(m_quote->client.isEmpty() ? tr("No client yet")
                                                : wrappedText(shortText(m_quote->client)));
    m_product->setText(shortText(m_quote->product));
    m_description->setText(wrappedText(shortText(m_quote->description)));
    m_description->setVisible(!m_quote->description.trimmed().isEmpty());
    m_state->setChip(chipOf(state, stateText(state)));
    m_amount->setText(shownAmount(m_quote->amount));
    m_changed->setText(tr("Last change, %1").arg(timeInSentence(m_quote->changed, QDate::currentDate())));
    m_changed->setToolTip(wholeTime(m_quote->changed));
    m_changedBy->setText(shortText(m_quote->changedBy));
    m_changedBy->setVisible(!m_quote->changedBy.isEmpty());
}

/// Shows a sentence in place of the split; a blank one leaves the place empty.
void QuotePreview::showNote(const QString &note)
{
    m_chart->hide();
    m_note->setText(note);
    m_note->show();
}

void QuotePreview::readWhenNeeded()
{
    // The end of the pause and of a reading lead here again.
    if (!m_session || !isVisible() || !m_quote || m_read == m_quote || m_isReading || m_pause.isActive())
        return;
    m_pause.start();
    read();
}

void QuotePreview::read()
{
    m_isReading = true;
    ++m_readCount;
    if (!m_session->store().isDirect() && m_chart->isHidden())
        showNote(tr("The funds are being read ..."));
    m_session->store().ask(
        this, [quoteID = m_quote->quoteID](QuoteStore &store) { return store.quote(quoteID); },
        [this, asked = *m_quote](std::future<Quote> answer) {
            m_isReading = false;
            const bool isWanted = m_quote == asked;
            if (isWanted)
                m_read = asked;
            try {
                const Quote quote = answer.get();
                if (isWanted)
                    showSplit(quote);
            } catch (const StoreUnreachable &) {
                showNote(tr("The office's server does not answer. The funds appear when it answers again."));
            } catch (const Exception &error) {
                if (isWanted)
                    showNote(wrappedText(error.message()));
            }
            readWhenNeeded();
        });
}

void QuotePreview::showSplit(const Quote &quote)
{
    const ShownSplit split(quote);
    QStringList names;
    QList<qsizetype> largest;
    for (qsizetype i = 0; i < split.funds.size(); ++i) {
        names.append(split.funds.at(i).name);
        largest.append(i);
    }
    // The chart names the largest funds only.
    const auto named = largest.begin() + std::min<qsizetype>(largest.size(), NamedFunds);
    std::partial_sort(largest.begin(), named, largest.end(), [&split](qsizetype a, qsizetype b) {
        return split.funds.at(a).percent > split.funds.at(b).percent;
    });
    for (auto place = largest.begin(); place != named; ++place)
        names[*place] = m_session->catalogue().shownFundName(split.funds.at(*place).fundID, names.at(*place));
    m_chart->show(split, split.funds, names);
    m_chart->setMinimumHeight(fontMetrics().height() * ChartLines);
    m_note->hide();
    m_chart->show();
}

void QuotePreview::withEditor(const std::function<void(QuoteEditor &)> &work)
{
    if (!m_session || !m_quote)
        return;
    const Quote quote = fetch(m_session->store(), this, [quoteID = m_quote->quoteID](QuoteStore &store) {
        return store.quote(quoteID);
    });
    QuoteEditor editor(*m_session, quote);
    work(editor);
}

void QuotePreview::print()
{
    withEditor([this](QuoteEditor &editor) { editor.print(this); });
}

void QuotePreview::savePdf()
{
    withEditor([this](QuoteEditor &editor) {
        const QString path = m_session->adviser().chooseFile(this, editor.report().fileName() + u".pdf"_s);
        if (path.isEmpty())
            return;
        editor.exportPdf(path);
        Q_EMIT told(tr("Saved as %1").arg(QDir::toNativeSeparators(path)));
    });
}

void QuotePreview::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::LanguageChange:
        GuardedCall([this] {
            showTexts();
            showSummary();
            // The funds get their names in the other language.
            m_read.reset();
            m_pause.stop();
            readWhenNeeded();
        });
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        setFixedWidth(besideFont(Width, fontMetrics()));
        break;
    default:
        break;
    }
}

void QuotePreview::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT closeWanted();
    else
        QWidget::keyPressEvent(event);
}

void QuotePreview::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(QPen(ColorOf(LookColor::Line, palette()), 0));
    const int edge = layoutDirection() == Qt::RightToLeft ? width() - 1 : 0;
    painter.drawLine(edge, 0, edge, height());
}

void QuotePreview::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    GuardedCall([this] { readWhenNeeded(); });
}

} // namespace QuoteDesk
