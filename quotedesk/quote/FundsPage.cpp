#include "quote/FundsPage.h"

#include "quote/Investment.h"
#include "quote/PlainText.h"
#include "quote/QuoteReport.h"
#include "quote/QuoteSession.h"
#include "quote/SelectOnEntry.h"
#include "quote/SmallScreen.h"
#include "quote/StateColours.h"
#include "store/ShownSplit.h"

#include "catalogue/CatalogueProviders.h"
#include "catalogue/TwinCaptions.h"

#include "data/ClientDataSet.h"
#include "data/Format.h"
#include "data/NumberEntry.h"
#include "funds/AllocationMath.h"
#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QAction>
#include <QClipboard>
#include <QKeyEvent>
#include <QPointer>
#include <QQueue>
#include <QScopedValueRollback>
#include <QSet>
#include <QShortcut>
#include <QTextDocument>
#include <QUndoCommand>

#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The detail of a quote under which an investment that is no amount is kept as it was typed.
QString typedInvestmentKey()
{
    return u"InvestmentAsTyped"_s;
}

constexpr int stepsKept = 500;
constexpr qsizetype keptRowsShown = 4;
constexpr int lowMargin = 2;
constexpr int roomForGrid = 160; // at least, in pixels, where the screen has them

/// A question that is asked when a fund of its group is chosen.
struct Question {
    int groupID;
    TMessageText text;
    bool TShowedMessageStatus::*asked;
    bool AskedQuestions::*stored;
    const char *answer; ///< The name of the answer among the quote's details.
};

constexpr std::array<Question, 4> questions{{
    {11, TMessageText::resFund_OGSPrevInv_Msg, &TShowedMessageStatus::AlreadyShowedOGSQuestionMsg,
     &AskedQuestions::ogs, "PreviousInvestment.OGS"},
    {12, TMessageText::resFund_WorldOGSPrevInv_Msg, &TShowedMessageStatus::AlreadyShowedWorldOGSQuestionMsg,
     &AskedQuestions::worldOGS, "PreviousInvestment.WorldOGS"},
    {68, TMessageText::resFund_OGS_INTPrevInv_Msg,
     &TShowedMessageStatus::AlreadyShowedWorldOGS_INTQuestionMsg, &AskedQuestions::worldOGSInternational,
     "PreviousInvestment.WorldOGSInternational"},
    {67, TMessageText::resFund_BulwarkWorldPrevInv_Msg,
     &TShowedMessageStatus::AlreadyShowedBulWorldQuestionMsg, &AskedQuestions::bulwarkWorld,
     "PreviousInvestment.BulwarkWorld"},
}};

// The ground of the frame's line of what remains; its words are black.
constexpr auto remainderColour = "clGreen5";
constexpr auto overAllocationColour = "clRed";

constexpr auto yes = "yes";
constexpr auto no = "no";

/// The split of a fund for another investment: by percent the amount follows, by amount the percentage.
void follow(QuotedFund &fund, bool byAmount, Currency investment)
{
    if (byAmount)
        fund.percent = Zel::Allocation::PercentOf(fund.amount, investment);
    else
        fund.amount = Zel::Allocation::AmountOf(fund.percent, investment);
}

/// What a cell of the grid may hold.
NumberRules cellRules(int column)
{
    const bool isPercent = column == TfraFundAllocation::PercentColumn;
    NumberRules rules;
    rules.unit = isPercent ? NumberUnit::Percent : NumberUnit::Rand;
    rules.low = Currency();
    rules.high = Currency::fromRaw((isPercent ? 100'00 : 999'999'999'99) * (Currency::Scale / 100));
    rules.decimals = 2;
    return rules;
}

} // namespace

