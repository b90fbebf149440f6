# Sourced by run.sh: runs the program on a machine without a display, under an X server of its own.
# Nothing listens beyond loopback, and what is private to the run lies in a folder of its owner's.
# shellcheck shell=bash

# An X server without a screen, a pocket shell for it, a viewer's way in, and a camera.
headless_packages=(xvfb xauth matchbox-window-manager x11vnc xdotool scrot)

run_without_display() {  # PROGRAM PICTURE
  require_packages "${headless_packages[@]}"
  private=$(mktemp -d)
  helpers=()
  program=
  trap end_all EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM HUP

  export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$private}
  start_x_server
  start_helper matchbox-window-manager -use_titlebar no
  "$1" &
  program=$!
  if ! wait_for_window; then
    say "Morvenly has ended already: it was running before, or has said why."
    wait "$program"
    return
  fi
  start_viewer_port
  take_pictures "$2" &
  helpers+=($!)

  say "No display here: Morvenly runs under an X server of its own."
  say "  picture:    $2"
  say "  viewer:     vncviewer 127.0.0.1::$port    password: $password"
  say "  from afar:  ssh -L $port:127.0.0.1:$port $(uname -n), then the same viewer"
  say "  to end it:  Ctrl+C"
  wait "$program"
}

# A pocket screen, 240 by 320 units of two pixels, on a free display number.
start_x_server() {
  export XAUTHORITY=$private/cookies
  local cookie
  cookie=$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
  xauth -q 2>/dev/null <<<"add :0 . $cookie"  # the server takes the cookie under any number
  start_helper Xvfb -displayfd 3 -screen 0 480x640x24 -nolisten tcp -noreset \
    -auth "$XAUTHORITY" 3>"$private/display"
  DISPLAY=:$(first_line "$private/display")
  export DISPLAY
  xauth -q 2>/dev/null <<<"add $DISPLAY . $cookie"
}

# Sets `port` and `password`.
start_viewer_port() {
  password=$(od -An -N4 -tx1 /dev/urandom | tr -d ' \n')
  echo "$password" >"$private/password"
  start_helper x11vnc -quiet -localhost -noipv6 -forever -autoport 5900 \
    -passwdfile "rm:$private/password" >"$private/port"
  port=$(first_line "$private/port")
  port=${port#PORT=}
}

# In a session of its own: Ctrl+C ends the program first and its X server last.
start_helper() {
  setsid "$@" 2>/dev/null &
  helpers+=($!)
}

first_line() {  # FILE, as soon as it is written
  local tries
  for ((tries = 0; tries < 100; tries++)); do
    [ -s "$1" ] && head -n 1 "$1" && return
    sleep 0.1
  done
  say "$(basename "$1"): the X server or its viewer's port did not start"
  return 1
}

# False if the program ends before it shows anything.
wait_for_window() {
  until xdotool search --onlyvisible --class morvenly >/dev/null 2>&1; do
    kill -0 "$program" 2>/dev/null || return 1
    sleep 0.1
  done
}

# Of what the program shows first, then of its window.
take_pictures() {  # PICTURE
  sleep 1
  scrot -o "$1"
  xdotool search --sync --onlyvisible --name '^Morvenly$' >/dev/null
  sleep 1
  scrot -o "$1"
}

end_all() {
  trap '' INT TERM HUP
  if [ -n "$program" ]; then
    kill "$program" 2>/dev/null || true
    wait "$program" || true
  fi
  local helper
  for helper in "${helpers[@]}"; do kill "$helper" 2>/dev/null || true; done
  wait
  rm -rf "$private"
}
