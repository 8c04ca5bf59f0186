# Sourced by ./oriel: the project's Wine prefix (inside the build tree, made
# once and reused) and, when needed, a virtual display with a window manager.

export WINEPREFIX="$BUILD_DIR/wineprefix"
export WINEDEBUG=-all
# No debugger on a crash or a trap: the program ends and its test fails.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"

ORIEL_BG_PIDS=()
oriel_cleanup() {
  local pid
  if [ -n "${ORIEL_WINESERVER_STARTED:-}" ]; then
    wineserver -k >/dev/null 2>&1 || true   # this prefix's server, started by us
  fi
  for pid in "${ORIEL_BG_PIDS[@]}"; do
    kill "$pid" 2>/dev/null || true
  done
  ORIEL_BG_PIDS=()
}
trap oriel_cleanup EXIT

# Raised whenever the settings below change, so existing prefixes get them.
ORIEL_PREFIX_SETTINGS=4

wine_prefix_setup() {
  if [ "$(cat "$WINEPREFIX/.oriel-ready" 2>/dev/null)" = "$ORIEL_PREFIX_SETTINGS" ]; then
    return
  fi
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    echo "Creating the Wine prefix in $WINEPREFIX (once)..."
    wineboot --init >/dev/null 2>&1
    wineserver -w
  fi
  # Debian's Wine does not find the fonts it ships unless they are in the prefix.
  if [ -d /usr/share/wine/fonts ]; then
    cp -n /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true
  fi
  # Chinese in menus, captions and dialogs needs font links to a CJK font.
  # The bitmap strikes of the Sharp face keep small dialog text legible.
  local face
  for face in "Tahoma" "Tahoma Bold" "MS Shell Dlg" "MS Shell Dlg 2" "Microsoft Sans Serif"; do
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' \
      /v "$face" /t REG_MULTI_SZ /d "wqy-zenhei.ttc,WenQuanYi Zen Hei Sharp" /f >/dev/null 2>&1
  done
  # Edit boxes draw through Uniscribe, which ignores font links: it falls back
  # per script, and has no font of its own for Han (tag "hani", 0x696e6168).
  wine reg add 'HKCU\Software\Wine\Uniscribe\Fallback' /v 696e6168 /d "WenQuanYi Zen Hei Sharp" /f >/dev/null 2>&1
  # Menus and message boxes: 9 points instead of 8 (a LOGFONT of height -12,
  # weight 400, "MS Shell Dlg"), the size at which the linked face stays legible.
  local metric font9pt=F4FFFFFF0000000000000000000000009001000000000000000000224D00530020005300680065006C006C00200044006C00670000000000000000000000000000000000000000000000000000000000000000000000000000000000
  for metric in MenuFont MessageFont; do
    wine reg add 'HKCU\Control Panel\Desktop\WindowMetrics' /v "$metric" /t REG_BINARY /d "$font9pt" /f >/dev/null 2>&1
  done
  wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "Courier New" /d "Liberation Mono" /f >/dev/null 2>&1
  # The Chinese view font: the bitmap strikes of this face stay crisp at 12
  # pixels, hyphens included, where the outline face drops them.
  wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "NSimSun" /d "WenQuanYi Zen Hei Sharp" /f >/dev/null 2>&1
  wineserver -w
  echo "$ORIEL_PREFIX_SETTINGS" > "$WINEPREFIX/.oriel-ready"
}

# Keeps one wineserver, with Wine's own service processes, alive between the
# many short test programs.  The services are started here, with their output
# going nowhere: started by a test they would inherit its output pipe, and
# CTest would wait for that pipe to close until the services end.
wine_server_start() {
  wineserver -p >/dev/null 2>&1 || true
  wine cmd /c exit </dev/null >/dev/null 2>&1 || true
  ORIEL_WINESERVER_STARTED=1
}

start_virtual_display() {
  local n=90
  while [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ]; do n=$((n + 1)); done
  Xvfb ":$n" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
  ORIEL_BG_PIDS+=($!)
  local i
  for i in $(seq 1 100); do
    [ -e "/tmp/.X11-unix/X$n" ] && break
    sleep 0.05
  done
  export DISPLAY=":$n"
  # Without a window manager every hide or destroy of a window stalls for seconds.
  openbox --sm-disable >/dev/null 2>&1 &
  ORIEL_BG_PIDS+=($!)
  sleep 0.5
}
