// Compiled once per set of vector instructions: the guard toggles with each of them.
#if defined(ORVA_FAST_KERNEL_BEARINGS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ORVA_FAST_KERNEL_BEARINGS_INL_H
#undef ORVA_FAST_KERNEL_BEARINGS_INL_H
#else
#define ORVA_FAST_KERNEL_BEARINGS_INL_H
#endif

#include "engine/fast_kernel_simd.h"

#include <cstdint>
#include <numbers>

#include <hwy/highway.h>

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

/// By Horner's rule; the coefficient of the highest power comes first.
template<class D, class V, std::size_t count>
HWY_INLINE V polynomial(D d, V x, const float (&coefficients)[count])
{
    V sum = hn::Set(d, coefficients[0]);
    for (std::size_t i = 1; i < count; ++i)
        sum = hn::MulAdd(sum, x, hn::Set(d, coefficients[i]));
    return sum;
}

/// Arc tangent of 0..1 over its argument; error below 2e-8 (Abramowitz and Stegun, 4.4.49).
template<class D, class V>
HWY_INLINE V arcTangentRatio(D d, V square)
{
    return polynomial(d, square,
                      {0.0028662257F, -0.0161657367F, 0.0429096138F, -0.0752896400F, 0.1065626393F,
                       -0.1420889944F, 0.1999355085F, -0.3333314528F, 1.0F});
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

} // namespace orva::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
