#!/usr/bin/env bash
# Usage: check-layers.sh SOURCE-FOLDER OBJECT...
#
# The library's files stand in layers, which layers.txt gives, and what a file uses lies in its own layer or below:
# the headers that it includes, and the objects whose symbols its object refers to, as a call can also go up through
# a public header. No two subsystems use each other but for the few that may. Nothing is used in a circle, neither among
# the headers nor among the objects.
set -euo pipefail
sources=$1
shift

layers=$(grep -v '^#' "$(dirname "${BASH_SOURCE[0]}")/layers.txt")

# Which subsystem may use which other.
read -r -d '' mayUse <<'END' || true
planes > data access
planes > utilities
END

# Standard input: pairs of files, the first of which uses the second.
checkPairs() {
  local kind=$1 pairs status=0
  pairs=$(cat)
  awk -v kind="$kind" -v layers="$layers" -v mayUse="$mayUse" '
    function place(file,   i) {
      for (i = 1; i <= rows; ++i) if (index(file, prefix[i]) == 1) return i
      print "layers.txt gives no layer for " file "."
      failed = 1
      return 0
    }
    BEGIN {
      rows = split(layers, line, "\n")
      for (i = 1; i <= rows; ++i) {
        split(line[i], word, " ")
        prefix[i] = word[1]
        layer[i] = word[2]
        subsystem[i] = line[i]
        sub(/^[^ ]+ +[^ ]+ */, "", subsystem[i])
      }
      count = split(mayUse, line, "\n")
      for (i = 1; i <= count; ++i) allowed[line[i]] = 1
    }
    {
      user = place($1)
      used = place($2)
      if (user == 0 || used == 0) next
      up = layer[used] > layer[user]
      across = layer[used] == layer[user] && subsystem[used] != subsystem[user] &&
               !((subsystem[user] " > " subsystem[used]) in allowed)
      if (!up && !across) next
      print kind ": " $1 " (layer " layer[user] ") uses " $2 " (layer " layer[used] ")."
      failed = 1
    }
    END { exit failed }' <<<"$pairs" >&2 || status=1
  if ! tsort <<<"$pairs" >/dev/null 2>"$work/circle"; then
    echo "$kind: a circle:" >&2
    sed -n 's/^tsort: \([^-]\)/  \1/p' "$work/circle" >&2
    status=1
  fi
  return "$status"
}

includes() {
  local file header
  for file in "$sources"/*.h "$sources"/*.cpp; do
    sed -n 's/^#include "\(.*\)".*/\1/p' "$file" | while read -r header; do
      # The public headers are below everything.
      [[ ! -e $sources/$header ]] || echo "${file##*/} $header"
    done
  done
}

# Inline functions have weak symbols in many objects, and count in none.
calls() {
  local object name
  for object in "$@"; do
    name=${object##*/}
    nm "$object" | awk -v name="${name%.o}" '
      $2 ~ /^[TDBRC]$/ { print "defines", $3, name }
      $1 == "U"        { print "uses", $2, name }'
  done | sort -u | awk '
    $1 == "defines" { definer[$2] = $3; next }
    $2 in definer && definer[$2] != $3 { print $3, definer[$2] }' | sort -u
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

includes >"$work/includes"
calls "$@" >"$work/calls"
for list in includes calls; do
  [[ -s $work/$list ]] || { echo "check-layers.sh found no $list: is it called rightly?" >&2; exit 1; }
done
status=0
checkPairs includes <"$work/includes" || status=1
checkPairs calls <"$work/calls" || status=1
exit "$status"
