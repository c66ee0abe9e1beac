"""One log, several hands: other copies of the program, other users, other processes, media that go."""

import os
import signal
import subprocess
import unittest

from attack_kit import AS_NOBODY, NOBODY, Attack, NeverCame, cut


class TwoCopies(Attack):
    """Two copies with folders of their own, and one log file."""

    def second_copy(self):
        second = self.operator("b")
        second.start()
        return second

    def assert_refused(self, first, second, path):
        refusal = second.open_log(path)
        if refusal is None:  # then show what comes of it
            second.journal = first.journal
            second.log = first.log
            first.journal.contest = second.journal.contest
            second.log_contact("DL1ABC", "599 SECOND")
            first.log_contact("K9ZZ", "599 FIRST")
            second.log_contact("DL2ABC", "599 SECOND")
            self.assert_kept(first.journal, first.log)
        self.assertIsNotNone(refusal, "a second copy has opened the same log")
        return refusal

    def test_second_copy_does_not_open_a_log_that_is_open(self):
        log = self.shared / "s.ZRT"
        first = self.open_log(3, saved=log)
        refusal = self.assert_refused(first, self.second_copy(), log)
        first.log_some(2)
        self.assert_kept(first.journal, log)
        names = (str(first.program.pid), os.environ.get("USER", "root"), "root",
                 str(first.program.folder), os.uname().nodename)
        self.assertTrue(any(name in refusal for name in names), f"who has it? {refusal!r}")

    def test_second_copy_does_not_open_it_by_another_name(self):
        log = self.shared / "s.ZRT"
        first = self.open_log(3, saved=log)
        (self.shared / "soft.ZRT").symlink_to(log)
        os.link(log, self.shared / "hard.ZRT")
        for other in ("soft.ZRT", "hard.ZRT"):
            with self.subTest(other):
                second = self.operator(other)
                second.start()
                refusal = second.open_log(self.shared / other)
                self.assertIsNotNone(refusal, "a second copy has opened the same log")

    def test_second_copy_does_not_save_over_a_log_that_is_open(self):
        log = self.shared / "s.ZRT"
        first = self.open_log(3, saved=log)
        second = self.open_log(2, "b")
        second.program.act("menu mnuFileSave")
        second.program.answer_file(log, "Save Current Log As")
        self.through_boxes(second.program, "Ok", "Yes")
        first.log_some(2)
        self.assert_kept(first.journal, log)
        self.assert_kept(second.journal, second.program.temporary_log)

    def test_log_is_free_when_the_first_copy_was_killed_or_has_opened_another(self):
        log = self.shared / "s.ZRT"
        first = self.open_log(3, saved=log)
        second = self.second_copy()
        first.program.kill()
        self.assertIsNone(second.open_log(log))
        second.journal = first.journal
        second.log = log
        second.log_some(1)
        second.program.act("menu mnuFileNew")
        second.program.until(lambda: second.program.box() is not None
                             or second.program.window() == "Choose Contest", "no New")
        if second.program.box() is not None:
            second.program.answer("Yes")
        second.program.until(lambda: second.program.window() == "Choose Contest", "no chooser")
        second.program.act("list lstContest 12", "click cmdOK")
        third = self.operator("c")
        third.start()
        self.assertIsNone(third.open_log(log))
        self.assertEqual(third.next_number(), 5)


