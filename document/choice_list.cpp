#include "document/choice_list.h"

#include <algorithm>

namespace orva {

Choice Choice::number(int value)
{
    return {std::to_string(value), static_cast<std::int16_t>(value)};
}

const Choice& ChoiceList::choice() const
{
    static const Choice kNone{{}, 0, false};
    return selected >= 0 && selected < static_cast<int>(items.size())
               ? items[static_cast<std::size_t>(selected)]
               : kNone;
}

bool ChoiceList::select(const Choice& choice)
{
    const auto entry = std::find(items.begin(), items.end(), choice);
    if (entry == items.end())
        return false;
    selected = static_cast<int>(entry - items.begin());
    invalid = false;
    return true;
}

void ChoiceList::selectOrAppend(const Choice& choice)
{
    if (select(choice))
        return;
    items.push_back(choice);
    selected = static_cast<int>(items.size()) - 1;
    invalid = true;
}

ChoiceList ChoiceList::numbers(int first, int last)
{
    ChoiceList list;
    for (int number = first; number <= last; ++number)
        list.items.push_back(Choice::number(number));
    return list;
}

} // namespace orva
