# Sourced by the other scripts. Lists the tools for each need, how to find them, and their Debian packages.
# shellcheck shell=bash

# Debian's Python modules work only with Debian's Python, which may not be the first in PATH.
python=/usr/bin/python3
[[ -x $python ]] || python=python3

# Needs, kind of check, names (alternatives separated by "|"), Debian packages.
#   command  a program in PATH
#   header   a header that the C++ compiler finds
#   python   a module or a C header of $python
#   runtime  the sanitizers of a clang
tools='
user,build         command  c++                            g++
user,build         command  cc                             gcc
user,build         command  cmake                          cmake
user,build         command  ninja|ninja-build              ninja-build
user,build         header   json/json.h|jsoncpp/json/json.h  libjsoncpp-dev
user,build         header   ares.h                         libc-ares-dev
build              header   boost/beast.hpp                libboost-dev
build              header   gtest/gtest.h                  libgtest-dev
build              header   gmock/gmock.h                  libgmock-dev
build              header   benchmark/benchmark.h          libbenchmark-dev
build              header   curses.h                       libncurses-dev
build              header   prometheus/registry.h          prometheus-cpp-dev
scripts,test       command  python3                        python3
sources            command  apt-get                        apt
sources            command  dpkg-source                    dpkg-dev
sources            command  patch                          patch
clang,fuzz,lint    command  clang                          clang
clang,fuzz,lint    command  clang++                        clang
fuzz               runtime  compiler-rt                    libclang-rt-dev
lint               command  gcc                            gcc
lint               command  git                            git
lint               command  clang-format                   clang-format
lint               command  clang-tidy                     clang-tidy
lint               command  run-clang-tidy                 clang-tidy
lint               command  shellcheck                     shellcheck
test               python   jsonschema                     python3-jsonschema
test               command  groff                          groff-base
test               command  mandoc                         mandoc
test               command  awk                            mawk
test               command  zsh                            zsh
test               command  fish                           fish
test               command  tmux                           tmux
package            command  dpkg-shlibdeps                 dpkg-dev
package            command  file                           file
package            command  lintian                        lintian
package            command  mmdebstrap                     mmdebstrap
package            command  pkgconf                        pkgconf
package            command  rpmbuild                       rpm
python             command  mypy                           mypy
python             command  pkgconf                        pkgconf
python             python   Python.h                       python3-dev
python             python   cffi                           python3-cffi
python             python   pip                            python3-pip
python             python   pytest                         python3-pytest
python             python   setuptools                     python3-setuptools
python             python   wheel                          python3-wheel
peers              command  gcc                            gcc
peers              command  node                           nodejs
peers              command  npm                            npm
peers              python   websockets                     python3-websockets
peers              header   libwebsockets.h                libwebsockets-dev
exporter           command  prometheus                     prometheus
exporter           command  promtool                       prometheus
exporter           command  systemd-analyze                systemd
docs               command  doxygen                        doxygen
abi                command  abidw                          abigail-tools
windows            command  x86_64-w64-mingw32-g++-posix   g++-mingw-w64-x86-64-posix
windows            command  wine                           wine wine64
windows            command  unzip                          unzip
'

# is_needed NEEDS NEED... returns true if one of the needs is in the list.
is_needed() {
  local need
  for need in "${@:2}"; do
    if [[ ,$1, == *",$need,"* ]]; then return 0; fi
  done
  return 1
}

# has_command NAMES returns true if one of the programs is in PATH.
has_command() {
  local name
  for name in ${1//|/ }; do
    if command -v "$name" >/dev/null; then return 0; fi
  done
  return 1
}

# missing_tools NEED... prints a line for each missing tool: its names, a blank, its Debian packages.
missing_tools() {
  local needs kind names package headers='' header_lines='' modules='' module_lines=''
  while read -r needs kind names package; do
    is_needed "$needs" "$@" || continue
    case $kind in
      command) has_command "$names" || echo "$names $package" ;;
      runtime) [[ -e $(clang --rtlib=compiler-rt -print-libgcc-file-name 2>/dev/null) ]] || echo "$names $package" ;;
      # The compiler and Python run once, for all names.
      header)
        headers+="#if !(__has_include(<${names//|/>) || __has_include(<}>))"$'\n'"$names $package"$'\n#endif\n'
        header_lines+="$names $package"$'\n'
        ;;
      python)
        modules+="$names "
        module_lines+="$names $package"$'\n'
        ;;
    esac
  done <<<"$tools"
  if [[ -n $headers ]]; then
    c++ -E -P -x c++ - <<<"$headers" 2>/dev/null || printf '%s' "$header_lines"
  fi
  if [[ -n $modules ]]; then missing_modules "$modules" "$module_lines"; fi
}

# missing_modules MODULES LINES prints the lines of those modules and C headers that Python does not have.
missing_modules() {
  local found line
  # shellcheck disable=SC2086
  found=$("$python" -c '
import importlib.util, os, sys, sysconfig
for name in sys.argv[1:]:
    if name.endswith(".h"):
        found = os.path.exists(os.path.join(sysconfig.get_path("include"), name))
    else:
        found = importlib.util.find_spec(name)
    if found:
        print(name)' $1 2>/dev/null) || found=
  while read -r line; do
    grep -qxF -- "${line%% *}" <<<"$found" || echo "$line"
  done <<<"${2%$'\n'}"
}

# install_packages PACKAGE... returns false if it is not permitted or fails.
install_packages() {
  local as_root=()
  command -v apt-get >/dev/null || return 1
  if [[ $(id -u) -ne 0 ]]; then
    [[ ${ZEPHCTL_INSTALL:-} == 1 ]] || return 1
    as_root=(sudo)
  elif [[ ${ZEPHCTL_INSTALL:-1} != 1 ]]; then
    return 1
  fi
  echo "Installing the Debian packages $*" >&2
  as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y)
  "${as_root[@]}" update >&2 && "${as_root[@]}" install --no-install-recommends "$@" >&2
}

# need_packages NEED... checks for the tools of these needs. If apt exists, installs missing tools as root or with
# ZEPHCTL_INSTALL=1 (0: not even as root); otherwise prints them and ends the script.
need_packages() {
  local missing packages
  missing=$(missing_tools "$@")
  [[ -n $missing ]] || return 0
  readarray -t packages < <(cut -d' ' -f2- <<<"$missing" | tr ' ' '\n' | sort -u)
  if install_packages "${packages[@]}"; then
    missing=$(missing_tools "$@")
    [[ -n $missing ]] || return 0
  fi
  {
    echo "These tools were not found:"
    sort -u <<<"$missing" | sed 's/^\([^ ]*\) \(.*\)/  \1 (Debian: \2)/; s/|/ or /g'
    echo "Install them, or set ZEPHCTL_INSTALL=1 to have this done by apt."
  } >&2
  exit 1
}
