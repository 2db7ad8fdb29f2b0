# bash completion for olh(1).
_olh_candidates=$(dirname -- "${BASH_SOURCE[0]}")/../../olh/candidates.sh

_olh() {
  local words=("${COMP_WORDS[@]}") cword=$COMP_CWORD candidates candidate
  # The words as they were typed: bash cuts them at "=" and ":" as well.
  declare -F _get_comp_words_by_ref >/dev/null && _get_comp_words_by_ref -n "=:" words cword
  local typed=${words[cword]} before=("${words[@]:1:cword-1}")
  before=("${before[@]//[\\\"\']/}")
  local word=${typed//[\\\"\']/} value kept=
  value=$word
  [[ $word == --*=* ]] && value=${word#*=}
  # What is left standing: readline replaces only what is behind the last "=" or ":" of an unquoted word.
  [[ $typed == [\"\']* ]] || kept=${value%"${value##*[=:]}"}
  COMPREPLY=()
  candidates=$(sh "$_olh_candidates" "${words[0]}" "${before[@]}" "$word")
  case $? in
    3)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "${value##*:}")
      ;;
    4) mapfile -t COMPREPLY < <(compgen -c -- "$value" | sort -u) ;;
    *)
      # Not compgen -W: it would run what the name of a document says.
      while IFS= read -r candidate; do
        candidate=${candidate%%$'\t'*}
        [[ -n $candidate && $candidate == "$value"* ]] || continue
        candidate=${candidate#"$kept"}
        if [[ $typed != [\"\']* ]]; then
          candidate=$(printf %q "$candidate")
        elif [[ $candidate == *[\"\'\\\$\`!]* ]]; then
          continue
        fi
        COMPREPLY+=("$candidate")
      done <<<"$candidates"
      ;;
  esac
}

complete -F _olh olh
