#!/usr/bin/env python3
"""Makes the golden Cabrillo files of this folder: a log, what else goes into the file, the file.

    tests/golden/make_cabrillo.py            writes them
    tests/golden/make_cabrillo.py --check    compares them; exit 1 and one line a file that differs

NAME.ZRT is the log, NAME.case the settings, the profile and the category as lines "key=value" in
UTF-8, NAME.LOG what the writer has to make of them. The layout is written down here a second time,
apart from the program; the multiplier lists are those that are shipped.
"""

import struct
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
FOLDER = HERE / "cabrillo"
DATA = HERE.parent.parent / "data" / "ZRTLOG126.DAT"

NAMED = {4, 9, 12}  # their old logs have a name, and records of 36 bytes
LONG_CALLS = {1, 3, 6}
BOTH_MODES = {2, 8, 10, 11, 12}


# ---- the multiplier lists


def section(title):
    values = []
    inside = False
    for line in DATA.read_text(encoding="latin-1").splitlines():
        line = line.strip()
        if line.startswith("["):
            inside = line == title
        elif inside and line:
            values += [value.strip() for value in line.split(",")]
    return [value.split("/")[0] for value in values]


STATES = section("[ZRT State/Province Mults]")
COUNTIES = section("[ZRT Zar County Mults]")
PAQP = section("[PAQP Mults]")
NEQP = section("[NEQP Mults]")
SPRINT = section("[Sprint Mults]")
NAQP = section("[NAQP Mults]")
# The sections that came later stand in lists of their own, which begin with their count.
SS_LONG = section("[SS Mults]") + section("[SS Extra Mults]")[1:]
SS_SHORT = section("[SS Short Forms]") + section("[SS Extra Short Forms]")[1:]
LISTS = (STATES, COUNTIES, PAQP, NEQP, SPRINT, NAQP)
assert [len(rows) for rows in LISTS] == [58, 58, 67, 67, 72, 72]
assert len(SS_LONG) == len(SS_SHORT) > 83


# ---- the file


def left(text, width):
    return text + " " * max(0, width - len(text))


def right(text, width):
    return " " * max(0, width - len(text)) + text


def number_at_start(text):
    text = text.lstrip(" ")
    sign = 1
    if text[:1] in ("-", "+"):
        sign = -1 if text[0] == "-" else 1
        text = text[1:]
    digits = ""
    while text[:1] in tuple("0123456789"):
        digits += text[0]
        text = text[1:]
    return sign * int(digits) if digits else 0


CONTEST_NAMES = {
    1: "ARRL-DX-+", 2: "ZDXA-ZRT", 3: "CQ-WW-+", 4: "NA-SPRINT-+", 5: "ARRL-SS-+", 6: "CQ-WPX-+",
    7: "JARL-AA-+", 8: "PA-QSO-PARTY", 9: "NAQP-+", 10: "ARRL-10", 11: "NEQP", 12: "GENERIC",
    13: "CWOPEN"}

CLASS_LINES = {
    "SINGLE-OP": ["OPERATOR: SINGLE-OP", "ASSISTED: NON-ASSISTED", "TRANSMITTER: ONE"],
    "SINGLE-OP-ASSISTED": ["OPERATOR: SINGLE-OP", "ASSISTED: ASSISTED", "TRANSMITTER: ONE"],
    "MULTI-ONE": ["OPERATOR: MULTI-OP", "TRANSMITTER: ONE"],
    "MULTI-TWO": ["OPERATOR: MULTI-OP", "TRANSMITTER: TWO"],
    "MULTI-MULTI": ["OPERATOR: MULTI-OP", "TRANSMITTER: UNLIMITED"]}

# By band slot: 1 to 8 of the codes 1 to 8 and 9 to 16, then those of the three newer bands.
FREQUENCIES = ["28000", "21000", "14000", "7000", "3500", "1800", "50000", "144",
               "24890", "18068", "10100"]


