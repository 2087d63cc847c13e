# Our own build for 64-bit Windows: the compiler, and the libraries that
# tools/windows/build-libraries has made. Tests run under Wine.
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")

set(windows_cache "$ENV{STILLPOST_WINDOWS_CACHE}")
if(NOT windows_cache AND DEFINED ENV{XDG_CACHE_HOME})
  set(windows_cache "$ENV{XDG_CACHE_HOME}/stillpost/windows")
elseif(NOT windows_cache)
  set(windows_cache "$ENV{HOME}/.cache/stillpost/windows")
endif()
set(STILLPOST_WINDOWS_PREFIX "${windows_cache}/prefix")
list(APPEND CMAKE_FIND_ROOT_PATH "${STILLPOST_WINDOWS_PREFIX}")
list(APPEND CMAKE_PREFIX_PATH "${STILLPOST_WINDOWS_PREFIX}")

# Qt's programs that run while building are this machine's.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

set(ENV{PKG_CONFIG_DIR} "")
set(ENV{PKG_CONFIG_LIBDIR} "${STILLPOST_WINDOWS_PREFIX}/lib/pkgconfig")
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/windows/wine-test")
