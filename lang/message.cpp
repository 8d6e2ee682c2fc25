#include "lang/message.h"

#include "lang/string_table.h"

namespace orva {

std::string Message::text(Language language) const
{
    if (m_text == Text::None)
        return m_plain;
    std::string words;
    std::string_view rest = MlGetString(language, m_text);
    for (std::size_t mark = rest.find('%'); mark != std::string_view::npos; mark = rest.find('%')) {
        words += rest.substr(0, mark);
        rest.remove_prefix(mark + 1);
        const std::size_t part = rest.empty() || rest[0] < '1' || rest[0] > '9'
                                     ? m_parts.size()
                                     : static_cast<std::size_t>(rest[0] - '1');
        if (part < m_parts.size()) {
            words += m_parts[part].text(language);
            rest.remove_prefix(1);
        } else {
            words += '%';
        }
    }
    return words.append(rest);
}

Message number(long long value)
{
    return std::to_string(value);
}

} // namespace orva
