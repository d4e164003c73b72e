#!/usr/bin/python3
"""fuzz/run.py TARGET [--seconds N | --runs N]: fuzzes from the case tables of the tests,
or from what update_seeds.py makes.

Builds nothing: cmake --preset fuzz && cmake --build --preset fuzz comes first. An input that breaks
a promise is left in build/fuzz/TARGET.* and the exit status is 1.
"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "fuzz"))
sys.dont_write_bytecode = True
from seeds import seeds  # noqa: E402
from update_seeds import SEEDS  # noqa: E402

# Fewer inputs a second than this, and something is wrong with the run itself.
SLOWEST = 100


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("target")
    arguments.add_argument("--seconds", type=int, default=20)
    arguments.add_argument("--runs", type=int, default=-1)
    arguments.add_argument("--binaries", type=pathlib.Path, default=ROOT / "build" / "fuzz")
    options = arguments.parse_args()
    if options.runs > 0:
        options.seconds = 0

    with tempfile.TemporaryDirectory() as folder:
        corpus = pathlib.Path(folder)
        of_its_own = SEEDS.get(options.target)
        texts = list(of_its_own()) if of_its_own else seeds()
        for number, text in enumerate(texts):
            (corpus / f"{number:05}").write_bytes(text)
        command = [str(options.binaries / f"fuzz_{options.target}"), str(corpus),
                   f"-max_total_time={options.seconds}", f"-runs={options.runs}", f"-max_len={max(map(len, texts)) + 400}",
                   "-timeout=5", "-verbosity=1", "-print_final_stats=1",
                   f"-artifact_prefix={options.binaries}/{options.target}."]
        dictionary = ROOT / "fuzz" / f"{options.target}.dict"
        if dictionary.exists():
            command.append(f"-dict={dictionary}")
        result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                check=False)
        found = len(list(corpus.iterdir()))

    output = result.stdout.decode("utf-8", "replace")
    done = re.search(r"^Done (\d+) runs in (\d+) second", output, re.MULTILINE)
    if result.returncode or not done:
        print(output)
        return 1
    runs, seconds = int(done.group(1)), int(done.group(2))
    print(f"{options.target}: {runs} inputs in {seconds} s, {found} of them kept as different, "
          f"from {len(texts)} seeds")
    return 0 if runs >= SLOWEST * options.seconds else 1


if __name__ == "__main__":
    sys.exit(main())
