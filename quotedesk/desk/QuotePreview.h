#pragma once

#include "store/QuoteStore.h"

#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include <functional>
#include <optional>

class QLabel;
class QScrollArea;

namespace QuoteDesk
{

class Chip;
class QuoteEditor;
class QuoteSession;
class SplitChart;
class TextLabel;

/// The chosen quote beside the list of quotes: its client, product, state and amount, its split, and the
/// commands for it.
///
/// What the list knows is shown at once. The funds are read from the store when the preview is visible,
/// without waiting for a server; while the choice moves on quickly, only some of the quotes on the way are
/// read.
class QuotePreview : public QWidget
{
    Q_OBJECT
public:
    explicit QuotePreview(QWidget *parent = nullptr);
    ~QuotePreview() override;

    /// Sets the session whose store has the quotes; call once. @p session must outlive the preview.
    void setSession(QuoteSession &session);
    /// The commands behind the button for more; they are not owned.
    void setMoreActions(const QList<QAction *> &actions);

    /// Shows a quote; none without one.
    void showQuote(const std::optional<QuoteSummary> &quote);
    /// The displayed quote; none without one.
    const std::optional<QuoteSummary> &shownQuote() const noexcept { return m_quote; }
    /// Whether the split of the displayed quote is displayed, too.
    bool isComplete() const { return m_quote && m_read == m_quote; }
    /// The number of quotes that were read from the store.
    int readCount() const noexcept { return m_readCount; }

    /// Prints the displayed quote, as it is stored.
    void print();
    /// Saves the displayed quote, as it is stored, as a PDF file.
    void savePdf();

    SplitChart *chart() const { return m_chart; }
    QPushButton *btnOpen;
    QToolButton *btnPdf;
    QToolButton *btnPrint;
    QToolButton *btnMore;

Q_SIGNALS:
    /// The displayed quote shall be opened.
    void openWanted();
    /// Escape was pressed in the preview.
    void closeWanted();
    /// A sentence about a command that is done.
    void told(const QString &sentence);

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    QWidget *makeContent();
    QWidget *makeFoot();
    void showTexts();
    void showSummary();
    void readWhenNeeded();
    void read();
    void showSplit(const Quote &quote);
    void showNote(const QString &note);
    void withEditor(const std::function<void(QuoteEditor &)> &work);

    QuoteSession *m_session = nullptr;
    std::optional<QuoteSummary> m_quote; ///< the displayed quote
    std::optional<QuoteSummary> m_read;  ///< the quote whose split is displayed, or could not be read
    bool m_isReading = false;
    int m_readCount = 0;
    QTimer m_pause; ///< runs for a moment after each reading
    QScrollArea *m_scroll;
    QWidget *m_foot;
    TextLabel *m_client;
    TextLabel *m_product;
    TextLabel *m_description;
    Chip *m_state;
    TextLabel *m_amountCaption;
    TextLabel *m_amount;
    SplitChart *m_chart;
    TextLabel *m_note; ///< in place of the split
    TextLabel *m_changed;
    TextLabel *m_changedBy;
    TextLabel *m_nothing; ///< without a quote
};

} // namespace QuoteDesk
