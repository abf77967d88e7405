#pragma once

#include "desk/QuoteTable.h"

#include "data/ClientDataSet.h"
#include "dataviews/ill_Misc.h"

#include "ui_StartPage.h"

#include <QButtonGroup>
#include <QMenu>
#include <QVariantMap>
#include <QWidget>

#include <array>
#include <optional>

namespace QuoteDesk
{

class CatalogueDatabase;
class EmptyState;
class FirstStart;
class QuoteDelegate;
class QuotePreview;
class QuoteSession;

/// The quotes: a search, filters by state, the list, and a preview of the chosen quote.
///
/// The quotes can be sorted by each column and searched by words. When the list is read again, the selected
/// quote and the scroll position stay. In a narrow window the preview opens over the list.
class StartPage : public QWidget, public Ui::StartPage
{
    Q_OBJECT
public:
    explicit StartPage(QWidget *parent = nullptr);
    ~StartPage() override;

    /// Sets the session from whose store the preview reads; call once. @p session must outlive the page.
    void setSession(QuoteSession &session);

    void setQuotes(const QList<QuoteSummary> &quotes);
    const QList<QuoteSummary> &quotes() const noexcept { return m_quotes; }
    /// How many clients there are; without quotes and clients the page shows the first start.
    void setClientCount(int count);
    /// The catalogue and how many funds it has; call again when it has changed. @p catalogue must outlive the
    /// page.
    void setCatalogue(const CatalogueDatabase &catalogue, int fundCount);
    /// How many quotes are listed, as a sentence or a number with its unit.
    QString countText() const;
    /// The id of the selected quote; 0 for none.
    qint64 chosenQuote();
    /// Selects a quote and scrolls to it; a quote that is not listed changes nothing.
    void chooseQuote(qint64 quoteID);

    /// Sorts the list by a column; the same column again reverses the order.
    void sortBy(QuoteColumn column);
    QuoteColumn sortColumn() const noexcept { return m_column; }

    /// Lists only the quotes in a state; all quotes without one.
    void filterBy(std::optional<ChipState> state);
    /// The chip that filters by a state; without one, the chip for all quotes.
    FilterChip *filterChip(std::optional<ChipState> state) const;

    /// Shows or hides a column; the column of clients is always shown.
    void showColumn(QuoteColumn column, bool shown);
    /// The widths, order and visibility of the columns that the user has chosen, by language.
    QVariantMap columns() const;
    /// Takes over what columns() has returned in an earlier run; other values are ignored.
    void takeColumns(const QVariantMap &columns);

    QuotePreview *preview() const { return m_preview; }
    /// What stands in place of quotes and preview on the first start.
    FirstStart *firstStart() const { return m_firstStart; }
    /// Empties the search field and shows the quotes in all states.
    void clearSearch();

    QMenu *mnuColumns; ///< The columns to show, for the menus.

Q_SIGNALS:
    void quoteChosen();    ///< the selection has changed
    void openWanted();     ///< double-click or Enter on the selected quote
    void newQuoteWanted(); ///< the button for a new quote in place of an empty list

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static constexpr int ColumnCount = 6;

    /// The columns as the user wants them.
    struct Columns {
        std::array<int, ColumnCount> widths{}; ///< 0 for the usual width
        std::array<bool, ColumnCount> hidden{};
        std::array<int, ColumnCount> order{};
        bool isChosen = false; ///< whether the user has changed anything
    };

    void setUpList();
    void setUpColumns();
    void setUpFilters();
    void setUpEmptyStates();
    void setUpPreview();
    void showCaptions();
    void showFilterCounts();
    void showFound();
    void showFirstStart();
    bool isFirstStart();
    static Columns usualColumns();
    void arrangeColumns();
    void applyColumns();
    int wantedWidth(int column) const;
    void placePreview();
    void showPreview(bool shown);
    void adjustToWindow();
    void rebuild();
    void fill();
    qint64 quoteOf(const TListItem *item);
    std::optional<QuoteSummary> chosenSummary() const;

    QList<QuoteSummary> m_quotes;
    TClientDataSet m_rows;
    QuoteColumn m_column = QuoteColumn::Changed;
    Qt::SortOrder m_order = Qt::DescendingOrder;
    qint64 m_chosen = 0;
    QButtonGroup m_filters; ///< 0 for all quotes, then 1 + ChipState
    std::optional<ChipState> m_state;
    QuoteDelegate *m_delegate;
    QuotePreview *m_preview;
    FirstStart *m_firstStart;
    int m_clientCount = 0;
    const CatalogueDatabase *m_catalogue = nullptr;
    std::optional<bool> m_hasSampleFunds; ///< found out when it is needed
    EmptyState *m_noneFound = nullptr;
    EmptyState *m_noQuotes = nullptr;
    QPushButton *m_clear = nullptr;
    QList<QPushButton *> m_newButtons;
    QMap<QString, Columns> m_columns; ///< by the code of the language
    QString m_language;
    bool m_wantsPreview = true; ///< in a wide window
    bool m_isWide = true;
    bool m_filling = false;
    bool m_arranging = false;
};

} // namespace QuoteDesk
