#pragma once

#include "widgets/session.h"

#include <QImage>
#include <utility>
#include <vector>

namespace orva::manual {

using Pictures = std::vector<std::pair<QString, QImage>>;

/// The first hour, step by step, "step-1.png" and so on: in the real window an empty project
/// becomes a rigging sheet. What a step is about has a ring.
Pictures takeSteps(ui::Session& session);

/// Pages, dialogs and maps of a project.
Pictures takePages(ui::Session& session, const QString& project);

/// All keys of the window as an HTML table.
QString keysTable(ui::Session& session);

} // namespace orva::manual
