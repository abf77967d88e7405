#include "funds/fra_FundSelector.h"

#include "data/ClientDataSet.h"
#include "data/LocalConnection.h"
#include "dataviews/ill_Misc.h"
#include "toolkit/Glyphs.h"
#include "toolkit/LookFonts_p.h"
#include "toolkit/TApplication.h"
#include "toolkit/TColors.h"
#include "toolkit/TImageList.h"
#include "toolkit/TScreen.h"

#include <QBoxLayout>
#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto keyFundGroup = "FundGroupID";
constexpr auto keyGroupType = "GroupTypeID";

/// Restores the screen cursor when an exception ends a build, because misc_RefreshIT leaves the waiting
/// cursor then.
class CursorOnError
{
public:
    CursorOnError() : m_exceptions(std::uncaught_exceptions()) {}
    ~CursorOnError()
    {
        if (std::uncaught_exceptions() > m_exceptions)
            Screen().SetCursor(TCursor::crDefault);
    }
    CursorOnError(const CursorOnError &) = delete;
    CursorOnError &operator=(const CursorOnError &) = delete;

private:
    int m_exceptions;
};

/// The key by which captions are compared: trimmed and in lower case.
QString captionKey(const QString &caption)
{
    return caption.trimmed().toLower();
}

TClientDataSet *newDataSet(QObject *owner, const QString &name, const QString &provider)
{
    auto *dataSet = new TClientDataSet(owner);
    dataSet->setObjectName(name);
    dataSet->SetProviderName(provider);
    return dataSet;
}

/// The number of chosen funds at the end of the band over their list.
class CountChip : public QLabel
{
public:
    explicit CountChip(TPanel *band) : QLabel(band)
    {
        setObjectName(u"lblCount"_s);
        setAlignment(Qt::AlignCenter);
        auto *const row = new QHBoxLayout(band);
        row->setContentsMargins(0, 0, LookSpace::Medium, 0);
        row->addStretch(1);
        row->addWidget(this, 0, Qt::AlignVCenter);
    }

    QSize sizeHint() const override
    {
        const int height = HeightOf(LookHeight::Chip, fontMetrics());
        return {qMax(height, fontMetrics().horizontalAdvance(text()) + LookSpace::Large), height};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(ColorOf(LookColor::LineStrong, palette()));
        painter.setBrush(ColorOf(LookColor::NeutralGround, palette()));
        const qreal radius = height() / 2.0;
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
        painter.setPen(ColorOf(LookColor::NeutralText, palette()));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }
};

/// Shows the number of chosen funds in the application look.
void showCount(const TfraFundsSelectedListView &view)
{
    TPanel *const band = view.pnlHeaderCaption;
    auto *chip = band->findChild<QLabel *>(u"lblCount"_s);
    if (CurrentLook() == Look::Designed) {
        delete chip;
        if (!band->findChild<QLabel *>())
            delete band->layout();
        return;
    }
    if (!chip)
        chip = new CountChip(band);
    const int count = view.lvSelectedFunds->Items().Count();
    chip->setText(QString::number(count));
    chip->setVisible(count > 0);
}

void setFilter(TDataSet *dataSet, const QString &filter)
{
    dataSet->SetFiltered(false);
    dataSet->SetFilter(filter);
    dataSet->SetFiltered(true);
}
} // namespace

/// During its lifetime, exceptions of handlers that the frame's own operation causes are kept for the caller
/// of that operation, instead of going to the application's report.
class TfraFundSelector::HandlerErrors
{
public:
    explicit HandlerErrors(TfraFundSelector &frame)
        : m_frame(frame), m_outer(std::exchange(frame.m_errors, this))
    {
    }
    ~HandlerErrors() { m_frame.m_errors = m_outer; }
    HandlerErrors(const HandlerErrors &) = delete;
    HandlerErrors &operator=(const HandlerErrors &) = delete;

    void Keep(std::exception_ptr error) noexcept
    {
        if (!m_first)
            m_first = std::move(error);
    }
    void Rethrow()
    {
        if (m_first)
            std::rethrow_exception(std::exchange(m_first, nullptr));
    }

private:
    TfraFundSelector &m_frame;
    HandlerErrors *m_outer;
    std::exception_ptr m_first;
};

