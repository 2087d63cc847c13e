# What the thread sanitizer must be told goes into each program.
if(NOT STILLPOST_SANITIZE STREQUAL "thread")
  return()
endif()
add_library(stillpost_thread_sanitizer OBJECT cmake/thread_sanitizer.cpp)
target_compile_options(stillpost_thread_sanitizer PRIVATE -fsanitize=thread)
target_compile_definitions(stillpost_thread_sanitizer PRIVATE
  STILLPOST_SUPPRESSIONS="${CMAKE_CURRENT_LIST_DIR}/thread_sanitizer.supp")
target_link_libraries(stillpost_thread_sanitizer PRIVATE Qt6::Core)
target_link_libraries(stillpost_flags INTERFACE $<TARGET_OBJECTS:stillpost_thread_sanitizer>)
