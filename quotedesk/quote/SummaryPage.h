#pragma once

#include "quote/OpenPoint.h"
#include "quote/QuoteReport.h"

#include <QWidget>

#include <optional>

class QBoxLayout;
class QLabel;
class QTableWidget;
class QVBoxLayout;

namespace QuoteDesk
{

class BannerStack;
class Panel;
class SplitChart;
class TextLabel;

/// The quote as its client reads it, and what is still to be completed: each point with a button that leads
/// to its field, and below them what is done.
class SummaryPage : public QWidget
{
    Q_OBJECT
public:
    explicit SummaryPage(QWidget *parent = nullptr);
    ~SummaryPage() override;

    QWidget *pnlProblems;   ///< the points that are open; hidden without one
    QLabel *lblClientValue; ///< the client, among what is done
    QLabel *lblDescriptionValue;
    QLabel *lblDetails;
    TextLabel *lblProductValue; ///< below the investment
    TextLabel *lblStateValue;   ///< the quote's state in words
    QTableWidget *tblFunds;
    SplitChart *chart;
    BannerStack *banners;

    /// Shows a report and the points that are still open.
    void show(const QuoteReport &report, const QList<OpenPoint> &points);
    using QWidget::show;
    /// Shows another description of the same quote.
    void showDescription(const QString &description);
    /// Shows a message about a command.
    void say(const QString &text);

Q_SIGNALS:
    /// The user wants to go to the field of a point.
    void goWanted(const OpenPoint &point);

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    class Head;
    struct DoneRow {
        QWidget *row;
        TextLabel *title;
        TextLabel *value;
    };

    Panel *makePoints();
    QWidget *makeFigures();
    Panel *makeTable();
    DoneRow addDone(QVBoxLayout &column);
    static void setDone(const DoneRow &done, const QString &title, const QString &value);
    void showPoints(const QList<OpenPoint> &points);
    QWidget *pointRow(const OpenPoint &point);
    static QString placeText(OpenPoint::Place place);
    void showFigures();
    void showDone(const QList<OpenPoint> &points);
    void showTable();
    void addRow(const QString &name, const QString &percent, const QString &amount);
    void nameColumns();
    void adoptFont();
    void arrange();

    Head *m_head;
    QVBoxLayout *m_points;
    DoneRow m_client;
    DoneRow m_description;
    DoneRow m_details;
    DoneRow m_investment;
    DoneRow m_funds;
    Head *m_doneHead;
    QBoxLayout *m_columns;
    TextLabel *m_investmentCaption;
    TextLabel *m_investmentFigure;
    TextLabel *m_placedCaption;
    TextLabel *m_placedFigure;
    TextLabel *m_countCaption;
    TextLabel *m_countFigure;
    QWidget *m_note;
    TextLabel *m_noteText;
    std::optional<QuoteReport> m_report;
    QList<OpenPoint> m_open;
};

} // namespace QuoteDesk
