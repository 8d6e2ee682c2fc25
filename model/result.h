#pragma once

#include "lang/message.h"

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace orva {

/// Why something from outside could not be taken.
struct Error {
    Message what;      ///< what is wrong and why, a sentence without a full stop
    std::string where; ///< file and place in it; may be empty

    /// "where: what", one line, for a message.
    std::string text(Language language = Language::English) const
    {
        return where.empty() ? what.text(language) : where + ": " + what.text(language);
    }
};

/// The value of a Result that only says that something was done.
struct Done {};

/// A value or the Error that stood in its way.
template<typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : m_content(std::move(value)) {}
    Result(Error error) : m_content(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(m_content); }

    /// Only when true.
    const T& operator*() const&
    {
        assert(*this);
        return *std::get_if<T>(&m_content);
    }
    T& operator*() &
    {
        assert(*this);
        return *std::get_if<T>(&m_content);
    }
    T&& operator*() && { return std::move(**this); }
    const T* operator->() const { return &**this; }
    T* operator->() { return &**this; }

    /// Only when false.
    const Error& error() const
    {
        assert(!*this);
        return *std::get_if<Error>(&m_content);
    }

private:
    std::variant<T, Error> m_content;
};

} // namespace orva
