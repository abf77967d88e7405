#pragma once

#include <QProxyStyle>

namespace QuoteDesk
{

/// The style of Quote Desk: it draws the controls of Qt in the tokens of toolkit/Look, with heights that
/// follow the font, lines of one device pixel and no motion. Colours come from the palette of each widget
/// when it is drawn. The kinds of look/Kinds.h choose between buttons and mark the edges of fields.
class DeskStyle : public QProxyStyle
{
    Q_OBJECT
public:
    DeskStyle();
    ~DeskStyle() override;

    void polish(QWidget *widget) override;
    using QProxyStyle::polish;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget = nullptr) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *result = nullptr) const override;
    QIcon standardIcon(StandardPixmap picture, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;
};

} // namespace QuoteDesk
