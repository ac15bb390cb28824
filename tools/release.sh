# Sourced by ./package and ./windows. Makes a release reproducible, and lists the third-party code
# in it.

# make_reproducible: gives packed files the time of the commit and fixed permissions, so that
# they do not depend on the user, the folder or the time of the build.
make_reproducible() {
    need git
    SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
    export SOURCE_DATE_EPOCH TZ=UTC
    umask 022
}

# require_no_paths FOLDER PATH...: fails if a file in the folder holds one of the paths, in characters
# of one byte or two: then it depends on where it was built, and says where that was.
require_no_paths() {
    local folder=$1 paths file found
    shift
    paths=$(printf '%s\n' "$@")
    while IFS= read -r -d '' file; do
        found=${found:-0}
        if [ "$(tr -d '\0' < "$file" | grep -aFc "$paths")" != 0 ]; then
            echo "$file says where it was built" >&2
            found=1
        fi
    done < <(find "$folder" -type f -print0)
    return "${found:-1}" # no file at all is wrong, too
}

# compare_files LIST: reads the names of the files in a release, and fails with the difference if they
# are not those in LIST.
compare_files() { LC_ALL=C sort | diff -u "$1" - >&2; }

# compiled_into BUILD TARGET...: the files that the targets of a build folder were compiled from.
compiled_into() {
    local build=$1
    shift
    ninja -C "$build" -t inputs "$@" | grep -E '\.(o|obj)$' | sort -u |
        xargs ninja -C "$build" -t deps | sed -n 's/^    //p' | sort -u
}

# linked_by COMPILER: the start-up files and libraries that a compiler links into every program.
linked_by() {
    local file path
    for file in Scrt1.o crt2.o crti.o crtbeginS.o crtbegin.o libc_nonshared.a libgcc.a \
        libmingw32.a libmingwex.a libssp.a; do
        path=$("$1" -print-file-name="$file")
        [ "$path" = "$file" ] || echo "$path"
    done
}

# licences FILE: the licences that a Debian copyright file names, in one line. Files that are not
# machine-readable refer to the texts in common-licenses.
licences() {
    sed -nE 's/^License: *//p
             s/.*common-licenses\/([A-Za-z0-9.-]*[A-Za-z0-9]).*/\1/p
             s/^GCC RUNTIME LIBRARY EXCEPTION$/GCC Runtime Library Exception/p' "$1" |
        LC_ALL=C sort -u | paste -sd, | sed 's/,/, /g'
}

# row NAME VERSION LICENCES
row() { printf '%s %s\n' "$1" "$2" && echo "$3" | fold -s -w 92 | sed 's/^/    /; s/ *$//'; }

# packages_of: reads paths, and prints the installed packages that own them.
packages_of() {
    xargs -r realpath | sort -u | xargs -r dpkg -S | sed 's/: .*//' | LC_ALL=C sort -u
}

# list_contents PACKAGE...: their names, versions and licences, then the texts of their licences.
list_contents() {
    local package source
    declare -A texts=()
    for package in "$@"; do
        row "${package%%:*}" "$(dpkg-query -W -f '${Version}' "$package")" \
            "$(licences "/usr/share/doc/${package%%:*}/copyright")"
        source=$(dpkg-query -W -f '${source:Package} ${source:Version}' "$package")
        texts[$source]=/usr/share/doc/${package%%:*}/copyright
    done
    printf '%s\n' "${!texts[@]}" | LC_ALL=C sort | while read -r source; do
        printf '\n\n======== Copyright of the Debian source package %s\n\n' "$source"
        cat "${texts[$source]}"
    done
}
