#!/usr/bin/env python3
"""Proves the files that the program's folder starts with. CTest runs it; run it after an update.

    tools/check_data.py [--whole] [FOLDER]      default: the folder data/ beside tools/

ZRTLOG126.DAT and zrtlog125.ini must be there; cty.dat and callmtch.dat are looked at where they
are. With --whole the sections that a file may lack must be there too, as in what is shipped.
Prints one line a finding (file:line: what is wrong). Exit 0: clean, 1: findings, 2: no folder.

The program reads ZRTLOG126.DAT by exact counts and settings without any test, so a row too many or
too few goes wrong far from its place. Here it is named.
"""

import re
import sys
from pathlib import Path

# ---------------------------------------------------------------------------- ZRTLOG126.DAT

STATES, COUNTIES = "[ZRT State/Province Mults]", "[ZRT Zar County Mults]"
SS, SS_SHORT = "[SS Mults]", "[SS Short Forms]"
SS_EXTRA, SS_EXTRA_SHORT = "[SS Extra Mults]", "[SS Extra Short Forms]"

COUNTED = -1  # the section's first value is the number of its rows
MOST_EXTRA = 17
OPTIONAL = (SS_EXTRA, SS_EXTRA_SHORT)
# Header: rows, and what they are.
SECTIONS = {
    STATES: (58, "spellings"),
    COUNTIES: (58, "spellings"),
    SS: (83, "spellings"),
    SS_SHORT: (83, "short"),
    SS_EXTRA: (COUNTED, "spellings"),
    SS_EXTRA_SHORT: (COUNTED, "short"),
    "[Sprint Mults]": (72, "spelling"),
    "[PAQP Mults]": (67, "spellings"),
    "[NEQP Mults]": (67, "two spellings"),
    "[NAQP Mults]": (72, "spelling"),
    "[10M Mults]": (65, "spelling"),
    "[ARRL Mults]": (63, "spelling"),
    "[ZRT X Coordinates]": (72, "i16"),
    "[ZRT Y Coordinates]": (72, "i16"),
    "[SS X Coordinates]": (83, "i16"),
    "[SS Y Coordinates]": (83, "i16"),
    "[ARRL USVEMultOrder]": (63, "i16"),
    "[10M X Coordinates]": (65, "i16"),
    "[10M Y Coordinates]": (65, "i16"),
    "[ARRL X Coordinates]": (63, "i16"),
    "[ARRL Y Coordinates]": (63, "i16"),
    "[CW Characters]": (42, "elements"),
    "[Band Frequencies]": (24, "i32"),
}
FORMS = {"spelling": 1, "two spellings": 2, "spellings": 3}
PLAIN = {  # what a value of the other kinds looks like
    "short": (r"[A-Z0-9]{2}", "is no short form of two capital letters or digits"),
    "elements": (r"[0-3]+", "is no pattern of the digits 0 to 3"),
    "i16": (r"-?\d{1,9}", "is no whole number"),
    "i32": (r"-?\d{1,18}", "is no whole number"),
}
RANGES = {"i16": (-(2**15), 2**15 - 1), "i32": (-(2**31), 2**31 - 1)}
# Lists whose spellings must not meet, and lists that must be free of doubles in themselves.
UNIQUE = [(STATES, COUNTIES), (SS, SS_EXTRA), (SS_SHORT, SS_EXTRA_SHORT), ("[CW Characters]",)]
UNIQUE += [(header,) for header in SECTIONS if header.startswith(("[Sprint", "[PAQP", "[NEQP"))]
UNIQUE += [("[NAQP Mults]",), ("[10M Mults]",), ("[ARRL Mults]",)]
MAPS = ("ZRT", "SS", "10M", "ARRL")

# ---------------------------------------------------------------------------- zrtlog125.ini

CONTESTS = range(1, 14)
RADIOS = (
    "Elecraft K3,Elecraft Generic,Icom 756 Pro-A,Icom 756 Pro-B,Icom 756 Pro 2-A,Icom 756 Pro 2-B,"
    "Icom Generic-A,Icom Generic-B,Kenwood TS-570,Kenwood Generic,Yaesu FT-990,Yaesu FT-1000,"
    "Yaesu Generic,Yaesu FT-817"
).split(",")
WINDOWS = "LOGFORM VIEWMULT QSOSTATS VIEWMAC AUDIO ZTCTY VIEWZNCTY PARTIAL".split()
# Written with blanks around the equal sign while they are False.
BLANKS_WHEN_FALSE = re.compile(r"Radio[12]ComActivated|Radio\([12]\)\.(DTR|RTS)High")

