#include "quote/FundsPage.h"

#include "quote/EditedQuote.h"
#include "quote/FundClipboard.h"
#include "quote/FundLines.h"
#include "quote/FundQuestions.h"
#include "quote/InvestmentField.h"
#include "quote/KeptFundDelegate.h"
#include "quote/PageParts.h"
#include "quote/PlainText.h"
#include "quote/QuoteReport.h"
#include "quote/QuoteSession.h"
#include "quote/SmallScreen.h"

#include "catalogue/CatalogueProviders.h"
#include "look/Banner.h"
#include "look/EmptyState.h"
#include "look/GlyphLabel.h"
#include "look/ProblemLine.h"

#include "data/Format.h"
#include "funds/AllocationRemainder.h"
#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"
#include "toolkit/TApplication.h"

#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QUndoCommand>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int stepsKept = 500;
constexpr qsizetype keptRowsShown = 4;
constexpr int lowMargin = 2;
constexpr int roomForGrid = 150; // at least, in pixels, where the screen allows it
constexpr int wideWindow = 1100; // from here on there is room for the legend
constexpr int chartWidth = 308;
constexpr int narrowChartWidth = 178; // without the legend

// Topics of banners.
constexpr auto entryTopic = "entry"_L1;
constexpr auto pasteTopic = "paste"_L1;

// The background of the frame's remainder panel; its text is black.
constexpr auto remainderColour = "clGreen5";
constexpr auto overAllocationColour = "clRed";

} // namespace

/// A change of the split. The page has already made it when the step is pushed.
class FundsPage::Step : public QUndoCommand
{
public:
    Step(FundsPage &page, Split before, Split after, const QString &text)
        : QUndoCommand(text), m_page(page), m_before(std::move(before)), m_after(std::move(after))
    {
    }
    void undo() override { show(m_before); }
    void redo() override
    {
        if (std::exchange(m_made, true))
            show(m_after);
    }

private:
    void show(const Split &split)
    {
        GuardedCall([&] {
            m_page.display(split);
            Q_EMIT m_page.edited();
        });
    }

    FundsPage &m_page;
    Split m_before;
    Split m_after;
    bool m_made = false;
};

FundsPage::FundsPage(QWidget *parent) : QWidget(parent)
{
    setupUi(this);
    amountProblem = new ProblemLine(edAmount, this);
    banners = new BannerStack(this);
    m_quote = std::make_shared<EditedQuote>(Quote());
    m_investment = new InvestmentField(*edAmount, *amountProblem);
    m_undo.setUndoLimit(stepsKept);
    layOut();
    layOutSplit();
    layOutEmptyState();
    order();
    adoptFont();
    bindGrid();
    bindToolBar();
    bindFields();
}

FundsPage::~FundsPage()
{
    fraFundAllocation->FundGrid->removeEventFilter(this);
    fraFundAllocation->FundGrid->viewport()->removeEventFilter(this);
}

void FundsPage::layOut()
{
    layFunds->insertWidget(1, amountProblem);
    layFunds->insertWidget(2, banners);
    rbAmount->setSecond(true);
    btnFactSheet->setIcon(GlyphIcon(u"selector-fundsheet"_s));
    btnCopy->setIcon(GlyphIcon(u"duplicate"_s));
    btnPaste->setIcon(GlyphIcon(u"paste"_s));
    setSmall(*btnRemoveKept);
    lblKept->setLookColor(LookColor::WarnText);
    lstKept->setItemDelegate(new KeptFundDelegate(*fraFundAllocation->FundGrid, lstKept));
    pnlKept->hide();
    lblNames->hide();
    // Quote Desk has no use for these two commands.
    fraFundAllocation->fraFundToolBar->sbtDuplicate->hide();
    fraFundAllocation->Set_ShowButtonGuarantee(false);
}

