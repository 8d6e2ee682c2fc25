#include "main/entries.h"

#include "widgets/controls.h"

namespace orva::ui {

void Entries::add(QLineEdit* edit, const Take& take, const Show& show)
{
    QObject::connect(edit, &QLineEdit::textEdited, edit, take);
    QObject::connect(edit, &QLineEdit::editingFinished, edit, [edit, show] {
        edit->setModified(false);
        showText(*edit, show());
    });
    m_entries.push_back({edit, show});
}

void Entries::addLength(QLineEdit* edit, const Editor& editor,
                        const std::function<void(double)>& take,
                        const std::function<double()>& metres)
{
    add(
        edit,
        [&editor, take](const QString& text) {
            take(typedLength(text.toStdString(), editor.inMetres()));
        },
        [&editor, metres] { return qtText(shownLength(metres(), editor.inMetres())); });
}

void Entries::display() const
{
    for (const Entry& entry : m_entries)
        if (!(entry.edit->hasFocus() && entry.edit->isModified()))
            showText(*entry.edit, entry.show());
}

} // namespace orva::ui
