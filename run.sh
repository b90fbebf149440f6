#!/usr/bin/env bash
# Builds Morvenly, installs it into its user's own folder and starts it there.
#   ./run.sh [FOLDER]                 FOLDER: ~/Morvenly unless named. A diary there is left alone.
#   ./run.sh --uninstall [FOLDER]     removes all of it but the diary and its backups
# Packages that are missing are installed on the way, as root or by sudo.
set -euo pipefail
case ${1:-} in
  --uninstall) ;;
  -*)
    echo "Usage: ./run.sh [--uninstall] [FOLDER]" >&2
    exit 2
    ;;
esac
action=install
if [ "${1:-}" = --uninstall ]; then
  action=uninstall
  shift
fi
if [ $# -gt 1 ]; then
  echo "run.sh takes one folder; a name with spaces needs quotes." >&2
  exit 2
fi
folder=$(realpath -m -- "${1:-$HOME/Morvenly}")
cd "$(dirname "$(realpath "$0")")"
. tools/setup.sh
. tools/without_display.sh
app_id=org.morvenly.Morvenly
share=${XDG_DATA_HOME:-$HOME/.local/share}

has_display() {
  local wayland=${WAYLAND_DISPLAY:-} number
  if [ -n "$wayland" ]; then
    [ -S "$wayland" ] || [ -S "${XDG_RUNTIME_DIR:-}/$wayland" ] && return
  fi
  case ${DISPLAY:-} in
    '') return 1 ;;
    :*) number=${DISPLAY#:} && [ -S "/tmp/.X11-unix/X${number%%.*}" ] ;;
  esac
}

# A new file under the old name: a running program keeps the one that it was started from.
install_file() {  # SOURCE TARGET
  cmp -s "$1" "$2" && return
  mkdir -p "$(dirname "$2")"
  cp "$1" "$2.new"
  mv -f "$2.new" "$2"
}

# A path as the Exec line of a desktop entry takes it: quoted, with its own signs escaped for the
# quotes, then for the entry's text, and no field code in it.
exec_word() {
  printf '"%s"' "$(sed -e 's/[\\"`$]/\\&/g' -e 's/\\/\\\\/g' -e 's/%/%%/g' <<<"$1")"
}

# The program's entry in the menus of desktops and phones.
install_menu_entry() {
  local entry=build/release/$app_id.desktop template
  template=$(<packaging/$app_id.desktop.in)
  echo "${template//@PROGRAM@/"$(exec_word "$folder/morvenly")"}" >"$entry"
  install_file "$entry" "$share/applications/$app_id.desktop"
  install_file packaging/morvenly.svg "$share/icons/hicolor/scalable/apps/morvenly.svg"
  rm -f "$share/applications/morvenly.desktop"  # what it was once called
}

uninstall() {
  if [ ! -e "$folder/morvenly" ]; then
    say "No Morvenly lies in $folder."
    exit 1
  fi
  local held=0 entry=$share/applications/$app_id.desktop
  flock -n -E 9 "$folder/.morvenly.lock" true 2>/dev/null || held=$?
  if [ $held = 9 ]; then
    say "Morvenly is running there: end it first."
    exit 1
  fi
  rm -rf "$folder/Morvenly.manual"
  rm -f "$folder"/{morvenly,Morvenly.dat,Morvenly.png,.morvenly.lock,.morvenly.socket} \
    "$folder"/*.sdf-index
  if grep -qF "Exec=$(exec_word "$folder/morvenly")" "$entry" 2>/dev/null; then
    rm -f "$entry" "$share/icons/hicolor/scalable/apps/morvenly.svg"
  fi
  rmdir "$folder" 2>/dev/null || say "The diary stays in $folder."
}

# In a shell of root's, be it from `sudo -i`, root means itself; by `sudo ./run.sh` somebody else.
if [[ ${SUDO_COMMAND:-} = *run.sh* ]] || [ "$(stat -c %u "$HOME")" != "$(id -u)" ]; then
  say "Start it without sudo, in your own name: it asks for sudo where a package is missing."
  exit 1
fi
if [ $action = uninstall ]; then
  uninstall
  exit
fi

require_packages "${build_packages[@]}" "${run_packages[@]}"
build release -DMORVENLY_TESTS=OFF

umask 077  # a diary is private, and so is its folder
install_file build/release/morvenly "$folder/morvenly"
chmod 700 "$folder/morvenly"
rm -rf "$folder/Morvenly.manual"
cp -r build/release/docs/html "$folder/Morvenly.manual"
if has_display; then
  [ -z "${WAYLAND_DISPLAY:-}" ] || require_packages qt6-wayland
  install_menu_entry
  exec "$folder/morvenly"
fi
run_without_display "$folder/morvenly" "$folder/Morvenly.png"
