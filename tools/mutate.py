#!/usr/bin/python3
"""Breaks statements of the program, one at a time, and shows those that no test notices.

  tools/mutate.py [--seed N] [--count N] [--folders app,entry,...] [-j N]

A mutant is one change in one expression: == for !=, < for <=, && for ||, + for - and back, a whole
number plus one, true for false and back, a "!" left out, a call or an assignment left out. Of all that
could be made in the folders, the seed chooses which are. All of them are compiled into one build,
build/mutants, and the environment switches one on (tools/mutant.h).

First each test runs unmutated and notes which mutants it reaches. Then each mutant runs against the
tests that reach it, those of its own folder first, until one fails. The table of all mutants is
build/mutants/table.txt; the survivors are printed.

  --list         shows the mutants of this seed and ends
  --only N,N     runs these numbers of the seed's mutants only
  --slow         runs the fault sweep and the killed program too
  --least P      the share in percent that must be killed (95)

tools/mutants_equivalent.txt names changes that change nothing; they are not counted. Exit status 0:
enough are killed, 1: too few, 2: nothing could be measured.
"""

import argparse
import hashlib
import json
import os
import random
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ProcessPoolExecutor, ThreadPoolExecutor
from pathlib import Path
from typing import NamedTuple

from mutant_sites import Failure, Site, find_sites, rewrite

ROOT = Path(__file__).resolve().parents[1]
FOLDERS = "app,session,entry,platform,qt"
MOST = 65535  # mutants in one build; kMost of mutant.h
# Test programs that need an X server, and those that take minutes.
UNDER_X = {"test_xvfb_keys", "test_typing_storm"}
SLOW = {"test_fault_sweep", "test_kill"}
SCENARIOS = "zrtlog-scenario"
CHUNK_SECONDS = 2.0
PATIENCE = 10  # seconds more than ten times the unmutated time
MEMORY = 8 << 30


# ---- the build

def sample(sites, seed, count, refused):
    """The first `count` mutants of the seed that the compiler takes, as {number: site}."""
    order = list(sites)
    random.Random(seed).shuffle(order)
    taken = [(n, s) for n, s in enumerate(order[:MOST], 1) if n not in refused]
    return dict(taken[:count])


