#include "document/choice_list.h"

#include "lang/decimal_text.h"

#include <algorithm>

namespace orva {

const std::string& ChoiceList::text() const
{
    static const std::string kNone;
    return selected >= 0 && selected < static_cast<int>(items.size())
               ? items[static_cast<std::size_t>(selected)]
               : kNone;
}

std::int16_t ChoiceList::number() const
{
    return static_cast<std::int16_t>(leadingNumber(text()));
}

bool ChoiceList::select(const std::string& text)
{
    const auto entry = std::find(items.begin(), items.end(), text);
    if (entry == items.end())
        return false;
    selected = static_cast<int>(entry - items.begin());
    invalid = false;
    return true;
}

void ChoiceList::selectOrAppend(const std::string& text)
{
    if (select(text))
        return;
    items.push_back(text);
    selected = static_cast<int>(items.size()) - 1;
    invalid = true;
}

ChoiceList ChoiceList::numbers(int first, int last)
{
    ChoiceList list;
    for (int number = first; number <= last; ++number)
        list.items.push_back(std::to_string(number));
    return list;
}

} // namespace orva
