# bash completion for olh(1).
_olh_candidates=$(dirname -- "${BASH_SOURCE[0]}")/../../olh/candidates.sh

_olh() {
  local word=${COMP_WORDS[COMP_CWORD]} candidates candidate
  COMPREPLY=()
  if candidates=$(sh "$_olh_candidates" "${COMP_WORDS[0]}" "${COMP_WORDS[@]:1:COMP_CWORD}"); then
    # Not compgen -W: it would run what the name of a document says.
    while IFS= read -r candidate; do
      [[ -n $candidate && $candidate == "$word"* ]] && COMPREPLY+=("$(printf %q "$candidate")")
    done <<<"$candidates"
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}

complete -F _olh olh
