# Sourced by the commands at the root.

# What the commands install. Debian 12 and 13 have different versions of these under the same
# names: g++ 12 and 14, Qt 6.4 and 6.8, clang 14 and 19.
BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev)
TEST_PACKAGES=(libgtest-dev qt6-base-private-dev)
FUZZ_PACKAGES=(clang libclang-rt-dev)

say() { printf '== %s\n' "$*"; }

is_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# need PACKAGE...: installs those that are missing.
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

# build PRESET [OPTION...]: configures, the first time or when there are options, and builds.
build() {
    local preset=$1
    shift
    say "Building $preset"
    [ -f "build/$preset/build.ninja" ] && [ $# = 0 ] || cmake --preset "$preset" "$@"
    cmake --build --preset "$preset"
}
