#!/usr/bin/env bash
# Builds the benchmarks, runs them, and measures whole processes: a small macro against a hand-written program, and the
# time and memory of a fit over a million points. Writes only below build/ and in a temporary folder.
#   --large   a data file of ten million rows, too: 0.6 GB in the temporary folder
set -euo pipefail
large=
[[ ${1:-} != --large ]] || large=yes
export LC_ALL=C
cd "$(dirname "$0")/.."

cmake --preset bench >/dev/null
cmake --build --preset bench
tools=build/bench/bench
quorvex=build/bench/quorvex
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# macro NAME DATA [STATEMENT]: the fit of the two exponentials, from the start that the native program takes.
macro() {
  cat >"$folder/$1.cfg" <<END
B_MACRO
  DataFile = $folder/$2
  OutputFile = $folder/$1.out
  ${3:-Derivatives = Richardson}
  B_MODEL
    Y = a*exp(-b*x)+c*exp(-d*x)+e
    Assign a = 6, Operator = Value, Fit = True
    Assign b = 1, Operator = Value, Fit = True
    Assign c = 4, Operator = Value, Fit = True
    Assign d = 0.1, Operator = Value, Fit = True
    Assign e = 0.5, Operator = Value, Fit = True
  E_MODEL
E_MACRO
END
}
# report NAME RUNS COMMAND...: median wall time and peak memory, kept in $milliseconds and $kilobytes.
report() {
  "$tools/measure" "$2" "${@:3}" >"$folder/printed"
  read -r milliseconds kilobytes < <(tail -1 "$folder/printed")
  printf '%-46s %10.3f ms %9d kB\n' "$1" "$milliseconds" "$kilobytes"
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }

echo
echo "In memory"
"$tools/core_bench" --benchmark_filter='Fit|Evaluate|Differentiate|NormalEquations|ClosedForms|Catalogue' 2>/dev/null

echo
echo "Reading a million rows of three columns, each in a process of its own for the sake of its peak memory"
for case in BareFromChars ReadToArrays; do
  "$tools/core_bench" --benchmark_filter="$case" --benchmark_repetitions=5 \
    --benchmark_report_aggregates_only=true 2>/dev/null | grep median
done

if [[ -x $tools/plot_bench ]]; then
  echo
  echo "Drawing plots on a picture of 1600 by 1000 pixels"
  "$tools/plot_bench" 2>/dev/null
fi

echo
echo "Whole processes, median of 11"
"$tools/make_data" 20 "$folder/small.txt"
macro small small.txt
macro catalogue small.txt "IndependentVariables = 1"
report "hand-written fit, 20 points" 11 "$tools/native_fit" "$folder/small.txt"
native=$milliseconds
report "macro, 20 points" 11 "$quorvex" -runcfg "$folder/small.cfg"
echo "  times the hand-written fit: $(ratio "$milliseconds" "$native")"
report "macro, 20 points, with the built-in models" 11 "$quorvex" -runcfg "$folder/catalogue.cfg"
echo "  times the hand-written fit: $(ratio "$milliseconds" "$native")"

echo
echo "A study of 100,000 rows of 20 points, once: an output file each in one folder, and a line of JSON each"
{ echo "N" && seq 100000; } >"$folder/rows.csv"
# study NAME STATEMENT: the same fit for each row, read anew.
study() {
  cat >"$folder/$1.cfg" <<END
B_MACRO
  ParameterFile = $folder/rows.csv
  DataFile = $folder/small.txt
  SolveEachRun = True
  LogFile = $folder/study.log
  LogSummaryOnly = True
  $2
  B_MODEL
    Y = a*x/(b+x)
    Assign a = 1, Operator = * YMax, Fit = True
    Assign b = 1, Operator = * XAvg, Fit = True
  E_MODEL
E_MACRO
END
}
mkdir "$folder/out"
study files "OutputFile = $folder/out/%N%.txt"
study lines "ResultFile = $folder/all.jsonl"
report "100,000 output files" 1 "$quorvex" -runcfg "$folder/files.cfg"
report "100,000 lines" 1 "$quorvex" -runcfg "$folder/lines.cfg"
grep -q "^100000: Run Successful" "$folder/study.log"

