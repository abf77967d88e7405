#pragma once

#include <QColor>
#include <QList>
#include <QWidget>

namespace Zel
{

/// The split of an investment as a bar of coloured parts. What is left over is a dashed gap at the end; what
/// is too much stands behind a post at the whole, below a bracket.
class SplitBar : public QWidget
{
public:
    static constexpr int Thickness = 12; ///< of the bar, in pixels; half of it where there is little room
    static constexpr int Post = 4;       ///< what the post rises above the bar and the bracket lies above it

    struct Part {
        double share = 0; ///< of the whole, which is 1
        QColor color;
    };

    explicit SplitBar(QWidget *parent) : QWidget(parent) {}
    /// Shows the parts from left to right.
    void Show(const QList<Part> &parts);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintParts(QPainter &painter, const QRectF &bar, double total) const;

    QList<Part> m_parts;
    double m_sum = 0;
};

} // namespace Zel
