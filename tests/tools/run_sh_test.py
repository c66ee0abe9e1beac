#!/usr/bin/env python3
"""Tests the procedures of run.sh that fill the program's folder. CTest runs it."""

import os
import pwd
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

RUN = Path(__file__).resolve().parents[2] / "run.sh"
DATA = {"ZRTLOG126.DAT": b"list\r\n", "cty.dat": b"country:\n" * 9000, "zrtlog125.ini": b"[Preferences]\n",
        "zrtlog127Help.html": b"<p>help</p>\n"}


class RunSh(unittest.TestCase):
    def setUp(self):
        self.place = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.place)
        self.data = self.place / "data"
        self.data.mkdir()
        for name, content in DATA.items():
            (self.data / name).write_bytes(content)
        self.home = self.place / "home"
        self.folder = self.home / ".local/share/zrtlog"

    def run_sh(self, script, **variables):
        """Runs a script with the procedures of run.sh; the variables are all that is set."""
        environment = {"PATH": os.environ["PATH"], **variables}
        return subprocess.run(
            ["bash", "-c", f'source "{RUN}"; trap RemoveSideFile EXIT; {script}'],
            env=environment, capture_output=True, text=True)

    def fill(self, before=""):
        return self.run_sh(f'{before} FillProgramFolder "{self.data}"', HOME=str(self.home))

    def contents(self):
        return {file.name: file.read_bytes() for file in self.folder.iterdir()}

    def test_a_new_folder_holds_all_files(self):
        self.assertEqual(self.fill().returncode, 0)
        self.assertEqual(self.contents(), DATA)
        self.assertEqual((self.folder / "cty.dat").stat().st_mode & 0o777, 0o644)

    def test_the_settings_come_last(self):
        lines = self.fill().stdout.split()
        self.assertTrue(lines[-1].endswith("zrtlog125.ini"), lines)

    def test_a_file_of_the_operator_stays_in_whatever_case(self):
        self.folder.mkdir(parents=True)
        (self.folder / "CTY.DAT").write_bytes(b"mine")
        self.assertEqual(self.fill().returncode, 0)
        self.assertEqual(self.contents(), {"CTY.DAT": b"mine", **{k: DATA[k] for k in DATA if k != "cty.dat"}})

    def test_a_full_disk_leaves_no_half_file_and_no_settings(self):
        # The largest file that may be written has 8 kilobytes; cp fails as on a full disk.
        result = self.fill("trap '' XFSZ; ulimit -f 8;")
        self.assertEqual(result.returncode, 1)
        self.assertIn("cty.dat could not be copied. Make room", result.stderr)
        self.assertEqual(self.contents(), {"ZRTLOG126.DAT": DATA["ZRTLOG126.DAT"]})
        self.assertEqual(self.fill().returncode, 0)
        self.assertEqual(self.contents(), DATA)

    def test_a_copy_that_is_killed_leaves_no_half_file_under_its_name(self):
        self.fill("ulimit -f 8;")  # cp dies of SIGXFSZ
        self.assertNotIn("cty.dat", self.contents())

    def test_the_folder_follows_the_rules_of_the_base_directories(self):
        account = pwd.getpwuid(os.geteuid()).pw_dir
        for variables, folder in [
            ({"HOME": "/h", "XDG_DATA_HOME": "/data"}, "/data"),
            ({"HOME": "/h"}, "/h/.local/share"),
            ({"HOME": "/h", "XDG_DATA_HOME": "data"}, "/h/.local/share"),
            ({}, account + "/.local/share"),
            ({"HOME": "h", "XDG_DATA_HOME": ""}, account + "/.local/share"),
        ]:
            with self.subTest(**variables):
                result = self.run_sh("DataHome", **variables)
                self.assertEqual(result.stdout, folder + "\n", result.stderr)

    def test_without_any_home_it_ends(self):
        result = self.run_sh('getent() { false; }; FillProgramFolder /nowhere')
        self.assertEqual(result.returncode, 1)
        self.assertIn("Set HOME", result.stderr)


if __name__ == "__main__":
    unittest.main()
