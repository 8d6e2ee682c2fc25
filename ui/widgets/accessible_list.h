#pragma once

namespace orva::ui {

/// From now on a ListBox reads its name and then what is selected, not the latter alone as lists of
/// the toolkit do here.
void nameAccessibleLists();

} // namespace orva::ui
