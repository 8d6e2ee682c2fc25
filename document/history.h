#pragma once

#include "document/setup_form.h"
#include "lang/message.h"
#include "model/project.h"

#include <array>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace orva {

/// What is edited, as one value: equal values are the same work. What is looked at and what the
/// options say is no part of it.
struct DocumentState {
    Project project;
    SetupForm setup; ///< lists and entries as they stand, valid or not
    /// The lists and entries of each variant that is kept beside it.
    std::array<std::optional<SetupForm>, Variants::kMost> keptSetups{};

    friend bool operator==(const DocumentState&, const DocumentState&) = default;
};

/// What a step is called: "Splay angle 5".
struct StepName {
    Text text = Text::None;
    int number = 0; ///< in the text's %1, if it has one; the chosen one of a count

    Message message() const { return Message(text, {orva::number(number)}); }
    friend bool operator==(const StepName&, const StepName&) = default;
};

/// What belongs together for whoever does it: a drag, the typing in one entry. 0: nothing else.
struct Gesture {
    std::uint64_t id = 0;

    friend bool operator==(const Gesture&, const Gesture&) = default;
};

/// The states of a document, one after each step, and where in them it stands. A list of states
/// and not of inverse commands: nothing can be forgotten. Parts that do not change from step to
/// step, and lists that look alike, are kept once: a step takes about a kilobyte.
class History {
public:
    explicit History(const DocumentState& first);

    /// Adds the state after a step; what had been undone is gone. A step of the same gesture as the
    /// last one takes its place.
    void add(const DocumentState& state, const StepName& what, Gesture gesture);
    /// Drops the last step, if it is of that gesture; the state before it.
    std::optional<DocumentState> forget(Gesture gesture);

    std::optional<StepName> undoName() const;
    std::optional<StepName> redoName() const;
    /// Goes a step back or forth; the state there, none at an end.
    std::optional<DocumentState> undo();
    std::optional<DocumentState> redo();

    std::size_t steps() const { return m_steps.size() - 1; }

private:
    struct Setup {
        std::array<const ChoiceList*, SetupForm::kLists> lists;
        SetupForm::Rest rest;
    };
    /// The variants and their lists, which rarely change.
    struct Beside {
        Variants variants;
        std::array<std::optional<SetupForm>, Variants::kMost> setups;

        friend bool operator==(const Beside&, const Beside&) = default;
    };
    struct Step {
        std::shared_ptr<const Room> room;
        std::shared_ptr<const LineArray> array;
        std::shared_ptr<const SubArray> subArray;
        std::shared_ptr<const Setup> setup;
        std::shared_ptr<const Beside> beside;
        StepName what; ///< that led here
        Gesture gesture;
    };
    struct ByContent {
        bool operator()(const ChoiceList& a, const ChoiceList& b) const;
    };

    Step packed(const DocumentState& state, const Step* before);
    static DocumentState unpacked(const Step& step);

    std::unique_ptr<std::set<ChoiceList, ByContent>> m_lists; ///< each once
    std::vector<Step> m_steps;                                ///< the first one is the beginning
    std::size_t m_at = 0;
};

} // namespace orva
