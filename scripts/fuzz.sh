#!/usr/bin/env bash
# Runs a fuzzing campaign of SECONDS on every driver of the checked build
# (or the drivers named), one a core (or ORIEL_FUZZ_JOBS at a time), and
# prints per driver the inputs tried, inputs a second, and crashes, hangs,
# traps, assertions and failed properties.  Inputs that went wrong land in BUILD/fuzz-findings; the exit
# status is 1 when there is any.
#   scripts/fuzz.sh BUILD SECONDS [SEED] [DRIVER...]
set -euo pipefail
ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD="$1"
SECONDS_EACH="$2"
SEED="${3:-$(date +%s)}"
shift $(( $# < 3 ? $# : 3 ))
mapfile -t drivers < <(if [ $# -gt 0 ]; then printf '%s\n' "$@"; else
  sed -n 's/^ORIEL_FUZZ_DRIVERS:INTERNAL=//p' "$BUILD/CMakeCache.txt" | tr ';' '\n'; fi)
findings="$BUILD/fuzz-findings"
logs="$BUILD/fuzz-logs"
mkdir -p "$findings" "$logs"
winpath() { winepath -w "$1" 2>/dev/null; }

# A prefix of its own on Wine's null graphics driver: the readers' boxes
# then open and close without a display, a hundred times faster than on X.
export WINEPREFIX="${ORIEL_FUZZ_PREFIX:-$BUILD/fuzz-wineprefix}"
unset DISPLAY
if [ ! -f "$WINEPREFIX/.oriel-fuzz-ready" ]; then
  wineboot --init >/dev/null 2>&1
  wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
  wineserver -w
  touch "$WINEPREFIX/.oriel-fuzz-ready"
fi
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT

run_driver() {
  local name="$1" corpus="$ROOT/tests/fuzz/corpus/$1"
  mkdir -p "$corpus"
  ORIEL_INSTALL_DIR="$BUILD/Oriel" "$ROOT/scripts/wine-run" "$BUILD/tests/fuzz/$name.exe" \
    "-seconds=$SECONDS_EACH" "-seed=$SEED" "-artifacts=$(winpath "$findings")" "$(winpath "$corpus")" \
    >"$logs/$name.out" 2>"$logs/$name.err" ||
    echo "exit $?" >>"$logs/$name.err"
}

echo "Fuzzing ${#drivers[@]} drivers for $SECONDS_EACH s each, seed $SEED (repeat a run with this seed)."
jobs_max=${ORIEL_FUZZ_JOBS:-$(nproc)}
for name in "${drivers[@]}"; do
  while [ "$(jobs -rp | wc -l)" -ge "$jobs_max" ]; do wait -n || true; done
  run_driver "$name" &
done
wait

status=0
for name in "${drivers[@]}"; do
  summary="$(grep -h "^$name: " "$logs/$name.out" || true)"
  if [ -z "$summary" ] || grep -q '==oriel-fuzz==\|^exit ' "$logs/$name.err"; then
    status=1
    echo "$name: FAILED"
    sed 's/^/    /' "$logs/$name.err" | tail -n 20
  fi
  [ -n "$summary" ] && echo "$summary"
done
exit $status
