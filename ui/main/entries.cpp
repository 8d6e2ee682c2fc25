#include "main/entries.h"

#include "widgets/controls.h"

#include <utility>

namespace orva::ui {

Entries::Entries(Editor& editor) : m_editor(editor)
{
    // What was typed belongs to the project that is gone, or to a step before the one taken back.
    for (const auto signal : {&Editor::projectReplaced, &Editor::typingEnds})
        connect(&editor, signal, this, [this] {
            for (Entry& entry : m_entries) {
                entry.typing = {};
                entry.taken = true;
                entry.edit->setModified(false);
            }
        });
}

void Entries::add(QLineEdit* edit, const Take& take, const Show& show)
{
    Entry& entry = m_entries.emplace_back(Entry{edit, take, show, {}, true});
    connect(edit, &QLineEdit::textEdited, this,
            [this, &entry](const QString& text) { type(entry, text); });
    connect(edit, &QLineEdit::editingFinished, this, [this, &entry] { leave(entry); });
    cancelByEsc(*edit, [this, &entry] { restore(entry); });
}

void Entries::addLength(QLineEdit* edit, const std::function<bool(double, Gesture)>& take,
                        const std::function<double()>& metres)
{
    add(
        edit,
        [this, take](const QString& text, Gesture gesture) {
            const std::optional<double> shown =
                typedLength(text.toStdString(), m_editor.inMetres());
            return shown && take(metresOf(*shown, m_editor.inMetres()), gesture);
        },
        [this, metres] { return qtText(shownLength(metres(), m_editor.inMetres())); });
}

void Entries::type(Entry& entry, const QString& text)
{
    if (entry.typing == Gesture{})
        entry.typing = m_editor.newGesture();
    entry.taken = entry.take(text, entry.typing);
}

void Entries::leave(Entry& entry)
{
    if (!entry.taken)
        restore(entry);
    entry.typing = {};
    entry.edit->setModified(false);
    showText(*entry.edit, entry.show());
}

void Entries::restore(Entry& entry)
{
    entry.edit->setModified(false);
    entry.taken = true;
    m_editor.cancel(std::exchange(entry.typing, {}));
    showText(*entry.edit, entry.show());
}

void Entries::display() const
{
    for (const Entry& entry : m_entries)
        if (!(entry.edit->hasFocus() && entry.edit->isModified()))
            showText(*entry.edit, entry.show());
}

} // namespace orva::ui
