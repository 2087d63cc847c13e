#!/usr/bin/python3
"""Draws the font of the status display and writes StillpostReadout.ttf beside this script.

The letters are made of straight bars with pointed ends, as on a segment display; where a real
display has no segment for a stroke of a letter, one is added, because the text must be read at a
glance. Needs fontTools (Debian: python3-fonttools); the result is kept with the sources, so that
building the program does not.
"""
import math
import os

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen

BAR = 98  # thickness of a bar
GAP = 7  # between a bar's tip and the corner that it points to
SIDE = 52  # free space on each side of a letter
WIDE = 410  # between the middles of the outer bars of a digit

# Heights of the bars' middles: d below the line, 0 on it, a and x middle and top of small
# letters, m and t middle and top of capitals, T and B where a cut corner begins and ends.
ROWS = {"d": -165, "0": 46, "a": 270, "x": 494, "m": 362, "t": 678, "T": 558, "B": 166}
# Left, centre, right; k where a cut corner begins, h for a narrower upper half.
COLUMNS = {"l": 0.0, "c": 0.5, "r": 1.0, "k": 0.7, "h": 0.84, "i": 0.3}

# character: (width in parts of WIDE, lines from corner to corner). Each pair of letters is a
# corner: column, row.
SHAPES = {
    "0": (1, "lm lt rt rm r0 l0 lm"),
    "1": (1, "rt rm r0"),
    "2": (1, "lt rt rm lm l0 r0"),
    "3": (1, "lt rt rm r0 l0", "lm rm"),
    "4": (1, "lt lm rm", "rt rm r0"),
    "5": (1, "rt lt lm rm r0 l0"),
    "6": (1, "rt lt lm l0 r0 rm lm"),
    "7": (1, "lm lt rt rm r0"),
    "8": (1, "lm lt rt rm r0 l0 lm rm"),
    "9": (1, "rm lm lt rt rm r0 l0"),
    "A": (1, "l0 lm lt rt rm r0", "lm rm"),
    "B": (1, "l0 lm lt ht hm lm", "hm rm r0 l0"),
    "C": (1, "rt lt lm l0 r0"),
    "D": (1, "lm lt kt rT rB k0 l0 lm"),
    "E": (0.92, "rt lt lm l0 r0", "lm hm"),
    "F": (0.92, "rt lt lm l0", "lm hm"),
    "G": (1, "rt lt lm l0 r0 rm cm"),
    "H": (1, "lt lm l0", "rt rm r0", "lm rm"),
    "I": (0, "lt lm l0"),
    "J": (0.9, "rt rm r0 l0 lB"),
    "K": (0.95, "lt lm l0", "rt lm r0"),
    "L": (0.85, "lt lm l0 r0"),
    "M": (1.3, "l0 lm lt cm rt rm r0"),
    "N": (1.1, "l0 lm lt r0 rm rt"),
    "O": (1, "lm lt rt rm r0 l0 lm"),
    "P": (1, "l0 lm lt rt rm lm"),
    "Q": (1, "lm lt rt rm r0 l0 lm", "cB r0"),
    "R": (1, "l0 lm lt rt rm lm", "im r0"),
    "S": (1, "rt lt lm rm r0 l0"),
    "T": (1.05, "lt ct rt", "ct cm c0"),
    "U": (1, "lt lm l0 r0 rm rt"),
    "V": (1.1, "lt c0 rt"),
    "W": (1.4, "lt lm l0 c0 r0 rm rt", "cm c0"),
    "X": (1.05, "lt cm r0", "rt cm l0"),
    "Y": (1.05, "lt cm rt", "cm c0"),
    "Z": (1, "lt rt l0 r0"),
    "a": (0.9, "lx rx ra r0 l0 la ra"),
    "b": (0.9, "lt lx l0 r0 rx lx"),
    "c": (0.85, "rx lx l0 r0"),
    "d": (0.9, "rt rx r0 l0 lx rx"),
    "e": (0.9, "r0 l0 la lx rx ra la"),
    "f": (0.6, "rt lt lx l0", "lx rx"),
    "g": (0.9, "r0 l0 lx rx r0 rd ld"),
    "h": (0.9, "lt lx l0", "lx rx r0"),
    "i": (0, "lx l0"),
    "j": (0.5, "rx r0 rd ld"),
    "k": (0.85, "lt la l0", "rx la r0"),
    "l": (0.4, "lt l0 r0"),
    "m": (1.4, "l0 lx cx rx r0", "cx c0"),
    "n": (0.9, "l0 lx rx r0"),
    "o": (0.9, "lx rx r0 l0 lx"),
    "p": (0.9, "ld l0 lx rx r0 l0"),
    "q": (0.9, "rd r0 rx lx l0 r0"),
    "r": (0.65, "l0 lx rx"),
    "s": (0.85, "rx lx la ra r0 l0"),
    "t": (0.62, "lt lx l0 r0", "lx rx"),
    "u": (0.9, "lx l0 r0 rx"),
    "v": (0.95, "lx c0 rx"),
    "w": (1.4, "lx l0 c0 r0 rx", "cx c0"),
    "x": (0.9, "lx r0", "rx l0"),
    "y": (0.9, "lx l0 r0", "rx r0 rd ld"),
    "z": (0.85, "lx rx l0 r0"),
    "ß": (0.95, "l0 lm lt ht hm", "cm rm r0 c0"),
    "æ": (1.5, "lx cx rx ra ca c0 r0", "cx ca la l0 c0"),
    "œ": (1.5, "c0 l0 lx cx rx ra ca c0 r0", "cx ca"),
    "ı": (0, "lx l0"),
    "-": (0.7, "lm rm"),
    "–": (1, "lm rm"),
    "_": (1, "ld rd"),
    "=": (0.9, "lx rx", "la ra"),
    "+": (0.9, "lm cm rm", "cx cm cB"),
    "*": (0.9, "lT rB", "rT lB", "lm rm"),
    "/": (0.9, "l0 rt"),
    "\\": (0.9, "lt r0"),
    "|": (0, "lt lm l0 ld"),
    "(": (0.4, "rt lT lB r0"),
    ")": (0.4, "lt rT rB l0"),
    "[": (0.4, "rt lt l0 r0"),
    "]": (0.4, "lt rt r0 l0"),
    "{": (0.6, "rt ct cm c0 r0", "lm cm"),
    "}": (0.6, "lt ct cm c0 l0", "rm cm"),
    "<": (0.7, "rT lm rB"),
    ">": (0.7, "lT rm lB"),
    "^": (0.7, "lT ct rT"),
    "~": (1, "la cm ra"),
    "?": (0.9, "lT lt rt rm cm cB"),
    "!": (0, "lt lB"),
    "'": (0, "lt lx"),
    "’": (0, "lt lx"),
    "‘": (0, "lt lx"),
    "\"": (0.45, "lt lx", "rt rx"),
    "“": (0.45, "lt lx", "rt rx"),
    "”": (0.45, "lt lx", "rt rx"),
    "„": (0.45, "lB ld", "rB rd"),
    "`": (0.4, "lt rx"),
    "´": (0.4, "lx rt"),
    "#": (1.1, "lx rx", "la ra", "it i0", "kt k0"),
    "$": (1, "rt lt lm rm r0 l0", "ct c0"),
    "%": (1.2, "l0 rt"),
    "&": (1.1, "r0 im lt kt km l0 r0"),
    "@": (1.2, "r0 l0 lm lt rt rm ra ca cm rm"),
    "°": (0.5, "lt rt rx lx lt"),
    "«": (0.9, "cx la c0", "rx ka r0"),
    "»": (0.9, "lx ia l0", "cx ra c0"),
    "€": (1, "rt lt lm l0 r0", "lm hm"),
    "©": (1, "rx lx l0 r0"),
}

