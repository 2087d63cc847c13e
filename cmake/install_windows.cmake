# What a user's Windows does not have: the libraries beside the program, and whose they are.
install(FILES ${STILLPOST_LIBRARIES} DESTINATION .)
foreach(plugin IN LISTS STILLPOST_PLUGINS)
  get_filename_component(folder "${plugin}" DIRECTORY)
  install(FILES "${STILLPOST_WINDOWS_PREFIX}/plugins/${plugin}.dll" DESTINATION "${folder}")
endforeach()
install(FILES ${STILLPOST_TRANSLATIONS} DESTINATION translations)
install(FILES docs/ftpOptions.example.ini DESTINATION .)
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)
install(DIRECTORY "${STILLPOST_WINDOWS_PREFIX}/licences" DESTINATION .)
install(FILES tools/windows/licences.txt DESTINATION licences RENAME README.txt)
# Debian's packages name every part of these, and its licence.
foreach(pair qt6-base=libqt6core6 qt6-translations=qt6-translations-l10n
    libz-mingw-w64=libz-mingw-w64-dev gcc-mingw-w64=g++-mingw-w64-x86-64-posix
    mingw-w64=mingw-w64-x86-64-dev)
  string(REPLACE "=" ";" pair "${pair}")
  list(GET pair 0 folder)
  list(GET pair 1 package)
  install(FILES "/usr/share/doc/${package}/copyright"
    DESTINATION "licences/${folder}" RENAME copyright.txt)
endforeach()
install(FILES /usr/share/common-licenses/GPL-3
  DESTINATION licences/gcc-mingw-w64 RENAME GPL-3.txt)
