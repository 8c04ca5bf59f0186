#!/bin/sh
# Started after each job (by the printing tests through Wine, and by
# scripts/printed-page.sh): waits until the private print server has
# finished its jobs, then turns the printed file, if any, into what the
# tests read: <name>.info (pdfinfo), <name>.html (pdftotext -bbox, every
# word with its box) and the PDF itself as <name>.pdf.  <name>.done appears
# last.  Wine cannot wait for a Unix program, so the tests wait for that file.
# Usage: collect-printout.sh <folder of job.pdf> <name> <1: a job is expected | 0: none is>
export PATH=/usr/sbin:/usr/bin:/sbin:/bin
out=$1
name=$2
expect=$3
i=0
while [ $i -lt 300 ]; do
  if [ -z "$(lpstat -o 2>/dev/null)" ] && { [ "$expect" = 0 ] || [ -s "$out/job.pdf" ]; }; then
    break
  fi
  i=$((i + 1))
  sleep 0.1
done
if [ "$expect" = 0 ]; then
  # Room for a job that should not exist to show up all the same.
  sleep 0.5
fi
if [ -f "$out/job.pdf" ]; then
  pdfinfo "$out/job.pdf" >"$out/$name.info" 2>&1
  pdftotext -bbox "$out/job.pdf" "$out/$name.html" 2>/dev/null
  mv "$out/job.pdf" "$out/$name.pdf"
fi
touch "$out/$name.done"
