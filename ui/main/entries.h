#pragma once

#include "main/editor.h"

#include <QLineEdit>
#include <functional>
#include <vector>

namespace orva::ui {

/// The entries of a page: each is taken over while it is typed; its text is rewritten when it is
/// left, and whenever the page shows itself, but never under the caret of whoever types.
class Entries {
public:
    using Take = std::function<void(const QString&)>;
    using Show = std::function<QString()>;

    void add(QLineEdit* edit, const Take& take, const Show& show);
    /// A length in the unit of the user; `take` gets metres.
    void addLength(QLineEdit* edit, const Editor& editor, const std::function<void(double)>& take,
                   const std::function<double()>& metres);
    void display() const;

private:
    struct Entry {
        QLineEdit* edit;
        Show show;
    };
    std::vector<Entry> m_entries;
};

} // namespace orva::ui
