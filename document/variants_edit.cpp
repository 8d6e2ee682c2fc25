#include "document/variants_edit.h"

#include "lang/utf8.h"

#include <utility>

namespace orva {

bool keepAs(DocumentState& state, std::size_t variant)
{
    Variants& variants = state.project.variants;
    if (variant >= Variants::kMost || variant == variants.current)
        return false;
    variants.kept[variant] = KeptSetup{state.project.array, state.project.subArray};
    state.keptSetups[variant] = state.setup;
    return true;
}

bool makeCurrent(DocumentState& state, std::size_t variant)
{
    Variants& variants = state.project.variants;
    if (variant >= Variants::kMost || !variants.kept[variant])
        return false;
    const KeptSetup chosen = *std::exchange(variants.kept[variant], std::nullopt);
    const SetupForm lists = *std::exchange(state.keptSetups[variant], std::nullopt);
    const std::size_t before = std::exchange(variants.current, variant);
    variants.kept[before] = KeptSetup{state.project.array, state.project.subArray};
    state.keptSetups[before] = state.setup;
    state.project.array = chosen.array;
    state.project.subArray = chosen.subArray;
    state.setup = lists;
    return true;
}

bool nameVariant(DocumentState& state, std::size_t variant, std::string_view name)
{
    if (variant >= Variants::kMost)
        return false;
    std::string kept;
    while (!name.empty()) {
        std::string_view rest = name;
        const auto character = takeCharacter(rest);
        const std::string_view bytes = name.substr(0, name.size() - rest.size());
        name = rest;
        if (!character || printable(bytes) != bytes)
            continue;
        if (kept.size() + bytes.size() > Variants::kLongestName)
            break;
        kept += bytes;
    }
    state.project.variants.names[variant] = kept;
    return true;
}

const LineArray* keptArray(const DocumentState& state, std::size_t variant)
{
    const auto& kept = state.project.variants.kept[variant];
    const auto& lists = state.keptSetups[variant];
    return kept && lists && !lists->SetupInvalid.any() && !kept->array.fault() ? &kept->array
                                                                               : nullptr;
}

std::optional<std::size_t> invalidVariant(const DocumentState& state)
{
    for (std::size_t variant = 0; variant < Variants::kMost; ++variant)
        if (const auto& lists = state.keptSetups[variant]; lists && lists->SetupInvalid.any())
            return variant;
    return std::nullopt;
}

std::string variantTitle(const Variants& variants, std::size_t variant)
{
    const std::string& name = variants.names[variant];
    const std::string letter(1, Variants::letterOf(variant));
    return name.empty() ? letter : letter + ": " + name;
}

} // namespace orva
