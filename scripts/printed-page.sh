#!/usr/bin/env bash
# Makes docs/printed-page.png: page 1 of a real print job, at 60 dpi.  The
# message window continues a log of sample lines in C:\Oriel\log, its
# File > Print... is chosen with the mouse and the keyboard as a user does,
# the print dialog is confirmed as it opens (all records), and the job goes
# to the PDF printer of the print tests' private print server
# (scripts/with-printer.sh).  Needs a build (./oriel test or ./oriel run
# first).
set -euo pipefail

ORIEL_ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD_DIR="$ORIEL_ROOT/build"

if [ "${1:-}" != --with-printer ]; then
  exec "$ORIEL_ROOT/scripts/with-printer.sh" "$0" --with-printer
fi
if [ -z "${ORIEL_PRINT_OUT:-}" ]; then
  echo "printed-page.sh: no private print server, so no page" >&2
  exit 1
fi

. "$ORIEL_ROOT/scripts/wine-env.sh"
wine_prefix_setup
start_virtual_display

folder="$WINEPREFIX/drive_c/Oriel"
if [ -e "$folder" ]; then
  echo "printed-page.sh: $folder exists already; remove it first" >&2
  exit 1
fi
cleanup_folder() { rm -rf "$folder"; oriel_cleanup; }
trap cleanup_folder EXIT
cp -r "$BUILD_DIR/Oriel/." "$folder/"
mkdir -p "$folder/Config" "$folder/log"
printf '[Language]\r\nCorvaneLanguage=ENGLISH\r\n' > "$folder/Config/Language.ini"
# A save directory named in the settings, so that the window continues the
# newest log there; no retention sweep.
printf '[save]\r\nsavedays=0\r\nsavetime=600\r\nlogsize=10\r\nsavedirectory=C:\\Oriel\\log\r\n' \
  > "$folder/config/ShowMess.ini"

# A log of 300 sample lines from 2026-03-03 09:00, one every 1.3 to 1.5 s:
# the version text in slot 0, then a record of 272 bytes a line (the local
# time's eight 16-bit fields, then 128 UTF-16 units).
"$ORIEL_ROOT/scripts/demo-lines.sh" 300 | python3 -c '
import datetime, random, struct, sys
random.seed(3)
out = bytearray(272)
out[0:16] = "7.000000".encode("utf-16-le")
t = datetime.datetime(2026, 3, 3, 9, 0, 0)
for line in sys.stdin.read().splitlines():
    t += datetime.timedelta(milliseconds=random.randint(1300, 1500))
    fields = (t.year, t.month, (t.weekday() + 1) % 7, t.day, t.hour, t.minute, t.second,
              t.microsecond // 1000)
    text = line.encode("utf-16-le")[:256]
    out += struct.pack("<8H", *fields) + text + bytes(256 - len(text))
open(sys.argv[1], "wb").write(out)
' "$folder/log/2603030900.qxl"

wine "$folder/Oriel.exe" &
pid=$!
sleep 3
wine "$folder/showmess.exe" --atom --show
window="$(timeout 20 xdotool search --sync --onlyvisible --name "^Oriel" | head -1)"
xdotool windowmove "$window" 10 30
sleep 1
# The File menu opened with the mouse (the window takes no menu keys), its
# Print... item chosen by its mnemonic.
xdotool mousemove --window "$window" 22 10 click 1
sleep 0.7
xdotool key p
timeout 20 xdotool search --sync --onlyvisible --name "^Print$" >/dev/null
sleep 0.5
xdotool key Return

"$ORIEL_ROOT/scripts/collect-printout.sh" "$ORIEL_PRINT_OUT" page 1
if [ ! -f "$ORIEL_PRINT_OUT/page.pdf" ]; then
  echo "printed-page.sh: no job arrived at the printer" >&2
  exit 1
fi
pdfinfo "$ORIEL_PRINT_OUT/page.pdf" | grep '^Pages:'
pdftoppm -r 60 -f 1 -l 1 -png -singlefile "$ORIEL_PRINT_OUT/page.pdf" "$ORIEL_ROOT/docs/printed-page"
kill "$pid"
wait "$pid" 2>/dev/null || true
echo "Written: docs/printed-page.png"
