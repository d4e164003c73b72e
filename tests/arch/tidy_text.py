"""Nothing is left lying about in the text."""

import re

SUFFIXES = {".h", ".cpp", ".py", ".sh", ".cmake", ".txt", ".md", ".json", ".yml", ".in", ".desktop",
            ".xml", ".svg", ".1", ""}
LEFT_LYING = re.compile(r"\b(?:TO" r"DO|FIX" r"ME|X" r"XX|HA" r"CK)\b|<{7} |>{7} ")
NOT_TEXT = re.compile(r"tests/data/|fuzz/(corpus|seeds)/")
MINIMUM = 60


def check(tree, _build):
    findings = []
    for name in tree.files(SUFFIXES):
        if NOT_TEXT.match(name):
            continue
        text = tree.text(name)
        for number, line in enumerate(text.split("\n"), 1):
            if found := LEFT_LYING.search(line):
                findings.append(f"{name}:{number}: {found.group()}")
            if line != line.rstrip():
                findings.append(f"{name}:{number}: blanks at the end of the line")
        if text and not text.endswith("\n"):
            findings.append(f"{name}:{text.count(chr(10)) + 1}: no end of line at the end")
    findings += [f"{name}:1: no #pragma once" for name in tree.headers()
                 if "#pragma once" not in tree.text(name)]
    return findings


EXAMPLES = [
    ({"engine/a.cpp": "int a;  // TO" "DO later\n"}, ["engine/a.cpp:1: TO" "DO"]),
    ({"README.md": "one \ntwo"}, ["README.md:1: blanks", "README.md:2: no end of line"]),
    ({"app/b.h": "int b;\n"}, ["no #pragma once"]),
    ({"app/a.cpp": "int mkstemp(\"nameXXXXXX\");\n", "tests/data/a.tsv": "a\t \n"}, []),
]
