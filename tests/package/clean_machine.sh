#!/bin/sh
# What scripts/test-packages runs as root in a clean chroot: the packages in /tmp/packages are installed, used by a person
# without rights, removed, purged. Each step says what it saw; the first that saw something else ends the run.
set -eu
cd /tmp

fail() { echo "FAILED: $*" >&2; exit 1; }
files() { find / -xdev \( -path /tmp -o -path /proc -o -path /sys \) -prune -o -print | sort; }
as_person() { setpriv --reuid=12345 --regid=12345 --clear-groups env HOME=/tmp/person "$@"; }
# The same in a login shell, which reads what the packages have for it.
at_login() { as_person sh -c '. /etc/profile; exec "$@"' login "$@"; }
# What a login shell has as the browser and the last roots of on-line help.
choice_at_login() { sh -c '. /etc/profile; echo "${QEL_HTML_BROWSER-none} ${OLH_SYSTEM_DOC_PATH-none}"'; }

[ "$(choice_at_login)" = "none none" ] || fail "a login shell has settings before anything is installed"
files >before
dpkg -i packages/*.deb >installed.log 2>&1 || { cat installed.log; fail "the packages cannot be installed"; }
dpkg-query -W -f '${Package} ${Version} ${Status}\n' libolh4 libolh-dev olh olh-doc
ldconfig -p | grep -q 'libolh\.so\.4 ' || fail "the loader does not know libolh.so.4"

# A person's first minute: nothing is set, and there is no display.
mkdir -m 777 person
[ "$(choice_at_login)" = "olh-browser /usr/share/olh/docs" ] || fail "a login shell has $(choice_at_login)"
at_login olh show olh_manual quick_start >person/out 2>&1 || { cat person/out; fail "the first olh show"; }
grep -q 'This is the topic quick_start of the manual olh_manual' person/out || { cat person/out; fail "olh show does not show the page"; }
echo "login shell: olh show olh_manual quick_start shows the page"
as_person olh where olh_manual || fail "olh alone does not know its own root"
at_login sh help_examples.sh /usr/share/olh/docs || fail "an example in the help of olh"

# From here on the recorder is in the place of the browser.
export QEL_HTML_BROWSER=/tmp/person/browser
as_person olh-recorder make person/browser
as_person olh-recorder answer person/browser ping 0

# shows WHAT COMMAND...: the command ends well, and makes the browser show the topic.
shows() {
  what=$1
  shift
  as_person olh-recorder clear person/browser
  as_person olh-recorder answer person/browser ping 0
  at_login "$@" >person/out 2>&1 || { cat person/out; fail "$what ended with an error"; }
  as_person olh-recorder show person/browser | grep -q 'olh_manual/index.htm#.*topic=quick_start' ||
    { cat person/out; as_person olh-recorder show person/browser; fail "$what did not show the topic"; }
  echo "$what: shown"
}

shows "olh" olh show olh_manual quick_start
as_person cc -std=c99 -Wall -Werror consumer/host.c -o person/host $(pkg-config --cflags --libs olh)
[ "$(as_person person/host)" = "v4.3_2.1 4 4" ] || fail "the host in C printed $(as_person person/host)"
echo "host in C, through pkg-config: runs"
as_person cmake -S /usr/share/doc/libolh-dev/examples -B person/build -G Ninja >person/log || fail "find_package(olh)"
as_person cmake --build person/build >person/log || { cat person/log; fail "the examples do not build"; }
printf '1\nq\n' >person/keys
shows "host in C, through CMake" sh -c 'person/build/help_menu <person/keys'
shows "host in C++" person/build/unit_converter help inch
shows "host in Python" env PYTHONDONTWRITEBYTECODE=1 python3 /usr/share/doc/libolh-dev/examples/help_demo.py

as_person olh new person/docs handbook >person/out || { cat person/out; fail "olh new"; }
as_person olh check person/docs || fail "olh check has something to say of a new root"
grep -q '/usr/share/olh/tools/frame_pages\.py' person/docs/htmldocs/handbook/topic-table.htm || fail "where the tools are"
as_person olh import --search-text person/docs handbook || fail "the text for the search"

unset QEL_HTML_BROWSER
dpkg --remove olh olh-doc libolh-dev libolh4 >person/log || { cat person/log; fail "the packages cannot be removed"; }
files >after
left=$(comm -13 before after | grep -v '^/var/lib/dpkg/info/' || true)
[ "$left" = "$(printf '/etc/profile.d/%s.sh\n' olh olh-doc | sort)" ] || fail "removed, and there is: $left"
[ "$(choice_at_login)" = "none none" ] || fail "removed, and a login shell still has $(choice_at_login)"
dpkg --purge olh olh-doc libolh-dev libolh4 >person/log 2>&1
files >after
cmp -s before after || { diff before after; fail "purged, and the machine is not what it was"; }
ldconfig -p | grep libolh && fail "purged, and the loader still knows the library"
echo "removed and purged: nothing is left behind"
