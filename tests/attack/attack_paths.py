"""Names and kinds of files: side files, links, modes, pipes, devices, giants."""

import os
import stat
import unittest

from attack_kit import Attack, cut

MOST_MEMORY_KB = 600_000  # of a program that has read nothing large


class SideFiles(Attack):
    """Files that stand beside the log while it is written."""

    NAMES = ("s.ZRT.new", "s.ZRT.tmp", "s.ZRT~", "s.ZRT.bak")

    def write_in_all_ways(self, operator, log):
        """Save As, a contact, a rebuilt log, settings, the exit."""
        self.assertTrue(operator.save_as(log))
        operator.log_some(1)
        cut(log, 120)
        operator.log_some(1)
        log.unlink()
        operator.log_some(1)
        operator.exit()
        self.assert_kept(operator.journal, log)

    def test_own_files_beside_the_log_stay_as_they_are(self):
        operator = self.open_log(3)
        own = [self.shared / name for name in self.NAMES]
        own += [operator.program.folder / f"{name}.new" for name in ("zrtlog125.ini", "!temp%!!.zrb")]
        for path in own:
            path.write_text("mine\n")
        self.write_in_all_ways(operator, self.shared / "s.ZRT")
        for path in own:
            self.assertTrue(path.exists(), f"{path.name} is gone")
            self.assertEqual(path.read_bytes(), b"mine\n", f"{path.name} was written over")

    def test_planted_links_are_not_followed(self):
        operator = self.open_log(3)
        victims = []
        for folder, names in ((self.shared, self.NAMES),
                              (operator.program.folder, ("zrtlog125.ini.new", "!temp%!!.zrb.new"))):
            for name in names:
                victim = self.work / f"victim {name}"
                victim.write_text("not yours\n")
                (folder / name).symlink_to(victim)
                victims.append(victim)
        self.write_in_all_ways(operator, self.shared / "s.ZRT")
        for victim in victims:
            self.assertEqual(victim.read_bytes(), b"not yours\n", f"{victim.name} was written over")
        self.assertFalse((self.shared / "s.ZRT").is_symlink())

    def test_linked_log_and_settings_stay_links_and_keep_their_modes(self):
        operator = self.operator()
        real = self.work / "real"
        real.mkdir()
        settings = operator.program.folder / "zrtlog125.ini"
        settings.rename(real / "settings.ini")
        (real / "settings.ini").chmod(0o600)
        settings.symlink_to(real / "settings.ini")
        operator.start_log()
        operator.log_some(3)
        log = self.shared / "s.ZRT"
        self.assertTrue(operator.save_as(log))
        operator.exit()
        log.rename(real / "log.ZRT")
        (real / "log.ZRT").chmod(0o640)
        log.symlink_to(real / "log.ZRT")
        operator.start()
        operator.open_recent()
        cut(real / "log.ZRT", 120)
        operator.log_some(1)
        (real / "log.ZRT").write_bytes(b"")
        operator.log_some(1)
        operator.exit()
        self.assert_kept(operator.journal, real / "log.ZRT")
        self.assertTrue(log.is_symlink(), "the log is no link any more")
        self.assertTrue(settings.is_symlink(), "the settings are no link any more")
        self.assertEqual(stat.S_IMODE((real / "log.ZRT").stat().st_mode), 0o640)
        self.assertEqual(stat.S_IMODE((real / "settings.ini").stat().st_mode), 0o600)

    def test_save_as_over_a_link_keeps_the_link(self):
        operator = self.open_log(3)
        target = self.work / "real.ZRT"
        target.write_bytes(b"old")
        target.chmod(0o640)
        log = self.shared / "s.ZRT"
        log.symlink_to(target)
        operator.program.act("menu mnuFileSave")
        operator.program.answer_file(log, "Save Current Log As")
        operator.program.wait_for_box("already exists")
        operator.program.answer("Ok")
        self.assert_kept(operator.journal, log)
        self.assertTrue(log.is_symlink(), "the log is no link any more")
        self.assertEqual(stat.S_IMODE(target.stat().st_mode), 0o640)

    def test_names_of_255_characters_work(self):
        log = self.shared / ("n" * 251 + ".ZRT")
        operator = self.open_log(3)
        self.assertTrue(operator.save_as(log))
        operator.log_some(1)
        log.unlink()
        operator.log_some(1)
        operator.exit()
        self.assert_kept(operator.journal, log)


class KindsOfFiles(Attack):
    """Things that are no files, and files that are too large, in place of a log."""

    def memory_kb(self, program):
        with open(f"/proc/{program.pid}/status") as status:
            return next(int(line.split()[1]) for line in status if line.startswith("VmHWM"))

    def things(self):
        fifo = self.shared / "fifo.ZRT"
        os.mkfifo(fifo)
        device = self.shared / "device.ZRT"
        device.symlink_to("/dev/zero")
        terminal = self.shared / "terminal.ZRT"
        terminal.symlink_to("/dev/tty")
        folder = self.shared / "folder.ZRT"
        folder.mkdir()
        giant = self.shared / "giant.ZRT"
        with open(giant, "wb") as file:
            file.write(b"\0\0\0\0\1\0" + b" " * 10 + b"\0\0\0\0" + b"GEN   ")
            file.truncate(1 << 40)
        return [fifo, device, terminal, folder, giant]

    def test_log_to_open_that_is_no_log(self):
        for thing in self.things():
            with self.case(thing.name):
                operator = self.operator(thing.stem)
                program = operator.program
                settings = program.folder / "zrtlog125.ini"
                text = settings.read_text()
                key = "RecentFile1="
                self.assertIn(key, text)
                settings.write_text(text.replace(key, f"{key}{thing}\nOld", 1))
                operator.start()
                text = operator.open_recent()
                self.assertTrue(text, "it was opened")
                self.assertIsNone(operator.next_number(), f"it was opened; the box says {text!r}")
                self.assertLess(self.memory_kb(program), MOST_MEMORY_KB)
                operator.new_log()
                operator.log_some(1)
                self.assert_kept(operator.journal, operator.log)

    def test_thing_in_place_of_the_temporary_log(self):
        for thing in self.things():
            with self.case(thing.name):
                operator = self.operator(thing.stem)
                program = operator.program
                thing.rename(program.temporary_log)
                program.start()
                self.assertIsNone(self.ends(program, "Cancel", "No", "Ok", seconds=20))
                self.assertLess(self.memory_kb(program), MOST_MEMORY_KB)
                try:
                    operator.new_log()
                except Exception as error:  # a refusal in a box is as good
                    self.say(f"no new log: {error}")
                    self.assertIsNotNone(program.box(), str(error))
                    continue
                operator.log_some(2)
                self.assert_kept(operator.journal, operator.log)

    def test_data_file_that_is_a_pipe(self):
        for name in ("cty.dat", "master.scp", "callmtch.dat", "ZRTLOG126.DAT", "zrtlog125.ini"):
            with self.case(name):
                operator = self.operator(name)
                path = operator.program.folder / name
                path.unlink()
                os.mkfifo(path)
                operator.program.start()
                status = self.ends(operator.program, "Ok", "Cancel", "No", seconds=20)
                self.assertIn(status, (None, 0, 1))


if __name__ == "__main__":
    unittest.main()
