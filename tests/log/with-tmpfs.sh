#!/bin/sh
# Runs one test program with a real, tiny disk that fills up: a tmpfs of
# ORIEL_SMALL_DISK_SIZE (64 KiB unless set) whose Unix path is given to the
# program in ORIEL_SMALL_DISK.  Where tmpfs cannot be mounted the variable
# stays unset and the program skips.
# Usage: with-tmpfs.sh <runner> <program> [arguments...]
disk=$(mktemp -d)
mounted=
if mount -t tmpfs -o size="${ORIEL_SMALL_DISK_SIZE:-64k}" oriel-small-disk "$disk" 2>/dev/null; then
  mounted=1
  export ORIEL_SMALL_DISK="$disk"
fi
"$@"
status=$?
if [ -n "$mounted" ]; then
  umount "$disk"
fi
rmdir "$disk"
exit $status
