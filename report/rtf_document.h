#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// A picture in a document: PNG bytes and how large it is printed.
struct PlacedPicture {
    std::string_view png;
    int widthTwips;
    int heightTwips;
};

/// Builds a document of one portrait section in the Rich Text Format, version 1.9, from top to
/// bottom. Lengths are twips (1/1440 inch).
class RtfDocument {
public:
    /// Font of the text that follows.
    void setFont(const std::string& name, int sizePt);
    /// Where tabs of the current and the following lines lead; the default is every 2 cm.
    void setTabStops(const std::vector<int>& stops);
    static std::vector<int> defaultTabStops();
    /// Colour of the text that follows, 0x00BBGGRR.
    void setColour(std::uint32_t colour);
    /// Appends UTF-8. CR, LF and either of them followed by the other break the line; tabs go to
    /// the next of the document's tab stops.
    void insertText(std::string_view text);

    /// A row of a table with one cell for each width, white and without borders. The cells follow,
    /// each ended by endCell().
    void beginRow(const std::vector<int>& cellWidths);
    void endCell();
    void endRow();
    void insertPicture(const PlacedPicture& picture);

    /// The whole document.
    std::string bytes() const;

private:
    std::vector<std::string> m_fonts;
    std::vector<std::uint32_t> m_colours;
    std::string m_body;
};

/// Width and height in pixels of a PNG; 0 and 0 for anything else.
struct PixelSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};
PixelSize pngSize(std::string_view png);

} // namespace orva
