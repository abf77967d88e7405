#include "desk/StartPage.h"

#include "catalogue/CatalogueDatabase.h"
#include "desk/FirstStart.h"
#include "desk/Language.h"
#include "desk/QuoteDelegate.h"
#include "desk/QuotePreview.h"
#include "look/EmptyState.h"

#include "data/Format.h"
#include "toolkit/Glyphs.h"
#include "toolkit/TApplication.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto ListFields = "Client; Product; Description; Amount; State; Changed";
constexpr auto ListFormats = "0; 0; 0; 1; 0; 0";

/// Narrower windows have no room for the preview beside the list.
constexpr int WideWindow = 1100;
/// Lower windows have low rows.
constexpr int HighWindow = 680;

constexpr int at(QuoteColumn column)
{
    return static_cast<int>(column);
}

constexpr auto Widths = "widths";
constexpr auto Hidden = "hidden";
constexpr auto Order = "order";

template <class Value, std::size_t Size> QVariantList listOf(const std::array<Value, Size> &values)
{
    return QVariantList(values.cbegin(), values.cend());
}

} // namespace

StartPage::StartPage(QWidget *parent)
    : QWidget(parent), mnuColumns(new QMenu(this)), m_delegate(nullptr), m_preview(new QuotePreview(this)),
      m_firstStart(new FirstStart(this)), m_language(languageCode(currentLanguage()))
{
    setupUi(this);
    setUpList();
    setUpColumns();
    setUpFilters();
    setUpEmptyStates();
    setUpPreview();
    showCaptions();
    showFilterCounts();
    QWidget *last = edFind;
    for (QWidget *const next : QList<QWidget *>{
             btnPreview, filterChip({}), filterChip(ChipState::Draft), filterChip(ChipState::Allocated),
             filterChip(ChipState::TooMuch), btnDeleted, lvQuotes, m_preview})
        setTabOrder(std::exchange(last, next), next);
}

StartPage::~StartPage() = default;

void StartPage::setUpList()
{
    for (int column = 0; column < ColumnCount; ++column)
        lvQuotes->AddColumn(QString(), 100);
    lvQuotes->SetColumnAlignment(at(QuoteColumn::Amount), Qt::AlignRight);
    m_delegate = new QuoteDelegate(lvQuotes);
    lvQuotes->header()->setSortIndicatorShown(true);
    lvQuotes->header()->setSortIndicator(at(m_column), m_order);
    connectGuarded(lvQuotes->header(), &QHeaderView::sectionClicked, this,
                   [this](int section) { sortBy(static_cast<QuoteColumn>(section)); });
    connectGuarded(lvQuotes, &TListView::Resized, this, [this] { arrangeColumns(); });
    connectGuarded(lvQuotes, &QAbstractItemView::activated, this, [this] { Q_EMIT openWanted(); });
    connectGuarded(lvQuotes->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (m_filling)
            return;
        m_chosen = quoteOf(lvQuotes->SelectedItem());
        Q_EMIT quoteChosen();
    });
    edFind->setKeyHint(QKeySequence::Find);
    connectGuarded(edFind, &QLineEdit::textChanged, this, [this] { fill(); });
    connectGuarded(edFind, &SearchField::left, this, [this] { lvQuotes->setFocus(Qt::TabFocusReason); });
    connect(btnDeleted, &QPushButton::clicked, actDeleted, &QAction::trigger);
    // Enter in the search field opens the chosen quote.
    edFind->installEventFilter(this);
}

