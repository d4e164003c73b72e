"""C++ is laid out by clang-format, so that nobody has to talk about it."""

import shutil
import subprocess

FORMATTER = shutil.which("clang-format-14")
MINIMUM = 30
STYLE = "BasedOnStyle: Google\n"


def check(tree, _build):
    if not FORMATTER:
        return ["clang-format-14 is missing"]
    names = tree.cpp()
    for name in names:
        tree.bytes(name)
    result = subprocess.run([FORMATTER, "--dry-run", "--style=file", *names], cwd=tree.root,
                            capture_output=True, text=True, check=False)
    return [line for line in result.stderr.split("\n")
            if "clang-format-violations" in line or "error:" in line]


EXAMPLES = [
    ({".clang-format": STYLE, "app/a.cpp": "int a;\n"}, []),
    ({".clang-format": STYLE, "app/a.cpp": "int  a;\n"}, ["app/a.cpp:1:4"]),
]
