#!/usr/bin/env python3
"""Makes the golden logs of this folder: each form of a log, and each conversion before and after.

    tests/golden/make_logs.py            writes them
    tests/golden/make_logs.py --check    compares them; exit 1 and one line a file that differs

The records are put together here byte by byte, apart from the program's own encoding.
"""

import struct
import sys
from pathlib import Path

FOLDER = Path(__file__).resolve().parent / "logs"


def header(tag, option=" ", form=0):
    return struct.pack("<hhh10shh5s1s", 0, 0, form, b" " * 10, 0, 0, tag.encode(), option.encode())


def entry26(call, exchange, number, date=-11135, time=1437, band=3, points="1"):
    text = [call.encode().ljust(10), exchange.encode().ljust(5), points.encode()]
    return struct.pack("<hhh10shh5s1s", date, time, band, text[0], number, 599, text[1], text[2])


def entry36(call, exchange, number, name, **more):
    return entry26(call, exchange, number, **more) + name.encode().ljust(10)


def entry60(call, exchange, number, name, **more):
    return entry36(call, exchange, number, name, **more) + b"14025.3".ljust(10) + b"1 " + b" " * 12


def empty(length):
    """An entry that was never filled: zeros for numbers, blanks for texts."""
    record = struct.pack("<hhh10shh5s1s", 0, 0, 0, b" " * 10, 0, 0, b" " * 5, b" ")
    return record.ljust(length, b" ")


def slot(head, length):
    """The header in a record of this length."""
    return head.ljust(length, b"\0")


def goldens():
    head60, head36, head26 = header("GEN  ", form=1), header("SP CW"), header("WW CW", "4")
    body60 = b"".join(
        entry60(call, "", n, name)
        for n, (call, name) in enumerate([("DL1ABC", "OTTO"), ("VOID", ""), ("W1AW/4", "HIRAM")], 1))
    body36 = entry36("K1ABC", "19", 1, "ANN") + entry36("VE3XYZ", "52", 2, "BOB", band=4)
    body26 = entry26("G3ABC", "G", 1, points="3") + entry26("JA1XYZ", "JA", 2, time=5, points="3")
    files = {
        "form60.ZRT": slot(head60, 60) + body60,
        "form36.ZRT": slot(head36, 36) + body36,
        "form26.ZRT": head26 + body26,
        "form60-killed.zrt": head60 + 3 * empty(26),
        "form36-killed.zrt": slot(head36, 36) + body36,
        "form26-killed.zrt": head26 + body26,
        "form60-after-kill.ZRT": head60,
        "form36-after-kill.ZRT": head36,
        "form26-after-kill.ZRT": head26,
        # What a backup makes of an old log that nothing protects: today's records, never filled.
        "form36-backup.ZRT": slot(head36, 60) + 2 * empty(60),
        "form26-backup.ZRT": slot(head26, 60) + 2 * empty(60),
    }
    wpx = [("W1AW/4", "W4"), ("LY2000A", "LY200"), ("RAEM", "RA0"), ("F/W1AW", "F0")]
    files["wpx-before.ZRT"] = header("WPXCW", "1") + b"".join(
        entry26(call, "", n) for n, (call, _) in enumerate(wpx, 1))
    files["wpx-after.ZRT"] = header("WPXCW", "3") + b"".join(
        entry26(call, prefix, n) for n, (call, prefix) in enumerate(wpx, 1))
    # Section number, then the short form of its row in 1995 and in 1996. The rows are those of the
    # minimal data set; 0 is no section and takes the one before.
    short = short_forms()
    sections = [(1, 1, 1), (10, 10, 10), (11, 12, 11), (0, 12, 11), (69, 70, 69), (70, 72, 70)]
    files["ss-before.ZRT"] = header("SS CW") + b"".join(
        entry26(f"K{n}SS", f"A74{number:02}", n) for n, (number, _, _) in enumerate(sections, 1))
    for year, column in ((95, 1), (96, 2)):
        files[f"ss{year}-after.ZRT"] = header("SS9CW") + b"".join(
            entry26(f"K{n}SS", "A74" + short[row[column] - 1], n)
            for n, row in enumerate(sections, 1))
    return files


def short_forms():
    data = Path(__file__).resolve().parent.parent / "data" / "minimal" / "ZRTLOG126.DAT"
    rows = data.read_text().split("[SS Short Forms]")[1].replace(",", "\n").split("\n")
    return [row.strip() for row in rows if row.strip()][:83]


def main():
    different = 0
    for name, content in goldens().items():
        path = FOLDER / name
        if "--check" not in sys.argv:
            FOLDER.mkdir(exist_ok=True)
            path.write_bytes(content)
        elif not path.exists() or path.read_bytes() != content:
            print(f"{path.name}: differs")
            different = 1
    return different


if __name__ == "__main__":
    sys.exit(main())
