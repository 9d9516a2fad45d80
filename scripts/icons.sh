#!/usr/bin/env bash
# Draws the icons of the usual sizes from the scalable ones, into packaging/icons. Needs rsvg-convert and pngquant.
set -euo pipefail
cd "$(dirname "$0")/../packaging/icons/hicolor"

for drawing in scalable/*/*.svg; do
  kind=$(basename "$(dirname "$drawing")")
  for size in 16 22 24 32 48 64 128 256; do
    mkdir -p "${size}x$size/$kind"
    picture=${size}x$size/$kind/$(basename "$drawing" .svg).png
    rsvg-convert -w $size -h $size "$drawing" -o "$picture"
    pngquant --force --strip --nofs --ext .png 256 "$picture"
  done
done
