#!/usr/bin/env bash
# Looks at metafiles with other programs' eyes: writes the plots of the manual, those of the macros in examples/ among
# them, as EMF files, lets Inkscape, LibreOffice Draw and emf2svg draw them, and compares each picture with the
# program's own PNG file. Keeps the table in docs/metafile-check.txt and the pictures, side by side, in
# build/check-metafile. Needs no display.
#
# A number is the share of pixels that differ by more than 15 % of the full range once both pictures are blurred a
# little: edges are smoothed otherwise by each program, and lie half a pixel elsewhere. The last column is that of an
# empty page in place of the plot. Fails where Inkscape or LibreOffice differ in more than 2 %. emf2svg is not held to
# that: it turns slanted text about another place.
set -euo pipefail
cd "$(dirname "$0")/.."

missing=()
for package in inkscape libreoffice-draw emf2svg librsvg2-bin imagemagick; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=$([ "$(id -u)" -eq 0 ] || echo sudo)
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
cmake --preset release >/dev/null
cmake --build --preset release -t plot_pictures quorvex quorvex-desktop

work=build/check-metafile
rm -rf "$work"
mkdir -p "$work"/{plots,office,seen}
export QT_QPA_PLATFORM=offscreen:configfile=docs/screenshots/screen.json
build/release/plot_pictures "$work/plots" as emf
for macro in dnase_plot viscometer_plot viscometer_log; do
  sed "s#build/demo/$macro.svg#$work/plots/$macro.emf#; s#build/demo/$macro#$work/plots/$macro#" "examples/$macro.cfg" \
    >"$work/$macro.cfg"
  LC_ALL=C QUORVEX_SETTINGS=/dev/null build/release/quorvex -runcfg "$work/$macro.cfg"
done
soffice "-env:UserInstallation=file://$PWD/$work/profile" --headless --convert-to png --outdir "$work/office" \
  "$work"/plots/*.emf >/dev/null 2>&1

share() {  # PNG PNG: in percent
  convert "$1" -blur 0x1.5 "$work/one.png"
  convert "$2" -blur 0x1.5 "$work/other.png"
  local differing  # compare's status is 1 where anything differs
  differing=$(compare -fuzz 15% -metric AE "$work/one.png" "$work/other.png" null: 2>&1) || [ $? -eq 1 ]
  awk -v some="$differing" -v all="$(identify -format '%[fx:w*h]' "$1")" 'BEGIN { printf "%.2f", 100 * some / all }'
}

worst=0
{
  printf '%-14s %9s %12s %9s %11s\n' Plot Inkscape LibreOffice emf2svg 'empty page'
  for plot in "$work"/plots/*.emf; do
    name=$(basename "$plot" .emf)
    own=$work/plots/$name.png seen=$work/seen/$name
    width=$(identify -format %w "$own") height=$(identify -format %h "$own")
    same=(-background white -flatten -resize "${width}x$height!")
    inkscape "$plot" --export-type=png --export-filename="$seen-1.png" -w "$width" 2>/dev/null
    mogrify "${same[@]}" "$seen-1.png"
    # In the middle of a page of its own, made smaller where it is wider than the page between its margins.
    page=$work/office/$name.png
    read -r across down shownWidth shownHeight < <(identify -format '%w %h\n' "$page" | awk -v w="$width" -v h="$height" \
      '{ most = $1 - 2 * 96 / 2.54; part = w > most ? most / w : 1; print $1, $2, int(w * part + 0.5), int(h * part + 0.5) }')
    # The middle lies between pixels, so the best of the four places around it counts.
    least=101
    for place in "0 0" "0 1" "1 0" "1 1"; do
      read -r right below <<<"$place"
      convert "$page" -crop "${shownWidth}x$shownHeight+$(((across - shownWidth) / 2 + right))+$((\
        (down - shownHeight) / 2 + below))" +repage "${same[@]}" "$work/placed.png"
      found=$(share "$own" "$work/placed.png")
      if awk -v a="$found" -v b="$least" 'BEGIN { exit !(a < b) }'; then
        least=$found
        cp "$work/placed.png" "$seen-2.png"
      fi
    done
    emf2svg-conv -i "$plot" -o "$seen.svg" && rsvg-convert -w "$width" "$seen.svg" -o "$seen-3.png"
    mogrify "${same[@]}" "$seen-3.png"
    convert -size "${width}x$height" xc:white "$seen-4.png"
    montage "$own" "$seen"-[123].png -background grey -tile 2x -geometry +2+2 "$work/$name.png"
    shares=()
    for picture in "$seen"-[1234].png; do shares+=("$(share "$own" "$picture")"); done
    printf '%-14s %9s %12s %9s %11s\n' "$name" "${shares[@]}"
    worst=$(printf '%s\n' "$worst" "${shares[@]:0:2}" | sort -g | tail -1)
  done
} > >(tee docs/metafile-check.txt)
wait
if awk -v worst="$worst" 'BEGIN { exit !(worst > 2) }'; then
  echo "A metafile is drawn otherwise by up to $worst % of its pixels; look at $work." >&2
  exit 1
fi
