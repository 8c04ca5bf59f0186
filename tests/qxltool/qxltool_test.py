#!/usr/bin/env python3
"""qxltool as a real process.  Its commands on logs written here: a filtered
range across a rollover, check on damaged files, conversion and the exit
codes a script sees.  Then its output read by tools nobody here wrote: jq
reads every JSON line of dump and follow, GNU grep finds text lines, Python's
csv reads CSV strictly, and rsyslog collects a follow of the real program's
save directory across a rollover and a restart of the follow.  The records
are written here from their layout alone, so the expectations owe nothing to
the tool's code.
  qxltool_test.py INSTALL_DIR     (Wine prefix and display as ./oriel sets them)"""
import csv, io, json, os, shutil, signal, struct, subprocess, sys, tempfile, time

install, work = os.path.abspath(sys.argv[1]), tempfile.mkdtemp(prefix="oriel-consumers.")
failures = []


def check(ok, what):
    if not ok:
        failures.append(what)
        print("FAIL:", what)


def win(path):
    return "Z:" + path.replace("/", "\\")


def units(text):
    return text.encode("utf-16-le", "surrogatepass")


def log_file(path, records, tail=b"", version="7.000000"):
    body = b"".join(struct.pack("<8H", *stamp) + units(t)[:256] + bytes(256 - len(units(t)[:256]))
                    for t, stamp in records)
    with open(path, "wb") as f:
        f.write(units(version) + bytes(272 - len(units(version))) + body + tail)


def expected(records, name):
    """Each record as it must read: its text up to the first zero unit, each
    unpaired surrogate as U+FFFD, and its exact units where that changed it."""
    out = []
    for slot, (text, (y, mo, _, d, h, mi, s, ms)) in enumerate(records, 1):
        text = units(text)[:256].decode("utf-16-le", "surrogatepass").split("\0")[0]
        shown = "".join("\ufffd" if 0xD800 <= ord(c) <= 0xDFFF else c for c in text)
        out.append({"time": "%04d-%02d-%02dT%02d:%02d:%02d.%03d" % (y, mo, d, h, mi, s, ms), "file": name,
                    "slot": slot, "text": shown, "exact": units(text).hex() if shown != text else None})
    return out


def run(*args, **kw):
    return subprocess.Popen(["wine", install + "/qxltool.exe", *args], **kw)


def tool(*args):
    """Runs the tool to its end: exit code, standard output, standard error."""
    done = subprocess.run(["wine", install + "/qxltool.exe", *args], capture_output=True, stdin=subprocess.DEVNULL)
    return done.returncode, done.stdout.decode("utf-8", "replace"), done.stderr.decode("utf-8", "replace")


def at(minute, second, ms=0):
    return (2026, 11, 1, 23, 14, minute, second, ms)


# ---- the commands on a log of two files, rolled over at 14:06 ---------------
OK, DAMAGED, USAGE, UNREADABLE, REFUSED, NOT_CONVERTED = 0, 1, 2, 3, 4, 5
pump = "\u6cf5 P-102 \u505c\u6b62"
cmds = work + "/commands"
os.mkdir(cmds)
log_file(cmds + "/2611231405.qxl", [("Pump P-101 started", at(5, 0)), ('Valve V-7, "open"', at(5, 30, 250)),
                                    (pump, at(5, 59, 999))])
log_file(cmds + "/2611231406.qxl", [("Tank T-1 high", at(6, 0, 1)), ("", at(6, 10))])
check(tool("dump", "--iso", "--from", "2026-11-23 14:05:30.250", "--to", "2026-11-23T14:06:00.001", win(cmds)) ==
      (OK, '2026-11-23T14:05:30.250 Valve V-7, "open"\n2026-11-23T14:05:59.999 %s\n'
           "2026-11-23T14:06:00.001 Tank T-1 high\n" % pump, ""), "dump: a range across the rollover, bounds included")
# Both filters at once: each alone would pass two records.
check(tool("dump", "--count", "--grep", "P-10", "--regex", "started|high", win(cmds))[:2] == (OK, "1\n"),
      "dump: --grep and --regex together")