void StartPage::setUpColumns()
{
    QHeaderView &header = *lvQuotes->header();
    header.setSectionsMovable(true);
    header.setSectionResizeMode(QHeaderView::Interactive);
    header.setSectionResizeMode(at(QuoteColumn::Product), QHeaderView::Stretch);
    header.setContextMenuPolicy(Qt::CustomContextMenu);
    for (int column = 1; column < ColumnCount; ++column) {
        QAction *const action = mnuColumns->addAction(QString());
        action->setCheckable(true);
        connectGuarded(action, &QAction::triggered, this,
                       [this, column](bool shown) { showColumn(static_cast<QuoteColumn>(column), shown); });
    }
    connect(&header, &QWidget::customContextMenuRequested, this,
            [this, &header](const QPoint &place) { mnuColumns->popup(header.mapToGlobal(place)); });
    connectGuarded(&header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (m_arranging || width <= 0 || column == at(QuoteColumn::Product) || !isVisible())
            return;
        m_columns[m_language].widths.at(static_cast<std::size_t>(column)) = width;
        m_columns[m_language].isChosen = true;
    });
    connectGuarded(&header, &QHeaderView::sectionMoved, this, [this] {
        if (m_arranging)
            return;
        Columns &columns = m_columns[m_language];
        for (int place = 0; place < ColumnCount; ++place)
            columns.order.at(static_cast<std::size_t>(place)) = lvQuotes->header()->logicalIndex(place);
        columns.isChosen = true;
    });
    m_columns.insert(m_language, usualColumns());
    applyColumns();
}

void StartPage::setUpFilters()
{
    int place = 0;
    for (int id = 0; id < 4; ++id) {
        auto *const chip = new FilterChip({}, pnlQuotes);
        m_filters.addButton(chip, id);
        // Tab leads to the chosen chip, and the arrow keys from there to the others.
        chip->setFocusPolicy(id == 0 ? Qt::StrongFocus : Qt::ClickFocus);
        layFilters->insertWidget(place++, chip);
    }
    m_filters.button(0)->setChecked(true);
    connectGuarded(&m_filters, &QButtonGroup::idToggled, this, [this](int id, bool isOn) {
        m_filters.button(id)->setFocusPolicy(isOn ? Qt::StrongFocus : Qt::ClickFocus);
        if (!isOn)
            return;
        m_state = id == 0 ? std::nullopt : std::optional(static_cast<ChipState>(id - 1));
        fill();
    });
}

void StartPage::setUpEmptyStates()
{
    m_noneFound = new EmptyState(this);
    m_clear = m_noneFound->addButton({}, {}, ButtonKind::Suggested);
    m_noQuotes = new EmptyState(this);
    m_newButtons = {m_noneFound->addButton({}, u"new"_s),
                    m_noQuotes->addButton({}, u"new"_s, ButtonKind::Filled)};
    m_clear->setObjectName(u"btnClear"_s);
    connectGuarded(m_clear, &QPushButton::clicked, this, [this] {
        clearSearch();
        edFind->setFocus();
    });
    for (QPushButton *const button : std::as_const(m_newButtons)) {
        button->setObjectName(u"btnNewQuote"_s);
        connect(button, &QPushButton::clicked, this, &StartPage::newQuoteWanted);
    }
    for (EmptyState *const state : {m_noneFound, m_noQuotes})
        stkQuotes->addWidget(state);
}

void StartPage::setUpPreview()
{
    addAction(actPreview);
    actPreview->setIcon(GlyphIcon(u"preview"_s));
    btnPreview->setDefaultAction(actPreview);
    btnPreview->setToolButtonStyle(Qt::ToolButtonIconOnly);
    layPage->addWidget(m_firstStart, 1);
    m_firstStart->hide();
    layPage->addWidget(m_preview);
    actPreview->setChecked(true);
    btnPreview->hide();
    connectGuarded(actPreview, &QAction::triggered, this, &StartPage::showPreview);
    connectGuarded(m_preview, &QuotePreview::openWanted, this, &StartPage::openWanted);
    connectGuarded(m_preview, &QuotePreview::closeWanted, this, [this] {
        if (!m_isWide)
            showPreview(false);
        lvQuotes->setFocus();
    });
    connectGuarded(this, &StartPage::quoteChosen, m_preview,
                   [this] { m_preview->showQuote(chosenSummary()); });
}

void StartPage::setSession(QuoteSession &session)
{
    m_preview->setSession(session);
}

