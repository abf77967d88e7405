#pragma once

#include "data/ClientDataSet.h"
#include "dataviews/fra_TreeView.h"
#include "toolkit/TImageList.h"

#include <QWidget>

class QSplitter;

namespace QuoteDesk
{

class CatalogueDatabase;
class CatalogueProviders;

/// The products and, for the chosen one, the groups and funds that quotes of the product can use.
class CataloguePlace : public QWidget
{
    Q_OBJECT
public:
    explicit CataloguePlace(QWidget *parent = nullptr);
    ~CataloguePlace() override;

    /// Shows the products and funds of a catalogue; call once. The catalogue and its providers must outlive
    /// the page.
    void setCatalogue(const CatalogueDatabase &catalogue, CatalogueProviders &providers);
    /// Reads products and funds again; expanded and selected nodes stay so.
    void refreshCatalogue();
    /// The selected product; 0 for none.
    int chosenProduct();
    /// The place of the border between products and funds, for the next run.
    QSplitter *splitter() const { return m_splitter; }

    TfraTreeView *fraProducts;
    TfraTreeView *fraCatalogue;

Q_SIGNALS:
    void newWanted(); ///< double-click or Enter on a product

protected:
    void changeEvent(QEvent *event) override;

private:
    void showCaptions();
    void showCatalogueOfProduct();
    void buildCatalogue();

    QSplitter *m_splitter;
    const CatalogueDatabase *m_catalogue = nullptr;
    CatalogueProviders *m_providers = nullptr;
    TImageList m_treePictures;
    TClientDataSet m_products;
    TClientDataSet m_types;
    TClientDataSet m_groups;
    TClientDataSet m_funds;
    bool m_filling = false;
};

} // namespace QuoteDesk
