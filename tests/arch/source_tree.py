"""The project's own files, and what the checks read in them."""

import pathlib
import re

PRODUCT = ("base", "engine", "preferences", "converter", "hotkey", "clipboard", "ui", "platform",
           "app", "cli")
CODE = PRODUCT + ("fuzz", "bench", "tests")
NOT_OURS = {".git", "build", ".cache", "__pycache__"}

TOKEN = re.compile(
    r"""
    (?P<raw>R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)")
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<include>^[ \t]*\#[ \t]*include[^\n]*)
  | (?P<string>"(?:\\.|[^"\\\n])*")
  | (?P<number>\b\d[\w.']*)
  | (?P<character>'(?:\\.|[^'\\\n])+')
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE)
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(<[^>\n]+>|"[^"\n]+")', re.MULTILINE)


def without_comments(text):
    """C++ text with comments and the insides of literals taken out; lines keep their numbers."""
    def replace(match):
        kind = match.lastgroup if match.lastgroup != "mark" else "raw"
        if kind in ("include", "number"):
            return match.group()
        kept = "\n" * match.group().count("\n")
        return kept if kind == "comment" else '""' + kept
    return TOKEN.sub(replace, text)


class SourceTree:
    """The files below a folder. `read` counts, so that no check can pass without looking."""

    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.files_read = 0

    def files(self, suffixes=None, folders=None):
        """Paths from the root, sorted."""
        found = []
        for path in self.root.rglob("*"):
            name = path.relative_to(self.root)
            if NOT_OURS.isdisjoint(name.parts) and path.is_file():
                if suffixes and path.suffix not in suffixes:
                    continue
                if folders and name.parts[0] not in folders:
                    continue
                found.append(name.as_posix())
        return sorted(found)

    def headers(self, folders=CODE):
        return self.files({".h"}, folders)

    def cpp(self, folders=CODE):
        return self.files({".h", ".cpp"}, folders)

    def exists(self, name):
        return (self.root / name).is_file()

    def bytes(self, name):
        self.files_read += 1
        return (self.root / name).read_bytes()

    def text(self, name):
        return self.bytes(name).decode("utf-8")

    def code(self, name):
        return without_comments(self.text(name))

    def includes(self, name):
        """(line, included) for each include; included keeps its brackets or quotes."""
        code = self.code(name)
        return [(code.count("\n", 0, m.start()) + 1, m.group(1)) for m in INCLUDE.finditer(code)]


def lines_matching(code, pattern):
    """(line number, matched text) for each match of a compiled pattern."""
    return [(code.count("\n", 0, m.start()) + 1, m.group().strip()) for m in pattern.finditer(code)]
