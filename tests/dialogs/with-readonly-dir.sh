#!/bin/sh
# Runs one test program with a directory that Wine reports read-only: one
# whose Unix write permissions are gone (Wine does not store the read-only
# attribute of directories it is asked to set).  Its Unix path is given to
# the program in ORIEL_READONLY_DIR.
# Usage: with-readonly-dir.sh <runner> <program> [arguments...]
base=$(mktemp -d)
mkdir "$base/readonly"
chmod a-w "$base/readonly"
export ORIEL_READONLY_DIR="$base/readonly"
"$@"
status=$?
chmod u+w "$base/readonly"
rm -rf "$base"
exit $status
