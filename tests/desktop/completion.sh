#!/usr/bin/env bash
# Completes a few command lines with the completion script and the built ampwell command, in
# a root of the test's own, and checks what is offered.
#   completion.sh SCRIPT BUILT_AMPWELL_FOLDER
set -u
script="$1"
PATH="$2:$PATH"
if [ ! -f /usr/share/bash-completion/bash_completion ]; then
  echo "bash-completion is not installed"; exit 77
fi
source /usr/share/bash-completion/bash_completion
source "$script"
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
ampwell --root "$root" profile save Work --complete >/dev/null

# What completing the last of the words offers (the words as the shell splits the line).
offered() {
  COMP_WORDS=("$@")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  COMP_LINE="${COMP_WORDS[*]}"
  COMP_POINT=${#COMP_LINE}
  COMPREPLY=()
  _ampwell ampwell "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
  local IFS=' '
  echo "${COMPREPLY[*]}"
}
failures=0
expect() {
  local wanted="$1" got
  shift
  got=$(offered "$@")
  if [ "$got" != "$wanted" ]; then
    echo "\"$*\" offered \"$got\", not \"$wanted\""; failures=$((failures + 1))
  fi
}
expect "set settings" ampwell s
expect "baseLightColor" ampwell --root "$root" get baseL
expect 'Amp\ Connect' ampwell --root "$root" render --theme 'Amp\ Co'
expect 'Amp\ Badge Amp\ Bar-Thin Amp\ Cells Amp\ Classic Amp\ Connect Amp\ Dots Amp\ Gauge Amp\ Pill Amp\ Wave' \
  ampwell --root "$root" render --theme Amp
expect "Work" ampwell --root "$root" profile restore W
expect "--complete --colors" ampwell profile save Work --c
expect "light dark" ampwell render --style ""
[ "$failures" -eq 0 ] && echo "completion: all offered as expected"
exit "$failures"
