#!/usr/bin/env bash
# qxltool on a generated log set, by hand after a build (not part of the
# tests):  scripts/qxltool-bench.sh [FILES [RECORDS_PER_FILE]]
# Makes the set in a fresh directory below /tmp (100 files of 38550 records,
# 10 MB each, 1.05 GB, unless told otherwise), measures inside the process
# (build/bench/qxltool_bench.exe) and through the installed program, and
# removes the set again.
set -euo pipefail
ORIEL_ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD_DIR="$ORIEL_ROOT/build"
files="${1:-100}"
per_file="${2:-38550}"

need_mb=$(( files * (per_file + 1) * 272 / 1048576 + 100 ))
free_mb=$(df --output=avail -m /tmp | tail -1 | tr -d ' ')
if [ "$free_mb" -lt "$need_mb" ]; then
  echo "/tmp has $free_mb MB free, the set needs about $need_mb MB: give fewer files" >&2
  exit 1
fi

# shellcheck source=scripts/wine-env.sh
. "$ORIEL_ROOT/scripts/wine-env.sh"
dir="$(mktemp -d /tmp/qxltool-bench.XXXXXX)"
trap 'rm -rf "$dir"; oriel_cleanup' EXIT
wine_prefix_setup
wine_server_start
win_dir="Z:${dir//\//\\}"
tool="$BUILD_DIR/Oriel/qxltool.exe"

report="$(wine "$BUILD_DIR/bench/qxltool_bench.exe" "$win_dir" "$files" "$per_file" | tr -d '\r')"
echo "$report"
minute="$(sed -n 's/^minute: //p' <<<"$report")"

seconds() {  # wall-clock seconds of a command, its output discarded
  local start end
  start=$(date +%s.%N)
  "$@" >/dev/null
  end=$(date +%s.%N)
  awk "BEGIN { printf \"%.3f\", $end - $start }"
}
echo "through the program (wall clock, Wine's start of a process included):"
echo "  qxltool --help (start-up alone): $(seconds wine "$tool" --help) s"
echo "  qxltool dump --count --from $minute --to $minute: $(seconds wine "$tool" dump --count --from "$minute" --to "$minute" "$win_dir") s"
echo "  qxltool dump --csv (all records, to /dev/null): $(seconds wine "$tool" dump --csv "$win_dir") s"
echo "  cat of the same files (to /dev/null): $(seconds cat "$dir"/*.qxl) s"
