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

/// The page that the main window starts with: the quotes, the products and the fund catalogue.
///
/// The quotes can be sorted by each column and found by their words; the chosen one stays chosen, and in its
/// place on the screen, when the list is read again.
class StartPage : public QWidget, public Ui::StartPage
{
    Q_OBJECT
public:
    explicit StartPage(QWidget *parent = nullptr);
    ~StartPage() override;

    /// Shows the products and funds of a catalogue, which with its providers must outlive the page; once.
    void setCatalogue(const CatalogueDatabase &catalogue, CatalogueProviders &providers);
    /// Reads products and funds again; what is unfolded and chosen stays so.
    void refreshCatalogue();

    void setQuotes(const QList<QuoteSummary> &quotes);
    const QList<QuoteSummary> &quotes() const noexcept { return m_quotes; }
    /// The number of the chosen quote; 0 for none.
    qint64 chosenQuote();
    /// Chooses a quote and brings it into view; one that is not shown leaves the choice as it is.
    void chooseQuote(qint64 quoteID);
    /// The product chosen among the products; 0 for none.
    int chosenProduct();

    /// Orders the list by a column; the same column again turns the order round.
    void sortBy(QuoteColumn column);
    QuoteColumn sortColumn() const noexcept { return m_column; }

Q_SIGNALS:
    void quoteChosen(); ///< Another quote is chosen, or none.
    void openWanted();  ///< The chosen quote was double-clicked, or Enter pressed on it.
    void newWanted();   ///< The same on a product.

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
