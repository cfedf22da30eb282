#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Generate Tavlo's artwork as SVG files in src/screenBase/images/.

Everything here is deterministic (fixed seeds, fixed number formatting), so
running the script again gives byte-identical files and diffs stay readable.

The SVGs are drawn with QtSvg, which only knows the SVG Tiny 1.2 subset: the
script sticks to basic shapes, paths, linear/radial gradients and the opacity
attributes. No filters, masks, CSS or text.
"""

import math
import os
import random

HERE = os.path.dirname(os.path.abspath(__file__))
OUT_DIR = os.path.normpath(os.path.join(HERE, "..", "..", "src", "screenBase", "images"))


# --------------------------------------------------------------------------
# Small helpers
# --------------------------------------------------------------------------

def num(value, digits=1):
    """Format a number compactly and always the same way (no '-0', no '1.0')."""
    text = f"{value:.{digits}f}"
    if "." in text:
        text = text.rstrip("0").rstrip(".")
    if text in ("-0", ""):
        text = "0"
    return text


def write_svg(name, body, view_box):
    content = (
        '<?xml version="1.0" encoding="UTF-8"?>\n'
        f'<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" '
        f'viewBox="{view_box}">\n'
        + body
        + "</svg>\n"
    )
    path = os.path.join(OUT_DIR, name)
    # newline="\n" keeps the bytes identical whatever platform runs this.
    with open(path, "w", encoding="utf-8", newline="\n") as handle:
        handle.write(content)
    return path


def radial_gradient(gid, color, stops, unit_circle=False):
    """A radial gradient of one colour; stops are (offset, opacity) pairs.

    unit_circle: the gradient fills the circle of radius 1 at the origin in
    the shape's own coordinates, to be placed with a transform.
    """
    if unit_circle:
        head = f'<radialGradient id="{gid}" gradientUnits="userSpaceOnUse" cx="0" cy="0" r="1">\n'
    else:
        head = f'<radialGradient id="{gid}" cx="0.5" cy="0.5" r="0.5">\n'
    lines = [head]
    for offset, opacity in stops:
        lines.append(
            f'<stop offset="{num(offset, 3)}" stop-color="{color}" '
            f'stop-opacity="{num(opacity, 3)}"/>\n'
        )
    lines.append("</radialGradient>\n")
    return "".join(lines)


# --------------------------------------------------------------------------
# Backgrounds
# --------------------------------------------------------------------------

BG_WIDTH = 1170
BG_HEIGHT = 2532

# Soft falloff for the glows, (1 - t^2)^2: it flattens out towards the edge,
# so no rim shows where the ellipse ends, even before the blur.
GLOW_PROFILE = tuple((i / 10, (1 - (i / 10) ** 2) ** 2) for i in range(11))

# Each theme: base gradient (top to bottom), large glows as
# (colour, peak opacity, cx, cy, rx, ry, rotation), a band of smaller wisps
# that gives the sky some structure, and the seed for the stars.
BACKGROUNDS = {
    "space": {
        "base": ("#060812", "#0b1226", "#04050b"),
        "glows": [
            ("#25407a", 0.40, 780, 820, 820, 600, -30),
            ("#2b2358", 0.30, 300, 1850, 700, 900, 20),
        ],
        "band": ("#3a5590", 0.10, (-100, 2300), (1300, 300)),
        "seed": 1001,
    },
    "space0": {  # violet
        "base": ("#08020f", "#140526", "#050109"),
        "glows": [
            ("#9600ff", 0.36, 830, 700, 900, 620, -25),
            ("#c24dff", 0.18, 230, 1850, 680, 920, 15),
            ("#4a10c8", 0.22, 650, 2350, 800, 420, 0),
        ],
        "band": ("#b060ff", 0.09, (-150, 1900), (1320, 500)),
        "seed": 1010,
    },
    "space1": {  # green
        "base": ("#010803", "#03190a", "#010402"),
        "glows": [
            ("#00c800", 0.24, 260, 1150, 760, 1000, 10),
            ("#00a070", 0.20, 930, 2150, 820, 560, -20),
            ("#48d040", 0.10, 950, 350, 520, 420, 0),
        ],
        "band": ("#40e060", 0.07, (1250, 2450), (-80, 150)),
        "seed": 1020,
    },
    "space2": {  # orange
        "base": ("#0d0401", "#1d0b03", "#060201"),
        "glows": [
            ("#f44e00", 0.30, 900, 520, 820, 620, 30),
            ("#ff8a2a", 0.13, 180, 1550, 600, 760, -10),
            ("#a82000", 0.24, 720, 2300, 900, 520, 0),
        ],
        "band": ("#ff7a30", 0.07, (-120, 700), (1300, 2100)),
        "seed": 1030,
    },
    "space3": {  # blue
        "base": ("#01050f", "#041631", "#010308"),
        "glows": [
            ("#008cff", 0.30, 250, 780, 760, 880, -15),
            ("#45b4ff", 0.14, 960, 1750, 620, 820, 25),
            ("#0040b0", 0.24, 520, 2380, 880, 460, 0),
        ],
        "band": ("#50a8ff", 0.08, (1280, 900), (-120, 2000)),
        "seed": 1040,
    },
    "space4": {  # deep red
        "base": ("#0b0101", "#1b0305", "#050000"),
        "glows": [
            ("#8c0100", 0.55, 720, 1250, 900, 1100, 0),
            ("#d0203a", 0.16, 180, 480, 620, 520, 20),
            ("#5a0010", 0.40, 300, 2250, 700, 520, -10),
        ],
        "band": ("#e03040", 0.07, (-100, 1200), (1300, 2500)),
        "seed": 1050,
    },
}

STAR_TINTS = ("#ffffff", "#ffffff", "#ffffff", "#ffffff", "#dbe6ff", "#fff0dc")


def background_svg(theme):
    rng = random.Random(theme["seed"])
    defs = []
    shapes = []

    top, middle, bottom = theme["base"]
    defs.append(
        '<linearGradient id="base" x1="0" y1="0" x2="0" y2="1">\n'
        f'<stop offset="0" stop-color="{top}"/>\n'
        f'<stop offset="0.55" stop-color="{middle}"/>\n'
        f'<stop offset="1" stop-color="{bottom}"/>\n'
        "</linearGradient>\n"
    )
    shapes.append(f'<rect x="0" y="0" width="{BG_WIDTH}" height="{BG_HEIGHT}" fill="url(#base)"/>\n')

    # Glows are unit circles stretched and turned into place by a transform,
    # with the gradient in the circle's own coordinates. Bounding-box gradients
    # on rotated shapes come out wrong in some renderers (librsvg), this way
    # every renderer agrees with QtSvg.
    def glow(gid, cx, cy, rx, ry, rotation):
        return (
            f'<circle r="1" transform="translate({num(cx)} {num(cy)}) rotate({num(rotation)}) '
            f'scale({num(rx)} {num(ry)})" fill="url(#{gid})"/>\n'
        )

    for index, (color, peak, cx, cy, rx, ry, rotation) in enumerate(theme["glows"]):
        gid = f"glow{index}"
        defs.append(radial_gradient(gid, color, [(o, peak * a) for o, a in GLOW_PROFILE], True))
        shapes.append(glow(gid, cx, cy, rx, ry, rotation))

    # A diagonal band of overlapping wisps, like a faint Milky Way.
    band_color, band_peak, (x0, y0), (x1, y1) = theme["band"]
    defs.append(radial_gradient("wisp", band_color, [(o, band_peak * a) for o, a in GLOW_PROFILE],
                                True))
    angle = math.degrees(math.atan2(y1 - y0, x1 - x0))
    length = math.hypot(x1 - x0, y1 - y0)
    nx, ny = -(y1 - y0) / length, (x1 - x0) / length
    for step in range(14):
        t = (step + rng.random() * 0.6) / 14
        offset = (rng.random() - 0.5) * 260
        cx = x0 + (x1 - x0) * t + nx * offset
        cy = y0 + (y1 - y0) * t + ny * offset
        rx = 260 + rng.random() * 260
        ry = 90 + rng.random() * 110
        tilt = angle + (rng.random() - 0.5) * 24
        shapes.append(glow("wisp", cx, cy, rx, ry, tilt))

    # Halo for the brighter stars.
    defs.append(radial_gradient("halo", "#ffffff", [(0, 0.55), (0.2, 0.28), (0.5, 0.08), (1, 0)]))

    def star_position():
        # Some stars crowd along the band, the rest are spread evenly.
        if rng.random() < 0.35:
            t = rng.random()
            spread = (rng.random() + rng.random() + rng.random() - 1.5) * 240
            return (x0 + (x1 - x0) * t + nx * spread, y0 + (y1 - y0) * t + ny * spread)
        return (rng.random() * BG_WIDTH, rng.random() * BG_HEIGHT)

    stars = []
    while len(stars) < 340:
        x, y = star_position()
        if not (0 <= x <= BG_WIDTH and 0 <= y <= BG_HEIGHT):
            continue
        # Many faint stars, few bright ones.
        size = rng.random() ** 2.6
        radius = 0.9 + size * 2.6
        opacity = 0.22 + 0.6 * rng.random() ** 0.8
        tint = STAR_TINTS[int(rng.random() * len(STAR_TINTS))]
        stars.append(
            f'<circle cx="{num(x)}" cy="{num(y)}" r="{num(radius)}" fill="{tint}" '
            f'fill-opacity="{num(opacity, 2)}"/>\n'
        )
    shapes.extend(stars)

    for _ in range(14):
        x = 40 + rng.random() * (BG_WIDTH - 80)
        y = 40 + rng.random() * (BG_HEIGHT - 80)
        halo = 16 + rng.random() * 20
        core = 2.6 + rng.random() * 1.8
        shapes.append(
            f'<circle cx="{num(x)}" cy="{num(y)}" r="{num(halo)}" fill="url(#halo)"/>\n'
            f'<circle cx="{num(x)}" cy="{num(y)}" r="{num(core)}" fill="#ffffff" '
            f'fill-opacity="0.95"/>\n'
        )

    body = "<defs>\n" + "".join(defs) + "</defs>\n" + "".join(shapes)
    return body


# --------------------------------------------------------------------------
# Constellations
# --------------------------------------------------------------------------

# Main stars of each zodiac constellation: key, designation (and proper name),
# right ascension (h m s), declination (d m s) and visual magnitude.
# Positions are J2000.0 catalogue positions as given in the Yale Bright Star
# Catalogue (5th revised ed.) / Hipparcos (SIMBAD), rounded to the second;
# magnitudes are the usual catalogue V values (combined light for close
# doubles such as gamma Ari, gamma Leo, alpha Psc and zeta Aqr).
# Line figures follow the common modern stick figures (IAU / Sky & Telescope
# style), slightly simplified.
CONSTELLATIONS = {
    "aries": {
        "stars": [
            ("alf", "alpha Ari, Hamal", "02 07 10.4", "+23 27 45", 2.00),
            ("bet", "beta Ari, Sheratan", "01 54 38.4", "+20 48 29", 2.64),
            ("gam", "gamma Ari, Mesarthim", "01 53 31.8", "+19 17 38", 3.86),
            ("41", "41 Ari, Bharani", "02 49 59.0", "+27 15 38", 3.63),
            ("39", "39 Ari, Lilii Borea", "02 47 54.5", "+29 14 50", 4.51),
            ("35", "35 Ari", "02 43 27.1", "+27 42 26", 4.66),
            ("eps", "epsilon Ari", "02 59 12.7", "+21 20 25", 4.63),
            ("del", "delta Ari, Botein", "03 11 37.8", "+19 43 36", 4.35),
            ("zet", "zeta Ari", "03 15 00.7", "+21 02 40", 4.87),
        ],
        "lines": [
            ("gam", "bet"), ("bet", "alf"), ("alf", "41"), ("41", "39"), ("39", "35"),
            ("alf", "eps"), ("eps", "del"), ("del", "zet"),
        ],
    },
    "taurus": {
        "stars": [
            ("alf", "alpha Tau, Aldebaran", "04 35 55.2", "+16 30 33", 0.85),
            ("bet", "beta Tau, Elnath", "05 26 17.5", "+28 36 27", 1.65),
            ("zet", "zeta Tau, Tianguan", "05 37 38.7", "+21 08 33", 3.00),
            ("the2", "theta2 Tau", "04 28 39.7", "+15 52 15", 3.40),
            ("gam", "gamma Tau, Prima Hyadum", "04 19 47.6", "+15 37 39", 3.65),
            ("del1", "delta1 Tau, Secunda Hyadum", "04 22 56.1", "+17 32 33", 3.76),
            ("eps", "epsilon Tau, Ain", "04 28 36.9", "+19 10 49", 3.53),
            ("tau", "tau Tau", "04 42 14.7", "+22 57 25", 4.27),
            ("lam", "lambda Tau", "04 00 40.8", "+12 29 25", 3.47),
            ("xi", "xi Tau", "03 27 10.2", "+09 43 58", 3.74),
            ("omi", "omicron Tau", "03 24 48.8", "+09 01 44", 3.60),
            ("eta", "eta Tau, Alcyone", "03 47 29.1", "+24 06 18", 2.87),
            ("27", "27 Tau, Atlas", "03 49 09.7", "+24 03 12", 3.62),
            ("17", "17 Tau, Electra", "03 44 52.5", "+24 06 48", 3.70),
            ("20", "20 Tau, Maia", "03 45 49.6", "+24 22 04", 3.87),
            ("23", "23 Tau, Merope", "03 46 19.6", "+23 56 54", 4.18),
            ("19", "19 Tau, Taygeta", "03 45 12.5", "+24 28 02", 4.30),
        ],
        "lines": [
            ("zet", "alf"), ("alf", "the2"), ("the2", "gam"), ("gam", "del1"),
            ("del1", "eps"), ("eps", "tau"), ("tau", "bet"),
            ("gam", "lam"), ("lam", "xi"), ("xi", "omi"),
        ],
        # The Pleiades sit within a degree of each other; full-size dots would
        # merge into one blob, small ones read as the cluster.
        "cluster": ("eta", "27", "17", "20", "23", "19"),
    },
    "gemini": {
        "stars": [
            ("alf", "alpha Gem, Castor", "07 34 36.0", "+31 53 18", 1.58),
            ("bet", "beta Gem, Pollux", "07 45 18.9", "+28 01 34", 1.14),
            ("gam", "gamma Gem, Alhena", "06 37 42.7", "+16 23 57", 1.92),
            ("mu", "mu Gem, Tejat", "06 22 57.6", "+22 30 49", 2.87),
            ("eps", "epsilon Gem, Mebsuta", "06 43 55.9", "+25 07 52", 3.06),
            ("eta", "eta Gem, Propus", "06 14 52.7", "+22 30 24", 3.28),
            ("xi", "xi Gem, Alzirr", "06 45 17.4", "+12 53 44", 3.35),
            ("del", "delta Gem, Wasat", "07 20 07.4", "+21 58 56", 3.53),
            ("kap", "kappa Gem", "07 44 26.9", "+24 23 53", 3.57),
            ("lam", "lambda Gem", "07 18 05.6", "+16 32 25", 3.58),
            ("the", "theta Gem", "06 52 47.3", "+33 57 40", 3.60),
            ("zet", "zeta Gem, Mekbuda", "07 04 06.5", "+20 34 13", 3.79),
            ("iot", "iota Gem", "07 25 43.6", "+27 47 53", 3.79),
            ("ups", "upsilon Gem", "07 35 55.3", "+26 53 45", 4.06),
            ("nu", "nu Gem", "06 28 57.8", "+20 12 44", 4.15),
            ("tau", "tau Gem", "07 11 08.4", "+30 14 43", 4.41),
        ],
        "lines": [
            ("alf", "tau"), ("tau", "the"), ("tau", "eps"), ("eps", "mu"), ("mu", "eta"),
            ("eps", "nu"), ("tau", "iot"), ("iot", "ups"), ("ups", "bet"), ("ups", "kap"),
            ("ups", "del"), ("del", "zet"), ("zet", "gam"), ("del", "lam"), ("lam", "xi"),
        ],
    },
    "cancer": {
        "stars": [
            ("bet", "beta Cnc, Altarf", "08 16 30.9", "+09 11 08", 3.52),
            ("del", "delta Cnc, Asellus Australis", "08 44 41.1", "+18 09 15", 3.94),
            ("iot", "iota Cnc", "08 46 41.8", "+28 45 36", 4.02),
            ("alf", "alpha Cnc, Acubens", "08 58 29.2", "+11 51 28", 4.25),
            ("gam", "gamma Cnc, Asellus Borealis", "08 43 17.1", "+21 28 07", 4.66),
            ("zet", "zeta Cnc, Tegmine", "08 12 12.7", "+17 38 53", 4.67),
            ("eta", "eta Cnc", "08 32 42.5", "+20 26 28", 5.33),
            ("the", "theta Cnc", "08 31 35.7", "+18 05 40", 5.35),
        ],
        "lines": [
            ("bet", "del"), ("del", "alf"), ("del", "gam"), ("gam", "iot"),
        ],
    },
    "leo": {
        "stars": [
            ("alf", "alpha Leo, Regulus", "10 08 22.3", "+11 58 02", 1.35),
            ("gam", "gamma Leo, Algieba", "10 19 58.4", "+19 50 29", 2.01),
            ("bet", "beta Leo, Denebola", "11 49 03.6", "+14 34 19", 2.14),
            ("del", "delta Leo, Zosma", "11 14 06.5", "+20 31 25", 2.56),
            ("eps", "epsilon Leo", "09 45 51.1", "+23 46 27", 2.98),
            ("the", "theta Leo, Chertan", "11 14 14.4", "+15 25 46", 3.33),
            ("zet", "zeta Leo, Adhafera", "10 16 41.4", "+23 25 02", 3.44),
            ("eta", "eta Leo", "10 07 19.9", "+16 45 45", 3.52),
            ("omi", "omicron Leo, Subra", "09 41 09.0", "+09 53 32", 3.52),
            ("rho", "rho Leo", "10 32 48.7", "+09 18 24", 3.85),
            ("mu", "mu Leo, Rasalas", "09 52 45.8", "+26 00 25", 3.88),
            ("iot", "iota Leo", "11 23 55.5", "+10 31 45", 3.94),
            ("sig", "sigma Leo", "11 21 08.2", "+06 01 46", 4.05),
            ("lam", "lambda Leo, Alterf", "09 31 43.2", "+22 58 05", 4.31),
            ("kap", "kappa Leo", "09 24 39.3", "+26 10 57", 4.46),
        ],
        "lines": [
            ("alf", "eta"), ("eta", "gam"), ("gam", "zet"), ("zet", "mu"), ("mu", "eps"),
            ("eps", "lam"), ("lam", "kap"),
            ("gam", "del"), ("del", "bet"), ("bet", "the"), ("the", "alf"), ("del", "the"),
            ("the", "iot"), ("iot", "sig"), ("alf", "omi"), ("alf", "rho"),
        ],
    },
    "virgo": {
        "stars": [
            ("alf", "alpha Vir, Spica", "13 25 11.6", "-11 09 41", 0.97),
            ("gam", "gamma Vir, Porrima", "12 41 39.6", "-01 26 58", 2.74),
            ("eps", "epsilon Vir, Vindemiatrix", "13 02 10.6", "+10 57 33", 2.83),
            ("zet", "zeta Vir, Heze", "13 34 41.6", "-00 35 45", 3.38),
            ("del", "delta Vir, Minelauva", "12 55 36.2", "+03 23 51", 3.38),
            ("bet", "beta Vir, Zavijava", "11 50 41.7", "+01 45 53", 3.61),
            ("109", "109 Vir", "14 46 14.9", "+01 53 34", 3.72),
            ("mu", "mu Vir", "14 43 03.6", "-05 39 30", 3.88),
            ("eta", "eta Vir, Zaniah", "12 19 54.4", "-00 40 00", 3.89),
            ("nu", "nu Vir", "11 45 51.6", "+06 31 46", 4.04),
            ("iot", "iota Vir, Syrma", "14 16 00.9", "-06 00 02", 4.08),
            ("omi", "omicron Vir", "12 05 12.5", "+08 43 59", 4.12),
            ("kap", "kappa Vir", "14 12 53.7", "-10 16 25", 4.19),
            ("tau", "tau Vir", "14 01 38.8", "+01 32 40", 4.26),
            ("the", "theta Vir", "13 09 57.0", "-05 32 20", 4.38),
        ],
        "lines": [
            ("omi", "nu"), ("nu", "bet"), ("bet", "eta"), ("eta", "gam"), ("gam", "del"),
            ("del", "eps"), ("del", "zet"), ("gam", "the"), ("the", "alf"), ("alf", "zet"),
            ("zet", "tau"), ("tau", "109"), ("alf", "kap"), ("kap", "iot"), ("iot", "mu"),
        ],
    },
    "libra": {
        "stars": [
            ("bet", "beta Lib, Zubeneschamali", "15 17 00.4", "-09 22 59", 2.61),
            ("alf", "alpha2 Lib, Zubenelgenubi", "14 50 52.7", "-16 02 30", 2.75),
            ("sig", "sigma Lib, Brachium", "15 04 04.2", "-25 16 55", 3.29),
            ("ups", "upsilon Lib", "15 37 01.5", "-28 08 06", 3.58),
            ("tau", "tau Lib", "15 38 39.4", "-29 46 40", 3.66),
            ("gam", "gamma Lib, Zubenelakrab", "15 35 31.6", "-14 47 22", 3.91),
            ("the", "theta Lib", "15 53 49.5", "-16 43 46", 4.15),
            ("iot", "iota Lib", "15 12 13.3", "-19 47 30", 4.54),
            ("del", "delta Lib", "15 00 58.3", "-08 31 08", 4.92),
        ],
        "lines": [
            ("sig", "alf"), ("alf", "bet"), ("bet", "gam"), ("gam", "alf"), ("gam", "the"),
            ("gam", "ups"), ("ups", "tau"),
        ],
    },
    "scorpio": {
        "stars": [
            ("alf", "alpha Sco, Antares", "16 29 24.5", "-26 25 55", 1.06),
            ("lam", "lambda Sco, Shaula", "17 33 36.5", "-37 06 14", 1.62),
            ("the", "theta Sco, Sargas", "17 37 19.1", "-42 59 52", 1.86),
            ("del", "delta Sco, Dschubba", "16 00 20.0", "-22 37 18", 2.29),
            ("eps", "epsilon Sco, Larawag", "16 50 09.8", "-34 17 36", 2.29),
            ("kap", "kappa Sco", "17 42 29.3", "-39 01 48", 2.39),
            ("bet", "beta1 Sco, Acrab", "16 05 26.2", "-19 48 19", 2.62),
            ("ups", "upsilon Sco, Lesath", "17 30 45.8", "-37 17 45", 2.70),
            ("tau", "tau Sco", "16 35 53.0", "-28 12 58", 2.82),
            ("pi", "pi Sco, Fang", "15 58 51.1", "-26 06 51", 2.89),
            ("sig", "sigma Sco, Alniyat", "16 21 11.3", "-25 35 34", 2.89),
            ("iot", "iota1 Sco", "17 47 35.1", "-40 07 37", 3.03),
            ("mu", "mu1 Sco", "16 51 52.2", "-38 02 51", 3.04),
            ("eta", "eta Sco", "17 12 09.2", "-43 14 21", 3.33),
            ("zet", "zeta2 Sco", "16 54 35.0", "-42 21 41", 3.62),
            ("rho", "rho Sco", "15 56 53.1", "-29 12 51", 3.87),
        ],
        "lines": [
            ("bet", "del"), ("del", "pi"), ("pi", "rho"), ("del", "sig"), ("sig", "alf"),
            ("alf", "tau"), ("tau", "eps"), ("eps", "mu"), ("mu", "zet"), ("zet", "eta"),
            ("eta", "the"), ("the", "iot"), ("iot", "kap"), ("kap", "lam"), ("lam", "ups"),
        ],
    },
    "sagittauris": {
        "stars": [
            ("eps", "epsilon Sgr, Kaus Australis", "18 24 10.3", "-34 23 05", 1.85),
            ("sig", "sigma Sgr, Nunki", "18 55 15.9", "-26 17 48", 2.05),
            ("zet", "zeta Sgr, Ascella", "19 02 36.7", "-29 52 49", 2.60),
            ("del", "delta Sgr, Kaus Media", "18 20 59.6", "-29 49 41", 2.70),
            ("lam", "lambda Sgr, Kaus Borealis", "18 27 58.2", "-25 25 18", 2.81),
            ("gam", "gamma2 Sgr, Alnasl", "18 05 48.5", "-30 25 27", 2.99),
            ("eta", "eta Sgr", "18 17 37.6", "-36 45 42", 3.11),
            ("phi", "phi Sgr", "18 45 39.4", "-26 59 27", 3.17),
            ("tau", "tau Sgr", "19 06 56.4", "-27 40 14", 3.32),
            ("mu", "mu Sgr", "18 13 45.8", "-21 03 32", 3.86),
            ("pi", "pi Sgr, Albaldah", "19 09 45.8", "-21 01 25", 2.89),
            ("xi", "xi2 Sgr", "18 57 43.8", "-21 06 24", 3.51),
            ("omi", "omicron Sgr", "19 04 41.0", "-21 44 30", 3.77),
        ],
        "lines": [
            # The Teapot: spout, body, lid and handle.
            ("gam", "del"), ("gam", "eps"), ("del", "eps"), ("eps", "zet"), ("zet", "phi"),
            ("phi", "del"), ("del", "lam"), ("lam", "phi"), ("phi", "sig"), ("sig", "tau"),
            ("tau", "zet"), ("eps", "eta"), ("lam", "mu"),
            ("sig", "xi"), ("xi", "omi"), ("omi", "pi"),
        ],
    },
    "capricorn": {
        "stars": [
            ("del", "delta Cap, Deneb Algedi", "21 47 02.4", "-16 07 38", 2.85),
            ("bet", "beta1 Cap, Dabih", "20 21 00.7", "-14 46 53", 3.05),
            ("alf", "alpha2 Cap, Algedi", "20 18 03.3", "-12 32 41", 3.57),
            ("gam", "gamma Cap, Nashira", "21 40 05.5", "-16 39 44", 3.67),
            ("zet", "zeta Cap", "21 26 40.0", "-22 24 41", 3.74),
            ("the", "theta Cap", "21 05 56.8", "-17 13 58", 4.07),
            ("ome", "omega Cap", "20 51 49.3", "-26 55 09", 4.12),
            ("psi", "psi Cap", "20 46 05.7", "-25 16 15", 4.14),
            ("iot", "iota Cap", "21 22 14.8", "-16 50 04", 4.28),
            ("24", "24 Cap", "21 07 07.7", "-25 00 21", 4.50),
            ("eps", "epsilon Cap", "21 37 04.8", "-19 27 58", 4.51),
        ],
        "lines": [
            ("alf", "bet"), ("bet", "psi"), ("psi", "ome"), ("ome", "24"), ("24", "zet"),
            ("zet", "eps"), ("eps", "del"), ("del", "gam"), ("gam", "iot"), ("iot", "the"),
            ("the", "alf"),
        ],
    },
    "aquarius": {
        "stars": [
            ("bet", "beta Aqr, Sadalsuud", "21 31 33.5", "-05 34 16", 2.87),
            ("alf", "alpha Aqr, Sadalmelik", "22 05 47.0", "-00 19 11", 2.94),
            ("del", "delta Aqr, Skat", "22 54 39.0", "-15 49 15", 3.27),
            ("zet", "zeta Aqr", "22 28 49.9", "-00 01 13", 3.65),
            ("88", "88 Aqr", "23 09 26.8", "-21 10 21", 3.66),
            ("lam", "lambda Aqr", "22 52 36.9", "-07 34 47", 3.73),
            ("eps", "epsilon Aqr, Albali", "20 47 40.6", "-09 29 45", 3.77),
            ("gam", "gamma Aqr, Sadachbia", "22 21 39.4", "-01 23 14", 3.84),
            ("98", "98 Aqr", "23 22 58.2", "-20 06 02", 3.97),
            ("tau", "tau2 Aqr", "22 49 35.5", "-13 35 33", 4.01),
            ("eta", "eta Aqr", "22 35 21.4", "-00 07 03", 4.02),
            ("the", "theta Aqr, Ancha", "22 16 50.0", "-07 47 00", 4.16),
            ("psi", "psi1 Aqr", "23 15 53.3", "-09 05 16", 4.21),
            ("phi", "phi Aqr", "23 14 19.4", "-06 02 56", 4.22),
            ("iot", "iota Aqr", "22 06 26.2", "-13 52 11", 4.27),
            ("pi", "pi Aqr", "22 25 16.6", "+01 22 39", 4.66),
            ("mu", "mu Aqr", "20 52 39.2", "-08 58 58", 4.73),
        ],
        "lines": [
            ("eps", "mu"), ("mu", "bet"), ("bet", "alf"), ("bet", "iot"), ("alf", "gam"),
            ("gam", "zet"), ("zet", "eta"), ("zet", "pi"), ("alf", "the"), ("the", "lam"),
            ("lam", "phi"), ("phi", "psi"), ("psi", "98"), ("lam", "tau"), ("tau", "del"),
            ("del", "88"),
        ],
    },
    "pisces": {
        "stars": [
            ("eta", "eta Psc, Alpherg", "01 31 29.0", "+15 20 45", 3.62),
            ("gam", "gamma Psc", "23 17 09.9", "+03 16 56", 3.69),
            ("alf", "alpha Psc, Alrescha", "02 02 02.8", "+02 45 49", 3.82),
            ("ome", "omega Psc", "23 59 18.7", "+06 51 48", 4.03),
            ("iot", "iota Psc", "23 39 57.0", "+05 37 35", 4.13),
            ("omi", "omicron Psc, Torcular", "01 45 23.6", "+09 09 28", 4.26),
            ("the", "theta Psc", "23 27 58.1", "+06 22 44", 4.28),
            ("eps", "epsilon Psc", "01 02 56.6", "+07 53 24", 4.28),
            ("del", "delta Psc", "00 48 40.9", "+07 35 06", 4.43),
            ("nu", "nu Psc", "01 41 25.9", "+05 29 15", 4.44),
            ("lam", "lambda Psc", "23 42 02.8", "+01 46 48", 4.50),
            ("tau", "tau Psc", "01 11 39.6", "+30 05 23", 4.51),
            ("xi", "xi Psc", "01 53 33.4", "+03 11 15", 4.62),
            ("phi", "phi Psc", "01 13 44.9", "+24 35 01", 4.65),
            ("chi", "chi Psc", "01 11 27.2", "+21 02 05", 4.66),
            ("ups", "upsilon Psc", "01 19 28.0", "+27 15 51", 4.76),
            ("mu", "mu Psc", "01 30 11.1", "+06 08 38", 4.84),
            ("zet", "zeta Psc, Revati", "01 13 43.9", "+07 34 32", 5.21),
            ("kap", "kappa Psc", "23 26 55.9", "+01 15 20", 4.94),
        ],
        "lines": [
            # The Circlet, the western fish.
            ("gam", "kap"), ("kap", "lam"), ("lam", "iot"), ("iot", "the"), ("the", "gam"),
            # The cord to Alrescha and up to the northern fish.
            ("iot", "ome"), ("ome", "del"), ("del", "eps"), ("eps", "zet"), ("zet", "mu"),
            ("mu", "nu"), ("nu", "xi"), ("xi", "alf"), ("alf", "omi"), ("omi", "eta"),
            ("eta", "chi"), ("chi", "phi"), ("phi", "ups"), ("ups", "tau"), ("tau", "phi"),
        ],
    },
}

STAR_BOX = 1000
STAR_MARGIN = 90


def parse_ra(text):
    h, m, s = (float(part) for part in text.split())
    return math.radians((h + m / 60 + s / 3600) * 15)


def parse_dec(text):
    sign = -1 if text.strip().startswith("-") else 1
    d, m, s = (abs(float(part)) for part in text.split())
    return math.radians(sign * (d + m / 60 + s / 3600))


def gnomonic(ra, dec, ra0, dec0):
    """Standard coordinates on the plane tangent at (ra0, dec0); xi grows eastwards."""
    cos_c = math.sin(dec0) * math.sin(dec) + math.cos(dec0) * math.cos(dec) * math.cos(ra - ra0)
    xi = math.cos(dec) * math.sin(ra - ra0) / cos_c
    eta = (math.cos(dec0) * math.sin(dec)
           - math.sin(dec0) * math.cos(dec) * math.cos(ra - ra0)) / cos_c
    return xi, eta


def star_radius(magnitude, in_cluster=False):
    # Brighter (lower magnitude) stars get bigger dots; never vanish entirely.
    radius = max(4.0, 3.5 + (5.4 - magnitude) * 2.5)
    return radius * 0.45 if in_cluster else radius


def constellation_svg(data):
    cluster = set(data.get("cluster", ()))
    stars = {}
    vectors = []
    for key, _name, ra_text, dec_text, magnitude in data["stars"]:
        ra, dec = parse_ra(ra_text), parse_dec(dec_text)
        stars[key] = (ra, dec, magnitude)
        vectors.append((math.cos(dec) * math.cos(ra), math.cos(dec) * math.sin(ra), math.sin(dec)))
    # Centre the projection on the mean direction of the stars (works across
    # RA 0h, which Pisces straddles).
    sx = sum(v[0] for v in vectors)
    sy = sum(v[1] for v in vectors)
    sz = sum(v[2] for v in vectors)
    ra0 = math.atan2(sy, sx)
    dec0 = math.atan2(sz, math.hypot(sx, sy))

    # East to the left and north up, as the sky looks from the ground.
    plane = {}
    for key, (ra, dec, magnitude) in stars.items():
        xi, eta = gnomonic(ra, dec, ra0, dec0)
        plane[key] = (-xi, -eta)
    xs = [p[0] for p in plane.values()]
    ys = [p[1] for p in plane.values()]
    span = max(max(xs) - min(xs), max(ys) - min(ys))
    scale = (STAR_BOX - 2 * STAR_MARGIN) / span
    mid_x = (max(xs) + min(xs)) / 2
    mid_y = (max(ys) + min(ys)) / 2
    points = {
        key: (STAR_BOX / 2 + (x - mid_x) * scale, STAR_BOX / 2 + (y - mid_y) * scale)
        for key, (x, y) in plane.items()
    }

    out = ["<defs>\n",
           radial_gradient("halo", "#ffffff", [(0, 0.5), (0.3, 0.22), (0.6, 0.07), (1, 0)]),
           "</defs>\n"]

    # Lines stop short of the stars so each dot stands free.
    out.append('<g stroke="#ffffff" stroke-opacity="0.6" stroke-width="5" '
               'stroke-linecap="round" fill="none">\n')
    for a, b in data["lines"]:
        (x1, y1), (x2, y2) = points[a], points[b]
        length = math.hypot(x2 - x1, y2 - y1)
        # Short links (the Water Jar, the Hyades) get narrower gaps so they
        # still show.
        clearance = min(7.0, max(2.0, length * 0.08))
        gap_a = star_radius(stars[a][2], a in cluster) + clearance
        gap_b = star_radius(stars[b][2], b in cluster) + clearance
        if length <= gap_a + gap_b + 3:
            continue
        ux, uy = (x2 - x1) / length, (y2 - y1) / length
        out.append(
            f'<line x1="{num(x1 + ux * gap_a)}" y1="{num(y1 + uy * gap_a)}" '
            f'x2="{num(x2 - ux * gap_b)}" y2="{num(y2 - uy * gap_b)}"/>\n'
        )
    out.append("</g>\n")

    # Faint stars first so bright halos sit on top.
    for key, _name, _ra, _dec, magnitude in sorted(data["stars"], key=lambda s: -s[4]):
        x, y = points[key]
        radius = star_radius(magnitude, key in cluster)
        if magnitude < 2.5 and key not in cluster:
            out.append(f'<circle cx="{num(x)}" cy="{num(y)}" r="{num(radius * 3.4)}" '
                       f'fill="url(#halo)"/>\n')
        opacity = 1.0 if magnitude < 3.0 else 0.9 if magnitude < 4.0 else 0.8
        out.append(f'<circle cx="{num(x)}" cy="{num(y)}" r="{num(radius)}" fill="#ffffff" '
                   f'fill-opacity="{num(opacity, 2)}"/>\n')
    return "".join(out)


# --------------------------------------------------------------------------
# Sign symbols
# --------------------------------------------------------------------------

# Hand-drawn glyphs in a 100x100 box, kept inside roughly 15..85 so they sit
# centred in the round badge of the favorites list.
SYMBOLS = {
    # Two horns curling out of one stem.
    "aries": [
        "M50 84 L50 42 C50 25 41 16 30 16 C21 16 15 23 15 31 C15 39 21 45 28 45",
        "M50 42 C50 25 59 16 70 16 C79 16 85 23 85 31 C85 39 79 45 72 45",
    ],
    # A round head with a crescent of horns.
    "taurus": [
        "circle 50 62 21",
        "M16 17 C21 34 33 41 50 41 C67 41 79 34 84 17",
    ],
    # Two pillars with curved lintel and base.
    "gemini": [
        "M19 18 Q50 32 81 18",
        "M19 82 Q50 68 81 82",
        "M38 25 L38 75",
        "M62 25 L62 75",
    ],
    # Two claws: ring top left with a tail sweeping right, mirrored below.
    "cancer": [
        "circle 31 39 10",
        "M28 29 C44 17 70 16 85 31",
        "circle 69 61 10",
        "M72 71 C56 83 30 84 15 69",
    ],
    # The mane: a small ring, a loop over the top, a tail flicking out.
    "leo": [
        "circle 28 64 12",
        "M38 57 C32 44 29 17 53 16 C76 15 80 35 70 51 C62 64 58 80 71 83 C79 85 84 79 85 73",
    ],
    # An m whose last leg loops back over itself.
    "virgo": [
        "M14 19 C19 19 22 23 22 29 L22 71",
        "M22 33 C22 24 27 19 32 19 C38 19 42 24 42 31 L42 71",
        "M42 33 C42 24 47 19 52 19 C58 19 62 24 62 31 L62 71",
        "M62 47 C68 35 85 35 84 50 C83 64 70 75 52 83",
    ],
    # The balance: a beam rising over its pivot, above the ground line.
    "libra": [
        "M15 80 L85 80",
        "M15 63 L33 63 C24 55 24 31 50 29 C76 31 76 55 67 63 L85 63",
    ],
    # An m ending in the scorpion's raised sting.
    "scorpio": [
        "M13 22 C18 22 21 26 21 32 L21 76",
        "M21 36 C21 27 26 22 31 22 C37 22 40 27 40 34 L40 76",
        "M40 36 C40 27 45 22 50 22 C56 22 59 27 59 34 L59 70 C59 79 64 83 71 79 L86 66",
        "M74 64 L86 66 L84 78",
    ],
    # The archer's arrow with its cross-bar.
    "sagittauris": [
        "M17 83 L83 17",
        "M55 17 L83 17 L83 45",
        "M30 48 L52 70",
    ],
    # The sea-goat: a pointed V, then a body ending in a curled fish tail.
    "capricorn": [
        "M13 27 C18 21 24 23 27 31 L37 74 L49 33 C53 20 66 19 67 33 L67 64 "
        "C67 77 76 83 82 77 C88 70 83 59 75 60 C67 61 61 72 58 84",
    ],
    # Two rippling waves.
    "aquarius": [
        "M14 44 L26 33 L38 44 L50 33 L62 44 L74 33 L86 44",
        "M14 67 L26 56 L38 67 L50 56 L62 67 L74 56 L86 67",
    ],
    # Two fish back to back, tied by a cord.
    "pisces": [
        "M24 15 C40 31 40 69 24 85",
        "M76 15 C60 31 60 69 76 85",
        "M22 50 L78 50",
    ],
}


def symbol_svg(strokes):
    out = ['<g fill="none" stroke="#ffffff" stroke-width="7" '
           'stroke-linecap="round" stroke-linejoin="round">\n']
    for stroke in strokes:
        if stroke.startswith("circle"):
            _, cx, cy, r = stroke.split()
            out.append(f'<circle cx="{cx}" cy="{cy}" r="{r}"/>\n')
        else:
            out.append(f'<path d="{stroke}"/>\n')
    out.append("</g>\n")
    return "".join(out)


# --------------------------------------------------------------------------

def main():
    os.makedirs(OUT_DIR, exist_ok=True)
    written = []
    for name, theme in BACKGROUNDS.items():
        written.append(write_svg(f"{name}.svg", background_svg(theme),
                                 f"0 0 {BG_WIDTH} {BG_HEIGHT}"))
    for name, data in CONSTELLATIONS.items():
        written.append(write_svg(f"{name}Stars.svg", constellation_svg(data),
                                 f"0 0 {STAR_BOX} {STAR_BOX}"))
    for name, strokes in SYMBOLS.items():
        written.append(write_svg(f"{name}.svg", symbol_svg(strokes), "0 0 100 100"))
    for path in written:
        print(os.path.relpath(path, os.getcwd()))


if __name__ == "__main__":
    main()