def header_lines(case):
    me, category, contest = case.profile, case.category, case.contest
    lines = ["START-OF-LOG: 3.0", "CALLSIGN: " + me["Callsign"].strip(" ")]
    if contest in (1, 5, 10):
        lines.append("LOCATION: " + me["Location"].strip(" "))
    lines += ["CATEGORY-" + line for line in CLASS_LINES.get(category["Class"], [])]
    if category["Overlay"] not in ("[NONE]", ""):
        lines.append("CATEGORY-OVERLAY: " + category["Overlay"])
    lines.append("CATEGORY-POWER: " + category["Power"])
    lines.append("CATEGORY-BAND: " + category["Band"])
    if contest in BOTH_MODES:
        lines.append("CATEGORY-MODE: " + category["Mode"])
    lines.append("CATEGORY-STATION: " + category["Station"])
    lines.append("CLAIMED-SCORE: " + str(case.score))
    lines.append("CLUB: " + me["Club"].strip(" "))
    mode = "CW" if case.contest_is_cw else "SSB"
    lines.append("CONTEST: " + CONTEST_NAMES[contest].replace("+", mode))
    lines.append("CREATED-BY: ZRTLOG VER. 12.7")
    lines.append("NAME: " + me["Name"].strip(" "))
    lines += ["ADDRESS: " + me[key].strip(" ") for key in ("Address", "City", "Country")]
    lines.append("EMAIL: " + me["Email"].strip(" "))
    return lines + ["OPERATORS:"] + 3 * ["SOAPBOX:"]


def row_name(exchange, table, rows, otherwise, never=0):
    v = number_at_start(exchange.rstrip(" "))
    if 1 <= v <= rows and v != never:
        return table[v - 1]
    return otherwise


def zrt_name(case, exchange):
    text = exchange.rstrip(" ")
    if any("A" <= c <= "Z" for c in text):
        return exchange.strip(" ")
    in_state = case.tag == "ZRTIN" and case.in_state_state_names
    return row_name(exchange, STATES if in_state else COUNTIES, 58, exchange.strip(" "))


def ss_section(text):
    return text + " " if len(text) == 2 else text


def ss_received(exchange):
    short = exchange[3:5]
    long = SS_LONG[SS_SHORT.index(short)] if short in SS_SHORT else short
    return exchange[0] + " " + exchange[1:3] + " " + ss_section(long)


def sent_and_received(case, entry, mode):
    own = case.after
    exchange, name = entry.exchange, entry.name
    sn, rn = right(str(entry.sent), 4), right(str(entry.received), 4)
    rst = "599 " if case.contest_is_cw else "59  "
    rst_of_qso = "599 " if mode == "CW" else "59  "
    contest = case.contest
    if contest == 1:
        what = str(entry.received) if case.option != "2" else exchange.strip(" ")
        return rst + left(own["ExchangeARRLMult"], 6), rst + right(what, 5)
    if contest == 2:
        return (sn + " " + left(own["ExchangeZRTMult"], 10),
                rn + " " + left(zrt_name(case, exchange), 10))
    if contest == 3:
        return rst + left(own["ExchangeCQWWMult"], 6), rst + rn
    if contest == 4:
        state = row_name(exchange, SPRINT, 72, exchange.strip(" "), never=11)
        return (sn + " " + left(own["ExchangeSprintName"], 10) + " " +
                left(own["ExchangeSprintMult"], 3), rn + " " + name + " " + left(state, 6))
    if contest == 5:
        return (" ".join([sn, own["ExchangeSSPrec"], own["ExchangeSSCheck"],
                          own["ExchangeSSSection"]]), rn + " " + ss_received(exchange))
    if contest == 6:
        return rst + sn, rst + rn
    if contest == 7:
        return rst + left(own["ExchangeAAMult"], 2), rst + rn
    if contest == 8:
        county = row_name(exchange, PAQP, 67, exchange.strip(" "))
        return sn + " " + left(own["ExchangePAQPMult"], 10), rn + " " + left(county, 10)
    if contest == 9:
        state = row_name(exchange, NAQP, 72, exchange.strip(" ")[:3])
        return (left(own["ExchangeNAQPName"], 10) + " " + left(own["ExchangeNAQPMult"], 3),
                name + " " + left(state, 3))
    if contest == 10:
        what = exchange.strip(" ") if entry.received == 0 else str(entry.received)
        return rst_of_qso + left(own["ExchangeARRLMult"], 6), rst_of_qso + right(what, 5)
    if contest == 11:
        county = row_name(exchange, NEQP, 67, exchange.strip(" "))
        return rst_of_qso + left(own["ExchangeNEQPMult"], 6), rst_of_qso + left(county, 10)
    if contest == 12:
        report = rst_of_qso if case.show_rst else ""
        sent = own["ExchangeGeneric"].replace("#", " " + sn + " ", 1)
        return report + sent + "   ", report + (name + exchange).strip(" ")
    return sn + "  " + left(own["ExchangeCWOName"], 10), rn + "  " + name


