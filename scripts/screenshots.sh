#!/usr/bin/env bash
# Makes docs/screenshot-en.png and docs/screenshot-chs.png: the restored
# message window with a few hundred lines, on a virtual display with a window
# manager, in each language; and docs/browser-en.png, docs/browser-chs.png: a
# log browser opened from the File menu beside the main window.  Needs a
# build (./oriel test or ./oriel run first).
set -euo pipefail

ORIEL_ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD_DIR="$ORIEL_ROOT/build"
. "$ORIEL_ROOT/scripts/wine-env.sh"
wine_prefix_setup
start_virtual_display

# Opens the current log in a browser from the File menu, with the mouse as a
# user does (the window takes no menu keys: the loop translates nothing), and
# shoots it beside the main window.
shoot_browser() {
  local window="$1" copy="$2" out="$3"
  local log
  log="$(ls "$copy/log/"*.qxl | head -1)"
  xdotool windowmove "$window" 10 30
  sleep 0.5
  xdotool mousemove --window "$window" 22 10 click 1
  sleep 0.7
  xdotool mousemove --window "$window" 50 30 click 1
  timeout 20 xdotool search --sync --onlyvisible --name "^(Select File|选择文件)$" >/dev/null
  sleep 0.5
  xdotool type --delay 10 "Z:${log//\//\\}"
  xdotool key Return
  sleep 2
  local browser
  browser="$(xdotool getactivewindow)"
  xdotool windowsize "$browser" 640 420 windowmove "$browser" 580 200
  sleep 1
  import -window root -crop 1230x650+0+0 "$out"
}

shoot() {
  local language="$1" lines="$2" out="$3" browserOut="$4"
  local copy
  copy="$(mktemp -d)"
  cp -r "$BUILD_DIR/Oriel/." "$copy/"
  mkdir -p "$copy/Config"
  printf '[Language]\r\nCorvaneLanguage=%s\r\n' "$language" > "$copy/Config/Language.ini"
  wine "$copy/Oriel.exe" &
  local pid=$!
  sleep 3
  wine "$copy/showmess.exe" --atom < "$lines"
  wine "$copy/showmess.exe" --atom --show
  local window
  window="$(timeout 20 xdotool search --sync --onlyvisible --name "^Oriel" | head -1)"
  xdotool windowsize "$window" 900 520
  sleep 1
  import -frame -window "$window" "$out"
  shoot_browser "$window" "$copy" "$browserOut"
  kill "$pid"
  wait "$pid" 2>/dev/null || true
  rm -rf "$copy"
}

sample() {
  python3 - "$1" <<'PY'
import random, sys
random.seed(7)
if sys.argv[1] == "en":
    units = ["Pump P-10%d" % i for i in range(1, 5)] + ["Valve V-20%d" % i for i in range(1, 6)]
    events = ["started", "stopped", "opened", "closed", "running at %d rpm", "flow %d.%d m3/h",
              "pressure high alarm (%d.%d bar)", "acknowledged by operator"]
    driver = ["Modbus driver: station %d reconnected", "OPC server: %d tags refreshed",
              "Runtime: project loaded, %d screens"]
else:
    units = ["泵 P-10%d" % i for i in range(1, 5)] + ["阀门 V-20%d" % i for i in range(1, 6)]
    events = ["启动", "停止", "打开", "关闭", "转速 %d 转/分", "流量 %d.%d 立方米/时",
              "压力过高报警（%d.%d bar）", "操作员已确认"]
    driver = ["Modbus 驱动：站 %d 已重新连接", "OPC 服务器：已刷新 %d 个变量",
              "运行系统：工程已加载，共 %d 个画面"]
for n in range(300):
    if n % 11 == 0:
        text = random.choice(driver)
    else:
        text = random.choice(units) + " " + random.choice(events)
    args = tuple(random.randint(1, 99) for _ in range(text.count("%d")))
    print(text % args)
PY
}

tmp="$(mktemp -d)"
sample en > "$tmp/en.txt"
sample chs > "$tmp/chs.txt"
shoot ENGLISH "$tmp/en.txt" "$ORIEL_ROOT/docs/screenshot-en.png" "$ORIEL_ROOT/docs/browser-en.png"
shoot CHINESE "$tmp/chs.txt" "$ORIEL_ROOT/docs/screenshot-chs.png" "$ORIEL_ROOT/docs/browser-chs.png"
rm -rf "$tmp"
echo "Written: docs/screenshot-{en,chs}.png docs/browser-{en,chs}.png"
