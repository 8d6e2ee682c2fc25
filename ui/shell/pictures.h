#pragma once

#include <QIcon>
#include <QWidget>

namespace orva::ui {

/// The program's icon.
QIcon programIcon();

/// The logo, small, as it stands in dialogs.
QWidget* logoPicture(QWidget* parent);

/// A picture of the program at its own size, sharp at any device pixel ratio.
QWidget* picture(const QString& name, const QString& file, QWidget* parent);

} // namespace orva::ui
