#!/usr/bin/env python3
"""qxltool's output read by the tools it is meant for, none of them ours: jq
reads every JSON line of dump and follow, GNU grep finds text lines, Python's
csv reads CSV strictly, and rsyslog collects a follow of the real program's
save directory across a rollover and a restart of the follow.  The records
are written here from their layout alone, so the expectations do not come
from the tool's own code.
  consumers_test.py INSTALL_DIR     (Wine prefix and display as ./oriel sets them)"""
import csv, io, json, os, shutil, signal, struct, subprocess, sys, tempfile, time

install = os.path.abspath(sys.argv[1])
work = tempfile.mkdtemp(prefix="oriel-consumers.")
failures = []


def check(ok, what):
    if not ok:
        failures.append(what)
        print("FAIL:", what)


def win(path):
    return "Z:" + path.replace("/", "\\")


def units(text):
    return text.encode("utf-16-le", "surrogatepass")


def record(text, stamp):
    data = units(text)[:256]
    return struct.pack("<8H", *stamp) + data + bytes(256 - len(data))


def log_file(path, records, tail=b""):
    header = units("7.000000")
    with open(path, "wb") as f:
        f.write(header + bytes(272 - len(header)) + b"".join(records) + tail)


# What each record must read as: its text up to the first zero unit, each
# unpaired surrogate as U+FFFD, and its exact units where that changed it.
def expected(text, stamp, name, slot):
    text = text[:128].split("\0")[0]
    shown = "".join("\ufffd" if 0xD800 <= ord(c) <= 0xDFFF else c
                    for c in units(text).decode("utf-16-le", "surrogatepass"))
    y, mo, _, d, h, mi, s, ms = stamp
    return {"time": "%04d-%02d-%02dT%02d:%02d:%02d.%03d" % (y, mo, d, h, mi, s, ms), "file": name,
            "slot": slot, "text": shown, "exact": units(text).hex() if shown != text else None}


def tool(*args, **kw):
    return subprocess.run(["wine", install + "/qxltool.exe", *args], capture_output=True, **kw)


def parse_json_lines(out, what):
    """Every line through jq, then jq's own output read back."""
    jq = subprocess.run(["jq", "-c", "[.time, .file, .slot, .text, .text_utf16le]"], input=out,
                        capture_output=True)
    check(jq.returncode == 0, "%s: jq exit %d: %s" % (what, jq.returncode, jq.stderr[:300]))
    return [dict(zip(["time", "file", "slot", "text", "exact"], json.loads(l)))
            for l in jq.stdout.decode().splitlines()]


# ---- hostile records, in two files -----------------------------------------
def at(second, ms=0):
    return (2026, 11, 1, 23, 14, 5, second, ms)


hostile = ["Pump P-101 started", "pump \ud83d high half", "\ude00 low half first", "pair \U0001F600 \u6cf5",
           "tab\there\r\nline\x01\x1f\x7f end", "%s%n%d %%", "x" * 127 + "\ud83d", "y" * 126 + "\U0001F600",
           "", 'Valve V-7, "open", C:\\Suite\\log', '"quoted" first', " padded ", "z" * 130]
first = [(t, at(i, 250)) for i, t in enumerate(hostile)] + [("", (0,) * 8)]
second = [("pump \ud800", (2026, 11, 1, 23, 14, 6, 0, 1)), ("last", (2026, 11, 1, 23, 14, 6, 1, 0))]
logs = os.path.join(work, "logs")
os.mkdir(logs)
log_file(os.path.join(logs, "2611231405.qxl"), [record(*r) for r in first], tail=b"\x41" * 100)
log_file(os.path.join(logs, "2611231406.qxl"), [record(*r) for r in second])
want = [expected(t, s, "2611231405.qxl", n + 1) for n, (t, s) in enumerate(first)] + \
       [expected(t, s, "2611231406.qxl", n + 1) for n, (t, s) in enumerate(second)]