# Dots as (column position in parts of the width, height of the middle).
DOTS = {
    ".": [(0, 46)], ",": [(0, 46)], ":": [(0, 130), (0, 420)], ";": [(0, 46), (0, 420)],
    "i": [(0, 656)], "j": [(1, 656)], "!": [(0, 46)], "?": [(0.5, 46)], "·": [(0, 300)],
    "…": [(0, 46), (0.5, 46), (1, 46)], "%": [(0.08, 620), (0.92, 100)],
}
WIDTHS = {"…": 1.1}
TAILS = {",", ";"}

ACCENTS = {  # over a small letter; capitals have them higher
    "dots": [((0.12, 0), None), ((0.88, 0), None)],
    "acute": [((0.3, -48), (0.78, 52))],
    "grave": [((0.22, 52), (0.7, -48))],
    "circumflex": [((0.05, -45), (0.5, 48)), ((0.5, 48), (0.95, -45))],
    "tilde": [((0.05, -30), (0.38, 34)), ((0.38, 34), (0.62, -34)), ((0.62, -34), (0.95, 30))],
    "ring": [((0.5, 0), None)],
    "cedilla": [],
}
ACCENTED = {
    "dots": "aäAÄoöOÖuüUÜeëEËıïIÏyÿ", "acute": "eéEÉaáAÁıíIÍoóOÓuúUÚ",
    "grave": "eèEÈaàAÀuùUÙıìoòOÒ", "circumflex": "eêEÊaâAÂıîIÎoôOÔuûUÛ", "tilde": "nñNÑaãoõ",
    "ring": "aåAÅ", "cedilla": "cçCÇ",
}


