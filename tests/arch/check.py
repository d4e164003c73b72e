#!/usr/bin/python3
"""check.py CHECK ROOT [BUILD]: one rule of the house against the sources below ROOT.

A check is a module with

    check(tree, build) -> ["file:line: what is wrong", ...]
    MINIMUM   how many files it must have read at least to be believed
    EXAMPLES  [({file: content}, [part of each expected finding]), ...]

The examples come first: a check that does not find what is wrong in them proves nothing.
"""

import importlib
import pathlib
import sys
import tempfile

from source_tree import SourceTree


def findings_in_example(module, files, build):
    with tempfile.TemporaryDirectory() as folder:
        for name, content in files.items():
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(content, encoding="utf-8")
        return module.check(SourceTree(folder), build)


def prove(module, build):
    if not any(expected for _, expected in module.EXAMPLES):
        sys.exit("No example shows that this check can fail.")
    for files, expected in module.EXAMPLES:
        found = findings_in_example(module, files, build)
        if len(found) != len(expected) or any(e not in f for e, f in zip(expected, found)):
            sys.exit(f"In the example {files}\nexpected {expected}\nfound    {found}")


def main():
    name, root = sys.argv[1], sys.argv[2]
    build = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else None
    module = importlib.import_module(name)
    prove(module, build)
    tree = SourceTree(root)
    found = module.check(tree, build)
    for finding in found:
        print(finding)
    print(f"{name}: {tree.files_read} files read, {len(module.EXAMPLES)} examples held, "
          f"{len(found)} findings")
    if tree.files_read < module.MINIMUM:
        sys.exit(f"At least {module.MINIMUM} files should have been read.")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    main()
