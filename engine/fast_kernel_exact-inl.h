// Compiled once per set of vector instructions: the guard toggles with each of them.
#if defined(ORVA_FAST_KERNEL_EXACT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ORVA_FAST_KERNEL_EXACT_INL_H
#undef ORVA_FAST_KERNEL_EXACT_INL_H
#else
#define ORVA_FAST_KERNEL_EXACT_INL_H
#endif

#include "engine/fast_kernel_bearings-inl.h"

#include <algorithm>
#include <array>

#include <hwy/contrib/math/math-inl.h>

HWY_BEFORE_NAMESPACE();
namespace orva::HWY_NAMESPACE {

/// Sine and cosine of a phase in turns, any size that float holds exactly enough.
template<class D, class V>
HWY_INLINE void sineAndCosine(D d, V turns, V& sine, V& cosine)
{
    // To -1/2..1/2, then to -1/4..1/4 by mirroring at a quarter turn, which negates the cosine.
    const V whole = hn::Sub(turns, hn::Round(turns));
    const V mirrored = hn::Sub(hn::CopySign(hn::Set(d, 0.5F), whole), whole);
    const auto outer = hn::Gt(hn::Abs(whole), hn::Set(d, 0.25F));
    const V y = hn::IfThenElse(outer, mirrored, whole);
    const V square = hn::Mul(y, y);
    // Taylor series of the angle in turns; the next terms are below 1e-7.
    sine = hn::Mul(polynomial(d, square,
                              {-15.0946425768F, 42.0586939449F, -76.7058597531F, 81.6052492761F,
                               -41.3417022404F, 6.28318530718F}),
                   y);
    const V k = polynomial(d, square,
                           {7.90353637F, -26.4262567834F, 60.2446413719F, -85.4568172067F,
                            64.9393940227F, -19.7392088022F, 1.0F});
    cosine = hn::IfThenElse(outer, hn::Neg(k), k);
}

/// Entries of the directivity at each lane's step.
struct Looked {
    hn::VFromD<Floats> gain;
    hn::VFromD<Floats> gainChange;
    hn::VFromD<Floats> turns;
    hn::VFromD<Floats> turnsChange;
};

/// Neighbouring receivers mostly lie in one step or two neighbouring ones: no gathering is needed.
HWY_INLINE Looked lookUp(const DirectivityTable::Steps& table,
                         hn::VFromD<hn::RebindToSigned<Floats>> index)
{
    const Floats d;
    const hn::RebindToSigned<Floats> di;
    const std::int32_t first = hn::GetLane(hn::MinOfLanes(di, index));
    const std::int32_t next = std::min(first + 1, kAngleSteps - 1);
    const auto isNext = hn::Gt(index, hn::Set(di, first));
    if (!hn::AllFalse(di, hn::Gt(index, hn::Set(di, next))))
        return {hn::GatherIndex(d, table.gain.data(), index),
                hn::GatherIndex(d, table.gainChange.data(), index),
                hn::GatherIndex(d, table.turns.data(), index),
                hn::GatherIndex(d, table.turnsChange.data(), index)};
    const auto choose = [=](const std::array<float, kAngleSteps>& entries) HWY_ATTR {
        return hn::IfThenElse(hn::RebindMask(d, isNext),
                              hn::Set(d, entries[static_cast<std::size_t>(next)]),
                              hn::Set(d, entries[static_cast<std::size_t>(first)]));
    };
    return {choose(table.gain), choose(table.gainChange), choose(table.turns),
            choose(table.turnsChange)};
}

inline void squaredMagnitudes(const float* HWY_RESTRICT re, const float* HWY_RESTRICT im,
                              std::size_t count, float* HWY_RESTRICT squares)
{
    const Floats d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
        const auto x = hn::Load(d, re + i);
        const auto y = hn::Load(d, im + i);
        hn::Store(hn::MulAdd(x, x, hn::Mul(y, y)), d, squares + i);
    }
}

/// One to three bands: receivers in lanes, phases reduced in double, everything else exact to
/// float. `sums` are kBlock powers per band.
inline void exactPowers(const DirectivityTable& directivity, const RadialTable& radial,
                        std::span<const KernelSource> sources, const ReceiverBlock& block,
                        BandSpan bands, float* HWY_RESTRICT sums)
{
    const Doubles dd;
    const FloatsOfDoubles dfd;
    const IntsOfDoubles did;
    const Floats d;
    const hn::RebindToSigned<Floats> di;
    alignas(64) float re[kMostExactBands][kBlock] = {};
    alignas(64) float im[kMostExactBands][kBlock] = {};
    // Whole vectors of any machine; a group of a search fills only some.
    constexpr std::size_t kWidest = 16;
    const std::size_t used = (block.count + kWidest - 1) / kWidest * kWidest;
    Bearings bearings;
    alignas(64) float inStep[kBlock];
    alignas(64) std::int32_t step[kBlock];
    alignas(64) float distance[kBlock];
    alignas(64) float turns[kBlock];

    for (const KernelSource& source : sources) {
        bearingsOf(source, block, used, bearings);
        for (std::size_t i = 0; i < used; i += hn::Lanes(dd)) {
            const auto s = hn::Load(dd, bearings.step + i);
            const auto first = hn::Min(hn::Floor(s), hn::Set(dd, kAngleSteps - 1.0));
            hn::Store(hn::DemoteTo(dfd, hn::Sub(s, first)), dfd, inStep + i);
            hn::Store(hn::DemoteTo(did, first), did, step + i);
            hn::Store(hn::DemoteTo(dfd, hn::Load(dd, bearings.distance + i)), dfd, distance + i);
        }
        for (int b = bands.from; b <= bands.to; ++b) {
            const auto band = static_cast<std::size_t>(b);
            const auto at = static_cast<std::size_t>(b - bands.from);
            const auto perMetre = hn::Set(dd, radial.turnsPerMetre[band]);
            for (std::size_t i = 0; i < used; i += hn::Lanes(dd)) {
                const auto all = hn::Mul(hn::Load(dd, bearings.distance + i), perMetre);
                hn::Store(hn::DemoteTo(dfd, hn::Sub(all, hn::Round(all))), dfd, turns + i);
            }
            const DirectivityTable::Steps& table = directivity.steps[band];
            const auto gainPerMetre = hn::Set(d, radial.gainPerMetre[band]);
            for (std::size_t i = 0; i < used; i += hn::Lanes(d)) {
                const auto index = hn::Load(di, step + i);
                const auto t = hn::Load(d, inStep + i);
                const auto r = hn::Load(d, distance + i);
                const Looked looked = lookUp(table, index);
                const auto gain =
                    hn::MulAdd(looked.gainChange, t, hn::MulAdd(gainPerMetre, r, looked.gain));
                const auto phase = hn::Add(hn::MulAdd(looked.turnsChange, t, looked.turns),
                                           hn::Load(d, turns + i));
                const auto amplitude = hn::Mul(hn::Exp(d, gain), hn::Load(d, bearings.inverse + i));
                auto sine = hn::Zero(d);
                auto cosine = hn::Zero(d);
                sineAndCosine(d, phase, sine, cosine);
                hn::Store(hn::MulAdd(amplitude, cosine, hn::Load(d, re[at] + i)), d, re[at] + i);
                hn::Store(hn::MulAdd(amplitude, sine, hn::Load(d, im[at] + i)), d, im[at] + i);
            }
        }
    }
    for (std::size_t at = 0; at < static_cast<std::size_t>(bands.count()); ++at)
        squaredMagnitudes(re[at], im[at], used, sums + at * kBlock);
}

} // namespace orva::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
