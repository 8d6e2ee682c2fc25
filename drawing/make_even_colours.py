#!/usr/bin/env python3
"""Makes the scale of colours of evenColours().

    drawing/make_even_colours.py > drawing/even_colours.cpp

The scale is a curve through OKLab from a dark blue over violet, red, orange and yellow to a pale
yellow. Its lightness rises all the way: lightness is what everybody sees, whatever their sight. A
sketch of the curve is improved by a search that makes it long in the eyes of those who see least
of it, and the colours are then spaced so that these see the same difference everywhere. The same
file comes out every time, after some ten seconds.
"""
import itertools
import math
import random

COUNT = 256
# So many colours lie between two levels whose difference should be told: 3 dB of 80.
STRETCH = 9
# Lightness of both ends, about 4 and 97 in CIELAB.
DARKEST, LIGHTEST = 0.165, 0.973
# Chroma and hue (degrees) of the curve's control points, whose lightnesses are equally far apart,
# and how far the search may move them; the ends stay, so that the last colour is no white.
SKETCH = ((0.05, 275), (0.10, 280), (0.15, 300), (0.17, 330), (0.18, 360), (0.18, 390),
          (0.16, 420), (0.15, 450), (0.05, 465))
CHROMA_ROOM, HUE_ROOM = 0.02, 12
ROUNDS = 4000

# What sights make of linear RGB. Protan and deutan: G. M. Machado, M. M. Oliveira, L. A. F.
# Fernandes, "A Physiologically-based Model for Simulation of Color Vision Deficiency", IEEE
# Transactions on Visualization and Computer Graphics 15 (6), 2009; severity 1.0. Tritan, for which
# that model is no more than an approximation: H. Brettel, F. Vienot, J. D. Mollon, "Computerized
# simulation of color appearance for dichromats", Journal of the Optical Society of America A 14
# (10), 1997; one matrix for each side of a plane through the greys, the side of red first.
SIGHTS = {
    "normal": (((1, 0, 0), (0, 1, 0), (0, 0, 1)),),
    "protan": (((0.152286, 1.052583, -0.204868), (0.114503, 0.786281, 0.099216),
                (-0.003882, -0.048116, 1.051998)),),
    "deutan": (((0.367322, 0.860646, -0.227968), (0.280085, 0.672501, 0.047413),
                (-0.011820, 0.042940, 0.968881)),),
    "tritan": (((1.01277, 0.13548, -0.14826), (-0.01243, 0.86812, 0.14431),
                (0.07589, 0.80500, 0.11911)),
               ((0.93678, 0.18979, -0.12657), (0.06154, 0.81526, 0.12320),
                (-0.37562, 1.12767, 0.24796))),
}
SIDE_OF_RED = (0.03901, -0.02788, -0.01113)


def times(matrix, vector):
    x, y, z = vector
    return [row[0] * x + row[1] * y + row[2] * z for row in matrix]


def simulated(sight, rgb):
    red_side = times((SIDE_OF_RED,), rgb)[0] >= 0
    return clipped(times(sight[0 if red_side else -1], rgb))


def linear_of_oklab(lab):
    roots = times(((1, 0.3963377774, 0.2158037573), (1, -0.1055613458, -0.0638541728),
                   (1, -0.0894841775, -1.2914855480)), lab)
    return times(((4.0767416621, -3.3077115913, 0.2309699292),
                  (-1.2684380046, 2.6097574011, -0.3413193965),
                  (-0.0041960863, -0.7034186147, 1.7076147010)), [root ** 3 for root in roots])


def oklab_of_linear(rgb):
    cones = times(((0.4122214708, 0.5363325363, 0.0514459929),
                   (0.2119034982, 0.6806995451, 0.1073969566),
                   (0.0883024619, 0.2817188376, 0.6299787005)), rgb)
    return times(((0.2104542553, 0.7936177850, -0.0040720468),
                  (1.9779984951, -2.4285922050, 0.4505937099),
                  (0.0259040371, 0.7827717662, -0.8086757660)), [math.cbrt(c) for c in cones])


