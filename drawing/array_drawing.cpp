#include "drawing/array_drawing.h"

#include "drawing/scale.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace orva {

namespace {

constexpr double kCentreOfGravityRadius = 0.05;
constexpr double kSourceMark = 0.01;

/// Places points of the array frame on the surface.
class ArrayFrame {
public:
    ArrayFrame(const LineArray& array, Point origin)
        : m_tiltDeg(array.GFFirstAngle()), m_sign(array.GBGetMounting() ? 1 : -1)
    {
        const FloatPair zero =
            array.GFAArrayZero({static_cast<float>(origin.x), static_cast<float>(origin.y)});
        m_zero = {zero[0], zero[1]};
    }

    Point place(FloatPair tilted) const
    {
        return {m_zero.x + tilted[0], m_zero.y + m_sign * tilted[1]};
    }
    /// A point of the cradle, which turns with the cradle tilt alone.
    Point placeCradle(FloatPair own) const { return place(RotatePoint(own, -m_tiltDeg)); }
    float tiltDeg() const { return m_tiltDeg; }
    double sign() const { return m_sign; }

private:
    float m_tiltDeg;
    double m_sign;
    Point m_zero{};
};

void drawClosed(DrawingSurface& surface, std::vector<Point> corners)
{
    corners.push_back(corners.front());
    surface.polyline(corners, Role::Array);
}

void drawCradle(DrawingSurface& surface, const LineArray& array, const ArrayFrame& frame,
                bool detailed)
{
    const CradleGeometry& cradle = array.system().cradle;
    std::vector<Point> outline;
    for (const FloatPair& corner : cradle.outline)
        outline.push_back(frame.placeCradle(corner));
    drawClosed(surface, outline);

    LineArray copy = array;
    FloatPair center = copy.GFACalcCOM();
    center[1] *= static_cast<float>(frame.sign()); // back to the array frame
    const Point gravity = frame.placeCradle(center);
    surface.circle(gravity, kCentreOfGravityRadius, Role::Array);
    if (!detailed)
        return;
    const auto pinAt = [&](std::size_t pin) {
        return frame.placeCradle({cradle.PinX[pin], cradle.PinY[pin]});
    };
    for (std::size_t pin = 0; pin < cradle.PinX.size(); ++pin)
        surface.circle(pinAt(pin), cradle.pinRadius, Role::Array);
    if (!array.GBGetMounting())
        return; // no pin carries a stack
    const Point carrying = pinAt(static_cast<std::size_t>(array.GIPinPoint()));
    surface.circle(carrying, cradle.pinRadius / 2, Role::Source, 2);
    surface.line(gravity, carrying, Role::Array);
}

void drawBox(DrawingSurface& surface, const LineArray& array, const ArrayFrame& frame,
             const LineArray::HungBox& box, bool detailed)
{
    const auto at = [&](FloatPair own) { return frame.place(box.point(own)); };
    const BoxGeometry& boxes = array.system().boxes;
    const BoxShape& shape = *box.shape;
    const auto [topFront, hinge, bottomRear, topRear] = boxes.outline(shape);
    drawClosed(surface, {at(topFront), at(hinge), at(bottomRear), at(topRear)});
    if (&shape != &boxes.bass)
        drawClosed(surface, {at(boxes.marks[0]), at(boxes.marks[1]), at(boxes.marks[2])});
    if (!detailed)
        return;
    const Point source = at(shape.source);
    surface.fillRectangle({source.x - kSourceMark / 2, source.y - kSourceMark / 2},
                          {source.x + kSourceMark / 2, source.y + kSourceMark / 2}, Role::Source);
}

struct Label {
    Point box; ///< middle of the box's front
    std::string text;
};

/// Moves the labels' upper edges apart, top one first, and back up where they would leave the
/// surface.
std::vector<double> spread(const std::vector<Label>& labels, double height, double top,
                           double bottom)
{
    std::vector<double> edges;
    double free = top;
    for (const Label& label : labels) {
        edges.push_back(std::max(free, label.box.y - height / 2));
        free = edges.back() + height;
    }
    double limit = bottom;
    for (auto edge = edges.rbegin(); edge != edges.rend(); ++edge) {
        *edge = std::min(*edge, limit - height);
        limit = *edge;
    }
    return edges;
}

/// A column of labels right of the array, each with a thin line to its box.
void drawLabels(DrawingSurface& surface, std::vector<Label> labels, double rightmost)
{
    if (labels.empty())
        return;
    std::stable_sort(labels.begin(), labels.end(),
                     [](const Label& a, const Label& b) { return a.box.y < b.box.y; });
    const double former = surface.textHeight();
    const auto fits = [&] {
        return static_cast<double>(labels.size()) * surface.textSize("0").y <=
               surface.scale().height;
    };
    while (!fits() && surface.textHeight() > 5)
        surface.setTextHeight(surface.textHeight() - 0.5);

    double width = 0;
    for (const Label& label : labels)
        width = std::max(width, surface.textSize(label.text).x);
    const double gap = 8 * surface.pixelX();
    const double column = std::min(rightmost + 3 * gap, surface.right() - width - gap / 2);
    const double height = surface.textSize("0").y;
    const std::vector<double> edges = spread(labels, height, surface.scale().top, surface.bottom());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (column > rightmost)
            surface.line(labels[i].box, {column - gap / 4, edges[i] + height / 2}, Role::Leader);
        // Nothing shines through: neither the grid nor a curl of boxes as wide as the view.
        surface.fillRectangle({column, edges[i]},
                              {column + surface.textSize(labels[i].text).x, edges[i] + height},
                              Role::Canvas);
        surface.print({column, edges[i]}, labels[i].text);
    }
    surface.setTextHeight(former);
}

} // namespace

