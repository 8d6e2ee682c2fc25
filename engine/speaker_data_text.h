#pragma once

#include "engine/speaker_data.h"
#include "model/result.h"

#include <optional>
#include <string>
#include <string_view>

namespace orva {

constexpr std::size_t kSpeakerDataMaxBytes = 64UL << 20;
constexpr std::size_t kSpeakerDataMaxLine = 1UL << 20;

/// What became of a speaker data text.
struct SpeakerDataReading {
    /// Values of a whole text: a magnitude and its phase each, of the 36 directions above the axis
    /// that are stored of a line and the 37 below, per band.
    static constexpr int kValuesAbove = 36;
    static constexpr int kValuesBelow = 37;
    static constexpr int kAllValues = kBands * (kValuesAbove + kValuesBelow);

    Directivity directivity; ///< the tables with all that was read before reading stopped
    int bands = 0;           ///< frequency lines accepted, 0..22
    int values = 0;          ///< of which both magnitude and phase were numbers, 0..kAllValues
    int numbers = 0;         ///< magnitudes and phases that were numbers, 0..2 kAllValues

    /// Fewer than all bands were found: "Load data failed". A last band that ends early is no
    /// failure, but a text in which no value is a number is one.
    bool failed() const { return bands < kBands || numbers == 0; }
    /// Why it failed, or what is to be said of one that did not: "3 of 1,606 values were read";
    /// none where all values were read.
    std::optional<Message> shortfall() const;
};

/// Reads text in the speaker data format (Windows-1252 or UTF-8, with a byte order mark or without,
/// lines ending with LF or CR LF) over the tables `before`. Values beyond the 72 steps are dropped;
/// a value that is no number counts as 0. An error, and nothing read: UTF-16, a text over 64 MB, a
/// line over 1 MB, a value too large for a 32-bit float or a gain of more than 300 dB. `name`
/// stands for the file in it.
Result<SpeakerDataReading> ReadSpeakerDataText(std::string_view text, const Directivity& before,
                                               std::string_view name);

} // namespace orva