/// A change of the split. The page has made it already when the step is pushed.
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
    m_undo.setUndoLimit(stepsKept);
    btnFactSheet->setIcon(GlyphIcon(u"selector-fundsheet"_s));
    btnCopy->setIcon(GlyphIcon(u"duplicate"_s));
    btnPaste->setIcon(GlyphIcon(u"selector-add"_s));
    btnRemoveKept->setIcon(GlyphIcon(u"remove"_s));
    splPage->setStretchFactor(0, 1);
    pnlKept->hide();
    lblMessage->hide();
    lblNames->hide();
    // What the two do is no business of this desk.
    fraFundAllocation->fraFundToolBar->sbtDuplicate->hide();
    fraFundAllocation->Set_ShowButtonGuarantee(false);
    fraFundAllocation->FundGrid->installEventFilter(this);
    edAmount->installEventFilter(this);
    new SelectOnEntry(edAmount);
    m_amountWarning = edAmount->addAction(GlyphIcon(u"warning"_s), QLineEdit::TrailingPosition);
    m_amountWarning->setVisible(false);

    const auto guarded = [](auto body) { return [body] { GuardedCall(body); }; };
    // The frame sets itself up after its first paint; funds handed over before that would be lost to it.
    connect(fraFundAllocation, &QuoteAllocation::initialized, this, guarded([this] { start(); }));
    connect(fraFundAllocation, &QuoteAllocation::cellEntered, this, guarded([this] { record(tr("entry")); }));
    connect(fraFundAllocation->FundGrid, &TtsGrid::CellEdited, this, guarded([this] {
                refresh();
                Q_EMIT edited();
            }));
    connect(fraFundAllocation->FundGrid, &TtsGrid::RowChanged, this, guarded([this] { refresh(); }));
    connect(fraFundAllocation->pnlRemainAmount, &TPanel::captionChanged, this, [this] { showRest(); });
    connect(fraFundAllocation->FundGrid, &TtsGrid::EntryCorrected, this,
            [this](int column, int row, const QString &typed) {
                GuardedCall([&] {
                    QString reason = NumberEntry(typed, cellRules(column)).reason();
                    if (reason.isEmpty())
                        reason = tr("\"%1\" does not fit the cell").arg(typed);
                    tellOfCell(tr("%1: %2. Corrected to %3."), row, reason,
                               fraFundAllocation->FundGrid->CellText(column, row));
                });
            });
    connect(fraFundAllocation->FundGrid, &TtsGrid::EntryRefused, this,
            [this](int column, int row, const QString &, const QString &reason, bool stays) {
                GuardedCall([&] {
                    tellOfCell(stays ? tr("%1: %2. Escape brings back %3.") : tr("%1: %2. It stays at %3."),
                               row, reason, fraFundAllocation->FundGrid->CellText(column, row));
                });
            });

    // The frame's keys work while the focus is inside it; this page has the one frame, so they work all over
    // it.
    for (QShortcut *const key :
         fraFundAllocation->findChildren<QShortcut *>(QString(), Qt::FindDirectChildrenOnly))
        key->setContext(Qt::WindowShortcut);
    // Neither they nor the buttons take the focus: what is being typed counts before the command does.
    for (TSpeedButton *const button : fraFundAllocation->fraFundToolBar->findChildren<TSpeedButton *>()) {
        button->installEventFilter(this);
        connect(button, &QAbstractButton::pressed, this, guarded([this] { commit(); }));
    }
    connect(fraFundAllocation->fraFundToolBar->sbtFunds, &QAbstractButton::pressed, this,
            guarded([this] { provideAll(); }));
    // The frame has bound the buttons first: each command has run when it is recorded.
    const TfraFundToolBar &bar = *fraFundAllocation->fraFundToolBar;
    connect(bar.sbtFunds, &QAbstractButton::clicked, this, guarded([this] {
                record(tr("choice of funds"));
                askQuestions();
            }));
    connect(bar.sbtRemove, &QAbstractButton::clicked, this, guarded([this] { record(tr("removal")); }));
    connect(bar.sbtClear, &QAbstractButton::clicked, this, guarded([this] { record(tr("clearing")); }));
    connect(bar.sbtAllocateAmount, &QAbstractButton::clicked, this, guarded([this] { recordAllocation(); }));
    connect(bar.sbtResetToZero, &QAbstractButton::clicked, this, guarded([this] { record(tr("reset")); }));
    connect(fraFundAllocation, &TfraFundAllocation::InvestedClicked, this,
            guarded([this] { askOfCurrentFund(); }));

    connect(rbAmount, &QRadioButton::toggled, this, guarded([this] { takeMode(); }));
    // Enter leaves the field ready for another amount.
    connect(edAmount, &QLineEdit::returnPressed, edAmount, &QLineEdit::selectAll);
    connect(edAmount, &QLineEdit::editingFinished, this, guarded([this] { takeAmount(); }));
    connect(edAmount, &QLineEdit::textEdited, this, guarded([this] {
                markAmount({});
                Q_EMIT edited();
            }));
    connect(btnFactSheet, &QAbstractButton::clicked, this, guarded([this] { openFactSheet(); }));
    connect(btnCopy, &QAbstractButton::clicked, this, guarded([this] { copyFunds(); }));
    connect(btnPaste, &QAbstractButton::clicked, this, guarded([this] { pasteFunds(); }));
    connect(btnRemoveKept, &QAbstractButton::clicked, this, guarded([this] { removeKept(); }));
    connect(lstKept, &QListWidget::itemSelectionChanged, this,
            [this] { btnRemoveKept->setEnabled(lstKept->currentRow() >= 0); });
}

FundsPage::~FundsPage()
{
    fraFundAllocation->FundGrid->removeEventFilter(this);
    edAmount->removeEventFilter(this);
}

// --- showing

void FundsPage::setUp(QuoteSession &session, const Product &product)
{
    m_session = &session;
    m_product = product;
    retext();
    connect(&session, &QuoteSession::catalogueChanged, this, [this] {
        GuardedCall([this] {
            m_product = m_session->product(m_product.productID);
            retext();
            if (!m_ready) {
                loadFunds(m_hasAll, m_wanted);
                takeNames(m_split.funds);
                return;
            }
            commit();
            const Split shown = readSplit();
            loadFunds(m_hasAll, m_wanted);
            offerFunds();
            display(shown);
        });
    });
}

