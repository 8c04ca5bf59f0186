#!/usr/bin/env bash
# Photographs every dialog template of both language modules with sample
# texts in their controls, on a virtual display with a window manager, into
# build/dialog-shots/<language>-<dialog id>.png, and copies the two settings
# dialogs into docs/.  Needs a build (./oriel test or ./oriel run first).
set -euo pipefail

ORIEL_ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD_DIR="$ORIEL_ROOT/build"
. "$ORIEL_ROOT/scripts/wine-env.sh"
wine_prefix_setup
start_virtual_display
# The sample texts reach the program through its command line, as UTF-8.
export LC_ALL=C.UTF-8

OUT="$BUILD_DIR/dialog-shots"
mkdir -p "$OUT"

shoot() {
  local language="$1" id="$2"
  shift 2
  wine "$BUILD_DIR/tools/dialogshot/dialogshot.exe" \
    "$BUILD_DIR/Oriel/Lang/$language/Oriel$language.dll" "$id" "$@" &
  local pid=$!
  sleep 2
  # The display shows nothing but the dialog: the picture is the root window
  # cut down to what is not background.
  import -window root "$OUT/full.png"
  convert "$OUT/full.png" -trim +repage "$OUT/$language-$id.png"
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
}

times=(229=2026 230=3 231=3 232=14 233=5 235=0 241=2026 242=3 243=3 244=18 245=30 246=0)

shoot EN 203 "236=Supervisory control suite, message window"
shoot EN 204 "203=D:\\Oriel\\log\\2026"
shoot EN 205 201=600 202=10 203=10
shoot EN 116 "207=&F" "208=Page &P" "${times[@]}"
shoot EN 208 "235=Printing page 1 of 3" "236=Copy 1 of 1"

shoot CHS 203 "236=监控组态软件 消息窗口"
shoot CHS 204 "203=D:\\监控日志\\2026年"
shoot CHS 205 201=600 202=10 203=10
shoot CHS 116 "207=&F" "208=第 &P 页" "${times[@]}"
shoot CHS 208 "235=正在打印第 1 页，共 3 页" "236=第 1 份，共 1 份"
rm -f "$OUT/full.png"

cp "$OUT/EN-204.png" "$ORIEL_ROOT/docs/save-path-en.png"
cp "$OUT/CHS-204.png" "$ORIEL_ROOT/docs/save-path-chs.png"
cp "$OUT/EN-205.png" "$ORIEL_ROOT/docs/save-params-en.png"
cp "$OUT/CHS-205.png" "$ORIEL_ROOT/docs/save-params-chs.png"
echo "Written: $OUT/*.png and docs/save-path-*.png docs/save-params-*.png"
