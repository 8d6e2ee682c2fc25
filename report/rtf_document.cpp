#include "report/rtf_document.h"

#include "lang/utf8.h"
#include "lang/windows1252.h"

#include <algorithm>
#include <array>

namespace orva {

namespace {

constexpr int kPaperWidth = 11906; // A4
constexpr int kPaperHeight = 16838;
constexpr int kMargin = 1134; // 2 cm
constexpr int kTabStops = 6;
constexpr int kTabDistance = 1134;

void appendHex(std::string& to, std::string_view bytes)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    constexpr std::size_t kBytesInLine = 64;
    std::size_t column = 0;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        to += kDigits[byte >> 4];
        to += kDigits[byte & 0xF];
        if (++column % kBytesInLine == 0)
            to += '\n';
    }
}

/// A UTF-16 unit as a signed number, with "?" for readers that do not know it.
void appendUnit(std::string& to, std::uint32_t unit)
{
    to += "\\u" + std::to_string(static_cast<std::int16_t>(unit)) + "?";
}

void appendCharacter(std::string& to, char32_t character)
{
    const std::optional<char> byte = windows1252Byte(character);
    if (character == '\t') {
        to += "\\tab ";
    } else if (character < 0x20) {
        to += ' ';
    } else if (character < 0x80) {
        if (character == '\\' || character == '{' || character == '}')
            to += '\\';
        to += *byte;
    } else if (byte) {
        to += "\\'";
        appendHex(to, {&*byte, 1});
    } else if (character > 0xFFFF) {
        appendUnit(to, 0xD800 + ((character - 0x10000) >> 10U));
        appendUnit(to, 0xDC00 + ((character - 0x10000) & 0x3FFU));
    } else {
        appendUnit(to, character);
    }
}

std::string paragraphStart(const std::vector<int>& tabStops)
{
    std::string start = "\\pard";
    for (const int stop : tabStops)
        start += "\\tx" + std::to_string(stop);
    return start + " ";
}

template<typename Value>
std::size_t indexIn(std::vector<Value>& list, const Value& value)
{
    const auto found = std::find(list.begin(), list.end(), value);
    if (found != list.end())
        return static_cast<std::size_t>(found - list.begin());
    list.push_back(value);
    return list.size() - 1;
}

} // namespace

void RtfDocument::setFont(const std::string& name, int sizePt)
{
    m_body +=
        "\\f" + std::to_string(indexIn(m_fonts, name)) + "\\fs" + std::to_string(2 * sizePt) + " ";
}

void RtfDocument::setTabStops(const std::vector<int>& stops)
{
    m_body += paragraphStart(stops);
}

std::vector<int> RtfDocument::defaultTabStops()
{
    std::vector<int> stops(kTabStops);
    for (std::size_t i = 0; i < stops.size(); ++i)
        stops[i] = static_cast<int>(i + 1) * kTabDistance;
    return stops;
}

void RtfDocument::setColour(std::uint32_t colour)
{
    m_body += "\\cf" + std::to_string(indexIn(m_colours, colour) + 1) + " "; // 0 is the default
}

void RtfDocument::insertText(std::string_view text)
{
    while (!text.empty()) {
        const char32_t character = takeCharacter(text).value_or('?');
        if (character != '\r' && character != '\n') {
            appendCharacter(m_body, character);
            continue;
        }
        const char other = character == '\r' ? '\n' : '\r';
        if (!text.empty() && text.front() == other)
            text.remove_prefix(1);
        m_body += "\\par\n";
    }
}

void RtfDocument::beginRow(const std::vector<int>& cellWidths)
{
    m_body += "\\trowd\\trgaph0";
    int right = 0;
    for (const int width : cellWidths)
        m_body += "\\cellx" + std::to_string(right += width);
    m_body += "\n\\intbl ";
}

void RtfDocument::endCell()
{
    m_body += "\\cell\n";
}

void RtfDocument::endRow()
{
    m_body += "\\row\n";
    setTabStops(defaultTabStops());
}

void RtfDocument::insertPicture(const PlacedPicture& picture)
{
    const PixelSize size = pngSize(picture.png);
    m_body += "{\\pict\\pngblip\\picw" + std::to_string(size.width) + "\\pich" +
              std::to_string(size.height) + "\\picwgoal" + std::to_string(picture.widthTwips) +
              "\\pichgoal" + std::to_string(picture.heightTwips) + "\n";
    appendHex(m_body, picture.png);
    m_body += "}";
}

std::string RtfDocument::bytes() const
{
    std::string document = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n{\\fonttbl";
    for (std::size_t i = 0; i < m_fonts.size(); ++i)
        document += "{\\f" + std::to_string(i) + "\\fnil\\fcharset0 " + m_fonts[i] + ";}";
    document += "}\n{\\colortbl;";
    for (const std::uint32_t colour : m_colours)
        document += "\\red" + std::to_string(colour & 0xFF) + "\\green" +
                    std::to_string(colour >> 8 & 0xFF) + "\\blue" +
                    std::to_string(colour >> 16 & 0xFF) + ";";
    document +=
        "}\n\\paperw" + std::to_string(kPaperWidth) + "\\paperh" + std::to_string(kPaperHeight);
    for (const char* side : {"l", "r", "t", "b"})
        document += std::string("\\marg") + side + std::to_string(kMargin);
    return document + "\n" + paragraphStart(defaultTabStops()) + m_body + "}\n";
}

PixelSize pngSize(std::string_view png)
{
    constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";
    constexpr std::size_t kWidthAt = 16; // after signature, length and name of the first chunk
    if (png.size() < kWidthAt + 8 || png.substr(0, kSignature.size()) != kSignature)
        return {};
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value = value << 8 | static_cast<unsigned char>(png[at + i]);
        return value;
    };
    return {number(kWidthAt), number(kWidthAt + 4)};
}

} // namespace orva