/// Completes the panel with the chart: the state of the split, and the number of funds.
void FundsPage::layOutSplit()
{
    m_statePicture = new GlyphLabel(18, pnlSplit);
    lblState = new TextLabel(LookFont::Body, LookColor::Text2, pnlSplit);
    lblState->setObjectName(u"lblState"_s);
    lblState->setWordWrap(true);
    auto *const state = new QHBoxLayout;
    state->setSpacing(LookSpace::Small);
    state->addWidget(m_statePicture, 0, Qt::AlignTop);
    state->addWidget(lblState, 1);
    laySplit->addLayout(state);
    laySplit->addWidget(new Separator(pnlSplit));
    m_countCaption = new FieldLabel(pnlSplit);
    m_countCaption->setWordWrap(true);
    lblCount = new TextLabel(LookFont::Strong, LookColor::Text, pnlSplit);
    lblCount->setObjectName(u"lblCount"_s);
    m_countLayout = new QBoxLayout(QBoxLayout::LeftToRight);
    m_countLayout->setSpacing(0);
    m_countLayout->addWidget(m_countCaption, 1);
    m_countLayout->addWidget(lblCount);
    laySplit->addLayout(m_countLayout);
}

void FundsPage::layOutEmptyState()
{
    // Above the grid and not in it, because the children of a grid are its cells to screen readers.
    emptyState = new EmptyState(pnlAllocation);
    emptyState->setObjectName(u"emptyState"_s);
    btnChoose = emptyState->addButton({}, u"selector-add"_s, ButtonKind::Filled);
    btnChoose->setObjectName(u"btnChoose"_s);
    emptyState->hide();
    fraFundAllocation->FundGrid->viewport()->installEventFilter(this);
    connectGuarded(btnChoose, &QAbstractButton::clicked, this,
                   [this] { fraFundAllocation->fraFundToolBar->sbtFunds->click(); });
}

/// The widgets that the design does not know follow in the tab order where they stand.
void FundsPage::order()
{
    setTabOrder(fraFundAllocation->FundGrid, btnChoose);
    setTabOrder(btnChoose, lstKept);
    setTabOrder(lstKept, btnRemoveKept);
}

void FundsPage::adoptFont()
{
    constexpr int inset = 10; // on both sides of the text
    const QFont strong = FontOf(LookFont::Heading, font());
    const QFontMetrics metrics(strong, this);
    if (edAmount->font() != strong)
        edAmount->setFont(strong);
    const int warning = metrics.height();
    edAmount->setFixedWidth(metrics.horizontalAdvance(u"9,999,999,999.99"_s) + 2 * inset + warning);
    edAmount->setFixedHeight(HeightOf(LookHeight::Field, fontMetrics()));
    arrange();
}

QSize FundsPage::minimumSizeHint() const
{
    // The chart and the buttons beside the amount go when there is no room for them.
    const QMargins margins = layPage->contentsMargins();
    int row = layInvestment->minimumSize().width();
    if (!pnlCommands->isHidden())
        row -= pnlCommands->minimumSizeHint().width() + layInvestment->spacing();
    const QSize funds = layFunds->minimumSize();
    const int width = std::max(row, pnlAllocation->minimumSizeHint().width());
    return {width + margins.left() + margins.right(), funds.height() + margins.top() + margins.bottom()};
}

/// Shows as much beside the funds as the width has room for.
void FundsPage::arrange()
{
    const bool isLow = isLowScreen(*this);
    const bool isWide = window()->width() >= wideWindow;
    const int margin = isLow ? lowMargin : isWide ? LookSpace::Large : LookSpace::Medium;
    layPage->setContentsMargins(margin, margin, margin, margin);
    layPage->setSpacing(margin);
    layFunds->setSpacing(isLow ? lowMargin : LookSpace::Medium);
    const int chartRoom = besideFont(isWide ? chartWidth : narrowChartWidth, fontMetrics());
    const int left = minimumSizeHint().width() - margin;
    const bool hasChart = !isLow && left + chartRoom + margin <= width();
    chart->setLegend(isWide);
    pnlSplit->setFixedWidth(chartRoom);
    pnlSplit->setVisible(hasChart);
    m_countLayout->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    const int room = width() - 2 * margin - (hasChart ? chartRoom + margin : 0);
    const int row = layInvestment->minimumSize().width() +
                    (pnlCommands->isHidden() ? pnlCommands->minimumSizeHint().width() : 0);
    pnlCommands->setVisible(!isLow && row <= room);
}

