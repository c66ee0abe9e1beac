#!/usr/bin/env python3
"""Tests what the packages are made of: packaging_test.py BUILD/packaging VERSION. CTest runs it."""

import gzip
import re
import shutil
import subprocess
import sys
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2] / "packaging"
ID = "org.zrtlog.zrtlog"
BUILT = VERSION = None


class Packaging(unittest.TestCase):
    def checked_by(self, *command):
        if shutil.which(command[0]) is None:
            self.skipTest(f"there is no {command[0]}")
        result = subprocess.run(command, capture_output=True, text=True)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def test_the_version_is_that_of_the_project(self):
        release = xml.parse(BUILT / f"{ID}.metainfo.xml").find("releases/release")
        self.assertEqual(release.get("version"), VERSION)
        changelog = gzip.decompress((BUILT / "changelog.gz").read_bytes()).decode()
        self.assertEqual(changelog.splitlines()[0], f"zrtlog ({VERSION}) unstable; urgency=medium")
        self.assertIn(f"ZRTLOG {VERSION}", gzip.decompress((BUILT / "zrtlog.1.gz").read_bytes()).decode())

    def test_all_parts_have_one_id(self):
        component = xml.parse(BUILT / f"{ID}.metainfo.xml").getroot()
        self.assertEqual(component.findtext("id"), ID)
        self.assertEqual(component.findtext("launchable"), f"{ID}.desktop")
        self.assertEqual(component.findtext("icon"), ID)
        desktop = (SOURCE / f"{ID}.desktop").read_text()
        self.assertRegex(desktop, re.compile(f"^Icon={re.escape(ID)}$", re.MULTILINE))
        self.assertTrue((SOURCE / f"{ID}.svg").is_file())

    def test_the_metainfo_is_valid(self):
        self.checked_by("appstreamcli", "validate", "--no-net", "--pedantic", str(BUILT / f"{ID}.metainfo.xml"))

    def test_the_desktop_file_is_valid(self):
        self.checked_by("desktop-file-validate", str(SOURCE / f"{ID}.desktop"))


if __name__ == "__main__":
    VERSION = sys.argv.pop()
    BUILT = Path(sys.argv.pop())
    unittest.main()