def bar(pen, start, end, thickness=BAR, pointed=True):
    """One bar; its long sides run along the line from start to end."""
    length = math.dist(start, end)
    along = ((end[0] - start[0]) / length, (end[1] - start[1]) / length)
    half = thickness / 2
    tip = GAP if pointed else 0
    shoulder = tip + half if pointed else 0

    def at(distance, side):
        return (round(start[0] + along[0] * distance + along[1] * side * half),
                round(start[1] + along[1] * distance - along[0] * side * half))

    outline = [at(tip, 0), at(shoulder, -1), at(length - shoulder, -1), at(length - tip, 0),
               at(length - shoulder, 1), at(shoulder, 1)]
    if not pointed:
        outline = [at(0, -1), at(length, -1), at(length, 1), at(0, 1)]
    pen.moveTo(outline[0])
    for point in outline[1:]:
        pen.lineTo(point)
    pen.closePath()


def dot(pen, x, y, size=BAR + 12):
    bar(pen, (x, y - size / 2), (x, y + size / 2), size, pointed=False)


def corner(name, width):
    return (SIDE + BAR / 2 + COLUMNS[name[0]] * width, ROWS[name[1]])


def draw(character, pen, mark=None, mark_height=0):
    """Draws the character and returns its advance width."""
    parts, *lines = SHAPES.get(character, (WIDTHS.get(character, 0),))
    width = parts * WIDE
    for line in lines:
        names = line.split()
        for first, second in zip(names, names[1:]):
            bar(pen, corner(first, width), corner(second, width))
    left = SIDE + BAR / 2
    for column, height in DOTS.get(character, []):
        dot(pen, left + column * width, height)
    if character in TAILS:
        bar(pen, (left + 12, 10), (left - 40, -110), 66, pointed=False)
    # Above a bare stem a mark needs some width of its own.
    span = max(width, 260)
    start = left + (width - span) / 2
    for first, second in ACCENTS.get(mark, []):
        if second is None:
            dot(pen, start + first[0] * span, mark_height, BAR)
        else:
            bar(pen, (start + first[0] * span, mark_height + first[1]),
                (start + second[0] * span, mark_height + second[1]), 74, pointed=False)
    if mark == "cedilla":
        bar(pen, (left + width * 0.55, 0), (left + width * 0.4, -170), 74, pointed=False)
    return round(width + BAR + 2 * SIDE)


def main():
    glyphs, metrics, cmap = {}, {}, {}

    def add(name, advance, pen):
        glyphs[name] = pen.glyph()
        metrics[name] = (advance, 0)

    def add_character(character, source=None, mark=None):
        pen = TTGlyphPen(None)
        source = source or character
        height = 872 if source.isupper() else 668
        name = "uni%04X" % ord(character)
        add(name, draw(source, pen, mark, height), pen)
        cmap[ord(character)] = name

    pen = TTGlyphPen(None)
    for first, second in zip(("lt", "rt", "r0", "l0"), ("rt", "r0", "l0", "lt")):
        bar(pen, corner(first, WIDE), corner(second, WIDE), 40)
    add(".notdef", WIDE + BAR + 2 * SIDE, pen)
    add("space", 300, TTGlyphPen(None))
    cmap[ord(" ")] = cmap[0xA0] = "space"
    for character in sorted(set(SHAPES) | set(DOTS)):
        add_character(character)
    for mark, pairs in ACCENTED.items():
        for source, character in zip(pairs[::2], pairs[1::2]):
            add_character(character, source, mark)
    pen = TTGlyphPen(None)
    advance = draw("C", pen)
    for row in (300, 424):
        bar(pen, (SIDE - 40, row), (SIDE + 300, row), 62, pointed=False)
    add("uni20AC", advance, pen)
    for name, glyph in glyphs.items():
        glyph.recalcBounds(None)
        metrics[name] = (metrics[name][0], getattr(glyph, "xMin", 0))

    builder = FontBuilder(1000, isTTF=True)
    builder.setupGlyphOrder(list(glyphs))
    builder.setupCharacterMap(cmap)
    builder.setupGlyf(glyphs)
    builder.setupHorizontalMetrics(metrics)
    builder.setupHorizontalHeader(ascent=930, descent=-240)
    builder.setupNameTable({"familyName": "Stillpost Readout", "styleName": "Regular",
                            "uniqueFontIdentifier": "StillpostReadout-1",
                            "fullName": "Stillpost Readout", "psName": "StillpostReadout",
                            "version": "Version 1.000"})
    builder.setupOS2(fsType=0, sTypoAscender=930, sTypoDescender=-240, sTypoLineGap=0, usWinAscent=980,
                     usWinDescent=260, sxHeight=540, sCapHeight=724)
    builder.setupPost()
    # A fixed date: the same script gives the same file.
    builder.updateHead(created=3800000000, modified=3800000000)
    builder.font.recalcTimestamp = False
    builder.save(os.path.join(os.path.dirname(os.path.abspath(__file__)), "StillpostReadout.ttf"))


if __name__ == "__main__":
    main()
