"""Generated texts, and what a second reader makes of each, in many zones and at many times."""

import collections
import json
import os
import random
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "oracle"))

from convert import ConvertTest, convert
from text_maker import TextMaker
from text_reader import Beyond, Zone, read, rows

SITUATIONS = [
    # The user's zone, the zone shown, the current instant.
    ("UTC", "UTC", "2024-05-15T12:34:56Z"),
    ("America/New_York", "America/New_York", "2024-03-10T18:00:00.5Z"),
    ("America/New_York", "UTC", "2024-11-03T05:30:00Z"),
    ("Europe/London", "Asia/Tokyo", "2024-10-27T00:59:59Z"),
    ("Australia/Lord_Howe", "Australia/Lord_Howe", "2024-04-06T15:15:00Z"),
    ("America/Sao_Paulo", "Europe/Paris", "2018-11-04T12:00:00Z"),
    ("Asia/Beirut", "Asia/Beirut", "2024-03-31T10:00:00Z"),
    ("Pacific/Apia", "Pacific/Apia", "2011-12-30T11:00:00Z"),
    ("Asia/Kathmandu", "Asia/Kathmandu", "2040-02-29T20:00:00.999999999Z"),
    ("America/Havana", "America/Havana", "2024-11-03T12:00:00Z"),
    ("Africa/Casablanca", "Africa/Casablanca", "2050-06-01T00:00:00Z"),
    ("America/St_Johns", "America/St_Johns", "2010-11-07T12:00:00Z"),
]
TEXTS = 4000


def expected(text, now, zone, shown):
    found = read(text, now, zone)
    if found is None:
        return None
    kind, payload, nanoseconds = found
    return [kind, payload, *rows(nanoseconds, shown)]


def answer(line):
    made = json.loads(line)
    if "error" in made:
        return None
    source = made["source"]
    payload = source.get("format", source.get("expression", ""))
    return [source["kind"], payload] + [row["value"] for row in made["rows"][:3]]


class SecondReading(ConvertTest):
    def test_both_readings_agree(self):
        dice = random.Random(20240515)
        maker = TextMaker(dice)
        kinds = collections.Counter()
        differences = []
        for user, shown, now in SITUATIONS:
            texts = [maker.text().replace("\n", " ") for _ in range(TEXTS)]
            done = convert("--json", "--zone", shown, "--now", now,
                           input="\n".join(texts).encode() + b"\n", variables={"TZ": user})
            self.assertEqual(done.stderr, b"")
            lines = done.stdout.decode().removesuffix("\n").split("\n")
            self.assertEqual(len(lines), TEXTS)
            _, _, instant = read(now, 0, None)
            for text, line in zip(texts, lines):
                got = answer(line)
                try:
                    wanted = expected(text, instant, Zone(user), Zone(shown))
                except Beyond:
                    kinds["beyond"] += 1
                    continue
                kinds[wanted and wanted[0]] += 1
                if got != wanted:
                    differences.append((text, user, shown, now, wanted, got))
        for difference in differences[:20]:
            print(*map(repr, difference))
        self.assertEqual(len(differences), 0)
        total = len(SITUATIONS) * TEXTS
        self.assertEqual(sum(kinds.values()), total)
        self.assertLess(kinds["beyond"], total / 20, kinds)
        self.assertLess(kinds[None], total * 2 / 3, kinds)
        for kind in ("humanDate", "dateMath", "unixSeconds", "unixMilliseconds", "iso8601", "now"):
            self.assertGreater(kinds[kind], total / 200, kinds)


if __name__ == "__main__":
    unittest.main()