template <typename Body> void TfraFundSelector::Handle(Body &&body) noexcept
{
    if (!m_errors) {
        GuardedCall(std::forward<Body>(body));
        return;
    }
    try {
        std::forward<Body>(body)();
    } catch (...) {
        m_errors->Keep(std::current_exception());
    }
}

TfraFundSelector::TfraFundSelector(QWidget *parent) : TBaseFrame(parent)
{
    setupUi(this);
    CreateComponents();
    BindEvents();

    fraFundsSelectedListView->pnlHeaderCaption->setColorName(u"clGreen5"_s);
    fraFundsSelectedListView->pnlHeaderCaption->setTextColorName(u"clBlack"_s);
    fraFundsTreeView->tvFunds->SetDragMode(TDragMode::dmAutomatic);
    fraFundsSelectedListView->lvSelectedFunds->SetDragMode(TDragMode::dmAutomatic);
    fraFundsSelectedListView->lvSelectedFunds->SetSmallImages(imgCommon);

    splMain->setStretchFactor(0, 0);
    splMain->setStretchFactor(1, 1);
    splMain->setSizes({271, 616 - 271 - splMain->handleWidth()});
    // The info line stays at the bottom whether or not the warning is shown.
    QSizePolicy policy = lblWarningMessage->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    lblWarningMessage->setSizePolicy(policy);
    btnSelect->setIcon(GlyphIcon(u"selector-select"_s));
    btnCancel->setIcon(GlyphIcon(u"selector-cancel"_s));
    SetTextColors();
    FitButtons();

    setTabOrder(fraFundsTreeView->tvFunds, fraFundsSelectedListView->lvSelectedFunds);
    setTabOrder(fraFundsSelectedListView->lvSelectedFunds, btnSelect);
    setTabOrder(btnSelect, btnCancel);
    setFocusProxy(fraFundsTreeView->tvFunds);
}

TfraFundSelector::~TfraFundSelector()
{
    // Components destroyed later, for example the focused one, must not call the handlers.
    for (QObject *component : findChildren<QObject *>())
        component->disconnect(this);
    for (TClientDataSet *dataSet : {cdsFund, cdsFundGroup, cdsFundGroupType, cdsFundPerProduct}) {
        GuardedCall([dataSet] { misc_CloseTheQuery(dataSet); });
        dataSet->BeforeClose = nullptr;
    }
}

void TfraFundSelector::CreateComponents()
{
    cdsFundGroupType = newDataSet(this, u"cdsFundGroupType"_s, u"dspFundGroupType"_s);
    cdsFundGroupType->Params().Add(u"pProductGroupID"_s, TParamDataType::Integer);
    cdsFundGroup = newDataSet(this, u"cdsFundGroup"_s, u"dspFundGroup"_s);
    cdsFundGroup->Params().Add(u"pProductGroupID"_s, TParamDataType::FixedChar);
    cdsFund = newDataSet(this, u"cdsFund"_s, QString());
    cdsFundPerProduct = newDataSet(this, u"cdsFundPerProduct"_s, u"dspFundPerProduct"_s);
    for (TClientDataSet *dataSet : {cdsFund, cdsFundPerProduct}) {
        dataSet->Params().Add(u"pProductID"_s, TParamDataType::FixedChar);
        dataSet->Params().Add(u"pProductGroupID"_s, TParamDataType::FixedChar);
    }

    imgCommon = new TImageList(this);
    imgCommon->setObjectName(u"imgCommon"_s);
    imgCommon->AddGlyphs({u"selector-add"_s, u"selector-remove"_s, u"selector-clear"_s, u"selector-expand"_s,
                          u"selector-collapse"_s, u"selector-fundsheet"_s, u"fund-group"_s, u"fund"_s,
                          u"fund-type"_s, u"selector-select"_s});
}

