#!/usr/bin/env python3
"""Tests of tests/golden/read_cabrillo.py: it takes good files, and finds each kind of fault."""

import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "tests" / "golden" / "read_cabrillo.py"


def header(tag, option=" ", form=1):
    return struct.pack("<hhh10shh5s1s", 0, 0, form, b" " * 10, 0, 0, tag.encode(), option.encode())


def entry26(call, exchange="", number=0, sent=12, date=-21155, time=5, band=3):
    return struct.pack("<hhh10shh5s1s", date, time, band, call.encode().ljust(10), sent, number,
                       exchange.encode().ljust(5), b"1")


def entry60(call, exchange="", number=0, name="", frequency="0", reserved="", **more):
    texts = name.encode().ljust(10), frequency.encode().ljust(10), reserved.encode().ljust(12)
    return entry26(call, exchange, number, **more) + texts[0] + texts[1] + b"1 " + texts[2]


def log60(head, *entries):
    return head.ljust(60, b"\0") + b"".join(entries)


def cabrillo(contest, qsos, extra=()):
    """A file around QSO lines typed by hand."""
    head = ["START-OF-LOG: 3.0", "CALLSIGN: K1ZZ", *extra, "CATEGORY-OPERATOR: SINGLE-OP",
            "CATEGORY-ASSISTED: NON-ASSISTED", "CATEGORY-TRANSMITTER: ONE", "CATEGORY-POWER: HIGH",
            "CATEGORY-BAND: ALL", "CATEGORY-STATION: FIXED", "CLAIMED-SCORE: 1234", "CLUB: ",
            "CONTEST: " + contest, "CREATED-BY: ZRTLOG VER. 12.7", "NAME: Jörg", "ADDRESS: A", "ADDRESS: ", "ADDRESS: C",
            "EMAIL: a@b.c", "OPERATORS:", "SOAPBOX:", "SOAPBOX:", "SOAPBOX:"]
    return "".join(line + "\r\n" for line in [*head, *qsos, "END-OF-LOG:"]).encode("latin-1")


WW_LOG = log60(
    header("WW CW", "2"),
    entry60("DL1ABC", number=14, time=5),
    entry60("JA1XYZ", number=25, time=1437, band=4, frequency="7025.3"),
    entry60("VOID", number=14, time=1438, band=4),
    entry60("G3ABC", number=14, time=2359, band=1, date=31315),
    entry60("W1AW/4", number=5, time=0, band=20, date=99),  # both codes mean nothing
)
WW_QSOS = [
    "QSO: 14000 CW 2015-01-15 0005 K1ZZ          599 05     DL1ABC        599   14",
    "QSO:  7000 CW 2015-01-15 1437 K1ZZ          599 05     JA1XYZ        599   25",
    "QSO: 28000 CW 2005-11-31 2359 K1ZZ          599 05     G3ABC         599   14",
    "QSO: 28000 CW 2005-11-31 0000 K1ZZ          599 05     W1AW/4        599    5",
]
WW_CASE = "Profile.Callsign=K1ZZ\nSettings.ExchangeCQWWMult=05\n"


def case_of(settings):
    return "Profile.Callsign=K1ZZ\n" + settings.replace("Exchange", "Settings.Exchange")


