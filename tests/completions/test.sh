#!/usr/bin/env bash
# Tests the completions in the real shells with the simulated daemon: tests/completions/test.sh DIRECTORY ZEPHCTL
# ZEPHSIM. The directory contains the completions. Exits with status 77 if a shell is missing and the others pass.
# shellcheck disable=SC2317,SC2329  # the functions of the shells are called by composed names
set -euo pipefail
directory=$(realpath "$1")
here=$(realpath "$(dirname "$0")")
zephsim=$(realpath "$3")
PATH=$(dirname "$(realpath "$2")"):$PATH
work=$(mktemp -d)
simulators=()
trap 'kill "${simulators[@]}" 2>/dev/null || true; rm -rf "$work"' EXIT

# start_simulator sets $port to the port of a new simulator.
start_simulator() {
  local output greeting
  exec {output}< <(exec setpriv --pdeathsig KILL "$zephsim" --port 0)
  simulators+=($!)
  read -r -t 10 greeting <&"$output" || { echo "The simulator did not start"; exit 1; }
  port=${greeting##*:}
}

# complete_SHELL LINE prints what the shell offers for the word at the end of the line.
complete_bash() {
  # shellcheck disable=SC2016
  timeout "$limit" bash --norc -c '
    source "$1/zephctl.bash"
    read -ra COMP_WORDS <<<"$2"
    [[ $2 != *" " ]] || COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    $(complete -p zephctl | sed "s/.*-F \([^ ]*\).*/\1/")
    printf "%s\n" "${COMPREPLY[@]}"' bash "$directory" "$1"
}
complete_zsh() { timeout "$limit" zsh -f "$here/complete.zsh" "$directory" "$work/zsh" "$1"; }
complete_fish() {
  # shellcheck disable=SC2016
  timeout "$limit" fish --no-config -c 'source $argv[1]/zephctl.fish; complete -C $argv[2]' "$directory" "$1" |
    cut -f"${2:-1}"
}

# describe_SHELL LINE prints the same with sentences: WORD: SENTENCE. bash has none.
describe_zsh() { timeout "$limit" zsh -f "$here/complete.zsh" "$directory" "$work/zsh" "$1" displays | sed 's/ *-- /: /'; }
describe_fish() { complete_fish "$1" 1,2 | sed 's/\t/: /'; }

# Each line is completed with "zephctl" in front; two blanks before the "=" start a new word. The words after the "="
# are the expected matches, sorted.
cases() {
  cat <<END
st = startupconnect state stats streaming streamingbypass streamtest
--p = --port
jumbo  = off on
jumbo on  =
mode  = redundant speed streaming
transport tcp = tcp tcp-multi
adapter datalimit  = daily dailyboost monthly
adapter bogus  =
captiveportal login  = off on
firewall mode  = allowlist denylist off
firewall ports  = add rem set
networksharing set a = alwaysOnDiscovery autoPairBehavior
safebrowsing st = start stats stop
esni  = off on
show c = cities connectmethod countries currentserver
show f = firewall
show l = localproxy logsettings
show s = servers settings speedtest streaming streamingbypass
show state  =
stats  = -1 historic
stats -1  = current day month networksharing total week
stats 5 day  = current day month networksharing total week
stats 5 networksharing day w = week
networksharing set s = sameUserAutoPair
streaming domains add  =
log report ann@example.com slow no = notes.txt
log daemon 1 2 3  = error info verbose warn
-p $live adapter priority  = eth0 share0 wlan0 wwan0
-p $live adapter priority w = wlan0 wwan0
-i 127.0.0.1 --port $live adapter priority eth0 a = always automatic
-p $live captiveportal login on e = eth0
-p $live connect u = us
-p $live connect cl = closest
-p $live connect us ny = nyc
-p $live connect us nyc  = 1 2 3 4 5
-p $live connect us-nyc- = us-nyc-1 us-nyc-2 us-nyc-3 us-nyc-4 us-nyc-5
-p $live connectmethod j = jp
-p $live networksharing peer request  = c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d01
-p $live networksharing set peer allowhost c1 = c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d01
-p $live streamingbypass service  = Bank Films Music disable enable
-p $live streamingbypass service Ba = Bank
-p $live streamingbypass domains rem  =
-p $live streaming domains rem  = meet.example.org video.example.com
-p $live streaming domains rem video.example.com m = meet.example.org
-p $live streaming ports rem 34 = 3478-3481/udp
-p $silent adapter priority  =
-p $silent connect  = closest ignorelast last p2p private proxy public
-p $silent streaming domains rem  =
-p $dead networksharing reconnect  =
END
}

# Each line is completed in the same way. The lines after it, which begin with a tab, are the expected matches.
described_cases() {
  cat <<END
j
	jumbo: Switches jumbo packets
da
	daemon: Ends the daemon
adapter datalimit 
	daily: Limits the data of an adapter in a day
	dailyboost: Adds to the data limit of an adapter for today
	monthly: Limits the data of an adapter in a month
networksharing set h
	host: Switches this machine's role in network sharing
show fire
	firewall: Shows the firewall's mode and lists
mode s
	speed
	streaming
END
}

touch "$work/notes.txt"
cd "$work"
start_simulator
live=$port
# For this port number zephctl does not end by itself.
silent=65535
mkdir "$work/hangs"
printf '#!/bin/sh\nexec sleep 100\n' >"$work/hangs/zephctl"
chmod +x "$work/hangs/zephctl"
start_simulator
dead=$port
kill "${simulators[-1]}"
wait "${simulators[-1]}" || true

# check_sentences SHELL: tests all lines of described_cases in one shell.
check_sentences() {
  local limit=30 wanted offered line
  declare -F "describe_$1" >/dev/null || return 0
  wanted=$(described_cases)
  offered=$(grep -v $'^\t' <<<"$wanted" | while IFS= read -r line; do
    echo "$line"
    "describe_$1" "zephctl $line" </dev/null | sed '/^$/d' | LC_ALL=C sort -u | sed 's/^/\t/'
  done)
  diff -u --label "$1 should show" <(echo "$wanted") --label "$1 shows" <(echo "$offered")
}

# check_shell SHELL: tests all lines in one shell.
check_shell() {
  local status=0 count=0 line words wanted offered seconds limit=30
  if ! command -v "$1" >/dev/null; then
    echo "SKIPPED: $1 is not installed"
    return 77
  fi
  while IFS= read -r line; do
    count=$((count + 1))
    words=${line%% =*}
    wanted=${line#* =}
    wanted=${wanted# }
    # A loaded machine may answer slowly. Where no daemon answers, the default limit of the completion must end zephctl.
    seconds=10
    if [[ $words != *"$live"* ]]; then seconds=''; fi
    offered=$(
      if [[ $words == *"$silent"* ]]; then PATH=$work/hangs:$PATH; fi
      ZEPHCTL_COMPLETION_SECONDS=$seconds "complete_$1" "zephctl $words" | sed '/^$/d' | LC_ALL=C sort -u | paste -sd' '
    ) || offered="nothing within $limit s"
    if [[ $offered != "$wanted" ]]; then
      printf '%s: "zephctl %s" offers\n  %s\nand not\n  %s\n' "$1" "$words" "$offered" "$wanted"
      status=1
    fi
  done < <(cases)
  echo "$1: $count lines completed"
  check_sentences "$1" || status=1
  return "$status"
}

checks=()
for shell in bash zsh fish; do
  check_shell "$shell" </dev/null &
  checks+=($!)
done
status=0
for check in "${checks[@]}"; do
  wait "$check" || status=$((status == 1 ? 1 : $?))
done
exit "$status"
