#pragma once

#include "main/editor.h"

#include <QLineEdit>
#include <functional>
#include <list>

namespace orva::ui {

/// The entries of a page. While one is typed, each text that is complete and accepted is taken
/// over; its own text is rewritten when it is left, and whenever the page shows itself, but never
/// under the caret of whoever types. Left with anything else, or by Esc, it restores what was
/// there.
class Entries final : public QObject {
public:
    /// Takes a text over, as part of the gesture; whether it could.
    using Take = std::function<bool(const QString&, Gesture)>;
    using Show = std::function<QString()>;

    explicit Entries(Editor& editor);

    void add(QLineEdit* edit, const Take& take, const Show& show);
    /// A length in the unit of the user; `take` gets metres.
    void addLength(QLineEdit* edit, const std::function<bool(double, Gesture)>& take,
                   const std::function<double()>& metres);
    void display() const;

private:
    struct Entry {
        QLineEdit* edit;
        Take take;
        Show show;
        Gesture typing;    ///< since it is being typed; else none
        bool taken = true; ///< the text as it stands
    };
    void type(Entry& entry, const QString& text);
    void leave(Entry& entry);
    void restore(Entry& entry);

    Editor& m_editor;
    std::list<Entry> m_entries;
};

} // namespace orva::ui
