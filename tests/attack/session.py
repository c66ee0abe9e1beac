"""An operator at the real program who keeps a journal of what was logged, and an independent reader
who looks for it in the file."""

import re
import struct
import sys
from dataclasses import dataclass, field
from pathlib import Path

from real_program import Gone, NeverCame, Program, shipped_data

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "golden"))
from log_contacts import read_lists, read_log  # noqa: E402

ENTRY = 60
BAND_CODES = {"10m": (1, 9), "15m": (2, 10), "20m": (3, 11), "40m": (4, 12), "80m": (5, 13),
              "160": (6, 14), "160m": (6, 14), "6m": (7, 15), "2m": (8, 16), "12m": (21, 17),
              "17m": (22, 18), "30m": (23, 19), "12": (21, 17), "17": (22, 18), "30": (23, 19)}
LABEL = re.compile(r"QSO Nr (\d+) +\((\S+) +(CW|SSB)\)")
SAVE_TITLE = "Save Current Log As"
OPEN_TITLE = "Open Existing ZRT Log File"


@dataclass
class Contest:
    name: str
    row: int
    exchange: object  # (random) -> what is typed
    stored: object  # what was typed -> (number, exchange, name) of the record


STATES = ("PA", "TX", "OH", "NY", "WA", "FL")


def naqp_fields(typed):
    """The record holds the state's row in the list of the data file."""
    name, state = typed.split()
    text = (shipped_data() / "ZRTLOG126.DAT").read_text(encoding="latin-1")
    return 0, str(read_lists(text)["[NAQP Mults]"].index(state) + 1), name


CONTESTS = {
    "Generic": Contest("Generic", 12, lambda r: f"599 {r.choice(('BOB', 'ANN', 'KARLHEINZ'))}",
                       lambda typed: (0, typed[10:15], typed[:10])),
    "NAQP": Contest("NAQP", 6, lambda r: f"{r.choice(('BOB', 'ANN', 'TOM'))} {r.choice(STATES)}",
                    naqp_fields),
    "AA": Contest("AA", 0, lambda r: f"{r.randint(10, 99)}", lambda typed: (int(typed), None, None)),
    "WPX": Contest("WPX", 11, lambda r: f"{r.randint(1, 2000)}",
                   lambda typed: (int(typed), None, None)),
}


@dataclass
class Contact:
    number: int
    call: str
    typed: str
    band: int
    record: bytes | None = None  # as it stood on the disk right after it was accepted

    def __str__(self):
        return f"{self.number} {self.call} {self.typed!r} band {self.band}"


def differences(contest, contact, entry):
    """What an entry of the file says otherwise than the journal."""
    number, exchange, name = contest.stored(contact.typed)
    expected = [("call", contact.call, entry.call.strip()), ("band", contact.band, entry.band),
                ("sent number", contact.number, entry.sent), ("number", number, entry.number)]
    if name is not None:
        expected += [("exchange", exchange.strip(), entry.exchange.strip()),
                     ("name", name.strip(), entry.name.strip())]
    return [f"{what} {found!r} for {wanted!r}" for what, wanted, found in expected
            if wanted != found]


