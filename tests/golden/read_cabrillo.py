#!/usr/bin/env python3
"""Reads a Cabrillo 3.0 file as a sponsor's robot does and compares it with the log it came from.

    read_cabrillo.py [--data FILE] [--case FILE.case] LOG.ZRT CABRILLO.LOG
    read_cabrillo.py [--data FILE] --all FOLDER      each NAME.ZRT, NAME.LOG and NAME.case of it

The data file (multiplier lists) is data/ZRTLOG126.DAT unless told otherwise. A case file holds lines
"key=value": Profile.Callsign and other fields of the profile, Settings.ExchangeARRLMult and its like
for the sent exchange, Category.Class and its like, Score, and the switches ExactFrequency, ShowRst
and InStateStateNames; what it lacks is empty or off. Without a case the first QSO line tells the sent
exchange, which must then fit its columns, and the switches are those that fit best.

Prints one line a finding (file:line: what is wrong), at most 20 a file. Exit 0: the file says what
the log says, 1: findings, 2: nothing to compare.

A QSO line is split by columns into a contact, and the contact is compared with the record, so that
a value in a wrong column and a wrong value in the right one are both found. Columns: CQ WW and ARRL
DX as the sponsors have them (13 for a call, 3 for a report, 6 for an exchange), WPX too, but for a
number sent of 4 columns; the others as this program has always written them. A column grows for a
value that it can't hold.
"""

import itertools
import re
import sys
from pathlib import Path
from typing import NamedTuple

sys.dont_write_bytecode = True  # nothing but tests lives in this folder

from log_contacts import (  # noqa: E402
    AA, ARRL_DX, BOTH_MODES, CQ_WW, CW_OPEN, GENERIC, NAQP, NEQP, PAQP, SPRINT, SS, SWITCHES, TEN,
    WIDE_CALLS, WPX, ZRT, Case, Field, band_of_frequency, contacts_of_log, is_cw_contest, read_case,
    read_lists, read_log, sent_fields)

MOST_FINDINGS = 20

# ------------------------------------------------------------------------------------- the file

HEADER_TAGS = (  # of Cabrillo 3.0, in the order that every sponsor takes
    "START-OF-LOG", "CALLSIGN", "LOCATION", "CATEGORY-OPERATOR", "CATEGORY-ASSISTED",
    "CATEGORY-TRANSMITTER", "CATEGORY-OVERLAY", "CATEGORY-POWER", "CATEGORY-BAND", "CATEGORY-MODE",
    "CATEGORY-STATION", "CLAIMED-SCORE", "CLUB", "CONTEST", "CREATED-BY", "NAME", "ADDRESS", "EMAIL",
    "OPERATORS", "SOAPBOX")
MANY = ("ADDRESS", "SOAPBOX")
NEEDED = ("CALLSIGN", "CATEGORY-POWER", "CATEGORY-STATION", "CLAIMED-SCORE", "CONTEST", "CREATED-BY",
          "NAME", "EMAIL", "OPERATORS")
WORDS = {
    "START-OF-LOG": ("3.0",),
    "CATEGORY-OPERATOR": ("SINGLE-OP", "MULTI-OP"),
    "CATEGORY-ASSISTED": ("ASSISTED", "NON-ASSISTED"),
    "CATEGORY-TRANSMITTER": ("ONE", "TWO", "UNLIMITED"),
    "CATEGORY-OVERLAY": ("ROOKIE", "CLASSIC", "TB-WIRES", "OVER-50"),
    "CATEGORY-POWER": ("HIGH", "LOW", "QRP"),
    "CATEGORY-BAND": ("ALL", "160M", "80M", "40M", "20M", "15M", "10M"),
    "CATEGORY-MODE": ("CW", "SSB", "MIXED"),
    "CATEGORY-STATION": ("FIXED", "MOBILE", "PORTABLE", "EXPEDITION", "HQ", "SCHOOL"),
    "CREATED-BY": ("ZRTLOG VER. 12.7",),
    "OPERATORS": ("",),
    "SOAPBOX": ("",),
}
BARE = ("OPERATORS", "SOAPBOX")  # the colon ends the line
CONTEST_NAMES = {  # "+" stands for the mode
    ARRL_DX: "ARRL-DX-+", ZRT: "ZDXA-ZRT", CQ_WW: "CQ-WW-+", SPRINT: "NA-SPRINT-+", SS: "ARRL-SS-+",
    WPX: "CQ-WPX-+", AA: "JARL-AA-+", PAQP: "PA-QSO-PARTY", NAQP: "NAQP-+", TEN: "ARRL-10",
    NEQP: "NEQP", GENERIC: "GENERIC", CW_OPEN: "CWOPEN"}


