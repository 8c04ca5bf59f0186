#!/usr/bin/env bash
# Lines of the test suite against the rest of the repository's code (C++,
# shell and Python files tracked by git), and the tests' share of all lines.
set -euo pipefail
cd "$(dirname "$0")/.."
count() { git ls-files -- "$@" | grep -E '\.(cpp|h|sh|py)$' | xargs -r cat | wc -l; }
tests=$(count tests)
rest=$(count . ':!tests')
awk -v t="$tests" -v r="$rest" 'BEGIN {
  printf "tests %d lines, the rest %d lines: tests are %.2f of all lines (%.2f of the rest)\n", t, r, t / (t + r), t / r }'
