#!/usr/bin/env python3
"""Proves the floors of the house: who may include whom. test.sh and CTest run it.

    tools/check_layers.py [ROOT]      ROOT is the project's folder; default: the one around tools/

Prints one line a finding (file:line: what is wrong). Exit 0: clean, 1: findings, 2: nothing to check.

A header and its source of the same name are one module. A module includes only modules of lower
floors. A new file needs a row here: choosing its floor is part of designing it.
"""

import fnmatch
import re
import sys
from pathlib import Path

# Module (a shell pattern, without suffix) and floor; the first row that fits counts.
FLOORS = [
    ("platform/*", 0),
    ("session/fixed_text", 1),
    ("session/bands", 2),
    ("session/log_entry", 2),
    ("session/version", 2),
    ("session/contests", 2.5),
    ("session/radio_state", 2.5),
    ("session/band_plan", 2.7),
    ("session/file_errors", 3),
    ("session/log_file", 3),
    ("session/date_text", 3.2),
    ("session/settings_parts", 2),
    ("session/settings", 3),
    ("session/user_profiles", 3),
    ("session/settings_keys", 3.2),
    ("session/settings_file", 3.4),
    ("session/session_flags", 3),
    ("session/call_areas", 3),
    ("session/prefix_index", 3),
    ("session/data_files", 3.3),
    ("session/reference_data", 3.5),
    ("session/startup_data", 3.6),
    ("entry/log_form", 4),
    ("entry/callsign", 5),
    ("entry/utc_clock", 5),
    ("entry/parsed_exchange", 5),
    ("entry/station_hooks", 5),
    ("entry/old_calls", 5.9),
    ("entry/prior_contacts", 5.9),
    ("entry/dupes", 6),
    ("entry/points", 6),
    ("entry/multipliers", 7),
    ("entry/statistics", 7.5),
    ("entry/meters", 7.7),
    ("entry/needed", 7.8),
    ("entry/exchange_field", 7.8),
    ("entry/exchange_parsers", 8),
    ("entry/ss_parser", 8.2),
    ("entry/prefill", 8),
    ("entry/typing", 8.5),
    ("entry/band_change", 8.7),
    ("entry/partial_calls", 8),
    ("transmit/control_lines", 9),
    ("radio/protocols", 9),
    ("radio/ports", 9.5),
    ("radio/two_radio", 10),
    ("transmit/cw_engine", 11),
    ("transmit/winkeyer", 11),
    ("transmit/send_cw", 12),
    ("transmit/voice_keyer", 12),
    ("transmit/voice_assembly", 12.3),
    ("transmit/k3_messages", 12.6),
    ("transmit/send_macro", 13),
    ("transmit/macro_bar", 14),
    ("displays/*", 14),
    ("entry/call_commands", 15),
    ("entry/log_qso", 15.3),
    ("entry/keyboard", 15.6),
    ("postcontest/post_contest", 16),
    ("postcontest/contest_hours", 16),
    ("postcontest/cabrillo_input", 16),
    ("postcontest/recount", 16.1),
    ("postcontest/sent_exchange", 16.2),
    ("postcontest/exchange_columns", 16.2),
    ("postcontest/driver", 16.6),
    ("postcontest/*", 16.3),
    ("app/*", 17),
    ("qt/*", 18),
    ("headless/*", 18),
]

# Inside these folders files of one floor may include each other; only rings are forbidden.
FREE_FOLDERS = {"platform", "displays", "postcontest", "app", "qt", "headless"}

QT_ALLOWED = ("src/qt/", "tests/qt/", "bench/")
HEADLESS_ALLOWED = ("src/headless/", "src/qt/demo", "tests/", "bench/")

# In src/ everything is taken for a source, except these.
NO_SOURCES = ("CMakeLists.txt", "*.cmake", "*.md", "*.qrc")
# In tests/ and bench/, which hold other things too, these are sources.
SOURCES = ("*.h", "*.hpp", "*.cpp", "*.cc", "*.inc")
# Made by Qt's tools while building; src/qt/ includes them by these names.
GENERATED = ("*.moc", "moc_*.cpp", "ui_*.h")

TOKENS = re.compile(
    r"""
      (?P<gone> //[^\n]* | /\*.*?\*/ | R"(?P<mark>[^()\\\s]*)\(.*?\)(?P=mark)" )
    | "(?:\\.|[^"\\\n])*"
    | (?<![0-9a-fA-F])'(?:\\.|[^'\\\n])*'
    """,
    re.VERBOSE | re.DOTALL,
)
INCLUDE = re.compile(r"^[ \t]*#[ \t]*(?:include|include_next|import)\b[ \t]*(.*?)[ \t]*$", re.MULTILINE)
TARGET = re.compile(r'["<]([^">]+)[">]')
QT_NAME = re.compile(r"Q[A-Za-z]|q[a-z0-9_]*\.h$")