class OwnersOfTheLock(Attack):
    """The lock of the program's folder, in files of other owners."""

    WRONG_WORDS = "already|another|second cop|is running|abnormally"

    def lock_file(self, program):
        locks = [path for path in program.folder.iterdir() if "lock" in path.name.lower()]
        self.assertEqual(len(locks), 1, "the lock file of the program's folder")
        return locks[0]

    def give_to_nobody(self, folder):
        subprocess.run(["chown", "-R", f"{NOBODY}:{NOBODY}", folder], check=True)

    def as_nobody(self, folder):
        """A copy of another user in the same folder."""
        other = self.operator("nobody", wrapper=AS_NOBODY, filled=False)
        home = other.program.home
        home.mkdir()
        (home / "zrtlog").symlink_to(folder)
        os.chown(home, NOBODY, NOBODY)
        os.chown(other.program.pipes, NOBODY, NOBODY)
        return other

    def test_second_copy_of_another_user_leaves_the_live_log_alone(self):
        self.need_root()
        first = self.open_log(3)
        folder = first.program.folder
        lock = self.lock_file(first.program)
        for name in (folder, *folder.iterdir()):
            if name != lock:
                os.chown(name, NOBODY, NOBODY)
        second = self.as_nobody(folder)
        for mode in (0o644, 0o600):
            with self.subTest(oct(mode)):
                lock.chmod(mode)
                second.program.start()
                try:
                    status = self.ends(second.program, "No", "Ok", seconds=10)
                    self.assertIsNotNone(status, "the second copy runs")
                finally:
                    second.program.kill()
                first.log_some(1)
                self.assert_kept(first.journal, first.log)

    def test_lock_file_that_root_has_left_keeps_nobody_out(self):
        self.need_root()
        first = self.open_log(2)
        lock = self.lock_file(first.program)
        first.program.kill()
        self.give_to_nobody(first.program.folder)
        os.chown(lock, 0, 0)
        lock.chmod(0o644)
        other = self.as_nobody(first.program.folder)
        other.program.start()
        self.assertIsNone(self.ends(other.program, "Yes", "Ok"), "it does not start")
        self.assertEqual(other.next_number(), 3, "the log is not recovered")
        # And while it runs, a second copy is one.
        third = self.operator("a2", filled=False)
        third.program.home.mkdir()
        (third.program.home / "zrtlog").symlink_to(first.program.folder)
        third.program.start()
        self.assertIsNotNone(self.ends(third.program, "Ok", "No"), "two copies run in one folder")

    def test_error_of_the_lock_that_is_no_lock_is_told(self):
        first = self.open_log(2)
        lock = self.lock_file(first.program)
        first.program.kill()
        lock.unlink()
        lock.mkdir()
        first.program.start()
        self.assertNotRegex(first.program.wait_for_box().lower(), self.WRONG_WORDS)
        first.program.kill()
        lock.rmdir()
        for rule in ("flock:*lock*:1+:ENOLCK", "open:*lock*:1+:EIO"):
            with self.subTest(rule):
                first.program.fail(rule)
                first.program.start()
                try:
                    self.assertNotRegex(first.program.wait_for_box().lower(), self.WRONG_WORDS)
                finally:
                    first.program.kill()