def line_text(r):  # the text form: control characters as their pictures
    return "".join(chr(0x2400 + ord(c)) if ord(c) < 32 else "\u2421" if c == "\x7f" else c for c in r["text"])


# dump and follow in every format, named files given in the wrong order.
outputs = {}
for fmt in ["--json", "--csv", "--iso", "--lang"]:
    args = [fmt] + (["en"] if fmt == "--lang" else [])
    outputs["dump " + fmt] = tool("dump", *args, win(logs + "/2611231406.qxl"), win(logs + "/2611231405.qxl")).stdout
follow_dir = os.path.join(work, "follow")
os.mkdir(follow_dir)
followers = {}
for fmt in ["--json", "--csv", "--iso", "--lang"]:
    args = [fmt] + (["en"] if fmt == "--lang" else [])
    out = open(os.path.join(work, "follow" + fmt), "wb")
    followers[fmt] = (subprocess.Popen(["wine", install + "/qxltool.exe", "follow", "--poll", "50", *args,
                                        win(follow_dir)], stdout=out, stderr=subprocess.DEVNULL), out)
time.sleep(3)
for name in ["2611231405.qxl", "2611231406.qxl"]:
    shutil.copy(os.path.join(logs, name), follow_dir)
deadline = time.time() + 30
for fmt, (proc, out) in followers.items():
    path = os.path.join(work, "follow" + fmt)
    lines = len(want) + (fmt == "--csv")
    while time.time() < deadline and open(path, "rb").read().count(b"\n") < lines:
        time.sleep(0.2)
    proc.send_signal(signal.SIGINT)  # Wine hands it to the tool as Ctrl+C
    check(proc.wait(20) == 0, "follow %s ends with 0 on Ctrl+C" % fmt)
    out.close()
    outputs["follow " + fmt] = open(path, "rb").read()

for what, out in outputs.items():
    try:
        out.decode("utf-8")
    except UnicodeDecodeError as e:
        check(False, "%s: not UTF-8: %s" % (what, e))
    if not what.endswith("csv"):  # CSV quotes a line break: a row may span lines
        check(out.count(b"\n") == len(want), "%s: one line a record" % what)
    if what.endswith("json"):  # the exact units in text_utf16le included
        check(parse_json_lines(out, what) == want, what + ": jq reads every record exactly")
    elif what.endswith("csv"):
        rows = list(csv.reader(io.TextIOWrapper(io.BytesIO(out), encoding="utf-8", errors="strict", newline=""),
                               strict=True))
        check(rows == [["time", "file", "slot", "text"]] +
              [[r["time"], r["file"], str(r["slot"]), r["text"]] for r in want], what + ": csv reads every row")
    else:
        grep = subprocess.run(["grep", "-i", "pump"], input=out, capture_output=True, env={"LC_ALL": "C.UTF-8"})
        lines = [(r["time"].replace("T", " ") + "  " if what.endswith("lang") else r["time"] + " ") + line_text(r)
                 for r in want if "pump" in r["text"].lower()]
        check(grep.returncode == 0 and grep.stdout.decode().splitlines() == lines,
              "%s: grep finds the lines: %r" % (what, grep.stdout[:300]))

# The exact units of CSV on request.
out = tool("dump", "--csv", "--utf16le", win(logs)).stdout
rows = list(csv.reader(io.TextIOWrapper(io.BytesIO(out), encoding="utf-8", errors="strict", newline=""), strict=True))
check(rows[0] == ["time", "file", "slot", "text", "text_utf16le"] and
      [row[4] or None for row in rows[1:]] == [r["exact"] for r in want], "--csv --utf16le: the exact column")


