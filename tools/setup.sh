# Sourced by the commands at the root. Installs Debian packages that are missing, and says so.

say() { printf '== %s\n' "$*"; }

# need PACKAGE...: installs what is missing of the packages named.
need() {
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing ${missing[*]}"
    local as_root=()
    [ "$(id -u)" = 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build PRESET: configures once, then builds what changed.
build() {
    say "Building $1"
    [ -f "build/$1/build.ninja" ] || cmake --preset "$1"
    cmake --build --preset "$1"
}

BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev)
TEST_PACKAGES=(libgtest-dev)