void StartPage::showCaptions()
{
    const bool hasDescriptions = !lvQuotes->header()->isSectionHidden(at(QuoteColumn::Description));
    const std::array captions{
        tr("Client"),      hasDescriptions ? tr("Product") : tr("Product and description"),
        tr("Description"), tr("Amount (R)"),
        tr("State"),       tr("Changed")};
    for (int column = 0; column < ColumnCount; ++column)
        lvQuotes->SetColumnCaption(column, captions.at(static_cast<std::size_t>(column)));
    mnuColumns->setTitle(tr("C&olumns"));
    const std::array names{tr("&Product"), tr("&Description"), tr("&Amount"), tr("&State"), tr("&Changed")};
    for (qsizetype i = 0; i < mnuColumns->actions().size(); ++i)
        mnuColumns->actions().at(i)->setText(names.at(static_cast<std::size_t>(i)));
    filterChip({})->setText(tr("All"));
    for (const ChipState state : {ChipState::Draft, ChipState::Allocated, ChipState::TooMuch})
        filterChip(state)->setText(stateText(state));
    m_noQuotes->setContent(u"details"_s, tr("There are no quotes yet"),
                           tr("A quote needs a product, a client and the funds that share the investment."));
    for (QPushButton *const button : std::as_const(m_newButtons))
        button->setText(tr("New quote"));
}

// ------------------------------------------------------------------------------------------------- columns

StartPage::Columns StartPage::usualColumns()
{
    Columns columns;
    std::iota(columns.order.begin(), columns.order.end(), 0);
    // The description follows the product in the same column.
    columns.hidden.at(static_cast<std::size_t>(QuoteColumn::Description)) = true;
    return columns;
}

/// The width of a column while there is room; amounts are never elided.
int StartPage::wantedWidth(int column) const
{
    const int chosen = m_columns.value(m_language).widths.at(static_cast<std::size_t>(column));
    const int wanted = chosen > 0 ? chosen : m_delegate->usualWidth(column, lvQuotes->ColumnCaption(column));
    if (column != at(QuoteColumn::Amount) || m_quotes.isEmpty())
        return wanted;
    const auto largest =
        std::max_element(m_quotes.cbegin(), m_quotes.cend(),
                         [](const QuoteSummary &a, const QuoteSummary &b) { return a.amount < b.amount; });
    return std::max(wanted, lvQuotes->fontMetrics().horizontalAdvance(
                                FormatFloat(FormatMask::Thousands, largest->amount)) +
                                2 * QuoteDelegate::Padding + 2);
}

/// Gives the columns their widths. The column of products gets the rest of the room; when that is too little,
/// the others give some of theirs.
void StartPage::arrangeColumns()
{
    const QScopedValueRollback arranging(m_arranging, true);
    QHeaderView &header = *lvQuotes->header();
    const int least = lvQuotes->fontMetrics().averageCharWidth() * 18;
    std::array<int, ColumnCount> widths{};
    int missing = least + 2 * QuoteDelegate::Padding - lvQuotes->ClientWidth();
    for (int column = 0; column < ColumnCount; ++column) {
        if (column == at(QuoteColumn::Product) || header.isSectionHidden(column))
            continue;
        widths.at(static_cast<std::size_t>(column)) = wantedWidth(column);
        missing += wantedWidth(column);
    }
    for (const QuoteColumn giver : {QuoteColumn::Description, QuoteColumn::Client, QuoteColumn::Changed}) {
        int &width = widths.at(static_cast<std::size_t>(giver));
        const int given = std::clamp(missing, 0, std::max(0, width - least));
        width -= given;
        missing -= given;
    }
    for (int column = 0; column < ColumnCount; ++column) {
        if (const int width = widths.at(static_cast<std::size_t>(column)); width > 0)
            header.resizeSection(column, width);
    }
}