@dataclass
class Journal:
    contest: Contest
    contacts: list = field(default_factory=list)
    safe: int = 0  # of them were on the disk when the program last did not warn
    ghosts: dict = field(default_factory=dict)  # killed ones, whose bytes may stay behind, by number
    refused: int = 0

    def add(self, contact, warned):
        self.contacts.append(contact)
        self.ghosts.pop(contact.number, None)
        if not warned:
            self.safe = len(self.contacts)

    def kill_last(self):
        killed = self.contacts.pop()
        self.ghosts[killed.number] = killed
        self.safe = min(self.safe, len(self.contacts))

    def compare(self, path, needed=None):
        """Complaints about a log file; the first `needed` contacts must be there, all that are
        there must be right."""
        needed = len(self.contacts) if needed is None else needed
        data = Path(path).read_bytes() if Path(path).exists() else None
        if data is None:
            return [f"no file {path}"] if needed else []
        try:
            entries = read_log(data).entries
        except (struct.error, KeyError):
            return [f"no log any more: {path} of {len(data)} bytes"]
        complaints = []
        for contact in self.contacts:
            if contact.number > len(entries):
                if contact.number <= needed:
                    complaints.append(f"lost: {contact}")
                continue
            entry = entries[contact.number - 1]
            wrong = differences(self.contest, contact, entry)
            if wrong and (contact.number <= needed or entry.call.strip(" \0")):
                complaints.append(f"changed: {contact}: {', '.join(wrong)}")
            stored = data[contact.number * ENTRY:(contact.number + 1) * ENTRY]
            if not wrong and contact.record is not None and stored != contact.record:
                complaints.append(f"bytes changed: {contact}")
        for number, entry in enumerate(entries[len(self.contacts):], len(self.contacts) + 1):
            ghost = self.ghosts.get(number)
            if ghost is None or differences(self.contest, ghost, entry):
                complaints.append(f"nobody has logged this: {entry.sent} {entry.call!r}")
        return complaints


