# stillpost_precompile(TARGET HEADER ...): compiles headers of others once for all files of a target.
# None of our own: whatever changed in one of them would rebuild everything.
function(stillpost_precompile target)
  target_precompile_headers(${target} PRIVATE ${ARGN})
  # With another list of headers ccache would still give the old result while that lies there.
  if(NOT "${STILLPOST_PRECOMPILED_${target}}" STREQUAL "${ARGN}")
    file(REMOVE "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/cmake_pch.hxx.gch")
  endif()
  set(STILLPOST_PRECOMPILED_${target} "${ARGN}" CACHE INTERNAL "")
endfunction()

# stillpost_part(NAME SOURCES ... LINKS ...): one folder below src/ as a static library. Headers that
# nearly every file includes are compiled once, those of Widgets once more.
function(stillpost_part name)
  cmake_parse_arguments(part "" "" "SOURCES;LINKS" ${ARGN})
  add_library(stillpost_${name} STATIC ${part_SOURCES})
  target_link_libraries(stillpost_${name} PUBLIC stillpost_flags ${part_LINKS})
  if(name STREQUAL "base")
    stillpost_precompile(stillpost_base
      <QByteArray> <QDateTime> <QDir> <QFile> <QFileInfo> <QList> <QMap> <QObject> <QString>
      <QStringList> <QTimer> <algorithm> <array> <functional> <memory> <optional> <utility> <vector>)
  elseif(name STREQUAL "ui")
    stillpost_precompile(stillpost_ui
      <QBoxLayout> <QCheckBox> <QComboBox> <QDialog> <QGridLayout> <QLabel> <QLineEdit> <QPainter>
      <QPushButton> <QWidget> <QDateTime> <QDir> <QHostAddress> <QSettings> <QTcpServer> <QTcpSocket>
      <QTimer> <algorithm> <array> <functional> <memory> <optional> <vector>)
  else()
    target_precompile_headers(stillpost_${name} REUSE_FROM stillpost_base)
  endif()
endfunction()

# stillpost_tests(FOLDER NAME ... [ALSO SOURCE ...]): the Qt Test programs FOLDER/test_NAME.cpp, each
# linked with what all tests share, those of windows also with what they share. All are targets of
# one folder, because Qt names the folder to the compiler and so to the precompiled headers.
function(stillpost_tests folder)
  cmake_parse_arguments(test "" "" "ALSO" ${ARGN})
  set(support stillpost_test_support)
  if(folder MATCHES "ui|art")
    set(support stillpost_ui_test_support)
  endif()
  set(limit 300)
  set(slow "")
  if(WIN32)
    set(limit 900) # under Wine what waits for a timer of Qt's takes long
  elseif(STILLPOST_SANITIZE STREQUAL "thread")
    set(limit 900)
    set(slow ";STILLPOST_SLOW_TESTS=1")
  endif()
  foreach(name IN LISTS test_UNPARSED_ARGUMENTS)
    add_executable(test_${name} ${folder}/test_${name}.cpp ${test_ALSO})
    set_target_properties(test_${name} PROPERTIES
      RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    target_link_libraries(test_${name} PRIVATE ${support})
    target_precompile_headers(test_${name} REUSE_FROM ${support})
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${limit}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;XDG_RUNTIME_DIR=;UBSAN_OPTIONS=print_stacktrace=1${slow}")
  endforeach()
endfunction()
