#!/usr/bin/env python3
"""Tests of tools/check_data.py, each on a spoilt copy of the program's data in a temporary folder."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "tools" / "check_data.py"
DAT, INI, CTY, CALLS = "ZRTLOG126.DAT", "zrtlog125.ini", "cty.dat", "callmtch.dat"


class CheckData(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        for name in (DAT, INI, CALLS):
            shutil.copy(ROOT / "data" / name, self.folder)
        shutil.copy(ROOT / "tests" / "data" / "minimal" / CTY, self.folder)

    def lines(self, name):
        return (self.folder / name).read_bytes().decode("latin-1").split("\r\n")[:-1]

    def write(self, name, lines):
        text = "".join(line + "\r\n" for line in lines)
        (self.folder / name).write_bytes(text.encode("latin-1"))

    def line_of(self, name, text):
        """The number of the first line that is this text."""
        return self.lines(name).index(text) + 1

    def section(self, name, header, begin, end, *lines):
        """Puts lines in place of rows begin to end (not with it) of a section; row 0 is the first.
        Gives the number of the line where they begin."""
        found = self.lines(name)
        place = found.index(header) + 1
        found[place + begin : place + end] = lines
        self.write(name, found)
        return place + begin + 1

    def change(self, name, old, new):
        """Puts a line in place of the first that is `old`, and gives its number."""
        found = self.lines(name)
        place = found.index(old)
        found[place : place + 1] = [new] if isinstance(new, str) else new
        self.write(name, found)
        return place + 1

    def run_script(self, *arguments):
        run = subprocess.run(
            [sys.executable, str(SCRIPT), *arguments], capture_output=True, text=True, check=False
        )
        return run.returncode, run.stdout.splitlines(), run.stderr

    def assert_clean(self, *arguments):
        status, lines, errors = self.run_script(*arguments, str(self.folder))
        self.assertEqual((status, errors), (0, ""), lines)
        self.assertEqual(len(lines), 1)

    def assert_findings(self, *expected, arguments=()):
        """Each expected entry is (file, line, a part of the text); no finding more."""
        status, lines, errors = self.run_script(*arguments, str(self.folder))
        self.assertEqual((status, errors), (1, ""), lines)
        self.assertEqual(len(lines), len(expected), lines)
        for line, (file, number, part) in zip(lines, expected):
            self.assertTrue(line.startswith(f"{file}:{number}: "), line)
            self.assertIn(part, line)

    # ------------------------------------------------------------------ as a whole

    def test_what_is_shipped_is_whole(self):
        self.assert_clean("--whole")
        self.assertEqual(self.run_script("--whole")[0], 0)

    def test_a_folder_that_is_not_there_is_no_proof(self):
        status, _, errors = self.run_script(str(self.folder / "gone"))
        self.assertEqual(status, 2)
        self.assertIn("no such folder", errors)

    def test_the_two_files_must_be_there_and_the_others_need_not(self):
        for name in (DAT, INI, CTY, CALLS):
            (self.folder / name).unlink()
        self.assert_findings((DAT, 1, "missing"), (INI, 1, "missing"))

    def test_what_may_be_absent_must_not_be_with_whole(self):
        self.write(INI, self.lines(INI)[: self.line_of(INI, "[Extensions]") - 1])
        place = self.line_of(DAT, "[SS Extra Mults]") - 1
        found = self.lines(DAT)
        del found[place : found.index("[Sprint Mults]")]
        self.write(DAT, found)
        self.assert_clean()
        self.assert_findings(
            (DAT, len(found), "[SS Extra Mults] is missing"),
            (DAT, len(found), "[SS Extra Short Forms] is missing"),
            (INI, len(self.lines(INI)), "[Extensions] is missing"),
            arguments=["--whole"],
        )

    def test_a_line_with_another_end_fails_and_so_does_one_without(self):
        for name, number in ((DAT, 5), (INI, 7)):
            lines = (self.folder / name).read_bytes().split(b"\r\n")
            lines[number - 1 : number + 1] = [lines[number - 1] + b"\n" + lines[number]]
            (self.folder / name).write_bytes(b"\r\n".join(lines))
        self.assert_findings((DAT, 5, "CR LF"), (INI, 7, "CR LF"))

    def test_a_last_line_without_end_fails(self):
        path = self.folder / DAT
        path.write_bytes(path.read_bytes().removesuffix(b"\r\n"))
        self.assert_findings((DAT, len(self.lines(DAT)) + 1, "no end"))

    # ------------------------------------------------------------------ the start-up data

    def test_a_row_too_few_is_found_at_the_next_header(self):
        self.section(DAT, "[PAQP Mults]", 10, 11)
        at = self.line_of(DAT, "[NEQP Mults]")
        self.assert_findings((DAT, at, "[PAQP Mults] ends 1 of 67 rows too early"))

    def test_a_row_too_few_at_the_end_of_the_file_is_found(self):
        self.write(DAT, self.lines(DAT)[:-2])
        at = len(self.lines(DAT))
        self.assert_findings((DAT, at, "[Band Frequencies] ends 2 of 24 rows too early"))

    def test_a_row_too_many_is_found_where_it_is_left_over(self):
        at = self.section(DAT, "[Sprint Mults]", 72, 72, "QQ", "XX")
        self.assert_findings((DAT, at, "'QQ' is left over behind the rows of [Sprint Mults]"))

    def test_a_note_behind_a_section_is_left_over(self):
        at = self.section(DAT, "[Sprint Mults]", 73, 73, "Countries of today", "")
        self.assert_findings((DAT, at, "'Countries of today' is left over"))

    def test_values_may_stand_several_to_a_line_in_quotes_and_between_empty_lines(self):
        rows = self.lines(DAT)[self.line_of(DAT, "[10M Mults]") :][:65]
        self.section(DAT, "[10M Mults]", 0, 65, ' "%s" , %s' % tuple(rows[:2]), "", *rows[2:])
        self.assert_clean()

    def test_an_empty_value_counts_and_is_no_spelling(self):
        at = self.section(DAT, "[NAQP Mults]", 0, 2, "AL,,")
        self.assert_findings((DAT, at, "'' is no spelling"))

    def test_a_missing_section_fails(self):
        found = self.lines(DAT)
        place = found.index("[CW Characters]")
        del found[place : found.index("[Band Frequencies]")]
        self.write(DAT, found)
        self.assert_findings((DAT, len(found), "[CW Characters] is missing"))

    def test_a_section_of_no_known_name_fails(self):
        at = self.change(DAT, "[NAQP Mults]", "[NAQP Mult]")
        status, lines, _ = self.run_script(str(self.folder))
        self.assertEqual(status, 1)
        self.assertTrue(lines[0].startswith(f"{DAT}:{at}: [NAQP Mult] is no section"), lines)
        self.assertTrue(lines[-1].endswith("[NAQP Mults] is missing"), lines)

    def test_a_section_that_stands_twice_fails(self):
        found = self.lines(DAT)
        place = found.index("[CW Characters]")
        self.write(DAT, found + [""] + found[place : place + 43])
        self.assert_findings((DAT, len(found) + 2, "a second time"))

    def test_the_extra_sections_have_a_count_and_as_many_short_forms(self):
        at = self.section(DAT, "[SS Extra Mults]", 0, 1, "18")
        self.assert_findings(
            (DAT, at, "'18' is no count from 0 to 17"),
            (DAT, 1, "[SS Extra Mults] has 0 rows and [SS Extra Short Forms] 6"),
        )

    def test_an_extra_section_without_anything_fails(self):
        found = self.lines(DAT)
        place = found.index("[SS Extra Short Forms]")
        short = found[place : found.index("[Sprint Mults]")]
        del found[place : place + len(short)]
        self.write(DAT, found + ["", "[SS Extra Short Forms]"])
        self.assert_findings(
            (DAT, len(found) + 2, "[SS Extra Short Forms] has no count"),
            (DAT, 1, "[SS Extra Mults] has 6 rows"),
        )

    def test_a_spelling_of_six_characters_or_a_small_letter_fails(self):
        at = self.section(DAT, "[PAQP Mults]", 0, 2, "ADAMSX/ADA", "All/ALLE")
        self.assert_findings((DAT, at, "'ADAMSX'"), (DAT, at + 1, "'All'"))

    def test_a_list_takes_no_more_spellings_than_its_table_has(self):
        at = self.section(DAT, "[SS Mults]", 0, 1, "CT/CT2/CT3/CT4")
        neqp = self.section(DAT, "[NEQP Mults]", 0, 1, "FAICT/CTFAI/FAI")
        ten = self.section(DAT, "[10M Mults]", 0, 1, "AL/ALA")
        self.assert_findings(
            (DAT, at, "more than 3"), (DAT, neqp, "more than 2"), (DAT, ten, "more than 1")
        )

    def test_a_slash_at_the_end_of_a_row_is_no_spelling(self):
        self.section(DAT, "[PAQP Mults]", 0, 1, "ADA/ADAM/")
        self.assert_clean()

    def test_a_spelling_stands_once_in_a_list_and_in_two_that_are_searched_together(self):
        twice = self.section(DAT, "[ARRL Mults]", 1, 2, "AL")
        extra = self.section(DAT, "[SS Extra Mults]", 1, 2, "EMA")
        short = self.section(DAT, "[SS Extra Short Forms]", 1, 2, "EM")
        county = self.section(DAT, "[ZRT Zar County Mults]", 0, 1, "AK")
        states = self.line_of(DAT, "[ZRT State/Province Mults]") + 2
        self.assert_findings(
            (DAT, county, f"'AK' stands in line {states} too"),
            (DAT, extra, "'EMA' stands in line"),
            (DAT, short, "'EM' stands in line"),
            (DAT, twice, f"'AL' stands in line {twice - 1} too"),
        )

    def test_a_short_form_has_two_characters(self):
        at = self.section(DAT, "[SS Short Forms]", 0, 1, "CTX")
        self.assert_findings((DAT, at, "'CTX' is no short form"))

    def test_numbers_are_whole_and_fit_their_tables(self):
        at = self.line_of(DAT, "[ZRT X Coordinates]") + 1
        row = self.lines(DAT)[at - 1]
        self.change(DAT, row, row.replace("0,6,12", "1.5,32768,x", 1))
        band = self.section(DAT, "[Band Frequencies]", 0, 1, "2147483648")
        self.assert_findings(
            (DAT, at, "'1.5' is no whole number"),
            (DAT, at, "32768 is too large for i16"),
            (DAT, at, "'x' is no whole number"),
            (DAT, band, "2147483648 is too large for i32"),
        )

    def test_two_rows_in_one_place_of_a_map_fail(self):
        at = self.line_of(DAT, "[SS X Coordinates]") + 1
        row = self.lines(DAT)[at - 1]
        self.change(DAT, row, row.replace("0,0", "0,7", 1))  # row 2 comes to row 9
        lines = self.line_of(DAT, "[SS Y Coordinates]")
        self.assert_findings((DAT, lines + 1, "SS rows 2 and 9 have one place, 7,1"))

    def test_a_place_of_the_order_that_no_row_has_fails(self):
        at = self.line_of(DAT, "[ARRL USVEMultOrder]") + 1
        row = self.lines(DAT)[at - 1]
        first, rest = row.split(",", 1)
        self.change(DAT, row, "64," + rest)
        self.assert_findings((DAT, at, f"no row has the place {first}"))

    def test_elements_are_of_four_digits_and_no_two_characters_alike(self):
        at = self.section(DAT, "[CW Characters]", 0, 2, "14", "")
        self.section(DAT, "[CW Characters]", 1, 2, "3131")
        self.assert_findings(
            (DAT, at, "'14' is no pattern"), (DAT, at + 2, f"'3131' stands in line {at + 1} too")
        )

    # ------------------------------------------------------------------ the settings

    def test_a_missing_section_of_the_settings_fails(self):
        found = self.lines(INI)
        place = found.index("[User Exchange - CWO]")
        del found[place : place + 3]
        self.write(INI, found)
        self.assert_findings((INI, len(found), "[User Exchange - CWO] is missing"))

    def test_sections_stand_in_their_order_and_once(self):
        found = self.lines(INI)
        aa, zrt = found.index("[User Exchange - AA]"), found.index("[User Exchange - ZRT]")
        found[aa], found[zrt] = found[zrt], found[aa]
        found[aa + 1], found[zrt + 1] = found[zrt + 1], found[aa + 1]
        self.write(INI, found + ["[Extensions]", *found[found.index("[Extensions]") + 1 :]])
        again = len(found) + 1
        self.assert_findings(
            (INI, again, "[Extensions] stands here a second time"),
            (INI, 1, "[User Exchange - ZRT] is not in its place"),
        )

    def test_a_section_of_no_known_name_and_a_row_before_the_first_fail(self):
        self.section(INI, "[User Exchange - CWO]", 1, 1, "[User Information]")
        at = self.line_of(INI, "[User Information]")
        self.write(INI, ["YourCall=", "", *self.lines(INI)])
        self.assert_findings((INI, 1, "before the first"), (INI, at + 2, "no section"))

    def test_empty_lines_stand_behind_sections_alone(self):
        at = self.section(INI, "[File Information]", 1, 1, "")
        gone = self.section(INI, "[User Exchange - AA]", 1, 2)
        twice = self.section(INI, "[User Exchange - SS]", 5, 5, "")
        self.write(INI, self.lines(INI)[:-1])
        last = len(self.lines(INI))
        self.assert_findings(
            (INI, at + 1, "an empty line before this row of [File Information]"),
            (INI, gone, "no empty line before [User Exchange - ZRT]"),
            (INI, twice, "an empty line too many"),
            (INI, last, "no empty line behind the last section"),
        )

    def test_the_current_profile_stands_by_itself(self):
        at = self.section(INI, "[User Profile 1]", 1, 2)
        self.assert_findings((INI, at, "no empty line before this row of [User Profile 1]"))

    def test_a_key_that_is_missing_or_in_the_wrong_place_fails(self):
        at = self.section(INI, "[Preferences]", 3, 4)
        last = self.section(INI, "[Extensions]", 12, 13)
        self.assert_findings(
            (INI, at, "CWActivated stands where BackUpDrive belongs"),
            (INI, last - 1, "InAreaContests and what follows is missing"),
        )

    def test_a_key_of_no_known_name_and_a_row_without_value_fail(self):
        at = self.change(INI, "TypingEnabled=True", "TypingEnable=True")
        row = self.change(INI, "AudioPath=", "AudioPath")
        self.assert_findings((INI, at, "there is no key TypingEnable"), (INI, row, "no key and value"))

    def test_a_key_too_many_fails(self):
        at = self.section(INI, "[User Exchange - AA]", 1, 1, "ExchangeAAMult=30")
        self.assert_findings((INI, at, "ExchangeAAMult is one row too many"))

    def test_lines_are_in_the_form_in_which_the_program_writes_them(self):
        at = self.change(INI, "Weight=3", "Weight = 3")
        false = self.change(INI, "Radio1ComActivated = False", "Radio1ComActivated=False")
        self.assert_findings((INI, at, "'Weight=3'"), (INI, false, "'Radio1ComActivated = False'"))

    def test_true_is_written_without_blanks(self):
        self.change(INI, "Radio(1).DTRHigh = False", "Radio(1).DTRHigh=True")
        self.assert_clean()

    def test_a_value_of_the_wrong_kind_fails(self):
        changes = [
            ("IsGMTFlag=True", "IsGMTFlag=Yes"),
            ("CWComport=[none]", "CWComport="),
            ("UseDTRtoKey(1)=None", "UseDTRtoKey(1)=RTS"),
            ("RepeatIntervalCW=2000", "RepeatIntervalCW=2 s"),
            ("DualCQsPlayNumber=6", "DualCQsPlayNumber=32768"),
            ("TimingMethod=QueryPerf", "TimingMethod=Timer"),
            ("Key1Mapping=[none]", "Key1Mapping=Insert"),
            ("SCPSelection=ALL", "SCPSelection=All"),
            ("WinkeyKeyMode=Iambic A", "WinkeyKeyMode=Iambic"),
        ]
        numbers = {self.change(INI, old, new): new.split("=")[0] for old, new in changes}
        self.assert_findings(*[(INI, number, numbers[number]) for number in sorted(numbers)])

    def test_a_wide_number_may_pass_16_bits(self):
        self.change(INI, "ScpLimit=200000", "ScpLimit=2147483647")
        self.assert_clean()
        at = self.change(INI, "ScpLimit=2147483647", "ScpLimit=2147483648")
        self.assert_findings((INI, at, "ScpLimit is too large"))

    def test_the_radios_are_14_in_their_order_with_addresses_for_icom_alone(self):
        name = self.change(INI, "RadioDefaultSettings.Name=Yaesu FT-990", "RadioDefaultSettings.Name=FT-990")
        icom = self.change(INI, "RadioUserSettings.Address=5C", "RadioUserSettings.Address=5c")
        at = self.line_of(INI, "RadioUserSettings.Address=")
        self.change(INI, "RadioUserSettings.Address=", "RadioUserSettings.Address=58")
        self.assert_findings(
            (INI, name, "'FT-990' stands in the place of 'Yaesu FT-990'"),
            (INI, at, "'58' is no address of 'Elecraft K3'"),
            (INI, icom, "'5c' is no address"),
        )

    def test_a_radio_model_too_few_fails(self):
        found = self.lines(INI)
        place = found.index("[Radio User Settings]") + 1 + 13 * 8
        del found[place : place + 8]
        self.write(INI, found)
        self.assert_findings((INI, place, "RadioUserSettings.Name and what follows is missing"))

    def test_a_radio_in_use_is_one_of_the_models(self):
        at = self.change(INI, "Radio(2).Name=[none]", "Radio(2).Name=Icom 706")
        self.assert_findings((INI, at, "there is no radio 'Icom 706'"))

    def test_twelve_macros_nine_labels_eight_windows(self):
        macro = self.section(INI, "[CW Macros - 03]", 9, 10)
        label = self.section(INI, "[CW Macros Display Forms - 04]", 9, 9, "MORE")
        window = self.section(INI, "[Window Information - 13]", 7, 8)
        self.assert_findings(
            (INI, macro + 1, "[CW Macros - 03] has 11 rows, not 12"),
            (INI, label, "[CW Macros Display Forms - 04] has 10 rows, not 9"),
            (INI, window - 1, "[Window Information - 13] has 7 rows, not 8"),
        )

    def test_a_macro_has_its_prefix_and_what_can_be_sent(self):
        at = self.section(INI, "[CW Macros - 05]", 0, 3, "CQ", "[RADIO3][PLAY1]CQ", "[RADIO0][PLAY1]cq")
        send = self.section(INI, "[CW Macros - 05]", 9, 10, "@ 5NN;")
        self.section(INI, "[CW Macros - 05]", 10, 11, "[RADIO0][PLAY1]")  # an empty one
        self.assert_findings(
            (INI, at, "'CQ' is no row"),
            (INI, at + 1, "'[RADIO3][PLAY1]CQ' is no row"),
            (INI, at + 2, "cq' is no row"),
            (INI, send, "'@ 5NN;' is no row"),
        )

    def test_window_rows_have_their_names_states_and_places(self):
        spoilt = ["LOGFORM OPEN 0 0 99999 1"] * 2 + ["QSOSTATS HIDDEN 0 0 0 0", "VIEWMAC OPEN 0 0 0"]
        rows = self.section(INI, "[Window Information - 02]", 0, 4, *spoilt)
        eighth = self.section(INI, "[Window Information - 02]", 7, 8, "NOTES CLOSED 0 0 0 0")
        self.assert_findings(
            (INI, rows, "beyond 16 bits"),
            (INI, rows + 1, "row 2 is not that of VIEWMULT"),
            (INI, rows + 2, "'QSOSTATS HIDDEN 0 0 0 0' is no row of windows"),
            (INI, rows + 3, "'VIEWMAC OPEN 0 0 0' is no row of windows"),
            (INI, eighth, "row 8 is not that of PARTIAL"),
        )

    def test_profiles_have_names_of_their_own_and_the_current_is_one_of_them(self):
        name = "UserProfile.ProfileName=Custom Profile "
        at = self.change(INI, name + "3", name + "2")
        current = self.change(
            INI, "CurrentUserProfileName=Custom Profile 1", "CurrentUserProfileName=Custom Profile 3"
        )
        empty = self.change(INI, name + "4", "UserProfile.ProfileName=")
        self.assert_findings(
            (INI, empty, "'' is no value of UserProfile.ProfileName"),
            (INI, at, "two profiles have the name 'Custom Profile 2'"),
            (INI, current, "no profile has the name 'Custom Profile 3'"),
        )

    # ------------------------------------------------------------------ the other two

    def test_country_lines_have_eight_columns_and_places_on_earth(self):
        fiji = self.lines(CTY)[1]
        self.change(CTY, fiji, fiji.replace("32:", "41:", 1).replace("-177.92", "-190.00"))
        at = self.change(CTY, self.lines(CTY)[3], "Conway Reef: 32: 56: OC: -22.00: -175.00: 3D2/c:")
        self.assert_findings(
            (CTY, 2, "41 is no CQ zone"), (CTY, 2, "not on earth"), (CTY, at, "eight columns")
        )

    def test_prefixes_have_their_form_and_stand_behind_a_country(self):
        at = self.change(CTY, "    3D2;", "    3D2,3d3,(4)3D4;")
        self.write(CTY, ["    AA;", *self.lines(CTY)])
        self.assert_findings(
            (CTY, 1, "before the first country"),
            (CTY, at + 1, "'3d3' is no prefix"),
            (CTY, at + 1, "'(4)3D4' is no prefix"),
        )

    def test_the_four_countries_that_contests_ask_for_must_be_there(self):
        found = [line.replace(" KL:", " KL7:").replace(" VE:", " VE3:") for line in self.lines(CTY)]
        self.write(CTY, found)
        self.assert_findings((CTY, 1, "main prefix VE"), (CTY, 1, "main prefix KL"))

    def test_no_more_countries_than_the_table_holds(self):
        found = self.lines(CTY)
        self.write(CTY, found + found[1:3] * 320)
        self.assert_findings((CTY, 1, "361 countries; the table holds 350"))

    def test_a_line_of_the_call_list_is_a_call_and_there_are_399(self):
        self.write(CALLS, ["W1AW"] * 398 + ["dl1abc"])
        self.assert_findings((CALLS, 399, "'dl1abc' is no call"))
        self.write(CALLS, ["W1AW"] * 400)
        self.assert_findings((CALLS, 400, "are not read"))


if __name__ == "__main__":
    unittest.main()
