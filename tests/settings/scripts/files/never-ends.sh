#!/bin/sh
# A program that only another one ends, and that has started one itself.
/bin/sleep 60 &
wait
