# fish completion for olh(1).
set -g __olh_candidates (dirname (status filename))/../../olh/candidates.sh

function __olh_complete
    set -l words (commandline -opc)
    set -l word (commandline -ct)
    set -l found (sh $__olh_candidates $words $word)
    if test $status -eq 0
        printf '%s\n' $found
    else
        __fish_complete_path $word
    end
end

complete -c olh -f -a '(__olh_complete)'
