# Sourced by run.sh where there is no display.

# Starts the program on a virtual display, connects it to the simulated panel with the keyboard as a
# user would, and leaves a picture of it in the file named.
take_picture() {
  install_missing xvfb xdotool imagemagick openbox
  local number=90
  while [ -e "/tmp/.X11-unix/X$number" ]; do number=$((number + 1)); done
  export DISPLAY=":$number"
  Xvfb "$DISPLAY" -screen 0 800x640x24 >/dev/null 2>&1 &
  children+=($!)
  wait_until "the virtual display" xdotool getdisplaygeometry
  openbox >/dev/null 2>&1 &
  children+=($!)
  wait_until "the window manager" xdotool get_desktop
  build/release/tamberloom3 >/dev/null 2>&1 &
  children+=($!)
  wait_until "the program's window" xdotool search --onlyvisible --name "^Orv Tamberloom 3$" \
    windowactivate

  local keys=(xdotool key --delay 100)
  sleep 0.5
  "${keys[@]}" alt+c
  sleep 0.5
  "${keys[@]}" Tab Tab space Tab
  xdotool type --delay 30 127.0.0.1
  "${keys[@]}" Tab space
  sleep 2
  "${keys[@]}" alt+y  # Yes: take over the panel's hardware.
  sleep 1
  import -window root "$1"
  echo "A picture of the program, connected to the simulated panel: $1"
}

# Waits up to ten seconds for a command to succeed.
wait_until() {
  local what=$1 tries=100
  shift
  until "$@" >/dev/null 2>&1; do
    tries=$((tries - 1))
    [ "$tries" -gt 0 ] || {
      echo "Gave up waiting for $what." >&2
      exit 1
    }
    sleep 0.1
  done
}
