#pragma once

#include "engine/level_kernel.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace orva {

/// 0x00BBGGRR.
using Colour = std::uint32_t;

constexpr Colour kBlack = 0x000000;
constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kRed = 0x0000FF;
constexpr Colour kBlue = 0xFF0000;
constexpr Colour kGridGrey = 0xC0C0C0;

/// The part of the plane that a surface shows, in user units; y grows downwards.
struct Scale {
    double left = 0;
    double top = 0;
    double width = 1;
    double height = 1;
};

/// What everything is drawn on. Points and lengths are in user units, line widths and text heights
/// in pixels (device-independent ones).
class DrawingSurface {
public:
    DrawingSurface() = default;
    DrawingSurface(const DrawingSurface&) = delete;
    DrawingSurface& operator=(const DrawingSurface&) = delete;
    virtual ~DrawingSurface() = default;

    virtual double pixelWidth() const = 0;
    virtual double pixelHeight() const = 0;
    double pixelAspect() const { return pixelWidth() / pixelHeight(); }

    const Scale& scale() const { return m_scale; }
    void setScale(const Scale& scale) { m_scale = scale; }
    /// User units per pixel.
    double pixelX() const { return m_scale.width / pixelWidth(); }
    double pixelY() const { return m_scale.height / pixelHeight(); }
    double right() const { return m_scale.left + m_scale.width; }
    double bottom() const { return m_scale.top + m_scale.height; }

    virtual void clear() = 0;
    virtual void line(Point from, Point to, Colour colour, double width = 1) = 0;
    /// A line whose second point is relative to the first.
    void lineBy(Point from, Point by, Colour colour, double width = 1)
    {
        line(from, {from.x + by.x, from.y + by.y}, colour, width);
    }
    virtual void polyline(std::span<const Point> points, Colour colour, double width = 1) = 0;
    virtual void rectangle(Point corner, Point opposite, Colour colour, double width = 1) = 0;
    virtual void fillRectangle(Point corner, Point opposite, Colour colour) = 0;
    virtual void circle(Point centre, double radius, Colour colour, double width = 1) = 0;
    /// Counter-clockwise as seen; degrees from +x.
    virtual void arc(Point centre, double radius, double fromDeg, double toDeg, Colour colour,
                     double width = 1) = 0;

    /// Height of what is printed from now on.
    virtual void setTextHeight(double pixels) = 0;
    virtual double textHeight() const = 0;
    /// Prints UTF-8 with its upper left corner at `at`.
    virtual void print(Point at, std::string_view text, Colour colour = kBlack) = 0;
    /// Width and height of a printed text in user units.
    virtual Point textSize(std::string_view text) const = 0;

    /// Writes the colours of one row of cells, as many as there are columns.
    using RowColours = std::function<void(std::size_t row, std::span<Colour> colours)>;
    /// One picture of cells: cell (c, r) lies between columnEdges[c] and [c + 1], rowEdges[r] and
    /// [r + 1]. Rows are asked for from the top, each once at most.
    virtual void cells(std::span<const double> columnEdges, std::span<const double> rowEdges,
                       const RowColours& rowColours) = 0;

private:
    Scale m_scale;
};

/// Sets a scale and puts the former one back.
class ScaleKeeper {
public:
    explicit ScaleKeeper(DrawingSurface& surface) : m_surface(surface), m_scale(surface.scale()) {}
    ScaleKeeper(const ScaleKeeper&) = delete;
    ScaleKeeper& operator=(const ScaleKeeper&) = delete;
    ~ScaleKeeper() { m_surface.setScale(m_scale); }

private:
    DrawingSurface& m_surface;
    Scale m_scale;
};

} // namespace orva
