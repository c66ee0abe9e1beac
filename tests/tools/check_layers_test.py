#!/usr/bin/env python3
"""Tests of tools/check_layers.py, each on a little tree in a temporary folder."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "tools" / "check_layers.py"


class CheckLayers(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, name, *lines):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("".join(line + "\n" for line in lines), encoding="utf-8")

    def clean_tree(self):
        self.write("src/CMakeLists.txt", "add_subdirectory(platform)")
        self.write("src/platform/clock.h", "#pragma once", "#include <cstdint>")
        self.write("src/platform/events.h", '#include "platform/clock.h"', "#include <queue>")
        self.write("src/platform/events.cpp", '#include "platform/events.h"')
        self.write("src/session/fixed_text.h", "#pragma once")
        self.write("src/session/fixed_text.cpp", '#include "session/fixed_text.h"')
        self.write("src/entry/log_form.h", '#include "session/fixed_text.h"')
        self.write("src/entry/multipliers.h", '#include "entry/log_form.h"')
        self.write("src/entry/statistics.h", '#include "entry/multipliers.h"')
        self.write("src/app/start_up.cpp", '#include "app/preferences.h"')
        self.write("src/app/preferences.h", '#include "entry/statistics.h"')
        self.write("src/qt/views.cpp", "#include <QWidget>", '#include "app/preferences.h"')
        self.write("src/headless/devices.h", '#include "platform/clock.h"')
        self.write("tests/qt/keys_test.cpp", "#include <QTest>")
        self.write("tests/app/start_up_test.cpp", '#include "headless/devices.h"')
        self.write("bench/paint.cpp", "#include <QImage>", '#include "headless/devices.h"')

    def run_script(self):
        run = subprocess.run(
            [sys.executable, str(SCRIPT), str(self.root)], capture_output=True, text=True, check=False
        )
        return run.returncode, run.stdout.splitlines(), run.stderr

    def assert_clean(self):
        status, lines, errors = self.run_script()
        self.assertEqual((status, errors), (0, ""), lines)
        self.assertEqual(len(lines), 1)

    def assert_findings(self, *expected):
        """Each expected entry is (start of the line, a part of its text); no line more."""
        status, lines, _ = self.run_script()
        self.assertEqual(status, 1, lines)
        self.assertEqual(len(lines), len(expected), lines)
        for line, (start, part) in zip(lines, expected):
            self.assertTrue(line.startswith(start + ": "), line)
            self.assertIn(part, line)

    def test_a_clean_tree_passes_and_its_files_and_includes_are_counted(self):
        self.clean_tree()
        self.assert_clean()
        self.assertIn("15 files, 17 includes", self.run_script()[1][0])

    def test_an_empty_tree_is_no_proof(self):
        status, _, errors = self.run_script()
        self.assertEqual(status, 2)
        self.assertIn("no sources", errors)

    def test_an_upward_include_fails_in_a_header(self):
        self.clean_tree()
        self.write("src/session/fixed_text.h", "#pragma once", "", '#include "entry/log_form.h"')
        status, lines, _ = self.run_script()
        self.assertEqual(status, 1)
        self.assertTrue(lines[0].startswith("src/session/fixed_text.h:3: "), lines)

    def test_an_upward_include_fails_in_a_source(self):
        self.clean_tree()
        self.write("src/session/bands.cpp", '#  include "entry/log_form.h" // why not')
        self.assert_findings(("src/session/bands.cpp:1", "above it"))

    def test_an_upward_include_fails_in_angle_brackets_and_through_the_own_folder(self):
        self.clean_tree()
        self.write("src/session/bands.h", "#include <session/settings.h>")
        self.write("src/session/contests.h", '#include "settings.h"')
        self.write("src/session/log_entry.h", '#include "../session/settings.h"')
        self.write("src/session/settings.h")
        self.assert_findings(
            ("src/session/bands.h:1", "session/settings above it"),
            ("src/session/contests.h:1", "session/settings above it"),
            ("src/session/log_entry.h:1", "session/settings above it"),
        )

    def test_the_order_within_a_floor_holds(self):
        self.write("src/entry/multipliers.cpp", '#include "entry/statistics.h"')
        self.write("src/entry/statistics.h")
        self.assert_findings(("src/entry/multipliers.cpp:1", "above it"))

    def test_files_of_one_floor_may_not_include_each_other(self):
        self.write("src/session/bands.h", '#include "session/log_entry.h"')
        self.write("src/session/log_entry.h")
        self.assert_findings(("src/session/bands.h:1", "on its own floor"))

    def test_two_folders_on_one_floor_may_not_include_each_other(self):
        self.write("src/displays/viewer.h", '#include "transmit/macro_bar.h"')
        self.write("src/transmit/macro_bar.h")
        self.write("src/headless/runner.cpp", '#include "qt/views.h"')
        self.write("src/qt/views.h")
        self.assert_findings(
            ("src/displays/viewer.h:1", "on its own floor"),
            ("src/headless/runner.cpp:1", "on its own floor"),
        )

    def test_files_of_the_free_folders_may_include_each_other(self):
        for folder in ("platform", "displays", "postcontest", "app", "qt", "headless"):
            self.write(f"src/{folder}/one.h", f'#include "{folder}/two.h"')
            self.write(f"src/{folder}/two.h")
        self.assert_clean()

    def test_the_recount_is_lowest_and_the_driver_topmost(self):
        self.write("src/postcontest/cabrillo.h", '#include "postcontest/recount.h"')
        self.write("src/postcontest/driver.cpp", '#include "postcontest/cabrillo.h"')
        self.write("src/postcontest/driver.h")
        self.write("src/postcontest/recount.h")
        self.assert_clean()
        self.write("src/postcontest/sheets.h", '#include "postcontest/driver.h"')
        self.assert_findings(("src/postcontest/sheets.h:1", "above it"))

    def test_a_ring_fails_even_in_a_free_folder_and_is_told_once(self):
        self.write("src/app/one.h", "", '#include "app/two.h"')
        self.write("src/app/two.h", '#include "app/three.h"')
        self.write("src/app/three.h", '#include "app/one.h"')
        self.assert_findings(("src/app/one.h:2", "ring"))
        self.assertIn("app/one -> app/two -> app/three -> app/one", self.run_script()[1][0])

    def test_two_rings_are_two_findings(self):
        for one, two in (("a", "b"), ("c", "d")):
            self.write(f"src/app/{one}.h", f'#include "app/{two}.h"')
            self.write(f"src/app/{two}.h", f'#include "app/{one}.h"')
        self.write("src/app/start.h", '#include "app/a.h"', '#include "app/c.h"')
        self.assert_findings(("src/app/a.h:1", "ring"), ("src/app/c.h:1", "ring"))

    def test_a_ring_through_a_source_fails(self):
        self.write("src/app/one.h")
        self.write("src/app/one.cpp", '#include "app/one.h"', '#include "app/two.h"')
        self.write("src/app/two.h")
        self.write("src/app/two.cpp", '#include "app/two.h"', '#include "app/one.h"')
        self.assert_findings(("src/app/one.cpp:2", "ring"))

    def test_a_diamond_is_no_ring(self):
        self.write("src/app/top.h", '#include "app/left.h"', '#include "app/right.h"')
        self.write("src/app/left.h", '#include "app/bottom.h"')
        self.write("src/app/right.h", '#include "app/bottom.h"')
        self.write("src/app/bottom.h")
        self.assert_clean()

    def test_qt_in_the_logic_fails(self):
        self.clean_tree()
        for name in ("<QString>", "<QtCore/QString>", "<QtGlobal>", "<qobject.h>", '"QTimer"'):
            self.write("src/entry/log_form.cpp", f"#include {name}")
            self.assert_findings(("src/entry/log_form.cpp:1", "Qt"))

    def test_qt_in_the_tests_of_the_logic_fails(self):
        self.clean_tree()
        self.write("tests/entry/log_form_test.cpp", "#include <QTest>")
        self.assert_findings(("tests/entry/log_form_test.cpp:1", "Qt"))

    def test_headless_is_only_for_headless_demo_tests_and_bench(self):
        self.clean_tree()
        self.write("src/qt/demo_main.cpp", '#include "headless/devices.h"')
        self.assert_clean()
        self.write("src/qt/main.cpp", '#include "headless/devices.h"')
        self.write("src/app/preferences.cpp", '#include "headless/devices.h"')
        self.assert_findings(
            ("src/app/preferences.cpp:1", "headless/devices is for"),
            ("src/qt/main.cpp:1", "headless/devices is for"),
        )

    def test_a_file_without_a_floor_fails(self):
        self.clean_tree()
        self.write("src/entry/surprise.cpp")
        self.write("src/attic/old.h")
        self.write("src/loose.cxx")
        self.assert_findings(
            ("src/attic/old.h:1", "no floor"),
            ("src/entry/surprise.cpp:1", "no floor"),
            ("src/loose.cxx:1", "no floor"),
        )

    def test_an_include_of_nothing_fails(self):
        self.write("src/platform/clock.h", '#include "platform/gone.h"')
        self.assert_findings(("src/platform/clock.h:1", "no file src/platform/gone.h"))

    def test_what_the_tools_of_qt_make_is_no_missing_file(self):
        self.write("src/qt/views.cpp", '#include "views.moc"', '#include "moc_views.cpp"')
        self.assert_clean()

    def test_an_include_through_a_macro_fails(self):
        self.write("src/platform/clock.h", "#include CLOCK_HEADER")
        self.assert_findings(("src/platform/clock.h:1", "not a plain file name"))

    def test_includes_in_comments_and_raw_strings_do_not_count(self):
        self.write("src/entry/log_form.h")
        self.write(
            "src/session/bands.cpp",
            '// #include "entry/log_form.h"',
            "/*",
            '#include "entry/log_form.h"',
            "*/",
            'const char *text = R"x(',
            '#include "entry/log_form.h"',
            ')x";',
        )
        self.assert_clean()

    def test_strings_and_digit_marks_do_not_hide_an_include(self):
        self.write("src/entry/log_form.h")
        self.write(
            "src/session/bands.cpp",
            'const char *text = "/* \\" //";',
            "const int khz = 14'000; const char quote = '\"';",
            "/* a comment",
            '   of two lines */ #include "entry/log_form.h"',
        )
        self.assert_findings(("src/session/bands.cpp:4", "above it"))

    def test_without_an_argument_the_script_checks_the_tree_around_it(self):
        self.clean_tree()
        self.write("tools/check_layers.py", SCRIPT.read_text(encoding="utf-8"))
        self.write("src/session/bands.cpp", '#include "entry/log_form.h"')
        run = subprocess.run(
            [sys.executable, str(self.root / "tools" / "check_layers.py")],
            capture_output=True, text=True, check=False, cwd="/",
        )
        self.assertEqual(run.returncode, 1)
        self.assertTrue(run.stdout.startswith("src/session/bands.cpp:1: "), run.stdout)


if __name__ == "__main__":
    unittest.main()
