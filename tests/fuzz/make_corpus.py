#!/usr/bin/env python3
"""Writes the seeds of the log-file drivers: valid, torn, newer and hostile
log files and text logs, each framed the way its driver reads its input."""
import struct, sys
from pathlib import Path

RECORD = 272
root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent / "corpus")

def header(version="7.000000"):
    return version.encode("utf-16-le").ljust(RECORD, b"\0")

def record(n, units):
    time = struct.pack("<8H", 2026, 1, 5, 2, 8, n // 60 % 60, n % 60, n % 1000)
    return time + b"".join(struct.pack("<H", u) for u in units[:128]).ljust(256, b"\0")

def text(s):
    return [ord(c) for c in s]

HOSTILE = [0xD800, 0x41, 0xDC00, 0x0A, 0x0D, 0x09, 0x01, 0x7F, 0xFFFF, 0xFEFF] + text('"\\,;') * 12
records = b"".join(record(n, text(f"line {n}")) for n in range(12))
logs = {
    "valid": header() + records + record(12, HOSTILE) + record(13, [0x4E2D] * 128),
    "torn-tail": header() + records[:RECORD * 3 + 100],
    "newer": header("8.000000") + records[:RECORD * 2],
    "older-upper": header("6.000000X") + records[:RECORD],
    "empty": b"",
    "short-header": header()[:20],
    "torn-header-slot": header()[:100],
    "header-only": header(),
}
u32 = lambda *v: struct.pack(">" + "I" * len(v), *v)
for name, log in logs.items():
    for driver, framed in (("fuzz_log_window", u32(20, 11, 105, 300) + log),
                           ("fuzz_log_output", log + u32(1, 2, 30, 2) + bytes(32) + u32(5) + bytes(32))):
        (root / driver).mkdir(parents=True, exist_ok=True)
        (root / driver / name).write_bytes(framed)

text_logs = {
    "valid": b"2026-01-05 02:08:00 started\r\n2026-01-05 02:08:01 pump 3 on\r\n",
    "long-lines": b"2026-01-05 02:08:00 " + b"x" * 300 + b"\nshort\n" + b"y" * 127 + b"\n",
    "odd": b"20a6/13/99 99:99:99 \x00\x1a\r\r\n\x80\xff-1-5 +2:-3:x9 signs\n\x1aafter the end\n",
}
for name, log in text_logs.items():
    (root / "fuzz_text_log").mkdir(parents=True, exist_ok=True)
    (root / "fuzz_text_log" / name).write_bytes(u32(0, 0) + log)
    (root / "fuzz_text_log" / (name + "-beside-earlier")).write_bytes(u32(1, RECORD) + header("7.0000001") + log)
(root / "fuzz_text_log" / "reused").write_bytes(u32(1, 2 * RECORD) + header() + records[:RECORD] + b"x\n")
