#!/usr/bin/env bash
# Usage: check-docs.sh SOURCE-FOLDER
#
# What the guides show is what is built: each block of code below a line
#   <!-- excerpt of FILE -->
# stands so in FILE, every file that a guide links to is there, and the README describes every option.
set -euo pipefail
cd "$1"
status=0
complain() {
  echo "$*" >&2
  status=1
}

excerpts=0
check_excerpts() {
  local guide=$1 line file="" block="" inside=no
  while IFS= read -r line; do
    if [[ $line =~ ^'<!-- excerpt of '(.*)' -->'$ ]]; then
      file=${BASH_REMATCH[1]}
    elif [[ -n $file && $inside == no && $line == '```'* ]]; then
      inside=yes block=""
    elif [[ $inside == yes && $line == '```' ]]; then
      [[ -n $block && $(<"$file") == *"${block%$'\n'}"* ]] ||
        complain "$guide: this is no excerpt of $file:"$'\n'"$block"
      excerpts=$((excerpts + 1)) file="" inside=no
    elif [[ $inside == yes ]]; then
      block+=$line$'\n'
    fi
  done <"$guide"
  [[ -z $file ]] || complain "$guide: the excerpt of $file has no block of code"
}

check_links() {
  local guide=$1 link
  while read -r link; do
    [[ -e $(dirname "$guide")/$link ]] || complain "$guide: there is no $link"
  done < <(grep -oE '\]\([^)#:]+' "$guide" | cut -c 3-)
}

for guide in *.md */*.md; do
  check_excerpts "$guide"
  check_links "$guide"
done
((excerpts > 0)) || complain "no guide has an excerpt"

while read -r option; do
  grep -qF "| \`$option\` |" README.md || complain "README.md does not describe the option $option"
done < <(grep -hoE '^ *(option|set)\(VYRA_[A-Z_]+ .*' CMakeLists.txt cmake/*.cmake |
  grep -E 'option|CACHE' | grep -oE 'VYRA_[A-Z_]+' | sort -u)
exit "$status"
