#!/usr/bin/env bash
# Installs what was built in the folder BUILD into a folder of its own and looks whether all is in its place:
#   scripts/check-install.sh BUILD
set -euo pipefail
build=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cmake --install "$build" --prefix "$place" >/dev/null
for file in bin/quorvex bin/quorvex-desktop \
  share/man/man1/quorvex.1 share/man/man1/quorvex-desktop.1 \
  share/quorvex/docs/manual/index.html share/quorvex/docs/macros.md share/quorvex/docs/images/solve-list-light-100.png \
  share/quorvex/examples/data/puromycin_treated.txt \
  share/applications/quorvex.desktop share/mime/packages/quorvex.xml \
  share/metainfo/org.quorvex.Quorvex.metainfo.xml \
  share/icons/hicolor/scalable/apps/quorvex.svg share/icons/hicolor/16x16/mimetypes/application-x-quorvex-plot.png \
  share/bash-completion/completions/quorvex share/bash-completion/completions/quorvex-desktop \
  share/zsh/site-functions/_quorvex share/fish/vendor_completions.d/quorvex.fish; do
  [ -s "$place/$file" ] || { echo "$file is not installed" >&2; exit 1; }
done
[ ! -e "$place/share/quorvex/docs/screenshots" ] || { echo "sources are installed" >&2; exit 1; }
"$place/bin/quorvex" --version
# The path that the program was built with leads from its folder to its manual.
data=$(grep -ao '\.\./[A-Za-z0-9/._-]*/quorvex' "$place/bin/quorvex-desktop" | sed -n 1p)
[ -s "$place/bin/$data/docs/manual/index.html" ] || { echo "the program looks in '$data'" >&2; exit 1; }
