# What a program for Windows carries besides its code: icon, version and manifest inside it, and the
# libraries beside it, because no system folder has them.
enable_language(RC)
set(program "${CMAKE_BINARY_DIR}/program")
set(icon "${program}/icons/stillpost.ico")
string(REPLACE "." "," version_numbers "${PROJECT_VERSION}")
foreach(file stillpost.rc stillpost.manifest)
  configure_file("${CMAKE_CURRENT_SOURCE_DIR}/windows/${file}.in" "${CMAKE_CURRENT_BINARY_DIR}/${file}" @ONLY)
endforeach()
target_sources(stillpost PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/stillpost.rc")
add_dependencies(stillpost artwork)

set(compiler_libraries)
foreach(library libgcc_s_seh-1 libstdc++-6 libwinpthread-1)
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}.dll"
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  list(APPEND compiler_libraries "${path}")
endforeach()
set(shared_libraries)
foreach(name Qt6Core Qt6Gui Qt6Network Qt6Widgets avcodec avdevice avformat avutil libcrypto libssl
    swscale)
  file(GLOB found "${STILLPOST_WINDOWS_PREFIX}/bin/${name}.dll"
    "${STILLPOST_WINDOWS_PREFIX}/bin/${name}-[0-9]*.dll")
  list(APPEND shared_libraries ${found})
endforeach()
set(STILLPOST_LIBRARIES ${compiler_libraries} ${shared_libraries} CACHE INTERNAL "")
# Qt looks for its plugins in these folders beside the program.
set(STILLPOST_PLUGINS imageformats/qgif imageformats/qico imageformats/qjpeg platforms/qoffscreen
  platforms/qwindows styles/qwindowsvistastyle tls/qcertonlybackend tls/qopensslbackend
  CACHE INTERNAL "")
# Its words in other languages.
set(STILLPOST_TRANSLATIONS "${QT_HOST_PATH}/share/qt6/translations/qtbase_de.qm"
  "${QT_HOST_PATH}/share/qt6/translations/qtbase_fr.qm" CACHE INTERNAL "")

add_custom_command(TARGET stillpost POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${STILLPOST_LIBRARIES} "${program}"
  VERBATIM)
foreach(plugin IN LISTS STILLPOST_PLUGINS)
  get_filename_component(folder "${plugin}" DIRECTORY)
  add_custom_command(TARGET stillpost POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory "${program}/${folder}"
    COMMAND ${CMAKE_COMMAND} -E copy_if_different
      "${STILLPOST_WINDOWS_PREFIX}/plugins/${plugin}.dll" "${program}/${folder}"
    VERBATIM)
endforeach()
# The tests look for the words beside themselves.
foreach(place "${program}" "${CMAKE_BINARY_DIR}/tests")
  file(COPY ${STILLPOST_TRANSLATIONS} DESTINATION "${place}/translations")
endforeach()
