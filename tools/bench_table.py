#!/usr/bin/env python3
"""Makes the table of the speed budgets from what zrtlog-bench has measured. tools/bench.sh calls it.

  bench_table.py --filter          prints the filter that makes zrtlog-bench run what the table needs
  bench_table.py JSON              prints the table
  bench_table.py JSON --write DOC --build FOLDER
                                   puts it into DOC too, between its two marks, with the machine and
                                   the compiler of the build folder

Exit status 1: a budget is missed, or a row was not measured. 2: the files are not as they should be.
"""

import argparse
import json
import os
import platform
import re
import subprocess
import sys
from pathlib import Path
from typing import NamedTuple

BEGIN = "<!-- measured: tools/bench.sh --write replaces what follows -->"
END = "<!-- end of measured -->"


class Floor(NamedTuple):
    what: str
    benchmark: str


class Budget(NamedTuple):
    statistic: str  # "p50" or "p99"
    limit: float    # in the unit of the row


class Row(NamedTuple):
    what: str
    benchmark: str  # of its variants the worst one counts
    unit: str
    budget: Budget = None
    floor: Floor = None


SCAN = Floor("a scan of the same bytes", "FloorScanOfTheSameBytes")
WRITE = Floor("bare write", "FloorWrite")
SYNC = Floor("bare write and sync", "FloorWriteAndSync")
READ_LOG = Floor("reading the file", "FloorReadLogFile")
READ_DATA = Floor("reading the files", "FloorReadReferenceFiles")
TEXT = Floor("bare write", "FloorWriteText")
TEXT_SYNC = Floor("bare write and sync", "FloorWriteTextAndSync")
ANSWER = Floor("its answer alone", "FloorAnswerOfRealProgram")
NO_LOG = Floor("no log", "FloorResidentWithoutLog")

# A budget holds for the 99th percentile where an operator types, for the ordinary run elsewhere.
ROWS = [
    Row("One key in the call field", "KeyInCallField", "µs", Budget("p99", 200), SCAN),
    Row("A key in the real program, drawn", "KeyInRealProgram", "µs", None, ANSWER),
    Row("A contact from Enter to stored, without the disk", "EnterToStoredWithoutDisk", "µs",
        Budget("p99", 200)),
    Row("The same with the write", "EnterToStoredWithoutSync", "µs", None, WRITE),
    Row("The same with write and sync", "EnterToStored", "µs", None, SYNC),
    Row("Opening the full log", "OpenLogOfContest", "ms", Budget("p50", 10), READ_LOG),
    Row("The same with the settings synced", "OpenLogAndSyncSettings", "ms", None, READ_LOG),
    Row("The recount after a contest", "PostTallyAlone", "ms", Budget("p50", 10)),
    Row("The Cabrillo text", "CabrilloTextAlone", "ms", Budget("p50", 5)),
    Row("The Cabrillo file, not synced", "WriteCabrilloUnsynced", "ms", Budget("p50", 5), TEXT),
    Row("The Cabrillo file, synced", "WriteCabrilloSynced", "ms", None, TEXT_SYNC),
    Row("Start to idle window", "StartToIdleWindow", "ms", Budget("p50", 300)),
    Row("Of it: the reference data", "ReadReferenceFiles", "ms", None, READ_DATA),
    Row("Resident memory with the full log", "ResidentWithFullLog", "MB", Budget("p99", 120),
        NO_LOG),
]

HEAD = ["What", "Budget", "p50", "p99", "Floor (p50)", "p50 to floor", "Within"]
PER_UNIT = {"µs": ("us", 1), "ms": ("us", 1000), "MB": ("MB", 1)}


class Failure(Exception):
    pass


class Measure(NamedTuple):
    p50: float
    p99: float
    label: str


def benchmarks_needed(rows):
    return sorted({row.benchmark for row in rows} | {row.floor.benchmark for row in rows if row.floor})


def filter_of(rows):
    return "^(" + "|".join(benchmarks_needed(rows)) + ")(/|$)"


def measures_of(runs, name, unit):
    """Those of all variants; None if one of them failed, or if there is none."""
    counter, per = PER_UNIT[unit]
    found = []
    for run in runs:
        if run["name"].split("/")[0] != name or run.get("run_type", "iteration") != "iteration":
            continue
        if run.get("error_occurred") or "p50_" + counter not in run:
            return None
        found.append(Measure(run["p50_" + counter] / per, run["p99_" + counter] / per,
                             run.get("label", "").strip()))
    return found or None


def number(value):
    """Three digits that count."""
    if value >= 100:
        return f"{value:.0f}"
    return f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def shown(value, unit):
    if unit == "ms" and value < 0.1:
        value, unit = value * 1000, "µs"
    elif unit == "µs" and value >= 1000:
        value, unit = value / 1000, "ms"
    return f"{number(value)} {unit}"


