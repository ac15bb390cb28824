# Sourced by the commands at the root. Installs Debian packages that are missing, and says so.

say() { printf '== %s\n' "$*"; }

is_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# need PACKAGE...: installs what is missing of the packages named.
need() {
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing ${missing[*]}"
    as_root apt-get update -q
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build PRESET [OPTION...]: configures once, or with the options given, then builds what changed.
build() {
    local preset=$1
    shift
    say "Building $preset"
    [ -f "build/$preset/build.ninja" ] && [ $# = 0 ] || cmake --preset "$preset" "$@"
    cmake --build --preset "$preset"
}

BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev)
TEST_PACKAGES=(libgtest-dev)
