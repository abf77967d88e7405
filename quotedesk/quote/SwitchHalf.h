#pragma once

#include <QPainterPath>
#include <QRadioButton>

namespace QuoteDesk
{

/// A radio button that is drawn as one half of a switch: put two of them side by side without a gap into a
/// widget of their own. The chosen half is filled and has a tick. Keys, mnemonics, exclusiveness and the role
/// for screen readers are those of radio buttons.
class SwitchHalf : public QRadioButton
{
    Q_OBJECT
public:
    explicit SwitchHalf(QWidget *parent = nullptr);
    ~SwitchHalf() override;

    /// Whether this half stands on the right in a layout from left to right; at first it does not.
    bool isSecond() const noexcept { return m_isSecond; }
    void setSecond(bool isSecond);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool hitButton(const QPoint &point) const override;

private:
    int tickSize() const;
    QPainterPath shape(const QRectF &rect) const;

    bool m_isSecond = false;
};

} // namespace QuoteDesk