/// Places the empty state over the grid's rows. In little room it is left to the tool bar to say what to do.
void FundsPage::placeEmptyState()
{
    const QWidget &rows = *fraFundAllocation->FundGrid->viewport();
    const QRect place(rows.mapTo(pnlAllocation, QPoint(0, 0)), rows.size());
    const bool isEmpty = m_ready && fraFundAllocation->FundGrid->RowCount() == 0;
    const QSize needed = isEmpty ? emptyState->minimumSizeHint() : QSize();
    const bool fits = needed.height() <= place.height() && needed.width() <= place.width();
    if (emptyState->isAncestorOf(focusWidget()) && !isEmpty)
        fraFundAllocation->FundGrid->setFocus();
    emptyState->setGeometry(place);
    emptyState->setVisible(isEmpty && fits);
    emptyState->raise();
}

void FundsPage::bindGrid()
{
    TtsGrid &grid = *fraFundAllocation->FundGrid;
    grid.installEventFilter(this);
    // The frame initialises itself after its first paint; funds set before that would be lost.
    connectGuarded(fraFundAllocation, &QuoteAllocation::initialized, this, &FundsPage::start);
    connectGuarded(fraFundAllocation, &QuoteAllocation::cellEntered, this, &FundsPage::recordEntry);
    connectGuarded(&grid, &TtsGrid::CellEdited, this, [this](int, int row) {
        if (m_displaying || !m_ready)
            return;
        takeRow(row);
        refresh();
    });
    connect(&grid, &TtsGrid::RowChanged, this, [this] { showCommands(); });
    connect(fraFundAllocation->pnlRemainAmount, &TPanel::captionChanged, this, [this] { showRest(); });
    connect(fraFundAllocation, &QuoteAllocation::entryTold, this, &FundsPage::tell);
    // The rows of the funds that are no longer offered follow the columns of the grid.
    connect(grid.horizontalHeader(), &QHeaderView::sectionResized, lstKept->viewport(),
            qOverload<>(&QWidget::update));
}

void FundsPage::bindToolBar()
{
    // The frame's keys work while the frame has the focus. The page has only this frame, so they work on the
    // whole page.
    for (QShortcut *const key :
         fraFundAllocation->findChildren<QShortcut *>(QString(), Qt::FindDirectChildrenOnly))
        key->setContext(Qt::WindowShortcut);
    const TfraFundToolBar &bar = *fraFundAllocation->fraFundToolBar;
    // Keys and buttons do not take the focus, so an edit in progress is applied before the command runs.
    for (TSpeedButton *const button : bar.findChildren<TSpeedButton *>()) {
        button->installEventFilter(this);
        connectGuarded(button, &QAbstractButton::pressed, this, &FundsPage::commit);
    }
    connectGuarded(bar.sbtFunds, &QAbstractButton::pressed, this, &FundsPage::provideAll);
    // The frame has connected the buttons first, so each command has run when it is recorded here.
    connectGuarded(bar.sbtFunds, &QAbstractButton::clicked, this, [this] {
        record(tr("choice of funds"));
        askQuestions();
    });
    connectGuarded(bar.sbtRemove, &QAbstractButton::clicked, this, [this] { record(tr("removal")); });
    connectGuarded(bar.sbtClear, &QAbstractButton::clicked, this, [this] { record(tr("clearing")); });
    connectGuarded(bar.sbtAllocateAmount, &QAbstractButton::clicked, this, &FundsPage::recordAllocation);
    connectGuarded(bar.sbtResetToZero, &QAbstractButton::clicked, this, [this] { record(tr("reset")); });
    connectGuarded(fraFundAllocation, &TfraFundAllocation::InvestedClicked, this,
                   [this] { ask(m_offered.names().fund(currentFund().fundID).groupID); });
}

