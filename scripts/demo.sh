#!/usr/bin/env bash
# Installs what is missing, builds Quorvex, and fits competing models to real data; prints the ranked results.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh
cmake --preset release -DQUORVEX_TESTS=OFF -DQUORVEX_DESKTOP=OFF -B build/demo-release >/dev/null
cmake --build build/demo-release
mkdir -p build/demo
export LC_ALL=C  # the examples are written with points and commas, whatever the user's locale

for macro in examples/*.cfg; do
  name=$(basename "$macro" .cfg)
  echo
  echo "== quorvex -runcfg $macro"
  build/demo-release/quorvex -runcfg "$macro"
  echo "   exit status $?, answer in build/demo/$name.txt, log in build/demo/$name.log"
  tr -d '\r' <"build/demo/$name.txt" | awk '
    /Rank\(sorted_by_/ { print ""; sub(/^ +/, ""); print }
    /Model_ID|  F[1-9] = |  Y = |Residual_Sum_of_Squares_\(Absolute\)|Standard_Error_of_the_Estimate|\(R\^2\)/ { sub(/^ +/, "   "); print }
    /E_COEFFICIENTS/ { inside = 0 }
    inside { split($0, field, "\t"); sub(/^ +/, "   ", field[1]); printf "%-28s standard error %s\n", field[1], field[2] }
    /B_COEFFICIENTS/ { inside = 1 }'
done
