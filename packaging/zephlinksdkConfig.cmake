# zephlinksdk::zephlinksdk is the static library, zephlinksdk::shared the shared one.
include(CMakeFindDependencyMacro)
find_dependency(Threads)
# What the static library is linked with.
find_dependency(jsoncpp)
include(${CMAKE_CURRENT_LIST_DIR}/zephlinksdkTargets.cmake)