class LineBefore:
    """What a line takes over where its own record doesn't tell."""
    frequency = " " * 5
    mode = " " * 2
    date = " " * 10


def date_of(case, entry, before):
    s = str(abs(entry.date))
    decade = "201" if entry.date < 0 else "200"
    mark = entry.reserved[:1]
    if case.form == 60 and entry.date > 0 and mark in tuple("23456789"):
        decade = "20" + mark
    if len(s) == 4:
        return f"199{s[3]}-0{s[0]}-{s[1:3]}"
    if len(s) == 5 and s[0] == "1":
        return f"199{s[4]}-1{s[1]}-{s[2:4]}"
    if len(s) == 5 and s[0] == "2":
        return f"{decade}{s[4]}-0{s[1]}-{s[2:4]}"
    if len(s) == 5 and s[0] == "3":
        return f"{decade}{s[4]}-1{s[1]}-{s[2:4]}"
    return before.date


def frequency_and_mode(case, entry, before):
    code = entry.band
    if 1 <= code <= 8:
        mode, slot = "CW", code
    elif 21 <= code <= 23:
        mode, slot = "CW", code - 12
    elif 9 <= code <= 19:
        mode, slot = "PH", code - 8
    else:
        mode, slot = before.mode, 0
    frequency = right(FREQUENCIES[slot - 1], 5) if slot else before.frequency
    if case.exact_frequency and case.form == 60:
        exact = entry.frequency.strip(" ").split(".")[0]
        if exact.strip(" ") not in ("", "0"):
            frequency = left(exact, 5)
    return frequency, mode


def qso_line(case, entry, before):
    before.frequency, before.mode = frequency_and_mode(case, entry, before)
    before.date = date_of(case, entry, before)
    sent, received = sent_and_received(case, entry, before.mode)
    more = "   " if case.contest in LONG_CALLS else ""
    my_call = left(case.profile["Callsign"].strip(" ")[:10], 10) + more
    return "QSO: " + " ".join([before.frequency, before.mode, before.date, f"{entry.time:04}",
                               my_call, sent, entry.call + more, received])


def cabrillo(case):
    lines = header_lines(case)
    before = LineBefore()
    for entry in case.entries:
        if case.form != 60 or entry.call.strip(" ").upper() != "VOID":
            lines.append(qso_line(case, entry, before))
    text = "".join(line + "\r\n" for line in lines + ["END-OF-LOG:"])
    return text.encode("latin-1", errors="replace")


# Settings that the writer leaves cut or padded.
CUTS = {2: ("ExchangeZRTMult", 10), 8: ("ExchangePAQPMult", 10), 11: ("ExchangeNEQPMult", 5),
        4: ("ExchangeSprintMult", 3), 9: ("ExchangeNAQPMult", 3)}


def settings_after(contest, settings):
    after = dict(settings)
    if contest in CUTS:
        key, length = CUTS[contest]
        after[key] = after[key][:length]
    if contest == 5:
        after["ExchangeSSSection"] = ss_section(after["ExchangeSSSection"])
    return after


# ---- the log


class Entry:
    def __init__(self, **fields):
        self.date, self.time, self.band = fields["date"], fields["time"], fields["band"]
        self.sent, self.received = fields["sent"], fields["received"]
        self.call = left(fields["call"], 10)
        self.exchange, self.points = left(fields["exchange"], 5), fields["points"]
        self.name, self.frequency = left(fields["name"], 10), left(fields["frequency"], 10)
        self.reserved = left(fields["reserved"], 12)

    def record(self, form):
        bytes26 = struct.pack("<hhh10shh5s1s", self.date, self.time, self.band, latin(self.call),
                              self.sent, self.received, latin(self.exchange), latin(self.points))
        return (bytes26 + latin(self.name + self.frequency + "1 " + self.reserved))[:form]


