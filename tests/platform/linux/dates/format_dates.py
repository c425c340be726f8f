#!/usr/bin/python3
"""Formats dates by way of PyICU, for comparison.

Reads one JSON object: "locales", each with an ICU "tag" and a "zone"; "patterns"; "skeletons"; "instants" in
seconds since 1970. Writes for each locale a list with the texts of all patterns, then of all skeletons, at all
instants.
"""
import json
import sys

import icu


def texts(locale, zone, patterns, instants):
    for pattern in patterns:
        formatter = icu.SimpleDateFormat(pattern, locale)
        formatter.setTimeZone(zone)
        yield from (formatter.format(instant) for instant in instants)


def main():
    request = json.load(sys.stdin)
    answer = []
    for entry in request["locales"]:
        locale = icu.Locale(entry["tag"])
        zone = icu.TimeZone.createTimeZone(entry["zone"])
        generator = icu.DateTimePatternGenerator.createInstance(locale)
        patterns = request["patterns"] + [generator.getBestPattern(s) for s in request["skeletons"]]
        answer.append(list(texts(locale, zone, patterns, request["instants"])))
    json.dump(answer, sys.stdout)


main()
