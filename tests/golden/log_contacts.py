"""What a log file says, as the contacts that its Cabrillo file must show; for read_cabrillo.py.

Records are decoded here byte by byte and numbers resolved by the data file, apart from the program's
own code.
"""

import re
import struct
from typing import NamedTuple

(ARRL_DX, ZRT, CQ_WW, SPRINT, SS, WPX, AA, PAQP, NAQP, TEN, NEQP, GENERIC, CW_OPEN) = range(1, 14)
TAGS = {"AR": ARRL_DX, "ZR": ZRT, "WW": CQ_WW, "SP": SPRINT, "SS": SS, "WP": WPX, "AA": AA,
        "PA": PAQP, "NA": NAQP, "TE": TEN, "NE": NEQP, "GE": GENERIC, "CW": CW_OPEN}
BOTH_MODES = (ZRT, PAQP, TEN, NEQP, GENERIC)
WIDE_CALLS = (ARRL_DX, CQ_WW, WPX)

# ------------------------------------------------------------------------------------- the log


class Entry(NamedTuple):
    date: int
    time: int
    band: int
    call: str
    sent: int
    number: int
    exchange: str
    name: str = " " * 10
    frequency: str = "0"
    decade: str = " "
    is_new_form: bool = False


class Log(NamedTuple):
    contest: int
    letters: str  # the two behind the tag
    option: str
    entries: list


def read_log(data):
    """A log file's bytes. The number of its entries follows from its length, ties to even."""
    form, tag, option = struct.unpack("<4xh14x5s1s", data[:26])
    tag = tag.decode("latin-1")
    contest = TAGS[tag[:2]]
    length = 60 if form == 1 else 36 if contest in (SPRINT, NAQP, GENERIC) else 26
    count = 0 if len(data) == 26 else round(len(data) / length) - 1
    entries = []
    for n in range(1, count + 1):
        record = data[n * length:(n + 1) * length].ljust(length, b"\0")
        date, time, band, call, sent, number, exchange = struct.unpack("<hhh10shh5s", record[:25])
        more = {}
        if length >= 36:
            more["name"] = record[26:36].decode("latin-1")
        if length == 60:
            more["frequency"] = record[36:46].decode("latin-1")
            more["decade"] = chr(record[48])
            more["is_new_form"] = True
        entries.append(Entry(date, time, band, call.decode("latin-1"), sent, number,
                             exchange.decode("latin-1"), **more))
    return Log(contest, tag[3:5], option.decode("latin-1"), entries)


# ------------------------------------------------------------------------------ multiplier lists

ROWS = {"[ZRT State/Province Mults]": 58, "[ZRT Zar County Mults]": 58, "[PAQP Mults]": 67,
        "[NEQP Mults]": 67, "[Sprint Mults]": 72, "[NAQP Mults]": 72, "[SS Mults]": 83,
        "[SS Short Forms]": 83, "[SS Extra Mults]": None, "[SS Extra Short Forms]": None}


def read_lists(text):
    """The first spelling of each row by section; a section without a fixed count begins with it."""
    lists = {name: [] for name in ROWS}
    lines = iter([line.strip() for line in text.splitlines()])
    for line in lines:
        if line not in ROWS:
            continue
        wanted, values = ROWS[line], []
        while wanted is None or len(values) < wanted:
            following = next(lines, None)
            if following is None:
                break
            values += [value.strip() for value in following.split(",") if value.strip()]
            if wanted is None and values:
                wanted = int(values.pop(0))
        lists[line] = [value.split("/")[0].strip() for value in values]
    return lists


def name_behind_number(text, names, allowed=lambda number: True):
    """The row of a list that a text names by its number, counted from 1, or the text itself."""
    digits = re.match(r" *(\d+(?:\.\d*)?)", text)
    number = round(float(digits[1])) if digits else 0
    if 1 <= number <= len(names) and allowed(number):
        return names[number - 1]
    return text.strip(" ")


# --------------------------------------------------------------------------------------- the case


class Case(NamedTuple):
    texts: dict  # by key
    exact: bool = False
    show_rst: bool = False
    state_names: bool = False
    is_told: bool = True  # false: the file itself tells call and sent exchange

    def text(self, key):
        return self.texts.get("Settings." + key, "")


