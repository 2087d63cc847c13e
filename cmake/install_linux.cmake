# What a desktop, a shell, systemd and people look for in places of the system's.
set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
foreach(size 16 22 24 32 48 64 96 128 256 512)
  install(FILES "${program}/icons/stillpost-${size}.png"
    DESTINATION "${icons}/${size}x${size}/apps" RENAME stillpost.png)
endforeach()
install(FILES art/icons/stillpost.svg DESTINATION "${icons}/scalable/apps")
install(FILES data/stillpost.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")

# The version stands in project() alone; the day of a release in CHANGELOG.md. Before that it is today.
file(STRINGS CHANGELOG.md release REGEX "^## \\[${PROJECT_VERSION}\\] - ")
string(REGEX MATCH "[0-9]+-[0-9]+-[0-9]+$" release_day "${release}")
if(NOT release_day)
  string(TIMESTAMP release_day "%Y-%m-%d" UTC)
endif()
foreach(file appstream/example.stillpost.Stillpost.metainfo.xml man/stillpost.1 man/de/stillpost.1)
  configure_file("data/${file}.in" "data/${file}" @ONLY)
endforeach()
install(FILES "${CMAKE_BINARY_DIR}/data/appstream/example.stillpost.Stillpost.metainfo.xml"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES "${CMAKE_BINARY_DIR}/data/man/stillpost.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${CMAKE_BINARY_DIR}/data/man/de/stillpost.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/de/man1")
install(FILES data/completion/stillpost DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")

# The units of systemd: one for the user's own folder, one for each of several cameras. They name the
# place of the program, which is known when it is installed.
foreach(unit stillpost.service stillpost@.service)
  install(CODE "
    set(BIN \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    set(DOC \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATAROOTDIR}/doc/stillpost\")
    configure_file(\"${CMAKE_SOURCE_DIR}/data/systemd/${unit}.in\"
      \"${CMAKE_BINARY_DIR}/systemd/${unit}\" @ONLY)
    file(INSTALL DESTINATION \"\${CMAKE_INSTALL_PREFIX}/lib/systemd/user\"
      TYPE FILE FILES \"${CMAKE_BINARY_DIR}/systemd/${unit}\")")
endforeach()
install(FILES LICENSE README.md CHANGELOG.md docs/ftpOptions.example.ini docs/headless.md
  docs/settings.md docs/several-cameras.md docs/skins.md docs/web-page.md
  DESTINATION "${CMAKE_INSTALL_DOCDIR}")
