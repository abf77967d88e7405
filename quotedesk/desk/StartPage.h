#pragma once

#include "desk/QuoteTable.h"

#include "data/ClientDataSet.h"
#include "toolkit/TImageList.h"

#include "ui_StartPage.h"

#include <QWidget>

namespace QuoteDesk
{

class CatalogueDatabase;
class CatalogueProviders;

/// The main window's first page: the quotes, the products and the fund catalogue.
///
/// The quotes can be sorted by each column and searched by words. When the list is read again, the selected
/// quote and the scroll position stay.
class StartPage : public QWidget, public Ui::StartPage
{
    Q_OBJECT
public:
    explicit StartPage(QWidget *parent = nullptr);
    ~StartPage() override;

    /// Shows the products and funds of a catalogue; call once. The catalogue and its providers must outlive
    /// the page.
    void setCatalogue(const CatalogueDatabase &catalogue, CatalogueProviders &providers);
    /// Reads products and funds again; expanded and selected nodes stay so.
    void refreshCatalogue();

    void setQuotes(const QList<QuoteSummary> &quotes);
    const QList<QuoteSummary> &quotes() const noexcept { return m_quotes; }
    /// The id of the selected quote; 0 for none.
    qint64 chosenQuote();
    /// Selects a quote and scrolls to it; a quote that is not listed changes nothing.
    void chooseQuote(qint64 quoteID);
    /// The selected product; 0 for none.
    int chosenProduct();

    /// Sorts the list by a column; the same column again reverses the order.
    void sortBy(QuoteColumn column);
    QuoteColumn sortColumn() const noexcept { return m_column; }

Q_SIGNALS:
    void quoteChosen(); ///< the selection has changed
    void openWanted();  ///< double-click or Enter on the selected quote
    void newWanted();   ///< the same on a product

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpList();
    void setUpTrees();
    void showCaptions();
    void makeRoomForAmounts();
    void rebuild();
    void fill();
    void showCatalogueOfProduct();
    void buildCatalogue();
    qint64 quoteOf(const TListItem *item);

    const CatalogueDatabase *m_catalogue = nullptr;
    CatalogueProviders *m_providers = nullptr;
    QList<QuoteSummary> m_quotes;
    TClientDataSet m_rows;
    QuoteColumn m_column = QuoteColumn::Changed;
    Qt::SortOrder m_order = Qt::DescendingOrder;
    qint64 m_chosen = 0;
    TImageList m_statePictures;
    TImageList m_treePictures;
    TClientDataSet m_products;
    TClientDataSet m_types;
    TClientDataSet m_groups;
    TClientDataSet m_funds;
    bool m_filling = false;
};

} // namespace QuoteDesk
