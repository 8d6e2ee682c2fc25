#pragma once

#include "drawing/drawing_surface.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orva {

/// Puts labels where they can be read: each at its point, or in the nearest free place round it
/// with a thin line that says where it belongs. No label leaves the picture or lies on another one.
class LabelPlaces {
public:
    /// For a surface with the scale in which the points will be given.
    explicit LabelPlaces(DrawingSurface& surface) : m_surface(surface) {}

    /// Keeps a rectangle free.
    void occupy(Point corner, Point opposite);
    /// Prints a label for `point`; one that finds no place at all is left out.
    void print(Point point, std::string_view text);
    /// Takes the place round a point for a label, if it is free; printReserved() prints it, on a
    /// ground of its own.
    bool reserve(Point middle, std::string text);
    void printReserved();

private:
    struct Box {
        Point corner;
        Point size;
    };
    bool isFree(const Box& box) const;
    double pixelsAway(Point point, const Box& box) const;
    void join(Point point, const Box& box);

    DrawingSurface& m_surface;
    std::vector<Box> m_taken;
    std::vector<std::pair<Box, std::string>> m_reserved;
};

} // namespace orva
