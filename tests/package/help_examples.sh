#!/bin/sh
# Every example in the help of olh and of its verbs, run by a person who has set nothing. PATH leads to olh.
# Usage: help_examples.sh ROOT     (ROOT: what /usr/share/olh/docs stands for)
set -eu
root=$1
cd "$(mktemp -d)"
trap 'cd / && rm -rf "$OLDPWD"' EXIT
# A session of its own, with results for "olh show 2", whatever else this machine has searched for.
export XDG_RUNTIME_DIR=$PWD/session
mkdir -m 700 session
olh search --root "$root" --text "first topic" >/dev/null </dev/null
verbs=$(olh --help | sed -n '/^Subcommands:/,/^Examples:/s/^  \([a-z-]*\) .*/\1/p')
count=0
problems=0
# Others use the root that "new" makes.
for verb in new "" $(echo "$verbs" | grep -vx new); do
  olh $verb --help | sed -n '/^Examples:/,$s/^  \([a-z].*\)/\1/p' | sed "s/   *.*//; s|/usr/share/olh/docs|$root|" >commands
  [ -s commands ] || { echo "no example in the help of olh $verb"; problems=1; }
  while IFS= read -r command <&3; do
    mkdir -p "home_of_$verb"
    status=0
    # What serves does so until Ctrl-C.
    HOME=$PWD/home_of_$verb timeout --preserve-status -s INT "$([ "$verb" = serve ] && echo 4 || echo 60)" \
      sh -c "exec $command" >said 2>&1 </dev/null || status=$?
    count=$((count + 1))
    # The doctor may have something to say of this machine, and a search needs a display.
    case $command in "olh doctor"* | "olh search"*) worst=2 ;; *) worst=0 ;; esac
    if [ "$status" -gt "$worst" ]; then
      echo "$command: exit code $status"
      cat said
      problems=1
    fi
  done 3<commands
done
echo "$count examples run"
[ "$problems" = 0 ]
