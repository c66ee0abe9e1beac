"""The harness itself: what it would not notice, no attack shows."""

import unittest

from attack_kit import Attack
from session import ENTRY, Contact


class Harness(Attack):
    def test_harness_notices_contacts_that_are_lost_changed_or_doubled(self):
        operator = self.open_log(5)
        operator.program.kill()
        whole = operator.log.read_bytes()
        record = [whole[n * ENTRY:(n + 1) * ENTRY] for n in range(6)]
        self.assertEqual(operator.journal.compare(operator.log), [])
        damaged = {
            "lost at the end": whole[:-ENTRY],
            "lost in the middle": b"".join(record[:2] + record[3:]),
            "doubled": whole + record[5],
            "two in the other order": b"".join(record[:2] + [record[3], record[2]] + record[4:]),
            "a letter of a call": whole.replace(b"K3A", b"K3B"),
            "a digit of the time": whole[:3 * ENTRY + 2] + b"\x7f" + whole[3 * ENTRY + 3:],
            "a zero record": b"".join(record[:3] + [bytes(ENTRY)] + record[4:]),
            "cut in the last record": whole[:-40], "empty": b"", "other bytes": b"x" * len(whole),
        }
        for name, data in damaged.items():
            with self.subTest(name):
                operator.log.write_bytes(data)
                self.assertTrue(operator.journal.compare(operator.log))
        with self.subTest("deleted"):
            operator.log.unlink()
            self.assertTrue(operator.journal.compare(operator.log))

    def test_harness_fails_calls_by_name_count_pattern_and_error(self):
        operator = self.open_log(1)
        operator.program.fail("pwrite:*.zrb:2:ENOSPC,fdatasync:*.nowhere:1+:EIO")
        operator.log_some(1)
        self.assertTrue(operator.log_contact("DL1AA", "599 TWO"))
        self.assertTrue(operator.warning())
        failed = [line for line in operator.program.recorded() if line.startswith("FAILED")]
        self.assertEqual(len(failed), 1)
        self.assertRegex(failed[0], r"^FAILED pwrite .*\.zrb = -1 errno 28$")
        operator.program.fail("")
        operator.log_some(1)
        self.assert_kept(operator.journal, operator.log)

    def test_harness_takes_nothing_for_accepted_that_was_refused(self):
        operator = self.operator(contest="AA")
        operator.start_log()
        self.assertFalse(operator.log_contact("JA1XYZ", "123"))  # no age
        self.assertEqual(operator.journal.contacts, [])
        self.assertTrue(operator.log_contact("JA1XYZ", "44"))
        self.assertEqual([str(contact) for contact in operator.journal.contacts],
                         [str(Contact(1, "JA1XYZ", "44", 3))])


if __name__ == "__main__":
    unittest.main()
