# Sourced by ./windows: wine, and the toolkit for Windows. Both are kept outside the tree.

CACHE=${XDG_CACHE_HOME:-$HOME/.cache}/slaying-tallies
WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix)

# A wine of our own, apart from the user's; 700 MB. It opens no windows of its own.
export WINEPREFIX=$CACHE/wine WINEDEBUG=-all
export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree=d;mshtml=d'

need_wine() {
    [ ! -f "$WINEPREFIX/system.reg" ] || return 0
    say "Setting wine up in $WINEPREFIX (once)"
    mkdir -p "$CACHE"
    wineboot -i > /dev/null 2>&1
    wineserver -w
}

# Wine has no fonts: each that the program asks for is replaced by the one closest to it.
need_wine_fonts() {
    local font
    for font in 'Tahoma' 'MS Shell Dlg' 'MS Shell Dlg 2' 'MS Sans Serif' 'Segoe UI'; do
        wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d 'Liberation Sans' /f
    done > /dev/null
}

# require_stack_protector PROGRAM: fails if no routine of a program, not yet stripped, checks its
# stack. The check is linked into it, unlike on Linux.
require_stack_protector() {
    if [ "$(x86_64-w64-mingw32-nm "$1" | grep -c ' T __stack_chk_fail$')" = 0 ]; then
        echo "$1 does not protect its stack" >&2
        return 1
    fi
}

# on_screen COMMAND...: runs it on a virtual display with a window manager. Wine must not go on with
# the next command as if it were on this display.
on_screen() {
    local status=0
    on_display 1024x768 "$@" || status=$?
    wineserver -k || true
    return $status
}

# Debian has no Qt for Windows. It is built from Debian's source package, once: about 20 minutes
# on two cores, 1 GB of disk meanwhile.
export WINDOWS_QT=$CACHE/qt-windows

# fetch_qt_source FOLDER: with package lists of our own, so that the system's stay as they are.
fetch_qt_source() {
    local apt=$1/apt source
    mkdir -p "$apt/lists/partial" "$apt/sources"
    for source in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
        [ ! -f "$source" ] ||
            sed -E 's/^Types:.*/Types: deb-src/; s/^deb /deb-src /' "$source" \
                > "$apt/sources/$(basename "$source")"
    done
    local options=(-q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$apt/sources"
        -o Dir::State::Lists="$apt/lists" -o APT::Sandbox::User=)
    apt-get "${options[@]}" update
    (cd "$1" && apt-get "${options[@]}" source qt6-base)
}

# list_qt SOURCE BUILD: version and licences of Qt, and of the third-party parts compiled into the
# libraries that are packed.
list_qt() {
    row "qt6-base" "$(dpkg-parsechangelog -l "$1/debian/changelog" -S Version)" \
        "$(licences "$1/debian/copyright")"
    compiled_into "$2" bin/Qt6{Core,Gui,Widgets}.dll plugins/platforms/qwindows.dll \
        plugins/styles/qwindowsvistastyle.dll plugins/imageformats/qgif.dll > "$2/compiled"
    find "$1/src" -name qt_attribution.json | LC_ALL=C sort |
        xargs awk -f tools/qt-parts.awk "$2/compiled" |
        while IFS=$'\t' read -r part version licence; do
            row "in qt6-base: $part" "$version" "$licence"
        done
}

# build_qt WORK: builds the source in that folder into $WINDOWS_QT.
build_qt() {
    local work=$1 source feature features=()
    source=$(echo "$work"/qt6-base-*/)
    source=${source%/}
    # direct2d and directwrite3 can be left out only together.
    for feature in sql network dbus printsupport concurrent xml tabletevent direct2d directwrite3 \
        vulkan pkg_config; do
        features+=("-DFEATURE_$feature=OFF")
    done
    # No file says where or when it was built: the folder is mapped away, the prefix is the same for
    # all, and the time is that of the source and not of a commit.
    local map="-ffile-prefix-map=$work=." prefix=/qt-windows SOURCE_DATE_EPOCH
    SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l "$source/debian/changelog" -S Timestamp)
    export SOURCE_DATE_EPOCH
    CFLAGS=$map CXXFLAGS=$map cmake -S "$source" -B "$work/build" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/tools/windows.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX=$prefix -DBUILD_SHARED_LIBS=ON \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DINPUT_opengl=no \
        -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF "${features[@]}"
    # Its many warnings are about nothing that is wrong.
    cmake --build "$work/build" > "$work/log" 2>&1 || { tail -n 50 "$work/log"; return 1; }
    rm -rf "$work/installed" "$WINDOWS_QT"
    DESTDIR=$work/installed cmake --install "$work/build" --strip > "$work/log"
    mv "$work/installed$prefix" "$WINDOWS_QT"
    {
        printf '\n\n======== Copyright of the Debian source package qt6-base\n\n'
        cat "$source/debian/copyright"
    } > "$WINDOWS_QT/copyright"
    list_qt "$source" "$work/build" > "$WINDOWS_QT/contents"
}

# need_windows_qt: builds Qt unless it is there, built in this way by this compiler. A build that
# was interrupted goes on.
need_windows_qt() {
    local work=$CACHE/qt-windows-work way
    way=$({
        declare -f fetch_qt_source list_qt build_qt
        cat tools/windows.cmake tools/qt-parts.awk
        dpkg-query -W qt6-base-dev g++-mingw-w64-x86-64-posix
    } | sha256sum)
    [ "$(cat "$WINDOWS_QT/way" 2> /dev/null)" != "$way" ] || return 0
    say "Building Qt for Windows into $WINDOWS_QT (about 20 minutes)"
    if [ "$(cat "$work/way" 2> /dev/null)" != "$way" ]; then
        rm -rf "$work"
        mkdir -p "$work"
        fetch_qt_source "$work"
        echo "$way" > "$work/way"
    fi
    build_qt "$work"
    mv "$work/way" "$WINDOWS_QT/way"
    rm -rf "$work"
}