void TfraFundSelector::BindEvents()
{
    cdsFundGroupType->BeforeOpen = [this](TDataSet *) { cdsFundGroupTypeBeforeOpen(); };
    cdsFundGroupType->BeforeClose = [this](TDataSet *) { cdsFundGroupTypeBeforeClose(); };
    cdsFundGroup->BeforeOpen = [this](TDataSet *) { cdsFundGroupBeforeOpen(); };
    cdsFundGroup->BeforeClose = [this](TDataSet *) { cdsFundGroupBeforeClose(); };
    cdsFund->BeforeClose = [this](TDataSet *) { cdsFundBeforeClose(); };
    cdsFundPerProduct->BeforeOpen = [this](TDataSet *) { cdsFundPerProductBeforeOpen(); };

    const auto bind = [this](auto *sender, auto signal, void (TfraFundSelector::*handler)()) {
        connect(sender, signal, this, [this, handler] { Handle([this, handler] { (this->*handler)(); }); });
    };
    bind(sbtAdd, &TSpeedButton::clicked, &TfraFundSelector::sbtAddClick);
    bind(sbtRemove, &TSpeedButton::clicked, &TfraFundSelector::sbtRemoveClick);
    bind(sbtClear, &TSpeedButton::clicked, &TfraFundSelector::sbtClearClick);
    bind(sbtExpand, &TSpeedButton::clicked, &TfraFundSelector::sbtExpandClick);
    bind(sbtCollapse, &TSpeedButton::clicked, &TfraFundSelector::sbtCollapseClick);
    bind(sbtFundSheet, &TSpeedButton::clicked, &TfraFundSelector::RequestFundSheet);
    bind(btnSelect, &QPushButton::clicked, &TfraFundSelector::btnSelectClick);
    bind(btnCancel, &QPushButton::clicked, &TfraFundSelector::btnCancelClick);
    bind(splMain, &QSplitter::splitterMoved, &TfraFundSelector::splMainMoved);

    TTreeView *tree = fraFundsTreeView->tvFunds;
    connect(tree, &TTreeView::Change, this,
            [this](TTreeNode *node) { Handle([this, node] { fraFundsTreeViewtvFundsChange(node); }); });
    bind(tree, &TTreeView::Enter, &TfraFundSelector::fraFundsTreeViewtvFundsEnter);
    bind(tree, &TTreeView::Exit, &TfraFundSelector::fraFundsTreeViewtvFundsExit);
    bind(tree, &TTreeView::DoubleClick, &TfraFundSelector::fraFundsTreeViewtvFundsDblClick);
    tree->OnAddition = [this](TTreeNode *node) { fraFundsTreeViewtvFundsAddition(node); };
    tree->OnDragOver = [this](QObject *, QObject *, int, int, TDragState, bool &accept) {
        fraFundsTreeViewtvFundsDragOver(accept);
    };
    tree->installEventFilter(this);

    TListView *list = fraFundsSelectedListView->lvSelectedFunds;
    connect(list, &TListView::ItemInserted, this, [this](TListItem *item) {
        Handle([this, item] { fraFundsSelectedListViewlvSelectedFundsInsert(item); });
    });
    connect(list, &TListView::ItemChanged, this, [this](TListItem *item) {
        Handle([this, item] { fraFundsSelectedListViewlvSelectedFundsChange(item); });
    });
    bind(list, &TListView::Enter, &TfraFundSelector::fraFundsSelectedListViewlvSelectedFundsEnter);
    bind(list, &TListView::Exit, &TfraFundSelector::fraFundsSelectedListViewlvSelectedFundsExit);
    list->OnDragOver = [this](QObject *, QObject *source, int, int, TDragState, bool &accept) {
        // A drag from another program is not a fund of the tree.
        if (source)
            fraFundsSelectedListViewlvSelectedFundsDragOver(accept);
        else
            accept = false;
    };
    list->installEventFilter(this);
}

