#!/usr/bin/env bash
# Starts the program, waits for its two windows, takes a screenshot with each of them in front, and
# ends it.
# usage: photograph-start.sh FOLDER COMMAND...
set -euo pipefail
"${@:2}" &
trap "kill $!" EXIT
windows() { xdotool search --onlyvisible --name 'Slaying Tallies' || true; }
for _ in {1..60}; do
    sleep 1
    [ "$(windows | wc -l)" -lt 2 ] || break
done
[ "$(windows | wc -l)" = 2 ]
for window in $(windows); do
    xdotool windowactivate --sync "$window"
    sleep 1
    import -window root "$1/program-$(xdotool getwindowname "$window" | tr -c '[:alnum:]\n' -).png"
done
