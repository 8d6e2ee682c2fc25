#include "app/files/file_names.h"

#include <algorithm>
#include <cctype>

namespace orva {

std::string proposedFileName(std::string_view projectName, std::string_view extension)
{
    std::string name(projectName);
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return c == '/' || c == '\\' || std::iscntrl(static_cast<unsigned char>(c)); },
        '-');
    name.erase(0, std::min(name.size(), name.find_first_not_of(".- ")));
    const std::size_t last = name.find_last_not_of(' ');
    name.erase(last == std::string::npos ? 0 : last + 1);
    return name.empty() ? name : name + std::string(extension);
}

std::string withExtension(std::string path, std::string_view extension)
{
    const auto same = [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) ==
               std::tolower(static_cast<unsigned char>(b));
    };
    const bool has = path.size() > extension.size() &&
                     std::equal(extension.rbegin(), extension.rend(), path.rbegin(), same);
    return has ? path : path.append(extension);
}

} // namespace orva