echo
echo "Side by side, on one thread and on two"
{ echo "N" && seq 200; } >"$folder/rows.csv"
"$tools/make_data" 10000 "$folder/middle.txt"
awk '{ printf "%.6f %s\n", $1 + 1, $2 }' "$folder/middle.txt" >"$folder/positive.txt"  # which all models have values at
# threads NAME THREADS: 200 rows of 10,000 points with an output file each; the built-in models on the same points.
threads() {
  cat >"$folder/$1.rows.cfg" <<END
B_MACRO
  ParameterFile = $folder/rows.csv
  DataFile = $folder/middle.txt
  SolveEachRun = True
  OutputFile = $folder/out/$1.%N%.txt
  Threads = $2
  B_MODEL
    Y = a*x/(b+x)
    Assign a = 1, Operator = * YMax, Fit = True
    Assign b = 1, Operator = * XAvg, Fit = True
  E_MODEL
E_MACRO
END
  {
    printf 'B_MACRO\n  DataFile = %s\n  OutputFile = %s\n' "$folder/positive.txt" "$folder/$1.models.out"
    printf '  IndependentVariables = 1\n  Threads = %s\n' "$2"
    "$quorvex" --list-models | awk -F'\t' '{ print "  B_MODEL\n    Y = " $4 "\n  E_MODEL" }'
    printf 'E_MACRO\n'
  } >"$folder/$1.models.cfg"
}
for kind in rows models; do
  threads one 1
  report "$kind, one thread" 5 "$quorvex" -runcfg "$folder/one.$kind.cfg"
  one=$milliseconds
  threads two 2
  report "$kind, two threads" 5 "$quorvex" -runcfg "$folder/two.$kind.cfg"
  echo "  times one thread: $(ratio "$milliseconds" "$one")"
done

echo
echo "A plate of 384 wells, 200 points each: one macro with DataSeries"
"$tools/make_data" 200 "$folder/plate.txt" 384
# plate NAME STATEMENT: a logistic of four parameters to each well, and a line of JSON.
plate() {
  cat >"$folder/$1.cfg" <<END
B_MACRO
  DataFile = $folder/plate.txt
  DataFirstLine = 2
  DataSeries = True
  ResultFile = $folder/plate.jsonl
  $2
  B_MODEL
    Y = bottom+(top-bottom)/(1+(c/x)^s)
    Assign bottom = 1, Operator = * YMin, Fit = True
    Assign top = 1, Operator = * YMax, Fit = True
    Assign c = 1, Operator = Value, Fit = True
    Assign s = 1, Operator = Value, Fit = True
  E_MODEL
E_MACRO
END
}
plate richardson "Derivatives = Richardson"
plate central "Derivatives = CentralDifference"
report "384 logistics, Richardson" 11 "$quorvex" -runcfg "$folder/richardson.cfg"
report "384 logistics, central differences" 11 "$quorvex" -runcfg "$folder/central.cfg"

echo
echo "A million points, once"
"$tools/make_data" 1000000 "$folder/large.txt"
macro large large.txt "Derivatives = CentralDifference"
bytes=$(stat -c %s "$folder/large.txt")
report "hand-written fit" 1 "$tools/native_fit" "$folder/large.txt"
report "macro" 1 "$quorvex" -runcfg "$folder/large.cfg"
awk -v kb="$kilobytes" -v bytes="$bytes" \
  'BEGIN { printf "  file %.1f MB; in memory %.0f bytes a point\n", bytes / 1e6, kb * 1024 / 1e6 }'

echo
echo "A plane through the rows of a file of three columns, central differences, median of 5, on one thread and on all"
# plane NAME THREADS: the fit to the rows of that name.
plane() {
  cat >"$folder/plane.cfg" <<END
B_MACRO
  DataFile = $folder/rows$1.txt
  InputDelimit = Tab
  OutputFile = $folder/plane.out
  Derivatives = CentralDifference
  IndependentVariables = 2
  Threads = $2
  B_MODEL
    Y = a+b*x1+c*x2
    Assign a = 1, Operator = Value, Fit = True
    Assign b = 1, Operator = Value, Fit = True
    Assign c = 1, Operator = Value, Fit = True
  E_MODEL
E_MACRO
END
  report "$1 rows, Threads = $2" 5 "$quorvex" -runcfg "$folder/plane.cfg"
  awk -v ms="$milliseconds" -v kb="$kilobytes" -v rows="$1" \
    'BEGIN { printf "  a row: %.1f ns, %.1f bytes\n", ms * 1e6 / rows, kb * 1024 / rows }'
}
for rows in 1000000 ${large:+10000000}; do
  "$tools/make_data" "$rows" "$folder/rows$rows.txt" columns
  plane "$rows" 1
  perRow=$milliseconds
  plane "$rows" 0
  if [[ $rows = 1000000 ]]; then
    million=$perRow
  else
    echo "  ten million rows to one million, a row: $(ratio "$(awk -v a="$perRow" 'BEGIN { print a / 10 }')" "$million")"
  fi
done
