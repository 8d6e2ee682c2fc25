#include "widgets/flat_style.h"

#include <QPainter>
#include <QStyleOption>

namespace orva::ui {

namespace {

constexpr int kRaster = 8;
constexpr double kRounding = 3;

void drawPanel(QPainter& painter, const QRect& place, const QColor& fill, const QColor& edge)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(edge.alpha() > 0 ? QPen(edge) : QPen(Qt::NoPen));
    painter.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), kRounding, kRounding);
    painter.restore();
}

} // namespace

FlatStyle::FlatStyle() : QProxyStyle("Fusion") {}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const
{
    switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
    case PM_LayoutHorizontalSpacing:
        return kRaster;
    case PM_LayoutVerticalSpacing:
        return kRaster / 2;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QRect FlatStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                SubControl part, const QWidget* widget) const
{
    const QRect place = QProxyStyle::subControlRect(control, option, part, widget);
    if (control != CC_GroupBox || part != SC_GroupBoxLabel)
        return place;
    return {place.topLeft(), QSize(option->rect.width() - place.left(), place.height())};
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const
{
    painter->save();
    if (control == CC_GroupBox) {
        QFont heading = painter->font();
        heading.setBold(true);
        painter->setFont(heading);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    painter->restore();
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const
{
    const QPalette& palette = option->palette;
    if (element == PE_FrameGroupBox) {
        drawPanel(*painter, option->rect, palette.color(QPalette::Base), Qt::transparent);
        return;
    }
    if (element != PE_PanelButtonCommand) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const bool enabled = option->state.testFlag(State_Enabled);
    const bool pressed = option->state.testFlag(State_Sunken) || option->state.testFlag(State_On);
    const bool focus = option->state.testFlag(State_HasFocus);
    const bool under = enabled && option->state.testFlag(State_MouseOver);
    QColor fill = palette.color(QPalette::Button);
    if (pressed)
        fill = fill.darker(115);
    else if (under)
        fill = fill.lighter(fill.lightness() < 128 ? 120 : 104);
    drawPanel(*painter, option->rect, fill,
              focus     ? palette.color(QPalette::Highlight)
              : enabled ? palette.color(QPalette::Mid)
                        : QColor(Qt::transparent));
}

} // namespace orva::ui
