#pragma once

#include "app/forms/rows_table.h"
#include "app/forms/status_form.h"
#include "app/forms/view_state.h"
#include "document/document.h"
#include "document/room_form.h"
#include "document/section_handle.h"
#include "document/setup_edit.h"
#include "drawing/curve_drawing.h"
#include "drawing/room_view.h"
#include "optimize/evenness.h"
#include "widgets/session.h"

#include <QObject>
#include <functional>

namespace orva::ui {

/// What a page may have to show anew.
struct Shown {
    Changes changes;         ///< of the document
    bool everything = false; ///< another project, other units, another language
    bool view = false;       ///< lock, map, options of what is drawn
};

/// The document and what is looked at, as the pages of the main window share them: every edit goes
/// through here, and pages are told what there is to show anew.
class Editor final : public QObject {
    Q_OBJECT
public:
    explicit Editor(Session& session);

    Session& session() const { return m_session; }
    const Document& document() const { return m_document; }
    const ViewState& view() const { return m_view; }
    const Room& room() const { return m_document.gRoom(); }
    const LineArray& array() const { return m_document.gLineArray(); }
    const SubArray& subArray() const { return m_document.state().project.subArray; }
    const SetupForm& setup() const { return m_document.state().setup; }
    bool inMetres() const { return m_session.state().settings.Units_Meters; }
    /// From metres to the unit that is shown.
    double lengthFactor() const { return inMetres() ? 1 : kFeetShownPerMetre; }
    bool autoCorrect() const { return m_session.state().settings.AutoCorrect; }

    // Edits. What may refuse returns whether it took the edit; then nothing has changed.

    Gesture newGesture() { return m_document.newGesture(); }
    /// Takes back what a gesture has done so far.
    void cancel(Gesture gesture);
    /// Of the lists; the array follows.
    void editSetup(const StepName& what, const std::function<void(SetupForm&)>& edit,
                   Gesture gesture = {});
    /// Hangs the array from that pin (from 0); the angle that angle mode starts with follows.
    void choosePin(int pin);
    /// Tilts the first box to that angle (as people see it), in angle mode.
    void aimFirstBox(double angleDeg);
    /// Of the array's points or the bass box.
    bool editArray(const StepName& what, const std::function<bool(LineArray&)>& edit,
                   Gesture gesture = {});
    /// Drags what is taken hold of; the lock holds what is of the array.
    bool moveHandle(const Handle& handle, const DocumentState& start, const Shift& shift,
                    Gesture gesture = {});
    /// Turns the joint above a box (from 0) by so many entries of its list; the first box by pins
    /// or tenths of a degree.
    void turnBox(int position, int steps);
    bool editRoom(const StepName& what, const std::function<bool(Room&)>& edit,
                  Gesture gesture = {});
    void editSubArray(const StepName& what, const std::function<void(SubArray&)>& edit,
                      Gesture gesture = {});
    void undo();
    void redo();
    /// Copies the setup to another variant; makes a kept one current; names one. Not while locked.
    void keepAs(std::size_t variant);
    void chooseVariant(std::size_t variant);
    void nameVariant(std::size_t variant, const std::string& name);
    /// Puts an array with other angles in the place of the current one.
    void acceptArray(const LineArray& array, const StepName& what = {Text::StepSearch},
                     Gesture gesture = {});

    void SetNewProject();
    /// Another project, read from that file; ends the lock.
    void open(Project project, DocumentFile file);
    /// Work that was never saved, of that file.
    void recover(DocumentState state, DocumentFile file);
    void markSaved(DocumentState state, DocumentFile file);
    /// Its file holds something else now; none: it is gone.
    void markUnsaved(std::optional<std::string> fileBytes);

    // What is looked at.

