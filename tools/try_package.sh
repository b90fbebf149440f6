#!/usr/bin/env bash
# Installs the package into a root of its own, starts it there as an ordinary user, makes an Action,
# removes the package again, and looks whether the diary is untouched.
#   tools/try_package.sh PACKAGE
# As root; the program's own packages have to be there.
set -euo pipefail
package=$(realpath "$1")
place=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$place"' EXIT
root=$place/root
home=$place/home
mkdir -p "$root/var/lib/dpkg/"{info,updates} "$home"
# The root knows this machine's packages, so that dpkg looks for those that the package wants: apt
# would fetch them all again.
sed '/^Package: morvenly$/,/^$/d' /var/lib/dpkg/status >"$root/var/lib/dpkg/status"
chmod 755 "$place"
user=()
if [ "$(id -u)" = 0 ]; then
  chown nobody "$home"
  user=(setpriv --reuid nobody --regid nogroup --clear-groups --no-new-privs)
fi

packages() {
  dpkg --root="$root" --log=/dev/null --force-not-root --force-script-chrootless "$@"
}
fail() { printf 'The package: %s\n' "$*" >&2; exit 1; }

packages --install "$package" >"$place/log" 2>&1 ||
  fail "isn't installed: $(grep -v '^dpkg: warning' "$place/log")"
[ -x "$root/usr/bin/morvenly" ] || fail "brings no program"
system=$(cd "$root" && find . -not -path './var/lib/dpkg*' | sort)

# A display of its own, and somebody who gives the window the keys.
Xvfb -displayfd 3 -screen 0 480x640x24 -nolisten tcp 3>"$place/display" 2>/dev/null &
until [ -s "$place/display" ]; do sleep 0.1; done
DISPLAY=:$(<"$place/display")
export DISPLAY
matchbox-window-manager -use_titlebar no 2>/dev/null &
start() {
  "${user[@]}" env -i DISPLAY="$DISPLAY" HOME="$home" LC_ALL=C.UTF-8 \
    timeout 60 "$root/usr/bin/morvenly" &
  program=$!
}
shows() { timeout 20 xdotool search --sync --onlyvisible --name "$1" >/dev/null; }

start
shows '^設定ファイルエラー$' || fail "shows nothing at its first start"
xdotool key Return
shows '^データファイル初期化確認$' || fail "doesn't ask whether to begin a diary"
xdotool key Return
shows '^Morvenly$' || fail "shows no window"
sleep 1
xdotool key F1  # the screen for a new Action
sleep 1
xdotool key F1  # which writes it
sleep 1
xdotool key ctrl+q
wait "$program" || fail "ends with a failure"

diary=$home/.local/share/morvenly/user.sdf
[ "$(stat -c %a "${diary%/*}")" = 700 ] || fail "leaves its user's folder open"
[ "$(sqlite3 -readonly "$diary" 'select count(*) from t_UserData')" = 1 ] || fail "lost the Action"
[ "$(cd "$root" && find . -not -path './var/lib/dpkg*' | sort)" = "$system" ] ||
  fail "wrote into the system's folders"

before=$(sha256sum "$diary")
packages --purge morvenly >/dev/null 2>&1 || fail "isn't removed"
[ ! -e "$root/usr/bin/morvenly" ] || fail "leaves the program"
[ "$(sha256sum "$diary")" = "$before" ] || fail "takes the diary with it"
echo "The package is installed, used and removed; the diary stays."
