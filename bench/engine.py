"""The engine beside the locale library, from the medians of engine_benchmark."""

import json
import subprocess
import tempfile

from table import Row

MOST_NANOSECONDS = 3_000  # for a text of up to 100 characters
LONG, SHORT = "20000", "100"
MOST_FOR_LENGTH = 250


def medians(build):
    """The median processor time in ns of each benchmark, by name."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run(
            [build / "bench" / "engine_benchmark", "--benchmark_repetitions=9",
             "--benchmark_min_time=0.02", "--benchmark_enable_random_interleaving=true",
             "--benchmark_report_aggregates_only=true", f"--benchmark_out={out.name}"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        results = json.load(out)["benchmarks"]
    results.sort(key=lambda result: result["family_index"])  # they ran in any order
    return {r["run_name"]: r["cpu_time"] for r in results if r["aggregate_name"] == "median"}


def measure(build):
    found = medians(build)
    rows = []
    for name, time in found.items():
        group, case, who = name.split("/")
        if group == "parse" and who == "horalo":
            rows.append(Row(f"parse: {case}", time, found[f"parse/{case}/icu"], "ns",
                            "ICU, seventeen layouts", 0.1))
        elif group == "length" and who == LONG:
            rows.append(Row(f"20,000 {case}", time, found[f"length/{case}/{SHORT}"], "ns",
                            "100 of them", MOST_FOR_LENGTH))
        elif group == "rows" and who == "horalo":
            rows.append(Row(case, time, found[f"rows/{case}/icu"], "ns", "ICU's two calls alone", 1.5))
    slowest, time = max(((name, time) for name, time in found.items()
                         if name.startswith("hundred/") or name.endswith(f"/{SHORT}")),
                        key=lambda item: item[1])
    rows.append(Row(f"slowest 100 characters: {slowest.split('/')[1]}", time, MOST_NANOSECONDS, "ns",
                    "what is allowed", 1))
    return rows
