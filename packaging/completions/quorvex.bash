# bash completion for quorvex and quorvex-desktop

_quorvex() {
    local current=${COMP_WORDS[COMP_CWORD]} first=${COMP_WORDS[1]}
    local files
    COMPREPLY=()
    if ((COMP_CWORD == 1)) && [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W '-runcfg -check -plot --list-models --help --version' -- "$current"))
        return
    fi
    if ((COMP_CWORD == 1)); then
        files='qvx|plt|txt|csv|dat|tsv|xlsx|ods'
    else
        case $first in
            -runcfg)
                ((COMP_CWORD == 2)) && files='cfg' || COMPREPLY=($(compgen -W '-part -missing' -- "$current")) ;;
            -check)
                ((COMP_CWORD == 2)) && files='cfg' || COMPREPLY=($(compgen -W '-part' -- "$current")) ;;
            -plot) ((COMP_CWORD == 2)) && files='plt' || files='svg|pdf|png|emf|bmp|plt' ;;
            --list-models)
                ((COMP_CWORD == 2)) && COMPREPLY=($(compgen -W "$(seq 20)" -- "$current"))
                return ;;
            -*) return ;;
            *) files='qvx|plt|txt|csv|dat|tsv|xlsx|ods' ;;
        esac
    fi
    [[ -n $files ]] || return
    compopt -o filenames
    local name
    while IFS= read -r name; do
        [[ -d $name || ${name,,} =~ \.($files)$ ]] && COMPREPLY+=("$name")
    done < <(compgen -f -- "$current")
}

complete -F _quorvex quorvex quorvex-desktop
