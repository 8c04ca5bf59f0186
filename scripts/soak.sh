#!/usr/bin/env bash
# Soak run: two client processes (showmess through ShowMess, showmess through
# atoms) feed the real program at fixed rates and flat out, with rollovers;
# after each phase the window is closed and scripts/soak_check.py accounts
# for every line from the log files alone.  Loss is allowed only where the
# program discards lines by design: a ring overrun (more than 5000 lines
# unflushed) and a rollover due within the minute its file was started.
#   scripts/soak.sh short [INSTALL_DIR]     under a minute (a CTest entry)
#   scripts/soak.sh long  [INSTALL_DIR]     10 minutes
#   scripts/soak.sh phase NAME EXPECT LOGSIZE SAVETIME COM_LINES COM_RATE ATOM_LINES ATOM_RATE [SEED [flood]]
#     one phase by hand.  EXPECT: zero, overrun or discard; a rate of 0 is
#     flat out; SEED records "seed N" in a log file of an earlier minute make
#     the first rollover come soon; flood keeps the window's queue busy while
#     the atoms flow, so that its timers wait (soak_helper)
# Runs a copy of the installation folder, registered while it runs, in the
# current Wine prefix and display (./oriel sets them up; see scripts/wine-env.sh).
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
mode="${1:-}"
case "$mode" in
  short | long) install="${2:-$here/../build/Oriel}" ;;
  phase) install="$here/../build/Oriel" ;;
  *) sed -n '2,16p' "$0" | sed 's/^# \{0,1\}//'; exit 2 ;;
esac
install="$(cd "$install" && pwd)"
export WINEPREFIX="${WINEPREFIX:-$here/../build/wineprefix}" WINEDEBUG="${WINEDEBUG:--all}"
work="$(mktemp -d /tmp/oriel-soak.XXXXXX)"
server=""
cleanup() {
  if [ -n "$server" ] && kill -0 "$server" 2>/dev/null; then kill "$server"; fi
  wine "$work/Oriel/Oriel.exe" /UnregServer >/dev/null 2>&1 || true
  wine regsvr32 /s /u "$work/Oriel/OrielPS.dll" >/dev/null 2>&1 || true
  rm -rf "$work"
}
trap cleanup EXIT
cp -r "$install" "$work/Oriel"
oriel="$work/Oriel/Oriel.exe"
tool="$work/Oriel/showmess.exe"
wine "$oriel" /RegServer
wine regsvr32 /s "$work/Oriel/OrielPS.dll"
winpath() { echo "Z:${1//\//\\}"; }
# Built beside the tests (tests/soak/SoakHelper.cpp).
helper="${ORIEL_SOAK_HELPER:-$install/../tests/soak/soak_helper.exe}"

# A log file named after a minute long past holding SEED records "seed N".
seed_log() {
  python3 - "$1" "$2" <<'EOF'
import struct, sys
path, count = sys.argv[1], int(sys.argv[2])
header = "7.000000".encode("utf-16-le")
with open(path, "wb") as f:
    f.write(header + bytes(272 - len(header)))
    for n in range(1, count + 1):
        text = ("seed %d" % n).encode("utf-16-le")
        f.write(struct.pack("<8H", 2026, 1, 4, 1, 0, 0, 0, 0) + text + bytes(256 - len(text)))
EOF
}

rate_text() { if [ "$1" = 0 ]; then echo "flat out"; else echo "at $1 lines/s"; fi; }