void TfraFundSelector::BuildFundSelector(int ProductGroupID, const TDynamicArrayOfInt &PreselectedFundIDs,
                                         TLocalConnection *Connection, const QVariant &FundData,
                                         const QString &PerProductFilter, const QString &WarningText,
                                         const QString &InfoText)
{
    const CursorOnError cursor;
    HandlerErrors errors(*this);
    TListView *list = fraFundsSelectedListView->lvSelectedFunds;

    FProductGroupID = ProductGroupID;
    cdsFundGroupType->SetRemoteServer(Connection);
    cdsFundGroup->SetRemoteServer(Connection);
    cdsFund->SetData(FundData);
    cdsFundPerProduct->SetRemoteServer(Connection);
    sbtClearClick();
    misc_RefreshIT(cdsFundGroup, false);
    misc_RefreshIT(cdsFundGroupType, false);
    misc_RefreshIT(cdsFundPerProduct, false);
    if (const QString filter = PerProductFilter.trimmed(); !filter.isEmpty())
        setFilter(cdsFundPerProduct, filter);
    FilterDataSetThatHasChildren();
    fraFundsTreeView->BuildFundTreeView(*cdsFundGroupType, *cdsFundGroup, *cdsFund, imgCommon);
    errors.Rethrow();
    if (!PreselectedFundIDs.isEmpty())
        DisplaySelectedItems(PreselectedFundIDs);
    misc_SizeListViewColumns(*list);
    sbtClear->setEnabled(false);
    btnSelect->setEnabled(false);
    sbtRemove->setEnabled(false);
    FSelectionConfirmed = false;
    fraFundsSelectedListViewlvSelectedFundsInsert(nullptr);

    m_labelsFilled = true;
    m_warningText = WarningText.trimmed();
    if (FShowWarning) {
        ShowWarningText();
        lblWarningMessage->show();
    }
    lblInfoMessage->setText(InfoText.trimmed());
    errors.Rethrow();
}

bool TfraFundSelector::IsNewFundSelection(TDynamicArrayOfInt &FundIDs)
{
    TListItems &items = fraFundsSelectedListView->lvSelectedFunds->Items();
    if (!FSelectionConfirmed || items.Count() == 0)
        return FSelectionConfirmed;
    const TField *fundID = cdsFund->FieldByName(u"FundID"_s);
    TDynamicArrayOfInt chosen;
    chosen.reserve(items.Count());
    for (int i = 0; i < items.Count(); ++i) {
        cdsFund->GotoBookmark(items[i]->Data());
        chosen.append(fundID->AsInteger());
    }
    FundIDs = chosen;
    return true;
}

void TfraFundSelector::DisplaySelectedItems(const TDynamicArrayOfInt &FundIDs)
{
    HandlerErrors errors(*this);
    TTreeView *tree = fraFundsTreeView->tvFunds;
    TListItems &items = fraFundsSelectedListView->lvSelectedFunds->Items();

    // One walk over the tree finds the nodes of all wanted funds, instead of one walk per fund.
    const QSet<int> wanted(FundIDs.cbegin(), FundIDs.cend());
    QHash<int, QList<TTreeNode *>> nodesOfFund;
    TTreeNode *lastFund = nullptr;
    cdsFund->DisableControls();
    const auto controls = qScopeGuard([this] { cdsFund->EnableControls(); });
    const TField *fundID = nullptr;
    for (TTreeNode *node = tree->Items().GetFirstNode(); node; node = node->GetNext()) {
        if (node->Level() != TfraFundsTreeView::FundLevel)
            continue;
        if (!fundID)
            fundID = cdsFund->FieldByName(u"FundID"_s);
        cdsFund->GotoBookmark(node->Data());
        if (const int id = fundID->AsInteger(); wanted.contains(id))
            nodesOfFund[id].append(node);
        lastFund = node;
    }

    QSet<QString> listed;
    for (int i = 0; i < items.Count(); ++i)
        listed.insert(captionKey(items[i]->Caption()));
    m_listed = &listed;
    items.BeginUpdate();
    const auto filling = qScopeGuard([this, &items] {
        m_listed = nullptr;
        items.EndUpdate();
    });
    for (const int id : FundIDs) {
        const auto found = nodesOfFund.constFind(id);
        if (found == nodesOfFund.constEnd())
            continue;
        for (TTreeNode *node : *found) {
            cdsFund->GotoBookmark(node->Data());
            tree->SetSelected(node);
            errors.Rethrow();
            // A disabled button ignores click(), but the fund must be added in any case.
            if (sbtAdd->isEnabled())
                sbtAdd->click();
            else
                sbtAddClick();
            errors.Rethrow();
        }
    }
    // The rule that enables FundSheet reads the current row of cdsFund, so the search must end on the last
    // fund.
    if (lastFund)
        cdsFund->GotoBookmark(lastFund->Data());
}

