#!/usr/bin/env python3
"""Makes tables and a picture of what script/bench has measured.

usage: bench_report.py RESULT.json               prints the tables, as Markdown
       bench_report.py RESULT.json PAGE PICTURE  writes them into the page, each between its marks, and the picture
"""

import json
import pathlib
import re
import sys
import textwrap

from bench_picture import MARKS, PARTS, picture

OURS, BARE = "Velmo", "bare program"
KINDS = {"tray": "icons of the tray", "bus": "items of the bus", "both": "items of each kind", "": ""}
NONE = "–"


class Result:
    def __init__(self, text):
        whole = json.loads(text)
        self.date, self.notes, self.promises = whole["date"], whole["notes"], whole["promises"]
        self.machine = f'{whole["processors"]} processors, {whole["processor"]}'
        self.figures = {(f["part"], f["what"], f["kind"], f["items"], f["host"]): f for f in whole["figures"]}

    def has(self, part):
        return any(key[0] == part for key in self.figures)

    def get(self, part, what, kind, items, host):
        # It has windows, whatever kind of items they stand for.
        return self.figures.get((part, what, "tray" if host == BARE else kind, items, host))

    def of_anybody(self, *subject):
        return next(figure for key, figure in self.figures.items() if key[:4] == subject)

    def subjects(self, part):
        """What was measured of somebody, in the order in which it was."""
        return list(dict.fromkeys(key[1:4] for key in self.figures if key[0] == part))

    def hosts(self, part):
        there = {key[4] for key in self.figures if key[0] == part}
        return [host for host in MARKS if host in there]

    def ratio(self, subject, host):
        """How many times what ours is; none where one of them is nothing."""
        theirs, ours = self.get(*subject, host), self.get(*subject, OURS)
        if not theirs or not ours or not ours["median"] or not theirs["median"]:
            return None
        return theirs["median"] / ours["median"]


def number(value):
    digits = 0 if value >= 100 or value == int(value) else 1 if value >= 10 else 2
    return f"{value:,.{digits}f}"


def spread(figure):
    if not figure:
        return NONE
    return f'{number(figure["median"])} ({number(figure["lower"])}–{number(figure["upper"])})'


def spread_to_95th(figure):
    """What counts where somebody waits is also how long it hardly ever takes."""
    return f'{spread(figure)[:-1]}, {number(figure["percentile95"])})' if figure else NONE


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def name_of(what, kind, items):
    count = f"{items} " if items > 1 else "first " if items else ""
    things = (KINDS[kind] if items != 1 else KINDS[kind].replace("icons", "icon").replace("items", "item"))
    return ", ".join(text for text in ([] if items == 1 else [what]) + [count + things] if text)


def peers_table(result, part):
    """A row for each subject, a column for each host."""
    form = spread_to_95th if part == "reveals" else spread
    hosts = result.hosts(part)
    rows = []
    for subject in result.subjects(part):
        figures = [result.get(part, *subject, host) for host in hosts]
        unit = next(figure["unit"] for figure in figures if figure)
        rows.append([f"{name_of(*subject)}, {unit}"] + [form(figure) for figure in figures])
    return table([""] + [f"**{host}**" if host == OURS else host for host in hosts], rows)


def panels_table(result):
    """A row for pictures that are there, and one for pictures that are taken anew."""
    rows = []
    for how, suffix in (("", ""), ("anew, ", ", pictured anew")):
        for kind, items in dict.fromkeys((kind, items) for _, kind, items in result.subjects("panels")):
            figures = [result.get("panels", f"{how}{when}, {what}", kind, items, OURS)
                       for when in ("first", "later") for what in ("mapped", "painted", "work")]
            if any(figures):
                rows.append([name_of("", kind, items) + suffix] + [spread(figure) for figure in figures])
    return table(["ms", "first, mapped", "painted", "work", "later, mapped", "painted", "work"], rows)


def captures_table(result):
    rows = []
    for items in dict.fromkeys(items for _, _, items in result.subjects("captures")):
        both = [result.of_anybody("captures", what, "tray", items) for what in ("at once", "one after the other")]
        rows.append([str(items)] + [spread(figure) for figure in both]
                    + [f'{both[0]["median"] / both[1]["median"]:.2f}'])
    return table(["pictures, ms", "at once", "one after the other", "ratio"], rows)


