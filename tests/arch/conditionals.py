"""Which desktop this is, is decided by the build and by platform/, not in the middle of code."""

import re

from source_tree import lines_matching

CONDITIONAL = re.compile(r"^[ \t]*#[ \t]*(?:if|ifdef|ifndef|elif)\b.*", re.MULTILINE)
MAY = re.compile(r"platform/.*|app/composition.*")
MINIMUM = 30


def check(tree, _build):
    findings = []
    for name in tree.cpp():
        if MAY.match(name):
            continue
        for line, text in lines_matching(tree.code(name), CONDITIONAL):
            findings.append(f"{name}:{line}: {text}")
    return findings


EXAMPLES = [
    ({"app/a.cpp": "\n  # ifdef __linux__\n#endif\n"}, ["app/a.cpp:2: # ifdef __linux__"]),
    ({"engine/a.h": "#ifndef A_H\n#define A_H\n#endif\n"}, ["engine/a.h:1: #ifndef A_H"]),
    ({"platform/a.cpp": "#if defined(__linux__)\n#endif\n", "app/composition_x11.cpp": "#if 1\n#endif\n",
      "base/a.h": "// #if 0\n"}, []),
]