void TfraFundSelector::FilterDataSetThatHasChildren()
{
    const QString group = QLatin1String(keyFundGroup);
    const QString type = QLatin1String(keyGroupType);
    if (const QString filter = BuildExclusionFilter(cdsFundGroup, group, cdsFund, group, true);
        !filter.trimmed().isEmpty())
        setFilter(cdsFundGroup, filter);
    if (const QString filter = BuildExclusionFilter(cdsFundGroupType, type, cdsFundGroup, type, false);
        !filter.trimmed().isEmpty())
        setFilter(cdsFundGroupType, filter);
}

QString TfraFundSelector::BuildExclusionFilter(TClientDataSet *ParentDataSet, const QString &ParentKey,
                                               TClientDataSet *ChildDataSet, const QString &ChildKey,
                                               bool RecordOfferedGroups)
{
    const bool anyActive = ParentDataSet->Active() || ChildDataSet->Active();
    if (!anyActive || ParentKey.trimmed().isEmpty() || ChildKey.trimmed().isEmpty())
        return {};

    TDynamicArrayOfInt childless;
    ParentDataSet->First();
    const TField *key = ParentDataSet->FieldByName(ParentKey.trimmed());
    for (; !ParentDataSet->Eof(); ParentDataSet->Next()) {
        const int id = key->AsInteger();
        if (ChildDataSet->Lookup(ChildKey, QString::number(id), ChildKey).isNull())
            childless.append(id);
    }
    ParentDataSet->First();
    if (childless.isEmpty())
        return {};

    if (RecordOfferedGroups) {
        FOfferedEmptyGroups.clear();
        for (int &id : childless) {
            if (cdsFundPerProduct->Lookup(ChildKey, QString::number(id), ChildKey).isNull())
                continue;
            FOfferedEmptyGroups.append(id);
            id = -1;
        }
        m_offeredEmptyGroups = QSet<int>(FOfferedEmptyGroups.cbegin(), FOfferedEmptyGroups.cend());
    }

    QString list;
    for (const int id : std::as_const(childless)) {
        if (!list.isEmpty())
            list += QLatin1Char(',');
        list += QString::number(id);
    }
    return u"not(%1 in (%2))"_s.arg(ParentKey.trimmed(), list);
}

bool TfraFundSelector::ValueInList(int Value, const TDynamicArrayOfInt &List) const
{
    return List.contains(Value);
}

void TfraFundSelector::sbtAddClick()
{
    TTreeNode *node = fraFundsTreeView->tvFunds->Selected();
    if (!node || node->Level() != TfraFundsTreeView::FundLevel)
        return;
    TListView *list = fraFundsSelectedListView->lvSelectedFunds;
    const bool listed = m_listed ? m_listed->contains(captionKey(node->Text()))
                                 : misc_DoesListItemExist(list, node->Text().trimmed());
    if (listed)
        return;
    cdsFund->GotoBookmark(node->Data());
    cdsFundGroup->GotoBookmark(node->Parent()->Data());
    const QString name = cdsFund->FieldByName(u"FundName"_s)->AsString().trimmed();
    TListItem *item = list->Items().Add();
    if (!item)
        return;
    item->SetCaption(name);
    item->SetImageIndex(TfraFundsTreeView::FundImage);
    item->SetData(node->Data());
    if (m_listed)
        m_listed->insert(captionKey(name));
}

void TfraFundSelector::sbtRemoveClick()
{
    TListView *list = fraFundsSelectedListView->lvSelectedFunds;
    TListItem *item = list->SelectedItem();
    if (!item)
        return;
    const int index = item->Index();
    item->Delete();
    misc_ResetListViewFocus(list, index);
    fraFundsSelectedListViewlvSelectedFundsInsert(nullptr);
}

void TfraFundSelector::sbtClearClick()
{
    misc_ClearListView(fraFundsSelectedListView->lvSelectedFunds);
    // The removed items cannot report the end of the selection.
    fraFundsSelectedListViewlvSelectedFundsChange(nullptr);
}