code, _, err = tool("dump", win(cmds + "/2611231407.qxl"))
check(code == UNREADABLE and "2611231407.qxl: no such file or directory" in err, "a missing file: %d %s" % (code, err))
code, _, err = tool("dump", "--from", "23.11.2026", win(cmds))
check(code == USAGE and "not a time" in err and "usage: qxltool" in err, "a bad time: %d %s" % (code, err))
check(tool("dump", "--regex", "([", win(cmds))[0] == USAGE, "a bad regular expression")
check(tool("--help")[1].startswith("usage: qxltool"), "--help")
# A file of a newer version is refused and the rest still read.
log_file(cmds + "/2611231407.qxl", [("from the future", at(7, 0))], version="8.000000")
code, out, err = tool("dump", "--count", win(cmds))
check((code, out) == (REFUSED, "5\n") and "2611231407.qxl: written by a newer version" in err,
      "a newer file refused, the rest read: %d %r %s" % (code, out, err))

# check: a sound file, then a torn tail, a newer header and 31 bytes beside it.
damage = work + "/check"
os.mkdir(damage)
log_file(damage + "/2611231405.qxl", [("a", at(5, 0)), ("b", at(5, 1))])
check(tool("check", win(damage))[:2] == (OK, "2611231405.qxl: 2 records, 2026-11-23T14:05:00.000 .. "
                                             "2026-11-23T14:05:01.000, ok\n1 file, 2 records: 0 damaged, 0 with "
                                             "warnings only\n"), "check: a sound file")
log_file(damage + "/2611231406.qxl", [("a", at(5, 0))], tail=bytes(172))
log_file(damage + "/2611231407.qxl", [("", (0,) * 8)] * 3, version="8.000000")
open(damage + "/2611231408.qxl", "wb").write(b"7" * 31)
out = tool("check", win(damage))[1]  # its exit code is the fuzz driver's
for finding in ["2611231406.qxl: 1 record, 2026-11-23T14:05:00.000 .. 2026-11-23T14:05:00.000, damaged\n"
                "  torn tail: 172 bytes after slot 1, the last whole record\n",
                "2611231407.qxl: damaged\n  header: the version text sorts after ours",
                "2611231408.qxl: damaged\n  header: the file has 31 bytes, fewer than the 32 of the version text\n",
                "\n4 files, 3 records: 3 damaged, 0 with warnings only\n"]:
    check(finding in out, "check finds %r in %r" % (finding, out))

# convert: a short earlier conversion is neither reused nor replaced (the
# browser gives up silently, the tool says so); its name, exit codes and
# records are the fuzz driver's and the conversion's tests'.
open(work + "/day.log", "wb").write(b"2009-03-04 05:06:07 pump started\r\n")
open(work + "/day00.qxl", "wb").write(bytes(10))
code, _, err = tool("convert", win(work + "/day.log"))
check(code == NOT_CONVERTED and "not converted" in err, "a short earlier conversion: %d %s" % (code, err))


# ---- hostile records, in two files, through every format --------------------
hostile = ["Pump P-101 started", "pump \ud83d high half", "\ude00 low half first", "pair \U0001F600 \u6cf5",
           "pump\there\r\nline\x01\x1f\x7f\b\f end", "%s%n%d %%", "x" * 127 + "\ud83d", "y" * 126 + "\U0001F600",
           "", 'Valve V-7, "open", C:\\Suite\\log', '"quoted" first', " padded ", "z" * 130, "pump \ufffd as sent"]
