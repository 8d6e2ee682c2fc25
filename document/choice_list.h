#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace orva {

/// An entry of a drop-down list and what it stands for.
struct Choice {
    std::string text;
    std::int16_t value = 0;
    bool known = true; ///< else something that only a file can bring

    /// A number as it reads.
    static Choice number(int value);

    friend bool operator==(const Choice&, const Choice&) = default;
    friend bool operator<(const Choice& a, const Choice& b)
    {
        return std::tie(a.text, a.value, a.known) < std::tie(b.text, b.value, b.known);
    }
};

/// A drop-down list of the window. An invalid one is shown red.
struct ChoiceList {
    std::vector<Choice> items;
    int selected = -1;
    bool invalid = false;

    /// What is selected; an unknown one without text where nothing is.
    const Choice& choice() const;
    const std::string& text() const { return choice().text; }
    std::int16_t value() const { return choice().value; }

    /// Selects the entry that stands for the same; whether there is one.
    bool select(const Choice& choice);
    /// Selects it, as an extra entry in red where the list lacks it.
    void selectOrAppend(const Choice& choice);

    /// A list of the numbers `first` to `last`.
    static ChoiceList numbers(int first, int last);

    friend bool operator==(const ChoiceList&, const ChoiceList&) = default;
};

} // namespace orva
