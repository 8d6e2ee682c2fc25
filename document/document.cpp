#include "document/document.h"

#include <utility>

namespace orva {

namespace {

std::array<std::string, 3> textsOf(const Room& room)
{
    return {room.GSGetProjectName(), room.GSGetAuthorName(), room.GSGetComment()};
}

/// The room with the texts of another one.
Room withTextsOf(Room room, const Room& other)
{
    room.takeTexts(other);
    return room;
}

} // namespace

Changes changesBetween(const DocumentState& before, const DocumentState& after)
{
    const Project& a = before.project;
    const Project& b = after.project;
    Changes changes;
    changes.texts = textsOf(a.room) != textsOf(b.room);
    changes.room = withTextsOf(a.room, b.room) != b.room;
    changes.array = a.array != b.array;
    changes.subArray = a.subArray != b.subArray;
    changes.setup = before.setup != after.setup;
    changes.variants = a.variants != b.variants || before.keptSetups != after.keptSetups;
    return changes;
}

Document::Document() : m_history(m_state) {}

Changes Document::become(DocumentState state)
{
    const Changes changes = changesBetween(m_state, state);
    m_state = std::move(state);
    m_modified = m_state != m_clean;
    return changes;
}

Changes Document::edit(const StepName& what, const std::function<bool(DocumentState&)>& change,
                       Gesture gesture)
{
    DocumentState changed = m_state;
    if (!change(changed) || changed == m_state)
        return {};
    m_history.add(changed, what, gesture);
    return become(std::move(changed));
}

Changes Document::cancel(Gesture gesture)
{
    std::optional<DocumentState> before = m_history.forget(gesture);
    return before ? become(std::move(*before)) : Changes{};
}

Changes Document::undo()
{
    std::optional<DocumentState> before = m_history.undo();
    return before ? become(std::move(*before)) : Changes{};
}

Changes Document::redo()
{
    std::optional<DocumentState> after = m_history.redo();
    return after ? become(std::move(*after)) : Changes{};
}

void Document::open(DocumentState state, DocumentFile file)
{
    m_state = std::move(state);
    m_history = History(m_state);
    markSaved(m_state, std::move(file));
}

void Document::markSaved(DocumentState state, DocumentFile file)
{
    m_clean = std::move(state);
    m_modified = m_state != m_clean;
    m_file = std::move(file);
}

void Document::markUnsaved(std::optional<std::string> fileBytes)
{
    m_clean.reset();
    m_modified = true;
    m_file.bytes = std::move(fileBytes);
}

} // namespace orva
