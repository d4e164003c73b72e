"""Words on the command line: what is text, what is an option, and what is wrong."""

import re
import subprocess
import unittest

from convert import PROGRAM, ConvertTest, convert, environment, value

NOW = ("--now", "2024-05-15T12:34:56Z")


class Words(ConvertTest):
    def test_plain_output(self):
        self.expect(
            convert("--zone", "Asia/Tokyo", *NOW, "1704067200"),
            out="Unix (s)   1704067200\n"
            "Unix (ms)  1704067200000\n"
            "ISO 8601   2024-01-01T09:00:00+09:00\n"
            "Formatted  Jan 1, 2024 at 9:00:00 AM\n"
            "Relative   4 months ago\n"
            "Detected: Unix (seconds)\n",
        )

    def test_detected(self):
        cases = {
            "now": "Now",
            "today": "Date math",
            "3 days ago": "Date math",
            "next friday": "Date math",
            "now + 2h": "Date math",
            "0": "Unix (seconds)",
            "1704067200000": "Unix (milliseconds)",
            "2024-01-01": "ISO 8601",
            "01/02/2024": "Date (MM/dd/yyyy)",
        }
        for text, detected in cases.items():
            with self.subTest(text):
                last = convert(text).stdout.decode().splitlines()[-1]
                self.assertEqual(last, "Detected: " + detected)

    def test_words_are_joined_by_blanks(self):
        joined = value("iso", "2024-01-31 + 1 month")
        self.assertEqual(joined, "2024-02-29T00:00:00Z")
        for words in (
            ("2024-01-31", "+", "1", "month"),
            ("2024-01-31 +", "1 month"),
            ("2024-01-31", "", "+", "1", "month", ""),
            ("", "2024-01-31 ", " + 1", "month"),
        ):
            with self.subTest(words):
                self.assertEqual(value("iso", *words), joined)

    def test_rows_alone(self):
        rows = {
            "unix-s": "1704067200",
            "unix-ms": "1704067200500",
            "iso": "2024-01-01T01:00:00+01:00",
            "formatted": "Jan 1, 2024 at 1:00:00 AM",
            "relative": "4 months ago",
        }
        for row, expected in rows.items():
            with self.subTest(row):
                got = value(row, "--zone", "Europe/Paris", *NOW, "1704067200.5")
                self.assertEqual(got, expected)

    def test_options_stand_anywhere(self):
        expected = "2024-01-02T09:00:00+09:00\n"
        for words in (
            ("--only", "iso", "--zone", "Asia/Tokyo", "1704067200", "+", "1d"),
            ("1704067200", "+", "1d", "--only", "iso", "--zone", "Asia/Tokyo"),
            ("1704067200", "--only=iso", "+", "--zone=Asia/Tokyo", "1d"),
            ("--zone", "UTC", "--only", "relative", "1704067200 + 1d", "--zone", "Asia/Tokyo",
             "--only", "iso"),
        ):
            with self.subTest(words):
                self.expect(convert(*words), out=expected)

    def test_dash_and_digits_is_text(self):
        for words in (("0", "-1d"), ("0 - 1d",), ("0", "-", "1d"), ("--", "0", "-1d"), ("0", "--", "-1d")):
            with self.subTest(words):
                self.assertEqual(value("unix-s", *words), "-86400")
        self.assertEqual(value("unix-s", "-0"), "0")
        self.assertEqual(value("unix-ms", "-.5", "+", "1s"), "500")
        for text in ("-1", "-5.5", "-.5", "-"):
            with self.subTest(text):
                err = f"Could not parse input: {text}\n".encode()
                self.expect(convert(text), status=1, out="", err=err)

    def test_double_dash_ends_the_options(self):
        self.assertEqual(value("unix-s", "--", "0"), "0")
        for word in ("--json", "--help", "--", "--zone", "-x"):
            with self.subTest(word):
                err = f"Could not parse input: {word}\n".encode()
                self.expect(convert("--", word), status=1, out="", err=err)

    def test_empty_text_is_a_text(self):
        for words in (("",), (" ",), ("", ""), ("--", "")):
            with self.subTest(words):
                done = convert(*words, input=b"0\n")
                self.assertEqual((done.returncode, done.stdout), (1, b""))
                self.assertRegex(done.stderr, rb"\ACould not parse input: *\n\Z")
        self.expect(convert("--", input=b"0\n"), out=None)

    def test_zone(self):
        def iso(zone, **variables):
            return value("iso", "--zone", zone, "1704067200", variables=variables)

        self.assertEqual(iso("UTC", TZ="Asia/Tokyo"), "2024-01-01T00:00:00Z")
        self.assertEqual(iso("local", TZ="Asia/Tokyo"), "2024-01-01T09:00:00+09:00")
        self.assertEqual(iso("Etc/GMT+3"), "2023-12-31T21:00:00-03:00")
        self.assertEqual(iso("Africa/Monrovia"), "2024-01-01T00:00:00Z")
        # What is shown in another zone is still read in the user's own.
        shown = value("iso", "--zone", "UTC", "2024-01-01 10:00:00", variables={"TZ": "Asia/Tokyo"})
        self.assertEqual(shown, "2024-01-01T01:00:00Z")

    def test_now(self):
        for now, expected in {
            "2024-01-01T00:00:00Z": "1704067200000",
            "2024-01-01": "1704067200000",
            "2024-01-01T05:30:00.25+05:30": "1704067200250",
            "0000-01-01T00:00:00Z": "-62167219200000",
            "9999-12-31T23:59:59Z": "253402300799000",
        }.items():
            with self.subTest(now):
                self.assertEqual(value("unix-ms", "--now", now, "now"), expected)
        self.assertEqual(value("relative", "--now", "2024-01-01", "1704063600"), "1 hour ago")

    def test_text_sees_one_now(self):
        for _ in range(20):
            self.assertEqual(value("relative", "now"), "in 0 seconds")
            self.assertEqual(value("relative", "now + 2h"), "in 2 hours")

    def test_wrong_usage(self):
        cases = [
            ("--zone",),
            ("--zone", ""),
            ("--zone=",),
            ("--zone", "Mars/Phobos", "0"),
            ("--zone", "utc", "0"),
            ("--zone", "JST-9", "0"),
            ("--zone", "localtime", "0"),
            ("--zone", "/etc/localtime", "0"),
            ("--zone", "../zoneinfo/UTC", "0"),
            ("--zone", "CEST\nCET", "0"),
            ("--zone", "x" * 10000, "0"),
            ("--now",),
            ("--now", "yesterday", "0"),
            ("--now", "1704067200", "0"),
            ("--now", "2024-01-01 00:00:00", "0"),
            ("--now", "2024-01-01T00:00:00", "0"),
            ("--now", " 2024-01-01", "0"),
            ("--now", "10000-01-01T00:00:00Z", "0"),
            ("--only",),
            ("--only", "", "0"),
            ("--only", "iso8601", "0"),
            ("--only", "ISO", "0"),
            ("--only", "unix", "0"),
            ("--only", "iso", "--json", "0"),
            ("--json", "--only", "iso", "0"),
            ("--json=true", "0"),
            ("--jsn", "0"),
            ("--only iso", "0"),
            ("-z", "UTC", "0"),
            ("-inf",),
            ("0", "--bad"),
            ("--\x1b[31m", "0"),
            ("---", "0"),
        ]
        for words in cases:
            with self.subTest(words):
                done = convert(*words, input=b"0\n")
                self.assertEqual((done.returncode, done.stdout), (2, b""))
                self.assertRegex(done.stderr.decode(), r"\Ahoralo convert: [^\x00-\x1f\x7f]+\n\Z")
                self.assertLess(len(done.stderr), 400)
        self.assertEqual(len(cases), 33)

    def test_message_of_a_failure(self):
        cases = {
            "hello": "hello",
            "a\tb\nc": "a\ufffdb\ufffdc",
            "\x1b[31mred\x7f": "\ufffd[31mred\ufffd",
            "\u0085\u009f": "\ufffd\ufffd",
            "é日本🎉": "é日本🎉",
            "x" * 200: "x" * 200,
            "x" * 201: "x" * 200,
            "日" * 300: "日" * 200,
            "x" * 199 + "\n" + "y": "x" * 199 + "\ufffd",
        }
        for text, shown in cases.items():
            with self.subTest(text[:20]):
                err = f"Could not parse input: {shown}\n".encode()
                self.expect(convert(text), status=1, out="", err=err)
        done = convert(b"\xff\xe2\x82x")
        self.assertEqual(done.stderr.decode(), "Could not parse input: \ufffd\ufffdx\n")

    def test_failure_alone_leaves_an_empty_line(self):
        for row in ("unix-s", "unix-ms", "iso", "formatted", "relative"):
            err = b"Could not parse input: hello\n"
            self.expect(convert("--only", row, "hello"), status=1, out="\n", err=err)

    def test_help(self):
        done = convert("--help")
        self.expect(done)
        text = done.stdout.decode()
        for option in ("--zone", "--now", "--only", "--json", "--help", "--"):
            self.assertRegex(text, rf"(?m)^  {option} ")
            self.assertRegex(text, rf"(?m)^ +horalo convert .*{option}\b" if option != "--" else " -- ")
        self.assertEqual(convert("-h").stdout.decode(), text)
        self.assertEqual(convert("0", "--help").stdout.decode(), text)
        self.assertLessEqual(max(map(len, text.splitlines())), 100)

    def test_examples_of_the_help_work(self):
        text = convert("--help").stdout.decode()
        examples = re.findall(r"(?m)^ +horalo (convert .*)$", text)
        self.assertGreaterEqual(len(examples), 8)
        for example in examples:
            words = example.split()
            if "<" in words or words[-1] == "--help":
                continue
            with self.subTest(example):
                done = subprocess.run(
                    [PROGRAM, *words], capture_output=True, env=environment(), check=False
                )
                self.assertEqual((done.returncode, done.stderr), (0, b""))
                self.assertTrue(done.stdout)


if __name__ == "__main__":
    unittest.main()
