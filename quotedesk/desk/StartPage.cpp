#include "desk/StartPage.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"

#include "quote/PlainText.h"

#include "data/Format.h"
#include "toolkit/TApplication.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto ProductProvider = "dspProduct";
constexpr auto FundProvider = "dspFund";

constexpr auto ListFields = "Client; Product; Description; Amount; State; Changed";
constexpr auto ListFormats = "0; 0; 0; 1; 0; 0";
constexpr std::array ColumnWidths{140, 177, 158, 110, 80, 135};

TDataPacket productTable(const QList<Product> &products)
{
    TTableBuilder builder({{u"ProductID"_s, TFieldType::Integer}, {u"ProductName"_s, TFieldType::String}});
    for (const Product &product : products)
        builder.AddRow({product.productID, shortText(product.name)});
    return TDataPacket(builder.Finish());
}

/// A filter for the rows whose @p field has one of @p keys.
QString keyFilter(const QString &field, const TDynamicArrayOfInt &keys)
{
    QStringList texts;
    for (const int key : keys)
        texts.append(QString::number(key));
    texts.removeDuplicates();
    return u"%1 IN (%2)"_s.arg(field, texts.isEmpty() ? u"-1"_s : texts.join(u','));
}

} // namespace

StartPage::StartPage(QWidget *parent) : QWidget(parent)
{
    setupUi(this);
    splPage->setStretchFactor(1, 1);
    splPage->setSizes({230, 670});
    splTrees->setStretchFactor(1, 1);
    splTrees->setSizes({110, 390});
    setUpList();
    setUpTrees();
    showCaptions();
}

StartPage::~StartPage() = default;

void StartPage::setUpList()
{
    m_statePictures.AddGlyphs({u"complete"_s, u"edit"_s});
    lvQuotes->SetSmallImages(&m_statePictures);
    for (const int width : ColumnWidths)
        lvQuotes->AddColumn(QString(), width);
    lvQuotes->SetColumnAlignment(static_cast<int>(QuoteColumn::Amount), Qt::AlignRight);
    lvQuotes->header()->setSortIndicatorShown(true);
    lvQuotes->header()->setSortIndicator(static_cast<int>(m_column), m_order);
    connectGuarded(lvQuotes->header(), &QHeaderView::sectionClicked, this,
                   [this](int section) { sortBy(static_cast<QuoteColumn>(section)); });
    connectGuarded(lvQuotes, &TListView::Resized, this, [this] {
        misc_SizeListViewColumns(*lvQuotes);
        makeRoomForAmounts();
    });
    connectGuarded(lvQuotes, &QAbstractItemView::activated, this, [this] { Q_EMIT openWanted(); });
    connectGuarded(lvQuotes->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (m_filling)
            return;
        m_chosen = quoteOf(lvQuotes->SelectedItem());
        Q_EMIT quoteChosen();
    });
    edFind->setMaxLength(longestSearch);
    connectGuarded(edFind, &QLineEdit::textChanged, this, [this] { fill(); });
    connect(btnDeleted, &QPushButton::clicked, actDeleted, &QAction::trigger);
    // The arrow keys lead from the search field to the list.
    edFind->installEventFilter(this);
}

/// Amounts must not be elided: a missing width is taken from the widest other column.
void StartPage::makeRoomForAmounts()
{
    const auto largest =
        std::max_element(m_quotes.cbegin(), m_quotes.cend(),
                         [](const QuoteSummary &a, const QuoteSummary &b) { return a.amount < b.amount; });
    if (largest == m_quotes.cend())
        return;
    const auto amount = static_cast<int>(QuoteColumn::Amount);
    const int margin =
        2 * (lvQuotes->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, lvQuotes) + 1);
    const int wanted =
        lvQuotes->fontMetrics().horizontalAdvance(FormatFloat(FormatMask::Thousands, largest->amount)) +
        margin;
    int widest = 0;
    for (int column = 1; column < lvQuotes->ColumnCount(); ++column) {
        if (column != amount && lvQuotes->ColumnWidth(column) > lvQuotes->ColumnWidth(widest))
            widest = column;
    }
    const int missing = std::min(wanted - lvQuotes->ColumnWidth(amount), lvQuotes->ColumnWidth(widest) / 2);
    if (missing <= 0)
        return;
    lvQuotes->SetColumnWidth(widest, lvQuotes->ColumnWidth(widest) - missing);
    lvQuotes->SetColumnWidth(amount, lvQuotes->ColumnWidth(amount) + missing);
}