    void selectArea(int number);
    void setLocked(bool lock);
    void chooseLevels(const std::function<void(LevelChoiceForm&)>& choose);
    /// Whether the map follows every edit.
    bool live() const { return m_session.state().settings.LiveMap; }
    /// What was calculated before belongs to the other way and goes.
    void setLive(bool live);
    /// Other loudspeaker data: a live map follows; another keeps its levels, as the curve does,
    /// until it is calculated again.
    void dataImported();
    /// Which part of the section is shown.
    void setZoom(const Zoom& zoom);
    /// The box that the wheel turns, from 0.
    void selectBox(std::optional<int> position);
    /// Where the pointer is, room frame; none: elsewhere.
    void probe(const std::optional<Point>& place);
    std::optional<Heard> heardAt(const Point& place) const;
    /// Markers that stay; one more than kMostPins is not taken.
    void pin(const Point& place);
    void unpin(std::size_t index);
    void setPinning(bool pinning) { m_view.pinning = pinning; }
    /// What the current setup is compared with; none: nothing.
    void compareWith(const std::optional<ViewState::Compared>& other);
    /// Whether the section shows where to hang the array; ends with the lock.
    void setHanging(bool hanging);
    void setAllAreas(bool all) { m_view.allAreas = all; }
    /// Whether the curve picture shows area 1, 2 or 3 beside the selected one.
    void setCurveArea(int number, bool shown)
    {
        m_view.curveAreas.at(static_cast<std::size_t>(number - 1)) = shown;
    }
    /// Pitch or offset of the rows.
    void setRows(double ViewState::*which, double metres) { m_view.*which = metres; }
    void setFitLine(const std::optional<FitLine>& line);
    void setBaseline(bool shown);
    /// Sub-array positions are shown with two decimals once the options have been looked at.
    void shortenSubArray();
    /// The delay display of the room view.
    void setShowDelay(bool show);
    /// After the settings were changed. A map of a locked setup stays on screen until it has been
    /// calculated again.
    void followSettings();
    /// Has everything that is drawn drawn anew.
    void redrawViews();

    /// The map, for who calculates it.
    ViewState::Map& map() { return m_view.map; }
    void lockForMap();
    void mapFinished();

    /// Whether the array is the setup on the page, not the last valid one.
    bool setupValid() const { return !setup().SetupInvalid.any(); }
    /// Whether the array can be calculated at all.
    bool arrayWhole() const { return m_arrayWhole; }
    /// Whether anything may be calculated; otherwise the warning box says why not.
    bool calculable() const { return setupValid() && m_arrayWhole; }
    /// The lines of the warning box; none for a valid setup.
    QStringList warnings() const;
    const OutOfRoom& outside() const { return m_outside; }

    /// The levels of what is edited; none where nothing may be calculated.
    Prediction* prediction() const;
    /// Those of a variant that is kept beside it; none where there is none or it cannot be
    /// calculated, or is not the setup on its page.
    Prediction* keptPrediction(std::size_t variant) const;
    /// What all areas together are heard with; for as long as the loudspeaker data stay.
    Hearing hearing() const;
    /// The array that the current one is compared with; null where there is none, or it cannot be
    /// calculated, or is not the setup on its page.
    const LineArray* comparedArray() const;
    Prediction* comparedPrediction() const;
    /// "B", "theatre.lad"
    std::string comparedTitle() const;
    RoomViewContent roomViewContent(bool aimingLines) const;
    /// The rows of the selected area; none without a valid setup.
    std::vector<SeatRow> seatRows() const;
    std::vector<float> levelsAlong(const Segment& line, int points) const;
    /// Least and largest level at each point in the weather that may come; none where the air does
    /// not follow the weather.
    std::optional<LevelRange> weatherRange(const Segment& line, int points) const;
    /// Of the areas in use, in their order.
    std::vector<std::optional<AreaFigures>> areaFigures() const;
    /// With `levels` those at the FOH and along the areas.
    StatusFacts statusFacts(bool levels = true) const;

signals:
    void levelsChosen();
    void zoomed();
    void boxSelected();
    void probed();
    void pinned();
    void hangingChanged();
    void comparedChanged();
    void dataChanged();
    /// What is being typed ends as it stands: a step is taken back.
    void typingEnds();
    /// A step was taken back, or again; where the lock held it, that has ended.
    void stepTaken(const orva::StepName& step, bool undone, bool unlocked);
    /// What the rules of the setup changed beside what the user did; empty: nothing.
    void corrected(const QString& what);
    void changed(const orva::ui::Shown& what);
    void areaSelected();
    void modifiedChanged();
    /// Another project stands in the document.
    void projectReplaced();

private:
    bool edit(const StepName& what, const std::function<bool(DocumentState&)>& change,
              Gesture gesture);
    /// Says so when the array does not take it.
    void tryEdit(const StepName& what, const std::function<bool(DocumentState&)>& change,
                 Gesture gesture = {});
    void follow(const Changes& changes);
    /// Ends the comparison with what is no longer there, or no longer comparable.
    void followCompared();
    void step(bool back);
    void sayCorrections(const SetupForm& before, const StepName& step);
    void replace(DocumentState state, DocumentFile file);
    void derive();

    Session& m_session;
    Document m_document;
    ViewState m_view;
    bool m_arrayWhole = true;
    OutOfRoom m_outside;
    Prediction* predictionOf(const LineArray* array, std::optional<Prediction>& kept) const;

    mutable std::optional<Prediction> m_prediction; ///< made when it is asked for
    mutable std::array<std::optional<Prediction>, Variants::kMost> m_keptPredictions;
    mutable std::optional<Prediction> m_otherPrediction;
};

} // namespace orva::ui
