#!/usr/bin/env bash
# Takes the pictures of the manual anew, into docs/images: the windows, light at 100 %, and the plots, of which those of
# real data come from the macros in examples/. With "all" it also takes the windows at 200 % and in dark colours, to be
# looked at, into build/images. Needs no display.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh
if ! command -v pngquant >/dev/null; then
  sudo=$([ "$(id -u)" -eq 0 ] || echo sudo)
  $sudo apt-get install -y -qq --no-install-recommends pngquant
fi
cmake --preset release >/dev/null
cmake --build --preset release -t screenshots plot_pictures quorvex quorvex-desktop
export QT_QPA_PLATFORM=offscreen:configfile=docs/screenshots/screen.json

take() {  # FOLDER light|dark PERCENT
  mkdir -p "$1/plots"
  QT_SCALE_FACTOR=$(($3 / 100)) build/release/screenshots "$1" "-$2-$3" "$2"
  QT_SCALE_FACTOR=$(($3 / 100)) build/release/plot_pictures "$1/plots" "-$2-$3" "$2"
  # A palette of 256 colours shows a window as well, in a third of the room.
  find "$1" -name '*.png' -exec pngquant --force --strip --nofs --ext .png 256 {} +
}

rm -rf docs/images build/images
mkdir -p build/demo docs/images/plots
# Plots of real data come from the macros of the examples, as a reader can make them.
for figure in dnase_plot:log-axes viscometer_plot:surface viscometer_log:log-axis-3d; do
  macro=${figure%:*}
  LC_ALL=C QUORVEX_SETTINGS=/dev/null build/release/quorvex -runcfg "examples/$macro.cfg"
  cp "build/demo/$macro.png" "docs/images/plots/${figure#*:}.png"
done
take docs/images light 100
if [ "${1:-}" = all ]; then
  take build/images light 200
  take build/images dark 100
  take build/images dark 200
fi
