"""Disks that are full, broken, or odd."""

import re
import signal
import unittest

from attack_kit import Attack, Gone, NeverCame
from real_program import shipped_data


def calls_on(lines, inode):
    """The recorded calls on one file, by its inode, as (name, offset, length, succeeded)."""
    calls = []
    for line in lines:
        match = re.match(rf"(FAILED )?(\w+) #{inode} .*?(?: \[(\d+)\+(\d+)\])? = (-?\d+)", line)
        if match:
            calls.append((match[2], int(match[3] or 0), int(match[4] or 0), int(match[5]) >= 0))
        elif re.match(rf"FAILED \w+ .*", line):
            calls.append((line.split()[1], 0, 0, False))
    return calls


class FirstStart(Attack):
    """The first start fills the program's folder."""

    def assert_no_half_file(self, folder):
        for file in shipped_data().iterdir():
            copy = folder / file.name
            if copy.exists() and file.suffix != ".ini":
                self.assertEqual(copy.read_bytes(), file.read_bytes(), f"half of {file.name}")

    def assert_complete(self, folder):
        for file in shipped_data().iterdir():
            self.assertTrue((folder / file.name).exists(), f"{file.name} is missing")
        self.assert_no_half_file(folder)

    def start_somehow(self, operator):
        operator.program.start()
        status = self.ends(operator.program, "Cancel", "Ok", "No", "Ignore")
        self.say(f"start: {'runs' if status is None else status}")
        if operator.program.alive():
            operator.program.kill()
        return status

    def test_full_disk_leaves_no_half_data_file(self):
        disk = self.tmpfs("64k", "a")
        operator = self.operator("a", filled=False)
        self.start_somehow(operator)
        self.assert_no_half_file(disk / "zrtlog")
        self.resize(disk, "16m")
        self.assertIsNone(self.start_somehow(operator))
        self.assert_complete(disk / "zrtlog")

    def test_each_full_size_leaves_no_half_data_file(self):
        for size in (8, 128, 400, 700):
            with self.case(f"{size}k"):
                disk = self.tmpfs(f"{size}k", f"a{size}")
                operator = self.operator(f"a{size}", filled=False)
                self.start_somehow(operator)
                self.assert_no_half_file(disk / "zrtlog")
                self.resize(disk, "16m")
                self.assertIsNone(self.start_somehow(operator))
                self.assert_complete(disk / "zrtlog")

    def test_kill_at_the_first_start_leaves_no_half_data_file(self):
        for call in ("pwrite", "write", "fdatasync", "rename"):
            for count in (1, 5):
                with self.case(f"{call} {count}"):
                    operator = self.operator(f"{call}{count}", filled=False)
                    operator.program.faults = f"{call}:{count}:KILL"
                    operator.program.start()
                    try:
                        self.through_boxes(operator.program, "Cancel", "Ok")
                        continue  # there is no such call
                    except Gone:
                        operator.program.wait()
                    operator.program.faults = ""
                    self.assert_no_half_file(operator.program.folder)
                    self.assertIsNone(self.start_somehow(operator))
                    self.assert_complete(operator.program.folder)

    def test_cut_data_file_is_renewed(self):
        for name in ("cty.dat", "master.scp", "ZRTLOG126.DAT"):
            with self.case(name):
                operator = self.operator(name)
                path = operator.program.folder / name
                path.write_bytes(path.read_bytes()[:4096])
                self.start_somehow(operator)
                self.assert_no_half_file(operator.program.folder)

    def test_settings_alone_are_no_filled_folder(self):
        operator = self.operator("a")
        for file in operator.program.folder.iterdir():
            if file.suffix != ".ini":
                file.unlink()
        self.start_somehow(operator)
        for name in ("cty.dat", "master.scp", "callmtch.dat", "ZRTLOG126.DAT"):
            self.assertTrue((operator.program.folder / name).exists(), f"{name} is missing")


