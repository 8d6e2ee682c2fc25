#include "optimize/power_ranges.h"

#include "engine/simd_targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "optimize/power_ranges.cpp"
// The first include compiles this file once per target; it must come first.
// clang-format off
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace orva::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void powerRangesHere(const float* sums, std::span<const BallAt> balls, std::size_t boxes,
                     const float* factors, std::span<float> low, std::span<float> high)
{
    const hn::CappedTag<float, 8> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto two = hn::Set(d, 2.0F);
    const BallAt* ball = balls.data();
    for (std::size_t i = 0; i < low.size(); ++i, sums += BandRow::kFloats, ball += boxes) {
        auto least = hn::Zero(d);
        auto most = hn::Zero(d);
        for (std::size_t lane = 0; lane < AmplitudeBall::kLanes; lane += lanes) {
            auto reach = hn::Zero(d);
            for (std::size_t box = 0; box < boxes; ++box) {
                const BallAt& at = ball[box];
                const auto largest = hn::Load(d, at.row->largest.data() + lane);
                const auto change = hn::MulAdd(
                    largest, hn::Add(hn::LoadU(d, at.phase + lane), hn::Set(d, at.nearer)),
                    hn::Load(d, at.row->spread.data() + lane));
                reach =
                    hn::MulAdd(hn::Set(d, at.over), hn::Min(change, hn::Mul(two, largest)), reach);
            }
            constexpr std::size_t kFirst = 16; // lanes whose imaginary parts follow 16 later
            const float* re = sums + lane + (lane < kFirst ? 0 : kFirst);
            const float* im = re + (lane < kFirst ? kFirst : AmplitudeBall::kLanes - kFirst);
            const auto x = hn::Load(d, re);
            const auto y = hn::Load(d, im);
            const auto amplitude = hn::Sqrt(hn::MulAdd(x, x, hn::Mul(y, y)));
            const auto factor = hn::LoadU(d, factors + lane);
            const auto inner = hn::Max(hn::Sub(amplitude, reach), hn::Zero(d));
            const auto outer = hn::Add(amplitude, reach);
            least = hn::MulAdd(hn::Mul(factor, inner), inner, least);
            most = hn::MulAdd(hn::Mul(factor, outer), outer, most);
        }
        low[i] = hn::GetLane(hn::SumOfLanes(d, least));
        high[i] = hn::GetLane(hn::SumOfLanes(d, most));
    }
}

} // namespace orva::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orva {

HWY_EXPORT(powerRangesHere);

void powerRanges(const float* sums, std::span<const BallAt> balls, std::size_t boxes,
                 const float* factors, std::span<float> low, std::span<float> high)
{
    HWY_DYNAMIC_DISPATCH(powerRangesHere)(sums, balls, boxes, factors, low, high);
}

} // namespace orva
#endif
