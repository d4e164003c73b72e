"""Every header compiles by itself.

A source file that includes a header first proves it for that header with every build. The others
are compiled here, each alone.
"""

import concurrent.futures
import functools
import json
import os
import pathlib
import shlex
import subprocess

MINIMUM = 30


@functools.lru_cache(maxsize=None)
def compilations(build):
    """(source, command) of each source file of ours in the build."""
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    return [(e["file"], shlex.split(e["command"])) for e in entries
            if not e["file"].startswith(str(build))]


@functools.lru_cache(maxsize=None)
def compiler(build):
    """A command that compiles any header of ours on standard input: the options of some source file
    and the include folders and libraries of all."""
    commands = [command for _, command in compilations(build)]
    added = {}
    for other in commands:
        for option, following in zip(other, other[1:]):
            if option == "-isystem":
                added[f"-isystem{following}"] = None
            elif option.startswith("-DQT_") and option.endswith("_LIB"):
                added[option] = None
    command = commands[0]
    return command[:command.index("-o")] + [*added, "-fsyntax-only", "-x", "c++", "-"]


def compile_alone(header, root, build):
    """The compiler's complaints, empty where there are none."""
    result = subprocess.run(compiler(build) + [f"-I{root}"], input=f'#include "{header}"\n',
                            capture_output=True, text=True, cwd=build, check=False)
    return result.stderr if result.returncode else ""


def proven_by_the_build(tree, build):
    """The headers that some source file of the build includes before anything else."""
    built = {source for source, _ in compilations(build)}
    proven = set()
    for name in tree.files({".cpp"}):
        if str(tree.root.resolve() / name) in built and (includes := tree.includes(name)):
            proven.add(includes[0][1].strip('"'))
    return proven


def check(tree, build):
    root = tree.root.resolve()
    proven = proven_by_the_build(tree, build)
    headers = tree.headers()
    for header in headers:
        tree.bytes(header)
    waiting = [h for h in headers if h not in proven]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        complaints = pool.map(lambda header: compile_alone(header, root, build), waiting)
        return [f"{header}:1: does not compile by itself\n{complaint}"
                for header, complaint in zip(waiting, complaints) if complaint]


EXAMPLES = [
    ({"engine/a.h": "#pragma once\n#include <string>\ninline std::string f() { return {}; }\n"}, []),
    ({"engine/a.h": "#pragma once\nstd::vector<int> f();\n"}, ["engine/a.h:1: does not compile"]),
]
