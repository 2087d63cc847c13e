# cmake --install build --prefix DIR: the program, and in share/stillpost what it only reads. Each user
# has a program folder of their own then. On Windows a program lies with all its files in one folder,
# which is DIR.
include(GNUInstallDirs)
set(program "${CMAKE_BINARY_DIR}/program")
set(shared "${CMAKE_INSTALL_DATADIR}/stillpost")
set(binaries "${CMAKE_INSTALL_BINDIR}")
if(WIN32)
  set(shared ".")
  set(binaries ".")
endif()
install(TARGETS stillpost RUNTIME DESTINATION "${binaries}")
# Named one by one, because somebody may have used the program of the build folder.
install(DIRECTORY "${program}/Skins/Default" "${program}/Skins/silver 1024" "${program}/Skins/Night Watch"
  DESTINATION "${shared}/Skins")
install(DIRECTORY "${program}/icons" "${program}/fonts" "${program}/help" "${program}/Hilfe"
  "${program}/web"
  DESTINATION "${shared}")
install(FILES "${program}/overlay/Overlay.bmp" DESTINATION "${shared}/overlay")
install(FILES "${program}/Offline/Offline.jpg" DESTINATION "${shared}/Offline")
install(FILES "${program}/Click.wav" DESTINATION "${shared}")

if(WIN32)
  include("${CMAKE_CURRENT_LIST_DIR}/install_windows.cmake")
else()
  include("${CMAKE_CURRENT_LIST_DIR}/install_linux.cmake")
endif()
