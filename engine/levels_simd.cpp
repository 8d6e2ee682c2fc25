#include "engine/levels.h"
#include "engine/simd_targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/levels_simd.cpp"
// The first include compiles this file once per target; it must come first.
// clang-format off
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
#include <hwy/contrib/math/math-inl.h>
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace orva::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void weightedLevelsHere(std::span<const float* const> planes, std::span<const float> factors,
                        std::span<float> levels)
{
    const hn::CappedTag<float, 16> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto level = [d](hn::VFromD<decltype(d)> power) HWY_ATTR {
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
        alignas(64) float all[hn::MaxLanes(d)] = {};
        hn::StoreU(level(hn::Set(d, hn::GetLane(power))), d, all);
        levels[i] = all[0];
    }
}

const char* vectorTargetHere()
{
    return hwy::TargetName(HWY_TARGET);
}

} // namespace orva::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace orva {

HWY_EXPORT(weightedLevelsHere);
HWY_EXPORT(vectorTargetHere);

void weightedLevels(std::span<const float* const> planes, std::span<const float> factors,
                    std::span<float> levels)
{
    HWY_DYNAMIC_DISPATCH(weightedLevelsHere)(planes, factors, levels);
}

const char* vectorTarget()
{
    return HWY_DYNAMIC_DISPATCH(vectorTargetHere)();
}

} // namespace orva
#endif