def compared(result):
    """What has a ratio: (title, {host: ratio})."""
    for part in PARTS:
        for subject in result.subjects(part):
            ratios = {host: result.ratio((part, *subject), host) for host in result.hosts(part) if host != OURS}
            ratios = {host: ratio for host, ratio in ratios.items() if ratio}
            if ratios:
                yield part, name_of(*subject), ratios


def ratios_table(result):
    hosts = [host for host in MARKS if host != OURS and any(host in ratios for _, _, ratios in compared(result))]
    rows = []
    for part, name, ratios in compared(result):
        title = ": ".join(text for text in (PARTS[part][1], name) if text)
        rows.append([title] + [f"× {number(ratios[host])}" if host in ratios else NONE for host in hosts])
    return table(["as many times what Velmo takes"] + hosts, rows)


def promises_text(result):
    broken = [promise for promise in result.promises if promise["value"] > promise["bound"]]
    if not broken:
        return f"All {len(result.promises)} promises are kept."
    return "\n".join([f"Of {len(result.promises)} promises these are not kept:"] + [
        f'- {promise["what"]}: {promise["value"]:.2f}, {promise["bound"]:.2f} at most' for promise in broken])


def beside_text(result):
    """What was promised beside the bare program, by the medians and by what 95 in 100 take at most; or None."""
    pairs = [(name_of(*subject), result.get("reveals", *subject, OURS), result.get("reveals", *subject, BARE))
             for subject in result.subjects("reveals")]
    pairs = [(name, ours, bare) for name, ours, bare in pairs if ours and bare]
    if not pairs:
        return None
    nearest, name = max((ours["median"] / bare["median"], name) for name, ours, bare in pairs)
    beyond = [f'{name}, {number(ours["percentile95"])} {ours["unit"]} of {number(bare["percentile95"])} {ours["unit"]}'
              for name, ours, bare in pairs if ours["percentile95"] > 2 * bare["percentile95"]]
    count = pairs[0][1]["count"]
    # As many lie above the place at which the benchmark takes it.
    slower = count - 1 - int(0.95 * (count - 1))
    sentences = [
        f"The highest of the {len(pairs)} medians is {number(nearest)} times the bare program's: {name}.",
        f'By what 95 in 100 take at most, {len(beyond) or "none"} of the {len(pairs)} '
        f'{"is" if len(beyond) < 2 else "are"} beyond twice{": " if beyond else ""}{"; ".join(beyond)}.',
        f"Of {count} clicks of each kind, {slower} are slower than that."]
    return textwrap.fill(" ".join(sentences), 118)


def run_text(result):
    return "\n".join([f"{result.date}, {result.machine}."] + [f"- {note}" for note in result.notes])


def tables(result):
    made = {"run": run_text(result)}
    for part in PARTS:
        if result.has(part):
            made[part] = peers_table(result, part)
    if beside := beside_text(result):
        made["beside"] = beside
    if result.has("panels"):
        made["panels"] = panels_table(result)
    if result.has("captures"):
        made["captures"] = captures_table(result)
    if any(compared(result)):
        made["ratios"] = ratios_table(result)
    made["promises"] = promises_text(result)
    return made


def put_into(page, made):
    text = page.read_text()
    # What is not made anew would stand among what is.
    if missing := set(re.findall(r"<!-- bench: (\w+) -->", text)) - set(made):
        sys.exit(f'{page}: not measured: {", ".join(sorted(missing))}')
    for name, content in made.items():
        begin, end = f"<!-- bench: {name} -->", f"<!-- /bench: {name} -->"
        if begin not in text:
            sys.exit(f"{page}: nothing is marked {begin}")
        text = re.sub(f"{re.escape(begin)}.*?{re.escape(end)}", lambda _: f"{begin}\n{content}\n{end}", text, flags=re.S)
    page.write_text(text)


def main(arguments):
    if len(arguments) not in (1, 3):
        sys.exit(__doc__)
    result = Result(pathlib.Path(arguments[0]).read_text())
    made = tables(result)
    if len(arguments) == 1:
        print("\n\n".join(made.values()))
        return
    put_into(pathlib.Path(arguments[1]), made)
    pathlib.Path(arguments[2]).write_text(picture(list(compared(result))))


main(sys.argv[1:])
