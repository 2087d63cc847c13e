# cpack -G DEB in the build folder: what install() places, as a package of Debian's.
set(CPACK_PACKAGE_NAME stillpost)
set(CPACK_PACKAGE_CONTACT "The Stillpost developers <developers@stillpost.example>")
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
# The units name the program by its whole path.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# SFTP is OpenSSH's, windows under Wayland are a plugin of Qt's, the help opens in the user's browser.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "openssh-client, qt6-translations-l10n, qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "network-manager, pipewire-bin | pulseaudio-utils | alsa-utils")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "publishes a still camera picture on a web site")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"At an interval Stillpost takes a picture with a camera, stamps date, time,
lines of text or a picture on it, encodes it as JPEG and sends it to a
server under a fixed name, so that a web page always shows the latest one:
over FTP, plain or encrypted, SFTP, WebDAV or to object storage, or into a
local folder.
.
It keeps former pictures, archives them, makes films of them, publishes by
hours or while it is light, and goes on by itself when the line, the server
or the camera fails. It works with windows, and without a display as a
service of systemd.")
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/cmake/debian_files.cmake")
set(CPACK_STILLPOST_SOURCE "${CMAKE_SOURCE_DIR}")
include(CPack)
