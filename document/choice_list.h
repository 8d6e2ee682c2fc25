#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orva {

/// A drop-down list of the window. An invalid one is shown red.
struct ChoiceList {
    std::vector<std::string> items;
    int selected = -1;
    bool invalid = false;

    /// The selected text; empty where there is none.
    const std::string& text() const;
    /// The number that the selected text is.
    std::int16_t number() const;

    /// Selects the entry that reads `text`; whether there is one.
    bool select(const std::string& text);
    /// Selects `text`, as an extra entry in red where the list lacks it.
    void selectOrAppend(const std::string& text);

    /// A list of the numbers `first` to `last`.
    static ChoiceList numbers(int first, int last);

    friend bool operator==(const ChoiceList&, const ChoiceList&) = default;
};

} // namespace orva
