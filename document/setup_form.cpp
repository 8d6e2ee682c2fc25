#include "document/setup_form.h"

#include "lang/number_text.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

/// An entry that the lists lack.
Choice unknownChoice(std::int16_t value)
{
    return {"? " + std::to_string(value), value, false};
}

/// A splay angle by its index.
Choice angleChoice(std::int16_t index)
{
    const auto& all = LineArray::GSALookupAngles();
    return index >= 0 && index < static_cast<int>(all.size())
               ? Choice{all[static_cast<std::size_t>(index)], index}
               : unknownChoice(index);
}

ChoiceList countList(int first, int last, int count)
{
    ChoiceList list = ChoiceList::numbers(first, last);
    list.selectOrAppend(Choice::number(count));
    return list;
}

} // namespace

std::string_view SetupForm::modelName(BoxKind kind) const
{
    return system().riggingText(kind).model;
}

SetupForm::Rest SetupForm::rest() const
{
    return {stacked, pinMode, box1Angle, SetupInvalid, m_system, m_total};
}

void SetupForm::setRest(const Rest& rest)
{
    stacked = rest.stacked;
    pinMode = rest.pinMode;
    box1Angle = rest.box1Angle;
    SetupInvalid = rest.SetupInvalid;
    m_system = rest.system;
    m_total = rest.total;
}

int SetupForm::total() const
{
    return std::clamp(cmbNumSpk.value() + cmbNumBass.value(), 1, kPositions);
}

std::optional<BoxKind> SetupForm::kindAt(int position) const
{
    const Choice& choice = type(position).choice();
    return choice.known ? system().kindOf(choice.value) : std::nullopt;
}

int SetupForm::placed(std::optional<BoxKind> kind, int positions) const
{
    int count = 0;
    for (int position = 0; position < positions; ++position)
        count += kindAt(position) == kind ? 1 : 0;
    return count;
}

ChoiceList SetupForm::typeList(const Choice& selected) const
{
    ChoiceList list;
    for (std::int16_t code = 0; system().kindOf(code); ++code)
        list.items.push_back(typeChoice(code));
    list.selectOrAppend(selected);
    return list;
}

Choice SetupForm::typeChoice(std::int16_t code) const
{
    const std::optional<BoxKind> kind = code >= 0 ? system().kindOf(code) : std::nullopt;
    return kind ? Choice{std::string(modelName(*kind)), code} : unknownChoice(code);
}

ChoiceList SetupForm::typeList(BoxKind kind) const
{
    return typeList(typeChoice(system().codeOf(kind)));
}

/// A joint of an unknown box may have any angle.
AngleBounds SetupForm::boundsAt(int joint) const
{
    const auto last = static_cast<std::int16_t>(LineArray::GSALookupAngles().size() - 1);
    return system().jointBounds(kindAt(joint), kindAt(joint + 1)).value_or(AngleBounds{0, last});
}

double SetupForm::validAngle(double degrees)
{
    return roundedTo(std::fmod(degrees, 360.0), 1);
}

void SetupForm::RefreshFromClass(const LineArray& array)
{
    m_system = array.GIGetArrayType();
    cmbNumSpk = countList(1, system().mostMidHigh, array.GIGetNumSpeakers());
    cmbNumBass = countList(0, system().mostBass, array.GIGetNumBass());
    cmbNumGer = countList(0, kMostMidHigh, array.GIGetNumGerade());
    cmbNumSch = countList(0, kMostMidHigh, array.GIGetNumSchräg());

    const LineArray::Positions types = array.GIAGetAllType();
    const LineArray::Positions angles = array.GIAGetAllAngle();
    for (int position = 0; position < kPositions; ++position) {
        type(position) = typeList(typeChoice(types[static_cast<std::size_t>(position)]));
        if (position > 0)
            selectOnly(position - 1, angles[static_cast<std::size_t>(position)]);
    }

    stacked = !array.GBGetMounting();
    pinMode = array.GBGetAngleOrPin();
    PinNumber_cmb = ChoiceList::numbers(1, system().cradle.pinCount());
    if (!stacked && pinMode) {
        const std::int16_t pin = angles[0];
        PinNumber_cmb.selectOrAppend(pin >= 0 && pin < system().cradle.pinCount()
                                         ? Choice::number(pin + 1)
                                         : unknownChoice(pin));
        box1Angle = PinNumber_cmb.invalid ? 0 : roundedTo(-array.GFFirstAngle(), 1);
    } else {
        box1Angle = roundedTo(-angles[0] / 10.0, 1);
        PinNumber_cmb.selected =
            array.fault() ? 0
                          : std::clamp<int>(array.GIPinPoint(), 0, system().cradle.pinCount() - 1);
    }

    m_total = total();
    for (int joint = 0; joint < kJoints; ++joint)
        updateAngleList(joint, false);
    reportCounts();
    updateAngleMark();
}

