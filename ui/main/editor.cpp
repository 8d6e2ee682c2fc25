#include "main/editor.h"

#include "document/correction.h"
#include "document/variants_edit.h"
#include "lang/string_table.h"

#include <QApplication>

namespace orva::ui {

Editor::Editor(Session& session) : m_session(session), m_view(session.state().gLanguageId)
{
    connect(&m_session, &Session::LanguageChanged, this, [this] {
        m_view.levels.setLanguage(m_session.state().gLanguageId);
        emit changed({{}, true, true});
    });
}

/// What is known of a state, once per edit.
void Editor::derive()
{
    m_outside = outOfRoom(room(), array());
    m_arrayWhole = !array().fault();
    m_view.follow(room().GIGetNumAreas(), array().boxCount());
}

void Editor::follow(const Changes& changes)
{
    if (!changes.any())
        return;
    if (changes.room || changes.array || changes.setup)
        m_view.clearMap();
    derive();
    followCompared();
    emit changed({changes, false, false});
    emit modifiedChanged();
}

void Editor::followCompared()
{
    const auto& compared = m_view.compared;
    if (!compared)
        return;
    const bool there =
        compared->variant ? m_document.state().project.variants.kept[*compared->variant].has_value()
                          : compared->room.sameFrame(room()) &&
                                compared->array.GIGetArrayType() == array().GIGetArrayType();
    if (!there)
        compareWith({});
}

bool Editor::edit(const StepName& what, const std::function<bool(DocumentState&)>& change,
                  Gesture gesture)
{
    bool taken = false;
    const bool corrects = autoCorrect() && mayCorrect(what);
    const SetupForm before = corrects ? setup() : SetupForm{};
    const Changes changes = m_document.edit(
        what, [&](DocumentState& state) { return taken = change(state); }, gesture);
    follow(changes);
    if (taken && !changes.any()) { // corrected to what was there: the control shows it again
        Changes shown;
        shown.setup = true;
        emit changed({shown, false, false});
    }
    if (taken && corrects)
        sayCorrections(before, what);
    else if (changes.any())
        emit corrected({});
    return taken;
}

void Editor::sayCorrections(const SetupForm& before, const StepName& step)
{
    QStringList said;
    for (const Message& correction : correctionsIn(before, setup(), step))
        said += m_session.text(correction);
    emit corrected(said.join(", "));
}

void Editor::step(bool back)
{
    const std::optional<StepName> name = back ? m_document.undoName() : m_document.redoName();
    if (!name)
        return;
    emit typingEnds();
    const Changes changes = back ? m_document.undo() : m_document.redo();
    const bool unlocks = m_view.locked && (changes.array || changes.setup);
    if (unlocks)
        m_view.setLocked(false);
    follow(changes);
    emit stepTaken(*name, back, unlocks);
}

void Editor::undo()
{
    step(true);
}

void Editor::redo()
{
    step(false);
}

void Editor::cancel(Gesture gesture)
{
    follow(m_document.cancel(gesture));
}

void Editor::editSetup(const StepName& what, const std::function<void(SetupForm&)>& change,
                       Gesture gesture)
{
    tryEdit(
        what,
        [&](DocumentState& state) {
            change(state.setup);
            return applySetup(state, autoCorrect());
        },
        gesture);
}

void Editor::tryEdit(const StepName& what, const std::function<bool(DocumentState&)>& change,
                     Gesture gesture)
{
    if (!edit(what, change, gesture))
        showMessage(QApplication::activeWindow(), m_session.text(Text::UpdateFailed),
                    m_session.text(Text::ErrorTitle));
}

void Editor::choosePin(int pin)
{
    tryEdit({Text::StepPin, pin + 1},
            [&](DocumentState& state) { return orva::choosePin(state, pin, autoCorrect()); });
}

void Editor::aimFirstBox(double angleDeg)
{
    tryEdit({Text::StepAutoAim}, [&](DocumentState& state) {
        return orva::aimFirstBox(state, angleDeg, autoCorrect());
    });
}

bool Editor::editArray(const StepName& what, const std::function<bool(LineArray&)>& change,
                       Gesture gesture)
{
    return edit(
        what,
        [&](DocumentState& state) {
            return change(state.project.array) && applySetup(state, autoCorrect());
        },
        gesture);
}

bool Editor::moveHandle(const Handle& handle, const DocumentState& start, const Shift& shift,
                        Gesture gesture)
{
    if (m_view.locked && handle.ofArray())
        return false;
    return edit(
        handle.step(),
        [&](DocumentState& state) {
            return orva::moveHandle(state, start, handle, shift, autoCorrect());
        },
        gesture);
}

void Editor::turnBox(int position, int steps)
{
    if (m_view.locked || position < 0 || position >= setup().total())
        return;
    if (position > 0) {
        const auto joint = static_cast<std::size_t>(position - 1);
        const int index = setup().cmbAngle[joint].selected + steps;
        if (index >= 0 && index < static_cast<int>(setup().cmbAngle[joint].items.size()))
            editSetup({Text::StepSplay, position}, [&](SetupForm& form) {
                form.chooseAngle(position - 1, index, autoCorrect());
            });
    } else if (!setup().pinMode || setup().stacked) {
        constexpr double kStepDeg = 0.1;
        editSetup({Text::StepFirstAngle}, [&](SetupForm& form) {
            form.box1Angle = SetupForm::validAngle(form.box1Angle + kStepDeg * steps);
        });
    } else {
        const int index = setup().PinNumber_cmb.selected + steps;
        if (index >= 0 && index < static_cast<int>(setup().PinNumber_cmb.items.size()))
            choosePin(setup().PinNumber_cmb.items[static_cast<std::size_t>(index)].value - 1);
    }
}

bool Editor::editRoom(const StepName& what, const std::function<bool(Room&)>& change,
                      Gesture gesture)
{
    return edit(
        what, [&](DocumentState& state) { return change(state.project.room); }, gesture);
}

void Editor::editSubArray(const StepName& what, const std::function<void(SubArray&)>& change,
                          Gesture gesture)
{
    edit(
        what,
        [&](DocumentState& state) {
            change(state.project.subArray);
            return true;
        },
        gesture);
}

void Editor::keepAs(std::size_t variant)
{
    if (m_view.locked)
        return;
    emit typingEnds(); // it is part of what is kept
    edit({Text::StepKeep}, [&](DocumentState& state) { return orva::keepAs(state, variant); }, {});
}

void Editor::chooseVariant(std::size_t variant)
{
    if (m_view.locked)
        return;
    emit typingEnds(); // it belongs to the one that was
    edit({Text::StepVariant}, [&](DocumentState& state) { return makeCurrent(state, variant); },
         {});
}

void Editor::nameVariant(std::size_t variant, const std::string& name)
{
    if (!m_view.locked)
        edit({Text::StepVariantName},
             [&](DocumentState& state) { return orva::nameVariant(state, variant, name); }, {});
}

void Editor::acceptArray(const LineArray& found, const StepName& what, Gesture gesture)
{
    edit(
        what,
        [&](DocumentState& state) {
            state.project.array = found;
            state.setup.RefreshFromClass(found);
            return true;
        },
        gesture);
}

void Editor::selectArea(int number)
{
    m_view.SelectedArea = number;
    emit areaSelected();
}

void Editor::setLocked(bool lock)
{
    m_view.setLocked(lock);
    if (lock)
        setHanging(false);
    emit changed({{}, false, true});
}

void Editor::chooseLevels(const std::function<void(LevelChoiceForm&)>& choose)
{
    choose(m_view.levels);
    emit levelsChosen();
}

void Editor::setLive(bool live)
{
    m_session.state().settings.LiveMap = live;
    (void)m_session.storeSettings(); // told at the end of the program
    m_view.clearMap();
    redrawViews();
}

void Editor::dataImported()
{
    if (live()) {
        m_view.clearMap();
        redrawViews();
    }
    emit dataChanged();
}

void Editor::setZoom(const Zoom& zoom)
{
    if (zoom == m_view.zoom)
        return;
    m_view.zoom = zoom;
    emit zoomed();
}

void Editor::selectBox(std::optional<int> position)
{
    m_view.selectedBox = position;
    emit boxSelected();
}

void Editor::probe(const std::optional<Point>& place)
{
    m_view.probe = place;
    emit probed();
}

void Editor::pin(const Point& place)
{
    if (m_view.pins.size() == ViewState::kMostPins)
        return;
    m_view.pins.push_back(place);
    emit pinned();
}

void Editor::compareWith(const std::optional<ViewState::Compared>& other)
{
    m_view.compared = other;
    emit comparedChanged();
}

void Editor::setHanging(bool hanging)
{
    if (hanging == m_view.hanging)
        return;
    m_view.hanging = hanging;
    emit hangingChanged();
}

void Editor::unpin(std::size_t index)
{
    m_view.pins.erase(m_view.pins.begin() + static_cast<std::ptrdiff_t>(index));
    emit pinned();
}

void Editor::setFitLine(const std::optional<FitLine>& line)
{
    m_view.fitLine = line;
}

void Editor::setBaseline(bool shown)
{
    m_view.baseline = shown;
}

void Editor::shortenSubArray()
{
    m_view.subArrayDecimals = 2;
    emit changed({{}, true, false});
}

void Editor::setShowDelay(bool show)
{
    m_session.state().settings.ShowDelay = show ? 1 : 0;
    if (!m_view.locked && !live())
        m_view.clearMap();
    redrawViews();
}

void Editor::redrawViews()
{
    emit changed({{}, false, true});
}

void Editor::lockForMap()
{
    m_view.lockForMap();
    setHanging(false);
    emit changed({{}, false, true});
}

void Editor::mapFinished()
{
    m_view.unlockWithoutMap();
    redrawViews();
}

void Editor::replace(DocumentState state, DocumentFile file)
{
    SelectSystem(m_session.state(), state.project.array.GIGetArrayType());
    m_document.open(std::move(state), std::move(file));
    m_view.setLocked(false);
    m_view.subArrayDecimals = 3;
    m_view.zoom = {};
    m_view.probe.reset();
    m_view.pins.clear();
    m_view.selectedBox.reset();
    m_view.compared.reset();
    m_view.clearMap();
    derive();
    setHanging(false);
    emit projectReplaced();
    emit changed({{}, true, true});
    emit modifiedChanged();
}

void Editor::SetNewProject()
{
    m_view.fitLine.reset();
    m_view.levels.aWeighted = true;
    m_view.levels.chooseMapType(LevelChoiceForm::Continuous);
    replace(newDocument(m_session.state().settings.newSystem, autoCorrect()), {});
}

void Editor::open(Project project, DocumentFile file)
{
    replace(documentOf(std::move(project)), std::move(file));
}

void Editor::recover(DocumentState state, DocumentFile file)
{
    m_view.fitLine.reset();
    replace(std::move(state), file);
    markUnsaved(std::move(file.bytes));
}

void Editor::markSaved(DocumentState state, DocumentFile file)
{
    m_document.markSaved(std::move(state), std::move(file));
    emit modifiedChanged();
}

void Editor::markUnsaved(std::optional<std::string> fileBytes)
{
    m_document.markUnsaved(std::move(fileBytes));
    emit modifiedChanged();
}

void Editor::followSettings()
{
    if (m_view.locked && m_view.map.shown && !live())
        m_view.map.Valid = false;
    else
        m_view.clearMap();
    emit changed({{}, true, true});
}

QStringList Editor::warnings() const
{
    const SetupForm::Invalid& invalid = setup().SetupInvalid;
    const auto text = [this](Text id) { return m_session.text(id); };
    const auto count = [&](BoxKind kind) {
        return text(Text::WarningNumberOf) + qtText(setup().modelName(kind));
    };
    QStringList lines;
    if (invalid.midHigh)
        lines += setup().countsKinds() ? text(Text::WarningMidHigh) : count(BoxKind::Straight);
    if (invalid.straight)
        lines += count(BoxKind::Straight);
    if (invalid.trapezoidal)
        lines += count(BoxKind::Trapezoidal);
    if (invalid.bass)
        lines += count(BoxKind::Bass);
    if (invalid.angles)
        lines += text(Text::WarningAngles);
    if (!lines.empty())
        lines.prepend(text(Text::WarningTitle));
    if (setup().holdsUnknown())
        lines += text(Text::HoldsUnknown);
    if (m_outside.any())
        lines += text(Text::OutsideRoom);
    return lines;
}

} // namespace orva::ui
