# Sourced by scripts that try packages: a simulated daemon, and what programs must print.
# shellcheck shell=bash

# simulate LOG ZEPHSIM... starts a simulated daemon, and sets `simulator` to its process and `port`.
simulate() {
  "${@:2}" --port 0 >"$1" 2>&1 </dev/null &
  # shellcheck disable=SC2034
  simulator=$!
  for _ in {1..100}; do
    [[ ! -s $1 ]] || break
    sleep 0.1
  done
  # shellcheck disable=SC2034
  port=$(sed -n '1{s/.*://;s/\r//;p}' "$1")
}

# expect TEXT COMMAND... fails unless the output of the command contains the text.
expect() {
  local output
  output=$(timeout -k 2 30 "${@:2}")
  printf '%s\n' "$output"
  if [[ $output != *"$1"* ]]; then
    echo "  ^ not what was expected of ${*:2}" >&2
    return 1
  fi
}

# watch COMMAND... fails unless the command reports a connection's traffic, and ends with status 0 when Enter is pressed.
watch() {
  local line="" host
  coproc HOST { exec timeout -k 2 30 "$@"; }
  host=$HOST_PID
  while [[ $line != *Mbit/s* ]] && read -r line <&"${HOST[0]}"; do
    echo "$line"
  done
  [[ $line == *Mbit/s* ]] || { echo "  ^ no traffic was reported by $*" >&2; return 1; }
  echo >&"${HOST[1]}"
  wait "$host"
}
