#include "engine/fast_kernel.h"

#include "engine/fast_kernel_simd.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>

namespace orva {

namespace {

/// Whether every source and receiver is finite and no two are further apart than the tables reach.
bool withinReach(std::span<const Source> sources, std::span<const Point> receivers)
{
    double left = receivers[0].x;
    double right = left;
    double low = receivers[0].y;
    double high = low;
    bool finite = true;
    for (const Point& point : receivers) {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
        low = std::min(low, point.y);
        high = std::max(high, point.y);
        finite &= std::isfinite(point.x) && std::isfinite(point.y);
    }
    for (const Source& source : sources) {
        const double dx = std::max(right - source.x, source.x - left);
        const double dy = std::max(high - source.y, source.y - low);
        finite &= std::isfinite(source.angleDeg) &&
                  dx * dx + dy * dy < RadialTable::kReachM * RadialTable::kReachM;
    }
    return finite;
}

double stepOf(double angleDeg)
{
    const double step = std::fmod(angleDeg / 5, kAngleSteps);
    return step < 0 ? step + kAngleSteps : step;
}

std::array<KernelSource, kMostSources> kernelSources(std::span<const Source> sources)
{
    std::array<KernelSource, kMostSources> prepared;
    std::transform(sources.begin(), sources.end(), prepared.begin(), [](const Source& source) {
        return KernelSource{source.x, source.y, stepOf(source.angleDeg)};
    });
    return prepared;
}

/// 1 to kBlock receivers.
ReceiverBlock receiverBlock(std::span<const Point> receivers)
{
    ReceiverBlock block;
    block.count = receivers.size();
    for (std::size_t i = 0; i < kBlock; ++i) {
        const Point& point = receivers[std::min(i, block.count - 1)];
        block.x[i] = point.x;
        block.y[i] = point.y;
    }
    return block;
}

} // namespace

FastKernel::FastKernel(std::shared_ptr<const DirectivityTable> directivity,
                       std::shared_ptr<const RadialTable> radial,
                       std::unique_ptr<LevelKernel> literal)
    : m_directivity(std::move(directivity)),
      m_radial(std::move(radial)),
      m_literal(std::move(literal))
{
}

bool FastKernel::hasRunningSums(std::span<const Source> sources, std::span<const Point> receivers,
                                BandSpan bands) const
{
    const bool possible = m_directivity && bands.count() > kMostExactBands &&
                          sources.size() <= kMostSources && !receivers.empty() &&
                          withinReach(sources, receivers);
    return possible &&
           blockSums(*m_directivity, *m_radial, {}, ReceiverBlock{}, bands, nullptr, {});
}

void FastKernel::runningSums(std::span<const Source> sources, std::span<const Point> receivers,
                             BandSpan bands, const float* before,
                             std::span<float* const> after) const
{
    assert(receivers.size() <= kBlock && after.size() == sources.size());
    const auto prepared = kernelSources(sources);
    blockSums(*m_directivity, *m_radial, std::span(prepared.data(), sources.size()),
              receiverBlock(receivers), bands, before, after);
}

void FastKernel::bandPowers(std::span<const Source> sources, std::span<const Point> receivers,
                            BandSpan bands, std::span<float* const> powers) const
{
    assert(powers.size() == static_cast<std::size_t>(bands.count()));
    if (receivers.empty())
        return;
    if (!m_directivity || sources.size() > kMostSources || !withinReach(sources, receivers)) {
        m_literal->bandPowers(sources, receivers, bands, powers);
        return;
    }
    const auto prepared = kernelSources(sources);
    const std::span used(prepared.data(), sources.size());
    for (std::size_t first = 0; first < receivers.size(); first += kBlock)
        blockPowers(
            *m_directivity, *m_radial, used,
            receiverBlock(receivers.subspan(first, std::min(kBlock, receivers.size() - first))),
            bands, powers, first);
}

} // namespace orva
