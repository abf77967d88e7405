#pragma once

#include "toolkit/Look.h"

#include <QFrame>
#include <QLabel>
#include <QPointer>

namespace QuoteDesk
{

/// A label in a size and a colour of the look. It follows the application's font and palette while it is up.
class TextLabel : public QLabel
{
    Q_OBJECT
public:
    explicit TextLabel(LookFont font, LookColor color = LookColor::Text, QWidget *parent = nullptr);
    /// A label that wraps its plain text. @p parent owns the label.
    static TextLabel *wrapped(LookFont font, LookColor color, QWidget *parent);
    void setLookFont(LookFont font);    ///< Another size.
    void setLookColor(LookColor color); ///< Another colour.

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void adopt();
    void watchParent();

    LookFont m_font;
    LookColor m_color;
    QPointer<QWidget> m_watched;
    bool m_adopting = false;
};

/// A surface with rounded corners and a thin edge: what belongs together on a page. Add a layout; its margins
/// are the panel's padding.
class Panel : public QFrame
{
    Q_OBJECT
public:
    explicit Panel(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// Draws a surface with rounded corners and an edge one device pixel wide.
void paintRounded(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill, const QColor &edge,
                  qreal edgeWidth = 0);

} // namespace QuoteDesk