def budget_text(row):
    return f"{row.budget.statistic} under {row.budget.limit:g} {row.unit}" if row.budget else ""


def cells_of(row, runs):
    """The cells of the row, and whether all is well with it."""
    measures = measures_of(runs, row.benchmark, row.unit)
    floors = measures_of(runs, row.floor.benchmark, row.unit) if row.floor else []
    if measures is None or floors is None:
        return [row.what, budget_text(row), "", "", "", "", "not measured"], False
    statistic = row.budget.statistic if row.budget else "p50"
    worst = max(measures, key=lambda measure: getattr(measure, statistic))
    what = row.what
    if len(measures) > 1 and worst.label:
        what += f" (worst: {worst.label.split(' -- ')[0]})"
    cells = [what, budget_text(row), shown(worst.p50, row.unit), shown(worst.p99, row.unit)]
    if floors:
        floor = max(measure.p50 for measure in floors)
        cells.append(f"{row.floor.what}, {shown(floor, row.unit)}")
        cells.append(number(worst.p50 / floor) if floor > 0 else "")
    else:
        cells += ["", ""]
    within = row.budget is None or getattr(worst, statistic) < row.budget.limit
    cells.append("" if row.budget is None else "yes" if within else "**no**")
    return cells, within


def table_of(runs, rows):
    """The lines of the table, and whether every row is measured and within its budget."""
    made = [cells_of(row, runs) for row in rows]
    grid = [HEAD] + [cells for cells, _ in made]
    widths = [max(len(line[column]) for line in grid) for column in range(len(HEAD))]
    lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |"
             for line in grid]
    lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
    return lines, all(good for _, good in made)


def cpu_model(cpuinfo):
    found = re.search(r"^model name\s*:\s*(.+)$", cpuinfo, re.MULTILINE)
    return found.group(1).strip() if found else platform.machine()


def filesystem_of(path, mounts):
    """The type of the file system that holds the path, by the text of /proc/mounts."""
    best, kind = "", "unknown"
    for line in mounts.splitlines():
        place, its_kind = line.split()[1:3]
        place = place.replace("\\040", " ")
        holds = place == "/" or path == place or path.startswith(place + "/")
        if holds and len(place) >= len(best):
            best, kind = place, its_kind
    return kind


def compiler_of(build):
    cache = (build / "CMakeCache.txt").read_text()
    values = dict(re.findall(r"^(\w+):\w+=(.*)$", cache, re.MULTILINE))
    version = subprocess.run([values["CMAKE_CXX_COMPILER"], "--version"], capture_output=True,
                             text=True, check=True).stdout.splitlines()[0]
    return f"{version}, {values.get('CMAKE_BUILD_TYPE') or 'no build type'}"


def machine_lines(build, context):
    load = context.get("load_avg") or [float("nan")]
    return [
        f"- measured on {context['date'][:10]}, with a load of {load[0]:.1f} at the beginning",
        f"- {cpu_model(Path('/proc/cpuinfo').read_text())}, {os.cpu_count()} cores",
        f"- {platform.system()} {platform.release()}, "
        f"{filesystem_of(str(build.resolve()), Path('/proc/mounts').read_text())}",
        f"- {compiler_of(build)}",
    ]


def with_measured(text, lines):
    """The document with the lines in place of what stands between its marks."""
    if text.count(BEGIN) != 1 or text.count(END) != 1 or text.index(BEGIN) > text.index(END):
        raise Failure("the document has not the two marks that the table stands between")
    before, after = text[:text.index(BEGIN)], text[text.index(END):]
    return before + BEGIN + "\n\n" + "\n".join(lines) + "\n\n" + after


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("json", nargs="?", type=Path)
    parser.add_argument("--filter", action="store_true")
    parser.add_argument("--write", metavar="DOC", type=Path)
    parser.add_argument("--build", metavar="FOLDER", type=Path)
    options = parser.parse_args()
    if options.filter:
        print(filter_of(ROWS))
        return 0
    if options.json is None or (options.write and options.build is None):
        parser.error("the JSON file is needed, and --build with --write")
    try:
        measured = json.loads(options.json.read_text())
        lines, good = table_of(measured["benchmarks"], ROWS)
        print("\n".join(lines))
        if options.write:
            machine = machine_lines(options.build, measured["context"])
            text = with_measured(options.write.read_text(), machine + [""] + lines)
            options.write.write_text(text)
    except (OSError, KeyError, ValueError, subprocess.SubprocessError, Failure) as error:
        print(f"bench_table.py: {type(error).__name__}: {error}", file=sys.stderr)
        return 2
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