def latin(text):
    return text.encode("latin-1")


def log_file(case):
    flag = 1 if case.form == 60 else 0
    head = struct.pack("<hhh10shh5s1s", 0, 0, flag, b" " * 10, 0, 0, latin(case.tag),
                       latin(case.option))
    records = b"".join(entry.record(case.form) for entry in case.entries)
    return (head.ljust(case.form, b"\0") if records else head) + records


# ---- the cases


class Case:
    def __init__(self, name, contest, tag, option, form):
        self.name, self.contest, self.tag, self.option, self.form = name, contest, tag, option, form
        self.contest_is_cw = contest in BOTH_MODES or tag[3:5] == "CW"
        self.exact_frequency = self.show_rst = self.in_state_state_names = False
        self.entries = []


PROFILES = [
    {"Callsign": "K1ZZ", "Location": "WMA", "Name": "Joe Doe", "Address": "1 Main Street",
     "City": "Springfield, MA 01101", "Country": "USA", "Club": "Valley Contest Club",
     "Email": "joe@example.org"},
    # Nothing but a call, with blanks around it.
    {"Callsign": " DL1ABC "},
    # Umlauts, and letters that the file can't hold.
    {"Callsign": "OE1\u00c4\u00d6/K1ZZ/P", "Location": "K\u00e4rnten",
     "Name": "J\u00fcrgen M\u00f6\u00dfner", "Address": "Gro\u00dfe Stra\u00dfe 3",
     "City": "8010 Graz", "Country": "\u00d6sterreich",
     "Club": "\u0141\u00f3d\u017a DX \u20ac", "Email": "j\u00fc@example.org"},
    # Every field full, the call longer than its column.
    {"Callsign": "VP2E/W1AWX/P", "Location": "L" * 20, "Name": "N" * 30, "Address": "A" * 30,
     "City": "C" * 30, "Country": "D" * 25, "Club": "E" * 40, "Email": "F" * 30},
    # Blanks at both ends of everything.
    {"Callsign": "  OE5/W1AWX ", "Location": " CT ", "Name": "  Hiram Percy  ",
     "Address": "  225 Main St  ", "City": " Newington ", "Country": "   ",
     "Club": "  ", "Email": " hiram@example.org "},
]

CATEGORIES = [
    ("SINGLE-OP", "[NONE]", "ALL", "MIXED", "HIGH", "FIXED"),
    ("SINGLE-OP-ASSISTED", "ROOKIE", "160M", "CW", "LOW", "MOBILE"),
    ("MULTI-ONE", "", "80M", "SSB", "QRP", "PORTABLE"),
    ("MULTI-TWO", "CLASSIC", "40M", "MIXED", "HIGH", "EXPEDITION"),
    ("MULTI-MULTI", "TB-WIRES", "20M", "CW", "LOW", "HQ"),
    ("CHECKLOG", "OVER-50", "15M", "SSB", "QRP", "SCHOOL"),
    ("", "[NONE]", "10M", "MIXED", "HIGH", "FIXED"),
]

SCORES = [0, 1, 999, 1000, 123456, 12345678, 2147483647]

