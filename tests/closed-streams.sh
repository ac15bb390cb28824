#!/bin/sh
# Starts the program with standard input, output and error closed, as some launchers do. Then
# something harmless must be open in their place, not a connection or a file of the player's.
"$1" <&- >&- 2>&- &
for wait in 1 2 3 4 5 6 7 8 9 10; do
    sleep 0.5
    streams=$(cd "/proc/$!/fd" && readlink 0 1 2 | tr '\n' ' ')
    [ "$streams" != "/dev/null /dev/null /dev/null " ] || break
done
kill $!
[ "$streams" = "/dev/null /dev/null /dev/null " ]
