"""Who may include whom."""

import functools
import pathlib
import re

STANDARD = set("""
algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine
csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque
exception execution filesystem format forward_list fstream functional future initializer_list iomanip
ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex new
numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore set
shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view
strstream syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map
unordered_set utility valarray variant vector version
""".split())

WIDGETS = {"QtGui", "QtWidgets", "QtSvg", "QtSvgWidgets"}
ANYTHING = None  # no limit
PARTS = {"base", "engine", "preferences", "converter", "clipboard", "hotkey"}

# folder: (folders of ours beside its own, libraries beside the standard one)
TABLE = {
    "base": (set(), {"absl", "posix"}),
    "engine": ({"base"}, {"absl", "icu", "posix"}),
    "preferences": ({"base"}, {"QtCore", "posix"}),
    "converter": ({"base", "engine", "preferences"}, {"QtCore"}),
    "clipboard": ({"base", "engine", "preferences"}, {"QtCore"}),
    "hotkey": ({"base", "preferences"}, {"QtCore"}),
    "ui": ({"base"}, {"QtCore"} | WIDGETS),
    "platform": ({"base"}, ANYTHING),
    "app": (PARTS | {"ui"}, ANYTHING),
    "cli": (PARTS | {"app"}, ANYTHING),
    "fuzz": (PARTS | {"app", "cli", "platform"}, ANYTHING),
    "bench": (PARTS | {"app", "cli", "platform"}, ANYTHING),
}

# The two places that know which desktop this is.
KNOWS_PLATFORM = re.compile(r"(app/composition\w*(/.*)?|(app|cli)/(\w+_)?main)\.(cpp|h)")
# What tells a command which running program is this session's.
SESSION = "platform/session.h"
# What a backend may know of the folder that uses it: the interface that it implements.
INTERFACE = re.compile(r".*/\w+_backend\.h|clipboard/pasteboard\.h")

MINIMUM = 30
QT_HEADERS = [p for p in pathlib.Path("/usr/include").glob("*/qt6/Qt*") if p.is_dir()]


@functools.lru_cache(maxsize=None)
def library_of(header):
    """The library of a header in angle brackets."""
    if header in STANDARD:
        return "std"
    first = header.split("/")[0]
    if first == "absl":
        return "absl"
    if first == "unicode":
        return "icu"
    if re.match(r"q|Q", header):
        if first.startswith("Qt") and "/" in header:
            return first
        for module in QT_HEADERS:
            if (module / header).is_file():
                return module.name
        return "Qt"
    if re.match(r"(sys|linux|net|netinet|arpa)/|(unistd|fcntl|poll|pwd|signal|errno|dirent|spawn)\.h",
                header):
        return "posix"
    return first.removesuffix(".h")


def is_views(name):
    return "/views/" in name


def views_may_include(name, target):
    folder, other = name.split("/")[0], target.split("/")[0]
    if other in (folder, "ui") or folder == "app" and is_views(target):
        return True
    return not is_views(target) and other in TABLE[folder][0]


def values_named_by_interfaces(tree):
    """The headers that the interfaces name, and those that these name."""
    known, waiting = set(), [h for h in tree.headers() if INTERFACE.fullmatch(h)]
    while waiting:
        header = waiting.pop()
        if header in known or not tree.exists(header):
            continue
        known.add(header)
        waiting += [i.strip('"') for _, i in tree.includes(header) if i.startswith('"')]
    return known


def may_include(name, target, platform_knows):
    folder, other = name.split("/")[0], target.split("/")[0]
    if other == "platform" and folder in ("app", "cli"):
        return (bool(KNOWS_PLATFORM.fullmatch(name)) or
                folder == "cli" and target == SESSION)
    if folder == "platform":
        return other in ("base", "platform") or target in platform_knows
    if is_views(name):
        return views_may_include(name, target)
    if is_views(target):
        return folder == "app"
    return other == folder or other in TABLE[folder][0]


def may_use(name, library):
    folder = name.split("/")[0]
    allowed = TABLE[folder][1]
    if library == "std" or allowed is ANYTHING:
        return True
    return library in allowed or is_views(name) and library in WIDGETS | {"QtCore"}


def check(tree, _build):
    platform_knows = values_named_by_interfaces(tree)
    findings = []
    for name in tree.files({".h", ".cpp"}):
        folder = name.split("/")[0]
        if folder == "tests":
            continue
        if folder not in TABLE:
            findings.append(f"{name}:1: the folder {folder} has no place in the house")
            continue
        for line, included in tree.includes(name):
            target = included[1:-1]
            if included.startswith("<"):
                library = library_of(target)
                if not may_use(name, library):
                    findings.append(f"{name}:{line}: {folder} may not use {library} ({included})")
            elif target.endswith(".moc") or folder == "platform" and "/" not in target:
                pass  # made by the build
            elif not tree.exists(target):
                findings.append(f"{name}:{line}: {included} is not written from the root")
            elif not may_include(name, target, platform_knows):
                findings.append(f"{name}:{line}: {name} may not include {target}")
    return findings


def example(name, *includes):
    """A file that includes others, which exist if they are written from the root."""
    files = {i.strip('"'): "#pragma once\n" for i in includes if i.startswith('"') and ".." not in i}
    return {**files, name: "".join(f"#include {i}\n" for i in includes)}


EXAMPLES = [
    (example("engine/a.cpp", '"engine/a.h"', '"base/b.h"', "<absl/time/time.h>", "<vector>"), []),
    (example("engine/a.h", "<QString>"), ["engine may not use QtCore"]),
    (example("base/a.h", '"engine/b.h"', "<unicode/calendar.h>"),
     ["may not include engine/b.h", "may not use icu"]),
    (example("converter/a.h", '"converter/views/b.h"', "<QWidget>"),
     ["may not include converter/views/b.h", "may not use QtWidgets"]),
    (example("converter/views/a.h", '"converter/b.h"', '"engine/c.h"', '"ui/d.h"', "<QWidget>"), []),
    (example("converter/views/a.h", '"clipboard/views/b.h"', '"app/c.h"'),
     ["may not include clipboard/views/b.h", "may not include app/c.h"]),
    (example("app/views/a.h", '"clipboard/views/b.h"'), []),
    (example("app/a.cpp", '"platform/x11/b.h"'), ["may not include platform/x11/b.h"]),
    (example("app/composition.cpp", '"platform/x11/b.h"'), []),
    (example("cli/convert.cpp", '"app/views/b.h"'), ["may not include app/views/b.h"]),
    (example("engine/a.cpp", '"platform/session.h"'), ["may not include platform/session.h"]),
    (example("cli/ask.cpp", '"platform/session.h"', '"platform/x11/b.h"'),
     ["may not include platform/x11/b.h"]),
    ({**example("platform/x11/a.cpp", '"hotkey/hotkey_backend.h"', '"hotkey/key.h"', '"hotkey/no.h"'),
      "hotkey/hotkey_backend.h": '#include "hotkey/key.h"\n'}, ["may not include hotkey/no.h"]),
    (example("engine/a.cpp", '"../base/b.h"'), ["not written from the root"]),
    ({"engine/a.cpp": '// #include <QString>\n/*\n#include "app/b.h"\n*/\n'}, []),
    ({"gadgets/a.cpp": "\n"}, ["no place in the house"]),
]
