#pragma once

#include "app/forms/level_choice_form.h"
#include "drawing/curve_drawing.h"
#include "engine/spl_map.h"

#include <array>
#include <optional>
#include <vector>

namespace orva {

/// What is looked at, as against what is edited: no step of the history, nothing of the file.
struct ViewState {
    explicit ViewState(Language language) : levels(language) {}

    LevelChoiceForm levels;
    int SelectedArea = 1;
    std::optional<FitLine> fitLine;
    bool baseline = false; ///< a level line stands in for a fit line that was not drawn
    bool locked = false;
    int subArrayDecimals = 3;
    Zoom zoom;                      ///< of the section
    std::optional<int> selectedBox; ///< from 0
    std::optional<Point> probe;     ///< under the pointer, room frame
    std::vector<Point> pins;        ///< markers of the probe
    static constexpr std::size_t kMostPins = 8;
    bool pinning = false;  ///< clicks set markers
    bool hanging = false;  ///< the section shows where to hang the array
    bool allAreas = false; ///< the curve picture shows others than the selected one
    std::array<bool, 3> curveAreas{true, true, true}; ///< which of them
    double rowPitchM = 0.9;
    double rowOffsetM = 0; ///< of the first row

    /// What the current setup is compared with: a variant that is kept beside it, or the array of
    /// another project.
    struct Compared {
        std::optional<std::size_t> variant;
        LineArray array{};
        Room room{};         ///< of the project
        std::string title{}; ///< of the project
    };
    std::optional<Compared> compared;

    /// What the map is: the grid, what has been calculated on it, what is shown.
    struct Map {
        bool Valid = false; ///< the grid fits room view and settings
        MapGrid grid;
        RawSplCache cache;
        std::optional<SummedMap> shown;
        LevelChoice shownChoice{}; ///< of what is shown
        bool coarse = false;       ///< shown with coarser cells than those chosen

        /// Nothing of it holds any more.
        void clear()
        {
            Valid = false;
            cache.clear();
            shown.reset();
            coarse = false;
        }
    };
    Map map;
    bool lockedForMap = false; ///< only the map has set the lock

    /// The user's own lock, or its end.
    void setLocked(bool lock);
    /// Locks the setup while a map of it is calculated and shown.
    void lockForMap();
    /// The map no longer holds; ends a lock that only it had set.
    void clearMap();
    /// Ends such a lock where no map is shown; whether it did.
    bool unlockWithoutMap();
    /// Another state of the document: an area or box that is gone is not selected.
    void follow(int areas, int boxes);
};

} // namespace orva
