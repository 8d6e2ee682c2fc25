#include "engine/fast_kernel_simd.h"

#include "engine/simd_targets.h"

#include <algorithm>
#include <array>
#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/fast_kernel_simd.cpp"
// The first include compiles this file once per target; it must come first.
// clang-format off
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
#include "engine/fast_kernel_exact-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace orva::HWY_NAMESPACE {

// Four bands or more: bands in lanes.
//
// The pressure of a band at a receiver is the sum over the sources, each r away in direction w, of
//
//     p = 1/r * exp(g r + i k r) * exp(-m(w) - i phi(w))
//
// with g (negative) and m in nepers, k = WaveFactor * BandCentre. Nothing of it is calculated by an
// exponential here:
//
// - Distance. With z = g + i k and r = c C + f F + x, where C is a coarse and F a fine step and
//   |x| <= F / 2,
//       exp(z r) = exp(z c C) * exp(z f F) * exp(z x),
//   the first two being rows of RadialTable. Of the third only 1 + i k x is left. Its length is too
//   large by (k x)^2 / 2, whose mean the fine rows are made smaller by; what stays is (k F)^2 / 12
//   at most: 7e-5 at 12.5 kHz with kShownPrecision.
// - Direction. m and phi are linear between two steps of 5°, so their exponential is a smooth curve
//   there, of which DirectivityTable keeps `nodes` points a step. Between two points it is their
//   mean, weighted by v and 1 - v. The error is at most an eighth of the square of what the
//   exponent changes by from point to point.
// - Spreading goes into the weights: weight1 = v / r, weight0 = 1 / r - weight1.
//
// What remains for each band are three complex products and one complex mean, with the figures of
// eight or sixteen bands side by side.

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
    /// Where `low1` begins: behind `low0`. 0, and not used, where `low0` takes all 16 bands.
    static constexpr std::size_t kSecond = kWide % 16;

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
                work(low1, kSecond, 16 + kSecond);
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
                low1.template add<kSecond, 16 + kSecond>(term);
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
            if (!after[s])
                continue;
            sum.each([to = after[s] + i * BandRow::kFloats](const auto& part, std::size_t reAt,
                                                            std::size_t imAt)
                         HWY_ATTR { part.store(to, reAt, imAt); });
        }
    }
}

#if HWY_TARGET != HWY_SCALAR
/// Four receivers' powers of four bands, kBandsPadded apart, into the bands' planes.
HWY_INLINE void fourToPlanes(const float* HWY_RESTRICT from, float* const* planes, std::size_t at)
{
    const hn::Full128<float> d;
    const auto r0 = hn::LoadU(d, from);
    const auto r1 = hn::LoadU(d, from + kBandsPadded);
    const auto r2 = hn::LoadU(d, from + 2 * kBandsPadded);
    const auto r3 = hn::LoadU(d, from + 3 * kBandsPadded);
    const auto lower01 = hn::InterleaveLower(d, r0, r1);
    const auto lower23 = hn::InterleaveLower(d, r2, r3);
    const auto upper01 = hn::InterleaveUpper(d, r0, r1);
    const auto upper23 = hn::InterleaveUpper(d, r2, r3);
    hn::StoreU(hn::ConcatLowerLower(d, lower23, lower01), d, planes[0] + at);
    hn::StoreU(hn::ConcatUpperUpper(d, lower23, lower01), d, planes[1] + at);
    hn::StoreU(hn::ConcatLowerLower(d, upper23, upper01), d, planes[2] + at);
    hn::StoreU(hn::ConcatUpperUpper(d, upper23, upper01), d, planes[3] + at);
}
#endif

/// Of four bands or more. Where they are no multiple of four, some are written twice.
HWY_INLINE void toPlanes(const float* HWY_RESTRICT byReceiver, std::size_t count,
                         std::span<float* const> planes, std::size_t offset)
{
    for (std::size_t four = 0; four < planes.size(); four += 4) {
        const std::size_t band = std::min(four, planes.size() - 4);
        const float* from = byReceiver + band;
        std::size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
        for (; i + 4 <= count; i += 4)
            fourToPlanes(from + i * kBandsPadded, &planes[band], offset + i);
#endif
        for (; i < count; ++i)
            for (std::size_t b = 0; b < 4; ++b)
                planes[band + b][offset + i] = from[i * kBandsPadded + b];
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
    toPlanes(byReceiver + bands.from, block.count, powers, offset);
}

} // namespace orva::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orva {

HWY_EXPORT(blockPowersHere);
HWY_EXPORT(blockSumsHere);

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

} // namespace orva
#endif