# The kinds of values that several keys have: a pattern of the whole value.
TEXT, INTEGER = r".*", r"-?\d{1,10}"
KINDS = {
    "TEXT": TEXT,
    "BOOL": r"True|False",
    "INTEGER": INTEGER,
    "NUMBER": r"-?\d+(\.\d+)?",
    "PORT": r"\[none\]|Com.+|LPT1-pin (14|16|17)|USB-Relay [1-4]",
    "DTR": r"None|CW|PTT|F9|DVKMicSwitch",
    "KEY": r"\[none\]|backslash|rightbracket|uparrow|All",
}


def keys(kinds):
    """The (key, pattern) of a text of lines "KIND key key ...", a kind's name or a pattern."""
    found = []
    for line in kinds.split("\n"):
        kind, *names = line.split()
        found += [(name, KINDS.get(kind, kind)) for name in names]
    return found


def radio(prefix):
    details = f"""TEXT .Name .Address
        1200|2400|4800|9600|19200|38400|57600|115200 .BaudRate
        [678] .WordLen
        [NEO] .Parity
        [12] .StopBits
        BOOL .DTRHigh .RTSHigh"""
    return [(prefix + key, kind) for key, kind in keys(details)]


def profile(number):
    names = "ProfileName Callsign Operators Location Name Address City Country Club Rig Ant Email"
    first = [("CurrentUserProfileName", ".+")] if number == 1 else []
    return first + [(f"UserProfile.{n}", ".+" if n == "ProfileName" else TEXT) for n in names.split()]


def exchanges(name, *members):
    return f"[User Exchange - {name}]", [("Exchange" + member, TEXT) for member in members]


