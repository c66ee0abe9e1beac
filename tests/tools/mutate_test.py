#!/usr/bin/env python3
"""Tests of tools/mutate.py and tools/mutant_sites.py: what is changed, how it is switched on, and who
is said to have noticed."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

ROOT = Path(__file__).resolve().parents[2]
TOOLS = ROOT / "tools"
sys.path.insert(0, str(TOOLS))

import mutant_sites  # noqa: E402
import mutate  # noqa: E402
from mutant_sites import Failure, Site  # noqa: E402
from mutate import Measured, Outcome, Test  # noqa: E402

try:
    mutant_sites.load_cindex().Index.create()
    CLANG = True
except Exception:  # no binding, or one without its library
    CLANG = False

SOURCE = """#include <cassert>
#include <string>
#define TWICE(x) ((x) + 1)
int Count = 4;
constexpr int Area(int side) { return side * side + 1; }
struct Point { int X = 3; bool operator==(const Point &) const = default; };
void Add(int n = 2);
bool Look(std::string text, Point p, Point q, const int *end) {
    constexpr int kMost = 3 + 4;
    int list[3] = {};
    static_assert(kMost == 7);
    assert(text != "assert");
    switch (Count) {
    case 1: Add(list[2]); break;
    default: break;
    }
    if (text == "a" && !text.empty() || p != q)
        Count = TWICE(Count - 1);
    while (end == nullptr)
        --Count;
    for (Count = 0; Count < kMost; ++Count)
        text += 'x' + text;
    const int sum = Count
                    - kMost;
    Add(Area(sum));
    (void)text.size();
    return true;
}
struct Box { void addWidget(Box *, int = 0); void addSpacing(int); };
void Build(Box &box, Box *inner) {
    box.addSpacing(3);
    box.addWidget(inner, 2);
}
struct Row { bool (*Holds)(int); };
constexpr Row kRows[] = {{[](int n) { return n > 5; }}};
"""

SHOWN = {
    "Look": {
        "Add(list[2]) -> (left out)",
        "list[2] -> list[(2 + 1)]",
        'text == "a" && !text.empty() || p != q -> text == "a" && !text.empty() && p != q',
        'text == "a" && !text.empty() -> text == "a" || !text.empty()',
        'text == "a" -> text != "a"',
        "!text.empty() -> static_cast<bool>(text.empty())",
        "p != q -> p == q",
        "Count = TWICE(Count - 1) -> (left out)",
        "end == nullptr -> end != nullptr",
        "--Count -> (left out)",
        "Count = 0 -> Count = (0 + 1)",
        "Count < kMost -> Count <= kMost",
        "text += 'x' + text -> (left out)",
        "Count - kMost -> Count + kMost",
        "Add(Area(sum)) -> (left out)",
        "(void)text.size() -> (left out)",
        "return true -> return false",
    },
    "Build": {"box.addWidget(inner, 2) -> (left out)"},
    "kRows": {"n > 5 -> n >= 5", "n > 5 -> n > (5 + 1)"},
}


@unittest.skipUnless(CLANG, "python3-clang-14 is not installed; ./test.sh mutants installs it")
class Finding(unittest.TestCase):
    def test_every_operator_number_and_statement_of_a_body_is_found_and_no_constant(self):
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / "look.cpp").write_text(SOURCE)
            sites = mutant_sites.find_sites(Path(folder), "look.cpp", ["-std=c++20"])
            for function, shown in SHOWN.items():
                self.assertEqual({s.shown for s in sites if s.function == function}, shown)
            self.assertEqual({s.function for s in sites}, set(SHOWN))
            sum_of_two_lines = next(s for s in sites if s.shown.startswith("Count - kMost"))
            self.assertEqual((sum_of_two_lines.line, sum_of_two_lines.last_line), (23, 24))

    def test_all_that_is_found_compiles_together(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "look.cpp"
            path.write_text(SOURCE)
            sites = mutant_sites.find_sites(Path(folder), "look.cpp", ["-std=c++20"])
            path.write_bytes(mutant_sites.rewrite(path.read_bytes(), list(enumerate(sites, 1))))
            run = subprocess.run(["g++", "-std=c++20", "-w", "-fsyntax-only", "-include",
                                  TOOLS / "mutant.h", path], capture_output=True, text=True)
            self.assertEqual(run.stderr, "")
            # The compiler's lines are those of the source.
            self.assertEqual(path.read_text().count("\n"), SOURCE.count("\n"))

    def test_a_source_that_cannot_be_read_is_an_error(self):
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / "bad.cpp").write_text("int f() { return none; }")
            with self.assertRaisesRegex(Failure, "can't read bad.cpp"):
                mutant_sites.find_sites(Path(folder), "bad.cpp", [])


PROGRAM = b"""#include <cstdio>
int Sum(int a, int b) { return a > 1 && b > 1 ? 10 : 20; }
int main() { int n = Sum(1, 2); std::puts("said"); std::printf("%d", n); }
"""


def site(original, mutated):
    start = PROGRAM.index(original.encode())
    return Site("src/entry/sum.cpp", "Sum", 2, 2, start, start + len(original), mutated,
                f"{original} -> {mutated}")


NUMBERED = [(1, site("10", "(10 + 1)")), (2, site("a > 1 && b > 1", "a > 1 || b > 1")),
            (3, site("a > 1", "a >= 1")), (4, site('std::puts("said")', "")), (9, site("20", "21"))]


class Switching(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        path = Path(cls.folder.name) / "sum.cpp"
        path.write_bytes(mutant_sites.rewrite(PROGRAM, NUMBERED))
        cls.program = path.with_suffix("")
        subprocess.run(["g++", "-w", "-include", TOOLS / "mutant.h", path, "-o", cls.program], check=True)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def output(self, **variables):
        return subprocess.run([self.program], env={**os.environ, **variables}, check=True, text=True,
                              capture_output=True).stdout

    def test_without_the_variable_nothing_is_changed(self):
        self.assertEqual(self.output(), "said\n20")
        self.assertEqual(self.output(ZRT_MUTANT="7"), "said\n20")

    def test_one_number_switches_one_change(self):
        self.assertEqual(self.output(ZRT_MUTANT="1"), "said\n20")
        self.assertEqual(self.output(ZRT_MUTANT="2"), "said\n10")
        self.assertEqual(self.output(ZRT_MUTANT="3"), "said\n10")
        self.assertEqual(self.output(ZRT_MUTANT="4"), "20")
        self.assertEqual(self.output(ZRT_MUTANT="9"), "said\n21")

    def test_the_mutants_that_a_run_reaches_are_marked(self):
        with tempfile.NamedTemporaryFile() as marks:
            marks.truncate(mutate.MOST + 1)
            self.output(ZRT_MUTANTS_REACHED=marks.name)
            marks.seek(0)
            reached = {number for number, byte in enumerate(marks.read()) if byte}
        self.assertEqual(reached, {2, 3, 4, 9})  # not 1: that branch is not taken


class Choosing(unittest.TestCase):
    SITES = [site("10", str(n)) for n in range(100)]

    def test_a_seed_chooses_the_same_mutants_again_and_another_seed_others(self):
        first = mutate.sample(self.SITES, 5, 20, set())
        self.assertEqual(first, mutate.sample(self.SITES, 5, 20, set()))
        self.assertNotEqual(first, mutate.sample(self.SITES, 6, 20, set()))
        self.assertEqual(list(first), list(range(1, 21)))

    def test_what_does_not_compile_is_replaced_and_the_others_keep_their_numbers(self):
        first = mutate.sample(self.SITES, 5, 20, set())
        second = mutate.sample(self.SITES, 5, 20, {3, 4})
        self.assertEqual(set(second), set(range(1, 23)) - {3, 4})
        self.assertEqual(second[20], first[20])

    def test_errors_of_the_compiler_name_the_mutants_of_their_lines(self):
        mutants = {1: site("10", "x")._replace(line=4, last_line=6), 2: site("10", "y")}
        output = "In file included\n../source/src/entry/sum.cpp:5:9: error: no\n" \
                 "../source/src/entry/sum.cpp:9:9: warning: no\nsrc/other.cpp:2:1: error: no\n"
        copy = Path("/tree/source")
        self.assertEqual(mutate.refused_by(output, mutants, copy, Path("/tree/build")), {1})


class Equivalents(unittest.TestCase):
    def test_each_has_its_reason(self):
        text = "# a comment\n\nsrc/a.cpp F: a || b -> a && b | both hold\n"
        self.assertEqual(mutate.read_equivalent(text), {"src/a.cpp F: a || b -> a && b": "both hold"})
        for bad in ("src/a.cpp F: a -> b", "src/a.cpp F: a -> b | ", "src/a.cpp F | reason"):
            with self.assertRaisesRegex(Failure, "mutants_equivalent.txt:1"):
                mutate.read_equivalent(bad)

    def test_those_of_the_tree_are_read(self):
        mutate.read_equivalent((TOOLS / "mutants_equivalent.txt").read_text())


class Outputs(unittest.TestCase):
    def test_cases_are_listed_without_disabled_ones(self):
        output = "main\nKeys.\n  Enter\n  DISABLED_Tab\nAll/Rows.  # TypeParam\n  Row/0  # GetParam() = 1\n" \
                 "Map.\n  HoldsOnOtherKeyboards\n"
        self.assertEqual(mutate.listed_cases(output), ["Keys.Enter", "All/Rows.Row/0"])

    def test_the_first_failed_case_is_named(self):
        text = "[ RUN      ] A.One\n[       OK ] A.One\n[ RUN      ] A.Two\nx\n[  FAILED  ] A.Two (1 ms)\n"
        self.assertEqual(mutate.failed_case("test_a", text, 1), "A.Two")
        self.assertEqual(mutate.failed_case("test_a", text.split("x")[0], -11), "A.Two")
        self.assertEqual(mutate.failed_case("test_a", text, 0), "")
        self.assertEqual(mutate.failed_case(mutate.SCENARIOS, "shown\n/a/b.scn:7: expected\n", 1), "/a/b.scn")

    def test_survivors_and_unreached_ones_count_and_equivalents_do_not(self):
        line, share = mutate.summary(["killed by a B", "survived", "not reached", "killed by", "equivalent"])
        self.assertEqual(share, 50.0)
        self.assertEqual(line, "4 mutants: 2 killed, 1 survived, 1 not reached: 50.0 % killed; 1 equivalent")


class FakeRunner:
    """Passes all but the named pairs of mutant and case; with "" in place of the mutant always."""

    def __init__(self, *failing):
        self.failing, self.calls = failing, []

    def run(self, program, cases, _limit, ZRT_MUTANT=""):
        self.calls.append((program, tuple(cases), ZRT_MUTANT))
        bad = [c for c in cases if (ZRT_MUTANT, c) in self.failing or ("", c) in self.failing]
        return Outcome(not bad, bad[0] if bad else "", 0.0)


def reaches(*numbers, seconds=0.1):
    return Measured(seconds, frozenset(numbers))


class Verdicts(unittest.TestCase):
    TESTS = {Test("test_app", "App.One"): reaches(1), Test("test_entry", "E.Slow"): reaches(1, seconds=5),
             Test("test_entry", "E.One"): reaches(1), Test("test_entry", "E.Two"): reaches(2),
             Test(mutate.SCENARIOS, "/s/a.scn"): reaches(1)}
    SITE = site("10", "11")

    def verdict(self, runner, number=1):
        return mutate.verdict(number, self.SITE, self.TESTS, runner)

    def test_only_tests_that_reach_the_mutant_run_and_those_of_its_folder_first(self):
        runner = FakeRunner()
        self.assertEqual(self.verdict(runner), "survived")
        self.assertEqual([(p, c) for p, c, _ in runner.calls],
                         [("test_entry", ("E.One",)), ("test_entry", ("E.Slow",)),
                          (mutate.SCENARIOS, ("/s/a.scn",)), ("test_app", ("App.One",))])

    def test_the_first_failure_kills_and_ends_the_run(self):
        runner = FakeRunner(("1", "/s/a.scn"))
        self.assertEqual(self.verdict(runner), "killed by zrtlog-scenario a.scn")
        self.assertEqual(len([c for c in runner.calls if c[2] == "1"]), 3)

    def test_a_test_that_fails_without_the_mutant_too_kills_nothing(self):
        self.assertEqual(self.verdict(FakeRunner(("", "E.One"))), "survived")

    def test_what_no_test_reaches_needs_no_run(self):
        runner = FakeRunner()
        self.assertEqual(self.verdict(runner, 3), "not reached")
        self.assertEqual(runner.calls, [])


class Running(unittest.TestCase):
    """A script in place of a test program: it fails with mutant 3 and never ends with mutant 4."""

    SCRIPT = """#!/bin/sh
