# Run by CPack when the components are installed into a folder each, and before the packages are made: brings them into
# the form that Debian's policy asks for.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

# run(COMMAND...) fails if the command does. Its output is in `output`.
function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${CPACK_TEMPORARY_DIRECTORY} OUTPUT_VARIABLE output
                  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(output "${output}" PARENT_SCOPE)
endfunction()

# Strips what CMake does not. Sets `linked` to the files that are linked with shared libraries.
function(strip_files root)
  file(GLOB_RECURSE programs ${root}/usr/bin/*)
  file(GLOB_RECURSE libraries ${root}/usr/lib/*.so*)
  set(linked)
  foreach(file IN LISTS programs libraries)
    if(NOT IS_SYMLINK ${file})
      run(strip --strip-unneeded --remove-section=.comment --remove-section=.note ${file})
      list(APPEND linked ${file})
    endif()
  endforeach()
  file(GLOB_RECURSE archives ${root}/usr/lib/*.a)
  foreach(file IN LISTS archives)
    run(strip --strip-debug --remove-section=.comment --enable-deterministic-archives ${file})
  endforeach()
  set(linked "${linked}" PARENT_SCOPE)
endfunction()

# Adds to `depends` the packages of the shared libraries that the files were linked with; ours is in debian/shlibs.local.
function(add_linked_packages depends)
  list(TRANSFORM ARGN PREPEND -e OUTPUT_VARIABLE files)
  run(dpkg-shlibdeps -O --warnings=0 -l${CPACK_TEMPORARY_DIRECTORY}/library/usr/lib/${architecture} ${files})
  string(REGEX REPLACE "^.*Depends=" "" found "${output}")
  list(APPEND ${depends} ${found})
  list(JOIN ${depends} ", " joined)
  set(${depends} "${joined}" PARENT_SCOPE)
endfunction()

run(dpkg-architecture -qDEB_HOST_MULTIARCH)
set(architecture ${output})
file(MAKE_DIRECTORY ${CPACK_TEMPORARY_DIRECTORY}/debian)
file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/debian/control "")
configure_file(${CPACK_ZEPHCTL_DEBIAN}/shlibs ${CPACK_TEMPORARY_DIRECTORY}/debian/shlibs.local COPYONLY)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} key)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
  set(name ${CPACK_DEBIAN_${key}_PACKAGE_NAME})
  configure_file(${CPACK_ZEPHCTL_DEBIAN}/changelog ${root}/usr/share/doc/${name}/changelog COPYONLY)
  file(GLOB pages ${root}/usr/share/man/*/*)
  run(gzip -9n ${root}/usr/share/doc/${name}/changelog ${pages})
  if(EXISTS ${CPACK_ZEPHCTL_OVERRIDES}/${name})
    file(COPY ${CPACK_ZEPHCTL_OVERRIDES}/${name} DESTINATION ${root}/usr/share/lintian/overrides)
  endif()

  strip_files(${root})
  if(linked)
    add_linked_packages(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS ${linked})
  endif()
endforeach()
file(REMOVE_RECURSE ${CPACK_TEMPORARY_DIRECTORY}/debian)
