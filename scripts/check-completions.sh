#!/usr/bin/env bash
# What the shells offer to complete.
set -euo pipefail
cd "$(dirname "$0")/../packaging/completions"

expect() {  # SHELL WHAT, the offer on standard input
  grep -x -- "$2" >/dev/null || { echo "$1 does not offer $2" >&2; exit 1; }
}

bash_offers() {  # WORD..., the last one is completed
  bash -c 'source quorvex.bash; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _quorvex 2>/dev/null; printf "%s\n" "${COMPREPLY[@]}"' \
    - "$@"
}
bash_offers quorvex - | expect bash -runcfg
bash_offers quorvex --v | expect bash --version
bash_offers quorvex --list-models 1 | expect bash 12
bash_offers quorvex -runcfg ../../examples/puro | expect bash ../../examples/puromycin.cfg
bash_offers quorvex ../../examples/data/puro | expect bash ../../examples/data/puromycin_treated.txt
if [ -n "$(bash_offers quorvex -plot ../../examples/puro)" ]; then echo "bash offers a macro as a plot" >&2; exit 1; fi

zsh -n _quorvex
HOME=$(mktemp -d) fish --no-config -c 'source quorvex.fish; complete -C "quorvex -"' | cut -f1 | expect fish -runcfg
