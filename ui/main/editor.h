#pragma once

#include "app/level_choice_form.h"
#include "app/room_form.h"
#include "app/setup_form.h"
#include "drawing/curve_drawing.h"
#include "drawing/room_view.h"
#include "widgets/session.h"

#include <QObject>
#include <functional>

namespace orva::ui {

/// The project that is being edited, as the pages of the main window share it: every edit goes
/// through here, and every page shows itself anew when it is told to.
class Editor final : public QObject {
    Q_OBJECT
public:
    explicit Editor(Session& session);

    Session& session;
    SetupForm setup;
    LevelChoiceForm levels;
    int SelectedArea = 1;
    std::optional<FitLine> fitLine;
    bool baseline = false; ///< a level line stands in for a fit line that was not drawn
    bool locked = false;
    int subArrayDecimals = 3;
    std::string ProjectFile;

    const Room& room() const { return session.state.gRoom; }
    const LineArray& array() const { return session.state.gLineArray; }
    bool inMetres() const { return session.state.settings.Units_Meters; }
    /// From metres to the unit that is shown.
    double lengthFactor() const { return inMetres() ? 1 : kFeetShownPerMetre; }
    bool Modified() const { return m_modified; }
    void setModified(bool modified);

    /// Everything that is edited, as it stands.
    struct Work {
        Room room;
        LineArray array;
        SubArray subArray;
        SetupForm setup;
        bool modified;

        friend bool operator==(const Work&, const Work&) = default;
    };
    Work work() const;
    void restore(const Work& before);

    /// Runs an edit of the lists; with auto-correction all of them are corrected. A valid setup
    /// goes into the array, of an invalid one what hangs on no invalid entry; the map goes.
    void editSetup(const std::function<void(SetupForm&)>& edit);
    /// Hangs the array from that pin (from 0); the angle that angle mode starts with follows.
    void choosePin(int pin);
    /// Runs an edit of the array's points or of the bass box. The same.
    void editArray(const std::function<void(LineArray&)>& edit);
    /// Runs an edit that the room may refuse; then nothing has changed. Returns whether it took it.
    bool editRoom(const std::function<bool(Room&)>& edit);
    /// Runs an edit of the project's texts, on which no level hangs.
    bool editTexts(const std::function<bool(Room&)>& edit);
    /// Puts an array with other angles in the place of the current one.
    void acceptArray(const LineArray& array);
    void editSubArray(const std::function<void(SubArray&)>& edit);

    /// Has everything that is drawn drawn anew.
    void redrawViews() { emit viewsChanged(); }
    void selectArea(int number);
    void setLocked(bool lock);
    /// Sub-array positions are shown with two decimals once the options have been looked at.
    void shortenSubArray();
    /// The delay display of the room view.
    void setShowDelay(bool show);

    void SetNewProject();
    /// After the objects were replaced: shows everything anew and ends the lock.
    void RefreshFromClass();
    /// After the settings were changed. A map of a locked setup stays on screen until it has been
    /// calculated again.
    void followSettings();

    /// Whether the array is the setup on the page, not the last valid one.
    bool setupValid() const { return !setup.SetupInvalid.any(); }
    /// Whether anything may be calculated; otherwise the warning box says why not.
    bool calculable() const { return setupValid() && !array().fault(); }
    /// The lines of the warning box; none for a valid setup.
    QStringList warnings() const;
    const OutOfRoom& outside() const { return m_outside; }

    /// What the map is: the grid, what has been calculated on it, what is shown.
    struct Map {
        bool Valid = false; ///< the grid fits room view and settings
        MapGrid grid;
        RawSplCache cache;
        std::optional<SummedMap> shown;
        LevelChoice shownChoice{}; ///< of what is shown

        /// Nothing of it holds any more.
        void clear()
        {
            Valid = false;
            cache.clear();
            shown.reset();
        }
    };
    Map map;
    /// Locks the setup while a map of it is calculated and shown.
    void lockForMap();
    /// There is no map any more: ends a lock that only the map had set.
    void unlockWithoutMap();

    RoomViewContent roomViewContent(bool aimingLines) const;
    std::vector<float> levelsAlong(const AreaSegment& line, int points) const;

signals:
    /// Setup, room, sub array, units or language: pages show their entries anew.
    void changed();
    /// Only what is drawn.
    void viewsChanged();
    void areaSelected();
    void modifiedChanged();
    /// Another project stands in the objects.
    void projectReplaced();

private:
    void updateArray();
    void afterEdit();
    void clearMap();

    bool m_modified = false;
    bool m_lockedForMap = false;
    OutOfRoom m_outside;
};

} // namespace orva::ui
