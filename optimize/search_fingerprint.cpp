#include "optimize/search_fingerprint.h"

#include <bit>

namespace orva {

namespace {

class Fingerprint {
public:
    void add(std::int64_t value)
    {
        const auto bits = static_cast<std::uint64_t>(value);
        for (int shift = 0; shift < 64; shift += 8)
            addByte(static_cast<unsigned char>(bits >> shift));
    }
    void addFigure(double value)
    {
        add(std::bit_cast<std::int64_t>(value == 0 ? 0.0 : value)); // -0 is 0
    }
    template<typename Figures>
    void addFigures(const Figures& figures)
    {
        for (const auto figure : figures)
            addFigure(figure);
    }
    void addByte(unsigned char byte) { m_hash = (m_hash ^ byte) * 0x100000001B3U; }

    std::string text() const
    {
        std::string digits;
        for (int shift = 60; shift >= 0; shift -= 4)
            digits += "0123456789abcdef"[m_hash >> shift & 0xF];
        return digits;
    }

private:
    std::uint64_t m_hash = 0xCBF29CE484222325U;
};

void addSpeakerData(Fingerprint& print, const SpeakerData& data)
{
    for (const Directivity::Table* table :
         {&data.directivity.DirMagnitude, &data.directivity.DirPhase})
        for (const auto& row : *table)
            print.addFigures(row);
    for (const BandReference& level : data.BandLevel)
        print.addFigures(std::array{level.Relative, level.Continuous, level.Peak});
}

void addArea(Fingerprint& print, const SearchArea& area)
{
    print.addFigures(std::array{area.area.start.x, area.area.start.y, area.area.end.x,
                                area.area.end.y, area.area.angleDeg, area.area.lengthM});
    print.addFigures(std::array{area.target.startM, area.target.lengthM, area.target.slopeDbPerM,
                                area.target.levelDb, area.weight});
}

} // namespace

std::string searchFingerprint(const SearchTask& task, const CandidateSet& candidates, int area)
{
    Fingerprint print;
    ByteWriter array;
    task.array.GBWriteToFile(array);
    for (const std::byte byte : array.bytes())
        print.addByte(static_cast<unsigned char>(byte));
    print.add(area);
    addArea(print, {task.area, task.target, task.weight});
    print.add(static_cast<int>(task.otherAreas.size()));
    for (const SearchArea& other : task.otherAreas)
        addArea(print, other);
    print.addFigure(task.perDoublingDb);
    print.add(static_cast<int>(task.measure));
    print.add(task.points);
    print.add(task.choice.bands.from);
    print.add(task.choice.bands.to);
    print.add(static_cast<int>(task.choice.field));
    print.add(task.choice.aWeighted);
    print.addFigures(std::array{task.air.SpeedOfSound, task.air.WaveFactor});
    print.addFigures(task.air.Absorption);
    addSpeakerData(print, task.speakerData);
    const JointRange range = candidates.range();
    print.add(range.first);
    print.add(range.last);
    for (int joint = range.first; joint <= range.last; ++joint)
        for (const std::int16_t bound : candidates.boundsOf(joint))
            print.add(bound);
    print.add(candidates.freedom().pins);
    print.add(static_cast<int>(candidates.freedom().heightsM.size()));
    print.addFigures(candidates.freedom().heightsM);
    return print.text();
}

} // namespace orva