def encoded(part):
    return 12.92 * part if part <= 0.0031308 else 1.055 * part ** (1 / 2.4) - 0.055


def decoded(part):
    return part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4


def cielab_of_linear(rgb):
    """For the white of sRGB, D65."""
    xyz = times(((0.4124564, 0.3575761, 0.1804375), (0.2126729, 0.7151522, 0.0721750),
                 (0.0193339, 0.1191920, 0.9503041)), rgb)
    x, y, z = (math.cbrt(t) if t > 216 / 24389 else t * 841 / 108 + 4 / 29
               for t in (xyz[0] / 0.95047, xyz[1], xyz[2] / 1.08883))
    return 116 * y - 16, 500 * (x - y), 200 * (y - z)


def clipped(rgb):
    return [min(max(part, 0), 1) for part in rgb]


def seen(rgb):
    """What a colour in linear RGB is to each kind of sight, in CIELAB."""
    return [cielab_of_linear(simulated(sight, rgb)) for sight in SIGHTS.values()]


def difference(one, other):
    """CIEDE2000 of two colours in CIELAB."""
    (l1, a1, b1), (l2, a2, b2) = one, other
    c7 = ((math.hypot(a1, b1) + math.hypot(a2, b2)) / 2) ** 7
    stretch = 1.5 - 0.5 * math.sqrt(c7 / (c7 + 25 ** 7))
    a1, a2 = a1 * stretch, a2 * stretch
    c1, c2 = math.hypot(a1, b1), math.hypot(a2, b2)
    h1 = math.degrees(math.atan2(b1, a1)) % 360 if c1 else 0
    h2 = math.degrees(math.atan2(b2, a2)) % 360 if c2 else 0
    turn = (h2 - h1 + 180) % 360 - 180 if c1 * c2 else 0
    hue = math.radians(h1 + turn / 2) if c1 * c2 else math.radians(h1 + h2)
    lightness, chroma = (l1 + l2) / 2 - 50, (c1 + c2) / 2
    t = (1 - 0.17 * math.cos(hue - math.radians(30)) + 0.24 * math.cos(2 * hue)
         + 0.32 * math.cos(3 * hue + math.radians(6)) - 0.20 * math.cos(4 * hue - math.radians(63)))
    dl = (l2 - l1) / (1 + 0.015 * lightness ** 2 / math.sqrt(20 + lightness ** 2))
    dc = (c2 - c1) / (1 + 0.045 * chroma)
    dh = 2 * math.sqrt(c1 * c2) * math.sin(math.radians(turn / 2)) / (1 + 0.015 * chroma * t)
    around = math.exp(-(((math.degrees(hue) % 360 - 275) / 25) ** 2))
    c7 = chroma ** 7
    twist = -2 * math.sqrt(c7 / (c7 + 25 ** 7)) * math.sin(math.radians(60 * around))
    return math.sqrt(dl * dl + dc * dc + dh * dh + twist * dc * dh)


def curve(control, places):
    """The colours in OKLab at places from 0 to 1 along the B-spline of the control points, which
    begins at the first and ends at the last of them."""
    points = [(DARKEST + (LIGHTEST - DARKEST) * i / (len(control) - 1),
               c * math.cos(math.radians(h)), c * math.sin(math.radians(h)))
              for i, (c, h) in enumerate(control)]
    before = [2 * p - q for p, q in zip(points[0], points[1])]
    after = [2 * p - q for p, q in zip(points[-1], points[-2])]
    points = [before] + points + [after]
    colours = []
    for place in places:
        first = min(int(place * (len(control) - 1)), len(control) - 2)
        t = place * (len(control) - 1) - first
        weights = ((1 - t) ** 3 / 6, (3 * t ** 3 - 6 * t * t + 4) / 6,
                   (-3 * t ** 3 + 3 * t * t + 3 * t + 1) / 6, t ** 3 / 6)
        colours.append([sum(w * p[k] for w, p in zip(weights, points[first:])) for k in range(3)])
    return colours


