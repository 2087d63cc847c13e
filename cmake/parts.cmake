# stillpost_part(NAME SOURCES ... LINKS ...): one folder below src/ as a static library.
function(stillpost_part name)
  cmake_parse_arguments(part "" "" "SOURCES;LINKS" ${ARGN})
  add_library(stillpost_${name} STATIC ${part_SOURCES})
  target_link_libraries(stillpost_${name} PUBLIC stillpost_flags ${part_LINKS})
endfunction()

# stillpost_test(NAME SOURCES ... LINKS ... [TIMEOUT s] [LABELS ...]): a Qt Test program.
function(stillpost_test name)
  cmake_parse_arguments(test "" "TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
  if(NOT test_TIMEOUT)
    set(test_TIMEOUT 300)
  endif()
  if(WIN32)
    # Under Wine what waits for a timer of Qt's takes long.
    math(EXPR test_TIMEOUT "3 * ${test_TIMEOUT}")
  endif()
  add_executable(test_${name} ${test_SOURCES})
  set_target_properties(test_${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  target_include_directories(test_${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  target_link_libraries(test_${name} PRIVATE Qt6::Test ${test_LINKS} stillpost_flags)
  add_test(NAME ${name} COMMAND test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${test_TIMEOUT} LABELS "${test_LABELS}"
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
