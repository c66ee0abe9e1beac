#!/usr/bin/env python3
"""Tests of tools/bench_table.py: what it takes from a measurement, and what it finds missed."""

import json
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "tools" / "bench_table.py"
sys.path.insert(0, str(SCRIPT.parent))

import bench_table  # noqa: E402
from bench_table import Budget, Floor, Row  # noqa: E402


def run(name, p50, p99, unit="us", **more):
    return {"name": name, "run_type": "iteration", f"p50_{unit}": p50, f"p99_{unit}": p99, **more}


KEY = Row("A key", "Key", "µs", Budget("p99", 200), Floor("a scan", "Scan"))
OPEN = Row("Opening", "Open", "ms", Budget("p50", 10))
WRITE = Row("Writing", "Write", "µs", None, Floor("bare", "Bare"))
GOOD = [run("Key/1/iterations:9/manual_time", 20, 150, label="ONE -- the first"),
        run("Key/2/iterations:9/manual_time", 30, 120, label="TWO -- the second"),
        run("Scan/iterations:9", 10, 11),
        run("Open", 9000, 90000), run("Write", 8, 9), run("Bare", 2, 3)]


def cells(row, runs):
    found, good = bench_table.cells_of(row, runs)
    return dict(zip(bench_table.HEAD, found)), good


class Rows(unittest.TestCase):
    def test_the_worst_variant_counts_by_the_statistic_of_the_budget(self):
        found, good = cells(KEY, GOOD)
        self.assertTrue(good)
        self.assertEqual(found, {
            "What": "A key (worst: ONE)", "Budget": "p99 under 200 µs", "p50": "20.0 µs",
            "p99": "150 µs", "Floor (p50)": "a scan, 10.0 µs", "p50 to floor": "2.00",
            "Within": "yes"})

    def test_a_budget_of_the_ordinary_run_is_not_asked_of_the_slowest(self):
        found, good = cells(OPEN, GOOD)
        self.assertTrue(good)
        self.assertEqual((found["p50"], found["p99"], found["Within"]), ("9.00 ms", "90.0 ms", "yes"))

    def test_a_missed_budget_is_told(self):
        for row, runs in ((KEY, GOOD + [run("Key/3", 1, 200)]), (OPEN, [run("Open", 10000, 10000)])):
            found, good = cells(row, runs)
            self.assertFalse(good)
            self.assertEqual(found["Within"], "**no**")

    def test_a_row_without_a_budget_is_never_missed(self):
        found, good = cells(WRITE, GOOD)
        self.assertTrue(good)
        self.assertEqual((found["Budget"], found["p50 to floor"], found["Within"]), ("", "4.00", ""))

    def test_what_failed_or_is_not_there_was_not_measured(self):
        for row, runs in (
                (OPEN, []),
                (OPEN, [run("Opening", 1, 1)]),
                (OPEN, [run("Open", 1, 1), run("Open/2", 1, 1, error_occurred=True)]),
                (OPEN, [{"name": "Open", "run_type": "iteration"}]),
                (KEY, [one for one in GOOD if not one["name"].startswith("Scan")])):
            found, good = cells(row, runs)
            self.assertFalse(good)
            self.assertEqual((found["p50"], found["Within"]), ("", "not measured"))

    def test_memory_is_in_megabytes(self):
        row = Row("Memory", "Memory", "MB", Budget("p99", 120))
        found, good = cells(row, [run("Memory", 40.25, 119.9, "MB")])
        self.assertTrue(good)
        self.assertEqual((found["p50"], found["p99"]), ("40.2 MB", "120 MB"))

    def test_times_are_told_in_the_unit_that_fits(self):
        self.assertEqual(bench_table.shown(0.0276, "ms"), "27.6 µs")
        self.assertEqual(bench_table.shown(4475, "µs"), "4.47 ms")
        self.assertEqual(bench_table.shown(999, "µs"), "999 µs")

    def test_the_table_is_bad_when_one_row_is(self):
        lines, good = bench_table.table_of(GOOD, [KEY, OPEN, WRITE])
        self.assertTrue(good)
        self.assertEqual(len(lines), 5)
        self.assertEqual(len({len(line) for line in lines}), 1)
        self.assertFalse(bench_table.table_of(GOOD[1:-1], [KEY, OPEN, WRITE])[1])


