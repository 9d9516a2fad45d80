#!/usr/bin/env bash
# Whether the man pages are set without a warning.
set -euo pipefail
cd "$(dirname "$0")/../docs"
for page in *.1; do
  warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
  [ -z "$warnings" ] || { echo "$page: $warnings" >&2; exit 1; }
done