def fits(name, patterns):
    return any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns)


def includes(text):
    """The (line, target, quoted) of each include; comments and raw strings don't count.
    The target is None where it is not a plain name."""
    text = TOKENS.sub(
        lambda m: " " + "\n" * m.group().count("\n") if m.group("gone") else m.group(), text
    )
    for match in INCLUDE.finditer(text):
        line = text.count("\n", 0, match.start(1)) + 1
        target = TARGET.match(match.group(1))
        yield line, target and target.group(1), match.group(1).startswith('"')


def module_of(path):
    return path.with_suffix("").as_posix()


def floor_of(module):
    return next((floor for pattern, floor in FLOORS if fnmatch.fnmatchcase(module, pattern)), None)


def find_file(src, includer, target, quoted):
    """The path below src/ that an include means, or None where it means something outside."""
    folders = [includer.parent, src] if quoted else [src]
    for folder in folders:
        found = (folder / target).resolve()
        if found.is_file() and src in found.parents:
            return found.relative_to(src)
    return None


def same_folder_is_free(module, other):
    folder = module.split("/")[0]
    return folder == other.split("/")[0] and folder in FREE_FOLDERS


def check_floors(where, module, other, findings):
    floor, floor_below = floor_of(module), floor_of(other)
    if floor is None or floor_below is None or module == other:
        return
    if floor_below > floor:
        findings.append(f"{where}: {module} (floor {floor}) includes {other} above it ({floor_below})")
    elif floor_below == floor and not same_folder_is_free(module, other):
        if not (module.startswith("qt/demo") and other.startswith("headless/")):
            findings.append(f"{where}: {module} includes {other} on its own floor ({floor})")


def find_rings(edges):
    """One ring for each knot of modules that reach each other, as a list of modules."""

    def way(start, goal):
        came_from, waiting = {start: None}, [start]
        for module in waiting:
            for other in sorted(edges.get(module, ())):
                if other not in came_from:
                    came_from[other] = module
                    waiting.append(other)
        steps = []
        while goal in came_from and goal is not None:
            steps.append(goal)
            goal = came_from[goal]
        return steps[::-1]

    known, rings = set(), []
    for module in sorted(edges):
        if module in known:
            continue
        ways = [way(other, module) for other in sorted(edges[module])]
        ways = [steps for steps in ways if steps]
        if ways:
            rings.append([module] + min(ways, key=len))
            known.update(m for m in edges if way(module, m) and way(m, module))
    return rings


def check(root):
    """The findings, the number of files looked at, and the number of their includes."""
    src = root / "src"
    findings, edges, first_seen = [], {}, {}
    files = [p for p in src.rglob("*") if p.is_file() and not fits(p.name, NO_SOURCES)]
    for folder in ("tests", "bench"):
        files += [p for p in (root / folder).rglob("*") if p.is_file() and fits(p.name, SOURCES)]
    count = 0
    for path in sorted(files):
        name = path.relative_to(root).as_posix()
        in_src = src in path.parents
        module = module_of(path.relative_to(src)) if in_src else None
        if in_src and floor_of(module) is None:
            findings.append(f"{name}:1: {module} has no floor in the table of tools/check_layers.py")
        for line, target, quoted in includes(path.read_text(encoding="utf-8", errors="replace")):
            count += 1
            where = f"{name}:{line}"
            if target is None:
                findings.append(f"{where}: this include is not a plain file name")
                continue
            found = find_file(src, path, target, quoted)
            if found is None:
                own = quoted and "/" in target and not target.startswith("Q")  # "entry/quick.h"
                if not own and (QT_NAME.match(target.split("/")[-1]) or QT_NAME.match(target)):
                    if not name.startswith(QT_ALLOWED):
                        findings.append(f"{where}: Qt ({target}) is for src/qt/ alone")
                elif in_src and quoted and not fits(Path(target).name, GENERATED):
                    findings.append(f"{where}: there is no file src/{target}")
                continue
            other = module_of(found)
            if other.startswith("headless/") and not name.startswith(HEADLESS_ALLOWED):
                findings.append(f"{where}: {other} is for scenarios, tests and demonstrations alone")
            elif in_src:
                check_floors(where, module, other, findings)
            if in_src and module != other:
                edges.setdefault(module, set()).add(other)
                first_seen.setdefault((module, other), where)
    for ring in find_rings(edges):
        findings.append(f"{first_seen[ring[0], ring[1]]}: a ring of includes: {' -> '.join(ring)}")
    return findings, len(files), count


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent).resolve()
    findings, files, count = check(root)
    if files == 0:
        print(f"{root}: no sources found", file=sys.stderr)
        return 2
    for finding in findings:
        print(finding)
    if not findings:
        print(f"layers: {files} files, {count} includes, all in order")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
