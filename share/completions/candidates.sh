#!/bin/sh
# What may be at a place of an olh command line: one candidate a line, with a tab and a description where there is one.
# The completions of bash, zsh and fish ask this. Usage: candidates.sh OLH WORD...
#
# The last WORD is the one being typed, which may be empty; of "--option=value" the candidates are values. Exit status 3
# asks for the names of files, 4 for those of programs.
#
# The program itself is asked: its --help for verbs, options and arguments, its lists for documents and topics. A time
# limit keeps a documentation root on a web server from holding up the person who types.
set -u
olh=$1
shift

ask() { timeout 2 "$olh" "$@" 2>/dev/null </dev/null; }
# No root has a say in a help text: only a busy machine is slow to give it.
help_of() { timeout 10 "$olh" "$@" --help 2>/dev/null </dev/null; }
files() { exit 3; }

# Parts of a help text: what a section lists, the kind of an option's value (none for a flag), the Nth argument.
listed() {
  printf '%s\n' "$help" | awk -v section="$1:" '
    /^[A-Z][a-z]*:$/ { within = $1 == section }
    within && /^  [^ ]/ {
      name = $1
      sub(/^-[A-Za-z],/, "", name)
      if (substr($0, 30, 1) == " ") print name "\t" substr($0, 31)
      next
    }
    within && /^   / { sub(/^ */, ""); print name "\t" $0 }'
}
value_of() {
  case $1 in
    *[!a-z-]*) ;;
    *) printf '%s\n' "$help" | sed -n "s/^  \(-[A-Za-z],\)\{0,1\}$1 \([A-Z][A-Z][^ ]*\).*/\2/p" ;;
  esac
}
argument_at() {
  printf '%s\n' "$help" | sed -n '/^Usage:/{s/.*\[OPTIONS\]//;s/\[\|\]\|\.\.\.//g;p;}' | awk -v n="$1" '{ print $n }'
}

# The words before the one being typed: the verb (and a verb below it), the arguments, and an option that wants a value.
verb= first= position=1 option= root=
help=$(help_of)
while [ $# -gt 1 ]; do
  word=$1
  shift
  if [ -n "$option" ]; then
    [ "$option" = --root ] && root=$word
    option=
    continue
  fi
  case $word in
    --root=*) root=${word#*=} ;;
    -*) [ -z "$(value_of "$word")" ] || option=$word ;;
    *)
      if [ $position = 1 ] && listed Subcommands | cut -f 1 | grep -qx -e "$word"; then
        verb="$verb $word"
        help=$(help_of $verb)
      else
        [ $position = 1 ] && first=$word
        position=$((position + 1))
      fi
      ;;
  esac
done
[ -n "$option" ] || case $1 in --*=*) option=${1%%=*} ;; esac

documents() { ask list --names ${root:+--root "$root"} "$@"; }
results() { ask kept-results | awk '{ sub(/ /, "\t"); print }'; }
topics() { ask topics --names ${root:+--root "$root"} "$first"; }

if [ -n "$option" ]; then
  value=$(value_of "$option")
  case $option:$value in
    --display:*) printf '%s\n' normal topic popup ;;
    --port:* | *:NUMBER | *:) ;;
    --open:*) documents ;;
    *:*{*}*) printf '%s\n' "$value" | sed 's/.*{\(.*\)}.*/\1/' | tr ',' '\n' ;;
    *) files ;;
  esac
  exit 0
fi
case $1 in
  -*) listed Options | grep '^--' ;;
  *)
    argument=$(argument_at "$position")
    case $verb:$argument in
      *:SUBCOMMAND) listed Subcommands ;;
      *portal:NAME) documents --kind portal ;;
      *bookcase:NAME) documents --kind pdf ;;
      *:DOC)
        case $1 in
          */* | .* | '~'*) files ;;
          *) documents; case $verb in *show) results ;; esac ;;
        esac
        ;;
      *:TAG) topics ;;
      *viewers*:KIND) printf '%s\n' browser pdf ;;
      *search:) documents --kind html && documents --kind portal && echo orvane ;;
      *:PROGRAM)
        case $1 in
          */* | .* | '~'*) files ;;
          *) exit 4 ;;
        esac
        ;;
      *:QUERY | *:TAB | *:) ;;
      *) files ;;
    esac
    ;;
esac
exit 0
