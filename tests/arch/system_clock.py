"""One file alone reads the computer's wall clock."""

import re

from source_tree import lines_matching

READER = "base/clock.cpp"
MINIMUM = 25

CLOCK = re.compile(r"""
    \b(?: (?:system|utc|tai|gps|file|high_resolution)_clock
      | gettimeofday | clock_gettime | timespec_get | ftime
      | GetCurrentTimeNanos | getNow | ucal_getNow
      | currentDateTime | currentDateTimeUtc | currentDate | currentTime
      | currentMSecsSinceEpoch | currentSecsSinceEpoch )\b
  | \babsl::Now\b
  | (?<![\w.>]) (?:std::|::)? time \s* \( \s* (?: nullptr | NULL | 0 | & [^()]* ) \s* \)
""", re.VERBOSE)


def check(tree, _build):
    findings = []
    for name in tree.cpp():
        if name == READER or name.startswith("tests/"):
            continue
        for line, text in lines_matching(tree.code(name), CLOCK):
            findings.append(f"{name}:{line}: {text} reads the wall clock; ask a Clock")
    return findings


EXAMPLES = [
    ({"base/clock.cpp": "auto t = std::chrono::system_clock::now();\n"}, []),
    ({"app/a.cpp": "auto t = std::chrono::system_clock::now();\n"}, ["app/a.cpp:1: system_clock"]),
    ({"app/a.cpp": "\nauto t = QDateTime::currentDateTime();\n"}, ["app/a.cpp:2: currentDateTime"]),
    ({"engine/a.cpp": "auto t = absl::Now();\nauto u = std::time(nullptr);\n"},
     ["absl::Now", "std::time(nullptr)"]),
    ({"cli/a.cpp": "time_t t; ::time(&t); clock_gettime(CLOCK_REALTIME, &s);\n"},
     ["::time(&t)", "clock_gettime"]),
    ({"engine/a.h": "// not system_clock\nint n = 1'000; auto s = \"system_clock\"; "
                    "double time(int zone); x = zone.time(0);\n"}, []),
    ({"engine/a.h": "auto s = R\"(\")\"; auto t = system_clock::now();\n"}, ["system_clock"]),
]
