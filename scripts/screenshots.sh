#!/usr/bin/env bash
# Takes the pictures of docs/images anew: light at 100 % and dark at 200 %. Needs no display.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh
cmake --preset release >/dev/null
cmake --build --preset release -t screenshots plot_pictures
mkdir -p build/demo docs/images/plots
export QT_QPA_PLATFORM=offscreen
QT_SCALE_FACTOR=1 build/release/screenshots docs/images -light-100
QT_SCALE_FACTOR=1 build/release/plot_pictures docs/images/plots -light-100
QT_SCALE_FACTOR=2 build/release/screenshots docs/images -dark-200 dark
QT_SCALE_FACTOR=2 build/release/plot_pictures docs/images/plots -dark-200 dark
