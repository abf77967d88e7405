#include "desk/CataloguePlace.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "quote/PlainText.h"

#include "toolkit/TApplication.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr auto ProductProvider = "dspProduct";
constexpr auto FundProvider = "dspFund";

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

CataloguePlace::CataloguePlace(QWidget *parent)
    : QWidget(parent), fraProducts(new TfraTreeView), fraCatalogue(new TfraTreeView),
      m_splitter(new QSplitter(Qt::Horizontal, this))
{
    fraProducts->setObjectName(u"fraProducts"_s);
    fraCatalogue->setObjectName(u"fraCatalogue"_s);
    m_splitter->setObjectName(u"splTrees"_s);
    m_splitter->setChildrenCollapsible(false);
    m_treePictures.AddGlyphs({u"details"_s, u"fund-type"_s, u"fund-group"_s, u"fund"_s});
    for (TfraTreeView *const frame : {fraProducts, fraCatalogue}) {
        m_splitter->addWidget(frame);
        frame->Set_ImageList(&m_treePictures);
        frame->Set_ShowHeader(true);
        frame->Set_KeepTreeState(true);
        frame->setMinimumSize(140, 70);
    }
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({230, 670});
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(m_splitter);
    connectGuarded(fraProducts->TreeView, &TTreeView::Change, this, [this] {
        if (!m_filling)
            showCatalogueOfProduct();
    });
    connectGuarded(fraProducts->TreeView, &QAbstractItemView::activated, this,
                   [this] { Q_EMIT newWanted(); });
    showCaptions();
}

CataloguePlace::~CataloguePlace() = default;

void CataloguePlace::showCaptions()
{
    fraProducts->Set_HeaderCaption(tr("Products"));
    fraCatalogue->Set_HeaderCaption(tr("Fund catalogue"));
    fraProducts->TreeView->setAccessibleName(tr("Products"));
    fraCatalogue->TreeView->setAccessibleName(tr("Fund catalogue"));
    fraProducts->TreeView->setToolTip(tr("Enter or a double click begins a quote for the product"));
}

void CataloguePlace::setCatalogue(const CatalogueDatabase &catalogue, CatalogueProviders &providers)
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

void CataloguePlace::refreshCatalogue()
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
}

int CataloguePlace::chosenProduct()
{
    return std::max(
        0, fraProducts->GetKeyFieldValueFromLevel(fraProducts->TreeView->Selected(), 0, u"ProductID"_s));
}

void CataloguePlace::showCatalogueOfProduct()
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

void CataloguePlace::buildCatalogue()
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

void CataloguePlace::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        GuardedCall([this] { showCaptions(); });
}

} // namespace QuoteDesk
