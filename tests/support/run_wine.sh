#!/bin/bash
# SPDX-License-Identifier: MIT
# Runs a Windows program: run_wine.sh PROGRAM [ARGUMENT...] Wine starts its desktop with the first program
# that wants one and keeps it for the next. Being a child, it would hold this test's output open for as long,
# and CTest waits for its end; so the program writes to a file.
# Programs with windows (NIVRAL_NEEDS_SCREEN) take turns on a screen, or on two when NIVRAL_SECOND_BED is one's folder.
if [ -n "${NIVRAL_NEEDS_SCREEN:-}" ]; then
  exec 8> "$WINEPREFIX/screen.lock"
  if ! flock -n 8 && [ -n "${NIVRAL_SECOND_BED:-}" ]; then
    DISPLAY=:$(cat "$NIVRAL_SECOND_BED/display") WINEPREFIX=$NIVRAL_SECOND_BED/wp
    exec 8> "$WINEPREFIX/screen.lock"
  fi
  flock 8
fi
OUTPUT=$(mktemp); trap 'rm -f "$OUTPUT"' EXIT
# GoogleTest keeps this file while its tests run: a program that ends in one of them with code 0 has failed.
EARLY=$(mktemp -u); export TEST_PREMATURE_EXIT_FILE=Z:${EARLY//\//\\}
# Of shaders for a few frames, compiling well takes longer than running.
export GALLIVM_PERF=nopt
/usr/lib/wine/wine64 "$@" > "$OUTPUT" 2>&1 < /dev/null 8>&-
CODE=$?
cat "$OUTPUT"
[ ! -e "$EARLY" ] || { rm -f "$EARLY"; echo "ended before its last test"; CODE=98; }
exit $CODE