first = [(t, (2026, 11, 1, 23, 14, 5, i, 250)) for i, t in enumerate(hostile)] + [("", (0,) * 8)]
second = [("pump \ud800", (2026, 11, 1, 23, 14, 6, 0, 1)), ("last", (2026, 11, 1, 23, 14, 6, 1, 0))]
logs, follow_dir = work + "/logs", work + "/follow"
os.mkdir(logs)
os.mkdir(follow_dir)
log_file(logs + "/2611231405.qxl", first, tail=b"\x41" * 100)
log_file(logs + "/2611231406.qxl", second)
# follow starts at the end of the file it finds, and reads those that come later whole.
log_file(follow_dir + "/2611231404.qxl", [("before the follow", (2026, 11, 1, 23, 14, 4, 0, 0))])
want = expected(first, "2611231405.qxl") + expected(second, "2611231406.qxl")
formats = {"json": ["--json"], "csv": ["--csv"], "iso": ["--iso"], "line": ["--lang", "en"]}
outputs = {"dump " + f: run("dump", *a, *(["--utf16le"] if f == "csv" else []), win(logs + "/2611231406.qxl"),
                            win(logs + "/2611231405.qxl"), stdout=subprocess.PIPE).communicate()[0]
           for f, a in formats.items()}
followers = {f: run("follow", "--poll", "50", *a, win(follow_dir), stdout=open(work + "/follow-" + f, "wb"),
                    stderr=subprocess.DEVNULL) for f, a in formats.items()}
time.sleep(3)
for name in ["2611231405.qxl", "2611231406.qxl"]:
    shutil.copy(logs + "/" + name, follow_dir)
deadline = time.time() + 30
for f, proc in followers.items():
    path = work + "/follow-" + f
    need = len(want) + (f == "csv") * (1 + sum(r["text"].count("\n") for r in want))  # CSV: heading, quoted breaks
    while time.time() < deadline and open(path, "rb").read().count(b"\n") < need:
        time.sleep(0.2)
    proc.send_signal(signal.SIGINT)  # Wine hands it to the tool as Ctrl+C
    check(proc.wait(20) == 0, "follow %s ends with 0 on Ctrl+C" % f)
    outputs["follow " + f] = open(path, "rb").read()

for what, out in outputs.items():
    try:
        out.decode("utf-8")
    except UnicodeDecodeError as e:
        check(False, "%s: not UTF-8: %s" % (what, e))
    if what.endswith("json"):  # the exact units in text_utf16le included
        jq = subprocess.run(["jq", "-c", "[.time, .file, .slot, .text, .text_utf16le]"], input=out, capture_output=True)
        check(jq.returncode == 0, "%s: jq exit %d: %s" % (what, jq.returncode, jq.stderr[:300]))
        check([dict(zip(want[0], json.loads(line))) for line in jq.stdout.splitlines()] == want,
              what + ": jq reads every record exactly")
    elif what.endswith("csv"):  # dump with --utf16le, follow without
        exact = what.startswith("dump")
        rows = list(csv.reader(io.TextIOWrapper(io.BytesIO(out), encoding="utf-8", newline=""), strict=True))
        check(rows == [["time", "file", "slot", "text"] + ["text_utf16le"] * exact] +
              [[r["time"], r["file"], str(r["slot"]), r["text"]] + [r["exact"] or ""] * exact for r in want],
              what + ": csv reads every row")
        check(b'," padded "' in out, what + ": a field that starts or ends with a space is quoted")
    else:  # one record a line, control characters as their pictures
        check(out.count(b"\n") == len(want), "%s: one line a record" % what)
        grep = subprocess.run(["grep", "-i", "pump"], input=out, capture_output=True, env={"LC_ALL": "C.UTF-8"})
        shown = [(r["time"].replace("T", " ") + "  " if what.endswith("line") else r["time"] + " ") +
                 "".join(chr(0x2400 + ord(c)) if ord(c) < 32 else "\u2421" if c == "\x7f" else c for c in r["text"])
                 for r in want if "pump" in r["text"].lower()]
        check(grep.returncode == 0 and grep.stdout.decode().splitlines() == shown,
              "%s: grep finds the lines: %r" % (what, grep.stdout[:300]))

