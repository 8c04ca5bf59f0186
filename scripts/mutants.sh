#!/usr/bin/env bash
# The mutation check: plants each fault of a list (scripts/mutants.list by
# default) in turn, rebuilds, runs every test, and says whether the suite
# caught it.  Needs a prepared environment (build tree, Wine, display):
# `./oriel mutants` provides one.
#   usage: scripts/mutants.sh [list-file] [-- extra ctest args]
#   MUTANTS_ONLY=<regex>  only the faults whose "path | description" matches
set -uo pipefail

ROOT="$(cd "$(dirname "$0")/.." && pwd)"
: "${BUILD_DIR:?BUILD_DIR must name the build tree}"
LIST="$ROOT/scripts/mutants.list"
if [ $# -gt 0 ] && [ "$1" != "--" ]; then LIST="$(realpath "$1")"; shift; fi
[ "${1:-}" = "--" ] && shift
[ -f "$LIST" ] || { echo "no fault list $LIST" >&2; exit 2; }
LOGS="$BUILD_DIR/mutants"
mkdir -p "$LOGS"

# Reads the list ("list": one "index TAB path TAB description" line a fault)
# and plants fault i ("apply"): the old text must occur exactly once.
PY='
import sys, pathlib
def faults(name):
    out = []
    for n, line in enumerate(open(name, encoding="utf-8").read().split("\n"), 1):
        if line.startswith("= "):
            path, _, desc = line[2:].partition(" | ")
            out.append({"path": path.strip(), "desc": desc.strip()})
        elif line.startswith("- ") and out: out[-1]["old"] = line[2:]
        elif (line == "+" or line.startswith("+ ")) and out: out[-1]["new"] = line[2:]
        elif line.strip() and not line.startswith("#"): sys.exit(f"{name}:{n}: no marker")
    return out
cmd, name = sys.argv[1:3]
fs = faults(name)
if cmd == "list":
    for i, f in enumerate(fs): print(i, f["path"], f["desc"], sep="\t")
    sys.exit()
f = fs[int(sys.argv[3])]
if not f.get("old") or "new" not in f: sys.exit("a fault needs one - line and one + line")
target = pathlib.Path(sys.argv[4], f["path"])
if not target.is_file(): sys.exit("no such file")
data, old = target.read_bytes(), f["old"].encode()
if data.count(old) != 1: sys.exit(f"old text found {data.count(old)} times")
target.write_bytes(data.replace(old, f["new"].encode()))
'

# The file holding a fault now.  Written back with a fresh time stamp, so that
# the build replaces the faulty objects; also after Ctrl+C or a killed run.
restore() {
  [ -f "$LOGS/planted" ] || return 0
  cat "$LOGS/original" > "$ROOT/$(cat "$LOGS/planted")" && rm -f "$LOGS/planted"
}
restore
trap restore EXIT
trap 'restore; exit 130' INT TERM

cp "$LIST" "$LOGS/list" && LIST="$LOGS/list"  # edits during the run do not count
faults="$(python3 -c "$PY" list "$LIST")" || exit 2
total=0 caught=0 errors=0
while IFS=$'\t' read -r -u 3 i file desc; do
  [ -n "$i" ] || continue
  [[ -z "${MUTANTS_ONLY:-}" || "$file | $desc" =~ $MUTANTS_ONLY ]] || continue
  total=$((total + 1)) start=$SECONDS log="$LOGS/$i.log"
  cp "$ROOT/$file" "$LOGS/original" 2>/dev/null && echo "$file" > "$LOGS/planted"
  if ! why="$(python3 -c "$PY" apply "$LIST" "$i" "$ROOT" 2>&1)"; then
    rm -f "$LOGS/planted"  # nothing was written
    echo "ERROR    $file | $desc: ${why##*$'\n'}"; errors=$((errors + 1)); continue
  fi
  # A fault that hangs a test costs five minutes, not ctest's default 25.
  if ! cmake --build "$BUILD_DIR" -j "$(nproc)" > "$log" 2>&1; then
    line="ERROR    $file | $desc: does not compile"; errors=$((errors + 1))
  elif ctest --test-dir "$BUILD_DIR" --stop-on-failure --timeout 300 "$@" >> "$log" 2>&1; then
    line="MISSED   $file | $desc"
  else
    test="$(sed -nE 's/^[[:space:]]+[0-9]+ - ([^ ]+).*/\1/p' "$log" | head -n 1)"
    line="caught   $file | $desc (${test:-ctest failed})"; caught=$((caught + 1))
  fi
  restore
  echo "$line  [$((SECONDS - start)) s]"
done 3<<< "$faults"

cmake --build "$BUILD_DIR" -j "$(nproc)" > "$LOGS/rebuild.log" 2>&1 ||
  echo "the untouched tree does not build again: see $LOGS/rebuild.log"
[ "$errors" -eq 0 ] || echo "$errors list errors (counted as not caught)"
echo "$caught of $total caught"
[ "$caught" -eq "$total" ]
