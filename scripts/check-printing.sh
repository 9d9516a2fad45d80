#!/usr/bin/env bash
# Prints a plot on paper that is a file: starts a print server of its own beside any other, with a queue that hands each
# job to a file, opens a plot in the program on a display of its own, presses Ctrl+P and Return there, and looks whether
# one page comes out that has the plot's texts. Then queue, server and display go again. The page is left to be looked
# at as build/check-printing/page.png.
set -euo pipefail
cd "$(dirname "$0")/.."

missing=()
for package in cups-daemon cups-client cups-filters xvfb xdotool poppler-utils; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=$([ "$(id -u)" -eq 0 ] || echo sudo)
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
cmake --preset release >/dev/null
cmake --build --preset release -t quorvex-desktop

# In a folder with a short name, which the server's socket needs, and that its filters may enter.
server=$(mktemp -d /tmp/quorvex-cups-XXXXXX)
chmod 755 "$server"
mkdir "$server"/{spool,cache,state,tmp,ppd}
queue=QuorvexCheck
started=()
clean() {
  lpadmin -x "$queue" 2>/dev/null || true
  for ((i = ${#started[@]} - 1; i >= 0; --i)); do
    kill "${started[i]}" 2>/dev/null && wait "${started[i]}" 2>/dev/null || true
  done
  rm -rf "$server"
}
trap clean EXIT

cat >"$server/cups-files.conf" <<END
ServerRoot $server
RequestRoot $server/spool
CacheDir $server/cache
StateDir $server/state
TempDir $server/tmp
AccessLog $server/access.log
ErrorLog $server/error.log
PageLog $server/page.log
FileDevice Yes
END
cat >"$server/cupsd.conf" <<END
LogLevel info
Listen $server/socket
Browsing Off
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
    Allow all
  </Limit>
</Policy>
END
/usr/sbin/cupsd -f -c "$server/cupsd.conf" -s "$server/cups-files.conf" &
started+=($!)
export CUPS_SERVER=$server/socket
until lpstat -r 2>/dev/null | grep -q 'is running'; do sleep 0.1; done
paper=$server/paper.pdf
lpadmin -p "$queue" -E -v "file:$paper" \
  -P /usr/share/ppd/cupsfilters/Generic-PDF_Printer-PDF.ppd 2>/dev/null
lpadmin -d "$queue"
lpstat -v "$queue"

exec {number}< <(Xvfb -displayfd 1 -screen 0 1280x900x24 2>/dev/null)
started+=($!)
read -r display <&"$number"
export DISPLAY=:$display QT_QPA_PLATFORM=xcb QUORVEX_SETTINGS=$server/settings.ini
unset WAYLAND_DISPLAY
printf '[startup]\nShow Tips at Startup=0\n' >"$QUORVEX_SETTINGS"
build/release/quorvex-desktop tests/golden/Plot2D.plt &
started+=($!)
window() { timeout 30 xdotool search --sync --onlyvisible --name "$1" | tail -1; }
press() {  # WINDOW KEY
  xdotool windowfocus --sync "$1"
  sleep 0.5
  xdotool key "$2"
}
press "$(window '^Plot2D.plt')" ctrl+p
press "$(window '^Print$')" Return
for ((wait = 0; wait < 100; ++wait)); do
  [ -s "$paper" ] && [ -z "$(lpstat -o)" ] && break
  sleep 0.1
done
lpstat -W completed -o

work=build/check-printing
rm -rf "$work"
mkdir -p "$work"
cp "$paper" "$work/page.pdf"
pdfinfo "$work/page.pdf" | grep -E '^(Pages|Page size)'
pdftoppm -r 80 -png -singlefile "$work/page.pdf" "$work/page"
pdftotext -layout "$work/page.pdf" - | grep -v '^ *$'
[ "$(pdfinfo "$work/page.pdf" | awk '/^Pages/ { print $2 }')" = 1 ]
echo "One page came out: $work/page.png"
