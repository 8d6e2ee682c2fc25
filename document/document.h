#pragma once

#include "document/history.h"

#include <functional>

namespace orva {

/// What differs between two states, found by comparing.
struct Changes {
    bool room = false; ///< its texts aside
    bool texts = false;
    bool array = false;
    bool subArray = false;
    bool setup = false; ///< lists and entries of the setup
    bool variants = false;

    bool any() const { return room || texts || array || subArray || setup || variants; }
};
Changes changesBetween(const DocumentState& before, const DocumentState& after);

/// The file of a document.
struct DocumentFile {
    std::string path; ///< empty: none
    /// What it held when it was read or written last, or when the user last decided about it; none:
    /// it was not there.
    std::optional<std::string> bytes{};

    friend bool operator==(const DocumentFile&, const DocumentFile&) = default;
};

/// What is edited: one value, its file, its history. There is one way to change it.
class Document {
public:
    Document();

    const DocumentState& state() const { return m_state; }
    const Room& gRoom() const { return m_state.project.room; }
    const LineArray& gLineArray() const { return m_state.project.array; }

    /// Runs `change` on a copy. If it says yes and something differs, the copy becomes current and
    /// a step named `what`; a step of the same `gesture` is taken further instead of adding another
    /// one. Returns what differs.
    Changes edit(const StepName& what, const std::function<bool(DocumentState&)>& change,
                 Gesture gesture = {});
    /// A gesture that no step has yet.
    Gesture newGesture() { return {++m_lastGesture}; }
    /// Takes the step of a gesture back, if it is the last one, as if it had not been.
    Changes cancel(Gesture gesture);

    Changes undo();
    Changes redo();
    /// The step that undo() or redo() would take; none where there is none.
    std::optional<StepName> undoName() const { return m_history.undoName(); }
    std::optional<StepName> redoName() const { return m_history.redoName(); }

    /// Another project, with a history of its own; unchanged.
    void open(DocumentState state, DocumentFile file);
    /// That state, which was current once, was written to that file.
    void markSaved(DocumentState state, DocumentFile file);
    /// The file holds something else, and no file the state, whatever is done to it, until it is
    /// saved.
    void markUnsaved(std::optional<std::string> fileBytes);
    /// Whether the state is not the one that was opened or saved last.
    bool modified() const { return m_modified; }
    const DocumentFile& file() const { return m_file; }
    const std::string& path() const { return m_file.path; }

private:
    Changes become(DocumentState state);

    DocumentState m_state;
    std::optional<DocumentState> m_clean = DocumentState{}; ///< as its file has it
    bool m_modified = false;
    DocumentFile m_file;
    History m_history;
    std::uint64_t m_lastGesture = 0;
};

} // namespace orva
