#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

namespace orva {

inline std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// A number, or a character that begins none.
inline std::string tokenAt(const std::string& text, std::size_t at)
{
    std::size_t end = at + (text[at] == '-' ? 1 : 0);
    while (end < text.size() && (isDigit(text[end]) || text[end] == '.'))
        ++end;
    return text.substr(at, std::max<std::size_t>(end - at, 1));
}

/// Where two texts differ, numbers by more than what vectors of another width change; empty where
/// they do not.
inline std::string difference(const std::string& a, const std::string& b)
{
    std::size_t x = 0;
    std::size_t y = 0;
    while (x < a.size() && y < b.size()) {
        const std::string one = tokenAt(a, x);
        const std::string other = tokenAt(b, y);
        const std::size_t point = one.find('.');
        const double last = std::pow(10.0, -static_cast<double>(one.size() - point - 1));
        const bool figures =
            point != std::string::npos && isDigit(one.back()) && isDigit(other.back());
        const bool same = one == other || (figures && std::abs(std::stod(one) - std::stod(other)) <=
                                                          1.1 * std::max(last, 2e-3));
        if (!same)
            return a.substr(x > 80 ? x - 80 : 0, 160) + "\n-- but --\n" + other;
        x += one.size();
        y += other.size();
    }
    return x == a.size() && y == b.size() ? "" : "one is longer";
}

/// `said` is what `file`, from tests/, has. With ORVA_WRITE_EXPECTED it is written anew, to be read
/// before it is kept.
inline void compareWithKept(const std::string& file, const std::string& said)
{
    const std::filesystem::path path = std::filesystem::path(ORVA_SOURCE_DIR) / "tests" / file;
    if (std::getenv("ORVA_WRITE_EXPECTED")) // NOLINT(concurrency-mt-unsafe)
        std::ofstream(path, std::ios::binary) << said;
    EXPECT_EQ(difference(contentOf(path), said), "") << file;
}

} // namespace orva
