# Prints the third-party parts of Qt that were compiled: name, version and licence of each, in a
# line, separated by tabs.
# usage: awk -f qt-parts.awk COMPILED FILE...
# COMPILED lists the compiled files, one path per line. Each FILE is a qt_attribution.json in Qt's
# source. It is not quite JSON: texts have line breaks, and of a repeated key the last one counts.

function reset() { name = version = licence = files = "" }

function text() {
    sub(/^[^:]*: *"/, "")
    sub(/",? *$/, "")
    return $0
}

function was_compiled(   folder, path, i, names, count) {
    folder = FILENAME
    sub(/[^\/]*$/, "", folder)
    count = split(files ? files : ".", names, /[ ,]+/)
    for (path in compiled)
        for (i = 1; i <= count; i++)
            if (index(path, folder (names[i] == "." ? "" : names[i])) == 1)
                return 1
    return 0
}

NR == FNR { compiled[$0]; next }
/^ *"Name":/ { name = text() }
/^ *"Version":/ { version = text() }
/^ *"License":/ && !licence { licence = text() }
/^ *"LicenseId":/ { licence = text() }
/^ *"(Files|Path)":/ { files = text() }
/^ *},?$/ {
    if (name && was_compiled())
        printf "%s\t%s\t%s\n", name, version ? version : "-", licence
    reset()
}