def write_if_other(path, content):
    if not path.is_file() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def copy_tree(to):
    """Brings the copy of the tree up to date, and leaves what has not changed alone."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                            capture_output=True).stdout.decode().split("\0")
    names = {name for name in listed if name and (ROOT / name).is_file()}
    for name in names:
        if not (name.startswith("src/") and name.endswith(".cpp")):  # those are written mutated
            write_if_other(to / name, (ROOT / name).read_bytes())
            shutil.copymode(ROOT / name, to / name)
    for path in list(to.rglob("*")):
        if path.is_file() and str(path.relative_to(to)) not in names:
            path.unlink()
    return sorted(name for name in names if name.startswith("src/") and name.endswith(".cpp"))


def test_programs(slow):
    text = "".join(path.read_text() for path in (ROOT / "tests").glob("*/CMakeLists.txt"))
    names = {"test_" + name for name in re.findall(r"^zrt_(?:qt_|xvfb_)?test\((\w+)", text, re.M)}
    return sorted(names - UNDER_X - (set() if slow else SLOW))


def configure(copy, build):
    # An index past the end ends the test, as the sanitizers of the other suite would.
    flags = f"-O1 -w -D_GLIBCXX_ASSERTIONS -include {copy / 'tools/mutant.h'}"
    linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
    command = ["cmake", "-S", copy, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=",
               f"-DCMAKE_CXX_FLAGS={flags}", f"-DCMAKE_EXE_LINKER_FLAGS={' '.join(linker)}"]
    run = subprocess.run(command, capture_output=True, text=True)
    if run.returncode != 0:
        raise Failure("cmake fails:\n" + run.stdout + run.stderr)


def arguments_of(copy, build):
    """What clang needs to read each source of the original tree: {name: arguments}."""
    found = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        name = os.path.relpath(entry["file"], copy)
        keep = [w.replace(str(copy), str(ROOT)) for w in words if re.match(r"-(I|D|std=|f)", w)]
        systems = [w for a, b in zip(words, words[1:]) if a == "-isystem" for w in (a, b)]
        found[name] = keep + systems
    return found


def all_sites(names, arguments, cache, jobs):
    """The sites of these sources. What clang has found is kept until a source or a header changes."""
    headers = b"".join(path.read_bytes() for path in sorted((ROOT / "src").glob("*/*.h")))
    digest = {n: hashlib.sha256(headers + (ROOT / n).read_bytes()).hexdigest() for n in names}
    known = json.loads(cache.read_text()) if cache.is_file() else {}
    unread = [n for n in names if known.get(n, [None])[0] != digest[n]]
    with ProcessPoolExecutor(jobs) as readers:
        found = readers.map(find_sites, [ROOT] * len(unread), unread, [arguments[n] for n in unread])
        known.update({n: [digest[n], sites] for n, sites in zip(unread, found)})
    cache.write_text(json.dumps(known))
    return [Site(*site) for n in names for site in known[n][1]]


def refused_by(output, mutants, copy, build):
    """The numbers of the mutants on whose lines the compiler has found errors."""
    bad = set()
    for file, line in re.findall(r"^(\S+?):(\d+):\d+: (?:fatal )?error:", output, re.M):
        name = os.path.relpath(os.path.normpath(build / file), copy)
        bad |= {n for n, s in mutants.items()
                if s.file == name and s.line <= int(line) <= s.last_line}
    return bad


def build_mutants(sites, options, copy, build, sources, programs):
    refused = set()
    while True:
        mutants = sample(sites, options.seed, options.count, refused)
        for name in sources:
            numbered = [(n, s) for n, s in mutants.items() if s.file == name]
            write_if_other(copy / name, rewrite((ROOT / name).read_bytes(), numbered))
        command = ["cmake", "--build", build, "-j", str(options.jobs), "--target", *programs, SCENARIOS,
                   "--", "--quiet", "-k", "0"]
        environment = {**os.environ, "CCACHE_BASEDIR": str(ROOT), "CCACHE_NOHASHDIR": "1"}
        run = subprocess.run(command, capture_output=True, text=True, env=environment)
        if run.returncode == 0:
            return mutants
        bad = refused_by(run.stdout + run.stderr, mutants, copy, build)
        if not bad:
            raise Failure("the build fails:\n" + (run.stdout + run.stderr)[-5000:])
        print(f"  {len(bad)} mutants don't compile and are replaced", flush=True)
        refused |= bad


# ---- running tests

class Test(NamedTuple):
    program: str
    case: str      # of GoogleTest, or the path of a scenario


class Measured(NamedTuple):
    seconds: float
    reached: frozenset


class Outcome(NamedTuple):
    passed: bool
    failed: str    # the case, or what is known
    seconds: float


class Runner:
    """Runs tests of one build, each call in a process group and a temporary folder of its own."""

    def __init__(self, build):
        self.bin = build / "bin"

    def command(self, program, cases):
        if program == SCENARIOS:
            return [str(self.bin / program), *cases]
        return [str(self.bin / program), "--gtest_filter=" + ":".join(cases), "--gtest_fail_fast",
                "--gtest_brief=0"]

    def run(self, program, cases, limit, **variables):
        with tempfile.TemporaryDirectory(prefix="mutant-", ignore_cleanup_errors=True) as folder:
            environment = {k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "ZRT_"))}
            environment.update(TMPDIR=folder, HOME=folder, QT_QPA_PLATFORM="offscreen", **variables)
            output = Path(folder) / "output"
            began = time.monotonic()
            with output.open("wb") as stream:
                process = subprocess.Popen(
                    ["prlimit", f"--as={MEMORY}", "--core=0", "--"] + self.command(program, cases),
                    stdout=stream, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, cwd=folder,
                    env=environment, start_new_session=True)
                try:
                    status = process.wait(limit)
                except subprocess.TimeoutExpired:
                    status = None
                finally:
                    try:
                        os.killpg(process.pid, signal.SIGKILL)  # children that are left, too
                    except ProcessLookupError:
                        pass
                    process.wait()
            with output.open("rb") as stream:
                text = stream.read(1 << 20).decode(errors="replace")
        return Outcome(status == 0, failed_case(program, text, status), time.monotonic() - began)

    def list_tests(self, program, scenarios):
        if program == SCENARIOS:
            return [Test(program, str(path)) for path in sorted(scenarios.glob("*.scn"))]
        output = subprocess.run([str(self.bin / program), "--gtest_list_tests"], text=True, check=True,
                                capture_output=True,
                                env={**os.environ, "QT_QPA_PLATFORM": "offscreen"}).stdout
        return [Test(program, case) for case in listed_cases(output)]

    def measure(self, test):
        """Runs one test unmutated."""
        with tempfile.NamedTemporaryFile(prefix="reached-") as marks:
            marks.truncate(MOST + 1)
            outcome = self.run(test.program, [test.case], 600, ZRT_MUTANTS_REACHED=marks.name)
            marks.seek(0)
            found = marks.read()
        reached = frozenset(match.start() for match in re.finditer(b"\1", found))
        return outcome, Measured(outcome.seconds, reached)


def listed_cases(output):
    cases, suite = [], ""
    for line in output.splitlines():
        name = line.split("#")[0].rstrip()
        if name and not line.startswith(" ") and name.endswith("."):
            suite = name
        elif line.startswith("  ") and not (name.strip() + suite).count("DISABLED_"):
            cases.append(suite + name.strip())
    # Other keyboards than the US one are a matter of X11.
    return [case for case in cases if not case.endswith("OnOtherKeyboards")]


def failed_case(program, text, status):
    """Which case has failed, as the output says; a crash or an endless loop ends in the last begun."""
    if status == 0:
        return ""
    failed = re.search(r"^(\S+\.scn):\d+: " if program == SCENARIOS else
                       r"^\[  FAILED  \] ([^\s,]+)", text, re.M)
    begun = re.findall(r"^\[ RUN      \] (\S+)", text, re.M)
    if failed:
        return failed.group(1)
    return begun[-1] if begun else ""


def chunks(tests, measured):
    """The tests, the quickest first, in groups that take about as long as CHUNK_SECONDS."""
    groups, seconds = [], 0.0
    for test in sorted(tests, key=lambda t: measured[t].seconds):
        if not groups or seconds + measured[test].seconds > CHUNK_SECONDS:
            groups.append([])
            seconds = 0.0
        groups[-1].append(test)
        seconds += measured[test].seconds
    return groups


def own_programs(file):
    """The tests that belong to a source's folder begin with this."""
    folder = Path(file).parts[1]
    return "test_qt_" if folder == "qt" else "test_" + folder


