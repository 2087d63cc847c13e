# One target carries the compiler's warnings and Qt's strict macros; everything links it.
add_library(stillpost_flags INTERFACE)
target_include_directories(stillpost_flags INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_definitions(stillpost_flags INTERFACE
  QT_RESTRICTED_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
  QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(stillpost_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wcast-align -Wunused -Wformat=2 -Wextra-semi)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(stillpost_flags INTERFACE -Wduplicated-cond -Wlogical-op)
endif()
if(STILLPOST_CCACHE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(stillpost_flags INTERFACE -fpch-preprocess)
elseif(STILLPOST_CCACHE)
  target_compile_options(stillpost_flags INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=gold STILLPOST_HAS_GOLD)
if(STILLPOST_HAS_GOLD AND NOT STILLPOST_FUZZ)
  target_link_options(stillpost_flags INTERFACE -fuse-ld=gold)
endif()
# Users get a program without what debuggers want. An id made from that would still tell builds in
# two folders apart.
if(NOT WIN32 AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  target_link_options(stillpost_flags INTERFACE -Wl,--build-id=none)
endif()
if(STILLPOST_WERROR)
  target_compile_options(stillpost_flags INTERFACE -Werror)
endif()
if(STILLPOST_SANITIZE)
  target_compile_options(stillpost_flags INTERFACE
    -fsanitize=${STILLPOST_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(stillpost_flags INTERFACE -fsanitize=${STILLPOST_SANITIZE})
endif()
if(STILLPOST_FUZZ)
  target_compile_options(stillpost_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
