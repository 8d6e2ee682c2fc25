#pragma once

#include "app/state/settings.h"

#include <map>

namespace orva {

/// Settings that end with the program.
class MemorySettings final : public SettingsStore {
public:
    std::optional<std::string> value(std::string_view section, std::string_view key) const override
    {
        const auto found = values.find(place(section, key));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void setValue(std::string_view section, std::string_view key, std::string_view text) override
    {
        values[place(section, key)] = text;
    }

    Result<Done> flush() override { return fault ? Result<Done>(Error{*fault, {}}) : Done{}; }

    std::map<std::string, std::string> values; ///< by "section/key"
    std::optional<Message> fault;              ///< why nothing can be stored

private:
    static std::string place(std::string_view section, std::string_view key)
    {
        return std::string(section) + "/" + std::string(key);
    }
};

} // namespace orva