def order_of(file, programs):
    own = own_programs(file)
    return sorted(programs, key=lambda p: (not p.startswith(own), p != SCENARIOS, p in SLOW, p))


def verdict(number, site, measured, runner):
    """How the mutant fares: "killed by ...", "survived" or "not reached"."""
    reaching = [test for test, m in measured.items() if number in m.reached]
    if not reaching:
        return "not reached"
    for program in order_of(site.file, {test.program for test in reaching}):
        for group in chunks([t for t in reaching if t.program == program], measured):
            limit = PATIENCE + 10 * sum(measured[t].seconds for t in group)
            cases = [t.case for t in group]
            outcome = runner.run(program, cases, limit, ZRT_MUTANT=str(number))
            # A test that fails by itself kills nothing.
            if not outcome.passed and runner.run(
                    program, [outcome.failed] if outcome.failed in cases else cases, limit).passed:
                hung = " (too slow)" if outcome.seconds >= limit else ""
                name = Path(outcome.failed).name if program == SCENARIOS else outcome.failed
                return f"killed by {program} {name}{hung}"
    return "survived"


# ---- what comes of it

def read_equivalent(text):
    """The keys of mutants that change nothing, each with its reason: {key: reason}."""
    found = {}
    for number, line in enumerate(text.splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        key, bar, reason = line.rpartition(" | ")
        if not bar or not reason.strip() or " -> " not in key:
            raise Failure(f"mutants_equivalent.txt:{number}: FILE FUNCTION: OLD -> NEW | reason")
        found[key.strip()] = reason.strip()
    return found


def row(number, site, result):
    return f"{number:5}  {site.file}:{site.line}  {site.function}: {site.shown}  {result}"


def summary(verdicts):
    """The line of sums, and the share of those killed in percent."""
    killed = sum(v.startswith("killed") for v in verdicts)
    lived, missed = verdicts.count("survived"), verdicts.count("not reached")
    counted = killed + lived + missed
    share = 100 * killed / counted if counted else 0.0
    return (f"{counted} mutants: {killed} killed, {lived} survived, {missed} not reached: "
            f"{share:.1f} % killed; {len(verdicts) - counted} equivalent"), share


def measure_all(runner, programs, scenarios, jobs, pool):
    tests = [t for p in programs + [SCENARIOS] for t in runner.list_tests(p, scenarios)]
    print(f"{len(tests)} tests run unmutated", flush=True)
    results = list(pool.map(runner.measure, tests))
    for index, (outcome, _) in enumerate(results):
        if not outcome.passed:  # under load a test may be late once
            results[index] = runner.measure(tests[index])
    bad = [f"{t.program} {t.case}" for t, (outcome, _) in zip(tests, results) if not outcome.passed]
    if bad:
        raise Failure("these fail without a mutant:\n  " + "\n  ".join(bad))
    return {test: measured for test, (_, measured) in zip(tests, results)}


def run_mutants(mutants, equivalent, measured, runner, pool):
    def judge(item):
        number, site = item
        result = "equivalent" if site.key() in equivalent else verdict(number, site, measured, runner)
        print(row(number, site, result), flush=True)
        return result

    return dict(zip(mutants, pool.map(judge, mutants.items())))


def parse_options():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=150)
    parser.add_argument("--folders", default=FOLDERS)
    parser.add_argument("-j", dest="jobs", type=int, default=os.cpu_count())
    parser.add_argument("--least", type=float, default=95.0)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--only", default="")
    parser.add_argument("--slow", action="store_true")
    return parser.parse_args()