void FundsPage::retext()
{
    fraFundAllocation->pnlHeaderCaption->setCaption(tr("  Fund allocation"));
    fraFundAllocation->InfoText = tr("Funds for the %1").arg(shortText(m_product.name));
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

/// Reads all funds of the product or only some: what opening a quote costs is to follow the quote, however
/// large the catalogue is.
void FundsPage::loadFunds(bool all, const QSet<int> &wanted)
{
    const CatalogueProviders &providers = m_session->providers();
    const QVariant packet = all ? providers.fundPacket(m_product.productID)
                                : providers.fundPacket(m_product.productID, wanted.values());
    const bool isAfrikaans = m_session->catalogue().isAfrikaans();
    FundNames names;
    TClientDataSet rows;
    rows.SetData(packet);
    const auto field = [&rows](const char *name) { return rows.FieldByName(QLatin1String(name)); };
    const TField *const id = field("FundID");
    const TField *const caption = field("FundName");
    const TField *const english = field("FundName_ENG");
    const TField *const afrikaans = field("FundName_AFR");
    const TField *const sheet = field("FundSheetURL");
    const TField *const group = field("FundGroupID");
    const TField *const groupName = field("FundGroupName");
    for (; !rows.Eof(); rows.Next()) {
        FundNames::Fund fund;
        fund.nameEnglish = english->AsString().trimmed();
        fund.nameAfrikaans = afrikaans->AsString().trimmed();
        fund.name = isAfrikaans && !fund.nameAfrikaans.isEmpty() ? fund.nameAfrikaans : fund.nameEnglish;
        fund.factSheet = sheet->AsString().trimmed();
        fund.groupID = group->AsInteger();
        fund.groupName = groupName->AsString();
        if (QString text = caption->AsString().trimmed(); text != fund.name)
            fund.caption = std::move(text);
        names.add(id->AsInteger(), fund);
    }
    m_packet = packet;
    m_names = std::move(names);
    m_hasAll = all;
    m_wanted = wanted;
}

/// Sees to it that what the catalogue says of these funds is known.
void FundsPage::provide(const QList<QuotedFund> &funds)
{
    QSet<int> wanted = m_wanted;
    for (const QuotedFund &fund : funds)
        wanted.insert(fund.fundID);
    if (m_packet.isValid() && (m_hasAll || wanted.size() == m_wanted.size()))
        return;
    loadFunds(m_hasAll, wanted);
    if (m_ready)
        offerFunds();
}

/// The same for every fund of the product, for when the adviser looks for another one.
void FundsPage::provideAll()
{
    if (m_hasAll || !m_ready)
        return;
    const Split shown = readSplit();
    loadFunds(true, m_wanted);
    offerFunds();
    display(shown);
}

void FundsPage::offerFunds()
{
    const QScopedValueRollback displaying(m_displaying, true);
    fraFundAllocation->Set_FundsPerProductDataSet(m_packet);
}

void FundsPage::show(const Quote &quote)
{
    m_answers.clear();
    for (const Question &question : questions) {
        m_asked.*question.asked = quote.asked.*question.stored;
        const QString key = QLatin1String(question.answer);
        if (quote.details.contains(key))
            m_answers.insert(key, quote.details.value(key));
    }
    m_split = settled({quote.amount, quote.byAmount, quote.funds});
    provide(m_split.funds);
    takeNames(m_split.funds);
    m_undo.clear();
    edAmount->setModified(false);
    markAmount({});
    if (m_ready) {
        display(m_split);
    } else {
        const QScopedValueRollback displaying(m_displaying, true);
        (m_split.byAmount ? rbAmount : rbPercent)->setChecked(true);
        showAmount();
    }
    if (!refusalOf(quote).isEmpty()) {
        edAmount->setText(quote.details.value(typedInvestmentKey()));
        edAmount->setModified(true);
        takeAmount();
    }
}

void FundsPage::display(const Split &wanted)
{
    const QScopedValueRollback displaying(m_displaying, true);
    const Split split = settled(wanted);
    TfraFundAllocation &frame = *fraFundAllocation;
    frame.FundGrid->EndEdit(true);
    const int column = frame.FundGrid->CurrentCol();
    const int row = frame.FundGrid->CurrentRow();

    m_split = split;
    provide(m_split.funds);
    takeNames(m_split.funds);
    (split.byAmount ? rbAmount : rbPercent)->setChecked(true);
    showAmount();
    frame.Set_AllocByAmount(split.byAmount);
    frame.Set_InvestmentAmount(split.investment);
    m_kept.clear();
    std::vector<TFundRec> records;
    for (const QuotedFund &fund : std::as_const(m_split.funds)) {
        if (m_names.contains(fund.fundID))
            records.push_back({fund.fundID, nullptr, fund.amount, fund.percent});
        else
            m_kept.append(fund);
    }
    TFunds funds(std::move(records));
    frame.SetupFundAllocation(funds, m_product.productGroupID, m_session->providers().connection());
    putBack(split);
    if (row > 0 && frame.FundGrid->RowCount() > 0)
        frame.FundGrid->SetCurrentCell(column, qMin(row, frame.FundGrid->RowCount()));
    // The grid's order may be another than that of the split.
    m_split = readSplit();
    lblMessage->hide();
    showNames();
    refresh();
}

/// Writes the numbers of a split of the very funds that the page has: the frame works each row's second
/// number out from the first, row by row.
void FundsPage::putBack(const Split &split)
{
    TfraFundAllocation &frame = *fraFundAllocation;
    QHash<int, QQueue<const QuotedFund *>> wanted;
    for (const QuotedFund &fund : split.funds)
        wanted[fund.fundID].enqueue(&fund);
    int row = 0;
    for (TFundRec &record : frame.Funds()) {
        ++row;
        QQueue<const QuotedFund *> &queue = wanted[record.FundID];
        if (queue.isEmpty())
            continue;
        const QuotedFund &fund = *queue.dequeue();
        record.Amount = fund.amount;
        record.Percent = fund.percent;
        frame.FundGrid->SetCell(TfraFundAllocation::PercentColumn, row, fund.percent.toVariant());
        frame.FundGrid->SetCell(TfraFundAllocation::AmountColumn, row, fund.amount.toVariant());
    }
    for (QuotedFund &fund : m_kept) {
        QQueue<const QuotedFund *> &queue = wanted[fund.fundID];
        if (!queue.isEmpty())
            fund = *queue.dequeue();
    }
    using Frame = TfraFundAllocation;
    frame.RecalcRemainingAmount(split.byAmount ? Frame::AmountColumn : Frame::PercentColumn);
    frame.UpdateRemainingCaption();
}

/// The split with the numbers that are shown of it. By a command, another mode or the end of an edit the
/// frame leaves finer ones behind.
FundsPage::Split FundsPage::settled(const Split &split)
{
    Quote quote;
    quote.amount = split.investment;
    quote.byAmount = split.byAmount;
    quote.funds = split.funds;
    settle(quote);
    return {quote.amount, quote.byAmount, quote.funds};
}

FundsPage::Split FundsPage::readSplit() const
{
    Split split{m_split.investment, fraFundAllocation->Get_AllocByAmount(), {}};
    // The name of a fund is the one under which it was quoted; a fund that was not in the split before has
    // the catalogue's. A change of numbers leaves every fund in its place.
    QHash<int, QQueue<QString>> moved;
    auto nameOf = [this, &moved, place = qsizetype{0}](int fundID) mutable -> QString {
        if (place < m_split.funds.size() && m_split.funds.at(place).fundID == fundID)
            return m_split.funds.at(place++).name;
        if (moved.isEmpty()) {
            for (qsizetype i = place; i < m_split.funds.size(); ++i)
                moved[m_split.funds.at(i).fundID].enqueue(m_split.funds.at(i).name);
            place = m_split.funds.size();
        }
        const auto names = moved.find(fundID);
        return names == moved.end() || names->isEmpty() ? m_names.fund(fundID).name : names->dequeue();
    };
    for (const TFundRec &record : fraFundAllocation->Funds())
        split.funds.append({record.FundID, nameOf(record.FundID), record.Amount, record.Percent});
    split.funds += m_kept;
    return split;
}

// --- names

/// The catalogue has the fund under another name than the quote.
bool FundsPage::isRenamed(const QuotedFund &fund) const
{
    return m_names.contains(fund.fundID) && !m_names.fund(fund.fundID).isCalled(fund.name);
}

/// Gives the funds the catalogue's names of the language in use, but for those that it calls otherwise: they
/// keep the name under which they were quoted.
void FundsPage::takeNames(QList<QuotedFund> &funds) const
{
    for (QuotedFund &fund : funds) {
        if (!m_names.contains(fund.fundID))
            continue;
        const FundNames::Fund known = m_names.fund(fund.fundID);
        // Nothing was kept with quotes of long ago.
        if (fund.name.trimmed().isEmpty() || known.isCalled(fund.name))
            fund.name = known.name;
    }
}

/// What people read for each of the funds.
QStringList FundsPage::shownNames(const QList<QuotedFund> &funds) const
{
    const TwinCaptions captions = twinCaptions([&](const FundVisitor &visitor) {
        for (const QuotedFund &fund : funds)
            visitor(fund.fundID, fund.name, m_names.fund(fund.fundID).groupName);
    });
    QStringList names;
    names.reserve(funds.size());
    for (const QuotedFund &fund : funds) {
        QString name = fund.name.trimmed();
        if (!captions.isEmpty())
            name = captions.value({fund.fundID, name}, name);
        names.append(isRenamed(fund)
                         ? tr("%1 (in the catalogue: %2)").arg(name, m_names.fund(fund.fundID).name)
                         : name);
    }
    return names;
}

Quote FundsPage::withShownNames(Quote quote) const
{
    const QStringList names = shownNames(quote.funds);
    for (qsizetype i = 0; i < names.size(); ++i)
        quote.funds[i].name = names.at(i);
    return quote;
}

/// Writes them into the grid, which the frame has filled with the catalogue's.
void FundsPage::showNames()
{
    TfraFundAllocation &frame = *fraFundAllocation;
    TtsGrid &grid = *frame.FundGrid;
    const QList<QuotedFund> funds = readSplit().funds;
    const QStringList names = shownNames(funds);
    const QIcon warning = GlyphIcon(u"warning"_s);
    const QIcon picture = frame.imgFund->Icon(0);
    int renamed = 0;
    for (int row = 1; row <= std::min(grid.RowCount(), static_cast<int>(names.size())); ++row) {
        const bool marked = isRenamed(funds.at(row - 1));
        renamed += marked ? 1 : 0;
        if (grid.CellText(TfraFundAllocation::FundColumn, row) == names.at(row - 1))
            continue;
        grid.SetCell(TfraFundAllocation::FundColumn, row, names.at(row - 1));
        grid.SetCell(TfraFundAllocation::PictureColumn, row, marked ? warning : picture);
    }
    lblNames->setText(
        tr("%n fund(s) have another name in the catalogue as it is now. They keep the name under "
           "which they were quoted. To take the other one, remove the fund and choose it anew.",
           nullptr, renamed));
    lblNames->setVisible(renamed > 0);
}

// --- reading and showing the whole

void FundsPage::readInto(Quote &quote) const
{
    const Split split = m_ready ? readSplit() : m_split;
    quote.amount = split.investment;
    quote.byAmount = split.byAmount;
    quote.funds = split.funds;
    if (const std::optional<Currency> typed = typedAmount(); typed && *typed != quote.amount) {
        quote.amount = *typed;
        for (QuotedFund &fund : quote.funds)
            follow(fund, quote.byAmount, *typed);
    }
    settle(quote);
    if (hasRefusedAmount())
        quote.details.insert(typedInvestmentKey(), edAmount->text());
    else
        quote.details.remove(typedInvestmentKey());
    for (const Question &question : questions) {
        quote.asked.*question.stored = m_asked.*question.asked;
        const QString key = QLatin1String(question.answer);
        if (m_answers.contains(key))
            quote.details.insert(key, m_answers.value(key));
        else
            quote.details.remove(key);
    }
}

void FundsPage::refresh()
{
    Quote quote;
    readInto(quote);
    const QuoteReport report(withShownNames(quote));
    const ShownSplit &split = report.split;
    chart->show(split);
    lblState->setText(report.stateText());
    // The frame knows of its own rows only. Without thousands separators, as the frame has it.
    const auto plain = [](Currency value) { return FormatFloat(FormatMask::TwoDecimals, value); };
    m_rest = split.byAmount ? tr("Remaining: %1 (%2%)").arg(plain(split.restAmount), plain(split.restPercent))
                            : tr("Remaining: %1%").arg(plain(split.restPercent));
    showRest();
    showOverAllocation(*lblState, report.isOverAllocated());
    fraFundAllocation->pnlRemainAmount->setColorName(
        QLatin1String(report.isOverAllocated() ? overAllocationColour : remainderColour));
    btnFactSheet->setEnabled(fraFundAllocation->FundGrid->CurrentRow() > 0);
    btnCopy->setEnabled(!quote.funds.isEmpty());

    QStringList kept;
    for (const QuotedFund &fund : split.funds.last(m_kept.size()))
        kept.append(
            tr("%1: %2%, %3 (no longer offered)")
                .arg(fund.name, plain(fund.percent), FormatFloat(FormatMask::Thousands, fund.amount)));
    if (std::exchange(m_keptShown, kept) != kept || m_displaying) {
        lstKept->clear();
        for (const QString &text : std::as_const(kept)) {
            auto *const item = new QListWidgetItem(GlyphIcon(u"warning"_s), shortText(text, 300));
            item->setToolTip(tipText(text));
            lstKept->addItem(item);
        }
        btnRemoveKept->setEnabled(false);
        pnlKept->setVisible(!m_kept.isEmpty());
        const auto rows =
            static_cast<int>(std::clamp<qsizetype>(m_kept.size(), 1, isLowScreen(*this) ? 1 : keptRowsShown));
        lstKept->setFixedHeight(rows * std::max(lstKept->sizeHintForRow(0), 0) + 2 * lstKept->frameWidth());
    }
}

/// The status panel is the frame's, which writes it for its own rows.
void FundsPage::showRest()
{
    if (!m_rest.isEmpty())
        fraFundAllocation->pnlRemainAmount->setCaption(m_rest);
}

// --- steps

void FundsPage::record(const QString &text)
{
    record(readSplit(), text);
}

/// The page has made the step but for the numbers, which become those of @p wanted.
void FundsPage::record(const Split &wanted, const QString &text)
{
    if (m_displaying || !m_ready)
        return;
    Split now = settled(wanted);
    if (now != readSplit())
        putBack(now);
    showNames();
    refresh();
    if (now == m_split)
        return;
    lblMessage->hide();
    Split before = std::exchange(m_split, now);
    m_undo.push(new Step(*this, std::move(before), std::move(now), text));
    Q_EMIT edited();
}

/// The frame has spread what its own rows leave over of the amount. What is in funds that are not offered any
/// more is not left over, so the rows that it filled share the rest. By percent, where the percentages lead,
/// those rows also take together what the others leave of the hundred.
void FundsPage::recordAllocation()
{
    Split split = readSplit();
    if (!m_ready || m_split.funds.size() != split.funds.size())
        return;
    const auto rows = static_cast<qsizetype>(fraFundAllocation->Funds().Length());
    QList<QuotedFund *> filled;
    Currency left = split.investment;
    Currency percentLeft = 100;
    for (qsizetype i = 0; i < split.funds.size(); ++i) {
        const QuotedFund &before = m_split.funds.at(i);
        if (i < rows && (split.byAmount ? before.amount : before.percent).isZero()) {
            filled.append(&split.funds[i]);
        } else {
            left -= before.amount;
            percentLeft -= before.percent;
        }
    }
    if (filled.isEmpty()) {
        record(tr("allocation"));
        return;
    }
    if (!m_kept.isEmpty()) {
        Currency toShare = std::max(left, Currency());
        for (qsizetype i = 0; i < filled.size(); ++i) {
            const qint64 sharers = filled.size() - i;
            QuotedFund &fund = *filled.at(i);
            fund.amount =
                sharers == 1 ? toShare : RoundToShownCents(Currency::fromRaw(toShare.raw() / sharers));
            toShare -= fund.amount;
            follow(fund, true, split.investment);
        }
    }
    if (!split.byAmount && !split.investment.isZero()) {
        QList<qint64> given;
        for (const QuotedFund *const fund : std::as_const(filled)) {
            given.append(fund->amount.raw());
            left -= fund->amount;
        }
        percentLeft -= Zel::Allocation::Shown(Zel::Allocation::PercentOf(left, split.investment));
        qint64 all = std::accumulate(given.cbegin(), given.cend(), qint64{0});
        if (all == 0 && left.isZero()) {
            // Amounts too small to be told apart: the percentages are still given out.
            given.fill(1);
            all = given.size();
        }
        const QList<qint64> percents =
            all == 0 ? given : roundByLargestRemainder(given, percentLeft.raw() * 100 / Currency::Scale, all);
        for (qsizetype i = 0; i < filled.size(); ++i)
            filled.at(i)->percent = Currency::fromRaw(percents.at(i) * (Currency::Scale / 100));
    }
    record(split, tr("allocation"));
}

/// Shows another split as one step.
void FundsPage::recordShown(const Split &split, const QString &text)
{
    const Split before = m_split;
    display(split);
    if (before == m_split)
        return;
    m_undo.push(new Step(*this, before, m_split, text));
    Q_EMIT edited();
}

void FundsPage::commit()
{
    fraFundAllocation->FundGrid->EndEdit(true);
    if (edAmount->isModified())
        takeAmount();
}

void FundsPage::undo()
{
    commit();
    if (hasRefusedAmount())
        dropRefusedAmount();
    else
        m_undo.undo();
}

void FundsPage::redo()
{
    commit();
    m_undo.redo();
}

// --- amount and mode

void FundsPage::takeMode()
{
    if (m_displaying)
        return;
    if (!m_ready) {
        m_split.byAmount = rbAmount->isChecked();
        m_split = settled(m_split);
        Q_EMIT edited();
        return;
    }
    commit();
    fraFundAllocation->Set_AllocByAmount(rbAmount->isChecked());
    record(rbAmount->isChecked() ? tr("split by amount") : tr("split by percent"));
}

std::optional<Currency> FundsPage::typedAmount() const
{
    if (!edAmount->isModified())
        return std::nullopt;
    const NumberEntry entry(edAmount->text(), investmentRules());
    return entry.isNumber() ? std::optional(entry.value()) : std::nullopt;
}

void FundsPage::takeAmount()
{
    if (!edAmount->isModified())
        return;
    const NumberEntry entry(edAmount->text(), investmentRules());
    if (entry.isNumber()) {
        setInvestment(entry.value());
        markAmount({});
        showAmount();
        return;
    }
    // What is no amount stays as it was typed, and the quote keeps the one before.
    markAmount(entry.reason());
    lblMessage->setText(tr("%1. Escape brings back %2.")
                            .arg(entry.reason(), FormatFloat(FormatMask::Thousands, m_split.investment)));
    lblMessage->show();
    Q_EMIT edited();
}

/// Shows at the field why its text is not taken; blank when it is.
void FundsPage::markAmount(const QString &reason)
{
    if (reason.isEmpty() && !m_amountWarning->isVisible())
        return;
    if (!m_amountWarning->isVisible())
        m_amountTip = edAmount->toolTip();
    const QString sentence = reason.isEmpty() ? QString() : reason + u'.';
    // It repeats what was entered, which is never to be taken for markup.
    const QString tip =
        Qt::mightBeRichText(sentence) ? u"<p>%1</p>"_s.arg(sentence.toHtmlEscaped()) : sentence;
    edAmount->setToolTip(reason.isEmpty() ? m_amountTip : tip);
    edAmount->setAccessibleDescription(sentence);
    m_amountWarning->setToolTip(tip);
    m_amountWarning->setVisible(!reason.isEmpty());
    if (reason.isEmpty())
        lblMessage->hide();
}

QString FundsPage::refusalOf(const Quote &quote)
{
    const auto typed = quote.details.constFind(typedInvestmentKey());
    if (typed == quote.details.cend())
        return {};
    const NumberEntry entry(*typed, investmentRules());
    return entry.isNumber() ? QString() : tr("The investment is not taken: %1.").arg(entry.reason());
}

bool FundsPage::hasRefusedAmount() const
{
    return edAmount->isModified() && !typedAmount();
}

/// Gives the field its amount back in place of a text that is none.
void FundsPage::dropRefusedAmount()
{
    edAmount->setModified(false);
    markAmount({});
    showAmount();
    Q_EMIT edited();
}

void FundsPage::tellOfCell(const QString &sentence, int row, const QString &reason, const QString &value)
{
    lblMessage->setText(sentence.arg(
        fraFundAllocation->FundGrid->CellText(TfraFundAllocation::FundColumn, row), reason, value));
    lblMessage->show();
}

void FundsPage::setInvestment(Currency amount)
{
    if (amount == m_split.investment)
        return;
    if (!m_ready) {
        m_split.investment = amount;
        for (QuotedFund &fund : m_split.funds)
            follow(fund, m_split.byAmount, amount);
        m_split = settled(m_split);
        Q_EMIT edited();
        return;
    }
    fraFundAllocation->FundGrid->EndEdit(true);
    Split split = readSplit();
    split.investment = amount;
    for (QuotedFund &fund : split.funds)
        follow(fund, split.byAmount, amount);
    recordShown(split, tr("change of the investment"));
}

void FundsPage::showAmount()
{
    if (hasRefusedAmount())
        return;
    const bool allSelected = edAmount->hasSelectedText() && edAmount->selectedText() == edAmount->text();
    edAmount->setText(FormatFloat(FormatMask::Thousands, m_split.investment));
    if (allSelected)
        edAmount->selectAll();
}

// --- funds that are not offered any more

void FundsPage::removeKept()
{
    const int row = lstKept->currentRow();
    if (row < 0 || row >= m_kept.size())
        return;
    m_kept.removeAt(row);
    record(tr("removal"));
}

// --- spreadsheet

void FundsPage::copyFunds()
{
    commit();
    QStringList lines{QStringList{tr("Fund ID"), tr("Fund"), tr("Percent"), tr("Amount")}.join(u'\t')};
    for (const QuotedFund &fund : readSplit().funds) {
        lines.append(QStringList{QString::number(fund.fundID), fund.name, fund.percent.toString(),
                                 FormatFloat(FormatMask::TwoDecimals, fund.amount)}
                         .join(u'\t'));
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void FundsPage::pasteFunds()
{
    if (!m_ready)
        return;
    commit();
    provideAll();
    Split split = readSplit();
    // What stands in the grid can be copied there and comes back as it was read.
    m_names.forgetOtherNames();
    const QStringList shown = shownNames(split.funds);
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const QuotedFund &fund = split.funds.at(i);
        if (!m_names.contains(fund.fundID))
            continue;
        for (const QString &name : {fund.name, shown.at(i)})
            m_names.addOtherName(fund.fundID, name);
    }
    const FundLines lines(QGuiApplication::clipboard()->text(), m_names,
                          split.byAmount ? FundLines::Meaning::Amount : FundLines::Meaning::Percent);
    QHash<int, qsizetype> places;
    for (qsizetype i = split.funds.size() - 1; i >= 0; --i)
        places.insert(split.funds.at(i).fundID, i);
    for (const FundLines::Entry &entry : lines.entries()) {
        if (!places.contains(entry.fundID)) {
            places.insert(entry.fundID, split.funds.size());
            split.funds.append({entry.fundID, m_names.fund(entry.fundID).name, {}, {}});
        }
        QuotedFund &fund = split.funds[places.value(entry.fundID)];
        const bool isAmount = entry.meaning == FundLines::Meaning::Amount;
        (isAmount ? fund.amount : fund.percent) = entry.value;
        follow(fund, isAmount, split.investment);
        if (split.byAmount && !isAmount) {
            // By amount the amounts are what counts, and they are whole cents.
            fund.amount = Zel::Allocation::Shown(fund.amount);
            follow(fund, true, split.investment);
        }
    }
    if (split != m_split)
        recordShown(split, tr("pasting"));
    const auto taken = static_cast<int>(lines.entries().size());
    const auto refused = static_cast<int>(lines.refused().size());
    lblMessage->setText(taken + refused == 0 ? tr("There are no lines of funds to paste")
                                             : tr("%n fund(s) pasted", nullptr, taken));
    lblMessage->show();
    askQuestions();
    if (refused > 0)
        m_session->tell(this, tr("%n line(s) could not be used", nullptr, refused), lines.report());
}

bool FundsPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == fraFundAllocation->FundGrid) {
        // One number goes into the cell; lines of cells are funds.
        if (static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste) &&
            FundLines::looksLikeLines(QGuiApplication::clipboard()->text())) {
            GuardedCall([this] { pasteFunds(); });
            return true;
        }
    }
    // Before the button is down: an amount that is taken disables it for a moment, which would let it go.
    if (event->type() == QEvent::MouseButtonPress && qobject_cast<TSpeedButton *>(watched)) {
        GuardedCall([this, watched] {
            commit();
            if (watched == fraFundAllocation->fraFundToolBar->sbtFunds)
                provideAll();
        });
    }
    if (event->type() == QEvent::KeyPress && watched == edAmount && hasRefusedAmount() &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        GuardedCall([this] { dropRefusedAmount(); });
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && watched == edAmount && !edAmount->isModified()) {
        // The field has nothing of its own to undo: the key is for the steps.
        const auto *const key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// --- what is known of a fund

QuotedFund FundsPage::currentFund() const
{
    const int row = fraFundAllocation->FundGrid->CurrentRow();
    if (row < 1 || row > fraFundAllocation->Funds().Length())
        return {};
    return readSplit().funds.at(row - 1);
}

void FundsPage::openFactSheet()
{
    const QuotedFund fund = currentFund();
    if (fund.fundID != 0)
        m_session->openFactSheet(this, fund.name, m_names.fund(fund.fundID).factSheet);
}

// --- previous investments

void FundsPage::askQuestions()
{
    // Which funds carry a question is asked of the messages only when one of their groups is there at all.
    QSet<int> groups;
    for (const TFundRec &record : fraFundAllocation->Funds()) {
        const int groupID = m_names.fund(record.FundID).groupID;
        if (std::any_of(questions.cbegin(), questions.cend(),
                        [groupID](const Question &question) { return question.groupID == groupID; }))
            groups.insert(groupID);
    }
    if (groups.isEmpty())
        return;
    TDynamicArrayOfInt withQuestion;
    for (const Question &question : questions)
        TfraFundAllocation::ConcatDynamicArraySet(
            withQuestion, fraFundAllocation->BuildFundMessageSetFromDataSet(question.groupID));
    QSet<int> due;
    for (const TFundRec &record : fraFundAllocation->Funds()) {
        if (TfraFundAllocation::FundInList(record.FundID, withQuestion))
            due.insert(m_names.fund(record.FundID).groupID);
    }
    for (const Question &question : questions) {
        if (due.contains(question.groupID) && !(m_asked.*question.asked))
            ask(question.groupID);
    }
}

void FundsPage::askOfCurrentFund()
{
    ask(m_names.fund(currentFund().fundID).groupID);
}

void FundsPage::ask(int groupID)
{
    const auto question = std::find_if(questions.cbegin(), questions.cend(),
                                       [groupID](const Question &each) { return each.groupID == groupID; });
    if (question == questions.cend())
        return;
    const QPointer<FundsPage> self(this); // the page may be closed under the question
    const bool answer = m_session->askYesNo(this, LoadResString(question->text));
    if (!self)
        return;
    m_asked.*(question->asked) = true;
    m_answers.insert(QLatin1String(question->answer), QLatin1String(answer ? yes : no));
    Q_EMIT edited();
}

QList<QPair<QString, QString>> FundsPage::answers() const
{
    QList<QPair<QString, QString>> result;
    for (const Question &question : questions) {
        const QString answer = m_answers.value(QLatin1String(question.answer));
        if (!answer.isEmpty())
            result.append(
                {LoadResString(question.text), answer == QLatin1String(yes) ? tr("yes") : tr("no")});
    }
    return result;
}

void FundsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    const bool isLow = isLowScreen(*this);
    for (QPushButton *const button : {btnFactSheet, btnCopy, btnPaste})
        button->setVisible(!isLow);
    lblKept->setVisible(!isLow);
    lstKept->setToolTip(isLow ? lblKept->text().remove(u'&') : QString());
    fraFundAllocation->setMinimumHeight(isLow ? 0 : roomForGrid);
    if (isLow) {
        layPage->setContentsMargins(lowMargin, lowMargin, lowMargin, lowMargin);
        layPage->setSpacing(lowMargin);
    }
}

void FundsPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_session)
        refresh();
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi(this);
        retext();
        const QScopedValueRollback displaying(m_displaying, true);
        if (m_ready)
            showNames();
        refresh();
        if (m_amountWarning->isVisible()) {
            m_amountTip = edAmount->toolTip();
            takeAmount();
        }
    }
}

} // namespace QuoteDesk