void TfraFundSelector::sbtExpandClick()
{
    fraFundsTreeView->tvFunds->FullExpand();
}

void TfraFundSelector::sbtCollapseClick()
{
    fraFundsTreeView->tvFunds->FullCollapse();
}

void TfraFundSelector::btnSelectClick()
{
    FSelectionConfirmed = true;
}

void TfraFundSelector::btnCancelClick() {}

void TfraFundSelector::splMainMoved() {}

void TfraFundSelector::FrameResize()
{
    if (CurrentLook() == Look::Application) {
        const int y = (pnlMenu->height() - btnCancel->height()) / 2;
        btnCancel->move(pnlMenu->width() - btnCancel->width() - LookSpace::Large, y);
        btnSelect->move(btnCancel->x() - btnSelect->width() - LookSpace::Small, y);
        return;
    }
    btnCancel->move(pnlMenu->width() - btnCancel->width() - 2, btnCancel->y());
    btnSelect->move(btnCancel->x() - btnSelect->width() - 2, btnSelect->y());
}

void TfraFundSelector::fraFundsTreeViewtvFundsChange(TTreeNode *Node)
{
    const bool isFund = Node && Node->Level() == TfraFundsTreeView::FundLevel;
    sbtAdd->setEnabled(isFund);
    // The address is that of the dataset's current row, which may differ from the node's row.
    sbtFundSheet->setEnabled(isFund &&
                             !cdsFund->FieldByName(u"FundSheetURL"_s)->AsString().trimmed().isEmpty());
}

void TfraFundSelector::fraFundsTreeViewtvFundsEnter()
{
    const TTreeNode *node = fraFundsTreeView->tvFunds->Selected();
    sbtAdd->setEnabled(node && node->Level() == TfraFundsTreeView::FundLevel);
}

void TfraFundSelector::fraFundsTreeViewtvFundsExit()
{
    sbtAdd->setEnabled(false);
}

void TfraFundSelector::fraFundsTreeViewtvFundsDblClick()
{
    sbtAddClick();
}

void TfraFundSelector::fraFundsTreeViewtvFundsDragOver(bool &) {}

void TfraFundSelector::fraFundsTreeViewtvFundsAddition(TTreeNode *Node)
{
    if (FOfferedEmptyGroups.isEmpty() || Node->Level() != TfraFundsTreeView::FundGroupLevel)
        return;
    cdsFundGroup->GotoBookmark(Node->Data());
    const int id = cdsFundGroup->FieldByName(QLatin1String(keyFundGroup))->AsInteger();
    if (!m_offeredEmptyGroups.contains(id))
        return;
    Node->SetText(Node->Text() + u" *"_s);
    FShowWarning = true;
}

void TfraFundSelector::fraFundsSelectedListViewlvSelectedFundsDragOver(bool &Accept)
{
    const TTreeNode *node = fraFundsTreeView->tvFunds->Selected();
    Accept = node && node->Level() == TfraFundsTreeView::FundLevel;
    if (Accept)
        sbtAddClick();
}

void TfraFundSelector::fraFundsSelectedListViewlvSelectedFundsInsert(TListItem *)
{
    const bool any = fraFundsSelectedListView->lvSelectedFunds->Items().Count() > 0;
    btnSelect->setEnabled(any);
    sbtClear->setEnabled(any);
    showCount(*fraFundsSelectedListView);
}

void TfraFundSelector::fraFundsSelectedListViewlvSelectedFundsChange(TListItem *Item)
{
    sbtRemove->setEnabled(fraFundsSelectedListView->lvSelectedFunds->SelectedItem() != nullptr);
    fraFundsSelectedListViewlvSelectedFundsInsert(Item);
}

void TfraFundSelector::fraFundsSelectedListViewlvSelectedFundsEnter()
{
    TListView *list = fraFundsSelectedListView->lvSelectedFunds;
    sbtRemove->setEnabled(list->Items().Count() > 0 && list->SelectedItem());
}

void TfraFundSelector::fraFundsSelectedListViewlvSelectedFundsExit()
{
    sbtRemove->setEnabled(false);
}

