#include "engine/kernel_tables.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace orva {

namespace {

using Complex = std::complex<double>;

constexpr double kNepersPerDb = std::numbers::ln10 / 20;
constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kRadians = std::numbers::pi / 180;

constexpr double kLargestDb = 150;
constexpr double kLargestDegrees = 20 * 360;

void store(float* row, std::size_t band, Complex value)
{
    row[BandRow::re(band)] = static_cast<float>(value.real());
    row[BandRow::im(band)] = static_cast<float>(value.imag());
}

/// `count` rows of exp(i * exponent per band), multiplied up; rounding stays below 1e-11.
BandRows geometricRows(std::size_t count, const PerBand<Complex>& exponent)
{
    BandRows rows = allocateRows(count);
    for (std::size_t band = 0; band < kBands; ++band) {
        const Complex factor = std::exp(exponent[band]);
        Complex value = 1;
        for (std::size_t i = 0; i < count; ++i, value *= factor)
            store(rows.get() + i * BandRow::kFloats, band, value);
    }
    return rows;
}

/// ln(amplitude) + j phase of the box at a step and the change to the next one.
struct StepExponent {
    Complex start;
    Complex change;
};

StepExponent exponentAt(const Directivity& data, std::size_t band, std::size_t step)
{
    const auto& magnitude = data.DirMagnitude[band];
    const auto& phase = data.DirPhase[band];
    const std::size_t next = (step + 1) % kAngleSteps;
    const auto [p0, p1] = shortWay(phase[step], phase[next]);
    return {Complex(-magnitude[step] * kNepersPerDb, -p0 * kRadians),
            Complex((static_cast<double>(magnitude[step]) - magnitude[next]) * kNepersPerDb,
                    (p0 - p1) * kRadians)};
}

bool withinLimits(const Directivity& data)
{
    const auto within = [](const Directivity::Table& table, double limit) {
        return std::all_of(table.begin(), table.end(), [limit](const auto& row) {
            return std::all_of(row.begin(), row.end(),
                               [limit](float value) { return std::abs(value) <= limit; });
        });
    };
    return within(data.DirMagnitude, kLargestDb) && within(data.DirPhase, kLargestDegrees);
}

} // namespace

BandRows allocateRows(std::size_t count)
{
    BandRows rows = hwy::AllocateAligned<float>(count * BandRow::kFloats);
    if (!rows)
        throw std::bad_alloc();
    std::fill_n(rows.get(), count * BandRow::kFloats, 0.0F);
    return rows;
}

std::shared_ptr<const DirectivityTable> DirectivityTable::make(const Directivity& data,
                                                               const TablePrecision& precision)
{
    if (!withinLimits(data))
        return nullptr;
    auto table = std::make_shared<DirectivityTable>();
    double largestChange = 0;
    for (std::size_t band = 0; band < kBands; ++band) {
        Steps& steps = table->steps[band];
        for (std::size_t step = 0; step < kAngleSteps; ++step) {
            const StepExponent exponent = exponentAt(data, band, step);
            steps.gain[step] = static_cast<float>(exponent.start.real());
            steps.gainChange[step] = static_cast<float>(exponent.change.real());
            steps.turns[step] =
                static_cast<float>(std::remainder(exponent.start.imag() / kTurn, 1));
            steps.turnsChange[step] = static_cast<float>(exponent.change.imag() / kTurn);
            largestChange = std::max(largestChange, std::abs(exponent.change));
        }
    }
    table->nodes =
        std::max(1, static_cast<int>(std::ceil(largestChange / precision.changePerNode)));
    if (table->nodes > precision.mostNodes)
        return nullptr;

    const auto nodes = static_cast<std::size_t>(table->nodes);
    table->rows = allocateRows(kAngleSteps * nodes + 1);
    for (std::size_t band = 0; band < kBands; ++band)
        for (std::size_t step = 0; step < kAngleSteps; ++step) {
            const StepExponent exponent = exponentAt(data, band, step);
            const Complex factor = std::exp(exponent.change / static_cast<double>(nodes));
            Complex value = std::exp(exponent.start);
            for (std::size_t i = 0; i <= nodes; ++i, value *= factor)
                store(table->rows.get() + (step * nodes + i) * BandRow::kFloats, band, value);
        }
    return table;
}

std::shared_ptr<const RadialTable> RadialTable::make(const Air& air,
                                                     const TablePrecision& precision)
{
    const BandConstants& constants = bandConstants();
    auto table = std::make_shared<RadialTable>();
    PerBand<Complex> perMetre;
    for (std::size_t band = 0; band < kBands; ++band) {
        const double waveNumber = static_cast<double>(air.WaveFactor) * constants.BandCentre[band];
        perMetre[band] = Complex(air.Absorption[band] * kNepersPerDb, waveNumber);
        table->waveNumber[BandRow::re(band)] = static_cast<float>(waveNumber);
        table->turnsPerMetre[band] = waveNumber / kTurn;
        table->gainPerMetre[band] = static_cast<float>(perMetre[band].real());
    }
    const auto scaled = [&](double metres) {
        PerBand<Complex> exponent;
        std::transform(perMetre.begin(), perMetre.end(), exponent.begin(),
                       [metres](Complex per) { return per * metres; });
        return exponent;
    };
    table->coarse =
        geometricRows(static_cast<std::size_t>(kReachM / kCoarseM) + 1, scaled(kCoarseM));
    const auto fineRows = static_cast<std::size_t>(precision.fineRows);
    table->fineM = kCoarseM / precision.fineRows;
    table->fine = geometricRows(fineRows + 1, scaled(table->fineM));
    // What is left after both tables, evenly spread over ±fineM / 2, is followed to first order
    // only; this takes out the mean growth of 1 + jx.
    for (std::size_t band = 0; band < kBands; ++band) {
        const double largest = perMetre[band].imag() * table->fineM / 2;
        const auto shrink = static_cast<float>(1 - largest * largest / 6);
        for (std::size_t i = 0; i <= fineRows; ++i) {
            float* row = table->fine.get() + i * BandRow::kFloats;
            row[BandRow::re(band)] *= shrink;
            row[BandRow::im(band)] *= shrink;
        }
    }
    return table;
}

} // namespace orva
