# Sourced by the commands at the root.

# What the commands install. Debian 12 and 13 have different versions of these under the same
# names: g++ 12 and 14, Qt 6.4 and 6.8, clang 14 and 19.
BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev)
TEST_PACKAGES=(libgtest-dev qt6-base-private-dev)
INSTALL_PACKAGES=(cmark-gfm librsvg2-bin) # make the guide and the icons
DISPLAY_PACKAGES=(xvfb xauth jwm x11-utils)
PHOTOGRAPH_PACKAGES=(xdotool imagemagick)
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

# on_display WIDTHxHEIGHT COMMAND...: runs it on a virtual display with a window manager. The display
# must not start again, and end the window manager, whenever a client was its only one.
on_display() {
    timeout 300 xvfb-run -a -s "-screen 0 ${1}x24 -noreset" sh -c '
        shift
        jwm > /dev/null 2>&1 &
        until xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"; do sleep 0.1; done
        exec "$@"' on_display "$@"
}

# build PRESET [OPTION...]: configures, the first time or when there are options, and builds.
build() {
    local preset=$1
    shift
    say "Building $preset"
    [ -f "build/$preset/build.ninja" ] && [ $# = 0 ] || cmake --preset "$preset" "$@"
    cmake --build --preset "$preset"
}
