# Prints the parts of Qt that come from others, if they were compiled: one in a line, with
# tabs between its name, version and licence.
# usage: awk -f qt-parts.awk COMPILED FILE...
# COMPILED has the path of a compiled file in each line. Each FILE is a qt_attribution.json of
# Qt's source; of a key given twice the last one counts.

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