void StartPage::setUpTrees()
{
    m_treePictures.AddGlyphs({u"details"_s, u"fund-type"_s, u"fund-group"_s, u"fund"_s});
    for (TfraTreeView *const frame : {fraProducts, fraCatalogue}) {
        frame->Set_ImageList(&m_treePictures);
        frame->Set_ShowHeader(true);
        frame->Set_KeepTreeState(true);
        frame->setMinimumSize(140, 70);
    }
    connectGuarded(fraProducts->TreeView, &TTreeView::Change, this, [this] {
        if (!m_filling)
            showCatalogueOfProduct();
    });
    connectGuarded(fraProducts->TreeView, &QAbstractItemView::activated, this,
                   [this] { Q_EMIT newWanted(); });
}

void StartPage::showCaptions()
{
    const std::array captions{tr("Client"),     tr("Product"), tr("Description"),
                              tr("Amount (R)"), tr("State"),   tr("Changed")};
    for (int column = 0; column < lvQuotes->ColumnCount(); ++column)
        lvQuotes->SetColumnCaption(column, captions.at(static_cast<std::size_t>(column)));
    fraProducts->Set_HeaderCaption(tr("Products"));
    fraCatalogue->Set_HeaderCaption(tr("Fund catalogue"));
    fraProducts->TreeView->setAccessibleName(tr("Products"));
    fraCatalogue->TreeView->setAccessibleName(tr("Fund catalogue"));
    fraProducts->TreeView->setToolTip(tr("Enter or a double click begins a quote for the product"));
}

void StartPage::setCatalogue(const CatalogueDatabase &catalogue, CatalogueProviders &providers)
{
    m_catalogue = &catalogue;
    m_providers = &providers;
    TLocalConnection &connection = *providers.connection();
    connection.RegisterProvider(QLatin1StringView(ProductProvider),
                                [this](const TParams &) { return productTable(m_catalogue->products()); });
    connection.RegisterProvider(QLatin1StringView(FundProvider), [this](const TParams &params) {
        const int productID = params.ParamByName(u"pProductID"_s).AsInteger();
        return TDataPacket::FromVariant(m_providers->fundPacket(productID));
    });
    m_products.SetProviderName(QLatin1StringView(ProductProvider));
    m_types.SetProviderName(u"dspFundGroupType"_s);
    m_groups.SetProviderName(u"dspFundGroup"_s);
    m_funds.SetProviderName(QLatin1StringView(FundProvider));
    for (TClientDataSet *const dataset : {&m_products, &m_types, &m_groups, &m_funds})
        dataset->SetRemoteServer(&connection);

    m_products.Open();
    const QScopedValueRollback filling(m_filling, true);
    fraProducts->AddLevel(&m_products, u"ProductName"_s, 0, {}, {}, {}, u"ProductID"_s);
    fraProducts->BuildTree();
    misc_TreeViewFocus(*fraProducts->TreeView);
    showCatalogueOfProduct();
}

void StartPage::refreshCatalogue()
{
    if (!m_catalogue)
        return;
    {
        const QScopedValueRollback filling(m_filling, true);
        fraProducts->RefreshTreeView();
        if (!fraProducts->TreeView->Selected())
            misc_TreeViewFocus(*fraProducts->TreeView);
    }
    fraCatalogue->Do_TreeViewBookMark();
    showCatalogueOfProduct();
    fraCatalogue->Do_RestoreTreeViewBookMark();
    lvQuotes->viewport()->update();
}

int StartPage::chosenProduct()
{
    return std::max(
        0, fraProducts->GetKeyFieldValueFromLevel(fraProducts->TreeView->Selected(), 0, u"ProductID"_s));
}

