#!/usr/bin/env bash
# Installs what is missing, builds Quorvex, and runs every test: plain, and again under the address and
# undefined-behaviour sanitizers; what runs on several threads also under the thread sanitizer. Also checks that the
# sources are formatted.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh
# A locale with decimal commas, which the tests run the program under.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  sudo=$([ "$(id -u)" -eq 0 ] || echo sudo)
  $sudo localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi

git ls-files '*.h' '*.cpp' | xargs clang-format-14 --dry-run --Werror

for preset in release sanitize; do
  cmake --preset $preset
  cmake --build --preset $preset
  ctest --preset $preset -j "$(nproc)"
done
# What runs on several threads, under the thread sanitizer.
cmake --preset threads
cmake --build --preset threads
build/threads/tests/parallel_tests --gtest_filter='*Parallel*'
# They are run by hand, but what takes the pictures of the manual and the benchmarks are to build all the same.
cmake --build --preset release -t screenshots plot_pictures benchmarks