class TheFilter(unittest.TestCase):
    def test_takes_the_benchmarks_of_the_rows_with_their_variants_and_no_other(self):
        pattern = re.compile(bench_table.filter_of([KEY, OPEN]))
        for name in ("Key/3/iterations:9", "Scan", "Open"):
            self.assertTrue(pattern.search(name), name)
        for name in ("KeyTwice", "MyKey", "Write", "Opened/1"):
            self.assertFalse(pattern.search(name), name)

    def test_every_benchmark_of_the_table_is_there(self):
        sources = "".join(path.read_text() for path in (ROOT / "bench").glob("*.cpp"))
        registered = set(re.findall(r"BENCHMARK\((\w+)\)", sources))
        self.assertEqual(set(bench_table.benchmarks_needed(bench_table.ROWS)) - registered, set())


class TheMachine(unittest.TestCase):
    def test_the_file_system_is_that_of_the_innermost_mount(self):
        mounts = ("a / ext4 rw 0 0\nb /home btrfs rw 0 0\nc /home/with\\040blank xfs rw 0 0\n"
                  "d /ho tmpfs rw 0 0\n")
        for path, kind in (("/usr", "ext4"), ("/home", "btrfs"), ("/home/x", "btrfs"),
                           ("/home/with blank/x", "xfs"), ("/homes", "ext4")):
            self.assertEqual(bench_table.filesystem_of(path, mounts), kind, path)

    def test_the_processor_has_its_name(self):
        self.assertEqual(bench_table.cpu_model("processor\t: 0\nmodel name\t: Fast One \n"), "Fast One")
        self.assertTrue(bench_table.cpu_model(""))


class TheCommand(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / "CMakeCache.txt").write_text(
            f"CMAKE_CXX_COMPILER:FILEPATH={sys.executable}\nCMAKE_BUILD_TYPE:STRING=Release\n")
        self.doc = self.folder / "doc.md"
        self.doc.write_text(f"before\n{bench_table.BEGIN}\nold\n{bench_table.END}\nafter\n")

    def call(self, microseconds, megabytes=1):
        """Runs the script on a measurement in which everything took as long."""
        runs = []
        for row in bench_table.ROWS:
            unit = "MB" if row.unit == "MB" else "us"
            for name in (row.benchmark, row.floor and row.floor.benchmark):
                if name:
                    runs.append(run(name, megabytes if unit == "MB" else microseconds,
                                    megabytes if unit == "MB" else microseconds, unit))
        measured = {"context": {"date": "2001-02-03T04:05:06+00:00", "load_avg": [0.25, 0, 0]},
                    "benchmarks": runs}
        path = self.folder / "measured.json"
        path.write_text(json.dumps(measured))
        return subprocess.run([sys.executable, SCRIPT, path, "--write", self.doc, "--build", self.folder],
                              capture_output=True, text=True, check=False)

    def test_writes_the_table_and_the_machine_between_the_marks_and_nothing_else(self):
        for _ in range(2):
            done = self.call(100)
            self.assertEqual(done.returncode, 0, done.stderr)
            text = self.doc.read_text()
            self.assertTrue(text.startswith(f"before\n{bench_table.BEGIN}\n\n- measured on 2001-02-03"))
            self.assertTrue(text.endswith(f"|\n\n{bench_table.END}\nafter\n"))
            self.assertIn("with a load of 0.2 at the beginning", text)
            self.assertIn("Python", text)  # which stands for the compiler here
            self.assertIn(", Release\n", text)
            self.assertNotIn("old", text)
            self.assertIn(done.stdout, text)
            self.assertNotIn(str(self.folder), text)

    def test_a_missed_budget_is_its_status_and_is_written_too(self):
        done = self.call(201)
        self.assertEqual(done.returncode, 1)
        self.assertIn("**no**", self.doc.read_text())
        self.assertEqual(self.call(100, megabytes=120).returncode, 1)

    def test_a_document_without_marks_is_left_alone(self):
        self.doc.write_text("no marks\n")
        self.assertEqual(self.call(100).returncode, 2)
        self.assertEqual(self.doc.read_text(), "no marks\n")

    def test_the_document_of_the_project_has_the_marks(self):
        text = (ROOT / "docs" / "performance.md").read_text()
        self.assertIn("\nnew\n", bench_table.with_measured(text, ["new"]))


if __name__ == "__main__":
    unittest.main()