# Every section in its order: a list of keys, or the name of a kind of rows.
SETTINGS = dict(
    [
        (
            "[Preferences]",
            keys(
                """TEXT YourCall
                NUMBER StationLatitude StationLongitude
                .+ BackUpDrive
                BOOL CWActivated CWPTTActivated SSBPTTActivated PTTByRigControl CWPTTByWinkey
                BOOL F9Activated TypingEnabled DupeSendMsgFlag
                PORT CWComport PTTComPort DVKMicSwitchComPort F9Comport
                BOOL DVKMicSwitchActivated CWSpeakerEnabled UsePCSpeaker UseSoundcardSpeaker
                DTR UseDTRtoKey(1) UseDTRtoKey(2)
                BOOL CWCallCorrectEnabled CWCorrectWholeCall
                INTEGER Radio1Delay Radio2Delay RepeatIntervalCW RepeatIntervalSSB
                INTEGER DualCQsRepeatInterval DualCQsPlayNumber CWSpeedIncrement
                NUMBER Weight
                QueryPerf|Math|Winmm|VBTimer TimingMethod
                INTEGER TimeCorrection
                BOOL IsGMTFlag SendF1Enabled LogandSendF5Enabled LogandSendF6Enabled
                BOOL Key1IsMapped Key2IsMapped
                KEY Key1Mapping Key2Mapping
                INTEGER K3MsgLengthAdjustment
                BOOL SCPEnabled
                ALL|US|DX SCPSelection"""
            ),
        ),
        (
            "[Winkey Settings]",
            keys(
                """BOOL WinkeyActivated
                PORT WinkeyComPort
                INTEGER WinkeySidetoneFrequency
                [012] WinkeySidetoneOnOff
                INTEGER WinkeyPotSpeedMin WinkeyPotSpeedMax WinkeyLeadTime WinkeyTailTime
                INTEGER WinkeyWeighting WinkeyKeyComp
                NUMBER WinkeyDashDotRatio"""
            )
            + [("WinkeyKeyMode", "Iambic A|Iambic B|Ultimatic|Bug")],
        ),
        (
            "[DVK Settings]",
            keys(
                """TEXT AudioPath
                BOOL DVKSendMessageEnabled DVKSendCallEnabled DVKSendExchEnabled
                BOOL DVKNormalModeEnabled DVKFastModeEnabled DVKMixedModeEnabled
                BOOL DVKPrevWkdEnabled DVKCallMatchEnabled
                AlwaysFast|AlwaysNormal|MixedMode DVKCallExchMode
                INTEGER DVKOverlapMsec"""
            ),
        ),
        (
            "[Radio Information]",
            keys(
                """BOOL Radio1ComActivated Radio2ComActivated
                INTEGER Radio1ComPollInterval Radio2ComPollInterval RadioSwapDelayMsec
                PORT Radio1ComPort Radio2ComPort"""
            )
            + radio("Radio(1)")
            + radio("Radio(2)"),
        ),
        ("[Radio Default Settings]", radio("RadioDefaultSettings") * len(RADIOS)),
        ("[Radio User Settings]", radio("RadioUserSettings") * len(RADIOS)),
        ("[File Information]", keys("TEXT OpenFilePath RecentFile1 RecentFile2 RecentFile3 RecentFile4")),
        *[(f"[CW Macros - {n:02}]", "macros") for n in CONTESTS],
        *[(f"[CW Macros Display Forms - {n:02}]", "labels") for n in CONTESTS],
        *[(f"[Window Information - {n:02}]", "windows") for n in CONTESTS],
        exchanges("ARRL", "ARRLMult"),
        exchanges("AA", "AAMult"),
        exchanges("ZRT", "ZRTMult"),
        exchanges("PAQP", "PAQPMult"),
        exchanges("NEQP", "NEQPMult"),
        exchanges("CQWW", "CQWWMult"),
        exchanges("SS", "SSPrec", "SSCall", "SSCheck", "SSSection"),
        exchanges("SPRINT", "SprintName", "SprintMult"),
        exchanges("NAQP", "NAQPName", "NAQPMult"),
        exchanges("GENERIC", "Generic"),
        exchanges("CWO", "CWOName"),
        *[(f"[User Profile {n}]", profile(n)) for n in (1, 2, 3, 4)],
        (
            "[Extensions]",
            keys(
                """BOOL StoreDecade UtcFromSystem ProtectOldLogs KeepKilledLog
                INTEGER ScpLimit
                BOOL ExtraBaudRates FillCursorAtStart PrefillCountsAsEmpty InStateStateNames
                TEXT LogFolder
                BOOL TypedFrequencyNoRadio ModeCommands InAreaContests"""
            ),
        ),
    ]
)
WIDE_KEYS = ("ScpLimit",)  # the other integers have 16 bits

PREFIX = r"\[RADIO[012]\]\[PLAY[136]\]"
SENT = r"[A-Z0-9,./? *@$#+-]"  # Morse and tokens; anything else would go out as a blank
WINDOW = r"([A-Z]+) (OPEN|CLOSED)(?: (-?\d{1,6})){4}"
# Rows of a section, and what each row must be.
ROWS = {
    "macros": [rf"{PREFIX}{SENT}*"] * 9 + [rf"{SENT}+|{PREFIX}{SENT}*"] * 3,
    "labels": [r".+"] * 9,
    "windows": [WINDOW] * 8,
}


class Findings(list):
    def __init__(self, file):
        super().__init__()
        self.file = file

    def at(self, line, text):
        self.append(f"{self.file}:{line}: {text}")


def lines_of(path, findings):
    """The lines without their ends; the line number of each is its index + 1."""
    data = path.read_bytes()
    lines = data.decode("latin-1").split("\n")
    if lines[-1] == "":
        lines.pop()
    else:
        findings.at(len(lines), "the last line has no end")
    for number, line in enumerate(lines, 1):
        if not line.endswith("\r") and number <= data.count(b"\n"):
            findings.at(number, "the line doesn't end in CR LF")
            break
    return [line.removesuffix("\r") for line in lines]


def in_range(kind, text):
    return RANGES[kind][0] <= int(text) <= RANGES[kind][1]


def values_of(line):
    """The values of a line, as the program takes them: to a comma or the line's end, without blanks
    around them and without a pair of quotes, which may hold commas."""
    rest = line
    while rest.strip(" "):
        quoted = re.match(r' *"([^"]*)" *(?:,|$)', rest)
        plain = re.match(r"([^,]*)(?:,|$)", rest)
        found = quoted or plain
        yield found.group(1) if quoted else found.group(1).strip(" ")
        rest = rest[found.end() :]


