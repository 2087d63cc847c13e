# Shared by ./package and the scripts in this folder, which run in a tree of what is committed.
source "$(dirname "${BASH_SOURCE[0]}")/../common.sh"

deb_packages=(
  appstream bash-completion desktop-file-utils dpkg-dev gzip lintian man-db python3 xz-utils
)
try_packages=(iproute2 mmdebstrap systemd util-linux xdotool xvfb)

version_here() { sed -n 's/^project(stillpost VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt; }

# lower_version VERSION: one that comes before it, 1.2.0 -> 1.1.999.
lower_version() {
  local parts i
  IFS=. read -r -a parts <<< "$1"
  for ((i = ${#parts[@]} - 1; i >= 0; i--)); do
    if ((parts[i] > 0)); then
      parts[i]=$((parts[i] - 1))
      (IFS=. && printf '%s' "${parts[*]}")
      return
    fi
    parts[i]=999
  done
  die "nothing comes before version $1"
}

