#pragma once

#include "store/ShownSplit.h"

#include <QWidget>

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

    void show(const ShownSplit &split);
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
    void arrange();
    bool hasRest() const;
    bool isOver() const;
    QString restText() const;
    QString middleText() const;

    ShownSplit m_split;
    QList<Part> m_parts;
};

} // namespace QuoteDesk