/// Gives the columns the order and visibility of the current language.
void StartPage::applyColumns()
{
    const Columns columns = m_columns.value(m_language, usualColumns());
    {
        const QScopedValueRollback arranging(m_arranging, true);
        QHeaderView &header = *lvQuotes->header();
        for (int place = 0; place < ColumnCount; ++place)
            header.moveSection(header.visualIndex(columns.order.at(static_cast<std::size_t>(place))), place);
        for (int column = 0; column < ColumnCount; ++column) {
            const bool isHidden = columns.hidden.at(static_cast<std::size_t>(column));
            header.setSectionHidden(column, isHidden);
            if (column > 0)
                mnuColumns->actions().at(column - 1)->setChecked(!isHidden);
        }
    }
    arrangeColumns();
}

void StartPage::showColumn(QuoteColumn column, bool shown)
{
    if (column == QuoteColumn::Client)
        return;
    Columns &columns = m_columns[m_language];
    columns.hidden.at(static_cast<std::size_t>(column)) = !shown;
    columns.isChosen = true;
    applyColumns();
    showCaptions();
}

QVariantMap StartPage::columns() const
{
    QVariantMap all;
    for (auto columns = m_columns.cbegin(); columns != m_columns.cend(); ++columns) {
        if (!columns->isChosen)
            continue;
        all.insert(columns.key(), QVariantMap{{QLatin1StringView(Widths), listOf(columns->widths)},
                                              {QLatin1StringView(Hidden), listOf(columns->hidden)},
                                              {QLatin1StringView(Order), listOf(columns->order)}});
    }
    return all;
}

void StartPage::takeColumns(const QVariantMap &columns)
{
    for (auto each = columns.cbegin(); each != columns.cend(); ++each) {
        const QVariantMap values = each->toMap();
        const QVariantList widths = values.value(QLatin1StringView(Widths)).toList();
        const QVariantList hidden = values.value(QLatin1StringView(Hidden)).toList();
        const QVariantList order = values.value(QLatin1StringView(Order)).toList();
        if (widths.size() != ColumnCount || hidden.size() != ColumnCount || order.size() != ColumnCount)
            continue;
        Columns taken;
        taken.isChosen = true;
        QList<int> missing{0, 1, 2, 3, 4, 5};
        for (int i = 0; i < ColumnCount; ++i) {
            const auto place = static_cast<std::size_t>(i);
            taken.widths.at(place) = std::clamp(widths.at(i).toInt(), 0, 2000);
            taken.hidden.at(place) = i > 0 && hidden.at(i).toBool();
            taken.order.at(place) = order.at(i).toInt();
            missing.removeOne(taken.order.at(place));
        }
        if (missing.isEmpty())
            m_columns.insert(each.key(), taken);
    }
    applyColumns();
    showCaptions();
}

// ------------------------------------------------------------------------------------------------- preview

void StartPage::adjustToWindow()
{
    const bool isHigh = window()->height() >= HighWindow;
    const bool isWide = window()->width() >= WideWindow;
    const int margin = isWide ? LookSpace::Large : LookSpace::Medium;
    layQuotes->setContentsMargins(margin, LookSpace::Medium, margin, 0);
    m_delegate->setCompact(!isHigh);
    if (isWide != m_isWide) {
        m_isWide = isWide;
        btnPreview->setVisible(!isWide);
        if (isWide)
            layPage->addWidget(m_preview);
        else
            layPage->removeWidget(m_preview);
        showPreview(isWide && m_wantsPreview && !isFirstStart());
    }
    placePreview();
}

/// Puts the preview over the list when it has no place beside it.
void StartPage::placePreview()
{
    if (m_isWide)
        return;
    const int wide = std::min(m_preview->minimumWidth(), width());
    const QRect place(width() - wide, 0, wide, height());
    m_preview->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    m_preview->raise();
}

void StartPage::showPreview(bool shown)
{
    if (m_isWide && !isFirstStart())
        m_wantsPreview = shown;
    const bool hadFocus = m_preview->isAncestorOf(QApplication::focusWidget());
    actPreview->setChecked(shown);
    m_preview->setVisible(shown);
    placePreview();
    if (m_isWide)
        return;
    // Over the list, the preview is what the keys are for.
    if (shown)
        m_preview->btnOpen->setFocus();
    else if (hadFocus)
        lvQuotes->setFocus();
}

