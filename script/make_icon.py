#!/usr/bin/env python3
"""Draws the application's icon: a menu bar with a divider, and the icons left of it fading.

usage: make_icon.py FILE.icns | FILE.svg | SIDE FILE.png
"""

import pathlib
import struct
import sys
import zlib

# Sides in pixels, and what the container calls such pictures: for screens of scale 1, and half as large for scale 2.
PICTURES = {16: [b"icp4"], 32: [b"icp5", b"ic11"], 64: [b"ic12"], 128: [b"ic07"], 256: [b"ic08", b"ic13"],
            512: [b"ic09", b"ic14"], 1024: [b"ic10"]}

TOP, BOTTOM = (74, 128, 200), (30, 52, 100)
BAR, INK, SIGNAL = (244, 247, 252), (30, 52, 100), (240, 92, 66)

# In a square of side 1: left, top, right, bottom; corner radius; colour, none for that of the ground; opacity. Each is
# painted over those before it.
LARGE = [
    ((0.1, 0.1, 0.9, 0.9), 0.18, None, 1),
    ((0.17, 0.395, 0.83, 0.605), 0.06, BAR, 1),
    ((0.215, 0.45, 0.315, 0.55), 0.032, INK, 0.16),
    ((0.35, 0.45, 0.45, 0.55), 0.032, INK, 0.36),
    ((0.4875, 0.335, 0.5125, 0.665), 0.0125, SIGNAL, 1),
    ((0.55, 0.45, 0.65, 0.55), 0.032, INK, 1),
    ((0.685, 0.45, 0.785, 0.55), 0.032, INK, 1),
]
# Less, larger, and on the pixels.
SMALL = [
    ((1 / 16, 1 / 16, 15 / 16, 15 / 16), 0.2, None, 1),
    ((2 / 16, 5 / 16, 14 / 16, 11 / 16), 0.09, BAR, 1),
    ((3.5 / 16, 6.5 / 16, 6.5 / 16, 9.5 / 16), 0.05, INK, 0.28),
    ((7.5 / 16, 3 / 16, 8.5 / 16, 13 / 16), 0.03, SIGNAL, 1),
    ((9.5 / 16, 6.5 / 16, 12.5 / 16, 9.5 / 16), 0.05, INK, 1),
]

TINY = [
    ((1 / 16, 1 / 16, 15 / 16, 15 / 16), 0.2, None, 1),
    ((2 / 16, 4 / 16, 14 / 16, 11 / 16), 0.09, BAR, 1),
    ((3 / 16, 6 / 16, 6 / 16, 9 / 16), 0.02, INK, 0.3),
    ((7 / 16, 2 / 16, 9 / 16, 13 / 16), 0, SIGNAL, 1),
    ((10 / 16, 6 / 16, 13 / 16, 9 / 16), 0.02, INK, 1),
]


def coverage(x, y, box, radius, pixel):
    """How much of a pixel lies in a rounded rectangle."""
    left, top, right, bottom = box
    dx = max(left + radius - x, 0, x - (right - radius))
    dy = max(top + radius - y, 0, y - (bottom - radius))
    return min(max((radius - (dx * dx + dy * dy) ** 0.5) / pixel + 0.5, 0), 1)


def paint(row, column, over, color):
    red, green, blue, alpha = row[column]
    row[column] = tuple(over * new + (1 - over) * old for new, old in zip(color, (red, green, blue))) + (
        over + (1 - over) * alpha,)


def painted_row(y, side, shapes):
    ground = tuple(top + (bottom - top) * y for top, bottom in zip(TOP, BOTTOM))
    row = [ground + (0.0,)] * side
    for box, radius, color, opacity in shapes:
        color = color or ground
        first = max(int(box[0] * side) - 1, 0)
        last = min(int(box[2] * side) + 2, side)
        # Between the corners all pixels of a row are covered alike.
        inner = int((box[0] + radius) * side) + 1, int((box[2] - radius) * side) - 1
        over = coverage((box[0] + box[2]) / 2, y, box, radius, 1 / side) * opacity
        if over == 1 and inner[0] < inner[1]:
            row[inner[0]:inner[1]] = [color + (1.0,)] * (inner[1] - inner[0])
        for column in range(first, last) if over else ():
            if over == 1 and inner[0] <= column < inner[1]:
                continue
            here = coverage((column + 0.5) / side, y, box, radius, 1 / side) * opacity
            if here:
                paint(row, column, here, color)
    return row


def png(side):
    shapes = TINY if side <= 16 else SMALL if side <= 32 else LARGE
    rows = []
    for number in range(side):
        row = painted_row((number + 0.5) / side, side, shapes)
        rows.append(b"\0" + b"".join(bytes([round(red), round(green), round(blue), round(255 * alpha)])
                                     for red, green, blue, alpha in row))

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) + chunk(b"IEND", b""))


def svg():
    def css(color):
        return "#{:02x}{:02x}{:02x}".format(*color)

    shapes = []
    for (left, top, right, bottom), radius, color, opacity in LARGE:
        place = [round(part * 128, 3) for part in (left, top, right - left, bottom - top, radius)]
        shapes.append('  <rect x="{:g}" y="{:g}" width="{:g}" height="{:g}" rx="{:g}" '.format(*place) +
                      f'fill="{css(color) if color else "url(#ground)"}"' +
                      (f' fill-opacity="{opacity:g}"' if opacity < 1 else "") + "/>\n")
    return ('<svg xmlns="http://www.w3.org/2000/svg" width="128" height="128" viewBox="0 0 128 128">\n'
            '  <linearGradient id="ground" gradientUnits="userSpaceOnUse" x1="0" y1="0" x2="0" y2="128">\n'
            f'    <stop offset="0" stop-color="{css(TOP)}"/>\n    <stop offset="1" stop-color="{css(BOTTOM)}"/>\n'
            "  </linearGradient>\n" + "".join(shapes) + "</svg>\n").encode()


def icns():
    body = b""
    for side, names in PICTURES.items():
        picture = png(side)
        for name in names:
            body += name + struct.pack(">I", len(picture) + 8) + picture
    return b"icns" + struct.pack(">I", len(body) + 8) + body


def main():
    *side, file = sys.argv[1:] or [""]
    makers = {".icns": icns, ".svg": svg, ".png": lambda: png(int(side[0]))}
    maker = makers.get(pathlib.Path(file).suffix)
    if not maker or len(side) != (maker is makers[".png"]):
        sys.exit(__doc__)
    pathlib.Path(file).write_bytes(maker())


if __name__ == "__main__":
    main()
