# fish completion for olh(1).
set -g __olh_candidates (dirname (status filename))/../../olh/candidates.sh

function __olh_complete
    set -l words (commandline -opc)
    set -l word (commandline -ct)
    set -l option (string match -r '^--[a-z-]+=' -- $word; or echo)
    set -l value (string replace -r '^--[a-z-]+=' '' -- $word)
    # Of a list of paths the last is being typed.
    set -l roots (string match -r '^.*:' -- $value; or echo)
    set -l found (sh $__olh_candidates $words $word)
    switch $status
        case 3
            printf '%s\n' $option$roots(__fish_complete_path (string replace -r '^.*:' '' -- $value))
        case 4
            __fish_complete_command
        case '*'
            test (count $found) -gt 0; and printf '%s\n' $option$found
    end
end

complete -c olh -f -a '(__olh_complete)'
