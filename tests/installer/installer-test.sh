#!/usr/bin/env bash
# The package as a plant's administrator uses it, in a Wine prefix of its own
# (made once in the build tree, then reused):
#   installer-test.sh BUILD_DIR VERSION
# The registry the package writes must equal, key by key, what /RegServer and
# regsvr32 write for a copy in the same folder; the installed program takes
# lines on both roads into its log; uninstall leaves nothing of the package
# but the settings file and the logs; a major upgrade keeps a changed
# settings file.
set -euo pipefail

build="$1"
version="$2"
work="$build/installer-test"
mkdir -p "$work"
export WINEPREFIX="$work/wineprefix" WINEDEBUG=-all
# No desktop entries for the shortcut outside the prefix.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT   # this prefix's server only
# A run that failed or was stopped may have left a product half installed or
# half removed: the next one starts from a new prefix.
[ -f "$work/passed" ] || rm -rf "$WINEPREFIX"
rm -f "$work/passed"
[ -f "$WINEPREFIX/system.reg" ] || { wineboot --init >/dev/null 2>&1; wineserver -w; }

scripts="$(cd "$(dirname "$0")/../../scripts" && pwd)"
"$scripts/package.sh" "$build/Oriel" "$version" "$work/new.msi"
"$scripts/package.sh" "$build/Oriel" "$((${version%%.*} - 1)).0.0" "$work/old.msi"

fails=0
fail() { echo "FAIL: $*"; fails=$((fails + 1)); }
drive="$WINEPREFIX/drive_c"
dir="$drive/Program Files/Oriel"
dir_win='C:\Program Files\Oriel'
plant="$drive/Plant Programs/Oriel"
shortcut() { find "$drive" -name 'Oriel message window.lnk' | grep -q .; }

# HKLM\Software\Classes as sorted "key" and "key value" lines, without the
# installer's own bookkeeping.
classes() {
  wine reg export 'HKLM\Software\Classes' "$work/classes.reg" /y >/dev/null
  iconv -f UTF-16 -t UTF-8 "$work/classes.reg" | tr -d '\r' |
    awk '/^\[/ { key = $0; print key; next } NF { print key " " $0 }' |
    grep -v '^\[HKEY_LOCAL_MACHINE\\Software\\Classes\\Installer[]\\]' | sort
}
msiexec() { wine msiexec "$@" /qn || fail "msiexec $* exited with $?"; }

classes >"$work/before.txt"

# What the two commands write for a copy in the folder the package will use.
mkdir -p "$dir" && cp -r "$build/Oriel/." "$dir/"
wine "$dir/Oriel.exe" /RegServer && wine regsvr32 /s "$dir/OrielPS.dll"
classes | comm -13 "$work/before.txt" - >"$work/by-commands.txt"
wine "$dir/Oriel.exe" /UnregServer && wine regsvr32 /u /s "$dir/OrielPS.dll"
rm -rf "$dir"
grep -q 'ProxyStubClsid32' "$work/by-commands.txt" || fail "the commands did not register"

# Installed with the defaults: Program Files, no language file (Chinese).
msiexec /i "$work/new.msi"
classes | comm -13 "$work/before.txt" - >"$work/by-package.txt"
diff "$work/by-commands.txt" "$work/by-package.txt" || fail "the package's registry differs (< commands, > package)"
diff -r -x config -x log "$build/Oriel" "$dir" || fail "the installed folder differs from the installation folder"
[ ! -e "$dir/config/Language.ini" ] || fail "a language file without LANGUAGE"
shortcut || fail "no Start-menu shortcut"

# A client in another process: activation starts the program, which then
# takes the atom too (it stays 5 s after its client); closing the window
# writes both lines.
wine "$dir/showmess.exe" "line through ShowMess" || fail "showmess exited with $?"
wine "$dir/showmess.exe" --atom --close "line through an atom" || fail "showmess --atom exited with $?"
logged="$(wine "$dir/qxltool.exe" dump --iso "$dir_win\\log" | tr -d '\r')"
for line in "line through ShowMess" "line through an atom"; do
  grep -q " $line\$" <<<"$logged" || fail "'$line' is not in the log"
done

# The folders the program wrote are exactly those the package opens to users.
written="$(cd "$dir" && find . -mindepth 2 -type f \( -name ShowMess.ini -o -name '*.qxl' \) |
  cut -d/ -f2 | sort -u | tr '\n' ' ')"
opened="$(msiinfo export "$work/new.msi" MsiLockPermissionsEx | tail -n +4 | cut -f2 |
  while read -r id; do msiinfo export "$work/new.msi" Directory | awk -v id="$id" '$1 == id { print $3 }'; done |
  tr -d '\r' | sort | tr '\n' ' ')"
[ "$written" = "config log " ] && [ "$opened" = "$written" ] || fail "written: $written, opened to users: $opened"

msiexec /x "$work/new.msi"
classes | diff "$work/before.txt" - || fail "uninstall left keys (>) or took some (<)"
! wine reg query 'HKLM\Software\Oriel' >/dev/null 2>&1 || fail "uninstall left HKLM\\Software\\Oriel"
left="$(cd "$dir" && find . -type f | cut -d/ -f2,3 | sed 's|/.*\.qxl$|/*.qxl|' | sort -u | tr '\n' ' ')"
[ "$left" = "config/ShowMess.ini log/*.qxl " ] || fail "after uninstall the folder holds: $left"
! shortcut || fail "uninstall left the Start-menu shortcut"
rm -rf "$dir"

# Major upgrade of a package installed elsewhere in English: the new version
# goes into the same folder, keeps the changed settings file and the language.
msiexec /i "$work/old.msi" INSTALLDIR='C:\Plant Programs\Oriel\' LANGUAGE=ENGLISH
printf '[save]\r\nsavedays=3\r\nlogsize=1\r\n' >"$plant/config/ShowMess.ini"
cp "$plant/config/ShowMess.ini" "$work/settings.ini"
msiexec /i "$work/new.msi"
cmp "$work/settings.ini" "$plant/config/ShowMess.ini" || fail "the upgrade changed the settings file"
diff -r -x config -x log "$build/Oriel" "$plant" || fail "the upgrade left another program"
grep -qx 'CorvaneLanguage=ENGLISH' <(tr -d '\r' <"$plant/config/Language.ini") || fail "the upgrade lost the language"
old_code="$(msiinfo export "$work/old.msi" Property | awk '$1 == "ProductCode" { print $2 }' | tr -d '\r')"
! wine reg query "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\$old_code" >/dev/null 2>&1 ||
  fail "the old version is still installed"
msiexec /x "$work/new.msi"
[ ! -e "$plant/Oriel.exe" ] || fail "uninstall after the upgrade left the program"
rm -rf "$plant"

[ "$fails" -eq 0 ] || { echo "installer: $fails checks failed"; exit 1; }
touch "$work/passed"
echo "installer: all checks passed"
