#pragma once

#include "store/ShownSplit.h"

#include <QStringList>
#include <QWidget>

namespace QuoteDesk
{

/// The split of a quote as a ring with a legend: the largest funds, the other funds together, and the
/// unallocated remainder as a gap with a dashed edge. An over-allocated split fills the whole ring, and a red
/// bracket spans the excess. The parts follow each other in the order in which the funds joined the quote,
/// which also determines their colours. The accessible description lists the parts.
class SplitChart : public QWidget
{
    Q_OBJECT
public:
    explicit SplitChart(QWidget *parent = nullptr);
    ~SplitChart() override;

    /// Shows a split: its state, its funds with their percentages, and the funds' names. The numbers are
    /// rounded for display.
    void show(const SplitState &state, const QList<QuotedFund> &funds, const QStringList &names);
    using QWidget::show;

    /// Whether the legend is drawn below the ring; it is by default. The tool tip has its texts in any case.
    bool hasLegend() const noexcept { return m_hasLegend; }
    void setLegend(bool shown);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct Part {
        QString name;
        Currency percent;
        QString number; ///< the number beside the name
        int color = 0;  ///< the index for FundColor; negative for the remainder
    };
    struct Middle {
        QString figure;
        QString caption;
    };
    void retext();
    bool hasRest() const;
    QString restText() const;
    Middle middle() const;
    int lineHeight() const;
    void paintGap(QPainter &painter, const QPainterPath &shape) const;
    void paintRing(QPainter &painter, const QRectF &ring) const;
    void paintBracket(QPainter &painter, const QRectF &ring, const QRectF &hole, double sum) const;
    void paintMiddle(QPainter &painter, const QRectF &hole) const;
    void paintLegend(QPainter &painter, int top) const;

    SplitState m_state;
    QList<Part> m_funds; ///< the largest ones, in the order of the split
    int m_otherCount = 0;
    Currency m_otherPercent;
    QList<Part> m_parts; ///< the drawn parts
    bool m_hasLegend = true;
};

} // namespace QuoteDesk
