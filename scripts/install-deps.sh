#!/usr/bin/env bash
# Installs, with apt-get, whatever the build, the run and the tests need and
# this machine lacks.  Quiet and quick when everything is there already.
set -euo pipefail

need=()
have_cmd() { command -v "$1" >/dev/null 2>&1; }
have_pkg() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }

have_cmd cmake || need+=(cmake)
have_cmd make || need+=(make)
have_cmd x86_64-w64-mingw32-g++-posix || need+=(mingw-w64 g++-mingw-w64-x86-64-posix)
have_cmd x86_64-w64-mingw32-widl || need+=(mingw-w64-tools)
# The second compiler: Clang and lld on the same MinGW-w64 headers and libraries.
have_cmd clang++ || need+=(clang)
have_cmd ld.lld || need+=(lld)
have_pkg libwine-dev || need+=(libwine-dev)
have_cmd wine || need+=(wine wine64)
have_pkg wine64 || need+=(wine64)
have_cmd Xvfb || need+=(xvfb)
have_cmd openbox || need+=(openbox)
have_cmd xdotool || need+=(xdotool)
have_cmd import || need+=(imagemagick)
have_pkg fonts-wqy-zenhei || need+=(fonts-wqy-zenhei)
have_pkg fonts-wine || need+=(fonts-wine)
have_pkg fonts-liberation2 || need+=(fonts-liberation2)
[ -f /usr/src/googletest/CMakeLists.txt ] || need+=(googletest)
have_cmd python3 || need+=(python3)
# The Windows Installer package: wixl builds it, msitools' msibuild adds the
# rows wixl cannot write and msiinfo reads it back in the tests.
have_cmd wixl || need+=(wixl)
have_cmd msibuild || need+=(msitools)
# What qxltool's output is fed into in its tests: jq, GNU grep and a collector.
have_cmd jq || need+=(jq)
have_cmd grep || need+=(grep)
have_pkg rsyslog || need+=(rsyslog)
# The printing tests: a private print server with a PDF printer, and the
# tools that read the printed pages back.
have_pkg cups || need+=(cups)
have_pkg printer-driver-cups-pdf || need+=(printer-driver-cups-pdf)
have_cmd pdftotext || need+=(poppler-utils)
have_cmd gs || need+=(ghostscript)

if [ ${#need[@]} -eq 0 ]; then
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
echo "Installing: ${need[*]}"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${need[@]}" >/dev/null
