"""Signals, limits, and an X server that dies."""

import os
import resource
import shutil
import signal
import subprocess
import unittest

from attack_kit import Attack

LOG_CALLS_FAIL = "pwrite:*.zrb:1+:EIO,write:*.zrb:1+:EIO,open:*.zrb:1+:EIO"


class Signals(Attack):
    def unwritten(self, name="a", **options):
        """Five contacts; the last two wait for a disk that has just come back."""
        operator = self.open_log(3, name, **options)
        operator.program.fail(LOG_CALLS_FAIL)
        for call in ("DL1AA", "DL2BB"):
            self.assertTrue(operator.log_contact(call, "599 LATE"))
        self.assertTrue(operator.warning(), "no word about contacts that are not on the disk")
        operator.program.fail("")
        return operator

    def settings_mark(self, program):
        status = (program.folder / "zrtlog125.ini").stat()
        return status.st_ino, status.st_mtime_ns

    def check_end(self, number):
        operator = self.unwritten()
        before = self.settings_mark(operator.program)
        operator.program.send_signal(number)
        status = operator.program.wait(20)
        self.say(f"exit status {status}")
        self.assertIn(status, (0, 128 + number, -number))
        self.assert_kept(operator.journal, operator.program.temporary_log)
        self.assertNotEqual(self.settings_mark(operator.program), before, "settings not written")
        operator.program.start()  # the log is there for recovery
        operator.program.wait_for_box("do you want to open it"[:0])
        operator.program.answer("Yes")
        operator.program.until(lambda: operator.next_number() == 6, "not recovered")

    def test_sigterm_writes_contacts_and_settings_first(self):
        self.check_end(signal.SIGTERM)

    def test_sighup_writes_contacts_and_settings_first(self):
        self.check_end(signal.SIGHUP)

    def test_sigint_writes_contacts_and_settings_first(self):
        self.check_end(signal.SIGINT)

    def test_sigterm_while_a_box_or_dialog_is_open(self):
        for open_it in ("menu mnuFileExit", "menu mnuFileSave", "menu mnuFileNew"):
            with self.case(open_it):
                operator = self.unwritten(open_it.split()[-1])
                operator.program.act(open_it)
                operator.program.send_signal(signal.SIGTERM)
                operator.program.wait(20)
                self.assert_kept(operator.journal, operator.program.temporary_log)

    def test_sigterm_ends_though_the_disk_stays_broken(self):
        operator = self.unwritten()
        operator.program.fail(LOG_CALLS_FAIL)
        operator.program.send_signal(signal.SIGTERM)
        status = operator.program.wait(20)
        self.assertIn(status, (0, 1, 128 + signal.SIGTERM, -signal.SIGTERM))
        self.assert_kept(operator.journal, operator.program.temporary_log,
                         needed=operator.journal.safe)

    def test_sigpipe_is_survived(self):
        operator = self.open_log(2)
        operator.program.send_signal(signal.SIGPIPE)
        operator.log_some(2)
        self.assert_alive(operator.program)
        self.assert_kept(operator.journal, operator.log)

    def test_limit_of_the_file_size_is_survived(self):
        operator = self.operator()
        operator.program.environment["ZRT_FAIL_RECORD"] = ""  # the limit would end it, too
        operator.start_log()
        operator.log_some(3)
        resource.prlimit(operator.program.pid, resource.RLIMIT_FSIZE,
                         (4 * 60 + 10, resource.RLIM_INFINITY))
        for call in ("DL1AA", "DL2BB"):
            self.assertTrue(operator.log_contact(call, "599 LARGE"))
        self.assert_alive(operator.program)
        self.assertTrue(operator.warning(), "no word about contacts that are not on the disk")
        resource.prlimit(operator.program.pid, resource.RLIMIT_FSIZE,
                         (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
        self.assertTrue(operator.log_contact("DL3CC", "599 ROOM"))
        self.assertEqual(operator.warning(), "")
        self.assert_kept(operator.journal, operator.log)

    def start_server(self):
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0",
                                   "1366x768x24", "-nolisten", "tcp"], pass_fds=[writing],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        os.close(writing)
        with open(reading) as numbers:
            return server, ":" + numbers.readline().strip()

    def test_loss_of_the_x_server_writes_contacts_and_settings_first(self):
        for tool in ("Xvfb", "openbox"):
            if shutil.which(tool) is None:
                self.skipTest(f"there is no {tool}")
        server, display = self.start_server()
        manager = subprocess.Popen(["openbox"], env={**os.environ, "DISPLAY": display},
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(manager.wait)
        self.addCleanup(manager.kill)
        os.environ["DISPLAY"] = display
        operator = self.unwritten(platform="xcb")
        before = self.settings_mark(operator.program)
        server.kill()
        operator.program.wait(20)
        self.assert_kept(operator.journal, operator.program.temporary_log)
        self.assertNotEqual(self.settings_mark(operator.program), before, "settings not written")


if __name__ == "__main__":
    unittest.main()