CLASSES = {
    "SINGLE-OP": ("SINGLE-OP", "NON-ASSISTED", "ONE"),
    "SINGLE-OP-ASSISTED": ("SINGLE-OP", "ASSISTED", "ONE"),
    "MULTI-ONE": ("MULTI-OP", "", "ONE"),
    "MULTI-TWO": ("MULTI-OP", "", "TWO"),
    "MULTI-MULTI": ("MULTI-OP", "", "UNLIMITED"),
}
OF_CASE = {  # tags whose value a case tells, and the key
    "CALLSIGN": "Profile.Callsign", "LOCATION": "Profile.Location", "CLUB": "Profile.Club",
    "NAME": "Profile.Name", "EMAIL": "Profile.Email", "CATEGORY-POWER": "Category.Power",
    "CATEGORY-BAND": "Category.Band", "CATEGORY-STATION": "Category.Station", "CLAIMED-SCORE": "Score"}


def header_of_case(log, case):
    """The values of each tag that a case makes sure of. What Latin-1 lacks is a question mark."""
    told = {tag: [case.texts[key]] for tag, key in OF_CASE.items() if key in case.texts}
    if log.contest not in (ARRL_DX, SS, TEN) and "LOCATION" in told:
        told["LOCATION"] = []
    if "Profile.Address" in case.texts:
        told["ADDRESS"] = [case.texts.get("Profile." + key, "") for key in ("Address", "City", "Country")]
    if "Category.Class" in case.texts:
        told["CATEGORY-MODE"] = [case.texts["Category.Mode"]] if log.contest in BOTH_MODES else []
        overlay = case.texts["Category.Overlay"]
        told["CATEGORY-OVERLAY"] = [overlay] if overlay not in ("", "[NONE]") else []
        chosen = CLASSES.get(case.texts["Category.Class"], ("", "", ""))
        for tag, value in zip(("OPERATOR", "ASSISTED", "TRANSMITTER"), chosen):
            told["CATEGORY-" + tag] = [value] if value else []
    return {tag: [value.strip(" ").encode("latin-1", "replace").decode("latin-1") for value in values]
            for tag, values in told.items()}


class Findings(list):
    def add(self, line, what):
        self.append((line, what))


def split_lines(data, found):
    """The lines of a file, Latin-1, each ended by CR LF."""
    if not data.endswith(b"\r\n"):
        found.add(data.count(b"\n") + 1, "the file does not end with CR LF")
    lines = data.split(b"\r\n")
    lines = lines[:-1] if lines[-1] == b"" else lines
    for number_, line in enumerate(lines, 1):
        if b"\n" in line or b"\r" in line:
            found.add(number_, "a line is not ended by CR LF")
            return [part.decode("latin-1") for part in re.split(rb"\r?\n|\r", data)]
        if re.search(rb"[\xC2\xC3][\x80-\xBF]", line):
            found.add(number_, "looks like UTF-8, not Latin-1")
        elif not line.startswith(b"QSO:") and re.search(rb"[\x00-\x1F\x7F-\x9F]", line):
            found.add(number_, "holds a control character")
    return [line.decode("latin-1") for line in lines]


def check_header(lines, log, case, found):
    """Tags, their order and their words; returns the call the header gives."""
    values, pairs, at = {}, [], 0
    for number_, line in enumerate(lines, 1):
        tag, colon, value = line.partition(":")
        if not colon or tag not in HEADER_TAGS:
            found.add(number_, f"no tag of Cabrillo: '{line}'")
            continue
        if value != ("" if tag in BARE else " " + value.strip(" ")):
            found.add(number_, f"blanks around the value of {tag}")
        place = HEADER_TAGS.index(tag)
        if place < at:
            found.add(number_, f"{tag} stands behind {HEADER_TAGS[at]}")
        at = max(at, place)
        if tag in values and tag not in MANY:
            found.add(number_, f"{tag} stands twice")
        values.setdefault(tag, value.strip(" "))
        pairs.append((tag, value.strip(" ")))
        if tag in WORDS and value.strip(" ") not in WORDS[tag]:
            found.add(number_, f"{tag} of '{value.strip(' ')}'")
    for tag in NEEDED:
        if tag not in values:
            found.add(len(lines), f"no {tag}")
    if log.contest in (ARRL_DX, SS, TEN) and "LOCATION" not in values:
        found.add(len(lines), "no LOCATION")
    name = CONTEST_NAMES[log.contest].replace("+", "CW" if is_cw_contest(log) else "SSB")
    if values.get("CONTEST") != name:
        found.add(len(lines), f"CONTEST is '{values.get('CONTEST')}', the log is of {name}")
    if not re.fullmatch(r"\d+", values.get("CLAIMED-SCORE", "")):
        found.add(len(lines), "CLAIMED-SCORE is no whole number")
    if case.is_told:
        for tag, expected in header_of_case(log, case).items():
            said = [value for other, value in pairs if other == tag]
            if said != expected:
                found.add(len(lines), f"{tag} says {said}, the operator {expected}")
    return values.get("CALLSIGN", "")