SETTINGS = [
    {"ExchangeARRLMult": "MA", "ExchangeAAMult": "45", "ExchangeZRTMult": "ALDR",
     "ExchangePAQPMult": "EMA", "ExchangeNEQPMult": "HARCT", "ExchangeCQWWMult": "05",
     "ExchangeSSPrec": "A", "ExchangeSSCall": "K1ZZ", "ExchangeSSCheck": "72",
     "ExchangeSSSection": "CT", "ExchangeSprintName": "JOE", "ExchangeSprintMult": "MA",
     "ExchangeNAQPName": "JOE", "ExchangeNAQPMult": "MA", "ExchangeGeneric": "# CA",
     "ExchangeCWOName": "JOE"},
    # Longer than their columns, where the setting is cut and where it isn't.
    {"ExchangeARRLMult": "KILOWATT", "ExchangeAAMult": "045",
     "ExchangeZRTMult": "ALDR/AMBE/ARVE", "ExchangePAQPMult": "ADA/ALL/ARMX",
     "ExchangeNEQPMult": "HARCT/X", "ExchangeCQWWMult": "0512345", "ExchangeSSPrec": "M",
     "ExchangeSSCall": "W1AW", "ExchangeSSCheck": "05",
     "ExchangeSSSection": "EMA", "ExchangeSprintName": "MAXIMILIANUS",
     "ExchangeSprintMult": "ONTARIO", "ExchangeNAQPName": "MAXIMILIANUS",
     "ExchangeNAQPMult": "ONTARIO", "ExchangeGeneric": "A#B # X", "ExchangeCWOName": "MAXIMILIANUS"},
    # Umlauts: a column is so many characters.
    {"ExchangeARRLMult": "K\u00c4", "ExchangeAAMult": "9",
     "ExchangeZRTMult": "\u00c4\u00d6\u00dc\u00c4\u00d6\u00dc\u00c4\u00d6\u00dc123",
     "ExchangePAQPMult": "\u00dc",
     "ExchangeNEQPMult": "\u00c4\u00d6\u00dc\u00c4\u00d6\u00dc", "ExchangeCQWWMult": "14",
     "ExchangeSSPrec": "U", "ExchangeSSCall": "W1AW", "ExchangeSSCheck": "00",
     "ExchangeSSSection": "SB", "ExchangeSprintName": "J\u00dcRGEN",
     "ExchangeSprintMult": "\u00c4\u00d6\u00dc\u00df", "ExchangeNAQPName": "J\u00d6RG",
     "ExchangeNAQPMult": "\u00c4\u00d6\u00dc\u00df", "ExchangeGeneric": "J\u00d6RG #",
     "ExchangeCWOName": "J\u00d6RG"},
    # Nothing set.
    {},
]
SETTING_KEYS = list(SETTINGS[0])

BANDS = list(range(1, 9)) + [20] + list(range(9, 14)) + [24, 14, 15, 25, 16, -3] + [17, 18, 19, 99]
BANDS += [21, 0, 22, 23, 100]
# Old years; years from 2000, from 2010 and, where there is a mark, from 2020; and nonsense.
DATES = [(1158, ""), (21155, ""), (-21155, ""), (99, ""), (21156, "2"), (12319, ""), (32319, ""),
         (-21010, ""), (32767, ""), (-32767, ""), (0, ""), (31011, "3"), (9308, ""), (21159, "9"),
         (21154, "1"), (-31159, "2"), (10015, ""), (999, "2"), (1158, "2"), (11158, "2"),
         (32310, "0"), (21151, "X"), (-32768, ""), (-1158, ""), (-12319, ""), (20000, ""),
         (31316, "2 2"), (21157, " 2"), (-99, "")]
FREQUENCY_TEXTS = ["0", "7025.3", "14025", "0.0", "", "144050.5", ".5", "  7025", "1825", "0.5",
                   "00", "28400.55", "1000000000", "7025.", "3.5.1", " 0 ", "50.11", "10100.0", "A"]
CALLS = ["K1ABC", "DL1ABC", "VP2E/W1AWX", "ZT1A", "VOIDX", "JA1XYZ", " W1AW", "", "dl1abc",
         "\u00dc1ABC", "3D2/AB1CDE", "W1AW/4", "AVOID"]
VOIDS = ["VOID", "void", "Void", "vOiD", " VOID", "  void  "]
TIMES = [0, 5, 59, 100, 1437, 2359, 1, 10, 959, 2400, 9999]
SENT = {7: 9999, 13: 10000, 19: 32767, 23: 0, 29: -5}
RECEIVED = [34, 0, 599, 1, 9999, 12345, 32767, 100, 0, -7, 40, 5, 0]
NAMES = ["HIRAM", "MAXIMILIAN", "", "  BOB", "J\u00fcrgen", "Al Smith", "599 MA 123", "        X1"]
ROWS = ["1", "12", "58", "59", "67", "68", "72", "73", "99", "0", "", "ABC", "7", " 12", "ON", "DX",
        "12A", "12a", "12\u00c4", "-5", "0012", "00058", "99999", "11", "11.", "alb", "  QC",
        "\u00c4b", "QRSTU", "5", "33", "1 2", "00011", "A11", "67x"]
