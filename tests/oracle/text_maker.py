"""Makes texts that people might type, and texts that are nearly such."""

import datetime

from text_reader import LAYOUTS, MONTHS, UNIT_OF, WEEKDAYS

GAPS = [" "] * 12 + ["", "  ", "\t", "\u00a0", "\u3000", "\u2028", "\u200b"]
ODDITIES = list("0123456789+-/:,. TZtzeExXs") + ["\u017f", "\u212a", "\u0661", "\uff11", "\x00",
            "\u0130", "\u2212", "\u00a0", "\u0085", "\ufeff", "é", "\x1f", "\r"]  # fmt: skip


class TextMaker:
    def __init__(self, dice):
        self.dice = dice

    def text(self):
        made = self.dice.choice(
            (self.word, self.ago, self.weekday, self.offset, self.offset, self.number, self.number,
             self.iso, self.layout, self.layout)
        )()  # fmt: skip
        for _ in range(self.dice.choice((0, 0, 0, 0, 0, 0, 1, 1, 2))):
            place = self.dice.randrange(len(made) + 1)
            made = made[:place] + self.dice.choice(ODDITIES) + made[place + self.dice.randrange(2) :]
        if self.dice.randrange(8) == 0:
            made = "".join(c.upper() if self.dice.randrange(2) else c for c in made)
        if self.dice.randrange(8) == 0:
            made = self.gap() + made + self.gap()
        return made

    def gap(self):
        return self.dice.choice(GAPS)

    def count(self):
        return str(self.dice.choice((self.dice.randrange(10), self.dice.randrange(10000))))

    def word(self):
        return self.dice.choice(("now", "today", "yesterday", "tomorrow", "noon", "", "inf", "nan"))

    def ago(self):
        unit = self.dice.choice(("second", "minute", "hour", "day", "week", "month", "year", "mo"))
        return self.count() + self.gap() + unit + self.dice.choice("s s") + self.gap() + "ago"

    def weekday(self):
        day = self.dice.choice(WEEKDAYS + ["day", "mon"])
        return self.dice.choice(("next", "last", "this")) + self.gap() + day

    def offset(self):
        base = self.dice.choice(
            (lambda: "now", self.number, self.iso, self.layout, self.word)
        )()
        unit = self.dice.choice(list(UNIT_OF) + ["fortnight"])
        sign = self.dice.choice("+-")
        return base + self.gap() + sign + self.gap() + self.count() + self.gap() + unit

    def number(self):
        kind = self.dice.randrange(10)
        if kind == 0:
            return self.dice.choice(("0x", "-0X")) + f"{self.dice.randrange(2**40):x}" + self.dice.choice(
                ("", ".8", "p3", "p-7", "P+2"))
        if kind == 1:
            return f"{self.dice.randrange(10**9)}e{self.dice.randrange(-12, 6)}"
        if kind == 2:
            return f"-{self.dice.randrange(10**11)}"
        size = self.dice.choice((1, 5, 9, 10, 10, 10, 11, 12, 13, 13, 13, 14, 15, 16, 19))
        text = str(self.dice.randrange(10**size))
        if self.dice.randrange(3) == 0:
            text += "." + str(self.dice.randrange(10 ** self.dice.randrange(1, 12)))
        return text

    def moment(self):
        year = self.dice.choice((self.dice.randrange(1960, 2060), self.dice.randrange(100, 9990)))
        return datetime.datetime(year, 1, 1) + datetime.timedelta(
            seconds=self.dice.randrange(366 * 86400)
        )

    def iso(self):
        moment = self.moment()
        if self.dice.randrange(4) == 0:
            return moment.date().isoformat()
        text = moment.isoformat()
        if self.dice.randrange(2):
            text += "." + str(self.dice.randrange(10 ** self.dice.randrange(1, 13)))
        return text + self.dice.choice(
            ("Z", "Z", "Z", "", "z", "+05:30", "-08:00", "+14:00", "+0530", "-23:59", "+24:00")
        )

    def layout(self):
        moment = self.moment()
        # Not padded now and then, and with days and months that do not exist.
        width = self.dice.choice(("02", "02", "02", "02", "02", "02", "02", ""))
        odd = self.dice.randrange(6) == 0
        month = self.dice.randrange(14) if odd else moment.month
        day = self.dice.randrange(33) if odd else moment.day
        text = self.dice.choice(LAYOUTS)
        name = MONTHS[(month - 1) % 12].capitalize()
        for field, value in (
            ("yyyy", f"{moment.year:04}"), ("HH", f"{moment.hour:{width}}"),
            ("mm", f"{moment.minute:{width}}"), ("ss", f"{moment.second:{width}}"),
            ("dd", f"{day:{width}}"),
        ):  # fmt: skip
            text = text.replace(field, value)
        for field, value in (("MMMM", name), ("MMM", name[:3]), ("MM", f"{month:{width}}")):
            if field in text:
                return text.replace(field, value)
        raise AssertionError(text)
