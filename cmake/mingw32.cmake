# 32-bit Windows.
set(MINGW_PREFIX i686-w64-mingw32)
set(MINGW_PACKAGE g++-mingw-w64-i686-posix)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
