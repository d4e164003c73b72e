"""zone_answers.py SEED: what Python's own reader of the system's time-zone files says of every zone.

One row a question, cells between tabs, and a last row "rows" with their number:

  offset      ZONE  INSTANT  OFFSET  ABBREVIATION
  local       ZONE  LOCAL  BEFORE  AFTER      a wall-clock time read with both offsets that may hold
  midnight    ZONE  LOCAL  INSTANT            the first instant of the date of a wall-clock time
  sum         ZONE  INSTANT  COUNT  UNIT  INSTANT
  difference  ZONE  FROM  TO  COUNT  UNIT

Instants and wall-clock times are seconds since 1970-01-01 00:00:00.
"""

import random
import sys

from zone_reader import DAY, Zone, changes, identifiers


def instants(name, dice):
    """Instants around clock changes, and anywhere in the years 2 to 9998."""
    listed = [t for t in changes(name) if -4e9 < t < 5e9]
    chosen = dice.sample(listed, min(len(listed), 12))
    for change in chosen + listed[-2:]:
        yield from (change - 1, change, change + dice.randrange(-DAY, DAY))
    for _ in range(10):
        yield dice.randrange(-62_000_000_000, 253_000_000_000)
    for _ in range(15):
        yield dice.randrange(2_200_000_000, 7_000_000_000)


def rows(names, dice):
    for name in names:
        zone = Zone(name)
        for instant in instants(name, dice):
            aware = zone.aware(instant)
            offset = int(aware.utcoffset().total_seconds())
            yield "offset", name, instant, offset, aware.tzname()
            local = instant + offset + dice.choice((0, 0, -1, -1800, -3600, 1800, 3600, 86399))
            yield "local", name, local, *zone.both(local)
            yield "midnight", name, local, zone.start_of_day(local)
            unit = dice.choice(("day", "week", "month", "year", "day", "hour"))
            limit = 40 if dice.randrange(4) else 400
            count = dice.randrange(-limit, limit + 1)
            if -6.1e10 + 13e9 < instant < 2.53e11 - 13e9:
                yield "sum", name, instant, count, unit, zone.sum(instant, count, unit)
                span = dice.choice((2, 40, 400, 4000)) * DAY
                other = instant + dice.randrange(-span, span)
                yield "difference", name, instant, other, *zone.difference(instant, other)


def main():
    dice = random.Random(int(sys.argv[1]))
    number = 0
    for row in rows(identifiers(), dice):
        print(*row, sep="\t")
        number += 1
    print("rows", number, sep="\t")


main()
