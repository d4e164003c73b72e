"""Seeds for the fuzz targets: every text in the case tables of the tests."""

import json
import pathlib
import re

DATA = pathlib.Path(__file__).resolve().parent.parent / "tests" / "data"
FEWEST = 100  # with fewer, the tables were not found
ESCAPE = re.compile(rb"\\(?:x([0-9A-Fa-f]{2})|u\{([0-9A-Fa-f]+)\}|(.))")
LETTERS = {b"s": b" ", b"t": b"\t", b"n": b"\n", b"r": b"\r", b"0": b"\0"}


def unescaped(cell):
    def replace(match):
        byte, code_point, letter = match.groups()
        if byte:
            return bytes([int(byte, 16)])
        if code_point:
            return chr(int(code_point, 16)).encode("utf-8", "replace")
        return LETTERS.get(letter, letter)
    return ESCAPE.sub(replace, cell)


def texts_in_json(value):
    if isinstance(value, str):
        yield value.encode()
    elif isinstance(value, (dict, list)):
        for part in value.values() if isinstance(value, dict) else value:
            yield from texts_in_json(part)


def texts():
    for table in DATA.rglob("*.jsonl"):
        for line in table.read_text(encoding="utf-8").splitlines():
            yield from texts_in_json(json.loads(line))
    for table in DATA.rglob("*.tsv"):
        for line in table.read_bytes().split(b"\n"):
            if line.startswith(b"@"):  # @zone Asia/Tokyo
                line = line.partition(b" ")[2]
            if not line.startswith(b"#"):
                yield from map(unescaped, line.split(b"\t"))


def seeds():
    """The texts, sorted, each once."""
    found = sorted({text for text in texts() if text})
    if len(found) < FEWEST:
        raise SystemExit(f"Only {len(found)} texts in {DATA}")
    return found
