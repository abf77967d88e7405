#pragma once

#include "store/ShownSplit.h"

#include <QStringList>
#include <QWidget>

class QPainterPath;

namespace QuoteDesk
{

/// The split of a quote as a ring with a legend: the largest funds, the other funds together, and the
/// unallocated remainder as a gap. An over-allocated split fills the whole ring and says so. The parts differ
/// in colour and hatching, and the accessible description lists them.
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
        int style = 0;  ///< the index of the colour; negative for the remainder
    };
    void retext();
    bool hasRest() const;
    QString restText() const;
    QString middleText() const;
    int lineHeight() const;
    void paintPart(QPainter &painter, const QPainterPath &shape, int style) const;
    void paintRing(QPainter &painter, const QRectF &ring) const;
    void paintMiddle(QPainter &painter, const QRectF &hole) const;
    void paintLegend(QPainter &painter, int top) const;

    SplitState m_state;
    QList<Part> m_funds; ///< the largest ones
    int m_otherCount = 0;
    Currency m_otherPercent;
    QList<Part> m_parts; ///< the drawn parts
};

} // namespace QuoteDesk
