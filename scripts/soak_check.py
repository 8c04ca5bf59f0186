#!/usr/bin/env python3
"""Accounts for every line a soak run sent, from the log files alone.

Reads every *.qxl file of a save directory in name order (the names are the
minutes the files were started), decodes the 272-byte records by the file
layout (a header slot whose text is "7.000000", then per record eight
little-endian 16-bit time fields and 128 UTF-16 units of text) and checks,
for every client that sent the numbered lines "PREFIX 1" .. "PREFIX N":
in order, none twice, none foreign, and how many are missing, in which runs.

  soak_check.py SAVE_DIR --client PREFIX:COUNT ... --expect zero|overrun|discard

--expect says where loss is allowed: zero (none), overrun (only whole
overwrites of the 5000-slot ring: the total lost is a multiple of 5000, and
at least one), discard (the pending records dropped at a rollover in the
same minute: some loss).  Exit code 0 when the run is as expected.
"""
import argparse
import os
import struct
import sys

SLOT = 272
TEXT_UNITS = 128
VERSION = "7.000000"
RING_SLOTS = 5000


def decode_log(data):
    """(version, records, trailing bytes); a record is (time tuple, text)."""
    if len(data) < SLOT:
        return None, [], len(data)
    version = data[:32].decode("utf-16-le").split("\0", 1)[0]
    records = []
    end = SLOT + (len(data) - SLOT) // SLOT * SLOT
    for offset in range(SLOT, end, SLOT):
        fields = struct.unpack_from("<8H", data, offset)
        # year, month, day, hour, minute, second, milliseconds: sortable
        stamp = (fields[0], fields[1], fields[3], fields[4], fields[5], fields[6], fields[7])
        units = struct.unpack_from("<128H", data, offset + 16)
        text_units = []
        for unit in units:
            if unit == 0:
                break
            text_units.append(unit)
        # Unpaired surrogates must survive decoding: keep code units as they are.
        text = struct.pack("<%dH" % len(text_units), *text_units).decode("utf-16-le", "surrogatepass")
        records.append((stamp, text))
    return version, records, len(data) - end


def parse_line(text, prefixes):
    """(prefix, number) for "PREFIX N" of a known prefix, else None."""
    head, _, number = text.rpartition(" ")
    if head in prefixes and number.isdigit() and not number.startswith("0"):
        return head, int(number)
    return None


def account(records, clients):
    """Checks the records (in file order) against {prefix: count sent}."""
    report = {"foreign": [], "twice_or_out_of_order": [], "time_backwards": 0,
              "found": {p: 0 for p in clients}, "gaps": {p: [] for p in clients}}
    last = {p: 0 for p in clients}
    previous_stamp = None
    for index, (stamp, text) in enumerate(records):
        if previous_stamp is not None and stamp < previous_stamp:
            report["time_backwards"] += 1
        previous_stamp = stamp
        line = parse_line(text, clients)
        if line is None or line[1] > clients[line[0]]:
            report["foreign"].append((index, text))
            continue
        prefix, number = line
        if number <= last[prefix]:
            report["twice_or_out_of_order"].append((index, text))
            continue
        if number > last[prefix] + 1:
            report["gaps"][prefix].append((last[prefix] + 1, number - last[prefix] - 1))
        last[prefix] = number
        report["found"][prefix] += 1
    for prefix, count in clients.items():
        if last[prefix] < count:
            report["gaps"][prefix].append((last[prefix] + 1, count - last[prefix]))
    report["lost"] = {p: sum(n for _, n in report["gaps"][p]) for p in clients}
    return report


def judge(report, expect):
    """The ways in which the run departs from what was expected."""
    problems = []
    if report["foreign"]:
        problems.append("%d foreign records, first %r" % (len(report["foreign"]), report["foreign"][0]))
    if report["twice_or_out_of_order"]:
        problems.append("%d records twice or out of order, first %r"
                        % (len(report["twice_or_out_of_order"]), report["twice_or_out_of_order"][0]))
    if report["time_backwards"]:
        problems.append("%d records stamped earlier than the one before" % report["time_backwards"])
    lost = sum(report["lost"].values())
    if expect == "zero" and lost:
        problems.append("%d lines lost where none may be" % lost)
    if expect == "overrun" and (lost == 0 or lost % RING_SLOTS):
        problems.append("%d lines lost: not a whole number (at least one) of ring overruns of %d"
                        % (lost, RING_SLOTS))
    if expect == "discard" and lost == 0:
        problems.append("no line lost although same-minute rollovers discard pending lines")
    return problems


def read_directory(directory):
    """All records of the directory's log files, in name order; file problems."""
    records, problems, files = [], [], sorted(n for n in os.listdir(directory) if n.endswith(".qxl"))
    for name in files:
        with open(os.path.join(directory, name), "rb") as f:
            version, file_records, trailing = decode_log(f.read())
        if version != VERSION:
            problems.append("%s: header %r" % (name, version))
        if trailing:
            problems.append("%s: %d bytes after the last whole record" % (name, trailing))
        records.extend(file_records)
    return files, records, problems


def main(argv):
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("directory")
    parser.add_argument("--client", action="append", required=True, help="PREFIX:COUNT")
    parser.add_argument("--expect", choices=["zero", "overrun", "discard"], required=True)
    args = parser.parse_args(argv)
    clients = {}
    for client in args.client:
        prefix, _, count = client.rpartition(":")
        clients[prefix] = int(count)

    files, records, problems = read_directory(args.directory)
    report = account(records, clients)
    problems += judge(report, args.expect)
    sent = sum(clients.values())
    lost = sum(report["lost"].values())
    print("  %d files, %d records; sent %d, found %d, lost %d (%.2f%%)"
          % (len(files), len(records), sent, sum(report["found"].values()), lost,
             100.0 * lost / sent if sent else 0))
    for prefix in clients:
        gaps = report["gaps"][prefix]
        shown = ", ".join("%d lines from %d" % (n, start) for start, n in gaps[:6])
        print("  %-8s sent %d, found %d, lost %d%s" % (prefix, clients[prefix], report["found"][prefix],
                                                     report["lost"][prefix], (": " + shown) if gaps else ""))
    for problem in problems:
        print("  FAIL: " + problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
