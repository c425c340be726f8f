#!/usr/bin/python3
"""Counts the days of months by arithmetic of its own, for comparison.

Arguments: calendar, time zone, first weekday (1 is Sunday), least days of a first week, first year, number of
months. Writes a line for each month: its start, its end, the number of its days, the blanks before its first day
in a grid, the number of days in its year; then for each day its start, its week of the year, its day of the
year, its weekday and its number. Starts and ends in seconds since 1970.
"""
import sys
from datetime import date, datetime
from zoneinfo import ZoneInfo


class Gregorian:
    def new_year(self, year):
        return date(year, 1, 1).toordinal()

    def lengths(self, year):
        starts = [date(year, month, 1).toordinal() for month in range(1, 13)] + [self.new_year(year + 1)]
        return [end - start for start, end in zip(starts, starts[1:])]


class Buddhist(Gregorian):
    """Counts the years from another one."""

    def new_year(self, year):
        return super().new_year(year - 543)

    def lengths(self, year):
        return Gregorian().lengths(year - 543)


class Persian:
    """Eight leap years in 33, from 1210 to 1634."""

    def new_year(self, year):
        cycles, rest = divmod(year - 1210, 33)
        leaps = 8 * cycles + (rest + 3) // 4
        return date(1831, 3, 21).toordinal() + 365 * (year - 1210) + leaps

    def lengths(self, year):
        last = self.new_year(year + 1) - self.new_year(year) - 6 * 31 - 5 * 30
        return [31] * 6 + [30] * 5 + [last]


class Hebrew:
    EPOCH = -1373427

    def elapsed(self, year):
        months = (235 * year - 234) // 19
        parts = 12084 + 13753 * months
        days = 29 * months + parts // 25920
        return days + 1 if 3 * (days + 1) % 7 < 3 else days

    def new_year(self, year):
        before, this, after = (self.elapsed(y) for y in (year - 1, year, year + 1))
        delay = 2 if after - this == 356 else 1 if this - before == 382 else 0
        return self.EPOCH + this + delay

    def lengths(self, year):
        days = self.new_year(year + 1) - self.new_year(year)
        leap = [30] if days > 380 else []
        heshvan = 30 if days % 10 == 5 else 29
        kislev = 29 if days % 10 == 3 else 30
        return [30, heshvan, kislev, 29, 30] + leap + [29, 30, 29, 30, 29, 30, 29]


def weekday(day):
    """1 is Sunday."""
    return day % 7 + 1


def first_week(new_year, first_weekday, least_days):
    """The first day of the year's first week."""
    into_week = (weekday(new_year) - first_weekday) % 7
    start = new_year - into_week
    return start if 7 - into_week >= least_days else start + 7


def start_of(day, zone):
    """Where there is no midnight, the offset from before the gap leads behind it."""
    local = datetime.fromordinal(day).replace(tzinfo=zone, fold=0)
    return round(local.timestamp())


def main():
    calendar = {"gregorian": Gregorian, "buddhist": Buddhist, "persian": Persian, "hebrew": Hebrew}[sys.argv[1]]()
    zone = ZoneInfo(sys.argv[2])
    first_weekday, least_days, year, wanted = map(int, sys.argv[3:7])
    written = 0
    while True:
        new_year, next_year = calendar.new_year(year), calendar.new_year(year + 1)
        weeks = [first_week(y, first_weekday, least_days)
                 for y in (calendar.new_year(year - 1), new_year, next_year)]
        month = new_year
        for length in calendar.lengths(year):
            if written == wanted:
                return
            written += 1
            numbers = [start_of(month, zone), start_of(month + length, zone), length,
                       (weekday(month) - first_weekday) % 7, next_year - new_year]
            for day in range(month, month + length):
                since = max(start for start in weeks if start <= day)
                numbers += [start_of(day, zone), (day - since) // 7 + 1, day - new_year + 1, weekday(day),
                            day - month + 1]
            print(*numbers)
            month += length
        assert month == next_year
        year += 1


main()
