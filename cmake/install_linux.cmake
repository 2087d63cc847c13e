# What a desktop and systemd look for in places of the system's.
set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES "${program}/icons/stillpost-${size}.png"
    DESTINATION "${icons}/${size}x${size}/apps" RENAME stillpost.png)
endforeach()
install(FILES art/icons/stillpost.svg DESTINATION "${icons}/scalable/apps")
install(FILES data/stillpost.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")

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
