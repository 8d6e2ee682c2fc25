#include "drawing/label_places.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

/// Farther from its box than this a point is joined to it by a line.
constexpr double kLongestGapPixels = 3;
/// Half widths and heights of the label that it is moved by at most, each way.
constexpr int kSteps = 24;

/// The point of a rectangle that is nearest.
Point nearestOf(Point point, Point corner, Point size)
{
    return {std::clamp(point.x, corner.x, corner.x + size.x),
            std::clamp(point.y, corner.y, corner.y + size.y)};
}

} // namespace

void LabelPlaces::occupy(Point corner, Point opposite)
{
    m_taken.push_back({corner, {opposite.x - corner.x, opposite.y - corner.y}});
}

bool LabelPlaces::isFree(const Box& box) const
{
    const Scale& shown = m_surface.scale();
    if (box.corner.x < shown.left || box.corner.y < shown.top ||
        box.corner.x + box.size.x > m_surface.right() ||
        box.corner.y + box.size.y > m_surface.bottom())
        return false;
    return std::none_of(m_taken.begin(), m_taken.end(), [&](const Box& other) {
        return box.corner.x < other.corner.x + other.size.x &&
               other.corner.x < box.corner.x + box.size.x &&
               box.corner.y < other.corner.y + other.size.y &&
               other.corner.y < box.corner.y + box.size.y;
    });
}

double LabelPlaces::pixelsAway(Point point, const Box& box) const
{
    const Point nearest = nearestOf(point, box.corner, box.size);
    return std::hypot((point.x - nearest.x) / m_surface.pixelX(),
                      (point.y - nearest.y) / m_surface.pixelY());
}

void LabelPlaces::join(Point point, const Box& box)
{
    if (pixelsAway(point, box) > kLongestGapPixels)
        m_surface.line(point, nearestOf(point, box.corner, box.size), Role::Leader);
}

void LabelPlaces::print(Point point, std::string_view text)
{
    const Point size = m_surface.textSize(text);
    std::vector<Box> places = {{point, size}};
    if (!isFree(places.front())) {
        for (int i = -kSteps; i <= kSteps; ++i)
            for (int j = -kSteps; j <= kSteps; ++j)
                places.push_back({{point.x + i * size.x / 2, point.y + j * size.y / 2}, size});
        std::stable_sort(places.begin(), places.end(), [&](const Box& a, const Box& b) {
            return pixelsAway(point, a) < pixelsAway(point, b);
        });
    }
    const auto place =
        std::find_if(places.begin(), places.end(), [this](const Box& box) { return isFree(box); });
    if (place == places.end())
        return;
    join(point, *place);
    m_taken.push_back(*place);
    m_surface.print(place->corner, text);
}

bool LabelPlaces::reserve(Point middle, std::string text)
{
    const Point size = m_surface.textSize(text);
    const Box box = {{middle.x - size.x / 2, middle.y - size.y / 2}, size};
    if (!isFree(box))
        return false;
    m_taken.push_back(box);
    m_reserved.emplace_back(box, std::move(text));
    return true;
}

void LabelPlaces::printReserved()
{
    for (const auto& [box, text] : m_reserved) {
        m_surface.fillRectangle(box.corner, {box.corner.x + box.size.x, box.corner.y + box.size.y},
                                Role::Canvas);
        m_surface.print(box.corner, text);
    }
    m_reserved.clear();
}

} // namespace orva