void DrawLineArray(DrawingSurface& surface, const LineArray& array, Point origin, bool detailed,
                   const DrawingOptions& options)
{
    const ArrayFrame frame(array, origin);
    drawCradle(surface, array, frame, detailed);

    std::vector<Label> labels;
    const LineArray::Positions angles = array.GIAGetAllAngle();
    double rightmost = frame.placeCradle(array.system().cradle.outline[0]).x;
    int number = 0;
    for (const LineArray::HungBox& box : array.hungBoxes(frame.tiltDeg())) {
        const auto position = static_cast<std::size_t>(number++);
        if (!box.shape)
            continue;
        drawBox(surface, array, frame, box, detailed);
        const auto [hingeX, hingeY] = box.shape->hinge;
        const Point front = frame.place(box.point({hingeX / 2, hingeY / 2}));
        rightmost = std::max({rightmost, front.x, frame.place(box.point(box.shape->hinge)).x,
                              frame.place(box.corner).x});
        std::string label =
            std::string(MlGetString(options.text.language, Text::Box)) + std::to_string(number);
        if (position > 0)
            label += "   " + plainText(LineArray::splayAngle(angles[position]), 1) + "°";
        labels.push_back({front, label});
    }
    if (detailed)
        drawLabels(surface, labels, rightmost);
}

void DrawRiggingView(DrawingSurface& surface, const LineArray& array, const DrawingOptions& options)
{
    LineArray current = array;
    current.GFACalcCOM();
    const std::array<float, 4> bounds = current.GFAGetBounds();
    const double width = static_cast<double>(bounds[0]) - bounds[2];
    const double height = static_cast<double>(bounds[1]) - bounds[3];

    surface.clear();
    FitScale(surface, std::abs(width) * 1.05, std::abs(height) * 1.05);
    if (gridFits(surface, options.GridUnit_Rigging, options.text)) {
        const ScaleKeeper keeper(surface);
        ResetScale(surface);
        surface.print({4, 3}, std::string(MlGetString(options.text.language, Text::RiggingScale)) +
                                  plainText(options.GridUnit_Rigging, 3) + ' ' +
                                  std::string(lengthUnit(options.text)));
    }
    Point origin = {(surface.scale().width - width * 1.05) * 0.5 + width * 0.025 - bounds[2],
                    height * 0.04 - bounds[3]};
    if (!array.GBGetMounting())
        origin.y += surface.scale().height;
    DrawGrid(surface, origin, options.GridUnit_Rigging, options.text);
    DrawLineArray(surface, current, origin, true, options);
}

} // namespace orva
