# Sourced by the scripts at the root: installs what is missing and builds. Expects to run in the root folder.

say() { printf '%s\n' "$*" >&2; }
fail() { say "$*"; exit 1; }

# packages_of SECTION...: the packages listed under these headings in packaging/packages.txt.
packages_of() {
  local section
  for section in "$@"; do
    sed -n "/^\[$section\]\$/,/^\[/p" packaging/packages.txt | sed -e '/^\[/d' -e '/^#/d' -e '/^[[:space:]]*$/d'
  done
}

# missing_of PACKAGE...: those that are not installed.
missing_of() {
  local package
  for package in "$@"; do
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || printf '%s\n' "$package"
  done
}

# install_packages SECTION...: installs with apt what is missing, and says what.
install_packages() {
  local missing
  command -v dpkg-query >/dev/null || fail "This script installs Debian packages, and there is no dpkg-query here."
  mapfile -t missing < <(missing_of $(packages_of "$@"))
  [ ${#missing[@]} -gt 0 ] || return 0

  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "Missing packages: ${missing[*]}. Install them as root; sudo is not there."
    as_root=(sudo)
  fi
  say "Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -q >&2 || fail "apt-get update failed."
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" >&2 ||
    fail "apt-get could not install ${missing[*]}."
}

# build_preset PRESET [TARGET...]: configures when the presets are newer than the last time, then builds on all cores.
build_preset() {
  local preset=$1 folder="build/$1"
  shift
  if [ ! -f "$folder/build.ninja" ] || [ ! "$folder/configured" -nt CMakePresets.json ]; then
    cmake --preset "$preset" >&2 || fail "The configuration of $preset failed."
    touch "$folder/configured"
  fi
  cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"} >&2 || fail "The build of $preset failed."
}