// ---------------------------------------------------------------------------------------------------- list

void StartPage::setQuotes(const QList<QuoteSummary> &quotes)
{
    if (quotes == m_quotes && m_rows.Active())
        return;
    m_quotes = quotes;
    rebuild();
}

void StartPage::rebuild()
{
    misc_FreeListBookMarks(*lvQuotes, &m_rows);
    m_rows.SetData(quoteTable(m_quotes, m_column, m_order).ToVariant());
    showFilterCounts();
    fill();
    arrangeColumns();
}

FilterChip *StartPage::filterChip(std::optional<ChipState> state) const
{
    return static_cast<FilterChip *>(m_filters.button(state ? 1 + static_cast<int>(*state) : 0));
}

void StartPage::filterBy(std::optional<ChipState> state)
{
    filterChip(state)->setChecked(true);
}

void StartPage::showFilterCounts()
{
    filterChip({})->setCount(static_cast<int>(m_quotes.size()));
    for (const ChipState state : {ChipState::Draft, ChipState::Allocated, ChipState::TooMuch}) {
        const auto count =
            std::count_if(m_quotes.cbegin(), m_quotes.cend(),
                          [state](const QuoteSummary &quote) { return stateOf(quote) == state; });
        filterChip(state)->setCount(static_cast<int>(count));
        if (state == ChipState::TooMuch)
            filterChip(state)->setVisible(count > 0 || m_state == state);
    }
}

void StartPage::clearSearch()
{
    filterBy({});
    edFind->clear();
}

void StartPage::fill()
{
    if (!m_rows.Active())
        return;
    const int place = lvQuotes->verticalScrollBar()->value();
    QStringList conditions{wordFilter(edFind->text())};
    if (m_state)
        conditions.append(u"StateNumber = %1"_s.arg(static_cast<int>(*m_state)));
    conditions.removeAll(QString());
    {
        const QScopedValueRollback filling(m_filling, true);
        misc_BuildListView(*lvQuotes, &m_rows, conditions.join(u" AND "_s), QLatin1StringView(ListFields),
                           QLatin1StringView(ListFormats), {}, false, -1, u"StateNumber"_s);
        const qint64 wanted = m_chosen;
        m_chosen = 0;
        chooseQuote(wanted);
        if (m_chosen == 0)
            misc_ListViewFocus(*lvQuotes);
        m_chosen = quoteOf(lvQuotes->SelectedItem());
        lvQuotes->verticalScrollBar()->setValue(place);
    }
    m_delegate->setWords(searchable(edFind->text()).split(u' ', Qt::SkipEmptyParts));
    showFound();
    showFirstStart();
    Q_EMIT quoteChosen();
}

QString StartPage::countText() const
{
    const int shown = lvQuotes->Items().Count();
    const int all = static_cast<int>(m_quotes.size());
    if (all == 0)
        return tr("There are no quotes yet. Choose New to begin one.");
    return shown == all ? tr("%n quote(s)", nullptr, all) : tr("%1 of %n quote(s)", nullptr, all).arg(shown);
}

/// Shows the list, or what stands in its place when it is empty.
void StartPage::showFound()
{
    const int shown = lvQuotes->Items().Count();
    const int all = static_cast<int>(m_quotes.size());
    edFind->setHits(tr("%1 of %2", "number of hits").arg(shown).arg(all));
    if (shown == 0 && all > 0) {
        const bool hasWords = !edFind->text().trimmed().isEmpty();
        m_noneFound->setContent(u"search"_s, tr("No quote fits"),
                                !hasWords ? tr("No quote is in this state.")
                                : m_state ? tr("No quote in this state has all these words.")
                                          : tr("No quote has all these words."));
        m_clear->setText(hasWords ? tr("Clear the search") : tr("Show all quotes"));
    }
    QWidget *const wanted = all == 0     ? static_cast<QWidget *>(m_noQuotes)
                            : shown == 0 ? static_cast<QWidget *>(m_noneFound)
                                         : pgeTable;
    const bool hadFocus = lvQuotes->hasFocus();
    stkQuotes->setCurrentWidget(wanted);
    if (hadFocus && wanted != pgeTable)
        edFind->setFocus();
}

