#include "model/hung_array.h"

#include <algorithm>

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

} // namespace orva