# ---- rsyslog collects a follow of the real program's save directory --------
# The recipe of the README: follow --json with a position file appends to a
# feed file, rsyslog tails it, parses each line as JSON and writes what it
# parsed.  The program continues a nearly full file of an earlier minute
# (the hostile records first, then "seed N" lines) and rolls over while both
# roads deliver; the follow is restarted half-way.
prog, save = os.path.join(work, "Oriel"), os.path.join(work, "save")
shutil.copytree(install, prog)
os.mkdir(save)
subprocess.run(["wine", prog + "/Oriel.exe", "/RegServer"], check=True)
subprocess.run(["wine", "regsvr32", "/s", prog + "/OrielPS.dll"], check=True)
with open(prog + "/config/ShowMess.ini", "w", newline="") as f:
    f.write("[save]\r\nsavedays=0\r\nsavetime=1\r\nlogsize=1\r\nsavedirectory=%s\r\n" % win(save))
seeds = first + [("seed %d" % n, (2026, 1, 0, 1, 0, 0, 0, 0)) for n in range(1, 3800 - len(first) + 1)]
log_file(save + "/2601010000.qxl", [record(*r) for r in seeds])
with open(work + "/feed.pos", "w") as f:
    f.write("2601010000.qxl 1\n")
with open(work + "/rsyslog.conf", "w") as f:
    f.write(open(os.path.join(os.path.dirname(__file__), "rsyslog-feed.conf")).read()
            .replace("/var/spool/rsyslog", work).replace("/srv/feed", work).replace("/var/log/oriel", work))
rsyslog = subprocess.Popen([shutil.which("rsyslogd") or "/usr/sbin/rsyslogd", "-n", "-f", work + "/rsyslog.conf", "-i", work + "/rsyslog.pid"])


def start_follow():
    with open(work + "/feed.jsonl", "ab") as feed:
        return subprocess.Popen(["wine", install + "/qxltool.exe", "follow", "--json", "--poll", "100",
                                 "--position", win(work + "/feed.pos"), win(save)], stdout=feed)


def collected():
    try:
        return open(work + "/collected.jsonl", "rb").read().splitlines()
    except FileNotFoundError:
        return []


follow = start_follow()
oriel = subprocess.Popen(["wine", prog + "/Oriel.exe"])
while subprocess.run(["wine", prog + "/showmess.exe", "--show"], capture_output=True).returncode != 0:
    time.sleep(0.2)
holder = subprocess.Popen(["wine", prog + "/showmess.exe", "--hold"], stdin=subprocess.DEVNULL)
lines = 1500
clients = [subprocess.Popen(["wine", prog + "/showmess.exe", *road, "--count", str(lines), "--rate", "300", name],
                            stdout=subprocess.DEVNULL) for road, name in [([], "com"), (["--atom"], "atom")]]
time.sleep(3)
follow.send_signal(signal.SIGINT)
check(follow.wait(20) == 0, "the first follow ends with 0")
follow = start_follow()
check(all(c.wait(60) == 0 for c in clients), "both clients deliver")
subprocess.run(["wine", prog + "/showmess.exe", "--close"])
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
       for r in got[:len(seeds)]] == [expected(t, s, "2601010000.qxl", n + 1) for n, (t, s) in enumerate(seeds)],
      "the collector has the hostile records and the seeds exactly")
program = got[len(seeds):]
files = sorted({r["file"] for r in program})
check(len(files) >= 2 and files[0] == "2601010000.qxl", "the program's lines span a rollover: %s" % files)
check([(files.index(r["file"]), r["slot"]) for r in program] ==
      sorted({(files.index(r["file"]), r["slot"]) for r in program}), "records arrive once, in log order")
for name in ["com", "atom"]:
    check([r["text"] for r in program if r["text"].startswith(name + " ")] ==
          ["%s %d" % (name, n) for n in range(1, lines + 1)], "every %s line arrives once, in order" % name)
check(len(program) == 2 * lines, "nothing else arrives: %d" % len(program))

shutil.rmtree(work)
if failures:
    sys.exit("%d failed" % len(failures))
print("every output read by jq, grep, csv and rsyslog")
