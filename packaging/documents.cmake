# The documents of the packages: pages and licences, each package's in its own folder.

foreach(component program library development tools python)
  set(doc_${component} ${CMAKE_INSTALL_DATADIR}/doc/${package_${component}})
endforeach()

# install_documents(COMPONENT PAGE...) installs pages of the source tree in one folder. Links to other pages become plain
# text.
function(install_documents component)
  foreach(page IN LISTS ARGN)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${page})
    file(READ ${PROJECT_SOURCE_DIR}/${page} text)
    foreach(other IN LISTS ARGN)
      get_filename_component(name ${other} NAME)
      string(REGEX REPLACE "\\]\\([./a-z]*${name}" "]@KEPT@(${name}" text "${text}")
    endforeach()
    string(REGEX REPLACE "\\[([^]]+)\\]\\([^()#: ]*(\\.[a-z]+|/|LICENSE)(#[^) ]*)?\\)" "\\1" text "${text}")
    string(REPLACE "]@KEPT@(" "](" text "${text}")
    get_filename_component(name ${page} NAME)
    set(file ${CMAKE_CURRENT_BINARY_DIR}/documents/${component}/${name})
    file(WRITE ${file} "${text}")
    install(FILES ${file} DESTINATION ${doc_${component}} COMPONENT ${component})
  endforeach()
endfunction()

# The licences of the libraries that our files contain, mostly from Debian's packages.
set(licence_jsoncpp ${ZEPHCTL_STATIC_DEPS}/share/doc/jsoncpp/LICENSE)
set(licence_c-ares /usr/share/doc/libc-ares-dev/copyright)
set(licence_glibc /usr/share/doc/libc6-dev/copyright)
set(licence_libstdc++ ${CMAKE_CURRENT_LIST_DIR}/licences/libstdc++)
set(licence_mingw-w64 /usr/share/doc/mingw-w64-common/copyright)
set(embedded_jsoncpp)
if(TARGET jsoncpp_static)
  set(embedded_jsoncpp jsoncpp)
endif()

# install_copyright(COMPONENT LIBRARY...) installs the licence, and those of the libraries that the files contain.
function(install_copyright component)
  file(READ ${PROJECT_SOURCE_DIR}/LICENSE text)
  string(PREPEND text "zephctl, the library ZephlinkSDK and their tools\n\n")
  foreach(library IN LISTS ARGN)
    if(EXISTS ${licence_${library}})
      file(READ ${licence_${library}} licence)
      string(REPEAT "-" 78 line)
      string(APPEND text "\n${line}\nThis package contains parts of ${library}, whose licence is:\n\n${licence}")
    else()
      message(STATUS "The licence of ${library} is not installed with the files that contain it: "
                     "there is no ${licence_${library}}")
    endif()
  endforeach()
  set(file ${CMAKE_CURRENT_BINARY_DIR}/documents/${component}/copyright)
  file(WRITE ${file} "${text}")
  install(FILES ${file} DESTINATION ${doc_${component}} COMPONENT ${component})
endfunction()
