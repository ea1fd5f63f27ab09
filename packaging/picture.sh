# Sourced by run.sh where there is no display.

# Starts the program, connects it to the simulated panel as a user would, and leaves a picture of its
# window. Takes the picture's file, the panel's TCP address, empty for none, and its port.
take_picture() {
  cmake --build build/run --target driver >/dev/null
  coproc program {
    export QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="*.warning=false"
    export QT_QPA_GENERIC_PLUGINS=driver QT_PLUGIN_PATH="$PWD/build/run/plugins"
    exec build/run/bin/tamberloom3 2>build/program.err
  }
  children+=("$program_PID")
  exec {to_program}>&"${program[1]}" {from_program}<&"${program[0]}"

  tell open Connect
  if [ -n "$2" ]; then
    tell press TCP-IP
    tell type "TCP/IP Address" "$2"
  else
    tell press USB
    tell press "$3"
  fi
  tell press "Connect To Tamberloom 3"
  tell press Yes # Take over the panel's hardware.
  tell see Connected
  tell picture "$1"
}

# Has the driver in the program do something (tools/driver), as soon as it can be done.
tell() {
  local tries=200 answer
  while [ "$tries" -gt 0 ] && kill -0 "$program_PID" 2>/dev/null; do
    (IFS=$'\t' && echo "$*") >&"$to_program"
    read -r -t 20 answer <&"$from_program" || break
    [ "$answer" = ok ] && return
    tries=$((tries - 1))
    sleep 0.1
  done
  cat build/program.err >&2
  echo "The program did not get as far as this: $*" >&2
  exit 1
}
