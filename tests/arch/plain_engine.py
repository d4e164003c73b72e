"""The engine's headers speak the standard library's types and its own, nobody else's."""

import re

from source_tree import lines_matching

FOREIGN = re.compile(r"\b(?:absl|icu|icu_\d+|cctz)::\w+|\bQ[A-Z]\w+|\bU(?:Char|Date|ErrorCode)\b")
MINIMUM = 9


def check(tree, _build):
    findings = []
    for name in tree.headers(("engine",)):
        for line, included in tree.includes(name):
            if re.match(r'<.*[/.]|"(?!base/|engine/)', included):
                findings.append(f"{name}:{line}: {included} in a header")
        for line, text in lines_matching(tree.code(name), FOREIGN):
            findings.append(f"{name}:{line}: {text} in a header")
    return findings


EXAMPLES = [
    ({"engine/a.h": "#include <string>\n#include \"base/b.h\"\nstd::string f();  // absl::Time\n",
      "engine/a.cpp": "#include <absl/time/time.h>\nabsl::Time t;\n"}, []),
    ({"engine/a.h": "#include <absl/time/time.h>\nabsl::Time f();\n"},
     ["<absl/time/time.h>", "engine/a.h:2: absl::Time"]),
    ({"engine/a.h": "namespace icu { class Calendar; }\nicu::Calendar* f();\nQString g();\n"},
     ["icu::Calendar", "QString"]),
]
