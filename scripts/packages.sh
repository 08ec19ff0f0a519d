# Sourced by the other scripts: which Debian packages each need takes, and how they get onto the machine.
# shellcheck shell=bash

declare -A debian_packages=(
  [user]="g++ cmake ninja-build libjsoncpp-dev libc-ares-dev"
  [build]="g++ cmake ninja-build libjsoncpp-dev libc-ares-dev libboost-dev libgtest-dev libgmock-dev libbenchmark-dev libncurses-dev prometheus-cpp-dev"
  [scripts]="python3"
  [peers]="python3-websockets gcc libwebsockets-dev"
  [exporter]="prometheus systemd"
  [npm]="nodejs npm"
  [fuzz]="clang libclang-rt-dev"
  [lint]="git clang-format clang-tidy shellcheck"
  [test]="python3 python3-jsonschema groff-base zsh fish tmux"
  [package]="file pkgconf"
  [python]="python3-dev python3-cffi python3-setuptools python3-wheel python3-pip python3-pytest mypy pkgconf"
  [sources]="dpkg-dev patch"
  [docs]="doxygen"
  [abi]="abigail-tools"
  [windows]="g++-mingw-w64-x86-64-posix wine wine64 unzip"
)

# need_packages NEED... installs what these needs lack, or names it and ends the script.
need_packages() {
  local need package missing=()
  for need in "$@"; do
    for package in ${debian_packages[$need]}; do
      dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
  done
  [[ ${#missing[@]} -gt 0 ]] || return 0

  local as_root=()
  if [[ $(id -u) -ne 0 ]]; then as_root=(sudo); fi
  if command -v apt-get "${as_root[@]}" >/dev/null; then
    echo "Installing the Debian packages ${missing[*]}" >&2
    as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y)
    if "${as_root[@]}" update >&2 && "${as_root[@]}" install --no-install-recommends "${missing[@]}" >&2; then
      return 0
    fi
  fi
  echo "These Debian packages are lacking and could not be installed: ${missing[*]}" >&2
  exit 1
}