SS_EXCHANGES = ["A72CT", "B68EM", "M05EN", "Q99LI", "S00VI", "U13PR", "A72ZZ", "B07  ", "A72ct",
                "C 7NT", "A72NS", "A72YT", "A72TE", "A72GH", "", "A7", " 68EM", "A72MR", "B99OG",
                "72ACT", "A72C", "A72SV", "U01NF"]
STATES_AS_TEXT = ["MA", "NH", "  NY", "ON", "", "QC", "ABCDE", "DC", " V  ", "12"]
PREFIXES = ["W4", "LY200", "", "F0", "JA1", "3211", " X"]
EXCHANGES = {1: STATES_AS_TEXT, 10: STATES_AS_TEXT, 5: SS_EXCHANGES, 2: ROWS, 4: ROWS, 8: ROWS,
             9: ROWS, 11: ROWS, 12: ROWS + ["3211"], 3: PREFIXES, 6: PREFIXES, 7: PREFIXES,
             13: PREFIXES}
# What the first line lacks. None: the first entry is as the tables have it.
FIRST = [None, {"band": 0}, {"date": 99, "reserved": ""}, {"band": 20}, {"call": "VOID"},
         {"date": 32767, "reserved": ""}, {"band": 24, "frequency": "7025.3"},
         {"band": 25, "date": 0, "reserved": ""}, {"band": -3}, {"band": 99, "frequency": "0"},
         {"band": 14, "frequency": "14195.2"}, {"band": 4}]


