#!/bin/sh
# Runs one program (a test program, or scripts/printed-page.sh) with a real
# printer: a private print server (its own configuration, spool and socket
# in a temporary folder, nothing of the system's) with one PDF queue, the
# default printer, whose jobs land as PDF
# files.  The program finds the server through CUPS_SERVER (Wine takes its
# printers from there) and the folder of the printed files through
# ORIEL_PRINT_OUT, and the script that waits for a job and reads its PDF
# back through ORIEL_PRINT_COLLECT.  Where the server cannot be started the
# variables stay unset and the program skips its printing cases.
# Usage: with-printer.sh <runner> <program> [arguments...]
here=$(cd "$(dirname "$0")" && pwd)
# The server and its administration tools live in sbin.
export PATH="$PATH:/usr/sbin:/sbin"
dir=$(mktemp -d /tmp/oriel-cups.XXXXXX)
pid=
cleanup() {
  if [ -n "$pid" ]; then
    kill "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
  fi
  rm -rf "$dir"
}
trap cleanup EXIT INT TERM

start_server() {
  command -v cupsd >/dev/null 2>&1 || return 1
  chmod 0755 "$dir"
  mkdir -p "$dir/etc" "$dir/spool" "$dir/cache" "$dir/state" "$dir/log" "$dir/tmp" "$dir/out"
  chgrp lp "$dir/tmp" "$dir/out" 2>/dev/null || return 1
  chmod 1770 "$dir/tmp"
  chmod 0777 "$dir/out"
  cat >"$dir/etc/cups-files.conf" <<CONF
ServerRoot $dir/etc
RequestRoot $dir/spool
CacheDir $dir/cache
StateDir $dir/state
TempDir $dir/tmp
AccessLog $dir/log/access_log
ErrorLog $dir/log/error_log
PageLog $dir/log/page_log
FileDevice Yes
User lp
Group lp
SystemGroup root
CONF
  cat >"$dir/etc/cupsd.conf" <<CONF
Listen $dir/cups.sock
Browsing No
LogLevel warn
<Location />
  Order allow,deny
  Allow all
</Location>
CONF
  cupsd -f -c "$dir/etc/cupsd.conf" -s "$dir/etc/cups-files.conf" &
  pid=$!
  export CUPS_SERVER="$dir/cups.sock"
  i=0
  until [ "$(lpstat -r 2>/dev/null)" = "scheduler is running" ]; do
    i=$((i + 1))
    [ $i -lt 100 ] || return 1
    sleep 0.1
  done
  lpadmin -p PDFFILE -E -v "file://$dir/out/job.pdf" \
    -m lsb/usr/cupsfilters/Generic-PDF_Printer-PDF.ppd || return 1
  lpadmin -d PDFFILE || return 1
  export ORIEL_PRINT_OUT="$dir/out"
  export ORIEL_PRINT_COLLECT="$here/collect-printout.sh"
}

if ! start_server; then
  echo "with-printer.sh: no private print server; printing cases skip" >&2
  unset CUPS_SERVER ORIEL_PRINT_OUT ORIEL_PRINT_COLLECT
fi
"$@"; status=$?; exit $status