void SetupForm::chooseType(int position, int index, bool autoCorrect)
{
    if (index < 0 || index >= static_cast<int>(type(position).items.size()))
        return;
    type(position) = typeList(type(position).items[static_cast<std::size_t>(index)]);
    UpdateSetupLists(position, autoCorrect);
}

void SetupForm::chooseAngle(int joint, int index, bool autoCorrect)
{
    if (index < 0 || index >= static_cast<int>(angle(joint).items.size()))
        return;
    angle(joint).selected = index;
    UpdateSetupLists(joint + 1, autoCorrect);
}

void SetupForm::chooseNumGer(int index, bool autoCorrect)
{
    cmbNumGer.selected = index;
    UpdateSetupLists(-1, autoCorrect);
}

void SetupForm::chooseNumSch(int index, bool autoCorrect)
{
    cmbNumSch.selected = index;
    UpdateSetupLists(-1, autoCorrect);
}

void SetupForm::chooseNumSpk(int index, bool autoCorrect)
{
    cmbNumSpk.selected = index;
    if (autoCorrect) {
        const int wanted = std::min<int>(cmbNumSpk.value(), kPositions - cmbNumBass.value());
        cmbNumSpk = countList(1, system().mostMidHigh, wanted);
        int midHigh = m_total - placed(BoxKind::Bass, m_total);
        int positions = m_total;
        for (; midHigh > wanted; --midHigh)
            removeMidHigh(positions--);
        for (; midHigh < wanted && positions < kPositions; ++midHigh) {
            const bool straight = !countsKinds() || positions % 2 == 1;
            type(positions) = typeList(straight ? BoxKind::Straight : BoxKind::Trapezoidal);
            ++positions;
        }
    }
    if (!countsKinds())
        cmbNumGer = countList(0, kPositions, cmbNumSpk.value());
    UpdateSetupLists(-2, autoCorrect);
}

void SetupForm::chooseNumBass(int index, bool autoCorrect)
{
    cmbNumBass.selected = index;
    if (autoCorrect) {
        const int midHigh = m_total - placed(BoxKind::Bass, m_total);
        const int wanted = std::min<int>(cmbNumBass.value(), kPositions - midHigh);
        int positions = m_total;
        for (int bass = placed(BoxKind::Bass, positions); bass > wanted; --bass)
            removeBass(positions--);
        for (int bass = placed(BoxKind::Bass, positions); bass < wanted; ++bass)
            insertBass(positions++);
        cmbNumBass.select(Choice::number(wanted));
    }
    UpdateSetupLists(-2, autoCorrect);
}

/// The last mid/high box goes; each box below it moves up with the joint above it.
void SetupForm::removeMidHigh(int positions)
{
    int last = positions - 1;
    while (last > 0 && isBass(last))
        --last;
    for (int position = last; position + 1 < positions; ++position) {
        type(position) = type(position + 1);
        if (position > 0)
            angle(position - 1).selectOrAppend(angle(position).choice());
    }
}

void SetupForm::removeBass(int positions)
{
    int first = 0;
    while (first < positions && !isBass(first))
        ++first;
    for (int position = first; position + 1 < positions; ++position) {
        type(position) = type(position + 1);
        if (position + 2 < positions)
            angle(position) = angle(position + 1);
    }
    if (first > 0 && first < positions - 1)
        selectFirstAngle(first - 1);
}

void SetupForm::insertBass(int positions)
{
    for (int position = positions; position > 0; --position) {
        type(position) = type(position - 1);
        if (position > 1)
            angle(position - 1) = angle(position - 2);
    }
    type(0) = typeList(BoxKind::Bass);
    selectFirstAngle(0);
}

void SetupForm::selectFirstAngle(int joint)
{
    selectOnly(joint, boundsAt(joint)[0]);
}

