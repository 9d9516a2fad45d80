#!/usr/bin/env bash
# Runs the code that models are written as and compares its values with the program's: all models of the catalogue,
# every function, and what is hard in the language, at 20 points each; then files with hostile titles and names, each
# run by itself, which must give their proof. Where no interpreter or compiler of a language is on the machine, it says
# so. Debian has packages for all of them but Julia, which comes from its makers alone; MATLAB's code is run by Octave.
#
# usage: scripts/code-check.sh BUILD [EXTENSION ...]   such as scripts/code-check.sh build/release py js
set -euo pipefail

build=$(realpath "${1:?usage: scripts/code-check.sh BUILD [EXTENSION ...]}")
shift
languages=${*:-py r js m jl rs f90 txt tex}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$build/tests/code_check" write "$folder"

# What runs a language, by name.
programs() {
  case $1 in
    py) echo python3 ;;
    r) echo Rscript ;;
    js) echo node ;;
    m) echo octave-cli ;;
    jl) echo julia ;;
    rs) echo rustc ;;
    f90) echo gfortran ;;
    txt) echo ssconvert soffice ;;
    tex) echo pdflatex ;;
  esac
}

# The special functions of Python are those of SciPy, which may be installed for one of several; without it nothing is
# checked.
python() {
  local each
  for each in python3 /usr/bin/python3; do
    "$each" -c 'import scipy' 2>/dev/null && { echo "$each"; return; }
  done
  return 1
}

# Prints the numbers of the sheets, which hold a formula in D and what it is in E and F.
sheets() {
  local program=$1 each
  shift
  if [ "$program" = ssconvert ]; then
    for each; do ssconvert -T Gnumeric_stf:stf_assistant -O 'separator=, format=raw' "$each" "$each.out" >&2; done
  else
    # Comma and quotes, UTF-8, of an English sheet, formulas computed.
    soffice "-env:UserInstallation=file://$PWD/profile" --headless --infilter='CSV:44,34,76,1,,1033,false,true,true' \
      --convert-to 'csv.out:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true' "$@" >&2
    for each; do mv "${each%.csv}.csv.out" "$each.out"; done
  fi
  for each; do awk -F, '{ print $5, $6, $4 }' "$each.out"; done
}

# Whether a program is there and can do what it is wanted for: an office may come without its spreadsheet.
available() {
  command -v "$1" >/dev/null || return 1
  case $1 in
    python3) python >/dev/null ;;
    pdflatex) kpsewhich amsmath.sty >/dev/null ;;
    soffice)
      echo '1,0,0,"=A1+1",probe,0' >"$folder/probe.csv"
      (cd "$folder" && sheets soffice probe.csv) >/dev/null 2>&1 && [ -s "$folder/probe.csv.out" ]
      ;;
  esac
}

# Prints the values of all models, in the folder of the language.
run() {
  case $2 in
    python3) "$(python)" check.py ;;
    Rscript) Rscript --vanilla check.r ;;
    node) node check.js ;;
    octave-cli) octave-cli --no-init-file check_all.m ;;
    julia) julia --startup-file=no check.jl ;;
    rustc) rustc -A warnings -o check check.rs && ./check ;;
    gfortran) gfortran -o check [!c]*.f90 check.f90 && ./check ;;
    *) sheets "$2" check.csv ;;
  esac
}

# Prints the proof of one file, run as its reader runs it.
proof() {
  local program=$1 file=$2 name=${2%.*}
  case $program in
    python3) "$(python)" "$file" ;;
    Rscript) Rscript --vanilla "$file" | sed 's/^\[1\] //' ;;
    node) node "$file" ;;
    octave-cli)
      octave-cli --no-init-file --eval "if ! test('$file', 'quiet'), exit(1), end" >&2 &&
        octave-cli --no-init-file --eval \
          "$(sed -n 's/^%!assert (\(.*\), [^,]*, -1e-10)$/printf("%.17g\\n", \1)/p' "$file")"
      ;;
    julia) julia --startup-file=no "$file" ;;
    # Its test holds the value against the number that is printed here.
    rustc)
      rustc -A dead_code --test -o proof_run "$file" && ./proof_run >&2 &&
        sed -n 's/.*(value - (\(.*\))) <= .*/\1/p' "$file"
      ;;
    gfortran)
      mkdir -p "run_$name" && sed -n '/^! program proof/,/^! end program/s/^! //p' "$file" >"run_$name/proof.f90" &&
        gfortran -Wall -J "run_$name" -o "run_$name/proof" "$file" "run_$name/proof.f90" && "run_$name/proof"
      ;;
    # A formula is set, which gives no value but the one that is stated.
    pdflatex)
      printf '%s\n' '\documentclass{article}' '\usepackage[utf8]{inputenc}' '\usepackage{amsmath}' '\begin{document}' \
        "\\input{$file}" 'End.' '\end{document}' >"run_$name.tex"
      pdflatex -halt-on-error -interaction=nonstopmode "run_$name.tex" >&2 &&
        sed -n 's/^% At x = .* it gives y = \(.*\)\.$/\1/p' "$file"
      ;;
  esac
}

# Prints the proofs of all files in the folder, for sheets by way of a sheet each.
proofs() {
  local program=$1 language=$2 each name
  for each in *."$language"; do
    name=${each%.*}
    case $each in run_*) continue ;; esac
    if [ "$language" = txt ]; then
      case $name in expected | values | errors) continue ;; esac
      awk -v name="$name" '/^# With .* in A2 it is to give / { x = $3 }
        /^=/ { printf "\n%s,,,\"%s\",%s,0\n", x, $0, name }' "$each" >"$name.csv"
    else
      echo "$name 0 $(proof "$program" "$each" || true)"
    fi
  done
  if [ "$language" = txt ]; then sheets "$program" ./*.csv | grep -v '^ *$'; fi
}

status=0
for language in $languages; do
  for program in $(programs "$language"); do
    printf '%-4s%-11s' "$language" "$program"
    if ! available "$program"; then
      echo "   is not on this machine, or not all of it"
      continue
    fi
    for part in "$folder/$language" "$folder/$language/proof"; do
      [ -f "$part/expected.txt" ] || continue
      if [ "$part" = "$folder/$language" ]; then
        (cd "$part" && run "$language" "$program" >values.txt 2>errors.txt) || true
      else
        printf '%-15s' '    its proofs'
        (cd "$part" && proofs "$program" "$language" >values.txt 2>errors.txt) || true
      fi
      "$build/tests/code_check" compare "$part" || { head -20 "$part/errors.txt"; status=1; }
    done
  done
done
exit $status
