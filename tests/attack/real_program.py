"""The real program in a process of its own, worked by its keyboard, with calls of libc that fail.

The keyboard is the plug-in of tests/qt (test_keys_plugin.h tells its commands), the failing calls
are those of fail_calls.cpp. What to run stands in the environment, set by CTest:
ZRT_PROGRAM, ZRT_TEST_PLUGINS, ZRT_SHIPPED_DATA, ZRT_FAIL_CALLS, ZRT_PRELOAD_FIRST.
"""

import os
import select
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

PATIENCE = 30  # seconds; a machine under load is slow, not dead
TEMPORARY_LOG = "!temp%!!.zrb"


class Gone(Exception):
    """The program has ended."""


class NeverCame(Exception):
    """What was waited for did not happen."""


def shipped_data():
    return Path(os.environ["ZRT_SHIPPED_DATA"])


def fill_folder(folder):
    """The program's folder as after a first start."""
    folder.mkdir(parents=True, exist_ok=True)
    for file in shipped_data().iterdir():
        if file.is_file():
            shutil.copy(file, folder)


class Program:
    """`home` gets the program's folder; `under` are further folders whose files the record shows."""

    def __init__(self, home, under=(), say=print, platform="offscreen", wrapper=(), filled=True):
        self.home = Path(home)
        self.folder = self.home / "zrtlog"
        self.say = say
        self.platform = platform
        self.wrapper = list(wrapper)  # a command in front of the program's: another user, a limit
        self.process = None
        self.pipes = Path(tempfile.mkdtemp(prefix="zrtlog-keys-"))
        self.pipes.chmod(0o777)
        self.record = self.pipes / "record"
        self.under = [str(self.home), *map(str, under)]
        self.environment = {}
        self.faults = ""
        self.starts = 0
        if filled:
            fill_folder(self.folder)

    @property
    def temporary_log(self):
        return self.folder / TEMPORARY_LOG

    # ------------------------------------------------------------------------------ the process

    def start(self):
        self.starts += 1
        for name in ("in", "out"):
            path = self.pipes / name
            path.unlink(missing_ok=True)
            os.mkfifo(path)
            path.chmod(0o666)
        # Both ends for both ways: nobody waits for the other to come.
        self.keys = os.open(self.pipes / "in", os.O_RDWR)
        self.answers = os.open(self.pipes / "out", os.O_RDWR)
        self.buffer = b""
        preload = [os.environ.get("ZRT_PRELOAD_FIRST", ""), os.environ["ZRT_FAIL_CALLS"]]
        settings = {
            "HOME": str(self.home),
            "XDG_DATA_HOME": str(self.home),
            "QT_QPA_PLATFORM": self.platform,
            "QT_PLUGIN_PATH": os.environ["ZRT_TEST_PLUGINS"],
            "QT_QPA_GENERIC_PLUGINS": f"testkeys:{self.pipes}/in:{self.pipes}/out",
            "ASAN_OPTIONS": "detect_leaks=0",  # of Qt's, which is not ended in good order
            "LD_PRELOAD": " ".join(filter(None, preload)),
            "ZRT_FAIL_UNDER": ":".join(self.under),
            "ZRT_FAIL": self.faults,
            "ZRT_FAIL_FILE": str(self.pipes / "faults"),
            "ZRT_FAIL_RECORD": str(self.record),
            **self.environment,
        }
        # The wrapper itself must not be attacked.
        command = [*self.wrapper, "env", *(f"{key}={value}" for key, value in settings.items()),
                   os.environ["ZRT_PROGRAM"]]
        self.output = open(self.pipes / f"output{self.starts}", "wb")
        self.process = subprocess.Popen(command, stdout=self.output, stderr=self.output)

    @property
    def pid(self):
        return self.process.pid

    def alive(self):
        return self.process is not None and self.process.poll() is None

    def send_signal(self, number):
        self.process.send_signal(number)

    def kill(self):
        if self.alive():
            self.process.kill()
        return self.wait()

    def wait(self, seconds=PATIENCE):
        """The exit status, negative for a signal."""
        try:
            status = self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise NeverCame(f"the program has not ended in {seconds} s") from None
        self.close_pipes()
        return status

    def close_pipes(self):
        if self.keys is not None:
            os.close(self.keys)
            os.close(self.answers)
            self.output.close()
        self.keys = None

    def remove(self):
        if self.process is not None and self.keys is not None:
            self.kill()
        shutil.rmtree(self.pipes, ignore_errors=True)

    def last_words(self):
        """What the program has written to its output, without the remarks of Qt's platform."""
        lines = (self.pipes / f"output{self.starts}").read_text(errors="replace").splitlines()
        return "\n".join(line for line in lines if not line.startswith(("This plugin", "QStandard")))

    # ------------------------------------------------------------------------- failing calls

    def fail(self, rules=""):
        """From now on these calls fail, and no others."""
        self.faults = rules
        new = self.pipes / "faults.new"
        new.write_text(rules)
        new.chmod(0o644)
        new.rename(self.pipes / "faults")
        self.say(f"faults: {rules or 'none'}")

    def recorded(self):
        return self.record.read_text(errors="replace").splitlines() if self.record.exists() else []

    # ---------------------------------------------------------------------- keys and answers

    def read_line(self, seconds=PATIENCE):
        end = time.monotonic() + seconds
        while b"\n" not in self.buffer:
            ready, _, _ = select.select([self.answers], [], [], 0.02)
            if ready:
                self.buffer += os.read(self.answers, 4096)
            elif not self.alive():
                raise Gone(f"exit status {self.process.poll()}: {self.last_words()}")
            elif time.monotonic() > end:
                raise NeverCame(f"no answer in {seconds} s")
        line, self.buffer = self.buffer.split(b"\n", 1)
        return line.decode()

    def ask(self, question, seconds=PATIENCE):
        os.write(self.keys, (question + "\n").encode())
        return self.read_line(seconds).replace("\\n", "\n")

    def act(self, *lines):
        """Does the lines, and waits until all that they have set off is handled."""
        os.write(self.keys, "".join(line + "\n" for line in lines).encode())
        answers = []
        os.write(self.keys, b"sync\n")
        while (line := self.read_line()) != "ok":
            answers.append(line)
        errors = [answer for answer in answers if answer.startswith("error")]
        if errors:
            raise NeverCame(f"{lines}: {errors}")

    def until(self, holds, what, seconds=PATIENCE):
        """Asks until the answer is true: the program may be on its way there."""
        end = time.monotonic() + seconds
        while not (answer := holds()):
            if time.monotonic() > end:
                raise NeverCame(f"{what}; {self.state()}")
            time.sleep(0.005)  # leaves the processor to the program
        return answer

    def text(self, control):
        return self.ask("text " + control)

    def shown(self, control):
        """The text of a control that shows; empty when it is hidden."""
        return self.text(control) if self.ask("visible " + control) == "yes" else ""

    def window(self):
        return self.ask("window")

    def state(self):
        """For messages: what an operator would see."""
        try:
            return (f"window {self.window()!r}, focus {self.ask('focus')!r}, box {self.box()!r}, "
                    f"call {self.text('InData(0)')!r}, {self.text('QSONrLabel')!r}")
        except (Gone, NeverCame) as error:
            return f"no answer: {error}"

    # ------------------------------------------------------------------------- boxes, dialogs

    def box(self):
        """The text of the message box that is open, or none."""
        text = self.text("qt_msgbox_label")
        return None if text.startswith("error no object") else text

    def wait_for_box(self, part="", seconds=PATIENCE):
        text = self.until(self.box, f"no box comes with {part!r}", seconds)
        self.say(f"box {self.window()!r}: {text!r}")
        if part not in text:
            raise NeverCame(f"a box with {part!r}; it says {text!r}")
        return text

    def answer(self, button, ends=False):
        """Presses a button of the open box; `ends` when the program ends by it."""
        self.say(f"  answer: {button}")
        try:
            self.act("click " + button)
        except Gone:
            if not ends:
                raise

    def answer_any(self, *buttons):
        """Presses the first of these buttons that the open box has."""
        for button in buttons:
            if self.ask("visible " + button) == "yes":
                self.answer(button)
                return button
        raise NeverCame(f"a box with one of {buttons}; {self.state()}")

    def answer_file(self, path, title, ends=False):
        """Types a path into the file dialog; `ends` when the program ends behind it."""
        self.until(lambda: self.window() == title, f"file dialog {title!r}")
        self.say(f"file dialog {title!r}: {path}")
        try:
            self.act("key Ctrl+A", f"type {path}", "key Enter")
            self.until(lambda: self.window() != title, f"file dialog {title!r} stays open")
        except Gone:
            if not ends:
                raise
