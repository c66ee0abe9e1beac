#!/usr/bin/env python3
"""Runs attacks by name; see README.md.

    attack.py --list         the names
    attack.py NAME...        runs these; exit status 0 all held, 1 not, 77 skipped
    attack.py --sessions 8 --seed 1 [--contacts 40]   random sessions
"""

import argparse
import sys
import unittest

import attack_disk
import attack_harness
import attack_paths
import attack_sharing
import attack_signals

MODULES = (attack_harness, attack_sharing, attack_disk, attack_signals, attack_paths)
SKIPPED = 77


def attacks():
    found = {}
    for module in MODULES:
        for suite in unittest.defaultTestLoader.loadTestsFromModule(module):
            for test in suite:
                found[test.id().split(".")[-1].removeprefix("test_")] = test
    return found


def run(names):
    found = attacks()
    unknown = [name for name in names if name not in found]
    if unknown:
        print(f"no such attack: {', '.join(unknown)}", file=sys.stderr)
        return 2
    result = unittest.TextTestRunner(verbosity=2).run(
        unittest.TestSuite(found[name] for name in names))
    if not result.wasSuccessful():
        return 1
    for _, reason in result.skipped:
        print(f"skipped: {reason}")
    return SKIPPED if len(result.skipped) == len(names) else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("names", nargs="*", metavar="NAME")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--sessions", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--contacts", type=int, default=40)
    arguments = parser.parse_args()
    if arguments.list:
        print("\n".join(attacks()))
        return 0
    if arguments.sessions:
        import random_sessions
        return random_sessions.run(arguments.sessions, arguments.seed, arguments.contacts)
    return run(arguments.names or list(attacks()))


if __name__ == "__main__":
    sys.exit(main())
