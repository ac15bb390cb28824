#!/bin/sh
# Starts the program without standard streams. Nothing but the null device may be in their place.
"$1" <&- >&- 2>&- &
for wait in 1 2 3 4 5 6 7 8 9 10; do
    sleep 0.5
    streams=$(cd "/proc/$!/fd" && readlink 0 1 2 | tr '\n' ' ')
    [ "$streams" != "/dev/null /dev/null /dev/null " ] || break
done
kill $!
[ "$streams" = "/dev/null /dev/null /dev/null " ]
