#!/bin/sh
# Starts the program without standard input, output and error, as some launchers do, and looks what
# stands in their place: a window's connection or a player's file must not.
"$1" <&- >&- 2>&- &
for wait in 1 2 3 4 5 6 7 8 9 10; do
    sleep 0.5
    streams=$(cd "/proc/$!/fd" && readlink 0 1 2 | tr '\n' ' ')
    [ "$streams" != "/dev/null /dev/null /dev/null " ] || break
done
kill $!
echo "standard streams: $streams"
[ "$streams" = "/dev/null /dev/null /dev/null " ]
