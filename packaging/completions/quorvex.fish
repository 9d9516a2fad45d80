# fish completion for quorvex and quorvex-desktop

for program in quorvex quorvex-desktop
    set -l first 'test (count (commandline -opc)) -eq 1'
    complete -c $program -n $first -o runcfg -d 'Run a macro and end with its status'
    complete -c $program -n '__fish_seen_argument -o runcfg' -o part -x -d 'Run a part of the table, as 2/4'
    complete -c $program -n '__fish_seen_argument -o runcfg' -o missing -d 'Run the rows without answers'
    complete -c $program -n $first -o check -d 'Print the faults of a macro and run nothing'
    complete -c $program -n '__fish_seen_argument -o check' -o part -x -d 'Check a part of the table, as 2/4'
    complete -c $program -n $first -o plot -d 'Draw a plot file as pictures'
    complete -c $program -n $first -l list-models -d 'Print the catalogue of models'
    complete -c $program -n $first -l help -d 'Print a short usage'
    complete -c $program -n $first -l version -d 'Print the version'
    complete -c $program -n '__fish_seen_argument -l list-models' -f -a '(seq 20)' -d variables
end
