#pragma once

#include "app/state/settings.h"
#include "main/editor.h"

#include <QMainWindow>
#include <QMap>

namespace orva::ui {

/// What the last session left for this one: window, page, folders, what is looked at. It lies
/// beside the options in their store; before the second start there is none.
QString lastSession(const SettingsStore& store, const QString& key);
/// At once, so that several windows keep each other's.
void keepForNextSession(SettingsStore& store, const QMap<QString, QString>& values);

/// Gives the window the place and page that it had, on a screen that still exists, and the view its
/// averaging and band. Whether it had a place.
bool restoreWindow(QMainWindow& window, Editor& editor);
/// How the window is divided, once it is shown.
void restoreDivisions(const QMainWindow& window, const SettingsStore& store);
void keepWindow(const QMainWindow& window, const Editor& editor);

} // namespace orva::ui