def entries(case, number):
    result = []
    table = EXCHANGES[case.contest]
    # Three logs of a kind follow each other; each form is to meet each first line.
    first = FIRST[(number // 3 + 4 * (number % 3)) % len(FIRST)]
    # Every table is gone through from its own place in each log, and their lengths differ.
    length = max(46, len(table) + 6)
    for n in range(1, length + 1):
        k = n + 5 * number
        date, reserved = DATES[k % len(DATES)]
        fields = {
            "date": date, "reserved": reserved, "time": TIMES[k % len(TIMES)],
            "band": BANDS[(n + 3 * number) % len(BANDS)], "call": CALLS[k % len(CALLS)],
            "sent": SENT.get(n, n), "received": RECEIVED[(k + number) % len(RECEIVED)],
            "exchange": table[k % len(table)], "points": "0123"[k % 4],
            "name": NAMES[k % len(NAMES)] if case.form > 26 else "",
            "frequency": FREQUENCY_TEXTS[(k + 2 * number) % len(FREQUENCY_TEXTS)]}
        if n % 8 == 3:
            fields["call"] = VOIDS[(n // 8 + number) % len(VOIDS)]
        if n % 8 == 6:  # a dupe of the one before
            fields.update({key: last[key] for key in ("call", "band", "exchange")}, points="0")
        if n == 1 and first:
            fields.update(first)
        last = fields
        result.append(Entry(**fields))
    return result


def kinds():
    """Every contest in every mode and role: name, ContestId, tag, QthOption, and what is set."""
    by_mode = [(1, "arrl_dx_us", "ARL", "1"), (1, "arrl_dx_dx", "ARL", "2"),
               (3, "cq_ww", "WW ", "6"), (4, "sprint", "SP ", " "),
               (5, "ss", "SS9", " "), (6, "wpx", "WPX", "2"),
               (7, "aa", "AA ", " "), (9, "naqp", "NA ", " ")]
    for contest, name, tag, option in by_mode:
        for mode in ("CW", "SB"):
            yield f"{name}_{mode.lower()}", contest, tag + mode, option, {}
    names = {"in_state_state_names": True}
    yield "zrt_in", 2, "ZRTIN", " ", {}
    yield "zrt_in_state_names", 2, "ZRTIN", " ", names
    yield "zrt_os", 2, "ZRTOS", " ", {}
    yield "zrt_os_state_names", 2, "ZRTOS", " ", names
    for contest, name, tag in ((8, "paqp", "PAQ"), (11, "neqp", "NEQ")):
        for role in ("IN", "OS"):
            yield f"{name}_{role.lower()}", contest, tag + role, " ", {}
    yield "ten_meter", 10, "TEN  ", " ", {}
    for text in ("# CA", "CA"):
        number = "number" if "#" in text else "no_number"
        for rst in (False, True):
            name = f"generic_{number}" + ("_rst" if rst else "")
            yield name, 12, "GEN  ", " ", {"show_rst": rst, "generic": text}
    for session, start in (("1", "1200"), ("2", "2000"), ("3", "0000")):
        yield f"cw_open_{start}", 13, "CWOCW", session, {}


def fill(case, number, more):
    case.profile = {key: PROFILES[number % len(PROFILES)].get(key, "") for key in PROFILES[0]}
    case.category = dict(zip(("Class", "Overlay", "Band", "Mode", "Power", "Station"),
                             CATEGORIES[number % len(CATEGORIES)]))
    case.score = SCORES[number % len(SCORES)]
    settings = SETTINGS[number % len(SETTINGS)]
    case.settings = {key: settings.get(key, "") for key in SETTING_KEYS}
    if "generic" in more:
        has_number = "#" in case.settings["ExchangeGeneric"]
        if has_number != ("#" in more["generic"]):
            case.settings["ExchangeGeneric"] = more["generic"]
    case.show_rst = more.get("show_rst", False)
    case.in_state_state_names = more.get("in_state_state_names", False)
    case.after = settings_after(case.contest, case.settings)


def cases():
    number = 0
    for name, contest, tag, option, more in kinds():
        old = 36 if contest in NAMED else 26
        for form, suffix in ((60, ""), (60, "_exact"), (old, f"_old{old}")):
            case = Case(name + suffix, contest, tag, option, form)
            # The old forms hold no frequency; the choice must not matter there.
            case.exact_frequency = suffix == "_exact" or (form != 60 and number % 2 == 1)
            fill(case, number, more)
            case.entries = entries(case, number)
            yield case
            number += 1
    # Logs in which nothing was logged, one for each contest and each class.
    done = set()
    for name, contest, tag, option, more in kinds():
        if contest not in done:
            done.add(contest)
            case = Case("empty_" + name, contest, tag, option, 60 if contest % 3 else 26)
            if case.form == 26 and contest in NAMED:
                case.form = 36
            fill(case, 4 * contest, more)
            yield case


def case_text(case):
    flags = {"ExactFrequency": case.exact_frequency, "ShowRst": case.show_rst,
             "InStateStateNames": case.in_state_state_names}
    rows = [(key, str(value)) for key, value in flags.items()]
    rows.append(("Score", str(case.score)))
    rows += [("Category." + key, value) for key, value in case.category.items()]
    rows += [("Profile." + key, value) for key, value in case.profile.items()]
    rows += [("Settings." + key, value) for key, value in case.settings.items()]
    rows += [("After." + key, value) for key, value in case.after.items()]
    return "".join(f"{key}={value}\n" for key, value in rows).encode("utf-8")


def main():
    files = {}
    for case in cases():
        assert case.name + ".ZRT" not in files, case.name
        files[case.name + ".ZRT"] = log_file(case)
        files[case.name + ".case"] = case_text(case)
        files[case.name + ".LOG"] = cabrillo(case)
    different = 0
    if "--check" not in sys.argv:
        FOLDER.mkdir(exist_ok=True)
        for path in FOLDER.iterdir():
            if path.name not in files:
                path.unlink()
        for name, content in files.items():
            (FOLDER / name).write_bytes(content)
        return 0
    for path in sorted(FOLDER.iterdir()):
        if path.name not in files:
            print(f"{path.name}: nobody makes it")
            different = 1
    for name, content in files.items():
        path = FOLDER / name
        if not path.exists() or path.read_bytes() != content:
            print(f"{name}: differs")
            different = 1
    return different


if __name__ == "__main__":
    sys.exit(main())
