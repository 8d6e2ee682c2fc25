#pragma once

#include <QProxyStyle>

namespace orva::ui {

/// Flat buttons, panels without edges and with bold headings, everything on a raster of 8 pixels.
class FlatStyle final : public QProxyStyle {
public:
    FlatStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace orva::ui
