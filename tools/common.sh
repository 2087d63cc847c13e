# Shared by ./run, ./test, ./bench and ./fuzz: installing what is missing, saying what happens.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '== %s\n' "$*"; }
die() {
  printf 'Stopped: %s\n' "$*" >&2
  exit 1
}

build_packages=(
  ca-certificates ccache cmake g++ git ninja-build pkg-config
  qt6-base-dev qt6-svg-dev qt6-translations-l10n libgl-dev libavcodec-dev libavformat-dev
  libavutil-dev libswscale-dev libturbojpeg0-dev python3-markdown
)
# What lets Qt show windows under Wayland.
run_packages=(qt6-wayland)
test_packages=(
  apache2-bin busybox-static clang-format clang-tidy dbus iproute2 kmod openssh-client openssh-server
  python3 python3-dbusmock python3-openssl python3-pyftpdlib
  qemu-system-x86 vsftpd weston xauth xvfb "${run_packages[@]}"
)
# What ./fuzz needs besides.
fuzz_packages=(clang libclang-rt-dev llvm)

# install PACKAGE ...: with apt-get, only what is not there yet.
install() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2> /dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  local as_root=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo > /dev/null || die "these packages are missing and there is no sudo to install them: ${missing[*]}"
    as_root=(sudo)
  fi
  say "Installing ${#missing[@]} packages: ${missing[*]}"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q update > /dev/null ||
    die "apt-get update failed; is the network there?"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" |
    awk '/^(Get:|Unpacking|Setting up)/ { n++; if (n % 50 == 0) print "   ... " n " steps done" }'
  for package in "${missing[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2> /dev/null | grep -q 'ok installed' ||
      die "$package could not be installed; try: apt-get install $package"
  done
}

debian_codename() { (. /etc/os-release && printf '%s' "$VERSION_CODENAME"); }

# Where apt gets this Debian's packages from.
debian_mirror() {
  local mirror
  mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Origin: Debian' \
    "Codename: $(debian_codename)" | head -1)
  [ -n "$mirror" ] || die "apt knows no package source of Debian $(debian_codename)"
  printf '%s' "$mirror"
}

# build PRESET [CMAKE_ARGUMENT ...] [-- TARGET ...]: configures and builds all or the targets; the
# compiler's progress line is shown. ./run, ./test and ./bench build in one folder: their arguments add
# targets and change none, so that each builds only what the others have not.
build() {
  local preset=$1 arguments=() targets=()
  shift
  while [ $# -gt 0 ] && [ "$1" != -- ]; do
    arguments+=("$1")
    shift
  done
  [ $# -lt 2 ] || targets=(--target "${@:2}")
  say "Building (preset $preset); the first time takes some minutes, later ones seconds"
  cmake --preset "$preset" "${arguments[@]}" > "/tmp/stillpost-configure.$$" || {
    cat "/tmp/stillpost-configure.$$"
    die "the build could not be set up"
  }
  rm -f "/tmp/stillpost-configure.$$"
  cmake --build --preset "$preset" "${targets[@]}" || die "the build failed; the messages above say where"
}
