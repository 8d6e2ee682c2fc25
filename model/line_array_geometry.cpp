#include "model/line_array.h"

#include <algorithm>

namespace orva {

namespace {

FloatPair sum(FloatPair a, FloatPair b)
{
    return {a[0] + b[0], a[1] + b[1]};
}

/// In the array frame (y down) a positive tilt turns a forward vector downwards.
FloatPair tilted(FloatPair v, float tiltDeg)
{
    return RotatePoint(v, -tiltDeg);
}

} // namespace

FloatPair LineArray::HungBox::point(FloatPair own) const
{
    return sum(corner, turn(own));
}

std::vector<LineArray::HungBox> LineArray::hungBoxes(float cradleTiltDeg) const
{
    std::vector<HungBox> boxes;
    boxes.reserve(static_cast<std::size_t>(boxCount()));
    hang(boxes, cradleTiltDeg);
    return boxes;
}

void LineArray::hang(std::vector<HungBox>& boxes, float cradleTiltDeg) const
{
    const SystemRecord& record = system();
    const auto count = static_cast<std::size_t>(boxCount());
    if (boxes.size() >= count)
        return;
    if (kindAt(0) == BoxKind::Trapezoidal)
        cradleTiltDeg += kTopTrapezoidalTiltDeg;
    HungBox box = boxes.empty() ? HungBox{{0, 0}, cradleTiltDeg, Rotation(-cradleTiltDeg), nullptr}
                                : boxes.back();
    for (std::size_t i = boxes.size(); i < count; ++i) {
        if (box.shape)
            box.corner = box.point(box.shape->hinge);
        const float splay = i > 0 ? splayAngle(AllAngle[i]) : 0;
        if (splay != 0) {
            box.tiltDeg += splay;
            box.turn = Rotation(-box.tiltDeg);
        }
        const std::optional<BoxKind> kind = record.kindOf(AllType[i]);
        box.shape = kind ? &record.boxes.shape(*kind) : nullptr;
        boxes.push_back(box);
    }
}

FloatPair LineArray::GFAArrayZero(FloatPair point) const
{
    if (!Mounting)
        return point;
    const CradleGeometry& cradle = system().cradle;
    const auto pin =
        static_cast<std::size_t>(std::clamp<int>(GIPinPoint(), 0, cradle.pinCount() - 1));
    const FloatPair offset = tilted({cradle.PinX[pin], cradle.PinY[pin]}, GFFirstAngle());
    return {point[0] - offset[0], point[1] - offset[1]};
}

std::array<float, 96> LineArray::GFAGetOriginPTSandAng(bool roomUp) const
{
    const FloatPair origin = originInRoom();
    std::array<float, 96> result{};
    std::size_t i = 0;
    for (const HungBox& box : hungBoxes(GFFirstAngle())) {
        const auto [x, y, degrees] = axisOf(box, origin, roomUp);
        result[i] = x;
        result[32 + i] = y;
        result[64 + i] = degrees;
        ++i;
    }
    return result;
}

FloatPair LineArray::originInRoom() const
{
    const FloatPair zero = GFAArrayZero({CradleCoord[0], 0});
    return {zero[0], CradleCoord[1] - zero[1]};
}

std::array<float, 3> LineArray::axisOf(const HungBox& box, FloatPair origin, bool roomUp) const
{
    if (!box.shape)
        return {};
    const auto sign = static_cast<float>(MountSign);
    const FloatPair source = box.point(box.shape->source);
    return {origin[0] + source[0],
            roomUp ? origin[1] - sign * source[1] : sign * source[1] - origin[1],
            -sign * box.tiltDeg};
}

std::vector<LineArray::BoxAxis> LineArray::axes() const
{
    const std::array<float, 96> figures = GFAGetOriginPTSandAng(true);
    std::vector<BoxAxis> axes(static_cast<std::size_t>(boxCount()));
    for (std::size_t i = 0; i < axes.size(); ++i)
        axes[i] = {{figures[i], figures[32 + i]}, figures[64 + i]};
    return axes;
}

std::vector<Point> LineArray::upperFrontCorners() const
{
    const FloatPair origin = originInRoom();
    std::vector<Point> corners;
    for (const HungBox& box : hungBoxes(GFFirstAngle())) {
        // A stack grows upwards: there the corner that the next box stands on is the upper one.
        const FloatPair corner = Mounting || !box.shape ? box.corner : box.point(box.shape->hinge);
        corners.push_back(
            {origin[0] + corner[0], origin[1] - static_cast<float>(MountSign) * corner[1]});
    }
    return corners;
}

FloatPair LineArray::GFACalcCOM()
{
    FloatPair moment{};
    for (const HungBox& box : hungBoxes(0))
        moment = momentWith(box, moment);
    storeCenterOfMass(moment);
    return CenterOfMass;
}

FloatPair LineArray::momentWith(const HungBox& box, FloatPair above) const
{
    if (!box.shape)
        return above;
    const FloatPair center = box.point(box.shape->centerOfGravity);
    return sum(above, {box.shape->weightKg * center[0], box.shape->weightKg * center[1]});
}

float LineArray::countedWeight() const
{
    const BoxGeometry& boxes = system().boxes;
    return static_cast<float>(NumBass) * boxes.bass.weightKg +
           static_cast<float>(NumGerade) * boxes.straight.weightKg +
           static_cast<float>(NumSchräg) * boxes.trapezoidal.weightKg;
}

void LineArray::storeCenterOfMass(FloatPair moment)
{
    const float total = countedWeight();
    CenterOfMass = total == 0 ? FloatPair{}
                              : FloatPair{moment[0] / total,
                                          moment[1] / total * static_cast<float>(MountSign)};
}

std::array<float, 64> LineArray::GFAGetCOMPTS() const
{
    std::array<float, 64> result{};
    std::size_t i = 0;
    for (const HungBox& box : hungBoxes(GFFirstAngle())) {
        if (box.shape) {
            const FloatPair center = box.point(box.shape->centerOfGravity);
            result[i] = center[0];
            result[32 + i] = center[1] * static_cast<float>(MountSign);
        }
        ++i;
    }
    return result;
}

std::array<float, 4> LineArray::GFAGetBounds() const
{
    FloatPair largest{};
    FloatPair smallest{};
    const FloatPair zero = GFAArrayZero({0, 0});
    const auto include = [&](FloatPair fromOrigin) {
        const FloatPair point = sum(zero, fromOrigin);
        for (std::size_t axis = 0; axis < 2; ++axis) {
            largest[axis] = std::max(largest[axis], point[axis]);
            smallest[axis] = std::min(smallest[axis], point[axis]);
        }
    };
    const float tilt = GFFirstAngle();
    for (const std::size_t corner : {3U, 0U, 2U})
        include(tilted(system().cradle.outline[corner], tilt));
    for (const HungBox& box : hungBoxes(tilt)) {
        if (!box.shape)
            continue;
        include(box.point(box.shape->bottomRear));
        include(box.point(box.shape->hinge));
    }
    const auto sign = static_cast<float>(MountSign);
    return {largest[0], sign * largest[1], smallest[0], sign * smallest[1]};
}

} // namespace orva
