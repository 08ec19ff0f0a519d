# Cross-builds for 64-bit Windows with Debian's mingw-w64, the flavour with POSIX threads (std::thread, std::mutex).
# CMAKE_FIND_ROOT_PATH, set by the preset, is where the libraries for Windows are.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The .exe runs alone, without the compiler's run-time DLLs.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
# Boost.Beast has more template instances in one object file than the plain format has sections for.
set(CMAKE_CXX_FLAGS_INIT "-Wa,-mbig-obj")
