#!/bin/bash
# machine.sh KIND BROWSER, in mounts and processes of its own: a machine over this one, with what build/desktops/installed has
# in /usr/local, and one browser, which is a Snap, a Flatpak, or on Wayland. What is written goes with it. A reader then takes
# the tour.
set -euo pipefail
kind=$1 browser=$2
out=$place/$kind-$browser
scene=$(realpath "$(dirname "$0")")
rm -rf "$out" && mkdir -p "$out" "$place/over" && chmod 777 "$out"
mount --make-rprivate /
mount -t tmpfs none "$place/over"
mkdir "$place/over/"{upper,work,root}
root=$place/over/root
mount -t overlay overlay -o "lowerdir=/,upperdir=$place/over/upper,workdir=$place/over/work" "$root"
mount -t proc none "$root/proc"
for directory in dev sys; do mount --rbind /$directory "$root/$directory"; done
mount -t tmpfs none "$root/run"
mount -t tmpfs -o mode=1777 none "$root/tmp"
mkdir -p "$root/tmp/out" "$root/tmp/scene"
mkdir -m 1777 "$root/tmp/.X11-unix"
mount --bind "$out" "$root/tmp/out"
mount --bind "$scene" "$root/tmp/scene"

echo "reader:x:2001:2001::/home/reader:/bin/bash" >>"$root/etc/passwd"
echo "reader:x:2001:" >>"$root/etc/group"
install -d -o 2001 -g 2001 -m 750 "$root/home/reader" "$root/run/user/2001"
chmod 700 "$root/run/user/2001"
cp -a "$place/installed/usr/local/." "$root/usr/local/"

# No choice of this machine counts.
mkdir -p "$root/etc/xdg" "$root/etc/firefox/policies"
rm -f "$root/etc/alternatives/"{,gnome-}x-www-browser "$root/usr/share/applications/mimeinfo.cache"
cat >"$root/etc/firefox/policies/policies.json" <<'END'
{"policies": {"OverrideFirstRunPage": "", "OverridePostUpdatePage": "", "DisableTelemetry": true, "DontCheckDefaultBrowser": true,
 "SkipTermsOfUse": true, "Preferences": {"datareporting.policy.dataSubmissionPolicyBypassNotification": {"Value": true, "Status": "locked"}}}}
END

default_browser() { printf '[Default Applications]\nx-scheme-handler/http=%s\n' "$1" >"$root/etc/xdg/mimeapps.list"; }
desktop_entry() {  # FILE COMMAND: the only browser, and the default
  mkdir -p "$(dirname "$root$1")"
  printf '[Desktop Entry]\nType=Application\nName=%s\nExec=%s\nX-SnapInstanceName=%s\nMimeType=text/html;x-scheme-handler/http;\n' \
    "$browser" "$2" "$browser" >"$root$1"
  default_browser "${1##*/}"
}
# The browsers of this machine are inside of the sandboxes only.
in_sandbox() {
  mkdir -p "$root/usr/lib/sandboxed"
  cp -a "$root/usr/bin/chromium" "$root/usr/lib/sandboxed/"
  ln -s /usr/lib/firefox-esr/firefox-esr "$root/usr/lib/sandboxed/"
  rm -f "$root/usr/bin/"{firefox-esr,firefox,chromium,epiphany,epiphany-browser,evince}
  rm -f "$root/usr/share/applications/"{firefox-esr,chromium,org.gnome.Epiphany,org.gnome.Evince}*
  install "$scene/$kind" "$root/usr/bin/$kind"
}
case $kind in
  snap)
    in_sandbox
    mkdir -p "$root/snap/bin"
    ln -s /usr/bin/snap "$root/snap/bin/$browser"
    desktop_entry "/var/lib/snapd/desktop/applications/${browser}_$browser.desktop" "/snap/bin/$browser %u" ;;
  flatpak)
    in_sandbox
    case $browser in firefox) id=org.mozilla.firefox ;; chromium) id=org.chromium.Chromium ;; esac
    mkdir -p "$root/var/lib/flatpak/app/$id/current/active"
    printf '[Application]\nname=%s\n\n[Context]\nshared=network;ipc;\nsockets=x11;wayland;pulseaudio;\n' $id \
      >"$root/var/lib/flatpak/app/$id/current/active/metadata"
    desktop_entry "/var/lib/flatpak/exports/share/applications/$id.desktop" \
      "/usr/bin/flatpak run --branch=stable --command=$browser --file-forwarding $id @@u %u @@"
    sed -i "s/^X-Snap.*/X-Flatpak=$id/" "$root/var/lib/flatpak/exports/share/applications/$id.desktop" ;;
  wayland)
    case $browser in firefox) id=firefox-esr ;; chromium) id=chromium ;; epiphany) id=org.gnome.Epiphany ;; esac
    default_browser $id.desktop ;;
esac

mkdir "$root/before"
cd "$root"
pivot_root . before
umount -l /before
exec setpriv --reuid 2001 --regid 2001 --init-groups env -i ${OLH_SERVE:+"OLH_SERVE=$OLH_SERVE"} bash /tmp/scene/tour.sh "$kind"