failures=0
# phase NAME EXPECT LOGSIZE SAVETIME COM_LINES COM_RATE ATOM_LINES ATOM_RATE [SEED [flood]]
phase() {
  local name="$1" expect="$2" logsize="$3" savetime="$4" comlines="$5" comrate="$6"
  local atomlines="$7" atomrate="$8" seed="${9:-0}" flood="${10:-}" log="$work/log-$1"
  mkdir -p "$log"
  printf '[save]\r\nsavedays=0\r\nsavetime=%s\r\nlogsize=%s\r\nsavedirectory=%s\r\n' \
    "$savetime" "$logsize" "$(winpath "$log")" >"$work/Oriel/config/ShowMess.ini"
  local clients=(--client "com:$comlines" --client "atom:$atomlines")
  if [ "$seed" -gt 0 ]; then
    seed_log "$log/2601010000.qxl" "$seed"
    clients+=(--client "seed:$seed")
  fi
  echo "phase $name: logsize $logsize MB, savetime $savetime s; $comlines lines through ShowMess" \
    "$(rate_text "$comrate"), $atomlines through atoms $(rate_text "$atomrate")${flood:+, queue flooded}"
  wine "$oriel" &
  server=$!
  wine "$helper" wait OrielMessWnd 30000
  # A server that a client has used ends 5 s after the last release, without
  # writing its pending lines: this client keeps it until the window closes.
  wine "$tool" --hold </dev/null &
  local holder=$! flooder="" start end status=0
  [ -n "$flood" ] && { wine "$helper" flood OrielMessWnd 600 & flooder=$!; }
  # A rollover within the minute of the current file fails its flush into
  # that very file with the system's sharing-violation box, at every size
  # check while lines are pending: designed, answered as they come.
  local answerer=""
  [ "$expect" = discard ] && { wine "$helper" boxes OrielMessWnd 3000 32 & answerer=$!; }
  start=$(date +%s.%N)
  wine "$tool" --count "$comlines" $([ "$comrate" != 0 ] && echo --rate "$comrate") com \
    >"$work/com.txt" &
  local com=$!
  wine "$tool" --atom --count "$atomlines" $([ "$atomrate" != 0 ] && echo --rate "$atomrate") atom \
    >"$work/atom.txt" || status=1
  [ -n "$flooder" ] && kill "$flooder"
  wait "$com" || status=1
  end=$(date +%s.%N)
  # Any other box is answered, so that the window can close, and fails the phase.
  wine "$helper" boxes OrielMessWnd 1000 $([ "$expect" = discard ] && echo 32) ||
    { echo "  FAIL: the program showed message boxes"; status=1; }
  # After a flood the close waits behind the queued messages, longer than
  # showmess waits: the server's own end decides.
  wine "$tool" --close 2>/dev/null || [ -n "$flood" ] || status=1
  wait "$holder" || true
  wait "$server" || status=1
  server=""
  if [ -n "$answerer" ]; then
    wait "$answerer" || { echo "  FAIL: the program showed other message boxes"; status=1; }
  fi
  printf '  %.0f lines/s together for %.1f s (ShowMess: %s, atoms: %s)\n' \
    "$(echo "($comlines + $atomlines) / ($end - $start)" | bc -l)" "$(echo "$end - $start" | bc -l)" \
    "$(sed -n 's/.*(\(.*\))/\1/p' "$work/com.txt")" "$(sed -n 's/.*(\(.*\))/\1/p' "$work/atom.txt")"
  [ "$status" = 0 ] || echo "  FAIL: a client or the server did not end cleanly"
  python3 "$here/soak_check.py" "$log" "${clients[@]}" --expect "$expect" || status=1
  [ "$status" = 0 ] || failures=$((failures + 1))
}

case "$mode" in
  short)
    # One rollover out of a nearly full file of an earlier minute, no loss.
    phase rollover zero 1 1 1500 300 1500 300 3800
    phase steady zero 100 1 3000 500 3000 500
    # Only more than 4000 waiting lines are flushed, looked at once a second
    # when the queue is empty: with the timer held back the ring overwrites
    # 5000 unwritten lines at a time.
    phase overrun overrun 100 0 200 0 7000 0 0 flood
    # A 1 MB file (3855 records) fills within its minute: each rollover
    # continues it and drops the pending lines.  Of two files filled one
    # after the other, at least one fills within its minute: 14000 lines
    # fill two, even with a second's worth of lines over each.
    phase discard discard 1 1 3000 0 11000 0
    ;;
  long)
    # A rollover every 77 s at 50 lines/s, no loss.
    phase rollover zero 1 1 9000 25 9000 25 3800
    phase steady zero 100 1 24000 400 24000 400
    # As fast as the clients go, no loss while files last over a minute.
    phase flat-out zero 100 1 60000 0 60000 0
    phase overrun overrun 100 0 500 0 30000 0 0 flood
    phase discard discard 1 1 30000 0 30000 0
    ;;
  phase)
    shift
    phase "$@"
    ;;
esac
[ "$failures" = 0 ] && echo "soak: every line accounted for" || echo "soak: $failures phase(s) failed"
exit $((failures > 0))