// --------------------------------------------------------------------------------------------- first start

void StartPage::setClientCount(int count)
{
    m_clientCount = count;
    showFirstStart();
}

void StartPage::setCatalogue(const CatalogueDatabase &catalogue, int fundCount)
{
    m_catalogue = &catalogue;
    m_hasSampleFunds.reset();
    m_firstStart->setFundCount(fundCount);
    showFirstStart();
}

/// Whether nothing has been done with the program yet. With an own catalogue the first start is over.
bool StartPage::isFirstStart()
{
    if (!m_rows.Active() || !m_quotes.isEmpty() || m_clientCount > 0 || !m_catalogue)
        return false;
    if (!m_hasSampleFunds)
        m_hasSampleFunds = m_catalogue->hasSampleFunds();
    return *m_hasSampleFunds;
}

void StartPage::showFirstStart()
{
    const bool isFirst = isFirstStart();
    if (isFirst == pnlQuotes->isHidden())
        return;
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    m_firstStart->setVisible(isFirst);
    pnlQuotes->setVisible(!isFirst);
    showPreview(!isFirst && m_isWide && m_wantsPreview);
    actPreview->setEnabled(!isFirst);
    if (hadFocus || isFirst)
        (isFirst ? static_cast<QWidget *>(m_firstStart) : edFind)->setFocus();
}

qint64 StartPage::quoteOf(const TListItem *item)
{
    if (!item || !m_rows.BookmarkValid(item->Data()))
        return 0;
    m_rows.GotoBookmark(item->Data());
    return m_rows.FieldByName(u"QuoteID"_s)->AsVariant().toLongLong();
}

qint64 StartPage::chosenQuote()
{
    return m_chosen;
}

std::optional<QuoteSummary> StartPage::chosenSummary() const
{
    const auto found = std::find_if(m_quotes.cbegin(), m_quotes.cend(),
                                    [this](const QuoteSummary &quote) { return quote.quoteID == m_chosen; });
    return found == m_quotes.cend() ? std::nullopt : std::optional(*found);
}

void StartPage::chooseQuote(qint64 quoteID)
{
    if (quoteID == 0)
        return;
    for (int i = 0; i < lvQuotes->Items().Count(); ++i) {
        TListItem *const item = lvQuotes->Items()[i];
        if (quoteOf(item) != quoteID)
            continue;
        lvQuotes->SetSelected(item);
        lvQuotes->SetFocused(item);
        item->MakeVisible();
        m_chosen = quoteID;
        return;
    }
}

void StartPage::sortBy(QuoteColumn column)
{
    if (column == m_column)
        m_order = m_order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    else
        m_order = column == QuoteColumn::Changed ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_column = column;
    lvQuotes->header()->setSortIndicator(at(m_column), m_order);
    rebuild();
}

// -------------------------------------------------------------------------------------------------- events

void StartPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::LanguageChange:
        GuardedCall([this] {
            retranslateUi(this);
            m_language = languageCode(currentLanguage());
            if (!m_columns.contains(m_language))
                m_columns.insert(m_language, usualColumns());
            applyColumns();
            showCaptions();
            if (m_rows.Active())
                rebuild();
        });
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
        if (m_delegate)
            GuardedCall([this] {
                Q_EMIT m_delegate->sizeHintChanged({});
                arrangeColumns();
            });
        break;
    default:
        break;
    }
}

void StartPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    GuardedCall([this] { adjustToWindow(); });
}

void StartPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    GuardedCall([this] {
        adjustToWindow();
        if (isFirstStart())
            m_firstStart->setFocus();
    });
}

bool StartPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == edFind && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (m_chosen != 0)
                GuardedCall([this] { Q_EMIT openWanted(); });
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace QuoteDesk
