#pragma once

// To be included before anything of Highway: the sets of vector instructions that are not used.
// Vectors of unknown length cannot stand in arrays and registers as here.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
