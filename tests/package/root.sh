#!/usr/bin/env bash
# Run by scripts/package as root of a Debian that contains apt and what is essential: installs the packages as their
# users do, runs the programs, builds and runs hosts of the library, and removes everything again.
set -euo pipefail
cd "$(dirname "$0")"
# shellcheck source=tests/package/expect.sh
. ./expect.sh
export DEBIAN_FRONTEND=noninteractive
debs=$PWD/../../debs

install() {
  echo "-- apt-get install ${*##*/}"
  apt-get -q -y --no-install-recommends install "$@" >apt.log 2>&1 || { cat apt.log; exit 1; }
}

install "$debs"/zephctl_*.deb
# One file: it needs no other package.
[[ -z $(dpkg-query -W -f '${Depends}' zephctl) ]]
install "$debs"/libzephlinksdk14_*.deb "$debs"/zephlink-tools_*.deb "$debs"/python3-zephlink_*.deb

simulate zephsim.log zephsim
trap 'kill "$simulator" 2>/dev/null && wait "$simulator" || true' EXIT
expect '"state" : "LOGGED_OUT"' zephctl -p "$port" state
expect '"state" : "LOGGED_IN"' zephctl -p "$port" login demo@example.com demo
expect '"city" : "frankfurt"' zephctl -p "$port" connect closest
expect 'zephtop 14.' zephtop --version
expect 'zephlink_up 1' zephlink-exporter --daemon "127.0.0.1:$port" --once | grep -E '^zephlink_(up|daemon_info)'
expect 'State.CONNECTED' python3 -c 'import sys, zephlink
with zephlink.Client(port=int(sys.argv[1])) as client:
    print(client.get_state())' "$port"

install "$debs"/libzephlinksdk-dev_*.deb g++ make cmake pkgconf
answer="state 6, version"
# build FORM PACKAGE TARGET builds the hosts by pkg-config and by CMake, and runs them.
build() {
  local flags
  echo "-- hosts of the $1 library"
  flags=$(pkg-config --cflags --libs "$2")
  read -ra flags <<<"$flags"
  cc -std=c11 ../../examples/subscribe.c -o "subscribe_$1" "${flags[@]}"
  c++ -std=c++20 host.cpp -o "host_$1" "${flags[@]}"
  cmake -S . -B "cmake_$1" -DCOMPONENTS="$1" >cmake.log
  cmake --build "cmake_$1" >>cmake.log
  for folder in . "cmake_$1"; do
    expect "$answer" "$folder/host_$1" "$port"
    watch "$folder/subscribe_$1" "$port" streaming
    readelf -d "$folder/host_$1" >dynamic.log
    grep -oE 'libzephlinksdk\.so\.[0-9]+|libjsoncpp\.so\.[0-9]+' dynamic.log | sed "s|^|$folder/host_$1 is linked with |"
  done
}
# A host of the shared library needs no jsoncpp.
dpkg --force-depends --remove libjsoncpp-dev >/dev/null 2>&1
build shared zephlinksdk
install "$debs"/libzephlinksdk-dev_*.deb libjsoncpp-dev
build static zephlinksdk-static
if grep -q 'libzephlinksdk' dynamic.log; then
  echo "A host of the static library is linked with the shared one" >&2
  exit 1
fi

echo "-- removed again"
packages=(zephctl libzephlinksdk14 libzephlinksdk-dev zephlink-tools python3-zephlink)
# What `systemctl enable` does, where systemd is installed: the package has not enabled the unit.
wanted=/etc/systemd/system/multi-user.target.wants
mkdir -p "$wanted"
ln -s /usr/lib/systemd/system/zephlink-exporter.service "$wanted"
readarray -t owned < <(dpkg-query -L "${packages[@]}" | sort -u)
echo "${#owned[@]} paths belong to the packages"
apt-get -q -y purge "${packages[@]}" >apt.log 2>&1 || { cat apt.log; exit 1; }
left=()
for path in "${owned[@]}"; do
  if [[ -e $path || -L $path ]] && ! dpkg-query -S "$path" >/dev/null 2>&1; then left+=("$path"); fi
done
readarray -t named < <(find / -xdev \( -path /proc -o -path "$(realpath ../..)" -o -path /var/log \) -prune -o \
  -name '*zeph*' -print)
left+=("${named[@]}")
if [[ ${#left[@]} -gt 0 ]]; then
  printf '%s was left behind\n' "${left[@]}" >&2
  exit 1
fi
echo "Nothing was left behind"
