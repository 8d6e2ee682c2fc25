#include "app/forms/view_state.h"

namespace orva {

void ViewState::setLocked(bool lock)
{
    locked = lock;
    lockedForMap = false;
}

void ViewState::lockForMap()
{
    lockedForMap = lockedForMap || !locked;
    locked = true;
}

void ViewState::clearMap()
{
    map.clear();
    unlockWithoutMap();
}

bool ViewState::unlockWithoutMap()
{
    if (map.shown || !lockedForMap)
        return false;
    locked = lockedForMap = false;
    return true;
}

void ViewState::follow(int areas, int boxes)
{
    if (selectedBox && *selectedBox >= boxes)
        selectedBox.reset();
    if (SelectedArea > areas)
        SelectedArea = 1;
}

} // namespace orva
