// Writes system.dat and systemsm.dat into a folder: modelled directivity of the mid/high box of
// each system. README.md in this folder says what the model is made of.
#include "engine/acoustics.h"
#include "lang/number_text.h"

#include <cmath>
#include <complex>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <string>

namespace {

using namespace orva;
using Complex = std::complex<double>;
constexpr Complex kJ = {0, 1};
constexpr double kSpeedOfSound = 344; // m/s
constexpr double kDegree = std::numbers::pi / 180;
constexpr int kFrequenciesPerBand = 9;

/// Metres in the box's own section, measured from its acoustic source point; y down.
struct Box {
    const char* file;
    const char* name;
    double waveguideHeight;
    double waveguideY;   // its middle
    double wavefrontBow; // how far the ends of its wavefront lag behind the middle
    double coneRadius;
    double coneX; // ahead of the waveguide's acoustic centre
    double coneY;
    double crossoverHz;
    double edge;       // size of the front that sets where it begins to shade
    double rearDetour; // longer way of sound that goes round the enclosure to the back
    double rearLossDb; // at the back, high frequencies
};

constexpr Box kBoxes[] = {
    {.file = "system.dat",
     .name = "standard system, mid/high box",
     .waveguideHeight = 0.24,
     .waveguideY = 0,
     .wavefrontBow = 0.004,
     .coneRadius = 0.085,
     .coneX = -0.03,
     .coneY = 0.02,
     .crossoverHz = 1100,
     .edge = 0.13,
     .rearDetour = 0.26,
     .rearLossDb = 30},
    {.file = "systemsm.dat",
     .name = "compact system, mid/high box",
     .waveguideHeight = 0.2,
     .waveguideY = -0.014,
     .wavefrontBow = 0.005,
     .coneRadius = 0.065,
     .coneX = -0.02,
     .coneY = 0.003,
     .crossoverHz = 1500,
     .edge = 0.1,
     .rearDetour = 0.2,
     .rearLossDb = 27},
};

/// A radiator at (x, y) reaches the far field in direction `angle` (0 ahead, 90° down) earlier by
/// its way towards it.
Complex placed(double k, double x, double y, double angle)
{
    return std::exp(kJ * k * (x * std::cos(angle) + y * std::sin(angle)));
}

/// Line source of the waveguide's height with a bowed wavefront and softened ends.
Complex waveguide(const Box& box, double k, double angle)
{
    constexpr int kElements = 96;
    Complex sum = 0;
    double weights = 0;
    for (int i = 0; i < kElements; ++i) {
        const double u = (2 * i + 1.0) / kElements - 1; // -1 top, 1 bottom
        const double fromEnd = (1 - std::abs(u)) / 0.3;
        const double weight = fromEnd < 1 ? 0.5 - 0.5 * std::cos(std::numbers::pi * fromEnd) : 1;
        const double y = box.waveguideY + u * box.waveguideHeight / 2;
        sum += weight * placed(k, 0, y, angle) * std::exp(-kJ * k * box.wavefrontBow * u * u);
        weights += weight;
    }
    return sum / weights;
}

/// Circular piston: 2 J1(z) / z.
Complex cone(const Box& box, double k, double angle)
{
    const double z = k * box.coneRadius * std::abs(std::sin(angle));
    const double piston = z < 1e-6 ? 1 : 2 * std::cyl_bessel_j(1.0, z) / z;
    return piston * placed(k, box.coneX, box.coneY, angle);
}

/// Shading by the enclosure and the detour round it, growing smoothly from the front to the back.
Complex enclosure(const Box& box, double k, double angle)
{
    const double towardsBack = (1 - std::cos(angle)) / 2;
    const double size = k * box.edge * k * box.edge;
    const double lossDb = box.rearLossDb * size / (1 + size) * towardsBack;
    return std::pow(10, -lossDb / 20) * std::exp(-kJ * k * box.rearDetour * towardsBack);
}

Complex response(const Box& box, double f, double angle)
{
    const double k = 2 * std::numbers::pi * f / kSpeedOfSound;
    const double slope = std::pow(f / box.crossoverHz, 4);
    return (waveguide(box, k, angle) * slope + cone(box, k, angle)) / (1 + slope) *
           enclosure(box, k, angle);
}

/// Response against that on axis, averaged over the band.
Complex bandResponse(const Box& box, double centre, double angle)
{
    Complex sum = 0;
    for (int i = 0; i < kFrequenciesPerBand; ++i) {
        const double octaves = ((i + 0.5) / kFrequenciesPerBand - 0.5) / 3;
        const double f = centre * std::exp2(octaves);
        sum += response(box, f, angle) / response(box, f, 0);
    }
    return sum / static_cast<double>(kFrequenciesPerBand);
}

std::string attenuation(Complex value)
{
    return fixedText(-20 * std::log10(std::abs(value)), 2);
}

std::string phase(Complex value)
{
    const double degrees = std::arg(value) / kDegree;
    const std::string text = fixedText(degrees < 0 ? degrees + 360 : degrees, 2);
    return text == "360.00" ? "0.00" : text;
}

/// A line of 37 values, 0° to 180° off axis; `side` 1 below, -1 above the axis.
void writeAngles(std::ostream& out, const Box& box, double centre, int side,
                 std::string (*figure)(Complex))
{
    out << (side < 0 ? "\"90\xB0\"" : "\"270\xB0\"");
    for (int i = 0; i <= 36; ++i)
        out << ',' << figure(bandResponse(box, centre, side * 5 * i * kDegree));
    out << "\r\n";
}

void writeBox(std::ostream& out, const Box& box)
{
    out << "\"Loudspeaker data\",\"" << box.name << "\"\r\n"
        << "\"Figures\",\"modelled, not measured\"\r\n"
        << "\"Above the crossover\",\"line source " << box.waveguideHeight << " m high\"\r\n"
        << "\"Below the crossover\",\"cone pistons of " << box.coneRadius << " m radius\"\r\n"
        << "\"Crossover\",\"" << box.crossoverHz << " Hz\"\r\n"
        << "\"Enclosure\",\"up to " << box.rearLossDb << " dB and " << box.rearDetour
        << " m detour towards the back\"\r\n"
        << "\"Plane\",\"vertical; 90 degrees is above, 270 degrees below the axis\"\r\n"
        << "\"Values\",\"0 to 180 degrees off axis in steps of 5 degrees\"\r\n"
        << "\"Attenuation\",\"dB against the axis, mean of the one-third-octave band\"\r\n"
        << "\"Phase\",\"degrees against the axis, e^(+j omega t), at the acoustic source "
           "point\"\r\n";
    for (std::size_t b = 0; b < kBands; ++b) {
        const double centre = bandConstants().BandCentre[b];
        out << "\"Frequency\"," << kNominalHz[b] << "\r\n";
        writeAngles(out, box, centre, -1, attenuation);
        writeAngles(out, box, centre, 1, attenuation);
        out << "\"PhaseData\"\r\n";
        writeAngles(out, box, centre, -1, phase);
        writeAngles(out, box, centre, 1, phase);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make_speaker_data FOLDER\n";
        return 2;
    }
    for (const Box& box : kBoxes) {
        const std::filesystem::path path = std::filesystem::path(argv[1]) / box.file;
        std::ofstream out(path, std::ios::binary);
        writeBox(out, box);
        if (!out.flush()) {
            std::cerr << "make_speaker_data: " << path.string() << " cannot be written\n";
            return 1;
        }
    }
    return 0;
}
