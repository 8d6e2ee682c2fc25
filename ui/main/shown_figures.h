#pragma once

#include "main/file_chooser.h"
#include "main/view_panel.h"

namespace orva::ui {

/// What a control shows as figures.
struct ShownFigures {
    std::function<bool()> there;
    std::function<std::string(FileKind)> bytes; ///< FileKind::Table or FileKind::Json
};

/// Those of a control of the pages, by its name; none where it shows no figures.
std::optional<ShownFigures> figuresShownBy(const QString& control, Editor& editor,
                                           ViewPanel& views);

} // namespace orva::ui
