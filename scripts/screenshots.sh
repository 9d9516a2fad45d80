#!/usr/bin/env bash
# Takes the pictures of docs/images anew: light at 100 % and dark at 200 %, and those that a user meets first in both
# colours at both scales. Needs no display.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh
if ! command -v pngquant >/dev/null; then
  sudo=$([ "$(id -u)" -eq 0 ] || echo sudo)
  $sudo apt-get install -y -qq --no-install-recommends pngquant
fi
cmake --preset release >/dev/null
cmake --build --preset release -t screenshots plot_pictures
rm -rf docs/images
mkdir -p build/demo docs/images/plots
export QT_QPA_PLATFORM=offscreen:configfile=docs/screenshots/screen.json
first=(frame-sheet solve-list import-text sheet-undo-history sheet-fill sheet-scale sheet-sort sheet-combine sheet-zero
  sheet-statistics)
QT_SCALE_FACTOR=1 build/release/screenshots docs/images -light-100 light
QT_SCALE_FACTOR=2 build/release/screenshots docs/images -dark-200 dark
QT_SCALE_FACTOR=2 build/release/screenshots docs/images -light-200 light "${first[@]}"
QT_SCALE_FACTOR=1 build/release/screenshots docs/images -dark-100 dark "${first[@]}"
QT_SCALE_FACTOR=1 build/release/plot_pictures docs/images/plots -light-100
QT_SCALE_FACTOR=2 build/release/plot_pictures docs/images/plots -dark-200 dark
# A palette of 256 colours shows a window as well, in a third of the room.
find docs/images -name '*.png' -exec pngquant --force --strip --nofs --ext .png 256 {} +