void SetupForm::selectOnly(int joint, std::int16_t index)
{
    angle(joint).items = {angleChoice(index)};
    angle(joint).selected = 0;
}

void SetupForm::correct()
{
    UpdateSetupLists(-2, true);
    if (!PinNumber_cmb.invalid)
        return;
    // The nearest pin that the frame has.
    const int last = system().cradle.pinCount();
    const bool below = PinNumber_cmb.value() < 0;
    PinNumber_cmb = ChoiceList::numbers(1, last);
    PinNumber_cmb.selected = below ? 0 : last - 1;
}

void SetupForm::UpdateSetupLists(int changed, bool autoCorrect)
{
    for (int joint = 0; joint + 1 < total(); ++joint) {
        const int below = joint + 1;
        if (changed == -2 || autoCorrect || std::abs(changed - below) <= 1)
            updateAngleList(joint, autoCorrect);
    }
    if (autoCorrect)
        correctCounts();
    else
        reportCounts();
    updateAngleMark();
    m_total = total();
}

void SetupForm::updateAngleList(int joint, bool correct)
{
    ChoiceList& list = angle(joint);
    const Choice former = list.choice();
    const AngleBounds bounds = boundsAt(joint);
    ChoiceList allowed;
    for (std::int16_t index = bounds[0]; index <= bounds[1]; ++index)
        allowed.items.push_back(angleChoice(index));
    if (!allowed.select(former)) {
        if (correct) {
            const bool small = former.known && former.value < 4;
            allowed.selected = small ? 0 : static_cast<int>(allowed.items.size()) - 1;
        } else {
            allowed.selectOrAppend(former);
        }
    }
    list = std::move(allowed);
}

bool SetupForm::holdsUnknown() const
{
    bool unknown = PinNumber_cmb.invalid && pinMode && !stacked;
    for (int position = 0; position < total(); ++position)
        unknown = unknown || !type(position).choice().known ||
                  (position > 0 && !angle(position - 1).choice().known);
    return unknown;
}

bool SetupForm::countsDiffer() const
{
    const int positions = total();
    return placed(std::nullopt, positions) == 0 &&
           (cmbNumGer.value() != placed(BoxKind::Straight, positions) ||
            cmbNumSch.value() != placed(BoxKind::Trapezoidal, positions));
}

void SetupForm::updateAngleMark()
{
    SetupInvalid.angles = false;
    for (int joint = 0; joint + 1 < total(); ++joint)
        SetupInvalid.angles =
            SetupInvalid.angles || (angle(joint).invalid && angle(joint).choice().known);
}

void SetupForm::reportCounts()
{
    const int positions = total();
    const int midHigh =
        placed(BoxKind::Straight, positions) + placed(BoxKind::Trapezoidal, positions);
    const int bass = placed(BoxKind::Bass, positions);
    // A box of unknown kind, which only a file can bring, may be any.
    const int unknown = placed(std::nullopt, positions);
    const auto mismatch = [unknown](const ChoiceList& list, int boxes) {
        return list.value() < boxes || list.value() > boxes + unknown;
    };
    SetupInvalid = {};
    SetupInvalid.midHigh = mismatch(cmbNumSpk, midHigh);
    SetupInvalid.bass = mismatch(cmbNumBass, bass);
    cmbNumSpk = countList(1, system().mostMidHigh, cmbNumSpk.value());
    cmbNumSpk.invalid |= SetupInvalid.midHigh;
    cmbNumBass = countList(0, system().mostBass, cmbNumBass.value());
    cmbNumBass.invalid |= SetupInvalid.bass;
    if (!countsKinds())
        return;
    const auto report = [&](ChoiceList& list, bool& invalid) {
        invalid = list.value() > cmbNumSpk.value();
        list = countList(0, std::min<int>(cmbNumSpk.value(), kMostMidHigh), list.value());
    };
    report(cmbNumGer, SetupInvalid.straight);
    report(cmbNumSch, SetupInvalid.trapezoidal);
}

