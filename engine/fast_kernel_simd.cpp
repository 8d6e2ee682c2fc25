#include "engine/fast_kernel_simd.h"

#include "engine/levels.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numbers>

// Vectors of unknown length cannot stand in arrays and registers as used here.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/fast_kernel_simd.cpp"
// The first include compiles this file once per target; it must come first.
// clang-format off
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
#include <hwy/contrib/math/math-inl.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace orva::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Doubles = hn::CappedTag<double, 8>;
using Floats = hn::CappedTag<float, 16>;
using HalfFloats = hn::CappedTag<float, 8>;
using FloatsOfDoubles = hn::Rebind<float, Doubles>;
using IntsOfDoubles = hn::Rebind<std::int32_t, Doubles>;

/// Where the receivers of a block lie as one source sees them.
struct Bearings {
    alignas(64) double distance[kBlock]; // metres, kNearestM at least
    alignas(64) float inverse[kBlock];   // 1 / distance
    alignas(64) double step[kBlock];     // 0 to 72
};

/// Arc tangent of 0..1 over its argument; error below 2e-8 (Abramowitz and Stegun, 4.4.49).
template<class D, class V>
HWY_INLINE V arcTangentRatio(D d, V square)
{
    const auto c = [d](float value) HWY_ATTR { return hn::Set(d, value); };
    V p = hn::MulAdd(c(0.0028662257F), square, c(-0.0161657367F));
    p = hn::MulAdd(p, square, c(0.0429096138F));
    p = hn::MulAdd(p, square, c(-0.0752896400F));
    p = hn::MulAdd(p, square, c(0.1065626393F));
    p = hn::MulAdd(p, square, c(-0.1420889944F));
    p = hn::MulAdd(p, square, c(0.1999355085F));
    p = hn::MulAdd(p, square, c(-0.3333314528F));
    return hn::MulAdd(p, square, c(1.0F));
}

/// 1 / sqrt(x) to 44 bits: Newton steps in double from the machine's estimate of at least 11 bits.
template<class V>
HWY_INLINE V inverseRoot(V x)
{
    const Doubles dd;
    const FloatsOfDoubles df;
    const V half = hn::Mul(x, hn::Set(dd, 0.5));
    V root = hn::PromoteTo(dd, hn::ApproximateReciprocalSqrt(hn::DemoteTo(df, x)));
    for (int bits = 11; bits < 44; bits *= 2)
        root = hn::Mul(root, hn::NegMulAdd(half, hn::Mul(root, root), hn::Set(dd, 1.5)));
    return root;
}

/// Of the first `count` receivers.
HWY_INLINE void bearingsOf(const KernelSource& source, const ReceiverBlock& block,
                           std::size_t count, Bearings& out)
{
    const Doubles dd;
    const FloatsOfDoubles df;
    const auto zero = hn::Zero(dd);
    for (std::size_t i = 0; i < count; i += hn::Lanes(dd)) {
        const auto dx = hn::Sub(hn::Load(dd, block.x + i), hn::Set(dd, source.x));
        const auto down = hn::Sub(hn::Set(dd, source.y), hn::Load(dd, block.y + i));
        const auto square =
            hn::Max(hn::MulAdd(dx, dx, hn::Mul(down, down)), hn::Set(dd, kNearestM * kNearestM));
        const auto inverse = inverseRoot(square);
        hn::Store(hn::Mul(square, inverse), dd, out.distance + i);
        hn::Store(hn::DemoteTo(df, inverse), df, out.inverse + i);

        // Arc tangent of the smaller over the larger side in float, the octants in double.
        const auto ax = hn::Abs(dx);
        const auto ay = hn::Abs(down);
        const auto larger = hn::DemoteTo(df, hn::Max(ax, ay));
        const auto smaller = hn::DemoteTo(df, hn::Min(ax, ay));
        const auto safe = hn::Max(larger, hn::Set(df, 1e-30F));
        const auto ratio = hn::Div(smaller, safe);
        const auto angle = hn::Mul(ratio, arcTangentRatio(df, hn::Mul(ratio, ratio)));
        auto step = hn::Mul(hn::PromoteTo(dd, angle), hn::Set(dd, 36 / std::numbers::pi));
        step = hn::IfThenElse(hn::Gt(ay, ax), hn::Sub(hn::Set(dd, 18.0), step), step);
        step = hn::IfThenElse(hn::Lt(dx, zero), hn::Sub(hn::Set(dd, 36.0), step), step);
        step = hn::IfThenElse(hn::Lt(down, zero), hn::Neg(step), step);
        // -36..36 and 0..72: one turn up or down brings it into 0..72
        const auto turn = hn::Set(dd, static_cast<double>(kAngleSteps));
        step = hn::Add(step, hn::Set(dd, source.step));
        step = hn::IfThenElse(hn::Lt(step, zero), hn::Add(step, turn), step);
        step = hn::IfThenElse(hn::Gt(step, turn), hn::Sub(step, turn), step);
        hn::Store(step, dd, out.step + i);
    }
}