void FundsPage::bindFields()
{
    connectGuarded(rbAmount, &QRadioButton::toggled, this, &FundsPage::takeMode);
    connectGuarded(m_investment, &InvestmentField::entered, this, &FundsPage::takeInvestment);
    connectGuarded(m_investment, &InvestmentField::edited, this, [this] {
        m_investment->writeInto(*m_quote);
        Q_EMIT edited();
    });
    connectGuarded(btnFactSheet, &QAbstractButton::clicked, this, &FundsPage::openFactSheet);
    connectGuarded(btnCopy, &QAbstractButton::clicked, this, &FundsPage::copyFunds);
    connectGuarded(btnPaste, &QAbstractButton::clicked, this, &FundsPage::pasteFunds);
    connectGuarded(btnRemoveKept, &QAbstractButton::clicked, this, &FundsPage::removeKept);
    connect(lstKept, &QListWidget::itemSelectionChanged, this,
            [this] { btnRemoveKept->setEnabled(lstKept->currentRow() >= 0); });
}

// --- the quote and the catalogue

void FundsPage::setUp(QuoteSession &session, const Product &product,
                      const std::shared_ptr<EditedQuote> &quote)
{
    m_session = &session;
    m_product = product;
    m_quote = quote;
    m_offered.setUp(session, product.productID);
    retext();
    connectGuarded(&session, &QuoteSession::catalogueChanged, this, &FundsPage::followCatalogue);
}

void FundsPage::letGo()
{
    m_quote = std::make_shared<EditedQuote>(m_quote->quote());
}

void FundsPage::followCatalogue()
{
    m_product = m_session->product(m_product.productID);
    retext();
    if (m_ready)
        commit();
    const Split shown = m_ready ? readSplit() : m_split;
    m_offered.readAgain();
    m_quote->setNames(m_offered.names());
    if (m_ready) {
        offerFunds();
        display(shown);
    } else {
        m_offered.takeNames(m_split.funds);
        m_quote->setSplit(m_split);
    }
}

void FundsPage::start()
{
    if (m_ready)
        return;
    provide({});
    offerFunds();
    m_ready = true;
    display(m_split);
    Q_EMIT ready();
}

/// Makes sure that these funds' catalogue data is loaded.
void FundsPage::provide(const QList<QuotedFund> &funds)
{
    if (!m_offered.want(funds))
        return;
    m_quote->setNames(m_offered.names());
    if (m_ready)
        offerFunds();
}

/// Loads all of the product's funds, when the adviser looks for another one.
void FundsPage::provideAll()
{
    if (!m_ready)
        return;
    const Split shown = readSplit();
    if (!m_offered.wantAll())
        return;
    m_quote->setNames(m_offered.names());
    offerFunds();
    display(shown);
}

void FundsPage::offerFunds()
{
    const QScopedValueRollback displaying(m_displaying, true);
    fraFundAllocation->Set_FundsPerProductDataSet(m_offered.packet());
}

void FundsPage::showQuote()
{
    const Quote quote = m_quote->quote();
    m_split = {quote.amount, quote.byAmount, quote.funds};
    provide(m_split.funds);
    m_offered.takeNames(m_split.funds);
    m_undo.clear();
    m_investment->show(quote);
    if (m_ready) {
        display(m_split);
        m_investment->enter(); // shows the reason for an invalid text again
    } else {
        const QScopedValueRollback displaying(m_displaying, true);
        (m_split.byAmount ? rbAmount : rbPercent)->setChecked(true);
        m_quote->setSplit(m_split);
    }
}

