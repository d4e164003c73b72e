"""The system's time zones as Python's own reader has them, and the calendar's sums in them.

Instants and wall-clock times are seconds since 1970-01-01 00:00:00, in the years 1 to 9999.
"""

import calendar
import datetime
import pathlib
import struct
import zoneinfo

FOLDER = pathlib.Path("/usr/share/zoneinfo")
zoneinfo.reset_tzpath(to=[str(FOLDER)])
EPOCH = datetime.datetime(1970, 1, 1)
DAY = 86400
UNITS = {"second": 1, "minute": 60, "hour": 3600, "day": DAY, "week": 7 * DAY}


def identifiers():
    """The zones and links of the database itself."""
    names = set()
    for line in (FOLDER / "tzdata.zi").read_text().splitlines():
        words = line.split()
        if words[0] == "Z":
            names.add(words[1])
        elif words[0] == "L":
            names.add(words[2])
    return sorted(names)


def changes(name):
    """The instants of the clock changes that the zone's file lists."""
    data = (FOLDER / name).read_bytes()

    def counts(start):
        return struct.unpack_from(">6L", data, start + 20)

    utc_count, standard_count, leap_count, change_count, type_count, text_size = counts(0)
    start = 44 + change_count * 5 + type_count * 6 + text_size + leap_count * 8
    start += standard_count + utc_count
    change_count = counts(start)[3]
    return struct.unpack_from(f">{change_count}q", data, start + 44)


class Zone:
    def __init__(self, name):
        self.info = zoneinfo.ZoneInfo(name)

    def aware(self, instant):
        utc = (EPOCH + datetime.timedelta(seconds=instant)).replace(tzinfo=datetime.timezone.utc)
        return utc.astimezone(self.info)

    def offset(self, instant):
        return int(self.aware(instant).utcoffset().total_seconds())

    def both(self, local):
        """A wall-clock time with the offset from before a clock change, and with that from after."""
        time = EPOCH + datetime.timedelta(seconds=local)
        return [
            local - int(time.replace(tzinfo=self.info, fold=fold).utcoffset().total_seconds())
            for fold in (0, 1)
        ]

    def is_skipped(self, local):
        before = self.both(local)[0]
        return before + self.offset(before) != local

    def instant(self, local):
        """Skipped: moved forward by the gap. Repeated: the later."""
        return self.both(local)[0 if self.is_skipped(local) else 1]

    def start_of_day(self, local):
        midnight = local - local % DAY
        earlier, later = self.both(midnight)
        if not self.is_skipped(midnight):
            return earlier
        # The clock change, between midnight read with the one offset and with the other.
        low, high = sorted((earlier, later))
        old = self.offset(low)
        while high - low > 1:
            middle = (low + high) // 2
            if self.offset(middle) == old:
                low = middle
            else:
                high = middle
        return high

    def sum(self, instant, count, unit):
        if unit in ("second", "minute", "hour"):
            return instant + count * UNITS[unit]
        offset = self.offset(instant)
        local = instant + offset
        if unit in ("day", "week"):
            local += count * UNITS[unit]
            same_offset = local - offset
            return same_offset if same_offset in self.both(local) and not self.is_skipped(
                local) else self.instant(local)
        time = EPOCH + datetime.timedelta(seconds=local)
        months = time.year * 12 + time.month - 1 + count * (12 if unit == "year" else 1)
        year, month = divmod(months, 12)
        day = min(time.day, calendar.monthrange(year, month + 1)[1])
        moved = time.replace(year=year, month=month + 1, day=day)
        return self.instant((moved - EPOCH).days * DAY + local % DAY)

    def difference(self, start, end):
        sign = 1 if end >= start else -1
        for unit, shortest in (("year", 365), ("month", 28), ("week", 7), ("day", 1)):
            # From a count that cannot be too small, down to the first that does not lead past.
            count = abs(end - start) // (shortest * DAY) + 3
            while count > 0 and sign * (self.sum(start, sign * count, unit) - end) > 0:
                count -= 1
            if count > 0:
                return sign * count, unit
        for unit in ("hour", "minute", "second"):
            count = abs(end - start) // UNITS[unit]
            if count > 0 or unit == "second":
                return sign * count, unit
