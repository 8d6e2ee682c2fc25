#include "document/state_bytes.h"

#include "model/project_file.h"
#include "model/systems.h"

#include <cmath>
#include <optional>

namespace orva {

namespace {

constexpr std::size_t kListBytes = 6;   ///< of a list, before its choices
constexpr std::size_t kChoiceBytes = 6; ///< of a choice, beside its text
constexpr std::size_t kRestBytes = 2 * 9 + 8;
constexpr int kMostChoices = 256;
constexpr int kLongestText = 256;

/// A count or a length; none where it is negative or above `most`.
std::optional<std::size_t> takeSize(ByteReader& in, int most)
{
    const std::int16_t size = in.i16();
    if (size < 0 || size > most)
        return std::nullopt;
    return static_cast<std::size_t>(size);
}

Error noSetup(const ByteReader& in)
{
    return in.error(Message(Text::NoSuchSetup));
}

Result<Choice> readChoice(ByteReader& in)
{
    if (auto there = in.need(kChoiceBytes, Text::BlockSetup); !there)
        return there.error();
    Choice choice;
    choice.value = in.i16();
    choice.known = in.i16() != 0;
    const auto length = takeSize(in, kLongestText);
    if (!length)
        return noSetup(in);
    if (auto there = in.need(*length, Text::BlockSetup); !there)
        return there.error();
    choice.text = in.chars(*length);
    return choice;
}

Result<ChoiceList> readList(ByteReader& in)
{
    if (auto there = in.need(kListBytes, Text::BlockSetup); !there)
        return there.error();
    ChoiceList list;
    list.selected = in.i16();
    list.invalid = in.i16() != 0;
    const auto count = takeSize(in, kMostChoices);
    if (!count || list.selected < -1 || list.selected >= static_cast<int>(*count))
        return noSetup(in);
    for (std::size_t i = 0; i < *count; ++i) {
        Result<Choice> choice = readChoice(in);
        if (!choice)
            return choice.error();
        list.items.push_back(std::move(*choice));
    }
    return list;
}

void writeList(ByteWriter& out, const ChoiceList& list)
{
    out.i16(static_cast<std::int16_t>(list.selected));
    out.i16(list.invalid ? 1 : 0);
    out.i16(static_cast<std::int16_t>(list.items.size()));
    for (const Choice& choice : list.items) {
        out.i16(choice.value);
        out.i16(choice.known ? 1 : 0);
        out.i16(static_cast<std::int16_t>(choice.text.size()));
        out.chars(choice.text);
    }
}

constexpr bool SetupForm::Invalid::*kMarks[] = {
    &SetupForm::Invalid::straight, &SetupForm::Invalid::trapezoidal, &SetupForm::Invalid::angles,
    &SetupForm::Invalid::midHigh, &SetupForm::Invalid::bass};

} // namespace

void writeSetup(ByteWriter& out, const SetupForm& setup)
{
    SetupForm::eachList(setup, [&](const ChoiceList& list) { writeList(out, list); });
    const SetupForm::Rest rest = setup.rest();
    out.i16(rest.stacked ? 1 : 0);
    out.i16(rest.pinMode ? 1 : 0);
    out.f64(rest.box1Angle);
    for (const auto mark : kMarks)
        out.i16(rest.SetupInvalid.*mark ? 1 : 0);
    out.i16(rest.system);
    out.i16(static_cast<std::int16_t>(rest.total));
}

Result<SetupForm> readSetup(ByteReader& in)
{
    SetupForm setup;
    std::optional<Error> fault;
    SetupForm::eachList(setup, [&](ChoiceList& list) {
        if (fault)
            return;
        if (Result<ChoiceList> read = readList(in))
            list = std::move(*read);
        else
            fault = read.error();
    });
    if (fault)
        return *fault;
    if (auto there = in.need(kRestBytes, Text::BlockSetup); !there)
        return there.error();
    SetupForm::Rest rest = setup.rest();
    rest.stacked = in.i16() != 0;
    rest.pinMode = in.i16() != 0;
    rest.box1Angle = in.f64();
    for (const auto mark : kMarks)
        rest.SetupInvalid.*mark = in.i16() != 0;
    rest.system = in.i16();
    rest.total = in.i16();
    if (!std::isfinite(rest.box1Angle) || rest.box1Angle != SetupForm::validAngle(rest.box1Angle) ||
        !isSystem(rest.system) || rest.total < 0 || rest.total > SetupForm::kPositions)
        return noSetup(in);
    setup.setRest(rest);
    return setup;
}

std::vector<std::byte> writeState(const DocumentState& state)
{
    ByteWriter out;
    out.append(writeProject(state.project));
    writeSetup(out, state.setup);
    for (const std::optional<SetupForm>& kept : state.keptSetups) {
        out.i16(kept ? 1 : 0);
        if (kept)
            writeSetup(out, *kept);
    }
    return out.bytes();
}

Result<DocumentState> readState(std::span<const std::byte> bytes, std::string_view name)
{
    Result<LoadedProject> loaded = readProject(bytes, name);
    if (!loaded)
        return loaded.error();
    if (bytes.size() < kProjectFileBytes)
        return Error{Message(Text::NoSuchSetup), std::string(name)};
    ByteReader in(bytes.subspan(loaded->size), name);
    Result<SetupForm> setup = readSetup(in);
    if (!setup)
        return setup.error();
    DocumentState state{std::move(loaded->project), std::move(*setup)};
    if (loaded->size + in.offset() == bytes.size())
        return state; // of a program that knew no variants
    for (std::size_t i = 0; i < state.keptSetups.size(); ++i) {
        if (auto there = in.need(2, Text::BlockSetup); !there)
            return there.error();
        const bool kept = in.i16() != 0;
        if (kept != state.project.variants.kept[i].has_value())
            return noSetup(in);
        if (!kept)
            continue;
        Result<SetupForm> read = readSetup(in);
        if (!read)
            return read.error();
        state.keptSetups[i] = std::move(*read);
    }
    return state;
}

} // namespace orva
