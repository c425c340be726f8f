#!/usr/bin/env python3
"""Draws the application's icon: a menu bar with a divider, and the icons left of it fading.

usage: make_icon.py FILE.icns
"""

import pathlib
import struct
import sys
import zlib

# Names of the container's pictures, by their sides in pixels.
PICTURES = {128: b"ic07", 256: b"ic08", 512: b"ic09"}


def coverage(x, y, box, radius, pixel):
    """How much of a pixel lies in a rounded rectangle: box is left, top, right, bottom."""
    left, top, right, bottom = box
    dx = max(left + radius - x, 0, x - (right - radius))
    dy = max(top + radius - y, 0, y - (bottom - radius))
    return min(max((radius - (dx * dx + dy * dy) ** 0.5) / pixel + 0.5, 0), 1)


# In a square of side 1: shape, corner radius, colour, opacity; each painted over those before it.
SHAPES = [
    ((0.1, 0.1, 0.9, 0.9), 0.18, (36, 60, 98), 1),
    ((0.18, 0.4, 0.82, 0.6), 0.06, (236, 241, 248), 1),
    ((0.23, 0.45, 0.33, 0.55), 0.05, (36, 60, 98), 0.18),
    ((0.36, 0.45, 0.46, 0.55), 0.05, (36, 60, 98), 0.4),
    ((0.505, 0.43, 0.525, 0.57), 0.01, (214, 84, 60), 1),
    ((0.57, 0.45, 0.67, 0.55), 0.05, (36, 60, 98), 1),
    ((0.7, 0.45, 0.8, 0.55), 0.05, (36, 60, 98), 1),
]


def pixel_at(x, y, pixel):
    red, green, blue, alpha = 0.0, 0.0, 0.0, 0.0
    for box, radius, color, opacity in SHAPES:
        over = coverage(x, y, box, radius, pixel) * opacity
        if over:
            red, green, blue = (over * new + (1 - over) * old for new, old in zip(color, (red, green, blue)))
            alpha = over + (1 - over) * alpha
    return bytes(round(part / alpha) if alpha else 0 for part in (red, green, blue)) + bytes([round(255 * alpha)])


def png(side):
    rows = []
    for row in range(side):
        pixels = (pixel_at((column + 0.5) / side, (row + 0.5) / side, 1 / side) for column in range(side))
        rows.append(b"\0" + b"".join(pixels))

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) + chunk(b"IEND", b""))


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    body = b""
    for side, name in PICTURES.items():
        picture = png(side)
        body += name + struct.pack(">I", len(picture) + 8) + picture
    pathlib.Path(sys.argv[1]).write_bytes(b"icns" + struct.pack(">I", len(body) + 8) + body)


if __name__ == "__main__":
    main()
