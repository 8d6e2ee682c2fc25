#include "engine/speaker_data_text.h"

#include "lang/decimal_text.h"
#include "lang/utf8.h"

#include <bitset>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace orva {

namespace {

constexpr int kHeaderLines = 10;
/// Of the lines above and below the axis; "90°" stands in "190°" too.
struct Keys {
    std::string_view above;
    std::string_view below;
};
constexpr Keys kWindows1252Keys = {"90\xB0", "270\xB0"};
constexpr Keys kUtf8Keys = {"90\xC2\xB0", "270\xC2\xB0"};
/// Louder than on axis by more than this is no loudspeaker, and more than a 32-bit power holds.
constexpr double kLargestGainDb = 300;
constexpr std::string_view kFrequencyKey = "\"Frequency\"";
constexpr std::string_view kPhaseKey = "\"PhaseData\"";

/// The lines of one band in the order in which they must come.
enum class Expected { Frequency, MagnitudeAbove, MagnitudeBelow, Phase, PhaseAbove, PhaseBelow };

/// Which values of a band were numbers: above the axis, then below it.
using NumbersRead =
    std::bitset<SpeakerDataReading::kValuesAbove + SpeakerDataReading::kValuesBelow>;

/// Stores a line of angle values into a row of 72 steps. False for a value that is too large.
class AngleLine {
public:
    AngleLine(std::array<float, kAngleSteps>& row, bool phase, NumbersRead& read)
        : m_row(row), m_phase(phase), m_read(read)
    {
    }

    /// From the axis upwards: steps 0, 71, 70, ...; the last value of the line is not stored.
    bool storeAbove(std::string_view values)
    {
        for (std::size_t i = 0; values.find(',') != std::string_view::npos; ++i) {
            const std::string_view text = takeUpTo(values, ',');
            if (!store((kAngleSteps - i % kAngleSteps) % kAngleSteps, i, text))
                return false;
            if (i < SpeakerDataReading::kValuesAbove && numberAtStart(text))
                m_read.set(i);
        }
        return true;
    }

    /// From the axis downwards: steps 0, 1, 2, ...
    bool storeBelow(std::string_view values)
    {
        bool more = true;
        for (std::size_t i = 0; more; ++i) {
            more = values.find(',') != std::string_view::npos;
            const std::string_view text = takeUpTo(values, ',');
            if (!store(i, i, text))
                return false;
            if (i < SpeakerDataReading::kValuesBelow && numberAtStart(text))
                m_read.set(SpeakerDataReading::kValuesAbove + i);
        }
        return true;
    }

private:
    bool store(std::size_t step, std::size_t number, std::string_view text)
    {
        if (number >= kAngleSteps)
            return true;
        double value = ParseDecimalText(text);
        if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()) ||
            (!m_phase && value < -kLargestGainDb))
            return false;
        if (m_phase && value < 0)
            value += 360;
        m_row[step] = static_cast<float>(value);
        return true;
    }

    std::array<float, kAngleSteps>& m_row;
    bool m_phase;
    NumbersRead& m_read;
};

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// Takes the lines one after another; what is not the line expected next is passed over.
class Reader {
public:
    Reader(const Directivity& before, const Keys& keys) : m_keys(keys)
    {
        m_reading.directivity = before;
    }

    enum class Step { GoOn, Stop, TooLarge };

    Step take(std::string_view line)
    {
        std::string_view values = line;
        const std::string_view key = takeUpTo(values, ',');
        switch (m_expected) {
        case Expected::Frequency:
            return key == kFrequencyKey ? takeFrequency(values) : Step::GoOn;
        case Expected::MagnitudeAbove:
            return takeAbove(key, values, m_reading.directivity.DirMagnitude,
                             Expected::MagnitudeBelow);
        case Expected::MagnitudeBelow:
            return takeBelow(key, values, m_reading.directivity.DirMagnitude, Expected::Phase);
        case Expected::Phase:
            if (key == kPhaseKey)
                m_expected = Expected::PhaseAbove;
            return Step::GoOn;
        case Expected::PhaseAbove:
            return takeAbove(key, values, m_reading.directivity.DirPhase, Expected::PhaseBelow);
        case Expected::PhaseBelow: {
            const Step step =
                takeBelow(key, values, m_reading.directivity.DirPhase, Expected::Frequency);
            const bool whole = m_expected == Expected::Frequency && m_reading.bands == kBands;
            return step == Step::GoOn && whole ? Step::Stop : step;
        }
        }
        return Step::GoOn;
    }