def measure(options):
    folder = ROOT / "build" / "mutants"
    copy, build = folder / "source", folder / "build"
    equivalent = read_equivalent((ROOT / "tools/mutants_equivalent.txt").read_text())
    sources = copy_tree(copy)
    for name in sources:
        if not (copy / name).exists():
            write_if_other(copy / name, (ROOT / name).read_bytes())
    configure(copy, build)
    arguments = arguments_of(copy, build)
    # No test links a main().
    wanted = [n for n in sources if n.split("/")[1] in options.folders.split(",") and n in arguments
              and not n.endswith("main.cpp")]
    sites = all_sites(wanted, arguments, folder / "sites.json", options.jobs)
    for key in sorted(set(equivalent) - {site.key() for site in sites}):
        print(f"mutants_equivalent.txt names what is not there: {key}")
    print(f"{len(sites)} mutants are possible in {len(wanted)} sources", flush=True)
    if options.list:
        for number, site in sample(sites, options.seed, options.count, set()).items():
            print(row(number, site, ""))
        return 0
    programs = test_programs(options.slow)
    mutants = build_mutants(sites, options, copy, build, sources, programs)
    runner = Runner(build)
    pool = ThreadPoolExecutor(options.jobs)
    measured = measure_all(runner, programs, copy / "tests/scenarios", options.jobs, pool)
    if options.only:
        mutants = {n: s for n, s in mutants.items() if str(n) in options.only.split(",")}
    verdicts = run_mutants(mutants, equivalent, measured, runner, pool)
    line, share = summary(list(verdicts.values()))
    rows = [row(n, mutants[n], result) for n, result in sorted(verdicts.items())]
    (folder / "table.txt").write_text("\n".join(rows + [line]) + "\n")
    survivors = [n for n, result in sorted(verdicts.items()) if result in ("survived", "not reached")]
    print("\nSurvivors:" if survivors else "\nNo survivors.")
    for number in survivors:
        print(row(number, mutants[number], verdicts[number]))
    print(f"seed {options.seed}, {line}")
    return 0 if share >= options.least else 1


def main():
    try:
        return measure(parse_options())
    except Failure as failure:
        print(failure, file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
