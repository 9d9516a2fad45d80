#!/usr/bin/env bash
# Runs the code that models are written as and compares its values with the program's: all models of the catalogue,
# every function, and what is hard in the language, at 20 points each. Where no interpreter or compiler of a language is
# on the machine, it says so.
#
# usage: scripts/code-check.sh BUILD [EXTENSION ...]   such as scripts/code-check.sh build/release py js
set -euo pipefail

build=$(realpath "${1:?usage: scripts/code-check.sh BUILD [EXTENSION ...]}")
shift
languages=${*:-py r js m jl rs f90 txt}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$build/tests/code_check" write "$folder"

# The special functions of Python are those of SciPy, which may be installed for one of several; without it nothing is
# checked.
python() {
  local each
  for each in python3 /usr/bin/python3; do
    "$each" -c 'import scipy' 2>/dev/null && { echo "$each"; return; }
  done
  return 1
}

# What prints the values, in the folder of the language; 127 where nothing can.
run() {
  local found
  case $1 in
    py) found=$(python) || return 127; "$found" check.py ;;
    r) command -v Rscript >/dev/null || return 127; Rscript --vanilla check.r ;;
    js) command -v node >/dev/null || return 127; node check.js ;;
    m) command -v octave-cli >/dev/null || return 127; octave-cli --no-init-file check_all.m ;;
    jl) command -v julia >/dev/null || return 127; julia --startup-file=no check.jl ;;
    rs) command -v rustc >/dev/null || return 127; rustc -A warnings -o check check.rs && ./check ;;
    txt)
      command -v ssconvert >/dev/null || return 127
      ssconvert -T Gnumeric_stf:stf_assistant -O 'separator=, format=raw' check.csv values.csv >&2
      awk -F, '{ print $5, $6, $4 }' values.csv
      ;;
    f90) command -v gfortran >/dev/null || return 127; gfortran -o check [!c]*.f90 check.f90 && ./check ;;
  esac
}

status=0
for language in $languages; do
  [ -d "$folder/$language" ] || continue
  printf '%-4s' "$language"
  code=0
  (cd "$folder/$language" && run "$language" >values.txt 2>errors.txt) || code=$?
  if [ $code -eq 127 ]; then
    echo "   nothing on this machine runs it"
    continue
  fi
  "$build/tests/code_check" compare "$folder/$language" || { head -20 "$folder/$language/errors.txt"; status=1; }
done
exit $status
