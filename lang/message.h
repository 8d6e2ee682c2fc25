#pragma once

#include "lang/language.h"
#include "lang/text_ids.h"

#include <string>
#include <vector>

namespace orva {

/// What is said to a user: a text of the table with what stands in it, or a text as it is (a
/// figure, a file's name, what only the batch program says). It becomes words once the language is
/// known.
class Message {
public:
    Message(std::string plain) : m_plain(std::move(plain)) {}
    Message(const char* plain) : m_plain(plain) {}
    /// `parts` take the places %1, %2, ... of the text.
    explicit Message(Text text, std::vector<Message> parts = {})
        : m_text(text), m_parts(std::move(parts))
    {
    }

    std::string text(Language language = Language::English) const;

private:
    Text m_text = Text::None;
    std::string m_plain;
    std::vector<Message> m_parts;
};

/// The same for a number.
Message number(long long value);

} // namespace orva
