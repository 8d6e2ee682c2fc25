#pragma once

#include <span>

namespace orva {

/// A power as a level in dB; minus infinity for 0.
double levelOfPower(double power);

/// A level in dB as a power; 0 for minus infinity.
double powerOfLevel(double levelDb);

/// 10 lg of the sum over `planes` (as many figures each as `levels` has) times their factors; minus
/// infinity for 0. With the machine's widest vectors.
void weightedLevels(std::span<const float* const> planes, std::span<const float> factors,
                    std::span<float> levels);

/// Name of those vectors: "AVX2".
const char* vectorTarget();

} // namespace orva
