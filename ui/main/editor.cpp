#include "main/editor.h"

#include "lang/number_text.h"
#include "lang/string_table.h"

#include <QApplication>

namespace orva::ui {

Editor::Editor(Session& shared) : session(shared), levels(shared.state.gLanguageId)
{
    connect(&session, &Session::LanguageChanged, this, [this] {
        levels.setLanguage(session.state.gLanguageId);
        emit changed();
        emit viewsChanged();
    });
}

void Editor::setModified(bool modified)
{
    m_modified = modified;
    emit modifiedChanged();
}

void Editor::clearMap()
{
    map.clear();
    if (m_lockedForMap)
        locked = m_lockedForMap = false;
}

void Editor::lockForMap()
{
    m_lockedForMap = m_lockedForMap || !locked;
    locked = true;
    emit changed();
}

void Editor::unlockWithoutMap()
{
    if (map.shown || !m_lockedForMap)
        return;
    locked = m_lockedForMap = false;
    emit changed();
}

Editor::Work Editor::work() const
{
    return {room(), array(), session.state.subArray, setup, m_modified};
}

void Editor::restore(const Work& before)
{
    if (before == work())
        return;
    session.state.gRoom = before.room;
    session.state.gLineArray = before.array;
    session.state.subArray = before.subArray;
    setup = before.setup;
    afterEdit();
    setModified(before.modified);
}

void Editor::updateArray()
{
    LineArray& array = session.state.gLineArray;
    setup.AutoCorrect = session.state.settings.AutoCorrect;
    setup.correct();
    if (!setupValid()) {
        setup.updateIndependent(array);
    } else if (!setup.UpdateLineArray(array)) {
        showMessage(QApplication::activeWindow(), session.text(Text::UpdateFailed),
                    session.text(Text::ErrorTitle));
        setup.RefreshFromClass(array);
        return;
    }
    // An angle brings its closest pin with it.
    if (!setup.pinMode && !setup.stacked && !array.fault())
        setup.PinNumber_cmb.select(std::to_string(array.GIPinPoint() + 1));
}

void Editor::afterEdit()
{
    clearMap();
    if (SelectedArea > room().GIGetNumAreas())
        SelectedArea = 1;
    m_outside = outOfRoom(room(), array());
    setModified(true);
    emit changed();
    emit viewsChanged();
}

void Editor::editSetup(const std::function<void(SetupForm&)>& edit)
{
    setup.AutoCorrect = session.state.settings.AutoCorrect;
    edit(setup);
    updateArray();
    afterEdit();
}

void Editor::choosePin(int pin)
{
    setup.pinMode = true;
    setup.PinNumber_cmb.select(std::to_string(pin + 1));
    updateArray();
    setup.box1Angle = roundedTo(-array().GFFirstAngle(), 1);
    afterEdit();
}

void Editor::editArray(const std::function<void(LineArray&)>& edit)
{
    edit(session.state.gLineArray);
    updateArray();
    afterEdit();
}

bool Editor::editRoom(const std::function<bool(Room&)>& edit)
{
    if (!edit(session.state.gRoom))
        return false;
    afterEdit();
    return true;
}

void Editor::acceptArray(const LineArray& array)
{
    session.state.gLineArray = array;
    setup.RefreshFromClass(array);
    afterEdit();
}

bool Editor::editTexts(const std::function<bool(Room&)>& edit)
{
    if (!edit(session.state.gRoom))
        return false;
    setModified(true);
    return true;
}

void Editor::editSubArray(const std::function<void(SubArray&)>& edit)
{
    edit(session.state.subArray);
    setModified(true);
    emit changed();
}

void Editor::selectArea(int number)
{
    SelectedArea = number;
    emit areaSelected();
}

void Editor::setLocked(bool lock)
{
    locked = lock;
    m_lockedForMap = false;
    emit changed();
}

void Editor::shortenSubArray()
{
    subArrayDecimals = 2;
    emit changed();
}

void Editor::setShowDelay(bool show)
{
    session.state.settings.ShowDelay = show ? 1 : 0;
    if (!locked)
        clearMap();
    emit viewsChanged();
}

void Editor::SetNewProject()
{
    fitLine.reset();
    orva::SetNewProject(session.state,
                        session.state.settings.NewCompact ? kCompactSystem : kStandardSystem);
    levels.aWeighted = true;
    levels.chooseMapType(LevelChoiceForm::Continuous);
    ProjectFile.clear();
    RefreshFromClass();
    setup.UpdateSetupLists(-2);
    setup.box1Angle = -1.4;
    emit changed();
    setModified(false);
}

void Editor::RefreshFromClass()
{
    locked = m_lockedForMap = false;
    subArrayDecimals = 3;
    if (SelectedArea > room().GIGetNumAreas())
        SelectedArea = 1;
    session.state.gLineArray.GFACalcCOM();
    setup.RefreshFromClass(array());
    m_outside = outOfRoom(room(), array());
    emit projectReplaced();
    followSettings();
}

void Editor::followSettings()
{
    setup.AutoCorrect = session.state.settings.AutoCorrect;
    if (locked && map.shown)
        map.Valid = false;
    else
        clearMap();
    emit changed();
    emit viewsChanged();
}

QStringList Editor::warnings() const
{
    const SetupForm::Invalid& invalid = setup.SetupInvalid;
    const auto count = [this](BoxKind kind) {
        return session.text(Text::WarningNumberOf) + qtText(setup.modelName(kind));
    };
    QStringList lines;
    if (invalid.midHigh)
        lines += setup.isCompact() ? count(BoxKind::Straight) : session.text(Text::WarningMidHigh);
    if (invalid.straight)
        lines += count(BoxKind::Straight);
    if (invalid.trapezoidal)
        lines += count(BoxKind::Trapezoidal);
    if (invalid.bass)
        lines += count(BoxKind::Bass);
    if (invalid.angles)
        lines += session.text(Text::WarningAngles);
    if (!lines.empty())
        lines.prepend(session.text(Text::WarningTitle));
    if (setup.holdsUnknown())
        lines += session.text(Text::HoldsUnknown);
    if (m_outside.any())
        lines += session.text(Text::OutsideRoom);
    return lines;
}

RoomViewContent Editor::roomViewContent(bool aimingLines) const
{
    RoomViewContent content;
    content.grid = &map.grid;
    content.map = map.shown ? &*map.shown : nullptr;
    content.aimingLines = !map.shown || aimingLines;
    content.bassBox = {array().GBGetBassBox(), array().GFAGetBassBoxCoord(),
                       session.state.settings.ShowDelay == 1};
    content.aWeighted = levels.aWeighted;
    if (levels.mapType != LevelChoiceForm::Detailed)
        content.fohDb = levelsAlong(fohLine(room()), 1).front();
    return content;
}

std::vector<float> Editor::levelsAlong(const AreaSegment& line, int points) const
{
    if (array().fault())
        return std::vector<float>(static_cast<std::size_t>(points) + 2,
                                  -std::numeric_limits<float>::infinity());
    const std::unique_ptr<LevelKernel> kernel = session.state.levelKernel();
    return LineSPL(*kernel, session.state.speakerData.BandLevel, array(), line, levels.choice(),
                   points);
}

} // namespace orva::ui