Quote FundsPage::withShownNames(Quote quote) const
{
    const QStringList names = m_offered.shownNames(quote.funds);
    for (qsizetype i = 0; i < names.size(); ++i)
        quote.funds[i].name = names.at(i);
    return quote;
}

// --- displaying the split

void FundsPage::display(const Split &wanted)
{
    const QScopedValueRollback displaying(m_displaying, true);
    QuoteAllocation &frame = *fraFundAllocation;
    frame.FundGrid->EndEdit(true);
    const int column = frame.FundGrid->CurrentCol();
    const int row = frame.FundGrid->CurrentRow();

    Split split = settled(wanted);
    provide(split.funds);
    m_offered.takeNames(split.funds);
    (split.byAmount ? rbAmount : rbPercent)->setChecked(true);
    m_investment->show(split.investment);
    frame.Set_AllocByAmount(split.byAmount);
    frame.Set_InvestmentAmount(split.investment);
    m_kept.clear();
    std::vector<TFundRec> records;
    for (const QuotedFund &fund : std::as_const(split.funds)) {
        if (m_offered.names().contains(fund.fundID))
            records.push_back({fund.fundID, nullptr, fund.amount, fund.percent});
        else
            m_kept.append(fund);
    }
    TFunds funds(std::move(records));
    frame.SetupFundAllocation(funds, m_product.productGroupID, m_session->providers().connection());
    // The grid's order may differ from that of the split.
    split.funds = frame.inRowOrder(split, m_kept);
    m_split = split;
    putBack(m_split);
    if (row > 0 && frame.FundGrid->RowCount() > 0)
        frame.FundGrid->SetCurrentCell(column, qMin(row, frame.FundGrid->RowCount()));
    m_quote->setSplit(m_split);
    m_investment->writeInto(*m_quote);
    banners->clear();
    showNames();
    refresh();
}

/// Writes the numbers of a split whose funds are those of the page, in the same order.
void FundsPage::putBack(const Split &split)
{
    fraFundAllocation->putNumbers(split.funds);
    m_kept = split.funds.mid(fraFundAllocation->Get_FundCount());
}

/// The split as a command has left it in the frame; its numbers may have more decimals than are displayed.
Split FundsPage::readSplit() const
{
    return {m_split.investment, fraFundAllocation->Get_AllocByAmount(),
            fraFundAllocation->readFunds(m_split.funds, m_offered) + m_kept};
}

// --- steps

void FundsPage::record(const QString &text)
{
    if (!m_displaying && m_ready)
        record(readSplit(), text);
}

/// The frame shows the new split except for the numbers, which become the displayed ones of @p wanted.
void FundsPage::record(const Split &wanted, const QString &text)
{
    const Split now = settled(wanted);
    putBack(now);
    m_quote->setSplit(now);
    showNames();
    refresh();
    push(now, text);
}

/// Records a number that was typed into a row, after its edit has ended.
void FundsPage::recordEntry(int row)
{
    if (m_displaying || !m_ready)
        return;
    takeRow(row);
    const Split now = m_quote->settledSplit();
    putBack(now);
    m_quote->setSplit(now);
    refresh();
    push(now, tr("entry"));
}

void FundsPage::recordAllocation()
{
    const Split allocated = readSplit();
    if (m_displaying || !m_ready || m_split.funds.size() != allocated.funds.size())
        return;
    record(withRestAllocated(m_split, allocated, fraFundAllocation->Funds().Length()), tr("allocation"));
}

/// Displays another split as one step.
void FundsPage::recordShown(const Split &split, const QString &text)
{
    const Split before = m_split;
    display(split);
    if (before == m_split)
        return;
    m_undo.push(new Step(*this, before, m_split, text));
    Q_EMIT edited();
}

void FundsPage::push(const Split &now, const QString &text)
{
    if (now == m_split)
        return;
    banners->dismiss(entryTopic);
    Split before = std::exchange(m_split, now);
    m_undo.push(new Step(*this, std::move(before), now, text));
    Q_EMIT edited();
}