def read_sections(lines, findings, whole):
    """The rows of each section as {header: [(line number, value)]}, with findings on the counts."""
    tables, header, wanted = {}, None, 0

    def close(number):
        if header and len(tables[header]) < wanted:
            missing = wanted - len(tables[header])
            findings.at(number, f"{header} ends {missing} of {wanted} rows too early")

    overfull = False
    for number, line in enumerate(lines, 1):
        text = line.strip(" ")
        if text in SECTIONS:
            close(number)
            if text in tables:
                findings.at(number, f"{text} stands here a second time")
            header, tables[text], overfull = text, [], False
            wanted = SECTIONS[text][0]
        elif re.fullmatch(r"\[[^]]*\]", text):
            findings.at(number, f"{text} is no section of this file")
        elif header:
            for value in values_of(line):
                if wanted == COUNTED:
                    counted = re.fullmatch(r"\d{1,4}", value) and int(value) <= MOST_EXTRA
                    if not counted:
                        findings.at(number, f"{header}: '{value}' is no count from 0 to {MOST_EXTRA}")
                    wanted = int(value) if counted else 0
                    overfull = not counted
                elif len(tables[header]) < wanted:
                    tables[header].append((number, value))
                elif not overfull:
                    findings.at(number, f"'{value}' is left over behind the rows of {header}")
                    overfull = True
    if wanted == COUNTED:
        findings.at(len(lines), f"{header} has no count")
    close(len(lines))
    for name in SECTIONS:
        if name not in tables and (whole or name not in OPTIONAL):
            findings.at(len(lines), f"{name} is missing")
    return tables


def check_value(header, number, value, findings):
    kind = SECTIONS[header][1]
    if kind in FORMS:
        forms = value.removesuffix("/").split("/")
        if len(forms) > FORMS[kind]:
            findings.at(number, f"{header}: '{value}' has more than {FORMS[kind]} spelling(s)")
        for form in forms:
            if not re.fullmatch(r"[A-Z0-9]{1,5}", form):
                findings.at(number, f"{header}: '{form}' is no spelling of 1 to 5 letters and digits")
        return
    pattern, fault = PLAIN[kind]
    if not re.fullmatch(pattern, value):
        findings.at(number, f"{header}: '{value}' {fault}")
    elif kind in RANGES and not in_range(kind, value):
        findings.at(number, f"{header}: {value} is too large for {kind}")


def check_doubles(tables, headers, findings):
    seen = {}
    for header in headers:
        for number, value in tables.get(header, []):
            for form in value.removesuffix("/").split("/"):
                if form in seen:
                    findings.at(number, f"{header}: '{form}' stands in line {seen[form]} too")
                seen.setdefault(form, number)


def check_map(tables, name, findings):
    columns = [tables.get(f"[{name} {axis} Coordinates]", []) for axis in "XY"]
    seen = {}
    for row, ((_, x), (number, y)) in enumerate(zip(*columns), 1):
        if (x, y) in seen:
            findings.at(number, f"{name} rows {seen[x, y]} and {row} have one place, {x},{y}")
        seen.setdefault((x, y), row)


def check_order(tables, findings):
    order = tables.get("[ARRL USVEMultOrder]", [])
    places = [value for _, value in order]
    for place in range(1, SECTIONS["[ARRL USVEMultOrder]"][0] + 1):
        if order and str(place) not in places:
            findings.at(order[0][0], f"[ARRL USVEMultOrder]: no row has the place {place}")


def check_startup_data(path, findings, whole):
    tables = read_sections(lines_of(path, findings), findings, whole)
    for header, rows in tables.items():
        for number, value in rows:
            check_value(header, number, value, findings)
    for headers in UNIQUE:
        check_doubles(tables, headers, findings)
    for name in MAPS:
        check_map(tables, name, findings)
    check_order(tables, findings)
    extra, short = (len(tables.get(header, [])) for header in OPTIONAL)
    if extra != short:
        findings.at(1, f"{SS_EXTRA} has {extra} rows and {SS_EXTRA_SHORT} {short}")


