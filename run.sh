#!/usr/bin/env bash
# Builds Morvenly, installs it into its user's own folder and starts it there.
#   ./run.sh [FOLDER]      FOLDER: ~/Morvenly unless named. A diary that lies there is left alone.
# Packages that are missing are installed on the way, as root or by sudo.
set -euo pipefail
folder=$(realpath -m -- "${1:-$HOME/Morvenly}")
cd "$(dirname "$(realpath "$0")")"
. tools/setup.sh
. tools/without_display.sh

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

# The program's entry in the menus of desktops and phones.
install_menu_entry() {
  local share=${XDG_DATA_HOME:-$HOME/.local/share} entry
  entry=$(<resources/morvenly.desktop)
  echo "${entry//@PROGRAM@/"$folder/morvenly"}" >build/release/morvenly.desktop
  install_file build/release/morvenly.desktop "$share/applications/morvenly.desktop"
  install_file resources/morvenly.svg "$share/icons/hicolor/scalable/apps/morvenly.svg"
}

require_packages "${build_packages[@]}" "${run_packages[@]}"
build release -DMORVENLY_TESTS=OFF

umask 077  # a diary is private, and so is its folder
install_file build/release/morvenly "$folder/morvenly"
chmod 700 "$folder/morvenly"
if has_display; then
  [ -z "${WAYLAND_DISPLAY:-}" ] || require_packages qt6-wayland
  install_menu_entry
  exec "$folder/morvenly"
fi
run_without_display "$folder/morvenly" "$folder/Morvenly.png"
