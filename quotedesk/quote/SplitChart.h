#pragma once

#include "store/ShownSplit.h"

#include <QStringList>
#include <QWidget>

class QPainterPath;

namespace QuoteDesk
{

/// The split of a quote as a ring with a legend: the largest funds, the others together, and what is not
/// given out as an open gap. A split that gives out more than there is fills the whole ring and says so. Each
/// part differs in colour and in hatching, and the accessible description reads the parts out.
class SplitChart : public QWidget
{
    Q_OBJECT
public:
    explicit SplitChart(QWidget *parent = nullptr);
    ~SplitChart() override;

    /// Shows a split: its state, its funds with their percentages, and what each fund is called. The numbers
    /// are rounded as they are shown.
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
        QString number; ///< What stands beside the name.
        int style = 0;  ///< The place among the colours; below 0 for what is not given out.
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
    QList<Part> m_funds; ///< The largest ones.
    int m_otherCount = 0;
    Currency m_otherPercent;
    QList<Part> m_parts; ///< What is drawn.
};

} // namespace QuoteDesk