def split_settings(lines, findings, whole):
    """The rows of each section as {header: [(line number, row)]}; blank lines are judged here."""
    sections, header, blank = {}, None, True
    for number, line in enumerate(lines, 1):
        if line.strip() == "":
            if blank:
                findings.at(number, "an empty line too many")
            blank = True
            continue
        if line in SETTINGS:
            if not blank:
                findings.at(number, f"no empty line before {line}")
            if line in sections:
                findings.at(number, f"{line} stands here a second time")
            header = line
            sections[header] = []
        elif header is None:
            findings.at(number, "a line before the first section")
        elif re.fullmatch(r"\[[^]]*\]", line):
            findings.at(number, f"{line} is no section of this file")
        else:
            after_name = len(sections[header]) == 1 and header == "[User Profile 1]"
            if blank != after_name and sections[header]:
                fault = "no empty line" if after_name else "an empty line"
                findings.at(number, f"{fault} before this row of {header}")
            sections[header].append((number, line))
        blank = False
    if not blank:
        findings.at(len(lines), "no empty line behind the last section")
    order = [header for header in SETTINGS if header in sections]
    if list(sections) != order:
        wrong = next(found for found, right in zip(sections, order) if found != right)
        findings.at(1, f"{wrong} is not in its place")
    for header in SETTINGS:
        if header not in sections and (whole or header != "[Extensions]"):
            findings.at(len(lines), f"{header} is missing")
    return sections


def check_keys(header, rows, findings):
    """Returns the (line number, key, value) of the rows that are right in form."""
    expected, found = SETTINGS[header], []
    for place, (number, line) in enumerate(rows):
        key, equals, value = line.partition("=")
        blanks = BLANKS_WHEN_FALSE.fullmatch(key.strip()) and value.strip() == "False"
        written = f"{key.strip()} = False" if blanks else f"{key.strip()}={value.strip()}"
        key, value = key.strip(), value.strip()
        if not equals:
            findings.at(number, f"{header}: no key and value")
        elif key not in [name for name, _ in expected]:
            findings.at(number, f"{header}: there is no key {key}")
        elif place >= len(expected):
            findings.at(number, f"{header}: {key} is one row too many")
        elif key != expected[place][0]:
            findings.at(number, f"{header}: {key} stands where {expected[place][0]} belongs")
            return found
        elif line != written:
            findings.at(number, f"{header}: the program writes this as '{written}'")
        elif not re.fullmatch(expected[place][1], value):
            findings.at(number, f"{header}: '{value}' is no value of {key}")
        elif expected[place][1] == INTEGER and not in_range("i32" if key in WIDE_KEYS else "i16", value):
            findings.at(number, f"{header}: {key} is too large")
        else:
            found.append((number, key, value))
    if len(rows) < len(expected):
        number = rows[-1][0] if rows else 1
        findings.at(number, f"{header}: {expected[len(rows)][0]} and what follows is missing")
    return found


def check_rows(header, rows, findings):
    kind = SETTINGS[header]
    if len(rows) != len(ROWS[kind]):
        number = rows[-1][0] if rows else 1
        findings.at(number, f"{header} has {len(rows)} rows, not {len(ROWS[kind])}")
    for place, ((number, row), pattern) in enumerate(zip(rows, ROWS[kind])):
        if not re.fullmatch(pattern, row):
            findings.at(number, f"{header}: '{row}' is no row of {kind}")
        elif kind == "windows" and row.split()[0] != WINDOWS[place]:
            findings.at(number, f"{header}: row {place + 1} is not that of {WINDOWS[place]}")
        elif kind == "windows" and not all(in_range("i16", n) for n in row.split()[2:]):
            findings.at(number, f"{header}: a place beyond 16 bits")


def check_radios(header, values, findings):
    names = [(number, value) for number, key, value in values if key.endswith(".Name")]
    for (number, name), model in zip(names, RADIOS):
        if name != model:
            findings.at(number, f"{header}: '{name}' stands in the place of '{model}'")
    name = ""
    for number, key, value in values:
        name = value if key.endswith(".Name") else name
        pattern = "[0-9A-F]{2}" if name.startswith("Icom") else ""
        if key.endswith(".Address") and not re.fullmatch(pattern, value):
            findings.at(number, f"{header}: '{value}' is no address of '{name}'")


