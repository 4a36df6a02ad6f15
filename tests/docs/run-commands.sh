#!/usr/bin/env bash
# Usage: run-commands.sh GUIDE PROGRAM-FOLDER SIMULATOR-FOLDER MODULE
#
# Runs the commands of a guide, and holds what they print against what the guide shows: each line "$ COMMAND" in
# a block of code below a line
#   <!-- run -->
# followed by the output, in which "..." stands for any text, of many lines too. The commands run one after the
# other in a folder that holds a copy of SIMULATOR-FOLDER as "skyvora", with MODULE in the plugin folder "fuel".
set -euo pipefail
guide=$1 programs=$2 simulator=$3 module=$4

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r "$simulator" "$scratch/skyvora"
mkdir -p "$scratch/skyvora/Resources/plugins/fuel/64"
cp "$module" "$scratch/skyvora/Resources/plugins/fuel/64/lin.vyp"
cd "$scratch"
export PATH="$programs:$PATH" XDG_STATE_HOME="$scratch/state"
ulimit -c 0
runs=0 faults=0 status=0

# check COMMAND EXPECTED: EXPECTED is a pattern of the whole output, its line ends included.
check() {
  local command=$1 expected=$2 output pattern
  set +e
  output=$( (exit "$status"); eval "$command" 2>&1)
  status=$?
  set -e
  # Everything but "..." is literal: each of its characters is escaped first.
  pattern=$(sed -e 's/[^[:alnum:]]/\\&/g' -e 's/\\\.\\\.\\\./*/g' <<<"$expected")
  pattern=${pattern//'*'$'\n'/'*'}
  runs=$((runs + 1))
  # shellcheck disable=SC2053  # it is meant as a pattern
  if [[ $output != $pattern ]]; then
    printf '%s: the output of this command is another one:\n$ %s\n---- shown\n%s---- printed\n%s\n----\n' \
      "$guide" "$command" "$expected" "$output" >&2
    faults=$((faults + 1))
  fi
}

state=text command="" expected=""
while IFS= read -r line; do
  case $state in
    text) [[ $line != '<!-- run -->' ]] || state=announced ;;
    announced) state=block ;;
    block)
      if [[ $line == '```' || $line == '$ '* ]]; then
        [[ -z $command ]] || check "$command" "$expected"
        command=${line#'$ '} expected=""
        [[ $line != '```' ]] || state=text command=""
      else
        expected+=$line$'\n'
      fi
      ;;
  esac
done <"$guide"
((runs > 0)) || { echo "$guide has no command to run" >&2; exit 1; }
((faults == 0))
