"""A second reading of texts, written plainly: regular expressions, exact fractions, Python's calendar.

read(text, now, zone) gives the kind, its payload and the nanoseconds since the epoch, None for a
text that means nothing, and raises Beyond where Python's calendar ends.
"""

import datetime
import fractions
import re

from zone_reader import DAY, EPOCH, Zone

SECOND = 10**9
WHITE = "\t-\r \u0085\u00a0\u1680\u2000-\u200a\u2028\u2029\u202f\u205f\u3000"
UNITS = {
    "second": "s sec second seconds",
    "minute": "m min minute minutes",
    "hour": "h hr hour hours",
    "day": "d day days",
    "week": "w wk week weeks",
    "month": "mo month months",
    "year": "y yr year years",
}
UNIT_OF = {word: unit for unit, words in UNITS.items() for word in words.split()}
WEEKDAYS = "monday tuesday wednesday thursday friday saturday sunday".split()
MONTHS = "january february march april may june july august september october november december"
MONTHS = MONTHS.split()
LAYOUTS = [
    "yyyy-MM-dd HH:mm:ss", "yyyy-MM-dd HH:mm", "yyyy-MM-dd", "yyyy/MM/dd HH:mm:ss", "yyyy/MM/dd",
    "MM/dd/yyyy HH:mm:ss", "MM/dd/yyyy HH:mm", "MM/dd/yyyy", "dd/MM/yyyy HH:mm:ss", "dd/MM/yyyy",
    "MMM dd, yyyy HH:mm:ss", "MMM dd, yyyy HH:mm", "MMM dd, yyyy", "MMMM dd, yyyy HH:mm:ss",
    "MMMM dd, yyyy", "dd MMM yyyy HH:mm:ss", "dd MMM yyyy",
]  # fmt: skip
FIELDS = {
    "yyyy": r"(?P<year>[0-9]{4})",
    "MMMM": "(?P<month>" + "|".join(MONTHS) + ")",
    "MMM": "(?P<month>" + "|".join(name[:3] for name in MONTHS) + ")",
    "MM": r"(?P<month>[0-9]{2})",
    "dd": r"(?P<day>[0-9]{2})",
    "HH": r"(?P<hour>[0-9]{2})",
    "mm": r"(?P<minute>[0-9]{2})",
    "ss": r"(?P<second>[0-9]{2})",
}


def pattern(text):
    """A regular expression for a whole text, with Unicode's white space for `_`."""
    return re.compile(text.replace("_", f"[{WHITE}]"), re.IGNORECASE)


AGO = pattern("([0-9]+)_+(second|minute|hour|day|week|month|year)s?_+ago")
WEEKDAY = pattern("(next|last)_+(" + "|".join(WEEKDAYS) + ")")
OFFSET = pattern(
    "([^\n-\r\u0085\u2028\u2029]+?)_*([+-])_*([0-9]+)_*(" + "|".join(UNIT_OF) + ")"
)
DECIMAL = re.compile(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)(e[+-]?[0-9]+)?", re.I | re.A)
HEXADECIMAL = re.compile(r"[+-]?0x([0-9a-f]+\.?[0-9a-f]*|\.[0-9a-f]+)(p[+-]?[0-9]+)?", re.I | re.A)
WORD = re.compile(r"[+-]?(inf|infinity|nan(\([0-9a-z_]*\))?)", re.I | re.A)
ISO = re.compile(
    r"(?P<date>[0-9]{4}-[0-9]{2}-[0-9]{2})"
    r"(T(?P<time>[0-9]{2}:[0-9]{2}:[0-9]{2})(\.(?P<fraction>[0-9]+))?"
    r"(?P<zone>Z|[+-]([01][0-9]|2[0-3]):[0-5][0-9]))?"
)
LAYOUT_PATTERNS = [
    (layout, re.compile(re.sub("[yMdHms]+", lambda m: FIELDS[m[0]], layout), re.I | re.A))
    for layout in LAYOUTS
]
EXACT_POWERS = range(-400, 400)


class Beyond(Exception):
    """More than Python's calendar, or patience, can tell."""


def nearest(value):
    """Whole nanoseconds, halves away from zero."""
    scaled = abs(value) * SECOND
    whole = (2 * scaled.numerator + scaled.denominator) // (2 * scaled.denominator)
    return whole if value >= 0 else -whole


def number(text):
    """The exact value and the floating-point one; None where the text is no number."""
    if WORD.fullmatch(text):
        return None, float(text.split("(")[0])
    if HEXADECIMAL.fullmatch(text):
        try:
            value = float.fromhex(text)
        except OverflowError:
            return None, float("inf")
        return fractions.Fraction(value), value
    match = DECIMAL.fullmatch(text)
    if not match:
        return None
    if int((match[2] or "e0")[1:]) not in EXACT_POWERS:
        raise Beyond
    return fractions.Fraction(text), float(text)


def in_calendar(seconds):
    if not -62_000_000_000 < seconds < 253_300_000_000:
        raise Beyond


def moved(nanoseconds, count, unit, zone):
    seconds, rest = divmod(nanoseconds, SECOND)
    if count >= 2**63:
        return None
    if unit in ("second", "minute", "hour"):
        total = zone.sum(0, count, unit) + seconds
        if abs(total * SECOND + rest) > 183_882_168_921_600 * SECOND:
            return None
        return total * SECOND + rest
    in_calendar(seconds)
    if abs(count) > 3_000_000:
        raise Beyond
    try:
        return zone.sum(seconds, count, unit) * SECOND + rest
    except (OverflowError, ValueError) as error:
        raise Beyond from error