    SpeakerDataReading reading() const
    {
        SpeakerDataReading result = m_reading;
        for (std::size_t band = 0; band < kBands; ++band) {
            const auto both = m_magnitudesRead[band] & m_phasesRead[band];
            result.values += static_cast<int>(both.count());
            result.numbers +=
                static_cast<int>(m_magnitudesRead[band].count() + m_phasesRead[band].count());
        }
        return result;
    }

private:
    Step takeFrequency(std::string_view value)
    {
        const int nominal = kNominalHz[static_cast<std::size_t>(m_reading.bands)];
        if (leadingNumber(takeUpTo(value, ',')) != nominal)
            return Step::Stop;
        ++m_reading.bands;
        m_expected = Expected::MagnitudeAbove;
        return Step::GoOn;
    }

    AngleLine angleLine(Directivity::Table& table)
    {
        const bool phase = &table == &m_reading.directivity.DirPhase;
        const auto band = static_cast<std::size_t>(m_reading.bands - 1);
        return {table[band], phase, (phase ? m_phasesRead : m_magnitudesRead)[band]};
    }

    Step takeAbove(std::string_view key, std::string_view values, Directivity::Table& table,
                   Expected next)
    {
        if (!contains(key, m_keys.above))
            return Step::GoOn;
        m_expected = next;
        return angleLine(table).storeAbove(values) ? Step::GoOn : Step::TooLarge;
    }

    Step takeBelow(std::string_view key, std::string_view values, Directivity::Table& table,
                   Expected next)
    {
        if (!contains(key, m_keys.below))
            return Step::GoOn;
        m_expected = next;
        return angleLine(table).storeBelow(values) ? Step::GoOn : Step::TooLarge;
    }

    Keys m_keys;
    SpeakerDataReading m_reading;
    PerBand<NumbersRead> m_magnitudesRead;
    PerBand<NumbersRead> m_phasesRead;
    Expected m_expected = Expected::Frequency;
};

/// A degree sign of Windows-1252 behind a digit is no UTF-8.
bool isUtf8(std::string_view text)
{
    while (!text.empty())
        if (!takeCharacter(text))
            return false;
    return true;
}

/// 1,606
std::string withThousands(int count)
{
    std::string digits = std::to_string(count);
    if (digits.size() > 3)
        digits.insert(digits.size() - 3, ",");
    return digits;
}

} // namespace

std::optional<Message> SpeakerDataReading::shortfall() const
{
    if (bands < kBands)
        return Message(Text::BandsFound, {number(bands), number(kBands)});
    if (values == kAllValues)
        return std::nullopt;
    return Message(Text::ValuesRead, {withThousands(values), withThousands(kAllValues)});
}

Result<SpeakerDataReading> ReadSpeakerDataText(std::string_view text, const Directivity& before,
                                               std::string_view name)
{
    if (text.size() > kSpeakerDataMaxBytes)
        return Error{Message(Text::DataTooLarge), std::string(name)};

    if (text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF")
        return Error{Message(Text::DataUtf16), std::string(name)};

    Reader reader(before, isUtf8(text) ? kUtf8Keys : kWindows1252Keys);
    for (int number = 1; !text.empty(); ++number) {
        const auto error = [&](Text what) {
            return Error{Message(Text::LineNumber, {orva::number(number), Message(what)}),
                         std::string(name)};
        };
        std::string_view line = takeUpTo(text, '\n');
        if (line.size() > kSpeakerDataMaxLine)
            return error(Text::DataLongLine);
        if (number <= kHeaderLines)
            continue;
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        const Reader::Step step = reader.take(line);
        if (step == Reader::Step::TooLarge)
            return error(Text::DataLargeValue);
        if (step == Reader::Step::Stop)
            break;
    }
    return reader.reading();
}

} // namespace orva