void SetupForm::correctCounts()
{
    SetupInvalid = {};
    int positions = total();
    if (placed(std::nullopt, positions) > 0)
        return; // counts cannot follow a box of unknown kind
    int bass = placed(BoxKind::Bass, positions);
    int midHigh = positions - bass;
    // What a file brought beyond a list's end stays.
    const int mostBassHere = std::max<int>(system().mostBass, cmbNumBass.value());
    const int mostMidHighHere = std::max<int>(system().mostMidHigh, cmbNumSpk.value());
    for (; bass > mostBassHere; --bass)
        removeBass(positions--);
    for (; midHigh > mostMidHighHere; --midHigh)
        removeMidHigh(positions--);

    cmbNumBass = countList(0, system().mostBass, bass);
    if (midHigh == 0) {
        m_total = positions;
        chooseNumSpk(0, true);
        return;
    }
    cmbNumSpk = countList(1, system().mostMidHigh, midHigh);
    cmbNumGer = countList(0, kMostMidHigh, placed(BoxKind::Straight, positions));
    cmbNumSch = countList(0, kMostMidHigh, placed(BoxKind::Trapezoidal, positions));
    if (positions < m_total)
        for (int joint = 0; joint + 1 < positions; ++joint)
            updateAngleList(joint, true);
}

/// What the array keeps of the first box: a pin from 0, or tenths of a degree.
std::int16_t SetupForm::firstEntry(std::int16_t kept) const
{
    if (stacked || !pinMode)
        return static_cast<std::int16_t>(std::nearbyint(-10 * box1Angle));
    return PinNumber_cmb.choice().known ? static_cast<std::int16_t>(PinNumber_cmb.value() - 1)
                                        : kept;
}

void SetupForm::updateIndependent(LineArray& array) const
{
    LineArray::Positions angles = array.GIAGetAllAngle();
    angles[0] = firstEntry(angles[0]);
    const int boxes = std::min(total(), array.boxCount());
    for (int joint = 0; joint + 1 < boxes; ++joint) {
        const bool sameBoxes = kindAt(joint) && kindAt(joint) == array.kindAt(joint) &&
                               kindAt(joint + 1) && kindAt(joint + 1) == array.kindAt(joint + 1);
        const Choice& choice = angle(joint).choice();
        if (sameBoxes && choice.known && !angle(joint).invalid)
            angles[static_cast<std::size_t>(joint) + 1] = choice.value;
    }
    [[maybe_unused]] const bool set = array.GBSetAllAngle(angles);
    array.GBSetMounting(!stacked);
    array.GBSetAngleOrPin(pinMode);
    array.GFACalcCOM();
}

bool SetupForm::UpdateLineArray(LineArray& array) const
{
    LineArray::Positions angles = array.GIAGetAllAngle();
    LineArray::Positions types = array.GIAGetAllType();
    for (std::size_t position = 0; position < types.size(); ++position) {
        const bool used = static_cast<int>(position) < total();
        if (used && cmbType[position].choice().known)
            types[position] = cmbType[position].value();
        if (position > 0 && cmbAngle[position - 1].choice().known)
            angles[position] = cmbAngle[position - 1].value();
    }
    angles[0] = firstEntry(angles[0]);

    // A count that has not changed is left alone: a file may hold one that the setter would cut.
    const auto set = [](std::int16_t kept, const ChoiceList& list, auto setter, auto getter) {
        if (list.value() == kept)
            return true;
        return setter(list.value()) && getter() == list.value();
    };
    bool taken = array.GBSetAllAngle(angles) && array.GBSetAllType(types);
    taken &= set(
        array.GIGetNumGerade(), cmbNumGer, [&](std::int16_t n) { return array.GBSetNumGerade(n); },
        [&] { return array.GIGetNumGerade(); });
    taken &= set(
        array.GIGetNumSchräg(), cmbNumSch, [&](std::int16_t n) { return array.GBSetNumSchräg(n); },
        [&] { return array.GIGetNumSchräg(); });
    taken &= set(
        array.GIGetNumBass(), cmbNumBass, [&](std::int16_t n) { return array.GBSetNumBass(n); },
        [&] { return array.GIGetNumBass(); });
    taken &= set(
        array.GIGetNumSpeakers(), cmbNumSpk,
        [&](std::int16_t n) { return array.GBSetNumSpeakers(n); },
        [&] { return array.GIGetNumSpeakers(); });
    taken &= array.GBSetMounting(!stacked);
    taken &= array.GBSetAngleOrPin(pinMode);
    array.GFACalcCOM();
    return taken;
}

} // namespace orva