void FundsPage::commit()
{
    fraFundAllocation->FundGrid->EndEdit(true);
    m_investment->enter();
}

void FundsPage::undo()
{
    commit();
    if (m_investment->isRefused())
        m_investment->takeBack();
    else
        m_undo.undo();
}

void FundsPage::redo()
{
    commit();
    m_undo.redo();
}

// --- changes

/// Takes over the numbers of a row after an entry.
void FundsPage::takeRow(int row)
{
    if (row < 1 || row > fraFundAllocation->Funds().Length())
        return;
    const TFundRec &record = fraFundAllocation->Funds()[row - 1];
    m_quote->setNumbers(row - 1, record.Amount, record.Percent);
}

void FundsPage::takeMode()
{
    if (m_displaying)
        return;
    const bool byAmount = rbAmount->isChecked();
    if (m_ready) {
        commit();
        fraFundAllocation->Set_AllocByAmount(byAmount);
        record(byAmount ? tr("split by amount") : tr("split by percent"));
        return;
    }
    m_split.byAmount = byAmount;
    m_split = settled(m_split);
    m_quote->setSplit(m_split);
    Q_EMIT edited();
}

void FundsPage::takeInvestment(Currency amount)
{
    if (amount == m_split.investment)
        return;
    if (m_ready) {
        fraFundAllocation->FundGrid->EndEdit(true);
        recordShown(withInvestment(readSplit(), amount), tr("change of the investment"));
        return;
    }
    m_split = settled(withInvestment(m_split, amount));
    m_investment->show(amount);
    m_quote->setSplit(m_split);
    Q_EMIT edited();
}

void FundsPage::removeKept()
{
    const int row = lstKept->currentRow();
    if (row < 0 || row >= m_kept.size())
        return;
    m_kept.removeAt(row);
    record(tr("removal"));
}

// --- texts and marks

void FundsPage::retext()
{
    fraFundAllocation->pnlHeaderCaption->setCaption(tr("  Fund allocation"));
    fraFundAllocation->InfoText = tr("Funds for the %1").arg(shortText(m_product.name));
    m_countCaption->setText(tr("Funds chosen"));
    showEmptyState();
}

void FundsPage::showEmptyState()
{
    emptyState->setContent(u"funds"_s, tr("No funds yet"),
                           tr("Choose the funds for this investment, or paste them from a spreadsheet."));
    btnChoose->setText(tr("Choose funds"));
}

/// Updates everything that depends on the whole split.
void FundsPage::refresh()
{
    const SplitState state = m_quote->splitState();
    chart->show(state, m_quote->fundsByPercent(), m_names);
    showState(state);
    // The frame only considers its own rows. Without thousands separators, like the frame's text.
    const auto plain = [](Currency value) { return FormatFloat(FormatMask::TwoDecimals, value); };
    m_rest = state.byAmount ? tr("Remaining: %1 (%2%)").arg(plain(state.restAmount), plain(state.restPercent))
                            : tr("Remaining: %1%").arg(plain(state.restPercent));
    showRest();
    Zel::ShowRemainder(*fraFundAllocation, state.restAmount, state.restPercent);
    fraFundAllocation->pnlRemainAmount->setColorName(
        QLatin1String(state.isOver() ? overAllocationColour : remainderColour));
    showCommands();
    showKept();
    placeEmptyState();
}

void FundsPage::showState(const SplitState &state)
{
    lblState->setText(QuoteReport::stateText(state, true));
    lblCount->setText(QString::number(state.fundCount));
    const bool isBegun = !state.isEmpty() && !state.investment.isZero();
    const auto show = [this](const QString &glyph, LookColor color) {
        m_statePicture->setGlyph(glyph, color);
        lblState->setLookColor(color);
    };
    if (state.isOver())
        show(u"error"_s, LookColor::ErrorText);
    else if (state.isAllocated())
        show(u"complete"_s, LookColor::OkText);
    else if (isBegun)
        show(u"info"_s, LookColor::WarnText);
    else
        show(u"edit"_s, LookColor::Text2);
}

