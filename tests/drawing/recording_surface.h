#pragma once

#include "drawing/drawing_surface.h"

#include <string>
#include <vector>

namespace orva {

constexpr Colour kRed = 0x0000FF;
constexpr Colour kBlue = 0xFF0000;
constexpr Colour kGridGrey = 0xC0C0C0;

/// Keeps what was drawn instead of drawing it. A text is 6 pixels wide a byte and 10 high.
class RecordingSurface : public DrawingSurface {
public:
    struct Call {
        std::string what;
        std::vector<Point> points;
        Colour colour = kBlack;
        double size = 0; ///< line width or radius
        std::string text;
        Scale scale{};
    };
    std::vector<Call> calls;
    std::vector<double> columnEdges;
    std::vector<double> rowEdges;
    std::vector<Colour> cellColours;

    RecordingSurface(double width, double height) : m_width(width), m_height(height) {}

    double pixelWidth() const override { return m_width; }
    double pixelHeight() const override { return m_height; }
    void clear() override { calls.clear(); }
    void line(Point from, Point to, Colour colour, double width) override
    {
        calls.push_back({"line", {from, to}, colour, width, {}, scale()});
    }
    void polyline(std::span<const Point> points, Colour colour, double width) override
    {
        calls.push_back({"polyline", {points.begin(), points.end()}, colour, width, {}, scale()});
    }
    void rectangle(Point corner, Point opposite, Colour colour, double width) override
    {
        calls.push_back({"rectangle", {corner, opposite}, colour, width, {}, scale()});
    }
    void fillRectangle(Point corner, Point opposite, Colour colour) override
    {
        calls.push_back({"fill", {corner, opposite}, colour, 0, {}, scale()});
    }
    void circle(Point centre, double radius, Colour colour, double) override
    {
        calls.push_back({"circle", {centre}, colour, radius, {}, scale()});
    }
    void arc(Point centre, double radius, double, double toDeg, Colour colour, double) override
    {
        calls.push_back({"arc", {centre, {toDeg, 0}}, colour, radius, {}, scale()});
    }
    void setTextHeight(double pixels) override { m_textHeight = pixels; }
    double textHeight() const override { return m_textHeight; }
    void print(Point at, std::string_view text, Colour colour) override
    {
        calls.push_back({"text", {at}, colour, 0, std::string(text), scale()});
    }
    Point textSize(std::string_view text) const override
    {
        return {0.6 * m_textHeight * static_cast<double>(text.size()) * pixelX(),
                m_textHeight * pixelY()};
    }
    void cells(std::span<const double> columns, std::span<const double> rows,
               const RowColours& rowColours) override
    {
        columnEdges.assign(columns.begin(), columns.end());
        rowEdges.assign(rows.begin(), rows.end());
        const std::size_t width = columns.size() - 1;
        cellColours.resize(width * (rows.size() - 1));
        for (std::size_t row = 0; row + 1 < rows.size(); ++row)
            rowColours(row, std::span(cellColours).subspan(row * width, width));
    }

    /// The calls of one kind and colour.
    std::vector<Call> all(const std::string& what, Colour colour) const
    {
        std::vector<Call> found;
        for (const Call& call : calls)
            if (call.what == what && call.colour == colour)
                found.push_back(call);
        return found;
    }
    std::vector<std::string> texts() const
    {
        std::vector<std::string> found;
        for (const Call& call : calls)
            if (call.what == "text")
                found.push_back(call.text);
        return found;
    }

private:
    double m_width;
    double m_height;
    double m_textHeight = 10;
};

} // namespace orva