# --------------------------------------------------------------------------------------- QSO lines


class BadLine(Exception):
    """What makes a line unreadable."""


class Reader:
    """Takes columns off a line, from left to right."""

    def __init__(self, line):
        self.line, self.at = line, 0

    def blanks(self, count, before):
        if self.line[self.at:self.at + count] != " " * count:
            raise BadLine(f"column {self.at + 1}: no blank before {before}")
        self.at += count

    def column(self, field):
        """The value of the column; it must stand on its side of it."""
        self.blanks(field.gap, field.name)
        if field.width is None:
            text, self.at = self.line[self.at:], len(self.line)
            return text
        # A file grows the column for a value that is wider, and for no other.
        width = max(field.width, len(field.value))
        text = self.line[self.at:self.at + width]
        if len(text) < width:
            raise BadLine(f"the line ends within {field.name}")
        self.at += width
        if field.right and text != text.strip(" ").rjust(width):
            raise BadLine(f"{field.name} '{text}' is not at the right of its column")
        return text.strip(" ") if field.right else text.rstrip(" ")


class Line(NamedTuple):
    """A QSO line as read."""

    frequency: str  # with the blanks of its column
    mode: str
    date: str
    time: str
    own: str
    sent: tuple
    call: str
    received: tuple


def read_line(text, log, contact):
    """Takes from the contact the widths of the values alone."""
    reader = Reader(text)
    if not text.startswith("QSO: "):
        raise BadLine("no QSO line")
    reader.at = 4
    wide = 13 if log.contest in WIDE_CALLS else 10

    def column(name, width, value="", **more):
        return reader.column(Field(name, value, width, **more))

    reader.blanks(1, "the frequency")
    width = max(5, len(contact.frequency))
    frequency = text[reader.at:reader.at + width]
    reader.at += width
    mode = column("the mode", 2)
    date = column("the date", 10)
    time = column("the time", 4, str(contact.time))
    own = column("the own call", wide)
    sent = tuple(reader.column(field) for field in contact.sent)
    # Three blanks close the exchange of a Generic log.
    call = column("the call", wide, gap=4 if log.contest == GENERIC else 1)
    received = tuple(reader.column(field) for field in contact.received)
    if reader.at != len(text):
        raise BadLine(f"'{text[reader.at:]}' is left at the end")
    return Line(frequency, mode, date, time, own, sent, call, received)


def compare(line, contact, log, own, found, at):
    def say(name, said, expected):
        if said != expected:
            found.add(at, f"{name} is '{said}', the log says '{expected}'")

    frequency = line.frequency.strip(" ")
    say("the frequency", frequency, contact.frequency)
    if not contact.exact and frequency and band_of_frequency(frequency) is None:
        found.add(at, f"'{frequency}' is in no band")
    side = frequency.ljust if contact.exact else frequency.rjust
    if line.frequency != side(max(5, len(frequency))):
        found.add(at, f"the frequency '{line.frequency}' is on the wrong side of its column")
    say("the mode", line.mode, contact.mode)
    if line.mode not in ("CW", "PH", ""):
        found.add(at, f"'{line.mode}' is no mode")
    say("the date", line.date, contact.date)
    say("the time", line.time, f"{contact.time:04}")
    say("the own call", line.own, own[:10].rstrip(" "))
    for side_name, said, fields in (("sent", line.sent, contact.sent),
                                    ("received", line.received, contact.received)):
        for text, field in zip(said, fields):
            say(f"the {field.name} {side_name}", text, field.value)
    say("the call", line.call, contact.call)


def learned(case, log, entry, line):
    """The case with the sent exchange that a line shows, where nothing told it."""
    nominal = sent_fields(log, case, entry, "")
    texts = {}
    if log.contest == GENERIC:
        start = 45 if case.show_rst else 41
        end = line.find("    " + entry.call[:9].rstrip(" "), start)
        given = line[start:end].replace(f" {entry.sent:4} ", "#", 1)
        texts["Settings.ExchangeGeneric"] = given if end > 0 else ""
    else:
        at = 30 + (13 if log.contest in WIDE_CALLS else 10)
        for field in nominal:
            at += field.gap
            if field.is_learned:
                texts[field.name] = line[at:at + field.width].rstrip(" ")
            at += field.width
    keys = {ARRL_DX: "ARRL", ZRT: "ZRT", CQ_WW: "CQWW", SPRINT: "Sprint", SS: "SS", AA: "AA",
            PAQP: "PAQP", NAQP: "NAQP", TEN: "ARRL", NEQP: "NEQP", CW_OPEN: "CWO"}
    ends = {"name": "Name", "precedence": "Prec", "check": "Check"}
    if log.contest == SS:
        ends["section"] = "Section"
    if log.contest in keys:
        texts = {"Settings.Exchange" + keys[log.contest] + ends.get(name, "Mult"): text
                 for name, text in texts.items()}
    return case._replace(texts=texts)


