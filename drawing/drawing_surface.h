#pragma once

#include "drawing/colour_scheme.h"
#include "model/segment.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace orva {

constexpr Colour kBlack = 0x000000;
constexpr Colour kWhite = 0xFFFFFF;

/// The part of the plane that a surface shows, in user units; y grows downwards.
struct Scale {
    double left = 0;
    double top = 0;
    double width = 1;
    double height = 1;
};

/// The part of a given view that is shown larger.
struct Zoom {
    double factor = 1; ///< 1..kMost
    double x = 0;      ///< of the given width, what lies to the left of the part
    double y = 0;      ///< of the given height, what lies above it

    static constexpr double kMost = 40;

    Scale of(const Scale& given) const
    {
        return {given.left + x * given.width, given.top + y * given.height, given.width / factor,
                given.height / factor};
    }
    /// `times` larger, the place at these parts of the shown width and height staying where it is;
    /// never beyond the given view.
    Zoom at(double partX, double partY, double times) const;
    /// Moved by these parts of the shown width and height.
    Zoom panned(double partX, double partY) const;

    friend bool operator==(const Zoom&, const Zoom&) = default;
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
    /// Which part of a view that can be zoomed is drawn.
    const Zoom& zoom() const { return m_zoom; }
    void setZoom(const Zoom& zoom) { m_zoom = zoom; }
    /// User units per pixel.
    double pixelX() const { return m_scale.width / pixelWidth(); }
    double pixelY() const { return m_scale.height / pixelHeight(); }
    double right() const { return m_scale.left + m_scale.width; }
    double bottom() const { return m_scale.top + m_scale.height; }

    /// What the roles look like.
    void setScheme(const ColourScheme& scheme) { m_scheme = &scheme; }
    Colour colour(Role role) const { return (*m_scheme)[role]; }

    /// Whether what is drawn in a role from now on gets a rim of the canvas, so that it is seen on
    /// any ground.
    void setRims(bool rims) { m_rims = rims; }

    virtual void clear() = 0;
    void line(Point from, Point to, Role role, double width = 1)
    {
        if (m_rims && role != Role::Grid)
            line(from, to, colour(Role::Canvas), width + kRim);
        line(from, to, colour(role), width);
    }
    /// A line whose second point is relative to the first.
    void lineBy(Point from, Point by, Role role, double width = 1)
    {
        line(from, {from.x + by.x, from.y + by.y}, role, width);
    }
    void polyline(std::span<const Point> points, Role role, double width = 1)
    {
        if (m_rims)
            polyline(points, colour(Role::Canvas), width + kRim);
        polyline(points, colour(role), width);
    }
    void rectangle(Point corner, Point opposite, Role role, double width = 1)
    {
        if (m_rims)
            rectangle(corner, opposite, colour(Role::Canvas), width + kRim);
        rectangle(corner, opposite, colour(role), width);
    }
    void fillRectangle(Point corner, Point opposite, Role role)
    {
        fillRectangle(corner, opposite, colour(role));
    }
    void circle(Point centre, double radius, Role role, double width = 1)
    {
        if (m_rims)
            circle(centre, radius, colour(Role::Canvas), width + kRim);
        circle(centre, radius, colour(role), width);
    }
    void arc(Point centre, double radius, double fromDeg, double toDeg, Role role)
    {
        arc(centre, radius, fromDeg, toDeg, colour(role), 1);
    }
    void print(Point at, std::string_view text, Role role = Role::Ink)
    {
        if (m_rims) {
            const Point size = textSize(text);
            fillRectangle(at, {at.x + size.x, at.y + size.y}, Role::Canvas);
        }
        print(at, text, colour(role));
    }

    virtual void line(Point from, Point to, Colour colour, double width) = 0;
    virtual void polyline(std::span<const Point> points, Colour colour, double width) = 0;
    virtual void rectangle(Point corner, Point opposite, Colour colour, double width) = 0;
    virtual void fillRectangle(Point corner, Point opposite, Colour colour) = 0;
    virtual void circle(Point centre, double radius, Colour colour, double width) = 0;
    /// Counter-clockwise as seen; degrees from +x.
    virtual void arc(Point centre, double radius, double fromDeg, double toDeg, Colour colour,
                     double width) = 0;

    /// Height of what is printed from now on.
    virtual void setTextHeight(double pixels) = 0;
    virtual double textHeight() const = 0;
    /// Prints UTF-8 with its upper left corner at `at`.
    virtual void print(Point at, std::string_view text, Colour colour) = 0;
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
    Zoom m_zoom;
    static constexpr double kRim = 2;

    const ColourScheme* m_scheme = &classicScheme();
    bool m_rims = false;
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
