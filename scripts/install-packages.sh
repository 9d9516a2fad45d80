#!/usr/bin/env bash
# Installs the Debian packages that Quorvex is built and tested with; does nothing where they are all there.
set -euo pipefail

packages=(git g++ cmake ninja-build ccache libgtest-dev libbenchmark-dev unixodbc-dev libsqliteodbc libexpat1-dev
  zlib1g-dev locales clang-format-14 qt6-base-dev libgl1-mesa-dev fonts-liberation desktop-file-utils appstream
  librsvg2-bin poppler-utils man-db fish zsh python3-jsonschema jq)
missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=$([ "$(id -u)" -eq 0 ] || echo sudo)
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
