"""compare.py BUILD [GROUP...]: every comparison of the groups named, or of all; see bench/run."""

import pathlib
import sys

import desktop_program
import engine
import whole_processes
from table import print_table

GROUPS = {"engine": engine.measure, "processes": whole_processes.measure,
          "desktop": desktop_program.measure}


def main():
    build = pathlib.Path(sys.argv[1])
    rows = []
    for name in sys.argv[2:] or GROUPS:
        if name not in GROUPS:
            sys.exit(f"bench/run: no group is called {name}; there are {', '.join(GROUPS)}")
        rows += GROUPS[name](build)
    print_table(rows)
    missed = sum(not row.reached for row in rows)
    print(f"\n{len(rows) - missed} of {len(rows)} targets reached")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
