#include "main/entries.h"

#include "widgets/controls.h"

#include <QKeyEvent>
#include <algorithm>

namespace orva::ui {

Entries::Entries(Editor& editor) : m_editor(editor)
{
    // What was typed belongs to the project that is gone.
    connect(&editor, &Editor::projectReplaced, this, [this] {
        for (Entry& entry : m_entries) {
            entry.before.reset();
            entry.taken = true;
            entry.edit->setModified(false);
        }
    });
}

void Entries::add(QLineEdit* edit, const Take& take, const Show& show)
{
    Entry& entry = m_entries.emplace_back(Entry{edit, take, show, std::nullopt, true});
    connect(edit, &QLineEdit::textEdited, this,
            [this, &entry](const QString& text) { type(entry, text); });
    connect(edit, &QLineEdit::editingFinished, this, [this, &entry] { leave(entry); });
    edit->installEventFilter(this);
}

void Entries::addLength(QLineEdit* edit, const std::function<bool(double)>& take,
                        const std::function<double()>& metres)
{
    add(
        edit,
        [this, take](const QString& text) {
            const std::optional<double> shown =
                typedLength(text.toStdString(), m_editor.inMetres());
            return shown && take(metresOf(*shown, m_editor.inMetres()));
        },
        [this, metres] { return qtText(shownLength(metres(), m_editor.inMetres())); });
}

void Entries::type(Entry& entry, const QString& text)
{
    if (!entry.before)
        entry.before = m_editor.work();
    entry.taken = entry.take(text);
}

void Entries::leave(Entry& entry)
{
    if (!entry.taken)
        restore(entry);
    entry.before.reset();
    entry.edit->setModified(false);
    showText(*entry.edit, entry.show());
}

void Entries::restore(Entry& entry)
{
    entry.edit->setModified(false);
    entry.taken = true;
    if (entry.before)
        m_editor.restore(*entry.before);
    entry.before.reset();
    showText(*entry.edit, entry.show());
}

bool Entries::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& e) { return e.edit == watched; });
    if (entry == m_entries.end() || !entry->before ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return false;
    event->accept(); // the key is the entry's own
    if (event->type() == QEvent::KeyPress) {
        restore(*entry);
        entry->edit->selectAll();
    }
    return true;
}

void Entries::display() const
{
    for (const Entry& entry : m_entries)
        if (!(entry.edit->hasFocus() && entry.edit->isModified()))
            showText(*entry.edit, entry.show());
}

} // namespace orva::ui
