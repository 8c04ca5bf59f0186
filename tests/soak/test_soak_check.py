"""The soak checker on log images made here byte by byte."""
import os
import struct
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "scripts"))
import soak_check  # noqa: E402


def record(text, second=0, ms=0):
    units = list(text.encode("utf-16-le", "surrogatepass"))
    body = bytes(units)[:256]
    return struct.pack("<8H", 2026, 11, 1, 23, 18, 0, second, ms) + body + bytes(256 - len(body))


def log_image(texts, version="7.000000", tail=b""):
    header = version.encode("utf-16-le")
    return header + bytes(272 - len(header)) + b"".join(record(t, i // 1000, i % 1000)
                                                      for i, t in enumerate(texts)) + tail


class Decoding(unittest.TestCase):
    def test_fields_text_and_tail(self):
        full = "x" * 128
        version, records, trailing = soak_check.decode_log(
            log_image(["a 1", full, "\ud800 lone", ""], tail=b"\xab" * 100))
        self.assertEqual(version, "7.000000")
        self.assertEqual([t for _, t in records], ["a 1", full, "\ud800 lone", ""])
        self.assertEqual(records[1][0], (2026, 11, 23, 18, 0, 0, 1))
        self.assertEqual(trailing, 100)

    def test_short_file_has_no_header(self):
        self.assertEqual(soak_check.decode_log(b"\0" * 31), (None, [], 31))


class Accounting(unittest.TestCase):
    def lines(self, texts):
        return [((0, 0, 0, 0, 0, 0, i), t) for i, t in enumerate(texts)]

    def test_interleaved_clients_all_present(self):
        report = soak_check.account(self.lines(["c 1", "a 1", "c 2", "a 2"]), {"c": 2, "a": 2})
        self.assertEqual(report["lost"], {"c": 0, "a": 0})
        self.assertEqual(soak_check.judge(report, "zero"), [])

    def test_gaps_inside_and_at_the_end(self):
        report = soak_check.account(self.lines(["c 1", "c 4", "c 5"]), {"c": 7})
        self.assertEqual(report["gaps"]["c"], [(2, 2), (6, 2)])
        self.assertEqual(report["lost"]["c"], 4)
        self.assertEqual(len(soak_check.judge(report, "zero")), 1)
        self.assertEqual(soak_check.judge(report, "discard"), [])

    def test_duplicates_reordering_foreign_and_backward_time(self):
        records = self.lines(["c 1", "c 3", "c 2", "c 3", "c 9", "x 1", "c 03", ""])
        records.append(((0, 0, 0, 0, 0, 0, 0), "c 4"))
        report = soak_check.account(records, {"c": 5})
        self.assertEqual([i for i, _ in report["twice_or_out_of_order"]], [2, 3])
        self.assertEqual([t for _, t in report["foreign"]], ["c 9", "x 1", "c 03", ""])
        self.assertEqual(report["time_backwards"], 1)
        self.assertEqual(len(soak_check.judge(report, "discard")), 3)

    def test_overrun_loss_must_be_whole_rings(self):
        sent = 12000
        kept = list(range(1, 3001)) + list(range(8001, sent + 1))
        report = soak_check.account(self.lines(["c %d" % n for n in kept]), {"c": sent})
        self.assertEqual(soak_check.judge(report, "overrun"), [])
        report = soak_check.account(self.lines(["c %d" % n for n in kept[1:]]), {"c": sent})
        self.assertEqual(len(soak_check.judge(report, "overrun")), 1)
        report = soak_check.account(self.lines(["c %d" % n for n in range(1, sent + 1)]), {"c": sent})
        self.assertEqual(len(soak_check.judge(report, "overrun")), 1, "no overrun shown")


class Directory(unittest.TestCase):
    def test_files_in_name_order_with_their_faults(self):
        with tempfile.TemporaryDirectory() as directory:
            for name, image in (("2611231801.qxl", log_image(["c 3"], tail=b"\0" * 5)),
                                ("2611231800.qxl", log_image(["c 1", "c 2"])),
                                ("2611231802.qxl", log_image([], version="8.000000")),
                                ("notes.txt", b"c 4")):
                with open(os.path.join(directory, name), "wb") as f:
                    f.write(image)
            files, records, problems = soak_check.read_directory(directory)
        self.assertEqual(files, ["2611231800.qxl", "2611231801.qxl", "2611231802.qxl"])
        self.assertEqual([t for _, t in records], ["c 1", "c 2", "c 3"])
        self.assertEqual(len(problems), 2)


if __name__ == "__main__":
    unittest.main()
