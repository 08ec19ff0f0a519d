# find_package(zephlinksdk [COMPONENTS shared static]): defines zephlinksdk::shared, which has no dependencies, and
# zephlinksdk::zephlinksdk, the static library, which depends on jsoncpp. Without components, defines those that are
# usable.
set(zephlinksdk_wanted ${zephlinksdk_FIND_COMPONENTS})
if(NOT zephlinksdk_wanted)
  set(zephlinksdk_wanted shared static)
endif()

if("shared" IN_LIST zephlinksdk_wanted)
  include(${CMAKE_CURRENT_LIST_DIR}/zephlinksdk-shared.cmake OPTIONAL RESULT_VARIABLE zephlinksdk_shared_FOUND)
endif()
if("static" IN_LIST zephlinksdk_wanted)
  find_package(Threads QUIET)
  find_package(jsoncpp QUIET)
  if(Threads_FOUND AND jsoncpp_FOUND)
    include(${CMAKE_CURRENT_LIST_DIR}/zephlinksdk-static.cmake OPTIONAL RESULT_VARIABLE zephlinksdk_static_FOUND)
  elseif(NOT zephlinksdk_FIND_QUIETLY)
    message(STATUS "zephlinksdk: the static library is not available: jsoncpp or Threads was not found")
  endif()
endif()

foreach(component IN LISTS zephlinksdk_FIND_COMPONENTS)
  if(zephlinksdk_FIND_REQUIRED_${component} AND NOT zephlinksdk_${component}_FOUND)
    set(zephlinksdk_FOUND FALSE)
    string(APPEND zephlinksdk_NOT_FOUND_MESSAGE "zephlinksdk has no usable component ${component}. ")
  endif()
endforeach()
