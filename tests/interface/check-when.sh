#!/usr/bin/env bash
# Usage: check-when.sh C-COMPILER LIBRARY INCLUDE-FOLDER
#
# Every function says when it may be called, in the notation of VYRADefs.h, and those that may be called always or
# from any thread keep to it: each is called without a host, with zeros for arguments, before the library was
# started.
set -euo pipefail
compiler=$1 library=$2 include=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# "NAME PARAMETERS MARK" of each declaration; the mark ends the comment that stands right above it.
find "$include" -name '*.h' ! -name VYRADefs.h -exec cat {} + | tr '\n' ' ' | grep -oE '(\[[a-z ]+\][ *]*\*/ +)?VYRA_API [^;{]*;' | sed -E '
  s/^(\[([a-z ]+)\])?.*VYRA_API [^(]*[ *](VYRA[A-Za-z0-9]+) ?\(([^;]*)\);$/\3|\4|\2/' >"$work/functions"
while IFS='|' read -r name parameters mark; do
  case $mark in
    always | "any thread")
      commas=${parameters//[!,]/}
      arguments=0${commas//,/, 0}
      [[ $parameters != void ]] || arguments=""
      printf '  %s(%s);\n' "$name" "$arguments"
      ;;
    started | drawing | host) ;;
    *) echo "$name does not say when it may be called." >&2; touch "$work/failed" ;;
  esac
done <"$work/functions" >"$work/calls"
[[ ! -e $work/failed ]]
printf '%s functions, of which %s may be called always\n' "$(wc -l <"$work/functions")" "$(wc -l <"$work/calls")"
[[ -s $work/calls ]]

{
  for header in "$include"/*.h; do printf '#include "%s"\n' "${header##*/}"; done
  echo 'int main(void) {'
  cat "$work/calls"
  printf '  return 0;\n}\n'
} >"$work/calls.c"
"$compiler" -std=c99 "-I$include" "$work/calls.c" -o "$work/calls-all" "$library" "-Wl,-rpath,$(dirname "$library")"
"$work/calls-all" || { echo "A function that may be called always did not survive a call before the start." >&2; exit 1; }
