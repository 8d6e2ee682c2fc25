#pragma once

#include <QIcon>
#include <QWidget>

namespace orva::ui {

/// The program's icon.
QIcon programIcon();

/// The logo, small, as it stands in dialogs; bright on a dark desktop.
QWidget* logoPicture(QWidget* parent, const QString& name = "imgLogo");

/// A picture of the program at its own size, sharp at any device pixel ratio.
QWidget* picture(const QString& name, const QString& file, QWidget* parent);

} // namespace orva::ui