class Folders(Attack):
    """Folders that can't be listed or synced."""

    def test_failing_readdir_does_not_end_the_program(self):
        for rule in ("readdir:1:EIO", "readdir:1+:EIO", "readdir:2+:EIO", "readdir:7+:EBADF",
                     "opendir:1+:EACCES"):
            for filled in (True, False):
                with self.case(f"{rule}, {'filled' if filled else 'first start'}"):
                    name = rule.replace(":", "-") + str(filled)
                    operator = self.operator(name, filled=filled)
                    operator.program.faults = rule
                    operator.program.start()
                    status = self.ends(operator.program, "Cancel", "Ok", "No")
                    self.assertIn(status, (None, 0, 1), operator.program.last_words())
                    if filled:
                        self.assertIsNone(status, "it does not start")
                        operator.new_log()
                        operator.log_some(3)
                        self.assert_kept(operator.journal, operator.log)
                        self.assertTrue(operator.save_as(self.shared / f"{name}.ZRT"))
                        self.assert_kept(operator.journal, operator.log)

    def test_folder_that_can_not_be_synced_is_no_failure(self):
        for error in ("EOPNOTSUPP", "EINVAL"):
            with self.case(error):
                operator = self.operator(error)
                folders = f"fsync:{operator.program.folder}:1+:{error}," \
                          f"fsync:{operator.program.folder}/:1+:{error}," \
                          f"fsync:{self.shared}:1+:{error}"
                operator.program.faults = folders
                operator.start_log()
                operator.log_some(2)
                self.assertEqual(operator.warning(), "")
                log = self.shared / f"{error}.ZRT"
                operator.program.act("menu mnuFileSave")
                operator.program.answer_file(log, "Save Current Log As")
                self.assertIsNone(operator.program.box())
                operator.log = log
                operator.log_some(1)
                log.unlink()  # written anew as a whole
                operator.log_some(1)
                self.assertEqual(operator.warning(), "")
                operator.exit()
                self.assert_kept(operator.journal, log)
                failed = [line for line in operator.program.recorded() if "FAILED fsync" in line]
                self.assertTrue(failed, "no folder was synced: the attack missed")


class Sync(Attack):
    """A sync that failed once: what it was to keep may be gone, the next one says nothing of it."""

    def fail_once(self, name, damage, rule, retries=0, saved=False):
        """Damages the log, lets one call fail at the next contact, logs one more. The operator, and
        the record behind the failure."""
        target = self.shared / f"{name}.ZRT" if saved else None
        operator = self.open_log(6, name, saved=target, retries=retries)
        damage(operator.log)
        operator.program.fail(rule)
        operator.log_contact("DL1AA", "599 ONE")
        operator.program.fail("")
        operator.log_contact("DL2AA", "599 TWO")
        self.assertEqual(operator.warning(), "")
        self.assert_kept(operator.journal, operator.log)
        lines = operator.program.recorded()
        last = max((i for i, line in enumerate(lines) if line.startswith("FAILED")), default=None)
        self.assertIsNotNone(last, "no call failed: the attack missed")
        return operator, lines[last + 1:]

    def assert_written_again(self, operator, record):
        written, synced = set(), set()
        for name, offset, length, succeeded in calls_on(record, operator.log.stat().st_ino):
            if name in ("pwrite", "write") and succeeded:
                written.update(range(offset, offset + length))
            if name in ("fdatasync", "fsync") and succeeded:
                synced |= written
        wanted = set(range(26)) | set(range(60, operator.log.stat().st_size))
        missing = sorted(wanted - synced)
        self.say(f"after the failed sync: {len(written)} bytes written, {len(missing)} of "
                 f"{len(wanted)} not written and synced")
        self.assertFalse(missing, f"{len(missing)} bytes from {missing[:1]} on not written again")

    def cut_to_two(self, log):
        with open(log, "r+b") as file:
            file.truncate(180)

    def test_failed_sync_of_a_rebuilt_log_writes_all_of_it_again(self):
        for saved in (False, True):
            for retries in (0, 1):
                with self.case(f"{'named' if saved else 'unnamed'}, {retries} retries"):
                    self.assert_written_again(*self.fail_once(
                        f"{saved}{retries}", lambda log: log.unlink(), "fdatasync:1:EIO", retries,
                        saved))

    def test_failed_sync_of_a_cut_log_writes_all_of_it_again(self):
        for retries in (0, 1):
            with self.case(f"{retries} retries"):
                self.assert_written_again(*self.fail_once(f"a{retries}", self.cut_to_two,
                                                          "fdatasync:1:EIO", retries))

    def test_failed_sync_of_a_folder_is_done_again(self):
        operator, record = self.fail_once("a", lambda log: log.unlink(), "fsync:1:EIO")
        folder = str(operator.program.folder)
        synced = [line for line in record if line.startswith("fsync") and line.endswith("= 0")
                  and folder in line]
        self.assertTrue(synced, "the new name of the log was never synced")


