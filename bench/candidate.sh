#!/bin/sh
# candidate.sh WORKLOAD DATAFILE REPETITIONS START VARIANT [SUMS CATALOGUE]: the program as one of the competitors of a
# comparison with other programs; the arguments are those of PeerFit.cpp. By MODE in the environment:
#   process (default)  runs a macro for the workload, as a user would; the macros are written once and kept
#   memory             runs peer_fit, which prints the times within the process
# METHOD is richardson, central (default), exact or, in memory and for w4, built-in.
set -eu
workload=$1 data=$2 repetitions=$3 start=$4 sums=${6:-} catalogue=${7:-}
case $0 in */*) build=${0%/*}/../build/bench ;; *) build=../build/bench ;; esac
method=${METHOD:-central}
if [ "${MODE:-process}" = memory ]; then
  exec "$build/bench/peer_fit" "$workload" "$data" "$repetitions" "$start" "$method" $sums $catalogue
fi

folder=${TMPDIR:-/tmp}/quorvex-candidate
macro=$folder/$workload-${data##*/}-$method
run() {
  # Of w4 the sums are wanted, one line a model, in the order of the list.
  [ "$workload" = w4 ] || exec "$build/quorvex" -runcfg "$macro.cfg"
  "$build/quorvex" -runcfg "$macro.cfg"
  awk -F'=' '/^ *Model_ID =/ { id = $2 + 0 } /Residual_Sum_of_Squares_.Absolute. =/ { sum[id] = $2 + 0 }
    END { for (i = 1; i <= 298; ++i) printf "%d\t%s\n", i, i in sum ? sprintf("%.12g", sum[i]) : "inf" }' \
    "$macro.out" >"$sums"
}
[ -f "$macro.cfg" ] && run

# The statements of a model: number, formula, start values.
model() {
  echo "  B_MODEL"
  echo "    ID = $1"
  echo "    Y = $2"
  rest=$3,
  for name in a b c d e f g h i j k; do
    [ -n "$rest" ] || break
    echo "    Assign $name = ${rest%%,*}, Operator = Value, Fit = True"
    rest=${rest#*,}
  done
  echo "  E_MODEL"
}
mkdir -p "$folder"
{
  echo "B_MACRO"
  echo "  DataFile = $data"
  echo "  InputDelimit = Tab"
  echo "  OutputFile = $macro.out"
  case $method in
    richardson) echo "  Derivatives = Richardson" ;;
    exact) echo "  Derivatives = Exact" ;;
    *) echo "  Derivatives = CentralDifference" ;;
  esac
  case $workload in
    w1 | w6) model 1 "a*exp(-b*x)+c*exp(-d*x)+e" "$start" ;;
    w2) model 1 "a*exp(-b*x)+c*exp(-(x-d)^2/e^2)+f*exp(-(x-g)^2/h^2)" "$start" ;;
    w4)
      sed 's/sqrt(/sqr(/g; s/atan(/arctan(/g; s/tanh(/htan(/g; s/cosh(/hcos(/g' "$catalogue" |
        while IFS='	' read -r id _ _ formula values; do model "$id" "$formula" "$values"; done
      ;;
    w5)  # three columns are read; a line through them is the least that a macro can ask for
      echo "  IndependentVariables = 2"
      model 1 "a+b*x1+c*x2" "1,1,1"
      ;;
  esac
  echo "E_MACRO"
  echo
} >"$macro.cfg"
run
