#!/usr/bin/env bash
# Fails when an include climbs: each folder of the program may include its
# own headers and those of folders on lower layers, never a folder on its
# own layer or above.  Tools, tests and benchmarks stand above everything.
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A layer=(
  [winlayer]=0 [lang]=0 [suite]=0
  [ring]=1 [server]=1
  [log]=2 [settings]=2
  [view]=3
  [print]=4 [dialogs]=4
  [browse]=5
  [msgwnd]=6 [intake]=6
  [app]=7
)

# Lower layers that a folder still must not use: the record and ring are
# plain data, and the log and settings load no resources and make no windows.
declare -A barred=(
  [ring]="winlayer lang"
  [log]="winlayer"
  [settings]="winlayer lang"
)

status=0
for folder in "${!layer[@]}"; do
  [ -d "$folder" ] || continue
  while IFS=: read -r file line include; do
    target=$(sed -E 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"([^/"]+)\/.*/\1/' <<<"$include")
    [ "$target" != "$include" ] || continue          # no folder in the include
    [ -n "${layer[$target]+x}" ] || continue        # generated or third-party
    if [ "$target" != "$folder" ] && [ "${layer[$target]}" -ge "${layer[$folder]}" ]; then
      echo "$file:$line: $folder (layer ${layer[$folder]}) includes $target (layer ${layer[$target]})"
      status=1
    elif [[ " ${barred[$folder]:-} " == *" $target "* ]]; then
      echo "$file:$line: $folder must not use $target"
      status=1
    fi
  done < <(grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' "$folder" || true)
done
[ "$status" -eq 0 ] && echo "includes flow one way"
exit "$status"