def views(colours):
    """What colours in OKLab are to each kind of sight, in CIELAB."""
    return [seen(clipped(linear_of_oklab(colour))) for colour in colours]


def worth(control):
    """How long the curve is in the eyes of who sees least of each step; less where others see much
    more. None for a curve that leaves sRGB."""
    colours = curve(control, [i / 64 for i in range(65)])
    if any(not 0 <= part <= 1 for colour in colours for part in linear_of_oklab(colour)):
        return None
    looks = views(colours)
    steps = [list(map(difference, one, other)) for one, other in zip(looks, looks[1:])]
    return sum(min(step) - 0.1 * max(step) ** 2 / min(step) for step in steps)


def improved(sketch):
    """The control points after small moves at random, of two points at a time."""
    chance = random.Random(1)

    def moved(value, middle, room, size):
        return min(max(value + chance.gauss(0, room * size), middle - room), middle + room)

    best, most = sketch, worth(sketch)
    for i in range(ROUNDS):
        size = 1 - i / ROUNDS
        tried = list(best)
        for k in chance.sample(range(1, len(sketch) - 1), 2):
            tried[k] = (moved(best[k][0], sketch[k][0], CHROMA_ROOM, size),
                        moved(best[k][1], sketch[k][1], HUE_ROOM, size))
        value = worth(tried)
        if value is not None and value > most:
            best, most = tried, value
    return best


def places_of(steps):
    sums = [0] + list(itertools.accumulate(steps))
    return [place / sums[-1] for place in sums]


def spaced(control):
    """The scale's colours in OKLab. Who sees least of a stretch of the scale sees as much of it as
    of any other stretch: where it is less, the steps are widened, and so on until nothing moves."""
    steps = [1] * (COUNT - 1)
    for _ in range(200):
        looks = views(curve(control, places_of(steps)))
        least = [min(map(difference, one, other)) for one, other in zip(looks, looks[STRETCH:])]
        for k in range(COUNT - 1):
            around = least[max(0, k - STRETCH + 1):k + 1]
            steps[k] *= (sum(around) / len(around)) ** -0.5
    return curve(control, places_of(steps))


def rounded(colours):
    """The colours in whole parts of 255: of those around each the nearest that is lighter than the
    one before."""
    result, lightness = [], -1
    for colour in colours:
        parts = [255 * encoded(part) for part in clipped(linear_of_oklab(colour))]
        around = itertools.product(*((math.floor(p), min(math.floor(p) + 1, 255)) for p in parts))
        lab_of = {rgb: oklab_of_linear([decoded(part / 255) for part in rgb]) for rgb in around}
        # Lightness counts most: its steps should not be of very different sizes.
        best = min((rgb for rgb, lab in lab_of.items() if lab[0] > lightness),
                   key=lambda rgb: (math.dist(lab_of[rgb], colour)
                                    + abs(lab_of[rgb][0] - colour[0])))
        lightness = lab_of[best][0]
        result.append(best)
    return result


def source(colours):
    texts = [f"0x{blue:02X}{green:02X}{red:02X}" for red, green, blue in colours]
    rows = [", ".join(texts[i:i + 9]) for i in range(0, len(texts), 9)]
    return """// Made by make_even_colours.py.
#include "drawing/even_colours.h"

namespace orva {

const std::array<std::uint32_t, %d>& evenColours()
{
    static constexpr std::array<std::uint32_t, %d> kColours = {
        %s};
    return kColours;
}

} // namespace orva""" % (COUNT, COUNT, ",\n        ".join(rows))


if __name__ == "__main__":
    print(source(rounded(spaced(improved(SKETCH)))))
