# 64-bit Windows.
set(MINGW_PREFIX x86_64-w64-mingw32)
set(MINGW_PACKAGE g++-mingw-w64-x86-64-posix)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
