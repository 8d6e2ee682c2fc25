#pragma once

#include <QObject>
#include <functional>

namespace orva::ui {

/// Has the platform open a file with the program for its kind, which outlives this one. `failed` is
/// called once, at once or later, when none did, as long as `receiver` lives.
void openOutside(const QString& file, QObject* receiver, const std::function<void()>& failed);

} // namespace orva::ui