echo "[ RUN      ] A.One"
echo "$TMPDIR $HOME" > "$NOTE"
case $ZRT_MUTANT in
3) echo "[  FAILED  ] A.One (0 ms)"; exit 1 ;;
4) sleep 60 & wait ;;
esac
"""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.note = Path(folder.name) / "note"
        program = Path(folder.name) / "bin" / "test_a"
        program.parent.mkdir()
        program.write_text(self.SCRIPT)
        program.chmod(0o755)
        self.runner = mutate.Runner(Path(folder.name))
        environment = mock.patch.dict(os.environ, NOTE=str(self.note))
        environment.start()
        self.addCleanup(environment.stop)

    def test_the_status_tells_and_the_folder_of_a_run_is_gone_behind_it(self):
        passed = self.runner.run("test_a", ["A.One"], 10)
        self.assertEqual((passed.passed, passed.failed), (True, ""))
        failed = self.runner.run("test_a", ["A.One"], 10, ZRT_MUTANT="3")
        self.assertEqual((failed.passed, failed.failed), (False, "A.One"))
        temporary, home = self.note.read_text().split()
        self.assertEqual(temporary, home)
        self.assertFalse(Path(temporary).exists())

    def test_an_endless_run_is_killed_with_its_children_and_names_the_case(self):
        outcome = self.runner.run("test_a", ["A.One"], 0.3, ZRT_MUTANT="4")
        self.assertEqual((outcome.passed, outcome.failed), (False, "A.One"))
        self.assertLess(outcome.seconds, 30)

    def test_an_endless_mutant_counts_as_killed(self):
        with mock.patch.object(mutate, "PATIENCE", 0.3):
            result = mutate.verdict(4, site("10", "11"), {Test("test_a", "A.One"): reaches(4, seconds=0)},
                                    self.runner)
        self.assertEqual(result, "killed by test_a A.One (too slow)")


if __name__ == "__main__":
    unittest.main()
