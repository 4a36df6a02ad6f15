#!/usr/bin/env bash
# Usage: run-commands.sh PROGRAM-FOLDER [copy:NAME=PATH | link:NAME=PATH]... GUIDE...
#
# Runs the commands of guides, and holds what they print against what the guides show: each line "$ COMMAND" in
# a block of code below a line
#   <!-- run -->
# followed by the output, in which "..." stands for any text, of many lines too. The commands run one after the
# other in one shell, in a folder that is also the home folder and holds each PATH as NAME. PROGRAM-FOLDER is looked
# through for programs; empty for none.
set -euo pipefail
programs=$1
shift

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export HOME=$scratch/home XDG_STATE_HOME=$scratch/state LC_ALL=C.UTF-8
unset CMAKE_PREFIX_PATH CMAKE_GENERATOR PKG_CONFIG_PATH LD_LIBRARY_PATH MAKEFLAGS MFLAGS
[[ -z $programs ]] || export PATH="$programs:$PATH"
mkdir "$HOME"
cd "$HOME"
while [[ ${1-} == copy:* || ${1-} == link:* ]]; do
  name=${1#*:}
  path=${name#*=} name=${name%%=*}
  mkdir -p "$(dirname "$name")"
  if [[ $1 == copy:* ]]; then cp -r "$path" "$name"; else ln -s "$path" "$name"; fi
  shift
done
ulimit -c 0
runs=0 faults=0 status=0

# check COMMAND EXPECTED: EXPECTED is a pattern of the whole output, its line ends included.
check() {
  set +e
  (exit "$status")
  eval "$1" >"$scratch/output" 2>&1 </dev/null
  status=$?
  set -e
  local output pattern
  output=$(<"$scratch/output")
  # Everything but "..." is literal: each of its characters is escaped first.
  pattern=$(sed -e 's/[^[:alnum:]]/\\&/g' -e 's/\\\.\\\.\\\./*/g' <<<"$2")
  pattern=${pattern//'*'$'\n'/'*'}
  runs=$((runs + 1))
  # shellcheck disable=SC2053  # it is meant as a pattern
  if [[ $output != $pattern ]]; then
    printf '%s: the output of this command is another one:\n$ %s\n---- shown\n%s---- printed\n%s\n----\n' \
      "$guide" "$1" "$2" "$output" >&2
    faults=$((faults + 1))
  fi
}

for guide in "$@"; do
  runs=0 state=text command="" expected=""
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
done
((faults == 0))
