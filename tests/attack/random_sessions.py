"""Random sessions: an operator logs contacts, and everything that can go wrong does. At the end every
contact of the journal must be in the file, once and unchanged; those that the program named as not
on the disk when it was killed are counted as reported.

What is done follows from the seed alone.
"""

import contextlib
import os
import random
import shutil
import signal
import subprocess
import tempfile
import traceback
from collections import Counter
from pathlib import Path

from attack_kit import Attack, cut
from session import CONTESTS, Gone, Operator, Program

BAND_KEYS = ("Ctrl+Up", "Ctrl+Down")
MODE_KEYS = ("Ctrl+Left", "Ctrl+Right")
LOG = "*.[zZ][rR]*"
FAULTS = (
    f"pwrite:{LOG}:1+:ENOSPC", f"pwrite:{LOG}:1:EIO", f"pwrite:{LOG}:2-3:EDQUOT",
    f"pwrite:{LOG}:1+:SHORT", f"fdatasync:{LOG}:1:EIO", f"fdatasync:{LOG}:1+:EIO",
    f"open:{LOG}:1:EMFILE", f"open:{LOG}:1+:EACCES", f"open:{LOG}:1+:EIO", f"close:{LOG}:1:EIO",
    f"rename:{LOG}:1+:EROFS", "fsync:1+:EIO", "readdir:1+:EIO", "open:*.ini*:1+:EACCES",
    f"open:{LOG}:1:EINTR,pwrite:{LOG}:1:EINTR,fdatasync:{LOG}:1:EINTR", f"pread:{LOG}:1+:EIO",
)


class Session:
    def __init__(self, seed, contacts, say, disk=None):
        self.random = random.Random(seed)
        self.say = say
        self.wanted = contacts
        self.work = Path(tempfile.mkdtemp(prefix="zrtlog-session-"))
        self.shared = disk or self.work / "shared"
        self.shared.mkdir(exist_ok=True)
        self.is_small = disk is not None
        self.program = Program(self.work / "home", under=(self.shared,), say=say)
        contest = self.random.choice(list(CONTESTS))
        self.say(f"seed {seed}: {contest}")
        self.operator = Operator(self.program, say=say, contest=contest)
        self.accepted = 0
        self.reported = 0
        self.killed = 0  # taken back by the operator
        self.events = Counter()
        self.saved = None
        self.broken = False
        self.is_full = False
        self.calls = []

    @property
    def journal(self):
        return self.operator.journal

    # ------------------------------------------------------------------------------- contacts

    def call(self):
        r = self.random
        if self.calls and r.random() < 0.15:
            return r.choice(self.calls)  # a duplicate
        prefix = r.choice(("K", "W", "N", "AA", "WB", "VE", "DL", "JA", "G", "PY", "VK"))
        letters = "".join(r.choice("ABCDEFGHIJKLMNOPQRSTUVWXYZ") for _ in range(r.randint(1, 3)))
        call = f"{prefix}{r.randint(0, 9)}{letters}"
        if r.random() < 0.1 and len(call) < 8:
            call += f"/{r.randint(0, 9)}"
        self.calls.append(call)
        return call

    def contact(self):
        self.operator.retries = self.random.choice((0, 0, 1, 2))
        if self.operator.log_contact(self.call(), self.journal.contest.exchange(self.random)):
            self.accepted += 1

    def wipe(self):
        self.program.act("type " + self.call()[:4], f"key {self.random.choice(('Ctrl+Z', 'Esc'))}")
        self.operator.answer_boxes()
        assert self.program.text("InData(0)") == "", self.program.state()

    def change_band(self):
        self.program.act("key " + self.random.choice(BAND_KEYS))

    def change_mode(self):
        self.program.act("key " + self.random.choice(MODE_KEYS))

    def kill_last(self):
        if self.journal.contacts and not self.operator.warning():
            self.operator.kill_last()
            self.killed += 1

    # ---------------------------------------------------------------------------------- files

    def save_as(self):
        if self.saved is not None:
            return
        target = self.shared / f"session{self.random.randint(1, 99)}.ZRT"
        if self.operator.save_as(target):
            self.saved = target
            if not self.operator.warning():
                self.mark_safe()

    def mark_safe(self):
        self.journal.safe = len(self.journal.contacts)

    def break_calls(self):
        self.program.fail(self.random.choice(FAULTS))
        self.broken = True

    def mend_calls(self):
        self.program.fail("")
        self.broken = False

    def damage(self):
        """Another process, and then the operator goes on."""
        log = self.operator.log
        if self.broken or not log.exists() or self.operator.warning():
            return
        length = log.stat().st_size
        how = self.random.choice(("cut", "cut", "delete"))
        if how == "cut":
            cut(log, self.random.randint(0, length))
        else:
            log.unlink()
        self.say(f"another process: {how}")
        self.contact_that_counts()

    def contact_that_counts(self):
        before = self.accepted
        for _ in range(20):
            self.contact()
            if self.accepted > before:
                return
        raise AssertionError("no contact is accepted any more")

    def fill_disk(self):
        if not self.is_small:
            return
        self.is_full = True
        with open(self.shared / "filler", "ab", buffering=0) as file, \
                contextlib.suppress(OSError):
            while file.write(b"x" * 512):
                pass

    def empty_disk(self):
        (self.shared / "filler").unlink(missing_ok=True)
        self.is_full = False

    # -------------------------------------------------------------------------------- the end

    def crash(self):
        """The program is killed; what it had warned of may be lost."""
        if self.random.random() < 0.3:
            self.program.act("type " + self.call()[:5])
        self.stop(signal.SIGKILL)
        self.go_on()

    def terminate(self):
        """The program ends in good order: with a sound disk it loses nothing at all."""
        if self.random.random() < 0.7:
            self.mend_calls()
            self.empty_disk()
        self.stop(self.random.choice((signal.SIGTERM, signal.SIGHUP)))
        self.go_on()

    def stop(self, number):
        warned = bool(self.operator.warning())
        sound = not self.broken and not self.is_full
        self.say(f"signal {number}" + (", warned" if warned else ""))
        self.program.send_signal(number)
        self.program.wait(30)
        self.mend_calls()
        self.empty_disk()
        self.account(warned and (number == signal.SIGKILL or not sound))

    def account(self, warned):
        """Looks into the file after the end of the program."""
        journal = self.journal
        needed = journal.safe if warned else len(journal.contacts)
        complaints = journal.compare(self.operator.log, needed)
        if complaints:
            raise AssertionError("; ".join(complaints))
        length = self.operator.log.stat().st_size
        there = max(0, round(length / 60) - 1) if length > 26 else 0
        if there < len(journal.contacts):
            self.reported += len(journal.contacts) - there
            self.say(f"reported, and not on the disk: {len(journal.contacts) - there}")
            del journal.contacts[there:]
        for number in range(len(journal.contacts) + 1, there + 1):
            self.say(f"the killed contact {number} is back")
            journal.contacts.append(journal.ghosts[number])
            self.killed -= 1
        journal.ghosts.clear()
        journal.safe = len(journal.contacts)

    def go_on(self):
        operator, program = self.operator, self.program
        operator.start(recover=True if self.saved is None else None)
        if self.saved is not None:
            refusal = operator.open_log(self.saved)
            assert refusal is None, f"the log does not open again: {refusal}"
        program.until(lambda: operator.next_number() == len(self.journal.contacts) + 1,
                      f"{len(self.journal.contacts)} contacts are not there again")

    def leave_and_come_back(self):
        if self.operator.warning() or self.broken or self.is_full:
            return
        target = self.saved or self.shared / "exit.ZRT"
        self.operator.exit(save=None if self.saved else target)
        self.saved = target
        self.account(False)
        self.go_on()

    def second_copy(self):
        """Another copy, of another folder, tries the same log."""
        if self.saved is None or self.broken:
            return
        home = self.work / "second"
        second = Program(home, say=self.say)
        try:
            other = Operator(second, say=lambda text: self.say("  second copy: " + text))
            other.start()
            if other.open_log(self.saved) is None:
                raise AssertionError("a second copy has opened the same log")
        finally:
            second.remove()
            shutil.rmtree(home)

    EVENTS = ((wipe, 6), (change_band, 10), (change_mode, 6), (kill_last, 5), (save_as, 8),
              (break_calls, 10), (mend_calls, 10), (damage, 5), (fill_disk, 6), (empty_disk, 4),
              (crash, 3), (terminate, 3), (leave_and_come_back, 2), (second_copy, 2))

    def play(self):
        operator = self.operator
        operator.start_log()
        while self.accepted < self.wanted:
            if self.random.random() < 0.45:
                event = self.random.choices([e for e, _ in self.EVENTS],
                                            [w for _, w in self.EVENTS])[0]
                self.events[event.__name__] += 1
                self.say(f"-- {event.__name__}")
                event(self)
            else:
                self.contact()
        self.mend_calls()
        self.empty_disk()
        self.contact_that_counts()
        assert operator.warning() == "", operator.warning()
        if self.random.random() < 0.5:
            self.stop(signal.SIGKILL)
        else:
            target = self.saved or self.shared / "end.ZRT"
            operator.exit(save=None if self.saved else target)
            self.account(False)

    def summary(self):
        failed = Counter(line.split()[1] for line in self.program.recorded()
                         if line.startswith("FAILED"))
        return (f"{self.accepted} contacts accepted: {len(self.journal.contacts)} in the file, "
                f"{self.killed} taken back by the operator, {self.reported} reported as not on the "
                f"disk; calls that failed: {dict(failed) or 'none'}; events: {dict(self.events)}")

    def remove(self):
        self.program.remove()
        shutil.rmtree(self.work, ignore_errors=True)


