#pragma once

#include "engine/speaker_data.h"
#include "model/result.h"

#include <string_view>

namespace orva {

constexpr std::size_t kSpeakerDataMaxBytes = 64UL << 20;
constexpr std::size_t kSpeakerDataMaxLine = 1UL << 20;

/// What became of a speaker data text.
struct SpeakerDataReading {
    Directivity directivity; ///< the tables with all that was read before reading stopped
    int bands = 0;           ///< frequency lines accepted, 0..22

    /// Fewer than all bands were found: "Load data failed". A last band that ends early is no
    /// failure.
    bool failed() const { return bands < kBands; }
};

/// Reads text in the speaker data format (Windows-1252, lines ending with LF or CR LF) over the
/// tables `before`. Values beyond the 72 steps are dropped. An error, and nothing read: a text over
/// 64 MB, a line over 1 MB, a value too large for a 32-bit float
/// or a gain of more than 300 dB. `name` stands for the file in it.
Result<SpeakerDataReading> ReadSpeakerDataText(std::string_view text, const Directivity& before,
                                               std::string_view name);

} // namespace orva