/// The status panel belongs to the frame, which overwrites it with the remainder of its own rows.
void FundsPage::showRest()
{
    if (!m_rest.isEmpty())
        fraFundAllocation->pnlRemainAmount->setCaption(m_rest);
}

void FundsPage::showCommands()
{
    btnFactSheet->setEnabled(fraFundAllocation->FundGrid->CurrentRow() > 0);
    btnCopy->setEnabled(!m_quote->funds().isEmpty());
}

/// Updates the list of the funds that are no longer offered.
void FundsPage::showKept()
{
    QStringList kept;
    const QList<QuotedFund> funds =
        m_kept.isEmpty() ? QList<QuotedFund>() : m_quote->shownSplit().funds.last(m_kept.size());
    for (const QuotedFund &fund : funds)
        kept.append(tr("%1: %2%, %3 (no longer offered)")
                        .arg(fund.name, FormatFloat(FormatMask::TwoDecimals, fund.percent),
                             FormatFloat(FormatMask::Thousands, fund.amount)));
    if (std::exchange(m_keptShown, kept) == kept && !m_displaying)
        return;
    lstKept->clear();
    for (qsizetype i = 0; i < kept.size(); ++i) {
        auto *const item = new QListWidgetItem(GlyphIcon(u"warning"_s), shortText(kept.at(i), 300));
        item->setToolTip(tipText(kept.at(i)));
        item->setData(KeptFundDelegate::Name, shortText(funds.at(i).name, 300));
        item->setData(KeptFundDelegate::Percent, FormatFloat(FormatMask::TwoDecimals, funds.at(i).percent));
        item->setData(KeptFundDelegate::Amount, FormatFloat(FormatMask::Thousands, funds.at(i).amount));
        lstKept->addItem(item);
    }
    btnRemoveKept->setEnabled(false);
    pnlKept->setVisible(!m_kept.isEmpty());
    const auto rows =
        static_cast<int>(std::clamp<qsizetype>(m_kept.size(), 1, isLowScreen(*this) ? 1 : keptRowsShown));
    lstKept->setFixedHeight(rows * std::max(lstKept->sizeHintForRow(0), 0) + 2 * lstKept->frameWidth());
}

void FundsPage::showNames()
{
    m_names = m_offered.shownNames(m_quote->funds());
    const int renamed = fraFundAllocation->showNames(m_quote->funds(), m_names, m_offered);
    lblNames->setText(
        tr("%n fund(s) have another name in the current catalogue. The quote keeps the names under which the "
           "funds were quoted. To use the new name of a fund, remove the fund and choose it again.",
           nullptr, renamed));
    lblNames->setVisible(renamed > 0);
}

// --- commands

void FundsPage::copyFunds()
{
    commit();
    QGuiApplication::clipboard()->setText(FundClipboard::textOf(m_quote->funds()));
}

void FundsPage::pasteFunds()
{
    if (!m_ready)
        return;
    commit();
    provideAll();
    const Split split = readSplit();
    // Text copied from the grid has the displayed names, so a paste has to find them.
    FundNames &names = m_offered.names();
    names.forgetOtherNames();
    const QStringList shown = m_offered.shownNames(split.funds);
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const QuotedFund &fund = split.funds.at(i);
        if (!names.contains(fund.fundID))
            continue;
        for (const QString &name : {fund.name, shown.at(i)})
            names.addOtherName(fund.fundID, name);
    }
    const FundLines lines(QGuiApplication::clipboard()->text(), names,
                          split.byAmount ? FundLines::Meaning::Amount : FundLines::Meaning::Percent);
    if (const Split pasted = FundClipboard::withLines(split, lines, names); pasted != m_split)
        recordShown(pasted, tr("pasting"));
    tellPasted(lines);
    askQuestions();
}