def check_qsos(numbered, log, case, lists, own, found):
    if not case.is_told and numbered:
        first = next((entry for entry in log.entries if not (
            entry.is_new_form and entry.call.strip(" ").upper() == "VOID")), None)
        if first:
            case = learned(case, log, first, numbered[0][1])._replace(is_told=True)
    contacts = list(contacts_of_log(log, case, lists))
    if len(contacts) != len(numbered):
        found.add(numbered[-1][0] if numbered else 1,
                  f"{len(numbered)} QSO lines for {len(contacts)} contacts of the log")
    for (at, text), contact in zip(numbered, contacts):
        try:
            line = read_line(text, log, contact)
        except BadLine as bad:
            found.add(at, str(bad))
            continue
        compare(line, contact, log, own, found, at)
    return len(contacts)


def check_file(data, log, case, lists):
    """Findings as (line, text), and the number of contacts that were compared."""
    found = Findings()
    lines = split_lines(data, found)
    if not lines or lines[0] != "START-OF-LOG: 3.0":
        found.add(1, "does not begin with START-OF-LOG: 3.0")
    if not lines or lines[-1] != "END-OF-LOG:" or lines.count("END-OF-LOG:") != 1:
        found.add(len(lines), "END-OF-LOG: must be the last line and no other")
    numbered = [(n, line) for n, line in enumerate(lines, 1) if line.startswith("QSO")]
    head = next((n for n, line in enumerate(lines)
                 if line.startswith("QSO") or line == "END-OF-LOG:"), len(lines))
    own = check_header(lines[:head], log, case, found)
    for n, line in enumerate(lines[head:], head + 1):
        if not line.startswith("QSO") and line != "END-OF-LOG:":
            found.add(n, f"no QSO line: '{line}'")
    if case.is_told:
        return found, check_qsos(numbered, log, case, lists, own, found)
    best = None
    for switches in itertools.product((False, True), repeat=len(SWITCHES)):
        tried = Findings()
        count = check_qsos(numbered, log, Case({}, *switches, is_told=False), lists, own, tried)
        if best is None or len(tried) < len(best[0]):
            best = tried, count
    return Findings(found + best[0]), best[1]


# ------------------------------------------------------------------------------- the command line


def check_paths(log_path, file_path, case_path, lists):
    """Prints what it finds; returns whether that is nothing."""
    case = Case({}, is_told=False)
    if case_path:
        case = read_case(case_path.read_text(encoding="utf-8"))
    found, count = check_file(file_path.read_bytes(), read_log(log_path.read_bytes()), case, lists)
    for line, what in sorted(found)[:MOST_FINDINGS]:
        print(f"{file_path.name}:{line}: {what}")
    if len(found) > MOST_FINDINGS:
        print(f"{file_path.name}: and {len(found) - MOST_FINDINGS} findings more")
    return not found, count


def check_folder(folder, lists):
    logs = sorted(folder.glob("*.ZRT"))
    stray = {path.stem for path in folder.glob("*.LOG")} - {path.stem for path in logs}
    bad, contacts = 0, 0
    for path in logs:
        file_path, case_path = path.with_suffix(".LOG"), path.with_suffix(".case")
        if not file_path.exists() or not case_path.exists():
            print(f"{path.name}: its .LOG or its .case is missing")
            bad += 1
            continue
        is_good, count = check_paths(path, file_path, case_path, lists)
        bad += not is_good
        contacts += count
    for name in sorted(stray):
        print(f"{name}.LOG: its .ZRT is missing")
    if not logs:
        print(f"no logs in {folder}", file=sys.stderr)
        return 2
    if bad or stray:
        return 1
    print(f"{len(logs)} Cabrillo files, {contacts} contacts: all as their logs say")
    return 0


def main(arguments):
    options = {"--data": Path(__file__).resolve().parents[2] / "data" / "ZRTLOG126.DAT"}
    paths = []
    arguments = iter(arguments)
    for argument in arguments:
        if argument in ("--data", "--case", "--all"):
            options[argument] = Path(next(arguments, ""))
        else:
            paths.append(Path(argument))
    lists = read_lists(options["--data"].read_text(encoding="latin-1"))
    if "--all" in options and not paths:
        return check_folder(options["--all"], lists)
    if len(paths) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    is_good, count = check_paths(*paths, options.get("--case"), lists)
    if is_good:
        print(f"{count} contacts: all as the log says")
    return 0 if is_good else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
