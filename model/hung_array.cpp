#include "model/hung_array.h"

#include "model/system_record.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orva {

HungArray::HungArray(const LineArray& array) : m_array(array)
{
    hang(0);
}

void HungArray::turn(const LineArray::Positions& angles)
{
    // Angle 0 is that of the cradle: it turns no box against another.
    const auto turned =
        std::mismatch(angles.begin() + 1, angles.end(), m_array.AllAngle.begin() + 1).first;
    m_array.AllAngle = angles;
    hang(std::min(static_cast<std::size_t>(turned - angles.begin()), m_level.size()));
}

void HungArray::hoist(float heightM)
{
    m_array.CradleCoord[1] = heightM;
    hang(m_level.size());
}

/// Works out all that changes when the boxes from position `kept` on have turned.
void HungArray::hang(std::size_t kept)
{
    m_level.resize(kept, {{}, 0, Rotation(0), nullptr});
    m_moments.resize(kept);
    m_array.hang(m_level, 0);
    for (std::size_t i = kept; i < m_level.size(); ++i)
        m_moments.push_back(m_array.momentWith(m_level[i], i > 0 ? m_moments[i - 1] : FloatPair{}));
    m_array.storeCenterOfMass(m_moments.empty() ? FloatPair{} : m_moments.back());

    const float tilt = m_array.GFFirstAngle();
    const FloatPair zero = m_array.originInRoom();
    if (tilt != m_tiltDeg || m_tilted.empty())
        kept = 0;
    m_tilted.resize(kept, {{}, 0, Rotation(0), nullptr});
    m_array.hang(m_tilted, tilt);
    if (zero != m_zero)
        kept = 0;
    m_axes.resize(m_tilted.size());
    for (std::size_t i = kept; i < m_axes.size(); ++i) {
        const auto [x, y, degrees] = m_array.axisOf(m_tilted[i], zero, true);
        m_axes[i] = {{x, y}, degrees};
    }
    m_tiltDeg = tilt;
    m_zero = zero;
}

namespace {

constexpr double kDegrees = 180 / std::numbers::pi;
/// What 32 bits come to at most, many times over.
constexpr double kRoundingM = 1e-4;
constexpr double kRoundingDeg = 2e-3;

double length(const FloatPair& vector)
{
    return std::hypot(static_cast<double>(vector[0]), static_cast<double>(vector[1]));
}

} // namespace

std::optional<std::vector<HungArray::Play>> HungArray::play(int first,
                                                            std::span<const double> degrees) const
{
    std::vector<Play> result(m_tilted.size());
    double moment = 0; // of the centres of gravity
    for (std::size_t turning = 0; turning < degrees.size(); ++turning) {
        // A point that turns about a joint moves by the angle times its distance at most, which is
        // at most that along the boxes between, however these are bent.
        const double angle = degrees[turning] / kDegrees;
        double reach = 0;
        for (auto i = static_cast<std::size_t>(first) + turning + 1; i < m_tilted.size(); ++i) {
            const BoxShape* shape = m_tilted[i].shape;
            if (shape) {
                result[i].moveM += angle * (reach + length(shape->source));
                moment += static_cast<double>(shape->weightKg) * angle *
                          (reach + length(shape->centerOfGravity));
                reach += length(shape->hinge);
            }
            result[i].turnDeg += degrees[turning];
        }
    }
    if (m_array.Mounting) {
        const double weight = m_array.countedWeight();
        if (!(weight > 0))
            return std::nullopt;
        const double centreMovesM = moment / weight + kRoundingM;
        const std::optional<int> pin = certainPin(centreMovesM);
        if (!pin)
            return std::nullopt;
        if (m_array.AngleOrPin) {
            const double swing = swingDeg(*pin, centreMovesM);
            const FloatPair& pick = m_array.CradleCoord;
            for (std::size_t i = 0; i < result.size(); ++i) {
                const double distance =
                    std::hypot(m_axes[i].from.x - pick[0], m_axes[i].from.y - pick[1]);
                result[i].moveM += swing / kDegrees * (distance + result[i].moveM);
                result[i].turnDeg += swing;
            }
            constexpr double kUpsideDown = 45;
            if (!(swing < kUpsideDown))
                return std::nullopt;
        }
    }
    // Far from the point of reference 32 bits hold less of a metre.
    constexpr double kStep = 1e-6;
    const double rounding =
        kRoundingM + kStep * (std::abs(static_cast<double>(m_array.CradleCoord[0])) +
                              std::abs(static_cast<double>(m_array.CradleCoord[1])));
    for (Play& play : result)
        if (play.turnDeg > 0)
            play = {play.moveM + rounding, play.turnDeg + kRoundingDeg};
    return result;
}

double HungArray::swingDeg(int pin, double centreMovesM) const
{
    const CradleGeometry& cradle = m_array.system().cradle;
    const auto at = static_cast<std::size_t>(pin);
    const double forward = static_cast<double>(m_array.CenterOfMass[0]) - cradle.PinX[at];
    const double below = static_cast<double>(m_array.CenterOfMass[1]) - cradle.PinY[at];
    // An angle against the vertical, which jumps where the centre comes level with the pin.
    return std::abs(below) > 2 * centreMovesM
               ? std::asin(centreMovesM / std::hypot(forward, below)) * kDegrees + kRoundingDeg
               : std::numeric_limits<double>::infinity();
}

/// The pin that carries the array wherever the centre of gravity gets; none where that is not sure.
std::optional<int> HungArray::certainPin(double centreMovesM) const
{
    const int carrying = m_array.GIPinPoint();
    const int pins = m_array.system().cradle.pinCount();
    if (carrying < 0 || carrying >= pins)
        return std::nullopt;
    if (m_array.AngleOrPin)
        return carrying;
    const double wanted = m_array.GFFirstAngle();
    const auto away = [&](int pin) {
        return std::abs(wanted - m_array.GFAngleFromPin(static_cast<std::int16_t>(pin)));
    };
    const double most = away(carrying) + swingDeg(carrying, centreMovesM);
    for (const int pin : {carrying - 1, carrying + 1}) // the others' angles lie beyond theirs
        if (pin >= 0 && pin < pins && !(away(pin) - swingDeg(pin, centreMovesM) > most))
            return std::nullopt;
    return carrying;
}

} // namespace orva
