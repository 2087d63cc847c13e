# Shared by the scripts in this folder: where the cross-built libraries lie and how sources arrive.
source "$(dirname "${BASH_SOURCE[0]}")/../common.sh"

target=x86_64-w64-mingw32
wine_program=/usr/lib/wine/wine64
windows_cache="${STILLPOST_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/stillpost/windows}"
windows_prefix="$windows_cache/prefix"

windows_packages=(
  dpkg-dev fonts-dejavu-core g++-mingw-w64-x86-64-posix libz-mingw-w64-dev mingw-w64-tools nasm qt6-base-dev qt6-base-dev-tools unzip wine64 xvfb zip
)

# The libraries in the order in which they are built; a new number makes a machine build one again.
windows_libraries=(openssl-1 qt-2 libjpeg-turbo-1 ffmpeg-2)

stamp() { printf '%s/%s.done' "$windows_cache" "$1"; }

windows_cache_is_complete() {
  local library
  for library in "${windows_libraries[@]}"; do
    [ -e "$(stamp "$library")" ] || return 1
  done
}

# fetch_source PACKAGE: unpacks Debian's source into "$windows_cache/src/PACKAGE". The system's own
# list of package sources stays as it is: a list of our own names the same archive with deb-src.
fetch_source() {
  local package=$1 apt="$windows_cache/apt" folder="$windows_cache/src/$1"
  [ ! -e "$folder" ] || return 0
  mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial" "$windows_cache/src"
  local mirror
  mirror=$(debian_mirror)
  printf 'deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] %s %s main\n' \
    "$mirror" "$(debian_codename)" > "$apt/sources.list"
  local options=(
    -q -o "Dir::Etc::SourceList=$apt/sources.list" -o Dir::Etc::SourceParts=-
    -o "Dir::State::Lists=$apt/lists" -o "Dir::Cache=$apt/cache"
    -o "APT::Sandbox::User=$(id -un)"
  )
  apt-get "${options[@]}" update > "$apt/log" 2>&1 ||
    { tail -5 "$apt/log" >&2; die "Debian's list of sources could not be fetched"; }
  rm -rf "$folder.part"
  mkdir "$folder.part"
  (cd "$folder.part" && apt-get "${options[@]}" source --download-only "$package" >> "$apt/log" 2>&1 &&
    dpkg-source --no-check -x ./*.dsc unpacked >> "$apt/log" 2>&1) ||
    { tail -5 "$apt/log" >&2; die "the source of $package could not be fetched"; }
  mv "$folder.part/unpacked" "$folder"
  rm -rf "$folder.part"
}

# set_up_wine FOLDER: a set-up of Wine there, on a screen that nobody sees: without one Wine has no
# windows at all, not even hidden ones. Ended by end_wine.
set_up_wine() {
  export STILLPOST_WINEPREFIX=$1
  local number
  exec {screen}< <(exec Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp 2> /dev/null)
  screen_pid=$!
  read -r -t 20 -u "$screen" number || die "Xvfb does not start"
  export DISPLAY=:$number
  tools/windows/wine-run wineboot --init > /dev/null 2>&1 < /dev/null || die "Wine does not start"
}

# Ends what still runs in that set-up, and nothing else, and waits for Wine's server, which writes
# the registry last of all.
end_wine() {
  tools/windows/wine-run wineboot --kill > /dev/null 2>&1 < /dev/null || true
  WINEPREFIX=$STILLPOST_WINEPREFIX timeout 20 "${wine_program%/*}/wineserver64" --wait || true
  kill "$screen_pid" 2> /dev/null || true
}

# keep_licences PACKAGE FILE ...: they go with the program.
keep_licences() {
  local folder="$windows_prefix/licences/$1" file
  mkdir -p "$folder"
  for file in "${@:2}"; do cp "$windows_cache/src/$1/$file" "$folder/"; done
}

# build_once STAMP TEXT COMMAND: runs COMMAND with its output in a log, unless it was done before;
# a line now and then says how far it is.
build_once() {
  local name=$1 text=$2 command=$3
  [ ! -e "$(stamp "$name")" ] || return 0
  mkdir -p "$windows_cache/log"
  local log="$windows_cache/log/$name.log" started=$SECONDS status=0
  say "$text; messages go to $log"
  # A new process, so that a failing command inside ends it: set -e does not hold in a tested call.
  bash -c "source '${BASH_SOURCE[0]}'; $command" > "$log" 2>&1 &
  local worker=$!
  while kill -0 "$worker" 2> /dev/null; do
    sleep 5
    (((SECONDS - started) % 60 < 5)) && ((SECONDS - started >= 55)) &&
      say "  $name: $(((SECONDS - started + 5) / 60)) min, $(tail -1 "$log" | cut -c 1-70)"
  done
  wait "$worker" || status=$?
  [ "$status" = 0 ] || { tail -20 "$log" >&2; die "$name could not be built; $log says more"; }
  touch "$(stamp "$name")"
  say "$name is built ($(((SECONDS - started + 30) / 60)) min)"
}

# build_for_windows [CMAKE_ARGUMENT ...]: the program and what else is switched on, warnings as
# errors where nobody would read them. The program that renders the pictures runs on this machine.
build_for_windows() {
  local strict=()
  [ "${CI:-}" != true ] || strict=(-DSTILLPOST_WERROR=ON)
  say "Building the program that renders the pictures"
  cmake --preset release -DSTILLPOST_TESTS=ON > /dev/null || die "the build could not be set up"
  cmake --build --preset release --target render_artwork > /dev/null || die "it does not build; ./test says more"
  build windows -DSTILLPOST_RENDER_ARTWORK="$PWD/build/bin/render_artwork" "${strict[@]}" "$@"
}