void TfraFundSelector::cdsFundGroupTypeBeforeOpen()
{
    cdsFundGroupType->Params().ParamByName(u"pProductGroupID"_s).SetAsInteger(FProductGroupID);
}

void TfraFundSelector::cdsFundGroupBeforeOpen()
{
    cdsFundGroup->Params().ParamByName(u"pProductGroupID"_s).SetAsInteger(FProductGroupID);
}

void TfraFundSelector::cdsFundPerProductBeforeOpen()
{
    cdsFund->First();
    const int product = cdsFund->FieldByName(u"ProductID"_s)->AsInteger();
    cdsFundPerProduct->Params().ParamByName(u"pProductID"_s).SetAsInteger(product);
    cdsFundPerProduct->Params().ParamByName(u"pProductGroupID"_s).SetAsInteger(FProductGroupID);
}

void TfraFundSelector::cdsFundGroupTypeBeforeClose()
{
    misc_FreeTreeBookMarks(*fraFundsTreeView->tvFunds, TfraFundsTreeView::GroupTypeLevel, cdsFundGroupType);
}

void TfraFundSelector::cdsFundGroupBeforeClose()
{
    misc_FreeTreeBookMarks(*fraFundsTreeView->tvFunds, TfraFundsTreeView::FundGroupLevel, cdsFundGroup);
}

void TfraFundSelector::cdsFundBeforeClose()
{
    misc_FreeTreeBookMarks(*fraFundsTreeView->tvFunds, TfraFundsTreeView::FundLevel, cdsFund);
}

void TfraFundSelector::RequestFundSheet()
{
    const TTreeNode *node = fraFundsTreeView->tvFunds->Selected();
    if (!node || node->Level() != TfraFundsTreeView::FundLevel)
        return;
    QString url;
    int id = 0;
    {
        // The current row is restored, because it later decides whether FundSheet is enabled.
        TBookmark place = cdsFund->GetBookmark();
        const auto back = qScopeGuard([this, place] {
            if (place)
                GuardedCall([this, place] { cdsFund->GotoBookmark(place); });
            cdsFund->FreeBookmark(place);
        });
        cdsFund->GotoBookmark(node->Data());
        url = cdsFund->FieldByName(u"FundSheetURL"_s)->AsString().trimmed();
        id = cdsFund->FieldByName(u"FundID"_s)->AsInteger();
    }
    // Emitted last, because the host may close the page in its slot.
    if (!url.isEmpty())
        Q_EMIT FundSheetRequested(id, url);
}

void TfraFundSelector::ShowWarningText()
{
    QString warning = LoadResString(TMessageText::resFixedBondAvailabilityNote);
    if (!m_warningText.isEmpty())
        warning += QLatin1Char(' ') + m_warningText;
    lblWarningMessage->setText(warning);
}

void TfraFundSelector::Retranslate()
{
    const QString info = lblInfoMessage->text();
    retranslateUi(this);
    if (m_labelsFilled) {
        lblInfoMessage->setText(info); // the caller's text is not translated here
        if (FShowWarning)
            ShowWarningText();
    }
    FitButtons();
}

void TfraFundSelector::SetTextColors()
{
    const QColor black = ColorOf(TColor::clBlack, palette());
    if (lblWarningMessage->palette().color(QPalette::WindowText) == black)
        return;
    QPalette own;
    own.setColor(QPalette::WindowText, black);
    lblWarningMessage->setPalette(own);
}

void TfraFundSelector::FitButtons()
{
    showCount(*fraFundsSelectedListView);
    if (CurrentLook() == Look::Application) {
        FitLook();
        return;
    }
    for (QObject *changed : QObjectList{btnSelect, btnCancel, pnlToolBar, sbtAdd, sbtClear, sbtExpand,
                                        sbtCollapse, sbtRemove, sbtFundSheet})
        Zel::BackToDesign(changed);
    // Buttons have their designed sizes unless a caption needs more in this font and language.
    for (TSpeedButton *button : {sbtAdd, sbtClear, sbtExpand, sbtCollapse, sbtRemove, sbtFundSheet}) {
        const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        button->setMinimumSize(qMax(58, text.width() + 4),
                               qMax(40, button->iconSize().height() + text.height() + 8));
    }
    int width = 75;
    int height = 25;
    for (const QPushButton *button : {btnSelect, btnCancel}) {
        const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        width = qMax(width, text.width() + button->iconSize().width() + 20);
        height = qMax(height, qMax(text.height(), button->iconSize().height()) + 6);
    }
    btnSelect->resize(width, height);
    btnCancel->resize(width, height);
    pnlMenu->setMinimumSize(qMax(171, 2 * width + 6), qMax(55, btnSelect->y() + height + 4));
    if (isVisible())
        layToolBar->activate(); // the buttons stand at the right of their panel
    FrameResize();
}