class SmallDisk(Attack):
    """Borrows the mounts of the attacks."""

    def runTest(self):
        pass


def run(sessions, seed, contacts):
    logs = Path(os.environ.get("ZRT_ATTACK_LOGS", "."))
    logs.mkdir(parents=True, exist_ok=True)
    losses = 0
    with open(logs / f"random_sessions_{seed}.log", "w", buffering=1) as protocol:
        def say(text, loud=False):
            print(text, file=protocol)
            if loud:
                print(text, flush=True)

        for number in range(seed, seed + sessions):
            losses += not play_one(number, contacts, number % 2 == 0, say)
        say(f"{sessions} sessions of {contacts} contacts, {losses} with a loss or a refusal", True)
    return 1 if losses else 0


def play_one(seed, contacts, small, say):
    """True when nothing was lost."""
    mounts = SmallDisk()
    disk = None
    if small:
        mounts.setUp()
        try:
            disk = mounts.tmpfs("64k")
        except Exception as skip:
            say(f"session {seed}: without the 64k disk: {skip}", True)
    session = Session(seed, contacts, say, disk)
    try:
        session.play()
        assert session.accepted == (len(session.journal.contacts) + session.killed
                                    + session.reported), "the sum is wrong"
        say(f"session {seed}: {session.summary()}", True)
        return True
    except Exception as error:
        say(traceback.format_exc())
        state = session.program.state() if session.program.alive() else "the program has ended"
        say(f"session {seed} FAILED: {type(error).__name__}: {error}; {state}; {session.summary()}",
            True)
        return False
    finally:
        session.remove()
        mounts.doCleanups()
