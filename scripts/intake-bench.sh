#!/usr/bin/env bash
# Intake throughput: lines per second through ShowMess and through atoms,
# from one client and from two at once, into the restored window; then the
# window is closed and the records in the log file are counted, so that a
# lost line shows.  Runs a copy of the installation folder (registered while
# it runs, the original registered again at the end) in the current Wine
# prefix and display: source scripts/wine-env.sh or set WINEPREFIX/DISPLAY.
#   scripts/intake-bench.sh [INSTALL_DIR] [LINES_PER_CLIENT]
set -euo pipefail
install="$(cd "${1:-$(dirname "$0")/../build/Oriel}" && pwd)"
lines="${2:-3000}"
work="$(mktemp -d /tmp/oriel-intake-bench.XXXXXX)"
trap 'rm -rf "$work"' EXIT
cp -r "$install" "$work/Oriel"
mkdir "$work/log"
winpath() { echo "Z:${1//\//\\}"; }
printf '[save]\r\nsavedays=10\r\nsavetime=600\r\nlogsize=10\r\nsavedirectory=%s\r\n' \
  "$(winpath "$work/log")" >"$work/Oriel/config/ShowMess.ini"
oriel="$work/Oriel/Oriel.exe"
tool="$work/Oriel/showmess.exe"
wine "$oriel" /RegServer
wine regsvr32 /s "$work/Oriel/OrielPS.dll"

# run LABEL ROAD...: one server and one client per ROAD (com or atom), each
# sending $lines numbered lines as fast as it can.
run() {
  local label="$1" road pids=() k=0
  shift
  rm -f "$work/log"/*.qxl
  wine "$oriel" &
  local server=$!
  until wine "$tool" --show 2>/dev/null; do sleep 0.2; done
  local start=$(date +%s.%N)
  for road in "$@"; do
    k=$((k + 1))
    wine "$tool" $([ "$road" = atom ] && echo --atom) --count "$lines" "$road client $k" \
      >"$work/client$k.txt" &
    pids+=($!)
  done
  wait "${pids[@]}"
  local end=$(date +%s.%N)
  wine "$tool" --close
  wait "$server"
  local file=$(ls "$work/log"/*.qxl | sort | tail -1)
  local records=$(( ($(stat -c %s "$file") - 272) / 272 ))
  printf '%-16s %6.0f lines/s in all; per client %-11s %d of %d lines in the log\n' \
    "$label" "$(echo "$# * $lines / ($end - $start)" | bc -l)" \
    "$(sed -n 's/.*(\(.*\) lines\/s)/\1/p' "$work"/client*.txt | paste -sd/)" \
    "$records" $(($# * lines))
  rm -f "$work"/client*.txt
}

run "COM" com
run "atoms" atom
run "COM x2" com com
run "atoms x2" atom atom
run "COM + atoms" com atom
# Back to the original folder's server and proxy/stub.
wine "$install/Oriel.exe" /RegServer
wine regsvr32 /s "$install/OrielPS.dll"
