#include "funds/fra_FundAllocation.h"

#include "data/Exceptions.h"
#include "data/Format.h"
#include "dataviews/ill_Misc.h"
#include "funds/AllocationChange_p.h"
#include "funds/AllocationColumns_p.h"
#include "funds/AllocationLook_p.h"
#include "funds/FundRules.h"
#include "funds/GroupTypes_p.h"
#include "funds/ToolBarKeys_p.h"
#include "funds/frm_FundSelector.h"
#include "host/Kivbase.h"
#include "toolkit/Look.h"
#include "toolkit/TApplication.h"
#include "toolkit/TScreen.h"

#include <QHash>
#include <QResizeEvent>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QVarLengthArray>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

using namespace Zel::Allocation;

namespace
{
// The maximum values of a cell after an edit.
constexpr auto largestPercent = Currency::fromRaw(100 * Currency::Scale);
constexpr auto largestAmount = Currency::fromRaw(99'999'999'999 * (Currency::Scale / 100));

QString cellText(Currency value)
{
    return FormatFloat(FormatMask::TwoDecimals, value);
}

/// The indexes of one fund's records in the list, in ascending order.
class Places
{
public:
    void Add(int place)
    {
        m_places.insert(std::lower_bound(m_places.cbegin() + m_taken, m_places.cend(), place), place);
    }
    bool IsEmpty() const { return m_taken == m_places.size(); }
    int TakeFirst() { return m_places.at(m_taken++); }

private:
    QVarLengthArray<int, 2> m_places;
    qsizetype m_taken = 0;
};

/// For each fund the indexes of its records that have no row yet.
QHash<int, Places> placesOf(const TFunds &funds)
{
    QHash<int, Places> places;
    places.reserve(funds.Length());
    for (int i = 0; i < funds.Length(); ++i)
        places[funds[i].FundID].Add(i);
    return places;
}

int appendRow(TtsGrid &grid, const QVariant &picture, const QString &name, const TFundRec &record)
{
    using Frame = TfraFundAllocation;
    const int row = grid.AppendRow();
    grid.SetCell(Frame::PictureColumn, row, picture);
    grid.SetCell(Frame::FundColumn, row, name);
    grid.SetCell(Frame::PercentColumn, row, record.Percent.toVariant());
    grid.SetCell(Frame::AmountColumn, row, record.Amount.toVariant());
    return row;
}

/// Moves the record at @p from to @p place, where its row is. The record that stood there belongs to another
/// fund, because every record of this fund before @p from has its place. It was the first of its fund without
/// a row, because every record before @p place has one.
void takePlace(TFunds &funds, QHash<int, Places> &places, int from, int place)
{
    if (from != place) {
        Places &others = places[funds[place].FundID];
        others.TakeFirst();
        others.Add(from);
    }
    TfraFundAllocation::MoveFundInList(funds, from, place);
}

/// Removes the records without a row in the dataset.
void dropUnplaced(TFunds &funds)
{
    std::vector<TFundRec> placed;
    std::copy_if(funds.begin(), funds.end(), std::back_inserter(placed),
                 [](const TFundRec &record) { return record.Bookmark != nullptr; });
    funds = TFunds(std::move(placed));
}

/// Filters the dataset to the listed funds.
void showOnly(const TFunds &funds, TDataSet *dataset)
{
    QStringList ids;
    ids.reserve(funds.Length());
    for (const TFundRec &record : funds)
        ids.append(QString::number(record.FundID));
    dataset->SetFiltered(false);
    dataset->SetFilter(u"FundID in (%1)"_s.arg(ids.join(u',')));
    dataset->SetFiltered(true);
}

void wantSome(const TDataSet *dataset)
{
    if (!dataset)
        throw EDatabaseError(TfraFundAllocation::tr("There is no dataset to read the funds from."));
}

/// Whether the scroll area that contains the frame shows its vertical scroll bar. The grid's own scroll bar
/// does not count.
bool ownScrollBarShowing(const TfraFundAllocation &frame)
{
    const QWidget *const view = frame.parentWidget();
    const auto *const area = view ? qobject_cast<const QScrollArea *>(view->parentWidget()) : nullptr;
    return area && area->widget() == &frame && area->verticalScrollBar()->isVisible();
}
} // namespace

// --- construction and destruction

TfraFundAllocation::TfraFundAllocation(QWidget *parent)
    : TBaseFrame(parent), tsMaskDefs(new TtsMaskDefs(this)), imgFund(new TImageList(this)),
      cdsFunds(new TClientDataSet(this)), cdsFundMessage(new TClientDataSet(this)),
      m_groups(std::make_unique<Zel::GroupTypes>())
{
    // The first Currency variant registers the conversions that setProperty needs.
    static_cast<void>(Currency().toVariant());
    setupUi(this);
    tsMaskDefs->setObjectName(u"tsMaskDefs"_s);
    tsMaskDefs->Add(u"maskPercent"_s, u"[#][#][#].[#][#]"_s);
    tsMaskDefs->Add(u"maskAmount"_s, u"*10[#].[#][#]"_s);
    imgFund->setObjectName(u"imgFund"_s);
    imgFund->AddGlyphs({u"funds"_s});
    m_picture = imgFund->Icon(0);

    cdsFunds->setObjectName(u"cdsFunds"_s);
    cdsFunds->Params().Add(u"pProductID"_s, TParamDataType::FixedChar);
    cdsFunds->Params().Add(u"pProductGroupID"_s, TParamDataType::FixedChar);
    cdsFunds->BeforeClose = [this](TDataSet *) { cdsFundsBeforeClose(); };
    cdsFunds->AfterClose = [this](TDataSet *) { CheckButtonStatus(); };
    cdsFundMessage->setObjectName(u"cdsFundMessage"_s);
    cdsFundMessage->SetProviderName(u"dspFundMessage"_s);
    cdsFundMessage->Params().Add(u"pFundGroupID"_s, TParamDataType::Integer);

    m_designedHeader = pnlHeaderCaption->caption();
    bindGrid();
    bindToolBar();
    new Zel::AllocationLook(*this); // owned by the frame
}

TfraFundAllocation::~TfraFundAllocation()
{
    // The components are destroyed after this and must not call the frame.
    FundGrid->viewport()->removeEventFilter(this);
    FundGrid->OnCellChanged = nullptr;
    FundGrid->OnCellEdit = nullptr;
    FundGrid->OnEndCellEdit = nullptr;
    FundGrid->OnUndoCellEdit = nullptr;
    FundGrid->OnRowChanged = nullptr;
    cdsFunds->BeforeClose = nullptr;
    cdsFunds->AfterClose = nullptr;
    GuardedCall([this] {
        DoFreeBookMarks(m_funds, cdsFunds);
        m_funds = TFunds();
        cdsFunds->Close();
    });
}

void TfraFundAllocation::bindGrid()
{
    m_columns = std::make_unique<Zel::AllocationColumns>(*FundGrid, *tsMaskDefs);
    designHeadings();
    DoAllocByAmount();

    FundGrid->OnCellChanged = [this](int column, const QVariant &before, const QVariant &now) {
        if (column == PercentColumn)
            m_percentSum.Replace(before, now);
        else if (column == AmountColumn)
            m_amountSum.Replace(before, now);
    };
    // The record has more decimals than its cell, so the record before the edit is stored, to be restored
    // after an entry that is taken back.
    const auto before = std::make_shared<std::optional<TFundRec>>();
    FundGrid->OnCellEdit = [this, before](int column, int row, bool byUser) {
        if (const TFundRec *const record = recordOf(row); byUser && record && !*before)
            *before = *record;
        FundGridCellEdit(FundGrid, column, row, byUser);
    };
    FundGrid->OnEndCellEdit = [this, before](int column, int row, bool &cancel) {
        FundGridEndCellEdit(FundGrid, column, row, cancel);
        before->reset();
    };
    connect(FundGrid, &TtsGrid::EntryTakenBack, this, [this, before](int column, int row) {
        TFundRec *const record = recordOf(row);
        if (!record || !*before)
            return;
        const Change change(*this, row);
        record->Amount = (*before)->Amount;
        record->Percent = (*before)->Percent;
        const bool byAmount = column == AmountColumn;
        FundGrid->SetCell(byAmount ? PercentColumn : AmountColumn, row,
                          Shown(byAmount ? record->Percent : record->Amount).toVariant());
    });
    FundGrid->OnUndoCellEdit = [this](int column, int row, bool byUser, bool &cancel) {
        FundGridUndoCellEdit(FundGrid, column, row, byUser, cancel);
    };
    FundGrid->OnRowChanged = [this](int oldRow, int newRow) { FundGridRowChanged(FundGrid, oldRow, newRow); };
    FundGrid->viewport()->installEventFilter(this);
}

void TfraFundAllocation::bindToolBar()
{
    m_keys = std::make_unique<Zel::ToolBarKeys>();
    const auto bind = [this](TSpeedButton *button, const QKeySequence &keys, QWidget *where,
                             Qt::ShortcutContext context, void (TfraFundAllocation::*handler)()) {
        connectGuarded(button, &QAbstractButton::clicked, this, handler);
        m_keys->Add(button, keys, where, context);
    };
    // The keys work only while the focus is in this frame, because a page may have several such frames.
    const auto inFrame = [&](TSpeedButton *button, const QKeySequence &keys,
                             void (TfraFundAllocation::*handler)()) {
        bind(button, keys, this, Qt::WidgetWithChildrenShortcut, handler);
    };
    using Self = TfraFundAllocation;
    inFrame(fraFundToolBar->sbtFunds, Qt::CTRL | Qt::Key_F, &Self::fraFundToolBarsbtFundsClick);
    inFrame(fraFundToolBar->sbtDuplicate, Qt::CTRL | Qt::Key_D, &Self::fraFundToolBarsbtDuplicateClick);
    // Delete works on the grid only: in an open cell editor the key deletes a character.
    bind(fraFundToolBar->sbtRemove, Qt::Key_Delete, FundGrid, Qt::WidgetShortcut,
         &Self::fraFundToolBarsbtRemoveClick);
    inFrame(fraFundToolBar->sbtClear, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete,
            &Self::fraFundToolBarsbtClearClick);
    inFrame(fraFundToolBar->sbtAllocateAmount, Qt::CTRL | Qt::Key_L,
            &Self::fraFundToolBarsbtAllocateAmountClick);
    inFrame(fraFundToolBar->sbtResetToZero, Qt::CTRL | Qt::Key_R, &Self::fraFundToolBarsbtResetToZeroClick);
    inFrame(fraFundToolBar->sbtGuarantee, Qt::CTRL | Qt::Key_G, &Self::fraFundToolBarsbtGuaranteeClick);
    inFrame(fraFundToolBar->sbtInvested, Qt::CTRL | Qt::Key_I, &Self::fraFundToolBarsbtInvestedClick);
    m_keys->AddToHints();
    connect(fraFundToolBar, &TfraFundToolBar::Retranslated, this, [this] { m_keys->AddToHints(); });
}

// Sets the designed headings in the current language, except those that the host has set.
void TfraFundAllocation::designHeadings()
{
    const auto follow = [this](int column, const QString &heading, const QString &shown,
                               void (TfraFundAllocation::*set)(const QString &)) {
        QString &designed = m_designedHeadings[static_cast<std::size_t>(column - FundColumn)];
        if (shown == designed)
            (this->*set)(heading);
        designed = heading;
    };
    using Self = TfraFundAllocation;
    FundGrid->Col(PictureColumn).SetPictureText(tr("fund"));
    follow(FundColumn, tr("Fund"), m_captionFund, &Self::Set_ColumnCaption_Fund);
    follow(PercentColumn, tr("Initial (%)"), m_captionPercent, &Self::Set_ColumnCaption_Percent);
    follow(AmountColumn, tr("Initial (R)"), m_captionAmount, &Self::Set_ColumnCaption_Amount);
}

void TfraFundAllocation::retranslate()
{
    const QString header = pnlHeaderCaption->caption();
    const bool headerOfHost = header != m_designedHeader;
    retranslateUi(this);
    m_designedHeader = pnlHeaderCaption->caption();
    if (headerOfHost)
        pnlHeaderCaption->setCaption(header);
    designHeadings();
    if (m_captionsFilled)
        UpdateRemainingCaption();
}

void TfraFundAllocation::InitializeFrame()
{
    TBaseFrame::InitializeFrame();
    m_columns->Remember();
    m_captionFund = FundGrid->Col(FundColumn).Heading().trimmed();
    m_captionPercent = FundGrid->Col(PercentColumn).Heading().trimmed();
    m_captionAmount = FundGrid->Col(AmountColumn).Heading().trimmed();
    fraFundToolBar->sbtGuarantee->setEnabled(false);
    hideInvested();
    CheckButtonStatus();
}

// --- properties

void TfraFundAllocation::Set_AllocByAmount(bool byAmount)
{
    if (m_allocByAmount == byAmount)
        return;
    const Change change(*this);
    FundGrid->EndEdit(true);
    m_allocByAmount = byAmount;
    DoAllocByAmount();
    // The captions now show the remainder of the other column.
    RecalcRemainingAmount(editableColumn());
    UpdateRemainingCaption();
    Q_EMIT AllocByAmountChanged(byAmount);
}

void TfraFundAllocation::Set_InvestmentAmount(Currency amount)
{
    const Change change(*this);
    FundGrid->EndEdit(true);
    const bool changed = m_investmentAmount != amount;
    m_investmentAmount = amount;
    const auto tell = qScopeGuard([this, changed] {
        if (changed)
            Q_EMIT InvestmentAmountChanged(m_investmentAmount);
    });
    m_investmentPercent = largestPercent;
    setRemaining(amount, largestPercent);
    if (m_allocByAmount) {
        const CaptionBatch batch(*this);
        if (cdsFunds->Active()) {
            DisplaySelectedFunds(cdsFunds, m_funds);
            noticeCount();
        } else {
            // Recalculates the rows that the grid still shows although the dataset was closed.
            for (int row = 1; row <= FundGrid->RowCount(); ++row)
                FormatCell(this, AmountColumn, row);
        }
    }
    RecalcRemainingAmount(editableColumn());
    UpdateRemainingCaption();
}

void TfraFundAllocation::Set_ShowColumn_Percent(bool show)
{
    const Change change(*this);
    const bool changed = std::exchange(m_showColumnPercent, show) != show;
    RestoreOriginalColumnWidths();
    FundGrid->Col(PercentColumn).SetVisible(show);
    SizeGridColumns();
    if (changed && show)
        standWhereOneTypes(!FundGrid->Col(AmountColumn).Visible());
    if (!show)
        Set_AllocByAmount(true);
    FundGridRowChanged(this, FundGrid->CurrentRow(), FundGrid->CurrentRow());
    if (changed)
        Q_EMIT ShowColumn_PercentChanged(show);
}

void TfraFundAllocation::Set_ShowColumn_Amount(bool show)
{
    const Change change(*this);
    const bool changed = std::exchange(m_showColumnAmount, show) != show;
    RestoreOriginalColumnWidths();
    FundGrid->Col(AmountColumn).SetVisible(show);
    SizeGridColumns();
    if (changed && show)
        standWhereOneTypes(!FundGrid->Col(PercentColumn).Visible());
    if (!show)
        Set_AllocByAmount(false);
    FundGridRowChanged(this, FundGrid->CurrentRow(), FundGrid->CurrentRow());
    if (changed)
        Q_EMIT ShowColumn_AmountChanged(show);
}

void TfraFundAllocation::Set_ShowToolBar(bool show)
{
    if (m_showToolBar == show)
        return;
    m_showToolBar = show;
    pnlToolBar->setVisible(show);
    Q_EMIT ShowToolBarChanged(show);
}

void TfraFundAllocation::Set_ShowStatusPanel(bool show)
{
    if (m_showStatusPanel == show)
        return;
    m_showStatusPanel = show;
    pnlAllocationStatus->setVisible(show);
    Q_EMIT ShowStatusPanelChanged(show);
}

void TfraFundAllocation::setCaption(int column, const QString &caption, QString &kept)
{
    kept = caption;
    FundGrid->Col(column).SetHeading(caption.trimmed());
}

void TfraFundAllocation::Set_ColumnCaption_Fund(const QString &caption)
{
    setCaption(FundColumn, caption, m_captionFund);
    Q_EMIT ColumnCaption_FundChanged(caption);
}

void TfraFundAllocation::Set_ColumnCaption_Amount(const QString &caption)
{
    setCaption(AmountColumn, caption, m_captionAmount);
    Q_EMIT ColumnCaption_AmountChanged(caption);
}

void TfraFundAllocation::Set_ColumnCaption_Percent(const QString &caption)
{
    setCaption(PercentColumn, caption, m_captionPercent);
    Q_EMIT ColumnCaption_PercentChanged(caption);
}

bool TfraFundAllocation::Get_ShowButtonGuarantee() const
{
    return !fraFundToolBar->sbtGuarantee->isHidden();
}

void TfraFundAllocation::Set_ShowButtonGuarantee(bool show)
{
    if (Get_ShowButtonGuarantee() == show)
        return;
    fraFundToolBar->sbtGuarantee->setVisible(show);
    Q_EMIT ShowButtonGuaranteeChanged(show);
}

bool TfraFundAllocation::Get_ShowButtonInvested() const
{
    return !fraFundToolBar->sbtInvested->isHidden();
}

void TfraFundAllocation::Set_ShowButtonInvested(bool show)
{
    if (Get_ShowButtonInvested() == show)
        return;
    m_investedSuppressed = !show;
    fraFundToolBar->sbtInvested->setVisible(show);
    Q_EMIT ShowButtonInvestedChanged(show);
}

void TfraFundAllocation::hideInvested()
{
    if (!Get_ShowButtonInvested())
        return;
    fraFundToolBar->sbtInvested->hide();
    Q_EMIT ShowButtonInvestedChanged(false);
}

void TfraFundAllocation::Set_FundsPerProductDataSet(const QVariant &packet)
{
    const Change change(*this);
    FundGrid->EndEdit(true);
    cdsFunds->SetData(packet);
    m_fundsPerProduct = packet;
    DisplaySelectedFunds(cdsFunds, m_funds);
    noticeCount();
    CheckButtonStatus();
    Q_EMIT FundsPerProductDataSetChanged();
}

// --- setting up and showing

void TfraFundAllocation::SetupFundAllocation(TFunds &funds, int productGroupID, TLocalConnection *connection)
{
    const Change change(*this);
    FundGrid->EndEdit(true);
    m_connection = connection;
    cdsFundMessage->SetRemoteServer(connection);
    m_productGroupID = productGroupID;
    UpdateRemainingCaption();
    if (!m_funds.SharesStorageWith(funds))
        DoFreeBookMarks(m_funds, cdsFunds);
    m_funds = funds;
    showList();
}

// Shows m_funds after the list was replaced.
void TfraFundAllocation::showList()
{
    {
        // When the new list cannot be shown, the frame keeps neither the new list nor the rows of the former
        // one.
        auto nothing = qScopeGuard([this] {
            DoFreeBookMarks(m_funds, cdsFunds);
            m_funds = TFunds();
            showNoRows();
            noticeCount();
            CheckButtonStatus();
        });
        DisplaySelectedFunds(cdsFunds, m_funds);
        if (m_funds.IsEmpty())
            showNoRows();
        nothing.dismiss();
    }
    noticeCount();
    CheckButtonStatus();
    DoAllocByAmount();
}

QList<TAllocationRow> TfraFundAllocation::Allocation() const
{
    QList<TAllocationRow> rows;
    rows.reserve(m_funds.Length());
    for (const TFundRec &record : m_funds)
        rows.append({record.FundID, record.Amount, record.Percent});
    return rows;
}

QList<TAllocationRow> TfraFundAllocation::SetAllocation(const QList<TAllocationRow> &rows)
{
    if (!rows.isEmpty())
        wantDataset(cdsFunds);
    const Change change(*this);
    FundGrid->EndEdit(true);
    std::vector<TFundRec> records;
    records.reserve(static_cast<std::size_t>(rows.size()));
    for (const TAllocationRow &row : rows)
        records.push_back({row.FundID, nullptr, row.Amount, row.Percent});
    DoFreeBookMarks(m_funds, cdsFunds);
    m_funds = TFunds(std::move(records));
    showList();
    // Either all rows of a fund are shown or none.
    QSet<int> shown;
    shown.reserve(m_funds.Length());
    for (const TFundRec &record : m_funds)
        shown.insert(record.FundID);
    QList<TAllocationRow> leftOut;
    std::copy_if(rows.cbegin(), rows.cend(), std::back_inserter(leftOut),
                 [&shown](const TAllocationRow &row) { return !shown.contains(row.FundID); });
    return leftOut;
}

// Throws an error that tells the host developer what to do; the host does not know the dataset itself.
void TfraFundAllocation::wantDataset(const TDataSet *dataset) const
{
    wantSome(dataset);
    if (dataset == cdsFunds && !dataset->Active())
        throw EDatabaseError(
            tr("Dataset \"%1\" is not open: set FundsPerProductDataSet first.").arg(cdsFunds->objectName()));
}

void TfraFundAllocation::showNoRows()
{
    FundGrid->SetRowCount(0);
    RecalcRemainingAmount(editableColumn());
    UpdateRemainingCaption();
}

void TfraFundAllocation::noticeCount()
{
    if (std::exchange(m_shownCount, m_funds.Length()) != m_funds.Length())
        Q_EMIT FundCountChanged(m_funds.Length());
}

void TfraFundAllocation::DisplaySelectedFunds(TDataSet *dataset, TFunds &funds)
{
    if (funds.IsEmpty())
        return;
    // The fields are looked up before any change, so that an exception changes nothing.
    wantDataset(dataset);
    const TField *const fundID = dataset->FieldByName(u"FundID"_s);
    const TField *const fundName = dataset->FieldByName(u"FundName"_s);
    const Change change(*this);
    FundGrid->EndEdit(true);
    const CaptionBatch captions(*this);
    DoFreeBookMarks(funds, dataset);

    QHash<int, Places> places = placesOf(funds);
    dataset->DisableControls();
    const auto controls = qScopeGuard([dataset] { dataset->EnableControls(); });
    showOnly(funds, dataset);
    const int current = FundGrid->CurrentRow();
    FundGrid->BeginUpdate();
    // EndUpdate reports the change of the row, which may throw. The guard ends the update only after an
    // exception.
    auto update = qScopeGuard([this] { GuardedCall([this] { FundGrid->EndUpdate(); }); });
    FundGrid->SetRowCount(0);
    const int editable = editableColumn();
    int pos = 0;
    for (dataset->First(); !dataset->Eof(); dataset->Next()) {
        const auto found = places.find(fundID->AsInteger());
        while (found != places.end() && !found->IsEmpty()) {
            const int i = found->TakeFirst();
            funds[i].Bookmark = dataset->GetBookmark();
            const int row = appendRow(*FundGrid, m_picture, fundName->AsString().trimmed(), funds[i]);
            takePlace(funds, places, i, pos++);
            FormatCell(this, editable, row);
        }
    }
    if (pos < funds.Length())
        dropUnplaced(funds);
    if (pos == 0) {
        showNoRows();
    } else {
        // The current cell moves to the editable column, because the mode may have changed while there were
        // no rows.
        const int column = FundGrid->CurrentCol();
        FundGrid->SetCurrentCell(column == 0 || column >= PercentColumn ? editable : column,
                                 qBound(1, current, pos));
    }
    SizeGridColumns();
    update.dismiss();
    try {
        FundGrid->EndUpdate();
    } catch (...) {
        // Reading the current row's fund failed, but the rows are complete. The row count and the buttons are
        // updated before the exception is passed on. CheckButtonStatus may throw the same exception again,
        // which is ignored.
        noticeCount();
        try {
            CheckButtonStatus();
        } catch (const Exception &) { // NOLINT(bugprone-empty-catch)
        }
        throw;
    }
}

void TfraFundAllocation::DoFreeBookMarks(TFunds &funds, TDataSet *dataset)
{
    for (TFundRec &record : funds) {
        if (record.Bookmark && dataset && dataset->BookmarkValid(record.Bookmark))
            dataset->FreeBookmark(record.Bookmark);
        record.Bookmark = nullptr;
    }
}

void TfraFundAllocation::cdsFundsBeforeClose()
{
    DoFreeBookMarks(m_funds, cdsFunds);
}

void TfraFundAllocation::UpdateRemainingCaption()
{
    if (m_captionBatches > 0) {
        m_captionDue = true;
        return;
    }
    m_captionsFilled = true;
    const auto thousands = [](Currency value) { return FormatFloat(FormatMask::Thousands, value); };
    if (m_allocByAmount) {
        pnlAmount->setCaption(tr("Investment Amount: %1").arg(thousands(m_investmentAmount)));
        // The remainder has no thousands separators, unlike the investment amount.
        pnlRemainAmount->setCaption(
            tr("Remaining: %1 (%2%)").arg(cellText(m_remainingAmount), cellText(m_remainingPercent)));
    } else {
        pnlAmount->setCaption(tr("Investment: %1%").arg(thousands(m_investmentPercent)));
        pnlRemainAmount->setCaption(tr("Remaining: %1%").arg(cellText(m_remainingPercent)));
    }
}

void TfraFundAllocation::setRemaining(Currency amount, Currency percent)
{
    if (m_remainingAmount == amount && m_remainingPercent == percent)
        return;
    m_remainingAmount = amount;
    m_remainingPercent = percent;
    Q_EMIT RemainingChanged();
}

void TfraFundAllocation::RecalcRemainingAmount(int column)
{
    if (column == PercentColumn) {
        setRemaining(m_remainingAmount, m_percentSum.LeftOf(m_investmentPercent));
    } else if (column == AmountColumn) {
        const Currency left = m_amountSum.LeftOf(m_investmentAmount);
        setRemaining(left,
                     m_investmentAmount.isZero() ? m_investmentPercent : PercentOf(left, m_investmentAmount));
    }
}

void TfraFundAllocation::DoAllocByAmount()
{
    const auto apply = [this](int column, bool editable) {
        FundGrid->Col(column).SetReadOnly(!editable);
        FundGrid->Col(column).SetFontColor(editable ? TColor::clBlack : TColor::clSilver);
    };
    apply(PercentColumn, !m_allocByAmount);
    apply(AmountColumn, m_allocByAmount);
    standWhereOneTypes(false);
}

// Moves the current cell to the editable column. From the fund's name it moves only with fromAnyColumn, which
// means that the cell was there because no column with numbers was visible.
void TfraFundAllocation::standWhereOneTypes(bool fromAnyColumn)
{
    if (FundGrid->CurrentRow() > 0 && (fromAnyColumn || FundGrid->CurrentCol() >= PercentColumn))
        FundGrid->SetCurrentCell(editableColumn(), FundGrid->CurrentRow());
}

Currency TfraFundAllocation::RoundToTwoDecimalsCurrency(Currency value)
{
    return RoundToTwoDecimals(value);
}

Currency TfraFundAllocation::GetCurrentGridRowValue(int column) const
{
    const int row = FundGrid->CurrentRow();
    return row > 0 ? ValueOf(FundGrid->Cell(column, row)) : Currency();
}

void TfraFundAllocation::SetCurrentGridRowValue(int column, Currency value)
{
    const int row = FundGrid->CurrentRow();
    if (row == 0)
        return;
    FundGrid->EndEdit(true);
    const Change change(*this, row);
    FundGrid->SetCell(column, row, value.toVariant());
    FormatCell(this, column, row);
}

void TfraFundAllocation::FormatCell(QObject *sender, int column, int row)
{
    const Change change(*this, row);
    FundGridCellEdit(sender, column, row, false);
    bool cancel = false;
    FundGridEndCellEdit(sender, column, row, cancel);
}

TFundRec *TfraFundAllocation::recordOf(int row) noexcept
{
    return row >= 1 && row <= m_funds.Length() ? &m_funds.begin()[row - 1] : nullptr;
}

void TfraFundAllocation::FundGridCellEdit(QObject *, int column, int row, bool)
{
    if (column != PercentColumn && column != AmountColumn)
        return;
    const Change change(*this, row);
    const QVariant &cell = FundGrid->Cell(column, row);
    if (!IsBlank(cell)) {
        const Currency value = ValueOf(cell);
        const bool byAmount = column == AmountColumn;
        const Currency other =
            byAmount ? PercentOf(value, m_investmentAmount) : AmountOf(value, m_investmentAmount);
        // The record keeps four decimals; only the cell is rounded to two.
        FundGrid->SetCell(byAmount ? PercentColumn : AmountColumn, row, Shown(other).toVariant());
        if (TFundRec *const record = recordOf(row)) {
            record->Amount = byAmount ? value : other;
            record->Percent = byAmount ? other : value;
        }
        RecalcRemainingAmount(column);
    }
    UpdateRemainingCaption();
}

void TfraFundAllocation::FundGridEndCellEdit(QObject *sender, int column, int row, bool &)
{
    if (column != PercentColumn && column != AmountColumn)
        return;
    const Change change(*this, row);
    const QVariant &cell = FundGrid->Cell(column, row);
    const Currency value = ValueOf(cell);
    const bool blank = IsBlank(cell);
    if (!blank && value <= (column == PercentColumn ? largestPercent : largestAmount)) {
        FundGrid->SetCell(column, row, Shown(value).toVariant());
        return;
    }
    // A percentage above the maximum becomes the maximum; an amount above the maximum becomes 0.
    const Currency corrected = column == PercentColumn && !blank ? largestPercent : Currency();
    FundGrid->SetCell(column, row, corrected.toVariant());
    FundGridCellEdit(sender, column, row, false); // recalculates the row after the correction
}

void TfraFundAllocation::FundGridUndoCellEdit(QObject *, int, int, bool, bool &cancel)
{
    cancel = true;
}

void TfraFundAllocation::FundGridRowChanged(QObject *, int, int newRow)
{
    m_fundTerm = -1;
    m_fundID = -1;
    m_groupTypeID = -1;
    if (m_funds.IsEmpty() || newRow == 0)
        return;
    const TFundRec *const record = recordOf(newRow);
    if (!record || !record->Bookmark || !cdsFunds->BookmarkValid(record->Bookmark)) {
        fraFundToolBar->sbtGuarantee->setEnabled(false);
        hideInvested();
        return;
    }
    cdsFunds->GotoBookmark(record->Bookmark);
    m_fundTerm = cdsFunds->FieldByName(u"FundTerm"_s)->AsInteger();
    m_fundID = cdsFunds->FieldByName(u"FundID"_s)->AsInteger();
    m_groupTypeID = cdsFunds->FieldByName(u"GroupTypeID"_s)->AsInteger();
    m_fundGroupID = cdsFunds->FieldByName(u"FundGroupID"_s)->AsInteger();

    if (!m_investedSuppressed) {
        bool invested = false;
        if (Zel::FundRules::Contains(Zel::FundRules::GroupsWithMessages, m_fundGroupID)) {
            TDynamicArrayOfInt withMessage;
            for (const int group : Zel::FundRules::GroupsWithMessages)
                ConcatDynamicArraySet(withMessage, BuildFundMessageSetFromDataSet(group));
            invested = FundInList(m_fundID, withMessage);
        }
        const bool before = Get_ShowButtonInvested();
        fraFundToolBar->sbtInvested->setVisible(invested);
        if (before != invested)
            Q_EMIT ShowButtonInvestedChanged(invested);
    }
    fraFundToolBar->sbtGuarantee->setEnabled(m_fundTerm > 0 && FundGrid->Col(AmountColumn).Visible() &&
                                             cdsFunds->FieldByName(u"AllowAsGuarantee"_s)->AsBoolean());
}

void TfraFundAllocation::CheckButtonStatus()
{
    const int current = FundGrid->CurrentRow();
    const bool rows = FundGrid->RowCount() > 0;
    fraFundToolBar->sbtClear->setEnabled(rows);
    fraFundToolBar->sbtAllocateAmount->setEnabled(rows);
    fraFundToolBar->sbtResetToZero->setEnabled(rows);
    fraFundToolBar->sbtRemove->setEnabled(current >= 1);
    fraFundToolBar->sbtFunds->setEnabled(cdsFunds->Active());
    fraFundToolBar->sbtDuplicate->setEnabled(rows);
    if (!rows) {
        fraFundToolBar->sbtGuarantee->setEnabled(false);
        hideInvested();
    }
    FundGridRowChanged(this, current, current);
}

void TfraFundAllocation::SizeGridColumns()
{
    m_columns->Share(ownScrollBarShowing(*this));
}

void TfraFundAllocation::RestoreOriginalColumnWidths()
{
    m_columns->Restore();
}

void TfraFundAllocation::FrameResize()
{
    SizeGridColumns();
    if (CurrentLook() == Look::Designed)
        pnlAmount->setFixedWidth(width() / 2);
}

void TfraFundAllocation::changeEvent(QEvent *event)
{
    TBaseFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void TfraFundAllocation::resizeEvent(QResizeEvent *event)
{
    TBaseFrame::resizeEvent(event);
    FrameResize();
}

bool TfraFundAllocation::eventFilter(QObject *watched, QEvent *event)
{
    // The grid's scroll bar appears and disappears with the number of rows, without a resize of the frame.
    if (watched == FundGrid->viewport() && event->type() == QEvent::Resize) {
        const auto *const resized = static_cast<QResizeEvent *>(event);
        if (resized->size().width() != resized->oldSize().width())
            SizeGridColumns();
    }
    return TBaseFrame::eventFilter(watched, event);
}

// --- the fund list

void TfraFundAllocation::AddFundIDToList(int fundID, Currency amount, Currency percent)
{
    // Checked before the change, so that an exception changes nothing.
    wantDataset(cdsFunds);
    cdsFunds->FieldByName(u"FundID"_s);
    const Change change(*this);
    FundGrid->EndEdit(true);
    TFundRec record;
    record.FundID = fundID;
    record.Amount = amount;
    record.Percent = percent;
    m_funds.Append(record);
    RestoreOriginalColumnWidths();
    DisplaySelectedFunds(cdsFunds, m_funds);
    noticeCount();
    CheckButtonStatus();
}

void TfraFundAllocation::RemoveFundFromList(TFunds &funds, int index, bool updateGrid)
{
    if (funds.Length() < index)
        return;
    const Change change(*this);
    FundGrid->EndEdit(true);
    const bool held = index >= 0 && index < funds.Length();
    // The rows belong to the frame's list, with which the host's variable may share its storage.
    const bool shown = funds.SharesStorageWith(m_funds);
    if (held) {
        TFundRec &record = funds[index];
        cdsFunds->FreeBookmark(record.Bookmark);
        record.Bookmark = nullptr;
    }
    std::vector<TFundRec> others(funds.begin(), funds.end());
    if (held)
        others.erase(others.begin() + index);
    funds = TFunds(std::move(others));
    if (shown && updateGrid)
        m_funds = funds;
    // Updates the remainder and the count after list and grid are consistent again, also when reading the
    // data of the new current row throws.
    const auto follow = qScopeGuard([this, updateGrid] {
        GuardedCall([&] {
            if (updateGrid) {
                RecalcRemainingAmount(editableColumn());
                UpdateRemainingCaption();
            }
            noticeCount();
        });
    });
    // Without a removed record no row is removed; otherwise the rows after it would belong to wrong records.
    if (!updateGrid || !held || !shown || index >= FundGrid->RowCount())
        return;
    // The record's row is made current and deleted.
    FundGrid->SetCurrentRow(index + 1);
    FundGrid->DeleteRow(FundGrid->CurrentRow());
}

void TfraFundAllocation::ClearFunds()
{
    const Change change(*this);
    FundGrid->EndEdit(true);
    // Removes as many records from the front of the list as there are rows.
    const int rows = FundGrid->RowCount();
    if (rows > 0) {
        const int gone = qMin(rows, m_funds.Length());
        for (int i = 0; i < gone; ++i) {
            cdsFunds->FreeBookmark(m_funds[i].Bookmark);
            m_funds[i].Bookmark = nullptr;
        }
        m_funds = TFunds(std::vector<TFundRec>(m_funds.begin() + gone, m_funds.end()));
        showNoRows();
        noticeCount();
    }
    CheckButtonStatus();
}

void TfraFundAllocation::ResetValues()
{
    const Change change(*this);
    FundGrid->EndEdit(true);
    const CaptionBatch captions(*this);
    const int column = editableColumn();
    for (int row = 1; row <= FundGrid->RowCount(); ++row) {
        FundGrid->SetCell(column, row, Currency().toVariant());
        FundGridCellEdit(this, column, row, false);
    }
}

void TfraFundAllocation::MoveFundInList(TFunds &funds, int a, int b)
{
    const auto inside = [&funds](int index) { return index >= 0 && index < funds.Length(); };
    if (inside(a) && inside(b) && a != b)
        std::swap(funds[a], funds[b]);
}

bool TfraFundAllocation::FundInList(int fundID, const TDynamicArrayOfInt &ids)
{
    return ids.contains(fundID);
}

TDynamicArrayOfInt TfraFundAllocation::RemoveFromSet(const TDynamicArrayOfInt &ids, int fundID)
{
    TDynamicArrayOfInt rest = ids;
    rest.removeAll(fundID);
    return rest;
}

void TfraFundAllocation::ConcatDynamicArraySet(TDynamicArrayOfInt &target, const TDynamicArrayOfInt &source)
{
    target.append(source);
}

void TfraFundAllocation::AllocateIncomeSpecifiedForNIT(const QList<Currency> &values)
{
    const Change change(*this);
    FundGrid->EndEdit(true);
    const int rows = qMin(FundGrid->RowCount(), static_cast<int>(values.size()));
    for (int row = 1; row <= rows; ++row) {
        const Currency value = values.at(row - 1);
        FundGrid->SetCell(PercentColumn, row, value.toVariant());
        if (TFundRec *const record = recordOf(row))
            record->Percent = value;
    }
}

// --- commands

void TfraFundAllocation::fraFundToolBarsbtFundsClick()
{
    FundGrid->EndEdit(true);
    m_selectedFundIDs = BuildFundSet(m_funds);
    const QPointer<TfraFundAllocation> self(this); // the frame may be deleted while the dialog is open
    TDynamicArrayOfInt chosen = m_selectedFundIDs;
    const bool confirmed = TfrmFundSelector::FundSelector(
        chosen, m_productGroupID, m_connection, m_fundsPerProduct, PerProductFilter, WarningText, InfoText);
    if (!self)
        return;
    const Change change(*this); // after the dialog, so that changes by code meanwhile are reported at once
    if (confirmed) {
        m_selectedFundIDs = chosen;
        // The bookmarks are freed before records are dropped or copied.
        DoFreeBookMarks(m_funds, cdsFunds);
        QHash<int, const TFundRec *> known;
        for (const TFundRec &record : m_funds)
            known.insert(record.FundID, &record);
        std::vector<TFundRec> records;
        records.reserve(static_cast<std::size_t>(chosen.size()));
        for (const int id : std::as_const(chosen)) {
            TFundRec record;
            record.FundID = id;
            if (const TFundRec *const old = known.value(id))
                record = *old;
            records.push_back(record);
        }
        m_funds = TFunds(std::move(records));
        if (m_funds.IsEmpty())
            showNoRows();
        DisplaySelectedFunds(cdsFunds, m_funds);
        noticeCount();
    }
    CheckButtonStatus();
}

void TfraFundAllocation::fraFundToolBarsbtRemoveClick()
{
    const Change change(*this);
    if (FundGrid->CurrentRow() > 0)
        RemoveFundFromList(m_funds, FundGrid->CurrentRow() - 1, true);
    CheckButtonStatus();
}

void TfraFundAllocation::fraFundToolBarsbtClearClick()
{
    const Change change(*this);
    ClearFunds();
    SizeGridColumns();
}

void TfraFundAllocation::fraFundToolBarsbtAllocateAmountClick()
{
    const Change change(*this);
    FundGrid->EndEdit(true);
    const int column = editableColumn();
    QList<int> rows;
    for (int row = 1; row <= FundGrid->RowCount(); ++row) {
        if (ValueOf(FundGrid->Cell(column, row)).isZero())
            rows.append(row);
    }
    if (rows.isEmpty())
        return;
    const CaptionBatch captions(*this);
    RecalcRemainingAmount(AmountColumn);
    Currency share = RoundToTwoDecimalsCurrency(m_remainingAmount / Currency(static_cast<int>(rows.size())));
    for (const int row : std::as_const(rows)) {
        if (row == rows.last())
            share = RoundToTwoDecimalsCurrency(m_remainingAmount);
        FundGrid->SetCell(AmountColumn, row, share.toVariant());
        FormatCell(this, AmountColumn, row);
    }
}

void TfraFundAllocation::fraFundToolBarsbtResetToZeroClick()
{
    ResetValues();
}

void TfraFundAllocation::fraFundToolBarsbtDuplicateClick()
{
    Q_EMIT DuplicateClicked();
}

void TfraFundAllocation::fraFundToolBarsbtGuaranteeClick()
{
    Q_EMIT GuaranteeClicked();
}

void TfraFundAllocation::fraFundToolBarsbtInvestedClick()
{
    Q_EMIT InvestedClicked();
}

// --- data of a fund

bool TfraFundAllocation::seekFund(int fundID)
{
    if (cdsFunds->Locate(u"FundID"_s, fundID))
        return true;
    cdsFunds->Last();
    cdsFunds->Next();
    return false;
}

void TfraFundAllocation::GetFundInfo(int fundID, int &fundGroupID, int &groupTypeID, QString &fundName,
                                     QString &fundNameAfr, bool &internationalFund,
                                     Currency &minimumInitialAmount, Currency &minimumSchedAmount,
                                     Currency &buySellRate, Currency &manRate, Currency &underlyingManRate,
                                     Currency &guaranteeRate, Currency &trustRate, int &fundTerm,
                                     QString &mainframeID, QString &fundGroupName, QString &fundGroupNameAfr)
{
    fundGroupID = -1;
    groupTypeID = -1;
    const std::array rates{std::pair{&minimumInitialAmount, "MinimumInitialAmount"},
                           std::pair{&minimumSchedAmount, "MinimumSchedAmount"},
                           std::pair{&buySellRate, "BuySellRate"},
                           std::pair{&manRate, "ManRate"},
                           std::pair{&underlyingManRate, "UnderlyingManRate"},
                           std::pair{&guaranteeRate, "GuaranteeRate"},
                           std::pair{&trustRate, "TrustRate"}};
    for (const auto &[rate, name] : rates)
        *rate = Currency(-1);
    fundTerm = -1;
    internationalFund = false;
    mainframeID.clear();
    fundGroupName.clear();
    fundGroupNameAfr.clear();
    if (!cdsFunds->Active() || !seekFund(fundID))
        return;
    const auto field = [this](const char *name) { return cdsFunds->FieldByName(QLatin1String(name)); };
    groupTypeID = m_groups->TypeOf(fundID, field("GroupTypeID")->AsInteger(), *cdsFunds);
    fundGroupID = field("FundGroupID")->AsInteger();
    fundGroupName = field("FundGroupName")->AsString();
    fundGroupNameAfr = field("FundGroupName_Afr")->AsString();
    fundName = field("FundName")->AsString().trimmed();
    fundNameAfr = field("FundName_AFR")->AsString().trimmed();
    mainframeID = field("F.MainframeID")->AsString().trimmed();
    for (const auto &[rate, name] : rates)
        *rate = field(name)->AsCurrency();
    fundTerm = field("FundTerm")->AsInteger();
    internationalFund = field("InternationalFund")->AsBoolean();
    cdsFunds->Next();
}

void TfraFundAllocation::LoadPerformanceInfo(int fundID, TFundItem &item)
{
    if (!cdsFunds->Active() || !seekFund(fundID))
        return;
    const auto text = [this](const char *name) {
        return cdsFunds->FieldByName(QLatin1String(name))->AsString();
    };
    item.SetBenchmark(text("Benchmark"));
    item.SetBenchmarkPerf(text("BenchmarkPerf"));
    item.SetMinPerfFee(text("MinPerfFee"));
    item.SetMaxPerfFee(text("MaxPerfFee"));
}

TDynamicArrayOfInt TfraFundAllocation::BuildFundSet(const TFunds &funds)
{
    TDynamicArrayOfInt ids;
    ids.reserve(funds.Length());
    for (const TFundRec &record : funds)
        ids.append(record.FundID);
    return ids;
}

TDynamicArrayOfInt TfraFundAllocation::BuildFundSetFromDataSet(TDataSet *dataset, int fundGroupID)
{
    wantSome(dataset);
    TDynamicArrayOfInt ids;
    TClientDataSet rows;
    rows.CloneCursor(dataset, true, false);
    const TField *const group = rows.FieldByName(u"FundGroupID"_s);
    const TField *const fund = rows.FieldByName(u"FundID"_s);
    for (; !rows.Eof(); rows.Next()) {
        if (group->AsInteger() == fundGroupID)
            ids.append(fund->AsInteger());
    }
    return ids;
}

TDynamicArrayOfInt TfraFundAllocation::BuildFundMessageSetFromDataSet(int fundGroupID)
{
    cdsFundMessage->Params().ParamByName(u"pFundGroupID"_s).SetAsInteger(fundGroupID);
    try {
        misc_RefreshIT(cdsFundMessage, false);
    } catch (...) {
        // misc_RefreshIT leaves the controls disabled and the waiting cursor set after an exception.
        cdsFundMessage->EnableControls();
        Screen().SetCursor(TCursor::crDefault);
        throw;
    }
    const auto close = qScopeGuard([this] { misc_CloseTheQuery(cdsFundMessage); });
    TDynamicArrayOfInt ids;
    const TField *const fund = cdsFundMessage->FieldByName(u"FundID"_s);
    for (; !cdsFundMessage->Eof(); cdsFundMessage->Next())
        ids.append(fund->AsInteger());
    return ids;
}
