# Sourced by the other scripts: libraries built from Debian's source packages, where Debian has no binary that serves.
# shellcheck shell=bash

# fetch_sources DIRECTORY PACKAGE... unpacks the source packages in DIRECTORY, made anew.
#
# apt's own configuration stays as it is: the entries for sources are derived from those for packages and go, like their
# lists, into DIRECTORY/apt.
fetch_sources() {
  local apt=$1/apt
  rm -rf "$1"
  mkdir -p "$apt/lists/partial"
  apt-get indextargets --format "deb-src \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' \
    'Origin: Debian' | sort -u >"$apt/sources.list"
  if [[ ! -s $apt/sources.list ]]; then
    echo "apt has no lists of Debian's packages: run apt-get update" >&2
    return 1
  fi
  local apt_get=(apt-get -q -o Dir::Etc::SourceList="$apt/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o Dir::State::Lists="$apt/lists" -o APT::Sandbox::User="$(id -un)")
  "${apt_get[@]}" update && (cd "$1" && "${apt_get[@]}" source "${@:2}")
}

# install_static SOURCE_DIRECTORY PREFIX CMAKE_OPTION... builds a source package as a static library.
install_static() {
  local binary
  binary=$(dirname "$1")/build/$(basename "$1")
  cmake -G Ninja -S "$1" -B "$binary" -DCMAKE_INSTALL_PREFIX="$2" -DCMAKE_INSTALL_LIBDIR=lib \
    -DCMAKE_INSTALL_MESSAGE=NEVER -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF "${@:3}"
  cmake --build "$binary" --target install
}

# install_static_jsoncpp SOURCES PREFIX CMAKE_OPTION... does so with the jsoncpp that was unpacked in SOURCES.
install_static_jsoncpp() {
  install_static "$1"/libjsoncpp-*/ "${@:2}" -DBUILD_OBJECT_LIBS=OFF -DJSONCPP_WITH_TESTS=OFF \
    -DJSONCPP_WITH_POST_BUILD_UNITTEST=OFF
  # Programs that hold a copy must carry it.
  install -D -m 644 "$1"/libjsoncpp-*/LICENSE "$2/share/doc/jsoncpp/LICENSE"
}