class ReadCabrillo(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def run_script(self, *arguments):
        run = subprocess.run([sys.executable, str(SCRIPT), *map(str, arguments)],
                             capture_output=True, text=True, check=False)
        return run.returncode, run.stdout.splitlines(), run.stderr

    def read(self, log, file, case=WW_CASE):
        """Status and output of the script for a log, its file and its case."""
        (self.folder / "A.ZRT").write_bytes(log)
        (self.folder / "A.LOG").write_bytes(file)
        arguments = [self.folder / "A.ZRT", self.folder / "A.LOG"]
        if case is not None:
            (self.folder / "A.case").write_text(case, encoding="utf-8")
            arguments = ["--case", self.folder / "A.case", *arguments]
        status, lines, errors = self.run_script(*arguments)
        self.assertEqual(errors, "")
        return status, lines

    def assert_good(self, log, file, case=WW_CASE):
        status, lines = self.read(log, file, case)
        self.assertEqual(status, 0, lines)

    def assert_found(self, what, file, log=WW_LOG, case=WW_CASE):
        status, lines = self.read(log, file, case)
        self.assertEqual(status, 1, lines)
        self.assertTrue(any(what in line for line in lines), lines)

    def ww(self, *qsos):
        return cabrillo("CQ-WW-CW", qsos or WW_QSOS)

    def changed(self, old, new, times=1):
        """The good file with a change that must hit."""
        good = self.ww()
        old, new = old.encode("latin-1"), new.encode("latin-1")
        self.assertIn(old, good)
        return good.replace(old, new, times)

    # ---- good files

    def test_a_good_file_passes_with_a_case_and_without(self):
        self.assert_good(WW_LOG, self.ww())
        self.assert_good(WW_LOG, self.ww(), None)

    def test_an_empty_log_gives_a_file_without_contacts(self):
        self.assert_good(header("WW CW", "2"), cabrillo("CQ-WW-CW", []))

    def test_exact_frequencies_stand_at_the_left(self):
        exact = self.changed("QSO:  7000", "QSO: 7025 ")
        self.assert_good(WW_LOG, exact, WW_CASE + "ExactFrequency=1\n")
        self.assert_good(WW_LOG, exact, None)
        self.assert_found("the frequency is '7025'", exact)
        self.assert_found("the frequency is '7000'", self.ww(), case=WW_CASE + "ExactFrequency=1\n")
        self.assert_found("wrong side", self.changed("QSO:  7000", "QSO:  7025"),
                          case=WW_CASE + "ExactFrequency=1\n")

    # One line of each contest: the number sent is 12.
    CONTESTS = [
        (header("ARLCW", "1"), entry60("DL1ABC", number=100), "ARRL-DX-CW", "ExchangeARRLMult=MA",
         "QSO: 14000 CW 2015-01-15 0005 K1ZZ          599 MA     DL1ABC        599   100"),
        (header("ARLSB", "2"), entry60("K1ABC", "CT", band=11), "ARRL-DX-SSB", "ExchangeARRLMult=100",
         "QSO: 14000 PH 2015-01-15 0005 K1ZZ          59  100    K1ABC         59     CT"),
        (header("ZRTOS"), entry60("ZT1A", "1", number=7, band=12), "ZDXA-ZRT", "ExchangeZRTMult=MA",
         "QSO:  7000 PH 2015-01-15 0005 K1ZZ         12 MA         ZT1A          7 ALDR      "),
        (header("WW SB", "2"), entry60("DL1ABC", number=14, band=10), "CQ-WW-SSB",
         "ExchangeCQWWMult=05",
         "QSO: 21000 PH 2015-01-15 0005 K1ZZ          59  05     DL1ABC        59    14"),
        (header("SP CW"), entry60("W1AW", "7", number=34, name="HIRAM", band=5), "NA-SPRINT-CW",
         "ExchangeSprintName=JOE\nExchangeSprintMult=MA",
         "QSO:  3500 CW 2015-01-15 0005 K1ZZ         12 JOE        MA  W1AW         34 HIRAM      CT    "),
        (header("SP CW"), entry60("W1AW", "11", number=34, name="HIRAM", band=5), "NA-SPRINT-CW",
         "ExchangeSprintName=JOE\nExchangeSprintMult=MASS",
         "QSO:  3500 CW 2015-01-15 0005 K1ZZ         12 JOE        MAS W1AW         34 HIRAM      11    "),
        (header("SS9CW"), entry60("W1AW", "B68EM", number=34, band=4, time=2105), "ARRL-SS-CW",
         "ExchangeSSPrec=A\nExchangeSSCheck=72\nExchangeSSSection=CT",
         "QSO:  7000 CW 2015-01-15 2105 K1ZZ         12 A 72 CT  W1AW         34 B 68 EMA"),
        (header("SS9CW"), entry60("W1AW", "B68??", number=34, band=4, time=2105), "ARRL-SS-CW",
         "ExchangeSSPrec=A\nExchangeSSCheck=72\nExchangeSSSection=CT",
         "QSO:  7000 CW 2015-01-15 2105 K1ZZ         12 A 72 CT  W1AW         34 B 68 ?? "),
        (header("WPXCW", "2"), entry60("DL1ABC", number=34), "CQ-WPX-CW", "",
         "QSO: 14000 CW 2015-01-15 0005 K1ZZ          599   12 DL1ABC        599   34"),
        (header("AA CW"), entry60("JA1XYZ", number=33), "JARL-AA-CW", "ExchangeAAMult=45",
         "QSO: 14000 CW 2015-01-15 0005 K1ZZ       599 45 JA1XYZ     599   33"),
        (header("PAQOS"), entry60("W3ABC", "2", number=34, band=4), "PA-QSO-PARTY",
         "ExchangePAQPMult=EMA",
         "QSO:  7000 CW 2015-01-15 0005 K1ZZ         12 EMA        W3ABC        34 ALL       "),
        (header("NA CW"), entry60("W1AW", "7", name="HIRAM", band=4), "NAQP-CW",
         "ExchangeNAQPName=JOE\nExchangeNAQPMult=MA",
         "QSO:  7000 CW 2015-01-15 0005 K1ZZ       JOE        MA  W1AW       HIRAM      CT "),
        (header("TEN  "), entry60("DL1ABC", number=34, band=9), "ARRL-10", "ExchangeARRLMult=MA",
         "QSO: 28000 PH 2015-01-15 0005 K1ZZ       59  MA     DL1ABC     59     34"),
        (header("NEQIN"), entry60("W1AW", "2", band=4), "NEQP", "ExchangeNEQPMult=BARMASS",
         "QSO:  7000 CW 2015-01-15 0005 K1ZZ       599 BARMA  W1AW       599 HARCT     "),
        (header("GEN  "), entry60("W1AW", "3211", name="HIRAM", band=21), "GENERIC",
         "ExchangeGeneric=# CA\nShowRst=True",
         "QSO: 24890 CW 2015-01-15 0005 K1ZZ       599    12  CA    W1AW       599 HIRAM     3211"),
        (header("GEN  "), entry60("W1AW", name="HIRAM", band=16), "GENERIC", "ExchangeGeneric=CA",
         "QSO:   144 PH 2015-01-15 0005 K1ZZ       CA    W1AW       HIRAM"),
        (header("CWOCW", "1"), entry60("W1AW", number=34, name="HIRAM", band=4), "CWOPEN",
         "ExchangeCWOName=JOE",
         "QSO:  7000 CW 2015-01-15 0005 K1ZZ         12  JOE        W1AW         34  HIRAM     "),
    ]

    def test_each_contest_has_its_columns(self):
        for head, entry, name, settings, line in self.CONTESTS:
            extra = ["LOCATION: EMA"] if name.startswith("ARRL") else []
            file = cabrillo(name, [line], extra)
            with self.subTest(line):
                self.assert_good(log60(head, entry), file, case_of(settings))
                self.assert_good(log60(head, entry), file, None)

    def test_in_each_contest_no_character_of_a_line_may_change(self):
        sys.path.insert(0, str(SCRIPT.parent))
        self.addCleanup(sys.path.remove, str(SCRIPT.parent))
        sys.dont_write_bytecode = True
        import read_cabrillo

        lists = read_cabrillo.read_lists((ROOT / "data" / "ZRTLOG126.DAT").read_text("latin-1"))
        changes = 0
        for head, entry, name, settings, line in self.CONTESTS:
            extra = ["LOCATION: EMA"] if name.startswith("ARRL") else []
            log = read_cabrillo.read_log(log60(head, entry))
            case = read_cabrillo.read_case(case_of(settings))
            for at, letter in enumerate(line):
                for other in {"X", "1", " "} - {letter}:
                    bad = cabrillo(name, [line[:at] + other + line[at + 1:]], extra)
                    found, _ = read_cabrillo.check_file(bad, log, case, lists)
                    self.assertTrue(found, f"{line}\ncolumn {at + 1} as '{other}' is not found")
                    changes += 1
            for bad_line in (line + " ", line[:-1], line[:30] + " " + line[30:]):
                found, _ = read_cabrillo.check_file(cabrillo(name, [bad_line], extra), log, case, lists)
                self.assertTrue(found, f"'{bad_line}' is not found")
        self.assertGreater(changes, 2000)

    def test_logs_of_the_old_form_keep_their_voids(self):
        log = header("WW CW", "4", form=0) + entry26("VOID", "G", 14) + entry26("G3ABC", "G", 14, 13)
        lines = ["QSO: 14000 CW 2015-01-15 0005 K1ZZ          599 05     VOID          599   14",
                 "QSO: 14000 CW 2015-01-15 0005 K1ZZ          599 05     G3ABC         599   14"]
        self.assert_good(log, self.ww(*lines))
        self.assert_found("1 QSO lines for 2 contacts", self.ww(lines[1]), log)

    def test_dates_of_each_decade(self):
        cases = [(1158, "", "1998-01-15"), (11155, "", "1995-11-15"), (21155, "", "2005-01-15"),
                 (-31155, "", "2015-11-15"), (31216, "2", "2026-11-21"), (31216, "", "2006-11-21")]
        for date, reserved, text in cases:
            log = log60(header("WW CW", "2"), entry60("G3ABC", number=14, date=date, reserved=reserved))
            line = f"QSO: 14000 CW {text} 0005 K1ZZ          599 05     G3ABC         599   14"
            with self.subTest(text):
                self.assert_good(log, self.ww(line))
                self.assert_found("the date", self.ww(line.replace(text, "1996-12-15")), log)

    def test_a_first_line_may_lack_what_no_line_has_told(self):
        log = log60(header("WW CW", "2"), entry60("G3ABC", number=14, band=0, date=7))
        line = "QSO:" + " " * 21 + "0005 K1ZZ          599 05     G3ABC         599   14"
        self.assert_good(log, self.ww(line))
        self.assert_found("the frequency is ''", self.ww(line),
                          log60(header("WW CW", "2"), entry60("G3ABC", number=14, band=1, date=7)))

    def test_a_column_grows_for_a_value_that_it_cannot_hold_and_for_no_other(self):
        line = "QSO: 14000 CW 2015-01-15 0005 K1ZZ          599 05     G3ABC         599 12345"
        self.assert_good(log60(header("WW CW", "2"), entry60("G3ABC", number=12345)), self.ww(line))
        self.assert_found("left at the end", self.ww(line),
                          log60(header("WW CW", "2"), entry60("G3ABC", number=1234)))

    # ---- faults

    def test_a_wrong_digit_is_found_in_each_field(self):
        for old, new, what in (
                ("QSO: 14000", "QSO: 21000", "the frequency is '21000', the log says '14000'"),
                ("2015-01-15 0005", "2015-01-16 0005", "the date is '2015-01-16'"),
                ("1437", "1438", "the time is '1438', the log says '1437'"),
                ("599 05     DL1", "599 04     DL1", "the zone sent is '04'"),
                ("599   14", "599   15", "the number received is '15', the log says '14'"),
                ("DL1ABC", "DL2ABC", "the call is 'DL2ABC', the log says 'DL1ABC'"),
                ("K1ZZ          599 05     G3", "K2ZZ          599 05     G3", "the own call"),
                ("599   14", "589   14", "the report received is '589'"),
        ):
            with self.subTest(what):
                self.assert_found(what, self.changed(old, new))

    def test_each_fault_is_found_without_a_case_too(self):
        self.assert_found("the zone sent is '04'", self.changed("599 05     JA", "599 04     JA"), case=None)
        self.assert_found("the own call", self.changed("K1ZZ  ", "K2ZZ  "), case=None)

    def test_a_wrong_mode_is_found(self):
        self.assert_found("the mode is 'PH', the log says 'CW'", self.changed("7000 CW", "7000 PH"))
        self.assert_found("no mode", self.changed("7000 CW", "7000 RY"))

    def test_a_wrong_date_is_found(self):
        self.assert_found("the date is '2015-11-31', the log says '2005-11-31'",
                          self.changed("2005-11-31", "2015-11-31"))

    def test_a_shifted_column_is_found(self):
        self.assert_found("no blank before", self.changed("DL1ABC        599", "DL1ABC       599"))
        self.assert_found("is not at the right", self.changed("599   25", "599  25 "))
        self.assert_found("no blank before", self.changed("599 05     DL1ABC", "599 05 DL1ABC    "))
        self.assert_found("wrong side", self.changed("QSO:  7000", "QSO: 7000 "))
        self.assert_found("left at the end", self.changed("599   25", "599   25 "))

    def test_a_missing_line_is_found_and_one_too_many(self):
        for gone in range(4):
            self.assert_found("3 QSO lines for 4 contacts", self.ww(*WW_QSOS[:gone], *WW_QSOS[gone + 1:]))
        self.assert_found("5 QSO lines for 4 contacts", self.ww(*WW_QSOS, WW_QSOS[3]))

    def test_the_line_of_a_void_is_found(self):
        void = "QSO:  7000 CW 2015-01-15 1438 K1ZZ          599 05     VOID          599   14"
        self.assert_found("5 QSO lines", self.ww(*WW_QSOS[:2], void, *WW_QSOS[2:]))

    def test_a_swapped_pair_is_found(self):
        first, second, *rest = WW_QSOS
        self.assert_found("the call is 'JA1XYZ', the log says 'DL1ABC'", self.ww(second, first, *rest))

    def test_other_line_ends_are_found(self):
        self.assert_found("CR LF", self.ww().replace(b"\r\n", b"\n"))
        self.assert_found("CR LF", self.changed("K1ZZ\r\n", "K1ZZ\n"))
        self.assert_found("CR LF", self.ww()[:-2])

    def test_other_characters_are_found(self):
        self.assert_found("UTF-8", self.changed("Jörg", "JÃ¶rg"))
        self.assert_found("control character", self.changed("Jörg", "J\x07rg"))

    def test_faults_of_the_frame_are_found(self):
        for old, new, what in (
                ("START-OF-LOG: 3.0", "START-OF-LOG: 2.0", "START-OF-LOG"),
                ("END-OF-LOG:", "END-OF-LOG", "END-OF-LOG"),
                ("END-OF-LOG:\r\n", "", "END-OF-LOG"),
                ("END-OF-LOG:\r\n", "END-OF-LOG:\r\nSOAPBOX:\r\n", "END-OF-LOG"),
                ("NAME: ", "NAMES: ", "no tag of Cabrillo"),
                ("CLUB: \r\n", "CLUB: \r\nCLUB: \r\n", "CLUB stands twice"),
                ("CATEGORY-BAND: ALL", "CATEGORY-BAND: ANY", "CATEGORY-BAND of 'ANY'"),
                ("CQ-WW-CW", "CQ-WW-SSB", "CONTEST is 'CQ-WW-SSB'"),
                ("VER. 12.7", "VER. 12.8", "CREATED-BY of"),
                ("ADDRESS: \r\n", "ADDRESS:\r\n", "blanks around the value of ADDRESS"),
                ("OPERATORS:\r\n", "OPERATORS: \r\n", "blanks around the value of OPERATORS"),
                ("CLAIMED-SCORE: 1234", "CLAIMED-SCORE: 1,234", "CLAIMED-SCORE"),
                ("CLAIMED-SCORE: 1234\r\n", "", "no CLAIMED-SCORE"),
                ("CALLSIGN: K1ZZ", "CALLSIGN: K1ZY", "CALLSIGN says ['K1ZY'], the operator ['K1ZZ']"),
                ("CATEGORY-POWER: HIGH\r\nCATEGORY-BAND: ALL", "CATEGORY-BAND: ALL\r\nCATEGORY-POWER: HIGH",
                 "CATEGORY-POWER stands behind CATEGORY-BAND"),
                (WW_QSOS[2], "NAME: X", "no QSO line"),
        ):
            with self.subTest(what):
                self.assert_found(what, self.changed(old, new))

    def test_the_header_says_what_the_operator_chose(self):
        full = WW_CASE + "".join(line + "\n" for line in (
            "Score=1234", "Profile.Name= Jörg", "Profile.Email=a@b.c", "Profile.Club=", "Profile.Address=A",
            "Profile.City=", "Profile.Country=C", "Profile.Location=CT", "Category.Class=SINGLE-OP",
            "Category.Overlay=[NONE]", "Category.Band=ALL", "Category.Mode=CW", "Category.Power=HIGH",
            "Category.Station=FIXED"))
        self.assert_good(WW_LOG, self.ww(), full)
        for old, new, what in (
                ("Score=1234", "Score=1235", "CLAIMED-SCORE says ['1234'], the operator ['1235']"),
                ("Name= Jörg", "Name=Łörg", "NAME says ['Jörg'], the operator ['?örg']"),
                ("City=", "City=B", "ADDRESS says ['A', '', 'C']"),
                ("Class=SINGLE-OP", "Class=MULTI-TWO", "CATEGORY-ASSISTED says ['NON-ASSISTED']"),
                ("Class=SINGLE-OP", "Class=CHECKLOG",
                 "CATEGORY-OPERATOR says ['SINGLE-OP'], the operator []"),
                ("[NONE]", "ROOKIE", "CATEGORY-OVERLAY says []"),
                ("Power=HIGH", "Power=LOW", "CATEGORY-POWER says ['HIGH']"),
        ):
            with self.subTest(what):
                self.assertIn(old, full)
                self.assert_found(what, self.ww(), case=full.replace(old, new))

    # ---- folders

    def write_triple(self, name, file):
        (self.folder / (name + ".ZRT")).write_bytes(WW_LOG)
        (self.folder / (name + ".LOG")).write_bytes(file)
        (self.folder / (name + ".case")).write_text(WW_CASE, encoding="utf-8")

    def test_a_folder_is_read_whole(self):
        self.write_triple("one", self.ww())
        self.write_triple("two", self.ww())
        status, lines, _ = self.run_script("--all", self.folder)
        self.assertEqual((status, lines), (0, ["2 Cabrillo files, 8 contacts: all as their logs say"]))
        self.write_triple("two", self.ww(*WW_QSOS[1:]))
        status, lines, _ = self.run_script("--all", self.folder)
        self.assertEqual(status, 1)
        self.assertTrue(lines[0].startswith("two.LOG:"), lines)

    def test_a_folder_with_files_that_belong_to_nothing_is_no_proof(self):
        self.assertEqual(self.run_script("--all", self.folder)[0], 2)
        self.write_triple("one", self.ww())
        (self.folder / "two.LOG").write_bytes(self.ww())
        self.assertEqual(self.run_script("--all", self.folder)[0], 1)
        (self.folder / "two.LOG").unlink()
        (self.folder / "one.case").unlink()
        self.assertEqual(self.run_script("--all", self.folder)[0], 1)


if __name__ == "__main__":
    unittest.main()
