# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (posix threads variant, so std::thread and
# std::mutex work) and runs the built programs with Wine through cmake/wine-run.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(GAMEUI_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${GAMEUI_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${GAMEUI_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${GAMEUI_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${GAMEUI_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The runtime (libgcc, libstdc++, winpthread) goes into each DLL and program, so they run without
# MinGW's DLLs beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run)
