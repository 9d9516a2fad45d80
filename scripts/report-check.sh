#!/usr/bin/env bash
# Opens reports in a browser without a window: those of the examples, and one full of texts that would break a page. A
# report asks for nothing from a network or another file, shows formula and plots, fits a narrow and a wide window, can be
# read light and dark, and prints. Where no browser is on the machine that can tell, it says so.
#
# usage: scripts/report-check.sh BUILD
set -euo pipefail

build=$(realpath "${1:?usage: scripts/report-check.sh BUILD}")
cd "$(dirname "$0")/.."
check=tests/report/check
browser=
for each in chromium chromium-browser google-chrome; do
  if command -v $each >/dev/null; then browser=$each && break; fi
done
if [ -z "$browser" ]; then
  echo "No browser on this machine looks at reports: neither chromium nor google-chrome."
  exit 0
fi
if [ ! -x "$build/quorvex-desktop" ]; then
  echo "No desktop program is built that would draw the plots of reports."
  exit 0
fi
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export QUORVEX_SETTINGS=/dev/null

# A curve with a bend, to four digits.
awk 'BEGIN { for (x = 0; x <= 12; x += 0.5) printf "%g\t%.4g\n", x, 2 * exp(-0.4 * x) + 1.5 / (1 + exp((6 - x) / 0.8)) + 0.02 * sin(7 * x) }' \
  >"$folder/data.txt"
sed "s#@FOLDER@#$folder#" $check/hostile.cfg >"$folder/hostile.cfg"
for name in puromycin puromycin_diagnosis dnase_weighted pressure_catalogue viscometer_surface; do
  sed -e "s#build/demo/#$folder/#; /PlotFile/d" \
    -e "/^ *OutputFile = /s#\$#\n    ReportFile = $folder/$name.html#" "examples/$name.cfg" >"$folder/$name.cfg"
done

browse() {
  timeout 100 "$browser" --headless --no-sandbox --disable-gpu --disable-dev-shm-usage --no-first-run \
    --user-data-dir="$folder/profile" --host-resolver-rules='MAP * ~NOTFOUND' --allow-file-access-from-files \
    --enable-logging=stderr --window-size=1000,1500 "$@" 2>"$folder/said.txt"
}

status=0
fail() { echo "$1: $2"; status=1; }
for macro in "$folder"/*.cfg; do
  name=$(basename "$macro" .cfg)
  "$build/quorvex" -runcfg "$macro" || { fail "$name" "the macro failed"; continue; }
  sed "s#@REPORT@#$name.html#" $check/frame.html >"$folder/frame.html"
  for scheme in 1 0; do  # light, dark
    wanted=$([ $scheme = 1 ] && echo good || echo 'good in the dark')
    browse --blink-settings=preferredColorScheme=$scheme --virtual-time-budget=5000 --dump-dom "file://$folder/frame.html" \
      >"$folder/dom.html" || fail "$name" "the browser failed"
    told=$(sed -n '/<pre id="told">/,/<\/pre>/p' "$folder/dom.html" | sed 's/<pre id="told">//; s/<\/pre>.*//; s/.*<body>//')
    [ "$(echo "$told" | sed '/^$/d')" = "$wanted" ] || fail "$name" "$told"
    ! grep CONSOLE "$folder/said.txt" || fail "$name" "the browser complains"
  done
  rm -f "$folder/paper.pdf"
  browse --no-pdf-header-footer --print-to-pdf="$folder/paper.pdf" "file://$folder/$name.html" || true
  pages=$(grep -ac '/Type /Page$' "$folder/paper.pdf") || pages=0
  [ "$pages" -ge 3 ] || fail "$name" "printed on $pages pages"
  echo "$name: $pages pages"
done
exit $status