SWITCHES = ("ExactFrequency", "ShowRst", "InStateStateNames")


def read_case(text):
    texts = dict(line.split("=", 1) for line in text.splitlines() if "=" in line)
    on = [texts.get(key, "").lower() in ("1", "-1", "true", "yes", "on") for key in SWITCHES]
    return Case(texts, *on)


# ------------------------------------------------------------------- a contact, as both sides say it


class Field(NamedTuple):
    """A value and the column it stands in; without a width it is the rest of the line."""

    name: str
    value: str
    width: int | None = None
    right: bool = False
    gap: int = 1  # blanks in front
    is_learned: bool = False  # the value is unknown before a file has told it


class Contact(NamedTuple):
    frequency: str
    exact: bool  # then it stands at the left of its column
    mode: str
    date: str
    time: int
    sent: tuple
    call: str
    received: tuple


BANDS = ((28000, "10m"), (21000, "15m"), (14000, "20m"), (7000, "40m"), (3500, "80m"),
         (1800, "160m"), (50000, "6m"), (144, "2m"), (24890, "12m"), (18068, "17m"), (10100, "30m"))
EDGES = ((1800, 2000, "160m"), (3500, 4000, "80m"), (7000, 7300, "40m"), (10100, 10150, "30m"),
         (14000, 14350, "20m"), (18068, 18168, "17m"), (21000, 21450, "15m"), (24890, 24990, "12m"),
         (28000, 29700, "10m"), (50000, 54000, "6m"), (144000, 148000, "2m"))


def band_of_frequency(text):
    """As a robot takes it: a frequency in kHz, or the megahertz of a band above 30 MHz."""
    if text == "144":
        return "2m"
    if not text.isdigit():
        return None
    return next((band for low, high, band in EDGES if low <= int(text) <= high), None)


def slot_of_code(code):
    """Mode and row of BANDS of a BandIndex; none for a code that means nothing."""
    if 1 <= code <= 8:
        return "CW", code - 1
    if 21 <= code <= 23:
        return "CW", code - 13
    if 9 <= code <= 19:
        return "PH", code - 9
    return None


def date_of_code(entry):
    """The date as year-month-day; none for a code of no such form."""
    digits = str(abs(entry.date))
    if len(digits) == 4:
        return f"199{digits[3]}-0{digits[0]}-{digits[1:3]}"
    if len(digits) != 5 or digits[0] not in "123":
        return None
    year = "199" + digits[4]
    if digits[0] != "1":
        decade = "1" if entry.date < 0 else entry.decade if entry.decade in "23456789" else "0"
        year = "20" + decade + digits[4]
    return f"{year}-{'1' if digits[0] in '13' else '0'}{digits[1]}-{digits[2:4]}"


def exact_frequency(entry):
    """What the radio told, whole kHz; none where it told nothing."""
    text = entry.frequency.strip(" ").split(".")[0].strip(" ")
    return text if entry.is_new_form and text not in ("", "0") else None


def is_cw_contest(log):
    return log.contest in BOTH_MODES or log.letters == "CW"


def report(log, mode):
    by_qso = log.contest in (TEN, NEQP, GENERIC)
    is_cw = mode == "CW" if by_qso else is_cw_contest(log)
    return Field("report", "599" if is_cw else "59", 3)


def number(value, gap=1):
    return Field("number", str(value), 4, right=True, gap=gap)


def text_field(name, case, key, width, cut=None, gap=1):
    return Field(name, case.text(key)[:cut].rstrip(" "), width, gap=gap, is_learned=not case.is_told)