class FullDisk(Attack):
    """A disk of 64 KB."""

    def test_full_disk_under_a_named_log(self):
        disk = self.tmpfs("64k")
        operator = self.open_log(3, saved=disk / "s.ZRT")
        filler = disk / "filler"
        with open(filler, "wb", buffering=0) as file:
            try:
                while file.write(b"x" * 512):
                    pass
            except OSError:
                pass
        free = 100
        for _ in range(free):  # the page of the log has room for some
            n = operator.next_number()
            operator.log_contact(f"K1A{chr(65 + n % 26)}{chr(65 + n // 26)}", "599 FULL")
            if operator.warning():
                break
        self.assertTrue(operator.warning(), "the disk was never full")
        self.assert_kept(operator.journal, operator.log, needed=operator.journal.safe)
        filler.unlink()
        operator.log_contact("DL9ZZ", "599 ROOM")
        self.assertEqual(operator.warning(), "")
        self.assert_kept(operator.journal, operator.log)

    def test_save_as_to_a_full_disk_keeps_the_log(self):
        disk = self.tmpfs("64k")
        (disk / "filler").write_bytes(b"x" * 60 * 1024)
        operator = self.open_log(20)
        with open(disk / "rest", "wb", buffering=0) as file:
            try:
                while file.write(b"x" * 512):
                    pass
            except OSError:
                pass
        self.assertFalse(operator.save_as(disk / "s.ZRT"))
        self.assert_kept(operator.journal, operator.program.temporary_log)
        self.assertFalse((disk / "s.ZRT").exists(), "a part of the log has the log's name")
        operator.log_some(1)
        self.assertTrue(operator.save_as(self.shared / "s.ZRT"))
        self.assert_kept(operator.journal, self.shared / "s.ZRT")


class SaveAs(Attack):
    """Save As while each of its calls fails once, or the power goes at it."""

    CALLS = ("open", "pwrite", "pread", "fdatasync", "close", "rename", "unlink", "flock")
    RARE = ("fdatasync", "rename", "unlink", "flock")

    def test_save_as_with_each_call_failing_once(self):
        hits = 0
        for call in self.CALLS:
            for count in (1,) if call in self.RARE else (1, 2):
                with self.case(f"{call} {count}"):
                    operator = self.open_log(4, f"{call}{count}")
                    target = self.shared / f"{call}{count}.ZRT"
                    operator.program.fail(f"{call}:*.[zZ][rR]*:{count}:EIO")
                    operator.save_as(target)
                    self.assert_kept(operator.journal, operator.log)  # under its name of now
                    operator.program.fail("")
                    hits += any(line.startswith("FAILED") for line in operator.program.recorded())
                    operator.log_some(1)
                    if operator.log != target:
                        self.assertTrue(operator.save_as(target))
                    self.assert_kept(operator.journal, target)
                    operator.program.kill()
                    self.assert_kept(operator.journal, target)
        self.assertGreater(hits, len(self.CALLS) // 2, "the attack missed")

    def test_save_as_with_the_power_gone_at_each_call(self):
        hits = 0
        for call in self.CALLS:
            for count in (1,) if call in self.RARE else (1, 2):
                with self.case(f"{call} {count}"):
                    operator = self.open_log(4, f"k{call}{count}")
                    target = self.shared / f"k{call}{count}.ZRT"
                    operator.program.fail(f"{call}:*.[zZ][rR]*:{count}:KILL")
                    try:
                        operator.save_as(target)
                        operator.program.kill()
                    except Gone:
                        hits += operator.program.wait() == -signal.SIGKILL
                    places = [operator.program.temporary_log, target]
                    kept = [path for path in places
                            if path.exists() and not operator.journal.compare(path)]
                    self.assertTrue(kept, f"in neither of {places}")
        self.assertGreater(hits, len(self.CALLS) // 2, "the attack missed")


if __name__ == "__main__":
    unittest.main()