def check_settings(path, findings, whole):
    sections = split_settings(lines_of(path, findings), findings, whole)
    profiles, current = [], None
    for header, rows in sections.items():
        if isinstance(SETTINGS[header], str):
            check_rows(header, rows, findings)
            continue
        values = check_keys(header, rows, findings)
        if header in ("[Radio Default Settings]", "[Radio User Settings]"):
            check_radios(header, values, findings)
        profiles += [row for row in values if row[1] == "UserProfile.ProfileName"]
        current = next((row for row in values if row[1] == "CurrentUserProfileName"), current)
        for number, key, value in values:
            known = value in RADIOS or value == "[none]"
            if re.fullmatch(r"Radio\([12]\)\.Name", key) and not known:
                findings.at(number, f"{header}: there is no radio '{value}'")
    names = [value for _, _, value in profiles]
    for place, (number, _, name) in enumerate(profiles):
        if name in names[:place]:
            findings.at(number, f"two profiles have the name '{name}'")
    if current and current[2] not in names:
        findings.at(current[0], f"no profile has the name '{current[2]}'")


# ---------------------------------------------------------------------------- the other two

COUNTRY = re.compile(
    r"(?P<name>[^:]+):\s*(?P<cq>\d+):\s*\d+:\s*(AF|AN|AS|EU|NA|OC|SA):\s*(?P<lat>-?[\d.]+):"
    r"\s*(?P<long>-?[\d.]+):\s*-?[\d.]+:\s*(?P<prefix>\S+):\s*"
)
PIECE = re.compile(r"=?[A-Z0-9/]+(\(\d+\)|\[\d+\]|<[^>]*>|\{..\}|~[^~]*~)*")
MOST_COUNTRIES = 350


def check_countries(path, findings, _):
    prefixes = []
    for number, line in enumerate(path.read_text(encoding="latin-1").splitlines(), 1):
        text = line.strip()
        if not text or line.startswith("'"):
            continue
        if text.endswith(":"):
            country = COUNTRY.fullmatch(text)
            if not country:
                findings.at(number, "no country line of eight columns")
                continue
            prefixes.append(country["prefix"].upper())
            if not 1 <= int(country["cq"]) <= 40:
                findings.at(number, f"{country['cq']} is no CQ zone")
            if abs(float(country["lat"])) > 90 or abs(float(country["long"])) > 180:
                findings.at(number, "the place is not on earth")
        elif not prefixes:
            findings.at(number, "prefixes before the first country")
        else:
            pieces = [piece.strip() for piece in re.sub(r"[;,]$", "", text).split(",")]
            for piece in pieces:
                if not PIECE.fullmatch(piece):
                    findings.at(number, f"'{piece}' is no prefix")
    if len(prefixes) > MOST_COUNTRIES:
        findings.at(1, f"{len(prefixes)} countries; the table holds {MOST_COUNTRIES}")
    for needed in ("K", "VE", "KH6", "KL"):
        if needed not in prefixes:
            findings.at(1, f"no country has the main prefix {needed}")


def check_call_match(path, findings, _):
    lines = path.read_text(encoding="latin-1").splitlines()
    if len(lines) > 399:
        findings.at(400, "the lines from here on are not read")
    for number, line in enumerate(lines, 1):
        if not re.fullmatch(r"[A-Z0-9/]+", line.strip()):
            findings.at(number, f"'{line.strip()}' is no call")


FILES = [
    ("ZRTLOG126.DAT", check_startup_data, True),
    ("zrtlog125.ini", check_settings, True),
    ("cty.dat", check_countries, False),
    ("callmtch.dat", check_call_match, False),
]


def check(folder, whole):
    """The findings, and how many files there were."""
    findings, count = [], 0
    for name, check_file, needed in FILES:
        path, own = folder / name, Findings(name)
        if path.is_file():
            check_file(path, own, whole)
            count += 1
        elif needed:
            own.at(1, "the file is missing")
        findings += own
    return findings, count


def main():
    names = [name for name in sys.argv[1:] if name != "--whole"]
    folder = Path(names[0] if names else Path(__file__).parent.parent / "data")
    if not folder.is_dir():
        print(f"{folder}: no such folder", file=sys.stderr)
        return 2
    findings, count = check(folder, "--whole" in sys.argv)
    for finding in findings:
        print(finding)
    if not findings:
        print(f"data: {count} files, all in order")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