class OtherProcesses(Attack):
    """Another process cuts or deletes the log; all its contacts are in memory."""

    def damages(self, log):
        def swap():
            (log.parent / "other").write_bytes(b"x" * 500)
            (log.parent / "other").rename(log)

        return {"cut to two contacts": lambda: cut(log, 180),
                "cut in a record": lambda: cut(log, 200), "emptied": lambda: cut(log, 0),
                "deleted": log.unlink, "replaced": swap}

    def check_damages(self, act, saved=False):
        names = list(self.damages(self.work))
        for number, name in enumerate(names):
            with self.case(name):
                target = self.shared / f"log{number}.ZRT" if saved else None
                operator = self.open_log(5, f"a{number}", saved=target)
                self.damages(operator.log)[name]()
                act(operator, self.shared / f"saved{number}.ZRT")
                self.assert_kept(operator.journal, operator.log)

    def test_damaged_temporary_log_then_save_as(self):
        def save(operator, path):
            self.assertTrue(operator.save_as(path))

        self.check_damages(save)

    def test_damaged_temporary_log_saved_at_exit(self):
        def leave(operator, path):
            operator.exit(save=path)

        self.check_damages(leave)

    def test_damaged_named_log_at_exit(self):
        def leave(operator, _):
            program = operator.program
            program.act("menu mnuFileExit")
            while program.alive():
                try:
                    program.wait_for_box()
                    program.answer_any("Yes", "Retry", "Ok")
                except Exception as error:
                    self.say(f"end: {error}")
                    break
            program.wait()

        self.check_damages(leave, saved=True)

    def test_damaged_log_then_the_next_contact(self):
        self.check_damages(lambda operator, _: operator.log_some(1))
        self.check_named(lambda operator, _: operator.log_some(1))

    def check_named(self, act):
        operator = self.open_log(5, "named", saved=self.shared / "n.ZRT")
        operator.log.unlink()
        act(operator, None)
        self.assert_kept(operator.journal, operator.log)

    def test_log_written_over_in_the_middle_then_save_as(self):
        operator = self.open_log(5)
        with open(operator.log, "r+b") as file:
            file.seek(125)
            file.write(b"\0" * 40)
        self.assertTrue(operator.save_as(self.shared / "s.ZRT"))
        self.assert_kept(operator.journal, operator.log)

    def test_damaged_log_then_new_or_open_keeps_the_contacts(self):
        operator = self.open_log(5, saved=self.shared / "old.ZRT")
        program = operator.program
        cut(operator.log, 180)
        program.act("menu mnuFileNew")
        program.wait_for_box("already open")
        program.answer("Yes")
        self.assert_kept(operator.journal, operator.log)

    def test_damaged_log_then_sigterm(self):
        operator = self.open_log(5, saved=self.shared / "old.ZRT")
        operator.log.unlink()
        operator.program.send_signal(signal.SIGTERM)
        operator.program.wait(20)
        self.assert_kept(operator.journal, operator.log)


class Medium(Attack):
    """The disk of a named log goes away and does not come back."""

    def rescue(self, operator, gone):
        """Two contacts go on after the loss; then the log is saved elsewhere."""
        program = operator.program
        for call in ("DL1AA", "DL2BB"):
            self.assertTrue(operator.log_contact(call, "599 GONE"))
        warning = operator.warning()
        self.assertTrue(warning, "no word about contacts that are not on the disk")
        count = len(operator.journal.contacts)
        self.assertRegex(warning, rf"\b({count}|2)\b", "how many contacts stand nowhere?")
        target = self.shared / "rescued.ZRT"
        try:
            saved = operator.save_as(target)
        except NeverCame as error:
            self.fail(f"no way out: {error}")
        self.assertTrue(saved, f"not saved; {program.state()}")
        self.assert_kept(operator.journal, target)
        operator.log_some(1)
        self.assertEqual(operator.warning(), "")
        self.assert_kept(operator.journal, target)
        operator.exit()
        self.assert_kept(operator.journal, target)
        self.assertFalse(gone.exists(), "the lost file came back")

    def test_unmounted_medium(self):
        disk = self.tmpfs("1m")
        operator = self.open_log(3, saved=disk / "s.ZRT")
        subprocess.run(["umount", "-l", disk], check=True)
        disk.chmod(0o755)
        disk.rmdir()
        self.rescue(operator, disk / "s.ZRT")

    def test_medium_that_answers_with_errors(self):
        stick = self.shared / "stick"
        stick.mkdir()
        operator = self.open_log(3, saved=stick / "s.ZRT")
        operator.program.fail(",".join(f"{call}:{stick}*:1+:EIO" for call in (
            "open", "pwrite", "pread", "write", "fdatasync", "fsync", "rename", "unlink")))
        for call in ("DL1AA", "DL2BB"):
            self.assertTrue(operator.log_contact(call, "599 GONE"))
        self.assertTrue(operator.warning())
        try:
            saved = operator.save_as(self.shared / "rescued.ZRT")
        except NeverCame as error:
            self.fail(f"no way out: {error}")
        self.assertTrue(saved)
        self.assert_kept(operator.journal, self.shared / "rescued.ZRT")
        operator.log_some(1)
        self.assert_kept(operator.journal, self.shared / "rescued.ZRT")


if __name__ == "__main__":
    unittest.main()