# ---- rsyslog collects a follow of the real program's save directory --------
# The recipe of docs/qxltool.md: follow --json --position appends to a feed file that
# rsyslog tails, parses as JSON and writes out.  The program continues a
# nearly full file of an earlier minute (the hostile records, then "seed N"
# lines) and rolls over while both roads deliver; the follow is restarted
# half-way and goes on from its position file.
prog, save = work + "/Oriel", work + "/save"
shutil.copytree(install, prog)
os.mkdir(save)
subprocess.run(["wine", prog + "/Oriel.exe", "/RegServer"], check=True)
subprocess.run(["wine", "regsvr32", "/s", prog + "/OrielPS.dll"], check=True)
with open(prog + "/config/ShowMess.ini", "w", newline="") as f:
    f.write("[save]\r\nsavedays=0\r\nsavetime=1\r\nlogsize=1\r\nsavedirectory=%s\r\n" % win(save))
seeds = first + [("seed %d" % n, (2026, 1, 0, 1, 0, 0, 0, 0)) for n in range(1, 3800 - len(first) + 1)]
log_file(save + "/2601010000.qxl", seeds)
open(work + "/feed.pos", "w").write("2601010000.qxl 1\n")
conf = open(os.path.join(os.path.dirname(__file__), "rsyslog-feed.conf")).read()
open(work + "/rsyslog.conf", "w").write(conf.replace("/var/spool/rsyslog", work).replace("/srv/feed", work)
                                        .replace("/var/log/oriel", work))
rsyslog = subprocess.Popen([shutil.which("rsyslogd") or "/usr/sbin/rsyslogd", "-n", "-f", work + "/rsyslog.conf",
                            "-i", work + "/rsyslog.pid"])


def start_follow():
    return run("follow", "--json", "--poll", "100", "--position", win(work + "/feed.pos"), win(save),
               stdout=open(work + "/feed.jsonl", "ab"))


def collected():
    return open(work + "/collected.jsonl", "rb").read().splitlines() if os.path.exists(work + "/collected.jsonl") else []


def showmess(*args, **kw):
    return subprocess.Popen(["wine", prog + "/showmess.exe", *args], stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **kw)


follow, oriel, lines = start_follow(), subprocess.Popen(["wine", prog + "/Oriel.exe"]), 1500
while showmess("--show").wait() != 0:
    time.sleep(0.2)
holder = showmess("--hold")
clients = [showmess(*road, "--count", str(lines), "--rate", "300", name) for road, name in [([], "com"), (["--atom"], "atom")]]
time.sleep(3)
follow.send_signal(signal.SIGINT)
check(follow.wait(20) == 0, "the first follow ends with 0")
follow = start_follow()
check(all(c.wait(60) == 0 for c in clients), "both clients deliver")
showmess("--close").wait()
holder.wait(30)
oriel.wait(30)
deadline = time.time() + 30
while len(collected()) < len(seeds) + 2 * lines and time.time() < deadline:
    time.sleep(0.2)
follow.send_signal(signal.SIGINT)
follow.wait(20)
rsyslog.terminate()
rsyslog.wait(20)
subprocess.run(["wine", prog + "/Oriel.exe", "/UnregServer"])
subprocess.run(["wine", "regsvr32", "/s", "/u", prog + "/OrielPS.dll"])

got = [json.loads(line) for line in collected()]
check(not os.path.exists(work + "/refused.log"), "rsyslog parses every line as JSON")
check([{k: r.get(k) for k in ["time", "file", "slot", "text"]} | {"exact": r.get("text_utf16le")}
       for r in got[:len(seeds)]] == expected(seeds, "2601010000.qxl"), "the hostile records and the seeds, exactly")
program = got[len(seeds):]
files = sorted({r["file"] for r in program})
check(len(files) >= 2 and files[0] == "2601010000.qxl", "the program's lines span a rollover: %s" % files)
order = [(files.index(r["file"]), r["slot"]) for r in program]
check(order == sorted(set(order)) and len(program) == 2 * lines, "every record once, in log order: %d" % len(program))
for name in ["com", "atom"]:
    check([r["text"] for r in program if r["text"].startswith(name + " ")] ==
          ["%s %d" % (name, n) for n in range(1, lines + 1)], "every %s line arrives once, in order" % name)
shutil.rmtree(work)
sys.exit("%d failed" % len(failures) if failures else None)
