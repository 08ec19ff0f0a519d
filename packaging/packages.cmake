# The packages: what CPack makes of the components. docs/packages.md lists them.
set(CPACK_PACKAGE_NAME zephctl)
set(CPACK_PACKAGE_VENDOR "The zephctl authors")
set(CPACK_PACKAGE_CONTACT "The zephctl authors <zephctl@example.invalid>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
# Only what is installed is built.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_COMPONENTS_ALL)
set(about "zephctl controls a multipath VPN daemon on the same machine, which bonds
several network adapters into one tunnel.")
# describe(COMPONENT SECTION SUMMARY TEXT): a package.
macro(describe component section summary text)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${package_${component}})
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
  # CPack writes the first line as the summary.
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${summary}\n${about}\n\n${text}")
  set(CPACK_RPM_${key}_PACKAGE_NAME ${package_${component}})
  set(CPACK_RPM_${key}_PACKAGE_SUMMARY "${summary}")
  set(CPACK_RPM_${key}_PACKAGE_DESCRIPTION "${about}\n\n${text}")
endmacro()

describe(program net "command line of a multipath VPN daemon"
         "This package contains the program, which performs one action a run and prints
the answer as JSON, its manual page, and completions for bash, zsh and fish.")
describe(library libs "client library of a multipath VPN daemon"
         "This package contains ZephlinkSDK as a shared library for programs in C, C++
and other languages.")
describe(development libdevel "client library of a multipath VPN daemon, for development"
         "This package contains the headers of ZephlinkSDK, the static library, and what
CMake and pkg-config need to find them.")
if(tools)
  describe(tools net "dashboard, metrics and simulator of a multipath VPN daemon"
           "This package contains zephtop, a dashboard for the terminal; zephlink-exporter,
which serves metrics to Prometheus; and zephsim, a simulated daemon.")
endif()
if(ZEPHCTL_PYTHON)
  describe(python python "client library of a multipath VPN daemon for Python"
           "This package contains zephlink, the binding of ZephlinkSDK for Python 3: the
daemon's services as methods, its reports as objects, its events as iterators.")
endif()

# ---- Debian

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE zephctl)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# debian/prepare.cmake adds the packages that the files were linked with.
set(exactly "(= ${PROJECT_VERSION})")
# The static library is linked with jsoncpp.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${package_library} ${exactly}, libjsoncpp-dev")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.9), python3-cffi-backend (>= 1.14)")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS ${package_tools})
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS prometheus)

set(debian ${CMAKE_CURRENT_BINARY_DIR}/debian)
configure_file(debian/changelog.in ${debian}/changelog @ONLY)
file(WRITE ${debian}/shlibs
     "libzephlinksdk ${PROJECT_VERSION_MAJOR} ${package_library} (>= ${PROJECT_VERSION})\n")
file(COPY debian/triggers DESTINATION ${debian})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${debian}/shlibs ${debian}/triggers)
foreach(component tools python)
  string(TOUPPER ${component} key)
  file(GLOB CPACK_DEBIAN_${key}_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/${component}/*)
endforeach()
set(CPACK_ZEPHCTL_DEBIAN ${debian})
set(CPACK_ZEPHCTL_OVERRIDES ${CMAKE_CURRENT_SOURCE_DIR}/debian/overrides)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/prepare.cmake)

# ---- RPM

set(CPACK_RPM_COMPONENT_INSTALL ON)
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_COMPRESSION_TYPE xz)
set(CPACK_RPM_PACKAGE_LICENSE MIT)
set(CPACK_RPM_PACKAGE_AUTOREQPROV ON)
set(CPACK_RPM_DEVELOPMENT_PACKAGE_REQUIRES "${package_library} = ${PROJECT_VERSION}, jsoncpp-devel")
set(CPACK_RPM_DEVELOPMENT_PACKAGE_PROVIDES "libzephlinksdk-devel = ${PROJECT_VERSION}")
set(CPACK_RPM_PYTHON_PACKAGE_REQUIRES "python3 >= 3.9, python3-cffi")
set(CPACK_RPM_LIBRARY_POST_INSTALL_SCRIPT_FILE ${CMAKE_CURRENT_SOURCE_DIR}/rpm/ldconfig)
set(CPACK_RPM_LIBRARY_POST_UNINSTALL_SCRIPT_FILE ${CMAKE_CURRENT_SOURCE_DIR}/rpm/ldconfig)
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION /usr/lib/systemd /usr/lib/systemd/system /usr/lib64/cmake
    /usr/lib64/pkgconfig /usr/share/bash-completion /usr/share/bash-completion/completions /usr/share/doc
    /usr/share/fish /usr/share/fish/vendor_completions.d /usr/share/man /usr/share/man/man1 /usr/share/man/man3
    /usr/share/zsh /usr/share/zsh/site-functions /usr/share/zsh/vendor-completions)
if(ZEPHCTL_PYTHON)
  cmake_path(GET ZEPHCTL_PYTHON_DIR PARENT_PATH python_parent)
  list(APPEND CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION /usr/${python_parent} /usr/${ZEPHCTL_PYTHON_DIR})
endif()

# ---- What differs by generator: read by CPack for each

if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR DEB)
endif()
set(CPACK_ZEPHCTL_PROCESSOR ${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/generators.cmake)
include(CPack)
