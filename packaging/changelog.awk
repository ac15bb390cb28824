# Turns CHANGELOG.md into a Debian changelog. Each release begins with "## VERSION - YYYY-MM-DD",
# each item with "- "; the item's further lines are indented by two spaces.

function end_release() {
    if (date) {
        gsub("-", " ", date)
        printf "\n -- %s  %s\n\n", MAINTAINER,
               strftime("%a, %d %b %Y 00:00:00 +0000", mktime(date " 12 00 00"))
    }
}

/^## / {
    end_release()
    date = $4
    printf "slaying-tallies (%s) unstable; urgency=medium\n\n", $2
}
sub(/^- /, "  * ") || /^  / && sub(/^  /, "    ") { print }
END { end_release() }
