"""One JSON object a text."""

import json
import random
import unittest

from convert import ConvertTest, convert


def objects(done):
    return [json.loads(line) for line in done.stdout.decode().removesuffix("\n").split("\n")]


class Json(ConvertTest):
    def test_every_byte_of_an_object(self):
        row = '{"label":"%s","value":"%s"}'
        rows = ",".join(
            row % pair
            for pair in (
                ("Unix (s)", "1704067200"),
                ("Unix (ms)", "1704067200000"),
                ("ISO 8601", "2024-01-01T09:00:00+09:00"),
                ("Formatted", "Jan 1, 2024 at 9:00:00 AM"),
                ("Relative", "1 year ago"),
            )
        )
        text = '{"input":"1704067200","source":{"kind":"unixSeconds"},'
        text += '"detected":"Unix (seconds)","zone":"Asia/Tokyo","rows":[' + rows + "]}\n"
        done = convert("--json", "--zone", "Asia/Tokyo", "--now", "2025-01-01", "1704067200")
        self.expect(done, out=text)

    def test_sources(self):
        cases = {
            "now": {"kind": "now"},
            "TODAY": {"kind": "dateMath", "expression": "today"},
            " 3 Days ago ": {"kind": "dateMath", "expression": "3 Days ago"},
            "now\t+ 2H": {"kind": "dateMath", "expression": "now\t+ 2H"},
            "0": {"kind": "unixSeconds"},
            "1704067200000": {"kind": "unixMilliseconds"},
            "2024-01-01": {"kind": "iso8601"},
            "Jan 05, 2024": {"kind": "humanDate", "format": "MMM dd, yyyy"},
        }
        for text, source in cases.items():
            with self.subTest(text):
                (made,) = objects(convert("--json", text))
                self.assertEqual(made["input"], text)
                self.assertEqual(made["source"], source)
                self.assertEqual(
                    list(made), ["input", "source", "detected", "zone", "rows"]
                )

    def test_failure(self):
        self.expect(
            convert("--json", "hello"),
            status=1,
            out='{"input":"hello","error":"Could not parse input"}\n',
        )

    def test_zone_is_its_identifier(self):
        for variable, identifier in {
            "Asia/Tokyo": "Asia/Tokyo",
            ":Europe/Paris": "Europe/Paris",
            "JST-9": "JST-9",
            "UTC": "UTC",
            "": "Etc/UTC",
        }.items():
            for words in ((), ("--zone", "local")):
                (made,) = objects(convert("--json", *words, "0", variables={"TZ": variable}))
                self.assertEqual(made["zone"], identifier)
        (made,) = objects(convert("--json", "--zone", "Europe/London", "0"))
        self.assertEqual(made["zone"], "Europe/London")

    def test_controls_are_escaped(self):
        controls = [chr(c) for c in (*range(1, 10), *range(11, 32), 127, *range(128, 160))]
        others = ['"', "\\", "/", "é", "\u2028", "\u2029", "\ufeff", "🎉", "\u00a0", "¿"]
        for c in controls + others:
            with self.subTest(repr(c)):
                done = convert("--json", "x" + c + "y")
                (made,) = objects(done)
                self.assertEqual(made["input"], "x" + c + "y")
                raw = done.stdout.decode().removesuffix("\n")
                self.assertFalse([x for x in raw if ord(x) < 32 or 127 <= ord(x) < 160], raw)
        self.assertEqual(len(controls + others), 73)

    def test_line_is_kept_as_read(self):
        lines = [b"1704067200\r", b" now ", b"", b"\0", b"a\0b", b"\t", b'"', b"x" * 100000]
        made = objects(convert("--json", input=b"\n".join(lines) + b"\n"))
        self.assertEqual([o["input"].encode() for o in made], lines)

    def test_bytes_that_are_no_text(self):
        """Random bytes are read as another decoder reads them."""
        dice = random.Random(99)
        pieces = [bytes([b]) for b in range(256) if b != 10]
        pieces += [b"\xe2\x82\xac", b"\xf0\x9f\x8e\x89", b"\xe2\x82", b"\xf0\x9f", b"\xed\xa0\x80"]
        pieces += [b"\xc0\x80", b"\xf4\x90\x80\x80", b"\xc3", b"now", b"1704067200", b" + 1d"] * 8
        lines = [b"".join(dice.choices(pieces, k=dice.randrange(8))) for _ in range(20000)]
        done = convert("--json", input=b"\n".join(lines) + b"\n")
        self.assertEqual(done.stderr, b"")
        made = objects(done)
        self.assertEqual(len(made), 20000)
        for line, o in zip(lines, made):
            self.assertEqual(o["input"], line.decode("utf-8", "replace"), line)
        self.assertGreater(sum("rows" in o for o in made), 100)

    def test_order_is_that_of_the_input(self):
        lines = [str(n) if n % 3 else f"x{n}" for n in range(5000)]
        done = convert("--json", input="\n".join(lines).encode())
        self.assertEqual(done.returncode, 1)
        made = objects(done)
        self.assertEqual([o["input"] for o in made], lines)
        for o in made:
            self.assertEqual("error" in o, o["input"].startswith("x"))


if __name__ == "__main__":
    unittest.main()
