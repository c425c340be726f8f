"""The picture of a benchmark: how many times what Velmo takes the others take, as an SVG with a logarithmic axis."""

import math
from html import escape

WIDTH, LABELS, RIGHT = 960, 330, 40
ROW, GROUP, TOP, BOTTOM = 20, 34, 76, 40
LEAST, MOST = 1 / 32, 512
GROUND, INK, FAINT, LINES = "#ffffff", "#1d2330", "#5b6475", "#dfe3ea"
# A colour and a shape each, in the order in which they are named.
MARKS = {"Velmo": ("#1d2330", "bar"), "bare program": ("#7a8496", "cross"), "xfce4-panel": ("#2a6fdb", "circle"),
         "lxqt-panel": ("#d9480f", "square"), "tint2": ("#2b8a3e", "diamond"), "trayer": ("#a333c8", "triangle")}
# What is compared, with the title of its group in the picture and of its rows in the table.
PARTS = {"starts": ("From the start until all items are there", "start"), "memory": ("Memory at rest", "memory"),
         "windows": ("Memory before and after all windows were opened once", "memory with windows"),
         "rest": ("Three minutes of rest, and of a clock", ""), "hour": ("An hour of a clock", ""),
         "reveals": ("From the click until all are shown or hidden", "")}


def place(ratio):
    share = (math.log(min(max(ratio, LEAST), MOST)) - math.log(LEAST)) / (math.log(MOST) - math.log(LEAST))
    return LABELS + share * (WIDTH - LABELS - RIGHT)


def text(x, y, content, color=INK, anchor="start", weight="normal", size=12):
    return (f'<text x="{x:.1f}" y="{y:.1f}" fill="{color}" font-size="{size}" text-anchor="{anchor}" '
            f'font-weight="{weight}">{escape(content)}</text>')


def line(x1, y1, x2, y2, color, width=1):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{color}" stroke-width="{width}"/>'


def mark(host, x, y):
    color, shape = MARKS[host]
    if shape == "bar":
        return line(x, y - 7, x, y + 7, color, 3)
    if shape == "cross":
        return line(x - 4, y - 4, x + 4, y + 4, color, 2) + line(x - 4, y + 4, x + 4, y - 4, color, 2)
    if shape == "circle":
        return f'<circle cx="{x:.1f}" cy="{y:.1f}" r="5" fill="{color}"/>'
    corners = {"square": [(-4.5, -4.5), (4.5, -4.5), (4.5, 4.5), (-4.5, 4.5)],
               "diamond": [(0, -6), (6, 0), (0, 6), (-6, 0)], "triangle": [(0, -6), (5.5, 4.5), (-5.5, 4.5)]}[shape]
    points = " ".join(f"{x + right:.1f},{y + down:.1f}" for right, down in corners)
    return f'<polygon points="{points}" fill="{color}"/>'


def beyond(ratio, y):
    """What lies outside the axis is drawn at its end; this says how far it is."""
    if ratio < LEAST:
        return text(LABELS + 9, y, f"‹ × {ratio:.1g}", FAINT, size=10)
    if ratio > MOST:
        return text(WIDTH - RIGHT - 9, y, f"× {ratio:.0f} ›", FAINT, "end", size=10)
    return ""


def legend(hosts):
    drawn, x = [], 24
    for host in hosts:
        drawn += [mark(host, x + 4, 52), text(x + 16, 56, host)]
        x += 36 + 7.2 * len(host)
    return drawn


def axis(top, bottom):
    drawn = []
    ratio = LEAST
    while ratio <= MOST:
        drawn.append(line(place(ratio), top, place(ratio), bottom, INK if ratio == 1 else LINES))
        drawn.append(text(place(ratio), bottom + 16, f"× {ratio:g}" if ratio >= 1 else f"× 1/{1 / ratio:g}", FAINT, "middle", size=10))
        ratio *= 2
    return drawn


def picture(rows):
    """Of rows (part, name, {host: ratio})."""
    hosts = [host for host in MARKS if host == "Velmo" or any(host in ratios for _, _, ratios in rows)]
    drawn, y, last = [], TOP, None
    for part, name, ratios in rows:
        if part != last:
            y += GROUP
            drawn.append(text(24, y - 12, PARTS[part][0], weight="bold", size=13))
            last = part
        drawn += [text(LABELS - 14, y + 8, name, FAINT, "end"), line(LABELS, y + 4, WIDTH - RIGHT, y + 4, LINES)]
        drawn += [mark(host, place(ratio), y + 4) for host, ratio in {"Velmo": 1, **ratios}.items()]
        drawn += [beyond(ratio, y + 8) for ratio in ratios.values()]
        y += ROW
    height = y + BOTTOM
    head = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" height="{height}" '
            'font-family="DejaVu Sans, Verdana, sans-serif">',
            f'<rect width="{WIDTH}" height="{height}" rx="8" fill="{GROUND}"/>',
            text(24, 30, "As many times what Velmo takes (logarithmic): farther right is more time, memory or work",
                 weight="bold", size=15)]
    return "\n".join(head + legend(hosts) + axis(TOP + 10, y + 2) + [each for each in drawn if each] + ["</svg>", ""])