// The sizes, fonts and colours of the application look.
void TfraFundSelector::FitLook()
{
    using Zel::LookChanges;
    for (TSpeedButton *button : {sbtAdd, sbtClear, sbtExpand, sbtCollapse, sbtRemove, sbtFundSheet}) {
        const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        LookChanges::Of(button).Set("minimumWidth", text.width() + button->iconSize().width() +
                                                        LookSpace::Large + LookSpace::Medium);
    }
    LookChanges::Of(layPanel2).Set("contentsMargins",
                                   QVariant::fromValue(QMargins(LookSpace::Small, 0, LookSpace::Small, 0)));
    LookChanges::Of(layPanel2).Set("spacing", LookSpace::Grid);

    const QFont caption = FontOf(LookFont::Caption, font());
    for (QLabel *note : {lblWarningMessage, lblInfoMessage}) {
        LookChanges &changes = LookChanges::Of(note);
        changes.Set("font", caption);
        changes.Set("minimumHeight", 0);
        changes.Set("alignment", int(Qt::AlignLeft | Qt::AlignVCenter));
    }
    LookChanges::Of(layPanel1).Set("contentsMargins",
                                   QVariant::fromValue(QMargins(LookSpace::Large, LookSpace::Small,
                                                                LookSpace::Large, LookSpace::Small)));
    for (QWidget *panel : {Panel2, pnlToolBar})
        LookChanges::Of(panel).Set("colorName", NameOfColor(TColor::clSilver));
    int width = 0;
    const int height = HeightOf(LookHeight::Field, fontMetrics());
    LookChanges::Of(pnlToolBar).Set("minimumHeight", height + 2 * LookSpace::Medium);
    const QFontMetrics strong(FontOf(LookFont::Strong, font()));
    for (QPushButton *button : {btnSelect, btnCancel}) {
        const QSize text = strong.size(Qt::TextShowMnemonic, button->text());
        width = qMax(width, text.width() + button->iconSize().width() + 3 * LookSpace::Large);
        LookChanges::Of(button).Set("flat", false);
    }
    LookChanges::Of(btnSelect).Set("default", true);
    for (QPushButton *button : {btnSelect, btnCancel})
        LookChanges::Of(button).Set("geometry", QRect(button->pos(), QSize(width, height)));
    pnlMenu->setMinimumSize(2 * width + LookSpace::Small + 2 * LookSpace::Large,
                            height + 2 * LookSpace::Medium);
    if (isVisible())
        layToolBar->activate();
    FrameResize();
}

void TfraFundSelector::changeEvent(QEvent *event)
{
    TBaseFrame::changeEvent(event);
    switch (event->type()) {
    case QEvent::PaletteChange:
        SetTextColors();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        FitButtons();
        break;
    case QEvent::LanguageChange:
        Retranslate();
        break;
    default:
        break;
    }
}

void TfraFundSelector::resizeEvent(QResizeEvent *event)
{
    TBaseFrame::resizeEvent(event);
    FrameResize();
}

bool TfraFundSelector::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (watched == fraFundsTreeView->tvFunds && enter) {
            Handle([this] { sbtAddClick(); });
            return true;
        }
        if (watched == fraFundsSelectedListView->lvSelectedFunds) {
            if (key == Qt::Key_Delete) {
                Handle([this] { sbtRemoveClick(); });
                return true;
            }
            // Enter in the list must not press the dialog's default button.
            if (enter)
                return true;
        }
    }
    return TBaseFrame::eventFilter(watched, event);
}