class Operator:
    """Logs by real keys. `patience` with the disk: how often a failure is tried again."""

    def __init__(self, program: Program, say=print, contest="Generic", retries=0):
        self.program = program
        self.say = say
        self.journal = Journal(CONTESTS[contest])
        self.retries = retries
        self.log = program.temporary_log

    # ---------------------------------------------------------------------------- starting

    def start(self, recover=None):
        """Starts the program; `recover` answers the question about an unnamed log."""
        program = self.program
        program.start()
        if recover is not None:
            program.wait_for_box()
            program.answer("Yes" if recover else "No")
        program.until(lambda: program.window() == "ZRTLOG", "no main window")

    def new_log(self):
        contest = self.journal.contest
        self.program.act("menu mnuFileNew")
        self.program.until(lambda: self.program.window() == "Choose Contest", "no chooser")
        self.program.act(f"list lstContest {contest.row}")
        if contest.name not in ("Generic",):
            self.program.act("click optFrame1(1)")  # CW
        self.program.act("click cmdOK")
        self.program.until(lambda: self.next_number() == 1, "no new log")
        self.log = self.program.temporary_log

    def start_log(self):
        self.start()
        self.new_log()

    # ---------------------------------------------------------------------------- logging

    def label(self):
        return LABEL.match(self.program.text("QSONrLabel"))

    def next_number(self):
        label = self.label()
        return int(label[1]) if label and self.program.ask("visible QSONrLabel") == "yes" else None

    def band(self):
        label = self.label()
        return BAND_CODES[label[2]][label[3] != "CW"]

    def warning(self):
        """What the program says about contacts that are not on the disk."""
        return self.program.shown("lblNotOnDisk")

    def answer_boxes(self):
        """Answers what comes up while a contact is logged."""
        tries = self.retries
        while (text := self.program.box()) is not None:
            title = self.program.window()
            self.say(f"box {title!r}: {text!r}")
            if title == "Portable Station?":
                self.program.answer_any("No", "Cancel", "Ok")
            elif tries > 0:
                self.program.answer_any("Retry", "Cancel", "Ok", "No")
                tries -= 1
            else:
                self.program.answer_any("Cancel", "Ok", "No", "Ignore")

    def type_contact(self, call, exchange):
        program = self.program
        program.act("type " + call)
        program.act("key Space")
        self.answer_boxes()
        filled = program.text("InData(1)")
        if filled.strip():  # the program's proposal: the operator knows better
            program.act("key End", *["key Backspace"] * len(filled))
        program.act("type " + exchange)
        return program.text("InData(0)"), program.text("InData(1)")

    def log_contact(self, call, exchange):
        """True when the program has taken it."""
        program = self.program
        number, band = self.next_number(), self.band()
        seen_call, seen_exchange = self.type_contact(call, exchange)
        program.act("key Enter")
        self.answer_boxes()
        program.until(lambda: program.ask("sync") == "ok", "busy")
        self.answer_boxes()
        if self.next_number() == number or program.text("InData(0)").strip():
            self.say(f"refused: {number} {call} {exchange!r}; {program.state()}")
            self.journal.refused += 1
            program.act("key Esc", "key Esc")
            return False
        contact = Contact(number, seen_call.strip(), seen_exchange.strip(), band)
        warning = self.warning()
        self.say(f"logged {contact}" + (f"; warned: {warning}" if warning else ""))
        self.journal.add(contact, bool(warning))
        if not warning:
            self.note_record(contact)
        return True

    def note_record(self, contact):
        """The promise: fields that have cleared mean a record on the disk."""
        complaints = self.journal.compare(self.log)
        if complaints:
            raise AssertionError(f"accepted without a warning, but {complaints}")
        data = self.log.read_bytes()
        contact.record = data[contact.number * ENTRY:(contact.number + 1) * ENTRY]

    def log_some(self, count, prefix="K"):
        for _ in range(count):
            n = self.next_number()
            assert self.log_contact(f"{prefix}{n % 10}A{chr(65 + n % 26)}{chr(65 + n // 26)}",
                                    "599 BOB")

    # ---------------------------------------------------------------------------- files

    def save_as(self, path):
        """True when the log has the name."""
        program = self.program
        program.act("menu mnuFileSave")
        program.until(lambda: program.window() == SAVE_TITLE or program.box() is not None,
                      "Save As does nothing", 10)
        if program.window() == SAVE_TITLE:
            program.answer_file(path, SAVE_TITLE)
        while (text := program.box()) is not None:
            self.say(f"box {program.window()!r}: {text!r}")
            program.answer_any("Cancel", "Abort", "No", "Ok")
        saved = Path(path).name[:10].upper() in program.text("lblLog").upper()
        if saved:
            self.log = Path(path)
        self.say(f"Save As {path}: {'done' if saved else 'refused'}")
        return saved

    def open_log(self, path):
        """Opens a log by the file dialog; the text of the boxes that refuse it, or none."""
        program = self.program
        program.act("menu mnuFileOpen")
        program.answer_file(path, OPEN_TITLE)
        program.until(lambda: program.box() is not None or self.next_number() is not None,
                      "neither log nor box")
        texts = []
        while (text := program.box()) is not None:
            self.say(f"box {program.window()!r}: {text!r}")
            texts.append(text)
            program.answer_any("Ok", "Cancel", "No")
        return None if self.next_number() is not None else " ".join(texts)

    def open_recent(self, row=1):
        """Opens a recent log; the text of the box that refuses it, or none."""
        program = self.program
        program.act(f"menu mnuFileRecent({row})")
        if (text := program.box()) is not None:
            self.say(f"box {program.window()!r}: {text!r}")
            program.answer_any("Ok", "Cancel", "No")
            return text
        program.until(lambda: self.next_number() is not None, "the log does not open")
        return None

    def kill_last(self):
        self.program.act("menu mnuEditKillLast")
        self.program.wait_for_box("Kill last log entry?")
        self.program.answer("Yes")
        self.journal.kill_last()
        # On 12, 17 and 30 m the label says SSB after this on CW, too; a change of band writes it anew.
        if self.band() >= 17:
            self.program.act("key Ctrl+Up", "key Ctrl+Down")

    def exit(self, save=None):
        """Ends the program by its menu: a named log, or one that is saved as `save`."""
        program = self.program
        program.act("menu mnuFileExit")
        program.wait_for_box()
        program.answer("Yes", ends=save is None)
        if save is not None:
            program.answer_file(save, SAVE_TITLE, ends=True)
            self.log = Path(save)
        return program.wait()


__all__ = ["Operator", "Journal", "Contact", "Program", "Gone", "NeverCame", "read_log", "ENTRY",
           "SAVE_TITLE", "OPEN_TITLE", "CONTESTS"]