// One to three bands: receivers in lanes, phases reduced in double, everything else exact to float.

/// Sine and cosine of a phase in turns, any size that float holds exactly enough.
template<class D, class V>
HWY_INLINE void sineAndCosine(D d, V turns, V& sine, V& cosine)
{
    const auto c = [d](double value) HWY_ATTR { return hn::Set(d, static_cast<float>(value)); };
    // To -1/2..1/2, then to -1/4..1/4 by mirroring at a quarter turn, which negates the cosine.
    const V whole = hn::Sub(turns, hn::Round(turns));
    const V mirrored = hn::Sub(hn::CopySign(c(0.5), whole), whole);
    const auto outer = hn::Gt(hn::Abs(whole), c(0.25));
    const V y = hn::IfThenElse(outer, mirrored, whole);
    const V square = hn::Mul(y, y);
    // Taylor series of the angle in turns; the next terms are below 1e-7.
    V s = hn::MulAdd(c(-15.0946425768), square, c(42.0586939449));
    s = hn::MulAdd(s, square, c(-76.7058597531));
    s = hn::MulAdd(s, square, c(81.6052492761));
    s = hn::MulAdd(s, square, c(-41.3417022404));
    s = hn::MulAdd(s, square, c(6.28318530718));
    sine = hn::Mul(s, y);
    V k = hn::MulAdd(c(7.90353637), square, c(-26.4262567834));
    k = hn::MulAdd(k, square, c(60.2446413719));
    k = hn::MulAdd(k, square, c(-85.4568172067));
    k = hn::MulAdd(k, square, c(64.9393940227));
    k = hn::MulAdd(k, square, c(-19.7392088022));
    k = hn::MulAdd(k, square, c(1.0));
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

void exactPowers(const DirectivityTable& directivity, const RadialTable& radial,
                 std::span<const KernelSource> sources, const ReceiverBlock& block, BandSpan bands,
                 float* HWY_RESTRICT sums)
{
    const Doubles dd;
    const FloatsOfDoubles dfd;
    const IntsOfDoubles did;
    const Floats d;
    const hn::RebindToSigned<Floats> di;
    alignas(64) float re[kMostExactBands][kBlock] = {};
    alignas(64) float im[kMostExactBands][kBlock] = {};
    Bearings bearings;
    alignas(64) float inStep[kBlock];
    alignas(64) std::int32_t step[kBlock];
    alignas(64) float distance[kBlock];
    alignas(64) float turns[kBlock];

    for (const KernelSource& source : sources) {
        bearingsOf(source, block, kBlock, bearings);
        for (std::size_t i = 0; i < kBlock; i += hn::Lanes(dd)) {
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
            for (std::size_t i = 0; i < kBlock; i += hn::Lanes(dd)) {
                const auto all = hn::Mul(hn::Load(dd, bearings.distance + i), perMetre);
                hn::Store(hn::DemoteTo(dfd, hn::Sub(all, hn::Round(all))), dfd, turns + i);
            }
            const DirectivityTable::Steps& table = directivity.steps[band];
            const auto gainPerMetre = hn::Set(d, radial.gainPerMetre[band]);
            for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
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
    for (int at = 0; at < bands.count(); ++at)
        for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
            const auto x = hn::Load(d, re[at] + i);
            const auto y = hn::Load(d, im[at] + i);
            hn::Store(hn::MulAdd(x, x, hn::Mul(y, y)), d,
                      sums + static_cast<std::size_t>(at) * kBlock + i);
        }
}

// Four bands or more: bands in lanes.

/// Which rows of the tables a receiver's figure is made of.
struct Rows {
    alignas(64) std::int32_t coarse[kBlock];
    alignas(64) std::int32_t fine[kBlock];
    alignas(64) std::int32_t direction[kBlock];
    alignas(64) float rest[kBlock];    // metres beyond the fine row
    alignas(64) float weight0[kBlock]; // of the first direction row, 1 / distance included
    alignas(64) float weight1[kBlock]; // of the next one
};

HWY_INLINE void rowsOf(const Bearings& bearings, std::size_t count, double fineM, int nodes,
                       Rows& rows)
{
    const Doubles dd;
    const FloatsOfDoubles df;
    const IntsOfDoubles di;
    for (std::size_t i = 0; i < count; i += hn::Lanes(dd)) {
        const auto r = hn::Load(dd, bearings.distance + i);
        const auto coarse = hn::Floor(hn::Mul(r, hn::Set(dd, 1 / RadialTable::kCoarseM)));
        const auto beyond = hn::NegMulAdd(coarse, hn::Set(dd, RadialTable::kCoarseM), r);
        const auto fine = hn::Round(hn::Mul(beyond, hn::Set(dd, 1 / fineM)));
        const auto rest = hn::NegMulAdd(fine, hn::Set(dd, fineM), beyond);
        hn::Store(hn::DemoteTo(di, coarse), di, rows.coarse + i);
        hn::Store(hn::DemoteTo(di, fine), di, rows.fine + i);
        hn::Store(hn::DemoteTo(df, rest), df, rows.rest + i);

        const auto node =
            hn::Mul(hn::Load(dd, bearings.step + i), hn::Set(dd, static_cast<double>(nodes)));
        const auto last = hn::Set(dd, static_cast<double>(kAngleSteps * nodes - 1));
        const auto first = hn::Min(hn::Floor(node), last);
        const auto inverse = hn::Load(df, bearings.inverse + i);
        const auto weight1 = hn::Mul(inverse, hn::DemoteTo(df, hn::Sub(node, first)));
        hn::Store(hn::DemoteTo(di, first), di, rows.direction + i);
        hn::Store(weight1, df, rows.weight1 + i);
        hn::Store(hn::Sub(inverse, weight1), df, rows.weight0 + i);
    }
}

HWY_INLINE void rowsOfSources(const DirectivityTable& directivity, const RadialTable& radial,
                              std::span<const KernelSource> sources, const ReceiverBlock& block,
                              Rows* rows)
{
    for (std::size_t s = 0; s < sources.size(); ++s) {
        Bearings bearings;
        bearingsOf(sources[s], block, block.count, bearings);
        rowsOf(bearings, block.count, radial.fineM, directivity.nodes, rows[s]);
    }
}

/// The rows of one receiver and source.
struct Term {
    const float* HWY_RESTRICT coarse;
    const float* HWY_RESTRICT fine;
    const float* HWY_RESTRICT direction; // and the next row behind it
    const float* HWY_RESTRICT waveNumber;
    float rest;
    float weight0;
    float weight1;
};

/// Sums of the bands that lie in one vector at places `re` and `im` of a row.
template<class D>
struct Sum {
    hn::VFromD<D> re;
    hn::VFromD<D> im;

    HWY_INLINE Sum()
        : re(hn::Zero(D())), im(hn::Zero(D())) {} // a default one would lack the target

    template<std::size_t reAt, std::size_t imAt>
    HWY_INLINE void add(const Term& term)
    {
        const D d;
        const auto x = hn::Mul(hn::Load(d, term.waveNumber + reAt), hn::Set(d, term.rest));
        const auto fineRe = hn::Load(d, term.fine + reAt);
        const auto fineIm = hn::Load(d, term.fine + imAt);
        const auto nearRe = hn::NegMulAdd(x, fineIm, fineRe);
        const auto nearIm = hn::MulAdd(x, fineRe, fineIm);
        const auto coarseRe = hn::Load(d, term.coarse + reAt);
        const auto coarseIm = hn::Load(d, term.coarse + imAt);
        const auto waveRe = hn::NegMulAdd(nearIm, coarseIm, hn::Mul(nearRe, coarseRe));
        const auto waveIm = hn::MulAdd(nearIm, coarseRe, hn::Mul(nearRe, coarseIm));
        const auto w0 = hn::Set(d, term.weight0);
        const auto w1 = hn::Set(d, term.weight1);
        const float* next = term.direction + BandRow::kFloats;
        const auto boxRe = hn::MulAdd(w1, hn::Load(d, next + reAt),
                                      hn::Mul(w0, hn::Load(d, term.direction + reAt)));
        const auto boxIm = hn::MulAdd(w1, hn::Load(d, next + imAt),
                                      hn::Mul(w0, hn::Load(d, term.direction + imAt)));
        re = hn::NegMulAdd(waveIm, boxIm, hn::MulAdd(waveRe, boxRe, re));
        im = hn::MulAdd(waveIm, boxRe, hn::MulAdd(waveRe, boxIm, im));
    }

    HWY_INLINE void load(const float* HWY_RESTRICT row, std::size_t reAt, std::size_t imAt)
    {
        re = hn::Load(D(), row + reAt);
        im = hn::Load(D(), row + imAt);
    }
    HWY_INLINE void store(float* HWY_RESTRICT row, std::size_t reAt, std::size_t imAt) const
    {
        hn::Store(re, D(), row + reAt);
        hn::Store(im, D(), row + imAt);
    }

    HWY_INLINE void storePower(float* HWY_RESTRICT to) const
    {
        hn::Store(hn::MulAdd(re, re, hn::Mul(im, im)), D(), to);
    }
};

/// Sums of all bands that are asked for: `low` 0..15, `high` 16..21.
template<bool low, bool high>
struct RowSum {
    static constexpr std::size_t kWide = hn::MaxLanes(Floats());
    static constexpr std::size_t kHalf = hn::MaxLanes(HalfFloats());

    Sum<Floats> low0;
    Sum<Floats> low1;
    Sum<Floats> low2;
    Sum<Floats> low3;
    Sum<HalfFloats> high0;
    Sum<HalfFloats> high1;

    HWY_INLINE RowSum() {} // a default one would lack the target

    /// Does `work` with each vector in use and its places of real and imaginary parts.
    template<class Work>
    HWY_INLINE void each(Work work)
    {
        if constexpr (low) {
            work(low0, 0, 16);
            if constexpr (kWide <= 8)
                work(low1, kWide % 16, 16 + kWide % 16);
            if constexpr (kWide <= 4) {
                work(low2, 8, 24);
                work(low3, 12, 28);
            }
        }
        if constexpr (high) {
            work(high0, 32, 40);
            if constexpr (kHalf <= 4)
                work(high1, 36, 44);
        }
    }

    HWY_INLINE void add(const Term& term)
    {
        if constexpr (low) {
            low0.template add<0, 16>(term);
            if constexpr (kWide <= 8)
                low1.template add<kWide % 16, 16 + kWide % 16>(term);
            if constexpr (kWide <= 4) {
                low2.template add<8, 24>(term);
                low3.template add<12, 28>(term);
            }
        }
        if constexpr (high) {
            high0.template add<32, 40>(term);
            if constexpr (kHalf <= 4)
                high1.template add<36, 44>(term);
        }
    }
};

HWY_INLINE Term termOf(const DirectivityTable& directivity, const RadialTable& radial,
                       const Rows& rows, std::size_t i)
{
    const auto row = [](const BandRows& table, std::int32_t index) HWY_ATTR {
        return table.get() + static_cast<std::size_t>(index) * BandRow::kFloats;
    };
    return {row(radial.coarse, rows.coarse[i]),
            row(radial.fine, rows.fine[i]),
            row(directivity.rows, rows.direction[i]),
            radial.waveNumber.data(),
            rows.rest[i],
            rows.weight0[i],
            rows.weight1[i]};
}

/// Writes powers by band, kBands of them a receiver apart by kBandsPadded.
constexpr std::size_t kBandsPadded = 32;

template<bool low, bool high>
void rangePowers(const DirectivityTable& directivity, const RadialTable& radial,
                 std::span<const KernelSource> sources, const ReceiverBlock& block,
                 float* HWY_RESTRICT powers)
{
    Rows rows[kMostSources];
    rowsOfSources(directivity, radial, sources, block, rows);
    for (std::size_t i = 0; i < block.count; ++i) {
        RowSum<low, high> sum;
        for (std::size_t s = 0; s < sources.size(); ++s)
            sum.add(termOf(directivity, radial, rows[s], i));
        float* to = powers + i * kBandsPadded;
        // Rows hold real parts of bands 0..15 from place 0 on, of bands 16..21 from place 32 on.
        sum.each([to](const auto& part, std::size_t reAt, std::size_t)
                     HWY_ATTR { part.storePower(to + (reAt < 16 ? reAt : reAt - 16)); });
    }
}

template<bool low, bool high>
void rangeSums(const DirectivityTable& directivity, const RadialTable& radial,
               std::span<const KernelSource> sources, const ReceiverBlock& block,
               const float* HWY_RESTRICT before, std::span<float* const> after)
{
    Rows rows[kMostSources];
    rowsOfSources(directivity, radial, sources, block, rows);
    for (std::size_t i = 0; i < block.count; ++i) {
        RowSum<low, high> sum;
        if (before)
            sum.each([from = before + i * BandRow::kFloats](auto& part, std::size_t reAt,
                                                            std::size_t imAt)
                         HWY_ATTR { part.load(from, reAt, imAt); });
        for (std::size_t s = 0; s < sources.size(); ++s) {
            sum.add(termOf(directivity, radial, rows[s], i));
            sum.each([to = after[s] + i * BandRow::kFloats](const auto& part, std::size_t reAt,
                                                            std::size_t imAt)
                         HWY_ATTR { part.store(to, reAt, imAt); });
        }
    }
}

bool blockSumsHere(const DirectivityTable& directivity, const RadialTable& radial,
                   std::span<const KernelSource> sources, const ReceiverBlock& block,
                   BandSpan bands, const float* before, std::span<float* const> after)
{
    if constexpr (hn::MaxLanes(Floats()) < 4)
        return false;
    else if (bands.to < 16)
        rangeSums<true, false>(directivity, radial, sources, block, before, after);
    else if (bands.from >= 16)
        rangeSums<false, true>(directivity, radial, sources, block, before, after);
    else
        rangeSums<true, true>(directivity, radial, sources, block, before, after);
    return true;
}

void blockPowersHere(const DirectivityTable& directivity, const RadialTable& radial,
                     std::span<const KernelSource> sources, const ReceiverBlock& block,
                     BandSpan bands, std::span<float* const> powers, std::size_t offset)
{
    // Without vectors of four there is nothing to put bands into.
    constexpr bool kNarrow = hn::MaxLanes(Floats()) < 4;
    if (kNarrow || bands.count() <= kMostExactBands) {
        alignas(64) float sums[kMostExactBands * kBlock];
        for (int from = bands.from; from <= bands.to; from += kMostExactBands) {
            const BandSpan some = {from, std::min(from + kMostExactBands - 1, bands.to)};
            exactPowers(directivity, radial, sources, block, some, sums);
            for (int b = some.from; b <= some.to; ++b)
                std::copy_n(sums + static_cast<std::size_t>(b - some.from) * kBlock, block.count,
                            powers[static_cast<std::size_t>(b - bands.from)] + offset);
        }
        return;
    }
    alignas(64) float byReceiver[kBlock * kBandsPadded];
    if constexpr (kNarrow)
        return;
    else if (bands.to < 16)
        rangePowers<true, false>(directivity, radial, sources, block, byReceiver);
    else if (bands.from >= 16)
        rangePowers<false, true>(directivity, radial, sources, block, byReceiver);
    else
        rangePowers<true, true>(directivity, radial, sources, block, byReceiver);
    for (std::size_t b = 0; b < powers.size(); ++b) {
        const float* from = byReceiver + static_cast<std::size_t>(bands.from) + b;
        float* to = powers[b] + offset;
        for (std::size_t i = 0; i < block.count; ++i)
            to[i] = from[i * kBandsPadded];
    }
}

void weightedLevelsHere(std::span<const float* const> planes, std::span<const float> factors,
                        std::span<float> levels)
{
    const Floats d;
    const std::size_t lanes = hn::Lanes(d);
    const auto level = [d](hn::VFromD<Floats> power) HWY_ATTR {
        const auto silent = hn::Eq(power, hn::Zero(d));
        const auto decibels = hn::Mul(hn::Log(d, power), hn::Set(d, 4.342944819F));
        return hn::IfThenElse(silent, hn::Neg(hn::Inf(d)), decibels);
    };
    const auto calculate = [&](std::size_t i) HWY_ATTR {
        auto power = hn::Zero(d);
        for (std::size_t b = 0; b < planes.size(); ++b)
            power = hn::MulAdd(hn::Set(d, factors[b]), hn::LoadU(d, planes[b] + i), power);
        hn::StoreU(level(power), d, levels.data() + i);
    };
    if (levels.size() >= lanes) {
        for (std::size_t i = 0; i + lanes <= levels.size(); i += lanes)
            calculate(i);
        calculate(levels.size() - lanes); // some of them again
        return;
    }
    const hn::CappedTag<float, 1> one;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        auto power = hn::Zero(one);
        for (std::size_t b = 0; b < planes.size(); ++b)
            power = hn::MulAdd(hn::Set(one, factors[b]), hn::LoadU(one, planes[b] + i), power);
        alignas(64) float all[hn::MaxLanes(Floats())] = {};
        hn::StoreU(level(hn::Set(d, hn::GetLane(power))), d, all);
        levels[i] = all[0];
    }
}

} // namespace orva::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orva {

HWY_EXPORT(blockPowersHere);
HWY_EXPORT(blockSumsHere);
HWY_EXPORT(weightedLevelsHere);

void blockPowers(const DirectivityTable& directivity, const RadialTable& radial,
                 std::span<const KernelSource> sources, const ReceiverBlock& block, BandSpan bands,
                 std::span<float* const> powers, std::size_t offset)
{
    HWY_DYNAMIC_DISPATCH(blockPowersHere)
    (directivity, radial, sources, block, bands, powers, offset);
}

bool blockSums(const DirectivityTable& directivity, const RadialTable& radial,
               std::span<const KernelSource> sources, const ReceiverBlock& block, BandSpan bands,
               const float* before, std::span<float* const> after)
{
    return HWY_DYNAMIC_DISPATCH(blockSumsHere)(directivity, radial, sources, block, bands, before,
                                               after);
}

void weightedLevels(std::span<const float* const> planes, std::span<const float> factors,
                    std::span<float> levels)
{
    HWY_DYNAMIC_DISPATCH(weightedLevelsHere)(planes, factors, levels);
}

} // namespace orva
#endif