void StartPage::showCatalogueOfProduct()
{
    const int productID = chosenProduct();
    const QList<Product> products = m_catalogue->products();
    const auto product = std::find_if(products.cbegin(), products.cend(), [productID](const Product &item) {
        return item.productID == productID;
    });
    if (product == products.cend()) {
        fraCatalogue->ClearTree();
        return;
    }
    const auto open = [](TClientDataSet &dataset, const QString &parameter, int value) {
        dataset.Close();
        TParam *const known = dataset.Params().FindParam(parameter);
        (known ? *known : dataset.Params().Add(parameter)).SetAsInteger(value);
        dataset.Open();
    };
    open(m_types, u"pProductGroupID"_s, product->productGroupID);
    open(m_groups, u"pProductGroupID"_s, product->productGroupID);
    open(m_funds, u"pProductID"_s, productID);
    buildCatalogue();
}

void StartPage::buildCatalogue()
{
    fraCatalogue->ClearTree();
    // The frame keeps cursors of former levels, each with all funds of a product.
    qDeleteAll(fraCatalogue->findChildren<TClientDataSet *>(QString(), Qt::FindDirectChildrenOnly));
    const QString typeID = u"GroupTypeID"_s;
    const QString groupID = u"FundGroupID"_s;
    fraCatalogue->AddLevel(&m_types, u"GroupTypeDesc"_s, 1, {}, typeID, {}, typeID);
    fraCatalogue->AddLevel(&m_groups, u"FundGroupName"_s, 2, typeID, groupID, {}, groupID);
    fraCatalogue->AddLevel(&m_funds, u"FundName"_s, 3, groupID, {}, {}, u"FundID"_s);
    // The providers return the types and groups of all products of a product group; only those with a fund of
    // this product are shown.
    fraCatalogue->LevelFilter(1, keyFilter(groupID, fraCatalogue->BuildKeyFieldSetFromLevel(2, groupID)),
                              false);
    fraCatalogue->LevelFilter(0, keyFilter(typeID, fraCatalogue->BuildKeyFieldSetFromLevel(2, typeID)),
                              false);
    fraCatalogue->Set_ViewStyle(vwsTree);
}

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
    fill();
    makeRoomForAmounts();
}

void StartPage::fill()
{
    if (!m_rows.Active())
        return;
    const int place = lvQuotes->verticalScrollBar()->value();
    {
        const QScopedValueRollback filling(m_filling, true);
        misc_BuildListView(*lvQuotes, &m_rows, wordFilter(edFind->text()), QLatin1StringView(ListFields),
                           QLatin1StringView(ListFormats), {}, false, -1, u"Picture"_s);
        const qint64 wanted = m_chosen;
        m_chosen = 0;
        chooseQuote(wanted);
        if (m_chosen == 0)
            misc_ListViewFocus(*lvQuotes);
        m_chosen = quoteOf(lvQuotes->SelectedItem());
        lvQuotes->verticalScrollBar()->setValue(place);
    }
    const int shown = lvQuotes->Items().Count();
    const int all = static_cast<int>(m_quotes.size());
    if (all == 0)
        lblCount->setText(tr("There are no quotes yet. Choose New to begin one."));
    else if (shown == all)
        lblCount->setText(tr("%n quote(s)", nullptr, all));
    else
        lblCount->setText(tr("%1 of %n quote(s)", nullptr, all).arg(shown));
    Q_EMIT quoteChosen();
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
    lvQuotes->header()->setSortIndicator(static_cast<int>(m_column), m_order);
    rebuild();
}

void StartPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    GuardedCall([this] {
        retranslateUi(this);
        showCaptions();
        if (m_rows.Active())
            rebuild();
    });
}

bool StartPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == edFind && event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        switch (key->key()) {
        case Qt::Key_Down:
        case Qt::Key_PageDown:
            lvQuotes->setFocus(Qt::TabFocusReason);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (m_chosen != 0)
                GuardedCall([this] { Q_EMIT openWanted(); });
            return true;
        case Qt::Key_Escape:
            if (!edFind->text().isEmpty()) {
                edFind->clear();
                return true;
            }
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace QuoteDesk