/// Says what the grid has corrected or refused, until the next entry.
void FundsPage::tell(const QString &sentence)
{
    showBanner({BannerKind::Warn, sentence, {}, {}, entryTopic});
}

void FundsPage::tellPasted(const FundLines &lines)
{
    const auto refused = static_cast<int>(lines.refused().size());
    const QString pasted = FundClipboard::sentenceOf(lines);
    if (refused == 0) {
        const BannerKind kind = lines.entries().isEmpty() ? BannerKind::Info : BannerKind::Ok;
        showBanner({kind, pasted, {}, {}, pasteTopic});
        return;
    }
    const QString unused = tr("%n line(s) could not be used", nullptr, refused);
    const auto showLines = [this, unused, report = lines.report()] {
        m_session->adviser().tell(this, unused, report);
    };
    showBanner({BannerKind::Warn, tr("%1; %2").arg(pasted, unused), tr("Show them"), showLines, pasteTopic});
}

void FundsPage::showBanner(const BannerText &content)
{
    putBefore(*fraFundAllocation->FundGrid, *banners->showBanner(content));
}

QuotedFund FundsPage::currentFund() const
{
    const int row = fraFundAllocation->FundGrid->CurrentRow();
    if (row < 1 || row > fraFundAllocation->Funds().Length())
        return {};
    return m_quote->funds().at(row - 1);
}

void FundsPage::openFactSheet()
{
    const QuotedFund fund = currentFund();
    if (fund.fundID != 0)
        m_session->openFactSheet(this, fund.name, m_offered.names().fund(fund.fundID).factSheet);
}

// --- previous investments

void FundsPage::askQuestions()
{
    const QPointer<FundsPage> self(this); // the page may be closed during a question
    const QList<int> due = FundQuestions::due(*fraFundAllocation, m_offered.names(), m_quote->asked());
    for (const int groupID : due) {
        if (self)
            ask(groupID);
    }
}

void FundsPage::ask(int groupID)
{
    const QString question = FundQuestions::textOf(groupID);
    if (question.isEmpty())
        return;
    const QPointer<FundsPage> self(this); // the page may be closed during the question
    const bool answer = m_session->adviser().askYesNo(this, question);
    if (!self)
        return;
    FundQuestions::keepAnswer(*m_quote, groupID, answer);
    Q_EMIT edited();
}

QList<QPair<QString, QString>> FundsPage::answers() const
{
    return FundQuestions::answersIn(m_quote->details());
}

// --- events

bool FundsPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == fraFundAllocation->FundGrid) {
        // A single number is pasted into the cell; several lines of cells are funds.
        if (static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste) &&
            FundLines::looksLikeLines(QGuiApplication::clipboard()->text())) {
            GuardedCall([this] { pasteFunds(); });
            return true;
        }
    }
    // Before the button is pressed: applying an amount disables the button for a moment, which would release
    // it.
    if (event->type() == QEvent::MouseButtonPress && qobject_cast<TSpeedButton *>(watched)) {
        GuardedCall([this, watched] {
            commit();
            if (watched == fraFundAllocation->fraFundToolBar->sbtFunds)
                provideAll();
        });
    }
    if (event->type() == QEvent::Resize && watched == fraFundAllocation->FundGrid->viewport()) {
        placeEmptyState();
        lstKept->viewport()->update();
    }
    return QWidget::eventFilter(watched, event);
}

void FundsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    const bool isLow = isLowScreen(*this);
    lblKept->setVisible(!isLow);
    lstKept->setToolTip(isLow ? lblKept->text().remove(u'&') : QString());
    fraFundAllocation->setMinimumHeight(isLow ? 0 : roomForGrid);
    arrange();
}

void FundsPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void FundsPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_session)
        refresh();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        adoptFont();
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi(this);
        retext();
        const QScopedValueRollback displaying(m_displaying, true);
        if (m_ready)
            showNames();
        refresh();
        m_investment->retext();
    }
}

} // namespace QuoteDesk
