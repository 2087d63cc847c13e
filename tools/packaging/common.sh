# Shared by ./package and the scripts in this folder, which run in a tree of what is committed.
source "$(dirname "${BASH_SOURCE[0]}")/../common.sh"

deb_packages=(
  appstream bash-completion desktop-file-utils dpkg-dev gzip lintian man-db python3 xz-utils
)

version_here() { sed -n 's/^project(stillpost VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt; }
