#!/bin/sh
# More than anybody reads, so that it waits for room for ever.
exec /usr/bin/head -c 5000000 /dev/zero
