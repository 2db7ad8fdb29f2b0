#!/bin/bash
# tour.sh KIND: the tour of the reader; each command shows a page in the browser, whose window then has the page's title.
export PATH=/usr/local/bin:/usr/bin:/bin:/snap/bin HOME=/home/reader LANG=C.UTF-8 XDG_RUNTIME_DIR=/run/user/2001
export XDG_DATA_DIRS=/var/lib/flatpak/exports/share:/var/lib/snapd/desktop:/usr/local/share:/usr/share
export DBUS_SESSION_BUS_ADDRESS=unix:path=$XDG_RUNTIME_DIR/bus OLH_LOG_HELP=/tmp/out/trace.log
cd
. /usr/local/etc/profile.d/olh.sh
. /usr/local/etc/profile.d/olh-doc.sh
dbus-daemon --session --fork --address="$DBUS_SESSION_BUS_ADDRESS"
if [ "$1" = wayland ]; then
  pdf="olh_manual.pdf — The libolh manual"
  export WAYLAND_DISPLAY=wayland-1 SWAYSOCK=$XDG_RUNTIME_DIR/sway
  windows() { swaymsg --type get_tree; }
  picture() { grim "$1"; }
  echo "xwayland disable" >sway.config
  WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 sway --config sway.config >/tmp/out/sway.log 2>&1 &
else
  pdf="The libolh manual"
  export DISPLAY=:77
  windows() { xwininfo -root -tree; }
  picture() { import -window root "$1"; }
  Xvfb $DISPLAY -screen 0 1000x760x24 -nolisten tcp >/dev/null 2>&1 &
fi
until windows >/dev/null 2>&1; do sleep 0.1; done
olh doctor >/tmp/out/doctor.txt 2>&1

failed=0
step() {  # NAME TITLE COMMAND...
  name=$1 title=$2
  shift 2
  echo "\$ $*" >>/tmp/out/log
  "$@" >>/tmp/out/log 2>&1
  said=missing
  for _ in $(seq 60); do
    windows | grep -q "\"$title" && said=there && break
    sleep 0.5
  done
  sleep 4  # until the page is drawn
  picture "/tmp/out/$name.png"
  echo "$said: $name, a window with the title \"$title\""
  [ $said = there ] || failed=1
}
step 1-manual "Contents - The libolh manual" olh show olh_manual
step 2-topic "Search path and roots" olh show olh_manual search_path
step 3-popup "Topics, destinations and tabs" olh show --display popup olh_manual topics
step 4-search "Search in all documents" olh search "first topic"
step 5-portal "The libolh project" olh portal olh_td
step 6-pdf "$pdf" olh show --pdf olh_manual search_path
exit $failed