def first_of_day(seconds, days, zone):
    in_calendar(seconds)
    return zone.start_of_day(seconds + zone.offset(seconds) + days * DAY)


def iso8601(text):
    match = ISO.fullmatch(text)
    if not match:
        return None
    if match["date"].startswith("0000"):
        raise Beyond
    try:
        date = datetime.date.fromisoformat(match["date"])
        time = datetime.time.fromisoformat(match["time"] or "00:00:00")
    except ValueError:
        return None
    local = datetime.datetime.combine(date, time) - EPOCH
    nanoseconds = (local.days * DAY + local.seconds) * SECOND
    nanoseconds += nearest(fractions.Fraction("0." + (match["fraction"] or "0")))
    if (match["zone"] or "Z") != "Z":
        hours, minutes = match["zone"][1:].split(":")
        offset = (int(hours) * 3600 + int(minutes) * 60) * SECOND
        nanoseconds -= offset if match["zone"][0] == "+" else -offset
    return nanoseconds


def human_date(text, zone):
    for layout, expression in LAYOUT_PATTERNS:
        match = expression.fullmatch(text)
        if not match:
            continue
        fields = {name: value for name, value in match.groupdict().items() if value}
        names = [name[: len(fields["month"])] for name in MONTHS]
        if fields["month"].lower() in names:
            fields["month"] = 1 + names.index(fields["month"].lower())
        try:
            time = datetime.datetime(**{name: int(value) for name, value in fields.items()})
        except ValueError:
            continue
        local = (time - EPOCH).days * DAY + (time - EPOCH).seconds
        in_calendar(local)
        return zone.instant(local) * SECOND, layout
    return None


def base(text, now, zone):
    if text.lower() == "now":
        return now
    value = number(text)
    if value:
        exact, approximate = value
        if exact is None or abs(approximate) >= 1e18:
            return None
        nanoseconds = nearest(exact / 1000 if approximate > 32_503_680_000 else exact)
        in_range = abs(nanoseconds) <= 183_882_168_921_600 * SECOND
        return nanoseconds if in_range else None
    found = iso8601(text)
    if found is None:
        date = human_date(text, zone)
        found = date[0] if date else None
    return found


def expression(text, now, zone):
    """What the relative expressions make of a text: nanoseconds or None."""
    if "\u0130" in text:
        return None  # a dotted capital I, which Python alone takes for an i
    today = now // SECOND
    match = AGO.fullmatch(text.lower())
    if match and int(match[1]) < 2**63:
        return moved(now, -int(match[1]), UNIT_OF.get(match[2].lower(), "day"), zone)
    match = WEEKDAY.fullmatch(text.lower())
    if match and match[2].lower() in WEEKDAYS:
        local = EPOCH + datetime.timedelta(seconds=today + zone.offset(today))
        days = WEEKDAYS.index(match[2].lower()) - local.weekday()
        if match[1].lower() == "next":
            days += 7 if days < 1 else 0
        else:
            days -= 7 if days >= 0 else 0
        return first_of_day(today, days, zone) * SECOND
    match = OFFSET.fullmatch(text)
    if match and int(match[3]) < 2**63:
        found = base(match[1].strip(" \t"), now, zone)
        if found is not None:
            count = int(match[3]) if match[2] == "+" else -int(match[3])
            return moved(found, count, UNIT_OF.get(match[4].lower(), "day"), zone)
    return None


def read(text, now, zone):
    text = re.sub(f"^[{WHITE}]+|[{WHITE}]+$", "", text)
    lowered = text.lower()
    if lowered == "now":
        return "now", "", now
    days = {"yesterday": -1, "today": 0, "tomorrow": 1}.get(lowered)
    if days is not None:
        return "dateMath", lowered, first_of_day(now // SECOND, days, zone) * SECOND
    found = expression(text, now, zone)
    if found is not None:
        return "dateMath", text, found
    value = number(text)
    if value and 0 <= value[1] <= 253_402_300_799_999:
        if value[1] <= 32_503_680_000:
            return "unixSeconds", "", nearest(value[0])
        return "unixMilliseconds", "", nearest(value[0] / 1000)
    found = iso8601(text)
    if found is not None:
        return "iso8601", "", found
    date = human_date(text, zone)
    return ("humanDate", date[1], date[0]) if date else None


def rows(nanoseconds, zone):
    """Unix seconds, Unix milliseconds and ISO 8601 as they are shown."""

    def truncated(divisor):
        return str(abs(nanoseconds) // divisor * (1 if nanoseconds >= 0 else -1))

    seconds = nanoseconds // SECOND
    in_calendar(seconds)
    offset = zone.offset(seconds)
    local = EPOCH + datetime.timedelta(seconds=seconds + offset)
    hours, rest = divmod(abs(offset), 3600)
    shown = f"{'-' if offset < 0 else '+'}{hours:02}:{rest // 60:02}"
    shown += f":{rest % 60:02}" if rest % 60 else ""
    return [
        truncated(SECOND),
        truncated(10**6),
        local.isoformat(timespec="seconds") + (shown if offset else "Z"),
    ]


__all__ = ["Beyond", "Zone", "read", "rows"]
