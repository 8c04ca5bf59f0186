#!/usr/bin/env bash
# Lines of the test suite against the rest of the repository's code, and the
# tests' share of all lines: first over the C++, shell and Python files
# tracked by git, then with the resource scripts, the interface definition
# and C files counted too, which are the program's code as much.
set -euo pipefail
cd "$(dirname "$0")/.."
share() {
  local pattern="$1" what="$2" tests rest
  count() { git ls-files -- "$@" | grep -E "$pattern" | while read -r f; do [ -f "$f" ] && cat "$f"; done | wc -l; }
  tests=$(count tests)
  rest=$(count . ':!tests')
  awk -v t="$tests" -v r="$rest" -v w="$what" 'BEGIN {
    printf "%s: tests %d lines, the rest %d lines: tests are %.4f of all lines\n", w, t, r, t / (t + r) }'
}
share '\.(cpp|h|sh|py)$' "source files"
share '\.(cpp|h|hpp|c|sh|py|rc|idl)$' "with resource scripts, interfaces and C"