def sent_fields(log, case, entry, mode):
    rst, own = report(log, mode), number(entry.sent)
    match log.contest:
        case 1 | 10:
            return rst, text_field("exchange", case, "ExchangeARRLMult", 6)
        case 2:
            return own, text_field("county", case, "ExchangeZRTMult", 10, 10)
        case 3:
            return rst, text_field("zone", case, "ExchangeCQWWMult", 6)
        case 4:
            return (own, text_field("name", case, "ExchangeSprintName", 10),
                    text_field("state", case, "ExchangeSprintMult", 3, 3))
        case 5:
            prec, check, section = (len(case.text("ExchangeSS" + key)) if case.is_told else width
                                    for key, width in (("Prec", 1), ("Check", 2), ("Section", 3)))
            return (own, text_field("precedence", case, "ExchangeSSPrec", prec),
                    text_field("check", case, "ExchangeSSCheck", check),
                    text_field("section", case, "ExchangeSSSection", 3 if section == 2 else section))
        case 6:
            return rst, own
        case 7:
            return rst, text_field("age", case, "ExchangeAAMult", 2)
        case 8:
            return own, text_field("county", case, "ExchangePAQPMult", 10, 10)
        case 9:
            return (text_field("name", case, "ExchangeNAQPName", 10),
                    text_field("state", case, "ExchangeNAQPMult", 3, 3))
        case 11:
            return rst, text_field("county", case, "ExchangeNEQPMult", 6, 5)
        case 12:
            given = case.text("ExchangeGeneric").replace("#", f" {entry.sent:4} ", 1)
            free = Field("exchange", given.rstrip(" "), len(given), is_learned=not case.is_told)
            return (rst, free) if case.show_rst else (free,)
        case 13:
            return own, text_field("name", case, "ExchangeCWOName", 10, gap=2)


def received_fields(log, case, lists, entry, mode):
    rst, theirs = report(log, mode), number(entry.number)
    name = Field("name", entry.name.rstrip(" "), 10)
    text = entry.exchange.strip(" ")
    match log.contest:
        case 1:
            value = text if log.option == "2" else str(entry.number)
            return rst, Field("exchange", value, 5, right=True)
        case 2:
            states = case.state_names and log.letters == "IN"
            names = lists["[ZRT State/Province Mults]" if states else "[ZRT Zar County Mults]"]
            has_letter = re.search("[A-Z]", entry.exchange)
            return theirs, Field(
                "county", name_behind_number(entry.exchange, names, lambda _: not has_letter), 10)
        case 3 | 6 | 7:
            return rst, theirs
        case 4:
            state = name_behind_number(entry.exchange, lists["[Sprint Mults]"], lambda n: n != 11)
            return theirs, name, Field("state", state, 6)
        case 5:
            short = lists["[SS Short Forms]"] + lists["[SS Extra Short Forms]"]
            long = lists["[SS Mults]"] + lists["[SS Extra Mults]"]
            section = dict(zip(reversed(short), reversed(long))).get(
                entry.exchange[3:], entry.exchange[3:])
            return (theirs, Field("precedence", entry.exchange[:1].rstrip(" "), 1),
                    Field("check", entry.exchange[1:3].rstrip(" "), 2),
                    Field("section", section.rstrip(" "), 3))
        case 8:
            return theirs, Field("county", name_behind_number(entry.exchange, lists["[PAQP Mults]"]), 10)
        case 9:
            state = name_behind_number(entry.exchange, lists["[NAQP Mults]"])[:3]
            return name, Field("state", state.rstrip(" "), 3)
        case 10:
            value = str(entry.number) if entry.number else text
            return rst, Field("exchange", value, 5, right=True)
        case 11:
            return rst, Field("county", name_behind_number(entry.exchange, lists["[NEQP Mults]"]), 10)
        case 12:
            free = Field("exchange", (entry.name + entry.exchange).strip(" "))
            return (rst, free) if case.show_rst else (free,)
        case 13:
            return theirs, name._replace(gap=2)


def contacts_of_log(log, case, lists):
    """What the file must say, one contact a line. Voids of the new form are no contacts."""
    frequency, exact, mode, date = "", False, "", ""
    for entry in log.entries:
        if entry.is_new_form and entry.call.strip(" ").upper() == "VOID":
            continue
        slot = slot_of_code(entry.band)
        if slot:
            mode, frequency, exact = slot[0], str(BANDS[slot[1]][0]), False
        told = exact_frequency(entry) if case.exact else None
        if told:
            frequency, exact = told, True
        date = date_of_code(entry) or date
        yield Contact(frequency, exact, mode, date, entry.time, sent_fields(log, case, entry, mode),
                      entry.call.rstrip(" "), received_fields(log, case, lists, entry, mode))
