# Sourced by the other scripts. Builds libraries from Debian's source packages if Debian has no suitable binary package.
# shellcheck shell=bash

# debian_sources deb|deb-src prints apt's locations of Debian's packages or sources, as lines of a sources.list.
debian_sources() {
  local sources
  sources=$(apt-get indextargets --format "$1 \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' \
    'Origin: Debian' | sort -u)
  if [[ -z $sources ]]; then
    echo "apt has no lists of Debian's packages: run apt-get update" >&2
    return 1
  fi
  echo "$sources"
}

# fetch_sources DIRECTORY PACKAGE... unpacks the source packages in DIRECTORY, which it creates again.
#
# apt's configuration is not changed: the entries for sources are derived from those for packages and written, like
# their lists, to DIRECTORY/apt.
fetch_sources() {
  local apt=$1/apt
  rm -rf "$1"
  mkdir -p "$apt/lists/partial"
  debian_sources deb-src >"$apt/sources.list" || return
  local apt_get=(apt-get -q -o Dir::Etc::SourceList="$apt/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o Dir::State::Lists="$apt/lists" -o APT::Sandbox::User="$(id -un)")
  "${apt_get[@]}" update && (cd "$1" && "${apt_get[@]}" source "${@:2}")
}

# The compiler flags of every copy of jsoncpp in our programs, as for our own code. Without the last flag the functions
# of a shared library call each other through its symbol table.
jsoncpp_flags="-ffunction-sections -fdata-sections -fvisibility=hidden -fno-semantic-interposition"

# install_static SOURCE_DIRECTORY PREFIX CMAKE_OPTION... builds a source package as a static library.
install_static() {
  local binary
  binary=$(dirname "$1")/build/$(basename "$1")
  cmake -G Ninja -S "$1" -B "$binary" -DCMAKE_INSTALL_PREFIX="$2" -DCMAKE_INSTALL_LIBDIR=lib \
    -DCMAKE_INSTALL_MESSAGE=NEVER -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF "${@:3}"
  cmake --build "$binary" --target install
}

# install_static_jsoncpp SOURCES PREFIX CMAKE_OPTION... builds the jsoncpp that was unpacked in SOURCES as a static
# library, with our patches. packaging/jsoncpp/README.md describes the patches.
install_static_jsoncpp() {
  local patch
  for patch in packaging/jsoncpp/*.patch; do
    patch -p1 -s -d "$1"/libjsoncpp-*/ <"$patch"
  done
  install_static "$1"/libjsoncpp-*/ "${@:2}" -DBUILD_OBJECT_LIBS=OFF -DJSONCPP_WITH_TESTS=OFF \
    -DJSONCPP_WITH_POST_BUILD_UNITTEST=OFF -DCMAKE_CXX_FLAGS="$jsoncpp_flags" -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG"
  # Programs that contain a copy must include its licence.
  install -D -m 644 "$1"/libjsoncpp-*/LICENSE "$2/share/doc/jsoncpp/LICENSE"
}
