"""The user's zone and language, as the environment tells them."""

import unittest

from convert import ConvertTest, convert, value

NEW_YEAR = "1704067200"


class User(ConvertTest):
    def test_zone_of_the_environment(self):
        cases = {
            "Europe/Paris": "2024-01-01T01:00:00+01:00",
            ":Europe/Paris": "2024-01-01T01:00:00+01:00",
            "JST-9": "2024-01-01T09:00:00+09:00",
            "<+0545>-5:45": "2024-01-01T05:45:00+05:45",
            "EST5EDT,M3.2.0,M11.1.0": "2023-12-31T19:00:00-05:00",
            "/usr/share/zoneinfo/Asia/Kathmandu": "2024-01-01T05:45:00+05:45",
            "": "2024-01-01T00:00:00Z",
            "No/Where": "2024-01-01T00:00:00Z",
        }
        for zone, expected in cases.items():
            with self.subTest(zone):
                self.assertEqual(value("iso", NEW_YEAR, variables={"TZ": zone}), expected)
                read = value("unix-s", "2024-01-01 00:00:00", variables={"TZ": zone})
                back = value("iso", read, variables={"TZ": zone})
                self.assertEqual(back[:19], "2024-01-01T00:00:00")

    def test_first_language_that_is_set_counts(self):
        english, german = "Jan 1, 2024 at 12:00:00 AM", "01.01.2024 um 00:00:00"
        french, japanese = "1 janv. 2024 à 00:00:00", "2024/01/01 0:00:00"
        cases = [
            ({"LANG": None}, english),
            ({"LANG": ""}, english),
            ({"LANG": "C"}, english),
            ({"LANG": "C.UTF-8"}, english),
            ({"LANG": "de_DE.UTF-8"}, german),
            ({"LANG": "de_DE"}, german),
            ({"LANG": "de_DE@euro"}, german),
            ({"LANG": "de_DE.UTF-8", "LC_TIME": "fr_FR.UTF-8"}, french),
            ({"LANG": "de_DE.UTF-8", "LC_TIME": ""}, german),
            ({"LANG": "de_DE.UTF-8", "LC_TIME": "fr_FR", "LC_ALL": "ja_JP.UTF-8"}, japanese),
            ({"LANG": "de_DE.UTF-8", "LC_ALL": ""}, german),
            ({"LANG": "de_DE.UTF-8", "LC_ALL": "POSIX"}, english),
            ({"LANG": "de_DE.UTF-8", "LANGUAGE": "fr:ja"}, german),
            ({"LANG": "de_DE.UTF-8", "LC_MESSAGES": "fr_FR.UTF-8"}, german),
        ]
        for variables, expected in cases:
            with self.subTest(variables):
                self.assertEqual(value("formatted", NEW_YEAR, variables=variables), expected)
        self.assertEqual(len(cases), 14)

    def test_language_that_is_none(self):
        for language in ("xx_YY", "/usr/lib/locale/x", "a" * 1000, "de_DE_" + "X" * 200, "~;=", "\udcff"):
            with self.subTest(language[:20]):
                done = convert(NEW_YEAR, variables={"LC_ALL": language})
                self.expect(done)
                self.assertEqual(len(done.stdout.splitlines()), 6)
                self.assertFalse([x for x in done.stdout.splitlines() if len(x) < 12])

    def test_other_rows_are_the_same_in_every_language(self):
        for language in ("ar_EG.UTF-8", "fa_IR.UTF-8", "th_TH.UTF-8", "tr_TR.UTF-8", "de_DE.UTF-8"):
            with self.subTest(language):
                done = convert("Jan 05, 2024", variables={"LC_ALL": language})
                lines = done.stdout.decode().splitlines()
                self.assertEqual(lines[:3], [
                    "Unix (s)   1704412800",
                    "Unix (ms)  1704412800000",
                    "ISO 8601   2024-01-05T00:00:00Z",
                ])
                self.assertEqual(lines[5], "Detected: Date (MMM dd, yyyy)")

    def test_turkish_capitals(self):
        for text in ("FRI", "NEXT FRIDAY", "next friday", "3 MINUTES AGO", "0 + 1 MIN"):
            with self.subTest(text):
                variables = {"LC_ALL": "tr_TR.UTF-8"}
                done = convert("--only", "unix-s", text, variables=variables)
                english = convert("--only", "unix-s", text)
                self.assertEqual(done.returncode, english.returncode)
        self.assertEqual(value("unix-s", "0 + 1 MIN", variables={"LC_ALL": "tr_TR.UTF-8"}), "60")

    def test_message_is_the_same_in_every_language(self):
        done = convert("hello", variables={"LC_ALL": "de_DE.UTF-8"})
        self.expect(done, status=1, out="", err=b"Could not parse input: hello\n")


if __name__ == "__main__":
    unittest.main()
