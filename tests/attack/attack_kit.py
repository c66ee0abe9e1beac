"""What the attacks share: a home that goes away, a log of the attack, mounts, other users."""

import contextlib
import ctypes
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from session import Gone, NeverCame, Operator, Program

CLONE_NEWNS, CLONE_NEWUSER = 0x00020000, 0x10000000
NOBODY = 65534
AS_NOBODY = ("setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups")


class Attack(unittest.TestCase):
    """One test is one attack. Its log stands in the build folder: what failed, what the program
    said, what was found."""

    def setUp(self):
        name = self._testMethodName.removeprefix("test_")
        self.work = Path(tempfile.mkdtemp(prefix="zrtlog-attack-"))
        self.work.chmod(0o755)
        self.addCleanup(shutil.rmtree, self.work, ignore_errors=True)
        logs = Path(os.environ.get("ZRT_ATTACK_LOGS", self.work))
        logs.mkdir(parents=True, exist_ok=True)
        self.protocol = open(logs / f"{name}.log", "w", buffering=1)
        self.addCleanup(self.protocol.close)
        self.shared = self.work / "shared"
        self.shared.mkdir()
        self.programs = []

    def say(self, text):
        print(text, file=self.protocol)

    @contextlib.contextmanager
    def case(self, name):
        """A subtest whose programs end with it."""
        self.say(f"--- {name}")
        first = len(self.programs)
        with self.subTest(name):
            try:
                yield
            finally:
                for program in self.programs[first:]:
                    if program.alive():
                        program.kill()

    def program(self, name="a", **options):
        """A program with a folder of its own; it is killed at the end."""
        program = Program(self.work / name.replace("+", "on"), under=(self.shared,), say=self.say, **options)
        self.programs.append(program)
        self.addCleanup(program.remove)
        self.addCleanup(lambda: self.keep_record(program))
        return program

    def keep_record(self, program):
        """The record of the calls on files comes into the log of the attack."""
        lines = program.recorded()
        self.say(f"--- calls on files of {program.home.name}, {len(lines)}; those that failed:")
        for line in lines:
            if line.startswith(("FAILED", "KILLED", "rules")):
                self.say("  " + line)

    def operator(self, name="a", contest="Generic", retries=0, **options):
        return Operator(self.program(name, **options), say=self.say, contest=contest,
                        retries=retries)

    def open_log(self, count, name="a", saved=None, **options):
        """An operator with so many contacts in the log."""
        operator = self.operator(name, **options)
        operator.start_log()
        operator.log_some(count)
        if saved is not None:
            self.assertTrue(operator.save_as(saved), operator.program.state())
        return operator

    def assert_kept(self, journal, path, needed=None):
        complaints = journal.compare(path, needed)
        self.say(f"{path}: {len(journal.contacts)} contacts in the journal, "
                 f"complaints: {complaints or 'none'}")
        self.assertEqual(complaints, [])

    def assert_alive(self, program):
        self.assertTrue(program.alive(), f"it has ended: {program.process.poll()}")

    def through_boxes(self, program, *buttons, seconds=60):
        """Answers boxes until the main window has the keyboard; their texts. `Gone` when the
        program ends instead."""
        texts = []

        def at_rest():
            if (text := program.box()) is not None:
                texts.append(text)
                self.say(f"box {program.window()!r}: {text!r}")
                program.answer_any(*buttons)
                return False
            return program.window() == "ZRTLOG"

        program.until(at_rest, "no rest", seconds)
        return texts

    def ends(self, program, *buttons, seconds=60):
        """Like through_boxes, for a start that may end; the exit status or none."""
        try:
            self.boxes = self.through_boxes(program, *buttons, seconds=seconds)
            return None
        except Gone:
            return program.wait()

    # ---------------------------------------------------------------------- mounts and owners

    def need_root(self):
        if os.geteuid() != 0:
            self.skipTest("only root can give a file another owner")
        if shutil.which("setpriv") is None:
            self.skipTest("there is no setpriv to run the program as another user")

    def tmpfs(self, size="64k", name="disk"):
        """A small disk, in a name space of this process: it goes when the test does."""
        enter_mount_name_space(self)
        folder = self.work / name
        folder.mkdir()
        mount = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size},mode=0777", "tmpfs",
                                folder], capture_output=True, text=True)
        if mount.returncode != 0:
            self.skipTest(f"may not mount here: {mount.stderr.strip()}")
        self.addCleanup(subprocess.run, ["umount", "-l", folder], capture_output=True)
        return folder

    def resize(self, folder, size):
        subprocess.run(["mount", "-o", f"remount,size={size}", folder], check=True)


_in_name_space = False


def enter_mount_name_space(test):
    """Mounts of this process are its own. Without root it becomes root of a name space of users,
    where the system allows that."""
    global _in_name_space
    if _in_name_space:
        return
    libc = ctypes.CDLL(None, use_errno=True)
    user, group = os.geteuid(), os.getegid()
    flags = CLONE_NEWNS if user == 0 else CLONE_NEWNS | CLONE_NEWUSER
    if libc.unshare(flags) != 0:
        test.skipTest(f"may not mount here: unshare: {os.strerror(ctypes.get_errno())}")
    if user != 0:
        for name, line in (("setgroups", "deny"), ("uid_map", f"0 {user} 1"),
                           ("gid_map", f"0 {group} 1")):
            Path("/proc/self", name).write_text(line)
    subprocess.run(["mount", "--make-rprivate", "/"], check=True, capture_output=True)
    _in_name_space = True


def cut(path, length):
    """As another process cuts a file."""
    os.truncate(path, length)


__all__ = ["Attack", "AS_NOBODY", "Gone", "NOBODY", "NeverCame", "Operator", "Program", "cut"]
